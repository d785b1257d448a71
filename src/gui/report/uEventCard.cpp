#include "gui/report/uEventCard.h"

#include <QPainterPath>
#include <QPolygonF>
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "analysis/uEnvelope.h"
#include "analysis/uShockAnalysis.h"
#include "base/uContrast.h"
#include "base/uDateTime.h"
#include "base/uText.h"
#include "gui/charts/uInTimeOrder.h"
#include "gui/charts/uSeries.h"
#include "gui/common/uQtText.h"
#include "gui/report/uPaperText.h"
#include "model/uQuantities.h"
#include "shell/uSettings.h"

namespace {

constexpr double kPadding = 8;
constexpr double kCorner = 3;
constexpr double kFigureGap = 4;      // between title, chart and figures
constexpr double kMinCardChart = 40;  // below that figures give way
constexpr double kNumberWidth = 30;   // of the numbers beside the chart
constexpr double kStripe = 3;         // at the left of a card that is beyond a limit
constexpr double kColumnsAPoint = 3;
constexpr auto kUsualFigure = "IoT total 1000.000 g·ms";  // fits a column

struct TLabel {
  std::string_view field;  // of the cards table
  const char* label;
};
// Short names; fields that are not here have their own.
constexpr TLabel kLabels[] = {{"Acceleration max", QT_TR_NOOP("Peak")},
                              {"Temperature", QT_TR_NOOP("Temp.")},
                              {"Temperature (Pressure)", QT_TR_NOOP("Temp. P")},
                              {"Temperature (Humidity)", QT_TR_NOOP("Temp. RH")}};

QString LabelOf(std::string_view field) {
  const auto* found = std::ranges::find(kLabels, field, &TLabel::field);
  return found == std::end(kLabels) ? QtText(field) : QObject::tr(found->label);
}

// The figures of the cards table, in its order; what has no value is left out.
void AddTableFigures(const TShownMission& mission, const TDisplaySettings& display,
                     const std::optional<TVerdictLimits>& limits, std::size_t row, TEventCard& card) {
  const TDataset& table = mission.Tables.Cards;
  for (std::size_t field = 0; field < table.Fields().size(); ++field) {
    const TField& column = table.Fields()[field];
    if (column.Type != TFieldType::Single || table.IsNull(row, field)) continue;
    const TQuantityRow* quantity = FindQuantity(&TQuantityRow::field, column.Key);
    if (quantity == nullptr) quantity = FindQuantity(&TQuantityRow::cardField, column.Key);
    if (quantity == nullptr || !quantity->quantity) continue;
    const float value = table.Single(row, field);
    const QString mark = LimitMark(limits, *quantity->quantity, value);
    const auto shown = [&](float number) {
      return QtText(MaskFloat(display.FormatOf(*quantity->quantity), double{number})) + ' ' +
             QtText(UnitInWords(*quantity));
    };
    QString text = shown(value);
    const TEvent& event = mission.Events.GetItem(row);
    if (column.Key == "Acceleration max" && event.MaxSingle != 0) {
      text += QObject::tr(" (%1 on %2)").arg(shown(event.MaxSingle), QtText(event.MaxAxis));
    }
    card.figures.push_back({LabelOf(column.Key), mark + text, !mark.isEmpty()});
  }
}

void AddAnalysisFigures(const TShownMission& mission, const TDisplaySettings& display, std::size_t row,
                        TEventCard& card) {
  const TShockAnalysis analysis = AnalyseShock(mission.Events.GetItem(row), ThresholdsOf(mission.Data).totOn);
  const TPulse& pulse = analysis.pulse;
  const bool hasPulse = pulse.problem == TPulseProblem::None;
  if (!hasPulse) card.whyNoPulse = QtText(analysis.reason);
  const auto add = [&](const QString& label, const QString& text) {
    card.figures.push_back({label, hasPulse ? text : QString("—")});
  };
  add(QObject::tr("Δv"), QObject::tr("%1 m/s").arg(QtText(MaskFloat("0.00", pulse.velocityChange))));
  add(QObject::tr("Duration"),
      QObject::tr("%1 ms").arg(QtText(MaskFloat(display.FormatOf(TQuantity::ToT), pulse.durationTenth))));
  add(QObject::tr("Direction"), QtText(DirectionText(pulse.direction)));
}

struct TFigurePlace {
  std::size_t row = 0;
  std::size_t column = 0;
  bool isWide = false;  // it takes all columns
};

// How the figures stand: in columns that all cards of a size have, the peak in a line of its own, in as many rows as
// leave room for the chart.
struct TFigureGrid {
  std::size_t columns = 1;
  std::vector<TFigurePlace> places;  // of the first figures; those behind have no room
  double top = 0;
};

TFigureGrid GridOf(const TEventCard& card, const QRectF& inside) {
  TFigureGrid grid;
  const double column = TextWidth(TTextStyle::Caption, kUsualFigure) + kFigureGap;
  grid.columns = static_cast<std::size_t>(std::max(1.0, std::floor(inside.width() / column)));
  const double width = inside.width() / static_cast<double>(grid.columns) - kFigureGap;
  const double line = LineHeight(TTextStyle::Caption) + 1;
  const double room = inside.height() - LineHeight(TTextStyle::Strong) - 2 * kFigureGap - kMinCardChart;
  const auto maxRows = static_cast<std::size_t>(std::max(0.0, std::floor(room / line)));
  std::size_t next = 0;  // cell, counted along the rows
  for (const TCardFigure& figure : card.figures) {
    const bool isPeak = grid.places.empty();
    const bool isWide = isPeak || TextWidth(TTextStyle::Caption, figure.label + ' ' + figure.text) > width;
    if (isWide) next = (next + grid.columns - 1) / grid.columns * grid.columns;
    if (next / grid.columns >= maxRows) break;
    grid.places.push_back({next / grid.columns, next % grid.columns, isWide});
    next += isWide ? grid.columns : 1;
  }
  const std::size_t rows = grid.places.empty() ? 0 : grid.places.back().row + 1;
  grid.top = inside.bottom() - static_cast<double>(rows) * line;
  return grid;
}

QRectF Inside(const QRectF& rect) {
  return rect.adjusted(kPadding, kPadding - 2, -kPadding, 2 - kPadding);
}

// The note stands in the last line.
QRectF AboveNote(const TEventCard& card, const QRectF& inside) {
  return card.note.isEmpty() ? inside : inside.adjusted(0, 0, 0, -LineHeight(TTextStyle::Caption) - 1);
}

void PaintCardFigures(QPainter& painter, const QRectF& inside, const TEventCard& card, const TCardLook& look) {
  const TFigureGrid grid = GridOf(card, inside);
  const double width = inside.width() / static_cast<double>(grid.columns);
  const double height = LineHeight(TTextStyle::Caption) + 1;
  for (std::size_t i = 0; i < grid.places.size(); ++i) {
    const TCardFigure& figure = card.figures[i];
    const TFigurePlace& place = grid.places[i];
    const double label = TextWidth(TTextStyle::Caption, figure.label + ' ');
    const QRectF cell(inside.left() + static_cast<double>(place.column) * width,
                      grid.top + static_cast<double>(place.row) * height,
                      (place.isWide ? inside.width() : width) - kFigureGap, height);
    DrawLine(painter, cell, TTextStyle::Caption, figure.label, QColor(look.tokens.secondaryInk));
    DrawLine(painter, cell.adjusted(std::min(label, cell.width()), 0, 0, 0), TTextStyle::Caption, figure.text,
             QColor(figure.isBeyond ? look.tokens.alarm : look.tokens.ink));
  }
}

// Steps that nobody sees: they make a PDF small, and flat parts of a curve one line.
double InSteps(double points) {
  constexpr double kSteps = 20;  // a point
  return std::round(points * kSteps) / kSteps;
}

// The curve as the envelope of its samples; an event may have a million of them.
void PaintCurve(QPainter& painter, const QRectF& plot, std::span<const TEventValue> samples, TSeries series,
                const TTimeSpan& span, double limit) {
  const auto timeAt = [&](std::size_t i) { return samples[i].time; };
  const auto valueAt = [&](std::size_t i) { return ValueOf(samples[i], series); };
  const TColumns columns{span, static_cast<std::size_t>(std::max(1.0, plot.width() * kColumnsAPoint))};
  QPolygonF line;
  const auto flush = [&] {
    if (line.size() == 1) painter.drawPoint(line.front());
    if (line.size() > 1) painter.drawPolyline(line);
    line.clear();
  };
  for (const TEnvelopePoint& point : Envelope(samples.size(), timeAt, valueAt, {}, columns)) {
    if (!std::isfinite(point.value)) {
      flush();
      continue;
    }
    const double x = plot.left() + (point.key - span.start) / span.Width() * plot.width();
    const double y = InSteps(plot.center().y() - double{point.value} / limit * plot.height() / 2);
    const qsizetype count = line.size();
    if (count > 1 && line[count - 1].y() == y && line[count - 2].y() == y) line.removeLast();
    line.append({InSteps(x), y});
  }
  flush();
}

}  // namespace

