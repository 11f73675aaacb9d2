// The shell: commands typed at the command line and run from the menus, modules' commands and
// their menus, transparent commands, scripts, drawings opened, saved and quit, the recent drawings,
// and UNDO of the last insert. (The rubber band: the end-to-end tests, with the module's own
// placement.)
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "host/desktop/scene/drawingscene.h"
#include "tests/TempFolder.h"
#include "tests/host/desktop/shell/ShellTestSupport.h"
#include "tests/host/dxf/DxfTestSupport.h"

namespace {

const std::filesystem::path kChecker =
    kSourceDir / "tests" / "host" / "desktop" / "shell" / "check_saved.py";

QString path(const std::filesystem::path& file) { return QString::fromStdString(file.string()); }

class DesktopShellTest : public ShellTest {
protected:
    // Writes the script and runs it until the shell is idle again.
    bool runScript(const std::string& text) {
        m_folder.write("run.scr", text);
        return runUntilIdle(*m_window, [&] {
            shell().startScript(QString::fromStdString(m_folder.path("run.scr")));
        });
    }

    TempFolder m_folder;
};

TEST_F(DesktopShellTest, ModuleCommandsRunByLocalAndGlobalNameUntilUnknownOnceUnloaded) {
    ASSERT_TRUE(shell().loadModule(path(kTestModules / "good.arx")));
    EXPECT_TRUE(history().contains(QStringLiteral("good.arx successfully loaded.")));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("hello")));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("_Hello_Global")));
    EXPECT_EQ(history().count(QStringLiteral("Hello from GOOD_GROUP")), 2);
    // Enter at the command prompt repeats the last command.
    ASSERT_TRUE(runCommandLine(*m_window, QString()));
    EXPECT_EQ(history().count(QStringLiteral("Hello from GOOD_GROUP")), 3);

    m_driver->type(QStringLiteral("U")).type(QStringLiteral("good"));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("ARX")));
    EXPECT_TRUE(history().contains(QStringLiteral("good successfully unloaded.")));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("hello")));
    EXPECT_TRUE(
        history().endsWith(QStringLiteral("Command: hello\nUnknown command \"HELLO\".\nCommand: ")))
        << history().toStdString();
}

TEST_F(DesktopShellTest, BrokenModulesGiveOneMessageEachAndTheHostStaysUp) {
    m_driver->type(path(kTestModules / "noentry.arx"))
        .type(QStringLiteral("L"))
        .type(path(kTestModules / "oldversion.arx"))
        .type(QStringLiteral("U"))
        .type(QStringLiteral("ghost"));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("APPLOAD")));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("ARX")));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("ARX")));
    EXPECT_TRUE(
        history().contains(QStringLiteral("\nnoentry.arx: no entry point \"acrxEntryPoint\"\n")));
    EXPECT_TRUE(history().contains(
        QStringLiteral("\noldversion.arx: made for host interface 21.0, this host takes 22.x\n")));
    EXPECT_TRUE(history().contains(QStringLiteral("\nghost: not loaded\n")));
    EXPECT_TRUE(shell().modules().modules().empty());
    ASSERT_TRUE(shell().loadModule(path(kTestModules / "good.arx")));
}

TEST_F(DesktopShellTest, TransparentCommandsRunWhileAnotherPrompts) {
    ASSERT_TRUE(shell().loadModule(path(kTestModules / "good.arx")));
    openFloorPlan();
    m_driver->type(QStringLiteral("'ECHO"))
        .type(QStringLiteral("'HELLO"))
        .type(QStringLiteral("'ZOOM"))
        .type(QStringLiteral("2x"))
        .escape();
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("INSERT")));
    EXPECT_TRUE(history().contains(QStringLiteral(
        "Command: INSERT\nEnter block name: 'ECHO\nEcho from GOOD_GROUP\nEnter block name: 'HELLO\n"
        "** That command may not be invoked transparently **\nEnter block name: 'ZOOM\n"
        "Specify corner of window, enter a scale factor (nX), or [Extents/Window]: 2x\n"
        "Enter block name: *Cancel*\nCommand: ")))
        << history().toStdString();
}

