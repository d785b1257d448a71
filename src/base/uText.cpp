#include "base/uText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>

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

bool IsControl(char32_t codePoint) {
  return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
}

// One code point from the front of the text, which is shortened by it; kMalformed for a malformed byte.
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
  constexpr char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
  if (codePoint < kLeast[following]) return kMalformed;
  utf8.remove_prefix(following);
  return codePoint;
}

// A finite number as sign, significant digits without trailing zeros, and the decimal exponent of the first digit.
// Zero has no digits.
struct TDecimal {
  bool negative;
  std::string digits;
  int exponent;
};

constexpr int kSignificantDigits = 15;

TDecimal ToDecimal(double value) {
  std::array<char, 40> text{};
  std::to_chars(text.data(), text.data() + text.size(), std::fabs(value), std::chars_format::scientific,
                kSignificantDigits - 1);
  // Like "1.23456789012345e-05": a digit, the point, the other digits, the exponent; zeros follow the text.
  const std::string_view written(text.data());
  TDecimal decimal{std::signbit(value), std::string(1, written[0]), std::atoi(&written[kSignificantDigits + 2])};
  decimal.digits += written.substr(2, kSignificantDigits - 1);
  decimal.digits.erase(decimal.digits.find_last_not_of('0') + 1);
  if (decimal.digits.empty()) decimal.exponent = 0;
  return decimal;
}

// Keeps the first `count` digits (none or fewer is allowed), rounding halves away from zero.
void RoundDigits(TDecimal& decimal, int count) {
  if (count >= static_cast<int>(decimal.digits.size())) return;
  const bool up = count >= 0 && decimal.digits[static_cast<std::size_t>(count)] >= '5';
  decimal.digits.resize(static_cast<std::size_t>(std::max(count, 0)));
  if (!up) return;
  const std::size_t lastKept = decimal.digits.find_last_not_of('9');
  if (lastKept == std::string::npos) {
    decimal.digits = "1";
    ++decimal.exponent;
  } else {
    decimal.digits.resize(lastKept + 1);
    ++decimal.digits[lastKept];
  }
}

// The digits with a point, the fraction filled with zeros to `minPlaces`.
std::string FixedText(const TDecimal& decimal, std::size_t minPlaces) {
  std::string whole;
  std::string fraction;
  for (std::size_t i = 0; i < decimal.digits.size(); ++i) {
    (static_cast<int>(i) <= decimal.exponent ? whole : fraction) += decimal.digits[i];
  }
  if (!decimal.digits.empty() && decimal.exponent < 0) {
    fraction.insert(0, static_cast<std::size_t>(-decimal.exponent - 1), '0');
  }
  if (!decimal.digits.empty() && decimal.exponent >= 0)
    whole.resize(static_cast<std::size_t>(decimal.exponent) + 1, '0');
  fraction.erase(fraction.find_last_not_of('0') + 1);
  if (fraction.size() < minPlaces) fraction.resize(minPlaces, '0');
  std::string text;
  if (decimal.negative && !decimal.digits.empty()) text += '-';
  text += whole.empty() ? "0" : whole;
  if (!fraction.empty()) text += '.' + fraction;
  return text;
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

std::string GeneralFloat(double value) {
  if (!std::isfinite(value)) return NotFiniteText(value);
  const TDecimal decimal = ToDecimal(value);
  if (decimal.exponent >= -5 && decimal.exponent < kSignificantDigits) return FixedText(decimal, 0);
  const TDecimal mantissa{decimal.negative, decimal.digits, 0};
  return FixedText(mantissa, 0) + "E" + std::to_string(decimal.exponent);
}

std::string MaskFloat(std::string_view mask, double value) {
  if (!std::isfinite(value)) return NotFiniteText(value);
  const std::size_t point = mask.find('.');
  const std::string_view places = point == std::string_view::npos ? std::string_view{} : mask.substr(point + 1);
  const auto minPlaces = static_cast<std::size_t>(std::count(places.begin(), places.end(), '0'));
  TDecimal decimal = ToDecimal(value);
  RoundDigits(decimal, decimal.exponent + 1 + static_cast<int>(places.size()));
  return FixedText(decimal, minPlaces);
}

bool IsPlainLine(std::string_view utf8) {
  while (!utf8.empty()) {
    const char32_t codePoint = TakeCodePoint(utf8);
    const bool isSurrogate = codePoint >= 0xD800 && codePoint < 0xE000;
    if (IsControl(codePoint) || codePoint == kMalformed || isSurrogate) return false;
  }
  return true;
}

std::string Printable(std::string_view utf8) {
  std::string text;
  while (!utf8.empty()) {
    const std::string_view before = utf8;
    const char32_t codePoint = TakeCodePoint(utf8);
    text += IsControl(codePoint) ? "?" : before.substr(0, before.size() - utf8.size());
  }
  return text;
}

void AppendListItem(std::string& text, std::string_view item) {
  if (!text.empty()) text += ", ";
  text += item;
}
