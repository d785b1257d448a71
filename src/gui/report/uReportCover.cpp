#include "gui/report/uReportCover.h"

#include <algorithm>
#include <system_error>

#include "analysis/uMissionFigures.h"
#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "gui/common/uQtText.h"
#include "gui/report/uPaperTable.h"
#include "gui/report/uPaperText.h"
#include "shell/uShownVerdict.h"

namespace {

constexpr double kLogoHeight = 40;  // pt
constexpr double kLogoPart = 0.42;  // of the width, at most, for each
constexpr double kBox = 10;         // around the text of the verdict
constexpr double kBar = 3;          // at its left
constexpr double kListPart = 0.38;  // of the width of a landscape page, for the figures beside the picture
constexpr double kMinChart = 140;   // of the picture of the recording
constexpr double kMaxChart = 380;

// As large as it fits, whatever its shape; never larger than a point a pixel.
void PaintLogo(QPainter& painter, const QRectF& room, const QImage& logo, bool right) {
  if (logo.isNull()) return;
  const QSizeF natural = logo.size();
  const QSizeF size = natural.scaled(room.size().boundedTo(natural), Qt::KeepAspectRatio);
  const QPointF at(right ? room.right() - size.width() : room.left(), room.center().y() - size.height() / 2);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(QRectF(at, size), logo);
}

void AddLogos(TPageFlow& flow, const TReportData& data) {
  const auto& logos = data.contents.logos;
  if (std::ranges::all_of(logos, &QImage::isNull)) return;
  flow.Add(kLogoHeight, [&logos](QPainter& painter, const QRectF& rect) {
    const double width = rect.width() * kLogoPart;
    PaintLogo(painter, {rect.left(), rect.top(), width, rect.height()}, logos[0], false);
    PaintLogo(painter, {rect.right() - width, rect.top(), width, rect.height()}, logos[1], true);
  });
  flow.AddGap(22);
}

void AddLines(TPageFlow& flow, TTextStyle style, const QString& text, int maxLines, const QColor& ink) {
  if (text.isEmpty()) return;
  const TParagraph lines(style, text, flow.Width(), maxLines);
  flow.Add(lines.Height() + 1,
           [lines, ink](QPainter& painter, const QRectF& rect) { lines.Paint(painter, rect.topLeft(), ink); });
}

QString MissionText(const TReportData& data) {
  const TMissionData& mission = data.Mission().Data;
  QStringList parts;
  if (const QString title = PlainText(mission.sTitle).trimmed(); !title.isEmpty()) parts << title;
  if (const QString id = PlainText(mission.sID).trimmed(); !id.isEmpty()) parts << QObject::tr("mission %1").arg(id);
  return parts.join(" · ");
}

void AddTitle(TPageFlow& flow, const TReportData& data) {
  AddLines(flow, TTextStyle::Body, PlainText(data.facts.display.company), 2, kPaperSecondaryInk);
  AddLines(flow, TTextStyle::Title, QObject::tr("Shock report"), 1, kPaperInk);
  AddLines(flow, TTextStyle::Subtitle, MissionText(data), 3, kPaperSecondaryInk);
  flow.AddGap(10);
}

// Something is beyond a limit that somebody chose, or the recording cannot be trusted in full.
bool IsBad(const TReportFacts& facts) {
  const TVerdict& verdict = facts.verdict;
  if (facts.judgement) return facts.judgement->outcome == TJudgementOutcome::Failed || verdict.damaged;
  const bool isAbove =
      verdict.above && verdict.above->count > 0 && verdict.above->limits.maxSource == TLimitSource::User;
  return isAbove || (verdict.worstSensor && !verdict.worstSensor->byDefaultLimits) || verdict.damaged;
}

void AddVerdictBox(TPageFlow& flow, const TReportData& data) {
  const TReportFacts& facts = data.facts;
  const double width = flow.Width() - 2 * kBox - kBar;
  std::vector<TParagraph> texts;
  if (facts.verdict.damaged) texts.emplace_back(TTextStyle::Strong, PlainText(data.Mission().Damage), width);
  if (facts.judgement) texts.emplace_back(TTextStyle::Strong, AsSentence(JudgementText(facts)), width);
  QString verdict = AsSentence(VerdictSentence(facts.verdict, facts.display));
  if (!facts.verdict.damaged) verdict += QObject::tr(" The recording is complete.");
  texts.emplace_back(TTextStyle::Body, verdict, width);
  if (!facts.filtered.empty()) {
    texts.emplace_back(TTextStyle::Strong, QObject::tr("Filtered: %1.").arg(PlainText(facts.filtered)), width);
  }
  double height = 2 * kBox - 4;
  for (const TParagraph& text : texts) height += text.Height() + 4;
  flow.Add(height, [texts, bad = IsBad(facts)](QPainter& painter, const QRectF& rect) {
    painter.fillRect(rect, QColor(bad ? kLightTokens.alarmTint : kLightTokens.accentTint));
    painter.fillRect(QRectF(rect.left(), rect.top(), kBar, rect.height()),
                     QColor(bad ? kLightTokens.alarm : kLightTokens.accent));
    double y = rect.top() + kBox;
    for (const TParagraph& text : texts) {
      text.Paint(painter, {rect.left() + kBar + kBox, y}, kPaperInk);
      y += text.Height() + 4;
    }
  });
}

QString FileText(const TReportContents& contents) {
  std::error_code unknown;
  const auto size = std::filesystem::file_size(contents.file, unknown);
  QString text = PlainText(Utf8FromPath(contents.file.filename()));
  if (!unknown)
    text += QObject::tr(", %1 bytes").arg(QLocale(QLocale::English).toString(static_cast<qulonglong>(size)));
  return text;
}

std::vector<TPaperFigure> CoverFigures(const TReportData& data) {
  const TReportContents& contents = data.contents;
  const TVerdict& verdict = data.facts.verdict;
  std::vector<TPaperFigure> figures;
  for (const TFigure& figure : HeaderFigures(data.Mission().Data)) {
    constexpr std::string_view kLabels[] = {"Operator", "Logger"};
    if (std::ranges::count(kLabels, figure.label)) figures.push_back({QtText(figure.label), PlainText(figure.text)});
  }
  if (verdict.firstTime) {
    figures.push_back(
        {QObject::tr("Recorded"), QObject::tr("%1 to %2 (%3)")
                                      .arg(MomentText(*verdict.firstTime), MomentText(*verdict.lastTime),
                                           QtText(DurationInWords(*verdict.lastTime - *verdict.firstTime)))});
  }
  const QString filtered = QObject::tr("%1 of %2 events, filtered: %3")
                               .arg(verdict.events)
                               .arg(data.Mission().Events.Count())
                               .arg(PlainText(data.facts.filtered));
  figures.push_back(
      {QObject::tr("Shown"), data.facts.filtered.empty() ? QObject::tr("all events, whole recording") : filtered});
  if (!contents.file.empty()) {
    figures.push_back({QObject::tr("File"), FileText(contents)});
    // An unknown one takes as much room as a known one.
    figures.push_back({"SHA-256", contents.sha256.empty() ? QString(64, '_') : QtText(contents.sha256)});
  }
  figures.push_back({QObject::tr("Report"),
                     QObject::tr("%1, ShockScope %2").arg(MomentText(contents.madeAt), PlainText(contents.version))});
  return figures;
}

}  // namespace

