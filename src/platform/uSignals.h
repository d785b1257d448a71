// Signals that would end the program where it can go on.
#pragma once

// A write past the limit on the size of files (ulimit -f) fails with errc::file_too_large instead of ending the
// program. Programs that this one starts keep the system's default. Called once, at the start.
void SurviveFileSizeLimit();
