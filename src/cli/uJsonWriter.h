// Writes one JSON object piece by piece, so that a recording of any size needs no memory for it. The caller keeps the
// nesting right.
#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "cli/uConsole.h"

class TJsonWriter {
 public:
  explicit TJsonWriter(const TTextSink& sink) : FSink(sink) {}
  TJsonWriter(const TJsonWriter&) = delete;
  TJsonWriter& operator=(const TJsonWriter&) = delete;

  void Begin(char bracket);  // '{' or '['
  void End(char bracket);    // '}' or ']'
  void Key(std::string_view key);
  // Appends a line break and writes the rest.
  void Finish();
  void Null() { Raw("null"); }
  void Value(bool value) { Raw(value ? "true" : "false"); }
  void Value(std::string_view utf8);
  void Value(const char* utf8) { Value(std::string_view(utf8)); }
  template <std::integral T>
  void Value(T value) {
    Raw(std::to_string(value));
  }
  // Reads back as the same double, a single as the same single. NaN is null; an infinity is ±1e999, which readers parse
  // as one.
  void Value(double value);
  template <class T>
  void Member(std::string_view key, const T& value) {
    Key(key);
    Value(value);
  }

 private:
  void Raw(std::string_view text);

  const TTextSink& FSink;
  std::string FText;
  bool FNeedsComma = false;
};
