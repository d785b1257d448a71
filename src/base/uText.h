// Text: the 8-bit code page of recordings, numbers as text, and checks of UTF-8. Text inside the program is UTF-8;
// nothing here depends on the user's locale.
#pragma once

#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

// Text in Windows-1252, as recordings hold it.
using AnsiString = std::string;

// The five bytes that Windows-1252 leaves undefined become the control characters of the same number.
std::string Windows1252ToUtf8(std::string_view ansi);

// Characters outside Windows-1252 and malformed sequences become "?".
AnsiString Utf8ToWindows1252(std::string_view utf8);

// General form: at most 15 significant digits, trailing zeros removed; fixed while the rounded decimal exponent is
// -5 … 14, else like "1E-6" or "2.5E15". Zero of either sign is "0"; "NAN", "INF", "-INF".
std::string GeneralFloat(double value);
void AppendGeneralFloat(std::string& text, double value);

// A value in a mask such as "0", "0.00" or "0.0##": a "0" place is always shown, a "#" place only when significant.
// The value is first taken to 15 significant digits, then rounded to the mask's places, halves away from zero.
// A value that rounds to zero has no sign. What is not finite reads as in GeneralFloat.
std::string MaskFloat(std::string_view mask, double value);

// Replaces control characters and malformed bytes by "?", so that a text cannot control a terminal or fake a line.
std::string Printable(std::string_view utf8);

// True for valid UTF-8 without control characters.
bool IsPlainLine(std::string_view utf8);

// True for valid UTF-8. Text in an 8-bit code page with non-ASCII letters hardly ever is.
bool IsUtf8(std::string_view text);

// The text with its letters A … Z as small ones.
std::string AsciiLower(std::string_view text);

bool IsSameIgnoringCase(std::string_view a, std::string_view b);

// Appends an item to a list, after the separator unless the list is empty.
void AppendListItem(std::string& text, std::string_view item, std::string_view separator = ", ");

// "23 °C"; the value alone where there is no unit.
std::string WithUnit(std::string_view value, std::string_view unit);

// "1 event", "3 events".
std::string Counted(std::size_t count, std::string_view what);

// Without these characters at its ends.
std::string_view Trimmed(std::string_view text, std::string_view around = " ");

// What stands before the separator, or all of the text; the text loses it with the separator.
std::string_view TakeUntil(std::string_view& text, std::string_view separator);

// The number that all of a text is, in the form of std::from_chars; nothing for other text and a number that is too
// large.
template <class T, class... TFormat>
std::optional<T> NumberIn(std::string_view text, TFormat... format) {
  T number{};
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number, format...);
  if (error != std::errc() || rest != end) return std::nullopt;
  return number;
}
