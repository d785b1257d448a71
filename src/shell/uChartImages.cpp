#include "shell/uChartImages.h"

#include <exception>
#include <filesystem>
#include <utility>

#include "base/uFiles.h"
#include "export/uExportNames.h"
#include "platform/uSafeFile.h"
#include "shell/uExportOutcome.h"

namespace {

constexpr std::string_view kSensorsChart = "ChartAllSensors";

}  // namespace

void TChartImages::barbtnEventsCopyChartToClipboardClick() {
  Copy(EventsChart());
}

void TChartImages::barbtnSensorsCopyChartToClipboardClick() {
  Copy(kSensorsChart);
}

void TChartImages::barbtnShockCopyChartToClipboardClick() {
  Copy(ShockChart());
}

void TChartImages::barbtnEventsSaveChartasJPGClick() {
  Save(EventsChart(), MissionName(), TPictureFormat::Bitmap);
}

void TChartImages::barbtnSensorsSaveAsJPGClick() {
  Save(kSensorsChart, MissionName(), TPictureFormat::Bitmap);
}

void TChartImages::barbtnShockSaveChartAsImageClick() {
  Save(ShockChart(), ShockName(), TPictureFormat::Bitmap);
}

void TChartImages::barbtnEventsSaveChartAsPNGClick() {
  Save(EventsChart(), MissionName(), TPictureFormat::Png);
}

void TChartImages::barbtnSensorsSaveAsPNGClick() {
  Save(kSensorsChart, MissionName(), TPictureFormat::Png);
}

void TChartImages::barbtnShockSaveChartAsPNGClick() {
  Save(ShockChart(), ShockName(), TPictureFormat::Png);
}

std::string_view TChartImages::EventsChart() const {
  return FFlow.View() == TView::Shock ? "Chart20" : "Chart1";
}

std::string_view TChartImages::ShockChart() const {
  return FScreen.ShownSpectrum() ? "chartSpecAnalysis" : "Chart2";
}

std::string TChartImages::MissionName() const {
  return ProposedName(kMissionName, FFlow.Mission().Data);
}

std::string TChartImages::ShockName() const {
  const auto event = FFlow.Mission().SelectedEvent;
  return event ? ProposedEventName(FFlow.Mission().Data, *event) : MissionName();
}

void TChartImages::Copy(std::string_view chart) {
  if (!FFlow.FileShown()) return;
  FScreen.CopyChart(chart);
  FScreen.SetText("lblStatusValue", "Picture copied");
}

void TChartImages::Save(std::string_view chart, std::string name, TPictureFormat format) {
  if (!FFlow.FileShown()) return;
  TSaveDialog dialog{"Save the chart image", FFlow.RememberedFolder(), std::move(name), "JPG|*.jpg", "jpg"};
  if (format == TPictureFormat::Png) {
    dialog.filter = "PNG|*.png";
    dialog.extension = "png";
  }
  const auto chosen = FScreen.AskWhereToSave(dialog);
  if (!chosen) return;
  const std::filesystem::path file = PathFromUtf8(*chosen);
  try {
    SaveFile(file, FScreen.ChartPicture(chart, format));
    FFlow.RememberFolderOf(*chosen);
    TellWritten(FScreen, file);
  } catch (const std::exception& error) {
    FScreen.ShowMessage("The picture could not be written.", ExportFailure(error, file));
  }
}
