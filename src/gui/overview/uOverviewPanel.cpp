#include "gui/overview/uOverviewPanel.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QSplitter>
#include <QToolButton>
#include <algorithm>
#include <functional>
#include <utility>

#include "analysis/uMissionDatasets.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uGrid.h"
#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/overview/uVerdictStrip.h"

namespace {

// The list has as many rows as leave the height, in px without the dates, to each chart.
struct TRoom {
  int rows;
  int chart;
};
constexpr TRoom kRooms[] = {{3, 60}, {5, 90}, {10, 150}};
constexpr int kAroundDates = 6;  // px, below the dates
constexpr int kEmptyChart = 60;  // px, of one that only says what is missing
constexpr int kListSpacing = 2;

// Says when its height changed and its parts were laid out.
class TOverviewSplitter : public QSplitter {
 public:
  TOverviewSplitter(std::function<void()> resized, QWidget* parent)
      : QSplitter(Qt::Vertical, parent), FResized(std::move(resized)) {}

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QSplitter::resizeEvent(event);
    FResized();
  }

 private:
  std::function<void()> FResized;
};

}  // namespace

TMainOverviewPanel::TMainOverviewPanel(QWidget* parent)
    : QWidget(parent),
      FVerdict(new TVerdictStrip(this)),
      FSplitter(new TOverviewSplitter(
          [this] {
            FitToData();
            UpdateSelectedLine();
          },
          this)),
      FChart1(new TEventsChart(this)),
      FChartAllSensors(new TSensorsChart(this)),
      FMostImportant(new TGrid("dbgMostImportant", tr("Most important events"), nullptr, this)),
      FOrderBy(new QComboBox(this)),
      FSelected(new TElidedLabel("lblSelectedEvent", this, Qt::ElideRight)),
      FShow(new QToolButton(this)) {
  setObjectName("MainOverviewPanel");
  Named(FChart1, "Chart1", tr("Shock events chart"));
  Named(FChartAllSensors, "ChartAllSensors", tr("Sensors chart"));
  FMostImportant->SetPlaceholder(tr("No events"));
  PairCharts(*FChart1, *FChartAllSensors);

  FSplitter->setObjectName("splOverview");
  FSplitter->setChildrenCollapsible(false);
  FSplitter->setHandleWidth(kSurfaceGap);
  FSplitter->addWidget(FChart1);
  FSplitter->addWidget(FChartAllSensors);
  FSplitter->addWidget(MakeMostImportantEvents());
  FSplitter->setSizes({340, 340, 220});
  MakeColumn(this, {FVerdict, {FSplitter, 1}}, kNoGaps);

  connect(FSplitter, &QSplitter::splitterMoved, this, [this] { SetSharesHeight(false); });
  connect(FOrderBy, &QComboBox::activated, this, &TMainOverviewPanel::OrderByChosen);
  connect(FMostImportant->verticalScrollBar(), &QScrollBar::valueChanged, this,
          &TMainOverviewPanel::UpdateSelectedLine);
  connect(FShow, &QToolButton::clicked, this, [this] {
    if (FMostImportant->isVisible() && FMostImportant->currentIndex().isValid()) {
      FMostImportant->scrollTo(FMostImportant->currentIndex());
    } else {
      Q_EMIT EventAskedFor();
    }
  });
}

QWidget* TMainOverviewPanel::MakeMostImportantEvents() {
  Named(FOrderBy, "cmbOrderMostImporantBy", tr("Order the most important events by"),
        tr("What ranks the most important events (Alt+O)"));
  for (const std::string_view caption : kOrderByCaptions) FOrderBy->addItem(QtText(caption));
  auto* orderLabel = new QLabel(tr("&Order By"), this);
  orderLabel->setBuddy(FOrderBy);
  FSelected->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  FSelected->setForegroundRole(QPalette::PlaceholderText);
  Named(FShow, "btnShowSelectedEvent", tr("Show the selected event"),
        tr("Scroll to the selected event, or show it in the shock view where it is not among these"));
  FShow->setText(tr("Show"));
  FShow->setAutoRaise(true);
  FShow->setFocusPolicy(Qt::StrongFocus);
  auto* box = new QWidget(this);
  auto* title = MakeTitle(tr("Most important events"), this);
  auto* head = MakeRow(nullptr, {title, {FSelected, 1}, FShow, kRest, orderLabel, FOrderBy}, {QMargins(8, 0, 8, 0), 8});
  MakeColumn(box, {head, FMostImportant}, {QMargins(), kListSpacing});
  UpdateSelectedLine();
  return box;
}

// Where the charts can spare no row, the list is its title.
void TMainOverviewPanel::ShareHeight() {
  const int row = FMostImportant->verticalHeader()->defaultSectionSize();
  const int title = FOrderBy->sizeHint().height();
  const int around = kListSpacing + FMostImportant->horizontalHeader()->height() +
                     FMostImportant->horizontalScrollBar()->sizeHint().height() + 2 * FMostImportant->frameWidth();
  const int room = FSplitter->height() - 2 * FSplitter->handleWidth() - title;
  const int dates = fontMetrics().height() + kAroundDates;
  int rows = 0;
  for (const TRoom& each : kRooms)
    rows = std::max(rows, std::min((room - 2 * each.chart - dates - around) / row, each.rows));
  if (FMostImportant->isHidden() == (rows > 0)) {
    // It keeps its room only while an export hides it.
    QSizePolicy policy = FMostImportant->sizePolicy();
    policy.setRetainSizeWhenHidden(rows > 0);
    FMostImportant->setSizePolicy(policy);
    FMostImportant->setVisible(rows > 0);
    FMostImportant->parentWidget()->layout()->activate();
    FSplitter->refresh();  // it keeps the least heights of its parts
  }
  const int list = rows > 0 ? around + rows * row : 0;
  const int charts = std::max(0, room - list);
  const bool hasEvents = FChart1->HasData();
  const bool hasSensors = FChartAllSensors->HasData();
  int upper = std::max(0, charts - dates) / 2;
  if (hasEvents != hasSensors) upper = std::clamp(hasEvents ? charts - kEmptyChart : kEmptyChart, 0, charts);
  FSplitter->setSizes({upper, charts - upper, title + list});
}

void TMainOverviewPanel::FitToData() {
  if (FSharesHeight) ShareHeight();
}

void TMainOverviewPanel::resizeEvent(QResizeEvent* event) {
  FVerdict->SetFlat(window()->height() < kLowWindow);
  QWidget::resizeEvent(event);
}

void TMainOverviewPanel::SetSharesHeight(bool shares) {
  FSharesHeight = shares;
  if (shares) return ShareHeight();
  FMostImportant->show();
}

void TMainOverviewPanel::ShowSelectedEvent(std::optional<std::size_t> event, const QString& words) {
  FMostImportant->SetCurrentId(event);
  FHasEvent = event.has_value();
  SetSelectedWords(words);
  UpdateSelectedLine();
}

void TMainOverviewPanel::SetSelectedWords(const QString& words) {
  FSelected->setText(words);
}

void TMainOverviewPanel::UpdateSelectedLine() {
  const QModelIndex row = FMostImportant->currentIndex();
  const bool inSight = row.isValid() && !FMostImportant->isHidden() &&
                       FMostImportant->viewport()->rect().intersects(FMostImportant->visualRect(row));
  for (QWidget* part : std::initializer_list<QWidget*>{FSelected, FShow}) part->setVisible(FHasEvent && !inSight);
}
