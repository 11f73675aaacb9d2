// Reading typed views by tables of group codes.
#include "host/dxf/dxfviews.h"

#include <array>
#include <span>

namespace {

template <typename View>
struct TextField {
    int code;
    std::string_view View::*field;
};

template <typename View>
struct RealField {
    int code;
    double View::*field;
};

template <typename View>
struct PointField {
    int code;  // of x; y and z follow at +10 and +20
    AcGePoint3d View::*field;
};

template <typename View>
struct IntegerField {
    int code;
    std::int64_t View::*field;
};

template <typename View>
struct FieldTable {
    std::span<const TextField<View>> texts;
    std::span<const RealField<View>> reals;
    std::span<const PointField<View>> points;
    std::span<const IntegerField<View>> integers;
};

constexpr int kExtendedData = 1001;

enum class FieldKind : std::uint8_t { None, Text, Real, Point, Integer };

// What a group code fills: the row of its table, and for points the axis.
struct FieldSlot {
    FieldKind kind = FieldKind::None;
    std::uint8_t index = 0;  // in the table's list of this kind
    std::uint8_t axis = 0;
    std::uint8_t row = 0;  // over the whole table, for "first tag wins"
};

template <typename View>
using FieldIndex = std::array<FieldSlot, kExtendedData>;

// The table turned around, code to field, once per view type: reading a record is then one look-up
// per tag.
template <typename View>
FieldIndex<View> indexOf(const FieldTable<View>& table) {
    FieldIndex<View> slots{};
    std::uint8_t row = 0;
    auto add = [&](int code, FieldKind kind, std::size_t index, int axis) {
        slots[static_cast<std::size_t>(code)] = {kind, static_cast<std::uint8_t>(index),
                                                 static_cast<std::uint8_t>(axis), row++};
    };
    for (std::size_t i = 0; i < table.texts.size(); ++i)
        add(table.texts[i].code, FieldKind::Text, i, 0);
    for (std::size_t i = 0; i < table.reals.size(); ++i)
        add(table.reals[i].code, FieldKind::Real, i, 0);
    for (std::size_t i = 0; i < table.points.size(); ++i) {
        for (int axis = 0; axis < 3; ++axis)
            add(table.points[i].code + 10 * axis, FieldKind::Point, i, axis);
    }
    for (std::size_t i = 0; i < table.integers.size(); ++i)
        add(table.integers[i].code, FieldKind::Integer, i, 0);
    return slots;
}

// The first tag of each code wins: later ones (a second 280, say) belong to other fields.
template <typename View>
View readView(const DxfTagFile& tags, DxfTagRange record, const FieldTable<View>& table,
              const FieldIndex<View>& index) {
    View view;
    std::uint64_t seen = 0;  // bits of table rows already filled
    for (std::uint32_t i = 1; i < record.size(); ++i) {
        const std::uint32_t tag = record[i];
        const int code = tags.code(tag);
        if (code >= kExtendedData) break;
        if (code < 0) continue;
        const FieldSlot slot = index[static_cast<std::size_t>(code)];
        const std::uint64_t bit = std::uint64_t{1} << slot.row;
        if (slot.kind == FieldKind::None || (seen & bit) != 0) continue;
        seen |= bit;
        switch (slot.kind) {
            case FieldKind::Text:
                view.*table.texts[slot.index].field = tags.value(tag);
                break;
            case FieldKind::Real: {
                double& field = view.*table.reals[slot.index].field;
                field = tags.real(tag).value_or(field);
                break;
            }
            case FieldKind::Point: {
                AcGePoint3d& point = view.*table.points[slot.index].field;
                double& coordinate = slot.axis == 0 ? point.x : slot.axis == 1 ? point.y : point.z;
                coordinate = tags.real(tag).value_or(coordinate);
                break;
            }
            case FieldKind::Integer: {
                std::int64_t& field = view.*table.integers[slot.index].field;
                field = tags.integer(tag).value_or(field);
                break;
            }
            case FieldKind::None:
                break;
        }
    }
    return view;
}

constexpr TextField<DxfInsertView> kInsertTexts[] = {{2, &DxfInsertView::name},
                                                     {8, &DxfInsertView::layer}};
constexpr RealField<DxfInsertView> kInsertReals[] = {{41, &DxfInsertView::scaleX},
                                                     {42, &DxfInsertView::scaleY},
                                                     {43, &DxfInsertView::scaleZ},
                                                     {50, &DxfInsertView::rotation}};
constexpr PointField<DxfInsertView> kInsertPoints[] = {{10, &DxfInsertView::position}};

using Definition = DxfAttributeDefinitionView;
constexpr TextField<Definition> kDefinitionTexts[] = {{1, &Definition::text},
                                                      {2, &Definition::tag},
                                                      {3, &Definition::prompt},
                                                      {7, &Definition::style},
                                                      {8, &Definition::layer}};
constexpr RealField<Definition> kDefinitionReals[] = {
    {40, &Definition::height}, {41, &Definition::widthFactor}, {50, &Definition::rotation}};
constexpr PointField<Definition> kDefinitionPoints[] = {{10, &Definition::firstPoint},
                                                        {11, &Definition::secondPoint}};
constexpr IntegerField<Definition> kDefinitionIntegers[] = {
    {70, &Definition::flags}, {72, &Definition::horizontal}, {74, &Definition::vertical}};

constexpr TextField<DxfBlockBeginView> kBlockTexts[] = {{2, &DxfBlockBeginView::name},
                                                        {8, &DxfBlockBeginView::layer}};
constexpr PointField<DxfBlockBeginView> kBlockPoints[] = {{10, &DxfBlockBeginView::basePoint}};
constexpr IntegerField<DxfBlockBeginView> kBlockIntegers[] = {{70, &DxfBlockBeginView::flags}};

}  // namespace

