// The desktop editor answers the host interface's editor functions from real key and mouse
// events: points, tracking input, vectors, variables, selection, files and host commands.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "host/api/acdbdatabase.h"
#include "host/api/acededitor.h"
#include "tests/TempFolder.h"
#include "tests/host/desktop/shell/ShellTestSupport.h"

namespace {

class DesktopEditorTest : public ShellTest {
protected:
    void openR12() { open(kSourceDir / "tests" / "data" / "dxf" / "r12-layouts.dxf"); }
};

TEST_F(DesktopEditorTest, TypedPointsAnswerThePointPromptAndAnythingElseIsAskedAgain) {
    m_driver->type(QStringLiteral("10,20")).type(QStringLiteral("1.5,-2,3"));
    ads_point point;
    ASSERT_EQ(acedGetPoint(nullptr, L"\nFirst point: ", point), RTNORM);
    EXPECT_EQ(point, (ads_point{10, 20, 0}));
    ASSERT_EQ(acedGetPoint(nullptr, L"\nSecond point: ", point), RTNORM);
    EXPECT_EQ(point, (ads_point{1.5, -2, 3}));
    EXPECT_TRUE(history().endsWith(QStringLiteral("First point: 10,20\nSecond point: 1.5,-2,3\n")))
        << history().toStdString();
    EXPECT_EQ(m_driver->prompts(),
              (QStringList{QStringLiteral("First point: "), QStringLiteral("Second point: ")}));
    // Relative points start from the base point.
    m_driver->type(QStringLiteral("@2,-1"));
    const ads_point base{5, 5, 0};
    ASSERT_EQ(acedGetPoint(&base, L"\nTo point: ", point), RTNORM);
    EXPECT_EQ(point, (ads_point{7, 4, 0}));
    // Text that is no point is asked again; Esc cancels.
    m_driver->type(QStringLiteral("here")).type(QStringLiteral("1,2")).escape();
    ASSERT_EQ(acedGetPoint(nullptr, L"\nCorner: ", point), RTNORM);
    EXPECT_TRUE(history().contains(QStringLiteral("Corner: here\nInvalid point.\nCorner: 1,2")));
    EXPECT_EQ(acedGetPoint(nullptr, L"\nCorner: ", point), RTCAN);
    EXPECT_TRUE(history().endsWith(QStringLiteral("Corner: *Cancel*\n")));
}

TEST_F(DesktopEditorTest, InitGetOneRefusesAnEmptyAnswer) {
    m_driver->type(QString()).type(QStringLiteral("3,4"));
    ads_point point;
    acedInitGet(1, nullptr);
    ASSERT_EQ(acedGetPoint(nullptr, L"\nCorner: ", point), RTNORM);
    EXPECT_EQ(point, (ads_point{3, 4, 0}));
    EXPECT_TRUE(history().contains(
        QStringLiteral("Corner: \nPoint or option keyword required.\nCorner: 3,4")))
        << history().toStdString();
    // The flag holds for one prompt only.
    m_driver->type(QString());
    EXPECT_EQ(acedGetPoint(nullptr, L"\nCorner: ", point), RTNONE);
}

TEST_F(DesktopEditorTest, GrReadReportsCursorSamplesPicksAndKeys) {
    const AcGePoint3d moved{2, 3, 0};
    const AcGePoint3d picked{4, 1, 0};
    m_driver->then([&] { moveMouse(*m_window, moved); })
        .click(picked)
        .type(QString())
        .type(QStringLiteral("5,6"))
        .type(QStringLiteral("q"))
        .escape();
    int type = 0;
    resbuf result;
    ASSERT_EQ(acedGrRead(9, &type, &result), RTNORM);
    EXPECT_EQ(type, 5);
    EXPECT_EQ(result.resval.rpoint, onPixel(*m_window, moved));
    ASSERT_EQ(acedGrRead(9, &type, &result), RTNORM);
    EXPECT_EQ(type, 3);
    EXPECT_EQ(result.resval.rpoint, onPixel(*m_window, picked));
    ASSERT_EQ(acedGrRead(9, &type, &result), RTNORM);
    EXPECT_EQ(type, 2);
    EXPECT_EQ(result.resval.rint, 13);
    ASSERT_EQ(acedGrRead(9, &type, &result), RTNORM);
    EXPECT_EQ(type, 3);
    EXPECT_EQ(result.resval.rpoint, (ads_point{5, 6, 0}));
    ASSERT_EQ(acedGrRead(9, &type, &result), RTNORM);
    EXPECT_EQ(type, 2);
    EXPECT_EQ(result.resval.rint, 'q');
    EXPECT_EQ(acedGrRead(9, &type, &result), RTCAN);
    // The status line follows the cursor.
    EXPECT_EQ(m_window->cursorPosition().text(), QStringLiteral("%1, %2")
                                                     .arg(onPixel(*m_window, picked).x, 0, 'f', 4)
                                                     .arg(onPixel(*m_window, picked).y, 0, 'f', 4));
}

TEST_F(DesktopEditorTest, InputThatComesBeforeTheNextPromptWaitsForIt) {
    const AcGePoint3d moved{6, 7, 0};
    const AcGePoint3d picked{8, 2, 0};
    // The mouse moves and clicks, and a key is typed, before the program reads again.
    m_driver->then([&] {
        moveMouse(*m_window, moved);
        clickAt(*m_window, picked);
        typeLine(*m_window, QString());
    });
    int type = 0;
    resbuf result;
    ASSERT_EQ(acedGrRead(9, &type, &result), RTNORM);
    EXPECT_EQ(type, 5);
    ASSERT_EQ(acedGrRead(9, &type, &result), RTNORM);
    EXPECT_EQ(type, 3);
    EXPECT_EQ(result.resval.rpoint, onPixel(*m_window, picked));
    ASSERT_EQ(acedGrRead(9, &type, &result), RTNORM);
    EXPECT_EQ(type, 2);
    EXPECT_EQ(m_driver->prompts().size(), 1);
}

TEST_F(DesktopEditorTest, ExclusiveOrVectorsDrawnTwiceAreGone) {
    const ads_point a{0, 0, 0};
    const ads_point b{5, 5, 0};
    acedGrDraw(a, b, -1, 1);
    EXPECT_EQ(vectorCount(*m_window), 1u);
    acedGrDraw(b, a, -1, 1);
    EXPECT_EQ(vectorCount(*m_window), 0u);
    acedGrDraw(a, b, 1, 0);
    acedGrDraw(a, b, 1, 0);
    EXPECT_EQ(vectorCount(*m_window), 2u);
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("REDRAW")));
    EXPECT_EQ(vectorCount(*m_window), 0u);
}