TEST_F(DesktopShellTest, SelectShowsWhatAWindowDraggedWithTheMouseTakes) {
    openFloorPlan();
    ViewSurface& view = m_window->surface();
    bool crossingShown = false;
    std::size_t highlighted = 0;
    // A click on nothing at (13,13), the mouse dragged left and down, a click at (10.5,10.5);
    // the right button ends the selection. One input a step: each waits for the prompt.
    m_driver->click({13, 13, 0})
        .then([&] {
            moveMouse(*m_window, {10.5, 10.5, 0});
        })
        .then([&] {
            crossingShown = view.selectionRectangleShown() && view.selectionIsCrossing();
            clickAt(*m_window, {10.5, 10.5, 0});
        })
        .then([&] {
            highlighted = m_window->view().highlighted().size();
            QTest::mouseClick(&m_window->view(), Qt::RightButton, {},
                              widgetPoint(*m_window, {5, 5, 0}));
        });
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("SELECT")));
    EXPECT_TRUE(crossingShown);
    EXPECT_FALSE(view.selectionRectangleShown());
    EXPECT_EQ(highlighted, 3u);
    EXPECT_TRUE(m_window->view().highlighted().empty());
    // The crossing takes the plant at (11.4,11.4) and the two walls that run through it.
    EXPECT_TRUE(history().contains(QStringLiteral(
        "Specify opposite corner: \n3 found\nSelect objects: \n3 selected\nCommand: ")))
        << history().toStdString();
}

TEST_F(DesktopShellTest, ZoomTakesAWindowClickedWithTheMouseAFactorAndTheExtents) {
    openFloorPlan();
    DrawingView& view = m_window->view();
    const double extentsUnits = view.unitsPerPixel();
    // The meeting room: a click at one corner, the mouse moved to the other, a click there.
    const AcGePoint3d a = onPixel(*m_window, {12.5, 6.5, 0});
    const AcGePoint3d b = onPixel(*m_window, {19.5, 11.5, 0});
    bool rectangleShown = false;
    m_driver->click(a).then([&] { moveMouse(*m_window, b); }).then([&] {
        rectangleShown = m_window->surface().selectionRectangleShown();
        clickAt(*m_window, b);
    });
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("ZOOM")));
    EXPECT_TRUE(rectangleShown);
    EXPECT_FALSE(m_window->surface().selectionRectangleShown());
    const SceneRect shown = view.viewTransform().visibleWorld();
    // The window fills the view along one axis exactly, up to rounding.
    const double rounding = view.unitsPerPixel() * 1e-6;
    EXPECT_LE(shown.minX, a.x + rounding);
    EXPECT_LE(shown.minY, a.y + rounding);
    EXPECT_GE(shown.maxX, b.x - rounding);
    EXPECT_GE(shown.maxY, b.y - rounding);
    EXPECT_NEAR(shown.center().x, (a.x + b.x) / 2, view.unitsPerPixel());
    EXPECT_NEAR(shown.center().y, (a.y + b.y) / 2, view.unitsPerPixel());
    const double windowUnits = view.unitsPerPixel();
    EXPECT_LT(windowUnits, extentsUnits / 2);

    m_driver->type(QStringLiteral("2x"));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("ZOOM")));
    EXPECT_DOUBLE_EQ(view.unitsPerPixel(), windowUnits / 2);
    m_driver->type(QStringLiteral("E"));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("ZOOM")));
    EXPECT_DOUBLE_EQ(view.unitsPerPixel(), extentsUnits);
}

