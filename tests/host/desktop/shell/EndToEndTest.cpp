// Both commands of Tarnwick.arx run in the desktop host from the first click or key to the saved
// file, with real key and mouse events only: the module's menu, the host's file dialog, the
// selection window, the module's dialogs, the corner and the rubber band; ezdxf then reads what was
// saved.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QMenuBar>
#include <QTest>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>

#include "host/api/acapdocmanager.h"
#include "host/api/acededitor.h"
#include "host/api/acrxregistry.h"
#include "tests/host/desktop/shell/ModuleHostTest.h"
#include "tests/host/dxf/DxfTestSupport.h"

namespace {

const std::filesystem::path kTableChecker =
    kSourceDir / "tests" / "host" / "desktop" / "shell" / "check_table.py";
constexpr const wchar_t* kPlacementVariables[] = {L"ATTREQ", L"CMDECHO", L"SNAPMODE", L"OSMODE"};

// A number as text that reads back as the same double.
std::string exact(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

// The wheel turned by notches (negative: towards the user, zooming out) over a drawing point.
void turnWheel(MainWindow& window, const AcGePoint3d& over, int notches) {
    DrawingView& view = window.view();
    const QPointF at = widgetPoint(window, over);
    QWheelEvent wheel(at, view.mapToGlobal(at), QPoint(), QPoint(0, 120 * notches), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&view, &wheel);
}

AcEdCommandStack& commandStack() {
    return *AcRxCast<AcEdCommandStack>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
}

short variable(const wchar_t* name) {
    resbuf value;
    EXPECT_EQ(acedGetVar(name, &value), RTNORM) << name;
    return value.resval.rint;
}

void setVariable(const wchar_t* name, short value) {
    const resbuf buffer = resbuf::shortValue(value);
    ASSERT_EQ(acedSetVar(name, &buffer), RTNORM);
}

// The module's menu opened with a click on its title in the menu bar, and the item clicked.
void clickMenuItem(MainWindow& window, QMenu& menu, const QString& item,
                   const char* screenshotName) {
    QMenuBar* bar = window.menuBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu.menuAction()).center());
    ASSERT_TRUE(QTest::qWaitFor([&menu] { return menu.isVisible(); }));
    QAction* action = menuItem(menu, item);
    ASSERT_NE(action, nullptr) << item.toStdString();
    QTest::mouseMove(&menu, menu.actionGeometry(action).center());
    screenshot(window, screenshotName, true);
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
}

using EndToEndTest = ModuleHostTest;

