#include "gui/filter/uFilterPanel.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDateTimeEdit>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QShortcut>
#include <algorithm>
#include <cmath>
#include <limits>

#include "base/uDateTime.h"
#include "base/uText.h"
#include "gui/common/uAnalysisBar.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTypedNumber.h"
#include "gui/filter/uHistogramStrip.h"

namespace {

// In the names of the edits, by kFilterQuantities.
constexpr std::array<const char*, kFilterQuantities.size()> kEditNames = {
    "AccelerationMax", "ToTTotal", "ToTMax", "IoTTotal", "IoTMax", "VelocityChange"};
constexpr std::size_t kHistogramSteps = 64;
constexpr double kMaxLimit = std::numeric_limits<float>::max();
constexpr double kLastDateTime = 2958465.0;  // 9999-12-31
const QDate kDayZero(1899, 12, 30);

// An empty text is an open end. A text that is no number leaves the end as it is and returns why.
QString ParseEnd(const QString& text, std::optional<double>& end) {
  if (text.trimmed().isEmpty()) {
    end.reset();
    return {};
  }
  const TTypedNumber number = ReadTypedNumber(text);
  if (!number.value) return number.problem;
  if (std::fabs(*number.value) > kMaxLimit) return QObject::tr("“%1” is too large.").arg(text);
  end = number.value;
  return {};
}

QString EndText(const std::optional<double>& end) {
  return end ? QtText(GeneralFloat(*end)) : QString();
}

QDateTime ToQt(double dateTime) {
  const double days = std::isfinite(dateTime) ? std::clamp(dateTime, 0.0, kLastDateTime) : 0.0;
  return QDateTime(kDayZero, QTime(0, 0), Qt::UTC).addMSecs(std::llround(days * kMsPerDay));
}

double FromQt(const QDateTime& moment) {
  return static_cast<double>(kDayZero.daysTo(moment.date())) + moment.time().msecsSinceStartOfDay() / kMsPerDay;
}

// The program's mask of a time in Qt's letters, with milliseconds.
QString DateTimeEditFormat() {
  return QtText(DateTimeMask()).replace('m', 'M').replace('n', 'm').replace('h', 'H') + ".zzz";
}

bool IsReversed(const TRange& range) {
  return range.from && range.to && *range.from > *range.to;
}

QCheckBox* MakeCheckBox(const QString& name, const QString& text, const QString& tip, QWidget* parent) {
  return Named(new QCheckBox(text, parent), name, tip, tip);
}

}  // namespace

TFilterPanel::TFilterPanel(QWidget* parent) : QDockWidget(tr("Filter"), parent) {
  setObjectName("dxDockPanelFilter");
  setFeatures(DockWidgetClosable | DockWidgetMovable);
  auto* scroll = MakeScrolled(MakeConditions());
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setMinimumWidth(scroll->widget()->minimumSizeHint().width() +
                          scroll->verticalScrollBar()->sizeHint().width());
  setWidget(scroll);
  const auto onKey = [this](Qt::Key key, auto handler) {
    auto* shortcut = new QShortcut(key, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, handler);
  };
  onKey(Qt::Key_Return, &TFilterPanel::Apply);
  onKey(Qt::Key_Enter, &TFilterPanel::Apply);
  onKey(Qt::Key_Escape, [this] {
    close();
    if (FFocusedBefore && FFocusedBefore->isVisible()) FFocusedBefore->setFocus();
  });
  ChooseQuantity(0);
}

