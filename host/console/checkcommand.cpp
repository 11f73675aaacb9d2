// The `check` command of the console front end.
#include "host/console/checkcommand.h"

#include <cstdio>
#include <map>
#include <optional>
#include <set>

#include "bom/BomRows.h"
#include "bom/TableSource.h"
#include "host/console/commandline.h"
#include "host/console/drawingsession.h"
#include "host/console/jsonwriter.h"
#include "host/console/listencoding.h"
#include "host/console/messages.h"
#include "host/console/moneyoverflow.h"
#include "host/console/pricetables.h"
#include "host/console/standardoutput.h"
#include "host/dxf/dxfblocktally.h"
#include "inventory/BlockNamesCont.h"
#include "pricelist/PriceListFile.h"
#include "text/CaseRules.h"
#include "text/Numbers.h"
#include "text/TextFile.h"

namespace {

const std::vector<OptionSpec> kOptions{
    {"--prices", OptionSpec::Value::Required},   {"--list-encoding", OptionSpec::Value::Required},
    {"--json", OptionSpec::Value::None},         {"--nested", OptionSpec::Value::None},
    {"--record-names", OptionSpec::Value::None}, {"--arrays-as-one", OptionSpec::Value::None},
    {"--layouts", OptionSpec::Value::None},      {"--recover", OptionSpec::Value::None}};

struct Finding {
    const char* kind;
    std::string file;
    std::optional<std::size_t> line;
    std::optional<std::wstring> block;
    std::string message;  // after "file:line: "
    std::optional<std::int64_t> references;
    std::optional<std::size_t> winningLine;
    std::optional<std::wstring> price;
};

std::string quoted(const std::wstring& name) {
    return "\"" + EncodeText(name, TextFormat{}) + "\"";
}

// The module's key of a name: lower-cased, then folded.
std::wstring keyOf(const std::wstring& name) { return FoldCase(MakeLower(name)); }

// A decimal number and nothing else but blanks: what a price should be.
bool isPlainNumber(std::wstring_view text) {
    std::size_t i = 0;
    auto blanks = [&] {
        while (i < text.size() && (text[i] == L' ' || text[i] == L'\t')) ++i;
    };
    auto digits = [&] {
        const std::size_t start = i;
        while (i < text.size() && text[i] >= L'0' && text[i] <= L'9') ++i;
        return i - start;
    };
    blanks();
    if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) ++i;
    std::size_t count = digits();
    if (i < text.size() && text[i] == L'.') {
        ++i;
        count += digits();
    }
    if (count == 0) return false;
    if (i < text.size() && (text[i] == L'e' || text[i] == L'E')) {
        ++i;
        if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) ++i;
        if (digits() == 0) return false;
    }
    blanks();
    return i == text.size();
}

class Checker {
public:
    Checker(std::string drawing, std::string prices)
        : m_drawing(std::move(drawing)), m_prices(std::move(prices)) {}

    void unpricedBlocks(const DrawingTally& tally, const std::vector<PriceListLine>& lines) {
        std::set<std::wstring> priced;
        for (const auto& line : lines) {
            if (line.kind == PriceListLineKind::Row) priced.insert(keyOf(line.row.name));
        }
        for (const auto& block : tally.blocks) {
            if (block.name.starts_with(L'*') || priced.contains(keyOf(block.name))) continue;
            add({"no_price",
                 m_drawing,
                 {},
                 block.name,
                 quoted(block.name) + " has no price (" + references(block.references) + ")",
                 block.references,
                 {},
                 {}});
        }
    }

