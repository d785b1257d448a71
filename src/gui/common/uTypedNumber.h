// Numbers as people type them, with a point or a comma before the decimals.
#pragma once

#include <QString>
#include <optional>

struct TTypedNumber {
  std::optional<double> value;  // finite
  QString problem;              // why there is none, as a sentence
};

// What can be read in two ways is no number: a comma before exactly three digits, a point beside a comma, a blank
// between digits. Blanks around the text do not count.
TTypedNumber ReadTypedNumber(const QString& text);