QWidget* TFilterPanel::MakeConditions() {
  auto* box = new QWidget(this);
  auto* grid = new QGridLayout(box);
  grid->setContentsMargins(8, 4, 8, 8);
  grid->setHorizontalSpacing(6);
  grid->setVerticalSpacing(3);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(2, 1);
  MakeRanges(*grid, box);
  FHistogramTitle = new QLabel(box);
  FHistogramTitle->setForegroundRole(QPalette::PlaceholderText);
  FHistogram = new THistogramStrip(box);
  FState = MakeSentence("lblFilterState", box);
  FAboveAlarm = MakeCheckBox("chkFilterAboveAlarm", tr("Above alarm only"),
                             tr("Only events whose acceleration max is outside the alarm limits"), box);
  connect(FAboveAlarm, &QCheckBox::toggled, this, &TFilterPanel::Edited);
  FButtons = MakeButtons(box);
  FAnalysis = new QWidget(box);
  MakeColumn(FAnalysis, {new TAnalysisBar("barFilter", FAnalysis)}, kNoMargins);
  FAnalysis->hide();
  for (QWidget* row : std::initializer_list<QWidget*>{
           FHistogramTitle, FHistogram, FAnalysis, MakeTitle(tr("Peak axis"), box), MakeAxes(box),
           MakeTitle(tr("Start time"), box), MakeTimes(box), FAboveAlarm, FButtons, FState}) {
    grid->addWidget(row, grid->rowCount(), 0, 1, 4);
  }
  grid->setRowStretch(grid->rowCount(), 1);
  connect(FHistogram, &THistogramStrip::RangeDragged, this, [this](const TRange& range) {
    {
      const QScopedValueRollback<bool> writing(FWriting, true);
      FRanges[FQuantity].from->setText(EndText(range.from));
      FRanges[FQuantity].to->setText(EndText(range.to));
    }
    Edited();
  });
  return box;
}

void TFilterPanel::MakeRanges(QGridLayout& grid, QWidget* parent) {
  for (std::size_t i = 0; i < FRanges.size(); ++i) {
    FRanges[i] = {MakeEdit(i, true, parent), MakeEdit(i, false, parent)};
    auto* name = new QLabel(QtText(kFilterQuantities[i].name), parent);
    name->setBuddy(FRanges[i].from);
    const int row = static_cast<int>(i);
    grid.addWidget(name, row, 0);
    grid.addWidget(FRanges[i].from, row, 1);
    grid.addWidget(FRanges[i].to, row, 2);
    grid.addWidget(new QLabel(QtText(kFilterQuantities[i].unit), parent), row, 3);
  }
}

QLineEdit* TFilterPanel::MakeEdit(std::size_t quantity, bool from, QWidget* parent) {
  const QString words = (from ? tr("%1 from, in %2") : tr("%1 to, in %2"))
                            .arg(QtText(kFilterQuantities[quantity].name), QtText(kFilterQuantities[quantity].unit));
  auto* edit = Named(new QLineEdit(parent), QString("edtFilter%1%2").arg(kEditNames[quantity], from ? "From" : "To"),
                     words, tr("%1; empty: no limit. Enter applies").arg(words));
  edit->setPlaceholderText(from ? tr("from") : tr("to"));
  edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 9);
  edit->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // as narrow as that, unless there is room
  edit->setMaxLength(32);
  edit->installEventFilter(this);
  connect(edit, &QLineEdit::textChanged, this, &TFilterPanel::Edited);
  return edit;
}

QWidget* TFilterPanel::MakeAxes(QWidget* parent) {
  auto* box = new QWidget(parent);
  auto* grid = new QGridLayout(box);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setVerticalSpacing(2);
  for (std::size_t i = 0; i < kPeakAxes.size(); ++i) {
    const QString axis = QtText(kPeakAxes[i]);
    FAxes[i] = MakeCheckBox("chkFilter" + axis, axis, tr("Events that peak on %1").arg(axis), box);
    connect(FAxes[i], &QCheckBox::toggled, this, &TFilterPanel::Edited);
    grid->addWidget(FAxes[i], static_cast<int>(i % 2), static_cast<int>(i / 2));
  }
  return box;
}

QWidget* TFilterPanel::MakeTimes(QWidget* parent) {
  auto* box = new QWidget(parent);
  FTime = {MakeTimeEnd(true, box), MakeTimeEnd(false, box)};
  auto* navigator = Named(new QPushButton(tr("Navigator's span"), box), "btnFilterNavigatorSpan",
                          tr("Take the navigator's span"), tr("Only events in the time that the charts show now"));
  connect(navigator, &QPushButton::clicked, this, &TFilterPanel::NavigatorSpanRequested);
  auto* grid = new QGridLayout(box);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setVerticalSpacing(3);
  grid->setColumnStretch(1, 1);
  int row = 0;
  for (const TTimeEnd& end : FTime) {
    grid->addWidget(end.on, row, 0);
    grid->addWidget(end.edit, row++, 1);
  }
  grid->addWidget(navigator, row, 1);
  return box;
}

