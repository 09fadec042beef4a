// Concurrent calls under ThreadSanitizer: 8 threads call members at once, each
// on its own data, every member of the build on both routes (a short array
// on the calling thread, a long one through the parallel driver), first with
// the core library's thread count at 1, then at 4. Each call is held to the
// same rules as in the fuzz replay.
#include <cstdio>
#include <thread>
#include <vector>

#include "harness.h"
#include "orlcore.h"

int main()
{
    constexpr int kThreads = 8;
    fz::startWatchdog(120000);
    long faults = 0, calls = 0;
    for (int omp : {1, 4}) {
        threads_omp_of_n_orl = omp;  // set between phases, never while members run
        std::vector<long> bad(kThreads), made(kThreads);
        std::vector<std::thread> pool;
        for (int t = 0; t < kThreads; ++t)
            pool.emplace_back([&, t] {
                for (int i = t; i < fz::kMemberCount; i += kThreads)
                    for (int route = 0; route < 2; ++route) {
                        const std::uint8_t in[4] = {std::uint8_t(i), std::uint8_t(i >> 8), std::uint8_t(route),
                                                    std::uint8_t(omp)};
                        fz::Choices c(in, sizeof in);
                        fz::Options o;
                        o.slot = t;
                        o.count = route ? 600 : 3;
                        o.valid = true;
                        const fz::Outcome r = fz::runOne(fz::kMembers[i], c, o);
                        ++made[t];
                        if (!r.fault.empty()) {
                            std::printf("FAULT in %s: %s\n", fz::kMembers[i].name, r.fault.c_str());
                            ++bad[t];
                        }
                    }
            });
        for (std::thread& th : pool) th.join();
        for (int t = 0; t < kThreads; ++t) faults += bad[t], calls += made[t];
    }
    std::printf("%d members, %ld calls from %d threads at thread counts 1 and 4; %ld faults\n", fz::kMemberCount,
                calls, kThreads, faults);
    return faults ? 1 : 0;
}
