// tarnwick-prices: the price-list editor on its own, with the block names of a drawing.
#include <QApplication>
#include <QFileInfo>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

#include "host/api/acdbdatabase.h"
#include "host/desktop/modules/modulelocation.h"
#include "host/desktop/services/qtwindowservices.h"
#include "host/desktop/tools/prices/dialogeditor.h"
#include "host/dxf/dxfdocument.h"
#include "pricelist/BlockPriceDialog.h"
#include "resources/ModulePath.h"

namespace {

constexpr const char* kUsage =
    "Usage: tarnwick-prices [LIST.prc] [--drawing PLAN.dxf]\n"
    "\n"
    "Edits a price list in the editor of the command RZBOMT. The drop list of a new row offers "
    "the\n"
    "drawing's blocks that the list does not price yet; without a drawing it is empty. LIST is\n"
    "opened as \"Open\" would open it.\n"
    "\n"
    "  --drawing PLAN.dxf   offer the drawing's block names in the drop list\n"
    "  --version            print the version and exit\n";

struct Options {
    std::string list;
    std::string drawing;
};

int usageError(const std::string& message) {
    std::fprintf(stderr, "tarnwick-prices: %s\n%s", message.c_str(), kUsage);
    return 2;
}

// The options, or the exit status when the program should stop: 0 after --help or --version, 2 for
// bad usage.
// Read before Qt starts, so that a mistake is told without a display.
std::optional<Options> parseArguments(int argc, char** argv, int& status) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--help" || argument == "-h") {
            std::fputs(kUsage, stdout);
            status = 0;
            return std::nullopt;
        }
        if (argument == "--version") {
            std::printf("tarnwick-prices %s\n", TARNWICK_VERSION);
            status = 0;
            return std::nullopt;
        }
        if (argument == "--drawing") {
            if (i + 1 >= argc) {
                status = usageError("--drawing needs the drawing's file name");
                return std::nullopt;
            }
            if (!options.drawing.empty()) {
                status = usageError("only one drawing can be given");
                return std::nullopt;
            }
            options.drawing = argv[++i];
            continue;
        }
        if (argument.starts_with('-') || !options.list.empty()) {
            status = usageError("unexpected argument \"" + argument + "\"");
            return std::nullopt;
        }
        options.list = argument;
    }
    return options;
}

// Runs the dialog as the command would, with the list opened first when one was given.
void runEditor(const Options& options, const DxfDocument* drawing) {
    // The settings lie where the module's lie when tarnwick-cad loads it: beside Tarnwick.arx (in
    // ~/.config/tarnwick/ when that folder is not writable).
    modulePath = bundledModuleFile().wstring();
    QtWindowServices windowServices;
    DialogEditor editor(drawing);
    BlockPriceDialog dialog;
    windowServices.setMainWindow(&dialog);
    if (!options.list.empty()) {
        const QString path = QFileInfo(QString::fromLocal8Bit(options.list)).absoluteFilePath();
        (void)dialog.OpenList(path.toStdWString());  // a list that cannot be read has been told
    }
    dialog.DoModal();
    windowServices.setMainWindow(nullptr);
}

}  // namespace

int main(int argc, char** argv) {
    int status = 0;
    const std::optional<Options> options = parseArguments(argc, argv, status);
    if (!options) return status;

    std::unique_ptr<DxfDocument> drawing;
    if (!options->drawing.empty()) {
        auto read = DxfDocument::readFile(options->drawing);
        if (!read.isOk()) {
            std::fprintf(stderr, "%s\n", read.errorString().c_str());
            return 1;
        }
        drawing = read.takeValue();
    }

    QApplication application(argc, argv);
    // The name titles the host's boxes; a display name would also end every window's title.
    QApplication::setApplicationName(QStringLiteral("Tarnwick"));
    acdbHostApplicationServices()->setWorkingDatabase(drawing.get());
    runEditor(*options, drawing.get());
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    return 0;
}
