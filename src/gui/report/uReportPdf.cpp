#include <QFile>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPdfWriter>
#include <stdexcept>

#include "base/uFiles.h"
#include "export/uExportFile.h"
#include "gui/common/uQtText.h"
#include "gui/report/uReportPages.h"

namespace {

// The paper upright and its orientation, without margins: pages have their own.
QPageLayout LayoutOf(const TReportPages& pages) {
  const QSizeF size = pages.PageSize();
  const bool landscape = size.width() > size.height();
  QPageLayout layout(QPageSize(landscape ? size.transposed() : size, QPageSize::Point),
                     landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(), QPageLayout::Point);
  layout.setMode(QPageLayout::FullPageMode);
  return layout;
}

}  // namespace

void PaintPages(QPagedPaintDevice& device, const TReportPages& pages, int first, int last, IProgress& progress) {
  device.setPageLayout(LayoutOf(pages));
  QPainter painter;
  if (!painter.begin(&device)) throw std::runtime_error("The page cannot be painted.");
  progress.SetMaximum(last - first + 1);
  for (int page = first; page <= last; ++page) {
    if (page > first && !device.newPage()) throw std::runtime_error("The page cannot be painted.");
    painter.save();
    painter.scale(device.logicalDpiX() / 72.0, device.logicalDpiY() / 72.0);
    pages.Paint(painter, page);
    painter.restore();
    progress.SetPosition(page - first + 1);
    progress.ProcessMessages();
  }
}

void WriteReportPdf(const std::filesystem::path& file, const TReportPages& pages, IProgress& progress) {
  WriteExport(file, progress, [&](const std::filesystem::path& part) {
    QPdfWriter writer(QtText(Utf8FromPath(part)));
    PaintPages(writer, pages, 0, pages.Count() - 1, progress);
  });
}
