#include "gui/docks/uMissionDetails.h"

#include <QGridLayout>
#include <QLabel>

#include "base/uText.h"
#include "gui/common/uQtText.h"

namespace {

constexpr qsizetype kLongestText = 400;  // characters; a header may hold 64 KiB

QString Shown(const std::string& text) {
  const QString whole = QtText(Printable(text));
  return whole.size() <= kLongestText ? whole : whole.left(kLongestText) + "…";
}

}  // namespace

TMissionDetails::TMissionDetails(QWidget* parent) : QScrollArea(parent) {
  setObjectName("scrlMissionDetails");
  setAccessibleName(tr("Mission details"));
  setWidgetResizable(true);
  setFrameShape(NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  ShowSections({});
}

void TMissionDetails::ShowSections(const std::vector<TSection>& sections) {
  auto* page = new QWidget;
  page->setObjectName("pnlMissionDetails");
  auto* layout = new QGridLayout(page);
  layout->setContentsMargins(8, 6, 8, 6);
  layout->setHorizontalSpacing(10);
  layout->setVerticalSpacing(3);
  layout->setColumnStretch(1, 1);
  int row = 0;
  for (const TSection& section : sections) {
    auto* title = new QLabel(section.title, page);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    if (row > 0) layout->setRowMinimumHeight(row++, 6);
    layout->addWidget(title, row++, 0, 1, 2);
    for (const TFigure& figure : section.figures) AddFigure(*layout, figure, row++);
  }
  layout->setRowStretch(row, 1);
  setWidget(page);
}

void TMissionDetails::AddFigure(QGridLayout& layout, const TFigure& figure, int row) {
  QWidget* page = layout.parentWidget();
  auto* label = new QLabel(Shown(figure.label), page);
  label->setTextFormat(Qt::PlainText);
  label->setForegroundRole(QPalette::PlaceholderText);
  label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  auto* text = new QLabel(Shown(figure.text), page);
  text->setTextFormat(Qt::PlainText);
  text->setObjectName("figure " + label->text());
  text->setAccessibleName(label->text());
  text->setWordWrap(true);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  layout.addWidget(label, row, 0);
  layout.addWidget(text, row, 1);
}
