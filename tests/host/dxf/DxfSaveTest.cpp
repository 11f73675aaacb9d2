// Drawings on disk: read whole, saved under their own or a new name, and the messages when either
// fails.
#include <gtest/gtest.h>

#include "host/dxf/dxfdocument.h"
#include "tests/TempFolder.h"
#include "tests/host/dxf/DxfTestSupport.h"

namespace {

const std::filesystem::path kFixture =
    std::filesystem::path(TARNWICK_TEST_DATA) / "dxf" / "r12-layouts.dxf";

class DxfSave : public ::testing::Test {
protected:
    std::unique_ptr<DxfDocument> openCopy(const std::string& name) {
        m_folder.write(name, readBytes(kFixture));
        auto read = DxfDocument::readFile(m_folder.path(name));
        EXPECT_TRUE(read.isOk()) << read.errorString();
        return read.isOk() ? read.takeValue() : nullptr;
    }

    TempFolder m_folder;
};

TEST_F(DxfSave, SavingWritesTheDocumentAndTakesItsNewNameOnlyWhenItSucceeds) {
    const auto document = openCopy("plan.dxf");
    ASSERT_TRUE(document);
    AcDbObjectId style;
    ASSERT_EQ(document->addTextStyle({L"QTBTABLE", L"simpheb.shx"}, style), Acad::eOk);
    ASSERT_TRUE(document->save().isOk());
    EXPECT_EQ(m_folder.read("plan.dxf"), document->toBytes());
    EXPECT_NE(m_folder.read("plan.dxf"), readBytes(kFixture));

    const std::string missing = m_folder.path("no/such/folder/plan.dxf");
    const DxfStatus failed = document->saveAs(missing);
    EXPECT_EQ(failed.errorString(),
              missing + ": cannot create a file in its folder: no such file or directory");
    EXPECT_EQ(document->path(), m_folder.path("plan.dxf"));
    ASSERT_TRUE(document->saveAs(m_folder.path("copy.dxf")).isOk());
    EXPECT_EQ(document->path(), m_folder.path("copy.dxf"));
    EXPECT_EQ(m_folder.read("copy.dxf"), m_folder.read("plan.dxf"));
    EXPECT_EQ(m_folder.entries(), (std::vector<std::string>{"copy.dxf", "plan.dxf"}));
}

TEST_F(DxfSave, ReadingNamesTheFileAndWhatWentWrong) {
    auto missing = DxfDocument::readFile(m_folder.path("none.dxf"));
    ASSERT_FALSE(missing.isOk());
    EXPECT_EQ(missing.errorString(),
              m_folder.path("none.dxf") + ": cannot open the file: no such file or directory");

    std::filesystem::create_directory(m_folder.path("folder.dxf"));
    auto folder = DxfDocument::readFile(m_folder.path("folder.dxf"));
    ASSERT_FALSE(folder.isOk());
    EXPECT_EQ(folder.errorString(), m_folder.path("folder.dxf") + ": not a regular file");

    // Cut after line 27, the group code of the TABLES section's name; then inside that name.
    const std::string bytes = readBytes(kFixture);
    m_folder.write("cut.dxf", bytes.substr(0, bytes.find("TABLES")));
    auto cut = DxfDocument::readFile(m_folder.path("cut.dxf"));
    ASSERT_FALSE(cut.isOk());
    EXPECT_EQ(cut.errorString(),
              m_folder.path("cut.dxf") +
                  ":28: expected the value of group code 2, found the end of the file");
    m_folder.write("cut.dxf", bytes.substr(0, bytes.find("TABLES") + 2));
    cut = DxfDocument::readFile(m_folder.path("cut.dxf"));
    ASSERT_FALSE(cut.isOk());
    EXPECT_EQ(cut.errorString(),
              m_folder.path("cut.dxf") + ":29: expected \"0 ENDSEC\", found the end of the file");
}

}  // namespace
