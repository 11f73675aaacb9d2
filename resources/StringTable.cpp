// The module's string table.
#include "resources/StringTable.h"

namespace {

struct StringEntry {
    int id;
    const wchar_t* text;
};

constexpr StringEntry kStrings[] = {
    {IDS_PRICE_COLUMN_NAME, L"Block name"},
    {IDS_PRICE_COLUMN_PRICE, L"Price"},
    {IDS_PRICE_COLUMN_DESCRIPTION, L"Description"},
    {IDS_PRICE_NAME_ABSENT, L"Block name is absent"},
    {IDS_PRICE_PRICE_ABSENT, L"Price is absent"},
    {IDS_PRICE_NAME_NOT_UNIQUE, L"Block name %s is not unique"},
    {IDS_PRICE_SAVE_CHANGES, L"Save changes to %s"},
    {IDS_PRICE_TITLE_NEW, L"New"},
    {IDS_PRICE_TITLE_OPEN, L"Open"},
    {IDS_PRICE_TITLE_SAVE_AS, L"Save as"},
    {IDS_PRICE_EXTENSION, L"prc"},
};

}  // namespace

std::wstring LoadModuleString(int id) {
    for (const StringEntry& entry : kStrings) {
        if (entry.id == id) return entry.text;
    }
    return {};
}

std::wstring FormatModuleString(int id, const std::wstring& argument) {
    std::wstring text = LoadModuleString(id);
    if (const std::size_t at = text.find(L"%s"); at != std::wstring::npos)
        text.replace(at, 2, argument);
    return text;
}
