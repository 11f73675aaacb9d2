// The library entry: what the module does when the loader maps it into the host's process and when
// it takes it out again: the extension state, and the module's path (`modulePath`, kept with the
// resources) set there.
#pragma once

#include "host/api/acapwindow.h"

// The resources of an extension module, as its initialisation fills them in.
struct ExtensionModuleBlock {
    bool initialized = false;
    HINSTANCE module = nullptr;
};

// The module's extension state; `attached` is non-zero once the block has been initialised.
struct ExtensionModuleState {
    int attached = 0;
    HINSTANCE defaultResource = nullptr;  // current when the module attached
    HINSTANCE moduleResource = nullptr;   // the module's own dialog templates and strings
    ExtensionModuleBlock block;
};

extern ExtensionModuleState ExtensionModule;

enum class LibraryReason { ProcessAttach, ProcessDetach, ThreadAttach, ThreadDetach };

// Runs once with ProcessAttach when the module is loaded and once with ProcessDetach when it is
// unloaded (a static object's constructor and destructor call it). Always true.
bool LibraryMain(HINSTANCE instance, LibraryReason reason);

// The instance handle of the module holding this code: the base address it is mapped at.
HINSTANCE ModuleInstance();
