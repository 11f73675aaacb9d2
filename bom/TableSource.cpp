// A price table's source as extended data, the hashes it holds, and the references it names.
#include "bom/TableSource.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <tuple>

#include "bom/PriceTable.h"
#include "files/filestatus.h"
#include "text/TextFile.h"

namespace {

constexpr short kFormat = 1;
// Texts longer than this go in several pieces: a piece of extended data holds at most 255 bytes,
// and a character may take 8 in a drawing's code page (an escape such as "\M+1XXXX").
constexpr std::size_t kPieceLength = 30;

constexpr std::pair<TableSelection, const wchar_t*> kSelectionNames[] = {
    {TableSelection::ModelSpace, L"MODEL SPACE"},
    {TableSelection::Filtered, L"FILTERED"},
    {TableSelection::Picked, L"PICKED"},
};

resbuf Item(short code, std::wstring text) { return resbuf::groupCode(code, std::move(text)); }

resbuf Short(short value) {
    resbuf item;
    item.restype = 1070;
    item.resval.rint = value;
    return item;
}

resbuf Real(double value) {
    resbuf item;
    item.restype = 1040;
    item.resval.rreal = value;
    return item;
}

resbuf Point(const AcGePoint3d& point) {
    resbuf item;
    item.restype = 1010;
    item.resval.rpoint = point;
    return item;
}

class XDataWriter {
public:
    void Key(const wchar_t* key) { m_items.push_back(Item(1000, key)); }
    void Text(std::wstring_view text) {
        m_items.push_back(Item(1002, L"{"));
        for (std::size_t at = 0; at < text.size(); at += kPieceLength)
            m_items.push_back(Item(1000, std::wstring(text.substr(at, kPieceLength))));
        m_items.push_back(Item(1002, L"}"));
    }
    void Flag(const wchar_t* key, bool value) {
        Key(key);
        m_items.push_back(Short(value ? 1 : 0));
    }
    void Add(resbuf item) { m_items.push_back(std::move(item)); }
    std::vector<resbuf> Take() { return std::move(m_items); }

private:
    std::vector<resbuf> m_items;
};

// Reads the items in order; any item out of place makes the whole unreadable.
class XDataReader {
public:
    explicit XDataReader(const std::vector<resbuf>& items) : m_items(items) {}

