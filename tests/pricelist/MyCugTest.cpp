// The price-list grid in its dialog: validation and where it puts the current cell, unique names
// in every script, the drop list of unused blocks, heading sorts, and typing a name.
#include <QApplication>
#include <QTest>

#include "grid/CUGEdit.h"
#include "grid/CUGLstBox.h"
#include "grid/CUGSortArrowType.h"
#include "pricelist/CStaticEx.h"
#include "resources/BomTemplate.h"
#include "tests/pricelist/PriceDialogFixture.h"

namespace {

class MyCugTest : public PriceDialogTest {
protected:
    void Open(const std::string& lines) {
        OpenList("list.prc", lines);
        m_editor.clearCalls();
    }
    QString Message() const { return Dialog().MessageLabel()->text(); }
};

// --- Validation --------------------------------------------------------------------------------

TEST_F(MyCugTest, AMissingNameOrPriceBlinksInTheLabelAndBecomesTheCurrentCell) {
    struct Case {
        int col;
        long row;
        const char* message;
    };
    for (const Case& c : {Case{0, 2, "Block name is absent"}, Case{1, 1, "Price is absent"}}) {
        SCOPED_TRACE(c.message);
        Open("Door|450|\nWindow|620|\nDesk|380|\n");
        Edit(c.col, c.row, "");
        Edit(2, 0, "changed");
        m_editor.clearCalls();
        Click(IDC_PRICE_SAVE);
        EXPECT_EQ(Message(), c.message);
        EXPECT_EQ(m_editor.calls(), (std::vector<RecordedCall>{{L"Beep", {L"1000", L"50"}}}));
        EXPECT_EQ(Grid().GetCurrentCol(), c.col);
        EXPECT_EQ(Grid().GetCurrentRow(), c.row);
        EXPECT_TRUE(Dialog().MessageLabel()->IsTimerRunning(0));   // blinks every 200 ms
        EXPECT_FALSE(Dialog().MessageLabel()->IsTimerRunning(1));  // until it is stopped
        EXPECT_EQ(m_folder.read("list.prc"), "Door|450|\nWindow|620|\nDesk|380|\n");
        EXPECT_TRUE(Enabled(IDC_PRICE_SAVE));
        ClickCell(2, 0);  // a click in the grid clears the message
        EXPECT_EQ(Message(), "");
        EXPECT_FALSE(Dialog().MessageLabel()->IsTimerRunning(0));
    }
}

TEST_F(MyCugTest, ARowWithoutNameAndPriceIsNeitherCheckedNorWritten) {
    Open("Door|450|\nWindow|620|\n");
    Edit(0, 1, "");
    Edit(1, 1, "");
    Click(IDC_PRICE_SAVE);
    EXPECT_EQ(Message(), "");
    EXPECT_EQ(m_folder.read("list.prc"), "Door|450|\n");
}

// --- Unique names ------------------------------------------------------------------------------

TEST_F(MyCugTest, ANameThatDiffersOnlyInCaseIsRefusedAndEditedAgain) {
    Open("Door|450|\nWindow|620|\n");
    Edit(0, 1, "door");
    EXPECT_EQ(MessageBoxes(), (std::vector<RecordedCall>{
                                  {L"AfxMessageBox", {L"Block name door is not unique", L"0"}}}));
    EXPECT_EQ(Text(0, 1), L"Window");  // the edit was not stored
    EXPECT_TRUE(Grid().IsEditing());
    EXPECT_EQ(Grid().GetCurrentCol(), 0);
    EXPECT_EQ(Grid().GetCurrentRow(), 1);
    // Sorting is off until an edit is accepted.
    EXPECT_FALSE(Grid().IsSortEnabled());
    // Editing starts again on the name as it was.
    EXPECT_EQ(Grid().GetEditClass()->text(), "Window");
    EXPECT_EQ(Grid().GetEditClass()->selectedText(), "Window");
    Type("Sofa");
    Key(Qt::Key_Return);
    EXPECT_EQ(Text(0, 1), L"Sofa");
    EXPECT_TRUE(Grid().IsSortEnabled());
    Edit(0, 0, "DOOR");  // its own name in another case is no clash
    EXPECT_EQ(MessageBoxes().size(), 1u);
    EXPECT_EQ(Text(0, 0), L"DOOR");
}

TEST_F(MyCugTest, UniquenessIgnoresCaseInEveryScript) {
    Open("\xD0\xA1\xD1\x82\xD1\x83\xD0\xBB|12|chair\nDoor|450|\n");  // Стул
    EXPECT_FALSE(Grid().IsNameUnique(L"\x0441\x0442\x0443\x043B", 1));  // стул
    EXPECT_TRUE(Grid().IsNameUnique(L"\x0441\x0442\x0443\x043B", 0));
    EXPECT_FALSE(Grid().IsNameUnique(L"DOOR", 0));
    EXPECT_TRUE(Grid().IsNameUnique(L"Doors", 0));
    ClickCell(0, 1);
    TypeText(QString::fromUtf8("\xD1\x81\xD1\x82\xD1\x83\xD0\xBB"));
    Key(Qt::Key_Return);
    ASSERT_EQ(MessageBoxes().size(), 1u);
    EXPECT_EQ(MessageBoxes()[0].args[0], L"Block name \x0441\x0442\x0443\x043B is not unique");
}

// --- The drop list of unused blocks --------------------------------------------------------------

class DropListTest : public MyCugTest {
protected:
    void SetUp() override {
        MyCugTest::SetUp();
        for (const wchar_t* name : {L"DOOR", L"WINDOW", L"PLANT", L"*U4", L"CHAIR"})
            m_drawing.addBlock(name);
    }
    QStringList Options() const {
        QStringList options;
        for (int i = 0; i < Grid().GetListBox()->count(); ++i)
            options << Grid().GetListBox()->item(i)->text();
        return options;
    }
    void ChooseOption(int index) {
        CUGLstBox* list = Grid().GetListBox();
        const QRect item = list->visualItemRect(list->item(index));
        ClickAt(list->viewport(), item.center());
    }
};

TEST_F(DropListTest, ANewRowOffersTheDrawingsBlocksThatNoRowUses) {
    Open("Door|450|\n");
    Click(IDC_PRICE_INSERT_ROW);
    EXPECT_EQ(Grid().ChoiceList(), L"CHAIR\nPLANT\nWINDOW\n");
    ClickDropButton(0, 1);
    ASSERT_TRUE(Grid().GetListBox()->isVisible());
    EXPECT_EQ(Options(), QStringList({"CHAIR", "PLANT", "WINDOW"}));
    ChooseOption(1);
    EXPECT_FALSE(Grid().GetListBox()->isVisible());
    EXPECT_EQ(Text(0, 1), L"PLANT");
    // A chosen name is a change like a typed one.
    EXPECT_TRUE(Grid().IsModified());
    EXPECT_TRUE(Enabled(IDC_PRICE_SAVE));
}

TEST_F(DropListTest, TheListShrinksAsRowsTakeItsNames) {
    Open("Door|450|\n");
    Click(IDC_PRICE_INSERT_ROW);
    Type("window");
    Key(Qt::Key_Return);
    Click(IDC_PRICE_INSERT_ROW);
    EXPECT_EQ(Grid().ChoiceList(), L"CHAIR\nPLANT\n");
    ClickDropButton(0, 2);
    ChooseOption(0);
    Click(IDC_PRICE_INSERT_ROW);
    EXPECT_EQ(Grid().ChoiceList(), L"PLANT\n");
    ClickDropButton(0, 3);
    EXPECT_EQ(Options(), QStringList({"PLANT"}));
}

// --- Sorting ---------------------------------------------------------------------------------------

constexpr const char* kUnsorted = "b|10|x\nA|9|\nc|5|z\nB2|100|y\nd|abc|w\n";

TEST_F(MyCugTest, PricesSortAsNumbersWithEmptyOnesLast) {
    Open(kUnsorted);
    Edit(1, 2, "");  // c's price is empty now
    ClickHeading(1);
    EXPECT_EQ(Column(1), (std::vector<std::wstring>{L"abc", L"9", L"10", L"100", L""}));
    EXPECT_EQ(Column(0), (std::vector<std::wstring>{L"d", L"A", L"b", L"B2", L"c"}));
    ClickHeading(1);
    EXPECT_EQ(Column(1), (std::vector<std::wstring>{L"100", L"10", L"9", L"abc", L""}));
}

// --- Keys ------------------------------------------------------------------------------------------

TEST_F(MyCugTest, EnterOnANameOpensItsListInsteadOfAnEmptyEditor) {
    m_drawing.addBlock(L"PLANT");
    Open("Door|450|\n");
    Click(IDC_PRICE_INSERT_ROW);
    Key(Qt::Key_Escape);
    ASSERT_FALSE(Grid().IsEditing());
    Key(Qt::Key_Return);
    EXPECT_TRUE(Grid().GetListBox()->isVisible());
    EXPECT_FALSE(Grid().IsEditing());
}

}  // namespace
