#include "base/uText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <utility>

namespace {

// Windows-1252 differs from Latin-1 in the bytes 80 … 9F only.
constexpr std::array<char16_t, 32> kHighBytes = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t CodePointOf(unsigned char byte) {
  return byte >= 0x80 && byte < 0xA0 ? kHighBytes[byte - 0x80U] : byte;
}

char AnsiByteOf(char32_t codePoint) {
  if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint < 0x100)) return static_cast<char>(codePoint);
  const auto* found = std::find(kHighBytes.begin(), kHighBytes.end(), codePoint);
  return found == kHighBytes.end() ? '?' : static_cast<char>(0x80 + (found - kHighBytes.begin()));
}

constexpr char32_t kMalformed = 0xFFFD;
constexpr char32_t kMaxCodePoint = 0x10FFFF;

bool IsControl(char32_t codePoint) {
  return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
}

bool IsSurrogate(char32_t codePoint) {
  return codePoint >= 0xD800 && codePoint < 0xE000;
}

// Removes the first code point from the text and returns it; kMalformed for a malformed byte.
char32_t TakeCodePoint(std::string_view& utf8) {
  const auto first = static_cast<unsigned char>(utf8.front());
  utf8.remove_prefix(1);
  if (first < 0x80) return first;
  const std::size_t following = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC2 ? 1 : 0;
  if (following == 0 || utf8.size() < following || first > 0xF4) return kMalformed;
  char32_t codePoint = first & (0x3FU >> following);
  for (std::size_t i = 0; i < following; ++i) {
    const auto next = static_cast<unsigned char>(utf8[i]);
    if ((next & 0xC0U) != 0x80U) return kMalformed;
    codePoint = (codePoint << 6) | (next & 0x3FU);
  }
  constexpr char32_t kMin[] = {0, 0x80, 0x800, 0x10000};
  if (codePoint < kMin[following]) return kMalformed;
  utf8.remove_prefix(following);
  return codePoint;
}

constexpr int kSignificantDigits = 15;

// A finite number: sign, significant digits without trailing zeros, decimal exponent of the first digit. Zero has no
// digits. On the stack, because an export writes millions of these.
struct TDecimal {
  bool negative = false;
  std::array<char, kSignificantDigits> digits{};
  int count = 0;
  int exponent = 0;
};

void TrimZeros(TDecimal& decimal) {
  while (decimal.count > 0 && decimal.digits[static_cast<std::size_t>(decimal.count) - 1] == '0') --decimal.count;
}

// Keeps the first `count` digits (none or fewer is allowed), rounding halves away from zero.
void RoundDigits(TDecimal& decimal, int count) {
  if (count >= decimal.count) return;
  const bool up = count >= 0 && decimal.digits[static_cast<std::size_t>(count)] >= '5';
  decimal.count = std::max(count, 0);
  if (!up) return TrimZeros(decimal);
  while (decimal.count > 0 && decimal.digits[static_cast<std::size_t>(decimal.count) - 1] == '9') --decimal.count;
  if (decimal.count > 0) {
    ++decimal.digits[static_cast<std::size_t>(decimal.count) - 1];
  } else {
    decimal.digits[0] = '1';
    decimal.count = 1;
    ++decimal.exponent;
  }
}

// Parses the output of std::to_chars, like "1.2345e-05" or "5e+00".
TDecimal Parsed(const char* text, const char* end) {
  TDecimal decimal;
  for (; *text != 'e'; ++text) {
    if (*text != '.') decimal.digits[static_cast<std::size_t>(decimal.count++)] = *text;
  }
  if (*++text == '+') ++text;
  std::from_chars(text, end, decimal.exponent);
  return decimal;
}

TDecimal ByLibrary(double magnitude) {
  std::array<char, 40> text{};
  char* const end = text.data() + text.size();
  constexpr auto kForm = std::chars_format::scientific;
  return Parsed(text.data(), std::to_chars(text.data(), end, magnitude, kForm, kSignificantDigits - 1).ptr);
}

