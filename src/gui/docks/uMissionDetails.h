// The mission details: the verdict, the header's fields and texts, the mission's figures, a line for each sensor. Text
// wraps anywhere, labels between words; it can be selected. In a narrow panel a figure stands below its label.
#pragma once

#include <QTextEdit>
#include <vector>

#include "analysis/uMissionFigures.h"

class TMissionDetails : public QTextEdit {
  Q_OBJECT

 public:
  explicit TMissionDetails(QWidget* parent);

  struct TSection {
    QString title;
    std::vector<TFigure> figures;
  };
  // An empty list empties the panel.
  void ShowSections(std::vector<TSection> sections);

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] int LabelWidth() const;
  void ShowText();

  std::vector<TSection> FSections;
  bool FIsNarrow = false;
};
