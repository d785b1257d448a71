// The mission details: the header's fields and texts, the mission's figures, a line for each sensor.
#pragma once

#include <QScrollArea>
#include <vector>

#include "analysis/uMissionFigures.h"

class QGridLayout;

class TMissionDetails : public QScrollArea {
  Q_OBJECT

 public:
  explicit TMissionDetails(QWidget* parent);

  struct TSection {
    QString title;
    std::vector<TFigure> figures;
  };
  // Shows sections below each other; none empties the panel.
  void ShowSections(const std::vector<TSection>& sections);

 private:
  void AddFigure(QGridLayout& layout, const TFigure& figure, int row);
};
