// The base of the charts of all visible events: what is drawn is also a table. Main thread only.
#pragma once

#include "analysis/uDataset.h"
#include "gui/charts/uTimeChart.h"

class TAnalysisChart : public TTimeChart {
  Q_OBJECT

 public:
  TAnalysisChart(TAxisUnit unit, const QString& name, const QString& title, QWidget* parent);

  // What is drawn, whatever the zoom; without rows while there is nothing.
  [[nodiscard]] virtual TDataset Table() const = 0;

 protected:
  void EntryClicked(std::size_t /*entry*/) override {}
  void Clicked(const QPointF& /*position*/) override {}
  [[nodiscard]] QString MomentText(double value) const override;
  [[nodiscard]] QStringList SpanTexts(double span) const override;
  // What NearestTo says.
  [[nodiscard]] QString CursorText(const QPointF& position) const override;
};
