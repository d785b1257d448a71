#include "gui/charts/uLegendRow.h"

#include <algorithm>

namespace {

constexpr int kSample = 14;   // px, the piece of line before a name
constexpr int kGap = 5;       // between it and the name
constexpr int kBetween = 14;  // between entries
constexpr int kSide = 12;     // left and right of the row
constexpr std::size_t kMaxRows = 3;
constexpr auto kMore = "…";  // for the entries without room

// A line of a style needs more than a short bar to be told from others.
void DrawSample(QCPPainter& painter, const QRect& place, const TLegendEntry& entry, const QColor& ink) {
  const QPointF middle(place.left() + kSample / 2.0, place.center().y() + 0.5);
  if (entry.marker) return DrawMarker(painter, *entry.marker, middle, 3.5, ink);
  painter.setAntialiasing(false);
  if (entry.dashes.isEmpty()) {
    painter.fillRect(QRect(place.left(), place.center().y() - 1, kSample, 3), ink);
    return;
  }
  painter.setPen(DashedPen(ink, 1.5, entry.dashes));
  painter.drawLine(QPointF(place.left() - 8, middle.y()), QPointF(place.left() + kSample + 2, middle.y()));
}

}  // namespace

QPen DashedPen(const QColor& ink, double width, const QList<qreal>& dashes) {
  QPen pen(ink, width);
  if (dashes.isEmpty()) return pen;
  QList<qreal> inWidths;
  for (const qreal dash : dashes) inWidths.append(dash / width);
  pen.setDashPattern(inWidths);
  pen.setCapStyle(Qt::FlatCap);
  return pen;
}

void DrawMarker(QPainter& painter, TMarker marker, const QPointF& at, double radius, const QColor& ink) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(ink);
  const QRectF box(at.x() - radius, at.y() - radius, 2 * radius, 2 * radius);
  switch (marker) {
    case TMarker::Circle:
      painter.drawEllipse(box);
      break;
    case TMarker::Square:
      painter.drawRect(box.adjusted(0.4, 0.4, -0.4, -0.4));
      break;
    case TMarker::Triangle:
      painter.drawPolygon(QPolygonF({{at.x(), box.top() - 0.4}, box.bottomRight(), box.bottomLeft()}));
      break;
    case TMarker::Diamond:
      painter.drawPolygon(QPolygonF({{at.x(), box.top() - 0.8},
                                     {box.right() + 0.8, at.y()},
                                     {at.x(), box.bottom() + 0.8},
                                     {box.left() - 0.8, at.y()}}));
      break;
  }
}

std::optional<std::size_t> TLegendRow::EntryAt(const QPointF& position) const {
  const QPoint at = position.toPoint() - mRect.topLeft();
  const auto found = std::ranges::find_if(FPlaces, [&at](const QRect& place) { return place.contains(at); });
  const auto entry = static_cast<std::size_t>(found - FPlaces.begin());
  // Entries that were set since the last picture have no places yet.
  return entry < std::min(FPlaces.size(), FContents.entries.size()) ? std::optional(entry) : std::nullopt;
}

TLegendContents TLegendRow::ContentsForPicture(const QString& caption) const {
  TLegendContents contents{caption, {}, FContents.entries};
  if (FContents.icon.isNull() && !FContents.title.isEmpty()) {
    contents.title += (caption.isEmpty() ? "" : " · ") + FContents.title;
  }
  std::erase_if(contents.entries, [](const TLegendEntry& entry) { return !entry.shown; });
  return contents;
}

void TLegendRow::update(UpdatePhase phase) {
  if (phase == upPreparation) PlaceEntries(mParentPlot->viewport().width());
  QCPLayoutElement::update(phase);
}

QSize TLegendRow::minimumOuterSizeHint() const {
  return {1, FRows > 0 ? FRows * (Metrics().height() + 2) + 4 : 0};
}

QSize TLegendRow::maximumOuterSizeHint() const {
  return {QWIDGETSIZE_MAX, minimumOuterSizeHint().height()};
}

int TLegendRow::WidthOf(const TLegendEntry& entry) const {
  return Metrics().horizontalAdvance(entry.name) + kSample + kGap + kBetween;
}

// Hidden series take what the shown ones leave of their row. Where that is too short even for the sign of those without
// room, a row begins, and all have room in it.
std::vector<bool> TLegendRow::Chosen(int used, int room) const {
  int hidden = 0;
  for (const TLegendEntry& entry : FContents.entries) hidden += entry.shown ? 0 : WidthOf(entry);
  const bool beginRow = used <= room && used + std::min(hidden, MoreWidth()) > room;
  if (beginRow) return std::vector<bool>(FContents.entries.size(), true);
  if (used + hidden > room) room -= MoreWidth();
  std::vector<bool> chosen;
  for (const TLegendEntry& entry : FContents.entries) {
    chosen.push_back(entry.shown || used + WidthOf(entry) <= room);
    if (!entry.shown && chosen.back()) used += WidthOf(entry);
  }
  return chosen;
}

