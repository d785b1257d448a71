// A button of the ribbon: large (icon over one or two lines of text) or small (icon beside the text). Name, tool tip
// and look follow its action.
#pragma once

#include <QToolButton>

class TRibbonButton : public QToolButton {
  Q_OBJECT

 public:
  enum class TShape { Large, Small };

  TRibbonButton(TShape shape, QWidget* parent);

  // A button without an action of its own; an arrow under its caption says that it opens something.
  void SetCaption(const QString& caption, const QIcon& icon);

 signals:
  // Before the action runs, so that what holds the button can get out of the way of a dialog.
  void Chosen();

 protected:
  void actionEvent(QActionEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void nextCheckState() override;

 private:
  void FollowAction();
  void UpdateText();

  TShape FShape;
  QString FCaption;
};
