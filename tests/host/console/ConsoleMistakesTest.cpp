// The mistakes users type and the files that are no drawings, given to `tarnwick`: what it was
// given to read stays what it was byte for byte, a refused command leaves nothing behind, and each
// message says what went wrong and why.
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

#include "tests/host/DrawingFixture.h"
#include "tests/host/console/ConsoleFixture.h"

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kMemoryLimitsWork =
    false;  // the sanitizer reserves more address space than any limit
#else
constexpr bool kMemoryLimitsWork = true;
#endif

class ConsoleMistakesTest : public ConsoleTest {
protected:
    void SetUp() override {
        ConsoleTest::SetUp();
        std::filesystem::create_symlink("prices.prc", m_folder.path("list-link.txt"));
        std::filesystem::create_symlink("floorplan.dxf", m_folder.path("plan-link.dxf"));
    }
    std::string p(const std::string& name) const { return m_folder.path(name); }
};

struct Attempt {
    std::vector<std::string> options;  // after `bom floorplan.dxf --prices prices.prc`
    std::string message;
};

TEST_F(ConsoleMistakesTest, AnOutputNamingAnInputOrAnotherOutputIsRefusedBeforeAnythingIsRead) {
    const std::string usage = "\nTry 'tarnwick --help'.\n";
    const std::vector<Attempt> attempts = {
        {{"--csv", "@floorplan.dxf"},
         "tarnwick: --csv " + p("floorplan.dxf") + " would write over the drawing " +
             p("floorplan.dxf") + usage},
        {{"--xlsx", "@prices.prc"},
         "tarnwick: --xlsx " + p("prices.prc") + " would write over the price list " +
             p("prices.prc") + usage},
        {{"--report", "@floorplan.dxf"},
         "tarnwick: --report " + p("floorplan.dxf") + " would write over the drawing " +
             p("floorplan.dxf") + usage},
        {{"--report", "@list-link.txt"},
         "tarnwick: --report " + p("list-link.txt") + " would write over the price list " +
             p("prices.prc") + usage},
        {{"--csv", "@plan-link.dxf"},
         "tarnwick: --csv " + p("plan-link.dxf") + " would write over the drawing " +
             p("floorplan.dxf") + usage},
        {{"--table-at", "0,0", "-o", "@out.dxf", "--csv", "@out.dxf"},
         "tarnwick: -o " + p("out.dxf") + " and --csv " + p("out.dxf") + " name the same file" +
             usage},
        // The outputs that are not named: the drawing's "-bom" copy and the report beside the list.
        {{"--table-at", "0,0", "--xlsx", "@floorplan-bom.dxf"},
         "tarnwick: -o " + p("floorplan-bom.dxf") + " and --xlsx " + p("floorplan-bom.dxf") +
             " name the same file" + usage},
        {{"--report", "--csv", "@prices-floorplan.txt"},
         "tarnwick: --report " + p("prices-floorplan.txt") + " and --csv " +
             p("prices-floorplan.txt") + " name the same file" + usage},
    };
    const auto before = snapshot();
    for (const Attempt& attempt : attempts) {
        const ProcessResult result = bom({"floorplan.dxf"}, attempt.options);
        EXPECT_EQ(result.exitCode, 2) << attempt.options.front();
        EXPECT_EQ(result.err, attempt.message);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(snapshot(), before) << attempt.options.front();
    }
    // Naming the drawing itself with -o is the one way to ask for it to be written over.
    const ProcessResult inPlace =
        bom({"floorplan.dxf"}, {"--table-at", "0,0", "-o", "@floorplan.dxf"});
    EXPECT_EQ(inPlace.exitCode, 0) << inPlace.err;
    EXPECT_NE(m_folder.read("floorplan.dxf"), before.at("floorplan.dxf"));
    auto after = snapshot();
    after.erase("floorplan.dxf");
    auto expected = before;
    expected.erase("floorplan.dxf");
    EXPECT_EQ(after, expected);
}

