// Paths and contents of the settings files.
#include "pricelist/SettingsFiles.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cwctype>

#include "text/CaseRules.h"
#include "text/TextFile.h"

namespace {

constexpr std::size_t kFileNameBuffer = 100;

std::wstring ReplaceAll(std::wstring text, const std::wstring& from, const std::wstring& to) {
    if (from.empty()) return text;
    for (std::size_t at = text.find(from); at != std::wstring::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

std::wstring FolderOf(const std::wstring& path) {
    const std::size_t slash = path.rfind(L'/');
    return slash == std::wstring::npos ? std::wstring(L".") : path.substr(0, slash + 1);
}

std::wstring ConfigFolder() {
    if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg != nullptr && *xdg == '/')
        return WidePath(xdg) + L"/tarnwick/";
    const char* home = std::getenv("HOME");
    return WidePath(home != nullptr ? home : "") + L"/.config/tarnwick/";
}

bool FolderIsWritable(const std::wstring& folder) {
    return ::access(NativePath(folder).c_str(), W_OK) == 0;
}

// Creates the folder and its parents; the settings of the fallback folder need it to exist.
void MakeFolders(const std::wstring& folder) {
    const std::string native = NativePath(folder);
    for (std::size_t at = native.find('/', 1); at != std::string::npos;
         at = native.find('/', at + 1)) {
        ::mkdir(native.substr(0, at).c_str(), 0755);
    }
    ::mkdir(native.c_str(), 0755);
}

bool IsSpace(wchar_t c) { return std::iswspace(static_cast<wint_t>(c)) != 0; }

}  // namespace

SettingsPaths MakeSettingsPaths(const std::wstring& modulePath, const std::wstring& widthsFile,
                                bool lowerCase) {
    const std::wstring path = lowerCase ? MakeLower(modulePath) : modulePath;
    std::size_t separator = path.rfind(L'/');
    if (separator == std::wstring::npos) separator = path.rfind(L'\\');
    SettingsPaths paths;
    if (separator == std::wstring::npos) {
        paths.widths = widthsFile;
    } else {
        paths.widths = ReplaceAll(path, path.substr(separator + 1), widthsFile);
    }
    paths.fileName = ReplaceAll(paths.widths, widthsFile, kFileNameSettingsFile);
    return paths;
}

SettingsPaths GetSettingsPaths(const std::wstring& modulePath, const std::wstring& widthsFile) {
    if (FolderIsWritable(FolderOf(modulePath)))
        return MakeSettingsPaths(modulePath, widthsFile, false);
    const std::size_t slash = modulePath.rfind(L'/');
    const std::wstring moduleName =
        slash == std::wstring::npos ? modulePath : modulePath.substr(slash + 1);
    const std::wstring folder = ConfigFolder();
    MakeFolders(folder);
    return MakeSettingsPaths(folder + moduleName, widthsFile, false);
}

bool ReadColumnWidths(const std::wstring& path, int* widths, int count) {
    std::FILE* file = std::fopen(NativePath(path).c_str(), "r");
    if (file == nullptr) return false;
    for (int i = 0; i < count; ++i) {
        if (std::fscanf(file, "%i ", &widths[i]) != 1) break;
    }
    std::fclose(file);
    return true;
}

bool WriteColumnWidths(const std::wstring& path, const int* widths, int count) {
    std::wstring text;
    for (int i = 0; i < count; ++i) text += std::to_wstring(widths[i]) + L' ';
    return WriteTextFile(path, text, TextFormat{}).isOk();
}

bool ReadFileNameSetting(const std::wstring& path, std::wstring& fileName) {
    const auto content = ReadTextFile(path);
    if (!content) return false;
    const std::wstring& text = content->text;
    std::size_t start = 0;
    while (start < text.size() && IsSpace(text[start])) ++start;
    if (start == text.size()) return true;  // "%s" matched nothing: the name stays as it was
    std::size_t end = start;
    while (end < text.size() && !IsSpace(text[end]) && end - start < kFileNameBuffer - 1) ++end;
    fileName = text.substr(start, end - start);
    return true;
}

bool WriteFileNameSetting(const std::wstring& path, const std::wstring& fileName) {
    return WriteTextFile(path, fileName, TextFormat{}).isOk();
}
