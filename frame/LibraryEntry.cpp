// The library entry: the extension state and the module path, set at attach and cleared at detach.
#include "frame/LibraryEntry.h"

#include <dlfcn.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cwchar>
#include <string>

#include "pricelist/TextFile.h"

ExtensionModuleState ExtensionModule;
wchar_t modulePath[kModulePathSize] = {};

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

// Truncates as the host's module-name function does when the buffer is too short.
void CopyModulePath(const std::wstring& path) {
    const std::size_t length = std::min<std::size_t>(path.size(), kModulePathSize - 1);
    std::wmemcpy(modulePath, path.data(), length);
    modulePath[length] = L'\0';
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
