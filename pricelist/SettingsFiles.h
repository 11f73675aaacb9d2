// The settings files beside the module: column widths ("%i " each) and the last file name ("%s").
#pragma once

#include <string>

inline constexpr const wchar_t* kPriceListSettingsFile = L"tarnwick1.set";
inline constexpr const wchar_t* kCalculationSettingsFile = L"tarnwick2.set";
inline constexpr const wchar_t* kFileNameSettingsFile = L"filename.set";
// One integer beside the others, written by the user: 1 draws price tables as plain texts.
inline constexpr const wchar_t* kTableFormSettingsFile = L"tabletext.set";

struct SettingsPaths {
    std::wstring widths;    // "tarnwick1.set" or "tarnwick2.set"
    std::wstring fileName;  // "filename.set"
};

// The path rule as stated for the module's home platform: the module path, lower-cased when asked,
// with every occurrence of the module's file name replaced by the settings file's name.
SettingsPaths MakeSettingsPaths(const std::wstring& modulePath, const std::wstring& widthsFile,
                                bool lowerCase);

// The paths used here: file names keep their case; when the module's folder is not writable, the
// rule is applied to the module's name placed in $XDG_CONFIG_HOME/tarnwick/ (~/.config/tarnwick/).
SettingsPaths GetSettingsPaths(const std::wstring& modulePath, const std::wstring& widthsFile);

// Reads up to `count` integers as "%i " does; stops at the first that is not there. False when the
// file cannot be opened.
bool ReadColumnWidths(const std::wstring& path, int* widths, int count);
bool WriteColumnWidths(const std::wstring& path, const int* widths, int count);

// Reads one "%s" word: leading white space skipped, it ends at the next white space; at most 99
// characters, as the receiving buffer holds 100.
bool ReadFileNameSetting(const std::wstring& path, std::wstring& fileName);
bool WriteFileNameSetting(const std::wstring& path, const std::wstring& fileName);
