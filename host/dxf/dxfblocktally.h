// The references of one drawing counted by block name, as the console counts them and the
// drawing's database counts for its price tables: a selection of model space or of a layout, or
// references picked by hand; an array (MINSERT) as its columns x rows unless asked to count it
// once; a dynamic block's variants under the dynamic block's own name unless record names are
// asked for; and on request the references nested in the counted blocks, multiplied along the
// nesting.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/dxf/dxfdocument.h"
#include "host/dxf/dxfresult.h"
#include "host/dxf/dxfselection.h"

struct TallyOptions {
    SelectionFilter filter;
    // References picked by hand, counted instead of the filter's; ids that are no reference of
    // the drawing (any longer) are passed over.
    std::optional<std::vector<AcDbObjectId>> picked;
    bool recordNames = false;  // count "*U" variants under their own record's name
    bool nested = false;       // count the references inside counted blocks too
    bool arraysAsOne = false;  // an array (MINSERT) counts once, not columns x rows times
    // The space counted: model space, or one paper-space layout of DxfDocument::layoutNames().
    std::optional<std::size_t> layout;
    // Blocks whose references are no items and are not counted (price tables, say); none when
    // empty.
    std::function<bool(AcDbObjectId record)> leaveOut;
};

struct TalliedBlock {
    std::wstring name;  // as first met: a record's name, or the dynamic block's for a variant
    std::int64_t references = 0;
    std::vector<std::wstring> variants;  // anonymous records counted under `name`, first met first
    bool unlinked = false;               // `name` is a "*U" record that names no dynamic block
    bool fromArrays = false;             // arrays counted columns x rows make part of the count
};

struct DrawingTally {
    std::vector<TalliedBlock>
        blocks;  // one a name (without regard to case), in the order first met
    std::int64_t unlinkedReferences = 0;  // references counted under an unlinked "*U" name
    std::vector<std::wstring> cycles;     // "A > B > A": nestings that return to a block
};

// The largest count a block may reach; multiplying deep nestings stops here.
inline constexpr std::int64_t kTallyLimit = INT64_MAX;

// An error names the drawing: a reference to a block the drawing does not have.
DxfResult<DrawingTally> tallyDrawing(const DxfDocument& document, const std::string& name,
                                     const TallyOptions& options);

// One space's count: model space, or a paper-space layout by its name.
struct SpaceTally {
    std::wstring name;
    DrawingTally tally;
};

// The name a drawing's model space goes by beside its layouts.
inline constexpr const wchar_t* kModelSpaceName = L"Model";

// Model space, then each paper-space layout, counted apart with the same options.
DxfResult<std::vector<SpaceTally>> tallySpaces(const DxfDocument& document, const std::string& name,
                                               const TallyOptions& options);

// Tallies of several spaces as one: counts of one name added, variants and cycles listed once.
DrawingTally mergeTallies(const std::vector<SpaceTally>& spaces);

// "*U" followed by anything: the anonymous records the CAD program makes for dynamic blocks.
bool isDynamicVariantName(std::wstring_view name);
