// The functions the host looks up by name after loading the module.
#pragma once

#include "host/api/acadstatus.h"

#define TARNWICK_EXPORT extern "C" __attribute__((visibility("default")))

// Major 22, minor 0: the version of the host interface the module is built against.
inline constexpr unsigned kTarnwickApiVersion = 0x00160000;

// The host's messages to the module (kInitAppMsg, kUnloadAppMsg, ...); always kRetOK.
TARNWICK_EXPORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt);
TARNWICK_EXPORT unsigned acrxGetApiVersion();
