// Transpose: every member's values as bits, the check orders, the band and cache decisions of the
// 32f unit-stride kernels. This program's cache-size query comes first in the dynamic lookup: it
// answers what a case asks and counts the calls, which tells which decisions a call took.
#include <cstdint>
#include <vector>

#include "operands.h"
#include "reference.h"

namespace cache { int calls = 0; std::int32_t answer = 0; }

extern "C" std::int32_t orlGetMaxCacheSizeB(std::int32_t* sizeB) { ++cache::calls, *sizeB = cache::answer; return 0; }

using t::K;
using t::L;
using t::Strides;

namespace {

template <class E, bool array, L lay, class Fn>
void checkTranspose(Fn fn, int w, int h, int count, Strides st)
{
    constexpr K kind = array ? K::ma : K::m;
    t::Mat<E, kind, lay> s(w, h, count, st, 6);
    t::Mat<E, kind, lay, true> d(h, w, count, st, 7, 3);  // width rows of height elements
    t::fillEach(s, s.count, h, w, ref::patternBits<E>);
    if constexpr (array) ASSERT_EQ(t::call(fn, std::tuple_cat(s.args(), std::make_tuple(w, h), d.args()), count), orlStatusOk);
    else ASSERT_EQ(t::call(fn, std::tuple_cat(s.args(), std::make_tuple(w, h), d.args())), orlStatusOk);
    for (int k = 0; k < s.count; ++k)
        for (int i = 0; i < h; ++i)
            for (int j = 0; j < w; ++j) ASSERT_EQ(std::memcmp(&d(k, j, i), &s(k, i, j), sizeof(E)), 0) << k << " " << i << " " << j;
}

#define ORL_TR1(sh, array, suffix, lay, E, ty)                                                             \
    t::registry().push_back({"orlmTranspose_" #sh "_" #ty #suffix, [](int w, int h, int n, Strides st) { \
        checkTranspose<E, array, lay>(orlmTranspose_##sh##_##ty##suffix, w, h, n, st); }});
#define ORL_TR(sh, array, suffix, lay) ORL_TR1(sh, array, suffix, lay, float, 32f) ORL_TR1(sh, array, suffix, lay, double, 64f)

const bool registered = [] {
    ORL_TR(m, false, , L::Std) ORL_TR(m, false, _P, L::P)
    ORL_TR(ma, true, , L::Std) ORL_TR(ma, true, _P, L::P) ORL_TR(ma, true, _L, L::L)
    return true;
}();

TEST(TransposeValues, EveryMemberSizeStrideAndCountAsBits)
{
    ASSERT_TRUE(registered);
    cache::answer = 0;
    t::checkEveryMember(10, {{3, 3}, {4, 4}, {5, 5}, {6, 6}, {1, 1}, {2, 3}, {7, 5}, {9, 9}});
}

// member: 'm' Transpose_m_32f, 'a' Transpose_ma_32f, 'L' Transpose_ma_32f_L; the
// cache size answered, the queries the call makes, floats after each row (odd: unaligned stores).
struct Decision { const char* what; char member; int w, h, count, answer, calls, pad; };

// One case on padded rows: the transposed elements, and the padding left as it was.
void runDecision(const Decision& c)
{
    const int ss = c.w + c.pad, ds = c.h + c.pad;  // row lengths in floats
    const size_t sItem = size_t(ss) * c.h, dItem = size_t(ds) * c.w;
    std::vector<float> src(sItem * c.count), dst(dItem * c.count + 4);
    for (size_t x = 0; x < src.size(); ++x) ref::patternBits(&src[x], unsigned(x));
    std::memset(dst.data(), 0xA5, dst.size() * 4);
    std::vector<float> expect = dst;
    std::vector<const float*> ls;  // the _L lists
    std::vector<float*> ld;
    for (int k = 0; k < c.count; ++k) {
        ls.push_back(&src[k * sItem]), ld.push_back(&dst[k * dItem]);
        for (int i = 0; i < c.h; ++i)
            for (int j = 0; j < c.w; ++j) std::memcpy(&expect[k * dItem + size_t(j) * ds + i], &src[k * sItem + size_t(i) * ss + j], 4);
    }
    cache::answer = c.answer, cache::calls = 0;
    const orlStatus r = c.member == 'm' ? orlmTranspose_m_32f(src.data(), ss * 4, 4, c.w, c.h, dst.data(), ds * 4, 4)
                        : c.member == 'a'
                            ? orlmTranspose_ma_32f(src.data(), int(sItem * 4), ss * 4, 4, c.w, c.h, dst.data(), int(dItem * 4), ds * 4, 4, c.count)
                            : orlmTranspose_ma_32f_L(ls.data(), 0, ss * 4, 4, c.w, c.h, ld.data(), 0, ds * 4, 4, c.count);
    ASSERT_EQ(r, orlStatusOk) << c.what;
    EXPECT_EQ(cache::calls, c.calls) << c.what;
    EXPECT_EQ(std::memcmp(dst.data(), expect.data(), dst.size() * 4), 0) << c.what;
}

TEST(TransposeBands, CacheQueriesAndPathsOnBothSidesOfTheLimits)
{
    const std::int32_t big = 1 << 30, k256 = 256 * 1024;
    const Decision cases[] = {
        {"smaller side 128: ordinary, no query", 'm', 128, 300, 1, big, 0, 0},
        {"smaller side 128 (height)", 'm', 300, 128, 1, big, 0, 1},
        {"129x129, cache unknown: ordinary", 'm', 129, 129, 1, 0, 1, 0},
        {"129x129 above a small cache: one streamed band", 'm', 129, 129, 1, 4096, 1, 0},
        {"200x200 above 256 KiB: one streamed band of 200 rows", 'm', 200, 200, 1, k256, 1, 0},
        {"256 wide, 130 high streamed: bands of 64, 64, 2", 'm', 256, 130, 1, 4096, 1, 3},
        {"131x261 in cache: bands of 64 and 5, unaligned", 'm', 131, 261, 1, big, 1, 1},
        {"array 7x7 x334: 130928 bytes, no query", 'a', 7, 7, 334, 163840, 0, 0},
        {"array 7x7 x335: 131320 bytes above 3/4 of 160 KiB, streamed", 'a', 7, 7, 335, 163840, 1, 0},
        {"list 7x7 x335 streamed", 'L', 7, 7, 335, 163840, 1, 1},
        {"array 130x130 x2, cache unknown: each item asks", 'a', 130, 130, 2, 0, 3, 0},
        {"array 130x130 x2 streamed: the items do not ask", 'a', 130, 130, 2, 300000, 1, 0},
        {"array 130x130 x2 within 3/4: each item asks, fits", 'a', 130, 130, 2, 400000, 3, 2},
        {"list 130x130 x2 above a small cache", 'L', 130, 130, 2, 1000, 1, 0},
        {"array of 4x4 straight-line forms never asks", 'a', 4, 4, 3000, 4096, 0, 0},
        {"array of 3x5, over 131072 bytes", 'a', 3, 5, 2000, 4096, 1, 0},
    };
    for (const Decision& c : cases) runDecision(c);
}

TEST(TransposeChecks, GeneralOrder)
{
    t::CheckBuffers b;
    const ref::OrderCase cases[] = {
        {"m: NULL before size", "NZT", "NZ", [&] { return orlmTranspose_m_32f(nullptr, 16, 4, 0, 4, b.fo, 16, 4); }},
        {"m: size before stride", "NZT", "ZT", [&] { return orlmTranspose_m_32f(b.f, 16, 6, 4, 0, b.fo, 16, 4); }},
        {"m _P: size before offset", "NZO", "ZO", [&] { return orlmTranspose_m_32f_P(b.tf, 2, 0, 2, b.to, 0); }},
        {"ma: count before size", "NCZT", "CZ", [&] { return orlmTranspose_ma_32f(b.f, 64, 16, 4, 0, 4, b.fo, 64, 16, 4, 0); }},
        {"ma: stride0 0 refused with count 1", "NCZT", "T", [&] { return orlmTranspose_ma_64f(b.g, 0, 32, 8, 2, 2, b.go, 64, 32, 8, 1); }},
        {"ma _P: stride0 before offset", "NCZTO", "TO", [&] { return orlmTranspose_ma_32f_P(b.tf, 2, 6, 2, 2, b.to, 0, 64, 2); }},
        {"ma _L: stride2 before offset", "NCZTO", "TO", [&] { return orlmTranspose_ma_32f_L(b.tf, -4, 16, 6, 2, 2, b.to, 0, 16, 4, 2); }},
    };
    for (const ref::OrderCase& c : cases) {
        EXPECT_EQ(c.call(), ref::expectedStatus(c.order, c.failing)) << c.what;
        EXPECT_TRUE(b.untouched()) << c.what;
    }
}

}  // namespace
