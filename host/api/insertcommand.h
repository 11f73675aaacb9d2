// The host's ".INSERT" command as the module drives it through acedCommandS, for hosts that carry
// it out without prompting: block name, insertion point, X and Y scale, rotation in degrees;
// attributes take their default values.
#pragma once

#include <vector>

#include "host/api/acdbdatabase.h"
#include "host/api/adscodes.h"
#include "host/api/hostexport.h"

// RTNORM when the reference was added; RTREJ for arguments that are not an ".INSERT" or a block
// that does not exist.
ACHOST_EXPORT int runInsertCommand(AcDbDatabase& database, const std::vector<resbuf>& arguments);
