// The mission details: the header's fields and texts, the mission's figures, a line for each sensor. Text breaks
// anywhere, and can be selected and copied.
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
  // Shows sections below each other; none empties the panel.
  void ShowSections(const std::vector<TSection>& sections);
};
