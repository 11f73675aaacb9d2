// Price tables through `tarnwick` as a user meets them: a table made with `bom --table-at`, the
// drawing edited by another program (ezdxf) and the list edited, `check` naming each change,
// `refresh` drawing the table again where it stands, and a second `check` that is quiet.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/host/DrawingFixture.h"
#include "tests/host/console/ConsoleFixture.h"

namespace {

const std::string kTableDrawing =
    std::string(TARNWICK_SOURCE_DIR) + "/tests/host/console/table_drawing.py";

const char* const kChangedList =
    "Door|470|Interior door 90 cm\n"
    "Window|620|Double-glazed window 120 cm\n"
    "Desk|380|Office desk 160 x 80\n"
    "Chair|145|Swivel chair\n"
    "Sofa|890|Two-seat sofa\n";

class ConsoleTableRefreshTest : public ConsoleTest {
protected:
    // ezdxf on the drawings of the folder; its output, "ok" when all is well.
    std::string ezdxf(std::vector<std::string> arguments) const {
        for (std::string& argument : arguments) argument = at(argument);
        arguments.insert(arguments.begin(), kTableDrawing);
        const ProcessResult result = runProcess("/usr/bin/python3", arguments);
        return result.out + result.err;
    }
    // The example plan with a table of what lies in the plan's window (the north arrow at 22,11
    // does not), written as `name`.
    void makeTable(const std::string& name, std::vector<std::string> more = {}) {
        more.insert(more.end(), {"--window", "0,0,20,12", "--table-at", "21,9", "-o", "@" + name});
        const ProcessResult made = bom({"floorplan.dxf"}, more);
        ASSERT_EQ(made.exitCode, 0) << made.err;
    }
    ProcessResult check(const std::string& drawing) const {
        return tarnwick({"check", "@" + drawing});
    }
};

// Both forms of a table: attribute definitions, and the plain texts of --table-text.
class ConsoleTableFormsTest : public ConsoleTableRefreshTest,
                              public ::testing::WithParamInterface<bool> {};

TEST_P(ConsoleTableFormsTest, CheckNamesEachChangeAndRefreshDrawsTheTableAgainInPlace) {
    const bool texts = GetParam();
    makeTable("plan.dxf", texts ? std::vector<std::string>{"--table-text"}
                                : std::vector<std::string>{});
    ProcessResult result = check("plan.dxf");
    EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
    EXPECT_EQ(result.out, "");
    // Another program adds a chair, deletes a door and moves a desk out of the window; the list
    // gets a new price for doors and loses the cabinets.
    ASSERT_EQ(ezdxf({"edit", "@plan.dxf", "@edited.dxf", "add", "chair", "5", "5", "delete", "door",
                     "move", "desk", "30", "30"}),
              "ok\n");
    m_folder.write("prices.prc", kChangedList);
    const std::string changes =
        "door 4 \u2192 3; door 450.00 \u2192 470.00; desk 7 \u2192 6; chair 13 \u2192 14; cabinet "
        "210.00 \u2192 0.00, no longer in the list (prices.prc changed)";
    result = check("edited.dxf");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out,
              m_folder.path("edited.dxf") + ": QTB0001 is out of date: " + changes + "\n");