TEST_F(EndToEndTest, CalculationSelectsByWindowAndPlacesTheTableWhereTheRubberBandLeftIt) {
    if (!haveEzdxf()) GTEST_SKIP() << "Debian's python3-ezdxf is not installed";
    const std::string drawing = m_folder.path("floorplan.dxf");
    ASSERT_TRUE(shell().openDrawing(QString::fromStdString(drawing)));
    // What the user had before: the placement turns them off and gives them back.
    setVariable(L"ATTREQ", 1);
    setVariable(L"CMDECHO", 1);
    setVariable(L"SNAPMODE", 1);
    setVariable(L"OSMODE", 35);
    // Two notches out over the plan's upper left leave room below it for the table.
    turnWheel(*m_window, {0, 12, 0}, -2);

    // The window runs from below left of the plan to its right wall: the north arrow at (22,11)
    // is left out.
    const AcGePoint3d windowFrom = onPixel(*m_window, {-1, -1, 0});
    const AcGePoint3d windowTo = onPixel(*m_window, {21, 13, 0});
    const AcGePoint3d corner = onPixel(*m_window, {0, -1.5, 0});
    const AcGePoint3d halfway = onPixel(*m_window, {9, -4, 0});
    const AcGePoint3d dragged = onPixel(*m_window, {20, -3, 0});

    const DialogStep fileDialog("QFileDialog", [&](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Open"));
        enterFileName(dialog, m_folder.path("prices.prc"));
    });
    std::unique_ptr<DialogStep> billDialog;
    bool windowShown = false;
    std::vector<short> duringPlacement;
    std::vector<OverlayVector> band;
    m_driver->click(windowFrom)
        .then([&] { moveMouse(*m_window, windowTo); })
        .then([&] {
            windowShown = m_window->surface().selectionRectangleShown() &&
                          !m_window->surface().selectionIsCrossing();
            clickAt(*m_window, windowTo);
        })
        .then([&] {
            billDialog = std::make_unique<DialogStep>("QDialog", [](QWidget& dialog) {
                EXPECT_EQ(dialog.windowTitle(), QStringLiteral("BOM Report"));
                clickButton(dialog, QStringLiteral("&Insert"));
            });
            typeLine(*m_window, QString());
        })
        .then([&] {
            for (const wchar_t* name : kPlacementVariables)
                duringPlacement.push_back(variable(name));
            clickAt(*m_window, corner);
        })
        .then([&] { moveMouse(*m_window, halfway); })
        .then([&] { moveMouse(*m_window, dragged); })
        .then([&] {
            band = m_window->view().vectors().vectors();
            screenshot(*m_window, "desktop-rubber-band.png");
            clickAt(*m_window, dragged);
        });
    ASSERT_EQ(m_window->menus().moduleMenus().size(), 1u);
    QMenu& tarnwick = *m_window->menus().moduleMenus().front();
    EXPECT_EQ(tarnwick.title(), QStringLiteral("Tarnwick"));
    EXPECT_EQ(menuItemTexts(tarnwick),
              (QStringList{QStringLiteral("BlockPrice_Global\tRZBOMT"),
                           QStringLiteral("CalcPrice_Global\tRZBOMC"),
                           QStringLiteral("RefreshTables_Global\tRZBOMU")}));
    ASSERT_TRUE(runUntilIdle(*m_window, [&] {
        clickMenuItem(*m_window, tarnwick, QStringLiteral("CalcPrice_Global"), "desktop-menu.png");
    }));
    EXPECT_TRUE(fileDialog.fired());
    ASSERT_TRUE(billDialog && billDialog->fired());
    EXPECT_TRUE(windowShown);
    EXPECT_TRUE(history().contains(QStringLiteral(
        "Command: _CalcPrice_Global\nSelect objects: \nSpecify opposite corner: \n45 found\n"
        "Select objects: \nUpper left corner of table: \nLower right corner (or RETURN): \n"
        "Command: ")))
        << history().toStdString();

    // The rubber band last showed the frame from the corner to the cursor's X, always downward.
    ASSERT_EQ(band.size(), 4u);
    double left = band[0].from.x, right = left, top = band[0].from.y, bottom = top;
    for (const OverlayVector& vector : band) {
        EXPECT_EQ(vector.color, -1);
        EXPECT_TRUE(vector.from.x == vector.to.x || vector.from.y == vector.to.y);
        for (const ScenePoint& p : {vector.from, vector.to}) {
            left = std::min(left, p.x);
            right = std::max(right, p.x);
            top = std::max(top, p.y);
            bottom = std::min(bottom, p.y);
        }
    }
    EXPECT_EQ(left, corner.x);
    EXPECT_EQ(top, corner.y);
    EXPECT_EQ(right, dragged.x);
    EXPECT_LT(bottom, corner.y);
    EXPECT_TRUE(m_window->view().vectors().isEmpty());

    // Off while the table was placed; then back, OSMODE with what SNAPMODE was, as the module
    // restores it.
    EXPECT_EQ(duringPlacement, (std::vector<short>{0, 0, 0, 0}));
    EXPECT_EQ(variable(L"ATTREQ"), 1);
    EXPECT_EQ(variable(L"CMDECHO"), 1);
    EXPECT_EQ(variable(L"SNAPMODE"), 1);
    EXPECT_EQ(variable(L"OSMODE"), 1);

    // The table's reference is in the view, at the corner, scaled as the band was dragged.
    const DxfDocument& document = shell().drawing().document();
    const DxfReference table = document.blockReferences(DxfSpace::Model).back();
    EXPECT_EQ(table.position, corner);
    EXPECT_TRUE(m_window->surface().scene()->indexOf(table.id).has_value());
    AcDbBlockReference placed;
    ASSERT_EQ(document.openBlockReference(table.id, placed), Acad::eOk);
    EXPECT_EQ(placed.scaleFactors.sx, placed.scaleFactors.sy);
    EXPECT_LT(placed.scaleFactors.sx, 1.0);
    screenshot(*m_window, "desktop-table-placed.png");

    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("SAVE")));
    EXPECT_FALSE(shell().drawing().isModified());
    EXPECT_TRUE(history().contains(
        QStringLiteral("Saved %1 (DXF AC1015, ").arg(QString::fromStdString(drawing))));
    const ProcessResult check =
        runPython(kTableChecker, {drawing, kFloorPlan.string(), kPrices.string(), exact(corner.x),
                                  exact(corner.y), exact(dragged.x - corner.x), "NORTH_ARROW"});
    EXPECT_EQ(check.out, "ok\n") << check.err;
}

