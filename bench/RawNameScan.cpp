// The floor a reader is measured against: the file mapped, each "0 / INSERT" found by a plain
// search, the next code 2 taken as the block name and counted. Nothing is checked, nothing is kept
// for writing back; it prints the number of references and of names.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string_view>
#include <unordered_map>

namespace {

std::string_view trimmed(std::string_view line) {
    while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.remove_suffix(1);
    while (!line.empty() && line.front() == ' ') line.remove_prefix(1);
    return line;
}

// The line that starts at `at`, without its end; `at` moves past it.
std::string_view nextLine(std::string_view text, std::size_t& at) {
    const std::size_t end = text.find('\n', at);
    const std::size_t stop = end == std::string_view::npos ? text.size() : end;
    const std::string_view line = text.substr(at, stop - at);
    at = stop == text.size() ? stop : stop + 1;
    return line;
}

// Whether the line before `lineStart` (which ends at lineStart - 1) is the group code 0.
bool afterCodeZero(std::string_view text, std::size_t lineStart) {
    if (lineStart < 2) return false;
    const std::size_t previous = text.rfind('\n', lineStart - 2);
    const std::size_t from = previous == std::string_view::npos ? 0 : previous + 1;
    return trimmed(text.substr(from, lineStart - 1 - from)) == "0";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: raw_name_scan DRAWING.dxf\n");
        return 2;
    }
    const int fd = ::open(argv[1], O_RDONLY | O_CLOEXEC);
    struct stat info {};
    if (fd < 0 || ::fstat(fd, &info) != 0 || info.st_size == 0) {
        std::perror(argv[1]);
        return 1;
    }
    const auto size = static_cast<std::size_t>(info.st_size);
    void* mapping = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, fd, 0);
    ::close(fd);
    if (mapping == MAP_FAILED) {
        std::perror(argv[1]);
        return 1;
    }
    const std::string_view text(static_cast<const char*>(mapping), size);
    std::unordered_map<std::string_view, long> counts;
    long references = 0;
    for (std::size_t hit = text.find("\nINSERT"); hit != std::string_view::npos;
         hit = text.find("\nINSERT", hit + 1)) {
        std::size_t at = hit + 1;
        if (trimmed(nextLine(text, at)) != "INSERT" || !afterCodeZero(text, hit + 1)) continue;
        while (at < size) {
            const std::string_view code = trimmed(nextLine(text, at));
            const std::string_view value = nextLine(text, at);
            if (code == "0") break;
            if (code == "2") {
                ++counts[trimmed(value)];
                ++references;
                break;
            }
        }
    }
    std::printf("%ld references, %zu names\n", references, counts.size());
    ::munmap(mapping, size);
    return 0;
}
