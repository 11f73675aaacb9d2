// The `refresh` command of the console front end.
#include "host/console/refreshcommand.h"

#include <cstdio>
#include <optional>

#include "host/console/commandline.h"
#include "host/console/drawingsession.h"
#include "host/console/messages.h"
#include "host/console/outputguard.h"
#include "host/console/pricetables.h"
#include "host/console/standardoutput.h"
#include "text/TextFile.h"

namespace {

const std::vector<OptionSpec> kOptions{{"--prices", OptionSpec::Value::Required},
                                       {"-o", OptionSpec::Value::Required},
                                       {"--recover", OptionSpec::Value::None}};

// The output against the lists the tables were counted from, which only the drawing names.
std::optional<std::string> outputOverAList(const std::string& output, const DrawingTables& tables) {
    OutputGuard guard;
    for (const PriceTableCheck& check : tables.checks) {
        if (!check.priceList.empty()) guard.addPriceList(NativePath(check.priceList));
    }
    guard.addDrawingOutput("-o", output);
    return guard.firstClash();
}

}  // namespace

int runRefreshCommand(const std::vector<std::string>& arguments) {
    const ParseResult parsed = parseArguments(arguments, kOptions);
    if (!parsed.arguments) return usageError(parsed.error);
    const ParsedArguments& args = *parsed.arguments;
    if (args.positional.size() != 1) return usageError("refresh takes one drawing");
    const std::string drawing = args.positional.front();
    const std::optional<std::string> prices = args.value("--prices");
    const std::string output = args.value("-o").value_or(proposedDrawingOutput(drawing));
    OutputGuard guard;
    guard.addDrawing(drawing);
    if (prices) guard.addPriceList(*prices);
    guard.addDrawingOutput("-o", output);
    if (const auto clash = guard.firstClash()) return usageError(*clash);
    if (prices) {
        if (const std::string reason = unreadableReason(*prices); !reason.empty())
            return fail(*prices, reason);
    }

    auto session = DrawingSession::open(drawing, readingAsked(args));
    if (!session) return kExitFailure;
    const DrawingTables tables = checkDrawingTables(drawing, session->document(),
                                                    prices ? WidePath(*prices) : std::wstring());
    if (const auto clash = outputOverAList(output, tables)) return usageError(*clash);

    int redrawn = 0;
    bool failed = false;
    for (const PriceTableCheck& check : tables.checks) {
        if (check.state == TableState::ListMissing || check.state == TableState::NotCounted) {
            std::fprintf(stderr, "%s: %s; left as it is\n", drawing.c_str(),
                         consoleText(DescribeTableCheck(check)).c_str());
            failed = true;
            continue;
        }
        if (check.state != TableState::OutOfDate) continue;
        if (RefreshPriceTable(check) != 1) return kExitFailure;
        writeStandardOutput(drawing + ": " + consoleText(check.name) +
                            " redrawn: " + consoleText(DescribeTableChanges(check)) + "\n");
        ++redrawn;
    }
    if (const std::string unknown = sourceUnknownLine(tables); !unknown.empty())
        writeStandardOutput(unknown + "; left as it is\n");
    const int status = failed ? kExitFailure : kExitOk;
    if (redrawn == 0) {
        std::fprintf(stderr, "%s: no table redrawn, nothing written\n", drawing.c_str());
        return status;
    }
    const DxfStatus saved = session->document().saveAs(output);
    if (!saved.isOk()) {
        std::fprintf(stderr, "%s\n", saved.errorString().c_str());
        return kExitFailure;
    }
    std::fprintf(stderr, "%s: %d table%s redrawn\n", output.c_str(), redrawn,
                 redrawn == 1 ? "" : "s");
    return status;
}
