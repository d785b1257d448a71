#include "gui/analysis/uStatisticsPanel.h"

#include <fmt/format.h>

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>
#include <utility>

#include "analysis/uShockStatistics.h"
#include "base/uDateTime.h"
#include "base/uText.h"
#include "gui/charts/uChartPaint.h"
#include "gui/charts/uCountChart.h"
#include "gui/charts/uExceedanceChart.h"
#include "gui/charts/uReferenceLooks.h"
#include "gui/common/uAnalysisBar.h"
#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/common/uWheelGuard.h"
#include "shell/uShownMission.h"

namespace {

constexpr qsizetype kMaxName = 26;  // characters of the reference's
constexpr int kCountDigits = 10;

}  // namespace

TStatisticsPanel::TStatisticsPanel(QWidget* parent)
    : QWidget(parent),
      FCount(new TElidedLabel("lblStatisticsEvents", this, Qt::ElideRight)),
      FDays(new TCountChart(TCountChart::TBars::Days, "ChartByDay", tr("Events by day"), this)),
      FHours(new TCountChart(TCountChart::TBars::Hours, "ChartByHour", tr("Events by hour of the day"), this)),
      FDirections(new TCountChart(TCountChart::TBars::Names, "ChartByDirection", tr("Events by direction"), this)),
      FHistogram(new TCountChart(TCountChart::TBars::Steps, "ChartHistogram", tr("Histogram"), this)),
      FExceedance(new TExceedanceChart("ChartExceedance", tr("Exceedance"), this)),
      FQuantity(new QComboBox(this)),
      FCurrent(FDays) {
  setObjectName("StatisticsPanel");
  FQuantity->setObjectName("cmbStatisticsQuantity");
  FQuantity->setAccessibleName(tr("Quantity of histogram and exceedance"));
  FQuantity->setToolTip(FQuantity->accessibleName());
  for (const TEventQuantity& quantity : kEventQuantities) FQuantity->addItem(tr(quantity.name));
  new TWheelGuard(*FQuantity);
  connect(FQuantity, &QComboBox::currentIndexChanged, this, &TStatisticsPanel::FillQuantity);
  for (TAnalysisChart* chart : findChildren<TAnalysisChart*>()) chart->installEventFilter(this);
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(kSurfaceGap);
  auto* choices = new QHBoxLayout;
  choices->setContentsMargins(4, 0, 4, 0);
  auto* caption = new QLabel(tr("&Quantity"), this);
  caption->setBuddy(FQuantity);
  choices->addWidget(caption);
  choices->addWidget(FQuantity);
  choices->addStretch(1);
  FCount->setContentsMargins(4, 4, 4, 0);
  // Six columns, so that three charts stand above two.
  grid->addWidget(new TAnalysisBar("barStatistics", this), 0, 0, 1, 6);
  grid->addWidget(FCount, 1, 0, 1, 6);
  grid->addWidget(FDays, 2, 0, 1, 2);
  grid->addWidget(FHours, 2, 2, 1, 2);
  grid->addWidget(FDirections, 2, 4, 1, 2);
  grid->addLayout(choices, 3, 0, 1, 6);
  grid->addWidget(FHistogram, 4, 0, 1, 3);
  grid->addWidget(FExceedance, 4, 3, 1, 3);
  for (int column = 0; column < 6; ++column) grid->setColumnStretch(column, 1);
  grid->setRowStretch(2, 1);
  grid->setRowStretch(4, 1);
}

bool TStatisticsPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) FCurrent = qobject_cast<TAnalysisChart*>(watched);
  return QWidget::eventFilter(watched, event);
}

void TStatisticsPanel::ShowMission(const TShownMission* mission) {
  FMission = mission;
  FReference = nullptr;
  FIsStale = true;
  if (isVisible() || mission == nullptr) Fill();
}

void TStatisticsPanel::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (FIsStale) Fill();
}

void TStatisticsPanel::Fill() {
  FIsStale = false;
  FEvents = FMission == nullptr ? std::vector<std::uint32_t>() : VisibleEvents(FMission->CLDS);
  const bool isPart = FMission != nullptr && !FMission->CLDS.ShownRows().empty();
  FReference = FMission == nullptr ? nullptr : ReferenceFor(*FMission, isPart);
  FillTimes();
  FillDirections();
  FillQuantity();
}

