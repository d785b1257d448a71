// The base of all grids: whole rows of equal height are selected; "Copy" is on Ctrl+C and in the menu that a right
// click, the menu key and Shift+F10 open.
#pragma once

#include <QTableView>

class QMenu;

// Copies the titles and the selected rows to the clipboard, with tabs between cells; only the first of very many rows.
// Returns a text such as "3 rows copied"; empty, with the clipboard unchanged, when no row is selected.
QString CopySelectedRows(const QTableView& grid);

class TRowGrid : public QTableView {
  Q_OBJECT

 public:
  // `name` is the object's, `title` what screen readers say.
  TRowGrid(const QString& name, const QString& title, QWidget* parent);

  // Adds actions to the grid's own menu, behind a separator.
  void AddToMenu(const QList<QAction*>& actions);
  // The same with those of a menu of exports.
  void SetMenu(const QMenu* menu);

 Q_SIGNALS:
  // `text` is what CopySelectedRows returned.
  void RowsCopied(const QString& text);

 protected:
  // Sets the font of the cells and, from it, the height of the rows.
  void SetRowFont(const QFont& cells);
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void Copy();
  [[nodiscard]] QPoint MenuPlace() const;

  QAction* FCopy;
  QMenu* FMenu;
};
