#include "shell/uReferenceCommands.h"

#include <fmt/format.h>

#include <optional>
#include <utility>

#include "shell/uReferenceFile.h"

std::string UseAsReference(TShownMission& mission, const std::string& file, IMissionViews& views) {
  mission.Reference = MakeReference(mission.Events, mission.Tables, mission.Summary, file);
  mission.ReferenceIsShown = true;
  if (mission.Analysis) {
    AddPulses(*mission.Analysis, mission.Tables, *mission.Reference);
  } else {
    views.AwaitAnalysis();
  }
  views.ShowReference(mission);
  return fmt::format("{} is the reference: other recordings show Δ against it", ReferenceName(*mission.Reference));
}

void ClearReference(TShownMission& mission, IMissionViews& views) {
  mission.Reference.reset();
  mission.ReferenceIsShown = false;
  views.ShowReference(mission);
}

void KeepReference(TShownMission& mission, bool keep, IMissionViews& views) {
  if (std::exchange(mission.ReferenceIsKept, keep) != keep) views.ShowReference(mission);
}

void TakeKeptReference(const std::filesystem::path& layout, TShownMission& mission, IMissionViews& views) {
  std::optional<TReference> kept = ReadReference(layout);
  if (!kept) return;
  mission.Reference = std::move(kept);
  mission.ReferenceIsShown = false;
  mission.ReferenceIsKept = true;
  views.ShowReference(mission);
}