TFilterPanel::TTimeEnd TFilterPanel::MakeTimeEnd(bool from, QWidget* parent) {
  const QString end = from ? "From" : "To";
  auto* on = MakeCheckBox("chkFilterTime" + end, from ? tr("from") : tr("to"),
                          from ? tr("Only events from this time on") : tr("Only events up to this time"), parent);
  const QString words = from ? tr("Start time from") : tr("Start time to");
  auto* edit = Named(new QDateTimeEdit(parent), "dteFilterTime" + end, words, words);
  edit->setTimeSpec(Qt::UTC);  // as recorded, in no zone
  edit->setLocale(QLocale::c());
  edit->setEnabled(false);
  connect(on, &QCheckBox::toggled, edit, &QWidget::setEnabled);
  connect(on, &QCheckBox::toggled, this, &TFilterPanel::Edited);
  connect(edit, &QDateTimeEdit::dateTimeChanged, this, &TFilterPanel::Edited);
  return {on, edit};
}

QWidget* TFilterPanel::MakeButtons(QWidget* parent) {
  auto* box = new QWidget(parent);
  auto* clear = Named(new QPushButton(tr("Clear"), box), "btnFilterClear", tr("Clear the filter"),
                      tr("Take all conditions away"));
  connect(clear, &QPushButton::clicked, this, [this] {
    Write({});
    Apply();
  });
  MakeRow(box, {kRest, clear}, {QMargins(0, 4, 0, 0)});
  return box;
}

void TFilterPanel::AddActiveButton(QAction* active) {
  const QString keys = active->shortcut().toString(QKeySequence::NativeText);
  auto* box =
      MakeCheckBox("chkFilterActive", tr("Filter on"), tr("Switch the filter on and off (%1)").arg(keys), FButtons);
  box->setChecked(active->isChecked());
  connect(box, &QCheckBox::clicked, active, &QAction::trigger);
  connect(active, &QAction::toggled, box, &QCheckBox::setChecked);
  static_cast<QBoxLayout*>(FButtons->layout())->insertWidget(0, box);
}

void TFilterPanel::Open() {
  QWidget* focused = QApplication::focusWidget();
  if (focused == nullptr || !isAncestorOf(focused)) FFocusedBefore = focused;
  show();
  raise();
  FRanges[FQuantity].from->setFocus(Qt::ShortcutFocusReason);
  FRanges[FQuantity].from->selectAll();
}

void TFilterPanel::SetMission(const TShownMission* mission) {
  FMission = mission;
  widget()->setEnabled(mission != nullptr);
  FHistogramIsStale = true;
  RefreshHistogram();
  if (mission == nullptr) return;
  const QScopedValueRollback<bool> writing(FWriting, true);
  for (const TTimeEnd& end : FTime) end.edit->setDisplayFormat(DateTimeEditFormat());
  WriteTimes(FFilter.time);
}

void TFilterPanel::ShowFilter() {
  if (FMission == nullptr) return;
  if (FMission->Filter != FFilter) Write(FMission->Filter);
  FHistogram->SetRange(FFilter.ranges[FQuantity]);
  ShowState();
}

void TFilterPanel::ShowAnalysis() {
  FHistogramIsStale = true;
  RefreshHistogram();
}

void TFilterPanel::ShowAnalysisBar() {
  FAnalysis->setVisible(FQuantity == kVelocityChangePlace || FFilter.NeedsAnalysis());
}

void TFilterPanel::SetTimeSpan(double from, double to) {
  {
    const QScopedValueRollback<bool> writing(FWriting, true);
    WriteTimes({from, to});
  }
  Edited();
}

void TFilterPanel::Edited() {
  if (FWriting || FMission == nullptr) return;
  const TEventFilter filter = Read();
  if (filter != FFilter) {
    FFilter = filter;
    emit FilterChanged(filter);
  }
  ShowState();
}

void TFilterPanel::Apply() {
  if (FMission == nullptr) return;
  FFilter = Read();
  emit FilterChanged(FFilter);
}

