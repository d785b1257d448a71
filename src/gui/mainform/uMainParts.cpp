#include "gui/mainform/uMainParts.h"

#include <QFrame>
#include <QLabel>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>
#include <QToolButton>
#include <algorithm>

#include "gui/analysis/uDamagePanel.h"
#include "gui/analysis/uStatisticsPanel.h"
#include "gui/charts/uDamageChart.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uIcons.h"
#include "gui/common/uLabels.h"
#include "gui/common/uLogos.h"
#include "gui/common/uTheme.h"
#include "gui/docks/uFoldingPanel.h"
#include "gui/docks/uPanelFolding.h"
#include "gui/filter/uFilterChip.h"
#include "gui/filter/uFilterPanel.h"
#include "gui/mainform/uLayouts.h"
#include "gui/mainform/uNotice.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/platform/uTaskbarProgress.h"
#include "gui/report/uReportPanel.h"
#include "gui/ribbon/uBackstage.h"
#include "gui/ribbon/uBackstagePages.h"
#include "gui/ribbon/uRibbon.h"
#include "gui/settings/uAlarmLimitsPanel.h"
#include "gui/settings/uSettingsPage.h"
#include "gui/shock/uShockPanel.h"
#include "gui/welcome/uLoadingPanel.h"
#include "gui/welcome/uRecentFiles.h"
#include "gui/welcome/uWellcomePanel.h"

namespace {

const QColor kWarningGround(0xFFF3BF);
const QColor kWarningInk(0x3D3200);

QLabel* MakeStatusLabel(QWidget* parent, const QString& name) {
  auto* label = new TElidedLabel(name, parent);
  label->setContentsMargins(4, 0, 12, 0);
  return label;
}

}  // namespace

TMainParts::TMainParts(QMainWindow& window)
    : ribbon(new TRibbon(&window)),
      front(new QStackedWidget(&window)),
      views(new QStackedWidget(&window)),
      welcome(new TWellcomePanel(&window)),
      overview(new TMainOverviewPanel(&window)),
      shock(new TMainShockPanel(&window)),
      report(new TReportPanel(&window)),
      damage(new TDamagePanel(&window)),
      statistics(new TStatisticsPanel(&window)),
      docks(window),
      filter(new TFilterPanel(&window)),
      loading(nullptr),
      taskbar(new TTaskbarProgress("dxTaskbarProgress1", &window)),
      backstage(nullptr),
      alarmLimits(new TAlarmLimitsPanel(&window)),
      recent(new TRecentPage(&window)),
      recentFiles(new TRecentFiles(&window)),
      logos(new TLogos(&window)),
      layouts(nullptr) {
  ribbon->setObjectName("Ribbon");
  window.setMenuWidget(ribbon);
  window.addDockWidget(Qt::LeftDockWidgetArea, filter);
  filter->setTitleBarWidget(new TPanelTitle(*filter));
  filter->hide();
  docks.folding->GiveWayTo(*filter);
  MakeCentre(window);
  MakeStatusBar(window);
  loading = new TLoadingPanel(&window);
  backstage = new TBackstage(&window);
  backstage->AddPage("backstageSettings", QObject::tr("Settings"), "settings-configure", new TSettingsPage(*logos));
  backstage->AddPage("backstageRecent", QObject::tr("Recent"), "chronometer", recent);
  welcome->AddSection(QObject::tr("Recent"), recentFiles);
  layouts = new TLayouts(window, *docks.folding);
}

void TMainParts::MakeCentre(QMainWindow& window) {
  auto* centre = new QWidget(&window);
  MakeDamageBar(centre);
  views->setObjectName("MainPanel");
  for (QWidget* view : std::initializer_list<QWidget*>{overview, shock, report, damage, statistics})
    views->addWidget(view);
  front->addWidget(welcome);
  front->addWidget(views);
  MakeColumn(centre, {damaged, {front, 1}}, kNoGaps);
  window.setCentralWidget(centre);
  window.setContentsMargins(kSurfaceGap, 0, kSurfaceGap, 0);
}

void TMainParts::MakeDamageBar(QWidget* parent) {
  damaged = Named(new QFrame(parent), "pnlDamaged");
  QPalette colours = damaged->palette();
  colours.setColor(QPalette::Window, kWarningGround);
  colours.setColor(QPalette::WindowText, kWarningInk);
  damaged->setPalette(colours);
  damaged->setAutoFillBackground(true);
  auto* icon = new QLabel(damaged);
  icon->setPixmap(damaged->style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(18));
  auto* text = Named(new QLabel(damaged), "lblDamaged");
  text->setWordWrap(true);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  const QString hide = QObject::tr("Hide this message");
  auto* close = Named(new QToolButton(damaged), "btnDamagedClose", hide, hide);
  close->setText("✕");
  close->setAutoRaise(true);
  close->setPalette(colours);
  QObject::connect(close, &QToolButton::clicked, damaged, &QWidget::hide);
  MakeRow(damaged, {icon, {text, 1}, close}, {QMargins(8, 3, 4, 3)});
  damaged->hide();
}

void TMainParts::FocusView() const {
  if (loading->isVisible()) return loading->ForgetFocus();
  if (backstage->isVisible()) return;
  // Where it has nothing to open, a read begins.
  if (front->currentWidget() == welcome && !welcome->FocusFirst()) loading->ForgetFocus();
  if (front->currentWidget() != views) return;
  if (views->currentWidget() == overview) overview->Chart1()->setFocus();
  if (views->currentWidget() == shock) shock->Chart2()->setFocus();
  if (views->currentWidget() == report) report->setFocus();
  if (views->currentWidget() == damage) damage->Chart()->setFocus();
  if (views->currentWidget() == statistics) statistics->CurrentChart()->setFocus();
}

void TMainParts::MakeStatusBar(QMainWindow& window) {
  QStatusBar* bar = window.statusBar();
  statusHint = MakeStatusLabel(bar, "lblStatusHint");
  statusValue = MakeStatusLabel(bar, "lblStatusValue");
  statusEvents = new TFilterChip(bar);
  statusFile = MakeStatusLabel(bar, "lblStatusFile");
  notice = new TNotice(statusHint, bar);
  bar->addWidget(statusHint);
  bar->addWidget(notice, 2);
  bar->addWidget(statusValue, 1);
  bar->addPermanentWidget(statusEvents);
  bar->addPermanentWidget(statusFile);
  // What comes and goes in it moves nothing.
  bar->setMinimumHeight(std::max(notice->sizeHint().height(), statusEvents->sizeHint().height()));
  statusFile->setMaximumWidth(bar->fontMetrics().averageCharWidth() * 50);
}