    result = tarnwick({"refresh", "@edited.dxf"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, m_folder.path("edited.dxf") + ": QTB0001 redrawn: " + changes + "\n");
    EXPECT_EQ(result.err, m_folder.path("edited-bom.dxf") + ": 1 table redrawn\n");
    result = check("edited-bom.dxf");
    EXPECT_EQ(result.exitCode, 0) << result.out;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(ezdxf({"audit", "@edited-bom.dxf", "QTB0001"}), "ok\n");
    EXPECT_EQ(ezdxf({"same-but-tables", "@edited.dxf", "@edited-bom.dxf"}), "ok\n");
    // Redrawn in the form it was made in: texts naming their cells, or attribute definitions.
    const std::string redrawn = m_folder.read("edited-bom.dxf");
    auto holdsValue = [&](const std::string& value) {
        return redrawn.find("\n" + value + "\n") != std::string::npos ||
               redrawn.find("\n" + value + "\r\n") != std::string::npos;
    };
    EXPECT_EQ(holdsValue("ATTDEF"), !texts);
    EXPECT_EQ(holdsValue("CELL"), texts);
    EXPECT_TRUE(holdsValue("QUANTITY3"));
    // A current drawing is not written again.
    result = tarnwick({"refresh", "@edited-bom.dxf", "-o", "@again.dxf"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err,
              m_folder.path("edited-bom.dxf") + ": no table redrawn, nothing written\n");
    EXPECT_FALSE(std::filesystem::exists(m_folder.path("again.dxf")));
}

INSTANTIATE_TEST_SUITE_P(Forms, ConsoleTableFormsTest, ::testing::Bool(),
                         [](const auto& info) { return info.param ? "texts" : "attributes"; });

TEST_F(ConsoleTableRefreshTest, TwoTablesFromTwoListsAreCheckedAndRefreshedEachAgainstItsOwn) {
    m_folder.write("chairs.prc", "Chair|150|Swivel chair\n");
    makeTable("one.dxf");
    const ProcessResult second =
        tarnwick({"bom", "@one.dxf", "--prices", "@chairs.prc", "--only-priced", "--table-at",
                  "21,30", "-o", "@two.dxf"});
    ASSERT_EQ(second.exitCode, 0) << second.err;
    EXPECT_EQ(check("two.dxf").out, "");
    m_folder.write("chairs.prc", "Chair|160|Swivel chair\n");
    ProcessResult result = check("two.dxf");
    EXPECT_EQ(result.out, m_folder.path("two.dxf") +
                              ": QTB0002 is out of date: chair 150.00 \u2192 160.00 (chairs.prc "
                              "changed)\n");
    // --prices counts every table against the list given.
    result = tarnwick({"check", "@two.dxf", "--prices", "@chairs.prc"});
    EXPECT_NE(result.out.find(": QTB0001 is out of date: chair 145.00 \u2192 160.00; door 450.00 "
                              "\u2192 0.00, no longer in the list; window 620.00 \u2192 0.00, no "
                              "longer in the list;"),
              std::string::npos)
        << result.out;
    result = tarnwick({"refresh", "@two.dxf", "-o", "@two.dxf"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out,
              m_folder.path("two.dxf") +
                  ": QTB0002 redrawn: chair 150.00 \u2192 160.00 (chairs.prc changed)\n");
    result = tarnwick({"check", "@two.dxf", "--json"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.out.find("      \"name\": \"QTB0001\",\n      \"current\": true\n"),
              std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("      \"name\": \"QTB0002\",\n      \"current\": true\n"),
              std::string::npos);
    EXPECT_EQ(ezdxf({"audit", "@two.dxf", "QTB0001", "QTB0002"}), "ok\n");
}

TEST_F(ConsoleTableRefreshTest, ATableWithPricesHiddenChangesOnlyWithWhatItShows) {
    makeTable("plan.dxf", {"--hide-prices"});
    m_folder.write("prices.prc", kChangedList);
    EXPECT_EQ(check("plan.dxf").out, m_folder.path("plan.dxf") +
                                         ": QTB0001 is out of date: cabinet no longer in the "
                                         "list (prices.prc changed)\n");
    m_folder.write("prices.prc",
                   std::string(kChangedList) + "Cabinet|999|Filing cabinet, 4 drawers\n");
    EXPECT_EQ(check("plan.dxf").out, "");
    ASSERT_EQ(ezdxf({"edit", "@plan.dxf", "@plan.dxf", "add", "door", "1", "1"}), "ok\n");
    const ProcessResult result = tarnwick({"refresh", "@plan.dxf", "-o", "@plan.dxf"});
    EXPECT_EQ(result.out, m_folder.path("plan.dxf") +
                              ": QTB0001 redrawn: door 4 \u2192 5 (prices.prc "
                              "changed)\n");
    EXPECT_EQ(check("plan.dxf").out, "");
    EXPECT_EQ(ezdxf({"audit", "@plan.dxf", "QTB0001"}), "ok\n");
    EXPECT_EQ(m_folder.read("plan.dxf").find("PRICE1"), std::string::npos);
}

TEST_F(ConsoleTableRefreshTest, ATableFromBeforeIsNamedOnceAndLeftAsItIs) {
    makeTable("plan.dxf");
    ASSERT_EQ(ezdxf({"edit", "@plan.dxf", "@old.dxf", "forget"}), "ok\n");
    const std::string unknown =
        m_folder.path("old.dxf") + ": QTB0001: source unknown (drawn before tables recorded it)";
    ProcessResult result = check("old.dxf");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, unknown + "\n");
    result = tarnwick({"check", "@old.dxf", "--json"});
    EXPECT_NE(result.out.find("\"current\": null"), std::string::npos) << result.out;
    result = tarnwick({"refresh", "@old.dxf"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, unknown + "; left as it is\n");
    EXPECT_FALSE(std::filesystem::exists(m_folder.path("old-bom.dxf")));
}

TEST_F(ConsoleTableRefreshTest, AMissingListIsNamedAndTheOutputMayNotBeAnyListATableNames) {
    makeTable("plan.dxf");
    std::filesystem::rename(m_folder.path("prices.prc"), m_folder.path("moved.prc"));
    const std::string missing = m_folder.path("plan.dxf") + ": QTB0001: its price list " +
                                m_folder.path("prices.prc") +
                                " cannot be read: no such file or directory";
    ProcessResult result = check("plan.dxf");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, missing + "\n");
    result = tarnwick({"refresh", "@plan.dxf"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, missing + "; left as it is\n" + m_folder.path("plan.dxf") +
                              ": no table redrawn, nothing written\n");
    // The list a table recorded is only known once the drawing is read, and is guarded then.
    std::filesystem::rename(m_folder.path("moved.prc"), m_folder.path("prices.prc"));
    const std::string list = m_folder.read("prices.prc");
    result = tarnwick({"refresh", "@plan.dxf", "-o", "@prices.prc"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "tarnwick: -o " + m_folder.path("prices.prc") +
                              " would write over the price list " + m_folder.path("prices.prc") +
                              "\nTry 'tarnwick --help'.\n");
    result = tarnwick({"refresh", "@plan.dxf", "--prices", "@prices.prc", "-o", "@prices.prc"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(m_folder.read("prices.prc"), list);
    result = tarnwick({"refresh", "a.dxf", "b.dxf"});
    EXPECT_EQ(result.err, "tarnwick: refresh takes one drawing\nTry 'tarnwick --help'.\n");
}

TEST_F(ConsoleTableRefreshTest, BomJsonSaysWhetherEachTableIsCurrentAndHoldsTheseRows) {
    makeTable("plan.dxf");
    ProcessResult result = bom({"plan.dxf"}, {"--json", "--window", "0,0,20,12"});
    EXPECT_NE(result.out.find("  \"tables\": [\n    {\n      \"drawing\": \"" +
                              m_folder.path("plan.dxf") +
                              "\",\n      \"name\": \"QTB0001\",\n      \"current\": true,\n"
                              "      \"matches\": true\n    }\n  ]\n}\n"),
              std::string::npos)
        << result.out;
    // The whole plan holds the north arrow, which the table does not.
    result = bom({"plan.dxf"}, {"--json"});
    EXPECT_NE(result.out.find("\"current\": true,\n      \"matches\": false"), std::string::npos);
}

// The table's source in each kind of file: R12 keeps it on the BLOCK, later versions on the
// block's record; every file ezdxf edited and Tarnwick refreshed passes ezdxf's audit.
TEST_F(ConsoleTableRefreshTest, EveryVersionKeepsTheSourceThroughAnotherProgram) {
    for (const FixtureVersion version :
         {FixtureVersion::R12, FixtureVersion::R2000, FixtureVersion::R2018}) {
        SCOPED_TRACE(static_cast<int>(version));
        FixtureDrawing drawing;
        drawing.version = version;
        drawing.blocks = {{"Door", {}, ""}, {"Chair", {}, ""}};
        drawing.references = {{"Door", 0, 0}, {"Chair", 1, 0}, {"Chair", 2, 0}};
        m_folder.write("fixture.dxf", fixtureBytes(drawing));
        const ProcessResult made = tarnwick({"bom", "@fixture.dxf", "--prices", "@prices.prc",
                                             "--table-at", "0,-5", "-o", "@table.dxf"});
        ASSERT_EQ(made.exitCode, 0) << made.err;
        ASSERT_EQ(ezdxf({"edit", "@table.dxf", "@edited.dxf", "add", "chair", "3", "0"}), "ok\n");
        EXPECT_EQ(check("edited.dxf").out,
                  m_folder.path("edited.dxf") + ": QTB0001 is out of date: chair 2 \u2192 3\n");
        ASSERT_EQ(tarnwick({"refresh", "@edited.dxf"}).exitCode, 0);
        EXPECT_EQ(check("edited-bom.dxf").out, "");
        EXPECT_EQ(ezdxf({"audit", "@edited-bom.dxf", "QTB0001"}), "ok\n");
    }
}

}  // namespace
