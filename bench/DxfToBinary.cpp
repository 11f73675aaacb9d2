// Writes an ASCII drawing again as binary DXF, tag for tag, so that the two forms of the same
// content can be read against each other.
//
// Usage: dxf_to_binary INPUT.dxf OUTPUT.dxf
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

#include "host/dxf/dxfgroupcode.h"
#include "host/dxf/dxfnumber.h"
#include "host/dxf/dxftagfile.h"

namespace {

template <typename T>
void put(std::string& out, T value) {
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    out.append(bytes, sizeof value);
}

// The binary encoding of one tag's value, as its group code's type asks.
void putValue(std::string& out, const DxfTagFile& tags, std::uint32_t tag) {
    const int code = tags.code(tag);
    switch (dxfValueType(code)) {
        case DxfValueType::Double:
            put(out, tags.real(tag).value_or(0.0));
            return;
        case DxfValueType::Int16:
            put(out, static_cast<std::int16_t>(tags.integer(tag).value_or(0)));
            return;
        case DxfValueType::Int32:
            put(out, static_cast<std::int32_t>(tags.integer(tag).value_or(0)));
            return;
        case DxfValueType::Int64:
            put(out, tags.integer(tag).value_or(0));
            return;
        case DxfValueType::Bool:
            put(out, static_cast<std::uint8_t>(tags.integer(tag).value_or(0)));
            return;
        case DxfValueType::Chunk: {
            const std::string_view hex = tags.value(tag);
            out.push_back(static_cast<char>(hex.size() / 2));
            for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
                out.push_back(static_cast<char>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16)));
            return;
        }
        case DxfValueType::String:
        case DxfValueType::Handle:
            break;
    }
    out.append(tags.value(tag));
    out.push_back('\0');
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: dxf_to_binary INPUT.dxf OUTPUT.dxf\n");
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    auto tags = DxfTagFile::parse(argv[1], bytes);
    if (!tags.isOk() || tags.value().format() != DxfFormat::Ascii) {
        std::fprintf(stderr, "%s\n", tags.isOk() ? "not an ASCII drawing" : tags.errorString().c_str());
        return 1;
    }
    std::string out(kDxfBinarySentinel);
    out.reserve(bytes.size());
    for (std::uint32_t tag = 0; tag < tags.value().tagCount(); ++tag) {
        put(out, static_cast<std::int16_t>(tags.value().code(tag)));
        putValue(out, tags.value(), tag);
    }
    std::ofstream file(argv[2], std::ios::binary | std::ios::trunc);
    file.write(out.data(), static_cast<std::streamsize>(out.size()));
    file.close();
    if (!file) {
        std::perror(argv[2]);
        return 1;
    }
    return 0;
}
