// `tarnwick bom` and `blocks` run as a user runs them on drawings of other scripts and of dynamic
// and nested blocks: names in code pages 1251, 1252 and 1253 and in escapes counted as the list
// spells them, variants counted under the dynamic block's name, nested references multiplied.
#include <gtest/gtest.h>

#include "tests/RunProcess.h"
#include "tests/TempFolder.h"
#include "tests/host/DrawingFixture.h"
#include "tests/host/EncodedNameDrawings.h"
#include "tests/host/TestName.h"
#include "tests/host/Utf8.h"

namespace {

const std::string kTarnwick = TARNWICK_EXECUTABLE;

// Rows of the JSON output as "name quantity total" lines, with "<" and the variants a row was
// resolved from, or "unresolved".
std::string jsonRows(const std::string& json) {
    std::string rows;
    std::size_t at = 0;
    auto field = [&](const std::string& key, std::size_t from, std::size_t to) -> std::string {
        const std::size_t start = json.find("\"" + key + "\": ", from);
        if (start == std::string::npos || start > to) return "";
        const std::size_t value = start + key.size() + 4;
        const std::size_t end =
            key == "resolved_from" ? json.find(']', value) + 1 : json.find_first_of(",\n", value);
        return json.substr(value, end - value);
    };
    while ((at = json.find("\"name\": ", at)) != std::string::npos) {
        const std::size_t end = json.find("\n    }", at);
        std::string from = field("resolved_from", at, end);
        from.erase(
            std::remove_if(from.begin(), from.end(), [](char c) { return c == ' ' || c == '\n'; }),
            from.end());
        rows += field("name", at, end) + " " + field("quantity", at, end) + " " +
                field("total", at, end) + (from.empty() ? "" : " < " + from) +
                (field("unresolved", at, end).empty() ? "" : " unresolved") + "\n";
        at = end;
    }
    return rows;
}

class ConsoleCounting : public ::testing::Test {
protected:
    // `tarnwick COMMAND` on the drawing with the list, and the other arguments.
    ProcessResult run(const char* command, const FixtureDrawing& drawing, const std::string& prices,
                      const std::vector<std::string>& more = {}) {
        m_folder.write("plan.dxf", fixtureBytes(drawing));
        m_folder.write("list.prc", prices);
        std::vector<std::string> args{command, m_folder.path("plan.dxf"), "--prices",
                                      m_folder.path("list.prc")};
        args.insert(args.end(), more.begin(), more.end());
        return runProcess(kTarnwick, args);
    }