TEST_F(DesktopShellTest, InsertAndUndoLeaveTheFileAsItWas) {
    openFloorPlan();
    m_driver->type(QStringLiteral("DOOR"))
        .type(QStringLiteral("3,3"))
        .type(QString())
        .type(QString())
        .type(QString())
        .type(QString::fromStdString(m_folder.path("undone.dxf")));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("INSERT")));
    EXPECT_TRUE(shell().drawing().isModified());
    EXPECT_TRUE(m_window->isWindowModified());
    // The view shows the new door, and a pick on its swing finds it, until UNDO takes it away.
    const AcDbObjectId inserted =
        shell().drawing().document().blockReferences(DxfSpace::Model).back().id;
    const DrawingScene& scene = *m_window->surface().scene();
    const auto index = scene.indexOf(inserted);
    ASSERT_TRUE(index.has_value());
    EXPECT_FALSE(scene.entity(*index).removed);
    EXPECT_EQ(m_window->surface().pick({3.636, 3.636, 0}, SelectionFilter{{L"INSERT"}, {}, {}}),
              inserted);
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("UNDO")));
    EXPECT_TRUE(scene.entity(*index).removed);
    EXPECT_EQ(m_window->surface().pick({3.636, 3.636, 0}, SelectionFilter{{L"INSERT"}, {}, {}}),
              std::nullopt);
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("U")));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("SAVEAS")));
    EXPECT_TRUE(history().contains(
        QStringLiteral("Command: UNDO\nINSERT undone.\nCommand: U\nNothing to undo.")));
    EXPECT_EQ(m_folder.read("undone.dxf"), readBytes(kFloorPlan));
    EXPECT_EQ(shell().drawing().drawingName(), L"undone.dxf");
    EXPECT_EQ(m_window->windowTitle(), QStringLiteral("undone.dxf[*] - Tarnwick CAD"));
}

// What the document manager hears of it: the drawing session's tests.
TEST_F(DesktopShellTest, OpenAsksForTheDrawingAndTitlesTheWindow) {
    m_driver->type(path(kFloorPlan));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("OPEN")));
    EXPECT_EQ(shell().drawing().drawingName(), L"floorplan.dxf");
    EXPECT_EQ(m_window->windowTitle(), QStringLiteral("floorplan.dxf[*] - Tarnwick CAD"));
}

// A drawing whose structure is damaged is read with repairs only when the user agrees; each repair
// is printed, and the file stays as it was.
TEST_F(DesktopShellTest, ADamagedDrawingOpensWithRepairsWhenTheUserAgrees) {
    if (!haveEzdxf()) GTEST_SKIP() << "Debian's python3-ezdxf is not installed";
    const std::string damaged = m_folder.path("stray.dxf");
    const ProcessResult made = runPython(
        kSourceDir / "tests" / "host" / "console" / "wild_drawing.py", {damaged, "stray-endsec"});
    ASSERT_EQ(made.exitCode, 0) << made.err;
    const std::string bytes = m_folder.read("stray.dxf");
    // The reader names the record after the stray end of section.
    const QString fault = QStringLiteral(
                              "\n%1:%2: expected \"0 SECTION\" or \"0 EOF\", found \"0 INSERT\"\n"
                              "Read it with repairs? [Yes/No] <Yes>: N\nCommand: ")
                              .arg(path(damaged))
                              .arg(std::stoi(made.out) + 2);

    m_driver->type(path(damaged)).type(QStringLiteral("N"));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("OPEN")));
    EXPECT_EQ(shell().drawing().drawingName(), L"Drawing1.dxf");
    EXPECT_TRUE(history().contains(fault)) << history().toStdString();

    m_driver->type(path(damaged)).type(QString());
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("OPEN")));
    ASSERT_EQ(shell().drawing().drawingName(), L"stray.dxf");
    EXPECT_EQ(shell().drawings().count(), 1u);
    const auto& repairs = shell().drawing().document().repairs();
    ASSERT_FALSE(repairs.empty());
    for (const std::string& repair : repairs)
        EXPECT_TRUE(history().contains(QStringLiteral("\n") + QString::fromStdString(repair)))
            << repair;
    EXPECT_EQ(m_folder.read("stray.dxf"), bytes);
}

