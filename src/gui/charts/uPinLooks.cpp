#include "gui/charts/uPinLooks.h"

#include <QPainter>
#include <QPixmap>

#include "gui/charts/uLegendRow.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr qsizetype kMaxTitle = 26;  // characters
// Apart from each other, and from the blue, red and green of X, Y and Z, also for people who are colour-blind.
constexpr std::uint32_t kInks[kMaxPins] = {0xD55E00, 0x8A2BE2, 0x008B8B, 0xB8860B,
                                           0xC71585, 0x6B8E23, 0x4682B4, 0x8B4513};

}  // namespace

QColor PinInk(const QPalette& palette, std::size_t slot) {
  return InkOn(palette, QColor(kInks[slot]));
}

QList<qreal> PinDashes(std::size_t slot) {
  static const QList<qreal> kDashes[kMaxPins] = {{8, 3}, {3, 2},        {8, 2, 2, 2}, {14, 4}, {8, 2, 2, 2, 2, 2},
                                                 {5, 5}, {14, 3, 5, 3}, {2, 4}};
  return kDashes[slot];
}

QString PinTitle(const TPin& pin) {
  return ShownText(PinName(*pin.event), kMaxTitle);
}

QIcon PinIcon(const QPalette& palette, std::size_t slot) {
  constexpr QSize kSize(32, 16);
  QPixmap picture(kSize);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setPen(DashedPen(PinInk(palette, slot), 2, PinDashes(slot)));
  painter.drawLine(0, kSize.height() / 2, kSize.width(), kSize.height() / 2);
  return QIcon(picture);
}
