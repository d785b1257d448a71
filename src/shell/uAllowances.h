// What a limit profile allows beyond its limits, as a person types and reads it. Pure functions.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/uLimitProfile.h"

// One of the two limits of a quantity.
struct TLimitEnd {
  TQuantity quantity;
  bool isMax;

  [[nodiscard]] std::size_t Index() const { return static_cast<std::size_t>(quantity); }
  [[nodiscard]] double& ValueIn(TVerdictLimits& limits) const {
    return isMax ? limits[Index()].values.max : limits[Index()].values.min;
  }
  [[nodiscard]] TLimitSource& SourceIn(TVerdictLimits& limits) const {
    return isMax ? limits[Index()].maxSource : limits[Index()].minSource;
  }
  [[nodiscard]] double& AllowedIn(TLimitProfile& profile) const {
    TAllowedTimes& times = profile.allowedTimes[Index()];
    return isMax ? times.above : times.below;
  }
};

// The count of a text such as "3", "1 event" or "3 events".
std::optional<std::uint32_t> ParseEvents(std::string_view text);

// "3 events" of the acceleration, else "2 h"; "none" when nothing is allowed; empty when the limit was not chosen, so
// nothing is judged by it. The acceleration has one for both its limits, which counts as that of the upper one.
std::string AllowanceText(const TLimitProfile& profile, TQuantity quantity, bool isMax);

// Takes what was typed, "none" and "0" too. An empty text takes a limit that equals its default out of the profile; one
// that differs stays chosen, and nothing is allowed. Returns a sentence that says why a text is refused, else nothing.
std::string TypeAllowance(std::string_view text, TQuantity quantity, bool isMax, TLimitProfile& profile);
