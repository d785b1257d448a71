#include "gui/mainform/uViewOutput.h"

#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <stdexcept>

#include "base/uFiles.h"
#include "gui/charts/uTimeChart.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/platform/uDialogs.h"
#include "gui/report/uReportPanel.h"

namespace {

// Lends a view the light palette.
class TOnWhite {
 public:
  explicit TOnWhite(QWidget& view) : FView(view) { FView.setPalette(LightPalette()); }
  ~TOnWhite() { FView.setPalette(QPalette()); }
  TOnWhite(const TOnWhite&) = delete;
  TOnWhite& operator=(const TOnWhite&) = delete;

 private:
  QWidget& FView;
};

void RenderView(QWidget& view, QPagedPaintDevice& device) {
  const TOnWhite onWhite(view);
  for (TTimeChart* chart : view.findChildren<TTimeChart*>()) chart->replot();
  QPainter painter(&device);
  if (!painter.isActive()) throw std::runtime_error("The page cannot be painted.");
  const QRectF page = painter.viewport();
  const double zoom = std::min(page.width() / view.width(), page.height() / view.height());
  painter.scale(zoom, zoom);
  view.render(&painter);
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
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, &form);
  dialog.setObjectName("dlgPrint");
  if (dialog.exec() == QDialog::Accepted) Output(form, flow.View(), printer);
}

void SaveViewAsPdf(TKorvexMainForm& form, TFileFlow& flow) {
  const auto path = AskWhereToSave(&form, QObject::tr("Save the view as PDF"), {}, "PDF (*.pdf)", "pdf");
  if (!path) return;
  WriteBesideAndRename(PathFromUtf8(Utf8(*path)), [&](const std::filesystem::path& beside) {
    QPdfWriter writer(QtText(Utf8FromPath(beside)));
    writer.setPageSize(QPageSize(QPageSize::A4));
    Output(form, flow.View(), writer);
  });
}
