#include "gui/report/uReportDocument.h"

#include <vector>

#include "analysis/uMissionFigures.h"
#include "gui/common/uQtText.h"
#include "shell/uAlarmMarks.h"
#include "shell/uSettingsCommands.h"

namespace {

constexpr qsizetype kMaxText = 300;  // characters; a header may hold 64 KiB

// Nothing of a recording is taken for markup, and nothing breaks a page by its length.
QString Safe(const std::string& text) {
  return ShownText(text, kMaxText).toHtmlEscaped();
}

QString FigureTable(const QString& title, const std::vector<TFigure>& figures) {
  QString html = QString("<p class='heading'>%1</p><table width='100%' cellspacing='0' cellpadding='1'>").arg(title);
  for (const TFigure& figure : figures) {
    html +=
        QString("<tr><td width='22%' class='label'>%1</td><td>%2</td></tr>").arg(Safe(figure.label), Safe(figure.text));
  }
  return html + "</table>";
}

QString ImportantTable(const TDataset& table, const TDisplaySettings& display) {
  constexpr std::pair<const char*, const char*> kColumns[] = {{"ID", "ID"},
                                                              {"Timestamp", "Begun"},
                                                              {"Acceleration max", "Peak (g)"},
                                                              {"ToT total", "ToT total"},
                                                              {"ToT max", "ToT max"},
                                                              {"IoT total", "IoT total (g·ms)"},
                                                              {"IoT max", "IoT max (g·ms)"}};
  QString html = "<p class='heading'>Most important events</p>";
  if (table.RecordCount() == 0) return html + "<p>There are no shock events.</p>";
  html += "<table width='100%' cellspacing='0' cellpadding='2' border='1' style='border-collapse:collapse'><tr>";
  for (const auto& [key, title] : kColumns) html += QString("<th align='left'>%1</th>").arg(title);
  html += "</tr>";
  for (std::size_t row = 0; row < table.RecordCount(); ++row) {
    html += "<tr>";
    for (const auto& [key, title] : kColumns) {
      const auto field = table.FindField(key);
      html += QString("<td>%1</td>").arg(field ? Safe(CellText(table, row, *field, display)) : QString());
    }
    html += "</tr>";
  }
  return html + "</table>";
}

}  // namespace

std::unique_ptr<QTextDocument> MakeReport(const TShownMission& mission) {
  auto document = std::make_unique<QTextDocument>();
  document->setDefaultStyleSheet(
      "p, td, th { color: black; font-size: 8pt; } .label { color: #555555; }"
      ".title { font-size: 17pt; font-weight: bold; margin: 0px; }"
      ".heading { font-size: 10.5pt; font-weight: bold; margin-top: 10px; margin-bottom: 2px; }"
      ".damage { font-weight: bold; }"
      "table { border-color: #999999; }");
  const QString damage =
      mission.Damage.empty() ? QString() : "<p class='damage'>" + QtText(mission.Damage).toHtmlEscaped() + "</p>";
  document->setHtml("<p>" + Safe(mission.Display.company) + "</p><p class='title'>Shock report</p>" + damage +
                    FigureTable("Mission", HeaderFigures(mission.Data)) +
                    FigureTable("Events", EventFigures(mission.Summary, mission.Events, mission.Axes)) +
                    FigureTable("Sensors", NamedSensorFigures(mission)) +
                    ImportantTable(mission.Tables.Important, mission.Display));
  return document;
}
