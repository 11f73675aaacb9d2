// The `bom` command of the console front end.
#include "host/console/bomcommand.h"

#include <cstdio>
#include <filesystem>
#include <optional>

#include "bom/BomCalculation.h"
#include "bom/BomRows.h"
#include "bom/PriceTable.h"
#include "bom/Report.h"
#include "frame/TablePlacement.h"
#include "host/console/commandline.h"
#include "host/console/drawingsession.h"
#include "host/console/jsonwriter.h"
#include "host/console/messages.h"
#include "host/console/selection.h"
#include "text/TextFile.h"

namespace {

const std::vector<OptionSpec> kOptions{
    {"--prices", OptionSpec::Value::Required},     {"--report", OptionSpec::Value::Optional},
    {"--table-at", OptionSpec::Value::Required},   {"--scale", OptionSpec::Value::Required},
    {"--hide-prices", OptionSpec::Value::None},    {"--only-priced", OptionSpec::Value::None},
    {"--window", OptionSpec::Value::Required},     {"--layer", OptionSpec::Value::Required, true},
    {"-o", OptionSpec::Value::Required},           {"--json", OptionSpec::Value::None}};

struct BomRequest {
    std::string drawing;
    std::string prices;
    std::optional<std::string> report;  // "" for the proposed name
    std::optional<ads_point> tableCorner;
    double scale = 1.0;
    bool showPrices = true;
    bool onlyPriced = false;
    SelectionFilter filter;
    std::string output;
    bool json = false;
};

// The drawing's name with "-bom" before its extension, in the drawing's folder.
std::string defaultOutput(const std::string& drawing) {
    const std::filesystem::path path(drawing);
    return (path.parent_path() / (path.stem().string() + "-bom" + path.extension().string())).string();
}

// Null after the usage message when the arguments do not make a request.
std::optional<BomRequest> readRequest(const std::vector<std::string>& arguments, int& status) {
    status = kExitUsage;
    const ParseResult parsed = parseArguments(arguments, kOptions);
    if (!parsed.arguments) return usageError(parsed.error), std::nullopt;
    const ParsedArguments& args = *parsed.arguments;
    if (args.positional.size() != 1) return usageError("bom takes one drawing"), std::nullopt;
    if (!args.has("--prices")) return usageError("bom needs --prices LIST"), std::nullopt;

    BomRequest request;
    request.drawing = args.positional.front();
    request.prices = *args.value("--prices");
    if (args.has("--report")) request.report = args.value("--report").value_or("");
    if (const auto corner = args.value("--table-at")) {
        const auto xy = parseNumbers(*corner, 2);
        if (!xy) return usageError("--table-at wants X,Y, not \"" + *corner + "\""), std::nullopt;
        request.tableCorner = ads_point{(*xy)[0], (*xy)[1], 0.0};
    }
    if (const auto scale = args.value("--scale")) {
        const auto s = parseNumbers(*scale, 1);
        if (!request.tableCorner) return usageError("--scale goes with --table-at"), std::nullopt;
        if (!s || (*s)[0] <= 0.0)
            return usageError("--scale wants a number above 0, not \"" + *scale + "\""), std::nullopt;
        request.scale = (*s)[0];
    }
    if (const auto window = args.value("--window")) {
        const auto w = parseNumbers(*window, 4);
        if (!w) return usageError("--window wants X1,Y1,X2,Y2, not \"" + *window + "\""), std::nullopt;
        request.filter.window = SelectionWindow{(*w)[0], (*w)[1], (*w)[2], (*w)[3]};
    }
    for (const auto& layer : args.values("--layer")) request.filter.layers.push_back(WidePath(layer));
    request.showPrices = !args.has("--hide-prices");
    request.onlyPriced = args.has("--only-priced");
    request.json = args.has("--json");
    request.output = args.value("-o").value_or(defaultOutput(request.drawing));
    if (args.has("-o") && !request.tableCorner) return usageError("-o goes with --table-at"), std::nullopt;
    status = kExitOk;
    return request;
}

void printJson(const std::vector<ResultString>& results, const DisplayedResults& shown, bool onlyPriced) {
    JsonWriter json;
    json.beginObject();
    json.key("rows");
    json.beginArray();
    for (const auto& row : results) {
        if (!IsShown(row, onlyPriced)) continue;
        json.beginObject();
        json.key("name");
        json.value(std::wstring_view(row.name));
        json.key("price");
        json.value(row.price);
        json.key("quantity");
        json.value(static_cast<std::int64_t>(row.quantity));
        json.key("description");
        json.value(std::wstring_view(row.description));
        json.key("total");
        json.value(row.total);
        json.endObject();
    }
    json.endArray();
    json.key("total");
    json.value(shown.summary.total);
    json.endObject();
    std::fputs(json.text().c_str(), stdout);
}

void printReport(const DisplayedResults& shown, bool showPrices, const TextFormat& format) {
    for (const auto& line : ReportLines(shown.rows, showPrices))
        std::fputs((EncodeText(line, format) + "\n").c_str(), stdout);
}

// Draws the table block into the drawing, inserts it at the corner and saves the drawing.
int drawTable(DrawingSession& session, const BomRequest& request, const DisplayedResults& shown) {
    EnsureTableTextStyle();
    std::wstring blockName;
    if (!NextTableBlockName(blockName)) return kExitFailure;
    PriceTableExtent extent;
    if (!DrawPriceTable(shown.rows, request.showPrices, blockName.c_str(), kTableTextStyle, 1.0,
                        extent))
        return kExitFailure;
    if (InsertTableBlock(blockName.c_str(), *request.tableCorner, request.scale) != RTNORM)
        return fail(request.drawing, "the table block could not be inserted");
    const DxfStatus saved = session.document().saveAs(request.output);
    if (!saved.isOk()) {
        std::fprintf(stderr, "%s\n", saved.errorString().c_str());
        return kExitFailure;
    }
    std::fprintf(stderr, "%s: table %s inserted\n", request.output.c_str(),
                 NativePath(blockName).c_str());
    return kExitOk;
}

}  // namespace

