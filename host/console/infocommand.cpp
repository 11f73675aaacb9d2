// The `info` command of the console front end.
#include "host/console/infocommand.h"

#include <cstdio>
#include <map>

#include "host/console/commandline.h"
#include "host/console/drawingsession.h"
#include "host/console/jsonwriter.h"
#include "host/console/messages.h"
#include "host/console/standardoutput.h"
#include "text/CaseRules.h"
#include "text/TextFile.h"

namespace {

const std::vector<OptionSpec> kOptions{{"--json", OptionSpec::Value::None},
                                       {"--recover", OptionSpec::Value::None}};

struct SpaceFigures {
    std::size_t entities = 0;
    std::size_t references = 0;
    std::map<std::wstring, std::size_t> byName;  // lower-cased block name, as first met
};

// Names that differ only in case are one name (by their folded key), shown lower-cased.
SpaceFigures figuresOf(const DxfDocument& document, DxfSpace space, std::size_t entities) {
    SpaceFigures figures{entities, 0, {}};
    std::map<std::wstring, std::wstring> shown;  // folded name -> lower-cased name
    for (const DxfNameCount& name : document.referenceCountsByName(space)) {
        const auto count = static_cast<std::size_t>(name.references);
        figures.references += count;
        const std::wstring lower = MakeLower(document.decodeText(name.nameBytes));
        const auto [entry, isNew] = shown.try_emplace(FoldCase(lower), lower);
        figures.byName[entry->second] += count;
    }
    return figures;
}

void writeSpace(JsonWriter& json, const char* name, const SpaceFigures& figures) {
    json.key(name);
    json.beginObject();
    json.key("entities");
    json.value(static_cast<std::int64_t>(figures.entities));
    json.key("inserts");
    json.beginObject();
    json.key("total");
    json.value(static_cast<std::int64_t>(figures.references));
    json.key("by_name");
    json.beginObject();
    for (const auto& [block, count] : figures.byName) {
        json.key(EncodeUtf8(block));
        json.value(static_cast<std::int64_t>(count));
    }
    json.endObject();
    json.endObject();
    json.endObject();
}

void writeJson(const std::string& path, const DxfDocument& document, const DxfFacts& facts,
               const SpaceFigures& model, const SpaceFigures& paper) {
    JsonWriter json;
    json.beginObject();
    json.key("file");
    json.value(std::string_view(path));
    json.key("format");
    json.value(std::string_view(document.isBinary() ? "binary" : "ascii"));
    for (const auto& [key, text] :
         {std::pair{"acadver", &facts.version}, std::pair{"dwgcodepage", &facts.codePage},
          std::pair{"handseed", &facts.handleSeed}}) {
        json.key(key);
        if (text->empty()) {
            json.null();
        } else {
            json.value(std::string_view(*text));
        }
    }
    json.key("encoding");
    json.value(std::string_view(facts.encoding));
    writeSpace(json, "modelspace", model);
    writeSpace(json, "paperspace", paper);
    json.endObject();
    writeStandardOutput(json.text());
}

std::string orNone(const std::string& text) { return text.empty() ? "(none)" : text; }

void writeText(const std::string& path, const DxfDocument& document, const DxfFacts& facts,
               const SpaceFigures& model, const SpaceFigures& paper) {
    printStandardOutput("%s\n", path.c_str());
    printStandardOutput("  version      %s, %s\n", orNone(facts.version).c_str(),
                        document.isBinary() ? "binary" : "ascii");
    printStandardOutput("  code page    %s, read as %s\n", orNone(facts.codePage).c_str(),
                        facts.encoding.c_str());
    printStandardOutput("  handle seed  %s\n", orNone(facts.handleSeed).c_str());
    for (const auto& [name, figures] :
         {std::pair{"model space", &model}, std::pair{"paper space", &paper}}) {
        printStandardOutput("  %-12s %zu entities, %zu references\n", name, figures->entities,
                            figures->references);
        for (const auto& [block, count] : figures->byName)
            printStandardOutput("    %-30s %6zu\n", EncodeText(block, TextFormat{}).c_str(), count);
    }
}

}  // namespace

int runInfoCommand(const std::vector<std::string>& arguments) {
    const ParseResult parsed = parseArguments(arguments, kOptions);
    if (!parsed.arguments) return usageError(parsed.error);
    if (parsed.arguments->positional.size() != 1) return usageError("info takes one drawing");
    const std::string& path = parsed.arguments->positional.front();
    auto session = DrawingSession::open(path, readingAsked(*parsed.arguments));
    if (!session) return kExitFailure;
    const DxfDocument& document = session->document();
    const DxfFacts facts = document.facts();
    const SpaceFigures model = figuresOf(document, DxfSpace::Model, facts.modelEntities);
    const SpaceFigures paper = figuresOf(document, DxfSpace::PaperLayouts, facts.paperEntities);
    if (parsed.arguments->has("--json")) {
        writeJson(path, document, facts, model, paper);
    } else {
        writeText(path, document, facts, model, paper);
    }
    return kExitOk;
}
