#include "gui/mainform/uDockText.h"

#include <QDockWidget>
#include <QLayout>
#include <QMap>
#include <QRegularExpression>
#include <QStatusBar>
#include <QTabBar>
#include <algorithm>
#include <optional>
#include <stdexcept>
#include <utility>

namespace {

constexpr auto kSpace = "Space";
constexpr qsizetype kMaxLine = 1000;  // characters of a line
constexpr int kMaxDockPixels = 32767;

constexpr std::pair<const char*, Qt::DockWidgetArea> kAreas[] = {{"left", Qt::LeftDockWidgetArea},
                                                                 {"right", Qt::RightDockWidgetArea},
                                                                 {"top", Qt::TopDockWidgetArea},
                                                                 {"bottom", Qt::BottomDockWidgetArea}};
constexpr auto kBelow = "below ";
constexpr auto kRightOf = "right of ";
constexpr auto kTabbedWith = "tabbed with ";

// What a line says of its panel.
struct TPanelWords {
  QString name;
  QString place;   // an area, or a relation
  QString target;  // the panel of the relation
  QSize size;      // with the tabs; invalid: not said
  std::optional<bool> isOpen;
  bool isInFront = false;
  QRect floating;  // invalid: docked
};

// One panel, or those of one tab bar in its order.
struct TPanelGroup {
  QStringList panels;
  QRect rect;  // with the tabs
};

QSize SizeOf(const QString& text) {
  static const QRegularExpression kSize("^([1-9]\\d{0,4})x([1-9]\\d{0,4})$");
  const auto match = kSize.match(text);
  const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
  return match.hasMatch() && std::max(size.width(), size.height()) <= kMaxDockPixels ? size : QSize();
}

QRect FloatingOf(const QString& text) {
  static const QRegularExpression kFloating("^floating (\\w+)([+-]\\d{1,5})([+-]\\d{1,5})$");
  const auto match = kFloating.match(text);
  const QSize size = SizeOf(match.captured(1));
  return size.isValid() ? QRect(QPoint(match.captured(2).toInt(), match.captured(3).toInt()), size) : QRect();
}

QString TextOf(QSize size) {
  return QString("%1x%2").arg(size.width()).arg(size.height());
}

QString TextOf(const TPanelWords& words) {
  QStringList texts = {words.place + words.target, TextOf(words.size), words.isOpen.value_or(true) ? "open" : "closed"};
  if (words.isInFront) texts << "in front";
  const QRect& at = words.floating;
  if (at.isValid()) texts << "floating " + TextOf(at.size()) + QString::asprintf("%+d%+d", at.x(), at.y());
  return texts.join(", ");
}

// Puts what the text says in place of what the words said.
void Read(const QString& text, const QStringList& panels, TPanelWords& words) {
  words.floating = QRect();
  words.isInFront = false;
  for (const QString& part : text.left(kMaxLine).split(',')) {
    const QString said = part.simplified();
    if (said == "open" || said == "closed") words.isOpen = said == "open";
    if (said == "in front") words.isInFront = true;
    if (const QSize size = SizeOf(said); size.isValid()) words.size = size;
    if (const QRect floating = FloatingOf(said); floating.isValid()) words.floating = floating;
    for (const auto& area : kAreas) {
      if (said == area.first) std::tie(words.place, words.target) = std::pair(said, QString());
    }
    for (const QString relation : {kBelow, kRightOf, kTabbedWith}) {
      const QString target = said.mid(relation.size());
      if (!said.startsWith(relation) || target == words.name || !panels.contains(target)) continue;
      std::tie(words.place, words.target) = std::pair(relation, target);
    }
  }
}

// The groups in parts that lie beside each other; one part where no line separates them.
QList<QList<TPanelGroup>> Parts(QList<TPanelGroup> groups, Qt::Orientation along) {
  const auto start = [along](const TPanelGroup& group) {
    const QPoint at = group.rect.topLeft();
    return along == Qt::Horizontal ? std::pair(at.x(), at.y()) : std::pair(at.y(), at.x());
  };
  std::ranges::sort(groups, {}, start);
  QList<QList<TPanelGroup>> parts;
  int end = 0;
  for (const TPanelGroup& group : groups) {
    if (parts.isEmpty() || start(group).first > end) parts.append(QList<TPanelGroup>());
    parts.last() << group;
    end = std::max(end, along == Qt::Horizontal ? group.rect.right() : group.rect.bottom());
  }
  return parts;
}

void AddWords(const TPanelGroup& group, const QString& place, const QString& target, QList<TPanelWords>& lines) {
  for (qsizetype i = 0; i < group.panels.size(); ++i) {
    TPanelWords words;
    words.name = group.panels[i];
    words.place = i == 0 ? place : kTabbedWith;
    words.target = i == 0 ? target : group.panels[i - 1];
    words.size = group.rect.size();
    lines << words;
  }
}

// Adds the places of the groups relative to the first, which has its own. Parts are placed before they are divided
// themselves: that is the order in which Qt can split them again.
void Divide(const QList<TPanelGroup>& groups, Qt::Orientation along, QList<TPanelWords>& lines) {
  if (groups.size() < 2) return;
  const auto across = along == Qt::Horizontal ? Qt::Vertical : Qt::Horizontal;
  const QList<QList<TPanelGroup>> parts = Parts(groups, along);
  if (parts.size() == 1) {
    if (Parts(groups, across).size() > 1) return Divide(groups, across, lines);
    throw std::logic_error("dock panels overlap");
  }
  for (qsizetype i = 1; i < parts.size(); ++i) {
    AddWords(parts[i][0], along == Qt::Horizontal ? kRightOf : kBelow, parts[i - 1][0].panels[0], lines);
  }
  for (const QList<TPanelGroup>& part : parts) Divide(part, across, lines);
}

// A window with copies of the panels that is never seen. It lays a state out to be described, and words to be a state.
class TScratchWindow : public QMainWindow {
 public:
  TScratchWindow(QMainWindow& window, QSize space) {
    setAttribute(Qt::WA_DontShowOnScreen);
    setAnimated(false);
    setDockOptions(window.dockOptions());
    for (int i = 0; i < 4; ++i) setCorner(static_cast<Qt::Corner>(i), window.corner(static_cast<Qt::Corner>(i)));
    setCentralWidget(new QWidget(this));
    for (const QDockWidget* panel : window.findChildren<QDockWidget*>()) {
      auto* copy = new QDockWidget(panel->objectName(), this);
      copy->setAttribute(Qt::WA_DontShowOnScreen);
      copy->setObjectName(panel->objectName());
      copy->setMinimumSize(panel->minimumSizeHint());
      addDockWidget(Qt::LeftDockWidgetArea, copy);
      FPanels << copy;
    }
    resize(space);
    show();  // only a shown window lays out what is opened later
  }

