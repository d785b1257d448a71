#include "gui/report/uReportPanel.h"

#include <QFrame>
#include <QSplitter>
#include <QTimer>
#include <QToolButton>
#include <tuple>

#include "analysis/uShockMetrics.h"
#include "base/uText.h"
#include "gui/common/uBackgroundTask.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uIcons.h"
#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/report/uEventCardList.h"
#include "gui/report/uPageView.h"
#include "platform/uSha256.h"

namespace {

constexpr int kThumbnailsWidth = 116;  // px
constexpr TBoxLook kBarLook{QMargins(), 2};

TElidedLabel* MakeFiltered(const char* name, QWidget* parent) {
  auto* label = new TElidedLabel(name, parent, Qt::ElideRight);
  label->setForegroundRole(QPalette::Link);
  label->hide();
  return label;
}

}  // namespace

TReportPanel::TReportPanel(QWidget* parent) : QWidget(parent), FReadFile(new TBackgroundTask(this)) {
  setObjectName("ReportPanel");
  // It stands without dock panels; its width must not make them narrow in the other views.
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
  auto* splitter = Named(new QSplitter(this), "splReport");
  splitter->setChildrenCollapsible(false);
  splitter->setHandleWidth(kSurfaceGap);
  FThumbnails = new TPageView("lstReportPages", tr("Pages"), splitter);
  FThumbnails->setMinimumWidth(kThumbnailsWidth);
  FThumbnails->setMaximumWidth(2 * kThumbnailsWidth);
  auto* pages = Named(new QWidget(splitter), "dxLayoutReport");
  FView = new TPageView("scrlReport", tr("Report"), pages);
  auto* bar = MakeBar(pages);
  FFilteredCover = MakeFiltered("dxLayoutItemReportIsFilteredCover", pages);
  MakeColumn(pages, {bar, FFilteredCover, {FView, 1}}, kBarLook);
  auto* cards = MakeCards(splitter);
  for (QWidget* part : std::initializer_list<QWidget*>{FThumbnails, pages, cards}) splitter->addWidget(part);
  splitter->setStretchFactor(1, 1);
  MakeColumn(this, {splitter}, {QMargins(kSurfaceGap, kSurfaceGap, kSurfaceGap, 0)});
  splitter->setSizes({kThumbnailsWidth, width(), cards->minimumSizeHint().width()});

  setFocusProxy(FView);
  connect(FView, &TPageView::PageChanged, this, &TReportPanel::ShowPageNumber);
  connect(FView, &TPageView::ZoomChanged, this, &TReportPanel::ShowPageNumber);
  connect(FThumbnails, &TPageView::PageClicked, this, [this](int page) {
    FView->GoToPage(page);
    FThumbnails->setFocus();
  });
}

TReportPanel::~TReportPanel() = default;

QWidget* TReportPanel::MakeBar(QWidget* parent) {
  auto* bar = new QWidget(parent);
  auto* row = MakeRow(bar, {}, kBarLook);
  const auto add = [&](const char* name, const char* icon, const QString& tip, auto clicked) {
    auto* button = Named(new QToolButton(bar), name, tip.section(" (", 0, 0), tip);
    button->setIcon(Icon(icon));
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, clicked);
    row->addWidget(button);
  };
  add("btnReportPreviousPage", "go-previous", tr("Previous page (Page Up)"),
      [this] { FView->GoToPage(FView->CurrentPage() - 1); });
  FPageNumber = Named(new QLabel(bar), "lblReportPage");
  row->addWidget(FPageNumber);
  add("btnReportNextPage", "go-next", tr("Next page (Page Down)"),
      [this] { FView->GoToPage(FView->CurrentPage() + 1); });
  add("btnReportZoomOut", "zoom-out", tr("Smaller (−, Ctrl+wheel)"), [this] { FView->ZoomBy(1 / kZoomStep); });
  add("btnReportZoomIn", "zoom-in", tr("Larger (+, Ctrl+wheel)"), [this] { FView->ZoomBy(kZoomStep); });
  add("btnReportFitWidth", "zoom-fit-width", tr("Fit the width (W)"),
      [this] { FView->SetFit(TPageView::TFit::Width); });
  add("btnReportFitPage", "zoom-fit-best", tr("Fit the page (F)"), [this] { FView->SetFit(TPageView::TFit::Page); });
  FFiltered = MakeFiltered("dxLayoutItemReportIsFiltered", bar);
  row->addWidget(FFiltered);
  row->addStretch();
  FIntensity = new TElidedLabel("lblReportTotalIntensity", bar, Qt::ElideRight);
  FIntensity->setForegroundRole(QPalette::PlaceholderText);
  row->addWidget(FIntensity);
  return bar;
}

