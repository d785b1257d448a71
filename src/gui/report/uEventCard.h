// The card of one shock event: its curves, figures, the sensors at that time, and marks for what is beyond a limit.
// Lengths are points (1/72 inch), also on a screen, where the painter is scaled. Main thread only.
#pragma once

#include <QPainter>
#include <QRectF>
#include <QString>
#include <cstddef>
#include <optional>
#include <vector>

#include "analysis/uVerdict.h"
#include "model/uEvents.h"
#include "shell/uShownMission.h"
#include "shell/uThemeTokens.h"

// "▲ " or "▼ " for a value above or below a limit that somebody chose, else empty. The trigger level is no such limit.
QString LimitMark(const std::optional<TVerdictLimits>& limits, TQuantity quantity, float value);

struct TCardFigure {
  QString label;
  QString text;  // with its unit, and a mark in front when it is beyond a limit
  bool isBeyond = false;
};

struct TEventCard {
  QString title;  // "Event 171"
  QString moment;
  bool clipped = false;
  QString whyNoPulse;  // why velocity change, duration and direction are "—"; else empty
  std::vector<TCardFigure> figures;
  QString note;  // empty: none

  [[nodiscard]] bool IsBeyond() const;
  // All of it in a line, for those who cannot see the card.
  [[nodiscard]] QString Words() const;
};

// `row` of the event table. Analyses the shock, so it walks the event's samples.
TEventCard MakeEventCard(const TShownMission& mission, const TDisplaySettings& display,
                         const std::optional<TVerdictLimits>& limits, std::size_t row);

struct TCardLook {
  const TThemeTokens& tokens = kLightTokens;
  // On paper the curves differ by their lines, too, so that a print without colours can be read.
  bool forPaper = true;
};

// Where PaintEventCard leaves room for the chart.
QRectF CardChartRect(const TEventCard& card, const QRectF& rect);

// The frame and the texts. A rect of 230 × 150 pt holds everything; what has no room in a smaller one is left out.
void PaintEventCard(QPainter& painter, const QRectF& rect, const TEventCard& card, const TCardLook& look);

// X, Y and Z in g over the ms of the event.
void PaintCardChart(QPainter& painter, const QRectF& rect, const TEvent& event, const TDisplaySettings& display,
                    const TCardLook& look);