// A table of the plan's model space, made at the console; a door inserted by hand; RZBOMU draws
// the table again where it stands and says what changed; UNDO takes that back as one step; and a
// drawing opened with the table out of date says so.
TEST_F(EndToEndTest, RefreshRedrawsATableAfterAnInsertAndUndoTakesItBackWhole) {
    const std::string plan = m_folder.path("plan.dxf");
    const std::string tarnwick = TARNWICK_EXECUTABLE;
    const ProcessResult made = runProcess(
        tarnwick, {"bom", m_folder.path("floorplan.dxf"), "--prices", m_folder.path("prices.prc"),
                   "--table-at", "0,-1.5", "--scale", "0.4", "-o", plan});
    ASSERT_EQ(made.exitCode, 0) << made.err;
    auto check = [&](const std::string& drawing) {
        return runProcess(tarnwick, {"check", drawing}).out;
    };
    ASSERT_TRUE(shell().openDrawing(QString::fromStdString(plan)));
    EXPECT_FALSE(history().contains(QStringLiteral("out of date")));

    // In the manager's wall, to the right of its door.
    const AcGePoint3d at = onPixel(*m_window, {16, 0, 0});
    m_driver->type(QStringLiteral("door")).click(at).type({}).type({}).type({});
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("INSERT")));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("RZBOMU")));
    EXPECT_TRUE(history().endsWith(
        QStringLiteral("Command: RZBOMU\nQTB0001 redrawn: door 4 \u2192 5\nCommand: ")))
        << history().toStdString();
    screenshot(*m_window, "table-refresh.png");
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("SAVE")));
    EXPECT_EQ(check(plan), "");
    if (haveEzdxf()) {
        const ProcessResult audit =
            runPython(kSourceDir / "tests" / "host" / "console" / "table_drawing.py",
                      {"audit", plan, "QTB0001"});
        EXPECT_EQ(audit.out, "ok\n") << audit.err;
    }

    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("UNDO")));
    EXPECT_TRUE(history().endsWith(QStringLiteral("Command: UNDO\nRZBOMU undone.\nCommand: ")));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("SAVE")));
    EXPECT_EQ(check(plan), plan + ": QTB0001 is out of date: door 4 \u2192 5\n");
    // The INSERT is a step of its own, below the refresh it came before.
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("U")));
    EXPECT_TRUE(history().endsWith(QStringLiteral("Command: U\nINSERT undone.\nCommand: ")));
    // Opened in a tab of its own, the saved drawing tells of its stale table.
    const std::string copy = m_folder.path("copy.dxf");
    std::filesystem::copy_file(plan, copy);
    ASSERT_TRUE(shell().openDrawing(QString::fromStdString(copy)));
    EXPECT_TRUE(history().endsWith(
        QStringLiteral("\nQTB0001 is out of date; RZBOMU draws it again.\nCommand: ")))
        << history().toStdString();
}

