// Text as it stands on disk and as people read it: the 8-bit code page of recordings and numbers written as text.
// Everything inside the program is UTF-8; nothing here depends on the user's locale.
#pragma once

#include <string>
#include <string_view>

// 8-bit text in Windows-1252, as it stands in a recording. Kept apart from UTF-8 by name only.
using AnsiString = std::string;

// The five bytes that Windows-1252 leaves undefined become the control characters of the same number.
std::string Windows1252ToUtf8(std::string_view ansi);

// The reverse; a character outside Windows-1252 and a malformed sequence become "?".
AnsiString Utf8ToWindows1252(std::string_view utf8);

// General form: at most 15 significant digits, trailing zeros removed; fixed while the rounded decimal exponent is
// -5 … 14, else like "1E-6" or "2.5E15". Zero of either sign is "0"; "NAN", "INF", "-INF".
std::string GeneralFloat(double value);
void AppendGeneralFloat(std::string& text, double value);

// A value in a mask such as "0", "0.00" or "0.0##": a "0" place is always shown, a "#" place only when significant.
// The value is first taken to 15 significant digits, then rounded to the mask's places, halves away from zero.
// A value that rounds to zero has no sign. What is not finite reads as in GeneralFloat.
std::string MaskFloat(std::string_view mask, double value);

// The text with every control character and every malformed byte as "?", so that it cannot steer a terminal or forge a
// line.
std::string Printable(std::string_view utf8);

// Whole UTF-8 without control characters: what can stand on a line and comes back from a window as it was.
bool IsPlainLine(std::string_view utf8);

// Every byte belongs to a character. Text in an 8-bit code page with a letter beyond ASCII hardly ever does.
bool IsUtf8(std::string_view text);

// Appends an item to a list in words: as it is when the text is empty, else after ", ".
void AppendListItem(std::string& text, std::string_view item);
