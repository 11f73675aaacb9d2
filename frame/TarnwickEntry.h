// The functions the host looks up by name after loading the module.
#pragma once

#include "host/api/acadstatus.h"

#define TARNWICK_EXPORT extern "C" __attribute__((visibility("default")))

// The host's messages to the module (kInitAppMsg, kUnloadAppMsg, ...); always kRetOK.
TARNWICK_EXPORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt);
// The version of the host interface the module is built against: major 22, minor 0.
TARNWICK_EXPORT unsigned acrxGetApiVersion();
