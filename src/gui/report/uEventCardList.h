// The cards of the visible events in the report's time, in the order of the grids. Only cards in sight are made and
// painted; the pictures of their charts are kept in the "Chart" column of the cards table. Main thread only.
#pragma once

#include <QAbstractScrollArea>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "analysis/uDataset.h"
#include "gui/report/uEventCard.h"

class TEventCardList : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit TEventCardList(QWidget* parent);

  // Of the events that pass the mission's filter and begin in `time`; call again when filter, order, settings or the
  // time change. The mission is borrowed until other cards or none (nullptr) are shown.
  void ShowCards(const TShownMission* mission, const TRange& time = {});
  [[nodiscard]] std::size_t Count() const { return FEvents.size(); }
  // Frames the card and scrolls to it; nothing frames none.
  void SetCurrent(std::optional<std::size_t> event);

 signals:
  void EventChosen(std::size_t event);
  // A double-click or Enter.
  void EventOpened(std::size_t event);

 protected:
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  [[nodiscard]] int Columns() const;
  [[nodiscard]] QSize CardSize() const;                // px
  [[nodiscard]] QRect RectOf(std::size_t card) const;  // in the viewport
  [[nodiscard]] std::optional<std::size_t> CardAt(const QPoint& at) const;
  [[nodiscard]] std::optional<std::size_t> CurrentCard() const;
  void LayOut();
  void ScrollTo(std::size_t card);
  void PaintCard(QPainter& painter, const QRect& place, std::size_t event);
  [[nodiscard]] const TEventCard& CardOf(std::size_t event);
  [[nodiscard]] QImage ChartOf(std::size_t event, const QRectF& chart);

  const TShownMission* FMission = nullptr;
  TDataset FTable;  // a companion of the cards table
  std::size_t FChartField = 0;
  std::optional<TVerdictLimits> FLimits;
  std::vector<std::uint32_t> FEvents;
  std::optional<std::size_t> FCurrent;                 // an event
  std::unordered_map<std::size_t, TEventCard> FCards;  // by event; some of those that were painted
};
