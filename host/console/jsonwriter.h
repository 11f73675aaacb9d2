// A small writer of UTF-8 JSON: objects, arrays, strings and numbers, indented.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class JsonWriter {
public:
    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    void key(std::string_view name);
    void value(std::wstring_view text);
    void value(std::string_view text);
    void value(double number);
    void value(std::int64_t number);
    void value(bool flag);
    // A number written as the text gives it ("3096.90"); the text must be a JSON number.
    void number(std::string_view text);
    void null();

    const std::string& text() const { return m_text; }

private:
    void beforeValue();
    void writeString(std::string_view text);
    void newline();

    std::string m_text;
    std::vector<bool> m_first;  // per open container: no element written yet
    bool m_afterKey = false;
};
