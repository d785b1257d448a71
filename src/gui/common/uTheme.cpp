#include "gui/common/uTheme.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QProxyStyle>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "gui/common/uIcons.h"

namespace {

constexpr int kCorner = 4;     // px
constexpr int kFocusRing = 2;  // px

QPalette PaletteOf(const TThemeTokens& tokens) {
  const QColor ink(tokens.ink);
  const QColor accent(tokens.accent);
  QPalette palette(QColor(tokens.surface), QColor(tokens.ground));
  palette.setColor(QPalette::Base, QColor(tokens.surface));
  palette.setColor(QPalette::AlternateBase, QColor(tokens.surface));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, ink);
    QColor faint = ink;
    faint.setAlphaF(0.45F);
    palette.setColor(QPalette::Disabled, role, faint);
  }
  palette.setColor(QPalette::PlaceholderText, QColor(tokens.secondaryInk));
  palette.setColor(QPalette::ToolTipBase, QColor(tokens.surface));
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, QColor(tokens.surface));
  palette.setColor(QPalette::Link, accent);
  return palette;
}

// %surface and the other names of colours are those of SheetOf.
constexpr auto kSheet = R"(
  QMainWindow::separator { background: transparent; width: 8px; height: 8px; }
  QSplitter::handle { background: transparent; }
  QToolTip { background: %surface; color: %ink; border: 1px solid %hairline; padding: 4px; }
  QDockWidget::title { background: %surface; border-radius: 4px; padding: 6px 12px; }
  QStatusBar { background: %ground; color: %secondary; }
  QStatusBar::item { border: none; }
  QStatusBar QLabel { color: %secondary; }

  QAbstractItemView, QTextEdit, QPlainTextEdit { background: %surface; }
  QListView, QTreeView { selection-background-color: %tint; selection-color: %ink; }
  QHeaderView { background: %surface; border: none; padding: 0; }
  QHeaderView::section { background: %surface; color: %secondary; border: none; padding: 4px 6px; font-weight: 600; }
  /* Rising numbers have an arrow that points up on every system; to the toolkit they are "down". Every title gives room
     to an arrow, so tables that are never sorted have none. */
  TGrid QHeaderView::down-arrow, TRecordingList QHeaderView::down-arrow { image: url(%up); width: 12px; height: 12px; }
  TGrid QHeaderView::up-arrow, TRecordingList QHeaderView::up-arrow { image: url(%down); width: 12px; height: 12px; }
  QTableCornerButton::section { background: %surface; border: none; }

  QTabWidget::pane { border: none; }
  QTabBar { qproperty-drawBase: 0; }
  QTabBar::tab { background: transparent; color: %secondary; border: 1px solid transparent;
                 border-bottom: 2px solid transparent; padding: 5px 10px; }
  QTabBar::tab:hover { color: %ink; }
  QTabBar::tab:selected { color: %ink; border-bottom-color: %accent; }
  QTabBar::tab:left, QTabBar::tab:right { background: %surface; border: 1px solid %hairline; color: %ink;
                                          padding: 10px 5px; margin-bottom: 4px; font-weight: 600; border-radius: 4px; }
  QTabBar::tab:left:focus, QTabBar::tab:right:focus { border-color: %accent; }
  QTabBar::tab:selected:focus { background: %tint; border: 2px solid %accent; padding: 4px 9px 5px 9px; }

  QAbstractScrollArea::corner { background: transparent; border: none; }
  QScrollBar:vertical { background: transparent; width: 10px; margin: 0; }
  QScrollBar:horizontal { background: transparent; height: 10px; margin: 0; }
  QScrollBar::handle { background: %control; border-radius: 3px; margin: 2px; }
  QScrollBar::handle:vertical { min-height: 24px; }
  QScrollBar::handle:horizontal { min-width: 24px; }
  QScrollBar::handle:hover { background: %secondary; }
  QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
  QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }

  QPushButton, QLineEdit, QComboBox, QAbstractSpinBox {
    background: %surface; color: %ink; border: 1px solid %control; border-radius: 4px; padding: 3px 7px; }
  QPushButton { padding: 4px 12px; }
  QPushButton:hover:enabled, QComboBox:hover:enabled { background: %tint; }
  QPushButton:pressed { background: %hairline; }
  QPushButton:default { border-color: %accent; }
  QPushButton:disabled, QLineEdit:disabled, QComboBox:disabled, QAbstractSpinBox:disabled { border-color: %hairline;
                                                                                            color: %secondary; }
  QPushButton:focus { border: 2px solid %accent; padding: 3px 11px; }
  QLineEdit:focus, QComboBox:focus, QAbstractSpinBox:focus { border: 2px solid %accent; padding: 2px 6px; }
  QAbstractSpinBox QLineEdit, QComboBox QLineEdit { border: none; padding: 0; background: transparent; }
  QComboBox::drop-down, QAbstractSpinBox::up-button, QAbstractSpinBox::down-button { border: none; width: 18px; }
  QComboBox::down-arrow, QAbstractSpinBox::down-arrow { image: url(%down); width: 12px; height: 12px; }
  QAbstractSpinBox::up-arrow { image: url(%up); width: 12px; height: 12px; }
  QComboBox QAbstractItemView { border-radius: 0; selection-background-color: %tint; selection-color: %ink; }

  QCheckBox, QRadioButton { spacing: 6px; padding: 2px; border: 2px solid transparent; border-radius: 4px; }
  QCheckBox:focus, QRadioButton:focus { border-color: %accent; }
  QCheckBox::indicator, QRadioButton::indicator, QListWidget::indicator {
    width: 14px; height: 14px; border: 1px solid %secondary; background: %surface; }
  QCheckBox::indicator, QListWidget::indicator { border-radius: 3px; }
  QRadioButton::indicator { border-radius: 8px; }
  QCheckBox::indicator:checked, QListWidget::indicator:checked {
    background: %accent; border-color: %accent; image: url(%checkmark); }
  QRadioButton::indicator:checked { background: %accent; border: 4px solid %surface; }
  QCheckBox::indicator:disabled, QRadioButton::indicator:disabled { border-color: %hairline; }

  QToolButton { background: transparent; color: %ink; border: 1px solid transparent; border-radius: 4px; padding: 2px; }
  QToolButton:checked { background: %tint; color: %accent; }
  QToolButton:disabled { color: %faint; }
  QToolButton:hover:enabled { background: %tint; }
  QToolButton:pressed { background: %hairline; }
  QToolButton:focus { border: 2px solid %accent; padding: 1px; }

  TRibbonPage { background: %surface; border: 1px solid transparent; border-radius: 4px; }
  TRibbonTabBar::tab { padding: 5px 6px; }
  TRibbonTabBar::tab:selected:focus { padding: 4px 5px 5px 5px; }
  TRibbonTabBar::tab:selected { font-weight: 600; }
  TRibbonTabBar::tab:first { background: %accent; color: %surface; border-radius: 4px; margin: 2px 4px 2px 0;
                             font-weight: 600; }
  TRibbonTabBar::tab:first:hover { background: %strong; }
  QScrollArea#scrlReport:focus { border: 2px solid %accent; }
  QGroupBox { background: %surface; border: none; border-radius: 4px; margin-top: 28px; padding: 8px; }
  QGroupBox::title { subcontrol-origin: margin; padding: 4px 2px; }
  QLabel[alarm="true"] { color: %alarm; }
  QFrame[surface="true"] { background: %surface; }
  TBackstageEntry { margin: 1px 4px; padding: 5px 9px; border-left: 3px solid transparent; }
  TBackstageEntry:checked { background: transparent; border-left-color: %accent; font-weight: bold; }
  TBackstageEntry:checked:hover { background: %tint; }
  TBackstageEntry:focus { border: 2px solid %accent; border-left-width: 3px; padding: 4px 8px 4px 9px; }
)";

