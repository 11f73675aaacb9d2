// JSON output of the console front end.
#include "host/console/jsonwriter.h"

#include <charconv>
#include <cmath>
#include <cstdio>

#include "text/TextFile.h"

void JsonWriter::newline() {
    m_text += '\n';
    m_text.append(2 * m_first.size(), ' ');
}

void JsonWriter::beforeValue() {
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (m_first.empty()) return;
    if (!m_first.back()) m_text += ',';
    m_first.back() = false;
    newline();
}

void JsonWriter::beginObject() {
    beforeValue();
    m_text += '{';
    m_first.push_back(true);
}

void JsonWriter::endObject() {
    const bool empty = m_first.back();
    m_first.pop_back();
    if (!empty) newline();
    m_text += '}';
    if (m_first.empty()) m_text += '\n';
}

void JsonWriter::beginArray() {
    beforeValue();
    m_text += '[';
    m_first.push_back(true);
}

void JsonWriter::endArray() {
    const bool empty = m_first.back();
    m_first.pop_back();
    if (!empty) newline();
    m_text += ']';
}

void JsonWriter::key(std::string_view name) {
    beforeValue();
    writeString(name);
    m_text += ": ";
    m_afterKey = true;
}

void JsonWriter::value(std::string_view text) {
    beforeValue();
    writeString(text);
}

void JsonWriter::writeString(std::string_view text) {
    m_text += '"';
    for (const char c : text) {
        switch (c) {
            case '"':
                m_text += "\\\"";
                break;
            case '\\':
                m_text += "\\\\";
                break;
            case '\n':
                m_text += "\\n";
                break;
            case '\r':
                m_text += "\\r";
                break;
            case '\t':
                m_text += "\\t";
                break;
            default:
                if (static_cast<unsigned char>(c) < 0x20) {
                    char escape[8];
                    std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
                    m_text += escape;
                } else {
                    m_text += c;
                }
        }
    }
    m_text += '"';
}

void JsonWriter::value(std::wstring_view text) { value(std::string_view(EncodeUtf8(text))); }

// The shortest text that reads back as the same double; whole numbers keep a ".0", as in "10.0".
void JsonWriter::value(double number) {
    if (!std::isfinite(number)) {
        null();
        return;
    }
    beforeValue();
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    const std::string_view text(buffer, static_cast<std::size_t>(result.ptr - buffer));
    m_text += text;
    if (text.find_first_of(".en") == std::string_view::npos) m_text += ".0";
}

void JsonWriter::value(std::int64_t number) {
    beforeValue();
    m_text += std::to_string(number);
}

void JsonWriter::value(bool flag) {
    beforeValue();
    m_text += flag ? "true" : "false";
}

void JsonWriter::number(std::string_view text) {
    beforeValue();
    m_text += text;
}

void JsonWriter::null() {
    beforeValue();
    m_text += "null";
}
