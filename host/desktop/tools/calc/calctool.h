// tarnwick-calc: the calculation command ("RZBOMC") over one DXF drawing before the desktop host
// exists. The drawing is written only when the command drew a table, and never over the input
// unless -o names it.
#pragma once

#include <optional>
#include <string>
#include <vector>

struct CalcToolIo;

inline constexpr const char* kCalcToolSynopsis =
    "tarnwick-calc PLAN.dxf [--prices LIST.prc] [-o OUT.dxf]";

// What --help or --version print, when asked for: the program answers them before it needs a
// display.
std::optional<std::string> calcToolNotice(const std::vector<std::string>& arguments);

// Exit statuses.
inline constexpr int kCalcToolOk = 0;
inline constexpr int kCalcToolFailure = 1;  // a file could not be read or written
inline constexpr int kCalcToolUsageError = 2;

// `arguments` without the program's name. `moduleFile` stands for the module's file: the dialog
// keeps its settings beside it.
int runCalcTool(const std::vector<std::string>& arguments, CalcToolIo& io,
                const std::wstring& moduleFile);
