// The report as pages: laid out once, painted page by page when asked. Lengths are points (1/72 inch); all that is
// painted is vector, but for the logos. Main thread only.
#pragma once

#include <QImage>
#include <QPainter>
#include <QSizeF>
#include <QString>
#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analysis/uMissionFigures.h"
#include "base/uProgress.h"
#include "gui/report/uPageFlow.h"
#include "shell/uReportConfig.h"
#include "shell/uShownMission.h"

class QPagedPaintDevice;
class TReportCharts;
struct TReportData;

inline constexpr double kPointsPerInch = 72;  // pages are measured in points

// What the shock view has in front of the selected event.
struct TShownEvent {
  QString name;  // "spectrum"; empty for what was recorded
  std::function<void(QPainter&, const QRectF& place)> paint;
};

// What a report is made of. The mission and its tables are borrowed by the pages.
struct TReportContents {
  const TShownMission& mission;
  std::array<QImage, 2> logos = {};  // by TLogos::TLogo; a null one is left out
  std::filesystem::path file = {};   // the recording; the cover has its name and size
  std::string sha256 = {};           // of the file, in hexadecimal digits; empty while it is not known
  std::string version = {};          // of the program
  double madeAt = 0;                 // the date of the report, a date-time
  // VelocityChangeFigure of the mission, which takes time; the pages compute it where nobody has.
  std::optional<std::optional<TFigure>> velocityChange = {};
  std::optional<TShownEvent> shownEvent = {};  // else the recorded curves
};

// For madeAt: the time on this computer's clock, a date-time.
double LocalTimeNow();

class TReportPages {
 public:
  // Counts rows and measures texts, but formats and paints none of the tables, charts and cards. Make new pages when
  // the mission, its filter or its settings change.
  TReportPages(const TReportContents& contents, const TReportConfig& config);
  ~TReportPages();
  TReportPages(const TReportPages&) = delete;
  TReportPages& operator=(const TReportPages&) = delete;

  [[nodiscard]] int Count() const { return FFlow.Count(); }
  // Of the whole page with its margins, the same for all.
  [[nodiscard]] QSizeF PageSize() const { return FFlow.PageSize(); }
  // Rising pages.
  [[nodiscard]] const std::vector<TReportBookmark>& Bookmarks() const { return FFlow.Bookmarks(); }
  // "Shock report · 165-00042 · Demo", for the window's caption and the file's properties.
  [[nodiscard]] QString Title() const;
  [[nodiscard]] QString Author() const;  // the company, or the operator
  // In words what limits the report, for the cover: "filtered: events …"; empty when nothing does.
  [[nodiscard]] QString Filtered() const;
  // Until then the cover has a blank in its place; the layout stays.
  void SetSha256(const std::string& sha256);
  // Black on nothing; (0, 0) is the page's corner, a point one unit. Whoever calls fills the page with white.
  void Paint(QPainter& painter, int page) const;

 private:
  [[nodiscard]] QString Subject() const;
  void PaintFooter(QPainter& painter, int page) const;

  std::unique_ptr<TReportData> FData;
  std::unique_ptr<TReportCharts> FCharts;
  TPageFlow FFlow;
};

// Paints pages first … last, from 0, on a device with that page size, such as a printer or a PDF. `progress` gets the
// number of pages as maximum and processes messages after each; what it throws ends it. Throws std::runtime_error when
// the device cannot be painted on.
void PaintPages(QPagedPaintDevice& device, const TReportPages& pages, int first, int last, IProgress& progress);

// Writes a PDF with bookmarks, title and author. A failure or a Cancel (see PaintPages) leaves an older file as it was.
void WriteReportPdf(const std::filesystem::path& file, const TReportPages& pages, IProgress& progress);
