// Ctrl+C in a grid.
#pragma once

#include <QString>

class QTableView;

// Puts the titles and the selected rows on the clipboard, cells parted by tabs; of very many rows the first. Gives how
// many in words; empty, and the clipboard as it was, when no row is selected.
QString CopySelectedRows(const QTableView& grid);
