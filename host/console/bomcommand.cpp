// The `bom` command of the console front end.
#include "host/console/bomcommand.h"

#include <cstdio>
#include <filesystem>
#include <map>
#include <optional>

#include "bom/BomCalculation.h"
#include "bom/BomRows.h"
#include "bom/PriceTable.h"
#include "bom/Report.h"
#include "bom/ShownMoney.h"
#include "bom/TableSource.h"
#include "frame/TablePlacement.h"
#include "host/console/billofmaterials.h"
#include "host/console/bomexport.h"
#include "host/console/commandline.h"
#include "host/console/consoleeditor.h"
#include "host/console/drawingbatch.h"
#include "host/console/drawingsession.h"
#include "host/console/jsonwriter.h"
#include "host/console/listencoding.h"
#include "host/console/messages.h"
#include "host/console/moneyoverflow.h"
#include "host/console/outputguard.h"
#include "host/console/pricetables.h"
#include "host/console/standardoutput.h"
#include "host/console/xlsxexport.h"
#include "pricelist/PriceListFile.h"
#include "text/TextFile.h"

namespace {

const std::vector<OptionSpec> kOptions{
    {"--prices", OptionSpec::Value::Required},    {"--list-encoding", OptionSpec::Value::Required},
    {"--report", OptionSpec::Value::Optional},    {"--table-at", OptionSpec::Value::Required},
    {"--scale", OptionSpec::Value::Required},     {"--table-text", OptionSpec::Value::None},
    {"--hide-prices", OptionSpec::Value::None},   {"--only-priced", OptionSpec::Value::None},
    {"--window", OptionSpec::Value::Required},    {"--layer", OptionSpec::Value::Required, true},
    {"-o", OptionSpec::Value::Required},          {"--json", OptionSpec::Value::None},
    {"--csv", OptionSpec::Value::Required},       {"--xlsx", OptionSpec::Value::Required},
    {"--nested", OptionSpec::Value::None},        {"--record-names", OptionSpec::Value::None},
    {"--jobs", OptionSpec::Value::Required},      {"--recover", OptionSpec::Value::None},
    {"--arrays-as-one", OptionSpec::Value::None}, {"--layouts", OptionSpec::Value::None}};

struct BomRequest {
    std::vector<std::string> drawings;
    std::string prices;
    std::optional<std::string> listEncoding;  // the list's code page, when it is named
    std::optional<std::string> report;        // "" for the proposed name
    std::optional<ads_point> tableCorner;
    TableForm tableForm = TableForm::Attributes;
    double scale = 1.0;
    bool showPrices = true;
    bool onlyPriced = false;
    TallyOptions tally;
    std::string output;
    bool json = false;
    std::optional<std::string> csv;
    std::optional<std::string> xlsx;
    unsigned jobs = 1;
    DxfReading reading = DxfReading::Strict;
    bool layouts = false;
};

// The table's options; a usage message when they do not make sense.
std::optional<std::string> readTableOptions(const ParsedArguments& args, BomRequest& request) {
    if (const auto corner = args.value("--table-at")) {
        const auto xy = parseNumbers(*corner, 2);
        if (!xy) return "--table-at wants X,Y, not \"" + *corner + "\"";
        if (request.drawings.size() != 1) return "--table-at takes one drawing";
        request.tableCorner = ads_point{(*xy)[0], (*xy)[1], 0.0};
    }
    if (const auto scale = args.value("--scale")) {
        const auto s = parseNumbers(*scale, 1);
        if (!request.tableCorner) return "--scale goes with --table-at";
        if (!s || (*s)[0] <= 0.0) return "--scale wants a number above 0, not \"" + *scale + "\"";
        request.scale = (*s)[0];
    }
    request.output = args.value("-o").value_or(proposedDrawingOutput(request.drawings.front()));
    if (args.has("-o") && !request.tableCorner) return "-o goes with --table-at";
    if (args.has("--table-text")) {
        if (!request.tableCorner) return "--table-text goes with --table-at";
        request.tableForm = TableForm::Texts;
    }
    return std::nullopt;
}

// What is counted and how; a usage message when it does not make sense.
std::optional<std::string> readCountOptions(const ParsedArguments& args, BomRequest& request) {
    if (const auto window = args.value("--window")) {
        const auto w = parseNumbers(*window, 4);
        if (!w) return "--window wants X1,Y1,X2,Y2, not \"" + *window + "\"";
        request.tally.filter.window = SelectionWindow{(*w)[0], (*w)[1], (*w)[2], (*w)[3]};
    }
    for (const auto& layer : args.values("--layer"))
        request.tally.filter.layers.push_back(WidePath(layer));
    request.tally.nested = args.has("--nested");
    request.tally.recordNames = args.has("--record-names");
    request.tally.arraysAsOne = args.has("--arrays-as-one");
    request.jobs = defaultJobs();
    request.reading = readingAsked(args);
    request.layouts = args.has("--layouts");
    if (const auto jobs = args.value("--jobs")) {
        const auto n = parseNumbers(*jobs, 1);
        if (!n || (*n)[0] < 1 || (*n)[0] > 256 || (*n)[0] != static_cast<unsigned>((*n)[0]))
            return "--jobs wants a whole number from 1 to 256, not \"" + *jobs + "\"";
        request.jobs = static_cast<unsigned>((*n)[0]);
    }
    return std::nullopt;
}

// Null after the usage message when the arguments do not make a request.
std::optional<BomRequest> readRequest(const std::vector<std::string>& arguments) {
    const ParseResult parsed = parseArguments(arguments, kOptions);
    if (!parsed.arguments) return usageError(parsed.error), std::nullopt;
    const ParsedArguments& args = *parsed.arguments;
    if (args.positional.empty()) return usageError("bom takes one or more drawings"), std::nullopt;
    if (!args.has("--prices")) return usageError("bom needs --prices LIST"), std::nullopt;

    BomRequest request;
    request.drawings = args.positional;
    request.prices = *args.value("--prices");
    request.listEncoding = args.value("--list-encoding");
    if (args.has("--report")) request.report = args.value("--report").value_or("");
    if (request.report && request.report->empty() && request.drawings.size() > 1)
        return usageError("--report needs a FILE with several drawings"), std::nullopt;
    for (const auto& read : {readTableOptions, readCountOptions}) {
        if (const auto error = read(args, request)) return usageError(*error), std::nullopt;
    }
    request.showPrices = !args.has("--hide-prices");
    request.onlyPriced = args.has("--only-priced");
    request.json = args.has("--json");
    request.csv = args.value("--csv");
    request.xlsx = args.value("--xlsx");
    if ((args.has("--csv") && !request.csv) || (args.has("--xlsx") && !request.xlsx))
        return usageError("--csv and --xlsx want a FILE"), std::nullopt;
    return request;
}

// A figure as shown, as a JSON number; null for one that is none (an infinite price).
void moneyValue(JsonWriter& json, const std::wstring& figure) {
    if (IsShownMoney(figure)) {
        json.number(EncodeUtf8(figure));
    } else {
        json.null();
    }
}

void writeJsonRow(JsonWriter& json, const BomLine& line) {
    json.beginObject();
    json.key("name");
    json.value(std::wstring_view(line.cells[kNameColumn]));
    json.key("price");
    moneyValue(json, line.cells[kPriceColumn]);
    json.key("quantity");
    json.number(EncodeUtf8(line.cells[kQuantityColumn]));
    json.key("quantities");
    json.beginArray();
    for (const auto quantity : line.quantities) json.value(quantity);
    json.endArray();
    if (!line.spaceQuantities.empty()) {
        json.key("space_quantities");
        json.beginArray();
        for (const auto quantity : line.spaceQuantities) json.value(quantity);
        json.endArray();
    }
    json.key("description");
    json.value(std::wstring_view(line.cells[kDescriptionColumn]));
    json.key("total");
    moneyValue(json, line.cells[kTotalColumn]);
    if (!line.variants.empty()) {
        json.key("resolved_from");
        json.beginArray();
        for (const auto& variant : line.variants) json.value(std::wstring_view(variant));
        json.endArray();
    }
    if (line.unlinked) {
        json.key("unresolved");
        json.value(true);
    }
    if (line.fromArrays) {
        json.key("from_arrays");
        json.value(true);
    }
    json.endObject();
}

void printJson(const BillOfMaterials& bill, const std::vector<DrawingTables>& tables) {
    JsonWriter json;
    json.beginObject();
    json.key("drawings");
    json.beginArray();
    for (const auto& drawing : bill.drawings) json.value(std::wstring_view(WidePath(drawing)));
    json.endArray();
    if (!bill.spaces.empty()) {
        json.key("spaces");
        json.beginArray();
        for (const BillSpace& space : bill.spaces) {
            json.beginObject();
            json.key("drawing");
            json.value(std::wstring_view(WidePath(bill.drawings[space.drawing])));
            json.key("space");
            json.value(std::wstring_view(space.name));
            json.endObject();
        }
        json.endArray();
    }
    json.key("rows");
    json.beginArray();
    for (const auto& line : bill.lines) writeJsonRow(json, line);
    json.endArray();
    json.key("total");
    moneyValue(json, bill.total);
    writeTablesJson(json, tables, &bill.shown.rows);
    json.endObject();
    writeStandardOutput(json.text());
}

void printReport(const DisplayedResults& shown, bool showPrices, const TextFormat& format) {
    for (const auto& line : ReportLines(shown.rows, showPrices))
        writeStandardOutput(EncodeText(line, format) + "\n");
}

// What the user should know about how a drawing was counted: variants without a link, cycles.
// A note on a list that is not UTF-8, and a warning a price or a total that overflows; the figures
// themselves stay as the module has them.
void warnAboutTheList(const std::string& prices, const std::vector<CountedDrawing>& drawings) {
    const auto list = ReadTextFile(WidePath(prices));
    if (!list) return;
    if (const auto note = listEncodingNote(*list))
        std::fprintf(stderr, "%s:%zu: %s\n", prices.c_str(), note->line, note->message.c_str());
    std::map<std::wstring, std::int64_t> quantities;
    for (const auto& drawing : drawings) {
        for (const auto& block : drawing.tally.blocks)
            quantities[moneyKeyOf(block.name)] += block.references;
    }
    for (const MoneyOverflow& overflow :
         findMoneyOverflows(ScanPriceList(list->text), quantities)) {
        const std::string where =
            overflow.line ? prices + ":" + std::to_string(*overflow.line) : prices;
        std::fprintf(stderr, "%s: %s\n", where.c_str(), overflow.message.c_str());
    }
}

void printNotes(const CountedDrawing& drawing) {
    const DrawingTally& tally = drawing.tally;
    if (tally.unlinkedReferences > 0) {
        std::size_t names = 0;
        for (const auto& block : tally.blocks) names += block.unlinked ? 1 : 0;
        std::fprintf(stderr,
                     "%s: %lld reference%s to %zu anonymous \"*U\" block%s without a link to a "
                     "dynamic block, counted under the anonymous name%s\n",
                     drawing.path.c_str(), static_cast<long long>(tally.unlinkedReferences),
                     tally.unlinkedReferences == 1 ? "" : "s", names, names == 1 ? "" : "s",
                     names == 1 ? "" : "s");
    }
    for (const auto& cycle : tally.cycles)
        std::fprintf(stderr, "%s: blocks nest in a cycle (%s); it is followed once\n",
                     drawing.path.c_str(), EncodeText(cycle, TextFormat{}).c_str());
}

// What the table is counted from, for it to be counted again.
TableSource tableSource(const BomRequest& request) {
    TableSource source;
    source.priceList = WidePath(request.prices);
    const SelectionFilter& filter = request.tally.filter;
    source.selection = filter.window || !filter.layers.empty() ? TableSelection::Filtered
                                                               : TableSelection::ModelSpace;
    source.window = filter.window;
    source.layers = filter.layers;
    source.showPrices = request.showPrices;
    source.scale = 1.0;
    source.nested = request.tally.nested;
    source.recordNames = request.tally.recordNames;
    source.arraysAsOne = request.tally.arraysAsOne;
    source.layouts = request.layouts;
    source.textForm = request.tableForm == TableForm::Texts;
    source.onlyPriced = request.onlyPriced;
    return source;
}

// The price tables the drawing holds already, by name: a new one comes after them.
std::wstring priceTablesOf(const AcDbDatabase& database) {
    std::wstring names;
    for (const AcDbObjectId block : database.blockTableRecordIds()) {
        std::wstring name;
        if (!IsPriceTable(database, block) ||
            database.getBlockTableRecordName(block, name) != Acad::eOk)
            continue;
        names += (names.empty() ? L"" : L", ") + name;
    }
    return names;
}

// Draws the table block into the drawing, inserts it at the corner and saves the drawing.
int drawTable(DrawingSession& session, const BomRequest& request, const DisplayedResults& shown) {
    EnsureTableTextStyle();
    const std::wstring earlier = priceTablesOf(session.document());
    std::wstring blockName;
    if (!NextTableBlockName(blockName)) return kExitFailure;
    if (!earlier.empty())
        std::fprintf(stderr,
                     "%s: holds the price table%s %s already, which %s not counted; the new table "
                     "is %s\n",
                     session.path().c_str(), earlier.find(L',') == std::wstring::npos ? "" : "s",
                     NativePath(earlier).c_str(),
                     earlier.find(L',') == std::wstring::npos ? "is" : "are",
                     NativePath(blockName).c_str());
    PriceTableExtent extent;
    if (!DrawPriceTable(shown.rows, request.showPrices, blockName.c_str(), kTableTextStyle, 1.0,
                        extent, request.tableForm))
        return kExitFailure;
    if (!RecordTableSource(blockName, tableSource(request), shown.rows))
        return fail(session.path(), "the table's source could not be recorded");
    if (InsertTableBlock(blockName.c_str(), *request.tableCorner, request.scale) != RTNORM)
        return fail(session.path(), "the table block could not be inserted");
    const DxfStatus saved = session.document().saveAs(request.output);
    if (!saved.isOk()) {
        std::fprintf(stderr, "%s\n", saved.errorString().c_str());
        return kExitFailure;
    }
    std::fprintf(stderr, "%s: table %s inserted\n", request.output.c_str(),
                 NativePath(blockName).c_str());
    return kExitOk;
}

// Where the report goes: the file named, or beside the list as the module proposes it.
std::string reportPath(const BomRequest& request) {
    if (!request.report->empty()) return *request.report;
    const std::wstring drawingName =
        WidePath(std::filesystem::path(request.drawings.front()).filename().string());
    return NativePath(ProposeReportName(WidePath(request.prices), drawingName));
}

// Every file the request would write, against every file it reads and against each other.
std::optional<std::string> outputClash(const BomRequest& request) {
    OutputGuard guard;
    for (const auto& drawing : request.drawings) guard.addDrawing(drawing);
    guard.addPriceList(request.prices);
    if (request.tableCorner) guard.addDrawingOutput("-o", request.output);
    if (request.report) guard.addOutput("--report", reportPath(request));
    if (request.csv) guard.addOutput("--csv", *request.csv);
    if (request.xlsx) guard.addOutput("--xlsx", *request.xlsx);
    return guard.firstClash();
}

// The module's alert when the report cannot be written, with the system's reason.
int writeReport(const BomRequest& request, const DisplayedResults& shown,
                const TextFormat& format) {
    const std::string path = reportPath(request);
    const FileStatus written =
        WriteTextFile(WidePath(path), ReportText(shown.rows, request.showPrices), format);
    if (written.isOk()) return kExitOk;
    std::fprintf(stderr, "%s: %s\n", NativePath(FileNotOpenedMessage(WidePath(path))).c_str(),
                 systemReason(written.systemError()).c_str());
    return kExitFailure;
}

int reportStatus(const DxfStatus& status) {
    if (status.isOk()) return kExitOk;
    std::fprintf(stderr, "%s\n", status.errorString().c_str());
    return kExitFailure;
}

// The files asked for, one after the other; the first that cannot be written ends the run.
int writeFiles(const BomRequest& request, std::vector<CountedDrawing>& drawings,
               const BillOfMaterials& bill, const TextFormat& format) {
    if (request.tableCorner) {
        auto session =
            DrawingSession::adopt(drawings.front().path, std::move(drawings.front().document));
        if (const int status = drawTable(*session, request, bill.shown); status != kExitOk)
            return status;
    }
    if (request.report) {
        if (const int status = writeReport(request, bill.shown, format); status != kExitOk)
            return status;
    }
    if (!request.csv && !request.xlsx) return kExitOk;
    const ExportTable table = exportTable(bill, request.showPrices);
    if (request.csv) {
        if (const int status = reportStatus(writeCsv(*request.csv, table)); status != kExitOk)
            return status;
    }
    if (request.xlsx) return reportStatus(writeXlsx(*request.xlsx, table));
    return kExitOk;
}

}  // namespace

