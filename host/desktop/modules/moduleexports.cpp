// The dynamic symbol table of an ELF shared object, read without loading it.
#include "host/desktop/modules/moduleexports.h"

#include <elf.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>

namespace {

#if defined(__x86_64__)
constexpr int kMachine = EM_X86_64;
#elif defined(__aarch64__)
constexpr int kMachine = EM_AARCH64;
#else
#error "readModuleExports knows the ELF machine of x86-64 and AArch64 only"
#endif

// Far beyond any module; a file this large is something else picked by mistake.
constexpr std::uintmax_t kLargestModule = std::uintmax_t{1} << 30;

// A file's bytes; modules are small enough to read whole.
std::optional<std::string> readFile(const std::filesystem::path& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size > kLargestModule) return std::nullopt;
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(in), {});
}

template <typename T>
std::optional<T> at(const std::string& bytes, std::uint64_t offset) {
    if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) return std::nullopt;
    T value;
    std::memcpy(&value, bytes.data() + offset, sizeof(T));
    return value;
}

std::optional<Elf64_Shdr> section(const std::string& bytes, const Elf64_Ehdr& header,
                                  std::uint64_t index) {
    if (index >= header.e_shnum) return std::nullopt;
    return at<Elf64_Shdr>(bytes, header.e_shoff + index * header.e_shentsize);
}

ModuleExports failure(std::string error) { return ModuleExports{std::move(error), {}}; }

ModuleExports exportsOf(const std::string& bytes) {
    const auto header = at<Elf64_Ehdr>(bytes, 0);
    if (!header || std::memcmp(header->e_ident, ELFMAG, SELFMAG) != 0)
        return failure("not a shared library");
    if (header->e_ident[EI_CLASS] != ELFCLASS64 || header->e_machine != kMachine)
        return failure("built for another kind of machine");
    if (header->e_type != ET_DYN) return failure("not a shared library");
    if (header->e_shentsize != sizeof(Elf64_Shdr)) return failure("damaged section table");
    ModuleExports result;
    for (std::uint64_t i = 0; i < header->e_shnum; ++i) {
        const auto symbols = section(bytes, *header, i);
        if (!symbols) return failure("damaged section table");
        if (symbols->sh_type != SHT_DYNSYM || symbols->sh_entsize != sizeof(Elf64_Sym)) continue;
        const auto names = section(bytes, *header, symbols->sh_link);
        if (!names || names->sh_offset > bytes.size() ||
            bytes.size() - names->sh_offset < names->sh_size)
            return failure("damaged symbol table");
        const std::string_view text(bytes.data() + names->sh_offset, names->sh_size);
        for (std::uint64_t s = 0; s < symbols->sh_size / sizeof(Elf64_Sym); ++s) {
            const auto symbol = at<Elf64_Sym>(bytes, symbols->sh_offset + s * sizeof(Elf64_Sym));
            if (!symbol) return failure("damaged symbol table");
            if (symbol->st_shndx == SHN_UNDEF || ELF64_ST_TYPE(symbol->st_info) != STT_FUNC ||
                ELF64_ST_VISIBILITY(symbol->st_other) != STV_DEFAULT ||
                symbol->st_name >= text.size())
                continue;
            const std::string_view rest = text.substr(symbol->st_name);
            result.functions.emplace_back(rest.substr(0, rest.find('\0')));
        }
    }
    return result;
}

}  // namespace

bool ModuleExports::exports(const std::string& name) const {
    return std::find(functions.begin(), functions.end(), name) != functions.end();
}

ModuleExports readModuleExports(const std::filesystem::path& path) {
    const auto bytes = readFile(path);
    if (!bytes) return failure("cannot be read");
    return exportsOf(*bytes);
}
