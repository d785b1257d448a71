// A dock panel that folds to its title. Above or below the views its title stands at its left, where it costs no
// height. The title is drawn here, because Qt's own has no button that folds and is not written upright.
#pragma once

#include <QDockWidget>

class QBoxLayout;
class QToolButton;

enum class TFold {
  Open,
  Flat,     // the title above nothing
  Upright,  // the title alone, written downwards: all panels of a column are folded
  Tab       // nothing but its tab, which stands upright in such a column
};

// The title of a panel: its words and the buttons that fold, float and close it. Drags it, too.
class TPanelTitle : public QWidget {
  Q_OBJECT

 public:
  explicit TPanelTitle(QDockWidget& panel);
  // Beside: an open panel has it at its left.
  void SetFold(TFold fold, bool beside);
  // Extent across the direction in which it is written, in px.
  [[nodiscard]] int Thickness() const;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 Q_SIGNALS:
  void FoldClicked();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QToolButton* MakeButton(const char* icon, const QString& text, const QString& name);

  QDockWidget& FPanel;
  QBoxLayout* FLayout;
  QToolButton* FFoldButton;
  QToolButton* FFloat;
  QToolButton* FClose;
  TFold FFold = TFold::Open;
  bool FUpright = false;
};

class TFoldingPanel : public QDockWidget {
  Q_OBJECT

 public:
  // The size is that of its first unfolding, if it is folded from the start.
  TFoldingPanel(const QString& name, const QString& title, QWidget* content, const QSize& size, QWidget* window);

  [[nodiscard]] TFold Fold() const { return FFold; }
  // Shows or hides the content; the panel itself stays visible.
  void SetFold(TFold fold);
  // Keeps the size that an open panel has now, for when it is folded and opened again.
  void KeepOpenSize();
  // What it has when it is unfolded.
  [[nodiscard]] QSize OpenSize() const { return FOpenSize; }

 Q_SIGNALS:
  // The user wants it folded or open.
  void FoldAsked(bool folded);

 protected:
  bool event(QEvent* event) override;

 private:
  void UpdateTitle();

  TPanelTitle* FTitle;
  QWidget* FContent;
  bool FRetains;  // the open content keeps its room while it is hidden
  TFold FFold = TFold::Open;
  bool FBesideViews = true;  // not above or below them
  QSize FOpenSize;
  bool FOpenedByClick = false;  // a second click belongs to the first
};
