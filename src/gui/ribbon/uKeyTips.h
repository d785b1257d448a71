// Key tips of the ribbon: Alt pressed and released alone shows a letter on each tab; that letter opens the tab and
// shows letters on its buttons; such a letter is a click. Esc goes back, Alt, a mouse button or any other key ends it.
#pragma once

#include <QObject>
#include <QPointer>
#include <vector>

class QAbstractButton;
class QLabel;
class QTabBar;
class TRibbon;

class TKeyTips : public QObject {
  Q_OBJECT

 public:
  // Owned by the ribbon.
  explicit TKeyTips(TRibbon& ribbon);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct TTip {
    QChar Key;
    int Tab;  // -1: of a button
    QPointer<QAbstractButton> Button;
    QLabel* Label;
  };
  [[nodiscard]] bool RibbonInFront() const;
  [[nodiscard]] bool OnKeyRelease(int key);
  [[nodiscard]] bool OnKeyPress(int key, const QString& text);
  void ShowTabs();
  void ShowButtons();
  void Add(const QString& caption, const QPoint& centre, int tab, QAbstractButton* button);
  [[nodiscard]] QChar FreeKey(const QString& caption) const;
  void Choose(const TTip& tip);
  void Hide();

  TRibbon& FRibbon;
  QTabBar& FTabBar;
  std::vector<TTip> FTips;  // empty: none is shown
  bool FAltAlone = false;   // Alt is down and nothing happened since
};
