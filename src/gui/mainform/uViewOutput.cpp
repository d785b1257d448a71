#include "gui/mainform/uViewOutput.h"

#include <QBuffer>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QSvgGenerator>
#include <algorithm>
#include <initializer_list>
#include <new>
#include <stdexcept>

#include "base/uFiles.h"
#include "gui/charts/uAccelerationChart.h"
#include "gui/charts/uChartOnPaper.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uLogos.h"
#include "gui/common/uQtText.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uCommandTable.h"
#include "gui/mainform/uMainParts.h"
#include "gui/report/uPageView.h"
#include "gui/report/uReportConfigDialog.h"
#include "gui/report/uReportPanel.h"
#include "gui/shock/uShockPanel.h"
#include "platform/uSha256.h"
#include "shell/uExportCommands.h"
#include "shell/uStartUp.h"

namespace {

// Of the file, without its extension.
QString RecordingName(const TFileFlow& flow) {
  return QtText(Utf8FromPath(PathFromUtf8(flow.FileName()).stem()));
}

// These sections in this order, the others off behind them.
void ShowOnly(std::initializer_list<TReportSection> sections, TReportConfig& config) {
  const auto place = [&](const TReportSectionChoice& choice) { return std::ranges::find(sections, choice.section); };
  for (TReportSectionChoice& choice : config.sections) choice.on = place(choice) != sections.end();
  std::ranges::stable_sort(config.sections, {}, place);
}

// What the view in front becomes on paper. Overview and shock view are limited to the navigator's band.
TReportConfig ConfigOf(const TCommandTargets& on) {
  const TReportConfig& report = on.parts.report->Config();
  if (on.flow.View() == TView::Report) return report;
  TReportConfig config;
  config.paper = report.paper;
  if (on.flow.View() == TView::Overview) {
    ShowOnly({TReportSection::Verdict, TReportSection::EventsChart, TReportSection::SensorsChart,
              TReportSection::ImportantEvents},
             config);
  } else {
    ShowOnly({TReportSection::SelectedEvent, TReportSection::EventsChart, TReportSection::Tables}, config);
  }
  const TTimeSpan& band = on.flow.Mission().Band;
  if (const auto whole = on.views.NavigatorSpan(); whole && band != *whole) config.time = {band.start, band.end};
  return config;
}

TReportContents ContentsOf(const TCommandTargets& on) {
  TReportContents contents = ReportContents(on.flow.Mission(), on.parts, on.flow, on.program);
  if (on.flow.View() == TView::Shock) {
    TAccelerationChart& chart = on.parts.shock->ChartInFront();
    contents.shownEvent = TShownEvent{chart.ShownName(), [&chart](QPainter& painter, const QRectF& place) {
                                        DrawShownOnPaper(chart, painter, place);
                                      }};
  }
  return contents;
}

// "stairs ID-8 spectrum": the recording and, of the shock view, what is in front.
QString ProposedPdfName(const TCommandTargets& on) {
  QStringList parts{RecordingName(on.flow)};
  if (on.flow.View() == TView::Overview) parts << QObject::tr("overview");
  if (on.flow.View() == TView::Shock) {
    const auto event = on.flow.Mission().SelectedEvent;
    parts << (event ? QString("ID-%1").arg(*event) : QString()) << on.parts.shock->ChartInFront().ShownName();
  }
  parts.removeAll(QString());
  return parts.join(' ');
}

// With the checksum, which takes time for a large file.
TReportContents ContentsOf(const TCommandTargets& on, IProgress& progress) {
  TReportContents contents = ContentsOf(on);
  contents.sha256 = Sha256Of(contents.file, progress);
  return contents;
}

// Of a picture in a document, however small the chart is on the screen.
QSize PictureSize(const TTimeChart& chart) {
  constexpr QSize kMinPicture(640, 400);  // px
  return chart.size().expandedTo(kMinPicture);
}

void WriteSvg(TTimeChart& chart, const QString& caption, QIODevice& file) {
  QSvgGenerator svg;
  svg.setOutputDevice(&file);
  const QSize size = PictureSize(chart);
  svg.setSize(size);
  svg.setViewBox(QRect(QPoint(), size));
  svg.setResolution(chart.logicalDpiX());
  svg.setTitle(QObject::tr("ShockScope"));  // not the caption: Qt 6.4 does not escape a title
  QCPPainter painter;
  painter.setMode(QCPPainter::pmVectorized);
  if (!painter.begin(&svg)) throw std::runtime_error("The picture cannot be made.");
  chart.DrawWith(painter, caption, size);
}

QImage Scaled(TTimeChart& chart, const QString& caption, int scale) {
  const double pixels = scale * chart.devicePixelRatioF();
  const QSize size = PictureSize(chart);
  QImage picture((QSizeF(size) * pixels).toSize(), QImage::Format_RGB32);
  if (picture.isNull()) throw std::bad_alloc();
  QCPPainter painter(&picture);
  painter.scale(pixels, pixels);
  chart.DrawWith(painter, caption, size);
  return picture;
}

}  // namespace

