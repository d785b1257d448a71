#include "gui/charts/uAnalysisChart.h"

#include "gui/charts/uChartPaint.h"

TAnalysisChart::TAnalysisChart(TAxisUnit unit, const QString& name, const QString& title, QWidget* parent)
    : TTimeChart(unit, parent) {
  setObjectName(name);
  setAccessibleName(title);
  Marks().SetNearestVisible(true);
}

QString TAnalysisChart::MomentText(double value) const {
  return Unit() == TAxisUnit::Days ? TTimeChart::MomentText(value) : Digits(value, 4);
}

QStringList TAnalysisChart::SpanTexts(double span) const {
  return Unit() == TAxisUnit::Days ? TTimeChart::SpanTexts(span) : QStringList{tr("Δ %1").arg(Digits(span))};
}

QString TAnalysisChart::CursorText(const QPointF& position) const {
  const auto nearest = NearestTo(position);
  return nearest ? nearest->text : QString();
}
