// Pictures of the three charts: into the clipboard, or into a file that the user names. They work on the shown mission;
// without one they do nothing. A cancelled dialog says nothing, a failure is one message with the file and the reason.
// Main thread only.
//
// The events chart is that of the view in front, the shock chart the spectrum while that takes the place of the curves.
#pragma once

#include <string>
#include <string_view>

#include "shell/uFileFlow.h"

class TChartImages {
 public:
  TChartImages(TFileFlow& flow, IMainScreen& screen) : FFlow(flow), FScreen(screen) {}

  void barbtnEventsCopyChartToClipboardClick();
  void barbtnSensorsCopyChartToClipboardClick();
  void barbtnShockCopyChartToClipboardClick();

  // Kept on purpose: the file is a bitmap, though dialog and name say JPG.
  void barbtnEventsSaveChartasJPGClick();
  void barbtnSensorsSaveAsJPGClick();
  void barbtnShockSaveChartAsImageClick();

  void barbtnEventsSaveChartAsPNGClick();
  void barbtnSensorsSaveAsPNGClick();
  void barbtnShockSaveChartAsPNGClick();

 private:
  [[nodiscard]] std::string_view EventsChart() const;
  [[nodiscard]] std::string_view ShockChart() const;
  // Proposed for a file.
  [[nodiscard]] std::string MissionName() const;
  [[nodiscard]] std::string ShockName() const;
  void Copy(std::string_view chart);
  void Save(std::string_view chart, std::string name, TPictureFormat format);

  TFileFlow& FFlow;
  IMainScreen& FScreen;
};