TEventFilter TFilterPanel::Read() {
  FProblem.clear();
  TEventFilter filter = FFilter;
  for (std::size_t i = 0; i < FRanges.size(); ++i) {
    TRange& range = filter.ranges[i];
    for (const auto& [edit, end] : {std::pair{FRanges[i].from, &range.from}, std::pair{FRanges[i].to, &range.to}}) {
      if (const QString problem = ParseEnd(edit->text(), *end); !problem.isEmpty()) FProblem = problem;
    }
    if (IsReversed(range)) FProblem = tr("%1: “from” is above “to”.").arg(QtText(kFilterQuantities[i].name));
  }
  for (std::size_t i = 0; i < FAxes.size(); ++i) filter.axes[i] = FAxes[i]->isChecked();
  const auto timeOf = [](const TTimeEnd& end) {
    return end.on->isChecked() ? std::optional(FromQt(end.edit->dateTime())) : std::nullopt;
  };
  filter.time = {timeOf(FTime[0]), timeOf(FTime[1])};
  if (IsReversed(filter.time)) FProblem = tr("Start time: “from” is after “to”.");
  filter.aboveAlarm = FAboveAlarm->isChecked();
  return filter;
}

void TFilterPanel::Write(const TEventFilter& filter) {
  const QScopedValueRollback<bool> writing(FWriting, true);
  FFilter = filter;
  FProblem.clear();
  for (std::size_t i = 0; i < FRanges.size(); ++i) {
    FRanges[i].from->setText(EndText(filter.ranges[i].from));
    FRanges[i].to->setText(EndText(filter.ranges[i].to));
  }
  for (std::size_t i = 0; i < FAxes.size(); ++i) FAxes[i]->setChecked(filter.axes[i]);
  WriteTimes(filter.time);
  FAboveAlarm->setChecked(filter.aboveAlarm);
}

// An open end offers the recording's own.
void TFilterPanel::WriteTimes(const TRange& time) {
  TRange whole;
  if (FMission != nullptr) whole = {FMission->Summary.firstTime, FMission->Summary.lastTime};
  const auto write = [](const TTimeEnd& end, const std::optional<double>& moment, double otherwise) {
    end.on->setChecked(moment.has_value());
    end.edit->setDateTime(ToQt(moment.value_or(otherwise)));
  };
  write(FTime[0], time.from, whole.from.value_or(0));
  write(FTime[1], time.to, whole.to.value_or(0));
}

void TFilterPanel::ChooseQuantity(std::size_t quantity) {
  FQuantity = quantity;
  const QString name = QtText(kFilterQuantities[quantity].name);
  FHistogramTitle->setText(tr("%1 of all events, in %2").arg(name, QtText(kFilterQuantities[quantity].unit)));
  FHistogram->setAccessibleName(tr("Histogram of %1").arg(name));
  FHistogram->SetRange(FFilter.ranges[quantity]);
  FHistogramIsStale = true;
  RefreshHistogram();
  ShowAnalysisBar();
}

void TFilterPanel::RefreshHistogram() {
  if (FMission == nullptr) {
    FHistogram->ShowHistogram({});
  } else if (FHistogramIsStale && isVisible()) {
    FHistogramIsStale = false;
    const bool ofAnalysis = FQuantity == kVelocityChangePlace;
    const TDataset none;
    const TDataset& analysis = FMission->Analysis ? FMission->Analysis->Table : none;
    FHistogram->ShowHistogram(HistogramOf(ofAnalysis ? analysis : FMission->Tables.Events,
                                          kFilterQuantities[FQuantity].field, kHistogramSteps));
  }
}

void TFilterPanel::ShowState() {
  ShowAnalysisBar();
  const std::size_t all = FMission->Events.Count();
  const QString count = tr("%1 of %2 events").arg(FMission->CLDS.RecordCount()).arg(all);
  if (!FProblem.isEmpty()) {
    FState->setText(FMission->FilterActive ? tr("%1\n%2").arg(count, FProblem) : FProblem);
  } else if (FMission->FilterActive) {
    FState->setText(count);
  } else {
    FState->setText(FFilter.HasCondition() ? tr("The filter is off.") : tr("No condition: every event is shown."));
  }
}

bool TFilterPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    const auto* row = std::ranges::find_if(
        FRanges, [watched](const TRangeEdits& edits) { return edits.from == watched || edits.to == watched; });
    const auto quantity = static_cast<std::size_t>(row - FRanges.begin());
    if (row != FRanges.end() && quantity != FQuantity) ChooseQuantity(quantity);
  }
  return QDockWidget::eventFilter(watched, event);
}

void TFilterPanel::showEvent(QShowEvent* event) {
  QDockWidget::showEvent(event);
  RefreshHistogram();
}
