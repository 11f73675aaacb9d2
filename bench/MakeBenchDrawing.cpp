// Writes the benchmark drawing: an R2018 ASCII DXF with many block references over a set of block
// names and a share of other entities, as AutoCAD writes them. Deterministic for given arguments.
//
// Usage: dxf_bench_drawing OUTPUT [REFERENCES [NAMES [SEED]]]     (defaults 1000000, 200 and 0)
// Drawings of other seeds place and name their references otherwise.
#include <charconv>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

// A small linear congruential generator, so every run writes the same file.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(0x5eed + seed) {}
    std::uint64_t next() {
        m_state = m_state * 6364136223846793005ull + 1442695040888963407ull;
        return m_state >> 33;
    }
    double coordinate() { return static_cast<double>(next() % 100000000) / 997.0 - 50000.0; }

private:
    std::uint64_t m_state;
};

class Writer {
public:
    explicit Writer(std::FILE* file) : m_file(file) {}
    void tag(int code, const char* value) { std::fprintf(m_file, "%3d\n%s\n", code, value); }
    void tag(int code, const std::string& value) { tag(code, value.c_str()); }
    // The shortest text that reads back as the value, with a decimal point, as AutoCAD writes them.
    void real(int code, double value) {
        char text[32];
        const auto end = std::to_chars(text, text + sizeof text - 3, value).ptr;
        std::string_view written(text, static_cast<std::size_t>(end - text));
        std::fprintf(m_file, "%3d\n%.*s%s\n", code, static_cast<int>(written.size()),
                     written.data(),
                     written.find_first_of(".e") == std::string_view::npos ? ".0" : "");
    }
    void integer(int code, int value) { std::fprintf(m_file, "%3d\n%6d\n", code, value); }
    void handle(int code, std::uint64_t value) {
        std::fprintf(m_file, "%3d\n%" PRIX64 "\n", code, value);
    }
    std::uint64_t newHandle() { return m_nextHandle++; }
    std::uint64_t seed() const { return m_nextHandle; }

private:
    std::FILE* m_file;
    std::uint64_t m_nextHandle = 0x100;
};

constexpr std::uint64_t kModelSpace = 0x1F;
constexpr std::uint64_t kPaperSpace = 0x1E;
constexpr const char* kLayers[] = {"0", "WALLS", "DOORS", "FURNITURE", "ELECTRICAL"};

// The block records: the two layouts first, then the named blocks. Handles of the named ones come
// from the writer's counter, like every handle that is not one of the fixed table handles.
std::vector<std::uint64_t> recordHandles(Writer& w, int names) {
    std::vector<std::uint64_t> handles{kModelSpace, kPaperSpace};
    for (int i = 0; i < names; ++i) handles.push_back(w.newHandle());
    return handles;
}

std::string blockName(int i) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "PART-%03d", i);
    return buffer;
}

std::string recordName(std::size_t record) {
    if (record == 0) return "*Model_Space";
    if (record == 1) return "*Paper_Space";
    return blockName(static_cast<int>(record - 2));
}

void entityHead(Writer& w, const char* type, std::uint64_t owner, const char* layer,
                const char* subclass) {
    w.tag(0, type);
    w.handle(5, w.newHandle());
    w.handle(330, owner);
    w.tag(100, "AcDbEntity");
    w.tag(8, layer);
    w.tag(100, subclass);
}

void tables(Writer& w, const std::vector<std::uint64_t>& records) {
    w.tag(0, "SECTION");
    w.tag(2, "TABLES");
    w.tag(0, "TABLE");
    w.tag(2, "LAYER");
    w.handle(5, 2);
    w.handle(330, 0);
    w.tag(100, "AcDbSymbolTable");
    w.integer(70, 5);
    for (const char* layer : kLayers) {
        w.tag(0, "LAYER");
        w.handle(5, w.newHandle());
        w.handle(330, 2);
        w.tag(100, "AcDbSymbolTableRecord");
        w.tag(100, "AcDbLayerTableRecord");
        w.tag(2, layer);
        w.integer(70, 0);
        w.integer(62, 7);
        w.tag(6, "Continuous");
    }
    w.tag(0, "ENDTAB");
    w.tag(0, "TABLE");
    w.tag(2, "BLOCK_RECORD");
    w.handle(5, 1);
    w.handle(330, 0);
    w.tag(100, "AcDbSymbolTable");
    w.integer(70, static_cast<int>(records.size()));
    for (std::size_t i = 0; i < records.size(); ++i) {
        w.tag(0, "BLOCK_RECORD");
        w.handle(5, records[i]);
        w.handle(330, 1);
        w.tag(100, "AcDbSymbolTableRecord");
        w.tag(100, "AcDbBlockTableRecord");
        w.tag(2, recordName(i));
        w.handle(340, 0);
        w.integer(70, 0);
        w.integer(280, 1);
        w.integer(281, 0);
    }
    w.tag(0, "ENDTAB");
    w.tag(0, "ENDSEC");
}

