#include "gui/report/uReportPages.h"

#include <QDateTime>
#include <QPageSize>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "gui/common/uQtText.h"
#include "gui/report/uPaperText.h"
#include "gui/report/uReportCharts.h"
#include "gui/report/uReportData.h"
#include "gui/report/uReportSections.h"

namespace {

constexpr qsizetype kMaxText = 300;  // characters; a header may hold 64 KiB

QSizeF SizeOf(const TReportConfig& config) {
  const auto id = config.paper == TReportPaper::A4 ? QPageSize::A4 : QPageSize::Letter;
  const QSizeF size = QPageSize::size(id, QPageSize::Point);
  return config.landscape ? size.transposed() : size;
}

}  // namespace

QString NumberText(TQuantity quantity, double value, const TReportData& data) {
  return QtText(MaskFloat(data.facts.display.FormatOf(quantity), value));
}

QString MomentText(double time) {
  return QtText(FormatDateTime(DateTimeMask(), time));
}

QString PlainText(std::string_view utf8) {
  return ShownText(utf8, kMaxText);
}

QString AsSentence(const std::string& text) {
  constexpr qsizetype kMaxSentence = 2500;  // characters; the names in it may be of any length
  QString sentence = ShownText(text, kMaxSentence);
  if (!sentence.isEmpty()) sentence[0] = sentence[0].toUpper();
  return sentence + '.';
}

double LocalTimeNow() {
  const QDateTime now = QDateTime::currentDateTime();
  const double days = static_cast<double>(QDate(1899, 12, 30).daysTo(now.date()));
  return days + now.time().msecsSinceStartOfDay() / kMsPerDay;
}

TReportPages::TReportPages(const TReportContents& contents, const TReportConfig& config)
    : FData(new TReportData{contents, config, FactsOf(contents.mission, config)}),
      FCharts(std::make_unique<TReportCharts>(*FData)),
      FFlow(SizeOf(config)) {
  AddSections(FFlow, *FData, *FCharts);
  FFlow.DropEmptyPage();
}

TReportPages::~TReportPages() = default;

QString TReportPages::Subject() const {
  const TMissionData& mission = FData->Mission().Data;
  QStringList parts;
  for (const std::string& text : {mission.sID, mission.sTitle}) {
    if (const QString part = PlainText(text).trimmed(); !part.isEmpty()) parts << part;
  }
  return parts.join(" · ");
}

void TReportPages::PaintFooter(QPainter& painter, int page) const {
  constexpr double kGap = 12;  // pt between the two texts
  const QRectF area = FFlow.Area();
  const double y = area.bottom() + 16;
  painter.setPen(QPen(kPaperHairline, 0.5));
  painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
  const QString date = QtText(FormatDateTime(ShortDateFormat(), FData->contents.madeAt));
  const QString right = QObject::tr("%1 · ShockScope %2 · page %3 of %4")
                            .arg(date, PlainText(FData->contents.version))
                            .arg(page + 1)
                            .arg(FFlow.Count());
  const double width = TextWidth(TTextStyle::Caption, right);
  const double height = LineHeight(TTextStyle::Caption);
  DrawLine(painter, {area.right() - width, y + 4, width, height}, TTextStyle::Caption, right, kPaperSecondaryInk);
  QString left = Subject();
  if (!FData->contents.file.empty()) {
    left += (left.isEmpty() ? "" : " · ") + PlainText(Utf8FromPath(FData->contents.file.filename()));
  }
  DrawLine(painter, {area.left(), y + 4, area.width() - width - kGap, height}, TTextStyle::Caption, left,
           kPaperSecondaryInk);
}

QString TReportPages::Title() const {
  const QString subject = Subject();
  return subject.isEmpty() ? QObject::tr("Shock report") : QObject::tr("Shock report · %1").arg(subject);
}

QString TReportPages::Author() const {
  const QString company = PlainText(FData->facts.display.company).trimmed();
  return company.isEmpty() ? PlainText(FData->Mission().Data.sOperator) : company;
}

QString TReportPages::Filtered() const {
  return PlainText(FData->facts.filtered);
}

void TReportPages::SetSha256(const std::string& sha256) {
  FData->contents.sha256 = sha256;
}

void TReportPages::Paint(QPainter& painter, int page) const {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  FFlow.Paint(painter, page);
  PaintFooter(painter, page);
  painter.restore();
}
