// The fuzz driver over every member of the table: a libFuzzer target when
// built with ORLM_LIBFUZZER, otherwise a deterministic replay of a seeded
// corpus (every member a fixed number of times) and of the regression inputs
// kept in fuzz/corpus/.
//
// An input is two bytes naming the member (modulo the member count), then the
// bytes the call draws its choices from. A regression input may instead name
// its member: "orlmName\n" followed by the bytes, so that it stays valid when
// members are added to the table.
#include <dirent.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "harness.h"
#include "orlcore.h"

namespace {

constexpr int kBoundMs = 30000;  // per call; the iterative eigen members included

const fz::Member* byName(const std::string& n)
{
    for (int i = 0; i < fz::kMemberCount; ++i)
        if (n == fz::kMembers[i].name) return &fz::kMembers[i];
    return nullptr;
}

// The member an input names and the bytes its choices come from.
const fz::Member* split(const std::uint8_t*& d, std::size_t& n)
{
    if (n > 4 && std::memcmp(d, "orlm", 4) == 0) {
        const auto* nl = static_cast<const std::uint8_t*>(std::memchr(d, '\n', n));
        if (!nl) return nullptr;
        const fz::Member* m = byName(std::string(reinterpret_cast<const char*>(d), std::size_t(nl - d)));
        n -= std::size_t(nl + 1 - d);
        d = nl + 1;
        return m;
    }
    const fz::Member* m = &fz::memberOf(d, n);
    const std::size_t skip = n < 2 ? n : 2;
    d += skip, n -= skip;
    return m;
}

}  // namespace

#ifdef ORLM_LIBFUZZER

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fz::startWatchdog(kBoundMs);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* d, std::size_t n)
{
    const fz::Member* m = split(d, n);
    if (!m) return 0;
    fz::Choices c(d, n);
    const fz::Outcome o = fz::runOne(*m, c);
    if (!o.fault.empty()) {
        std::fprintf(stderr, "FAULT in %s: %s\n", m->name, o.fault.c_str());
        std::abort();
    }
    return 0;
}

#else

namespace {

struct Tally {
    long calls = 0;
    double slowest = 0;  // ms
    std::string slowestMember;
    std::map<orlStatus, long> statuses;
};

const char* statusName(orlStatus s)
{
    switch (s) {
    case orlStatusOk: return "Ok";
    case orlStatusSmallBlock: return "SmallBlock";
    case orlStatusSize: return "Size";
    case orlStatusNullPointer: return "NullPointer";
    case orlStatusDivByZero: return "DivByZero";
    case orlStatusNotPosDefinite: return "NotPosDefinite";
    case orlStatusStride: return "Stride";
    case orlStatusSingular: return "Singular";
    case orlStatusOffset: return "Offset";
    case orlStatusCount: return "Count";
    case orlStatusSizeMismatch: return "SizeMismatch";
    case orlStatusNoConvergence: return "NoConvergence";
    }
    return "?";
}

std::uint64_t mix(std::uint64_t z)
{
    z += 0x9e3779b97f4a7c15ull;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ull;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebull;
    return z ^ (z >> 31);
}

}  // namespace

// fuzz_replay [--calls N] [--seed S] [--threads T] [--expect MEMBERS] [--save DIR] [--member NAME] [CORPUS_DIR...]
int main(int argc, char** argv)
{
    long calls = 8, seed = 1, expect = -1;
    std::string save = ".", only;
    std::vector<std::string> dirs;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        if (a == "--calls" && i + 1 < argc) calls = std::atol(argv[++i]);
        else if (a == "--seed" && i + 1 < argc) seed = std::atol(argv[++i]);
        else if (a == "--threads" && i + 1 < argc) threads_omp_of_n_orl = std::atoi(argv[++i]);
        else if (a == "--expect" && i + 1 < argc) expect = std::atol(argv[++i]);
        else if (a == "--save" && i + 1 < argc) save = argv[++i];
        else if (a == "--member" && i + 1 < argc) only = argv[++i];
        else dirs.push_back(a);
    }
    fz::startWatchdog(kBoundMs);
    std::map<std::string, Tally> fam;
    long faults = 0, made = 0;
    auto run = [&](const fz::Member& m, const std::uint8_t* d, std::size_t n, const std::string& what) {
        const std::string file = save + "/fault-" + m.name + "-" + std::to_string(made) + ".bin";
        const std::string input = m.name + std::string("\n") + std::string(reinterpret_cast<const char*>(d), n);
        fz::noteInput(file, input);
        fz::Choices c(d, n);
        const auto t0 = std::chrono::steady_clock::now();
        const fz::Outcome o = fz::runOne(m, c);
        const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count();
        Tally& t = fam[m.family];
        if (ms > t.slowest) t.slowest = ms, t.slowestMember = m.name;
        ++t.calls, ++made;
        ++t.statuses[o.status];
        if (o.fault.empty()) return;
        ++faults;
        std::printf("FAULT in %s (%s): %s\n", m.name, what.c_str(), o.fault.c_str());
        std::ofstream(file, std::ios::binary) << input;
        std::printf("  input saved as %s\n", file.c_str());
    };

    // The regression inputs first.
    long kept = 0;
    for (const std::string& dir : dirs) {
        DIR* dp = opendir(dir.c_str());
        if (!dp) {
            std::printf("cannot read %s\n", dir.c_str());
            return 2;
        }
        while (const dirent* e = readdir(dp)) {
            const std::string fn = e->d_name;
            if (fn[0] == '.' || fn.ends_with(".md")) continue;
            std::ifstream f(dir + "/" + e->d_name, std::ios::binary);
            const std::string bytes((std::istreambuf_iterator<char>(f)), std::istreambuf_iterator<char>());
            const auto* d = reinterpret_cast<const std::uint8_t*>(bytes.data());
            std::size_t n = bytes.size();
            const fz::Member* m = split(d, n);
            if (!m) {
                std::printf("%s names no member of this build; skipped\n", e->d_name);
                continue;
            }
            run(*m, d, n, e->d_name);
            ++kept;
        }
        closedir(dp);
    }

    // The seeded corpus: every member `calls` times.
    std::uint8_t in[64];
    for (int i = 0; i < fz::kMemberCount; ++i)
        for (long j = 0; j < calls && (only.empty() || only == fz::kMembers[i].name); ++j) {
            std::uint64_t z = mix(std::uint64_t(seed) * 0x100000000ull + std::uint64_t(i) * 65536u + std::uint64_t(j));
            for (std::size_t b = 0; b < sizeof in; b += 8) {
                z = mix(z);
                std::memcpy(in + b, &z, 8);
            }
            run(fz::kMembers[i], in, sizeof in, "seed " + std::to_string(seed) + " member " + std::to_string(i) +
                                                     " call " + std::to_string(j));
        }

    std::printf("members covered: %d; calls: %ld (%ld regression inputs, %ld seeded); threads %d\n", fz::kMemberCount,
                made, kept, made - kept, int(threads_omp_of_n_orl));
    for (const auto& [name, t] : fam) {
        std::printf("  %-14s %7ld calls:", name.c_str(), t.calls);
        for (const auto& [s, n] : t.statuses) std::printf(" %s %ld", statusName(s), n);
        std::printf("; slowest %.0f ms (%s)\n", t.slowest, t.slowestMember.c_str());
    }
    if (expect >= 0 && expect != fz::kMemberCount) {
        std::printf("the table has %d members, the export list %ld\n", fz::kMemberCount, expect);
        return 1;
    }
    std::printf("%ld faults\n", faults);
    return faults ? 1 : 0;
}

#endif
