// The price-list dialog's state machine, driven with real clicks and keys: the buttons after every
// action, the save prompt and its answers, New and Open, and the settings files.
#include <QFontInfo>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "grid/CUGMaskedEdit.h"
#include "pricelist/CStaticEx.h"
#include "pricelist/CurrentPriceList.h"
#include "resources/BomTemplate.h"
#include "tests/pricelist/PriceDialogFixture.h"

namespace {

constexpr const char* kThreeRows = "Door|450|Interior door\nWindow|620|Window\nDesk|380|Desk\n";
constexpr const char* kDoorAtFive = "Door|5|Interior door\nWindow|620|Window\nDesk|380|Desk\n";

using Names = std::vector<std::wstring>;
using BlockPriceDialogTest = PriceDialogTest;

RecordedCall OpenPrompt(const std::wstring& proposed) {
    return {L"acedGetFileD", {L"Open", proposed, L"prc", L"2"}};
}

// Button states are written Save, Save As, Insert Row, Delete Row, Move Up, Move Down.

TEST_F(BlockPriceDialogTest, StartsWithOnlyNewOpenAndCloseEnabledAndACancelledOpenChangesNothing) {
    OpenDialog();
    EXPECT_EQ(ButtonStates(), "000000");
    EXPECT_TRUE(Enabled(IDC_PRICE_NEW) && Enabled(IDC_PRICE_OPEN) && Enabled(IDC_PRICE_CLOSE));
    EXPECT_EQ(Dialog().windowTitle(), "BOM Template");
    m_editor.answerFile(RTERROR);
    Click(IDC_PRICE_OPEN);
    EXPECT_EQ(ButtonStates(), "000000");
    EXPECT_FALSE(Dialog().IsListOpen());
}

TEST_F(BlockPriceDialogTest, OpeningAListEnablesTheListButtons) {
    const std::wstring path = OpenList("three.prc", kThreeRows);
    EXPECT_EQ(FilePrompts(), (std::vector<RecordedCall>{OpenPrompt(L"")}));
    EXPECT_EQ(Column(0), (Names{L"Door", L"Window", L"Desk"}));
    EXPECT_EQ(ButtonStates(), "011101");
    EXPECT_EQ(FileLabelText(), path);
    EXPECT_EQ(priceListFileName, path);
    EXPECT_FALSE(Grid().IsModified());

    OpenFile(WriteList("one.prc", "Door|450|\n"));  // a one-row list cannot be moved
    EXPECT_EQ(ButtonStates(), "011100");
}

TEST_F(BlockPriceDialogTest, AFinishedEditEnablesSaveAndSaveWritesTheList) {
    OpenList("three.prc", kThreeRows);
    ClickCell(1, 0);
    ASSERT_TRUE(Grid().IsEditing());
    // Every cell is edited in the grid's own masked editor, control 125.
    EXPECT_NE(qobject_cast<CUGMaskedEdit*>(Grid().GetEditClass()), nullptr);
    EXPECT_EQ(Grid().GetEditClass()->objectName(), "125");
    EXPECT_EQ(ButtonStates(), "011101");
    Type("5");
    Key(Qt::Key_Return);
    EXPECT_TRUE(Grid().IsModified());
    EXPECT_EQ(ButtonStates(), "111101");

    Click(IDC_PRICE_SAVE);
    EXPECT_EQ(m_folder.read("three.prc"), kDoorAtFive);
    EXPECT_EQ(ButtonStates(), "011101");
    EXPECT_FALSE(Grid().IsModified());

    ClickCell(2, 1);  // an edit left without a change still counts as a change
    Key(Qt::Key_Escape);
    EXPECT_TRUE(Grid().IsModified());
    EXPECT_EQ(ButtonStates(), "111111");
}

TEST_F(BlockPriceDialogTest, RowsChangedByButtonsLeaveSaveAsItWas) {
    OpenList("three.prc", kThreeRows);
    Click(IDC_PRICE_DELETE_ROW);
    EXPECT_EQ(Column(0), (Names{L"Window", L"Desk"}));
    EXPECT_FALSE(Enabled(IDC_PRICE_SAVE));
    EXPECT_FALSE(Grid().IsModified());
    // The row that took the deleted one's place is being edited.
    EXPECT_TRUE(Grid().IsEditing());
    EXPECT_EQ(Grid().GetCurrentRow(), 0);
    EXPECT_EQ(Grid().GetCurrentCol(), 0);
}

TEST_F(BlockPriceDialogTest, InsertRowAppendsAfterTheLastRowAndEditsTheNewName) {
    OpenList("three.prc", kThreeRows);
    ClickCell(0, 2);
    Click(IDC_PRICE_INSERT_ROW);
    EXPECT_EQ(Column(0), (Names{L"Door", L"Window", L"Desk", L""}));
    EXPECT_EQ(Column(1), (Names{L"450", L"620", L"380", L"0"}));
    EXPECT_TRUE(Grid().IsEditing());
    EXPECT_EQ(Grid().GetCurrentRow(), 3);
    Type("Chair");
    Key(Qt::Key_Return);
    EXPECT_EQ(Text(0, 3), L"Chair");
}

TEST_F(BlockPriceDialogTest, MovingARowExchangesItsTextsAndFollowsThem) {
    OpenList("three.prc", kThreeRows);
    ClickCell(2, 0);
    Key(Qt::Key_Escape);
    Click(IDC_PRICE_MOVE_DOWN);
    EXPECT_EQ(Column(0), (Names{L"Window", L"Door", L"Desk"}));
    EXPECT_EQ(Column(1), (Names{L"620", L"450", L"380"}));
    EXPECT_EQ(Grid().GetCurrentRow(), 1);
    EXPECT_TRUE(Grid().IsEditing());  // the moved row's current cell is edited
    Key(Qt::Key_Escape);
    Click(IDC_PRICE_MOVE_DOWN);
    EXPECT_EQ(Column(0), (Names{L"Window", L"Desk", L"Door"}));
    EXPECT_EQ(ButtonStates(), "111110");
    Key(Qt::Key_Escape);
    Click(IDC_PRICE_MOVE_UP);
    EXPECT_EQ(Column(0), (Names{L"Window", L"Door", L"Desk"}));
    EXPECT_EQ(ButtonStates(), "111111");
    // Cell types stay where they were: every name cell is still a drop list.
    CUGCell cell;
    Grid().GetCell(0, 2, &cell);
    EXPECT_EQ(cell.GetCellType(), UGCT_DROPLIST);
}

TEST_F(BlockPriceDialogTest, NewAtStartWritesAnEmptyFileAndShowsOneEmptyRow) {
    OpenDialog();
    m_editor.answerFile(RTNORM, m_folder.wpath("new.prc"));
    Click(IDC_PRICE_NEW);
    EXPECT_EQ(FilePrompts(), (std::vector<RecordedCall>{{L"acedGetFileD", {L"New", L"", L"prc", L"1"}}}));
    EXPECT_EQ(m_folder.read("new.prc"), "");
    EXPECT_EQ(Column(0), (Names{L""}));
    EXPECT_EQ(Column(1), (Names{L"0"}));
    EXPECT_TRUE(Grid().IsEditing());
    EXPECT_FALSE(Grid().IsModified());
    EXPECT_EQ(ButtonStates(), "011100");
    EXPECT_EQ(priceListFileName, m_folder.wpath("new.prc"));
    EXPECT_EQ(FileLabelText(), m_folder.wpath("new.prc"));
}

TEST_F(BlockPriceDialogTest, NewWritesTheRowsOfTheOpenListIntoTheNewFileUnlessCancelled) {
    const std::wstring path = OpenList("three.prc", kThreeRows);
    m_editor.answerFile(RTERROR);
    Click(IDC_PRICE_NEW);
    EXPECT_EQ(Column(0), (Names{L"Door", L"Window", L"Desk"}));
    EXPECT_EQ(priceListFileName, path);

    m_editor.answerFile(RTNORM, m_folder.wpath("copy.prc"));
    Click(IDC_PRICE_NEW);
    EXPECT_TRUE(MessageBoxes().empty());  // nothing was changed, so nothing is asked
    EXPECT_EQ(m_folder.read("copy.prc"), kThreeRows);
    EXPECT_EQ(Column(0), (Names{L""}));
    EXPECT_FALSE(Grid().IsModified());
    EXPECT_EQ(ButtonStates(), "011100");
}

TEST_F(BlockPriceDialogTest, SaveAsWritesTheListUnderTheChosenName) {
    const std::wstring path = OpenList("three.prc", kThreeRows);
    m_editor.answerFile(RTNORM, m_folder.wpath("other.prc"));
    Click(IDC_PRICE_SAVE_AS);
    EXPECT_EQ(FilePrompts().back(), (RecordedCall{L"acedGetFileD", {L"Save as", path, L"prc", L"1"}}));
    EXPECT_EQ(m_folder.read("other.prc"), kThreeRows);
    EXPECT_EQ(priceListFileName, m_folder.wpath("other.prc"));
    EXPECT_EQ(FileLabelText(), m_folder.wpath("other.prc"));
    EXPECT_FALSE(Enabled(IDC_PRICE_SAVE));
}

// --- The save prompt -------------------------------------------------------------------------

class SavePromptTest : public PriceDialogTest {
protected:
    // A list opened and one price changed, not saved.
    void OpenAndChange() {
        m_path = OpenList("three.prc", kThreeRows);
        Edit(1, 0, "5");
        ASSERT_TRUE(Grid().IsModified());
        m_editor.clearCalls();
    }
    std::vector<RecordedCall> Prompts(std::size_t count) const {
        return std::vector<RecordedCall>(
            count,
            {L"AfxMessageBox", {L"Save changes to " + m_path, std::to_wstring(MB_YESNOCANCEL)}});
    }
    bool SettingsWritten() const { return Exists("tarnwick1.set") && Exists("filename.set"); }

