// Copy between layouts and LoadIdentity: every member's values as bits over
// the nine layout pairs, the check orders with their variations, stride0
// passing with one item, overlapping copies, and no parallel region.
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "operands.h"
#include "reference.h"

using t::L;
using t::Strides;

namespace {

constexpr L layOf(char c) { return c == 'S' ? L::Std : c == 'P' ? L::P : L::L; }

// Source items filled with bit patterns, the result with 0xA5 bytes; every
// element of the result must carry its source's bits.
template <class E, bool vec, L ls, L ld, class Fn>
void checkCopy(Fn fn, int w, int h, int count, Strides st)
{
    using Src = std::conditional_t<vec, t::Vec<E, true, ls>, t::Mat<E, t::K::ma, ls>>;
    using Dst = std::conditional_t<vec, t::Vec<E, true, ld, true>, t::Mat<E, t::K::ma, ld, true>>;
    const int rows = vec ? 1 : h;
    auto make = [&](unsigned seed) {
        if constexpr (vec) return std::tuple<Src, Dst>(Src(w, count, st, seed), Dst(w, count, st, seed + 1));
        else return std::tuple<Src, Dst>(Src(w, h, count, st, seed), Dst(w, h, count, st, seed + 1, 3));
    };
    auto [s, d] = make(5);
    std::fill(d.mem.begin(), d.mem.end(), 0xA5);
    t::fillEach(s, count, rows, w, ref::patternBits<E>);
    orlStatus r;
    if constexpr (vec) r = t::call(fn, std::tuple_cat(s.args(), d.args()), w, count);
    else r = t::call(fn, std::tuple_cat(s.args(), d.args()), w, h, count);
    ASSERT_EQ(r, orlStatusOk);
    for (int k = 0; k < count; ++k)
        for (int i = 0; i < rows; ++i)
            for (int j = 0; j < w; ++j)
                ASSERT_EQ(std::memcmp(t::elem(d, k, i, j), t::elem(s, k, i, j), sizeof(E)), 0) << k << " " << i << " " << j;
}

template <class E, bool vec, L ls, L ld, class Fn>
void add(std::string name, Fn fn)
{
    t::registry().push_back({name, [fn](int w, int h, int n, Strides st) { checkCopy<E, vec, ls, ld>(fn, w, h, n, st); }});
}

#define ORL_COPY(sh, vec, X, Y)                                                                              \
    add<float, vec, layOf(#X[0]), layOf(#Y[0])>("orlmCopy_" #sh "_32f_" #X #Y, orlmCopy_##sh##_32f_##X##Y);  \
    add<double, vec, layOf(#X[0]), layOf(#Y[0])>("orlmCopy_" #sh "_64f_" #X #Y, orlmCopy_##sh##_64f_##X##Y);
#define ORL_COPY_PAIRS(sh, vec)                                                                   \
    ORL_COPY(sh, vec, S, S) ORL_COPY(sh, vec, S, P) ORL_COPY(sh, vec, S, L) ORL_COPY(sh, vec, P, S) \
    ORL_COPY(sh, vec, P, P) ORL_COPY(sh, vec, P, L) ORL_COPY(sh, vec, L, S) ORL_COPY(sh, vec, L, P) ORL_COPY(sh, vec, L, L)

const bool registered = [] {
    ORL_COPY_PAIRS(ma, false)
    ORL_COPY_PAIRS(va, true)
    return true;
}();

TEST(CopyValues, EveryPairSizeStrideAndCountAsBits)
{
    ASSERT_TRUE(registered);
    t::checkEveryMember(36, {{4, 4}, {3, 5}, {1, 1}, {7, 2}});
}

// A result that overlaps its source by one element ahead or behind gets
// what copying one element at a time in ascending order gives; places that
// only touch (shift 48) or do not meet, packed or with gaps, get a plain copy.
TEST(CopyValues, OverlapGivesForwardElementCopy)
{
    for (int shift : {1, -1, 5, -16, 48, 80})
        for (int h : {3, 4}) {  // 4x4 items 64 bytes apart are one packed block
            std::vector<float> buf(200), expect;
            for (int x = 0; x < 200; ++x) ref::patternBits(&buf[x], x);
            expect = buf;
            const int base = 40, s0 = 4 * 16, s1 = 4 * 4;  // 3 items of 4 wide in rows of 4
            auto addr = [&](std::vector<float>& b, int off) {
                return [&b, off, s0, s1](int k, int i, int j) { return &b[off + (k * s0 + i * s1) / 4 + j]; };
            };
            ref::forwardCopy<float>(3, h, 4, addr(expect, base), addr(expect, base + shift));
            ASSERT_EQ(orlmCopy_ma_32f_SS(&buf[base], s0, s1, 4, &buf[base + shift], s0, s1, 4, 4, h, 3), orlStatusOk);
            EXPECT_EQ(std::memcmp(buf.data(), expect.data(), buf.size() * 4), 0) << "shift " << shift << " height " << h;
        }
    for (int shift : {1, -1, 5, -16}) {
        // Through a list on the result side, wide strides, 64f.
        std::vector<double> g(300), gexp;
        for (int x = 0; x < 300; ++x) ref::patternBits(&g[x], x);
        gexp = g;
        double* lst[2] = {&g[100 + shift], &g[130 + shift]};
        auto src = [&](int k, int, int j) { return &gexp[100 + k * 12 + 2 * j]; };
        auto dst = [&](int k, int, int j) { return &gexp[100 + shift + k * 30 + 2 * j]; };
        ref::forwardCopy<double>(2, 1, 10, src, dst);
        ASSERT_EQ(orlmCopy_va_64f_SL(&g[100], 96, 16, lst, 0, 16, 10, 2), orlStatusOk);
        EXPECT_EQ(std::memcmp(g.data(), gexp.data(), g.size() * 8), 0) << "list, shift " << shift;
    }
}

// ---- argument checks -------------------------------------------------------

struct Bufs {
    float f[64] = {}, out[64];
    double g[64] = {}, outg[64];
    const float* tf[16];
    const double* tg[16];
    float* to[16];
    double* tgo[16];
    Bufs()
    {
        std::fill(out, out + 64, -1.f), std::fill(outg, outg + 64, -1.0);
        for (int i = 0; i < 16; ++i) tf[i] = f + i, tg[i] = g + i, to[i] = out + 4 * i, tgo[i] = outg + 4 * i;
    }
    bool untouched() const
    {
        return std::all_of(out, out + 64, [](float x) { return x == -1.f; }) &&
               std::all_of(outg, outg + 64, [](double x) { return x == -1.0; });
    }
};

// Each row makes the classes in `failing` fail and expects the first of them
// in the member's order; a failed call writes nothing.
TEST(CopyChecks, OrdersAndTheirVariations)
{
    Bufs b;
    // Bad values: stride 6 (T), offset 2 (O), stride0 0 or 6 with count 2 (S).
    const ref::OrderCase cases[] = {
        {"SS NULL before size", "NZCTOS", "NZ", [&] { return orlmCopy_ma_32f_SS(nullptr, 64, 16, 4, b.out, 64, 16, 4, 0, 4, 2); }},
        {"SS size before count", "NZCTOS", "ZC", [&] { return orlmCopy_ma_32f_SS(b.f, 64, 16, 4, b.out, 64, 16, 4, 4, 0, 0); }},
        {"SS count before strides", "NZCTOS", "CT", [&] { return orlmCopy_ma_32f_SS(b.f, 64, 6, 4, b.out, 64, 16, 4, 4, 4, 0); }},
        {"SS stride0 0 with count 2", "NZCTOS", "S", [&] { return orlmCopy_ma_32f_SS(b.f, 0, 16, 4, b.out, 64, 16, 4, 2, 2, 2); }},
        {"SP stride1 before offset", "NZCTOS", "TO", [&] { return orlmCopy_ma_32f_SP(b.f, 64, 6, 4, b.to, 2, 64, 2, 2, 2); }},
        {"SP offset before stride0", "NZCTOS", "OS", [&] { return orlmCopy_ma_32f_SP(b.f, 64, 16, 4, b.to, 2, 6, 2, 2, 2); }},
        {"LL 64f stride2 before offset", "NZCTOS", "TO", [&] { return orlmCopy_ma_64f_LL(b.tg, 4, 32, 12, b.tgo, 0, 32, 8, 2, 2, 2); }},
        {"PL stride0 after offset", "NZCTOS", "OS", [&] { return orlmCopy_ma_32f_PL(b.tf, 0, 6, b.to, 2, 16, 4, 2, 2, 2); }},
        {"PP offsets then stride0", "NZCOS", "OS", [&] { return orlmCopy_ma_64f_PP(b.tg, 4, 0, b.tgo, 0, 64, 2, 2, 2); }},
        {"va PP offsets then stride0", "NZCOS", "OS", [&] { return orlmCopy_va_32f_PP(b.tf, 0, 4, b.to, -4, 0, 4, 2); }},
        {"va 32f LP offset before stride2", "NZCOTS", "TO", [&] { return orlmCopy_va_32f_LP(b.tf, 0, 6, b.to, 2, 64, 4, 2); }},
        {"va 64f LP stride2 before offset", "NZCTOS", "TO", [&] { return orlmCopy_va_64f_LP(b.tg, 0, 12, b.tgo, 4, 64, 4, 2); }},
        {"va 32f SP offset before stride2", "NZCOTS", "TO", [&] { return orlmCopy_va_32f_SP(b.f, 64, 6, b.to, 2, 64, 4, 2); }},
        {"va 64f SP stride2 before offset", "NZCTOS", "TO", [&] { return orlmCopy_va_64f_SP(b.g, 64, 12, b.tgo, 4, 64, 4, 2); }},
        {"va 32f LS keeps stride2 first", "NZCTOS", "TO", [&] { return orlmCopy_va_32f_LS(b.tf, 2, 4, b.out, 64, 6, 4, 2); }},
        {"va 32f PS offset before stride0", "NZCTOS", "OS", [&] { return orlmCopy_va_32f_PS(b.tf, 2, 0, b.out, 64, 4, 4, 2); }},
        {"Identity NULL before size", "NZCTS", "NZ", [&] { return orlmLoadIdentity_ma_32f(nullptr, 64, 16, 4, 0, 4, 2); }},
        {"Identity count before stride", "NZCTS", "CT", [&] { return orlmLoadIdentity_ma_64f(b.outg, 64, 6, 8, 2, 2, 0); }},
        {"Identity stride0 0, count 2", "NZCTS", "S", [&] { return orlmLoadIdentity_ma_32f(b.out, 0, 16, 4, 2, 2, 2); }},
        {"Identity 32f P offset before count", "NZOCS", "OC", [&] { return orlmLoadIdentity_ma_32f_P(b.to, 2, 64, 2, 2, 0); }},
        {"Identity 64f P count before offset", "NZCOS", "OC", [&] { return orlmLoadIdentity_ma_64f_P(b.tgo, 4, 64, 2, 2, 0); }},
        {"Identity P stride0 with count 2", "NZOCS", "S", [&] { return orlmLoadIdentity_ma_32f_P(b.to, 0, 6, 2, 2, 2); }},
        {"Identity L stride before offset", "NZCTO", "TO", [&] { return orlmLoadIdentity_ma_32f_L(b.to, 2, 16, 6, 2, 2, 2); }},
    };
    for (const ref::OrderCase& c : cases) {
        EXPECT_EQ(c.call(), ref::expectedStatusWithS(c.order, c.failing)) << c.what;
        EXPECT_TRUE(b.untouched()) << c.what;
    }
}

// With one item a stride0 of any value passes and only item 0 is touched.
TEST(CopyChecks, StrideZeroPassesWithOneItem)
{
    Bufs b;
    for (int x = 0; x < 16; ++x) b.f[x] = float(x + 1);
    ASSERT_EQ(orlmCopy_ma_32f_SS(b.f, 0, 16, 4, b.out, -7, 16, 4, 4, 4, 1), orlStatusOk);
    EXPECT_EQ(std::memcmp(b.out, b.f, 64), 0);
    EXPECT_EQ(b.out[16], -1.f);
    ASSERT_EQ(orlmCopy_va_64f_PP(b.tg, 0, 3, b.tgo, 0, 0, 16, 1), orlStatusOk);
    ASSERT_EQ(orlmLoadIdentity_ma_32f(b.out, 0, 16, 4, 4, 4, 1), orlStatusOk);
    ASSERT_EQ(orlmLoadIdentity_ma_64f_P(b.tgo, 0, 0, 4, 4, 1), orlStatusOk);
    EXPECT_EQ(b.outg[0], 1.0);
    EXPECT_EQ(b.outg[4 * 5], 1.0);
    EXPECT_EQ(b.outg[4 * 6], 0.0);
}

// ---- LoadIdentity ----------------------------------------------------------

template <class E, L lay, class Fn>
void checkIdentity(const char* name, Fn fn)
{
    for (auto [w, h] : {std::pair{2, 3}, {3, 2}, {4, 4}, {1, 5}})
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            t::Mat<E, t::K::ma, lay, true> d(w, h, 3, st, 9);
            std::fill(d.mem.begin(), d.mem.end(), 0xFF);  // NaN everywhere
            ASSERT_EQ(t::call(fn, d.args(), w, h, 3), orlStatusOk) << name;
            for (int k = 0; k < 3; ++k)
                for (int i = 0; i < h; ++i)
                    for (int j = 0; j < w; ++j)
                        ASSERT_TRUE(ref::sameBits(d(k, i, j), E(i == j ? 1 : 0))) << name << " " << w << "x" << h;
        }
}

TEST(LoadIdentity, OnesOnTheMainDiagonalAsFarAsItGoes)
{
    checkIdentity<float, L::Std>("32f", orlmLoadIdentity_ma_32f);
    checkIdentity<float, L::P>("32f_P", orlmLoadIdentity_ma_32f_P);
    checkIdentity<float, L::L>("32f_L", orlmLoadIdentity_ma_32f_L);
    checkIdentity<double, L::Std>("64f", orlmLoadIdentity_ma_64f);
    checkIdentity<double, L::P>("64f_P", orlmLoadIdentity_ma_64f_P);
    checkIdentity<double, L::L>("64f_L", orlmLoadIdentity_ma_64f_L);
}

}  // namespace
