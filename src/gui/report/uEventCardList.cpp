#include "gui/report/uEventCardList.h"

#include <QAccessible>
#include <QBuffer>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

#include "gui/common/uBoxes.h"
#include "gui/common/uTheme.h"
#include "shell/uShownVerdict.h"

namespace {

constexpr QSizeF kCard(236, 168);  // pt
constexpr double kPixelsAPoint = 1.25;
constexpr int kListGap = 8;  // px around and between cards
constexpr std::size_t kMaxCards = 64;
constexpr std::size_t kMaxListed = 5'000'000;  // so that all pixels can be counted in an int
constexpr int kRing = 2;

}  // namespace

TEventCardList::TEventCardList(QWidget* parent) : QAbstractScrollArea(parent) {
  Named(this, "lstEventCards", tr("Event cards"));
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  setContextMenuPolicy(Qt::ActionsContextMenu);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setMinimumWidth(CardSize().width() + 2 * kListGap + verticalScrollBar()->sizeHint().width());
}

void TEventCardList::ShowCards(const TShownMission* mission, const TRange& time) {
  FMission = mission;
  FCards.clear();
  FEvents.clear();
  FTable = TDataset();
  if (mission != nullptr) {
    FTable = mission->Tables.Cards;
    FChartField = FTable.FindField("Chart").value();
    FTable.ClearBlobs(FChartField);
    FLimits = LimitsInForce(mission->Display);
    FEvents = VisibleEvents(mission->CLDS);
    if (time.IsSet()) {
      const std::vector<bool> counts = EventsIn({time, {}}, mission->Tables, mission->Events);
      std::erase_if(FEvents, [&counts](std::uint32_t event) { return !counts[event]; });
    }
    if (FEvents.size() > kMaxListed) FEvents.resize(kMaxListed);
  }
  LayOut();
  if (mission != nullptr) SetCurrent(mission->SelectedEvent);
}

void TEventCardList::SetCurrent(std::optional<std::size_t> event) {
  if (FMission == nullptr) return;
  FCurrent = event;
  if (const auto card = CurrentCard()) ScrollTo(*card);
  setAccessibleDescription(event ? CardOf(*event).Words() : QString());
  viewport()->update();
}

int TEventCardList::Columns() const {
  return std::max(1, (viewport()->width() - kListGap) / (CardSize().width() + kListGap));
}

QSize TEventCardList::CardSize() const {
  return (kCard * kPixelsAPoint).toSize();
}

QRect TEventCardList::RectOf(std::size_t card) const {
  const QSize size = CardSize();
  const int columns = Columns();
  const auto place = static_cast<int>(card);
  return {QPoint(kListGap + place % columns * (size.width() + kListGap),
                 kListGap + place / columns * (size.height() + kListGap) - verticalScrollBar()->value()),
          size};
}

std::optional<std::size_t> TEventCardList::CardAt(const QPoint& at) const {
  const QSize size = CardSize();
  const int row = (at.y() + verticalScrollBar()->value() - kListGap) / (size.height() + kListGap);
  const int column = (at.x() - kListGap) / (size.width() + kListGap);
  if (column < 0 || column >= Columns() || row < 0) return std::nullopt;
  const auto card = static_cast<std::size_t>(row * Columns() + column);
  if (card >= FEvents.size() || !RectOf(card).contains(at)) return std::nullopt;
  return card;
}

std::optional<std::size_t> TEventCardList::CurrentCard() const {
  if (!FCurrent) return std::nullopt;
  const auto found = std::ranges::find(FEvents, *FCurrent);
  if (found == FEvents.end()) return std::nullopt;
  return static_cast<std::size_t>(found - FEvents.begin());
}

void TEventCardList::LayOut() {
  const int rows = (static_cast<int>(FEvents.size()) + Columns() - 1) / Columns();
  const int height = rows * (CardSize().height() + kListGap) + kListGap;
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(CardSize().height() / 3);
  verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
  viewport()->update();
}

void TEventCardList::ScrollTo(std::size_t card) {
  const QRect place = RectOf(card);
  QScrollBar& bar = *verticalScrollBar();
  if (place.top() < kListGap) {
    bar.setValue(bar.value() + place.top() - kListGap);
  } else if (place.bottom() > viewport()->height() - kListGap) {
    bar.setValue(bar.value() + place.bottom() + kListGap - viewport()->height());
  }
}

const TEventCard& TEventCardList::CardOf(std::size_t event) {
  const auto kept = FCards.find(event);
  if (kept != FCards.end()) return kept->second;
  if (FCards.size() == kMaxCards) FCards.clear();
  return FCards.emplace(event, MakeEventCard(*FMission, FMission->Display, FLimits, event)).first->second;
}

