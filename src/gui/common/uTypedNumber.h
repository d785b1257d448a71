// Numbers as people type them, with a point or a comma before the decimals.
#pragma once

#include <QString>
#include <optional>

struct TTypedNumber {
  std::optional<double> value;  // finite
  QString problem;              // why there is none, as a sentence
};

// Ambiguous text is not a number: a comma before exactly three digits, a point and a comma, or a blank between digits.
// Blanks around the text are ignored.
TTypedNumber ReadTypedNumber(const QString& text);
