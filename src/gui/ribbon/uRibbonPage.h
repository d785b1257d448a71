// The groups of one ribbon tab side by side. Groups that do not fit collapse, the last first; if the collapsed ones do
// not fit either, they share the width.
#pragma once

#include <QWidget>
#include <vector>

class TRibbonGroup;

class TRibbonPage : public QWidget {
  Q_OBJECT

 public:
  explicit TRibbonPage(QWidget* parent);

  TRibbonGroup* AddGroup(const QString& objectName, const QString& title);
  // At least one group has visible content.
  bool HasContent() const;
  // A frozen page does not arrange its groups.
  void SetFrozen(bool frozen);
  void FocusFirst();

 signals:
  void ContentChanged();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void Arrange();
  void ArrangeSoon();
  std::vector<TRibbonGroup*> Shown() const;

  std::vector<TRibbonGroup*> FGroups;
  bool FFrozen = false;
  bool FArranging = false;
};
