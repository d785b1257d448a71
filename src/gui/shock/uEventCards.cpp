#include "gui/shock/uEventCards.h"

#include <QFrame>
#include <QGridLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "analysis/uDataset.h"
#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "shell/uAlarmMarks.h"

namespace {

struct TCard {
  const char* captionName;  // the start writes the captions
  const char* valueName;
  const char* field;  // of the shock event table
  const char* unit;   // where the cell's text has none
};
constexpr TCard kCards[] = {{"lblCardToTTotal", "lblCardToTTotalValue", "ToT total", ""},
                            {"lblCardIoTTotal", "lblCardIoTTotalValue", "IoT total", " g ms"},
                            {"lblCardToTMax", "lblCardToTMaxValue", "ToT max", ""},
                            {"lblCardIoTMax", "lblCardIoTMaxValue", "IoT max", " g ms"}};
constexpr auto kNoValue = "–";
constexpr auto kUsualNumber = "0000.000";
constexpr auto kUsualUnit = " g ms";

constexpr int kSpace = 4;    // px, between the cards
constexpr int kPadding = 8;  // left and right in a card

QFont UnitFont(QFont font) {
  font.setWeight(QFont::Normal);
  return SizedFont(font, kCaptionSize);
}

int WidthOf(const QFont& font, const QString& number, const QString& unit) {
  return QFontMetrics(font).horizontalAdvance(number) + QFontMetrics(UnitFont(font)).horizontalAdvance(unit);
}

// A number in the label's font with its unit small and in secondary ink.
class TValueLabel : public TElidedLabel {
 public:
  using TElidedLabel::TElidedLabel;

 protected:
  void paintEvent(QPaintEvent* event) override {
    const auto end = text().indexOf(' ');
    const QString number = text().left(end);
    const QString unit = end < 0 ? QString() : text().mid(end);
    QRect room = contentsRect();
    if (WidthOf(font(), number, unit) > room.width()) return TElidedLabel::paintEvent(event);
    setToolTip({});
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, number);
    // Both stand on one line.
    const int baseline = room.top() + (room.height() - fontMetrics().height()) / 2 + fontMetrics().ascent();
    painter.setFont(UnitFont(font()));
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(room.left() + fontMetrics().horizontalAdvance(number), baseline, unit);
  }
};

}  // namespace

TEventCards::TEventCards(QWidget* parent) : QWidget(parent), FGrid(new QGridLayout(this)) {
  FGrid->setContentsMargins(0, 0, 0, 0);
  FGrid->setSpacing(kSpace);
  for (std::size_t i = 0; i < kCount; ++i) {
    auto* card = new QFrame(this);
    card->setProperty("surface", true);
    card->setFrameShape(QFrame::StyledPanel);
    card->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* caption = new TElidedLabel(kCards[i].captionName, card);
    caption->setForegroundRole(QPalette::PlaceholderText);
    auto* value = new TValueLabel(kCards[i].valueName, card, Qt::ElideRight);
    value->setText(kNoValue);
    QFont semibold = value->font();
    semibold.setWeight(QFont::DemiBold);
    value->setFont(semibold);
    auto* lines = new QVBoxLayout(card);
    lines->setContentsMargins(kPadding, 3, kPadding, 3);
    lines->setSpacing(0);
    lines->addWidget(caption);
    lines->addWidget(value);
    FCards[i] = card;
    FValues[i] = value;
  }
  Arrange(kCount);
}

int TEventCards::CardWidth() const {
  constexpr int kFrame = 1;
  return WidthOf(FValues[0]->font(), kUsualNumber, kUsualUnit) + 2 * (kPadding + kFrame);
}

QSize TEventCards::minimumSizeHint() const {
  return {2 * CardWidth() + 3 * kSpace, QWidget::minimumSizeHint().height()};
}

void TEventCards::Arrange(int columns) {
  if (columns == FColumns) return;
  FColumns = columns;
  for (int i = 0; i < static_cast<int>(kCount); ++i) {
    FGrid->addWidget(FCards[static_cast<std::size_t>(i)], i / columns, i % columns);
    FGrid->setColumnStretch(i, i < columns ? 1 : 0);
  }
}

void TEventCards::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  constexpr int kAll = static_cast<int>(kCount);
  Arrange(width() >= kAll * CardWidth() + (kAll + 1) * kSpace ? kAll : 2);
}

void TEventCards::ShowRow(const TDataset& events, std::optional<std::size_t> row, const TDisplaySettings& display) {
  for (std::size_t i = 0; i < kCount; ++i) {
    const auto field = events.FindField(kCards[i].field);
    const bool hasValue = field && row && *row < events.RecordCount();
    FValues[i]->setText(hasValue ? QtText(CellText(events, *row, *field, display) + kCards[i].unit) : kNoValue);
  }
}