TEST_F(ConsoleMistakesTest, AnOutputThatCannotBeWrittenSaysWhyAndLeavesNothingBehind) {
    m_folder.write("r.txt", "an older report\n");
    const std::string tooLong(256 - 4, 'r');
    const std::string noFolder =
        ": cannot create a file in its folder: no such file or directory\n";
    const std::vector<Attempt> attempts = {
        {{"--csv", "@missing/bom.csv"}, p("missing/bom.csv") + noFolder},
        {{"--xlsx", "@missing/bom.xlsx"}, p("missing/bom.xlsx") + noFolder},
        {{"--table-at", "0,0", "-o", "@missing/out.dxf"}, p("missing/out.dxf") + noFolder},
        {{"--csv", "@" + tooLong + ".csv"},
         p(tooLong + ".csv") + ": cannot write: file name too long\n"},
        // The report keeps the module's words, odd spacing included, and adds the reason.
        {{"--report", "@missing/r.txt"},
         "File " + p("missing/r.txt") + " could  not be opened: no such file or directory\n"},
        {{"--report", "@"}, "File " + p("") + " could  not be opened: is a directory\n"},
        {{"--report", "@" + tooLong + ".txt"},
         "File " + p(tooLong + ".txt") + " could  not be opened: file name too long\n"},
    };
    const auto before = snapshot();
    for (const Attempt& attempt : attempts) {
        const ProcessResult result = bom({"floorplan.dxf"}, attempt.options);
        EXPECT_EQ(result.exitCode, 1) << attempt.message;
        EXPECT_EQ(result.err, attempt.message);
        EXPECT_EQ(snapshot(), before) << attempt.message;
    }
}

TEST_F(ConsoleMistakesTest, OutputNamesAsLongAsAFolderAllowsAreWrittenWithNothingBeside) {
    const std::string longest(255 - 4, 'r');
    const std::vector<std::vector<std::string>> outputs = {
        {"--csv", "@" + longest + ".csv"},
        {"--xlsx", "@" + longest + ".xls"},
        {"--report", "@" + longest + ".txt"},
        {"--table-at", "0,0", "-o", "@" + longest + ".dxf"},
    };
    const auto before = m_folder.entries();
    for (const auto& options : outputs) {
        const ProcessResult result = bom({"floorplan.dxf"}, options);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        const std::string name = options.back().substr(1);
        auto expected = before;
        expected.push_back(name);
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(m_folder.entries(), expected);
        EXPECT_GT(std::filesystem::file_size(p(name)), 0U);
        std::filesystem::remove(p(name));
    }
}

TEST_F(ConsoleMistakesTest, StandardOutputThatCannotTakeTheOutputIsExitOneAndAClosedPipeIsQuiet) {
    const std::vector<std::vector<std::string>> commands = {
        {"bom", "@floorplan.dxf", "--prices", "@prices.prc"},
        {"bom", "@floorplan.dxf", "--prices", "@prices.prc", "--json"},
        {"check", "@floorplan.dxf", "--prices", "@prices.prc"},
        {"blocks", "@floorplan.dxf"},
        {"info", "@floorplan.dxf", "--json"},
    };
    const auto before = snapshot();
    for (const auto& command : commands) {
        const ProcessResult full = tarnwick(command, ProcessSetup::writingTo("/dev/full"));
        EXPECT_EQ(full.exitCode, 1) << command.front();
        EXPECT_EQ(full.err, "standard output: no space left on device\n");
        // `| head`: the reader has gone, and so does the program, without a word.
        const ProcessResult closed = tarnwick(command, ProcessSetup::intoAClosedPipe());
        EXPECT_EQ(closed.termSignal, SIGPIPE) << command.front();
        EXPECT_EQ(closed.err, "");
    }
    EXPECT_EQ(snapshot(), before);
}

