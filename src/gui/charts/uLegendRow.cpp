#include "gui/charts/uLegendRow.h"

#include <algorithm>

namespace {

constexpr int kSample = 14;   // px, the piece of line before a name
constexpr int kGap = 5;       // between it and the name
constexpr int kBetween = 14;  // between entries
constexpr int kSide = 12;     // left and right of the row
constexpr int kMaxRows = 3;

}  // namespace

std::optional<std::size_t> TLegendRow::EntryAt(const QPointF& position) const {
  const QPoint at = position.toPoint() - mRect.topLeft();
  const auto found = std::ranges::find_if(FPlaces, [&at](const QRect& place) { return place.contains(at); });
  if (found == FPlaces.end()) return std::nullopt;
  return static_cast<std::size_t>(found - FPlaces.begin());
}

TLegendContents TLegendRow::ContentsForPicture(const QString& caption) const {
  TLegendContents contents{caption, {}, FContents.entries};
  if (FContents.icon.isNull() && !FContents.title.isEmpty()) contents.title += " · " + FContents.title;
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

void TLegendRow::PlaceEntries(int width) {
  const QFontMetrics metrics = Metrics();
  const int height = metrics.height() + 2;
  std::vector<std::vector<int>> rows(1);
  int left = kSide;
  const int wanted =
      FContents.title.isEmpty() ? 0 : IconWidth() + metrics.horizontalAdvance(FContents.title) + 2 * kBetween;
  int used = wanted;
  int entriesWidth = 0;
  for (const TLegendEntry& entry : FContents.entries)
    entriesWidth += metrics.horizontalAdvance(entry.name) + kSample + kGap + kBetween;
  // A title that leaves no room for the entries gets a row of its own, and is shortened if that is too short.
  FTitleWidth = std::min(wanted, width - 2 * kSide);
  if (!FContents.title.isEmpty() && wanted + entriesWidth > width - 2 * kSide && !FContents.entries.empty()) {
    rows.emplace_back();
    used = 0;
  }
  for (const TLegendEntry& entry : FContents.entries) {
    const int size = metrics.horizontalAdvance(entry.name) + kSample + kGap + kBetween;
    if (used + size > width - 2 * kSide && !rows.back().empty()) {
      if (rows.size() == kMaxRows) break;
      rows.emplace_back();
      used = 0;
    }
    rows.back().push_back(size);
    used += size;
  }

  FPlaces.clear();
  for (std::size_t row = 0; row < rows.size(); ++row) {
    int total = -kBetween;
    for (const int size : rows[row]) total += size;
    left = std::max(kSide, width - kSide - total);
    for (const int size : rows[row]) {
      FPlaces.emplace_back(left, static_cast<int>(row) * height + 2, size - kBetween, height);
      left += size;
    }
  }
  FRows = FHidden || (FContents.title.isEmpty() && FContents.entries.empty()) ? 0 : static_cast<int>(rows.size());
  if (FRows == 0) FPlaces.clear();
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
  for (std::size_t i = 0; i < FPlaces.size(); ++i) {
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
    painter->setAntialiasing(false);
    painter->fillRect(QRect(place.left(), place.center().y() - 1, kSample, 3), ink);
    painter->setFont(font);
    painter->setPen(text);
    painter->drawText(place.adjusted(kSample + kGap, 0, 2, 0), Qt::AlignLeft | Qt::AlignVCenter, entry.name);
  }
}
