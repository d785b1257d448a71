#include "gui/report/uReportRun.h"

#include <fmt/format.h>

#include <cstdio>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "base/uText.h"
#include "gui/common/uLogos.h"
#include "gui/report/uReportPages.h"
#include "model/uExceptions1V0.h"
#include "platform/uSha256.h"
#include "platform/uTerminal.h"
#include "shell/uLimitProfileFile.h"
#include "shell/uLimitProfiles.h"
#include "shell/uMissionLoad.h"
#include "shell/uNoteCommands.h"
#include "shell/uSettingsStore.h"
#include "shell/uStartUp.h"

namespace fs = std::filesystem;

namespace {

constexpr double kLoadSteps = 9;  // of a load
constexpr int kDone = 0, kNotDisplayable = 1, kWrongUse = 2, kCannotRead = 3, kCannotWrite = 4, kDamaged = 5;

void ClearLine() {
  if (StandardErrorIsTerminal()) std::fputs("\r\033[K", stderr);
}

void Complain(std::string_view file, std::string_view what) {
  ClearLine();
  fmt::print(stderr, "shockscope: {}: {}\n", Printable(file), Printable(what));
}

// A line that is written over, on a terminal only.
class TLine final : public IProgress {
 public:
  ~TLine() override { ClearLine(); }
  // Says it at once, for what does not tell how far it is.
  void Begin(std::string_view what) {
    FWhat = what;
    if (!FShown) return;
    ClearLine();
    fmt::print(stderr, "{} …", FWhat);
    std::fflush(stderr);
  }
  void SetStatus(std::string_view /*text*/) override {}
  void SetMaximum(double maximum) override { FMaximum = maximum; }
  void SetPosition(double position) override {
    if (!FShown) return;
    ClearLine();
    fmt::print(stderr, "{} {:.0f} of {:.0f}", FWhat, position, FMaximum);
    std::fflush(stderr);
  }
  void ProcessMessages() override {}

 private:
  std::string FWhat;
  bool FShown = StandardErrorIsTerminal();
  double FMaximum = 1;
};

// What is unusable is said, and the defaults stand in for it.
void ReadUserFiles(const fs::path& folder, TSettings& settings, TLogos& logos, TReportConfig& config) {
  if (folder.empty()) return;
  const auto attempt = [](const fs::path& file, const auto& read) {
    try {
      read();
    } catch (const std::exception& error) {
      Complain(Utf8FromPath(file), ReasonOf(error));
    }
  };
  attempt(folder / kSettingsFile, [&] { settings = LoadSettings(folder).value_or(TSettings()); });
  attempt(folder / kChosenProfileFile, [&] {
    const fs::path file = ChosenProfile(folder);
    if (!file.empty()) attempt(file, [&] { UseProfile(ReadLimitProfile(file), settings.display); });
  });
  attempt(folder / kKeptReportConfigFile, [&] { config = ReadKeptReportConfig(folder); });
  for (std::size_t i = 0; i < std::size(kLogoFiles); ++i) {
    const fs::path file = folder / kLogoFiles[i];
    if (fs::exists(file)) attempt(file, [&] { logos.Load(i, file); });
  }
}

int Read(const std::string& file, TShownMission& mission) {
  const auto [last, extent] = ReadMission(PathFromUtf8(file));
  if (last.wParam == kReadFailed) {
    Complain(file, ReadErrorText);
    return kCannotRead;
  }
  if (!MissionData.bValid || !EventList.ValidCreator) {
    Complain(file, "This file cannot be displayed. " + WhyNotDisplayable(extent));
    return kNotDisplayable;
  }
  mission.Damage = DamageText(extent);
  if (mission.Damage.empty()) return kDone;
  Complain(file, mission.Damage);
  return kDamaged;
}

}  // namespace

int RunReport(const TReportOrder& order) {
  for (const std::string& input : {order.file, order.config.value_or(""), order.limits.value_or("")}) {
    if (IsSameFile(PathFromUtf8(order.pdf), PathFromUtf8(input))) {
      Complain(order.pdf, "A report cannot replace what it is made from.");
      return kWrongUse;
    }
  }
  TReportConfig config;
  std::string reading;
  TShownMission mission;
  TLogos logos(nullptr);
  ReadUserFiles(order.settingsFolder, mission.Settings, logos, config);
  try {
    reading = order.config.value_or("");
    if (order.config) config = ReadReportConfig(PathFromUtf8(*order.config));
    reading = order.limits.value_or("");
    if (order.limits) {
      UseProfile(ReadLimitProfile(PathFromUtf8(*order.limits)), mission.Settings.display);
      mission.Settings.display.alarmActive = true;
    }
  } catch (const std::exception& error) {
    Complain(reading, ReasonOf(error));
    return kCannotRead;
  }
  SetShortDateFormat(std::string(mission.Settings.display.DateFormat()));
  TLine line;
  line.Begin("reading");
  const int status = Read(order.file, mission);
  if (status == kNotDisplayable || status == kCannotRead) return status;
  line.Begin("tables, step");
  line.SetMaximum(kLoadSteps);
  FillMission(mission, line);
  ReadNotes(PathFromUtf8(order.file), order.settingsFolder, mission);
  if (!mission.Notes.problem.empty()) Complain(order.file, mission.Notes.problem);
  mission.SelectedEvent = VisibleOrFirst(mission.CLDS, mission.Summary.mostIntense.value_or(0));
  try {
    const fs::path file = PathFromUtf8(order.file);
    line.Begin("checksum, MB");
    const TReportContents contents{.mission = mission,
                                   .logos = {logos.Image(TLogos::kCompany), logos.Image(TLogos::kReport)},
                                   .file = file,
                                   .sha256 = Sha256Of(file, line),
                                   .version = order.version,
                                   .madeAt = LocalTimeNow()};
    line.Begin("page");
    const TReportPages pages(contents, config);
    WriteReportPdf(PathFromUtf8(order.pdf), pages, line);
  } catch (const std::exception& error) {
    Complain(order.pdf, "The report cannot be written: " + ReasonOf(error));
    return kCannotWrite;
  }
  return status;
}
