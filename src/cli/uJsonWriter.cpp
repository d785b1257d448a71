#include "cli/uJsonWriter.h"

#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

void TJsonWriter::Begin(char bracket) {
  Raw({&bracket, 1});
  FNeedsComma = false;
}

void TJsonWriter::End(char bracket) {
  FNeedsComma = false;
  Raw({&bracket, 1});
}

void TJsonWriter::Key(std::string_view key) {
  Value(key);
  FText += ':';
  FNeedsComma = false;
}

void TJsonWriter::Value(std::string_view utf8) {
  using nlohmann::json;
  Raw(json(utf8).dump(-1, ' ', false, json::error_handler_t::replace));
}

void TJsonWriter::Value(double value) {
  if (std::isnan(value)) {
    Null();
  } else if (std::isinf(value)) {
    Raw(value > 0 ? "1e999" : "-1e999");
  } else {
    std::array<char, 32> buffer{};
    std::string text(buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr);
    // A whole number stays a float for the reader, so that a negative zero keeps its sign.
    if (text.find_first_of(".e") == std::string::npos) text += ".0";
    Raw(text);
  }
}

void TJsonWriter::Raw(std::string_view text) {
  constexpr std::size_t kChunk = 64 * 1024;
  if (FNeedsComma) FText += ',';
  FText += text;
  FNeedsComma = true;
  if (FText.size() >= kChunk) {
    FSink(FText);
    FText.clear();
  }
}

void TJsonWriter::Finish() {
  FText += '\n';
  FSink(FText);
  FText.clear();
}
