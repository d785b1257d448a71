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
class TBackgroundTask;
class QLabel;
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
  // Frames its card.
  void SetSelectedEvent(std::optional<std::size_t> event);
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
  void FindChecksum(const std::filesystem::path& file);

  TSource FSource;
  const TShownMission* FMission = nullptr;
  TReportConfig FConfig;
  bool FStale = false;
  std::unique_ptr<TReportPages> FPages;
  TBackgroundTask* FReadFile;   // for the checksum
  std::filesystem::path FFile;  // the recording
  bool FReadingFile = false;
  std::string FSha256;                                    // empty until it is known
  std::optional<std::optional<TFigure>> FVelocityChange;  // as in TReportContents
  TPageView* FThumbnails;
  TPageView* FView;
  TEventCardList* FCards;
  QLabel* FPageNumber;
  TElidedLabel* FFiltered;       // in the bar
  TElidedLabel* FFilteredCover;  // above the pages, as the cover says it
  TElidedLabel *FIntensity, *FCardsIntensity;
};
