#include "gui/mainform/uKeysDialog.h"

#include <QAction>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr int kBesideColumns = 60;  // px, of the scroll bar and margins

using TKey = std::pair<QString, QString>;  // the keys and what they do

QString PlainText(QString caption) {
  return caption.remove('&').remove("…");
}

std::vector<TKey> AllKeys(const QWidget& window) {
  std::vector<TKey> keys;
  for (const QAction* action : window.actions()) {
    if (!action->shortcut().isEmpty()) {
      keys.emplace_back(action->shortcut().toString(QKeySequence::NativeText), PlainText(action->text()));
    }
  }
  for (const auto& [key, what] : {std::pair{"F", "Chart: everything in sight"},
                                  {"+  −", "Chart: zoom in and out"},
                                  {"Arrows", "Chart: move"},
                                  {"Alt+Left  Alt+Right", "Chart: zoom back and forward"},
                                  {"Home  End", "Chart: begin and end of the recording"},
                                  {"C", "Chart: set cursor A, then B, then take both away"},
                                  {"R", "Chart: statistics of the visible range"},
                                  {"Esc", "Chart: cancel a drag, let go of cursors and indicator"},
                                  {"Menu  Shift+F10", "Chart: its menu"},
                                  {"Enter", "Grid: bring the navigator's band to the row"},
                                  {"Ctrl+C", "Grid: copy the selected rows with their titles"},
                                  {"Menu  Shift+F10", "Grid: its menu, with copy and export"}}) {
    keys.emplace_back(QObject::tr(key), QObject::tr(what));
  }
  return keys;
}

}  // namespace

void ShowKeys(QWidget& window) {
  QDialog dialog(&window);
  dialog.setObjectName("dlgKeys");
  dialog.setWindowTitle(QObject::tr("All keys"));
  const std::vector<TKey> keys = AllKeys(window);
  auto* table = new QTableWidget(static_cast<int>(keys.size()), 2, &dialog);
  table->setObjectName("tblKeys");
  table->setAccessibleName(dialog.windowTitle());
  table->setHorizontalHeaderLabels({QObject::tr("Keys"), QObject::tr("What they do")});
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setTabKeyNavigation(false);
  table->verticalHeader()->hide();
  table->setShowGrid(false);
  for (int row = 0; row < table->rowCount(); ++row) {
    const auto& [key, what] = keys[static_cast<std::size_t>(row)];
    table->setItem(row, 0, new QTableWidgetItem(key));
    table->setItem(row, 1, new QTableWidgetItem(what));
  }
  table->resizeColumnsToContents();
  const int width = table->columnWidth(0) + table->columnWidth(1);
  table->horizontalHeader()->setStretchLastSection(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  buttons->button(QDialogButtonBox::Close)->setDefault(true);
  auto* layout = new QVBoxLayout(&dialog);
  layout->addWidget(table);
  layout->addWidget(buttons);
  dialog.resize(std::max(420, width + kBesideColumns), 460);
  dialog.exec();
}
