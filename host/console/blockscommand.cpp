// The `blocks` command of the console front end.
#include "host/console/blockscommand.h"

#include <cstdio>
#include <map>

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

// By the folded name, under which names that differ only in case are one.
std::map<std::wstring, int> referenceCounts(const DxfDocument& document) {
    std::map<std::wstring, int> counts;
    for (const auto& [nameBytes, references] : document.referenceCountsByName(DxfSpace::Model))
        counts[FoldCase(document.decodeText(nameBytes))] += static_cast<int>(references);
    return counts;
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
    auto session = DrawingSession::open(
        args.positional.front(), args.has("--recover") ? DxfReading::Recover : DxfReading::Strict);
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

    const auto counts = referenceCounts(session->document());
    std::size_t width = 10;
    for (const auto& entry : names.Names()) width = std::max(width, entry.name.size());
    for (const auto& entry : names.Names()) {
        const auto count = counts.find(FoldCase(entry.name));
        std::string line = EncodeText(entry.name, TextFormat{});
        line.append(width - entry.name.size() + 1, ' ');
        const std::string number = std::to_string(count == counts.end() ? 0 : count->second);
        line.append(number.size() < 7 ? 7 - number.size() : 0, ' ');
        line += number;
        if (prices && entry.marked == 0) line += "  no price";
        writeStandardOutput(line + "\n");
    }
    return kExitOk;
}