TEST_F(DesktopEditorTest, VariablesOfTheSessionAndOfTheDrawing) {
    resbuf value;
    ASSERT_EQ(acedGetVar(L"CMDECHO", &value), RTNORM);
    EXPECT_EQ(value.resval.rint, 1);
    const resbuf zero = resbuf::shortValue(0);
    EXPECT_EQ(acedSetVar(L"cmdecho", &zero), RTNORM);
    ASSERT_EQ(acedGetVar(L"CMDECHO", &value), RTNORM);
    EXPECT_EQ(value.resval.rint, 0);
    ASSERT_EQ(acedGetVar(L"DWGNAME", &value), RTNORM);
    EXPECT_EQ(value.resval.rstring, L"Drawing1.dxf");

    openFloorPlan();
    for (const wchar_t* name : {L"ATTREQ", L"SNAPMODE", L"OSMODE"}) {
        const resbuf seven = resbuf::shortValue(7);
        EXPECT_EQ(acedSetVar(name, &seven), RTNORM);
        ASSERT_EQ(acedGetVar(name, &value), RTNORM);
        EXPECT_EQ(value.resval.rint, 7);
    }
    ASSERT_EQ(acedGetVar(L"DWGNAME", &value), RTNORM);
    EXPECT_EQ(value.resval.rstring, L"floorplan.dxf");
    const resbuf name = resbuf::stringValue(L"other.dxf");
    EXPECT_EQ(acedSetVar(L"DWGNAME", &name), RTERROR);
    EXPECT_EQ(acedGetVar(L"NOSUCHVAR", &value), RTERROR);
    EXPECT_EQ(acedSetVar(L"NOSUCHVAR", &zero), RTERROR);
}

