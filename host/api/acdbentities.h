// The records the module reads from and writes into a drawing, as plain values.
#pragma once

#include <string>

#include "host/api/acadstatus.h"
#include "host/api/acdbobjectid.h"
#include "host/api/acgepoint3d.h"

struct AcGeScale3d {
    double sx = 1.0;
    double sy = 1.0;
    double sz = 1.0;
    friend bool operator==(const AcGeScale3d&, const AcGeScale3d&) = default;
};

struct AcDbLine {
    AcGePoint3d startPoint;
    AcGePoint3d endPoint;
    friend bool operator==(const AcDbLine&, const AcDbLine&) = default;
};

// Left-justified text starts at `position`; centred and right-justified text hangs on `alignmentPoint`.
struct AcDbAttributeDefinition {
    AcGePoint3d position;
    AcGePoint3d alignmentPoint;
    double height = 1.0;
    double widthFactor = 1.0;
    std::wstring textString;  // the default value
    std::wstring tag;
    std::wstring prompt;
    AcDbObjectId textStyle;
    AcDb::TextHorzMode horizontalMode = AcDb::kTextLeft;
    AcDb::TextVertMode verticalMode = AcDb::kTextBase;
    bool invisible = false;
    bool constant = false;
    bool verifiable = false;
    bool preset = false;
    friend bool operator==(const AcDbAttributeDefinition&, const AcDbAttributeDefinition&) = default;
};

// A line of text, placed as an attribute definition is; what every viewer draws.
struct AcDbText {
    AcGePoint3d position;
    AcGePoint3d alignmentPoint;
    double height = 1.0;
    double widthFactor = 1.0;
    std::wstring textString;
    AcDbObjectId textStyle;
    AcDb::TextHorzMode horizontalMode = AcDb::kTextLeft;
    AcDb::TextVertMode verticalMode = AcDb::kTextBase;
    friend bool operator==(const AcDbText&, const AcDbText&) = default;
};

struct AcDbBlockReference {
    AcDbObjectId blockTableRecord;
    AcGePoint3d position;
    AcGeScale3d scaleFactors;
    double rotation = 0.0;  // radians
    friend bool operator==(const AcDbBlockReference&, const AcDbBlockReference&) = default;
};

struct AcDbTextStyleTableRecord {
    std::wstring name;
    std::wstring fileName;
    friend bool operator==(const AcDbTextStyleTableRecord&, const AcDbTextStyleTableRecord&) = default;
};
