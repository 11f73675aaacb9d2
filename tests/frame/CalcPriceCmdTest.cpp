// The calculation command from its first prompt to the placed table, the dialog run modally and
// clicked for real.
#include <gtest/gtest.h>

#include <QDialog>
#include <memory>

#include "bom/CalcPriceDialog.h"
#include "bom/CalcPriceState.h"
#include "frame/CalcPriceCmd.h"
#include "frame/LibraryEntry.h"
#include "host/scripted/memorydatabase.h"
#include "host/scripted/scriptededitor.h"
#include "resources/BomReportTemplate.h"
#include "resources/ModulePath.h"
#include "tests/ModalDialogs.h"
#include "tests/TempFolder.h"

namespace {

constexpr int kKey = 2;

class CalcPriceCmdTest : public ::testing::Test {
protected:
    void SetUp() override {
        acdbHostApplicationServices()->setWorkingDatabase(&m_database);
        modulePath = m_folder.wpath("Tarnwick.arx");
        lastCalcFileName.clear();
        showPricesFlag = 1;
        AfxSetResourceHandle(&m_hostResources);
        ExtensionModule.moduleResource = &m_moduleResources;
        for (const wchar_t* name : {L"ATTREQ", L"CMDECHO", L"SNAPMODE", L"OSMODE"})
            m_editor.setVariable(name, resbuf::shortValue(1));
        m_folder.write("doors.prc", "Door|450|Interior door\n");
        for (int i = 0; i < 3; ++i) m_references.push_back(m_database.addReference(L"DOOR"));
        m_references.push_back(m_database.addReference(L"plant"));
    }
    void TearDown() override {
        ExtensionModule.moduleResource = nullptr;
        AfxSetResourceHandle(nullptr);
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
        modulePath.clear();
        lastCalcFileName.clear();
    }

    // Keeps what the dialog showed when it opened, then ends it with this button.
    std::unique_ptr<ModalWatch> ClickWhenShown(int button) {
        return std::make_unique<ModalWatch>([this, button](QDialog& dialog) {
            m_shown = calcPriceDialog->Grid().ShownRows();
            m_resourcesWhileShown = AfxGetResourceHandle();
            ClickDlgItem(dialog, button);
        });
    }

    static std::unique_ptr<ModalWatch> NoDialog() {
        return std::make_unique<ModalWatch>([](QDialog& dialog) {
            ADD_FAILURE() << "a dialog was shown";
            dialog.reject();
        });
    }

    std::vector<std::wstring> Functions() const {
        std::vector<std::wstring> names;
        for (const RecordedCall& call : m_editor.calls()) {
            if (call.function != L"acedGetVar" && call.function != L"acedSetVar")
                names.push_back(call.function);
        }
        return names;
    }