DxfInsertView readInsert(const DxfTagFile& tags, DxfTagRange record) {
    static const FieldTable<DxfInsertView> table{kInsertTexts, kInsertReals, kInsertPoints, {}};
    static const FieldIndex<DxfInsertView> index = indexOf(table);
    return readView(tags, record, table, index);
}

DxfAttributeDefinitionView readAttributeDefinition(const DxfTagFile& tags, DxfTagRange record) {
    static const FieldTable<Definition> table{kDefinitionTexts, kDefinitionReals, kDefinitionPoints,
                                              kDefinitionIntegers};
    static const FieldIndex<Definition> index = indexOf(table);
    return readView(tags, record, table, index);
}

DxfBlockBeginView readBlockBegin(const DxfTagFile& tags, DxfTagRange record) {
    static const FieldTable<DxfBlockBeginView> table{kBlockTexts, {}, kBlockPoints, kBlockIntegers};
    static const FieldIndex<DxfBlockBeginView> index = indexOf(table);
    return readView(tags, record, table, index);
}

std::optional<std::uint32_t> findTag(const DxfTagFile& tags, DxfTagRange record, int code) {
    for (std::uint32_t i = 0; i < record.size(); ++i) {
        const int c = tags.code(record[i]);
        if (c == kExtendedData) break;
        if (c == code) return i;
    }
    return std::nullopt;
}

std::optional<std::uint64_t> ownHandle(const DxfTagFile& tags, DxfTagRange record) {
    // A section head is no object; the header's $HANDSEED is not a handle of its own.
    if (record.size() == 0 || tags.valueIs(record[0], "SECTION")) return std::nullopt;
    const int code = tags.valueIs(record[0], "DIMSTYLE") ? 105 : 5;
    for (std::uint32_t i = 1; i < record.size(); ++i) {
        const int c = tags.code(record[i]);
        if (c == 100) break;
        if (c == code) return tags.handle(record[i]);
    }
    return std::nullopt;
}
