// Where the coordinates of an axis stand on the screen, for a million of them: QCPAxis::coordToPixel looks at the kind
// and the side of its axis anew each time. Valid until the axis changes.
#pragma once

#include <qcustomplot.h>

class TPixels {
 public:
  explicit TPixels(const QCPAxis& axis)
      : FAxis(axis),
        FIsLinear(axis.scaleType() == QCPAxis::stLinear),
        FFrom(axis.range().lower),
        FPixelOfFrom(axis.coordToPixel(FFrom)),
        FPerUnit((axis.coordToPixel(axis.range().upper) - FPixelOfFrom) / axis.range().size()) {}

  [[nodiscard]] double At(double coordinate) const {
    return FIsLinear ? FPixelOfFrom + (coordinate - FFrom) * FPerUnit : FAxis.coordToPixel(coordinate);
  }

 private:
  const QCPAxis& FAxis;
  bool FIsLinear;
  double FFrom, FPixelOfFrom, FPerUnit;
};
