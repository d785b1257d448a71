// The line above a chart: what it shows at the left, its series at the right, in more rows where one is too short.
// Main thread only.
#pragma once

#include <qcustomplot.h>

#include <optional>
#include <vector>

struct TLegendEntry {
  QString name;
  QColor ink;
  bool shown = true;  // else faint and struck out
};

class TLegendRow final : public QCPLayoutElement {
 public:
  explicit TLegendRow(QCustomPlot* plot) : QCPLayoutElement(plot) {}

  void SetTitle(const QString& title, const QIcon& icon = {}) {
    FTitle = title;
    FIcon = icon;
  }
  // Takes no room while it is hidden.
  void SetHidden(bool hidden) { FHidden = hidden; }
  // The whole title where it is cut, at a position on it; else empty.
  [[nodiscard]] QString CutTitleAt(const QPoint& position) const;
  [[nodiscard]] bool IsOnTitle(const QPoint& position) const;
  [[nodiscard]] const QString& Title() const { return FTitle; }
  void SetEntries(std::vector<TLegendEntry> entries) { FEntries = std::move(entries); }
  [[nodiscard]] std::optional<std::size_t> EntryAt(const QPointF& position) const;

  void update(UpdatePhase phase) override;
  [[nodiscard]] QSize minimumOuterSizeHint() const override;
  [[nodiscard]] QSize maximumOuterSizeHint() const override;

 protected:
  void draw(QCPPainter* painter) override;

 private:
  [[nodiscard]] QFontMetrics Metrics() const { return QFontMetrics(mParentPlot->font(), mParentPlot); }
  [[nodiscard]] int IconWidth() const { return FIcon.isNull() ? 0 : Metrics().height() + 6; }
  void PlaceEntries(int width);
  // As much of the title as fits: without its last parts, which " · " joins, then cut.
  [[nodiscard]] QString TitleWithin(int width) const;

  QString FTitle;
  QIcon FIcon;
  std::vector<TLegendEntry> FEntries;
  std::vector<QRect> FPlaces;  // of each entry, from the element's top left; empty without room
  int FTitleWidth = 0;
  bool FHidden = false;
  int FRows = 0;
};
