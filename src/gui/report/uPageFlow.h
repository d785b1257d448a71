// Pages that are filled from top to bottom. A piece of a page is a height and a function that paints it later. Lengths
// are points. Main thread only.
#pragma once

#include <QPainter>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <functional>
#include <vector>

// A place that a reader may jump to.
struct TReportBookmark {
  QString title;
  int page;  // from 0
};

class TPageFlow {
 public:
  // Paints into a rect of the page.
  using TPaint = std::function<void(QPainter&, const QRectF&)>;

  explicit TPageFlow(const QSizeF& page) : FPage(page) {}

  [[nodiscard]] const QSizeF& PageSize() const { return FPage; }
  // Of a page, without margins and footer.
  [[nodiscard]] QRectF Area() const;
  [[nodiscard]] double Width() const { return Area().width(); }
  // Height that is left on the current page.
  [[nodiscard]] double Room() const;

  // On the current page, or on the next where this one has too little room. Not higher than a page.
  void Add(double height, TPaint paint);
  // Left out at the top of a page.
  void AddGap(double height);
  // To the current page.
  void AddBookmark(const QString& title);
  // A heading, together with at least `with` of what follows.
  void AddHeading(const QString& title, double with, bool hasBookmark = true);
  // With the gap above it.
  static double HeadingHeight();
  // A heading inside a section, without a bookmark.
  void AddSubheading(const QString& title, double with);
  void AddParagraph(const QString& text);
  void AddCaption(const QString& text);
  [[nodiscard]] double CaptionHeight(const QString& text) const;
  // Nothing while the current page is empty.
  void BeginPage();
  // After the last piece: a page that was begun and got none goes.
  void DropEmptyPage();

  [[nodiscard]] int Count() const { return static_cast<int>(FPieces.size()); }
  [[nodiscard]] const std::vector<TReportBookmark>& Bookmarks() const { return FBookmarks; }
  // The pieces of a page.
  void Paint(QPainter& painter, int page) const;

 private:
  struct TPiece {
    QRectF rect;
    TPaint paint;
  };
  void Reserve(double height);

  QSizeF FPage;
  double FUsed = 0;                                                       // of the current page's area
  std::vector<std::vector<TPiece>> FPieces = {1, std::vector<TPiece>()};  // by page
  std::vector<TReportBookmark> FBookmarks;
};
