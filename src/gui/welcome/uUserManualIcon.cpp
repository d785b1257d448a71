#include "gui/welcome/uUserManualIcon.h"

#include <QDesktopServices>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTextLayout>
#include <QUrl>

#include "gui/common/uIcons.h"

namespace {

constexpr int kIcon = 40;
constexpr int kMargin = 8;
constexpr int kLines = 2;

}  // namespace

TUserManualIcon::TUserManualIcon(const QString& objectName, const QString& caption, const QString& filePath,
                                 QWidget* parent)
    : QFrame(parent), FCaption(caption), FFilePath(filePath), FIcon(Icon("documentation")) {
  setObjectName(objectName);
  setAccessibleName(caption);
  setAccessibleDescription(tr("Opens the document"));
  setToolTip(Qt::convertFromPlainText(QString("%1\n%2").arg(caption, QDir::toNativeSeparators(filePath))));
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setCursor(Qt::PointingHandCursor);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void TUserManualIcon::Open() {
  const bool opened = QFileInfo::exists(FFilePath) && QDesktopServices::openUrl(QUrl::fromLocalFile(FFilePath));
  if (!opened) emit OpenFailed(FFilePath);
}

QSize TUserManualIcon::sizeHint() const {
  const int line = fontMetrics().height();
  return {9 * line, kIcon + kLines * line + 3 * kMargin};
}

QSize TUserManualIcon::minimumSizeHint() const {
  return sizeHint();
}

void TUserManualIcon::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) FIcon = Icon("documentation");
  if (event->type() == QEvent::FontChange) updateGeometry();
}

void TUserManualIcon::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
    if (!event->isAutoRepeat()) Open();
  } else {
    QFrame::keyPressEvent(event);
  }
}

void TUserManualIcon::mousePressEvent(QMouseEvent* event) {
  FPressed = event->button() == Qt::LeftButton;
  update();
}

void TUserManualIcon::mouseReleaseEvent(QMouseEvent* event) {
  const bool clicked = FPressed && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
  FPressed = false;
  update();
  if (clicked) Open();
}

void TUserManualIcon::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QColor ground = palette().color(QPalette::Highlight);
  ground.setAlphaF(FPressed ? 0.4F : 0.15F);
  painter.setBrush(underMouse() || FPressed ? QBrush(ground) : QBrush(Qt::NoBrush));
  painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 2) : QPen(Qt::NoPen));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
  FIcon.paint(&painter, QRect(0, kMargin, width(), kIcon), Qt::AlignCenter,
              isEnabled() ? QIcon::Normal : QIcon::Disabled);
  PaintCaption(painter, QRect(kMargin, 2 * kMargin + kIcon, width() - 2 * kMargin, height() - 3 * kMargin - kIcon));
}

// Wrapped at words, or inside a name that has none; the last line ends in an ellipsis when there is more.
void TUserManualIcon::PaintCaption(QPainter& painter, const QRect& rect) const {
  painter.setPen(palette().color(QPalette::WindowText));
  QTextLayout layout(FCaption, font());
  QTextOption option(Qt::AlignHCenter);
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  int top = rect.top();
  for (int i = 0; i < kLines; ++i) {
    QTextLine line = layout.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(rect.width());
    const bool last = i == kLines - 1;
    const QString rest = last ? FCaption.mid(line.textStart()) : FCaption.mid(line.textStart(), line.textLength());
    const QRect row(rect.left(), top, rect.width(), fontMetrics().height());
    painter.drawText(row, Qt::AlignCenter, fontMetrics().elidedText(rest.trimmed(), Qt::ElideRight, rect.width()));
    top += fontMetrics().height();
  }
  layout.endLayout();
}
