#include "gui/analysis/uDamagePanel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QVBoxLayout>
#include <utility>

#include "analysis/uEventOrdering.h"
#include "base/uDateTime.h"
#include "base/uText.h"
#include "gui/charts/uDamageChart.h"
#include "gui/common/uAnalysisBar.h"
#include "gui/common/uGrid.h"
#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/common/uTypedNumber.h"
#include "shell/uShownMission.h"

namespace {

constexpr int kEditCharacters = 8;

struct TLimitEditRow {
  const char* name;
  const char* caption;
  const char* unit;
  const char* tip;
};
constexpr TLimitEditRow kEdits[] = {
    {"edtCriticalVelocity", QT_TR_NOOP("Critical velocity change"), "m/s",
     QT_TR_NOOP("Shocks with a smaller velocity change do no damage, whatever their peak")},
    {"edtCriticalAcceleration", QT_TR_NOOP("Critical acceleration"), "g",
     QT_TR_NOOP("Shocks with a smaller peak do no damage, whatever their velocity change")}};

}  // namespace

TDamagePanel::TDamagePanel(QWidget* parent)
    : QWidget(parent),
      FCount(new TElidedLabel("lblDamaging", this, Qt::ElideRight)),
      FProblem(new QLabel(this)),
      FChart(new TDamageChart(this)),
      FDamaging(new TGrid("dbgDamaging", tr("Events beyond the boundary"), AnalysisIndexKey, this)) {
  setObjectName("DamageBoundaryPanel");
  auto* splitter = new QSplitter(Qt::Horizontal, this);
  splitter->setObjectName("splDamage");
  splitter->setChildrenCollapsible(false);
  splitter->setHandleWidth(kSurfaceGap);
  splitter->addWidget(FChart);
  splitter->addWidget(MakeList());
  splitter->setSizes({680, 320});
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addWidget(new TAnalysisBar("barDamage", this));
  layout->addWidget(MakeLimits());
  layout->addWidget(splitter, 1);
  connect(FDamaging, &TGrid::TitleClicked, this, &TDamagePanel::Sort);
}

QWidget* TDamagePanel::MakeLimits() {
  auto* box = new QWidget(this);
  auto* row = new QHBoxLayout(box);
  row->setContentsMargins(4, 4, 4, 0);
  for (std::size_t i = 0; i < FEdits.size(); ++i) {
    const TLimitEditRow& edit = kEdits[i];
    auto* caption = new QLabel(tr(edit.caption), box);
    FEdits[i] = new QLineEdit(box);
    FEdits[i]->setObjectName(edit.name);
    FEdits[i]->setAccessibleName(tr("%1 in %2").arg(tr(edit.caption), edit.unit));
    FEdits[i]->setToolTip(tr(edit.tip));
    FEdits[i]->setMaxLength(32);
    FEdits[i]->setFixedWidth(FEdits[i]->fontMetrics().averageCharWidth() * (kEditCharacters + 3));
    caption->setBuddy(FEdits[i]);
    connect(FEdits[i], &QLineEdit::textChanged, this, &TDamagePanel::ReadLimits);
    connect(FEdits[i], &QLineEdit::editingFinished, this, [this] {
      if (!FLimits) return;
      FTaken = FLimits;
      emit LimitsTyped(*FLimits);
    });
    row->addWidget(caption);
    row->addWidget(FEdits[i]);
    row->addWidget(new QLabel(edit.unit, box));
    row->addSpacing(8);
  }
  auto* note = new TElidedLabel("lblDamageNote", box, Qt::ElideRight);
  note->setText(tr("Holds for one axis, a rectangular pulse and a product without damping"));
  note->setForegroundRole(QPalette::PlaceholderText);
  row->addWidget(note, 1);
  FProblem->setObjectName("lblDamageProblem");
  FProblem->setProperty("alarm", true);
  FProblem->hide();
  row->addWidget(FProblem);
  return box;
}

QWidget* TDamagePanel::MakeList() {
  auto* box = new QWidget(this);
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addWidget(FCount);
  layout->addWidget(FDamaging, 1);
  return box;
}

void TDamagePanel::ShowMission(const TShownMission* mission) {
  FMission = mission;
  FIsStale = true;
  TakeProfile();
  FDamaging->SetDataset(nullptr);
  if (isVisible() || mission == nullptr) Fill();
}

void TDamagePanel::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (FIsStale) Fill();
}

