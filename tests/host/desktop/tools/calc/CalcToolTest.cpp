// tarnwick-calc on the example floor plan: the dialog clicked for real, the corner typed, the
// drawing checked with ezdxf, the report compared with the console's, and its errors.
#include <gtest/gtest.h>

#include <QDialog>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <memory>

#include "bom/CalcPriceDialog.h"
#include "bom/CalcPriceState.h"
#include "host/desktop/tools/calc/calceditor.h"
#include "host/desktop/tools/calc/calctool.h"
#include "resources/BomReportTemplate.h"
#include "tests/ModalDialogs.h"
#include "tests/RunProcess.h"
#include "tests/TempFolder.h"
#include "tests/host/TestName.h"

namespace {

const std::string kExamples = std::string(TARNWICK_SOURCE_DIR) + "/examples";
const std::string kChecker =
    std::string(TARNWICK_SOURCE_DIR) + "/tests/host/console/check_drawing.py";

struct FilePrompt {
    std::wstring title;
    std::wstring defaultName;
    std::wstring extension;
    int flags;
    friend bool operator==(const FilePrompt&, const FilePrompt&) = default;
};

class CalcToolTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"floorplan.dxf", "prices.prc"})
            std::filesystem::copy_file(kExamples + "/" + name, m_folder.path(name));
        std::filesystem::create_directory(m_folder.path("settings"));
        lastCalcFileName.clear();
        showPricesFlag = 1;
        m_io.askFile = [this](const std::wstring& title, const std::wstring& defaultName,
                              const std::wstring& extension, int flags, std::wstring& path) {
            m_prompts.push_back({title, defaultName, extension, flags});
            if (m_fileAnswers.empty()) return RTERROR;
            path = m_fileAnswers.front();
            m_fileAnswers.pop_front();
            return RTNORM;
        };
        m_io.showAlert = [this](const std::wstring& message) { m_alerts.push_back(message); };
        m_io.readLine = [this]() -> std::optional<std::string> {
            if (m_typed.empty()) return std::nullopt;
            std::string line = m_typed.front();
            m_typed.pop_front();
            return line;
        };
        m_io.write = [this](const std::string& text) { m_written += text; };
        m_io.report = [this](const std::string& line) { m_reports.push_back(line); };
    }

    int Run(std::vector<std::string> arguments) {
        return runCalcTool(arguments, m_io, m_folder.wpath("settings/Tarnwick.arx"));
    }
    std::vector<std::string> Plan(std::vector<std::string> extra = {}) {
        std::vector<std::string> arguments{m_folder.path("floorplan.dxf"), "--prices",
                                           m_folder.path("prices.prc")};
        arguments.insert(arguments.end(), extra.begin(), extra.end());
        return arguments;
    }
    std::unique_ptr<ModalWatch> Click(int button) {
        return std::make_unique<ModalWatch>(
            [button](QDialog& dialog) { ClickDlgItem(dialog, button); });
    }
    std::unique_ptr<ModalWatch> NoDialog() {
        return std::make_unique<ModalWatch>([](QDialog& dialog) {
            ADD_FAILURE() << "a dialog was shown";
            dialog.reject();
        });
    }
    // "ok", or what ezdxf finds wrong with the drawing.
    std::string Check(const std::string& name, std::vector<std::string> expectation) {
        std::vector<std::string> arguments{kChecker, m_folder.path(name)};
        arguments.insert(arguments.end(), expectation.begin(), expectation.end());
        const ProcessResult result = runProcess("/usr/bin/python3", arguments);
        return result.out + result.err;
    }

    TempFolder m_folder;
    CalcToolIo m_io;
    std::vector<FilePrompt> m_prompts;
    std::deque<std::wstring> m_fileAnswers;
    std::vector<std::wstring> m_alerts;
    std::deque<std::string> m_typed;
    std::string m_written;
    std::vector<std::string> m_reports;
};

TEST_F(CalcToolTest, InsertPutsTheTableAtTheTypedCornerIntoACopy) {
    const std::string original = m_folder.read("floorplan.dxf");
    m_typed = {"21,9", ""};
    const auto watch = Click(IDC_REPORT_INSERT);
    EXPECT_EQ(Run(Plan()), kCalcToolOk);
    EXPECT_TRUE(watch->fired());
    EXPECT_EQ(m_written, "Upper left corner of table: Lower right corner (or RETURN): ");
    EXPECT_EQ(m_reports,
              std::vector<std::string>{m_folder.path("floorplan-bom.dxf") + ": table inserted"});
    EXPECT_EQ(Check("floorplan-bom.dxf", {"QTB0001", "--", "QTB0001", "21", "9", "1"}), "ok\n");
    EXPECT_EQ(m_folder.read("floorplan.dxf"), original);
    EXPECT_TRUE(m_prompts.empty());
    EXPECT_TRUE(m_alerts.empty());
    // The table counted the whole model space: a door added anywhere makes it stale.
    const std::string table = m_folder.path("floorplan-bom.dxf");
    EXPECT_EQ(runProcess(TARNWICK_EXECUTABLE, {"check", table}).out, "");
    runProcess("/usr/bin/python3",
               {std::string(TARNWICK_SOURCE_DIR) + "/tests/host/console/table_drawing.py", "edit",
                table, table, "add", "door", "30", "30"});
    EXPECT_EQ(runProcess(TARNWICK_EXECUTABLE, {"check", table}).out,
              table + ": QTB0001 is out of date: door 4 \u2192 5\n");
}