    bool AtEnd() const { return m_next == m_items.size(); }
    const resbuf* Next(short code) {
        if (AtEnd() || m_items[m_next].restype != code) return nullptr;
        return &m_items[m_next++];
    }
    std::optional<std::wstring> String() {
        const resbuf* item = Next(1000);
        return item ? std::optional(item->resval.rstring) : std::nullopt;
    }
    bool Open() {
        const resbuf* item = Next(1002);
        return item != nullptr && item->resval.rstring == L"{";
    }
    bool Close() {
        if (AtEnd() || m_items[m_next].restype != 1002 || m_items[m_next].resval.rstring != L"}")
            return false;
        ++m_next;
        return true;
    }
    std::optional<std::wstring> Text() {
        if (!Open()) return std::nullopt;
        std::wstring text;
        while (!Close()) {
            const auto piece = String();
            if (!piece) return std::nullopt;
            text += *piece;
        }
        return text;
    }
    std::optional<short> Short() {
        const resbuf* item = Next(1070);
        return item ? std::optional(item->resval.rint) : std::nullopt;
    }
    std::optional<double> Real() {
        const resbuf* item = Next(1040);
        return item ? std::optional(item->resval.rreal) : std::nullopt;
    }
    bool Flag(bool& value) {
        const auto number = Short();
        if (!number || (*number != 0 && *number != 1)) return false;
        value = *number == 1;
        return true;
    }

private:
    const std::vector<resbuf>& m_items;
    std::size_t m_next = 0;
};

bool ReadWindow(XDataReader& in, TableSource& source) {
    AcDbSelectionWindow window;
    for (double* corner : {&window.x1, &window.y1, &window.x2, &window.y2}) {
        const auto value = in.Real();
        if (!value) return false;
        *corner = *value;
    }
    source.window = window;
    return true;
}

bool ReadHandles(XDataReader& in, TableSource& source) {
    if (!in.Open()) return false;
    while (!in.Close()) {
        const resbuf* handle = in.Next(1005);
        if (handle == nullptr) return false;
        source.handles.push_back(handle->resval.rstring);
    }
    return true;
}

bool ReadPoints(XDataReader& in, TableSource& source) {
    if (!in.Open()) return false;
    while (!in.Close()) {
        const resbuf* point = in.Next(1010);
        if (point == nullptr) return false;
        source.points.push_back(point->resval.rpoint);
    }
    return true;
}

bool ReadSelection(XDataReader& in, TableSource& source) {
    const auto name = in.String();
    for (const auto& [selection, text] : kSelectionNames) {
        if (name && *name == text) {
            source.selection = selection;
            return true;
        }
    }
    return false;
}

bool ReadSort(XDataReader& in, TableSource& source) {
    const auto column = in.Short();
    if (!column || *column < -1 || *column >= kBomColumnCount) return false;
    source.sortColumn = *column;
    return in.Flag(source.sortAscending);
}

bool Assign(const std::optional<std::wstring>& value, std::wstring& target) {
    if (value) target = *value;
    return value.has_value();
}

// Each key and how its value is read.
struct Field {
    const wchar_t* key;
    bool (*read)(XDataReader&, TableSource&);
};

constexpr Field kFields[] = {
    {L"LIST", [](XDataReader& in, TableSource& s) { return Assign(in.Text(), s.priceList); }},
    {L"LIST HASH",
     [](XDataReader& in, TableSource& s) { return Assign(in.String(), s.priceListHash); }},
    {L"SELECTION", ReadSelection},
    {L"WINDOW", ReadWindow},
    {L"LAYER",
     [](XDataReader& in, TableSource& s) {
         const auto layer = in.Text();
         if (layer) s.layers.push_back(*layer);
         return layer.has_value();
     }},
    {L"HANDLES", ReadHandles},
    {L"POINTS", ReadPoints},
    {L"SHOW PRICES", [](XDataReader& in, TableSource& s) { return in.Flag(s.showPrices); }},
    {L"SCALE",
     [](XDataReader& in, TableSource& s) {
         const auto scale = in.Real();
         if (scale) s.scale = *scale;
         return scale && *scale > 0.0;
     }},
    {L"NESTED", [](XDataReader& in, TableSource& s) { return in.Flag(s.nested); }},
    {L"RECORD NAMES", [](XDataReader& in, TableSource& s) { return in.Flag(s.recordNames); }},
    {L"ARRAYS AS ONE", [](XDataReader& in, TableSource& s) { return in.Flag(s.arraysAsOne); }},
    {L"LAYOUTS", [](XDataReader& in, TableSource& s) { return in.Flag(s.layouts); }},
    {L"TABLES COUNTED", [](XDataReader& in, TableSource& s) { return in.Flag(s.countsTables); }},
    {L"TEXT FORM", [](XDataReader& in, TableSource& s) { return in.Flag(s.textForm); }},
    {L"ONLY PRICED", [](XDataReader& in, TableSource& s) { return in.Flag(s.onlyPriced); }},
    {L"SORT", ReadSort},
    {L"ROWS", [](XDataReader& in, TableSource& s) { return Assign(in.String(), s.rowsDigest); }},
};

std::uint64_t Fnv1a(std::uint64_t hash, std::string_view bytes) {
    for (const char c : bytes) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 0x100000001b3ULL;
    }
    return hash;
}

constexpr std::uint64_t kFnvOffset = 0xcbf29ce484222325ULL;

std::wstring Hex(std::uint64_t value) {
    wchar_t text[17];
    std::swprintf(text, 17, L"%016llx", static_cast<unsigned long long>(value));
    return text;
}

}  // namespace

