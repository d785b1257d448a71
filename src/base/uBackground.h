// Work on a thread of its own that the caller waits for while its user interface goes on.
#pragma once

#include <functional>
#include <stop_token>

#include "base/uProgress.h"

// Has `work` done on another thread; until it is done `progress` processes messages, on the caller's and at least once.
// What the work throws is thrown here. What ProcessMessages throws asks the work to stop, and is thrown in its place
// once it has ended.
void RunInBackground(const std::function<void(const std::stop_token&)>& work, IProgress& progress);
