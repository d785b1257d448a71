#include "gui/mainform/uViewOutput.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QSvgGenerator>
#include <new>
#include <stdexcept>

#include "base/uFiles.h"
#include "gui/charts/uTimeChart.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/report/uReportPanel.h"
#include "shell/uExportCommands.h"

namespace {

constexpr double kPaperRatio = 3;  // pixels of the picture per pixel of the screen

// Gives a view the light palette and its charts the resolution of paper, until it is destroyed.
class TForPaper {
 public:
  explicit TForPaper(QWidget& view) : FView(view) {
    FView.setPalette(LightPalette());
    FView.setStyleSheet(LightStyleSheet());
    Redraw(kPaperRatio);
  }
  ~TForPaper() {
    FView.setStyleSheet({});
    FView.setPalette(QPalette());
    Redraw(FView.devicePixelRatioF());
  }
  TForPaper(const TForPaper&) = delete;
  TForPaper& operator=(const TForPaper&) = delete;

 private:
  void Redraw(double ratio) {
    for (TTimeChart* chart : FView.findChildren<TTimeChart*>()) {
      chart->setBufferDevicePixelRatio(ratio);
      chart->replot();
    }
  }

  QWidget& FView;
};

// The view as on the screen, with more pixels.
void RenderView(QWidget& view, QPagedPaintDevice& device) {
  QImage picture((QSizeF(view.size()) * kPaperRatio).toSize(), QImage::Format_RGB32);
  if (picture.isNull()) throw std::bad_alloc();
  picture.setDevicePixelRatio(kPaperRatio);
  {
    const TForPaper forPaper(view);
    view.render(&picture);
  }
  QPainter painter(&device);
  if (!painter.isActive()) throw std::runtime_error("The page cannot be painted.");
  painter.setRenderHint(QPainter::LosslessImageRendering);
  const QRectF page = painter.viewport();
  const QSizeF size = QSizeF(view.size()).scaled(page.size(), Qt::KeepAspectRatio);
  painter.drawImage(QRectF(page.topLeft(), size), picture);
}

// Of the file, without its extension.
QString RecordingName(TKorvexMainForm& form) {
  return QtText(Utf8FromPath(PathFromUtf8(form.Flow().FileName()).stem()));
}

void Output(TKorvexMainForm& form, QPagedPaintDevice& device) {
  QWidget& shown = form.View(form.Flow().View());
  if (const auto* report = qobject_cast<const TReportPanel*>(&shown)) {
    report->Print(device);
  } else {
    device.setPageOrientation(QPageLayout::Landscape);
    RenderView(shown, device);
  }
}

void WriteSvg(TTimeChart& chart, const QString& caption, QIODevice& file) {
  QSvgGenerator svg;
  svg.setOutputDevice(&file);
  svg.setSize(chart.size());
  svg.setViewBox(chart.rect());
  svg.setResolution(chart.logicalDpiX());
  svg.setTitle(QObject::tr("ShockScope"));  // not the caption: Qt 6.4 does not escape a title
  QCPPainter painter;
  painter.setMode(QCPPainter::pmVectorized);
  if (!painter.begin(&svg)) throw std::runtime_error("The picture cannot be made.");
  chart.DrawWith(painter, caption);
}

QImage Scaled(TTimeChart& chart, const QString& caption, int scale) {
  const double pixels = scale * chart.devicePixelRatioF();
  QImage picture((QSizeF(chart.size()) * pixels).toSize(), QImage::Format_RGB32);
  if (picture.isNull()) throw std::bad_alloc();
  QCPPainter painter(&picture);
  painter.scale(pixels, pixels);
  chart.DrawWith(painter, caption);
  return picture;
}

}  // namespace

void PrintView(TKorvexMainForm& form) {
  if (!form.Flow().FileShown()) return;
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(RecordingName(form));
  printer.setCreator(QObject::tr("ShockScope"));
  QPrintDialog dialog(&printer, &form);
  dialog.setObjectName("dlgPrint");
  if (dialog.exec() == QDialog::Accepted) Output(form, printer);
}

void SaveViewAsPdf(TKorvexMainForm& form, TExportCommands& exports) {
  const std::string title = Utf8(QObject::tr("Save the view as PDF"));
  exports.Save({title, {}, Utf8(RecordingName(form)), "PDF|*.pdf", "pdf"}, "The view could not be written.",
               [&form](int) {
                 QBuffer pdf;  // a writer into a file does not report a full disk
                 pdf.open(QIODevice::WriteOnly);
                 {
                   QPdfWriter writer(&pdf);
                   writer.setPageSize(QPageSize(QPageSize::A4));
                   writer.setTitle(RecordingName(form));
                   writer.setCreator(QObject::tr("ShockScope"));
                   Output(form, writer);
                 }
                 return pdf.data().toStdString();
               });
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
