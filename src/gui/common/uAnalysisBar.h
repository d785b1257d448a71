// A line above what needs the shock analysis: how far its computation is, with Cancel; after a Cancel a button that
// computes it. Hidden when the analysis is there. Main thread only.
#pragma once

#include <QFrame>
#include <cstddef>

class QLabel;
class QProgressBar;
class QPushButton;

class TAnalysisBar : public QFrame {
  Q_OBJECT

 public:
  TAnalysisBar(const QString& name, QWidget* parent);

  // Nobody asked for the analysis yet; the bar asks when it comes in sight.
  void ShowIdle();
  void ShowRunning(std::size_t done, std::size_t all);
  void ShowCancelled();
  // The analysis is there, or no recording is shown.
  void ShowNothing();

 signals:
  // In sight without an analysis, or the button was pressed.
  void Wanted();
  void Cancelled();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  enum class TState { Nothing, Idle, Running, Cancelled };
  void Show(TState state, const QString& text, const QString& button);

  QLabel* FText;
  QProgressBar* FProgress;
  QPushButton* FButton;
  TState FState = TState::Nothing;
};
