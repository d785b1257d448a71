// Tables on pages: titles repeat on every page, and cells are formatted when their page is painted. A table that is too
// wide is divided into several, each with the key columns. Main thread only.
#pragma once

#include <QString>
#include <cstddef>
#include <functional>
#include <vector>

#include "gui/report/uPageFlow.h"

struct TPaperColumn {
  QString title;
  QString unit;                              // below the title; may be empty
  std::function<QString(std::size_t)> text;  // of a row, one line
  bool isNumber = true;                      // right-aligned
  bool isKey = false;                        // stands in every part
  // As wide as the widest cell; empty: the cells are measured, which is for short tables.
  QString widest = {};
};

struct TPaperTable {
  std::vector<TPaperColumn> columns;
  std::size_t rows = 0;
  QString note = {};  // behind the caption
};

// pt. A longer title of a number column is cut with "…", so that long names do not divide a table.
inline constexpr double kMaxHead = 66;

// With the heading, which is a bookmark, and a caption below it; an empty table says `none` instead.
void AddTable(TPageFlow& flow, const QString& heading, const TPaperTable& table, const QString& none,
              const QString& caption = {});
// The same below a heading that is there.
void AddPlainTable(TPageFlow& flow, const TPaperTable& table);

// Labels and texts, of which long ones take several lines.
struct TPaperFigure {
  QString label;
  QString text;
};
void AddFigures(TPageFlow& flow, const std::vector<TPaperFigure>& figures);
// The same at a place on a page.
double FiguresHeight(const std::vector<TPaperFigure>& figures, double width);
void PaintFigures(QPainter& painter, const QPointF& topLeft, double width, const std::vector<TPaperFigure>& figures);

// The height of what of a table stays together: its titles and a few rows, or all of a short one.
double TableStart(std::size_t rows);
