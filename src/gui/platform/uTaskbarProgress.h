// The progress on the program's icon in the desktop's task bar (uTaskbarEntry). Main thread only.
#pragma once

#include <QObject>

class TTaskbarProgress final : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool active READ IsActive)
  Q_PROPERTY(double position READ Position)
  Q_PROPERTY(double maximum READ Maximum)

 public:
  TTaskbarProgress(const QString& name, QObject* parent);
  // Takes the progress off the icon.
  ~TTaskbarProgress() override;

  void SetActive(bool active);
  // From 0 to the maximum; past its ends it stands at them.
  void SetPosition(double position);
  void SetMaximum(double maximum);
  [[nodiscard]] bool IsActive() const { return FActive; }
  [[nodiscard]] double Position() const { return FPosition; }
  [[nodiscard]] double Maximum() const { return FMaximum; }

 private:
  void Show();

  bool FActive = false;
  double FPosition = 0;
  double FMaximum = 0;
  int FShown = -1;  // percent; -1 while no progress is shown
};
