// Recovery of drawings whose sections, tables and blocks do not nest as a DXF file must: the
// file's records put back in an order the strict reader takes, with each change listed.
#pragma once

#include <string>
#include <vector>

#include "host/dxf/dxfrecords.h"
#include "host/dxf/dxftagfile.h"

struct DxfRecovery {
    std::string bytes;                 // the file as it should have been written
    std::vector<std::string> repairs;  // "plan.dxf:1719: ..." one line a change
};

// Every record is kept where a section, table or block can hold it; only the markers that
// close or open one in the wrong place are left out or added. Tags before the first record that
// are not comments, and nothing else, are dropped.
DxfRecovery recoverStructure(const DxfTagFile& tags, const DxfRecords& records);