  [[nodiscard]] QList<TPanelWords> Words(const TDockArrangement& arrangement) {
    restoreState(arrangement.state);
    layout()->activate();
    QMap<QString, TPanelWords> now;
    for (const TPanelGroup& group : Groups()) {
      for (const QString& name : group.panels) now[name].size = group.rect.size();
    }
    for (QDockWidget* panel : FPanels) {
      TPanelWords& words = now[panel->objectName()];
      words.isOpen = !panel->isHidden();
      if (panel->isFloating()) words.floating = panel->geometry();
    }
    // A closed or floating panel has its place when it is open and docked.
    for (QDockWidget* panel : FPanels) {
      panel->setFloating(false);
      panel->show();
    }
    layout()->activate();
    QList<TPanelWords> lines = Places(arrangement.front);
    for (TPanelWords& words : lines) {
      if (now[words.name].size.isValid()) words.size = now[words.name].size;
      words.isOpen = now[words.name].isOpen;
      words.floating = now[words.name].floating;
    }
    return lines;
  }

  [[nodiscard]] QByteArray State(const QList<TPanelWords>& lines) {
    for (QDockWidget* panel : FPanels) addDockWidget(Qt::LeftDockWidgetArea, panel);
    for (const TPanelWords& words : lines) {
      for (const auto& [name, area] : kAreas) {
        if (words.place == name) addDockWidget(area, Panel(words.name));
      }
      const auto along = words.place == kBelow ? Qt::Vertical : Qt::Horizontal;
      if (words.place == kBelow || words.place == kRightOf) {
        splitDockWidget(Panel(words.target), Panel(words.name), along);
      }
    }
    // A panel that is split from a tab would become a tab, too.
    for (const TPanelWords& words : lines) {
      if (words.place == kTabbedWith) tabifyDockWidget(Panel(words.target), Panel(words.name));
    }
    layout()->activate();
    Resize(lines);
    for (const TPanelWords& words : lines) {
      if (words.floating.isValid()) {
        Panel(words.name)->setFloating(true);
        Panel(words.name)->setGeometry(words.floating);
      }
      Panel(words.name)->setVisible(words.isOpen.value_or(true));
    }
    layout()->activate();
    QList<TPanelWords> docked = lines;
    docked.removeIf([](const TPanelWords& words) { return !words.isOpen.value_or(true) || words.floating.isValid(); });
    Resize(docked);
    return saveState();
  }