TEST_F(ConsoleMistakesTest, AFileThatCannotBeADrawingIsRefusedFromItsFirstBytes) {
    // A gigabyte of zeros (a sparse file: no disk spent) under a limit of a quarter of it.
    m_folder.write("zeros.dxf", "");
    std::filesystem::resize_file(p("zeros.dxf"), 1ULL << 30);
    m_folder.write("picture.dxf", std::string("\x89PNG\r\n\x1a\n", 8) + std::string(4096, 'x'));
    const ProcessSetup limited =
        ProcessSetup::limitedBy(kMemoryLimitsWork ? "ulimit -v 262144" : "true");
    const auto before = snapshot();
    const std::vector<std::pair<std::string, std::string>> refusals = {
        {"zeros.dxf", ":1: expected a group code, found \"" + std::string(40, '?') + "...\"\n"},
        {"picture.dxf", ":1: expected a group code, found \"?PNG\"\n"},
    };
    for (const auto& [name, message] : refusals) {
        for (const char* command : {"bom", "check", "info"}) {
            std::vector<std::string> arguments{command, "@" + name};
            if (std::string(command) != "info")
                arguments.insert(arguments.end(), {"--prices", "@prices.prc"});
            const ProcessResult result = tarnwick(arguments, limited);
            EXPECT_EQ(result.exitCode, 1) << command << " " << name;
            EXPECT_EQ(result.err, p(name) + message) << command;
        }
    }
    EXPECT_EQ(snapshot(), before);
}

// A value that a plain count never reads (a reference's insertion point) is still checked: every
// command that reads the drawing refuses it alike, whichever fields it goes on to use.
TEST_F(ConsoleMistakesTest, ANumberThatIsNoneIsRefusedByEveryCommandAlike) {
    m_folder.write("plan.dxf",
                   "  0\nSECTION\n  2\nENTITIES\n  0\nINSERT\n  2\nDOOR\n 10\nabc\n 20\n0.0\n"
                   "  0\nENDSEC\n  0\nEOF\n");
    const auto before = snapshot();
    for (const char* command : {"bom", "check", "info", "blocks"}) {
        std::vector<std::string> arguments{command, "@plan.dxf"};
        if (std::string(command) != "info")
            arguments.insert(arguments.end(), {"--prices", "@prices.prc"});
        const ProcessResult result = tarnwick(arguments);
        EXPECT_EQ(result.exitCode, 1) << command;
        EXPECT_EQ(result.err,
                  p("plan.dxf") + ":10: expected a number for group code 10, found \"abc\"\n")
            << command;
        EXPECT_EQ(result.out, "") << command;
    }
    EXPECT_EQ(snapshot(), before);
}