    // Blocks of the list that model space does not use, used in layouts: the count leaves them out.
    void pricedOnlyInLayouts(const DrawingTally& model, const std::vector<SpaceTally>& spaces,
                             const std::vector<PriceListLine>& lines) {
        std::set<std::wstring> counted;
        for (const auto& block : model.blocks) counted.insert(keyOf(block.name));
        std::vector<std::pair<std::wstring, std::int64_t>> inLayouts;  // first met first
        for (std::size_t space = 1; space < spaces.size(); ++space) {
            for (const auto& block : spaces[space].tally.blocks) {
                const auto it = std::find_if(
                    inLayouts.begin(), inLayouts.end(),
                    [&](const auto& b) { return keyOf(b.first) == keyOf(block.name); });
                if (it == inLayouts.end())
                    inLayouts.emplace_back(block.name, block.references);
                else
                    it->second += block.references;
            }
        }
        std::set<std::wstring> told;
        for (const auto& line : lines) {
            if (line.kind != PriceListLineKind::Row) continue;
            const std::wstring key = keyOf(line.row.name);
            if (counted.contains(key) || !told.insert(key).second) continue;
            for (const auto& [name, count] : inLayouts) {
                if (keyOf(name) != key) continue;
                add({"only_in_layouts",
                     m_drawing,
                     {},
                     name,
                     quoted(name) + " is used only in layouts (" + references(count) +
                         "), which the count leaves out; --layouts counts them",
                     count,
                     {},
                     {}});
            }
        }
    }

    void pricesWithoutBlock(const std::vector<PriceListLine>& lines) {
        BlockNamesCont names;
        names.Load();
        names.Sort();
        for (const auto& line : lines) {
            if (line.kind != PriceListLineKind::Row) continue;
            if (BlockNamesContSort().Find(blname{line.row.name, 0}, names.Names()) >= 0) continue;
            add({"not_in_drawing",
                 m_prices,
                 line.line,
                 line.row.name,
                 quoted(line.row.name) + " has a price, but the drawing defines no such block",
                 {},
                 {},
                 {}});
        }
    }

    void namesListedTwice(const std::vector<PriceListLine>& lines) {
        std::map<std::wstring, const PriceListLine*> winners;  // the last row of each name wins
        for (const auto& line : lines) {
            if (line.kind == PriceListLineKind::Row) winners[keyOf(line.row.name)] = &line;
        }
        for (const auto& line : lines) {
            if (line.kind != PriceListLineKind::Row) continue;
            const PriceListLine* winner = winners[keyOf(line.row.name)];
            if (winner == &line) continue;
            std::string message =
                quoted(line.row.name) + " is listed again on line " + std::to_string(winner->line);
            if (winner->row.name != line.row.name) message += " as " + quoted(winner->row.name);
            add({"listed_twice",
                 m_prices,
                 line.line,
                 line.row.name,
                 message + "; line " + std::to_string(winner->line) + " wins",
                 {},
                 winner->line,
                 {}});
        }
    }

    void pricesThatAreNoNumbers(const std::vector<PriceListLine>& lines) {
        for (const auto& line : lines) {
            if (line.kind != PriceListLineKind::Row || isPlainNumber(line.row.price)) continue;
            add({"not_a_number",
                 m_prices,
                 line.line,
                 line.row.name,
                 "the price " + quoted(line.row.price) + " of " + quoted(line.row.name) +
                     " is not a number; it counts as " +
                     EncodeText(FormatMoney(WToF(line.row.price)), TextFormat{}),
                 {},
                 {},
                 line.row.price});
        }
    }

    void listEncoding(const TextFileContent& list) {
        if (const auto note = listEncodingNote(list))
            add({"not_utf8", m_prices, note->line, {}, note->message, {}, {}, {}});
    }

    void moneyThatOverflows(const DrawingTally& tally, const std::vector<PriceListLine>& lines) {
        std::map<std::wstring, std::int64_t> quantities;
        for (const auto& block : tally.blocks)
            quantities[moneyKeyOf(block.name)] += block.references;
        for (const MoneyOverflow& overflow : findMoneyOverflows(lines, quantities)) {
            add({overflow.kind,
                 m_prices,
                 overflow.line,
                 overflow.name.empty() ? std::nullopt : std::optional(overflow.name),
                 overflow.message,
                 {},
                 {},
                 {}});
        }
    }