QFrame* TReportPanel::MakeCards(QWidget* parent) {
  auto* panel = Named(new QFrame(parent), "pnlEventCards");
  auto* title = MakeTitle(tr("Event cards"), panel);
  FCardsIntensity = new TElidedLabel("lblEventCardsTotalIntensity", panel, Qt::ElideRight);
  FCardsIntensity->setForegroundRole(QPalette::PlaceholderText);
  FCards = new TEventCardList(panel);
  MakeColumn(panel, {title, FCardsIntensity, {FCards, 1}}, kBarLook);
  return panel;
}

void TReportPanel::ShowReport(const TShownMission& mission) {
  FMission = &mission;
  FStale = true;
  // A span of time belongs to its recording.
  if (FSource) {
    const std::filesystem::path file = FSource(mission).file;
    if (std::exchange(FFile, file) != file) FConfig.time = {};
  }
  if (isVisible()) LayOutSoon();
}

void TReportPanel::Clear() {
  FMission = nullptr;
  FStale = false;
  FReadFile->Cancel();
  FReadingFile = false;
  FSha256.clear();
  FVelocityChange.reset();
  for (TPageView* view : {FThumbnails, FView}) view->ShowPages(nullptr);
  FPages.reset();
  FCards->ShowCards(nullptr);
  for (TElidedLabel* label : {FIntensity, FCardsIntensity}) label->clear();
}

void TReportPanel::SetSelectedEvent(std::optional<std::size_t> event) {
  FCards->SetCurrent(event);
  if (FMission != nullptr && FConfig.Has(TReportSection::SelectedEvent)) ShowReport(*FMission);
}

void TReportPanel::SetConfig(const TReportConfig& config) {
  FConfig = config;
  if (FMission != nullptr) ShowReport(*FMission);
}

void TReportPanel::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  FCards->ShowCards(FMission, FConfig.time);  // in the order that the grids have now
  LayOut();
}

// Several changes at once are laid out once.
void TReportPanel::LayOutSoon() {
  QTimer::singleShot(0, this, [this] {
    if (isVisible()) LayOut();
  });
}

void TReportPanel::LayOut() {
  if (FMission == nullptr || !FSource || !std::exchange(FStale, false)) return;
  TReportContents contents = FSource(*FMission);
  contents.sha256 = FSha256;
  if (!FVelocityChange && FConfig.Has(TReportSection::MissionDetails)) {
    FVelocityChange = VelocityChangeFigure(FMission->Events, ThresholdsOf(FMission->Data).totOn);
  }
  contents.velocityChange = FVelocityChange;
  if (!std::exchange(FReadingFile, true)) FindChecksum(contents.file);
  auto pages = std::make_unique<TReportPages>(contents, FConfig);
  for (TPageView* view : {FView, FThumbnails}) view->ShowPages(pages.get());
  FPages = std::move(pages);
  ShowPageNumber();
  const QString filtered = FPages->Filtered();
  for (TElidedLabel* label : {FFiltered, FFilteredCover}) label->setVisible(!filtered.isEmpty());
  FFiltered->setText(filtered.isEmpty() ? QString() : tr("Filtered"));
  FFilteredCover->setText(filtered);
  FCards->ShowCards(FMission, FConfig.time);
  const QString total =
      tr("total intensity of the recording %1 g·ms").arg(QtText(MaskFloat("0.##", FMission->Summary.iotTotal)));
  const std::size_t events = FMission->Events.Count();
  FIntensity->setText(tr("%1 events, %2").arg(events).arg(total));
  FCardsIntensity->setText(tr("%1 cards · %2").arg(FCards->Count()).arg(total));
}

// A large file takes a while, and a dead drive never answers.
void TReportPanel::FindChecksum(const std::filesystem::path& file) {
  std::ignore = FReadFile->Start([this, file](const TBackgroundTask::TReport& report) {
    TNoProgress quiet;
    report([this, sha256 = Sha256Of(file, quiet)] {
      FSha256 = sha256;
      if (FPages == nullptr) return;
      FPages->SetSha256(sha256);
      for (TPageView* view : {FView, FThumbnails}) view->Refresh();
    });
  });
}

void TReportPanel::ShowPageNumber() {
  const int count = FView->PageCount();
  const int page = FView->CurrentPage();
  FPageNumber->setText(
      count == 0 ? QString() : tr("Page %1 of %2 · %3 %").arg(page + 1).arg(count).arg(qRound(100 * FView->Zoom())));
  FView->setAccessibleDescription(FPageNumber->text());
  FThumbnails->SetMarkedPage(count == 0 ? std::nullopt : std::optional(page));
}
