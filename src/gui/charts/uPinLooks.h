// How a pinned event looks wherever it is drawn or listed.
#pragma once

#include <QColor>
#include <QIcon>
#include <QList>
#include <QString>

#include "analysis/uPinnedEvents.h"

class QPalette;

// By slot: no two of kMaxPins have the same colour, nor the same dashes in px.
QColor PinInk(const QPalette& palette, std::size_t slot);
QList<qreal> PinDashes(std::size_t slot);

// PinName, cut where the file's name is long.
QString PinTitle(const TPin& pin);
// A piece of its line.
QIcon PinIcon(const QPalette& palette, std::size_t slot);
