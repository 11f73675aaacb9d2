// What a price table was made from, kept with its block as extended data under the application
// "TARNWICK": the price list and a hash of its bytes, the selection that was counted, how it was
// counted and shown, and a digest of the rows drawn. From it the table can be counted again.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bom/BomRows.h"
#include "host/api/acdbdatabase.h"

inline constexpr const wchar_t* kTableApplication = L"TARNWICK";

// More hand-picked references than this are not recorded: the extended data of one object must
// stay within the 16 KB a CAD program keeps.
inline constexpr std::size_t kMostRecordedReferences = 1000;

enum class TableSelection {
    ModelSpace,  // every reference of model space
    Filtered,    // those of model space that the window and the layers let through
    Picked,      // the references picked, by handle or (without handles) by insertion point
};

struct TableSource {
    std::wstring priceList;      // its absolute path; empty for a bill counted without one
    std::wstring priceListHash;  // of its bytes
    TableSelection selection = TableSelection::ModelSpace;
    std::optional<AcDbSelectionWindow> window;
    std::vector<std::wstring> layers;
    std::vector<std::wstring> handles;  // picked, in a drawing with handles
    std::vector<AcGePoint3d> points;    // picked, in a drawing without them
    bool showPrices = true;
    double scale = 1.0;  // the table's drawing scale; a reference keeps its own
    bool nested = false;
    bool recordNames = false;
    bool arraysAsOne = false;  // an array counted once, as the module counts it
    bool layouts = false;      // the paper-space layouts' references counted too
    // Price tables met were counted as blocks: the module's rule, where a selected table counts.
    // Without it, as the console counts, no price table is an item of another.
    bool countsTables = false;
    bool textForm = false;  // cells drawn as plain texts (TableForm::Texts)
    bool onlyPriced = false;
    int sortColumn = -1;  // the column last sorted by in the grid; -1: rows as counted
    bool sortAscending = true;
    std::wstring rowsDigest;
    friend bool operator==(const TableSource&, const TableSource&) = default;
};

// The extended data's items (after the application's name) and back; null for items that are not
// a table's source in this form.
std::vector<resbuf> TableSourceXData(const TableSource& source);
std::optional<TableSource> ReadTableSourceXData(const std::vector<resbuf>& items);

// 64-bit FNV-1a of the bytes, as 16 hexadecimal digits.
std::wstring HashOfBytes(std::string_view bytes);
// The hash of a file's bytes; null, with the system's reason, when it cannot be read.
std::optional<std::wstring> HashOfFile(const std::wstring& path, std::string& reason);
// The rows as the table shows them: the price and total columns blank and the summary row left
// out while prices are hidden.
std::vector<BomRow> ShownTableRows(const std::vector<BomRow>& rows, bool showPrices);
// The digest of the rows the table shows, whatever their order: a table sorted in the grid
// holds the same bill as one that is not.
std::wstring DigestOfRows(const std::vector<BomRow>& rows, bool showPrices);

// Whether a block of the drawing is a price table the module drew: its name is "QTB" and four
// digits, and it records its source or holds the heading cell "BLOCKNAME".
bool IsPriceTable(const AcDbDatabase& database, AcDbObjectId block);
// The tag and text of a table's cell: an attribute definition's, or those of a text that names
// its cell in extended data (the text form). False for any other entity.
bool TableCellOf(const AcDbDatabase& database, AcDbObjectId entity, std::wstring& tag,
                 std::wstring& text);
// The same for a block named; false when the drawing has no block of that name.
bool IsPriceTableNamed(const AcDbDatabase& database, const std::wstring& name);

// The picked references as a table records them: handles, or insertion points in a drawing without
// handles. False when there are more than it records.
bool RecordPickedReferences(const AcDbDatabase& database, const std::vector<AcDbObjectId>& ids,
                            TableSource& source);
// What the recorded references are now: objects that still have the handles, or references of
// model space that stand at the points (one for each time a point was recorded).
std::vector<AcDbObjectId> PickedReferences(const AcDbDatabase& database, const TableSource& source);

// Completes the source with the list's hash (read now) and the rows' digest, and keeps it with the
// table block of the working drawing. False when the block is not there, its references were too
// many to record, or the drawing refuses the data.
bool RecordTableSource(const std::wstring& blockName, TableSource source,
                       const std::vector<BomRow>& rows);
// The source kept with a block; null for a block without one (a table from before tables recorded
// their source, or one whose data this module cannot read).
std::optional<TableSource> ReadTableSource(const AcDbDatabase& database, AcDbObjectId block);
