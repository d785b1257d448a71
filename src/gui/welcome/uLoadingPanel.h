// Shown over the window while a recording is read or exported: message, progress and Cancel. It is centred in its
// parent, veils the rest of it and blocks all other input except closing the window. It only emits Cancelled; the
// caller hides it.
#pragma once

#include <QFrame>
#include <QPointer>
#include <QString>
#include <optional>

class QLabel;
class TElidedLabel;
class QProgressBar;
class QPushButton;

class TLoadingPanel : public QFrame {
  Q_OBJECT

 public:
  // Hidden until show().
  explicit TLoadingPanel(QWidget* parent);

  // Shown when the panel is shown, or the window next processes events: laying a text out takes long, and a load has
  // thousands.
  void SetMessage(const QString& message);
  // The file or folder and how far it is; cut in the middle where it is too long, the whole in the tool tip.
  void SetDetail(const QString& detail);
  // Step 0 shows a busy bar without progress, as while a file is read.
  void SetSteps(int steps);
  void SetStep(int step);
  // Leaves the focus where Qt puts it when the panel hides, or next hides, instead of giving it back.
  void ForgetFocus();

 signals:
  void Cancelled();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  [[nodiscard]] bool IsForOthers(const QObject& watched, const QEvent& event) const;
  void ShowMessage();
  void Centre();

  QWidget* FVeil;  // the parent's, behind the panel
  int FSteps = 0;
  QLabel* FMessage;
  std::optional<QString> FNextMessage;
  TElidedLabel* FDetail;
  QProgressBar* FProgress;
  QPushButton* FCancel;
  QPointer<QWidget> FFocusBefore;
  bool FForgets = false;  // the next time, too
};