void blocks(Writer& w, const std::vector<std::uint64_t>& records) {
    w.tag(0, "SECTION");
    w.tag(2, "BLOCKS");
    for (std::size_t i = 0; i < records.size(); ++i) {
        const std::string name = recordName(i);
        w.tag(0, "BLOCK");
        w.handle(5, w.newHandle());
        w.handle(330, records[i]);
        w.tag(100, "AcDbEntity");
        w.tag(8, "0");
        w.tag(100, "AcDbBlockBegin");
        w.tag(2, name);
        w.integer(70, 0);
        w.real(10, 0.0);
        w.real(20, 0.0);
        w.real(30, 0.0);
        w.tag(3, name);
        w.tag(1, "");
        if (i >= 2) {
            entityHead(w, "LINE", records[i], "0", "AcDbLine");
            w.real(10, 0.0);
            w.real(20, 0.0);
            w.real(30, 0.0);
            w.real(11, 10.0 + static_cast<double>(i));
            w.real(21, 5.0);
            w.real(31, 0.0);
        }
        w.tag(0, "ENDBLK");
        w.handle(5, w.newHandle());
        w.handle(330, records[i]);
        w.tag(100, "AcDbEntity");
        w.tag(8, "0");
        w.tag(100, "AcDbBlockEnd");
    }
    w.tag(0, "ENDSEC");
}

void otherEntity(Writer& w, Random& random) {
    const char* layer = kLayers[random.next() % 5];
    switch (random.next() % 3) {
        case 0:
            entityHead(w, "LINE", kModelSpace, layer, "AcDbLine");
            w.real(10, random.coordinate());
            w.real(20, random.coordinate());
            w.real(30, 0.0);
            w.real(11, random.coordinate());
            w.real(21, random.coordinate());
            w.real(31, 0.0);
            break;
        case 1:
            entityHead(w, "CIRCLE", kModelSpace, layer, "AcDbCircle");
            w.real(10, random.coordinate());
            w.real(20, random.coordinate());
            w.real(30, 0.0);
            w.real(40, 1.0 + static_cast<double>(random.next() % 1000) / 7.0);
            break;
        default:
            entityHead(w, "TEXT", kModelSpace, layer, "AcDbText");
            w.real(10, random.coordinate());
            w.real(20, random.coordinate());
            w.real(30, 0.0);
            w.real(40, 2.5);
            w.tag(1, "Room " + std::to_string(random.next() % 1000));
            w.tag(100, "AcDbText");
            break;
    }
}

void entities(Writer& w, long references, int names, std::uint64_t seed) {
    Random random(seed);
    w.tag(0, "SECTION");
    w.tag(2, "ENTITIES");
    for (long i = 0; i < references; ++i) {
        entityHead(w, "INSERT", kModelSpace, kLayers[random.next() % 5], "AcDbBlockReference");
        w.tag(2, blockName(static_cast<int>(random.next() % static_cast<std::uint64_t>(names))));
        w.real(10, random.coordinate());
        w.real(20, random.coordinate());
        w.real(30, 0.0);
        if (i % 5 == 0) {
            w.real(41, 2.0);
            w.real(42, 2.0);
            w.real(50, static_cast<double>(random.next() % 360));
        }
        if (i % 4 == 3) otherEntity(w, random);  // one other entity for every four references
    }
    w.tag(0, "ENDSEC");
}

void objects(Writer& w) {
    w.tag(0, "SECTION");
    w.tag(2, "OBJECTS");
    w.tag(0, "DICTIONARY");
    w.handle(5, 0xC);
    w.handle(330, 0);
    w.tag(100, "AcDbDictionary");
    w.integer(281, 1);
    w.tag(0, "ENDSEC");
}

void header(Writer& w, std::uint64_t handleSeed) {
    w.tag(0, "SECTION");
    w.tag(2, "HEADER");
    w.tag(9, "$ACADVER");
    w.tag(1, "AC1032");
    w.tag(9, "$DWGCODEPAGE");
    w.tag(3, "ANSI_1252");
    w.tag(9, "$HANDSEED");
    w.handle(5, handleSeed);
    w.tag(0, "ENDSEC");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s OUTPUT [REFERENCES [NAMES [SEED]]]\n", argv[0]);
        return 2;
    }
    const long references = argc > 2 ? std::atol(argv[2]) : 1000000;
    const int names = argc > 3 ? std::atoi(argv[3]) : 200;
    const std::uint64_t randomSeed = argc > 4 ? std::strtoull(argv[4], nullptr, 10) : 0;
    if (references < 0 || names < 1) {
        std::fprintf(stderr, "%s: REFERENCES must be 0 or more, NAMES 1 or more\n", argv[0]);
        return 2;
    }
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(argv[1], "wb"), std::fclose);
    if (!file) {
        std::perror(argv[1]);
        return 1;
    }
    std::vector<char> buffer(1 << 22);
    std::setvbuf(file.get(), buffer.data(), _IOFBF, buffer.size());
    Writer w(file.get());
    // Handles taken: a layer one each; a block record, its BLOCK, ENDBLK and line four each, the
    // two layouts' BLOCK and ENDBLK two each; a reference one, and every fourth one more.
    const auto blockCount = static_cast<std::uint64_t>(names);
    const std::uint64_t seed = w.seed() + std::size(kLayers) + 4 * blockCount + 4 +
                               static_cast<std::uint64_t>(references + references / 4);
    header(w, seed);
    const std::vector<std::uint64_t> records = recordHandles(w, names);
    tables(w, records);
    blocks(w, records);
    entities(w, references, names, randomSeed);
    objects(w);
    w.tag(0, "EOF");
    if (w.seed() != seed) {
        std::fprintf(stderr, "%s: handle seed %" PRIX64 " written, %" PRIX64 " used\n", argv[0],
                     seed, w.seed());
        return 1;
    }
    return std::fflush(file.get()) == 0 && !std::ferror(file.get()) ? 0 : 1;
}
