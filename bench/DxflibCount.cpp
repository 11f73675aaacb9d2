// The comparison with Debian's dxflib: the same drawing read with a creation adapter that counts
// every INSERT by block name. Prints the best of three runs in seconds and the counts' sums.
//
// Usage: dxflib_count DRAWING
#include <dxflib/dl_creationadapter.h>
#include <dxflib/dl_dxf.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <string>

namespace {

class CountingAdapter : public DL_CreationAdapter {
public:
    void addInsert(const DL_InsertData& data) override { ++m_counts[data.name]; }
    const std::map<std::string, long>& counts() const { return m_counts; }

private:
    std::map<std::string, long> m_counts;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s DRAWING\n", argv[0]);
        return 2;
    }
    double best = 0.0;
    std::map<std::string, long> counts;
    for (int run = 0; run < 3; ++run) {
        const auto start = std::chrono::steady_clock::now();
        CountingAdapter adapter;
        DL_Dxf dxf;
        if (!dxf.in(argv[1], &adapter)) {
            std::fprintf(stderr, "%s: dxflib cannot read it\n", argv[1]);
            return 1;
        }
        const double seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (run == 0 || seconds < best) best = seconds;
        counts = adapter.counts();
    }
    long total = 0;
    for (const auto& [name, count] : counts) total += count;
    std::printf("dxflib: %.3f s, %ld references, %zu names\n", best, total, counts.size());
    return 0;
}