    TempFolder m_folder;
};

// A dynamic chair with linked variants, a variant whose link names nothing and one without any,
// and a desk of a chair and a variant.
FixtureDrawing office() {
    FixtureDrawing drawing;
    drawing.version = FixtureVersion::R2018;
    drawing.blocks = {{"Chair", {}, ""},    {"*U1", {}, "Chair"},
                      {"*U2", {}, "Chair"}, {"*U3", {}, "#FFFF"},
                      {"*U4", {}, ""},      {"Desk", {{"Chair", 0, 0}, {"*U2", 1, 0}}, ""}};
    drawing.references = {{"*U1", 0, 0}, {"Desk", 1, 0}, {"Desk", 2, 0}, {"*U3", 3, 0},
                          {"*U4", 4, 0}, {"*U4", 5, 0},  {"*U2", 6, 0},  {"chair", 7, 0}};
    return drawing;
}

TEST_F(ConsoleCounting, DynamicBlocksCountUnderTheirOwnNameAndSaySoInJson) {
    const ProcessResult result = run("bom", office(), "CHAIR|25.5|swivel\n", {"--json"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(jsonRows(result.out),
              "\"chair\" 3 76.50 < [\"*U1\",\"*U2\"]\n"
              "\"desk\" 2 0.00\n"
              "\"*u3\" 1 0.00 unresolved\n"
              "\"*u4\" 2 0.00 unresolved\n");
    EXPECT_EQ(result.err, m_folder.path("plan.dxf") +
                              ": 3 references to 2 anonymous \"*U\" blocks without a link to a "
                              "dynamic block, counted under the anonymous names\n");
}

TEST_F(ConsoleCounting, RecordNamesCountAsTheModuleCounts) {
    const ProcessResult result =
        run("bom", office(), "CHAIR|25.5|swivel\n", {"--json", "--record-names"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(jsonRows(result.out),
              "\"chair\" 1 25.50\n"
              "\"*u1\" 1 0.00\n"
              "\"desk\" 2 0.00\n"
              "\"*u3\" 1 0.00\n"
              "\"*u4\" 2 0.00\n"
              "\"*u2\" 1 0.00\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(ConsoleCounting, NestedReferencesMultiplyAlongTheNesting) {
    FixtureDrawing drawing;
    drawing.blocks = {{"Chair", {}, ""}, {"Desk", {{"Chair", 0, 0}, {"Chair", 1, 0}}, ""}};
    drawing.references = {{"Desk", 0, 0}, {"Desk", 5, 0}, {"Desk", 10, 0}};
    const std::string prices = "Desk|100|\nChair|25|\n";
    ProcessResult result = run("bom", drawing, prices, {"--nested"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out,
              "Block name Item Price   Quantity          Description      Total\n"
              "      desk     100.00          3                          300.00\n"
              "     chair      25.00          6                          150.00\n"
              "  Summary:                                                450.00\n");
    result = run("bom", drawing, prices);
    EXPECT_NE(result.out.find("     chair      25.00          0"), std::string::npos) << result.out;
}

// Blocks nested 100,000 deep, the deepest holding the one above it again: counted without a stack
// as deep as the nesting, under the default stack and under one of 1 MiB; the cycle is followed
// once and named.
TEST_F(ConsoleCounting, AHundredThousandLevelsAreCountedUnderASmallStack) {
    constexpr int kDepth = 100'000;
    FixtureDrawing drawing;
    drawing.version = FixtureVersion::R12;
    for (int level = 0; level < kDepth; ++level) {
        const int next = level + 1 < kDepth ? level + 1 : level - 1;
        drawing.blocks.push_back(
            {"B" + std::to_string(level), {{"B" + std::to_string(next), 1, 0}}, ""});
    }
    drawing.references = {{"B0", 0, 0}, {"B0", 5, 0}};
    m_folder.write("plan.dxf", fixtureBytes(drawing));
    m_folder.write("list.prc", "B0|1|top\nB99998|10|next to last\nB99999|100|deepest\n");
    const std::string plan = m_folder.path("plan.dxf");
    const std::string list = m_folder.path("list.prc");
    const std::string cycle =
        plan + ": blocks nest in a cycle (B99998 > B99999 > B99998); it is followed once\n";
    for (const std::string limits : {"true", "ulimit -s 1024"}) {
        SCOPED_TRACE(limits);
        const ProcessResult counted =
            runProcess(kTarnwick, {"bom", plan, "--prices", list, "--nested", "--only-priced"},
                       ProcessSetup::limitedBy(limits));
        ASSERT_EQ(counted.exitCode, 0) << counted.err;
        EXPECT_EQ(counted.err, cycle);
        EXPECT_EQ(counted.out,
                  "Block name Item Price   Quantity          Description      Total\n"
                  "        b0       1.00          2                  top       2.00\n"
                  "    b99998      10.00          4         next to last      40.00\n"
                  "    b99999     100.00          2              deepest     200.00\n"
                  "  Summary:                                                242.00\n");
        const ProcessResult checked =
            runProcess(kTarnwick, {"check", plan, "--prices", list, "--nested"},
                       ProcessSetup::limitedBy(limits));
        EXPECT_EQ(checked.exitCode, 3) << checked.err;
        EXPECT_NE(checked.out.find(plan + ": \"B50000\" has no price (2 references)\n"),
                  std::string::npos);
        EXPECT_NE(checked.out.find("blocks nest in a cycle (B99998 > B99999 > B99998)"),
                  std::string::npos);
    }
}

class ConsoleEncodedNames : public ConsoleCounting,
                            public ::testing::WithParamInterface<EncodedNameDrawing> {};

TEST_P(ConsoleEncodedNames, CountAsTheListSpellsThemInAnotherCase) {
    const ProcessResult result = run("bom", GetParam().drawing, kEncodedNamePrices, {"--json"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    std::string expected;
    for (const auto& [name, quantity, total] : GetParam().rows)
        expected += "\"" + utf8(name) + "\" " + std::to_string(quantity) + " " + utf8(total) + "\n";
    EXPECT_EQ(jsonRows(result.out), expected);
}

INSTANTIATE_TEST_SUITE_P(CodePages, ConsoleEncodedNames, ::testing::ValuesIn(encodedNameDrawings()),
                         [](const auto& info) { return testName(info.param.file); });

TEST_F(ConsoleCounting, BlocksListsEncodedNamesInTheirOrderWithCountsUnderAnyCase) {
    const ProcessResult result =
        run("blocks", encodedNameDrawings()[1].drawing, "\xc3\xa4rmel|3.10|sleeve\n");
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out,
              "\xc3\x84RMEL            3\n"
              "\xce\xa9MEGA            2  no price\n"
              "\xd0\xa1\xd1\x82\xd1\x83\xd0\xbb             1  no price\n");
}

}  // namespace
