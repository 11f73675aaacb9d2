// The desktop host's open drawing: new, opened, what the document manager hears, and the steps UNDO
// takes back. (Modified and saved: the shell's and the end-to-end tests.)
#include <gtest/gtest.h>

#include "host/api/acdbdatabase.h"
#include "host/desktop/session/drawingsession.h"
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
    void documentToBeDestroyed(AcApDocument* document) override {
        events.push_back(L"to be destroyed " + document->fileName());
    }
    std::vector<std::wstring> events;
};

TEST(DrawingSession, StartsWithANewDrawingWithoutFile) {
    DrawingSession session;
    EXPECT_EQ(session.drawingName(), L"Drawing1.dxf");
    EXPECT_FALSE(session.hasFile());
    EXPECT_FALSE(session.isModified());
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), &session.document());
    EXPECT_EQ(session.save().errorString(), "Drawing1.dxf: the drawing has no file yet");
}

TEST(DrawingSession, TheDocumentManagerHearsOfEveryDrawingThatComesAndGoes) {
    Recorder recorder;
    {
        DrawingSession session;
        ASSERT_TRUE(session.open(kFloorPlan).isOk());
        EXPECT_EQ(session.drawingName(), L"floorplan.dxf");
        EXPECT_EQ(acDocManagerPtr()->curDocument(), &session.hostDocument());
    }
    EXPECT_EQ(recorder.events,
              (std::vector<std::wstring>{L"created Drawing1.dxf", L"to be destroyed Drawing1.dxf",
                                         L"created " + kFloorPlan.wstring(),
                                         L"to be destroyed " + kFloorPlan.wstring()}));
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
    EXPECT_EQ(acDocManagerPtr()->curDocument(), nullptr);
}

TEST(DrawingSession, AFileThatCannotBeReadLeavesTheDrawingOpen) {
    TempFolder folder;
    folder.write("broken.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nabc\n");
    DrawingSession session;
    ASSERT_TRUE(session.open(kFloorPlan).isOk());
    const DxfStatus status = session.open(folder.path("broken.dxf"));
    EXPECT_FALSE(status.isOk());
    EXPECT_NE(status.errorString().find("broken.dxf:"), std::string::npos) << status.errorString();
    EXPECT_EQ(session.drawingName(), L"floorplan.dxf");
}

// A module's command is one step, under the INSERTs it ran; only the last few commands are kept.
TEST(DrawingSession, UndoTakesBackInsertsOneByOneAndAModulesCommandWhole) {
    DrawingSession session;
    ASSERT_TRUE(session.open(kFloorPlan).isOk());
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
