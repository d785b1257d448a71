#include "gui/report/uPageView.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "gui/common/uBoxes.h"
#include "gui/common/uTheme.h"
#include "gui/report/uReportPages.h"

namespace {

constexpr int kPageGap = 12;  // px around and between pages
constexpr double kMinZoom = 0.05;
constexpr double kMaxZoom = 4;
constexpr int kNear = 2;  // pages before and behind those in sight whose pictures are kept
constexpr int kFocusRing = 2;

}  // namespace

TPageView::TPageView(const QString& name, const QString& title, QWidget* parent) : QAbstractScrollArea(parent) {
  Named(this, name, title);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  // A bar that comes and goes would change the width that is fitted.
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

void TPageView::ShowPages(const TReportPages* pages) {
  const int page = CurrentPage();
  FPages = pages;
  FMarked.reset();
  Refresh();
  FitZoom();
  if (PageCount() > 0) GoToPage(std::min(page, PageCount() - 1));
  FShownPage = CurrentPage();
  emit PageChanged();
}

void TPageView::Refresh() {
  FPictures.clear();
  LayOut();
}

int TPageView::PageCount() const {
  return FPages == nullptr ? 0 : FPages->Count();
}

double TPageView::PixelsAPoint() const {
  return FZoom * logicalDpiX() / kPointsPerInch;
}

QSize TPageView::PagePixels() const {
  return FPages == nullptr ? QSize() : (FPages->PageSize() * PixelsAPoint()).toSize();
}

QRect TPageView::RectOf(int page) const {
  const QSize size = PagePixels();
  const int left = std::max(kPageGap, (viewport()->width() - size.width()) / 2) - horizontalScrollBar()->value();
  return {QPoint(left, kPageGap + page * (size.height() + kPageGap) - verticalScrollBar()->value()), size};
}

int TPageView::CurrentPage() const {
  if (PageCount() == 0) return 0;
  const int middle = verticalScrollBar()->value() + viewport()->height() / 2;
  const int last = verticalScrollBar()->maximum();
  if (verticalScrollBar()->value() == 0) return 0;
  if (verticalScrollBar()->value() == last) return PageCount() - 1;
  return std::clamp((middle - kPageGap) / (PagePixels().height() + kPageGap), 0, PageCount() - 1);
}

void TPageView::GoToPage(int page) {
  const QSize size = PagePixels();
  const int above = std::max(kPageGap, (viewport()->height() - size.height()) / 2);
  const int top = kPageGap + std::clamp(page, 0, std::max(0, PageCount() - 1)) * (size.height() + kPageGap);
  verticalScrollBar()->setValue(top - above);
}

void TPageView::SetMarkedPage(std::optional<int> page) {
  if (FMarked == page) return;
  FMarked = page;
  if (page && !viewport()->rect().contains(RectOf(*page))) GoToPage(*page);
  viewport()->update();
}

void TPageView::SetFit(TFit fit) {
  FFit = fit;
  FitZoom();
}

void TPageView::ZoomBy(double factor) {
  FFit = TFit::None;
  SetZoom(FZoom * factor);
}

void TPageView::FitZoom() {
  if (FPages == nullptr || FFit == TFit::None) return LayOut();
  const QSizeF page = FPages->PageSize() * logicalDpiX() / kPointsPerInch;
  double zoom = (viewport()->width() - 2.0 * kPageGap) / page.width();
  if (FFit == TFit::Page) zoom = std::min(zoom, (viewport()->height() - 2.0 * kPageGap) / page.height());
  SetZoom(zoom);
}

void TPageView::SetZoom(double zoom) {
  zoom = std::clamp(zoom, kMinZoom, kMaxZoom);
  if (zoom == FZoom) return LayOut();
  // The place in the middle stays there, the top at the top.
  const int page = CurrentPage();
  const bool atTop = verticalScrollBar()->value() == 0;
  const QRect before = RectOf(page);
  const double part =
      before.height() == 0 ? 0.0 : (viewport()->height() / 2.0 - before.top()) / static_cast<double>(before.height());
  FZoom = zoom;
  Refresh();
  const QRect now = RectOf(page);
  if (!atTop) {
    verticalScrollBar()->setValue(verticalScrollBar()->value() + now.top() + qRound(part * now.height()) -
                                  viewport()->height() / 2);
  }
  emit ZoomChanged();
}

void TPageView::LayOut() {
  const QSize size = PagePixels();
  const int height = PageCount() == 0 ? 0 : kPageGap + PageCount() * (size.height() + kPageGap);
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(viewport()->height() / 12);
  verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
  horizontalScrollBar()->setPageStep(viewport()->width());
  horizontalScrollBar()->setSingleStep(viewport()->width() / 12);
  horizontalScrollBar()->setRange(0, std::max(0, size.width() + 2 * kPageGap - viewport()->width()));
  viewport()->update();
}

const QPixmap& TPageView::PictureOf(int page) {
  const auto kept = FPictures.find(page);
  if (kept != FPictures.end()) return kept->second;
  const double ratio = devicePixelRatioF();
  QPixmap picture(PagePixels() * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  painter.scale(PixelsAPoint(), PixelsAPoint());
  FPages->Paint(painter, page);
  return FPictures.emplace(page, std::move(picture)).first->second;
}

void TPageView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(viewport());
  const TThemeTokens& tokens = TokensOf(palette());
  painter.fillRect(viewport()->rect(), QColor(tokens.ground));
  if (PageCount() > 0) {
    const int step = PagePixels().height() + kPageGap;
    const int first = std::clamp((verticalScrollBar()->value() - kPageGap) / step, 0, PageCount() - 1);
    int page = first;
    for (; page < PageCount() && RectOf(page).top() < viewport()->height(); ++page) {
      const QRect place = RectOf(page);
      painter.drawPixmap(place.topLeft(), PictureOf(page));
      const bool marked = FMarked == page;
      painter.setPen(QPen(QColor(marked ? tokens.accent : tokens.hairline), marked ? 2 : 1));
      painter.drawRect(place.adjusted(-1, -1, 0, 0));
    }
    std::erase_if(FPictures,
                  [&](const auto& kept) { return kept.first < first - kNear || kept.first >= page + kNear; });
  }
  if (!hasFocus()) return;
  painter.setPen(QPen(QColor(tokens.accent), kFocusRing));
  painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
}

void TPageView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  FitZoom();
}