// For kMinExact <= magnitude < kEndOfExact. There magnitude · 10^k, with the k that puts 15 digits before the point, is
// a whole number of less than 95 bits over a power of two: exact in integers, and several times faster than the
// library.
constexpr double kMinExact = 1e-4;
constexpr double kEndOfExact = 1e15;

TDecimal InIntegers(double magnitude) {
  static constexpr double kPowers[] = {1e-4, 1e-3, 1e-2, 1e-1, 1e0,  1e1,  1e2,  1e3,  1e4,  1e5,
                                       1e6,  1e7,  1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  static constexpr std::array<std::uint64_t, 19> kFives = [] {
    std::array<std::uint64_t, 19> fives{1};
    for (std::size_t i = 1; i < fives.size(); ++i) fives[i] = 5 * fives[i - 1];
    return fives;
  }();
  constexpr int kMantissaBits = 52;
  constexpr int kMinExponent = -4;
  __extension__ using TWide = unsigned __int128;

  const auto bits = std::bit_cast<std::uint64_t>(magnitude);
  const int binary = static_cast<int>(bits >> kMantissaBits) - 1023;
  TDecimal decimal;
  decimal.exponent = (binary * 78913) >> 18;  // log10(2), rounded down: at most one too small
  if (magnitude >= kPowers[decimal.exponent + 1 - kMinExponent]) ++decimal.exponent;
  const int k = kSignificantDigits - 1 - decimal.exponent;
  const std::uint64_t mantissa = (bits & ((std::uint64_t{1} << kMantissaBits) - 1)) | std::uint64_t{1} << kMantissaBits;
  const TWide scaled = TWide{mantissa} * kFives[static_cast<std::size_t>(k)];
  const int shift = kMantissaBits - binary - k;
  auto digits = static_cast<std::uint64_t>(scaled >> shift);
  const TWide rest = scaled & ((TWide{1} << shift) - 1);
  const TWide half = TWide{1} << (shift - 1);
  if (rest > half || (rest == half && digits % 2 == 1)) ++digits;
  if (digits == static_cast<std::uint64_t>(kEndOfExact)) {
    digits /= 10;
    ++decimal.exponent;
  }
  decimal.count = kSignificantDigits;
  std::copy_n(fmt::format_int(digits).data(), kSignificantDigits, decimal.digits.begin());
  return decimal;
}

// The value in 15 digits.
TDecimal ToDecimal(double value) {
  const double magnitude = std::fabs(value);
  const bool isExact = magnitude >= kMinExact && magnitude < kEndOfExact;
  TDecimal decimal = isExact ? InIntegers(magnitude) : ByLibrary(magnitude);
  TrimZeros(decimal);
  if (decimal.count == 0) decimal.exponent = 0;
  decimal.negative = std::signbit(value);
  return decimal;
}

// Appends the digits with a point, the fraction filled with zeros to `minPlaces`.
void AppendFixed(std::string& text, const TDecimal& decimal, std::size_t minPlaces) {
  const auto zeros = [&text](int count) { text.append(static_cast<std::size_t>(std::max(count, 0)), '0'); };
  if (decimal.negative && decimal.count > 0) text += '-';
  const int point = decimal.count > 0 ? decimal.exponent + 1 : 0;  // digits before it; negative: zeros after it
  const int whole = std::clamp(point, 0, decimal.count);
  if (point <= 0) text += '0';
  text.append(decimal.digits.data(), static_cast<std::size_t>(whole));
  zeros(point - whole);
  const int places = std::max(decimal.count - point, 0);
  if (places == 0 && minPlaces == 0) return;
  text += '.';
  if (places > 0) {
    zeros(-point);
    text.append(decimal.digits.data() + whole, static_cast<std::size_t>(decimal.count - whole));
  }
  zeros(static_cast<int>(minPlaces) - places);
}

const char* NotFiniteText(double value) {
  return std::isnan(value) ? "NAN" : value > 0 ? "INF" : "-INF";
}

}  // namespace

