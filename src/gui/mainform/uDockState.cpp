#include "gui/mainform/uDockState.h"

#include <QDataStream>
#include <algorithm>
#include <initializer_list>

namespace {

constexpr int kWindowMark = 0xFF;
constexpr quint8 kDocksMark = 0xFD;
constexpr quint8 kToolBarsMark = 0xFC;  // the mark of a row, too
constexpr quint8 kRowMark = 0xFC;
constexpr quint8 kTabsMark = 0xFA;
constexpr quint8 kPanelMark = 0xFB;
constexpr quint8 kVisible = 1;
constexpr quint8 kFloating = 2;
constexpr int kDepth = 8;
constexpr int kAreas = 4;
constexpr int kMostPixels = 32767;
constexpr int kFarthest = 100000;  // of a floating panel from the corner of the desktop
constexpr int kNoLimit = 1 << 28;  // more than any largest size

class TWalker {
 public:
  TWalker(const QByteArray& state, const QStringList& panels) : FIn(state), FPanels(panels) {
    FIn.setVersion(QDataStream::Qt_5_0);
  }

  bool Window() {
    if (!Is(kWindowMark) || !Is(0) || !Mark({kDocksMark})) return false;
    const qint32 areas = Number();
    if (areas < 0 || areas > kAreas) return false;
    for (qint32 i = 0, before = -1; i < areas; ++i) {
      const qint32 area = Number();
      if (area <= before || area >= kAreas) return false;
      before = area;
      if (!InRange(-1, kMostPixels, 2) || !Row(0)) return false;
    }
    if (!InRange(-1, kMostPixels, 2)) return false;  // the centre
    for (int corner = 0; corner < 4; ++corner) {
      const qint32 area = Number();
      if (area != 1 && area != 2 && area != 4 && area != 8) return false;
    }
    return Mark({kToolBarsMark}) && Is(0) && FIn.atEnd() && FIn.status() == QDataStream::Ok && FPanels.isEmpty();
  }

 private:
  qint32 Number() {
    qint32 number = 0;
    FIn >> number;
    return FIn.status() == QDataStream::Ok ? number : -kNoLimit;
  }
  quint8 Byte() {
    quint8 byte = 0;
    FIn >> byte;
    return byte;
  }
  bool Is(qint32 wanted) { return Number() == wanted; }
  bool Mark(std::initializer_list<quint8> wanted) {
    FMark = Byte();
    return std::find(wanted.begin(), wanted.end(), FMark) != wanted.end();
  }
  bool InRange(qint32 least, qint32 most, int count = 1) {
    for (int i = 0; i < count; ++i) {
      const qint32 number = Number();
      if (number < least || number > most) return false;
    }
    return true;
  }
  // Place and extent within the row, and the limits of the extent.
  bool Extent() { return InRange(-kMostPixels, kMostPixels, 2) && InRange(-1, kNoLimit, 2); }

  // Panels beside each other or in tabs.
  bool Row(int depth) {
    if (depth > kDepth || !Mark({kRowMark, kTabsMark})) return false;
    if (FMark == kTabsMark && !InRange(-1, kDepth)) return false;
    const quint8 orientation = Byte();
    const qint32 count = Number();
    if ((orientation != Qt::Horizontal && orientation != Qt::Vertical) || count < 1 || count > kDepth) return false;
    for (qint32 i = 0; i < count; ++i) {
      if (!Mark({kPanelMark, kRowMark})) return false;
      const bool fits = FMark == kPanelMark ? Panel() : Extent() && Row(depth + 1);
      if (!fits) return false;
    }
    return true;
  }

  bool Panel() {
    QString name;
    FIn >> name;
    const quint8 flags = Byte();
    if (FPanels.removeAll(name) != 1 || (flags & ~(kVisible | kFloating)) != 0) return false;
    if ((flags & kFloating) == 0) return Extent();
    return InRange(-kFarthest, kFarthest, 2) && InRange(0, kMostPixels, 2);
  }

  QDataStream FIn;
  QStringList FPanels;  // still to come
  quint8 FMark = 0;
};

}  // namespace

bool IsDockState(const QByteArray& state, const QStringList& panels) {
  return TWalker(state, panels).Window();
}
