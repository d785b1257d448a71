// The minimum and the maximum of every quantity that has alarm limits, and the limit profile in force with what it
// allows beyond each. It opens below a button of the ribbon; Esc or a click beside it closes it. When it refuses what
// was typed, it says why until something valid is typed.
#pragma once

#include <QFrame>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "analysis/uLimitProfile.h"
#include "model/uQuantities.h"

class QGridLayout;
class QLabel;
class QLineEdit;
class TLimitProfileBar;

class TAlarmLimitsPanel : public QFrame {
  Q_OBJECT

 public:
  explicit TAlarmLimitsPanel(QWidget* parent);
  // Below `button`, wholly on its screen.
  void OpenBelow(const QWidget& button);
  // The names stand beside the inputs; an empty one leaves the input alone.
  void ShowAnalogNames(std::span<const std::string, kAnalogInputs.size()> names);
  // What the profile in force allows; nothing hides these inputs.
  void ShowAllowances(const std::optional<TLimitProfile>& profile);
  // Shows below one of its inputs why what was typed there is refused; an empty text hides the last problem.
  void ShowProblem(const QString& problem, const QWidget& edit);
  [[nodiscard]] TLimitProfileBar& Profiles() const { return *FProfiles; }

 signals:
  void AboutToOpen();
  void Closed();
  // What is allowed beyond a limit was typed.
  void AllowanceTyped(TQuantity quantity, bool isMax, const QLineEdit& edit);
  // For the status bar: a click beside the panel enters what is typed and closes the panel with its own message. Empty
  // when what was typed is valid.
  void LimitRefused(const QString& why);

 protected:
  bool event(QEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  struct TAllowance {
    TQuantity quantity;
    bool isMax;
    QLineEdit* edit;
  };
  void AddAllowance(QGridLayout& grid, int line, std::size_t quantity, bool isMax);
  // As large as its contents, and wholly on the screen.
  void FitOnScreen();

  TLimitProfileBar* FProfiles;
  std::vector<QLabel*> FLabels;  // by TQuantity
  std::vector<TAllowance> FAllowances;
  std::vector<QLabel*> FAllowanceTitles;
  QLabel* FProblem;
};