TEST_F(ConsoleMistakesTest, RunningOutOfMemoryIsNamedWithTheFilesSize) {
    if (!kMemoryLimitsWork) GTEST_SKIP() << "address space limits do not hold under the sanitizer";
    const std::string bytes = fixtureBytes(fixtureOfManyReferences(400'000));
    m_folder.write("large.dxf", bytes);
    const std::size_t megabytes = (bytes.size() + 999'999) / 1'000'000;
    const auto before = snapshot();
    const ProcessResult result = tarnwick({"bom", "@large.dxf", "--prices", "@prices.prc"},
                                          ProcessSetup::limitedBy("ulimit -v 50000"));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, p("large.dxf") + ": not enough memory to read it (" +
                              std::to_string(megabytes) + " MB)\n");
    EXPECT_EQ(snapshot(), before);
}

// The module reads prices as it always has and prints "inf"; the console names the line to blame.
TEST_F(ConsoleMistakesTest, MoneyTooLargeToCountWithIsNamedWithItsLine) {
    struct Overflow {
        std::string list;
        std::string warnings;  // after the list's path
    };
    const std::vector<Overflow> overflows = {
        {"door|1e400|x\nwindow|1e308|y\n",
         ":1: the price \"1e400\" of \"door\" is too large to count with; it counts as inf\n"
         ":2: the total of \"window\" (10 x 1e308) overflows; it shows as inf\n"},
        {"door|4e307|x\nwindow|1e307|y\n", ": the grand total overflows; it shows as inf\n"},
    };
    for (const Overflow& overflow : overflows) {
        m_folder.write("huge.prc", overflow.list);
        const std::string list = p("huge.prc");
        std::string expected;
        for (std::size_t at = 0, end; at < overflow.warnings.size(); at = end + 1) {
            end = overflow.warnings.find('\n', at);
            expected += list + overflow.warnings.substr(at, end - at + 1);
        }
        const ProcessResult bom = tarnwick({"bom", "@floorplan.dxf", "--prices", "@huge.prc"});
        EXPECT_EQ(bom.exitCode, 0);
        EXPECT_EQ(bom.err, expected);
        EXPECT_TRUE(
            bom.out.ends_with("  Summary:                                                   inf\n"))
            << bom.out;
        const ProcessResult check = tarnwick({"check", "@floorplan.dxf", "--prices", "@huge.prc"});
        EXPECT_EQ(check.exitCode, 3);
        EXPECT_TRUE(check.out.ends_with(expected)) << check.out;
    }
}

// "Стул" in code page 1251 on the second line: it cannot find a block named so in UTF-8.
TEST_F(ConsoleMistakesTest, AListThatIsNotUtf8SaysHowItWasReadOrIsReadInTheCodePageNamed) {
    m_folder.write("cp1251.prc", "door|1|x\n\xD1\xF2\xF3\xEB|2|chair\n");
    const std::string note =
        p("cp1251.prc") +
        ":2: not UTF-8: read one byte per character, so names in other "
        "scripts will not match; name its code page with --list-encoding, for instance "
        "CP1251\n";
    const ProcessResult bom = tarnwick({"bom", "@floorplan.dxf", "--prices", "@cp1251.prc"});
    EXPECT_EQ(bom.exitCode, 0);
    EXPECT_EQ(bom.err, note);
    const ProcessResult check = tarnwick({"check", "@floorplan.dxf", "--prices", "@cp1251.prc"});
    EXPECT_EQ(check.exitCode, 3);
    EXPECT_TRUE(check.out.ends_with(note)) << check.out;
    m_folder.write("utf8.prc", "door|1|x\n\xD0\xA1\xD1\x82\xD1\x83\xD0\xBB|2|chair\n");
    EXPECT_EQ(tarnwick({"bom", "@floorplan.dxf", "--prices", "@utf8.prc"}).err, "");

    // Named, the code page reads the list, and the report goes out in it too.
    const ProcessResult named = tarnwick(
        {"check", "@floorplan.dxf", "--prices", "@cp1251.prc", "--list-encoding", "CP1251"});
    EXPECT_TRUE(named.out.ends_with(p("cp1251.prc") +
                                    ":2: \"\xD0\xA1\xD1\x82\xD1\x83\xD0\xBB\" has a "
                                    "price, but the drawing defines no such block\n"))
        << named.out;
    const ProcessResult report = tarnwick({"bom", "@floorplan.dxf", "--prices", "@cp1251.prc",
                                           "--list-encoding", "cp1251", "--report", "@report.txt"});
    EXPECT_EQ(report.exitCode, 0) << report.err;
    EXPECT_NE(m_folder.read("report.txt").find("      \xF1\xF2\xF3\xEB       2.00"),
              std::string::npos)
        << m_folder.read("report.txt");
    // A byte the code page lacks, and a code page no one knows.
    m_folder.write("cp1251.prc", "door|1|x\n\x98|2|chair\n");
    const ProcessResult invalid = tarnwick(
        {"blocks", "@floorplan.dxf", "--prices", "@cp1251.prc", "--list-encoding", "CP1251"});
    EXPECT_EQ(invalid.exitCode, 1);
    EXPECT_EQ(invalid.err, p("cp1251.prc") + ":2: not valid CP1251\n");
    const ProcessResult unknown = tarnwick(
        {"bom", "@floorplan.dxf", "--prices", "@cp1251.prc", "--list-encoding", "KLINGON"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_EQ(unknown.err, "tarnwick: unknown encoding \"KLINGON\"\nTry 'tarnwick --help'.\n");
}

}  // namespace
