#include "gui/report/uPageFlow.h"

#include <algorithm>
#include <utility>

#include "gui/report/uPaperText.h"

namespace {

constexpr double kSide = 45;  // pt, the margins
constexpr double kTop = 45;
constexpr double kBottom = 52;  // with the footer
constexpr double kLineGap = 3;  // below a heading's line
constexpr double kBefore = 14;  // above a heading
constexpr double kRounding = 0.01;

}  // namespace

QRectF TPageFlow::Area() const {
  return {kSide, kTop, FPage.width() - 2 * kSide, FPage.height() - kTop - kBottom};
}

double TPageFlow::Room() const {
  return Area().height() - FUsed;
}

void TPageFlow::BeginPage() {
  if (FPieces.back().empty()) return;
  FPieces.emplace_back();
  FUsed = 0;
}

void TPageFlow::DropEmptyPage() {
  if (FPieces.size() > 1 && FPieces.back().empty()) FPieces.pop_back();
}

void TPageFlow::Reserve(double height) {
  if (height > Room() + kRounding) BeginPage();
}

void TPageFlow::Add(double height, TPaint paint) {
  height = std::min(height, Area().height());
  Reserve(height);
  const QRectF area = Area();
  FPieces.back().push_back({QRectF(area.left(), area.top() + FUsed, area.width(), height), std::move(paint)});
  FUsed += height;
}

void TPageFlow::AddGap(double height) {
  if (!FPieces.back().empty()) FUsed = std::min(FUsed + height, Area().height());
}

double TPageFlow::HeadingHeight() {
  return kBefore + LineHeight(TTextStyle::Heading) + 2 + 2 * kLineGap;
}

void TPageFlow::AddBookmark(const QString& title) {
  FBookmarks.push_back({title, Count() - 1});
}

void TPageFlow::AddHeading(const QString& title, double with, bool hasBookmark) {
  const double text = LineHeight(TTextStyle::Heading) + 2;
  const double height = text + 2 * kLineGap;
  AddGap(kBefore);
  Reserve(height + std::min(with, Area().height() - height));
  if (hasBookmark) AddBookmark(title);
  Add(height, [title, text](QPainter& painter, const QRectF& rect) {
    DrawLine(painter, {rect.left(), rect.top(), rect.width(), text}, TTextStyle::Heading, title, kPaperInk);
    painter.setPen(QPen(kPaperHairline, 0.75));
    painter.drawLine(QPointF(rect.left(), rect.top() + text + 1), QPointF(rect.right(), rect.top() + text + 1));
  });
}

void TPageFlow::AddSubheading(const QString& title, double with) {
  const double height = LineHeight(TTextStyle::Strong) + 4;
  AddGap(kBefore / 2);
  Reserve(height + std::min(with, Area().height() - height));
  Add(height, [title](QPainter& painter, const QRectF& rect) {
    DrawLine(painter, rect, TTextStyle::Strong, title, kPaperInk);
  });
}

void TPageFlow::AddParagraph(const QString& text) {
  const TParagraph paragraph(TTextStyle::Body, text, Width());
  Add(paragraph.Height() + 4,
      [paragraph](QPainter& painter, const QRectF& rect) { paragraph.Paint(painter, rect.topLeft(), kPaperInk); });
}

void TPageFlow::AddCaption(const QString& text) {
  const TParagraph paragraph(TTextStyle::Caption, text, Width());
  Add(paragraph.Height() + 4, [paragraph](QPainter& painter, const QRectF& rect) {
    paragraph.Paint(painter, {rect.left(), rect.top() + 2}, kPaperSecondaryInk);
  });
}

double TPageFlow::CaptionHeight(const QString& text) const {
  return TParagraph(TTextStyle::Caption, text, Width()).Height() + 4;
}

void TPageFlow::Paint(QPainter& painter, int page) const {
  for (const TPiece& piece : FPieces.at(static_cast<std::size_t>(page))) {
    painter.save();
    piece.paint(painter, piece.rect);
    painter.restore();
  }
}
