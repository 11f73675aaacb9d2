// The layer and block-name tests of a selection filter, which need a block reference's data the
// view's hit tests do not have.
#pragma once

#include <vector>

#include "host/desktop/session/selectionfilter.h"
#include "host/dxf/dxfdocument.h"

// Keeps what passes the filter's layer and block-name tests; entities other than block references
// pass only when the filter has neither.
std::vector<AcDbObjectId> applyReferenceTests(const DxfDocument& document,
                                              std::vector<AcDbObjectId> ids,
                                              const SelectionFilter& filter);
