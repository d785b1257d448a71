// A group of the ribbon: buttons and small controls over a title. Where the window is too narrow it collapses into
// one button that opens the same content in a popup below. The group owns what is added; actions are
// borrowed. It may be shown and hidden from outside, and so may each button.
#pragma once

#include <QFrame>
#include <QIcon>
#include <vector>

class QAction;
class QLabel;
class QToolButton;
class TRibbonButton;
class TRibbonColumns;

class TRibbonGroup : public QFrame {
  Q_OBJECT

 public:
  TRibbonGroup(const QString& objectName, const QString& title, QWidget* parent);

  QToolButton* AddLarge(QAction* action, const QString& buttonName);
  QToolButton* AddSmall(QAction* action, const QString& buttonName);
  // With a label the widget takes a column, the label above it; without one it takes a row.
  void AddWidget(QWidget* widget, const QString& label = {});

  // What the group is known by when it is collapsed; the icon of its first button unless told otherwise.
  void SetIcon(const QIcon& icon);

  // Not one thing in it is shown: the group takes no room.
  bool Vacant() const;
  bool Collapsed() const { return FCollapsed; }
  void SetCollapsed(bool collapsed);
  int FullWidth() const;
  int CollapsedWidth() const;
  static int HeightFor(const QFont& font);

  void OpenPopup();
  void FocusFirst();

 signals:
  // Something in the group, or the group itself, was shown, hidden, added or changed its size.
  void ContentChanged();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void AddButton(TRibbonButton* button, QAction* action, const QString& buttonName);
  void Watch(QWidget* item);
  void TakeFont();
  void LayOut();
  void UpdateHandle();
  QWidget* FirstShown() const;

  QWidget* FBody;
  TRibbonColumns* FColumns;
  QLabel* FTitle;
  TRibbonButton* FHandle;
  QFrame* FPopup;
  QIcon FIcon;
  std::vector<QWidget*> FItems;
  bool FCollapsed = false;
};