    std::wstring m_path;
};

// Cancel stays and writes nothing; No closes without saving the list; Yes saves, then closes.
TEST_F(SavePromptTest, CloseAsksAndEachAnswerDoesItsOwnThing) {
    struct Case {
        int answer;
        bool stays;
        const char* list;
    };
    for (const Case& c : {Case{IDCANCEL, true, kThreeRows}, Case{IDNO, false, kThreeRows},
                          Case{IDYES, false, kDoorAtFive}}) {
        SCOPED_TRACE(c.answer);
        ::remove(m_folder.path("tarnwick1.set").c_str());
        ::remove(m_folder.path("filename.set").c_str());
        OpenAndChange();
        m_editor.answerMessageBox(c.answer);
        Click(IDC_PRICE_CLOSE);
        EXPECT_EQ(MessageBoxes(), Prompts(1));
        EXPECT_EQ(Dialog().isVisible(), c.stays);
        EXPECT_EQ(m_folder.read("three.prc"), c.list);
        EXPECT_EQ(SettingsWritten(), !c.stays);  // the settings are written on the way out
        if (!c.stays) {
            EXPECT_EQ(m_folder.read("filename.set"), m_folder.path("three.prc"));
        }
    }
}

TEST_F(SavePromptTest, YesOnCloseWithAMissingNameStaysOpenAndSaysWhy) {
    OpenAndChange();
    Edit(0, 1, "");
    ASSERT_EQ(Text(0, 1), L"");
    m_editor.answerMessageBox(IDYES);
    Click(IDC_PRICE_CLOSE);
    EXPECT_TRUE(Dialog().isVisible());
    EXPECT_EQ(Dialog().MessageLabel()->text(), "Block name is absent");
    EXPECT_EQ(m_folder.read("three.prc"), kThreeRows);
    EXPECT_FALSE(SettingsWritten());
}

TEST_F(SavePromptTest, NewAndOpenAskFirstAndYesSavesBeforeTheNextListIsChosen) {
    OpenAndChange();
    m_editor.answerMessageBox(IDCANCEL);
    Click(IDC_PRICE_NEW);
    m_editor.answerMessageBox(IDCANCEL);
    Click(IDC_PRICE_OPEN);
    EXPECT_TRUE(FilePrompts().empty());
    EXPECT_EQ(m_folder.read("three.prc"), kThreeRows);

    m_editor.answerMessageBox(IDYES);
    OpenFile(WriteList("next.prc", "Sofa|890|\n"));
    EXPECT_EQ(MessageBoxes(), Prompts(3));
    EXPECT_EQ(m_folder.read("three.prc"), kDoorAtFive);
    EXPECT_EQ(FilePrompts(), (std::vector<RecordedCall>{OpenPrompt(m_path)}));
    EXPECT_EQ(Column(0), (Names{L"Sofa"}));
}

TEST_F(SavePromptTest, NoOnNewLeavesTheOldFileAndCopiesTheEditedRows) {
    OpenAndChange();
    m_editor.answerMessageBox(IDNO);
    m_editor.answerFile(RTNORM, m_folder.wpath("copy.prc"));
    Click(IDC_PRICE_NEW);
    EXPECT_EQ(m_folder.read("three.prc"), kThreeRows);
    EXPECT_EQ(m_folder.read("copy.prc"), kDoorAtFive);
}

// Every way out of a changed list asks first.
TEST_F(SavePromptTest, EscapeAndTheWindowsCloseBoxAskLikeClose) {
    OpenAndChange();
    m_editor.answerMessageBox(IDCANCEL);
    ClickCell(2, 2);
    Key(Qt::Key_Escape);  // ends the edit
    Key(Qt::Key_Escape);  // in the grid: the close handler
    m_editor.answerMessageBox(IDCANCEL);
    QTest::keyClick(Button(IDC_PRICE_OPEN), Qt::Key_Escape);  // Escape on a button
    m_editor.answerMessageBox(IDCANCEL);
    Dialog().close();  // the window's close request
    EXPECT_EQ(MessageBoxes(), Prompts(3));
    EXPECT_TRUE(Dialog().isVisible());
}

// --- Settings ----------------------------------------------------------------------------------

TEST_F(BlockPriceDialogTest, ClosingWithoutAListWritesNoSettings) {
    OpenDialog();
    Click(IDC_PRICE_CLOSE);
    EXPECT_FALSE(Dialog().isVisible());
    EXPECT_FALSE(Exists("tarnwick1.set"));
    EXPECT_FALSE(Exists("filename.set"));
}

TEST_F(BlockPriceDialogTest, ClosingAfterOpeningWritesTheWidthsAndTheName) {
    const std::wstring path = OpenList("three.prc", kThreeRows);
    Grid().SetColWidth(2, 123);
    Click(IDC_PRICE_CLOSE);
    const int name = Grid().GetColWidth(0);
    const int price = Grid().GetColWidth(1);
    EXPECT_EQ(m_folder.read("tarnwick1.set"),
              std::to_string(name) + " " + std::to_string(price) + " 123 ");
    EXPECT_EQ(m_folder.read("filename.set"), m_folder.path("three.prc"));

    // The next dialog starts with those widths and offers that file.
    OpenDialog();
    m_editor.answerFile(RTERROR);
    Click(IDC_PRICE_OPEN);
    EXPECT_EQ(FilePrompts().back(), OpenPrompt(path));
    OpenFile(path);
    EXPECT_EQ(Grid().GetColWidth(0), name);
    EXPECT_EQ(Grid().GetColWidth(1), price);
    EXPECT_EQ(Grid().GetColWidth(2), 123);

    // Without the settings file, the current file outlives the dialog.
    Click(IDC_PRICE_CLOSE);
    ::remove(m_folder.path("filename.set").c_str());
    OpenDialog();
    m_editor.answerFile(RTERROR);
    Click(IDC_PRICE_OPEN);
    EXPECT_EQ(FilePrompts().back(), OpenPrompt(path));
}

TEST_F(BlockPriceDialogTest, ARememberedPathWithABlankComesBackCutAtTheBlank) {
    m_folder.write("filename.set", "/home/drafter/my prices/office.prc");
    OpenDialog();
    m_editor.answerFile(RTERROR);
    Click(IDC_PRICE_OPEN);
    EXPECT_EQ(FilePrompts(), (std::vector<RecordedCall>{OpenPrompt(L"/home/drafter/my")}));
}

// --- Looks -------------------------------------------------------------------------------------

TEST_F(BlockPriceDialogTest, CourierARedMessageAndNoClippedText) {
    OpenList("three.prc", kThreeRows);
    EXPECT_TRUE(QFontInfo(Button(IDC_PRICE_NEW)->font()).fixedPitch());
    const QPalette palette = Dialog().MessageLabel()->palette();
    EXPECT_EQ(palette.color(QPalette::Active, QPalette::WindowText), QColor(255, 0, 0));
    EXPECT_NE(palette.color(QPalette::Disabled, QPalette::WindowText), QColor(255, 0, 0));  // greys
    for (QPushButton* button : Dialog().findChildren<QPushButton*>()) {
        const QString text = button->text().remove(QLatin1Char('&'));
        EXPECT_LE(button->fontMetrics().horizontalAdvance(text) + 4, button->width())
            << text.toStdString();
    }
    for (QLabel* label : Dialog().findChildren<QLabel*>())
        EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width())
            << label->text().toStdString();
}

}  // namespace
