// Argument parsing for the console front end.
#include "host/console/commandline.h"

#include <algorithm>
#include <charconv>
#include <cmath>

std::optional<std::string> ParsedArguments::value(const std::string& name) const {
    const auto it = options.find(name);
    if (it == options.end() || it->second.empty()) return std::nullopt;
    return it->second.back();
}

std::vector<std::string> ParsedArguments::values(const std::string& name) const {
    const auto it = options.find(name);
    return it == options.end() ? std::vector<std::string>{} : it->second;
}

namespace {

const OptionSpec* findSpec(const std::vector<OptionSpec>& options, const std::string& name) {
    const auto it = std::find_if(options.begin(), options.end(),
                                 [&](const OptionSpec& option) { return option.name == name; });
    return it == options.end() ? nullptr : &*it;
}

}  // namespace

ParseResult parseArguments(const std::vector<std::string>& args,
                           const std::vector<OptionSpec>& options) {
    ParsedArguments parsed;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg.size() < 2 || arg[0] != '-') {
            parsed.positional.push_back(arg);
            continue;
        }
        const std::size_t equals = arg.find('=');
        const std::string name = arg.substr(0, equals);
        const OptionSpec* option = findSpec(options, name);
        if (option == nullptr) return {std::nullopt, "unknown option " + name};
        if (parsed.has(name) && !option->repeatable) return {std::nullopt, name + " given twice"};

        std::string value;
        if (equals != std::string::npos) {
            if (option->value == OptionSpec::Value::None)
                return {std::nullopt, name + " takes no value"};
            value = arg.substr(equals + 1);
        } else if (option->value == OptionSpec::Value::Required) {
            if (i + 1 >= args.size()) return {std::nullopt, name + " needs a value"};
            value = args[++i];
        } else if (option->value == OptionSpec::Value::Optional && i + 1 < args.size() &&
                   !args[i + 1].starts_with("-")) {
            value = args[++i];
        }
        parsed.options[name].push_back(value);
    }
    return {parsed, {}};
}

std::optional<std::vector<double>> parseNumbers(const std::string& text, std::size_t count) {
    std::vector<double> numbers;
    const char* p = text.data();
    const char* end = text.data() + text.size();
    while (numbers.size() < count) {
        double number = 0.0;
        const auto [next, error] = std::from_chars(p, end, number);
        if (error != std::errc() || !std::isfinite(number)) return std::nullopt;
        numbers.push_back(number);
        p = next;
        if (numbers.size() < count) {
            if (p == end || *p != ',') return std::nullopt;
            ++p;
        }
    }
    if (p != end) return std::nullopt;
    return numbers;
}
