// Size and place of the window from one start to the next, in a file of the settings folder.
#pragma once

#include <QMainWindow>
#include <filesystem>

inline constexpr auto kWindowPlaceFile = "window.ini";

// The first start's: 85 % of the screen's free area, at most 1600 x 1000, in its middle.
QRect FirstPlace(const QRect& freeArea);

// Puts the window where the file says, if that is on a screen that exists; elsewhere, and with a file that is missing
// or wrong, the window gets its first place.
void LoadWindowPlace(QMainWindow& window, const std::filesystem::path& file);
// Throws when the file cannot be written.
void SaveWindowPlace(const QMainWindow& window, const std::filesystem::path& file);
