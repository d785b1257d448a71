// A group of the ribbon: buttons and small controls. In a narrow window it collapses into one button with its title,
// which opens the content in a popup. The group owns the widgets and borrows the actions. The caller may hide the group
// and each button.
#pragma once

#include <QFrame>
#include <QIcon>
#include <vector>

class QAction;
class QToolButton;
class TRibbonButton;
class TRibbonColumns;

class TRibbonGroup : public QFrame {
  Q_OBJECT

 public:
  TRibbonGroup(const QString& objectName, const QString& title, QWidget* parent);

  QToolButton* AddLarge(QAction* action, const QString& buttonName);
  QToolButton* AddSmall(QAction* action, const QString& buttonName);
  // With a label above it the widget takes a column, without one a row.
  void AddWidget(QWidget* widget, const QString& label = {});

  // The icon of the collapsed group; by default that of its first button.
  void SetIcon(const QIcon& icon);

  // Nothing in it is visible, so the group takes no room.
  bool Vacant() const;
  bool Collapsed() const { return FCollapsed; }
  void SetCollapsed(bool collapsed);
  int FullWidth() const;
  int CollapsedWidth() const;
  static int HeightFor(const QFont& font);

  void OpenPopup();
  void FocusFirst();

 signals:
  // The group or something in it was shown, hidden, added or resized.
  void ContentChanged();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void AddButton(TRibbonButton* button, QAction* action, const QString& buttonName);
  void Watch(QWidget* item);
  void LayOut();
  void UpdateHandle();
  QWidget* FirstShown() const;

  QWidget* FBody;
  TRibbonColumns* FColumns;
  QString FTitle;
  TRibbonButton* FHandle;
  QFrame* FPopup;
  QIcon FIcon;
  std::vector<QWidget*> FItems;
  bool FCollapsed = false;
};
