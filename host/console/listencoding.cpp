// Reading price lists in the code page the user names, and telling how one that is not UTF-8 was
// read.
#include "host/console/listencoding.h"

#include <algorithm>

#include "host/console/messages.h"
#include "text/CodePage.h"

namespace {

std::size_t lineOf(std::string_view bytes, std::size_t offset) {
    return 1 + static_cast<std::size_t>(std::count(bytes.begin(), bytes.begin() + offset, '\n'));
}

}  // namespace

std::optional<int> useListEncoding(const std::optional<std::string>& codePage,
                                   const std::string& prices) {
    if (!codePage) return std::nullopt;
    if (!IsKnownCodePage(*codePage)) return usageError("unknown encoding \"" + *codePage + "\"");
    SetTextFileCodePage(*codePage);
    const auto list = ReadTextFile(WidePath(prices));
    if (!list || list->format.encoding == TextEncoding::CodePage) return std::nullopt;
    // Read one byte per character instead: the bytes are as the file holds them.
    const std::string bytes = EncodeText(list->text, list->format);
    std::size_t badByte = 0;
    (void)DecodeCodePage(bytes, *codePage, badByte);
    return fail(prices + ":" + std::to_string(lineOf(bytes, badByte)), "not valid " + *codePage);
}

std::optional<ListEncodingNote> listEncodingNote(const TextFileContent& list) {
    if (list.format.encoding != TextEncoding::Bytes) return std::nullopt;
    const std::string bytes = EncodeText(list.text, list.format);
    const std::size_t at = FirstInvalidUtf8(bytes);
    const auto line =
        1 + static_cast<std::size_t>(std::count(bytes.begin(), bytes.begin() + at, '\n'));
    return ListEncodingNote{
        line,
        "not UTF-8: read one byte per character, so names in other scripts "
        "will not match; name its code page with --list-encoding, for instance CP1251"};
}
