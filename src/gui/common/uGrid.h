// A view of one table. A click on a title sorts, a click on a row selects. The grid changes neither the table nor the
// selection itself: it emits what the user did.
#pragma once

#include <QHash>
#include <QSet>
#include <functional>
#include <optional>
#include <string_view>

#include "gui/common/DatasetTableModel.h"
#include "gui/common/uRowGrid.h"

class TGrid : public TRowGrid {
  Q_OBJECT

 public:
  // The index key for a field key; nothing for a column that does not sort. Without the function no column sorts.
  using TIndexKeyOf = std::function<std::optional<std::string_view>(std::string_view)>;

  // `name` is the object's, `title` what screen readers say.
  TGrid(const QString& name, const QString& title, TIndexKeyOf indexKeyOf, QWidget* parent);

  void SetDataset(const TDataset* table);
  // The text shown instead of rows while a table has none.
  void SetPlaceholder(const QString& words) { FPlaceholder = words; }
  // How values are shown; borrowed. Refresh after a change of it.
  void SetDisplay(const TDisplaySettings* display) { FModel->SetDisplay(display); }
  // Texts by "ID" for a last column; see DatasetTableModel.
  void SetNotes(const std::map<std::size_t, std::string>* notes);
  // The table's order, or which of its rows it shows, changed: redraws what is visible and moves the sort mark; the
  // scroll position stays.
  void Refresh();
  // The table shows other rows: the row of this "ID" becomes current; the scroll position stays unless the current row
  // was visible.
  void RefreshRows(std::optional<std::size_t> id);
  // Formats or labels changed: columns that the user has not resized grow to fit.
  void Reformat();
  // Makes the row of this "ID" current and scrolls to it; nullopt clears the current row. Emits neither TitleClicked
  // nor RowChosen.
  void SetCurrentId(std::optional<std::size_t> id);

 Q_SIGNALS:
  void TitleClicked(const QString& fieldKey);
  // The user moved to a row, by its "ID".
  void RowChosen(std::size_t id);
  void RowHovered(std::optional<std::size_t> id);
  // A double-click on a row, or Enter.
  void RowOpened(std::size_t id);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  [[nodiscard]] int NeededWidth(int column) const;
  // The rows or columns change, and no row is chosen by that.
  void Change(const std::function<void()>& change);
  void ScrollToRow(const QModelIndex& cell);
  void FitColumnsOnce();
  void MarkSortedColumn();
  void Hover(int row);
  void Open(const QModelIndex& cell);
  void HoverAnew();

  DatasetTableModel* FModel;
  TIndexKeyOf FIndexKeyOf;
  QString FPlaceholder;
  QString FClickedField;
  QHash<QString, int> FFitted;  // the widths of columns, by field
  QSet<QString> FSizedByUser;   // fields
  bool FFitting = false;
  int FHovered = -1;
  bool FSetting = false;   // the program moves the current row
  bool FChoosing = false;  // the user is moving the current row
};
