// Where the commands of kshock write, and how they end.
#pragma once

#include <functional>
#include <string_view>

// Exit status of one file or of the whole run.
enum class TStatus : int {
  Done = 0,
  NotDisplayable = 1,  // not a data file, no header, unknown creator
  WrongUse = 2,
  CannotRead = 3,
  CannotWrite = 4,
  Damaged = 5,  // done, but the recording is damaged or cut short
};

// The worse of two: 0 < 5 < 1 < 3 < 4 < 2.
TStatus WorseOf(TStatus a, TStatus b);

using TTextSink = std::function<void(std::string_view)>;

struct TConsole {
  TTextSink out;  // results
  TTextSink err;  // complaints, and progress when showProgress is set
  bool showProgress = false;
};
