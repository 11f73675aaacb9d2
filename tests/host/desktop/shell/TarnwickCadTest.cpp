// `tarnwick-cad` run as a program: the registered commands, a start-up script that ends with QUIT,
// and its usage.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "tests/TempFolder.h"
#include "tests/host/dxf/DxfTestSupport.h"

namespace {

const std::filesystem::path kSourceDir = TARNWICK_SOURCE_DIR;

TEST(TarnwickCad, CommandsListsTheModulesCommandsWithoutAWindow) {
    const ProcessResult result = runProcess(TARNWICK_CAD, {"--commands"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out,
              "Group             Global name           Local name  Flags\n"
              "BlockPrice_Group  BlockPrice_Global     RZBOMT      0\n"
              "BlockPrice_Group  CalcPrice_Global      RZBOMC      1\n"
              "BlockPrice_Group  RefreshTables_Global  RZBOMU      0\n");
    EXPECT_EQ(result.err, "");
}

TEST(TarnwickCad, AStartUpScriptRunsAndQuits) {
    if (!haveEzdxf()) GTEST_SKIP() << "Debian's python3-ezdxf is not installed";
    TempFolder folder;
    const std::string saved = folder.path("out.dxf");
    std::ofstream(folder.path("batch.scr"))
        << "FILEDIA\n0\nZOOM\nE\nATTREQ\n0\nINSERT\nCHAIR\n4,4\n2\n\n0\nSAVEAS\n"
        << saved << "\nQUIT\n";
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const ProcessResult result = runProcess(
        TARNWICK_CAD,
        {(kSourceDir / "examples" / "floorplan.dxf").string(), "-b", folder.path("batch.scr")});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    const ProcessResult check = runPython(
        kSourceDir / "tests" / "host" / "desktop" / "shell" / "check_saved.py",
        {saved, (kSourceDir / "examples" / "floorplan.dxf").string(), "CHAIR", "4", "4", "2"});
    EXPECT_EQ(check.out, "ok\n") << check.err;
}

// Each drawing named opens in a tab of its own, the last one active: saved as it came, each comes
// out byte for byte, the second after CLOSE has taken the first away.
TEST(TarnwickCad, EveryDrawingNamedOpensAndCloseMovesToTheNext) {
    TempFolder folder;
    const std::filesystem::path plan = kSourceDir / "examples" / "floorplan.dxf";
    const std::filesystem::path layouts = kSourceDir / "tests" / "data" / "dxf" / "r12-layouts.dxf";
    std::ofstream(folder.path("batch.scr")) << "FILEDIA\n0\nSAVEAS\n"
                                            << folder.path("second.dxf") << "\nCLOSE\nSAVEAS\n"
                                            << folder.path("first.dxf") << "\nQUIT\n";
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const ProcessResult result =
        runProcess(TARNWICK_CAD, {plan.string(), layouts.string(), "-b", folder.path("batch.scr")});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(folder.read("second.dxf"), readBytes(layouts));
    EXPECT_EQ(folder.read("first.dxf"), readBytes(plan));
}

TEST(TarnwickCad, UsageErrorsSayWhat) {
    const ProcessResult result = runProcess(TARNWICK_CAD, {"--frobnicate"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.err.starts_with("tarnwick-cad: unknown option \"--frobnicate\"\nUsage: "))
        << result.err;
    const ProcessResult help = runProcess(TARNWICK_CAD, {"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(
        help.out.starts_with("Usage: tarnwick-cad [DRAWING.dxf...] [-b SCRIPT.scr] [--commands]"));
}

}  // namespace
