// The module's commands: added to the host's command stack at load, removed as a group at unload.
#pragma once

#include "host/api/acrxregistry.h"

struct CommandTableRow {
    const wchar_t* group;
    const wchar_t* globalName;
    const wchar_t* localName;
    int flags;
    AcRxFunctionPtr handler;
};

inline constexpr const wchar_t* kCommandGroup = L"BlockPrice_Group";

// The rows in the order they are registered.
const CommandTableRow* CommandTable();
int CommandTableSize();

void RegisterCommands();
void UnregisterCommands();
