// Runs work on another thread while the caller's user interface stays alive.
#pragma once

#include <functional>
#include <stop_token>

#include "base/uProgress.h"

// Runs `work` on another thread and waits for it. Meanwhile `progress` processes messages on the caller's thread, at
// least once. An exception of the work is thrown here. If ProcessMessages throws, the work is asked to stop; when it
// has ended, that exception is thrown instead.
void RunInBackground(const std::function<void(const std::stop_token&)>& work, IProgress& progress);
