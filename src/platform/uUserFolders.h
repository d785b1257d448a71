// Where the user keeps documents and settings. Nothing here throws: what cannot be found is empty.
#pragma once

#include <filesystem>
#include <string>

// The desktop's "Documents" folder, whether or not it exists yet.
std::filesystem::path DocumentsFolder() noexcept;

// The settings folder, made with all parents if need be: "Korvex/settings" below the documents, with its trailing
// delimiter. Empty when the system names no documents or the folder cannot be made.
std::string SettingsFolder() noexcept;

// The value "FileDir" of the registry key "Software\Halvorn\Korvex\", read-only. Systems without a registry keep it in
// "Halvorn/Korvex.ini" below the user's configuration folder, section "General".
std::string RegistryFileDir() noexcept;