QString SheetOf(const TThemeTokens& tokens) {
  const bool dark = IsDarkGround(tokens.surface);
  const auto name = [](std::uint32_t rgb) { return QColor(rgb).name(); };
  const std::pair<const char*, QString> names[] = {
      {"%surface", name(tokens.surface)},
      {"%ground", name(tokens.ground)},
      {"%hairline", name(tokens.hairline)},
      {"%ink", name(tokens.ink)},
      {"%secondary", name(tokens.secondaryInk)},
      {"%accent", name(tokens.accent)},
      {"%strong", (dark ? QColor(tokens.accent).lighter(115) : QColor(tokens.accent).darker(115)).name()},
      {"%tint", name(tokens.accentTint)},
      {"%alarm", name(tokens.alarm)},
      {"%control", name(StandOut(tokens.hairline, tokens.surface))},  // edges of controls
      {"%faint", name(StandOut(tokens.hairline, tokens.surface, 2))},
      {"%down", IconFile("arrow-down", dark)},
      {"%up", IconFile("arrow-up", dark)},
      {"%checkmark", IconFile("checkmark", !dark)},  // on the accent colour
  };
  QString sheet = kSheet;
  for (const auto& [placeholder, value] : names) sheet.replace(placeholder, value);
  return sheet;
}