void TDamagePanel::Fill() {
  FIsStale = false;
  std::vector<TDamageEvent> events;
  FWithoutPulse = 0;
  const bool isAnalysed = FMission != nullptr && FMission->Analysis;
  if (isAnalysed) {
    const TMissionAnalysis& analysis = *FMission->Analysis;
    for (const std::uint32_t event : VisibleEvents(FMission->CLDS)) {
      const TPulse& pulse = analysis.Pulses[event];
      if (pulse.problem != TPulseProblem::None) {
        ++FWithoutPulse;
        continue;
      }
      const double time = DateTimeOf(FMission->Events.StartTime, FMission->Events.GetItem(event).GetStartTime());
      events.push_back({event, time, {pulse.velocityChange, pulse.peak}});
    }
    const std::string order = FBeyond.IndexName();
    FBeyond = analysis.Table;
    FBeyond.SelectIndex(order);
  }
  if (FMission == nullptr) FBeyond = {};
  FChart->SetEvents(std::move(events), FWithoutPulse > 0
                                           ? tr("No shown event has a pulse; the table “Analysis” says why")
                                       : isAnalysed ? tr("No events")
                                                    : QString());
  if (FMission != nullptr) FChart->SetSelectedEvent(FMission->SelectedEvent);
  FillList();
}

void TDamagePanel::FillList() {
  if (FMission == nullptr || !FMission->Analysis) {
    FCount->clear();
    return;
  }
  std::vector<bool> beyond(FBeyond.RowCount(), false);
  std::size_t count = 0;
  std::size_t both = 0;
  for (const TDamageEvent& one : FChart->Events()) {
    if (!FLimits) break;
    if (IsBeyondBoth(one.point, *FLimits)) ++both;
    if (!IsDamaging(one.point, *FLimits)) continue;
    beyond[one.event] = true;
    ++count;
  }
  FBeyond.SetShownRows(std::move(beyond));
  FDamaging->SetPlaceholder(FLimits
                                ? tr("No event is beyond the boundary")
                                : tr("Enter both limits of the product to see which events are beyond its boundary"));
  FDamaging->SetDataset(&FBeyond);
  FDamaging->SetCurrentId(FMission->SelectedEvent);
  ShowCount(count, both);
}

void TDamagePanel::ShowCount(std::size_t beyond, std::size_t both) {
  const auto events = [](std::size_t count) { return count == 1 ? tr("1 event") : tr("%1 events").arg(count); };
  QString title = events(FChart->Events().size());
  if (FLimits) title = tr("%1 of %2 beyond the boundary · %3 beyond both limits").arg(beyond).arg(title).arg(both);
  if (FWithoutPulse > 0) title += tr(" · %1 without a pulse not shown").arg(FWithoutPulse);
  FChart->Legend().SetTitle(title);
  FChart->QueueReplot();
  FCount->setText(FLimits ? tr("%1 beyond the boundary").arg(events(beyond)) : QString());
}

void TDamagePanel::SetSelectedEvent(std::optional<std::size_t> event) {
  FChart->SetSelectedEvent(event);
  FDamaging->SetCurrentId(event);
}

void TDamagePanel::TakeProfile() {
  if (FMission == nullptr || !FMission->Display.profile) return;
  const std::optional<TFragility>& product = FMission->Display.profile->product;
  if (!product || std::exchange(FTaken, product) == product) return;
  FEdits[0]->setText(QtText(GeneralFloat(product->velocityChange)));
  FEdits[1]->setText(QtText(GeneralFloat(product->acceleration)));
}

void TDamagePanel::Sort(const QString& field) {
  if (const auto key = AnalysisIndexKey(Utf8(field)); key && ToggleIndex(FBeyond, *key)) FDamaging->Refresh();
}

// Both have to be numbers above 0.
void TDamagePanel::ReadLimits() {
  QString problem;
  std::array<double, 2> values{};
  bool isComplete = true;
  for (std::size_t i = 0; i < FEdits.size(); ++i) {
    const QString text = FEdits[i]->text();
    const TTypedNumber number = text.trimmed().isEmpty() ? TTypedNumber{} : ReadTypedNumber(text);
    values[i] = number.value.value_or(0);
    isComplete = isComplete && values[i] > 0;
    if (!number.problem.isEmpty()) problem = number.problem;
    if (number.value && values[i] <= 0) problem = tr("A limit has to be above 0.");
  }
  FProblem->setText(problem);
  FProblem->setVisible(!problem.isEmpty());
  FLimits = isComplete ? std::optional(TFragility{values[0], values[1]}) : std::nullopt;
  FChart->SetLimits(FLimits);
  FillList();
}
