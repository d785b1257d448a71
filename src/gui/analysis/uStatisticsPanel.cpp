#include "gui/analysis/uStatisticsPanel.h"

#include <fmt/format.h>

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/uShockStatistics.h"
#include "base/uDateTime.h"
#include "base/uText.h"
#include "gui/charts/uChartPaint.h"
#include "gui/charts/uCountChart.h"
#include "gui/charts/uExceedanceChart.h"
#include "gui/common/uAnalysisBar.h"
#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/common/uWheelGuard.h"
#include "shell/uShownMission.h"

namespace {

constexpr std::size_t kHistogramSteps = 30;

// Either of the pulse or of the table of events.
struct TQuantityChoice {
  const char* name;
  const char* unit;
  double TPulse::*ofPulse;
  std::string_view ofTable;
};
constexpr TQuantityChoice kQuantityChoices[] = {{QT_TR_NOOP("Velocity change"), "m/s", &TPulse::velocityChange, {}},
                                                {QT_TR_NOOP("Peak"), "g", nullptr, "Acceleration max"},
                                                {QT_TR_NOOP("Duration at 10 %"), "ms", &TPulse::durationTenth, {}},
                                                {QT_TR_NOOP("IoT total"), "g·ms", nullptr, "IoT total"}};

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
  for (const TQuantityChoice& choice : kQuantityChoices) FQuantity->addItem(tr(choice.name));
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
  FillTimes();
  FillDirections();
  FillQuantity();
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
  std::vector<TCountBar> hours;
  const auto counts = CountByHour(times);
  for (std::size_t hour = 0; hour < counts.size() && !days.empty(); ++hour) {
    const auto begin = static_cast<double>(hour);
    hours.push_back({begin, begin + 1, counts[hour], QtText(fmt::format("{:02}:00 to {:02}:00", hour, hour + 1))});
  }
  FDays->SetBars(std::move(days), tr("Day"));
  FHours->SetBars(std::move(hours), tr("Hour of the day"));
}

void TStatisticsPanel::FillDirections() {
  std::vector<TDirection> directions;
  if (FMission != nullptr && FMission->Analysis) {
    for (const std::uint32_t event : FEvents) {
      const TPulse& pulse = FMission->Analysis->Pulses[event];
      if (pulse.problem == TPulseProblem::None) directions.push_back(pulse.direction);
    }
  }
  std::vector<TCountBar> bars;
  for (const auto& [direction, count] : CountByDirection(directions)) {
    bars.push_back({0, 0, count, QtText(DirectionText(direction))});
  }
  FDirections->SetBars(std::move(bars), tr("Direction"));
  QString text = FEvents.size() == 1 ? tr("1 event") : tr("%1 events").arg(FEvents.size());
  if (FMission != nullptr && FMission->Analysis) text += tr(" · %1 with a pulse").arg(directions.size());
  if (FMission == nullptr) text.clear();
  FCount->setText(text);
}

std::vector<double> TStatisticsPanel::ValuesOf(std::size_t quantity) const {
  std::vector<double> values;
  const TQuantityChoice& choice = kQuantityChoices[quantity];
  if (FMission == nullptr || (choice.ofPulse != nullptr && !FMission->Analysis)) return values;
  const TDataset& table = FMission->Tables.Events;
  const auto field = table.FindField(choice.ofTable);
  values.reserve(FEvents.size());
  for (const std::uint32_t event : FEvents) {
    if (choice.ofPulse == nullptr) {
      values.push_back(field ? double{table.Singles(*field)[event]} : std::nan(""));
      continue;
    }
    const TPulse& pulse = FMission->Analysis->Pulses[event];
    values.push_back(pulse.problem == TPulseProblem::None ? pulse.*choice.ofPulse : std::nan(""));
  }
  return values;
}

void TStatisticsPanel::FillQuantity() {
  const auto quantity = static_cast<std::size_t>(FQuantity->currentIndex());
  const TQuantityChoice& choice = kQuantityChoices[quantity];
  const std::vector<double> values = ValuesOf(quantity);
  const TRoundHistogram histogram = HistogramInRoundSteps(values, kHistogramSteps);
  std::vector<TCountBar> bars;
  for (std::size_t i = 0; i < histogram.counts.size(); ++i) {
    const double from = histogram.first + static_cast<double>(i) * histogram.step;
    const double to = from + histogram.step;
    bars.push_back({from, to, histogram.counts[i], tr("%1 to %2 %3").arg(Digits(from), Digits(to), choice.unit)});
  }
  FHistogram->SetBars(std::move(bars), tr("%1 (%2)").arg(tr(choice.name), choice.unit));
  FExceedance->SetValues(TExceedance(values), tr(choice.name), choice.unit);
}
