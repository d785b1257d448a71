// The report view: thumbnails, a live preview of the pages as they will be printed, and the event cards. Pages are laid
// out when the view is seen. Main thread only.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "gui/report/uReportPages.h"
#include "shell/uReportConfig.h"

class QFrame;
class QLabel;
class QSplitter;
class TElidedLabel;
class TEventCardList;
class TPageView;

class TReportPanel : public QWidget {
  Q_OBJECT

 public:
  // What the report of the shown mission is made of.
  using TSource = std::function<TReportContents(const TShownMission&)>;

  explicit TReportPanel(QWidget* parent);
  ~TReportPanel() override;

  void SetSource(TSource source) { FSource = std::move(source); }
  // Call when the mission, its filter or its settings changed. Borrows the mission until Clear.
  void ShowReport(const TShownMission& mission);
  void Clear();

  void SetConfig(const TReportConfig& config);
  [[nodiscard]] const TReportConfig& Config() const { return FConfig; }
  [[nodiscard]] TEventCardList* Cards() const { return FCards; }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* MakeBar(QWidget* parent);
  QFrame* MakeCards(QWidget* parent);
  void LayOutSoon();
  void LayOut();
  void ShowPageNumber();

  TSource FSource;
  const TShownMission* FMission = nullptr;
  TReportConfig FConfig;
  bool FStale = false;
  std::unique_ptr<TReportPages> FPages;
  TPageView* FThumbnails;
  TPageView* FView;
  TEventCardList* FCards;
  QLabel* FPageNumber;
  TElidedLabel* FFiltered;       // in the bar
  TElidedLabel* FFilteredCover;  // above the pages, as the cover says it
  QLabel *FIntensity, *FCardsIntensity;
};
