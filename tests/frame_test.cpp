// The parallel driver (split over threads, status merge, a smaller team, per-thread scratch), the
// wrapping cost and limit tests, orders naming operands, the version record and the core library.
#include <omp.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <set>
#include <vector>

#include "frame/dispatch.h"
#include "frame/validate.h"
#include "operands.h"

namespace {

// The runs (first item, items, thread) that the driver hands out, in item order.
std::vector<std::array<int, 3>> runsOf(int T, int count)
{
    t::Threads th(T);
    std::vector<std::array<int, 3>> runs;
    std::mutex m;
    EXPECT_EQ(orl::drive(count, 0, [&](int first, int items, void*) {
                  std::lock_guard<std::mutex> g(m);
                  runs.push_back({first, items, omp_get_thread_num()});
                  return orlStatusOk;
              }), orlStatusOk);
    std::sort(runs.begin(), runs.end());
    return runs;
}

TEST(Driver, ContiguousRunsFirstThreadsTakeOneMore)
{
    using R = std::vector<std::array<int, 3>>;
    EXPECT_EQ(runsOf(4, 10), (R{{0, 3, 0}, {3, 3, 1}, {6, 2, 2}, {8, 2, 3}}));
    EXPECT_EQ(runsOf(3, 3), (R{{0, 1, 0}, {1, 1, 1}, {2, 1, 2}}));
    // Fewer items than threads, one thread, or none: everything in one run.
    for (auto [T, count] : {std::pair{4, 3}, {1, 1000}, {0, 5}, {-3, 5}}) EXPECT_EQ(runsOf(T, count), (R{{0, count, 0}})) << T;
}

TEST(Driver, FirstFailureWinsAndZeroChangesNothing)
{
    t::Threads th(4);
    for (int failing = 0; failing < 4; ++failing)  // one failing slice, whenever it arrives
        EXPECT_EQ(orl::drive(10, 0, [&](int first, int, void*) { return first == orl::sliceOf(failing, 4, 10).first ? orlStatusSingular : orlStatusOk; }),
                  orlStatusSingular);
    const orlStatus st = orl::drive(10, 0, [&](int first, int, void*) { return first == 3 ? orlStatusSingular : first == 8 ? orlStatusNoConvergence : orlStatusOk; });
    EXPECT_TRUE(st == orlStatusSingular || st == orlStatusNoConvergence) << st;
}

// Inside an active region with one active level allowed the driver's region gets a team of
// one: the absent threads' slices must still be processed, on the calling thread.
TEST(Driver, SmallerTeamStillProcessesEveryItem)
{
    t::Threads th(4);
    const int saved = omp_get_max_active_levels();
    omp_set_max_active_levels(1);
    std::vector<int> seen(10, 0);
    orlStatus st = -1;
#pragma omp parallel num_threads(1)
    st = orl::drive(10, 0, [&](int first, int items, void*) { for (int k = first; k < first + items; ++k) seen[k]++; return orlStatusOk; });
    omp_set_max_active_levels(saved);
    EXPECT_EQ(st, orlStatusOk);
    EXPECT_EQ(seen, std::vector<int>(10, 1));
}

TEST(Driver, ScratchIsPerThreadAlignedAndNullOnTheSerialRoute)
{
    for (int T : {4, 1}) {
        t::Threads th(T);
        std::set<std::uintptr_t> blocks;
        std::mutex m;
        orl::drive(8, 100, [&](int, int, void* s) {
            if (T == 1) { EXPECT_EQ(s, nullptr); return orlStatusOk; }
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(s) % 64, 0u);
            std::memset(s, 0xab, 100);  // each slice owns its 100 bytes
            std::lock_guard<std::mutex> g(m);
            blocks.insert(reinterpret_cast<std::uintptr_t>(s));
            return orlStatusOk;
        });
        EXPECT_EQ(blocks.size(), T == 1 ? 0u : 4u);
    }
}

TEST(Cost, ThirtyTwoBitProductsWrapAndLimitTests)
{
    using orl::Wrap;
    EXPECT_EQ((Wrap(16) * 2303).value(), 36848);
    EXPECT_EQ((Wrap(3) * 4096 * 174763).value(), -2147479552);
    EXPECT_EQ((Wrap(65536) * 65536 + 7).value(), 7);
    const orl::Limits ge{36864, 18432, 18432, 18432, 9216, orl::Test::GE};
    const orl::Limits gt{20000, 20000, 40000, 20000, 20000, orl::Test::GT};
    EXPECT_TRUE(orl::parallelRoute(36864, ge, orl::Lay::Std, true));
    EXPECT_FALSE(orl::parallelRoute(36863, ge, orl::Lay::Std, true));
    EXPECT_TRUE(orl::parallelRoute(18432, ge, orl::Lay::Std, false));
    EXPECT_FALSE(orl::parallelRoute(20000, gt, orl::Lay::Std, true));
    EXPECT_TRUE(orl::parallelRoute(20001, gt, orl::Lay::Std, true));
    EXPECT_FALSE(orl::parallelRoute(30000, gt, orl::Lay::L, true));
    EXPECT_TRUE(orl::parallelRoute(30000, gt, orl::Lay::L, false));
    EXPECT_FALSE(orl::parallelRoute(-5, ge, orl::Lay::P, true));
}

// Orders that test offsets and strides operand by operand: a digit after T
// or O names the operand, and classes of other operands come between.
TEST(Checks, OrdersThatNameOperands)
{
    struct Row { const char* order; int badStride, badOffset; orlStatus st; };  // operands failing, -1 none
    const Row rows[] = {
        {"NZCO0T0O1O2T1T2", 1, 2, orlStatusOffset},  // right stride, left offset: offsets first
        {"NZCO0T0O1T1", 1, 2, orlStatusStride},      // no operand 2 in this order
        {"NZCO0T0O1T1", 0, 1, orlStatusStride},
        {"NZCO0O1T0T1", 0, 1, orlStatusOffset},
        {"NZCT", 3, -1, orlStatusStride},            // plain T covers every operand
        {"NZCO0T0", -1, -1, orlStatusOk},
    };
    for (const Row& r : rows) {
        orl::Checks c;
        if (r.badStride >= 0) c.T = false, c.Ti[r.badStride] = false;
        if (r.badOffset >= 0) c.O = false, c.Oi[r.badOffset] = false;
        EXPECT_EQ(orl::firstFailure(r.order, c), r.st) << r.order;
    }
}

TEST(Identity, VersionRecordHooksAndCore)
{
    const orlLibVersion* v = orlmGetLibVersion();
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v, orlmGetLibVersion());
    EXPECT_EQ((std::array{v->versionMajor, v->versionMinor, v->buildMajor, v->buildNumber}), (std::array{5, 2, 108, 345}));
    EXPECT_EQ(std::memcmp(v->targetCpu, "t7\0\0", 4), 0);
    EXPECT_EQ(std::string(v->name) + " " + v->versionText + " " + v->buildDate, "liborlmt7.so.5.2 5.2 Jul 11 2007");
    EXPECT_EQ(offsetof(orlLibVersion, targetCpu), 16u);
    EXPECT_TRUE(i_malloc == &malloc && i_calloc == &calloc && i_realloc == &realloc && i_free == &free);
    EXPECT_EQ(threads_omp_of_n_orl, omp_get_max_threads());
    int32_t size = -1;
    orlGetMaxCacheSizeB(&size);
    EXPECT_GE(size, 0);
}

}  // namespace
