#include "gui/welcome/uWellcomePanel.h"

#include <QAction>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTextDocument>
#include <QTextLayout>
#include <QToolButton>
#include <QUrl>
#include <algorithm>

#include "gui/common/uBoxes.h"
#include "gui/common/uFlowLayout.h"
#include "gui/common/uIcons.h"

namespace {

constexpr int kButtonIcon = 32;
constexpr int kPadding = 10;
constexpr int kManualIcon = 40;
constexpr int kManualMargin = 8;
constexpr int kManualLines = 2;

// Wraps at words, or inside a long word; text beyond the last line is cut with an ellipsis.
QString InLines(const QString& caption, const QFont& font, int width) {
  const QFontMetrics metrics(font);
  QTextLayout layout(caption, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  QStringList lines;
  for (QTextLine line = layout.createLine(); line.isValid() && lines.size() < kManualLines;
       line = layout.createLine()) {
    line.setLineWidth(width);
    const bool last = lines.size() == kManualLines - 1;
    const QString text = last ? caption.mid(line.textStart()) : caption.mid(line.textStart(), line.textLength());
    lines << metrics.elidedText(text.trimmed(), Qt::ElideRight, width);
  }
  layout.endLayout();
  return lines.join('\n');
}

QFont Scaled(QFont font, double factor) {
  font.setPointSizeF(font.pointSizeF() * factor);
  return font;
}

void Follow(QPushButton* button, const QAction* action) {
  const QString keys = action->shortcut().toString(QKeySequence::NativeText);
  const QString plain = PlainCaption(action->text());
  button->setText(action->text().remove('&'));
  button->setAccessibleName(plain);
  button->setToolTip(keys.isEmpty() ? plain : QString("%1 (%2)").arg(plain, keys));
  button->setIcon(action->icon());
  button->setEnabled(action->isEnabled());
  button->setMinimumWidth(button->sizeHint().width() + 2 * kPadding);
}

// An icon over a caption in lines; Enter is a click, too.
class TManualIcon final : public QToolButton {
 public:
  TManualIcon(const QString& caption, QWidget* parent) : QToolButton(parent), FCaption(caption) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setIcon(Icon("documentation"));
    setIconSize({kManualIcon, kManualIcon});
    TakeFont();
  }

 protected:
  void changeEvent(QEvent* event) override {
    QToolButton::changeEvent(event);
    if (event->type() == QEvent::FontChange) TakeFont();
  }
  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter) return QToolButton::keyPressEvent(event);
    if (!event->isAutoRepeat()) click();
  }

 private:
  void TakeFont() {
    const int width = 9 * fontMetrics().height();
    setFixedWidth(width);
    setText(InLines(FCaption, font(), width - 2 * kManualMargin).replace('&', "&&"));
  }

  QString FCaption;
};

}  // namespace

TWellcomePanel::TWellcomePanel(QWidget* parent)
    : QWidget(parent), FPage(new QWidget(this)), FColumn(new QVBoxLayout), FName(new QLabel("ShockScope", FPage)) {
  Named(this, "WellcomePanel", tr("Welcome"));
  auto* buttons = new QWidget(FPage);
  FButtons = new TFlowLayout(buttons);
  FButtons->setContentsMargins(0, 0, 0, 0);
  FButtons->setSpacing(12);
  auto* drop = new QLabel(tr("Drop a recording anywhere in this window to open it."), FPage);
  drop->setObjectName("lblWellcomeDrop");
  drop->setWordWrap(true);

  FColumn->setSpacing(10);
  FColumn->addWidget(FName);
  FColumn->addSpacing(6);
  FColumn->addWidget(buttons);
  FColumn->addWidget(drop);
  FColumn->addStretch();
  auto* centred = new QHBoxLayout(FPage);
  centred->setContentsMargins(24, 28, 24, 20);
  centred->addStretch(1);
  centred->addLayout(FColumn, 8);
  centred->addStretch(1);

  FManual = new QWidget(FPage);
  FManualIcons = new TFlowLayout(FManual);
  FManualIcons->setContentsMargins(0, 0, 0, 0);
  FManualIcons->setSpacing(6);
  FManual->hide();
  AddSection(tr("User manual"), FManual);
  AddSection(tr("In every chart"), MakeGestures());

  MakeColumn(this, {MakeScrolled(FPage)}, kNoMargins);
  TakeLook();
}

