#include "gui/settings/uAlarmLimitsPanel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QTextDocument>
#include <QTimer>
#include <algorithm>
#include <span>

#include "gui/common/uBoxes.h"
#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/common/uTypedNumber.h"
#include "gui/settings/uCaptionKeys.h"
#include "gui/settings/uLimitEdit.h"
#include "gui/settings/uLimitProfileBar.h"
#include "shell/uAllowances.h"

namespace {

constexpr int kColumns = 6;
constexpr int kFirstLine = 2;  // below the profiles and the titles
constexpr int kAllowanceCharacters = 16;

TLimitEdit* MakeEdit(TAlarmLimitsPanel* parent, std::string_view name, const QString& quantity, const QString& end) {
  auto* edit = new TLimitEdit(parent);
  QObject::connect(edit, &TLimitEdit::Typed, parent, [parent, edit] {
    if (ReadTypedNumber(edit->text()).value) parent->ShowProblem({}, *edit);
  });
  QObject::connect(edit, &TLimitEdit::Refused, parent,
                   [parent, edit](const QString& problem) { parent->ShowProblem(problem, *edit); });
  const QString words = QString("%1, %2").arg(quantity, end);
  return Named(edit, QtText(name), words, QObject::tr("%1: a value beyond is marked").arg(words));
}

// A click into it selects all, as Tab does: what is typed then replaces "none".
class TAllowanceEdit final : public QLineEdit {
 public:
  using QLineEdit::QLineEdit;

 protected:
  void focusInEvent(QFocusEvent* event) override {
    QLineEdit::focusInEvent(event);
    QTimer::singleShot(0, this, &QLineEdit::selectAll);  // after the press, which places the cursor
  }
};

}  // namespace

TAlarmLimitsPanel::TAlarmLimitsPanel(QWidget* parent)
    : QFrame(parent, Qt::Popup),
      FProfiles(new TLimitProfileBar(this)),
      FProblem(MakeSentence("lblAlarmLimitRefused", this)) {
  Named(this, "pnlAlarmLimits", tr("Alarm limits"));
  setFrameShape(QFrame::StyledPanel);
  auto* grid = new QGridLayout(this);
  grid->addWidget(FProfiles, 0, 0, 1, kColumns);
  grid->addWidget(new QLabel(tr("Minimum"), this), 1, 1);
  grid->addWidget(new QLabel(tr("Maximum"), this), 1, 2);
  for (const auto& [column, title] : {std::pair(4, tr("Allowed below")), std::pair(5, tr("Allowed above"))}) {
    FAllowanceTitles.push_back(new QLabel(title, this));
    grid->addWidget(FAllowanceTitles.back(), 1, column);
  }
  int line = kFirstLine;
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
    const std::size_t index = FLabels.size() - 1;
    const bool isAcceleration = index == static_cast<std::size_t>(TQuantity::Acceleration);
    if (!isAcceleration) AddAllowance(*grid, line, index, false);
    AddAllowance(*grid, line, index, true);
    line += 2;  // one below it for what is wrong
    if (!isAcceleration) continue;
    auto* fromFile = Named(new QCheckBox(tr(" Load Acc. Alarm Values from File"), this), "chboxLoadAccAlarmFromFile",
                           {}, tr("The level that opens an event, instead of the two values above"));
    auto* inForce = Named(new QLabel(this), "lblAlarmAccFromFile");
    inForce->setForegroundRole(QPalette::PlaceholderText);
    grid->addWidget(fromFile, line++, 1, 1, 3);
    grid->addWidget(inForce, line++, 1, 1, 3);
  }
  FProblem->hide();
  ShowAllowances(std::nullopt);
}

void TAlarmLimitsPanel::AddAllowance(QGridLayout& grid, int line, std::size_t quantity, bool isMax) {
  const TQuantityControls& row = kQuantityControls[quantity];
  auto* edit = new TAllowanceEdit(this);
  edit->setObjectName(QtText(isMax ? row.max : row.min).replace("dxBarSpinAlarm", "edtAllowed"));
  const bool isEvents = static_cast<TQuantity>(quantity) == TQuantity::Acceleration;
  edit->setAccessibleName(
      QString("%1, %2").arg(QtText(row.caption), isMax ? tr("allowed above") : tr("allowed below")));
  edit->setToolTip(isEvents ? tr("How many events may exceed the limit: \"3\", \"none\"; empty: events are not judged")
                            : tr("How long the sensor may be beyond the limit in all: \"2 h\", \"1 d 30 min\", "
                                 "\"none\"; empty: the limit is not judged"));
  edit->setPlaceholderText(tr("not judged"));
  edit->setMaximumWidth(fontMetrics().averageCharWidth() * kAllowanceCharacters);
  FAllowances.push_back({static_cast<TQuantity>(quantity), isMax, edit});
  connect(edit, &QLineEdit::editingFinished, this, [this, edit, quantity, isMax] {
    if (!edit->isModified()) return;
    edit->setModified(false);
    emit AllowanceTyped(static_cast<TQuantity>(quantity), isMax, *edit);
  });
  grid.addWidget(edit, line, isMax ? 5 : 4);
}

void TAlarmLimitsPanel::ShowAllowances(const std::optional<TLimitProfile>& profile) {
  for (QLabel* title : FAllowanceTitles) title->setVisible(profile.has_value());
  for (const TAllowance& allowance : FAllowances) {
    allowance.edit->setVisible(profile.has_value());
    if (profile && !allowance.edit->isModified()) {
      allowance.edit->setText(QtText(AllowanceText(*profile, allowance.quantity, allowance.isMax)));
      if (allowance.edit->hasFocus()) allowance.edit->selectAll();
    }
  }
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

void TAlarmLimitsPanel::ShowProblem(const QString& problem, const QWidget& edit) {
  QPalette ink = palette();
  ink.setColor(QPalette::WindowText, InkOn(palette(), QColor(0xB3261E), kTextContrast));
  FProblem->setPalette(ink);
  FProblem->setText(problem);
  FProblem->setVisible(!problem.isEmpty());
  auto* grid = static_cast<QGridLayout*>(layout());
  int row = 0, column = 0, rows = 0, columns = 0;
  grid->getItemPosition(grid->indexOf(&edit), &row, &column, &rows, &columns);
  grid->removeWidget(FProblem);
  grid->addWidget(FProblem, row + 1, 0, 1, kColumns);
  emit LimitRefused(problem);
}

void TAlarmLimitsPanel::OpenBelow(const QWidget& button) {
  FProblem->hide();
  emit AboutToOpen();
  move(button.mapToGlobal(QPoint(0, button.height())));
  show();
  FitOnScreen();
  const QList<TLimitEdit*> edits = findChildren<TLimitEdit*>();
  (*std::ranges::find_if(edits, &TLimitEdit::isEnabled))->setFocus();
}

void TAlarmLimitsPanel::FitOnScreen() {
  adjustSize();
  if (!isVisible()) return;
  const QRect room = screen()->availableGeometry();
  move(std::clamp(x(), room.left(), std::max(room.left(), room.right() - width())),
       std::clamp(y(), room.top(), std::max(room.top(), room.bottom() - height())));
}

bool TAlarmLimitsPanel::event(QEvent* event) {
  const bool done = QFrame::event(event);
  if (event->type() == QEvent::LayoutRequest) FitOnScreen();
  return done;
}

void TAlarmLimitsPanel::hideEvent(QHideEvent* event) {
  QFrame::hideEvent(event);
  emit Closed();
}