void TPageView::keyPressEvent(QKeyEvent* event) {
  const auto key = event->key();
  const bool isLetter = key == Qt::Key_W || key == Qt::Key_F;
  // "Ctrl+F" is a command that the report does not have.
  if (isLetter && (event->modifiers() & ~Qt::ShiftModifier)) return QAbstractScrollArea::keyPressEvent(event);
  if (key == Qt::Key_PageDown) {
    GoToPage(CurrentPage() + 1);
  } else if (key == Qt::Key_PageUp) {
    GoToPage(CurrentPage() - 1);
  } else if (key == Qt::Key_Home) {
    GoToPage(0);
  } else if (key == Qt::Key_End) {
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
  } else if (key == Qt::Key_Plus) {
    ZoomBy(kZoomStep);
  } else if (key == Qt::Key_Minus) {
    ZoomBy(1 / kZoomStep);
  } else if (key == Qt::Key_W) {
    SetFit(TFit::Width);
  } else if (key == Qt::Key_F) {
    SetFit(TFit::Page);
  } else {
    QAbstractScrollArea::keyPressEvent(event);
  }
}

void TPageView::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
  if (event->angleDelta().y() != 0) ZoomBy(event->angleDelta().y() > 0 ? kZoomStep : 1 / kZoomStep);
  event->accept();
}

void TPageView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || PageCount() == 0) return;
  const int step = PagePixels().height() + kPageGap;
  const int page = std::clamp((event->pos().y() + verticalScrollBar()->value() - kPageGap) / step, 0, PageCount() - 1);
  if (RectOf(page).contains(event->pos())) emit PageClicked(page);
}

void TPageView::scrollContentsBy(int /*dx*/, int /*dy*/) {
  viewport()->update();
  if (std::exchange(FShownPage, CurrentPage()) != CurrentPage()) emit PageChanged();
}

void TPageView::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

void TPageView::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}
