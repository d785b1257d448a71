#include "gui/overview/uOverviewPanel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSplitter>
#include <QVBoxLayout>

#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/common/uGrid.h"
#include "gui/common/uLabels.h"
#include "gui/common/uTheme.h"

TMainOverviewPanel::TMainOverviewPanel(QWidget* parent)
    : QWidget(parent),
      FChart1(new TEventsChart(this)),
      FChartAllSensors(new TSensorsChart(this)),
      FMostImportant(new TGrid("dbgMostImportant", tr("Most important events"), nullptr, this)),
      FOrderBy(new QComboBox(this)) {
  setObjectName("MainOverviewPanel");
  FChart1->setObjectName("Chart1");
  FChart1->setAccessibleName(tr("Shock events chart"));
  FChartAllSensors->setObjectName("ChartAllSensors");
  FChartAllSensors->setAccessibleName(tr("Sensors chart"));

  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->setObjectName("splOverview");
  splitter->setChildrenCollapsible(false);
  splitter->setHandleWidth(kSurfaceGap);
  splitter->addWidget(FChart1);
  splitter->addWidget(FChartAllSensors);
  splitter->addWidget(MakeMostImportantEvents());
  splitter->setSizes({340, 340, 220});
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(splitter);

  const auto align = [this] { AlignMargins(*FChart1, *FChartAllSensors); };
  connect(FChart1, &TTimeChart::NeededMarginsChanged, this, align);
  connect(FChartAllSensors, &TTimeChart::NeededMarginsChanged, this, align);
  connect(FOrderBy, &QComboBox::activated, this, &TMainOverviewPanel::OrderByChosen);
}

QWidget* TMainOverviewPanel::MakeMostImportantEvents() {
  FOrderBy->setObjectName("cmbOrderMostImporantBy");
  FOrderBy->addItems({"Intensity (max)", "Intensity (total)", "TOT (max)", "TOT (total)", "Acceleration (max)"});
  FOrderBy->setAccessibleName(tr("Order the most important events by"));
  FOrderBy->setToolTip(tr("What ranks the most important events (Alt+O)"));
  auto* orderLabel = new QLabel(tr("&Order By"), this);
  orderLabel->setBuddy(FOrderBy);
  auto* box = new QWidget(this);
  auto* head = new QHBoxLayout;
  head->setContentsMargins(8, 4, 8, 0);
  head->addWidget(MakeTitle(tr("Most important events"), this));
  head->addStretch();
  head->addWidget(orderLabel);
  head->addWidget(FOrderBy);
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addLayout(head);
  layout->addWidget(FMostImportant);
  return box;
}
