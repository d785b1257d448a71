#include "model/uEvents.h"

TEventList EventList;

void TEventList::OpenEvent() {
  FNewEvent = false;
  if (!FItems.empty()) FItems.back().Trim();
  FItems.emplace_back(static_cast<std::int32_t>(FItems.size()));
}

void TEventList::Trim() {
  if (!FItems.empty()) FItems.back().Trim();
  FItems.shrink_to_fit();
}
