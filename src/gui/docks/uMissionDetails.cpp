#include "gui/docks/uMissionDetails.h"

#include <QScrollBar>
#include <utility>

#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr qsizetype kMaxText = 400;  // characters; a header may hold 64 KiB
constexpr int kMinWidth = 26;        // characters; labels are not broken then

}  // namespace

TMissionDetails::TMissionDetails(QWidget* parent) : QTextEdit(parent) {
  setObjectName("edtMissionDetails");
  setAccessibleName(tr("Mission details"));
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setTabChangesFocus(true);
  setMinimumWidth(fontMetrics().averageCharWidth() * kMinWidth);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setBackgroundRole(QPalette::Window);
}

void TMissionDetails::ShowSections(std::vector<TSection> sections) {
  FSections = std::move(sections);
  ShowText();
}

// The text has the colours of the scheme.
void TMissionDetails::changeEvent(QEvent* event) {
  QTextEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ShowText();
}

void TMissionDetails::ShowText() {
  const auto shown = [](const std::string& text) { return ShownText(text, kMaxText).toHtmlEscaped(); };
  QString html;
  for (const TSection& section : FSections) {
    html += QString("<p style='margin-top:8px; margin-bottom:4px'><b>%1</b></p><table width='100%' cellpadding='2'>")
                .arg(section.title.toHtmlEscaped());
    for (const TFigure& figure : section.figures) {
      html += QString("<tr><td width='36%' style='color:%1'>%2</td><td>%3</td></tr>")
                  .arg(QColor(TokensOf(palette()).secondaryInk).name(), shown(figure.label), shown(figure.text));
    }
    html += "</table>";
  }
  const int top = verticalScrollBar()->value();
  setHtml(html);
  verticalScrollBar()->setValue(top);
}
