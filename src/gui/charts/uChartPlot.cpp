#include "gui/charts/uChartPlot.h"

#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>
#include <tuple>

#include "gui/charts/uChartPaint.h"
#include "gui/charts/uDateTicker.h"
#include "gui/charts/uNumberTicker.h"
#include "gui/common/uTheme.h"

// Keeps the margins that the axes need, before they are widened to those of a neighbour.
class TChartRect final : public QCPAxisRect {
 public:
  explicit TChartRect(QCustomPlot* plot) : QCPAxisRect(plot, false) {}
  [[nodiscard]] int Needed(QCP::MarginSide side) const { return FNeeded.value(side, 0); }

 protected:
  int calculateAutoMargin(QCP::MarginSide side) override {
    FNeeded[side] = QCPAxisRect::calculateAutoMargin(side);
    return FNeeded[side];
  }

 private:
  QHash<QCP::MarginSide, int> FNeeded;
};

TChartPlot::TChartPlot(TAxisUnit unit, QWidget* parent) : QCustomPlot(parent), FUnit(unit) {
  plotLayout()->clear();
  FLegend = new TLegendRow(this);
  FRect = new TChartRect(this);
  plotLayout()->addElement(0, 0, FLegend);
  plotLayout()->addElement(1, 0, FRect);
  plotLayout()->setRowSpacing(0);
  // Each buffered layer, and what is above it, costs a picture that is blended at each paint.
  layer("overlay")->setMode(QCPLayer::lmLogical);
  addLayer("marks", layer("overlay"));
  layer("marks")->setMode(QCPLayer::lmBuffered);

  FRect->setLayer("background");
  FTimeAxis = AddAxis(QCPAxis::atBottom);
  FValueAxis = AddAxis(QCPAxis::atLeft);
  if (FUnit == TAxisUnit::Days) {
    FTimeAxis->setTicker(QSharedPointer<TDateTicker>::create(*FTimeAxis));
    FTimeTitle = tr("Date and time");
  } else if (FUnit != TAxisUnit::Number) {
    FTimeTitle = FUnit == TAxisUnit::Hertz ? tr("Frequency (Hz)") : tr("Time (ms)");
  }
  FTimeAxis->setLabel(FTimeTitle);
  SetSideMargins({});
  new TPainted(FRect, "grid", [this](QCPPainter& painter) { PaintGround(painter); });

  setNoAntialiasingOnDrag(false);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(80, 60);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  connect(this, &QCustomPlot::beforeReplot, this, &TChartPlot::LayOut);
  connect(this, &QCustomPlot::afterReplot, this, [this] {
    FStale = false;
    EmitNeededMargins();
  });
}

void TChartPlot::SetHasData(bool hasData) {
  FHasData = hasData;
  for (QCPAxis* axis : FRect->axes()) {
    axis->setTicks(FHasData);
    axis->setTickLabels(FHasData);
  }
  UpdateTimeLabels();
  for (const QCPAxis* axis : std::initializer_list<QCPAxis*>{FTimeAxis, FValueAxis}) axis->grid()->setVisible(FHasData);
}

void TChartPlot::UpdateTimeLabels() {
  FTimeAxis->setTickLabels(FHasData && FTimeLabels);
}

void TChartPlot::SetTimeLabelsVisible(bool visible) {
  if (std::exchange(FTimeLabels, visible) == visible) return;
  UpdateTimeLabels();
  QueueReplot();
}

QCPAxisRect& TChartPlot::Rect() const {
  return *FRect;
}

QList<QCPAxis*> TChartPlot::ValueAxes() const {
  return FRect->axes(QCPAxis::atLeft | QCPAxis::atRight);
}

// The axis whose strip beside the axis rect contains the position.
QCPAxis* TChartPlot::ValueAxisAt(const QPointF& position) const {
  const QRect rect = FRect->rect();
  const bool left = position.x() < rect.left();
  const double distance = left ? rect.left() - position.x() : position.x() - rect.right();
  if (distance <= 0 || position.y() < rect.top() || position.y() > rect.bottom()) return nullptr;
  QCPAxis* found = nullptr;
  for (QCPAxis* axis : FRect->axes(left ? QCPAxis::atLeft : QCPAxis::atRight)) {
    if (axis->visible() && axis->offset() <= distance) found = axis;
  }
  return found;
}

QColor TChartPlot::FaintInk() const {
  return palette().color(QPalette::PlaceholderText);
}

void TChartPlot::QueueReplot() {
  FStale = true;
  update();
}

void TChartPlot::RedrawMarks() {
  if (isVisible() && !FStale) {
    layer("marks")->replot();
  } else {
    QueueReplot();
  }
}

QImage TChartPlot::Picture() {
  QImage picture(size() * devicePixelRatioF(), QImage::Format_RGB32);
  picture.setDevicePixelRatio(devicePixelRatioF());
  picture.fill(Qt::white);
  InLight([&] {
    QCPPainter painter(&picture);
    toPainter(&painter, width(), height());
  });
  return picture;
}