int runBomCommand(const std::vector<std::string>& arguments) {
    int status = kExitOk;
    const auto request = readRequest(arguments, status);
    if (!request) return status;
    if (const std::string reason = unreadableReason(request->prices); !reason.empty())
        return fail(request->prices, reason);
    auto session = DrawingSession::open(request->drawing);
    if (!session) return kExitFailure;

    BomCalculation calculation;
    calculation.SetListOnlyPricedBlocks(request->onlyPriced);
    const std::wstring pricesPath = WidePath(request->prices);
    if (!calculation.LoadPriceList(pricesPath)) return kExitFailure;
    session->editor().setSelection(
        selectReferences(session->document().blockReferences(DxfSpace::Model), request->filter));
    if (!calculation.CountSelection()) return kExitFailure;
    const DisplayedResults shown = FillFromResults(calculation.Results(), request->onlyPriced);

    // Files first: when one cannot be written, the error line is all the user gets.
    if (request->tableCorner) {
        if (const int status = drawTable(*session, *request, shown); status != kExitOk) return status;
    }
    if (request->report) {
        const std::wstring drawingName =
            WidePath(std::filesystem::path(request->drawing).filename().string());
        const std::wstring reportPath = request->report->empty()
                                            ? ProposeReportName(pricesPath, drawingName)
                                            : WidePath(*request->report);
        if (!WriteReport(shown.rows, request->showPrices, reportPath, calculation.PriceListFormat()))
            return kExitFailure;
    }
    if (request->json) {
        printJson(calculation.Results(), shown, request->onlyPriced);
    } else {
        printReport(shown, request->showPrices, calculation.PriceListFormat());
    }
    return kExitOk;
}
