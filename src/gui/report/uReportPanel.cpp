#include "gui/report/uReportPanel.h"

#include <QAbstractTextDocumentLayout>
#include <QLabel>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QScrollArea>
#include <QTextDocument>
#include <QVBoxLayout>

#include "gui/report/uReportDocument.h"

namespace {

constexpr double kMarginInches = 0.7;

}  // namespace

// The pages of a document below each other, always white.
class TReportPage : public QWidget {
 public:
  explicit TReportPage(QWidget* parent) : QWidget(parent) {
    setObjectName("dxLayoutReport");
    setAccessibleName(tr("Report preview"));
  }

  void SetDocument(QTextDocument* document) {
    FDocument = document;
    setFixedSize(sizeHint());
    update();
  }

  [[nodiscard]] QSize sizeHint() const override {
    const int pages = FDocument == nullptr ? 0 : FDocument->pageCount();
    return {PageSize().width() + 2 * kGap, pages * (PageSize().height() + kGap) + kGap};
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    if (FDocument == nullptr) return;
    QPainter painter(this);
    const QSizeF page = FDocument->pageSize();
    for (int i = 0; i < FDocument->pageCount(); ++i) {
      const QRect sheet(QPoint(kGap, kGap + i * (PageSize().height() + kGap)), PageSize());
      painter.fillRect(sheet.translated(2, 2), palette().color(QPalette::Shadow));
      painter.fillRect(sheet, Qt::white);
      painter.save();
      painter.translate(sheet.topLeft());
      painter.translate(0, -i * page.height());
      QAbstractTextDocumentLayout::PaintContext context;
      context.clip = QRectF(0, i * page.height(), page.width(), page.height());
      context.palette.setColor(QPalette::Text, Qt::black);
      painter.setClipRect(context.clip);
      FDocument->documentLayout()->draw(&painter, context);
      painter.restore();
    }
  }

 private:
  static constexpr int kGap = 16;

  // One to one on the screen.
  [[nodiscard]] QSize PageSize() const { return FDocument == nullptr ? QSize() : FDocument->pageSize().toSize(); }

  QTextDocument* FDocument = nullptr;
};

TReportPanel::TReportPanel(QWidget* parent) : QWidget(parent), FPage(new TReportPage(this)) {
  setObjectName("ReportPanel");
  auto* scroll = new QScrollArea(this);
  scroll->setObjectName("scrlReport");
  scroll->setAccessibleName(tr("Report"));
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  auto* content = new QWidget(scroll);
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  for (const char* name : {"dxLayoutItemReportIsFiltered", "dxLayoutItemReportIsFilteredCover"}) {
    auto* filtered = new QLabel(tr("The report is limited to a span of time."), content);
    filtered->setObjectName(name);
    filtered->hide();
    column->addWidget(filtered, 0, Qt::AlignHCenter);
  }
  column->addWidget(FPage, 0, Qt::AlignHCenter);
  // The event cards stand below the pages.
  auto* cards = new QWidget(content);
  cards->setObjectName("pnlEventCards");
  column->addWidget(cards);
  column->addStretch();
  scroll->setWidget(content);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(scroll);
}

TReportPanel::~TReportPanel() = default;

void TReportPanel::ShowReport(const TShownMission& mission) {
  FPage->SetDocument(nullptr);
  FDocument = MakeReport(mission);
  FDocument->setPageSize(QSizeF(QPageSize(QPageSize::A4).sizePixels(logicalDpiX())));
  FDocument->setDocumentMargin(kMarginInches * logicalDpiX());
  FPage->SetDocument(FDocument.get());
}

void TReportPanel::Clear() {
  FPage->SetDocument(nullptr);
  FDocument.reset();
}

void TReportPanel::Print(QPagedPaintDevice& device) const {
  if (FDocument == nullptr) return;
  const std::unique_ptr<QTextDocument> printed(FDocument->clone());
  printed->print(&device);
}