// Fusion looks the same on every desktop and follows the palette in every control. A style sheet has no line thinner
// than one px, which is two device pixels at 200 %; so the frames of surfaces are drawn here.
class TSurfaceStyle : public QProxyStyle {
 public:
  TSurfaceStyle() : QProxyStyle("Fusion") {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element != PE_Frame || widget == nullptr) return QProxyStyle::drawPrimitive(element, option, painter, widget);
    PaintSurfaceFrame(*painter, *widget);
  }
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    const bool takesFocus = qobject_cast<const QAbstractScrollArea*>(widget) != nullptr;
    return metric == PM_DefaultFrameWidth && takesFocus ? kFocusRing : QProxyStyle::pixelMetric(metric, option, widget);
  }
  void polish(QWidget* widget) override {
    QProxyStyle::polish(widget);
    if (qobject_cast<QAbstractScrollArea*>(widget) != nullptr) widget->installEventFilter(this);
  }
  void unpolish(QWidget* widget) override {
    widget->removeEventFilter(this);
    QProxyStyle::unpolish(widget);
  }
  using QProxyStyle::polish;
  using QProxyStyle::unpolish;

 protected:
  // The frame around the content shows the focus, too.
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool isFocus = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
    if (isFocus) static_cast<QWidget*>(watched)->update();
    return QProxyStyle::eventFilter(watched, event);
  }
};

// Follows the desktop while the program runs. A desktop reports a change of its theme to the windows; its palette is
// that of an application that has set none.
class TDesktopScheme : public QObject {
 public:
  explicit TDesktopScheme(QApplication& application)
      : QObject(&application), FApplication(application), FOurs(QApplication::palette()) {
    application.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool isTheme = event->type() == QEvent::ThemeChange;
    const bool isPalette = event->type() == QEvent::ApplicationPaletteChange && QApplication::palette() != FOurs;
    // Queued: this is the middle of that change.
    if ((isTheme || isPalette) && !std::exchange(FIsDue, true)) {
      QMetaObject::invokeMethod(
          this, [this] { Follow(); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  void Follow() {
    if (QApplication::palette() == FOurs) QApplication::setPalette(QPalette());
    ShowScheme(FApplication, IsDark(QApplication::palette()));
    FOurs = QApplication::palette();
    FIsDue = false;
  }

  QApplication& FApplication;
  QPalette FOurs;
  bool FIsDue = false;  // Follow is to come or at work
};

}  // namespace

QFont SizedFont(QFont font, double size) {
  if (font.pointSizeF() > 0) {
    font.setPointSizeF(font.pointSizeF() * size);
  } else {
    font.setPixelSize(std::max(1, qRound(font.pixelSize() * size)));
  }
  return font;
}

void ShowScheme(QApplication& application, bool dark) {
  const TThemeTokens& tokens = dark ? kDarkTokens : kLightTokens;
  const QString sheet = SheetOf(tokens);
  QApplication::setPalette(PaletteOf(tokens));
  if (application.styleSheet() != sheet) application.setStyleSheet(sheet);  // every widget is polished anew
}

void ApplyScheme(QApplication& application, TScheme scheme) {
  QApplication::setStyle(new TSurfaceStyle);
  // Without this, palette changes do not reach the children of a widget with a style sheet.
  QCoreApplication::setAttribute(Qt::AA_UseStyleSheetPropagationInWidgetStyles);
  const bool dark = scheme == TScheme::Dark || (scheme == TScheme::Desktop && IsDark(QApplication::palette()));
  ShowScheme(application, dark);
  if (scheme == TScheme::Desktop) new TDesktopScheme(application);
}

const TThemeTokens& TokensOf(const QPalette& palette) {
  return IsDark(palette) ? kDarkTokens : kLightTokens;
}

QPalette LightPalette() {
  return PaletteOf(kLightTokens);
}

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

QColor InkOn(const QPalette& palette, const QColor& colour, double contrast) {
  QColor ink(StandOut(colour.rgb() & 0xFFFFFF, palette.color(QPalette::Base).rgb() & 0xFFFFFF, contrast));
  ink.setAlphaF(colour.alphaF());
  return ink;
}

void PaintSurfaceFrame(QPainter& painter, const QWidget& widget) {
  const TThemeTokens& tokens = TokensOf(widget.palette());
  const QRectF rect = widget.rect();
  QPainterPath corners;
  corners.addRect(rect);
  QPainterPath inside;
  inside.addRoundedRect(rect, kCorner, kCorner);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillPath(corners.subtracted(inside), QColor(tokens.ground));
  // Half of the pen is outside its path: one device pixel, or the ring.
  const double width = widget.hasFocus() ? kFocusRing : 1 / widget.devicePixelRatioF();
  painter.setPen(QPen(QColor(widget.hasFocus() ? tokens.accent : tokens.hairline), width));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(rect.adjusted(width / 2, width / 2, -width / 2, -width / 2), kCorner, kCorner);
  painter.restore();
}