QString LimitMark(const std::optional<TVerdictLimits>& limits, TQuantity quantity, float value) {
  if (!limits || static_cast<std::size_t>(quantity) >= kLimitedQuantityCount) return {};
  const TJudgedLimits& judged = limits->at(static_cast<std::size_t>(quantity));
  if (judged.maxSource == TLimitSource::User && IsAbove(judged.values, value)) return "▲ ";
  return judged.minSource == TLimitSource::User && IsBelow(judged.values, value) ? "▼ " : "";
}

bool TEventCard::IsBeyond() const {
  return std::ranges::any_of(figures, &TCardFigure::isBeyond);
}

QString TEventCard::Words() const {
  QStringList words{title + ' ' + moment};
  if (clipped) words << QObject::tr("clipped");
  for (const TCardFigure& figure : figures) words << figure.label + ' ' + figure.text;
  if (!note.isEmpty()) words << note;
  return words.join(", ");
}

TEventCard MakeEventCard(const TShownMission& mission, const TDisplaySettings& display,
                         const std::optional<TVerdictLimits>& limits, std::size_t row) {
  const TEvent& event = mission.Events.GetItem(row);
  TEventCard card;
  card.title = QObject::tr("Event %1").arg(event.ID);
  card.moment = QtText(FormatDateTime(DateTimeMask(), DateTimeOf(mission.Events.StartTime, event.GetStartTime())));
  card.clipped = mission.Tables.Metrics[row].clipped;
  AddTableFigures(mission, display, limits, row, card);
  AddAnalysisFigures(mission, display, row, card);
  constexpr qsizetype kMaxNote = 200;  // characters; a line holds fewer
  if (const auto note = mission.Notes.ofEvents.find(row); note != mission.Notes.ofEvents.end()) {
    card.note = QObject::tr("Note: %1").arg(ShownText(note->second, kMaxNote));
  }
  return card;
}

