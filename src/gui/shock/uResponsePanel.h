// The response spectrum of the selected event: its chart, the choice of what it shows, and the progress of a
// calculation that takes long.
#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>
#include <utility>
#include <vector>

#include "shell/uResponseChoices.h"

class QComboBox;
class QProgressBar;
class QPushButton;
class TChoiceBar;
class TResponseChart;

class TResponsePanel : public QWidget {
  Q_OBJECT

 public:
  explicit TResponsePanel(QWidget* parent);

  [[nodiscard]] TResponseChart* Chart() const { return FChart; }
  // What no list offers stays as it is. The limit curve is read when the panel is first seen.
  void SetChoices(const TResponseChoices& choices);
  // For the bar above the chart, which takes it.
  [[nodiscard]] TChoiceBar* Choices() const { return FChoices; }

 signals:
  // The user chose something else.
  void ChoicesChanged(const TResponseChoices& choices);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  // Puts an entry of a list into a request.
  using TChange = std::function<void(TResponseRequest& request, std::size_t entry)>;

  void AddChoices();
  [[nodiscard]] QWidget* MakeProgress();
  void EmitChoices();
  // Asks for the file of a limit curve, or takes the limit away. A file of no use changes nothing.
  void ChangeLimit();
  void UseLimit(const std::filesystem::path& file);

  TResponseChart* FChart;
  TChoiceBar* FChoices;
  QProgressBar* FBar;
  QPushButton* FLimitButton = nullptr;
  std::vector<std::pair<QComboBox*, TChange>> FLists;
  std::filesystem::path FLimit;        // the file of the one that is drawn or waits to be read; empty: none
  std::filesystem::path FLimitFolder;  // of the last one
  bool FLimitWaits = false;
};
