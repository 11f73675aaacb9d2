// `tarnwick-cad`: the desktop CAD host. Opens the drawings named, loads the bundled Tarnwick.arx as
// a CAD program loads a registered module, and runs a start-up script when given one.
#include <QApplication>
#include <QStandardPaths>
#include <QTimer>
#include <clocale>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/api/acrxregistry.h"
#include "host/desktop/modules/moduleloader.h"
#include "host/desktop/modules/modulelocation.h"
#include "host/desktop/session/commandlisting.h"
#include "host/desktop/shell/desktopshell.h"
#include "host/desktop/shell/mainwindow.h"

namespace {

constexpr const char* kUsage =
    "Usage: tarnwick-cad [DRAWING.dxf...] [-b SCRIPT.scr] [--commands]\n"
    "\n"
    "The desktop CAD host: a drawing view with a command line and menus, running the module\n"
    "Tarnwick.arx that comes with it (commands RZBOMT and RZBOMC).\n"
    "\n"
    "  DRAWING.dxf     the drawings to open, each in a tab of its own (a new one without)\n"
    "  -b SCRIPT.scr   feed the script's lines to the command line, one at a time\n"
    "  --commands      print the registered commands (group, global name, local name,\n"
    "                  flags) and exit without a window\n"
    "  --version       print the version and exit\n";

constexpr int kExitOk = 0;
constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

struct Options {
    std::vector<std::string> drawings;
    std::optional<std::string> script;
    bool listCommands = false;
    bool help = false;
    bool version = false;
};

// The options, or the usage error.
std::optional<Options> parse(const std::vector<std::string>& args, std::string& error) {
    Options options;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--help" || arg == "-h") {
            options.help = true;
        } else if (arg == "--version") {
            options.version = true;
        } else if (arg == "--commands") {
            options.listCommands = true;
        } else if (arg == "-b") {
            if (i + 1 == args.size()) {
                error = "-b needs a script file";
                return std::nullopt;
            }
            options.script = args[++i];
        } else if (arg.starts_with("-")) {
            error = "unknown option \"" + arg + "\"";
            return std::nullopt;
        } else {
            options.drawings.push_back(arg);
        }
    }
    return options;
}

// In the folder where the module's settings go when they cannot lie beside the module.
std::filesystem::path recentDrawingsFile() {
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    if (config.isEmpty()) return {};
    return std::filesystem::path(config.toStdString()) / "tarnwick" / "tarnwick-cad.recent";
}

int listRegisteredCommands() {
    ModuleLoader loader(
        [](const std::string& warning) { std::fprintf(stderr, "%s\n", warning.c_str()); });
    const ModuleStatus status = loader.load(bundledModuleFile());
    if (!status.isOk()) std::fprintf(stderr, "tarnwick-cad: %s\n", status.errorString().c_str());
    const auto* stack = AcRxCast<AcEdCommandStack>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    std::fputs(listCommands(*stack).c_str(), stdout);
    return status.isOk() ? kExitOk : kExitFailure;
}

}  // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    std::string error;
    const auto options = parse(std::vector<std::string>(argv + 1, argv + argc), error);
    if (!options) {
        std::fprintf(stderr, "tarnwick-cad: %s\n%s", error.c_str(), kUsage);
        return kExitUsage;
    }
    if (options->help) {
        std::fputs(kUsage, stdout);
        return kExitOk;
    }
    if (options->version) {
        std::printf("tarnwick-cad %s\n", TARNWICK_VERSION);
        return kExitOk;
    }
    if (options->listCommands) return listRegisteredCommands();

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tarnwick CAD"));
    MainWindow window(recentDrawingsFile());
    DesktopShell& shell = window.shell();
    shell.loadModule(QString::fromStdString(bundledModuleFile().string()));
    window.show();
    // Opened before the script starts, and over the window: a damaged one asks about repairs.
    for (const std::string& drawing : options->drawings)
        shell.openDrawing(QString::fromStdString(drawing));
    if (options->script) {
        const QString script = QString::fromStdString(*options->script);
        QTimer::singleShot(0, &shell, [&shell, script] { shell.startScript(script); });
    }
    return application.exec();
}
