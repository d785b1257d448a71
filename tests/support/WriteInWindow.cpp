// Writes a file of the window: write_in_window FILE layout|logo|png|svg. Prints the error and ends with 4 when that
// fails.
#include <QApplication>
#include <QImage>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string_view>

#include "gui/charts/uTimeChart.h"
#include "gui/common/uLogos.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uLayouts.h"
#include "gui/mainform/uViewOutput.h"
#include "platform/uSafeFile.h"

int main(int argc, char** argv) try {
  if (argc < 3) return 2;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const std::filesystem::path file = argv[1];
  const std::string_view what = argv[2];
  if (what == "logo") {
    TLogos(nullptr).Save(TLogos::kCompany, file);
    return 0;
  }
  TProgram program;
  program.version = "0";
  TKorvexMainForm form(program, [] { return TReadFileThread::kNoMemoryBound; });
  if (what == "layout") {
    form.findChild<TLayouts*>()->Save(file, "");
  } else {
    SaveFile(file, ChartFile(*form.findChild<TTimeChart*>(), "caption",
                             what == "svg" ? TPictureFormat::Svg : TPictureFormat::Png, 1));
  }
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 4;
}
