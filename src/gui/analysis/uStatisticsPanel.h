// Statistics of all visible events: by day, hour and direction, and of one quantity its histogram and how often its
// values are exceeded; beside those of all events of the reference. Main thread only.
#pragma once

#include <QWidget>
#include <optional>
#include <vector>

class QComboBox;
class QLabel;
class TAnalysisChart;
class TCountChart;
class TExceedanceChart;
struct TReference;
struct TShownMission;

class TStatisticsPanel : public QWidget {
  Q_OBJECT

 public:
  explicit TStatisticsPanel(QWidget* parent);

  // The one that the user was last in, at first the first.
  [[nodiscard]] TAnalysisChart* CurrentChart() const { return FCurrent; }
  // The mission, its analysis, its date format, the reference or what its filter lets through changed; borrowed until
  // the next call, null: no file.
  void ShowMission(const TShownMission* mission);

 protected:
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Leaves it until the panel is in sight.
  void Fill();
  void FillTimes();
  void FillDirections();
  void FillQuantity();
  void ShowCount(std::optional<std::size_t> pulses);
  [[nodiscard]] QString ReferenceWords(bool isAny) const;

  const TShownMission* FMission = nullptr;
  const TReference* FReference = nullptr;  // what is compared with
  bool FIsStale = false;
  std::vector<std::uint32_t> FEvents;  // the visible ones
  QLabel* FCount;
  TCountChart* FDays;
  TCountChart* FHours;
  TCountChart* FDirections;
  TCountChart* FHistogram;
  TExceedanceChart* FExceedance;
  QComboBox* FQuantity;
  TAnalysisChart* FCurrent;
};