TEST_F(DesktopShellTest, ANewDrawingIsSavedUnderANameAskedFor) {
    m_driver->type(QString::fromStdString(m_folder.path("first")));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("SAVE")));
    EXPECT_TRUE(std::filesystem::exists(m_folder.path("first.dxf")));
    EXPECT_EQ(shell().drawing().drawingName(), L"first.dxf");
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("SAVE")));
    EXPECT_TRUE(
        history().contains(QStringLiteral("Command: SAVE\nEnter file name <Drawing1.dxf>: ")));
}

TEST_F(DesktopShellTest, SaveAsOverAFileThatIsNoDrawingAlertsAndWritesNothing) {
    m_folder.write("prices.prc", "Door|450|Interior door\n");
    QStringList alerts;
    shell().editor().setAlertBox([&alerts](const QString& message) { alerts << message; });
    m_driver->type(QString::fromStdString(m_folder.path("prices.prc"))).type(QStringLiteral("Y"));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("SAVEAS")));
    EXPECT_EQ(alerts,
              QStringList{QString::fromStdString("File " + m_folder.path("prices.prc") +
                                                 " is not a drawing: it is not written over")});
    EXPECT_EQ(m_folder.read("prices.prc"), "Door|450|Interior door\n");
    EXPECT_EQ(shell().drawing().drawingName(), L"Drawing1.dxf");
}

TEST_F(DesktopShellTest, MenusRunTheirCommandsAsTypedAndOfferTheRecentDrawings) {
    MainMenus& menus = m_window->menus();
    const auto choose = [this](QMenu& menu, const QString& item) {
        QAction* action = menuItem(menu, item);
        EXPECT_NE(action, nullptr) << item.toStdString();
        return action != nullptr && runUntilIdle(*m_window, [action] { action->trigger(); });
    };
    // A module's menu lists its commands by global name, and goes when the module goes.
    ASSERT_TRUE(shell().loadModule(path(kTestModules / "good.arx")));
    ASSERT_EQ(menus.moduleMenus().size(), 1u);
    QMenu& good = *menus.moduleMenus().front();
    EXPECT_EQ(good.title(), QStringLiteral("good"));
    EXPECT_EQ(menuItemTexts(good).first(), QStringLiteral("Hello_Global\tHELLO"));
    ASSERT_TRUE(choose(good, QStringLiteral("Hello_Global")));
    EXPECT_TRUE(
        history().contains(QStringLiteral("Command: _Hello_Global\nHello from GOOD_GROUP")));
    ASSERT_TRUE(shell().unloadModule(QStringLiteral("good")));
    EXPECT_TRUE(menus.moduleMenus().empty());

    openFloorPlan();
    ASSERT_TRUE(choose(menus.viewMenu(), QStringLiteral("Zoom &Extents")));
    EXPECT_TRUE(history().endsWith(
        QStringLiteral("Command: _ZOOM\nSpecify corner of window, enter a scale factor (nX), or "
                       "[Extents/Window]: E\nCommand: ")))
        << history().toStdString();

    // The title marks unsaved work until it is saved; the save says what it wrote.
    m_driver->type(QStringLiteral("DOOR")).type(QStringLiteral("3,3")).type({}).type({}).type({});
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("INSERT")));
    EXPECT_TRUE(m_window->isWindowModified());
    const std::string saved = m_folder.path("saved.dxf");
    m_driver->type(QString::fromStdString(saved));
    ASSERT_TRUE(choose(menus.fileMenu(), QStringLiteral("Save &As...")));
    EXPECT_FALSE(m_window->isWindowModified());
    EXPECT_EQ(m_window->windowTitle(), QStringLiteral("saved.dxf[*] - Tarnwick CAD"));
    EXPECT_TRUE(history().contains(QStringLiteral("Saved %1 (DXF AC1015, %2 bytes).")
                                       .arg(QString::fromStdString(saved))
                                       .arg(std::filesystem::file_size(saved))))
        << history().toStdString();

    // A recent drawing opens without the file dialog, as OPEN does with the name typed.
    EXPECT_EQ(menuItemTexts(menus.recentMenu()),
              (QStringList{QStringLiteral("&1 saved.dxf"), QStringLiteral("&2 floorplan.dxf")}));
    shell().editor().setVar(L"FILEDIA", resbuf::shortValue(1));
    bool dialogShown = false;
    shell().editor().setFileDialog(
        [&dialogShown](const QString&, const QString&, const QString&, int, QString&) {
            dialogShown = true;
            return RTERROR;
        });
    ASSERT_TRUE(choose(menus.fileMenu(), QStringLiteral("&New")));
    ASSERT_TRUE(choose(menus.recentMenu(), QStringLiteral("&2 floorplan.dxf")));
    EXPECT_FALSE(dialogShown);
    EXPECT_EQ(shell().drawing().drawingName(), L"floorplan.dxf");
    EXPECT_EQ(menuItemTexts(menus.recentMenu()).first(), QStringLiteral("&1 floorplan.dxf"));
}

