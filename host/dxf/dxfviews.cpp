// Reading typed views by tables of group codes.
#include "host/dxf/dxfviews.h"

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

// The first tag of each code wins: later ones (a second 280, say) belong to other fields.
template <typename View>
View readView(const DxfTagFile& tags, DxfTagRange record, const FieldTable<View>& table) {
    View view;
    std::uint64_t seen = 0;  // bits of table rows already filled
    auto firstTime = [&seen](int row) {
        const std::uint64_t bit = std::uint64_t{1} << row;
        const bool first = (seen & bit) == 0;
        seen |= bit;
        return first;
    };
    for (std::uint32_t i = 1; i < record.size(); ++i) {
        const std::uint32_t tag = record[i];
        const int code = tags.code(tag);
        if (code == kExtendedData) break;
        int row = 0;
        for (const auto& f : table.texts) {
            if (f.code == code && firstTime(row)) view.*f.field = tags.value(tag);
            ++row;
        }
        for (const auto& f : table.reals) {
            if (f.code == code && firstTime(row))
                view.*f.field = tags.real(tag).value_or(view.*f.field);
            ++row;
        }
        for (const auto& f : table.points) {
            for (int axis = 0; axis < 3; ++axis) {
                if (f.code + 10 * axis == code && firstTime(row)) {
                    double& coordinate = axis == 0   ? (view.*f.field).x
                                         : axis == 1 ? (view.*f.field).y
                                                     : (view.*f.field).z;
                    coordinate = tags.real(tag).value_or(coordinate);
                }
                ++row;
            }
        }
        for (const auto& f : table.integers) {
            if (f.code == code && firstTime(row))
                view.*f.field = tags.integer(tag).value_or(view.*f.field);
            ++row;
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
    return readView<DxfInsertView>(tags, record, {kInsertTexts, kInsertReals, kInsertPoints, {}});
}

DxfAttributeDefinitionView readAttributeDefinition(const DxfTagFile& tags, DxfTagRange record) {
    return readView<Definition>(
        tags, record, {kDefinitionTexts, kDefinitionReals, kDefinitionPoints, kDefinitionIntegers});
}

DxfBlockBeginView readBlockBegin(const DxfTagFile& tags, DxfTagRange record) {
    return readView<DxfBlockBeginView>(tags, record,
                                       {kBlockTexts, {}, kBlockPoints, kBlockIntegers});
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