TEST_F(DesktopEditorTest, AnAlertIsABoxTheUserCloses) {
    QString shown;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        shown = box->text();
        QTest::keyClick(box, Qt::Key_Return);
    });
    EXPECT_EQ(acedAlert(L"\nFile x.prc could  not be opened"), RTNORM);
    EXPECT_EQ(shown, QStringLiteral("File x.prc could  not be opened"));
}

// Selection.

std::vector<AcDbObjectId> referencesWithin(const DxfDocument& document, double x0, double y0,
                                           double x1, double y1, const wchar_t* name = nullptr) {
    std::vector<AcDbObjectId> ids;
    for (const DxfReference& r : document.blockReferences(DxfSpace::Model)) {
        if (r.position.x >= x0 && r.position.x <= x1 && r.position.y >= y0 && r.position.y <= y1 &&
            (name == nullptr || r.blockName == name))
            ids.push_back(r.id);
    }
    return ids;
}

std::vector<AcDbObjectId> selectionOf(const ads_name& set) {
    std::int32_t length = 0;
    acedSSLength(set, &length);
    std::vector<AcDbObjectId> ids;
    for (std::int32_t i = 0; i < length; ++i) {
        ads_name entity;
        AcDbObjectId id;
        acedSSName(set, i, entity);
        acdbGetObjectId(id, entity);
        ids.push_back(id);
    }
    acedSSFree(set);
    return ids;
}

const std::vector<resbuf> kInsertsOnly{resbuf::groupCode(0, L"INSERT")};

TEST_F(DesktopEditorTest, ATypedWindowSelectsTheReferencesInsideAndTheFilterNarrows) {
    openFloorPlan();
    // The lower row of desks and chairs lies wholly inside; the door at (5,0) and the window at
    // (8,0) do not.
    m_driver->type(QStringLiteral("W"))
        .type(QStringLiteral("1,1.5"))
        .type(QStringLiteral("10,4"))
        .type(QString());
    ads_name set;
    ASSERT_EQ(acedSSGet(nullptr, nullptr, nullptr, &kInsertsOnly, set), RTNORM);
    const auto expected = referencesWithin(shell().drawing().document(), 1, 1.5, 10, 4);
    EXPECT_EQ(expected.size(), 6u);
    EXPECT_EQ(selectionOf(set), expected);
    EXPECT_TRUE(
        history().contains(QStringLiteral("Select objects: W\nSpecify first corner: 1,1.5\nSpecify "
                                          "opposite corner: 10,4\n6 found\nSelect objects: \n")))
        << history().toStdString();
    // A crossing, narrowed by block name.
    const std::vector<resbuf> doors{resbuf::groupCode(0, L"INSERT"), resbuf::groupCode(2, L"DOOR")};
    m_driver->type(QStringLiteral("C"))
        .type(QStringLiteral("20,20"))
        .type(QStringLiteral("-1,-1"))
        .type(QString());
    ASSERT_EQ(acedSSGet(nullptr, nullptr, nullptr, &doors, set), RTNORM);
    EXPECT_EQ(selectionOf(set),
              referencesWithin(shell().drawing().document(), -1, -1, 20, 20, L"DOOR"));
}

