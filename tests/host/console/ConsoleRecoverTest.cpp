// Damaged drawings as other programs leave them, written by ezdxf: refused with a hint, or read
// with --recover, counted as the whole drawing is, and saved with the mended structure.
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/host/console/ConsoleFixture.h"

namespace {

const std::string kScripts = std::string(TARNWICK_SOURCE_DIR) + "/tests/host/console/";

// Messages after "DRAWING:LINE", where LINE is the damage's line and, for the refusal, the lines
// after it that the strict read still takes.
struct Damage {
    std::string kind;
    int refusedAfter;
    std::string refusal;
    std::string repair;
};

void PrintTo(const Damage& damage, std::ostream* out) { *out << damage.kind; }

class ConsoleRecoverTest : public ConsoleTest, public ::testing::WithParamInterface<Damage> {
protected:
    // The line of the damage.
    int write(const std::string& name, const std::string& kind) {
        const ProcessResult made =
            runProcess("/usr/bin/python3", {kScripts + "damaged_drawing.py", at(name), kind});
        EXPECT_EQ(made.exitCode, 0) << made.err;
        return std::atoi(made.out.c_str());
    }
};

TEST_P(ConsoleRecoverTest, IsRefusedWithAHintOrReadWholeAndSavedMended) {
    const Damage& damage = GetParam();
    write("@whole.dxf", "intact");
    const int line = write("@damaged.dxf", damage.kind);
    const std::string drawing = at("@damaged.dxf") + ":";
    const std::string before = m_folder.read("damaged.dxf");

    const ProcessResult strict = bom({"damaged.dxf"}, {});
    EXPECT_EQ(strict.exitCode, 1);
    EXPECT_EQ(strict.err, drawing + std::to_string(line + damage.refusedAfter) + damage.refusal +
                              " (try --recover)\n");

    const ProcessResult whole = bom({"whole.dxf"}, {});
    ASSERT_EQ(whole.exitCode, 0) << whole.err;
    const ProcessResult mended = bom({"damaged.dxf"}, {"--recover", "--table-at", "0,-5"});
    EXPECT_EQ(mended.exitCode, 0) << mended.err;
    EXPECT_EQ(mended.out, whole.out);
    EXPECT_EQ(mended.err, drawing + std::to_string(line) + damage.repair + "\n" +
                              at("@damaged-bom.dxf") + ": table QTB0001 inserted\n");
    EXPECT_EQ(m_folder.read("damaged.dxf"), before);
    // The saved drawing holds the mended structure: ezdxf reads it without a fault.
    const ProcessResult audit =
        runProcess("/usr/bin/python3", {kScripts + "check_drawing.py", at("@damaged-bom.dxf"),
                                        "QTB0001", "--", "QTB0001", "0", "-5", "1"});
    EXPECT_EQ(audit.out, "ok\n") << audit.err;
    EXPECT_EQ(tarnwick({"info", "@damaged-bom.dxf"}).exitCode, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Damages, ConsoleRecoverTest,
    ::testing::Values(
        Damage{"stray-endsec", 2, ": expected \"0 SECTION\" or \"0 EOF\", found \"0 INSERT\"",
               ": \"0 ENDSEC\" inside ENTITIES left out: the section goes on after it"},
        Damage{"outside-sections", 0, ": expected \"0 SECTION\" or \"0 EOF\", found \"0 LINE\"",
               ": records outside any section put into a new ENTITIES section"},
        Damage{"missing-eof", 0, ": expected \"0 SECTION\" or \"0 EOF\", found the end of the file",
               ": \"0 EOF\" added at the end of the file"}),
    [](const auto& info) {
        std::string name = info.param.kind;
        std::erase(name, '-');
        return name;
    });

}  // namespace