std::string Windows1252ToUtf8(std::string_view ansi) {
  std::string utf8;
  utf8.reserve(ansi.size());
  for (const char byte : ansi) {
    const char32_t codePoint = CodePointOf(static_cast<unsigned char>(byte));
    if (codePoint < 0x80) {
      utf8 += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
      utf8 += static_cast<char>(0xC0U | (codePoint >> 6));
      utf8 += static_cast<char>(0x80U | (codePoint & 0x3FU));
    } else {
      utf8 += static_cast<char>(0xE0U | (codePoint >> 12));
      utf8 += static_cast<char>(0x80U | ((codePoint >> 6) & 0x3FU));
      utf8 += static_cast<char>(0x80U | (codePoint & 0x3FU));
    }
  }
  return utf8;
}

AnsiString Utf8ToWindows1252(std::string_view utf8) {
  AnsiString ansi;
  ansi.reserve(utf8.size());
  while (!utf8.empty()) ansi += AnsiByteOf(TakeCodePoint(utf8));
  return ansi;
}

void AppendGeneralFloat(std::string& text, double value) {
  if (!std::isfinite(value)) {
    text += NotFiniteText(value);
    return;
  }
  TDecimal decimal = ToDecimal(value);
  if (decimal.exponent >= -5 && decimal.exponent < kSignificantDigits) return AppendFixed(text, decimal, 0);
  const int exponent = std::exchange(decimal.exponent, 0);
  AppendFixed(text, decimal, 0);
  text += 'E';
  text += std::to_string(exponent);
}

std::string GeneralFloat(double value) {
  std::string text;
  AppendGeneralFloat(text, value);
  return text;
}

std::string MaskFloat(std::string_view mask, double value) {
  if (!std::isfinite(value)) return NotFiniteText(value);
  const std::size_t point = mask.find('.');
  const std::string_view places = point == std::string_view::npos ? std::string_view{} : mask.substr(point + 1);
  const auto minPlaces = static_cast<std::size_t>(std::count(places.begin(), places.end(), '0'));
  TDecimal decimal = ToDecimal(value);
  RoundDigits(decimal, decimal.exponent + 1 + static_cast<int>(places.size()));
  std::string text;
  AppendFixed(text, decimal, minPlaces);
  return text;
}

bool IsPlainLine(std::string_view utf8) {
  while (!utf8.empty()) {
    const char32_t codePoint = TakeCodePoint(utf8);
    if (IsControl(codePoint) || codePoint == kMalformed || IsSurrogate(codePoint)) return false;
  }
  return true;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t before = text.size();
    const char32_t codePoint = TakeCodePoint(text);
    const bool isMalformed = codePoint == kMalformed && before - text.size() == 1;  // a valid U+FFFD has 3 bytes
    if (isMalformed || IsSurrogate(codePoint) || codePoint > kMaxCodePoint) return false;
  }
  return true;
}

std::string Printable(std::string_view utf8) {
  std::string text;
  while (!utf8.empty()) {
    const std::string_view before = utf8;
    const char32_t codePoint = TakeCodePoint(utf8);
    const std::string_view taken = before.substr(0, before.size() - utf8.size());
    const bool isMalformed = codePoint == kMalformed && taken.size() == 1;
    text += IsControl(codePoint) || isMalformed ? "?" : taken;
  }
  return text;
}

std::string AsciiLower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

bool IsSameIgnoringCase(std::string_view a, std::string_view b) {
  return AsciiLower(a) == AsciiLower(b);
}

void AppendListItem(std::string& text, std::string_view item, std::string_view separator) {
  if (!text.empty()) text += separator;
  text += item;
}

std::string WithUnit(std::string_view value, std::string_view unit) {
  return fmt::format("{}{}{}", value, unit.empty() ? "" : " ", unit);
}

std::string Counted(std::size_t count, std::string_view what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

std::string_view Trimmed(std::string_view text, std::string_view around) {
  const std::size_t begin = std::min(text.find_first_not_of(around), text.size());
  return text.substr(begin, text.find_last_not_of(around) + 1 - begin);
}

std::string_view TakeUntil(std::string_view& text, std::string_view separator) {
  const std::size_t at = text.find(separator);
  const std::string_view taken = text.substr(0, at);
  text.remove_prefix(at == std::string_view::npos ? text.size() : at + separator.size());
  return taken;
}
