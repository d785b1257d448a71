// How the reference looks beside what is shown: dashed, in the ink of texts.
#pragma once

#include <QPen>
#include <QString>
#include <vector>

#include "gui/charts/uLegendRow.h"

class QPalette;

QPen ReferencePen(const QColor& ink);
// "shown" and the reference; none without its name.
std::vector<TLegendEntry> ReferenceEntries(const QPalette& palette, const QString& reference);

// "+1.5", "-2", "±0".
QString SignedDigits(double difference, int digits);
