// The `info` command of the console front end.
#include "host/console/infocommand.h"

#include <cstdio>
#include <map>

#include "host/console/commandline.h"
#include "host/console/drawingsession.h"
#include "host/console/jsonwriter.h"
#include "host/console/messages.h"
#include "inventory/WideText.h"
#include "pricelist/TextFile.h"

namespace {

const std::vector<OptionSpec> kOptions{{"--json", OptionSpec::Value::None}};

struct SpaceFigures {
    std::size_t references = 0;
    std::map<std::wstring, std::size_t> byName;  // lower-cased block name
};

SpaceFigures figuresOf(const DxfDocument& document, DxfSpace space) {
    SpaceFigures figures;
    for (const auto& reference : document.blockReferences(space)) {
        ++figures.references;
        ++figures.byName[MakeLower(std::wstring(reference.blockName))];
    }
    return figures;
}

void writeJson(const std::string& path, const DxfDocument& document, const SpaceFigures& model,
               const SpaceFigures& paper) {
    JsonWriter json;
    json.beginObject();
    json.key("file");
    json.value(std::string_view(path));
    json.key("acadver");
    json.value(document.version());
    json.key("format");
    json.value(std::string_view(document.isBinary() ? "binary" : "ascii"));
    for (const auto& [name, figures] : {std::pair{"modelspace", &model}, std::pair{"paperspace", &paper}}) {
        json.key(name);
        json.beginObject();
        json.key("inserts");
        json.beginObject();
        json.key("total");
        json.value(static_cast<std::int64_t>(figures->references));
        json.key("by_name");
        json.beginObject();
        for (const auto& [block, count] : figures->byName) {
            json.key(EncodeUtf8(block));
            json.value(static_cast<std::int64_t>(count));
        }
        json.endObject();
        json.endObject();
        json.endObject();
    }
    json.endObject();
    std::fputs(json.text().c_str(), stdout);
}

void writeText(const std::string& path, const DxfDocument& document, const SpaceFigures& model,
               const SpaceFigures& paper) {
    std::printf("%s\n  version     %s (%s)\n", path.c_str(), std::string(document.version()).c_str(),
                document.isBinary() ? "binary" : "ascii");
    for (const auto& [name, figures] : {std::pair{"model space", &model}, std::pair{"paper space", &paper}}) {
        std::printf("  %-11s %zu references\n", name, figures->references);
        for (const auto& [block, count] : figures->byName)
            std::printf("    %-30s %6zu\n", EncodeText(block, TextFormat{}).c_str(), count);
    }
}

}  // namespace

int runInfoCommand(const std::vector<std::string>& arguments) {
    const ParseResult parsed = parseArguments(arguments, kOptions);
    if (!parsed.arguments) return usageError(parsed.error);
    if (parsed.arguments->positional.size() != 1) return usageError("info takes one drawing");
    const std::string& path = parsed.arguments->positional.front();
    auto session = DrawingSession::open(path);
    if (!session) return kExitFailure;
    const SpaceFigures model = figuresOf(session->document(), DxfSpace::Model);
    const SpaceFigures paper = figuresOf(session->document(), DxfSpace::Paper);
    if (parsed.arguments->has("--json")) {
        writeJson(path, session->document(), model, paper);
    } else {
        writeText(path, session->document(), model, paper);
    }
    return kExitOk;
}
