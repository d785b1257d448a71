// Work on a thread of its own that the caller waits for while its user interface goes on.
#pragma once

#include <functional>

#include "base/uProgress.h"

// Has `work` done on another thread; until it is done `progress` processes messages, on the caller's. What the work
// throws is thrown here. What ProcessMessages throws is thrown in its place, once the work is done: nothing can stop
// it.
void RunBeside(const std::function<void()>& work, IProgress& progress);
