// Running the calculation command over a drawing read from a DXF file.
#include "host/desktop/tools/calc/calctool.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>

#include "frame/CalcPriceCmd.h"
#include "host/desktop/tools/calc/calceditor.h"
#include "host/dxf/dxfdocument.h"
#include "resources/ModulePath.h"
#include "text/TextFile.h"

namespace {

constexpr const char* kCalcToolHelp =
    "\n"
    "Runs the calculation command (RZBOMC) over a DXF drawing: the price list, the dialog with\n"
    "the bill of materials, and the table placed in the drawing at a corner typed on the\n"
    "console. Every block reference of model space is counted. The drawing with the table is\n"
    "written beside PLAN with \"-bom\" before its extension; nothing is written when no table\n"
    "was drawn.\n"
    "\n"
    "  --prices LIST.prc   the price list (without it, a file dialog asks for one)\n"
    "  -o OUT.dxf          write the drawing with the table to OUT\n"
    "  --version           print the version and exit\n"
    "\n"
    "Exit status: 0 done, 1 a file could not be read or written, 2 bad usage.\n";

struct CalcRequest {
    std::string drawing;
    std::optional<std::string> prices;
    std::string output;
};

// The drawing's name with "-bom" before its extension, in the drawing's folder.
std::string defaultOutput(const std::string& drawing) {
    const std::filesystem::path path(drawing);
    return (path.parent_path() / (path.stem().string() + "-bom" + path.extension().string()))
        .string();
}

std::string lowerReason(int error) {
    std::string reason = std::strerror(error);
    if (!reason.empty())
        reason[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(reason[0])));
    return reason;
}

// Empty when the file can be read; else why not.
std::string unreadableReason(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return lowerReason(errno);
    if (S_ISDIR(info.st_mode)) return lowerReason(EISDIR);
    if (::access(path.c_str(), R_OK) != 0) return lowerReason(errno);
    return {};
}

// Null after the message when the arguments make no request; `status` says how to exit.
std::optional<CalcRequest> readRequest(const std::vector<std::string>& arguments, CalcToolIo& io,
                                       int& status) {
    status = kCalcToolUsageError;
    auto usage = [&io](const std::string& what) {
        io.report("tarnwick-calc: " + what + " (usage: " + kCalcToolSynopsis + ")");
        return std::nullopt;
    };
    CalcRequest request;
    std::optional<std::string> output;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--prices" || argument == "-o") {
            if (i + 1 == arguments.size()) return usage(argument + " needs a file name");
            (argument == "-o" ? output : request.prices) = arguments[++i];
            continue;
        }
        if (argument.size() > 1 && argument.front() == '-')
            return usage("unknown option " + argument);
        if (!request.drawing.empty()) return usage("one drawing at a time");
        request.drawing = argument;
    }
    if (request.drawing.empty()) return usage("no drawing given");
    request.output = output.value_or(defaultOutput(request.drawing));
    status = kCalcToolOk;
    return request;
}

// The working database for as long as the command runs.
class WorkingDatabase {
public:
    explicit WorkingDatabase(AcDbDatabase* database)
        : m_previous(acdbHostApplicationServices()->workingDatabase()) {
        acdbHostApplicationServices()->setWorkingDatabase(database);
    }
    ~WorkingDatabase() { acdbHostApplicationServices()->setWorkingDatabase(m_previous); }
    WorkingDatabase(const WorkingDatabase&) = delete;
    WorkingDatabase& operator=(const WorkingDatabase&) = delete;

private:
    AcDbDatabase* m_previous;
};

}  // namespace

std::optional<std::string> calcToolNotice(const std::vector<std::string>& arguments) {
    for (const std::string& argument : arguments) {
        if (argument == "--help" || argument == "-h")
            return std::string("Usage: ") + kCalcToolSynopsis + "\n" + kCalcToolHelp;
        if (argument == "--version") return std::string("tarnwick-calc ") + TARNWICK_VERSION + "\n";
    }
    return std::nullopt;
}

int runCalcTool(const std::vector<std::string>& arguments, CalcToolIo& io,
                const std::wstring& moduleFile) {
    int status = kCalcToolOk;
    const auto request = readRequest(arguments, io, status);
    if (!request) return status;
    if (request->prices) {
        if (const std::string reason = unreadableReason(*request->prices); !reason.empty()) {
            io.report(*request->prices + ": " + reason);
            return kCalcToolFailure;
        }
    }
    if (const std::string reason = unreadableReason(request->drawing); !reason.empty()) {
        io.report(request->drawing + ": " + reason);
        return kCalcToolFailure;
    }
    auto read = DxfDocument::readFile(request->drawing);
    if (!read.isOk()) {
        io.report(read.errorString());
        return kCalcToolFailure;
    }
    const std::unique_ptr<DxfDocument> document = read.takeValue();

    const WorkingDatabase working(document.get());
    CalcEditor editor(*document, io);
    // As a file dialog gives it, so the dialog shows where the list is and the report goes beside
    // it.
    if (request->prices) {
        std::error_code error;
        const std::filesystem::path absolute = std::filesystem::absolute(*request->prices, error);
        editor.answerPriceListPrompt(
            WidePath(error ? *request->prices : absolute.lexically_normal().string()));
    }
    modulePath = moduleFile.substr(0, kModulePathLength);
    const std::size_t blocksBefore = document->blockTableRecordIds().size();

    CalcPriceCmd();

    // "&Insert" leaves the table block in the drawing even when its placement was cancelled.
    if (!editor.inserted() && document->blockTableRecordIds().size() == blocksBefore) {
        io.report(request->drawing + ": no table drawn, nothing written");
        return kCalcToolOk;
    }
    const DxfStatus saved = document->saveAs(request->output);
    if (!saved.isOk()) {
        io.report(saved.errorString());
        return kCalcToolFailure;
    }
    io.report(request->output +
              (editor.inserted() ? ": table inserted" : ": table drawn, not inserted"));
    return kCalcToolOk;
}