void AddPageHead(TPageFlow& flow, const TReportData& data) {
  const TReportContents& contents = data.contents;
  AddLines(flow, TTextStyle::Subtitle, MissionText(data), 2, kPaperInk);
  QStringList parts;
  if (!contents.file.empty()) parts << FileText(contents);
  parts << MomentText(contents.madeAt);
  if (!data.facts.filtered.empty()) parts << QObject::tr("filtered: %1").arg(PlainText(data.facts.filtered));
  if (data.facts.verdict.damaged) parts << QObject::tr("damaged recording");
  AddLines(flow, TTextStyle::Body, parts.join(" · "), 3, kPaperSecondaryInk);
}

void AddCover(TPageFlow& flow, const TReportData& data, TReportCharts& charts) {
  flow.AddBookmark(QObject::tr("Cover"));
  AddLogos(flow, data);
  AddTitle(flow, data);
  AddVerdictBox(flow, data);
  flow.AddHeading(QObject::tr("Whole recording"), kMinChart, false);
  // The figures are made again when they are painted: the checksum may become known after the layout.
  if (data.config.landscape) {
    const double width = flow.Width() * kListPart;
    const double list = FiguresHeight(CoverFigures(data), width);
    flow.Add(std::max({flow.Room(), kMinChart, list}), [&data, &charts, width](QPainter& painter, const QRectF& rect) {
      PaintFigures(painter, rect.topLeft(), width, CoverFigures(data));
      charts.PaintWhole(painter, rect.adjusted(width + kBox, 0, 0, 0));
    });
    return;
  }
  const double list = FiguresHeight(CoverFigures(data), flow.Width());
  const double chart = flow.Room() - TPageFlow::HeadingHeight() - list;
  flow.Add(std::clamp(chart, kMinChart, kMaxChart),
           [&charts](QPainter& painter, const QRectF& rect) { charts.PaintWhole(painter, rect); });
  flow.AddHeading(QObject::tr("Mission"), list, false);
  flow.Add(list, [&data](QPainter& painter, const QRectF& rect) {
    PaintFigures(painter, rect.topLeft(), rect.width(), CoverFigures(data));
  });
}
