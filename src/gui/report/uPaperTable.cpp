#include "gui/report/uPaperTable.h"

#include <algorithm>
#include <memory>

#include "gui/report/uPaperText.h"

namespace {

constexpr double kCellGap = 9;       // pt between columns
constexpr double kRowSpace = 3;      // above and below the text of a row, together
constexpr double kMaxSpread = 40;    // pt that a column may be wider than its text, so that rows are easy to follow
constexpr double kMaxColumn = 200;   // pt
constexpr double kLabelPart = 0.22;  // of the width, for the labels of figures
constexpr std::size_t kRowsTogether = 3;  // at least, of a long table
constexpr std::size_t kMaxShort = 12;     // rows of a table that stays on one page

double RowHeight() {
  return LineHeight(TTextStyle::Body) + kRowSpace;
}

struct TPlacedColumn {
  TPaperColumn column;
  double left = 0, width = 0;
};

// A table that fits the page.
struct TPart {
  std::vector<TPlacedColumn> columns;
  bool hasUnits = false;

  [[nodiscard]] double Width() const { return columns.back().left + columns.back().width; }
  [[nodiscard]] double TitleHeight() const {
    return LineHeight(TTextStyle::Strong) + (hasUnits ? LineHeight(TTextStyle::Caption) : 0) + kRowSpace + 1;
  }
};

double WidthOf(const TPaperColumn& column, std::size_t rows) {
  const double head = TextWidth(TTextStyle::Strong, column.title);
  double width =
      std::max(column.isNumber ? std::min(head, kMaxHead) : head, TextWidth(TTextStyle::Caption, column.unit));
  if (!column.widest.isEmpty()) {
    width = std::max(width, TextWidth(TTextStyle::Body, column.widest));
  } else {
    for (std::size_t row = 0; row < rows; ++row) {
      width = std::max(width, TextWidth(TTextStyle::Body, column.text(row)));
    }
  }
  return std::min(width, kMaxColumn);
}

// The columns of one part side by side; what is left of the width goes between them.
void PlaceCells(TPart& part, double width) {
  double used = -kCellGap;
  for (const TPlacedColumn& column : part.columns) used += column.width + kCellGap;
  const double spread = std::clamp((width - used) / static_cast<double>(part.columns.size()), 0.0, kMaxSpread);
  double left = 0;
  for (TPlacedColumn& column : part.columns) {
    // Numbers stand at the right end of what they get.
    column.left = left;
    column.width += spread;
    left += column.width + kCellGap;
    part.hasUnits = part.hasUnits || !column.column.unit.isEmpty();
  }
}

// As few parts as there can be.
std::vector<std::shared_ptr<TPart>> PartsOf(const TPaperTable& table, double width) {
  std::vector<TPlacedColumn> keys;
  double keyWidth = 0;
  for (const TPaperColumn& column : table.columns) {
    if (!column.isKey) continue;
    keys.push_back({column, 0, WidthOf(column, table.rows)});
    keyWidth += keys.back().width + kCellGap;
  }
  std::vector<std::shared_ptr<TPart>> parts;
  double used = width + 1;
  for (const TPaperColumn& column : table.columns) {
    if (column.isKey) continue;
    const double own = WidthOf(column, table.rows);
    if (used + own > width) {
      parts.push_back(std::make_shared<TPart>());
      parts.back()->columns = keys;
      used = keyWidth;
    }
    parts.back()->columns.push_back({column, 0, own});
    used += own + kCellGap;
  }
  for (const auto& part : parts) PlaceCells(*part, width);
  return parts;
}

Qt::Alignment AlignOf(const TPaperColumn& column) {
  return (column.isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

void PaintTitles(QPainter& painter, const QRectF& rect, const TPart& part) {
  const double line = LineHeight(TTextStyle::Strong);
  for (const auto& [column, left, width] : part.columns) {
    const QRectF cell(rect.left() + left, rect.top(), width, line);
    DrawLine(painter, cell, TTextStyle::Strong, column.title, kPaperSecondaryInk, AlignOf(column));
    const QRectF below(cell.left(), cell.bottom(), width, LineHeight(TTextStyle::Caption));
    DrawLine(painter, below, TTextStyle::Caption, column.unit, kPaperSecondaryInk, AlignOf(column));
  }
  const double y = rect.top() + part.TitleHeight() - 1;
  painter.setPen(QPen(kPaperInk, 0.75));
  painter.drawLine(QPointF(rect.left(), y), QPointF(rect.left() + part.Width(), y));
}

void PaintRows(QPainter& painter, const QRectF& rect, const TPart& part, std::size_t first, std::size_t count) {
  PaintTitles(painter, rect, part);
  const double height = RowHeight();
  double y = rect.top() + part.TitleHeight();
  for (std::size_t row = first; row < first + count; ++row) {
    for (const auto& [column, left, width] : part.columns) {
      const QRectF cell(rect.left() + left, y, width, height);
      DrawLine(painter, cell, TTextStyle::Body, column.text(row), kPaperInk, AlignOf(column));
    }
    y += height;
    painter.setPen(QPen(kPaperHairline, 0.4));
    painter.drawLine(QPointF(rect.left(), y), QPointF(rect.left() + part.Width(), y));
  }
}

void AddPart(TPageFlow& flow, const std::shared_ptr<TPart>& part, std::size_t rows) {
  const double titles = part->TitleHeight();
  for (std::size_t row = 0; row < rows;) {
    auto fits = static_cast<std::size_t>(std::max(0.0, (flow.Room() - titles) / RowHeight()));
    if (fits < std::min(rows <= kMaxShort ? rows : kRowsTogether, rows - row)) {
      flow.BeginPage();
      fits = std::max<std::size_t>(1, static_cast<std::size_t>((flow.Room() - titles) / RowHeight()));
    }
    const std::size_t count = std::min(fits, rows - row);
    flow.Add(
        titles + static_cast<double>(count) * RowHeight(),
        [part, row, count](QPainter& painter, const QRectF& rect) { PaintRows(painter, rect, *part, row, count); });
    row += count;
  }
}

TParagraph TextOf(const TPaperFigure& figure, double width) {
  return {TTextStyle::Body, figure.text, width * (1 - kLabelPart)};
}

}  // namespace

double TableStart(std::size_t rows) {
  const std::size_t together = rows <= kMaxShort ? rows : kRowsTogether;
  return LineHeight(TTextStyle::Strong) + LineHeight(TTextStyle::Caption) + kRowSpace + 1 +
         static_cast<double>(together) * RowHeight();
}

void AddPlainTable(TPageFlow& flow, const TPaperTable& table) {
  for (const auto& part : PartsOf(table, flow.Width())) {
    AddPart(flow, part, table.rows);
    flow.AddGap(6);
  }
}

void AddTable(TPageFlow& flow, const QString& heading, const TPaperTable& table, const QString& none,
              const QString& caption) {
  const QString words = QString("%1 %2").arg(caption, table.note).trimmed();
  flow.AddHeading(heading, TableStart(table.rows) + (words.isEmpty() ? 0 : flow.CaptionHeight(words)));
  if (table.rows == 0) return flow.AddParagraph(none);
  if (!words.isEmpty()) flow.AddCaption(words);
  const auto parts = PartsOf(table, flow.Width());
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) {
      flow.AddSubheading(QObject::tr("%1, columns %2 of %3").arg(heading).arg(i + 1).arg(parts.size()),
                         TableStart(table.rows));
    }
    AddPart(flow, parts[i], table.rows);
  }
}

void AddFigures(TPageFlow& flow, const std::vector<TPaperFigure>& figures) {
  for (const TPaperFigure& figure : figures) {
    flow.Add(FiguresHeight({figure}, flow.Width()), [figure](QPainter& painter, const QRectF& rect) {
      PaintFigures(painter, rect.topLeft(), rect.width(), {figure});
    });
  }
}

double FiguresHeight(const std::vector<TPaperFigure>& figures, double width) {
  double height = 0;
  for (const TPaperFigure& figure : figures) height += TextOf(figure, width).Height() + kRowSpace;
  return height;
}

void PaintFigures(QPainter& painter, const QPointF& topLeft, double width, const std::vector<TPaperFigure>& figures) {
  const double label = width * kLabelPart;
  double y = topLeft.y();
  for (const TPaperFigure& figure : figures) {
    const QRectF place(topLeft.x(), y, label - kCellGap, LineHeight(TTextStyle::Body));
    DrawLine(painter, place, TTextStyle::Body, figure.label, kPaperSecondaryInk);
    const TParagraph text = TextOf(figure, width);
    text.Paint(painter, {topLeft.x() + label, y}, kPaperInk);
    y += text.Height() + kRowSpace;
  }
}
