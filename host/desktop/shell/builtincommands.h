// The host's own commands: drawings (NEW, OPEN, SAVE, SAVEAS, CLOSE, QUIT), the view (ZOOM,
// REDRAW), the drawing's content (INSERT, UNDO), modules (APPLOAD, ARX), scripts (SCRIPT), SELECT
// and SETVAR.
#pragma once

#include <QString>
#include <span>

class DesktopShell;

struct BuiltinCommand {
    const char* name;
    bool transparent;  // may run while another command prompts
    int (*run)(DesktopShell& shell);
};

std::span<const BuiltinCommand> builtinCommands();
// By name or alias, ignoring case; null for none.
const BuiltinCommand* findBuiltinCommand(const QString& name);
