// Drawings as other programs write them, written here by ezdxf: arrays counted as what they place,
// references in layouts counted on request and told apart, the module's own tables left out of a
// count, and damaged structures refused with a hint or read with --recover, counted as the whole
// drawing is and saved mended.
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "tests/host/console/ConsoleFixture.h"

namespace {

const std::string kScripts = std::string(TARNWICK_SOURCE_DIR) + "/tests/host/console/";

class ConsoleWildDrawings : public ConsoleTest {
protected:
    // Writes a drawing of wild_drawing.py; the line of its damage, for the damaged ones.
    int write(const std::string& name, const std::string& kind) {
        const ProcessResult made =
            runProcess("/usr/bin/python3", {kScripts + "wild_drawing.py", at(name), kind});
        EXPECT_EQ(made.exitCode, 0) << made.err;
        return std::atoi(made.out.c_str());
    }
    ProcessResult run(const std::vector<std::string>& arguments) {
        std::vector<std::string> all(arguments);
        all.insert(all.end(), {"--prices", "@list.prc"});
        return tarnwick(all);
    }
    // The quantity in the report's row of a block, or "none".
    static std::string quantityOf(const std::string& report, const std::string& block) {
        std::istringstream lines(report);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::string name, price, quantity;
            if (words >> name >> price >> quantity && name == block) return quantity;
        }
        return "none";
    }
};

TEST_F(ConsoleWildDrawings, ArraysCountTheirColumnsTimesRowsUnlessAskedToCountOnce) {
    write("@plan.dxf", "arrays");
    m_folder.write("list.prc", "chair|10|Swivel chair\n");
    struct Case {
        std::vector<std::string> options;
        std::string chairs;
    };
    for (const Case& c : {Case{{}, "26"}, Case{{"--nested"}, "38"}, Case{{"--arrays-as-one"}, "2"},
                          Case{{"--nested", "--arrays-as-one"}, "4"}}) {
        std::vector<std::string> arguments{"bom", "@plan.dxf"};
        arguments.insert(arguments.end(), c.options.begin(), c.options.end());
        const ProcessResult result = run(arguments);
        ASSERT_EQ(result.exitCode, 0) << result.err;
        EXPECT_EQ(quantityOf(result.out, "chair"), c.chairs) << c.options.size();
    }
    // The row of chairs says it holds arrays; that of the table sets, which are none, does not.
    const ProcessResult json = run({"bom", "@plan.dxf", "--json"});
    const std::size_t arrays = json.out.find("\"from_arrays\": true");
    EXPECT_LT(json.out.find("\"name\": \"chair\""), arrays);
    EXPECT_LT(arrays, json.out.find("\"name\": \"table_set\""));
    EXPECT_EQ(json.out.find("from_arrays", arrays + 2), std::string::npos) << json.out;
    m_folder.write("list.prc", "table_set|1|\n");
    EXPECT_EQ(run({"check", "@plan.dxf"}).out,
              at("@plan.dxf") + ": \"CHAIR\" has no price (26 references)\n");
}

TEST_F(ConsoleWildDrawings, LayoutsAreCountedOnRequestAndToldApartOtherwise) {
    write("@plan.dxf", "layouts");
    m_folder.write("list.prc", "door|450|Interior door\ndimensions|10|Dimension set\n");
    ProcessResult result = run({"bom", "@plan.dxf"});
    EXPECT_EQ(quantityOf(result.out, "door"), "2");
    EXPECT_EQ(quantityOf(result.out, "dimensions"), "0");
    result = run({"check", "@plan.dxf"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, at("@plan.dxf") +
                              ": \"DIMENSIONS\" is used only in layouts (4 references), which the "
                              "count leaves out; --layouts counts them\n");
    EXPECT_EQ(run({"check", "@plan.dxf", "--layouts"}).exitCode, 0);

    // Each space gets a quantity of its own, named as the drawing names its layouts.
    result = run({"bom", "@plan.dxf", "--layouts", "--csv", "@bom.csv"});
    EXPECT_EQ(quantityOf(result.out, "door"), "4");
    EXPECT_EQ(m_folder.read("bom.csv"),
              "\xEF\xBB\xBF"
              "Block name,Item Price,Model,Layout1,Sheet 2,Quantity,Description,Total\r\n"
              "door,450.00,2,1,1,4,Interior door,1800.00\r\n"
              "dimensions,10.00,0,4,0,4,Dimension set,40.00\r\n"
              "Summary:,,,,,,,1840.00\r\n");
    result = run({"bom", "@plan.dxf", "--layouts", "--json"});
    EXPECT_NE(result.out.find("\"space\": \"Sheet 2\""), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("\"space_quantities\": [\n        0,\n        4,\n        0\n"),
              std::string::npos)
        << result.out;

    // No block that is used shows only a 0.
    EXPECT_EQ(tarnwick({"blocks", "@plan.dxf"}).out,
              "DIMENSIONS       0      4 in layouts\n"
              "DOOR             2      2 in layouts\n");
}

TEST_F(ConsoleWildDrawings, PriceTablesAreNoItemsWhenADrawingIsCountedAgain) {
    const ProcessResult first = bom({"floorplan.dxf"}, {"--table-at", "21,9"});
    ASSERT_EQ(first.exitCode, 0) << first.err;
    const ProcessResult second = bom({"floorplan-bom.dxf"}, {"--table-at", "40,9"});
    ASSERT_EQ(second.exitCode, 0) << second.err;
    EXPECT_EQ(second.out, first.out);
    EXPECT_EQ(second.err, at("@floorplan-bom.dxf") +
                              ": holds the price table QTB0001 already, which is not counted; "
                              "the new table is QTB0002\n" +
                              at("@floorplan-bom-bom.dxf") + ": table QTB0002 inserted\n");
    const ProcessResult blocks =
        tarnwick({"blocks", "@floorplan-bom-bom.dxf", "--prices", "@prices.prc"});
    EXPECT_NE(blocks.out.find("QTB0001             1  price table\nQTB0002             1  price "
                              "table\n"),
              std::string::npos)
        << blocks.out;
    const ProcessResult check =
        tarnwick({"check", "@floorplan-bom-bom.dxf", "--prices", "@prices.prc"});
    EXPECT_EQ(check.out.find("QTB"), std::string::npos) << check.out;
    EXPECT_EQ(tarnwick({"check", "@floorplan-bom-bom.dxf"}).exitCode, 0);
}

// Messages after "DRAWING:LINE", where LINE is the damage's line and, for the refusal, the lines
// after it that the strict read still takes.
struct Damage {
    std::string kind;
    int refusedAfter;
    std::string refusal;
    std::string repair;
};

void PrintTo(const Damage& damage, std::ostream* out) { *out << damage.kind; }

class ConsoleDamagedDrawings : public ConsoleWildDrawings,
                               public ::testing::WithParamInterface<Damage> {};

TEST_P(ConsoleDamagedDrawings, AreRefusedWithAHintOrReadWholeAndSavedMended) {
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
        checkDrawing("damaged-bom.dxf", {"QTB0001", "--", "QTB0001", "0", "-5", "1"});
    EXPECT_EQ(audit.out, "ok\n") << audit.err;
    EXPECT_EQ(tarnwick({"info", "@damaged-bom.dxf"}).exitCode, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Damages, ConsoleDamagedDrawings,
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
