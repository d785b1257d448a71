// Windows only: the progress on a window's button in the task bar.
#pragma once

#include <cstdint>

// From 0 to 100 percent; a negative number takes the progress off. `window` is the system's handle. Main thread only.
void ShowTaskbarProgress(std::uintptr_t window, int percent) noexcept;
