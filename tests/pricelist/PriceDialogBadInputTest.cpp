// Bad input in the price-list dialog: a target that cannot be written, lists with invalid lines,
// 8-bit lists, and changes that must not be lost without a word.
#include <QLabel>
#include <string>

#include "resources/BomTemplate.h"
#include "tests/FullDisk.h"
#include "tests/pricelist/PriceDialogFixture.h"

namespace {

constexpr const char* kList = "Door|450|Interior door 90 cm\nWindow|620|Double-glazed window\n";

class BadInputTest : public PriceDialogTest {
protected:
    void OpenAndChange() {
        m_path = OpenList("list.prc", kList);
        Edit(1, 0, "5");
        m_editor.clearCalls();
    }
    RecordedCall NotOpened(const std::wstring& path) const {
        return {L"acedAlert", {L"File " + path + L" could  not be opened"}};
    }

    std::wstring m_path;
};

TEST_F(BadInputTest, ASaveThatCannotBeWrittenAlertsAndLeavesTheFileAsItWas) {
    OpenAndChange();
    {
        FullDisk full;
        Click(IDC_PRICE_SAVE);
    }
    EXPECT_EQ(Alerts(), (std::vector<RecordedCall>{NotOpened(m_path)}));
    EXPECT_EQ(m_folder.read("list.prc"), kList);
    // Nothing was saved: the change is still there to be saved, and closing asks about it.
    EXPECT_TRUE(Grid().IsModified());
    EXPECT_TRUE(Enabled(IDC_PRICE_SAVE));
    m_editor.answerMessageBox(IDCANCEL);
    Click(IDC_PRICE_CLOSE);
    EXPECT_EQ(MessageBoxes().size(), 1u);
    EXPECT_TRUE(Dialog().isVisible());

    // A save that fails on closing is reported before the dialog closes.
    m_editor.answerMessageBox(IDYES);
    {
        FullDisk full;
        Click(IDC_PRICE_CLOSE);
    }
    EXPECT_EQ(Alerts(), (std::vector<RecordedCall>{NotOpened(m_path), NotOpened(m_path)}));
    EXPECT_EQ(m_folder.read("list.prc"), kList);
    EXPECT_FALSE(Dialog().isVisible());
}

TEST_F(BadInputTest, SaveAsToAFolderOrOverTheOpenDrawingAlertsAndWritesNothing) {
    m_folder.write("plan.dxf", "  0\nEOF\n");
    m_editor.setVariable(L"DWGPREFIX", resbuf::stringValue(m_folder.wpath("")));
    m_editor.setVariable(L"DWGNAME", resbuf::stringValue(L"plan.dxf"));
    OpenAndChange();
    const RecordedCall overTheDrawing{
        L"acedAlert", {L"File " + m_folder.wpath("plan.dxf") +
                       L" is the drawing that is open: it is not written over"}};
    for (const auto& [target, alert] :
         {std::pair{m_folder.wpath(""), NotOpened(m_folder.wpath(""))},
          std::pair{m_folder.wpath("plan.dxf"), overTheDrawing}}) {
        m_editor.clearCalls();
        m_editor.answerFile(RTNORM, target);
        Click(IDC_PRICE_SAVE_AS);
        EXPECT_EQ(Alerts(), (std::vector<RecordedCall>{alert}));
    }
    EXPECT_EQ(m_folder.read("list.prc"), kList);
    EXPECT_EQ(m_folder.read("plan.dxf"), "  0\nEOF\n");
    EXPECT_TRUE(Grid().IsModified());
    EXPECT_EQ(FileLabelText(), m_path);
}

TEST_F(BadInputTest, ANewListThatCannotBeWrittenIsNotOpened) {
    OpenDialog();
    const std::wstring target = m_folder.wpath("no/such/folder/new.prc");
    m_editor.answerFile(RTNORM, target);
    Click(IDC_PRICE_NEW);
    EXPECT_EQ(Alerts(), (std::vector<RecordedCall>{NotOpened(target)}));
    EXPECT_FALSE(Dialog().IsListOpen());
    EXPECT_EQ(ButtonStates(), "000000");
}

TEST_F(BadInputTest, AListThatCannotBeReadLeavesTheGridAsItWas) {
    m_path = OpenList("list.prc", kList);
    const std::wstring missing = m_folder.wpath("missing.prc");
    OpenFile(missing);
    EXPECT_EQ(Alerts(), (std::vector<RecordedCall>{NotOpened(missing)}));
    EXPECT_EQ(Column(0), (std::vector<std::wstring>{L"Door", L"Window"}));
    EXPECT_EQ(FileLabelText(), m_path);
}

// Line by line: what the list's rules keep, and what they drop.
TEST_F(BadInputTest, AListWithInvalidLinesKeepsEveryByteOfTheRowsItKeeps) {
    const std::string longLine = "Long|" + std::string(1200, 'x') + "\n";
    const std::string lines = "Door|450|Interior door\n"
                              "no bar at all\n"
                              "Chair|twelve|Swivel chair\n"
                              "Desk|12,50|\n"
                              "|5|nameless\n"
                              "Priceless||free\n" +
                              longLine +
                              "Sofa|890|Two-seat|extra\n"
                              "\n"
                              "Tail|1|no line feed";
    OpenList("invalid.prc", lines);
    // The long line is read in pieces of 999 characters, each losing its last one: the first
    // piece gives a row with 993 x as its price, the rest has no bar and no price.
    const std::wstring longPrice(993, L'x');
    EXPECT_EQ(Column(0), (std::vector<std::wstring>{L"Door", L"Chair", L"Desk", L"Long", L"Sofa"}));
    EXPECT_EQ(Column(1), (std::vector<std::wstring>{L"450", L"twelve", L"12,50", longPrice, L"890"}));
    EXPECT_EQ(Column(2), (std::vector<std::wstring>{L"Interior door", L"Swivel chair", L"", L"",
                                                    L"Two-seat"}));
    m_editor.answerFile(RTNORM, m_folder.wpath("kept.prc"));
    Click(IDC_PRICE_SAVE_AS);
    EXPECT_TRUE(Alerts().empty());
    EXPECT_EQ(m_folder.read("kept.prc"), "Door|450|Interior door\n"
                                         "Chair|twelve|Swivel chair\n"
                                         "Desk|12,50|\n"
                                         "Long|" + std::string(993, 'x') + "|\n"
                                         "Sofa|890|Two-seat\n");
    EXPECT_EQ(m_folder.read("invalid.prc"), lines);
}

// Hebrew in code page 1255 with Windows line ends: not UTF-8, read a byte a character.
constexpr const char* kHebrew = "Door|450|\xE3\xEC\xFA\r\nTable|120|\xF9\xE5\xEC\xE7\xEF\r\n";

TEST_F(BadInputTest, AnEightBitListSavesBackByteForByteAndAnAddedRowKeepsTheOthers) {
    OpenList("cp1255.prc", kHebrew);
    ClickCell(2, 1);
    Key(Qt::Key_Return);  // an edit without a change: Save is enabled
    ASSERT_TRUE(Enabled(IDC_PRICE_SAVE));
    Click(IDC_PRICE_SAVE);
    EXPECT_TRUE(Alerts().empty());
    EXPECT_EQ(m_folder.read("cp1255.prc"), kHebrew);

    Click(IDC_PRICE_INSERT_ROW);
    Type("Lamp");
    Key(Qt::Key_Return);
    Click(IDC_PRICE_SAVE);
    EXPECT_EQ(m_folder.read("cp1255.prc"), std::string(kHebrew) + "Lamp|0|\r\n");
}

}  // namespace
