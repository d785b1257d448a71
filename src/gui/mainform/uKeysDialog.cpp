#include "gui/mainform/uKeysDialog.h"

#include <QAction>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <numeric>
#include <vector>

#include "gui/common/uBoxes.h"
#include "gui/common/uLabels.h"
#include "gui/mainform/uCommandTable.h"

namespace {

constexpr std::size_t kMaxColumns = 3;
constexpr int kColumnSpace = 24;  // px
constexpr int kRowSpace = 2;

struct TKey {
  QString keys;
  QString what;
  bool works = true;
};

struct TSection {
  QString title;
  std::vector<TKey> keys;
};

// A section as it is shown: its title and the two labels of each key.
struct TShownSection {
  QWidget* box;
  std::vector<std::array<QLabel*, 2>> rows;
};

QString PlainText(QString caption) {
  return caption.remove('&').remove("…");
}

// The views that show the action's group; all for an action without one.
unsigned ViewsOf(const QAction& action) {
  const auto row =
      std::ranges::find_if(Commands(), [&](const TCommand& command) { return action.objectName() == command.action; });
  if (row == Commands().end() || row->group == nullptr) return kAllViews;
  const std::string_view name = row->group;
  const auto group = std::ranges::find(Groups(), name, [](const TGroup& each) { return std::string_view(each.name); });
  return group->views == 0 ? kAllViews : group->views;
}

std::vector<TSection> AllKeys(const QWidget& window) {
  struct TViews {
    unsigned views;
    const char* title;
  };
  constexpr TViews kSections[] = {{kAllViews, "Everywhere"},
                                  {kOfEventViews, "Everywhere but in the report"},
                                  {BitOf(TView::Overview) | BitOf(TView::Shock), "Overview and shock events"},
                                  {BitOf(TView::Shock), "Shock events"},
                                  {BitOf(TView::Overview), "Overview"},
                                  {BitOf(TView::Report), "Report"}};
  std::vector<TSection> sections;
  for (const auto& [views, title] : kSections) {
    TSection section{QObject::tr(title), {}};
    for (const QAction* action : window.actions()) {
      if (action->shortcut().isEmpty() || ViewsOf(*action) != views) continue;
      section.keys.push_back({action->shortcut().toString(QKeySequence::NativeText), PlainText(action->text()),
                              action->isEnabled() && action->isVisible()});
    }
    sections.push_back(std::move(section));
  }
  sections.front().keys.push_back({"Alt", QObject::tr("Letters on the ribbon")});
  sections.push_back({QObject::tr("In a chart"),
                      {{"F", QObject::tr("Everything in sight")},
                       {"+  −", QObject::tr("Zoom in and out")},
                       {QObject::tr("Arrows"), QObject::tr("Move")},
                       {"Alt+Left  Alt+Right", QObject::tr("Zoom back and forward")},
                       {"Home  End", QObject::tr("Begin and end of the recording")},
                       {"C", QObject::tr("Cursor A, then B, then none")},
                       {"R", QObject::tr("Statistics of the visible range")},
                       {"Esc", QObject::tr("Cancel a drag, drop the cursors")},
                       {"Menu  Shift+F10", QObject::tr("Menu of the chart")}}});
  sections.push_back({QObject::tr("In a table"),
                      {{"Enter", QObject::tr("Bring the navigator's band to the row")},
                       {"Ctrl+C", QObject::tr("Copy the selected rows")},
                       {"Menu  Shift+F10", QObject::tr("Menu with copy and export")}}});
  sections.push_back({QObject::tr("In the report"),
                      {{"PgUp  PgDown", QObject::tr("Turn pages")},
                       {"+  −", QObject::tr("Zoom in and out")},
                       {"W  F", QObject::tr("Fit the width, the page")},
                       {"Enter", QObject::tr("Open a card's event in the shock view")}}});
  std::erase_if(sections, [](const TSection& section) { return section.keys.empty(); });
  return sections;
}

QLabel* MakeLabel(const QString& text, const TKey& key, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setTextFormat(Qt::PlainText);
  label->setEnabled(key.works);
  return label;
}

TShownSection MakeSection(const TSection& section, QWidget* parent) {
  auto* box = new QWidget(parent);
  auto* grid = new QGridLayout(box);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setVerticalSpacing(kRowSpace);
  grid->setColumnStretch(1, 1);
  grid->addWidget(MakeTitle(section.title, box), 0, 0, 1, 2);
  TShownSection shown{box, {}};
  for (const TKey& key : section.keys) {
    auto* keys = Named(MakeLabel(key.keys, key, box), "lblKeys");
    auto* what = MakeLabel(key.what, key, box);
    const int line = grid->rowCount();
    grid->addWidget(keys, line, 0);
    grid->addWidget(what, line, 1);
    shown.rows.push_back({keys, what});
  }
  return shown;
}

// Sections in their order, in columns of about the same number of lines.
std::vector<TShownSection> Arrange(const std::vector<TSection>& sections, std::size_t count, QWidget* page) {
  const auto lines = [](const TSection& section) { return section.keys.size() + 2; };
  const std::size_t all = std::transform_reduce(sections.begin(), sections.end(), std::size_t{0}, std::plus<>(), lines);
  auto* columns = new QHBoxLayout(page);
  columns->setSpacing(kColumnSpace);
  std::vector<TShownSection> shown;
  QVBoxLayout* column = nullptr;
  std::size_t done = 0;
  for (const TSection& section : sections) {
    const auto wanted = static_cast<int>((done + lines(section) / 2) * count / all);
    while (columns->count() <= wanted) columns->addLayout(column = new QVBoxLayout);
    column->setSpacing(kColumnSpace / 2);
    column->addWidget(shown.emplace_back(MakeSection(section, page)).box);
    done += lines(section);
  }
  for (int i = 0; i < columns->count(); ++i) static_cast<QVBoxLayout*>(columns->itemAt(i)->layout())->addStretch();
  return shown;
}

// Shows the keys whose text has every word.
void Search(const std::vector<TShownSection>& sections, const QString& typed) {
  const QStringList words = typed.split(' ', Qt::SkipEmptyParts);
  for (const TShownSection& section : sections) {
    bool any = false;
    for (const auto& [keys, what] : section.rows) {
      const QString text = keys->text() + ' ' + what->text();
      const bool found =
          std::ranges::all_of(words, [&text](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
      keys->setVisible(found);
      what->setVisible(found);
      any = any || found;
    }
    section.box->setVisible(any);
  }
}

}  // namespace

void ShowKeys(QWidget& window) {
  QDialog dialog(&window);
  dialog.setObjectName("dlgKeys");
  dialog.setWindowTitle(QObject::tr("All keys"));
  auto* search = Named(new QLineEdit(&dialog), "edtKeysSearch", QObject::tr("Search keys and what they do"));
  search->setPlaceholderText(search->accessibleName());
  search->setClearButtonEnabled(true);
  const QSize chrome(2 * kColumnSpace, 4 * search->sizeHint().height());
  const QSize room = window.screen()->availableSize() * 19 / 20;
  std::unique_ptr<QWidget> page;
  std::vector<TShownSection> sections;
  for (std::size_t columns = kMaxColumns; columns > 0; --columns) {
    page = std::make_unique<QWidget>();
    sections = Arrange(AllKeys(window), columns, page.get());
    if (page->sizeHint().width() + chrome.width() <= room.width()) break;
  }
  // All keys without scrolling where the screen has room for them.
  dialog.resize((page->sizeHint() + chrome).boundedTo(room));
  auto* area = new QScrollArea(&dialog);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  QObject::connect(search, &QLineEdit::textChanged, page.get(),
                   [&sections](const QString& typed) { Search(sections, typed); });
  auto* grey = new QLabel(QObject::tr("Grey: does nothing now; it needs another view, or a recording with such data."));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  buttons->button(QDialogButtonBox::Close)->setDefault(true);
  MakeColumn(&dialog, {search, {area, 1}, MakeRow(nullptr, {{grey, 1}, buttons})});
  area->setWidget(page.release());
  dialog.exec();
}
