// Determinants of arrays long enough to be taken several items at once:
// every result has the bits of the same item alone, also when the results
// land in the sources of later items.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "orlm.h"
#include "reference.h"

namespace {

orlStatus det(const float* a, float* d, int n, int count, int s0)
{
    float buf[64];
    return orlmDet_ma_32f(a, s0, n * 4, 4, n, buf, d, count);
}
orlStatus det(const double* a, double* d, int n, int count, int s0)
{
    double buf[64];
    return orlmDet_ma_64f(a, s0, n * 8, 8, n, buf, d, count);
}

// Results in memory of their own, or `shift` elements into the sources.
template <class E>
void expectItemByItem(int n, int gap, int shift, bool own)
{
    const int count = 11, s0 = gap * int(sizeof(E));
    std::mt19937 rng(unsigned(n * 100 + gap + shift));
    std::vector<E> mem(std::size_t(gap * count + n * n), E(-7)), out(count, E(-7));
    for (int k = 0; k < count; ++k)
        for (int x = 0; x < n * n; ++x) mem[k * gap + x] = k == 5 && x % 3 == 0 ? E(NAN) : ref::wild<E>(rng, 40);
    std::vector<E> want = mem, got = mem, wantOut = out, gotOut = out;
    for (int k = 0; k < count; ++k) det(want.data() + k * gap, (own ? wantOut.data() : want.data() + shift) + k, n, 1, s0);
    det(got.data(), own ? gotOut.data() : got.data() + shift, n, count, s0);
    for (std::size_t x = 0; x < got.size(); ++x)
        ASSERT_TRUE(ref::sameBits(got[x], want[x]) || (std::isnan(got[x]) && std::isnan(want[x]))) << "n=" << n << " shift=" << shift << " element " << x;
    for (int k = 0; k < count; ++k)
        ASSERT_TRUE(ref::sameBits(gotOut[k], wantOut[k]) || (std::isnan(gotOut[k]) && std::isnan(wantOut[k]))) << "n=" << n << " item " << k;
}

TEST(DetGroups, EveryItemAsAlone)
{
    for (int n : {3, 4})
        for (int gap : {n * n, n * n + 2}) {
            for (int shift : {1, gap - 1, gap + 1}) {
                expectItemByItem<float>(n, gap, shift, false);
                expectItemByItem<double>(n, gap, shift, false);
            }
            expectItemByItem<float>(n, gap, 0, true);
            expectItemByItem<double>(n, gap, 0, true);
        }
}

}  // namespace
