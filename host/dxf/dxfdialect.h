// What a drawing's DXF version asks of the records written into it.
#pragma once

#include <string_view>

struct DxfDialect {
    bool handles = false;        // objects carry handles: R13 on, or R12 with $HANDLING set
    bool subclasses = false;     // R13 on: owners (330), subclass markers (100), BLOCK_RECORD table
    bool layouts = false;        // R2000 on: a block record points to its layout (340)
    bool blockUnits = false;     // R2007 on: a block record holds units, explodability, scalability
    bool attributeLock = false;  // R2010 on: attributes carry a version and a lock-position flag

    // Files without $ACADVER are R12 files.
    static DxfDialect forVersion(std::string_view acadVersion, bool handling) {
        const std::string_view version = acadVersion.empty() ? "AC1009" : acadVersion;
        DxfDialect dialect;
        dialect.subclasses = version >= "AC1012";
        dialect.handles = dialect.subclasses || handling;
        dialect.layouts = version >= "AC1015";
        dialect.blockUnits = version >= "AC1021";
        dialect.attributeLock = version >= "AC1024";
        return dialect;
    }
};
