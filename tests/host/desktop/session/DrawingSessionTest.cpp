// The desktop host's drawings: each one new or opened, and the open ones with one active; what the
// document manager hears, which database is the working one, and the steps UNDO takes back.
// (Modified and saved: the shell's and the end-to-end tests.)
#include <gtest/gtest.h>

#include "host/api/acdbdatabase.h"
#include "host/desktop/session/opendrawings.h"
#include "tests/TempFolder.h"

namespace {

const std::filesystem::path kFloorPlan =
    std::filesystem::path(TARNWICK_SOURCE_DIR) / "examples" / "floorplan.dxf";

struct Recorder final : AcApDocManagerReactor {
    Recorder() { acDocManagerPtr()->addReactor(this); }
    ~Recorder() override { acDocManagerPtr()->removeReactor(this); }
    void documentCreated(AcApDocument* document) override {
        events.push_back(L"created " + document->fileName());
    }
    void documentBecameCurrent(AcApDocument* document) override {
        events.push_back(L"current " + document->fileName());
    }
    void documentToBeDestroyed(AcApDocument* document) override {
        events.push_back(L"to be destroyed " + document->fileName());
    }
    std::vector<std::wstring> events;
};

AcDbDatabase* workingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

TEST(DrawingSession, ANewDrawingHasNoFileUntilSavedAsAndIsPristineUntilChanged) {
    DrawingSession session("Drawing1.dxf");
    EXPECT_EQ(session.drawingName(), L"Drawing1.dxf");
    EXPECT_FALSE(session.hasFile());
    EXPECT_TRUE(session.isPristine());
    EXPECT_EQ(session.save().errorString(), "Drawing1.dxf: the drawing has no file yet");
    ASSERT_EQ(session.document().setVar(L"ATTREQ", resbuf::shortValue(0)), RTNORM);
    EXPECT_TRUE(session.isModified());
    EXPECT_FALSE(session.isPristine());
}

TEST(OpenDrawings, EachDrawingIsCreatedMadeCurrentAndDestroyedAsTheUserWorks) {
    Recorder recorder;
    const std::wstring plan = kFloorPlan.wstring();
    {
        OpenDrawings drawings;
        EXPECT_EQ(drawings.active().drawingName(), L"Drawing1.dxf");
        EXPECT_EQ(workingDatabase(), &drawings.active().document());
        auto opened = drawings.open(kFloorPlan);
        ASSERT_TRUE(opened.isOk()) << opened.errorString();
        EXPECT_EQ(drawings.count(), 2u);
        EXPECT_EQ(&drawings.active(), opened.value());
        EXPECT_EQ(workingDatabase(), &opened.value()->document());
        EXPECT_EQ(drawings.indexOfFile(kFloorPlan), 1u);
        drawings.addNew();
        EXPECT_EQ(drawings.active().drawingName(), L"Drawing2.dxf");

        drawings.activate(0);
        EXPECT_EQ(acDocManagerPtr()->curDocument(), &drawings.at(0).hostDocument());
        EXPECT_EQ(workingDatabase(), &drawings.at(0).document());
        // Closing the active drawing makes the next one active; the only one stays.
        ASSERT_TRUE(drawings.close(0));
        EXPECT_EQ(drawings.active().drawingName(), L"floorplan.dxf");
        ASSERT_TRUE(drawings.close(1));
        EXPECT_FALSE(drawings.close(0));
        EXPECT_EQ(drawings.count(), 1u);
        // A new drawing takes the next number, not a closed one's.
        EXPECT_EQ(drawings.addNew().drawingName(), L"Drawing3.dxf");
    }
    EXPECT_EQ(recorder.events,
              (std::vector<std::wstring>{
                  L"created Drawing1.dxf", L"current Drawing1.dxf", L"created " + plan,
                  L"current " + plan, L"created Drawing2.dxf", L"current Drawing2.dxf",
                  L"current Drawing1.dxf", L"to be destroyed Drawing1.dxf", L"current " + plan,
                  L"to be destroyed Drawing2.dxf", L"created Drawing3.dxf", L"current Drawing3.dxf",
                  L"to be destroyed Drawing3.dxf", L"to be destroyed " + plan}));
    EXPECT_EQ(workingDatabase(), nullptr);
    EXPECT_EQ(acDocManagerPtr()->curDocument(), nullptr);
}

TEST(OpenDrawings, AFileThatCannotBeReadChangesNothingAndADamagedOneCanBeRepaired) {
    TempFolder folder;
    folder.write("broken.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nabc\n");
    folder.write("stray.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nENDSEC\n  0\nENDSEC\n  0\nEOF\n");
    OpenDrawings drawings;
    auto broken = drawings.open(folder.path("broken.dxf"));
    ASSERT_FALSE(broken.isOk());
    EXPECT_NE(broken.errorString().find("broken.dxf:"), std::string::npos) << broken.errorString();
    EXPECT_EQ(broken.error().kind(), DxfErrorKind::Other);
    EXPECT_EQ(drawings.count(), 1u);
    EXPECT_EQ(drawings.active().drawingName(), L"Drawing1.dxf");

    auto strict = drawings.open(folder.path("stray.dxf"));
    ASSERT_FALSE(strict.isOk());
    EXPECT_EQ(strict.error().kind(), DxfErrorKind::Structure) << strict.errorString();
    auto mended = drawings.open(folder.path("stray.dxf"), DxfReading::Recover);
    ASSERT_TRUE(mended.isOk()) << mended.errorString();
    EXPECT_FALSE(mended.value()->document().repairs().empty());
    EXPECT_EQ(drawings.count(), 2u);
}

// A module's command is one step, under the INSERTs it ran; only the last few commands are kept.
TEST(DrawingSession, UndoTakesBackInsertsOneByOneAndAModulesCommandWhole) {
    auto read = DxfDocument::readFile(kFloorPlan);
    ASSERT_TRUE(read.isOk()) << read.errorString();
    DrawingSession session(read.takeValue());
    DxfDocument& document = session.document();
    const std::string opened = document.toBytes();
    auto insertDoor = [&] {
        AcDbBlockReference door;
        ASSERT_EQ(document.getBlockTableRecordId(L"DOOR", door.blockTableRecord), Acad::eOk);
        AcDbObjectId id;
        const std::uint64_t before = document.editCount();
        ASSERT_EQ(document.insertBlockReference(door, id), Acad::eOk);
        session.noteInsert(before);
    };
    auto addStyle = [&](const std::wstring& name) {
        AcDbObjectId id;
        ASSERT_EQ(document.addTextStyle({name, L"txt"}, id), Acad::eOk);
    };

    session.beginModuleCommand(L"RZBOMT");
    EXPECT_FALSE(session.endModuleCommand());  // it changed nothing: no step
    session.beginModuleCommand(L"RZBOMC");
    addStyle(L"QTBTABLE");
    insertDoor();
    EXPECT_TRUE(session.endModuleCommand());
    const std::string afterCommand = document.toBytes();
    insertDoor();
    using What = DrawingSession::Undone::What;
    EXPECT_EQ(session.undo().what, What::Insert);
    EXPECT_EQ(document.toBytes(), afterCommand);
    EXPECT_EQ(session.undo().what, What::Insert);
    const DrawingSession::Undone command = session.undo();
    EXPECT_EQ(command.what, What::Command);
    EXPECT_EQ(command.command, L"RZBOMC");
    EXPECT_EQ(document.toBytes(), opened);
    EXPECT_EQ(session.undo().what, What::Nothing);

    for (long i = 0; i <= DrawingSession::kCommandSteps; ++i) {
        session.beginModuleCommand(L"RZBOMU");
        addStyle(L"S" + std::to_wstring(i));
        ASSERT_TRUE(session.endModuleCommand());
    }
    long undone = 0;
    while (session.undo().what == What::Command) ++undone;
    EXPECT_EQ(undone, DrawingSession::kCommandSteps);
    AcDbObjectId first;
    EXPECT_EQ(document.getTextStyleId(L"S0", first), Acad::eOk);
}

}  // namespace
