// The module's entry point. Command registration comes with the command handlers.
#include "frame/TarnwickEntry.h"

AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode /*msg*/, void* /*pkt*/) { return AcRx::kRetOK; }

unsigned acrxGetApiVersion() { return 0x00160000; }
