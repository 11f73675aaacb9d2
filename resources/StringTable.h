// The module's string table: the texts its dialogs show, looked up by id as the module's resources
// hold them.
#pragma once

#include <string>

// The price-list editor.
inline constexpr int IDS_PRICE_COLUMN_NAME = 1101;         // "Block name"
inline constexpr int IDS_PRICE_COLUMN_PRICE = 1102;        // "Price"
inline constexpr int IDS_PRICE_COLUMN_DESCRIPTION = 1103;  // "Description"
inline constexpr int IDS_PRICE_NAME_ABSENT = 1104;         // "Block name is absent"
inline constexpr int IDS_PRICE_PRICE_ABSENT = 1105;        // "Price is absent"
inline constexpr int IDS_PRICE_NAME_NOT_UNIQUE = 1106;     // "Block name %s is not unique"
inline constexpr int IDS_PRICE_SAVE_CHANGES = 1107;        // "Save changes to %s"
inline constexpr int IDS_PRICE_TITLE_NEW = 1108;           // "New"
inline constexpr int IDS_PRICE_TITLE_OPEN = 1109;          // "Open"
inline constexpr int IDS_PRICE_TITLE_SAVE_AS = 1110;       // "Save as"
inline constexpr int IDS_PRICE_EXTENSION = 1111;           // "prc"

// The string of this id; empty for an id the table does not hold.
std::wstring LoadModuleString(int id);
// The string of this id with its one "%s" replaced by `argument`.
std::wstring FormatModuleString(int id, const std::wstring& argument);
