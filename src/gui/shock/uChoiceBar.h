// What the chart of the selected event shows, to choose in one row above it. Where the row has no room the choices
// stand behind a button, so that they never take more height from the chart.
#pragma once

#include <QStringList>
#include <QWidget>
#include <vector>

#include "gui/common/uQtText.h"

class QComboBox;
class QFrame;
class QGridLayout;
class QLabel;
class QToolButton;

// A list with its own object name; `what` is said by its tool tip and to assistive technology.
QComboBox* MakeChoiceList(const char* name, const QString& what, const QStringList& choices);

// The names of a table of names and values, for such a list.
template <class TTable>
QStringList NamesOf(const TTable& table) {
  QStringList names;
  for (const auto& [name, value] : table) names.append(QtText(name));
  return names;
}

class TChoiceBar : public QWidget {
  Q_OBJECT

 public:
  // `name` is that of its button; `what` is said by the button's tool tip.
  TChoiceBar(const char* name, const QString& what, QWidget* parent);

  // Takes the control. Its caption stands before it where there is room; empty: it has none. A click on a push button
  // closes the popup before what is connected to it later.
  void Add(const QString& caption, QWidget* control);
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  enum class TForm { Captions, Row, Button };
  struct TChoice {
    QLabel* caption;  // nullptr: none
    QWidget* control;
  };
  // px of a row.
  [[nodiscard]] int WidthOf(TForm form) const;
  void Arrange(TForm form);
  void OpenPopup();

  QToolButton* FButton;
  QFrame* FPopup;
  QWidget* FBody;  // with the choices, in the row or in the popup
  QGridLayout* FGrid;
  std::vector<TChoice> FChoices;
  TForm FForm = TForm::Captions;
};
