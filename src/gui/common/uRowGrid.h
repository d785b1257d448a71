// What all grids share: rows of one height that are selected as wholes, and "Copy" by Ctrl+C and in the menu that a
// right click, the menu key and Shift+F10 open.
#pragma once

#include <QTableView>

class QMenu;

class TRowGrid : public QTableView {
  Q_OBJECT

 public:
  // `name` is the object's, `title` what screen readers say.
  TRowGrid(const QString& name, const QString& title, QWidget* parent);

  // The grid's menu has the actions that this one has, too.
  void SetMenu(const QMenu* menu);

 Q_SIGNALS:
  // How many, in words.
  void RowsCopied(const QString& text);

 protected:
  // The font of the cells; it decides the height of the rows.
  void SetRowFont(const QFont& cells);
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void Copy();
  [[nodiscard]] QPoint MenuPlace() const;

  QAction* FCopy;
  QMenu* FMenu;
};
