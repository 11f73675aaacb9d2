// Writing the test drawings.
#include "tests/host/DrawingFixture.h"

#include <cstdio>
#include <map>

namespace {

class Writer {
public:
    explicit Writer(bool handles) : m_handles(handles) {}

    void tag(int code, const std::string& value) {
        char head[16];
        std::snprintf(head, sizeof head, "%3d\n", code);
        m_text += head + value + "\n";
    }
    void real(int code, double value) {
        char text[32];
        std::snprintf(text, sizeof text, "%.6g", value);
        std::string written = text;
        if (written.find_first_of(".e") == std::string::npos) written += ".0";
        tag(code, written);
    }
    // Code 5 and the owner, when the version has handles.
    void object(unsigned handle, unsigned owner) {
        if (!m_handles) return;
        tag(5, hex(handle));
        tag(330, hex(owner));
    }
    void marker(const char* subclass) {
        if (m_handles) tag(100, subclass);
    }
    unsigned next() { return m_seed++; }
    unsigned seed() const { return m_seed; }
    static std::string hex(unsigned value) {
        char text[16];
        std::snprintf(text, sizeof text, "%X", value);
        return text;
    }
    const std::string& text() const { return m_text; }

private:
    bool m_handles;
    std::string m_text;
    unsigned m_seed = 0x100;
};

constexpr unsigned kBlockRecordTable = 0x10;
constexpr unsigned kAppIdTable = 0x11;
constexpr unsigned kModelRecord = 0x20;
constexpr unsigned kPaperRecord = 0x21;

std::string versionText(FixtureVersion version) {
    switch (version) {
        case FixtureVersion::R12:
            return "AC1009";
        case FixtureVersion::R2000:
            return "AC1015";
        case FixtureVersion::R2018:
            return "AC1032";
    }
    return "AC1009";
}

void insert(Writer& w, const FixtureReference& reference, unsigned owner) {
    w.tag(0, "INSERT");
    w.object(w.next(), owner);
    w.marker("AcDbEntity");
    w.tag(8, reference.layer);
    w.marker("AcDbBlockReference");
    w.tag(2, reference.block);
    w.real(10, reference.x);
    w.real(20, reference.y);
    w.real(30, 0.0);
}

struct Record {
    std::string name;
    unsigned handle;
    const FixtureBlock* block;  // null for the layouts
};

void blockRecordTable(Writer& w, const std::vector<Record>& records) {
    std::map<std::string, unsigned> handles;
    for (const auto& record : records) handles[record.name] = record.handle;
    w.tag(0, "TABLE");
    w.tag(2, "BLOCK_RECORD");
    w.object(kBlockRecordTable, 0);
    w.marker("AcDbSymbolTable");
    w.tag(70, std::to_string(records.size()));
    for (const auto& record : records) {
        w.tag(0, "BLOCK_RECORD");
        w.object(record.handle, kBlockRecordTable);
        w.marker("AcDbSymbolTableRecord");
        w.marker("AcDbBlockTableRecord");
        w.tag(2, record.name);
        w.tag(340, "0");
        if (record.block == nullptr || record.block->linkTo.empty()) continue;
        const std::string& target = record.block->linkTo;
        w.tag(1001, "AcDbBlockRepBTag");
        w.tag(1070, "1");
        w.tag(1005, target.starts_with("#") ? target.substr(1) : Writer::hex(handles.at(target)));
    }
    w.tag(0, "ENDTAB");
}

void appIdTable(Writer& w) {
    w.tag(0, "TABLE");
    w.tag(2, "APPID");
    w.object(kAppIdTable, 0);
    w.marker("AcDbSymbolTable");
    w.tag(70, "2");
    for (const char* name : {"ACAD", "AcDbBlockRepBTag"}) {
        w.tag(0, "APPID");
        w.object(w.next(), kAppIdTable);
        w.marker("AcDbSymbolTableRecord");
        w.marker("AcDbRegAppTableRecord");
        w.tag(2, name);
        w.tag(70, "0");
    }
    w.tag(0, "ENDTAB");
}

void definition(Writer& w, const Record& record) {
    w.tag(0, "BLOCK");
    w.object(w.next(), record.handle);
    w.marker("AcDbEntity");
    w.tag(8, "0");
    w.marker("AcDbBlockBegin");
    w.tag(2, record.name);
    w.tag(70, record.name.starts_with("*") && record.block != nullptr ? "1" : "0");
    w.real(10, 0.0);
    w.real(20, 0.0);
    w.real(30, 0.0);
    w.tag(3, record.name);
    w.tag(1, "");
    if (record.block != nullptr) {
        for (const auto& reference : record.block->contents) insert(w, reference, record.handle);
    }
    w.tag(0, "ENDBLK");
    w.object(w.next(), record.handle);
    w.marker("AcDbEntity");
    w.tag(8, "0");
    w.marker("AcDbBlockEnd");
}

}  // namespace

std::string fixtureBytes(const FixtureDrawing& drawing) {
    const bool handles = drawing.version != FixtureVersion::R12;
    Writer w(handles);
    std::vector<Record> records;
    if (handles) {
        records.push_back({"*Model_Space", kModelRecord, nullptr});
        records.push_back({"*Paper_Space", kPaperRecord, nullptr});
    }
    for (const auto& block : drawing.blocks) records.push_back({block.name, w.next(), &block});

    Writer body(handles);
    while (body.seed() < w.seed()) body.next();
    body.tag(0, "SECTION");
    body.tag(2, "TABLES");
    if (handles) {
        appIdTable(body);
        blockRecordTable(body, records);
    }
    body.tag(0, "ENDSEC");
    body.tag(0, "SECTION");
    body.tag(2, "BLOCKS");
    for (const auto& record : records) definition(body, record);
    body.tag(0, "ENDSEC");
    body.tag(0, "SECTION");
    body.tag(2, "ENTITIES");
    for (const auto& reference : drawing.references) insert(body, reference, kModelRecord);
    body.tag(0, "ENDSEC");
    if (handles) {
        body.tag(0, "SECTION");
        body.tag(2, "OBJECTS");
        body.tag(0, "DICTIONARY");
        body.object(0xC, 0);
        body.marker("AcDbDictionary");
        body.tag(281, "1");
        body.tag(0, "ENDSEC");
    }
    body.tag(0, "EOF");

    Writer head(false);
    head.tag(0, "SECTION");
    head.tag(2, "HEADER");
    head.tag(9, "$ACADVER");
    head.tag(1, versionText(drawing.version));
    if (!drawing.codePage.empty()) {
        head.tag(9, "$DWGCODEPAGE");
        head.tag(3, drawing.codePage);
    }
    if (handles) {
        head.tag(9, "$HANDSEED");
        head.tag(5, Writer::hex(body.seed()));
    }
    head.tag(0, "ENDSEC");
    return head.text() + body.text();
}

FixtureDrawing fixtureOfManyReferences(int count) {
    FixtureDrawing drawing;
    drawing.blocks = {{"DOOR", {}, ""}, {"WINDOW", {}, ""}};
    drawing.references.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        drawing.references.push_back({i % 3 == 0 ? "WINDOW" : "DOOR", static_cast<double>(i % 1000),
                                      static_cast<double>(i / 1000)});
    }
    return drawing;
}
