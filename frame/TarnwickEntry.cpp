// The module's entry point: the host's messages at load and unload, and the interface version.
#include "frame/TarnwickEntry.h"

#include "frame/CommandRegistration.h"
#include "host/api/acrxregistry.h"

namespace {

AcRxDynamicLinker* DynamicLinker() {
    return AcRxCast<AcRxDynamicLinker>(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER));
}

void InitApplication(void* appId) {
    // Unlocked so that the host may unload the module; safe with several open drawings.
    if (AcRxDynamicLinker* linker = DynamicLinker()) linker->unlockApplication(appId);
    if (AcRxDynamicLinker* linker = DynamicLinker()) linker->registerAppMDIAware(appId);
    RegisterCommands();
}

}  // namespace

AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt) {
    switch (msg) {
        case AcRx::kInitAppMsg:
            InitApplication(pkt);
            break;
        case AcRx::kUnloadAppMsg:
            UnregisterCommands();
            break;
        case AcRx::kNullMsg:
            break;
    }
    return AcRx::kRetOK;
}

unsigned acrxGetApiVersion() { return kTarnwickApiVersion; }
