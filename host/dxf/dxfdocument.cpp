// Reading a drawing, indexing what the host asks for, writing it back, selection and variables.
#include "host/dxf/dxfdocument.h"

#include <algorithm>

#include "files/atomicfile.h"
#include "host/dxf/dxffile.h"
#include "host/dxf/dxfnumber.h"
#include "host/dxf/dxfrecovery.h"
#include "host/dxf/dxfviews.h"
#include "text/CaseRules.h"
#include "text/TextFile.h"

namespace {

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return std::toupper(static_cast<unsigned char>(x)) ==
               std::toupper(static_cast<unsigned char>(y));
    });
}

// The header variables that the host's editors reach through acedGetVar and acedSetVar.
struct HeaderVariable {
    const wchar_t* name;
    std::string_view header;
    short fallback;  // a new drawing's value, for files that do not hold the variable
};

constexpr HeaderVariable kHeaderVariables[] = {
    {L"ATTREQ", "$ATTREQ", 1},
    {L"SNAPMODE", "$SNAPMODE", 0},
    {L"OSMODE", "$OSMODE", 0},
};

const HeaderVariable* headerVariable(const std::wstring& name) {
    const std::wstring key = MakeUpper(name);
    for (const auto& variable : kHeaderVariables) {
        if (key == variable.name) return &variable;
    }
    return nullptr;
}

// The folder with a final "/", as a module joins it with the file's name.
std::wstring folderText(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return WidePath((error ? path : absolute).parent_path().string() + "/");
}

std::wstring fileNameText(const std::filesystem::path& path) {
    const std::string bytes = path.filename().string();
    try {
        return path.filename().wstring();
    } catch (const std::exception&) {
        return std::wstring(bytes.begin(), bytes.end());
    }
}

}  // namespace

DxfDocument::DxfDocument(std::filesystem::path path, DxfTagFile tags, DxfRecords records,
                         DxfStructure structure)
    : m_path(std::move(path)),
      m_tags(std::move(tags)),
      m_records(std::move(records)),
      m_structure(std::move(structure)),
      m_codec({}, {}) {}

DxfDocument::~DxfDocument() = default;

DxfResult<std::unique_ptr<DxfDocument>> DxfDocument::load(std::filesystem::path path,
                                                          DxfResult<DxfTagFile> tags,
                                                          DxfReading reading) {
    if (!tags.isOk()) return tags.error();
    DxfRecords records(tags.value());
    DxfResult<DxfStructure> structure = DxfStructure::index(tags.value(), records);
    if (!structure.isOk()) {
        if (reading == DxfReading::Strict || structure.error().kind() != DxfErrorKind::Structure)
            return structure.error();
        // The mended file is read as any other; what it cannot mend is told as the strict read
        // tells it.
        DxfRecovery recovery = recoverStructure(tags.value(), records);
        const std::string name = tags.value().name();
        auto mended =
            load(std::move(path), DxfTagFile::parse(name, DxfBytes::copyOf(recovery.bytes)),
                 DxfReading::Strict);
        if (!mended.isOk()) return structure.error();
        mended.value()->m_repairs = std::move(recovery.repairs);
        return mended;
    }
    std::unique_ptr<DxfDocument> document(new DxfDocument(
        std::move(path), tags.takeValue(), std::move(records), structure.takeValue()));
    document->indexDrawing();
    return document;
}

DxfResult<std::unique_ptr<DxfDocument>> DxfDocument::readFile(const std::filesystem::path& path,
                                                              const DxfProgress& progress,
                                                              DxfFileAccess access,
                                                              DxfReading reading) {
    try {
        DxfResult<DxfBytes> bytes = readWholeFile(path, progress, access);
        if (!bytes.isOk()) return DxfError(bytes.errorString());
        const std::size_t size = bytes.value().size();
        try {
            return load(path, DxfTagFile::parse(path.string(), bytes.takeValue(), progress),
                        reading);
        } catch (const std::bad_alloc&) {
            return dxfNotEnoughMemory(path, size);
        }
    } catch (const std::exception& e) {
        return DxfError(path.string() + ": " + e.what());
    }
}