TEST_F(DesktopEditorTest, PicksAndImpliedWindowsAddUp) {
    openFloorPlan();
    const DxfDocument& document = shell().drawing().document();
    // A pick on the door at (5,0), a pick on nothing that starts a window to the left (a crossing),
    // and the door again, which is no new entity.
    m_driver->click({5, 0, 0})
        .type(QStringLiteral("13,13"))
        .type(QStringLiteral("10.5,10.5"))
        .click({5, 0, 0})
        .type(QString());
    ads_name set;
    ASSERT_EQ(acedSSGet(nullptr, nullptr, nullptr, &kInsertsOnly, set), RTNORM);
    std::vector<AcDbObjectId> expected = referencesWithin(document, 5, 0, 5, 0);
    for (const AcDbObjectId id : referencesWithin(document, 10.5, 10.5, 13, 13))
        expected.push_back(id);
    EXPECT_EQ(selectionOf(set), expected);
    EXPECT_EQ(expected.size(), 2u);
}

TEST_F(DesktopEditorTest, EscCancelsTheSelectionAndNothingSelectedIsAnError) {
    openFloorPlan();
    ads_name set;
    m_driver->type(QStringLiteral("W")).type(QStringLiteral("0,0")).escape();
    EXPECT_EQ(acedSSGet(nullptr, nullptr, nullptr, &kInsertsOnly, set), RTCAN);
    m_driver->type(QString());
    EXPECT_EQ(acedSSGet(nullptr, nullptr, nullptr, &kInsertsOnly, set), RTERROR);
    m_driver->type(QStringLiteral("nonsense")).type(QString());
    EXPECT_EQ(acedSSGet(nullptr, nullptr, nullptr, &kInsertsOnly, set), RTERROR);
    EXPECT_TRUE(history().contains(QStringLiteral(
        "Select objects: nonsense\n*Invalid selection*\nExpects a point or Window/Crossing")));
}

TEST_F(DesktopEditorTest, SelectionModesAndFiltersItCannotApplyAreRefused) {
    openFloorPlan();
    ads_name set;
    ASSERT_EQ(acedSSGet(L"X", nullptr, nullptr, &kInsertsOnly, set), RTNORM);
    EXPECT_EQ(selectionOf(set).size(), 46u);
    const std::vector<resbuf> colour{resbuf::groupCode(62, L"1")};
    EXPECT_EQ(acedSSGet(nullptr, nullptr, nullptr, &colour, set), RTERROR);
    EXPECT_EQ(acedSSGet(L"P", nullptr, nullptr, &kInsertsOnly, set), RTERROR);
    EXPECT_TRUE(
        history().contains(QStringLiteral("selection filters on group code 62 are not supported")));
    EXPECT_TRUE(history().contains(QStringLiteral("selection mode \"P\" is not supported")));
}

// Host commands through acedCommandS.

