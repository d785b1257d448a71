// Shown in front of the window while a recording is read or exported: what is going on, how far it is, and Cancel. It
// stays in the middle of its parent and takes all input of the window; only the window can be closed. It only asks to
// cancel; who is at work hides the panel at the end.
#pragma once

#include <QFrame>
#include <QPointer>

class QLabel;
class QProgressBar;
class QPushButton;

class TLoadingPanel : public QFrame {
  Q_OBJECT

 public:
  // Hidden until show().
  explicit TLoadingPanel(QWidget* parent);

  void SetMessage(const QString& message);
  // The file or folder and how far it is; cut in the middle where it is too long, the whole in the tool tip.
  void SetDetail(const QString& detail);
  // With 0 steps the bar says only that something goes on.
  void SetSteps(int steps);
  void SetStep(int step);

 signals:
  void Cancelled();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  [[nodiscard]] bool IsForOthers(const QObject& watched, const QEvent& event) const;
  void Centre();
  void ElideDetail();

  QLabel* FMessage;
  QLabel* FDetail;
  QProgressBar* FProgress;
  QPushButton* FCancel;
  QString FDetailText;
  QPointer<QWidget> FFocusBefore;
};
