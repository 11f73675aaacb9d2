// Code pages through glibc's iconv.
#include "text/CodePage.h"

#include <iconv.h>

#include <cerrno>

namespace {

// An iconv descriptor, closed when it goes.
class Converter {
public:
    Converter(const std::string& to, const std::string& from)
        : m_descriptor(iconv_open(to.c_str(), from.c_str())) {}
    ~Converter() {
        if (isOpen()) iconv_close(m_descriptor);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isOpen() const { return m_descriptor != reinterpret_cast<iconv_t>(-1); }
    iconv_t get() const { return m_descriptor; }

private:
    iconv_t m_descriptor;
};

std::string& codePageSetting() {
    static std::string codePage;
    return codePage;
}

}  // namespace

bool IsKnownCodePage(const std::string& codePage) {
    return !codePage.empty() && Converter("WCHAR_T", codePage).isOpen();
}

std::optional<std::wstring> DecodeCodePage(std::string_view bytes, const std::string& codePage,
                                           std::size_t& badByte) {
    Converter converter("WCHAR_T", codePage);
    if (!converter.isOpen()) {
        badByte = 0;
        return std::nullopt;
    }
    std::wstring text(bytes.size() + 1, L'\0');  // a byte gives at most one character
    char* in = const_cast<char*>(bytes.data());  // iconv's signature; the bytes are only read
    std::size_t inLeft = bytes.size();
    char* out = reinterpret_cast<char*>(text.data());
    std::size_t outLeft = text.size() * sizeof(wchar_t);
    if (iconv(converter.get(), &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1)) {
        badByte = bytes.size() - inLeft;
        return std::nullopt;
    }
    text.resize(text.size() - outLeft / sizeof(wchar_t));
    return text;
}

std::string EncodeCodePage(std::wstring_view text, const std::string& codePage) {
    Converter converter(codePage, "WCHAR_T");
    std::string bytes;
    if (!converter.isOpen()) return bytes;
    for (const wchar_t c : text) {
        char* in = reinterpret_cast<char*>(const_cast<wchar_t*>(&c));
        std::size_t inLeft = sizeof(wchar_t);
        char buffer[16];
        char* out = buffer;
        std::size_t outLeft = sizeof(buffer);
        if (iconv(converter.get(), &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1)) {
            iconv(converter.get(), nullptr, nullptr, nullptr, nullptr);
            bytes += '?';
        } else {
            bytes.append(buffer, sizeof(buffer) - outLeft);
        }
    }
    return bytes;
}

void SetTextFileCodePage(std::string codePage) { codePageSetting() = std::move(codePage); }

const std::string& TextFileCodePage() { return codePageSetting(); }
