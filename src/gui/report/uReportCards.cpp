#include "gui/report/uReportCards.h"

#include <algorithm>

#include "gui/common/uQtText.h"
#include "gui/report/uEventCard.h"
#include "gui/report/uPaperText.h"

namespace {

constexpr double kCardGap = 10;  // pt between cards

struct TCardGrid {
  std::size_t columns, rows;
};

TCardGrid CardGridOf(const TReportConfig& config) {
  switch (config.cardsPerPage) {
    case 2:
      return config.landscape ? TCardGrid{2, 1} : TCardGrid{1, 2};
    case 6:
      return config.landscape ? TCardGrid{3, 2} : TCardGrid{2, 3};
    default:
      return {2, 2};
  }
}

void PaintCard(QPainter& painter, const QRectF& place, std::size_t row, const TReportData& data) {
  const TCardLook look;
  const TEventCard card = MakeEventCard(data.Mission(), data.facts.display, data.facts.limits, row);
  PaintEventCard(painter, place, card, look);
  PaintCardChart(painter, CardChartRect(card, place), data.Mission().Events.GetItem(row), data.facts.display, look);
}

}  // namespace

void AddEventCards(TPageFlow& flow, const TReportData& data) {
  const auto [columns, rows] = CardGridOf(data.config);
  const std::vector<std::uint32_t>& cards = data.facts.cards;
  // The first section stands on the page of the head, another begins a page.
  const double room = flow.Bookmarks().empty() ? flow.Room() : flow.Area().height();
  const QString which = AsSentence(CardsTitle(data.facts, data.config, data.Mission()));
  const QString curves = QObject::tr("Curves: X solid, Y dashed, Z dotted; acceleration in g.");
  const double heading = TPageFlow::HeadingHeight() + flow.CaptionHeight(which) + flow.CaptionHeight(curves);
  const double height = (room - heading) / static_cast<double>(rows) - kCardGap;
  const double width = (flow.Width() + kCardGap) / static_cast<double>(columns) - kCardGap;
  flow.AddHeading(QObject::tr("Event cards"),
                  cards.empty() ? LineHeight(TTextStyle::Body) : room - TPageFlow::HeadingHeight());
  flow.AddCaption(which);
  if (!cards.empty()) flow.AddCaption(curves);
  for (std::size_t first = 0; first < cards.size(); first += columns) {
    const std::size_t last = std::min(first + columns, cards.size());
    flow.Add(height, [&data, width, first, last](QPainter& painter, const QRectF& rect) {
      for (std::size_t i = first; i < last; ++i) {
        const double left = rect.left() + static_cast<double>(i - first) * (width + kCardGap);
        PaintCard(painter, {left, rect.top(), width, rect.height()}, data.facts.cards[i], data);
      }
    });
    flow.AddGap(kCardGap);
  }
}
