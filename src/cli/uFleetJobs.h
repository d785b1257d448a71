// Shares the work of a fleet among copies of this program, since a program has one mission.
#pragma once

#include <vector>

#include "cli/uCommands.h"
#include "fleet/uFleetDatabase.h"
#include "fleet/uFleetFiles.h"

// Adds the rows of all entries. Up to request.jobs processes read a few hundred files each, whose tables are merged
// when they are done. Where a process ends early, each of its files gets a process of its own; one that ends that, too,
// gets a row that says so. Throws EFleetDatabase, std::filesystem::filesystem_error and std::system_error.
void RunFleetJobs(const std::vector<TFleetEntry>& entries, const TFleetRequest& request, TFleetDatabase& database,
                  const TConsole& console);
