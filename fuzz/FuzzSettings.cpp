// Reads the input as a file of the settings folder, or one that the user chooses; its first byte says which. What was
// read is written and must read back as the same.
#include <cmath>
#include <exception>
#include <optional>

#include "analysis/uLimitCurve.h"
#include "base/uDateTime.h"
#include "fuzz/uFuzzFolder.h"
#include "shell/uLimitProfileFile.h"
#include "shell/uNotes.h"
#include "shell/uRecentDocuments.h"
#include "shell/uReferenceFile.h"
#include "shell/uReportConfig.h"
#include "shell/uSettingsStore.h"

namespace {

void ReadBackSettings() {
  const auto settings = LoadSettings(".");
  if (!settings) return;
  WriteSettings(".", *settings);
  Require(LoadSettings(".") == settings);
}

void ReadBackRecents() {
  TRecentDocuments recents;
  recents.Load("input");
  recents.Add("/recordings/new.kshock", "about");
  recents.Save("input");
  TRecentDocuments again;
  again.Load("input");
  Require(again.Files.Entries() == recents.Files.Entries() && again.Folders.Entries() == recents.Folders.Entries());
}

void ReadBackReport() {
  const TReportConfig config = ReadReportConfig("input");
  WriteReportConfig("input", config);
  TReportConfig again = ReadReportConfig("input");
  const auto isSame = [](std::optional<double> a, std::optional<double> b) {
    return a.has_value() == b.has_value() && (!a || std::fabs(*a - *b) < 2 / kMsPerDay);  // times are written in ms
  };
  Require(isSame(again.time.from, config.time.from) && isSame(again.time.to, config.time.to));
  again.time = config.time;
  Require(again == config);
}

void ReadBackLimits() {
  const TLimitProfile profile = ReadLimitProfile("input");
  WriteLimitProfile("input", profile);
  Require(ReadLimitProfile("input") == profile);
}

void UseLimitCurve() {
  const TLimitCurve limit = ReadLimitCurve("input");
  for (const TLimitPoint& point : limit) Require(LimitAt(limit, point.hertz) == point.g);
  const double between = std::sqrt(limit[0].hertz) * std::sqrt(limit[1].hertz);
  Require(!LimitAt(limit, between) || *LimitAt(limit, between) > 0);
}

void ReadBackNotes() {
  TNotes notes("mission.kshock", {});
  notes.Add({.text = "new", .author = {}, .tags = {"tag"}});
  notes.Save();
  Require(TNotes("mission.kshock", {}).Items().size() == notes.Items().size());
}

void ReadBackReference() {
  const auto reference = ReadReference("input");
  if (!reference) return;
  const std::string sections = ReferenceSections(*reference);
  TFuzzFolder::Write("input", {reinterpret_cast<const std::uint8_t*>(sections.data()), sections.size()});
  Require(ReferenceSections(*ReadReference("input")) == sections);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TFuzzFolder folder;
  struct TKind {
    const char* file;
    void (*readBack)();
  };
  static constexpr TKind kKinds[] = {{kSettingsFile, ReadBackSettings},
                                     {"input", ReadBackRecents},
                                     {"input", ReadBackReport},
                                     {"input", ReadBackLimits},
                                     {"mission.kshock.notes.json", ReadBackNotes},
                                     {"input", ReadBackReference},
                                     {"input", UseLimitCurve}};
  if (size == 0) return 0;
  const TKind& kind = kKinds[data[0] % std::size(kKinds)];
  folder.Empty();
  TFuzzFolder::Write("mission.kshock", {});
  TFuzzFolder::Write(kind.file, {data + 1, size - 1});
  try {
    kind.readBack();
  } catch (const std::exception& refused) {
    Require(refused.what()[0] != '\0');
  }
  return 0;
}