void TChartPlot::DrawWith(QCPPainter& painter, const QString& caption, const QSize& size) {
  InLight([&] {
    const TLegendContents before = FLegend->Contents();
    const QRect shown = viewport();
    setViewport({QPoint(), size});
    ThinOut();
    FLegend->SetContents(FLegend->ContentsForPicture(caption));
    FLegend->SetHidden(false);
    SettleMargins();
    painter.fillRect(viewport(), Qt::white);
    toPainter(&painter, size.width(), size.height());
    FLegend->SetContents(before);
    setViewport(shown);
  });
}

void TChartPlot::InLight(const std::function<void()>& draw) {
  if (FStale) replot(rpQueuedRefresh);  // it may never have been shown
  const QPalette before = palette();
  const bool inherited = !testAttribute(Qt::WA_SetPalette);
  setPalette(LightPalette());
  FTimeAxis->setTickLabels(FHasData);
  draw();
  UpdateTimeLabels();
  setPalette(inherited ? QPalette() : before);
  QueueReplot();
}

TChartPlot::TSideMargins TChartPlot::NeededMargins() const {
  return {FRect->Needed(QCP::msLeft), FRect->Needed(QCP::msRight)};
}

void TChartPlot::SetSideMargins(const TSideMargins& min) {
  const QMargins margins(std::max(min.left, 12), 6, std::max(min.right, 14), 4);
  if (FRect->minimumMargins() == margins) return;
  FRect->setMinimumMargins(margins);
  // The ticks may need these margins anyway.
  const QMargins now = FRect->margins();
  const auto [left, right] = NeededMargins();
  if (std::max(margins.left(), left) != now.left() || std::max(margins.right(), right) != now.right()) QueueReplot();
}

void AlignMargins(TChartPlot& a, TChartPlot& b) {
  const auto [leftA, rightA] = a.NeededMargins();
  const auto [leftB, rightB] = b.NeededMargins();
  for (TChartPlot* plot : {&a, &b}) plot->SetSideMargins({std::max(leftA, leftB), std::max(rightA, rightB)});
}

void TChartPlot::LayOut() {
  ThinOut();
  SettleMargins();
}

// Margins depend on tick labels, and ticks on margins; a neighbour may widen the margins too. So the layout is repeated
// until the margins stay. The base class runs it once more for the picture.
void TChartPlot::SettleMargins() {
  constexpr int kMaxRounds = 4;
  const auto laid = [this] { return std::tuple(FRect->margins(), FRect->minimumMargins(), FRect->size()); };
  for (int round = 0; round < kMaxRounds; ++round) {
    const auto before = laid();
    ShowValueTitle();
    Prepare();
    updateLayout();
    EmitNeededMargins();
    if (laid() == before) break;
  }
}

void TChartPlot::ThinOut() {
  constexpr int kWithTitles = 9;  // lines of text; a lower chart has no title at its time axis
  constexpr int kWithLegend = 6;  // a lower one has no legend either
  const int lines = viewport().height() / std::max(1, fontMetrics().height());
  // A chart that names no time axis keeps none.
  if (!FTimeTitle.isEmpty()) FTimeAxis->setLabel(lines < kWithTitles ? QString() : FTimeTitle);
  FLegend->SetHidden(lines < kWithLegend);
}

void TChartPlot::SetTimeTitle(const QString& title) {
  FTimeTitle = title;
  FTimeAxis->setLabel(title);
}

void TChartPlot::SetValueTitle(const QString& name, const QString& unit) {
  FValueTitle = name;
  FValueUnit = unit;
  ShowValueTitle();
}

void TChartPlot::ShowValueTitle() {
  if (FValueTitle.isEmpty()) return;
  const QString whole = QString("%1 (%2)").arg(FValueTitle, FValueUnit);
  const bool fits = fontMetrics().horizontalAdvance(whole) <= FRect->height();
  FValueAxis->setLabel(fits ? whole : FValueUnit);
}

// What found no room: the whole title, and the names of the levels.
bool TChartPlot::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QCustomPlot::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  QString words = FLegend->CutTitleAt(help->pos());
  if (words.isEmpty()) words = TipAt(help->pos());
  if (words.isEmpty() && FRect->rect().contains(help->pos())) words = FLabels.LevelAt(help->pos().y());
  if (words.isEmpty()) return QCustomPlot::event(event);
  QToolTip::showText(help->globalPos(), Qt::convertFromPlainText(words), this);
  return true;
}

void TChartPlot::EmitNeededMargins() {
  const TSideMargins needed = NeededMargins();
  if (std::exchange(FEmitted, needed) != needed) emit NeededMarginsChanged();
}