// A picture of another size or that cannot be read is made anew.
QImage TEventCardList::ChartOf(std::size_t event, const QRectF& chart) {
  const double scale = kPixelsAPoint * devicePixelRatioF();
  const QSize pixels = (chart.size() * scale).toSize();
  QImage picture;
  if (const std::string* kept = FTable.Blob(event, FChartField)) {
    picture.loadFromData(reinterpret_cast<const uchar*>(kept->data()), static_cast<int>(kept->size()), "PNG");
  }
  if (picture.size() == pixels || pixels.isEmpty()) return picture;
  picture = QImage(pixels, QImage::Format_RGB32);
  const TThemeTokens& tokens = TokensOf(palette());
  picture.fill(QColor(tokens.surface));
  {
    QPainter painter(&picture);
    painter.scale(scale, scale);
    PaintCardChart(painter, QRectF(QPointF(), chart.size()), FMission->Events.GetItem(event), FMission->Display,
                   {tokens, false});
  }
  QBuffer file;
  file.open(QIODevice::WriteOnly);
  if (picture.save(&file, "PNG")) FTable.SetBlob(event, FChartField, file.data().toStdString());
  return picture;
}

void TEventCardList::PaintCard(QPainter& painter, const QRect& place, std::size_t event) {
  const TThemeTokens& tokens = TokensOf(palette());
  const TEventCard& card = CardOf(event);
  painter.save();
  painter.translate(place.topLeft());
  painter.scale(kPixelsAPoint, kPixelsAPoint);
  const QRectF rect(QPointF(), kCard);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(tokens.surface));
  painter.drawRoundedRect(rect, 3, 3);
  const QRectF chart = CardChartRect(card, rect);
  painter.drawImage(chart, ChartOf(event, chart));
  PaintEventCard(painter, rect, card, {tokens, false});
  painter.restore();
  if (FCurrent != event) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(tokens.accent), kRing));
  painter.drawRoundedRect(place.adjusted(0, 0, -1, -1), 4, 4);
}

void TEventCardList::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  const TThemeTokens& tokens = TokensOf(palette());
  painter.fillRect(viewport()->rect(), QColor(tokens.ground));
  if (FEvents.empty()) {
    painter.setPen(QColor(tokens.secondaryInk));
    const bool hidden = FMission != nullptr && FMission->Events.Count() > 0;
    painter.drawText(
        viewport()->rect(), Qt::AlignCenter,
        hidden ? tr("No event passes the filter and the time of the report.") : tr("There are no events."));
  }
  const int step = CardSize().height() + kListGap;
  const int above = std::max(0, (verticalScrollBar()->value() - kListGap) / step);
  for (auto card = static_cast<std::size_t>(above * Columns()); card < FEvents.size(); ++card) {
    const QRect place = RectOf(card);
    if (place.top() >= viewport()->height()) break;
    PaintCard(painter, place, FEvents[card]);
  }
  if (!hasFocus()) return;
  painter.setPen(QPen(QColor(tokens.accent), kRing));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
}

// Says why a card lacks figures.
bool TEventCardList::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QAbstractScrollArea::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const auto card = CardAt(help->pos());
  QToolTip::showText(help->globalPos(), card ? CardOf(FEvents[*card]).whyNoPulse : QString(), this);
  return true;
}

void TEventCardList::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  LayOut();
}

// Pictures have the colours of the palette.
void TEventCardList::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && FMission != nullptr) FTable.ClearBlobs(FChartField);
}

void TEventCardList::keyPressEvent(QKeyEvent* event) {
  const auto current = CurrentCard();
  if (FEvents.empty()) return QAbstractScrollArea::keyPressEvent(event);
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (current) emit EventOpened(FEvents[*current]);
    return;
  }
  const int page = std::max(1, viewport()->height() / (CardSize().height() + kListGap)) * Columns();
  const auto count = static_cast<std::int64_t>(FEvents.size());
  const std::pair<int, std::int64_t> steps[] = {
      {Qt::Key_Left, -1},      {Qt::Key_Right, 1},       {Qt::Key_Up, -Columns()}, {Qt::Key_Down, Columns()},
      {Qt::Key_PageUp, -page}, {Qt::Key_PageDown, page}, {Qt::Key_Home, -count},   {Qt::Key_End, count}};
  const auto* step = std::ranges::find(steps, event->key(), &std::pair<int, std::int64_t>::first);
  if (step == std::end(steps)) return QAbstractScrollArea::keyPressEvent(event);
  const std::int64_t card = static_cast<std::int64_t>(current.value_or(0)) + step->second;
  emit EventChosen(FEvents[static_cast<std::size_t>(std::clamp<std::int64_t>(card, 0, count - 1))]);
}

void TEventCardList::mousePressEvent(QMouseEvent* event) {
  // The menu is about the selected event.
  const auto card = CardAt(event->pos());
  if ((event->button() == Qt::LeftButton || event->button() == Qt::RightButton) && card) {
    emit EventChosen(FEvents[*card]);
  }
}

void TEventCardList::mouseDoubleClickEvent(QMouseEvent* event) {
  const auto card = CardAt(event->pos());
  if (event->button() == Qt::LeftButton && card) emit EventOpened(FEvents[*card]);
}

void TEventCardList::scrollContentsBy(int /*dx*/, int /*dy*/) {
  viewport()->update();
}

void TEventCardList::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

void TEventCardList::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}
