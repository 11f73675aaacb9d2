// The library entry: the extension state and the module path, set at attach and cleared at detach.
#include "frame/LibraryEntry.h"

#include <dlfcn.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <string>

#include "resources/ModulePath.h"
#include "text/TextFile.h"

ExtensionModuleState ExtensionModule;

namespace {

bool InitExtensionModule(ExtensionModuleBlock& block, HINSTANCE instance) {
    if (instance == nullptr) return false;
    block.module = instance;
    block.initialized = true;
    return true;
}

void TermExtensionModule(ExtensionModuleBlock& block) { block = ExtensionModuleBlock{}; }

// The loader may have been given a relative name; the settings files need the full one.
std::wstring ModuleFileName() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&ModuleInstance), &info) == 0 ||
        info.dli_fname == nullptr)
        return {};
    char resolved[PATH_MAX];
    const char* name = realpath(info.dli_fname, resolved) ? resolved : info.dli_fname;
    return WidePath(name);
}

// Cut as the system's module-name function cuts a name longer than its buffer.
void CopyModulePath(const std::wstring& path) {
    modulePath = path.substr(0, std::min(path.size(), kModulePathLength));
}

void ProcessAttach(HINSTANCE instance) {
    if (ExtensionModule.attached == 0) {
        ExtensionModule.attached = InitExtensionModule(ExtensionModule.block, instance) ? 1 : 0;
        if (ExtensionModule.attached != 0) {
            ExtensionModule.defaultResource = AfxGetResourceHandle();
            ExtensionModule.moduleResource = instance;
        }
    }
    CopyModulePath(ModuleFileName());
}

void ProcessDetach() {
    if (ExtensionModule.attached == 0) return;
    TermExtensionModule(ExtensionModule.block);
    ExtensionModule.attached = 0;
}

}  // namespace

HINSTANCE ModuleInstance() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&ModuleInstance), &info) == 0) return nullptr;
    return info.dli_fbase;
}

bool LibraryMain(HINSTANCE instance, LibraryReason reason) {
    switch (reason) {
        case LibraryReason::ProcessAttach:
            ProcessAttach(instance);
            break;
        case LibraryReason::ProcessDetach:
            ProcessDetach();
            break;
        case LibraryReason::ThreadAttach:
        case LibraryReason::ThreadDetach:
            break;
    }
    return true;
}
