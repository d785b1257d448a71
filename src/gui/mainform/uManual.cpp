#include "gui/mainform/uManual.h"

#include <fmt/format.h>

#include <QDesktopServices>
#include <QFileInfo>
#include <QStackedWidget>
#include <QUrl>

#include "base/uFiles.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/common/uQtText.h"
#include "gui/mainform/uCommandTable.h"
#include "gui/mainform/uMainParts.h"
#include "gui/ribbon/uBackstage.h"
#include "gui/shock/uShockPanel.h"
#include "shell/uFileFlow.h"

namespace {

TManualTopic TopicInFront(const TCommandTargets& on) {
  const TMainParts& parts = on.parts;
  if (!on.flow.FileShown() || parts.backstage->isVisible()) return TManualTopic::QuickStart;
  if (on.flow.View() == TView::Report) return TManualTopic::Output;
  if (parts.docks.ChartNavigator->hasFocus()) return TManualTopic::Charts;
  if (on.flow.View() == TView::DamageBoundary || on.flow.View() == TView::Statistics) return TManualTopic::Metrics;
  if (on.flow.View() == TView::Overview) return TManualTopic::QuickStart;
  return &parts.shock->ChartInFront() != parts.shock->Chart2() ? TManualTopic::Metrics : TManualTopic::Charts;
}

}  // namespace

void OpenManual(const TCommandTargets& on, bool /*checked*/) {
  const std::string file = Utf8FromPath(ManualDocument(on.program, TopicInFront(on)));
  if (!QFileInfo::exists(QtText(file))) {
    on.controls.ShowNotice(fmt::format("The manual is missing: {}", file), {});
  } else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(QtText(file)))) {
    on.controls.ShowNotice(fmt::format("The desktop has no program for {}", file), PathFromUtf8(file).parent_path());
  }
}