DxfResult<std::unique_ptr<DxfDocument>> DxfDocument::readBytes(std::string name,
                                                               std::string_view bytes,
                                                               DxfReading reading) {
    try {
        std::filesystem::path path(name);
        return load(std::move(path), DxfTagFile::parse(name, bytes), reading);
    } catch (const std::exception& e) {
        return DxfError(name + ": " + e.what());
    }
}

void DxfDocument::indexDrawing() {
    if (const DxfSection* header = m_structure.section("HEADER"))
        m_header = DxfHeader(m_tags, m_records, header->begin);
    m_version = std::string(dxfTrimmed(m_header.text(m_tags, "$ACADVER")));
    m_codec = DxfTextCodec(m_version, dxfTrimmed(m_header.text(m_tags, "$DWGCODEPAGE")));
    m_dialect =
        DxfDialect::forVersion(m_version, m_header.integer(m_tags, "$HANDLING").value_or(0) != 0);
    indexBlockTable();
    if (const DxfTable* styles = m_structure.table("STYLE")) {
        for (const std::uint32_t entry : styles->entries) {
            if (const std::string_view name = nameBytes(entry); !name.empty())
                m_styles.add(entry, m_codec.decode(name));
        }
    }
    indexInserts();
}

void DxfDocument::indexBlockTable() {
    const auto& definitions = m_structure.blocks();
    const DxfTable* table = m_structure.table("BLOCK_RECORD");
    m_blockRecordTable = table != nullptr;
    if (table != nullptr) {
        for (const std::uint32_t entry : table->entries)
            m_blocks.add(entry, m_codec.decode(nameBytes(entry)));
        m_blockInfo.resize(m_blocks.size());
        for (std::size_t i = 0; i < definitions.size(); ++i) {
            const auto block = m_blocks.find(m_codec.decode(nameBytes(definitions[i].begin)));
            if (block && !m_blockInfo[*block].definition) m_blockInfo[*block].definition = i;
        }
    } else {
        // R12 keeps no block records: the definitions are the table. Later programs writing R12
        // name the layout blocks $MODEL_SPACE and $PAPER_SPACE.
        for (std::size_t i = 0; i < definitions.size(); ++i) {
            const std::string_view name = nameBytes(definitions[i].begin);
            const std::wstring shown = equalsIgnoringCase(name, "$MODEL_SPACE") ? L"*Model_Space"
                                       : equalsIgnoringCase(name, "$PAPER_SPACE")
                                           ? L"*Paper_Space"
                                           : m_codec.decode(name);
            m_blocks.add(definitions[i].begin, shown);
            m_blockInfo.push_back(BlockInfo{Layout::None, i, {}});
        }
    }
    for (std::size_t i = 0; i < m_blocks.size(); ++i) {
        BlockInfo& info = m_blockInfo[i];
        const std::wstring name = MakeUpper(m_blocks.name(i));
        info.layout = name == L"*MODEL_SPACE"             ? Layout::Model
                      : name == L"*PAPER_SPACE"           ? Layout::Paper
                      : name.starts_with(L"*PAPER_SPACE") ? Layout::OtherPaper
                                                          : Layout::None;
        if (!info.definition) continue;
        const DxfBlockDefinition& definition = definitions[*info.definition];
        for (std::uint32_t r = definition.begin + 1; r < definition.end; ++r) {
            if (m_records.kind(r) == DxfRecordKind::AttributeDefinition)
                info.attributeDefinitions.push_back(r);
        }
    }
}

void DxfDocument::indexInserts() {
    const DxfSection* entities = m_structure.section("ENTITIES");
    if (entities == nullptr) return;
    // The scan noted which records say they are in paper space; both lists are in file order.
    const std::vector<std::uint32_t>& paper = m_tags.paperSpaceRecords();
    auto nextPaper = std::lower_bound(paper.begin(), paper.end(), entities->begin);
    for (std::uint32_t r = entities->begin + 1; r < entities->end; ++r) {
        if (m_records.kind(r) != DxfRecordKind::Insert) continue;
        while (nextPaper != paper.end() && *nextPaper < r) ++nextPaper;
        const bool inPaper = nextPaper != paper.end() && *nextPaper == r;
        (inPaper ? m_paperInserts : m_modelInserts).push_back(r);
    }
}

