// Shows pages below each other. Only pages in sight are painted; a picture of each is kept while it is near. Main
// thread only.
#pragma once

#include <QAbstractScrollArea>
#include <QPixmap>
#include <map>
#include <optional>

class TReportPages;

inline constexpr double kZoomStep = 1.25;  // of a step of the wheel, a key or a button

class TPageView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  enum class TFit { None, Width, Page };

  // `name` is the object's, `title` what screen readers say.
  TPageView(const QString& name, const QString& title, QWidget* parent);

  // Borrowed until other pages or none are shown; the current page stays where there is one of its number.
  void ShowPages(const TReportPages* pages);
  // The pages have other contents.
  void Refresh();
  // Stays in force when the view gets another size; ZoomBy ends it.
  void SetFit(TFit fit);
  void ZoomBy(double factor);
  // 1 is the real size.
  [[nodiscard]] double Zoom() const { return FZoom; }

  [[nodiscard]] int PageCount() const;
  // From 0: the page in the middle of the view.
  [[nodiscard]] int CurrentPage() const;
  void GoToPage(int page);
  // A frame around one page.
  void SetMarkedPage(std::optional<int> page);

 signals:
  // Another page is current, or there is another number of pages.
  void PageChanged();
  void ZoomChanged();
  void PageClicked(int page);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  [[nodiscard]] double PixelsAPoint() const;
  [[nodiscard]] QSize PagePixels() const;
  [[nodiscard]] QRect RectOf(int page) const;  // in the viewport
  void SetZoom(double zoom);
  void FitZoom();
  void LayOut();
  [[nodiscard]] const QPixmap& PictureOf(int page);

  const TReportPages* FPages = nullptr;
  TFit FFit = TFit::Width;
  double FZoom = 1;
  int FShownPage = -1;
  std::optional<int> FMarked;
  std::map<int, QPixmap> FPictures;
};
