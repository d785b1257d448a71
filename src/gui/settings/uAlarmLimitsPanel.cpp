#include "gui/settings/uAlarmLimitsPanel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QScreen>
#include <QTextDocument>
#include <algorithm>
#include <span>

#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/settings/uCaptionKeys.h"
#include "gui/settings/uLimitEdit.h"
#include "model/uQuantities.h"

namespace {

TLimitEdit* MakeEdit(TAlarmLimitsPanel* parent, std::string_view name, const QString& quantity, const QString& end) {
  auto* edit = new TLimitEdit(parent);
  QObject::connect(edit, &TLimitEdit::Typed, parent, [parent] { parent->ShowProblem({}); });
  QObject::connect(edit, &TLimitEdit::Refused, parent, &TAlarmLimitsPanel::ShowProblem);
  edit->setObjectName(QtText(name));
  edit->setAccessibleName(QString("%1, %2").arg(quantity, end));
  edit->setToolTip(QObject::tr("%1: a value beyond is marked").arg(edit->accessibleName()));
  return edit;
}

}  // namespace

TAlarmLimitsPanel::TAlarmLimitsPanel(QWidget* parent) : QFrame(parent, Qt::Popup), FProblem(new QLabel(this)) {
  setObjectName("pnlAlarmLimits");
  setAccessibleName(tr("Alarm limits"));
  setFrameShape(QFrame::StyledPanel);
  auto* grid = new QGridLayout(this);
  grid->addWidget(new QLabel(tr("Minimum"), this), 0, 1);
  grid->addWidget(new QLabel(tr("Maximum"), this), 0, 2);
  int line = 1;
  QString keys;
  for (const TQuantityControls& row : std::span(kQuantityControls).first<kLimitedQuantityCount>()) {
    const QString quantity = QtText(row.caption);
    auto* label = new TKeyLabel(WithKey(quantity, keys), this);
    auto* from = MakeEdit(this, row.min, quantity, tr("minimum"));
    auto* to = MakeEdit(this, row.max, quantity, tr("maximum"));
    label->setBuddy(from);
    FLabels.push_back(label);
    grid->addWidget(label, line, 0);
    grid->addWidget(from, line, 1);
    grid->addWidget(to, line, 2);
    grid->addWidget(new QLabel(QtText(row.unit), this), line, 3);
    ++line;
    if (line != 2) continue;
    auto* fromFile = new QCheckBox(tr(" Load Acc. Alarm Values from File"), this);
    fromFile->setObjectName("chboxLoadAccAlarmFromFile");
    fromFile->setToolTip(tr("The level that opens an event, instead of the two values above"));
    auto* inForce = new QLabel(this);
    inForce->setObjectName("lblAlarmAccFromFile");
    inForce->setForegroundRole(QPalette::PlaceholderText);
    grid->addWidget(fromFile, line++, 1, 1, 3);
    grid->addWidget(inForce, line++, 1, 1, 3);
  }
  FProblem->setObjectName("lblAlarmLimitRefused");
  FProblem->setTextFormat(Qt::PlainText);
  FProblem->setWordWrap(true);
  FProblem->hide();
  grid->addWidget(FProblem, line, 0, 1, 4);
}

void TAlarmLimitsPanel::ShowAnalogNames(std::span<const std::string, kAnalogInputs.size()> names) {
  constexpr qsizetype kMaxText = 20;  // characters
  for (std::size_t i = 0; i < names.size(); ++i) {
    const QString input = QtText(kAnalogInputs[i]->sensorName);
    const QString name = QtText(names[i]);
    const QString key = tr(kAnalogInputs[i]->colourCaption);
    const bool named = !name.isEmpty() && name != input;
    QLabel& label = *FLabels[static_cast<std::size_t>(*kAnalogInputs[i]->quantity)];
    label.setText(named ? QString("%1 (%2)").arg(ShownText(names[i], kMaxText).replace("&", "&&"), key) : key);
    label.setToolTip(named ? Qt::convertFromPlainText(name) : QString());
  }
}

void TAlarmLimitsPanel::ShowProblem(const QString& problem) {
  QPalette ink = palette();
  ink.setColor(QPalette::WindowText, InkOn(palette(), QColor(0xB3261E), kTextContrast));
  FProblem->setPalette(ink);
  FProblem->setText(problem);
  FProblem->setVisible(!problem.isEmpty());
  adjustSize();
  if (!problem.isEmpty()) emit LimitRefused(problem);
}

void TAlarmLimitsPanel::OpenBelow(const QWidget& button) {
  adjustSize();
  const QRect screen = button.screen()->availableGeometry();
  QPoint at = button.mapToGlobal(QPoint(0, button.height()));
  at.setX(std::clamp(at.x(), screen.left(), std::max(screen.left(), screen.right() - width())));
  at.setY(std::clamp(at.y(), screen.top(), std::max(screen.top(), screen.bottom() - height())));
  move(at);
  show();
  findChild<TLimitEdit*>()->parentWidget()->setFocus();
  focusNextChild();
}
