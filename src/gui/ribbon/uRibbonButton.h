// A button of the ribbon: large (icon over one or two lines of text) or small (icon beside the text). It follows its
// action.
#pragma once

#include <QToolButton>

class TRibbonButton : public QToolButton {
  Q_OBJECT

 public:
  enum class TShape { Large, Small };

  TRibbonButton(TShape shape, QWidget* parent);

  TShape Shape() const { return FShape; }

  // For a button without an action; it shows an arrow because it opens something.
  void SetCaption(const QString& caption, const QIcon& icon);

 signals:
  // Before the action runs, so that a popup can close before a dialog opens.
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
