// Code pages through the C library's iconv; the DXF escapes by hand.
#include "host/dxf/dxftextcodec.h"

#include <iconv.h>

#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdio>

namespace {

// One iconv conversion descriptor, closed when it goes.
class Iconv {
public:
    Iconv(const char* to, const char* from) : m_cd(iconv_open(to, from)) {}
    ~Iconv() {
        if (isValid()) iconv_close(m_cd);
    }
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;

    bool isValid() const { return m_cd != reinterpret_cast<iconv_t>(-1); }

    // Converts as much as it can; `in` is left on the first byte it could not convert.
    std::string convert(std::string_view& in) const {
        iconv(m_cd, nullptr, nullptr, nullptr, nullptr);
        std::string out;
        char buffer[256];
        char* inPtr = const_cast<char*>(in.data());
        std::size_t inLeft = in.size();
        while (inLeft > 0) {
            char* outPtr = buffer;
            std::size_t outLeft = sizeof buffer;
            const std::size_t done = iconv(m_cd, &inPtr, &inLeft, &outPtr, &outLeft);
            out.append(buffer, static_cast<std::size_t>(outPtr - buffer));
            if (done == static_cast<std::size_t>(-1) && errno != E2BIG) break;
        }
        char* outPtr = buffer;
        std::size_t outLeft = sizeof buffer;
        iconv(m_cd, nullptr, nullptr, &outPtr, &outLeft);
        out.append(buffer, static_cast<std::size_t>(outPtr - buffer));
        in = std::string_view(inPtr, inLeft);
        return out;
    }

private:
    iconv_t m_cd;
};

std::string upper(std::string_view text) {
    std::string out(text);
    for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return out;
}

// $DWGCODEPAGE names as iconv knows them.
std::string iconvName(std::string_view dwgCodePage) {
    const std::string name = upper(dwgCodePage);
    if (name.starts_with("ANSI_")) return "CP" + name.substr(5);
    if (name.starts_with("DOS")) return "CP" + name.substr(3);
    if (name.starts_with("ISO8859-")) return "ISO-8859-" + name.substr(8);
    if (name == "MAC-ROMAN") return "MACINTOSH";
    if (name == "KSC5601") return "UHC";
    if (name == "GB2312") return "GBK";
    return name;
}

// The code pages of \M+N escapes, by N.
const char* multibyteCharset(char n) {
    switch (n) {
        case '1':
            return "CP932";
        case '2':
            return "CP950";
        case '3':
            return "CP949";
        case '4':
            return "JOHAB";
        case '5':
            return "CP936";
        default:
            return nullptr;
    }
}

int hexValue(wchar_t c) {
    if (c >= L'0' && c <= L'9') return c - L'0';
    if (c >= L'A' && c <= L'F') return c - L'A' + 10;
    if (c >= L'a' && c <= L'f') return c - L'a' + 10;
    return -1;
}

int hexNumber(std::wstring_view text) {
    int value = 0;
    for (const wchar_t c : text) {
        const int digit = hexValue(c);
        if (digit < 0) return -1;
        value = value * 16 + digit;
    }
    return value;
}

bool isAscii(std::string_view bytes) {
    for (const char c : bytes) {
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    }
    return true;
}

}  // namespace

class DxfTextCodec::Converters {
public:
    explicit Converters(const std::string& charset)
        : m_decoder("WCHAR_T", charset.c_str()), m_encoder(charset.c_str(), "WCHAR_T") {}

    bool isValid() const { return m_decoder.isValid() && m_encoder.isValid(); }

    std::wstring decode(std::string_view bytes) const {
        std::wstring text;
        while (!bytes.empty()) {
            const std::string wide = m_decoder.convert(bytes);
            text.append(reinterpret_cast<const wchar_t*>(wide.data()),
                        wide.size() / sizeof(wchar_t));
            if (bytes.empty()) break;
            text += static_cast<wchar_t>(static_cast<unsigned char>(bytes.front()));
            bytes.remove_prefix(1);
        }
        return text;
    }