void TLegendRow::PlaceEntries(int width) {
  const int height = Metrics().height() + 2;
  const int room = width - 2 * kSide;
  const QString& title = FContents.title;
  const int wanted = title.isEmpty() ? 0 : IconWidth() + Metrics().horizontalAdvance(title) + 2 * kBetween;
  int shown = 0;
  for (const TLegendEntry& entry : FContents.entries) shown += entry.shown ? WidthOf(entry) : 0;
  // A title that leaves no room for the entries gets a row of its own, and is shortened if that is too short.
  const bool alone = !title.isEmpty() && !FContents.entries.empty() && wanted + shown > room;
  FTitleWidth = std::min(wanted, room);
  std::vector<int> rows(alone ? 2 : 1);  // the width of the entries in each
  int used = alone ? 0 : wanted;
  const std::vector<bool> chosen = Chosen(used + shown, room);
  using TPlace = std::pair<std::size_t, int>;  // the row, and the place in it
  const auto put = [&](int size, int limit) -> std::optional<TPlace> {
    if (used + size > limit && rows.back() > 0) {
      if (rows.size() == kMaxRows) return std::nullopt;
      rows.push_back(0);
      used = 0;
    }
    used += size;
    rows.back() += size;
    return TPlace(rows.size() - 1, rows.back() - size);
  };
  std::vector<std::optional<TPlace>> places(FContents.entries.size());
  for (std::size_t i = 0; i < places.size(); ++i) {
    const bool last = rows.size() == kMaxRows;
    if (chosen[i]) places[i] = put(WidthOf(FContents.entries[i]), last ? room - MoreWidth() : room);
  }
  std::optional<TPlace> more;
  const auto without = [](const auto& place) { return !place; };
  if (std::ranges::any_of(places, without)) more = put(MoreWidth(), room);

  const auto rectOf = [&](const std::optional<TPlace>& place, int size) {
    if (!place) return QRect();
    const int begin = std::max(kSide, width - kSide - (rows[place->first] - kBetween));
    return QRect(begin + place->second, static_cast<int>(place->first) * height + 2, size - kBetween, height);
  };
  FRows = FHidden || (title.isEmpty() && FContents.entries.empty()) ? 0 : static_cast<int>(rows.size());
  FPlaces.clear();
  FMore = FRows > 0 ? rectOf(more, MoreWidth()) : QRect();
  if (FRows == 0) return;
  for (std::size_t i = 0; i < places.size(); ++i) FPlaces.push_back(rectOf(places[i], WidthOf(FContents.entries[i])));
}

std::vector<std::size_t> TLegendRow::EntriesLeftOut() const {
  std::vector<std::size_t> entries;
  for (std::size_t i = 0; i < std::min(FPlaces.size(), FContents.entries.size()); ++i) {
    if (FPlaces[i].isEmpty()) entries.push_back(i);
  }
  return entries;
}

bool TLegendRow::IsOnMore(const QPointF& position) const {
  return FMore.contains(position.toPoint() - mRect.topLeft());
}

QString TLegendRow::TitleWithin(int width) const {
  const QFontMetrics metrics = Metrics();
  if (metrics.horizontalAdvance(FContents.title) <= width) return FContents.title;
  const QString between = " · ";
  QStringList parts = FContents.title.split(between);
  while (parts.size() > 1 && metrics.horizontalAdvance(parts.join(between) + " …") > width) parts.removeLast();
  return metrics.elidedText(parts.join(between) + " …", Qt::ElideRight, width);
}

QString TLegendRow::CutTitleAt(const QPoint& position) const {
  const bool cut = TitleWithin(FTitleWidth - IconWidth()) != FContents.title;
  return cut && IsOnTitle(position) ? FContents.title : QString();
}

bool TLegendRow::IsOnTitle(const QPoint& position) const {
  const QRect title(mRect.left() + kSide, mRect.top(), FTitleWidth, Metrics().height() + 4);
  return FRows > 0 && !FContents.title.isEmpty() && title.contains(position);
}

void TLegendRow::draw(QCPPainter* painter) {
  if (FRows == 0) return;
  const QPalette palette = mParentPlot->palette();
  const QFontMetrics metrics = Metrics();
  painter->setFont(mParentPlot->font());
  if (!FContents.title.isEmpty()) {
    painter->setPen(palette.color(QPalette::Text));
    const QRect row(mRect.left() + kSide, mRect.top() + 2, FTitleWidth, metrics.height() + 2);
    FContents.icon.paint(painter, row, Qt::AlignLeft | Qt::AlignVCenter);
    const QRect place = row.adjusted(IconWidth(), 0, 0, 0);
    painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter, TitleWithin(place.width()));
  }
  if (!FMore.isEmpty()) {
    painter->setPen(palette.color(QPalette::Text));
    painter->drawText(FMore.translated(mRect.topLeft()), Qt::AlignCenter, kMore);
  }
  for (std::size_t i = 0; i < FPlaces.size(); ++i) {
    if (FPlaces[i].isEmpty()) continue;
    const TLegendEntry& entry = FContents.entries[i];
    const QRect place = FPlaces[i].translated(mRect.topLeft());
    QColor ink = entry.ink;
    QColor text = palette.color(QPalette::Text);
    QFont font = mParentPlot->font();
    if (!entry.shown) {
      ink.setAlphaF(0.35F);
      text.setAlphaF(0.45F);
      font.setStrikeOut(true);
    }
    DrawSample(*painter, place, entry, ink);
    painter->setFont(font);
    painter->setPen(text);
    painter->drawText(place.adjusted(kSample + kGap, 0, 2, 0), Qt::AlignLeft | Qt::AlignVCenter, entry.name);
  }
}