QWidget* TWellcomePanel::MakeGestures() {
  const struct {
    const char* IconName;
    QString Text;
  } gestures[] = {
      {"zoom-in-x", tr("Wheel: zoom in time")},
      {"zoom-select-x", tr("Drag: zoom to a time span · middle drag: pan")},
      {"zoom-original", tr("Double-click: back to the whole recording")},
  };
  auto* box = new QWidget(FPage);
  auto* grid = new QGridLayout(box);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(10);
  grid->setColumnStretch(1, 1);
  for (const auto& gesture : gestures) {
    auto* picture = new QLabel(box);
    auto* text = new QLabel(gesture.Text, box);
    text->setWordWrap(true);
    const int row = grid->rowCount();
    grid->addWidget(picture, row, 0, Qt::AlignTop);
    grid->addWidget(text, row, 1);
    FGestures.push_back({picture, gesture.IconName});
  }
  return box;
}

QPushButton* TWellcomePanel::AddButton(QAction* action, const QString& buttonName) {
  auto* button = new QPushButton(FButtons->parentWidget());
  button->setObjectName(buttonName);
  button->setAutoDefault(true);  // Enter presses it
  button->setIconSize({kButtonIcon, kButtonIcon});
  button->setFont(Scaled(font(), 1.15));
  button->setMinimumHeight(kButtonIcon + 2 * kPadding);
  Follow(button, action);
  button->setVisible(action->isVisible());
  connect(action, &QAction::changed, button, [button, action] { Follow(button, action); });
  connect(action, &QAction::visibleChanged, button, [button, action] { button->setVisible(action->isVisible()); });
  connect(button, &QPushButton::clicked, action, &QAction::trigger);
  FButtons->addWidget(button);
  return button;
}

bool TWellcomePanel::FocusFirst() {
  for (QPushButton* button : FButtons->parentWidget()->findChildren<QPushButton*>()) {
    if (button->isHidden()) continue;
    button->setFocus(Qt::OtherFocusReason);
    return button->isEnabled();
  }
  return false;
}

void TWellcomePanel::AddSection(const QString& heading, QWidget* content) {
  auto* label = new QLabel(heading, FPage);
  label->setContentsMargins(0, 14, 0, 0);
  content->setAccessibleName(heading);
  const int at = FSections.empty() ? FColumn->count() - 1 : FColumn->indexOf(FSections.front().Heading);
  FColumn->insertWidget(at, label);
  FColumn->insertWidget(at + 1, content);
  label->setVisible(!content->isHidden());
  content->installEventFilter(this);
  FSections.insert(FSections.begin(), {label, content});
  TakeLook();
}

QWidget* TWellcomePanel::AddUserManualIcon(const QString& objectName, const QString& caption, const QString& filePath) {
  const QString tip = QString("%1\n%2").arg(caption, QDir::toNativeSeparators(filePath));
  auto* icon = Named(new TManualIcon(caption, FManual), objectName, caption, Qt::convertFromPlainText(tip));
  icon->setAccessibleDescription(tr("Opens the document"));
  connect(icon, &QToolButton::clicked, this, [this, filePath] {
    const bool opened = QFileInfo::exists(filePath) && QDesktopServices::openUrl(QUrl::fromLocalFile(filePath));
    if (!opened) emit OpenFailed(filePath);
  });
  FManualIcons->addWidget(icon);
  FManual->show();
  return icon;
}

void TWellcomePanel::TakeLook() {
  FName->setFont(Scaled(font(), 2.2));
  QFont bold = font();
  bold.setBold(true);
  for (const TSection& section : FSections) section.Heading->setFont(bold);
  const int edge = std::max(22, fontMetrics().height());
  for (const TGesture& gesture : FGestures) {
    gesture.Picture->setPixmap(Icon(gesture.IconName).pixmap(QSize(edge, edge), devicePixelRatio()));
  }
}

void TWellcomePanel::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) TakeLook();
}

bool TWellcomePanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ShowToParent && event->type() != QEvent::HideToParent) return false;
  for (const TSection& section : FSections) {
    if (section.Content == watched) section.Heading->setVisible(!section.Content->isHidden());
  }
  return false;
}
