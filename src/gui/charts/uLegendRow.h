// The line above a chart: what it shows at the left, its series at the right, in more rows where one is too short.
// Main thread only.
#pragma once

#include <qcustomplot.h>

#include <optional>
#include <vector>

// Shapes of dots, for paper without colours.
enum class TMarker { Circle, Square, Triangle, Diamond };
void DrawMarker(QPainter& painter, TMarker marker, const QPointF& at, double radius, const QColor& ink);

// A pen with dashes in px, whatever its width.
QPen DashedPen(const QColor& ink, double width, const QList<qreal>& dashes);

struct TLegendEntry {
  QString name;
  QColor ink;
  bool shown = true;                   // else faint and struck out
  QList<qreal> dashes = {};            // px of lines and gaps in turn; none: solid
  std::optional<TMarker> marker = {};  // in place of the line
};

struct TLegendContents {
  QString title;
  QIcon icon;
  std::vector<TLegendEntry> entries;
};

class TLegendRow final : public QCPLayoutElement {
 public:
  explicit TLegendRow(QCustomPlot* plot) : QCPLayoutElement(plot) {}

  void SetTitle(const QString& title, const QIcon& icon = {}) {
    FContents.title = title;
    FContents.icon = icon;
  }
  // Takes no room while it is hidden.
  void SetHidden(bool hidden) { FHidden = hidden; }
  [[nodiscard]] bool IsHidden() const { return FHidden; }
  // The whole title where it is cut, at a position on it; else empty.
  [[nodiscard]] QString CutTitleAt(const QPoint& position) const;
  [[nodiscard]] bool IsOnTitle(const QPoint& position) const;
  [[nodiscard]] const QString& Title() const { return FContents.title; }
  void SetEntries(std::vector<TLegendEntry> entries) { FContents.entries = std::move(entries); }
  [[nodiscard]] const TLegendContents& Contents() const { return FContents; }
  void SetContents(TLegendContents contents) { FContents = std::move(contents); }
  // What a picture file says: a caption before the title, no state of the window, which is a title with an icon, and no
  // entry that is not shown.
  [[nodiscard]] TLegendContents ContentsForPicture(const QString& caption) const;
  [[nodiscard]] std::optional<std::size_t> EntryAt(const QPointF& position) const;
  // The entries that found no room, for which "…" stands at the end of the row.
  [[nodiscard]] std::vector<std::size_t> EntriesLeftOut() const;
  [[nodiscard]] bool IsOnMore(const QPointF& position) const;

  void update(UpdatePhase phase) override;
  [[nodiscard]] QSize minimumOuterSizeHint() const override;
  [[nodiscard]] QSize maximumOuterSizeHint() const override;

 protected:
  void draw(QCPPainter* painter) override;

 private:
  [[nodiscard]] QFontMetrics Metrics() const { return QFontMetrics(mParentPlot->font(), mParentPlot); }
  [[nodiscard]] int IconWidth() const { return FContents.icon.isNull() ? 0 : Metrics().height() + 6; }
  void PlaceEntries(int width);
  [[nodiscard]] int WidthOf(const TLegendEntry& entry) const;
  [[nodiscard]] int MoreWidth() const { return Metrics().height() * 2; }
  // The shown ones, and those of the others that have room in that width beside `used` px.
  [[nodiscard]] std::vector<bool> Chosen(int used, int room) const;
  // As much of the title as fits: without its last parts, which " · " joins, then cut.
  [[nodiscard]] QString TitleWithin(int width) const;

  TLegendContents FContents;
  std::vector<QRect> FPlaces;  // of each entry, from the element's top left; empty without room
  QRect FMore;                 // of "…"; empty while every entry has its place
  int FTitleWidth = 0;
  bool FHidden = false;
  int FRows = 0;
};
