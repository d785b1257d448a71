#include "gui/docks/uMissionDetails.h"

#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "gui/common/uBoxes.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr qsizetype kMaxText = 400;  // characters; a header may hold 64 KiB
constexpr int kMinWidth = 26;        // characters
constexpr int kMinLabel = 13;        // characters of the column of labels, which is wider for a longer word
constexpr int kMaxLabel = 18;
constexpr int kCellPadding = 2;  // px
constexpr int kMinColumns = 34;  // characters; in a narrower panel a figure stands below its label

}  // namespace

TMissionDetails::TMissionDetails(QWidget* parent) : QTextEdit(parent) {
  Named(this, "edtMissionDetails", tr("Mission details"));
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

// Texts may break inside a word, labels do not.
int TMissionDetails::LabelWidth() const {
  const int character = fontMetrics().averageCharWidth();
  int width = character * kMinLabel;
  for (const TSection& section : FSections) {
    for (const TFigure& figure : section.figures) {
      for (const QString& word : QtText(figure.label).split(' '))
        width = std::max(width, fontMetrics().horizontalAdvance(word));
    }
  }
  return std::min(width, character * kMaxLabel) + 2 * kCellPadding + 1;
}

void TMissionDetails::resizeEvent(QResizeEvent* event) {
  QTextEdit::resizeEvent(event);
  const bool isNarrow = width() < fontMetrics().averageCharWidth() * kMinColumns;
  if (std::exchange(FIsNarrow, isNarrow) != isNarrow) ShowText();
}

// The text has the colours of the scheme.
void TMissionDetails::changeEvent(QEvent* event) {
  QTextEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ShowText();
}

void TMissionDetails::ShowText() {
  const auto shown = [](const std::string& text) { return ShownText(text, kMaxText).toHtmlEscaped(); };
  const QString labels = FIsNarrow ? "100%" : QString::number(LabelWidth());
  QString html;
  for (const TSection& section : FSections) {
    html += QString("<p style='margin-top:8px; margin-bottom:4px'><b>%1</b></p><table width='100%' cellpadding='%2'>")
                .arg(section.title.toHtmlEscaped())
                .arg(kCellPadding);
    for (const TFigure& figure : section.figures) {
      html += QString("<tr><td width='%1' style='color:%2'>%3</td>%4<td>%5</td></tr>")
                  .arg(labels, QColor(TokensOf(palette()).secondaryInk).name(), shown(figure.label),
                       FIsNarrow ? "</tr><tr>" : "", shown(figure.text));
    }
    html += "</table>";
  }
  const int top = verticalScrollBar()->value();
  setHtml(html);
  verticalScrollBar()->setValue(top);
}