TTitledAxis* TChartPlot::AddAxis(QCPAxis::AxisType side) {
  auto* const axis = new TTitledAxis(FRect, side);
  FRect->addAxis(side, axis);
  axis->setLayer("axes");
  axis->grid()->setLayer("grid");
  axis->grid()->setVisible(true);
  axis->setTicker(QSharedPointer<TNumberTicker>::create(*axis));
  axis->setTicks(FHasData);
  axis->setTickLabels(FHasData);
  return axis;
}

void TChartPlot::SetLogarithmic(QCPAxis& axis, bool on) {
  if (IsLogarithmic(axis) == on) return;
  axis.setScaleType(on ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
  if (on) {
    axis.setTicker(QSharedPointer<TLogTicker>::create(axis));
  } else {
    axis.setTicker(QSharedPointer<TNumberTicker>::create(axis));
  }
}

void TChartPlot::Restyle() {
  setBackground(palette().brush(QPalette::Base));
  const QColor text = palette().color(QPalette::Text);
  for (QCPAxis* axis : FRect->axes()) StyleAxis(*axis, text);
  QueueReplot();
}

void TChartPlot::StyleAxis(QCPAxis& axis, const QColor& ink) const {
  const QColor ground = palette().color(QPalette::Base);
  const QColor text = palette().color(QPalette::Text);
  const QPen line(Mixed(ground, ink, ink == text ? 0.5 : 1.0), 1);
  axis.setBasePen(line);
  axis.setTickPen(line);
  axis.setSubTicks(false);
  axis.setTickLength(0, 4);
  axis.setTickLabelPadding(3);
  axis.setLabelPadding(axis.orientation() == Qt::Horizontal ? 1 : 4);
  axis.setTickLabelFont(font());
  axis.setLabelFont(font());
  axis.setTickLabelColor(InkOn(palette(), ink, kTextContrast));
  axis.setLabelColor(ink);
  axis.setNumberFormat("g");
  axis.setSelectableParts(QCPAxis::spNone);
  axis.grid()->setPen(QPen(Mixed(ground, text, 0.12), 0));
  axis.grid()->setZeroLinePen(axis.orientation() == Qt::Vertical ? QPen(Mixed(ground, text, 0.35), 0)
                                                                 : axis.grid()->pen());
  axis.grid()->setSubGridVisible(false);
}

void TChartPlot::PaintGround(QCPPainter& painter) {
  const QRect rect = FRect->rect();
  FLabels.Begin(rect);
  painter.setAntialiasing(false);
  painter.setPen(QPen(Mixed(palette().color(QPalette::Base), palette().color(QPalette::Text), 0.12), 0));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(rect);
  if (FHasData) return;
  painter.setFont(font());
  painter.setPen(FaintInk());
  painter.drawText(rect, Qt::AlignCenter | Qt::TextWordWrap, FPlaceholder);
}

void TChartPlot::paintEvent(QPaintEvent* event) {
  // Replots into the buffers that the base class shows next.
  if (FStale) replot(rpQueuedRefresh);
  QCustomPlot::paintEvent(event);
  QPainter painter(this);
  PaintOver(painter);
  PaintSurfaceFrame(painter, *this);
}

// The base class would replot at once, for every step of a layout.
void TChartPlot::resizeEvent(QResizeEvent* /*event*/) {
  setViewport(rect());
  QueueReplot();
}

void TChartPlot::changeEvent(QEvent* event) {
  QCustomPlot::changeEvent(event);
  const bool looks = event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange;
  if (looks && FTimeAxis) Restyle();
}

QString TTitledAxis::TitleText() const {
  QString text;
  for (const TTitlePart& part : FParts) text += part.text;
  return text;
}

// The title stands beyond the tick labels.
int TTitledAxis::calculateMargin() {
  const int margin = QCPAxis::calculateMargin();
  return FParts.empty() || !visible() ? margin : margin + labelPadding() + QFontMetrics(labelFont()).height();
}

void TTitledAxis::draw(QCPPainter* painter) {
  QCPAxis::draw(painter);
  if (FParts.empty()) return;
  const QRect rect = axisRect()->rect();
  const bool left = axisType() == atLeft;
  painter->setFont(labelFont());
  const QFontMetrics metrics = painter->fontMetrics();
  const int away = offset() + QCPAxis::calculateMargin() - padding() + labelPadding() + metrics.height();
  painter->save();
  painter->translate(left ? rect.left() - away : rect.right() + away, left ? rect.bottom() : rect.top());
  painter->rotate(left ? -90 : 90);
  double along = (rect.height() - metrics.horizontalAdvance(TitleText())) / 2.0;
  for (const TTitlePart& part : FParts) {
    const double width = metrics.horizontalAdvance(part.text);
    painter->setPen(InkOn(parentPlot()->palette(), part.ink, kTextContrast));
    painter->drawText(QRectF(along, 0, width, metrics.height()), Qt::AlignCenter | Qt::TextDontClip, part.text);
    along += width;
  }
  painter->restore();
}
