#include "gui/welcome/uUserManualIcon.h"

#include <QDesktopServices>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QTextLayout>
#include <QUrl>

#include "gui/common/uIcons.h"

namespace {

constexpr int kIcon = 40;
constexpr int kMargin = 8;
constexpr int kLines = 2;

// Wraps at words, or inside a long word; text beyond the last line is cut with an ellipsis.
QString InLines(const QString& caption, const QFont& font, int width) {
  const QFontMetrics metrics(font);
  QTextLayout layout(caption, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  QStringList lines;
  for (QTextLine line = layout.createLine(); line.isValid() && lines.size() < kLines; line = layout.createLine()) {
    line.setLineWidth(width);
    const bool last = lines.size() == kLines - 1;
    const QString text = last ? caption.mid(line.textStart()) : caption.mid(line.textStart(), line.textLength());
    lines << metrics.elidedText(text.trimmed(), Qt::ElideRight, width);
  }
  layout.endLayout();
  return lines.join('\n');
}

}  // namespace

TUserManualIcon::TUserManualIcon(const QString& objectName, const QString& caption, const QString& filePath,
                                 QWidget* parent)
    : QToolButton(parent), FCaption(caption), FFilePath(filePath) {
  setObjectName(objectName);
  setAccessibleName(caption);
  setAccessibleDescription(tr("Opens the document"));
  setToolTip(Qt::convertFromPlainText(QString("%1\n%2").arg(caption, QDir::toNativeSeparators(filePath))));
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  setIcon(Icon("documentation"));
  setIconSize({kIcon, kIcon});
  TakeFont();
  connect(this, &QToolButton::clicked, this, &TUserManualIcon::Open);
}

void TUserManualIcon::Open() {
  const bool opened = QFileInfo::exists(FFilePath) && QDesktopServices::openUrl(QUrl::fromLocalFile(FFilePath));
  if (!opened) emit OpenFailed(FFilePath);
}

void TUserManualIcon::TakeFont() {
  const int width = 9 * fontMetrics().height();
  setFixedWidth(width);
  setText(InLines(FCaption, font(), width - 2 * kMargin).replace('&', "&&"));
}

void TUserManualIcon::changeEvent(QEvent* event) {
  QToolButton::changeEvent(event);
  if (event->type() == QEvent::FontChange) TakeFont();
}

void TUserManualIcon::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter) return QToolButton::keyPressEvent(event);
  if (!event->isAutoRepeat()) click();
}