QRectF CardChartRect(const TEventCard& card, const QRectF& rect) {
  const QRectF inside = AboveNote(card, Inside(rect));
  const double top = inside.top() + LineHeight(TTextStyle::Strong) + kFigureGap;
  return {inside.left(), top, inside.width(), std::max(0.0, GridOf(card, inside).top - kFigureGap - top)};
}

void PaintEventCard(QPainter& painter, const QRectF& rect, const TEventCard& card, const TCardLook& look) {
  painter.save();
  QPainterPath frame;
  frame.addRoundedRect(rect, kCorner, kCorner);
  if (card.IsBeyond()) {
    painter.setClipPath(frame, Qt::IntersectClip);
    painter.fillRect(QRectF(rect.left(), rect.top(), kStripe, rect.height()), QColor(look.tokens.alarm));
    painter.restore();
    painter.save();
  }
  painter.setPen(QPen(look.forPaper ? kPaperHairline : QColor(look.tokens.hairline), 0.6));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(frame);
  painter.restore();

  const QRectF inside = Inside(rect);
  const double height = LineHeight(TTextStyle::Strong);
  const double title = TextWidth(TTextStyle::Strong, card.title);
  const QString mark = card.clipped ? QObject::tr("clipped") : QString();
  const double markWidth = TextWidth(TTextStyle::Caption, mark);
  const QRectF head(inside.left(), inside.top(), inside.width(), height);
  DrawLine(painter, head, TTextStyle::Strong, card.title, QColor(look.tokens.ink));
  DrawLine(painter, head.adjusted(title + kFigureGap, 0, -markWidth - kFigureGap, 0), TTextStyle::Caption, card.moment,
           QColor(look.tokens.secondaryInk));
  DrawLine(painter, head.adjusted(head.width() - markWidth, 0, 0, 0), TTextStyle::Caption, mark,
           QColor(look.tokens.alarm));
  PaintCardFigures(painter, AboveNote(card, inside), card, look);
  const double line = LineHeight(TTextStyle::Caption);
  DrawLine(painter, {inside.left(), inside.bottom() - line, inside.width(), line}, TTextStyle::Caption, card.note,
           QColor(look.tokens.ink));
}

