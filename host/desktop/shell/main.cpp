// `tarnwick-cad`: the desktop CAD host. Opens a drawing, loads Tarnwick.arx from beside itself as
// a CAD program loads a registered module, and runs a start-up script when given one.
#include <QApplication>
#include <QTimer>
#include <clocale>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/api/acrxregistry.h"
#include "host/desktop/modules/moduleloader.h"
#include "host/desktop/session/commandlisting.h"
#include "host/desktop/shell/desktopshell.h"
#include "host/desktop/shell/mainwindow.h"

namespace {

constexpr const char* kUsage =
    "Usage: tarnwick-cad [DRAWING.dxf] [-b SCRIPT.scr] [--commands]\n"
    "\n"
    "The desktop CAD host: a drawing view with a command line, running the module Tarnwick.arx\n"
    "that lies beside it (commands RZBOMT and RZBOMC).\n"
    "\n"
    "  DRAWING.dxf     the drawing to open (a new one without)\n"
    "  -b SCRIPT.scr   feed the script's lines to the command line, one at a time\n"
    "  --commands      print the registered commands (group, global name, local name,\n"
    "                  flags) and exit without a window\n";

constexpr int kExitOk = 0;
constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

struct Options {
    std::optional<std::string> drawing;
    std::optional<std::string> script;
    bool listCommands = false;
    bool help = false;
};

// The options, or the usage error.
std::optional<Options> parse(const std::vector<std::string>& args, std::string& error) {
    Options options;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--help" || arg == "-h") {
            options.help = true;
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
        } else if (!options.drawing) {
            options.drawing = arg;
        } else {
            error = "one drawing at a time";
            return std::nullopt;
        }
    }
    return options;
}

std::filesystem::path moduleBesideExecutable() {
    std::error_code error;
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
    return executable.parent_path() / "Tarnwick.arx";
}

int listRegisteredCommands() {
    ModuleLoader loader(
        [](const std::string& warning) { std::fprintf(stderr, "%s\n", warning.c_str()); });
    const ModuleStatus status = loader.load(moduleBesideExecutable());
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
    if (options->listCommands) return listRegisteredCommands();

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tarnwick CAD"));
    MainWindow window;
    DesktopShell& shell = window.shell();
    shell.loadModule(QString::fromStdString(moduleBesideExecutable().string()));
    if (options->drawing) shell.openDrawing(QString::fromStdString(*options->drawing));
    window.show();
    if (options->script) {
        const QString script = QString::fromStdString(*options->script);
        QTimer::singleShot(0, &shell, [&shell, script] { shell.startScript(script); });
    }
    return application.exec();
}