int runBomCommand(const std::vector<std::string>& arguments) {
    const auto request = readRequest(arguments);
    if (!request) return kExitUsage;
    if (const auto clash = outputClash(*request)) return usageError(*clash);
    if (const std::string reason = unreadableReason(request->prices); !reason.empty())
        return fail(request->prices, reason);
    if (const auto status = useListEncoding(request->listEncoding, request->prices)) return *status;
    for (const auto& drawing : request->drawings) {
        if (const std::string reason = unreadableReason(drawing); !reason.empty())
            return fail(drawing, reason);
    }
    BatchOptions batch{
        request->tally, request->jobs,    request->tableCorner.has_value() || request->json,
        true,           request->reading, request->layouts};
    std::vector<CountedDrawing> drawings = countDrawings(request->drawings, batch);
    bool failed = false;
    for (const auto& drawing : drawings) {
        if (drawing.error.empty()) continue;
        std::fprintf(stderr, "%s\n", drawing.error.c_str());
        failed = true;
    }
    if (failed) return kExitFailure;

    ConsoleEditor editor(stderr);
    BomCalculation calculation;
    calculation.SetListOnlyPricedBlocks(request->onlyPriced);
    if (!calculation.LoadPriceList(WidePath(request->prices))) return kExitFailure;
    auto bill = countBillOfMaterials(calculation, drawings);
    if (!bill.isOk()) {
        std::fprintf(stderr, "%s\n", bill.errorString().c_str());
        return kExitFailure;
    }
    for (const auto& drawing : drawings) printNotes(drawing);
    warnAboutTheList(request->prices, drawings);
    // The tables the drawings held when they were read, before one is added.
    std::vector<DrawingTables> tables;
    if (request->json) {
        for (auto& drawing : drawings)
            tables.push_back(checkDrawingTables(drawing.path, *drawing.document));
    }

    // Files first: when one cannot be written, the error line is all the user gets.
    if (const int status =
            writeFiles(*request, drawings, bill.value(), calculation.PriceListFormat());
        status != kExitOk)
        return status;
    if (request->json) {
        printJson(bill.value(), tables);
    } else {
        printReport(bill.value().shown, request->showPrices, calculation.PriceListFormat());
    }
    return kExitOk;
}