TEST_F(DesktopShellTest, QuitAsksAboutUnsavedWorkAndClosesTheWindow) {
    openFloorPlan();
    QSignalSpy quit(&shell(), &DesktopShell::quitRequested);
    m_driver->type(QStringLiteral("DOOR"))
        .type(QStringLiteral("3,3"))
        .type(QString())
        .type(QString())
        .type(QString())
        .type(QStringLiteral("maybe"))
        .type(QStringLiteral("N"));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("INSERT")));
    typeLine(*m_window, QStringLiteral("QUIT"));
    ASSERT_TRUE(quit.wait(10000));
    EXPECT_TRUE(history().contains(QStringLiteral(
        "Save changes to floorplan.dxf? [Yes/No] <Yes>: maybe\nInvalid option keyword.\n"
        "Save changes to floorplan.dxf? [Yes/No] <Yes>: N")))
        << history().toStdString();
    EXPECT_FALSE(m_window->isVisible());
}

TEST_F(DesktopShellTest, AScriptDrivesACommandUnattended) {
    if (!haveEzdxf()) GTEST_SKIP() << "Debian's python3-ezdxf is not installed";
    const std::string saved = m_folder.path("placed.dxf");
    ASSERT_TRUE(runScript("OPEN\n" + kFloorPlan.string() + "\nZOOM\nE\nARX\nL\n" +
                          (kTestModules / "placer.arx").string() + "\nPLACEDOOR\n10,5\n\nSAVEAS\n" +
                          saved + "\n"));
    EXPECT_TRUE(history().contains(
        QStringLiteral("Command: PLACEDOOR\nUpper left corner of table: 10,5\nLower right corner "
                       "(or RETURN): \nCommand: SAVEAS")))
        << history().toStdString();
    const ProcessResult check =
        runPython(kChecker, {saved, kFloorPlan.string(), "DOOR", "10", "5", "1"});
    EXPECT_EQ(check.out, "ok\n") << check.err;
    EXPECT_FALSE(shell().drawing().isModified());
}

TEST_F(DesktopShellTest, AlertsWhileAScriptRunsGoToTheCommandLineAndEscStopsIt) {
    ASSERT_TRUE(shell().loadModule(path(kTestModules / "good.arx")));
    ASSERT_TRUE(runScript("WARN\n"));
    EXPECT_TRUE(history().endsWith(QStringLiteral("Command: WARN\nSomething to see\nCommand: ")))
        << history().toStdString();
    // Esc stops a script.
    openFloorPlan();
    // The script runs out at the insertion point; Esc there ends the command and the script.
    m_driver->escape();
    ASSERT_TRUE(runScript("INSERT\nDOOR\nHELLO\n"));
    EXPECT_TRUE(
        history().endsWith(QStringLiteral("Specify insertion point: HELLO\nInvalid point.\nSpecify "
                                          "insertion point: *Cancel*\nCommand: ")))
        << history().toStdString();
}

}  // namespace
