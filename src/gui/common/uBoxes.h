// Named controls in rows and columns, of which panels and dialogs are made.
#pragma once

#include <QBoxLayout>
#include <QScrollArea>
#include <initializer_list>
#include <optional>

class QLabel;

// Gives a control its name, what screen readers say, and its tool tip.
template <class T>
T* Named(T* control, const QString& name, const QString& words = {}, const QString& tip = {}) {
  control->setObjectName(name);
  if (!words.isEmpty()) control->setAccessibleName(words);
  if (!tip.isEmpty()) control->setToolTip(tip);
  return control;
}

// A caption without mnemonic and ellipsis, for screen readers and tool tips.
QString PlainCaption(const QString& caption);

// Plain text in as many lines as it takes.
QLabel* MakeSentence(const QString& name, QWidget* parent);

// Scrolls what may be larger than the room. It has no frame and takes no keys: its controls do.
QScrollArea* MakeScrolled(QWidget* content);

// What stands in a row or a column, with its share of the room that is left.
struct TBoxPart {
  TBoxPart(QWidget* part, int ofRest = 0, Qt::Alignment at = {}) : widget(part), share(ofRest), place(at) {}
  TBoxPart(QLayout* part, int ofRest = 0) : layout(part), share(ofRest) {}

  QWidget* widget = nullptr;
  QLayout* layout = nullptr;
  int share = 0;
  Qt::Alignment place = {};
};
// Takes the room that is left.
inline const TBoxPart kRest{static_cast<QLayout*>(nullptr)};

// The style's margins and spacing unless given.
struct TBoxLook {
  std::optional<QMargins> margins = {};
  int spacing = -1;
};
inline constexpr TBoxLook kNoMargins{QMargins()};
inline constexpr TBoxLook kNoGaps{QMargins(), 0};

// The layout of `owner`, or one that stands in another (nullptr). Widgets get their parent with the layout.
QBoxLayout* MakeRow(QWidget* owner, std::initializer_list<TBoxPart> parts, const TBoxLook& look = {});
QBoxLayout* MakeColumn(QWidget* owner, std::initializer_list<TBoxPart> parts, const TBoxLook& look = {});