    MemoryDatabase m_database;
    ScriptedEditor m_editor;
    TempFolder m_folder;
    std::vector<AcDbObjectId> m_references;
    std::vector<BomRow> m_shown;
    const int m_hostResources = 0;
    const int m_moduleResources = 0;
    HINSTANCE m_resourcesWhileShown = nullptr;
};

TEST_F(CalcPriceCmdTest, InsertPlacesTheTableAtThePickedCorner) {
    m_editor.answerFile(RTNORM, m_folder.wpath("doors.prc"));
    m_editor.answerSelection(RTNORM, m_references);
    m_editor.answerPoint(RTNORM, {21.0, 9.0, 0.0});
    m_editor.answerGrRead(RTNORM, kKey, resbuf::shortValue(13));
    const auto watch = ClickWhenShown(IDC_REPORT_INSERT);
    CalcPriceCmd();
    EXPECT_TRUE(watch->fired());

    EXPECT_EQ(m_shown,
              (std::vector<BomRow>{{L"door", L"450.00", L"3", L"Interior door", L"1350.00"},
                                   {L"plant", L"0.00", L"1", L"", L"0.00"},
                                   {L"Summary:", L"", L"", L"", L"1350.00"}}));
    EXPECT_EQ(m_editor.callsOf(L"acedGetFileD"),
              (std::vector<RecordedCall>{{L"acedGetFileD", {L"Open", L"", L"prc", L"2"}}}));
    EXPECT_EQ(Functions(), (std::vector<std::wstring>{L"acedGetFileD", L"acedSSGet", L"acedInitGet",
                                                      L"acedGetPoint", L"acutPrintf", L"acedGrRead",
                                                      L"acedGrDraw", L"acedGrDraw", L"acedGrDraw",
                                                      L"acedGrDraw", L"acedCommandS"}));
    EXPECT_EQ(m_editor.callsOf(L"acedCommandS"),
              (std::vector<RecordedCall>{
                  {L"acedCommandS", {L".INSERT", L"QTB0001", L"(21,9,0)", L"1", L"1", L"0"}}}));
    ASSERT_NE(m_database.recordNamed(L"QTB0001"), nullptr);
    EXPECT_EQ(lastCalcFileName, m_folder.wpath("doors.prc"));
    EXPECT_EQ(calcPriceDialog, nullptr);
    // The dialog ran with the module's resources current; the host's are back afterwards.
    EXPECT_EQ(m_resourcesWhileShown, &m_moduleResources);
    EXPECT_EQ(AfxGetResourceHandle(), &m_hostResources);
}

TEST_F(CalcPriceCmdTest, ACancelledPromptOpensTheDialogWithoutPrices) {
    lastCalcFileName = m_folder.wpath("doors.prc");
    m_editor.answerFile(RTERROR);
    m_editor.answerSelection(RTNORM, m_references);
    const auto watch = ClickWhenShown(IDC_REPORT_CLOSE);
    CalcPriceCmd();
    EXPECT_TRUE(watch->fired());
    EXPECT_EQ(m_shown, (std::vector<BomRow>{{L"door", L"0.00", L"3", L"", L"0.00"},
                                            {L"plant", L"0.00", L"1", L"", L"0.00"},
                                            {L"Summary:", L"", L"", L"", L"0.00"}}));
    EXPECT_EQ(lastCalcFileName, L"");
    EXPECT_EQ(m_folder.read("filename.set"), "");
    EXPECT_TRUE(m_editor.callsOf(L"acedGetPoint").empty());
}

TEST_F(CalcPriceCmdTest, AnUnreadableListOrNoSelectionEndsTheCommandWithoutADialog) {
    const auto watch = NoDialog();
    const std::wstring missing = m_folder.wpath("gone.prc");
    m_editor.answerFile(RTNORM, missing);
    CalcPriceCmd();
    EXPECT_EQ(Functions(), (std::vector<std::wstring>{L"acedGetFileD", L"acedAlert"}));
    EXPECT_EQ(m_editor.callsOf(L"acedAlert"),
              (std::vector<RecordedCall>{
                  {L"acedAlert", {L"File " + missing + L" could  not be opened"}}}));
    EXPECT_EQ(lastCalcFileName, L"");

    m_editor.clearCalls();
    m_editor.answerFile(RTNORM, m_folder.wpath("doors.prc"));
    m_editor.answerSelection(RTCAN);
    CalcPriceCmd();
    EXPECT_EQ(Functions(), (std::vector<std::wstring>{L"acedGetFileD", L"acedSSGet"}));
    EXPECT_EQ(lastCalcFileName, m_folder.wpath("doors.prc"));
    EXPECT_EQ(m_database.recordNamed(L"QTB0001"), nullptr);
}

TEST_F(CalcPriceCmdTest, CloseEndsTheCommandWithNothingDrawn) {
    m_editor.answerFile(RTNORM, m_folder.wpath("doors.prc"));
    m_editor.answerSelection(RTNORM, m_references);
    const auto watch = ClickWhenShown(IDC_REPORT_CLOSE);
    CalcPriceCmd();
    EXPECT_TRUE(watch->fired());
    EXPECT_EQ(Functions(), (std::vector<std::wstring>{L"acedGetFileD", L"acedSSGet"}));
    EXPECT_EQ(m_database.recordNamed(L"QTB0001"), nullptr);
    EXPECT_EQ(m_folder.read("filename.set"), m_folder.path("doors.prc"));
}

}  // namespace