    void skippedLines(const std::vector<PriceListLine>& lines) {
        std::set<std::size_t> longLines;
        for (const auto& line : lines) {
            if (line.piece && longLines.insert(line.line).second)
                add({"long_line",
                     m_prices,
                     line.line,
                     {},
                     "longer than 999 characters: read as several lines",
                     {},
                     {},
                     {}});
            if (line.moreFields)
                add({"fields_ignored",
                     m_prices,
                     line.line,
                     line.row.name,
                     "the text after the third \"|\" is not read",
                     {},
                     {},
                     {}});
            if (const auto reason = skipReason(line))
                add({"skipped_line", m_prices, line.line, {}, *reason, {}, {}, {}});
        }
    }

    void unlinkedVariants(const DrawingTally& tally) {
        for (const auto& block : tally.blocks) {
            if (!block.unlinked) continue;
            add({"unresolved_dynamic_block",
                 m_drawing,
                 {},
                 block.name,
                 quoted(block.name) + " (" + references(block.references) +
                     ") has no link to its dynamic block",
                 block.references,
                 {},
                 {}});
        }
        for (const auto& cycle : tally.cycles)
            add({"nesting_cycle",
                 m_drawing,
                 {},
                 {},
                 "blocks nest in a cycle (" + EncodeText(cycle, TextFormat{}) + ")",
                 {},
                 {},
                 {}});
    }

    void tablesOutOfDate(const DrawingTables& tables) {
        for (const PriceTableCheck& check : tables.checks) {
            const char* kind = check.state == TableState::OutOfDate     ? "table_out_of_date"
                               : check.state == TableState::ListMissing ? "table_list_missing"
                               : check.state == TableState::NotCounted  ? "table_not_counted"
                                                                        : nullptr;
            if (kind != nullptr)
                add({kind,
                     m_drawing,
                     {},
                     check.name,
                     consoleText(DescribeTableCheck(check)),
                     {},
                     {},
                     {}});
        }
    }

    const std::vector<Finding>& findings() const { return m_findings; }

private:
    static std::string references(std::int64_t count) {
        return std::to_string(count) + (count == 1 ? " reference" : " references");
    }

    static std::optional<std::string> skipReason(const PriceListLine& line) {
        switch (line.kind) {
            case PriceListLineKind::Row:
                return std::nullopt;
            case PriceListLineKind::Empty:
                return "an empty line, skipped";
            case PriceListLineKind::NoName:
                return "no block name, line skipped";
            case PriceListLineKind::NoPrice:
                return "no price for " + quoted(line.row.name) + ", line skipped";
            case PriceListLineKind::Unread:
                return std::string("the last line has no line break and is not read");
        }
        return std::nullopt;
    }

    void add(Finding finding) { m_findings.push_back(std::move(finding)); }

    std::string m_drawing;
    std::string m_prices;
    std::vector<Finding> m_findings;
};

std::string location(const Finding& finding) {
    return finding.line ? finding.file + ":" + std::to_string(*finding.line) : finding.file;
}

void printText(const std::vector<Finding>& findings, const DrawingTables& tables) {
    for (const auto& finding : findings)
        writeStandardOutput(location(finding) + ": " + finding.message + "\n");
    if (const std::string unknown = sourceUnknownLine(tables); !unknown.empty())
        writeStandardOutput(unknown + "\n");
}

void printJson(const std::string& drawing, const std::optional<std::string>& prices,
               const std::vector<Finding>& findings, const DrawingTables& tables) {
    JsonWriter json;
    json.beginObject();
    json.key("drawing");
    json.value(std::wstring_view(WidePath(drawing)));
    json.key("prices");
    if (prices) {
        json.value(std::wstring_view(WidePath(*prices)));
    } else {
        json.null();
    }
    json.key("findings");
    json.beginArray();
    for (const auto& finding : findings) {
        json.beginObject();
        json.key("kind");
        json.value(std::string_view(finding.kind));
        json.key("file");
        json.value(std::wstring_view(WidePath(finding.file)));
        json.key("line");
        if (finding.line) {
            json.value(static_cast<std::int64_t>(*finding.line));
        } else {
            json.null();
        }
        if (finding.block) {
            json.key("block");
            json.value(std::wstring_view(*finding.block));
        }
        if (finding.references) {
            json.key("references");
            json.value(*finding.references);
        }
        if (finding.winningLine) {
            json.key("winning_line");
            json.value(static_cast<std::int64_t>(*finding.winningLine));
        }
        if (finding.price) {
            json.key("price");
            json.value(std::wstring_view(*finding.price));
        }
        json.key("message");
        json.value(std::wstring_view(WidePath(location(finding) + ": " + finding.message)));
        json.endObject();
    }
    json.endArray();
    writeTablesJson(json, {tables});
    json.endObject();
    writeStandardOutput(json.text());
}

