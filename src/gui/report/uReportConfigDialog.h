// Asks what the report holds and how it is laid out. Main thread only.
#pragma once

#include <QDialog>
#include <array>

#include "base/uTimeSpan.h"
#include "shell/uReportConfig.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QSpinBox;

class TReportConfigDialog : public QDialog {
  Q_OBJECT

 public:
  // `band` is the navigator's, for the button that takes its span.
  TReportConfigDialog(const TReportConfig& config, const TTimeSpan& band, QWidget* parent);

  // As OK took it.
  [[nodiscard]] const TReportConfig& Config() const { return FConfig; }
  void FocusTime();

 private:
  QWidget* MakeSections();
  QWidget* MakePage();
  QWidget* MakeCards();
  QWidget* MakeTime(const TTimeSpan& band);
  QWidget* MakeButtons();
  void Show(const TReportConfig& config);
  void ShowTime(const TRange& time);
  // Throws std::runtime_error with what is wrong.
  [[nodiscard]] TReportConfig Typed() const;
  void MoveSection(int step);
  void Load();
  void Save();
  // Shows what `action` throws.
  template <class TAction>
  bool Try(const TAction& action);

  TReportConfig FConfig;
  TRange FTime;  // what ShowTime showed, with all its digits
  QListWidget* FSections;
  QComboBox *FPaper, *FOrientation, *FCardEvents, *FPerPage;
  QSpinBox* FWorst;
  std::array<QCheckBox*, 3> FTables{};
  QLineEdit *FFrom, *FTo;
  QLabel* FProblem;
};
