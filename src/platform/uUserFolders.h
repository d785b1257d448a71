// The user's folders for documents and settings. Nothing here throws; a folder that cannot be found is empty.
#pragma once

#include <filesystem>
#include <string>

// The desktop's "Documents" folder, whether or not it exists yet.
std::filesystem::path DocumentsFolder() noexcept;

// Where the settings folder is, whether or not it exists yet.
std::filesystem::path SettingsFolderPath() noexcept;

// "Korvex/settings" below the documents, with a trailing delimiter; created with its parents when it is missing. Empty
// when there is no documents folder or it cannot be created.
std::string SettingsFolder() noexcept;

// The value "FileDir" of the registry key "Software\Halvorn\Korvex\", read-only. Systems without a registry keep it in
// "Halvorn/Korvex.ini" below the user's configuration folder, section "General".
std::string RegistryFileDir() noexcept;