TEST_F(CalcToolTest, ATypedLowerRightCornerScalesTheTableAndMinusOCanNameTheInput) {
    // Ten rows and the headings make the table 33 units high: 66 units down is scale 2.
    const struct {
        std::deque<std::string> typed;
        const char* output;
        std::vector<std::string> expected;
    } cases[] = {
        {{"21,9", "21,-57"}, "scaled.dxf", {"QTB0001", "--", "QTB0001", "21", "9", "2"}},
        {{"-10,12", ""}, "floorplan.dxf", {"QTB0001", "--", "QTB0001", "-10", "12", "1"}},
    };
    for (const auto& c : cases) {
        m_typed = c.typed;
        const auto watch = Click(IDC_REPORT_INSERT);
        EXPECT_EQ(Run(Plan({"-o", m_folder.path(c.output)})), kCalcToolOk);
        EXPECT_EQ(Check(c.output, c.expected), "ok\n");
    }
}

TEST_F(CalcToolTest, AnythingButAPointIsAskedAgain) {
    m_typed = {"here", "", "21;9", " 21 , 9 ", "4,5,x", ""};
    const auto watch = Click(IDC_REPORT_INSERT);
    EXPECT_EQ(Run(Plan()), kCalcToolOk);
    EXPECT_EQ(m_written,
              "Upper left corner of table: Invalid point.\n"
              "Upper left corner of table: "  // an empty line is no point either
              "Upper left corner of table: Invalid point.\n"
              "Upper left corner of table: "
              "Lower right corner (or RETURN): Invalid point.\n"
              "Lower right corner (or RETURN): ");
    EXPECT_EQ(Check("floorplan-bom.dxf", {"QTB0001", "--", "QTB0001", "21", "9", "1"}), "ok\n");
}

TEST_F(CalcToolTest, TheEndOfTheInputLeavesTheTableDrawnButNotInserted) {
    const auto watch = Click(IDC_REPORT_INSERT);
    EXPECT_EQ(Run(Plan()), kCalcToolOk);
    EXPECT_EQ(m_reports, std::vector<std::string>{m_folder.path("floorplan-bom.dxf") +
                                                  ": table drawn, not inserted"});
    EXPECT_EQ(Check("floorplan-bom.dxf", {"QTB0001", "--"}), "ok\n");
}

TEST_F(CalcToolTest, SaveToFileWritesTheBytesTheConsoleWrites) {
    for (const bool hidden : {false, true}) {
        SCOPED_TRACE(hidden ? "prices hidden" : "prices shown");
        m_prompts.clear();
        m_fileAnswers = {m_folder.wpath("dialog.txt")};
        const auto watch = std::make_unique<ModalWatch>([hidden](QDialog& dialog) {
            if (hidden) ClickDlgItem(dialog, IDC_REPORT_SHOW_PRICE);
            ClickDlgItem(dialog, IDC_REPORT_SAVE);
            ClickDlgItem(dialog, IDC_REPORT_CLOSE);
        });
        ASSERT_EQ(Run(Plan()), kCalcToolOk);
        EXPECT_EQ(m_prompts, (std::vector<FilePrompt>{
                                 {L"Save as", m_folder.wpath("prices-floorplan.txt"), L"txt", 1}}));

        std::vector<std::string> console{"bom", m_folder.path("floorplan.dxf"), "--prices",
                                         m_folder.path("prices.prc"), "--report"};
        if (hidden) console.push_back("--hide-prices");
        const ProcessResult result = runProcess(TARNWICK_EXECUTABLE, console);
        ASSERT_EQ(result.exitCode, 0) << result.err;
        const std::string report = m_folder.read("dialog.txt");
        EXPECT_EQ(report, m_folder.read("prices-floorplan.txt"));
        EXPECT_EQ(report.find("Summary:") != std::string::npos, !hidden);
    }
    EXPECT_EQ(m_reports.back(),
              m_folder.path("floorplan.dxf") + ": no table drawn, nothing written");
    EXPECT_FALSE(std::filesystem::exists(m_folder.path("floorplan-bom.dxf")));
}

