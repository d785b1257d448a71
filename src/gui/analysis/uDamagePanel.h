// The damage boundary: all visible events by velocity change and peak, the limits of a product, and a list of the
// events beyond its boundary. Main thread only.
#pragma once

#include <QWidget>
#include <array>
#include <optional>

#include "analysis/uDamageBoundary.h"
#include "analysis/uDataset.h"

class QLabel;
class QLineEdit;
class TDamageChart;
class TGrid;
struct TShownMission;

class TDamagePanel : public QWidget {
  Q_OBJECT

 public:
  explicit TDamagePanel(QWidget* parent);

  [[nodiscard]] TDamageChart* Chart() const { return FChart; }
  [[nodiscard]] TGrid* Damaging() const { return FDamaging; }
  // The mission, its analysis or what its filter lets through changed; borrowed until the next call, null: no file.
  void ShowMission(const TShownMission* mission);
  void SetSelectedEvent(std::optional<std::size_t> event);

 signals:
  // The user finished both limits.
  void LimitsTyped(const TFragility& limits);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  [[nodiscard]] QWidget* MakeLimits();
  [[nodiscard]] QWidget* MakeList();
  void ReadLimits();
  // Those of the profile in force, if it has them.
  void TakeProfile();
  // Leaves it until the panel is in sight.
  void Fill();
  void FillList();
  void ShowCount(std::size_t beyond, std::size_t both);
  void Sort(const QString& field);

  const TShownMission* FMission = nullptr;
  bool FIsStale = false;
  std::optional<TFragility> FLimits;
  std::optional<TFragility> FTaken;  // what the profile had last; what the user clears stays clear
  std::size_t FWithoutPulse = 0;
  TDataset FBeyond;  // a companion of the analysis table
  std::array<QLineEdit*, 2> FEdits{};
  QLabel* FCount;
  QLabel* FProblem;
  TDamageChart* FChart;
  TGrid* FDamaging;
};
