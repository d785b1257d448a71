// A group of the ribbon. In a narrow window it collapses into one button with its title, which opens the content in a
// popup. The group owns its buttons and borrows the actions. The caller may hide the group and each button.
#pragma once

#include <QFrame>
#include <vector>

class QAction;
class QGridLayout;
class TRibbonButton;

class TRibbonGroup : public QFrame {
  Q_OBJECT

 public:
  TRibbonGroup(const QString& objectName, const QString& title, QWidget* parent);

  // A large button takes a column, three small ones share one.
  void AddLarge(QAction* action, const QString& buttonName);
  void AddSmall(QAction* action, const QString& buttonName);

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
  void Add(TRibbonButton* button, QAction* action, const QString& buttonName);
  void Arrange();
  void LayOut();
  void UpdateHandle();
  TRibbonButton* FirstShown() const;

  QWidget* FBody;
  QGridLayout* FGrid;
  QString FTitle;
  TRibbonButton* FHandle;
  QFrame* FPopup;
  std::vector<TRibbonButton*> FButtons;
  bool FCollapsed = false;
};
