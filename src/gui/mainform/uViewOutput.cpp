#include "gui/mainform/uViewOutput.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <exception>
#include <filesystem>
#include <new>
#include <stdexcept>

#include "base/uFiles.h"
#include "gui/charts/uTimeChart.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/platform/uDialogs.h"
#include "gui/report/uReportPanel.h"
#include "platform/uSafeFile.h"
#include "shell/uExportOutcome.h"

namespace {

constexpr double kPaperRatio = 3;  // pixels of the picture to one of the screen

// Lends a view the light palette and its charts the pixels of paper.
class TForPaper {
 public:
  explicit TForPaper(QWidget& view) : FView(view) {
    FView.setPalette(LightPalette());
    Redraw(kPaperRatio);
  }
  ~TForPaper() {
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

// As it stands on the screen: a picture with more pixels.
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

void Output(const TKorvexMainForm& form, TView view, QPagedPaintDevice& device) {
  QWidget& shown = form.View(view);
  if (const auto* report = qobject_cast<const TReportPanel*>(&shown)) {
    report->Print(device);
  } else {
    device.setPageOrientation(QPageLayout::Landscape);
    RenderView(shown, device);
  }
}

}  // namespace

void PrintView(TKorvexMainForm& form, TFileFlow& flow) {
  if (!flow.FileShown()) return;
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, &form);
  dialog.setObjectName("dlgPrint");
  if (dialog.exec() == QDialog::Accepted) Output(form, flow.View(), printer);
}

void SaveViewAsPdf(TKorvexMainForm& form, TFileFlow& flow, IMainScreen& screen) {
  if (!flow.FileShown()) return;
  const std::string title = Utf8(QObject::tr("Save the view as PDF"));
  const std::string name = Utf8FromPath(PathFromUtf8(flow.FileName()).stem());
  const auto path = AskWhereToSave(&form, {title, flow.RememberedFolder(), name, "PDF|*.pdf", "pdf"});
  if (!path) return;
  // A writer does not tell of a full disk, so it writes into memory.
  QBuffer pdf;
  pdf.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&pdf);
    writer.setPageSize(QPageSize(QPageSize::A4));
    Output(form, flow.View(), writer);
  }
  const std::filesystem::path file = PathFromUtf8(Utf8(*path));
  try {
    SaveFile(file, {pdf.data().constData(), static_cast<std::size_t>(pdf.size())});
  } catch (const std::exception& error) {
    screen.ShowMessage("The view could not be written.", ExportFailure(error, file));
    return;
  }
  flow.RememberFolderOf(Utf8(*path));
  TellWritten(screen, file);
}

std::string Encoded(const QImage& picture, TPictureFormat format) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  if (!picture.save(&buffer, format == TPictureFormat::Png ? "PNG" : "BMP")) {
    throw std::runtime_error("The picture cannot be made.");
  }
  return buffer.data().toStdString();
}