TReportContents ReportContents(const TShownMission& mission, const TMainParts& parts, const TFileFlow& flow,
                               const TProgram& program) {
  return {.mission = mission,
          .logos = {parts.logos->Image(TLogos::kCompany), parts.logos->Image(TLogos::kReport)},
          .file = PathFromUtf8(flow.FileName()),
          .sha256 = {},
          .version = program.version,
          .madeAt = LocalTimeNow()};
}

void PrintView(const TCommandTargets& on) {
  if (!on.flow.FileShown()) return;
  const TReportConfig config = ConfigOf(on);
  const int count = TReportPages(ContentsOf(on), config).Count();
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(RecordingName(on.flow));
  printer.setCreator(QObject::tr("ShockScope"));
  QPrintDialog dialog(&printer, &on.form);
  dialog.setObjectName("dlgPrint");
  dialog.setOption(QAbstractPrintDialog::PrintPageRange);
  dialog.setMinMax(1, count);
  if (dialog.exec() != QDialog::Accepted) return;
  const bool some = printer.printRange() == QPrinter::PageRange;
  const QString file = printer.outputFileName();
  on.exports.Print(Utf8(file.isEmpty() ? printer.printerName() : file), [&](IProgress& progress) {
    const TReportPages pages(ContentsOf(on, progress), config);
    const int first = some ? std::clamp(printer.fromPage(), 1, count) : 1;
    PaintPages(printer, pages, first - 1, (some ? std::clamp(printer.toPage(), first, count) : count) - 1, progress);
  });
}

void PreviewView(const TCommandTargets& on) {
  if (!on.flow.FileShown()) return;
  const TReportPages pages(ContentsOf(on), ConfigOf(on));
  QDialog dialog(&on.form);
  dialog.setObjectName("dlgPrintPreview");
  dialog.setWindowTitle(pages.Title());
  dialog.resize(on.form.size() * 0.9);
  auto* view = new TPageView("scrlPrintPreview", QObject::tr("Print preview"), &dialog);
  auto* number = new QLabel(&dialog);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  enum TChoice { kPrint = 2, kPdf };
  for (const auto& [name, caption, choice] : {std::tuple{"btnPreviewPrint", QObject::tr("&Print…"), kPrint},
                                              std::tuple{"btnPreviewPdf", QObject::tr("&Save as PDF…"), kPdf}}) {
    auto* button = Named(buttons->addButton(caption, QDialogButtonBox::ActionRole), name);
    QObject::connect(button, &QPushButton::clicked, &dialog, [&dialog, choice = choice] { dialog.done(choice); });
  }
  QObject::connect(view, &TPageView::PageChanged, number, [view, number] {
    number->setText(QObject::tr("Page %1 of %2").arg(view->CurrentPage() + 1).arg(view->PageCount()));
  });
  MakeColumn(&dialog, {{view, 1}, number, buttons});
  view->SetFit(TPageView::TFit::Page);
  view->ShowPages(&pages);
  view->setFocus();
  const int choice = dialog.exec();
  view->ShowPages(nullptr);
  if (choice == kPrint) PrintView(on);
  if (choice == kPdf) SaveViewAsPdf(on);
}

void SaveViewAsPdf(const TCommandTargets& on) {
  if (!on.flow.FileShown()) return;
  const TReportConfig config = ConfigOf(on);
  on.exports.SavePdf(Utf8(ProposedPdfName(on)), [&](const std::filesystem::path& file, IProgress& progress) {
    WriteReportPdf(file, TReportPages(ContentsOf(on, progress), config), progress);
  });
}

void ConfigureReport(const TCommandTargets& on, bool timeFirst) {
  if (!on.flow.FileShown()) return;
  TReportConfigDialog dialog(on.parts.report->Config(), on.flow.Mission().Band, &on.form);
  if (timeFirst) dialog.FocusTime();
  if (dialog.exec() == QDialog::Accepted) on.form.btnReportConfigOKClick(dialog.Config());
}

std::string ChartFile(TTimeChart& chart, const QString& caption, TPictureFormat format, int scale) {
  QBuffer file;
  file.open(QIODevice::WriteOnly);
  if (format == TPictureFormat::Svg) {
    WriteSvg(chart, caption, file);
  } else {
    const bool bitmap = format == TPictureFormat::Bitmap;
    const QImage picture = bitmap ? chart.Picture() : Scaled(chart, caption, scale);
    if (!picture.save(&file, bitmap ? "BMP" : "PNG")) throw std::runtime_error("The picture cannot be made.");
  }
  return file.data().toStdString();
}
