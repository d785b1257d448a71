#include "gui/docks/uFoldingPanel.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <algorithm>

#include "gui/common/uBoxes.h"
#include "gui/common/uIcons.h"
#include "gui/common/uTheme.h"

namespace {

constexpr int kMargin = 12;  // px before the words
constexpr int kAround = 2;   // px around the buttons
constexpr int kIcon = 16;    // px

}  // namespace

TPanelTitle::TPanelTitle(QDockWidget& panel)
    : QWidget(&panel),
      FPanel(panel),
      FLayout(MakeRow(this, {kRest}, {QMargins(kAround, kAround, kAround, kAround), 0})),
      FFoldButton(MakeButton("arrow-down", {}, "Fold")),
      FFloat(MakeButton("window-restore", tr("Float or dock %1").arg(panel.windowTitle()), "Float")),
      FClose(MakeButton(nullptr, tr("Close %1").arg(panel.windowTitle()), "Close")) {
  for (QToolButton* button : {FFoldButton, FFloat, FClose}) FLayout->addWidget(button);
  connect(FFoldButton, &QToolButton::clicked, this, &TPanelTitle::FoldClicked);
  connect(FFloat, &QToolButton::clicked, this, [this] { FPanel.setFloating(!FPanel.isFloating()); });
  connect(FClose, &QToolButton::clicked, &panel, &QWidget::close);
  SetFold(TFold::Open, false);
}

QToolButton* TPanelTitle::MakeButton(const char* icon, const QString& text, const QString& name) {
  auto* button = Named(new QToolButton(this), name, text, text);
  if (icon != nullptr) {
    button->setIcon(Icon(icon));
  } else {
    button->setText("✕");
  }
  button->setIconSize(QSize(kIcon, kIcon));
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

void TPanelTitle::SetFold(TFold fold, bool beside) {
  FFold = fold;
  const bool open = fold == TFold::Open;
  FUpright = fold == TFold::Upright || (open && beside);
  setToolTip(open && beside ? FPanel.windowTitle() : QString());
  FLayout->setDirection(FUpright ? QBoxLayout::BottomToTop : QBoxLayout::LeftToRight);
  const QString text = (open ? tr("Fold %1 to its title") : tr("Open %1")).arg(FPanel.windowTitle());
  FFoldButton->setAccessibleName(text);
  FFoldButton->setToolTip(text);
  FFoldButton->setIcon(Icon(open ? "arrow-down" : FUpright ? "arrow-left" : "arrow-right"));
  const bool hasRoom = open || fold == TFold::Flat;
  const bool folds = qobject_cast<const TFoldingPanel*>(&FPanel) != nullptr && !FPanel.isFloating();
  FFoldButton->setVisible(folds && fold != TFold::Tab);
  FFloat->setVisible(hasRoom && FPanel.features().testFlag(QDockWidget::DockWidgetFloatable));
  FClose->setVisible(hasRoom);
  updateGeometry();
  update();
}

int TPanelTitle::Thickness() const {
  return std::max(fontMetrics().height() + kAround, FFoldButton->sizeHint().height()) + 2 * kAround;
}

QSize TPanelTitle::sizeHint() const {
  if (FFold == TFold::Tab) return {0, 0};
  QFont words = font();
  words.setWeight(QFont::DemiBold);
  if (!FUpright) return {4 * Thickness(), Thickness()};
  if (FFold == TFold::Open) return {Thickness(), FLayout->sizeHint().height()};
  return {Thickness(), QFontMetrics(words).horizontalAdvance(FPanel.windowTitle()) + Thickness() + 2 * kMargin};
}

void TPanelTitle::paintEvent(QPaintEvent* /*event*/) {
  if (FFold == TFold::Tab) return;
  QPainter painter(this);
  painter.fillRect(rect(), QColor(TokensOf(palette()).surface));
  PaintSurfaceFrame(painter, *this);
  QFont words = font();
  words.setWeight(QFont::DemiBold);
  painter.setFont(words);
  int buttons = width();
  for (const QToolButton* button : {FFoldButton, FFloat, FClose}) {
    if (button->isVisible()) buttons = std::min(buttons, button->x());
  }
  QRect room(kMargin, 0, buttons - kMargin, height());
  if (FUpright) {
    painter.translate(width(), 0);
    painter.rotate(90);
    room = QRect(FFoldButton->geometry().bottom() + kAround, 0,
                 height() - FFoldButton->geometry().bottom() - 2 * kAround, width());
    // The tool tip has them.
    if (FFold == TFold::Open && painter.fontMetrics().horizontalAdvance(FPanel.windowTitle()) > room.width()) return;
  }
  painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                   painter.fontMetrics().elidedText(FPanel.windowTitle(), Qt::ElideRight, room.width()));
}

