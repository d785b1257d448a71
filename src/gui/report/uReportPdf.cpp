#include <QFile>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPdfWriter>
#include <algorithm>
#include <memory>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFSystemError.hh>
#include <qpdf/QPDFWriter.hh>
#include <stdexcept>
#include <system_error>
#include <vector>

#include "base/uFiles.h"
#include "export/uExportFile.h"
#include "gui/common/uQtText.h"
#include "gui/report/uReportPages.h"
#include "platform/uPartFile.h"

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

// Qt's file forgets a failed write at the next one, and Qt's PDF writer asks for no result.
class TCheckedFile final : public QFile {
 public:
  using QFile::QFile;

  // Writes what is left. Throws std::runtime_error with the system's reason if that or any write before failed.
  void Finish() {
    const bool flushed = flush();
    if (!flushed) FReason = errorString();
    if (!flushed || FFailed) throw std::runtime_error(FReason.isEmpty() ? "A write failed." : Utf8(FReason));
  }

 protected:
  qint64 writeData(const char* data, qint64 size) override {
    qint64 written = QFile::writeData(data, size);
    // A short write has no reason; that of the rest has.
    if (written >= 0 && written < size) {
      written += std::max<qint64>(0, QFile::writeData(data + written, size - written));
    }
    if (written == size) return written;
    FFailed = true;
    if (error() != NoError) FReason = errorString();
    return written;
  }

 private:
  bool FFailed = false;
  QString FReason;
};

// What Qt writes: no bookmarks, no author.
void WritePages(const std::filesystem::path& path, const TReportPages& pages, IProgress& progress) {
  TCheckedFile file(QtText(Utf8FromPath(path)));
  if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error(Utf8(file.errorString()));
  {
    QPdfWriter writer(&file);
    writer.setTitle(pages.Title());
    writer.setCreator("ShockScope");
    try {
      PaintPages(writer, pages, 0, pages.Count() - 1, progress);
    } catch (const std::runtime_error&) {
      file.Finish();  // a page that cannot be painted because of the disk
      throw;
    }
  }
  file.Finish();
}

// A list of items, each of which knows its neighbours.
void AddBookmarks(QPDF& pdf, const std::vector<TReportBookmark>& bookmarks) {
  if (bookmarks.empty()) return;
  const std::vector<QPDFObjectHandle>& pages = pdf.getAllPages();
  QPDFObjectHandle outlines = pdf.makeIndirectObject(QPDFObjectHandle::newDictionary());
  std::vector<QPDFObjectHandle> items;
  for (const TReportBookmark& bookmark : bookmarks) {
    QPDFObjectHandle item = pdf.makeIndirectObject(QPDFObjectHandle::newDictionary());
    item.replaceKey("/Title", QPDFObjectHandle::newUnicodeString(Utf8(bookmark.title)));
    item.replaceKey("/Parent", outlines);
    item.replaceKey("/Dest", QPDFObjectHandle::newArray({pages.at(static_cast<std::size_t>(bookmark.page)),
                                                         QPDFObjectHandle::newName("/Fit")}));
    if (!items.empty()) {
      item.replaceKey("/Prev", items.back());
      items.back().replaceKey("/Next", item);
    }
    items.push_back(item);
  }
  outlines.replaceKey("/Type", QPDFObjectHandle::newName("/Outlines"));
  outlines.replaceKey("/First", items.front());
  outlines.replaceKey("/Last", items.back());
  outlines.replaceKey("/Count", QPDFObjectHandle::newInteger(static_cast<long long>(items.size())));
  pdf.getRoot().replaceKey("/Outlines", outlines);
  pdf.getRoot().replaceKey("/PageMode", QPDFObjectHandle::newName("/UseOutlines"));
}

class TMessagesMeanwhile final : public QPDFWriter::ProgressReporter {
 public:
  explicit TMessagesMeanwhile(IProgress& progress) : FProgress(progress) {}
  void reportProgress(int /*percent*/) override { FProgress.ProcessMessages(); }

 private:
  IProgress& FProgress;
};

// Reads back what Qt wrote, which must be whole, and writes it with bookmarks and author.
void Finish(const std::filesystem::path& from, const std::filesystem::path& to, const TReportPages& pages,
            IProgress& progress) {
  QPDF pdf;
  pdf.setSuppressWarnings(true);
  pdf.setAttemptRecovery(false);
  pdf.processFile(Utf8FromPath(from).c_str());
  if (pdf.getAllPages().size() != static_cast<std::size_t>(pages.Count())) {
    throw std::runtime_error("The PDF lacks pages.");
  }
  AddBookmarks(pdf, pages.Bookmarks());
  pdf.getTrailer().getKey("/Info").replaceKey("/Author", QPDFObjectHandle::newUnicodeString(Utf8(pages.Author())));
  const std::string name = Utf8FromPath(to);  // the writer refers to it
  QPDFWriter writer(pdf, name.c_str());
  writer.setObjectStreamMode(qpdf_o_generate);
  writer.registerProgressReporter(std::make_shared<TMessagesMeanwhile>(progress));
  writer.write();
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
    painter.scale(device.logicalDpiX() / kPointsPerInch, device.logicalDpiY() / kPointsPerInch);
    pages.Paint(painter, page);
    painter.restore();
    progress.SetPosition(page - first + 1);
    progress.ProcessMessages();
  }
}

void WriteReportPdf(const std::filesystem::path& file, const TReportPages& pages, IProgress& progress) {
  WriteExport(file, progress, [&](const std::filesystem::path& part) {
    const TPartFile unfinished(part.parent_path());
    try {
      WritePages(unfinished.Path(), pages, progress);
      Finish(unfinished.Path(), part, pages, progress);
    } catch (const QPDFSystemError& error) {
      throw std::system_error(error.getErrno(), std::generic_category());
    } catch (const QPDFExc& error) {
      throw std::runtime_error("The PDF could not be finished: " + error.getMessageDetail());
    }
  });
}
