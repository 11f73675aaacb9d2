// Marks what the shared host-interface library exports to the host executables and the loaded module.
#pragma once

#define ACHOST_EXPORT __attribute__((visibility("default")))