// Empty without a reference, and where it has none of these events.
QString TStatisticsPanel::ReferenceWords(bool isAny) const {
  return FReference == nullptr || !isAny ? QString() : ShownText(ReferenceName(*FReference), kMaxName);
}

void TStatisticsPanel::FillTimes() {
  std::vector<double> times;
  times.reserve(FEvents.size());
  for (const std::uint32_t event : FEvents) {
    times.push_back(DateTimeOf(FMission->Events.StartTime, FMission->Events.GetItem(event).GetStartTime()));
  }
  std::vector<TCountBar> days;
  for (const auto& [day, count] : CountByDay(times)) {
    days.push_back({day, day + 1, count, QtText(FormatDateTime(ShortDateFormat(), day))});
  }
  const QString reference = ReferenceWords(FReference != nullptr && FReference->events > 0);
  std::vector<TCountBar> hours;
  const auto counts = CountByHour(times);
  for (std::size_t hour = 0; hour < counts.size() && !days.empty(); ++hour) {
    const auto begin = static_cast<double>(hour);
    hours.push_back({begin, begin + 1, counts[hour], QtText(fmt::format("{:02}:00 to {:02}:00", hour, hour + 1)),
                     reference.isEmpty() ? 0 : FReference->hours[hour]});
  }
  const bool hasLevel = !reference.isEmpty() && FReference->days >= 1;
  if (hasLevel) {
    const double aDay = static_cast<double>(FReference->events) / FReference->days;
    FDays->SetLevel(aDay, tr("%1: %2 a day").arg(reference, Digits(aDay, 3)));
  } else {
    FDays->SetLevel(std::nullopt, {});
  }
  FDays->SetBars(std::move(days), tr("Day"));
  FHours->SetBars(std::move(hours), tr("Hour of the day"), reference);
}

void TStatisticsPanel::FillDirections() {
  std::vector<TDirection> directions;
  const bool isAnalysed = FMission != nullptr && FMission->Analysis;
  if (isAnalysed) directions = DirectionsOf(FEvents, *FMission->Analysis);
  const QString reference = ReferenceWords(FReference != nullptr && !FReference->directions.empty());
  std::vector<TDirectionCount> there;
  if (!reference.isEmpty()) there = FReference->directions;
  std::vector<TCountBar> bars;
  for (const auto& [direction, count] : CountByDirection(directions)) {
    bars.push_back({0, 0, count, QtText(DirectionText(direction))});
    const auto same = std::ranges::find(there, direction, &TDirectionCount::direction);
    if (same == there.end()) continue;
    bars.back().reference = same->count;
    there.erase(same);
  }
  for (std::size_t i = 0; i < there.size() && !bars.empty(); ++i) {
    bars.push_back({0, 0, 0, QtText(DirectionText(there[i].direction)), there[i].count});
  }
  FDirections->SetBars(std::move(bars), tr("Direction"), reference);
  ShowCount(isAnalysed ? std::optional(directions.size()) : std::nullopt);
}

void TStatisticsPanel::ShowCount(std::optional<std::size_t> pulses) {
  QString text = FEvents.size() == 1 ? tr("1 event") : tr("%1 events").arg(FEvents.size());
  if (pulses) text += tr(" · %1 with a pulse").arg(*pulses);
  if (FReference != nullptr) {
    const auto difference = static_cast<double>(FEvents.size()) - static_cast<double>(FReference->events);
    text += tr(" · Δ %1 events against all %2 of %3")
                .arg(SignedDigits(difference, kCountDigits))
                .arg(FReference->events)
                .arg(ReferenceWords(true));
    if (!FReference->hasPulses) text += tr(", which has no shock analysis");
  } else if (FMission != nullptr && FMission->Reference) {
    text += tr(" · this recording is the reference");
  }
  if (FMission == nullptr) text.clear();
  FCount->setText(text);
}

void TStatisticsPanel::FillQuantity() {
  const auto place = static_cast<std::size_t>(FQuantity->currentIndex());
  const TEventQuantity& quantity = kEventQuantities[place];
  std::vector<double> values;
  if (FMission != nullptr) {
    values = ValuesOf(quantity, FEvents, FMission->Tables, FMission->Analysis ? &*FMission->Analysis : nullptr);
  }
  ShowDistribution(quantity, values, ReferenceWords(true),
                   FReference == nullptr ? TDistribution() : FReference->distributions[place], *FHistogram,
                   *FExceedance);
}
