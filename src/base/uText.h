// Text: the 8-bit code page of recordings, numbers as text, and checks of UTF-8. Text inside the program is UTF-8;
// nothing here depends on the user's locale.
#pragma once

#include <string>
#include <string_view>

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

// The text without blanks, tabs and carriage returns at its ends.
std::string_view Trimmed(std::string_view text);

// The text with its letters A … Z as small ones.
std::string AsciiLower(std::string_view text);

// Appends an item to a list, after ", " unless the list is empty.
void AppendListItem(std::string& text, std::string_view item);
