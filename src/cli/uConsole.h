// Where the commands of kshock write, and how they end.
#pragma once

#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

// Exit status of one file or of the whole run.
enum class TStatus : int {
  Done = 0,
  NotDisplayable = 1,  // not a data file, no header, unknown creator
  WrongUse = 2,
  CannotRead = 3,
  CannotWrite = 4,
  Damaged = 5,   // done, but the recording is damaged, cut short or could not be read to its end
  NoResult = 6,  // the recording or the event has no such result
};

// The worse of two: 0 < 6 < 5 < 1 < 3 < 4 < 2.
TStatus WorseOf(TStatus a, TStatus b);

// A sink may throw EOutputLost, which ends the run.
using TTextSink = std::function<void(std::string_view)>;

class EOutputLost : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct TConsole {
  TTextSink out;  // results
  TTextSink err;  // errors, and progress when showProgress is set
  bool showProgress = false;
};

// What went wrong, as a sentence without the file's name.
std::string Describe(const std::exception& error);

// Writes "kshock: FILE: what" to err, both printable.
void Complain(const TConsole& console, std::string_view file, std::string_view what);
