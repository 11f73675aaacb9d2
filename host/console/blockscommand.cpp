// The `blocks` command of the console front end.
#include "host/console/blockscommand.h"

#include <cstdio>
#include <map>

#include "bom/TableSource.h"
#include "host/console/commandline.h"
#include "host/console/drawingsession.h"
#include "host/console/listencoding.h"
#include "host/console/messages.h"
#include "host/console/standardoutput.h"
#include "inventory/BlockNamesCont.h"
#include "pricelist/PriceListFile.h"
#include "text/CaseRules.h"

namespace {

const std::vector<OptionSpec> kOptions{{"--prices", OptionSpec::Value::Required},
                                       {"--list-encoding", OptionSpec::Value::Required},
                                       {"--recover", OptionSpec::Value::None}};

// By the folded name, under which names that differ only in case are one; arrays as their
// columns x rows.
std::map<std::wstring, std::int64_t> referenceCounts(const DxfDocument& document, DxfSpace space) {
    std::map<std::wstring, std::int64_t> counts;
    for (const DxfNameCount& count : document.referenceCountsByName(space))
        counts[FoldCase(document.decodeText(count.nameBytes))] += count.instances;
    return counts;
}

std::string rightAligned(std::int64_t number, std::size_t width) {
    const std::string text = std::to_string(number);
    return std::string(text.size() < width ? width - text.size() : 0, ' ') + text;
}

}  // namespace

int runBlocksCommand(const std::vector<std::string>& arguments) {
    const ParseResult parsed = parseArguments(arguments, kOptions);
    if (!parsed.arguments) return usageError(parsed.error);
    const ParsedArguments& args = *parsed.arguments;
    if (args.positional.size() != 1) return usageError("blocks takes one drawing");
    const auto prices = args.value("--prices");
    if (prices) {
        if (const std::string reason = unreadableReason(*prices); !reason.empty())
            return fail(*prices, reason);
        if (const auto status = useListEncoding(args.value("--list-encoding"), *prices))
            return *status;
    }
    auto session = DrawingSession::open(args.positional.front(), readingAsked(args));
    if (!session) return kExitFailure;

    BlockNamesCont names;
    names.Load();
    names.Sort();
    if (prices) {
        std::vector<PriceListRow> rows;
        TextFormat format;
        if (!LoadPriceListFile(WidePath(*prices), rows, format)) return kExitFailure;
        for (const auto& row : rows) names.SetMark(row.name.c_str(), 1);
    }

    // Model space first; the layouts' references in a column of their own where there are any.
    const auto model = referenceCounts(session->document(), DxfSpace::Model);
    const auto layouts = referenceCounts(session->document(), DxfSpace::PaperLayouts);
    auto countOf = [](const auto& counts, const std::wstring& name) -> std::int64_t {
        const auto count = counts.find(FoldCase(name));
        return count == counts.end() ? 0 : count->second;
    };
    std::size_t width = 10;
    for (const auto& entry : names.Names()) width = std::max(width, entry.name.size());
    for (const auto& entry : names.Names()) {
        std::string line = EncodeText(entry.name, TextFormat{});
        line.append(width - entry.name.size() + 1, ' ');
        line += rightAligned(countOf(model, entry.name), 7);
        if (!layouts.empty()) line += rightAligned(countOf(layouts, entry.name), 7) + " in layouts";
        // The module's own tables are no items to price.
        if (IsPriceTableNamed(session->document(), entry.name))
            line += "  price table";
        else if (prices && entry.marked == 0)
            line += "  no price";
        writeStandardOutput(line + "\n");
    }
    return kExitOk;
}