TEST_F(CalcToolTest, WithoutPricesTheListIsAskedForInTheFileDialog) {
    m_folder.write("settings/filename.set", "/lists/doors.prc");
    const auto watch = Click(IDC_REPORT_CLOSE);
    EXPECT_EQ(Run({m_folder.path("floorplan.dxf")}), kCalcToolOk);
    EXPECT_TRUE(watch->fired());
    EXPECT_EQ(m_prompts, (std::vector<FilePrompt>{{L"Open", L"/lists/doors.prc", L"prc", 2}}));
    // Cancelled: the bill had no prices, and the next prompt proposes no list.
    EXPECT_EQ(m_folder.read("settings/filename.set"), "");
}

TEST_F(CalcToolTest, ADrawingThatCannotBeSavedIsLeftUntouched) {
    std::filesystem::create_directory(m_folder.path("taken.dxf"));
    const std::string original = m_folder.read("floorplan.dxf");
    for (const std::string& output :
         {m_folder.path("no such folder/out.dxf"), m_folder.path("taken.dxf")}) {
        SCOPED_TRACE(output);
        m_reports.clear();
        m_typed = {"21,9", ""};
        const auto watch = Click(IDC_REPORT_INSERT);
        EXPECT_EQ(Run(Plan({"-o", output})), kCalcToolFailure);
        ASSERT_EQ(m_reports.size(), 1u);
        EXPECT_EQ(m_reports[0].rfind(output + ": ", 0), 0u) << m_reports[0];
    }
    EXPECT_EQ(m_folder.read("floorplan.dxf"), original);
    EXPECT_TRUE(std::filesystem::is_directory(m_folder.path("taken.dxf")));
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.path("taken.dxf")));
    EXPECT_FALSE(std::filesystem::exists(m_folder.path("no such folder")));
    std::size_t entries = 0;
    for ([[maybe_unused]] const auto& entry :
         std::filesystem::directory_iterator(m_folder.path("")))
        ++entries;
    EXPECT_EQ(entries, 4u);  // the drawing, the list, the settings and taken.dxf: no leftovers
}

struct ErrorCase {
    const char* what;
    std::vector<std::string> arguments;  // "@" stands for the test's folder
    int status;
    std::string message;  // "@" again
};

class CalcToolErrors : public CalcToolTest, public ::testing::WithParamInterface<ErrorCase> {
protected:
    std::string Expand(std::string text) {
        for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@'))
            text.replace(at, 1, m_folder.path(""));
        return text;
    }
};

TEST_P(CalcToolErrors, SayWhatIsWrongInOneLineWithoutADialog) {
    m_folder.write("corrupt.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nnot a number\n");
    std::vector<std::string> arguments;
    for (const std::string& argument : GetParam().arguments) arguments.push_back(Expand(argument));
    const auto watch = NoDialog();
    EXPECT_EQ(Run(arguments), GetParam().status);
    EXPECT_EQ(m_reports, std::vector<std::string>{Expand(GetParam().message)});
    EXPECT_FALSE(std::filesystem::exists(m_folder.path("floorplan-bom.dxf")));
}

const std::string kUsage = std::string(" (usage: ") + kCalcToolSynopsis + ")";

INSTANTIATE_TEST_SUITE_P(
    Cases, CalcToolErrors,
    ::testing::Values(
        ErrorCase{"no drawing", {}, 2, "tarnwick-calc: no drawing given" + kUsage},
        ErrorCase{"two drawings",
                  {"@a.dxf", "@b.dxf"},
                  2,
                  "tarnwick-calc: one drawing at a time" + kUsage},
        ErrorCase{"unknown option",
                  {"@floorplan.dxf", "--scale", "2"},
                  2,
                  "tarnwick-calc: unknown option --scale" + kUsage},
        ErrorCase{"-o without a name",
                  {"@floorplan.dxf", "-o"},
                  2,
                  "tarnwick-calc: -o needs a file name" + kUsage},
        ErrorCase{"missing list",
                  {"@floorplan.dxf", "--prices", "@gone.prc"},
                  1,
                  "@gone.prc: no such file or directory"},
        ErrorCase{"list is a folder", {"@floorplan.dxf", "--prices", "@"}, 1, "@: is a directory"},
        ErrorCase{"missing drawing",
                  {"@gone.dxf", "--prices", "@prices.prc"},
                  1,
                  "@gone.dxf: no such file or directory"},
        ErrorCase{"corrupt drawing",
                  {"@corrupt.dxf"},
                  1,
                  "@corrupt.dxf:8: expected a number for group code 10, found \"not a number\""}),
    [](const auto& info) { return testName(info.param.what); });

TEST(CalcToolProgram, AnswersHelpAndBadUsageFromTheCommandLine) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ProcessResult result = runProcess(TARNWICK_CALC_EXECUTABLE, {"--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.out.starts_with(std::string("Usage: ") + kCalcToolSynopsis + "\n\nRuns "))
        << result.out;
    result = runProcess(TARNWICK_CALC_EXECUTABLE, {});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err.substr(result.err.find("tarnwick-calc:")),
              "tarnwick-calc: no drawing given" + kUsage + "\n");
}

}  // namespace
