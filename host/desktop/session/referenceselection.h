// Selection among the drawing's block references by their insertion points, and the layer and
// block-name tests of a selection filter, which need a reference's data.
#pragma once

#include <optional>
#include <vector>

#include "host/desktop/session/selectionfilter.h"
#include "host/dxf/dxfdocument.h"

// Corners in any order; the edges belong to the window. Model space only, as the user sees it.
std::vector<AcDbObjectId> referencesInWindow(const DxfDocument& document, const AcGePoint3d& a,
                                             const AcGePoint3d& b, const SelectionFilter& filter);
// The reference whose insertion point lies nearest `at`, no farther than `tolerance`.
std::optional<AcDbObjectId> nearestReference(const DxfDocument& document, const AcGePoint3d& at,
                                             double tolerance, const SelectionFilter& filter);
std::vector<AcDbObjectId> allReferences(const DxfDocument& document, const SelectionFilter& filter);

// Keeps what passes the filter's layer and block-name tests; entities other than block references
// pass only when the filter has neither.
std::vector<AcDbObjectId> applyReferenceTests(const DxfDocument& document,
                                              std::vector<AcDbObjectId> ids,
                                              const SelectionFilter& filter);
