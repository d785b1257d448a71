// The colours of the acceleration series, on light ground; InkOn makes them readable on dark.
#pragma once

#include <QColor>
#include <array>

// x, y, z, total.
inline const std::array<QColor, 4> kAccelerationColours = {QColor(0x0000FFU), QColor(0xFF0000U), QColor(0x008000U),
                                                           QColor(0x000000U)};