std::vector<resbuf> TableSourceXData(const TableSource& source) {
    XDataWriter out;
    out.Add(Short(kFormat));
    out.Key(L"LIST");
    out.Text(source.priceList);
    out.Key(L"LIST HASH");
    out.Add(Item(1000, source.priceListHash));
    out.Key(L"SELECTION");
    for (const auto& [selection, text] : kSelectionNames) {
        if (selection == source.selection) out.Add(Item(1000, text));
    }
    if (source.window) {
        out.Key(L"WINDOW");
        for (const double corner :
             {source.window->x1, source.window->y1, source.window->x2, source.window->y2})
            out.Add(Real(corner));
    }
    for (const std::wstring& layer : source.layers) {
        out.Key(L"LAYER");
        out.Text(layer);
    }
    if (!source.handles.empty() ||
        (source.selection == TableSelection::Picked && source.points.empty())) {
        out.Key(L"HANDLES");
        out.Add(Item(1002, L"{"));
        for (const std::wstring& handle : source.handles) out.Add(Item(1005, handle));
        out.Add(Item(1002, L"}"));
    }
    if (!source.points.empty()) {
        out.Key(L"POINTS");
        out.Add(Item(1002, L"{"));
        for (const AcGePoint3d& point : source.points) out.Add(Point(point));
        out.Add(Item(1002, L"}"));
    }
    out.Flag(L"SHOW PRICES", source.showPrices);
    out.Key(L"SCALE");
    out.Add(Real(source.scale));
    out.Flag(L"NESTED", source.nested);
    out.Flag(L"RECORD NAMES", source.recordNames);
    out.Flag(L"ARRAYS AS ONE", source.arraysAsOne);
    out.Flag(L"LAYOUTS", source.layouts);
    out.Flag(L"TABLES COUNTED", source.countsTables);
    out.Flag(L"TEXT FORM", source.textForm);
    out.Flag(L"ONLY PRICED", source.onlyPriced);
    out.Key(L"SORT");
    out.Add(Short(static_cast<short>(source.sortColumn)));
    out.Add(Short(source.sortAscending ? 1 : 0));
    out.Key(L"ROWS");
    out.Add(Item(1000, source.rowsDigest));
    return out.Take();
}

std::optional<TableSource> ReadTableSourceXData(const std::vector<resbuf>& items) {
    XDataReader in(items);
    if (in.Short() != kFormat) return std::nullopt;
    TableSource source;
    while (!in.AtEnd()) {
        const auto key = in.String();
        if (!key) return std::nullopt;
        const Field* field = nullptr;
        for (const Field& candidate : kFields) {
            if (*key == candidate.key) field = &candidate;
        }
        if (field == nullptr || !field->read(in, source)) return std::nullopt;
    }
    return source;
}

std::wstring HashOfBytes(std::string_view bytes) { return Hex(Fnv1a(kFnvOffset, bytes)); }

std::optional<std::wstring> HashOfFile(const std::wstring& path, std::string& reason) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
        std::fopen(NativePath(path).c_str(), "rb"), std::fclose);
    if (!file) {
        reason = systemReason(errno);
        return std::nullopt;
    }
    std::uint64_t hash = kFnvOffset;
    char buffer[65536];
    std::size_t read = 0;
    while ((read = std::fread(buffer, 1, sizeof buffer, file.get())) > 0)
        hash = Fnv1a(hash, std::string_view(buffer, read));
    if (std::ferror(file.get())) {
        reason = systemReason(errno);
        return std::nullopt;
    }
    return Hex(hash);
}

std::vector<BomRow> ShownTableRows(const std::vector<BomRow>& rows, bool showPrices) {
    std::vector<BomRow> shown;
    for (BomRow row : rows) {
        if (!showPrices) {
            if (row[kNameColumn] == kSummaryName) continue;
            row[kPriceColumn].clear();
            row[kTotalColumn].clear();
        }
        shown.push_back(std::move(row));
    }
    return shown;
}

std::wstring DigestOfRows(const std::vector<BomRow>& rows, bool showPrices) {
    std::vector<BomRow> shown = ShownTableRows(rows, showPrices);
    std::sort(shown.begin(), shown.end());
    std::uint64_t hash = kFnvOffset;
    for (const BomRow& row : shown) {
        for (const std::wstring& cell : row) hash = Fnv1a(Fnv1a(hash, EncodeUtf8(cell)), "\x1f");
        hash = Fnv1a(hash, "\x1e");
    }
    return Hex(hash);
}

bool RecordPickedReferences(const AcDbDatabase& database, const std::vector<AcDbObjectId>& ids,
                            TableSource& source) {
    source.selection = TableSelection::Picked;
    source.handles.clear();
    source.points.clear();
    if (ids.size() > kMostRecordedReferences) return false;
    for (const AcDbObjectId id : ids) {
        std::wstring handle;
        const Acad::ErrorStatus status = database.getHandle(id, handle);
        if (status == Acad::eOk) {
            source.handles.push_back(handle);
            continue;
        }
        AcDbBlockReference reference;
        if (status != Acad::eNotApplicable ||
            database.openBlockReference(id, reference) != Acad::eOk)
            continue;
        source.points.push_back(reference.position);
    }
    return true;
}

