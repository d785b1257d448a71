#include "gui/report/uReportPages.h"

#include "gui/common/uQtText.h"

class TReportPages::TLayout {
 public:
  TLayout(const TReportContents& contents, const TReportConfig& config) : FContents(contents), FConfig(config) {}

  const TReportContents FContents;
  const TReportConfig FConfig;
  std::vector<TReportBookmark> FBookmarks;
};

TReportPages::TReportPages(const TReportContents& contents, const TReportConfig& config)
    : FLayout(std::make_unique<TLayout>(contents, config)) {}

TReportPages::~TReportPages() = default;

int TReportPages::Count() const {
  return 1;
}

QSizeF TReportPages::PageSize() const {
  const QSizeF size = FLayout->FConfig.paper == TReportPaper::A4 ? QSizeF(595, 842) : QSizeF(612, 792);
  return FLayout->FConfig.landscape ? size.transposed() : size;
}

const std::vector<TReportBookmark>& TReportPages::Bookmarks() const {
  return FLayout->FBookmarks;
}

QString TReportPages::Title() const {
  return "Shock report";
}

QString TReportPages::Author() const {
  return QtText(FLayout->FContents.mission.Display.company);
}

QString TReportPages::Filtered() const {
  return {};
}

void TReportPages::SetSha256(const std::string& /*sha256*/) {}

void TReportPages::Paint(QPainter& painter, int /*page*/) const {
  painter.drawText(QPointF(54, 72), Title());
}

std::optional<std::size_t> TReportPages::EventAt(int /*page*/, const QPointF& /*at*/) const {
  return std::nullopt;
}
