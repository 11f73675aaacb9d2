// The editor functions as the module calls them: forwarding, selection sets and their status codes.
#include <gtest/gtest.h>

#include "host/api/acapwindow.h"
#include "host/api/acdbdatabase.h"
#include "host/api/acededitor.h"
#include "host/scripted/scriptededitor.h"

namespace {

// Files, variables and prompts forwarded to a real editor: the desktop editor's tests.
TEST(EditorFunctions, WithoutAnEditorEveryCallFailsAndTheScriptedOneUninstallsItself) {
    {
        ScriptedEditor editor;
        EXPECT_EQ(acedEditor(), &editor);
    }
    ASSERT_EQ(acedEditor(), nullptr);
    EXPECT_EQ(adsw_acadMainWnd(), nullptr);
    resbuf result;
    EXPECT_EQ(acedGetFileD(L"Open", L"", L"prc", 2, &result), RTERROR);
    EXPECT_EQ(acedAlert(L"x"), RTERROR);
    ads_name set;
    EXPECT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, set), RTERROR);
    EXPECT_EQ(AfxMessageBox(L"Save?", MB_YESNOCANCEL), IDCANCEL);
    EXPECT_FALSE(Beep(100, 100));
}

TEST(EditorFunctions, SelectionSetsHandOutEntityNamesUntilFreedOrCancelled) {
    ScriptedEditor editor;
    editor.answerSelection(RTNORM, {AcDbObjectId(7), AcDbObjectId(9)});
    ads_name set;
    const std::vector<resbuf> filter{resbuf::groupCode(0, L"INSERT")};
    ASSERT_EQ(acedSSGet(nullptr, nullptr, nullptr, &filter, set), RTNORM);

    std::int32_t length = 0;
    ASSERT_EQ(acedSSLength(set, &length), RTNORM);
    EXPECT_EQ(length, 2);
    ads_name entity;
    AcDbObjectId id;
    ASSERT_EQ(acedSSName(set, 1, entity), RTNORM);
    ASSERT_EQ(acdbGetObjectId(id, entity), Acad::eOk);
    EXPECT_EQ(id, AcDbObjectId(9));
    EXPECT_EQ(acedSSName(set, 2, entity), RTERROR);
    EXPECT_EQ(acedSSName(set, -1, entity), RTERROR);

    EXPECT_EQ(acedSSFree(set), RTNORM);
    EXPECT_EQ(acedSSLength(set, &length), RTERROR);
    EXPECT_EQ(acedSSFree(set), RTERROR);
    EXPECT_EQ(editor.calls().front(), (RecordedCall{L"acedSSGet", {L"(null)", L"0=INSERT"}}));
    // A cancelled selection makes no set.
    editor.answerSelection(RTCAN);
    EXPECT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, set), RTCAN);
    EXPECT_EQ(acedSSLength(set, &length), RTERROR);
}

TEST(EditorFunctions, PrintfFormatsWideTextOfAnyLength) {
    ScriptedEditor editor;
    acutPrintf(L"\n%ls: %d%%", L"Scale", 50);
    const std::wstring longText(5000, L'x');
    acutPrintf(L"%ls", longText.c_str());
    EXPECT_EQ(editor.printed(), L"\nScale: 50%" + longText);
}

}  // namespace