std::vector<AcDbObjectId> PickedReferences(const AcDbDatabase& database,
                                           const TableSource& source) {
    std::vector<AcDbObjectId> ids;
    for (const std::wstring& handle : source.handles) {
        AcDbObjectId id;
        if (database.getObjectId(handle, id) == Acad::eOk) ids.push_back(id);
    }
    if (source.points.empty()) return ids;
    // Without handles, a reference is known by where it stands.
    using Place = std::tuple<double, double, double>;
    std::map<Place, int> wanted;
    for (const AcGePoint3d& p : source.points) ++wanted[{p.x, p.y, p.z}];
    std::vector<AcDbObjectId> entities;
    database.getModelSpaceEntityIds(entities);
    for (const AcDbObjectId id : entities) {
        AcDbBlockReference reference;
        if (database.openBlockReference(id, reference) != Acad::eOk) continue;
        const AcGePoint3d& p = reference.position;
        const auto place = wanted.find({p.x, p.y, p.z});
        if (place == wanted.end() || place->second == 0) continue;
        --place->second;
        ids.push_back(id);
    }
    return ids;
}

bool RecordTableSource(const std::wstring& blockName, TableSource source,
                       const std::vector<BomRow>& rows) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    AcDbObjectId block;
    if (database == nullptr || database->getBlockTableRecordId(blockName, block) != Acad::eOk)
        return false;
    source.priceListHash.clear();
    if (!source.priceList.empty()) {
        std::error_code error;
        const std::filesystem::path list(NativePath(source.priceList));
        const std::filesystem::path absolute = std::filesystem::absolute(list, error);
        if (!error) source.priceList = WidePath(absolute.lexically_normal().string());
        std::string reason;
        source.priceListHash = HashOfFile(source.priceList, reason).value_or(L"");
    }
    source.rowsDigest = DigestOfRows(rows, source.showPrices);
    return database->registerApplication(kTableApplication) == Acad::eOk &&
           database->setXData(block, kTableApplication, TableSourceXData(source)) == Acad::eOk;
}

bool IsPriceTable(const AcDbDatabase& database, AcDbObjectId block) {
    std::wstring name;
    if (database.getBlockTableRecordName(block, name) != Acad::eOk || !IsTableBlockName(name))
        return false;
    if (ReadTableSource(database, block)) return true;
    std::vector<AcDbObjectId> entities;
    database.getBlockEntityIds(block, entities);
    return std::any_of(entities.begin(), entities.end(), [&](AcDbObjectId entity) {
        std::wstring tag;
        std::wstring text;
        return TableCellOf(database, entity, tag, text) && tag == kTableColumnTags[kNameColumn];
    });
}

bool TableCellOf(const AcDbDatabase& database, AcDbObjectId entity, std::wstring& tag,
                  std::wstring& text) {
    AcDbAttributeDefinition definition;
    if (database.openAttributeDefinition(entity, definition) == Acad::eOk) {
        tag = definition.tag;
        text = definition.textString;
        return true;
    }
    AcDbText plain;
    std::vector<resbuf> items;
    if (database.openText(entity, plain) != Acad::eOk ||
        database.getXData(entity, kTableApplication, items) != Acad::eOk || items.size() != 2 ||
        items[0].restype != 1000 || std::wstring(items[0].resval.rstring) != kTableCellKey ||
        items[1].restype != 1000)
        return false;
    tag = items[1].resval.rstring;
    text = plain.textString;
    return true;
}


bool IsPriceTableNamed(const AcDbDatabase& database, const std::wstring& name) {
    AcDbObjectId block;
    return database.getBlockTableRecordId(name, block) == Acad::eOk &&
           IsPriceTable(database, block);
}

std::optional<TableSource> ReadTableSource(const AcDbDatabase& database, AcDbObjectId block) {
    std::vector<resbuf> items;
    if (database.getXData(block, kTableApplication, items) != Acad::eOk) return std::nullopt;
    return ReadTableSourceXData(items);
}