std::size_t occurrences(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

std::vector<resbuf> insertArguments(const wchar_t* block, const ads_point& at, double scale) {
    return {resbuf::stringValue(L".INSERT"), resbuf::stringValue(block), resbuf::pointValue(at),
            resbuf::realValue(scale),        resbuf::realValue(scale),   resbuf::stringValue(L"0")};
}

TEST_F(DesktopEditorTest, InsertWithAttreqOffTakesTheDefaultsSilentlyWhenEchoIsOff) {
    openR12();
    DxfDocument& document = shell().drawing().document();
    const std::size_t before = document.blockReferences(DxfSpace::Model).size();
    const std::size_t defaults = occurrences(document.toBytes(), "\n  1\n90\n");
    const resbuf zero = resbuf::shortValue(0);
    acedSetVar(L"ATTREQ", &zero);
    acedSetVar(L"CMDECHO", &zero);
    ASSERT_EQ(acedCommandS(insertArguments(L"DOOR", {3, 4, 0}, 2.0)), RTNORM);
    const auto references = document.blockReferences(DxfSpace::Model);
    ASSERT_EQ(references.size(), before + 1);
    AcDbBlockReference inserted;
    ASSERT_EQ(document.openBlockReference(references.back().id, inserted), Acad::eOk);
    EXPECT_EQ(inserted.position, (AcGePoint3d{3, 4, 0}));
    EXPECT_EQ(inserted.scaleFactors, (AcGeScale3d{2, 2, 1}));
    EXPECT_FALSE(history().contains(QStringLiteral("Enter block name")));
    // The attribute WIDTH came with its default value.
    EXPECT_EQ(occurrences(document.toBytes(), "\n  1\n90\n"), defaults + 1);
}

TEST_F(DesktopEditorTest, InsertWithAttreqOnWantsTheAttributeValues) {
    openR12();
    DxfDocument& document = shell().drawing().document();
    const std::size_t before = document.blockReferences(DxfSpace::Model).size();
    // Too few arguments: the command is cancelled, not left waiting.
    EXPECT_EQ(acedCommandS(insertArguments(L"DOOR", {3, 4, 0}, 1.0)), RTCAN);
    EXPECT_EQ(document.blockReferences(DxfSpace::Model).size(), before);
    auto arguments = insertArguments(L"DOOR", {3, 4, 0}, 1.0);
    arguments.push_back(resbuf::stringValue(L"120"));
    EXPECT_EQ(acedCommandS(arguments), RTNORM);
    EXPECT_EQ(document.blockReferences(DxfSpace::Model).size(), before + 1);
    EXPECT_NE(document.toBytes().find("\n  1\n120\n"), std::string::npos);
    // With CMDECHO on, the prompts and their answers are shown.
    EXPECT_TRUE(history().contains(
        QStringLiteral(".INSERT\nEnter block name: DOOR\nSpecify insertion point: 3,4,0")))
        << history().toStdString();
}

TEST_F(DesktopEditorTest, CommandsThatDoNotExistAreRejected) {
    EXPECT_EQ(acedCommandS({resbuf::stringValue(L"NOSUCHCOMMAND")}), RTREJ);
    EXPECT_EQ(acedCommandS({resbuf::realValue(1.0)}), RTREJ);
    EXPECT_EQ(acedCommandS(insertArguments(L"NOSUCHBLOCK", {0, 0, 0}, 1.0)), RTERROR);
    EXPECT_TRUE(history().contains(QStringLiteral("Block \"NOSUCHBLOCK\" not found.")));
}

// Files at the command line (FILEDIA 0).

TEST_F(DesktopEditorTest, AFileIsTypedWithItsExtensionAddedTheDefaultOnEnterAndCancelledIfMissing) {
    TempFolder folder;
    folder.write("doors.prc", "Door|450|Interior door\n");
    const QString doors = QString::fromStdString(folder.path("doors"));
    m_driver->type(doors).type(QString());
    resbuf result;
    ASSERT_EQ(acedGetFileD(L"Open", L"", L"prc", 2, &result), RTNORM);
    EXPECT_EQ(result.resval.rstring, folder.wpath("doors.prc"));
    ASSERT_EQ(acedGetFileD(L"Open", folder.wpath("doors.prc").c_str(), L"prc", 2, &result), RTNORM);
    EXPECT_EQ(result.resval.rstring, folder.wpath("doors.prc"));
    // A missing file or an unwanted replacement is a cancel.
    const QString missing = QString::fromStdString(folder.path("missing.prc"));
    m_driver->type(missing)
        .type(doors + QStringLiteral(".prc"))
        .type(QStringLiteral("N"))
        .type(doors + QStringLiteral(".prc"))
        .type(QStringLiteral("y"))
        .escape();
    EXPECT_EQ(acedGetFileD(L"Open", L"", L"prc", 2, &result), RTERROR);
    EXPECT_TRUE(history().contains(QStringLiteral("Cannot find \"%1\".").arg(missing)));
    EXPECT_EQ(acedGetFileD(L"Save", L"", L"prc", 1, &result), RTERROR);
    EXPECT_TRUE(history().contains(
        QStringLiteral("\"doors.prc\" already exists. Replace it? [Yes/No] <No>: N")));
    EXPECT_EQ(acedGetFileD(L"Save", L"", L"prc", 1, &result), RTNORM);
    EXPECT_EQ(result.resval.rstring, folder.wpath("doors.prc"));
    EXPECT_EQ(acedGetFileD(L"Open", L"", L"prc", 2, &result), RTERROR);
}

}  // namespace
