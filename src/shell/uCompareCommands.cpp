#include "shell/uCompareCommands.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "shell/uReferenceFile.h"

std::string SwitchPin(TShownMission& mission, const std::string& file, IMissionViews& views) {
  if (!mission.SelectedEvent) return "No event is selected";
  const TEvent& event = mission.Events.GetItem(*mission.SelectedEvent);
  std::vector<TPin>& pins = mission.Pins.items;
  const auto pinned = std::ranges::find_if(
      pins, [&](const TPin& pin) { return pin.event->file == file && pin.event->event.ID == event.ID; });
  if (pinned != pins.end()) {
    Unpin(mission, pinned->slot, views);
    return fmt::format("Event {} is no longer pinned", event.ID);
  }
  if (pins.size() == kMaxPins) {
    return fmt::format("Event {} is not pinned: {} events are, which is the maximum", event.ID, kMaxPins);
  }
  std::size_t slot = 0;
  while (slot < pins.size() && pins[slot].slot == slot) ++slot;
  auto copy = std::make_shared<const TPinnedEvent>(
      CopyOfEvent(event, ThresholdsOf(mission.Data), mission.Events.StartTime, file));
  pins.insert(pins.begin() + static_cast<std::ptrdiff_t>(slot), TPin{std::move(copy), slot});
  views.ShowPins(mission.Pins);
  return fmt::format("Event {} is pinned, {} of {}", event.ID, pins.size(), kMaxPins);
}

void SetPinVisible(TShownMission& mission, std::size_t slot, bool visible, IMissionViews& views) {
  const auto pin = std::ranges::find(mission.Pins.items, slot, &TPin::slot);
  if (pin == mission.Pins.items.end() || std::exchange(pin->visible, visible) == visible) return;
  views.ShowPins(mission.Pins);
}

void Unpin(TShownMission& mission, std::size_t slot, IMissionViews& views) {
  if (std::erase_if(mission.Pins.items, [slot](const TPin& pin) { return pin.slot == slot; }) == 0) return;
  views.ShowPins(mission.Pins);
}

void UnpinAll(TShownMission& mission, IMissionViews& views) {
  if (mission.Pins.items.empty()) return;
  mission.Pins.items.clear();
  views.ShowPins(mission.Pins);
}

void AlignPins(TShownMission& mission, TAlignment alignment, IMissionViews& views) {
  if (std::exchange(mission.Pins.alignment, alignment) != alignment) views.ShowPins(mission.Pins);
}

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
