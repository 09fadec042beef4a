// Inverse of arrays long enough to be taken several items at once: every
// item has the bits of the same item inverted alone, also around a singular
// item, a NaN item, in place, and with results that overwrite later sources.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "orlm.h"
#include "reference.h"

namespace {

orlStatus inv(const float* a, float* d, int n, int count, int s0)
{
    float buf[64];
    return orlmInvert_ma_32f(a, s0, n * 4, 4, buf, d, s0, n * 4, 4, n, count);
}
orlStatus inv(const double* a, double* d, int n, int count, int s0)
{
    double buf[64];
    return orlmInvert_ma_64f(a, s0, n * 8, 8, buf, d, s0, n * 8, 8, n, count);
}

// Items one after another at `gap` elements; dst `shift` elements after src
// in the same memory (shift 0: in place), or in memory of its own.
template <class E>
void expectItemByItem(int n, int gap, int shift, bool own, int singular, int nanItem)
{
    const int count = 11, s0 = gap * int(sizeof(E));
    std::mt19937 rng(unsigned(n * 100 + gap + shift));
    std::vector<E> mem(std::size_t(gap * count + shift + n * n), E(-7)), dst(mem.size(), E(-7));
    for (int k = 0; k < count; ++k)
        for (int x = 0; x < n * n; ++x) mem[k * gap + x] = ref::wild<E>(rng, 40) + (x % (n + 1) ? E(0) : E(4));
    for (int x = 0; x < n * n; ++x) mem[singular * gap + x] = E(0), mem[nanItem * gap + x] = x % 2 ? E(NAN) : E(1);
    std::vector<E> want = own ? dst : mem, got = want;
    E* wd = own ? want.data() : want.data() + shift;
    orlStatus st = orlStatusOk;
    for (int k = 0; k < count && st == orlStatusOk; ++k)
        st = inv((own ? mem.data() : want.data()) + k * gap, wd + k * gap, n, 1, s0);
    EXPECT_EQ(inv(own ? mem.data() : got.data(), own ? got.data() : got.data() + shift, n, count, s0), st);
    for (std::size_t x = 0; x < got.size(); ++x)
        ASSERT_TRUE(ref::sameBits(got[x], want[x]) || (std::isnan(got[x]) && std::isnan(want[x])))
            << "n=" << n << " gap=" << gap << " shift=" << shift << " element " << x << ": " << got[x] << " vs " << want[x];
}

struct Case { int shift; bool own; int singular, nanItem; };

TEST(InvertGroups, EveryItemAsAlone)
{
    for (int n : {3, 4})
        for (int gap : {n * n, n * n + 3})
            for (const Case c : {Case{0, true, 6, 9}, Case{0, true, 10, 2}, Case{0, false, 10, 5}, Case{gap, false, 10, 3}, Case{1, false, 10, 0}}) {
                expectItemByItem<float>(n, gap, c.shift, c.own, c.singular, c.nanItem);
                expectItemByItem<double>(n, gap, c.shift, c.own, c.singular, c.nanItem);
            }
}

}  // namespace
