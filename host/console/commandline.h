// Parsing of the console's arguments against a table of the options each command takes.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

struct OptionSpec {
    enum class Value { None, Required, Optional };
    std::string name;  // "--prices", "-o"
    Value value = Value::None;
    bool repeatable = false;
};

struct ParsedArguments {
    std::vector<std::string> positional;
    std::map<std::string, std::vector<std::string>> options;  // an option without value maps to ""

    bool has(const std::string& name) const { return options.contains(name); }
    std::optional<std::string> value(const std::string& name) const;
    std::vector<std::string> values(const std::string& name) const;
};

struct ParseResult {
    std::optional<ParsedArguments> arguments;
    std::string error;  // a usage error, when there are no arguments
};

// "--name value" and "--name=value" both give a value; an optional value is taken only from "=" or
// from a next argument that does not start with "-".
ParseResult parseArguments(const std::vector<std::string>& args,
                           const std::vector<OptionSpec>& options);

// "X,Y" and "X1,Y1,X2,Y2": exactly `count` decimal numbers separated by commas.
std::optional<std::vector<double>> parseNumbers(const std::string& text, std::size_t count);
