// tarnwick-calc: the calculation dialog over a DXF drawing, with Qt's file and alert boxes and the
// table's corner typed on the console.
#include <unistd.h>

#include <QApplication>
#include <clocale>
#include <cstdio>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "host/desktop/modules/modulelocation.h"
#include "host/desktop/services/qthostdialogs.h"
#include "host/desktop/services/qtwindowservices.h"
#include "host/desktop/tools/calc/calceditor.h"
#include "host/desktop/tools/calc/calctool.h"

int main(int argc, char** argv) {
    if (const auto notice = calcToolNotice(std::vector<std::string>(argv + 1, argv + argc))) {
        std::fputs(notice->c_str(), stdout);
        return kCalcToolOk;
    }
    QApplication application(argc, argv);
    // The name titles the host's boxes; a display name would also end every window's title.
    QApplication::setApplicationName(QStringLiteral("Tarnwick"));
    std::setlocale(LC_ALL, "");
    const QtWindowServices windowServices;

    CalcToolIo io;
    io.askFile = [](const std::wstring& title, const std::wstring& defaultName,
                    const std::wstring& extension, int flags, std::wstring& path) {
        return runFileDialog(nullptr, title, defaultName, extension, flags, path);
    };
    io.showAlert = [](const std::wstring& message) { showAlertBox(nullptr, message); };
    io.readLine = []() -> std::optional<std::string> {
        std::string line;
        if (!std::getline(std::cin, line)) return std::nullopt;
        // Answers piped in are shown after their prompts, as if typed.
        if (!::isatty(STDIN_FILENO)) std::printf("%s\n", line.c_str());
        return line;
    };
    io.write = [](const std::string& text) {
        std::fputs(text.c_str(), stdout);
        std::fflush(stdout);
    };
    io.report = [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); };

    // QApplication has taken its own options (-platform ...) out of argv.
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    // The settings lie where the module's lie when tarnwick-cad loads it: beside Tarnwick.arx (in
    // ~/.config/tarnwick/ when that folder is not writable).
    return runCalcTool(arguments, io, bundledModuleFile().wstring());
}