// The price list as check reads it; null after the message when it cannot be.
struct CheckedList {
    TextFileContent content;
    std::vector<PriceListLine> lines;
};

std::optional<CheckedList> readList(const ParsedArguments& args, const std::string& prices,
                                    int& status) {
    status = kExitFailure;
    if (const std::string reason = unreadableReason(prices); !reason.empty())
        return fail(prices, reason), std::nullopt;
    if (const auto encoding = useListEncoding(args.value("--list-encoding"), prices))
        return status = *encoding, std::nullopt;
    auto list = ReadTextFile(WidePath(prices));
    if (!list) return fail(prices, "cannot be read"), std::nullopt;
    std::vector<PriceListLine> lines = ScanPriceList(list->text);
    return CheckedList{std::move(*list), std::move(lines)};
}

// What the list and the drawing's counts have to say together; false after the message when
// the drawing cannot be counted.
bool checkList(const ParsedArguments& args, const std::string& drawing, const CheckedList& list,
               const DxfDocument& document, Checker& checker) {
    TallyOptions options;
    options.nested = args.has("--nested");
    options.recordNames = args.has("--record-names");
    options.arraysAsOne = args.has("--arrays-as-one");
    options.leaveOut = [&document](AcDbObjectId block) { return IsPriceTable(document, block); };
    // Layouts are counted apart either way: to count them, or to tell what the count leaves out.
    auto spaces = tallySpaces(document, drawing, options);
    if (!spaces.isOk()) {
        std::fprintf(stderr, "%s\n", spaces.errorString().c_str());
        return false;
    }
    const bool layouts = args.has("--layouts");
    const DrawingTally tally =
        layouts ? mergeTallies(spaces.value()) : std::move(spaces.value().front().tally);
    const std::vector<PriceListLine>& lines = list.lines;
    checker.unpricedBlocks(tally, lines);
    if (!layouts) checker.pricedOnlyInLayouts(tally, spaces.value(), lines);
    checker.pricesWithoutBlock(lines);
    checker.namesListedTwice(lines);
    checker.pricesThatAreNoNumbers(lines);
    checker.moneyThatOverflows(tally, lines);
    checker.listEncoding(list.content);
    checker.skippedLines(lines);
    checker.unlinkedVariants(tally);
    return true;
}

}  // namespace

int runCheckCommand(const std::vector<std::string>& arguments) {
    const ParseResult parsed = parseArguments(arguments, kOptions);
    if (!parsed.arguments) return usageError(parsed.error);
    const ParsedArguments& args = *parsed.arguments;
    if (args.positional.size() != 1) return usageError("check takes one drawing");
    const std::string drawing = args.positional.front();
    const std::optional<std::string> prices = args.value("--prices");
    if (!prices && args.has("--list-encoding"))
        return usageError("--list-encoding goes with --prices");
    // The list is read before the drawing: a list that cannot be read ends the check at once.
    std::optional<CheckedList> list;
    if (prices) {
        int status = kExitOk;
        list = readList(args, *prices, status);
        if (!list) return status;
    }

    auto session = DrawingSession::open(drawing, readingAsked(args));
    if (!session) return kExitFailure;
    Checker checker(drawing, prices.value_or(""));
    if (list && !checkList(args, drawing, *list, session->document(), checker)) return kExitFailure;
    const DrawingTables tables = checkDrawingTables(drawing, session->document(),
                                                    prices ? WidePath(*prices) : std::wstring());
    checker.tablesOutOfDate(tables);
    if (args.has("--json")) {
        printJson(drawing, prices, checker.findings(), tables);
    } else {
        printText(checker.findings(), tables);
    }
    return checker.findings().empty() ? kExitOk : kExitFound;
}
