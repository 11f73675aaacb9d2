// libFuzzer target for the price-list reader: any bytes decode without loss, and the rows read from
// them keep their shape and come back unchanged when written and read again.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "pricelist/PriceListFile.h"
#include "text/TextFile.h"

namespace {

void check(bool condition) {
    if (!condition) std::abort();
}

bool holdsSeparator(const std::wstring& field) {
    return field.find_first_of(L"|\n") != std::wstring::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    TextFormat format;
    const std::wstring text = DecodeText(bytes, format);
    check(EncodeText(text, format) == bytes);

    const std::vector<PriceListRow> rows = ParsePriceList(text);
    std::wstring written;
    for (const auto& row : rows) {
        check(!row.name.empty() && !row.price.empty());
        check(!holdsSeparator(row.name) && !holdsSeparator(row.price) && !holdsSeparator(row.description));
        written += row.name + L'|' + row.price + L'|' + row.description + L'\n';
    }
    // Rows longer than one read are cut into pieces on reading, so only short ones must survive whole.
    if (written.size() < kPriceListReadLength) check(ParsePriceList(written) == rows);
    return 0;
}
