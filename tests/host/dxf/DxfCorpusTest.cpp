// The real-world corpus (../shared/corpus): every file read and written back byte for byte, and the
// references counted per block name as the manifest's independent reading (ezdxf) counts them.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>

#include "host/dxf/dxfdocument.h"
#include "tests/host/dxf/DxfTestSupport.h"

namespace {

// ezdxf 0.18.1 cannot read it either: its BLOCKs have no names.
constexpr const char* kNamelessBlocks = "ezdxf-r12-blocks-no-names.dxf";

struct Figures {
    std::map<std::string, std::map<std::string, int>> references;  // file -> lowered name -> count
    std::map<std::string, int> totals;
    std::map<std::string, std::multiset<std::string>> blocks;
    std::map<std::string, std::pair<int, int>> rawBlocks;
    std::set<std::string> unread;
};

Figures manifestFigures() {
    Figures figures;
    const ProcessResult result =
        runPython(std::filesystem::path(TARNWICK_SOURCE_DIR) / "tests/host/dxf/manifest_figures.py",
                  {(corpusFolder() / "manifest.json").string()});
    EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
    std::istringstream lines(result.out);
    std::string line;
    while (std::getline(lines, line)) {
        std::vector<std::string> fields;
        std::istringstream parts(line);
        for (std::string field; std::getline(parts, field, '\t');) fields.push_back(field);
        if (fields[0] == "refs") figures.references[fields[1]][fields[2]] = std::stoi(fields[3]);
        if (fields[0] == "total") figures.totals[fields[1]] = std::stoi(fields[2]);
        if (fields[0] == "blocks") figures.blocks[fields[1]].insert(fields[2]);
        if (fields[0] == "raw")
            figures.rawBlocks[fields[1]] = {std::stoi(fields[2]), std::stoi(fields[3])};
        if (fields[0] == "unread") figures.unread.insert(fields[1]);
    }
    return figures;
}

// As the module lowers names: only A-Z.
std::string asciiLower(std::wstring_view name) {
    std::wstring lowered(name);
    for (wchar_t& c : lowered) {
        if (c >= L'A' && c <= L'Z') c = static_cast<wchar_t>(c + 32);
    }
    return utf8(lowered);
}

class DxfCorpus : public ::testing::Test {
protected:
    void SetUp() override {
        if (corpusFolder().empty()) GTEST_SKIP() << "the corpus ../shared/corpus is not there";
        for (const auto& entry : std::filesystem::directory_iterator(corpusFolder() / "files"))
            m_files.push_back(entry.path());
        std::sort(m_files.begin(), m_files.end());
    }

    std::vector<std::filesystem::path> m_files;
};

// Each file: every tag keeps its own bytes; each file ezdxf reads is written back byte for byte,
// and its references per block name and its named blocks are the manifest's.
TEST_F(DxfCorpus, EveryFileIsKeptByteForByteAndAgreesWithTheManifest) {
    const Figures figures = manifestFigures();
    ASSERT_EQ(figures.unread,
              (std::set<std::string>{"dxfparser-blocks-section-only.dxf", kNamelessBlocks}));
    int compared = 0;
    for (const auto& path : m_files) {
        const std::string name = path.filename().string();
        const std::string bytes = readBytes(path);
        auto tags = DxfTagFile::parse(path.string(), bytes);
        ASSERT_TRUE(tags.isOk()) << tags.errorString();
        std::string rebuilt(tags.value().prefix());
        for (std::uint32_t i = 0; i < tags.value().tagCount(); ++i) rebuilt += tags.value().raw(i);
        rebuilt += tags.value().trailer();
        EXPECT_TRUE(rebuilt == bytes) << name;
        if (figures.unread.contains(name)) continue;

        auto read = DxfDocument::readFile(path);
        ASSERT_TRUE(read.isOk()) << read.errorString();
        const DxfDocument& document = *read.value();
        EXPECT_TRUE(document.toBytes() == bytes) << name;
        std::map<std::string, int> counts;
        const auto model = document.blockReferences(DxfSpace::Model);
        for (const DxfReference& reference : model) ++counts[asciiLower(reference.blockName)];
        const auto found = figures.references.find(name);
        EXPECT_EQ(counts, (found == figures.references.end() ? std::map<std::string, int>()
                                                             : found->second))
            << name;
        std::map<std::string, int> countedByName;  // what a count reads: names as bytes
        for (const DxfNameCount& name : document.referenceCountsByName(DxfSpace::Model))
            countedByName[asciiLower(document.decodeText(name.nameBytes))] +=
                static_cast<int>(name.references);
        EXPECT_EQ(countedByName, counts) << name;
        const auto paper = document.blockReferences(DxfSpace::Paper);
        EXPECT_EQ(static_cast<int>(model.size() + paper.size()), figures.totals.at(name)) << name;
        std::multiset<std::string> blocks;
        for (const AcDbObjectId id : document.blockTableRecordIds()) {
            std::wstring block;
            ASSERT_EQ(document.getBlockTableRecordName(id, block), Acad::eOk);
            if (!block.starts_with(L"*")) blocks.insert(utf8(block));
        }
        const auto named = figures.blocks.find(name);
        EXPECT_EQ(blocks,
                  (named == figures.blocks.end() ? std::multiset<std::string>() : named->second))
            << name;
        ++compared;
    }
    EXPECT_EQ(compared, 37);
}

TEST_F(DxfCorpus, TheFilesEzdxfCannotReadGiveAnErrorOrAWholeReading) {
    const std::filesystem::path nameless = corpusFolder() / "files" / kNamelessBlocks;
    auto refused = DxfDocument::readFile(nameless);
    ASSERT_FALSE(refused.isOk());
    EXPECT_EQ(refused.errorString(), nameless.string() + ":1005: BLOCK has no name (group code 2)");

    // A BLOCKS section alone: no header (so R12 rules), no tables; its definitions are the block
    // table.
    const Figures figures = manifestFigures();
    const std::filesystem::path fragment =
        corpusFolder() / "files" / "dxfparser-blocks-section-only.dxf";
    auto read = DxfDocument::readFile(fragment);
    ASSERT_TRUE(read.isOk()) << read.errorString();
    const DxfDocument& document = *read.value();
    int named = 0;
    for (const AcDbObjectId id : document.blockTableRecordIds()) {
        std::wstring block;
        ASSERT_EQ(document.getBlockTableRecordName(id, block), Acad::eOk);
        named += block.starts_with(L"*") ? 0 : 1;
    }
    const auto [all, withNames] = figures.rawBlocks.at(fragment.filename().string());
    EXPECT_EQ(static_cast<int>(document.blockTableRecordIds().size()), all);
    EXPECT_EQ(named, withNames);
    EXPECT_TRUE(document.blockReferences(DxfSpace::Model).empty());
    EXPECT_EQ(document.toBytes(), readBytes(fragment));
}

}  // namespace
