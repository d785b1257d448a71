// The groups of one ribbon tab side by side. What does not fit collapses, the rightmost group first; when even the
// collapsed ones do not fit they share the width.
#pragma once

#include <QWidget>
#include <vector>

class TRibbonGroup;

class TRibbonPage : public QWidget {
  Q_OBJECT

 public:
  explicit TRibbonPage(QWidget* parent);

  TRibbonGroup* AddGroup(const QString& objectName, const QString& title);
  // Some group of the page would be seen.
  bool HasContent() const;
  // Holds the arrangement until it is let go.
  void SetFrozen(bool frozen);
  void FocusFirst();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

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