TFoldingPanel::TFoldingPanel(const QString& name, const QString& title, QWidget* content, const QSize& size,
                             QWidget* window)
    : QDockWidget(title, window),
      FTitle(new TPanelTitle(*this)),
      FContent(content),
      FRetains(content->sizePolicy().retainSizeWhenHidden()),
      FOpenSize(size) {
  setObjectName(name);
  // A panel without a visible widget would be no wider than its title's buttons.
  auto* box = new QWidget(this);
  MakeColumn(box, {content}, kNoMargins);
  setWidget(box);
  setTitleBarWidget(FTitle);
  // Behind another panel's tab Qt moves it out of sight, where Tab would still reach it.
  connect(this, &QDockWidget::visibilityChanged, this, [this, policy = content->focusPolicy()](bool inSight) {
    FTitle->setEnabled(inSight);
    FContent->setFocusPolicy(inSight ? policy : Qt::NoFocus);
  });
  connect(FTitle, &TPanelTitle::FoldClicked, this, [this] { Q_EMIT FoldAsked(FFold == TFold::Open); });
  connect(this, &QDockWidget::topLevelChanged, this, &TFoldingPanel::UpdateTitle);
  connect(this, &QDockWidget::dockLocationChanged, this, [this](Qt::DockWidgetArea area) {
    FBesideViews = area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea;
    UpdateTitle();
  });
}

void TFoldingPanel::KeepOpenSize() {
  if (FFold == TFold::Open && isVisible()) FOpenSize = size();
}

void TFoldingPanel::SetFold(TFold fold) {
  if (fold == FFold) return;
  FFold = fold;
  const bool open = fold == TFold::Open;
  // Grids keep their room while an export hides them.
  QSizePolicy policy = FContent->sizePolicy();
  policy.setRetainSizeWhenHidden(open && FRetains);
  FContent->setSizePolicy(policy);
  FContent->setVisible(open);
  UpdateTitle();
}

void TFoldingPanel::UpdateTitle() {
  const bool inColumn = FFold == TFold::Upright || FFold == TFold::Tab;
  const bool beside = !FBesideViews && !isFloating();
  const bool upright = inColumn || (FFold == TFold::Open && beside);
  setFeatures(upright ? features() | DockWidgetVerticalTitleBar : features() & ~DockWidgetVerticalTitleBar);
  FTitle->SetFold(FFold, beside);
  setMaximumHeight(FFold == TFold::Flat ? FTitle->Thickness() : QWIDGETSIZE_MAX);
  setMaximumWidth(inColumn ? FTitle->sizeHint().width() : QWIDGETSIZE_MAX);
}

// The title ignores the mouse, so that the base drags the panel by it.
bool TFoldingPanel::event(QEvent* event) {
  const bool isPress = event->type() == QEvent::MouseButtonPress;
  const bool isDouble = event->type() == QEvent::MouseButtonDblClick;
  if (isDouble && FOpenedByClick) return true;
  if (isPress) FOpenedByClick = false;
  const bool handled = QDockWidget::event(event);
  if (event->type() != QEvent::MouseButtonRelease || FFold == TFold::Open || isFloating()) return handled;
  const auto* mouse = static_cast<QMouseEvent*>(event);
  if (mouse->button() == Qt::LeftButton && rect().contains(mouse->position().toPoint())) {
    FOpenedByClick = true;
    Q_EMIT FoldAsked(false);
  }
  return handled;
}
