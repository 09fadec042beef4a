// Copy between layouts and LoadIdentity: every member's values as bits over the nine layout
// pairs, the check orders with their variations, stride0 with one item, overlapping copies.
#include <vector>

#include "operands.h"
#include "reference.h"

using t::L;
using t::Strides;

namespace {

constexpr L layOf(char c) { return c == 'S' ? L::Std : c == 'P' ? L::P : L::L; }

// Source items of bit patterns, the result of 0xA5 bytes: each result element carries its source's bits.
template <class E, bool vec, L ls, L ld, class Fn>
void checkCopy(Fn fn, int w, int h, int count, Strides st)
{
    using Src = std::conditional_t<vec, t::Vec<E, true, ls>, t::Mat<E, t::K::ma, ls>>;
    using Dst = std::conditional_t<vec, t::Vec<E, true, ld, true>, t::Mat<E, t::K::ma, ld, true>>;
    if (vec) h = 1;
    Src s(w, h, count, st, 5);
    Dst d(w, h, count, st, 6, 3);
    std::fill(d.mem.begin(), d.mem.end(), 0xA5);
    t::fillEach(s, count, h, w, ref::patternBits<E>);
    if constexpr (vec) ASSERT_EQ(t::call(fn, std::tuple_cat(s.args(), d.args()), w, count), orlStatusOk);
    else ASSERT_EQ(t::call(fn, std::tuple_cat(s.args(), d.args()), w, h, count), orlStatusOk);
    for (int k = 0; k < count; ++k)
        for (int i = 0; i < h; ++i)
            for (int j = 0; j < w; ++j) ASSERT_EQ(std::memcmp(&d(k, i, j), &s(k, i, j), sizeof(E)), 0) << k << " " << i << " " << j;
}

// LoadIdentity over NaN: ones on the main diagonal as far as it goes, zeros elsewhere.
template <class E, L ld, class Fn>
void checkIdentity(Fn fn, int w, int h, int count, Strides st)
{
    t::Mat<E, t::K::ma, ld, true> d(w, h, count, st, 9);
    std::fill(d.mem.begin(), d.mem.end(), 0xFF);
    ASSERT_EQ(t::call(fn, d.args(), w, h, count), orlStatusOk);
    for (int k = 0; k < count; ++k)
        for (int i = 0; i < h; ++i)
            for (int j = 0; j < w; ++j) ASSERT_TRUE(ref::sameBits(d(k, i, j), E(i == j ? 1 : 0))) << k << " " << i << " " << j;
}

#define ORL_COPY(sh, vec, X, Y, E, ty)                                                                      \
    t::registry().push_back({"orlmCopy_" #sh "_" #ty "_" #X #Y, [](int w, int h, int n, Strides st) {      \
        checkCopy<E, vec, layOf(#X[0]), layOf(#Y[0])>(orlmCopy_##sh##_##ty##_##X##Y, w, h, n, st); }});
#define ORL_COPY_PAIRS(sh, vec, E, ty)                                                                                   \
    ORL_COPY(sh, vec, S, S, E, ty) ORL_COPY(sh, vec, S, P, E, ty) ORL_COPY(sh, vec, S, L, E, ty) ORL_COPY(sh, vec, P, S, E, ty) \
    ORL_COPY(sh, vec, P, P, E, ty) ORL_COPY(sh, vec, P, L, E, ty) ORL_COPY(sh, vec, L, S, E, ty) ORL_COPY(sh, vec, L, P, E, ty) \
    ORL_COPY(sh, vec, L, L, E, ty)
#define ORL_IDENTITY(E, ty, lay, sfx)                                                             \
    t::registry().push_back({"orlmLoadIdentity_ma_" #ty #sfx, [](int w, int h, int n, Strides st) { \
        checkIdentity<E, L::lay>(orlmLoadIdentity_ma_##ty##sfx, w, h, n, st); }});

const bool registered = [] {
    ORL_COPY_PAIRS(ma, false, float, 32f) ORL_COPY_PAIRS(ma, false, double, 64f)
    ORL_COPY_PAIRS(va, true, float, 32f) ORL_COPY_PAIRS(va, true, double, 64f)
    ORL_IDENTITY(float, 32f, Std, ) ORL_IDENTITY(float, 32f, P, _P) ORL_IDENTITY(float, 32f, L, _L)
    ORL_IDENTITY(double, 64f, Std, ) ORL_IDENTITY(double, 64f, P, _P) ORL_IDENTITY(double, 64f, L, _L)
    return true;
}();

TEST(CopyValues, EveryMemberSizeStrideAndCountAsBits)
{
    ASSERT_TRUE(registered);
    t::checkEveryMember(42, {{4, 4}, {3, 5}, {1, 1}, {7, 2}});
}

// A result overlapping its source gets what copying one element at a time in ascending order gives;
// places that only touch (shift 48) or do not meet, packed or with gaps, get a plain copy.
TEST(CopyValues, OverlapGivesForwardElementCopy)
{
    for (int shift : {1, -1, 5, -16, 48, 80})
        for (int h : {3, 4}) {  // 4x4 items 64 bytes apart are one packed block
            std::vector<float> buf(200), expect;
            for (int x = 0; x < 200; ++x) ref::patternBits(&buf[x], x);
            expect = buf;
            const int base = 40, s0 = 4 * 16, s1 = 4 * 4;  // 3 items of 4 wide in rows of 4
            auto addr = [&](std::vector<float>& b, int off) { return [&b, off](int k, int i, int j) { return &b[off + k * 16 + i * 4 + j]; }; };
            ref::forwardCopy<float>(3, h, 4, addr(expect, base), addr(expect, base + shift));
            ASSERT_EQ(orlmCopy_ma_32f_SS(&buf[base], s0, s1, 4, &buf[base + shift], s0, s1, 4, 4, h, 3), orlStatusOk);
            EXPECT_EQ(std::memcmp(buf.data(), expect.data(), buf.size() * 4), 0) << "shift " << shift << " height " << h;
        }
}

// The first failing class in the member's order, nothing written; bad values:
// stride 6 (T), offset 2 (O), stride0 0 or 6 with count 2 (S).
TEST(CopyChecks, OrdersAndTheirVariations)
{
    t::CheckBuffers b;
    const ref::OrderCase cases[] = {
        {"SS NULL before size", "NZCTOS", "NZ", [&] { return orlmCopy_ma_32f_SS(nullptr, 64, 16, 4, b.fo, 64, 16, 4, 0, 4, 2); }},
        {"SS size before count", "NZCTOS", "ZC", [&] { return orlmCopy_ma_32f_SS(b.f, 64, 16, 4, b.fo, 64, 16, 4, 4, 0, 0); }},
        {"SS count before strides", "NZCTOS", "CT", [&] { return orlmCopy_ma_32f_SS(b.f, 64, 6, 4, b.fo, 64, 16, 4, 4, 4, 0); }},
        {"SS stride0 0 with count 2", "NZCTOS", "S", [&] { return orlmCopy_ma_32f_SS(b.f, 0, 16, 4, b.fo, 64, 16, 4, 2, 2, 2); }},
        {"SP stride1 before offset", "NZCTOS", "TO", [&] { return orlmCopy_ma_32f_SP(b.f, 64, 6, 4, b.to, 2, 64, 2, 2, 2); }},
        {"SP offset before stride0", "NZCTOS", "OS", [&] { return orlmCopy_ma_32f_SP(b.f, 64, 16, 4, b.to, 2, 6, 2, 2, 2); }},
        {"PP offsets then stride0", "NZCOS", "OS", [&] { return orlmCopy_ma_64f_PP(b.tg, 4, 0, b.tgo, 0, 64, 2, 2, 2); }},
        {"va PP offsets then stride0", "NZCOS", "OS", [&] { return orlmCopy_va_32f_PP(b.tf, 0, 4, b.to, -4, 0, 4, 2); }},
        {"va 32f LP offset before stride2", "NZCOTS", "TO", [&] { return orlmCopy_va_32f_LP(b.tf, 0, 6, b.to, 2, 64, 4, 2); }},
        {"va 64f LP stride2 before offset", "NZCTOS", "TO", [&] { return orlmCopy_va_64f_LP(b.tg, 0, 12, b.tgo, 4, 64, 4, 2); }},
        {"va 32f SP offset before stride2", "NZCOTS", "TO", [&] { return orlmCopy_va_32f_SP(b.f, 64, 6, b.to, 2, 64, 4, 2); }},
        {"va 64f SP stride2 before offset", "NZCTOS", "TO", [&] { return orlmCopy_va_64f_SP(b.g, 64, 12, b.tgo, 4, 64, 4, 2); }},
        {"va 32f PS offset before stride0", "NZCTOS", "OS", [&] { return orlmCopy_va_32f_PS(b.tf, 2, 0, b.fo, 64, 4, 4, 2); }},
        {"Identity NULL before size", "NZCTS", "NZ", [&] { return orlmLoadIdentity_ma_32f(nullptr, 64, 16, 4, 0, 4, 2); }},
        {"Identity count before stride", "NZCTS", "CT", [&] { return orlmLoadIdentity_ma_64f(b.go, 64, 6, 8, 2, 2, 0); }},
        {"Identity stride0 0, count 2", "NZCTS", "S", [&] { return orlmLoadIdentity_ma_32f(b.fo, 0, 16, 4, 2, 2, 2); }},
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
    t::CheckBuffers b;
    ASSERT_EQ(orlmCopy_ma_32f_SS(b.f, 0, 16, 4, b.fo, -7, 16, 4, 4, 4, 1), orlStatusOk);
    EXPECT_TRUE(std::memcmp(b.fo, b.f, 64) == 0 && b.fo[16] == -1.f);
    ASSERT_EQ(orlmCopy_va_64f_PP(b.tg, 0, 3, b.tgo, 0, 0, 16, 1), orlStatusOk);
    EXPECT_TRUE(std::memcmp(b.go, b.g, 16 * 8) == 0 && b.go[16] == -1.0);
    ASSERT_EQ(orlmLoadIdentity_ma_32f(b.fo, 0, 16, 4, 4, 4, 1), orlStatusOk);
    ASSERT_EQ(orlmLoadIdentity_ma_64f_P(b.tgo, 0, 0, 4, 4, 1), orlStatusOk);
    EXPECT_TRUE(b.go[5] == 1.0 && b.go[6] == 0.0);
}

}  // namespace