 private:
  [[nodiscard]] QDockWidget* Panel(const QString& name) const {
    return *std::ranges::find(FPanels, name, &QDockWidget::objectName);
  }

  // Of the docked panels that are open.
  [[nodiscard]] QList<TPanelGroup> Groups() const {
    QList<TPanelGroup> groups;
    QStringList tabs;
    for (const QTabBar* bar : findChildren<QTabBar*>(QString(), Qt::FindDirectChildrenOnly)) {
      if (bar->count() < 2) continue;
      TPanelGroup group{{}, bar->geometry() | Panel(bar->tabText(bar->currentIndex()))->geometry()};
      for (int i = 0; i < bar->count(); ++i) group.panels << bar->tabText(i);
      tabs << group.panels;
      groups << group;
    }
    for (const QDockWidget* panel : FPanels) {
      if (panel->isHidden() || panel->isFloating() || tabs.contains(panel->objectName())) continue;
      groups << TPanelGroup{{panel->objectName()}, panel->geometry()};
    }
    return groups;
  }

  [[nodiscard]] QList<TPanelWords> Places(const QStringList& front) {
    QList<TPanelWords> lines;
    for (const auto& [name, area] : kAreas) {
      QList<TPanelGroup> groups = Groups();
      groups.removeIf(
          [this, other = area](const TPanelGroup& group) { return dockWidgetArea(Panel(group.panels[0])) != other; });
      if (groups.isEmpty()) continue;
      const bool isRow = area == Qt::TopDockWidgetArea || area == Qt::BottomDockWidgetArea;
      const auto first = std::ranges::min(groups, {}, [](const TPanelGroup& group) {
        return std::pair(group.rect.left() + group.rect.top(), group.rect.left());
      });
      AddWords(first, name, {}, lines);
      Divide(groups, isRow ? Qt::Horizontal : Qt::Vertical, lines);
      for (const TPanelGroup& group : groups) MarkFront(group.panels, front, lines);
    }
    return lines;
  }

  static void MarkFront(const QStringList& tabs, const QStringList& front, QList<TPanelWords>& lines) {
    if (tabs.size() < 2) return;
    const QString& last = std::ranges::max(tabs, {}, [&](const QString& tab) { return front.indexOf(tab); });
    std::ranges::find(lines, last, &TPanelWords::name)->isInFront = true;
  }

  void Resize(const QList<TPanelWords>& lines) {
    QList<QDockWidget*> panels;
    QList<int> widths;
    QList<int> heights;
    for (const TPanelWords& words : lines) {
      panels << Panel(words.name);
      widths << words.size.width();
      heights << words.size.height();
    }
    resizeDocks(panels, widths, Qt::Horizontal);
    resizeDocks(panels, heights, Qt::Vertical);
  }

  QList<QDockWidget*> FPanels;
};

// Between ribbon and status bar.
QSize SpaceOf(QMainWindow& window) {
  window.layout()->activate();
  return {window.width(), window.statusBar()->geometry().top() - window.menuWidget()->geometry().bottom() - 1};
}

}  // namespace

TDockLines LinesOf(QMainWindow& window, const TDockArrangement& arrangement) {
  const QSize space = SpaceOf(window);
  TDockLines lines = {{kSpace, TextOf(space)}};
  for (const TPanelWords& words : TScratchWindow(window, space).Words(arrangement)) {
    lines << std::pair(words.name, TextOf(words));
  }
  return lines;
}

TDockArrangement ArrangementOf(QMainWindow& window, const TDockLines& lines, const TDockArrangement& designed) {
  QSize space = SpaceOf(window);
  QList<TPanelWords> words = TScratchWindow(window, space).Words(designed);
  QStringList panels;
  for (const TPanelWords& panel : words) panels << panel.name;
  TDockArrangement arrangement{{}, designed.front};
  qsizetype unsaid = words.size();
  for (const auto& [name, text] : lines) {
    if (name == kSpace && SizeOf(text).isValid()) space = SizeOf(text);
    const auto said = std::ranges::find(words, name, &TPanelWords::name);
    if (said == words.end()) continue;
    Read(text, panels, *said);
    if (said->isInFront) arrangement.front << name;
    std::rotate(said, said + 1, words.end());  // the others come first, so that what is said holds
    --unsaid;
  }
  if (unsaid == words.size()) throw std::runtime_error("This is no layout of this program.");
  arrangement.state = TScratchWindow(window, space).State(words);
  return arrangement;
}