    // Empty when the code page has no such character.
    std::string encodeOne(wchar_t c) const {
        std::string_view in(reinterpret_cast<const char*>(&c), sizeof c);
        std::string out = m_encoder.convert(in);
        return in.empty() ? out : std::string();
    }

private:
    Iconv m_decoder;
    Iconv m_encoder;
};

DxfTextCodec::DxfTextCodec(std::string_view acadVersion, std::string_view dwgCodePage)
    : m_utf8(acadVersion >= "AC1021") {
    m_charset = m_utf8 ? "UTF-8" : iconvName(dwgCodePage.empty() ? "ANSI_1252" : dwgCodePage);
    m_converters = std::make_unique<Converters>(m_charset);
    if (!m_converters->isValid()) {
        m_charset = "CP1252";
        m_converters = std::make_unique<Converters>(m_charset);
    }
}

DxfTextCodec::~DxfTextCodec() = default;
DxfTextCodec::DxfTextCodec(DxfTextCodec&&) noexcept = default;
DxfTextCodec& DxfTextCodec::operator=(DxfTextCodec&&) noexcept = default;

std::wstring DxfTextCodec::decode(std::string_view bytes) const {
    std::wstring text =
        isAscii(bytes) ? std::wstring(bytes.begin(), bytes.end()) : m_converters->decode(bytes);
    if (text.find(L'\\') == std::wstring::npos) return text;

    std::wstring out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::wstring_view rest = std::wstring_view(text).substr(i);
        if (rest.starts_with(L"\\U+") && rest.size() >= 7) {
            if (const int code = hexNumber(rest.substr(3, 4)); code >= 0) {
                const std::wstring_view next = rest.substr(7);
                const int low = next.starts_with(L"\\U+") && next.size() >= 7
                                    ? hexNumber(next.substr(3, 4))
                                    : -1;
                if (code >= 0xd800 && code < 0xdc00 && low >= 0xdc00 && low < 0xe000) {
                    out += static_cast<wchar_t>(0x10000 + ((code - 0xd800) << 10) + (low - 0xdc00));
                    i += 13;
                    continue;
                }
                out += static_cast<wchar_t>(code);
                i += 6;
                continue;
            }
        }
        if (rest.starts_with(L"\\M+") && rest.size() >= 8) {
            const char* charset = multibyteCharset(static_cast<char>(rest[3]));
            if (const int code = hexNumber(rest.substr(4, 4)); charset != nullptr && code >= 0) {
                const char pair[2] = {static_cast<char>(code >> 8), static_cast<char>(code & 0xff)};
                std::string_view in(pair, 2);
                const std::string wide = Iconv("WCHAR_T", charset).convert(in);
                if (in.empty() && wide.size() == sizeof(wchar_t)) {
                    out += *reinterpret_cast<const wchar_t*>(wide.data());
                    i += 7;
                    continue;
                }
            }
        }
        out += text[i];
    }
    return out;
}

std::string DxfTextCodec::encode(std::wstring_view text) const {
    std::string out;
    for (const wchar_t c : text) {
        if (c > 0 && c < 0x80) {
            out += static_cast<char>(c);
            continue;
        }
        std::string bytes = m_converters->encodeOne(c);
        if (!bytes.empty()) {
            out += bytes;
            continue;
        }
        // Past the Basic Multilingual Plane the escape names the UTF-16 halves.
        auto escape = [&out](unsigned unit) {
            char buffer[12];
            std::snprintf(buffer, sizeof buffer, "\\U+%04X", unit & 0xffffu);
            out += buffer;
        };
        const auto code = static_cast<std::uint32_t>(c);
        if (code > 0xffff) {
            escape(0xd800 + ((code - 0x10000) >> 10));
            escape(0xdc00 + ((code - 0x10000) & 0x3ff));
        } else {
            escape(code);
        }
    }
    return out;
}