bool DxfDocument::isInPaperSpace(std::uint32_t record) const {
    if (m_records.isOriginal(record)) {
        const std::vector<std::uint32_t>& paper = m_tags.paperSpaceRecords();
        return std::binary_search(paper.begin(), paper.end(), record);
    }
    const DxfTagRange tags = m_records.tags(record);
    const auto space = findTag(m_tags, tags, 67);
    return space && m_tags.integer(tags[*space]).value_or(0) == 1;
}

std::string_view DxfDocument::nameBytes(std::uint32_t record) const {
    if (m_records.isOriginal(record)) return m_tags.recordName(record);
    const DxfTagRange tags = m_records.tags(record);
    const auto name = findTag(m_tags, tags, 2);
    return name ? m_tags.value(tags[*name]) : std::string_view();
}

std::optional<std::uint32_t> DxfDocument::recordOf(AcDbObjectId id) const {
    if (id.isNull() || id.value() > m_records.count()) return std::nullopt;
    return static_cast<std::uint32_t>(id.value() - 1);
}

std::optional<std::size_t> DxfDocument::blockIndex(AcDbObjectId id) const {
    const auto record = recordOf(id);
    return record ? m_blocks.findRecord(*record) : std::nullopt;
}

std::optional<std::uint64_t> DxfDocument::handleOf(std::uint32_t record) const {
    return ownHandle(m_tags, m_records.tags(record));
}

const std::wstring& DxfDocument::internedText(std::string_view bytes) const {
    auto it = m_interned.find(bytes);
    if (it == m_interned.end())
        it = m_interned.emplace(std::string(bytes), m_codec.decode(bytes)).first;
    return it->second;
}

void DxfDocument::forEachInsert(DxfSpace space,
                                const std::function<void(std::uint32_t)>& visit) const {
    for (const std::uint32_t record : space == DxfSpace::Model ? m_modelInserts : m_paperInserts)
        visit(record);
    if (space != DxfSpace::PaperLayouts) return;
    for (const auto& [block, begin, end] : otherPaperLayouts()) {
        for (std::uint32_t r = begin + 1; r < end; ++r) {
            if (m_records.kind(r) == DxfRecordKind::Insert) visit(r);
        }
    }
}

std::vector<DxfReference> DxfDocument::blockReferences(DxfSpace space) const {
    std::vector<DxfReference> references;
    try {
        forEachInsert(space, [&](std::uint32_t record) {
            const DxfInsertView view = readInsert(m_tags, m_records.tags(record));
            references.push_back(DxfReference{idOf(record), internedText(view.name),
                                              internedText(view.layer), view.position,
                                              instancesOf(record)});
        });
    } catch (const std::exception&) {
        references.clear();
    }
    return references;
}

void DxfDocument::forEachReference(
    DxfSpace space, const std::function<void(AcDbObjectId, std::string_view)>& visit) const {
    forEachInsert(space, [&](std::uint32_t record) { visit(idOf(record), nameBytes(record)); });
}

template <typename ForEachInsert>
std::vector<DxfNameCount> DxfDocument::countByName(ForEachInsert&& forEachInsert) const {
    std::vector<DxfNameCount> counts;
    std::unordered_map<std::string_view, std::size_t> slots;
    // Most drawings hold no array: then no reference is looked up.
    const bool anyArrays = !m_tags.arrays().empty();
    forEachInsert([&](std::uint32_t record) {
        const std::string_view name = nameBytes(record);
        const auto [slot, isNew] = slots.try_emplace(name, counts.size());
        if (isNew) counts.push_back(DxfNameCount{name, 0, 0, 0});
        DxfNameCount& count = counts[slot->second];
        const std::int64_t instances = anyArrays ? instancesOf(record) : 1;
        ++count.references;
        count.instances += instances;
        count.arrays += instances > 1 ? 1 : 0;
    });
    return counts;
}

std::vector<DxfNameCount> DxfDocument::referenceCountsByName(DxfSpace space) const {
    return countByName([&](const auto& visit) { forEachInsert(space, visit); });
}

std::vector<DxfNameCount> DxfDocument::layoutReferenceCountsByName(std::size_t layout) const {
    return countByName([&](const auto& visit) { forEachLayoutInsert(layout, visit); });
}