TEST_F(EndToEndTest, PriceListEditorOpensEditsAndSavesAList) {
    const std::string list = m_folder.path("prices.prc");
    std::unique_ptr<DialogStep> openDialog;
    const DialogStep editor("QDialog", [&](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("BOM Template"));
        // Open asks for the list in the host's file dialog, nested in the editor's.
        openDialog = std::make_unique<DialogStep>(
            "QFileDialog", [&](QWidget& files) { enterFileName(files, list); });
        clickButton(dialog, QStringLiteral("&Open"));
        ASSERT_TRUE(openDialog->fired());
        // A click on the first row's name starts its edit; Tab goes on to its price.
        QWidget* cells = nullptr;
        for (QWidget* child : dialog.findChildren<QWidget*>()) {
            if (QByteArray(child->metaObject()->className()) == "CUGGrid") cells = child;
        }
        EXPECT_NE(cells, nullptr);
        if (cells != nullptr) {
            QTest::mouseClick(cells, Qt::LeftButton, {}, QPoint(8, 6));
            if (QWidget* name = dialog.focusWidget()) QTest::keyClick(name, Qt::Key_Tab);
            if (QWidget* price = dialog.focusWidget()) {
                QTest::keyClick(price, Qt::Key_A, Qt::ControlModifier);
                QTest::keyClicks(price, QStringLiteral("475.5"));
                QTest::keyClick(price, Qt::Key_Return);
            }
        }
        clickButton(dialog, QStringLiteral("&Save"));
        clickButton(dialog, QStringLiteral("&Close"));
    });
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("RZBOMT")));
    EXPECT_TRUE(editor.fired());
    EXPECT_TRUE(history().endsWith(QStringLiteral("Command: RZBOMT\nCommand: ")))
        << history().toStdString();
    EXPECT_EQ(m_folder.read("prices.prc"),
              "Door|475.5|Interior door 90 cm\n"
              "Window|620|Double-glazed window 120 cm\n"
              "Desk|380|Office desk 160 x 80\n"
              "Chair|145|Swivel chair\n"
              "Cabinet|210|Filing cabinet, 4 drawers\n"
              "Sofa|890|Two-seat sofa\n");
}

// Loaded a hundred times, each time running a command whose dialog shows: the module leaves no
// command, no reactor and (under AddressSanitizer) no leak, and it is out of the process at the
// end.
TEST_F(EndToEndTest, AHundredLoadsWithTheDialogsShownLeaveNothingBehind) {
#if defined(__SANITIZE_ADDRESS__)
    constexpr int kLoads =
        10;  // an instrumented load is slow; ten show a leak as well as a hundred
#else
    constexpr int kLoads = 100;
#endif
    const std::filesystem::path module = m_folder.path("Tarnwick.arx");
    ASSERT_TRUE(shell().unloadModule(QStringLiteral("Tarnwick")));
    const std::size_t reactors = acDocManagerPtr()->reactors().size();
    int shown = 0;
    for (int i = 0; i < kLoads; ++i) {
        ASSERT_TRUE(shell().loadModule(qpath(module)));
        if (i % 2 == 0) {
            // The editor, closed at once.
            const DialogStep editor(
                "QDialog", [](QWidget& dialog) { clickButton(dialog, QStringLiteral("&Close")); });
            ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("RZBOMT")));
            shown += editor.fired() ? 1 : 0;
        } else {
            // The calculation: Esc in the file dialog, then at the selection.
            const DialogStep files(
                "QFileDialog", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
            m_driver->escape();
            ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("RZBOMC")));
            shown += files.fired() ? 1 : 0;
        }
        ASSERT_TRUE(shell().unloadModule(QStringLiteral("Tarnwick")));
    }
    EXPECT_EQ(shown, kLoads);
    const auto& commands = commandStack().commands();
    EXPECT_TRUE(std::none_of(commands.begin(), commands.end(), [](const auto& command) {
        return command.group == L"BlockPrice_Group";
    }));
    EXPECT_EQ(acDocManagerPtr()->reactors().size(), reactors);
    void* handle = dlopen(module.c_str(), RTLD_NOW | RTLD_NOLOAD);
    EXPECT_EQ(handle, nullptr);
    if (handle != nullptr) dlclose(handle);
    EXPECT_FALSE(history().contains(QStringLiteral("left"))) << history().toStdString();
}

}  // namespace
