// Typed views of the records the host reads: a block reference, an attribute definition, the head
// of a block definition. Each is read from the record's tags by a table of group code and field;
// strings stay the file's bytes until someone needs them as text.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "host/api/acgepoint3d.h"
#include "host/dxf/dxfrecords.h"

struct DxfInsertView {
    std::string_view name;
    std::string_view layer;
    AcGePoint3d position;
    double scaleX = 1.0;
    double scaleY = 1.0;
    double scaleZ = 1.0;
    double rotation = 0.0;  // degrees
};

struct DxfAttributeDefinitionView {
    std::string_view text;  // the default value
    std::string_view tag;
    std::string_view prompt;
    std::string_view style;
    std::string_view layer;
    AcGePoint3d firstPoint;
    AcGePoint3d secondPoint;
    double height = 1.0;
    double widthFactor = 1.0;
    double rotation = 0.0;  // degrees
    std::int64_t flags = 0;
    std::int64_t horizontal = 0;
    std::int64_t vertical = 0;
};

struct DxfBlockBeginView {
    std::string_view name;
    std::string_view layer;
    std::int64_t flags = 0;
    AcGePoint3d basePoint;
};

DxfInsertView readInsert(const DxfTagFile& tags, DxfTagRange record);
DxfAttributeDefinitionView readAttributeDefinition(const DxfTagFile& tags, DxfTagRange record);
DxfBlockBeginView readBlockBegin(const DxfTagFile& tags, DxfTagRange record);

// Where in the record the first tag of this code stands (before any extended data).
std::optional<std::uint32_t> findTag(const DxfTagFile& tags, DxfTagRange record, int code);
// The object's own handle: code 5 (105 in DIMSTYLE entries) before the first subclass marker.
std::optional<std::uint64_t> ownHandle(const DxfTagFile& tags, DxfTagRange record);