void PaintCardChart(QPainter& painter, const QRectF& rect, const TEvent& event, const TDisplaySettings& display,
                    const TCardLook& look) {
  const double line = LineHeight(TTextStyle::Caption);
  const QRectF plot = rect.adjusted(kNumberWidth, line / 2, 0, -line - 1);
  if (plot.width() < kNumberWidth || plot.height() < line) return;
  TInTimeOrder<TEventValue> inOrder;
  inOrder.Set(event.Values());
  const std::span<const TEventValue> samples = inOrder.Samples();
  const bool hasScale = std::isfinite(event.MaxSingle) && event.MaxSingle > 0;
  const double limit = hasScale ? double{event.MaxSingle} : 1.0;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  for (const double part : {1.0, 0.0, -1.0}) {
    const double y = plot.center().y() - part * plot.height() / 2;
    painter.setPen(QPen(look.forPaper ? kPaperHairline : QColor(look.tokens.hairline), 0.4));
    painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
    DrawLine(painter, {rect.left(), y - line / 2, kNumberWidth - kFigureGap, line}, TTextStyle::Caption,
             QtText(MaskFloat("0.#", part * limit)), QColor(look.tokens.secondaryInk),
             Qt::AlignRight | Qt::AlignVCenter);
  }
  if (!samples.empty()) {
    const TTimeSpan span{samples.front().time, std::max(samples.back().time, samples.front().time + 1)};
    constexpr std::array kStyles = {Qt::SolidLine, Qt::DashLine, Qt::DotLine};
    for (const TSeries series : {TSeries::X, TSeries::Y, TSeries::Z}) {
      const std::size_t place = Place(series);
      const QColor ink(StandOut(display.accelerationColours[place], look.tokens.surface));
      painter.setPen(QPen(ink, 0.9, look.forPaper ? kStyles[place] : Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      PaintCurve(painter, plot, samples, series, span, limit);
    }
    DrawLine(painter, {plot.left(), plot.bottom() + 1, plot.width(), line}, TTextStyle::Caption,
             QObject::tr("0 … %1 ms, g").arg(QtText(MaskFloat("0", samples.back().time - samples.front().time))),
             QColor(look.tokens.secondaryInk), Qt::AlignRight | Qt::AlignVCenter);
  }
  painter.restore();
}