void DxfDocument::forEachLayoutReference(
    std::size_t layout, const std::function<void(AcDbObjectId, std::string_view)>& visit) const {
    forEachLayoutInsert(layout,
                        [&](std::uint32_t record) { visit(idOf(record), nameBytes(record)); });
}

std::int64_t DxfDocument::instancesOf(std::uint32_t record) const {
    const auto& arrays = m_tags.arrays();
    const auto it = std::lower_bound(
        arrays.begin(), arrays.end(), record,
        [](const DxfRecordIndex::Array& array, std::uint32_t r) { return array.record < r; });
    if (it == arrays.end() || it->record != record || !m_records.isOriginal(record)) return 1;
    return std::int64_t{it->columns} * it->rows;
}

std::int64_t DxfDocument::referenceInstances(AcDbObjectId reference) const {
    const auto record = recordOf(reference);
    return record ? instancesOf(*record) : 1;
}

std::wstring_view DxfDocument::referenceName(AcDbObjectId reference) const {
    const auto record = recordOf(reference);
    return record ? std::wstring_view(internedText(nameBytes(*record))) : std::wstring_view();
}

std::wstring_view DxfDocument::referenceLayer(AcDbObjectId reference) const {
    const auto record = recordOf(reference);
    if (!record) return {};
    const DxfTagRange tags = m_records.tags(*record);
    const auto layer = findTag(m_tags, tags, 8);
    return internedText(layer ? m_tags.value(tags[*layer]) : std::string_view());
}

AcGePoint3d DxfDocument::referencePosition(AcDbObjectId reference) const {
    const auto record = recordOf(reference);
    if (!record) return {};
    return readInsert(m_tags, m_records.tags(*record)).position;
}

std::string DxfDocument::toBytes() const {
    std::string bytes;
    m_records.write(m_tags, [&bytes](std::string_view piece) { bytes += piece; });
    return bytes;
}

DxfStatus DxfDocument::save() { return saveAs(m_path); }

DxfStatus DxfDocument::saveAs(const std::filesystem::path& path) {
    try {
        const FileStatus status =
            replaceFile(path, [this](const FileSink& sink) { m_records.write(m_tags, sink); });
        if (!status.isOk()) return DxfError(status.errorString());
        m_path = path;
        return {};
    } catch (const std::exception& e) {
        return DxfError(path.string() + ": " + e.what());
    }
}

int DxfDocument::getVar(const std::wstring& name, resbuf& value) const {
    const std::wstring upper = MakeUpper(name);
    if (upper == L"DWGNAME") {
        value = resbuf::stringValue(fileNameText(m_path));
        return RTNORM;
    }
    if (upper == L"DWGPREFIX") {
        value = resbuf::stringValue(folderText(m_path));
        return RTNORM;
    }
    const HeaderVariable* variable = headerVariable(name);
    if (variable == nullptr) return RTERROR;
    short number = variable->fallback;
    if (const auto it = m_sessionVariables.find(variable->name); it != m_sessionVariables.end()) {
        number = it->second;
    } else if (const auto stored = m_header.integer(m_tags, variable->header)) {
        number = static_cast<short>(*stored);
    }
    value = resbuf::shortValue(number);
    return RTNORM;
}

int DxfDocument::setVar(const std::wstring& name, const resbuf& value) {
    const HeaderVariable* variable = headerVariable(name);
    if (variable == nullptr) return RTERROR;
    short number = 0;
    if (value.restype == RTSHORT) {
        number = value.resval.rint;
    } else if (value.restype == RTLONG && value.resval.rlong >= -32768 &&
               value.resval.rlong <= 32767) {
        number = static_cast<short>(value.resval.rlong);
    } else {
        return RTERROR;
    }
    try {
        if (!m_header.valueTag(variable->header) && m_dialect.layouts) {
            m_sessionVariables[variable->name] = number;
            return RTNORM;
        }
        ensureHeader();
        m_header.setValue(m_tags, m_records, variable->header, m_tags.appendInteger(70, number));
        return RTNORM;
    } catch (const std::exception&) {
        return RTERROR;
    }
}
