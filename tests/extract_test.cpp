// Extract: every member's dense block as bits (transposed sources as their
// logical matrices), the check orders of each shape and layout, and the
// product check of the members that have it.
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "operands.h"
#include "reference.h"

using t::K;
using t::L;
using t::Strides;

namespace {

// kind: 'm', 't' (matrices) or 'v'; array for the shapes with an `a`.
template <class E, char kind, bool array, L lay, class Fn>
void checkExtract(Fn fn, int w, int h, int count, Strides st)
{
    constexpr K mk = kind == 't' ? (array ? K::ta : K::t) : (array ? K::ma : K::m);
    using Src = std::conditional_t<kind == 'v', t::Vec<E, array, lay>, t::Mat<E, mk, lay>>;
    if (kind == 'v') h = 1;
    if (!array) count = 1;
    auto s = [&] {
        if constexpr (kind == 'v') return Src(w, count, st, 4);
        else return Src(w, h, count, st, 4);
    }();
    t::fillEach(s, count, h, w, ref::patternBits<E>);
    std::vector<E> dst(size_t(count) * w * h + 4);
    std::memset(dst.data(), 0xA5, dst.size() * sizeof(E));
    std::vector<E> expect = dst;
    for (int k = 0; k < count; ++k)
        for (int i = 0; i < h; ++i)
            for (int j = 0; j < w; ++j) std::memcpy(&expect[(size_t(k) * h + i) * w + j], t::elem(s, k, i, j), sizeof(E));
    auto sizes = [&] {
        if constexpr (kind == 'v') return std::make_tuple(w);
        else return std::make_tuple(w, h);
    }();
    orlStatus r;
    if constexpr (array) r = std::apply(fn, std::tuple_cat(s.args(), std::make_tuple(dst.data()), sizes, std::make_tuple(count)));
    else r = std::apply(fn, std::tuple_cat(s.args(), std::make_tuple(dst.data()), sizes));
    ASSERT_EQ(r, orlStatusOk);
    ASSERT_EQ(std::memcmp(dst.data(), expect.data(), dst.size() * sizeof(E)), 0);
}

template <class E, char kind, bool array, L lay, class Fn>
void add(std::string name, Fn fn)
{
    t::registry().push_back({name, [fn](int w, int h, int n, Strides st) { checkExtract<E, kind, array, lay>(fn, w, h, n, st); }});
}

#define ORL_EX1(sh, kind, array, suffix, lay)                                                                    \
    add<float, kind, array, lay>("orlmExtract_" #sh "_32f" #suffix, orlmExtract_##sh##_32f##suffix);             \
    add<double, kind, array, lay>("orlmExtract_" #sh "_64f" #suffix, orlmExtract_##sh##_64f##suffix);
#define ORL_EX(sh, kind) ORL_EX1(sh, kind, false, , L::Std) ORL_EX1(sh, kind, false, _P, L::P)
#define ORL_EXA(sh, kind) ORL_EX1(sh, kind, true, , L::Std) ORL_EX1(sh, kind, true, _P, L::P) ORL_EX1(sh, kind, true, _L, L::L)

const bool registered = [] {
    ORL_EX(m, 'm') ORL_EX(t, 't') ORL_EX(v, 'v')
    ORL_EXA(ma, 'm') ORL_EXA(ta, 't') ORL_EXA(va, 'v')
    return true;
}();

TEST(ExtractValues, EveryMemberSizeStrideAndCountAsBits)
{
    ASSERT_TRUE(registered);
    t::checkEveryMember(30, {{2, 3}, {4, 4}, {5, 1}, {1, 6}});
}

// ---- argument checks -------------------------------------------------------

TEST(ExtractChecks, OrdersOfEachShapeAndLayout)
{
    float f[64] = {}, out[64];
    double g[64] = {}, outg[64];
    std::fill(out, out + 64, -1.f), std::fill(outg, outg + 64, -1.0);
    const float* tf[16];
    const double* tg[16];
    for (int i = 0; i < 16; ++i) tf[i] = f + i, tg[i] = g + i;
    const ref::OrderCase cases[] = {
        {"m: NULL before size", "NZT", "NZ", [&] { return orlmExtract_m_32f(nullptr, 16, 4, out, 0, 4); }},
        {"m _P: size before NULL", "ZNO", "NZ", [&] { return orlmExtract_m_32f_P(nullptr, 0, out, 0, 4); }},
        {"t 64f _P: size before NULL", "ZNO", "NZ", [&] { return orlmExtract_t_64f_P(tg, 0, nullptr, 2, 0); }},
        {"t _P: offset", "ZNO", "O", [&] { return orlmExtract_t_32f_P(tf, -4, out, 2, 2); }},
        {"v 32f _P: NULL before size", "NZO", "NZ", [&] { return orlmExtract_v_32f_P(tf, 0, nullptr, 0); }},
        {"v 64f _P: size before NULL", "ZNO", "NZ", [&] { return orlmExtract_v_64f_P(tg, 0, nullptr, 0); }},
        {"v: size before stride", "NZT", "ZT", [&] { return orlmExtract_v_64f(g, 12, outg, 0); }},
        {"ma: size before count", "NZCT", "ZC", [&] { return orlmExtract_ma_32f(f, 64, 16, 4, out, 4, 0, 0); }},
        {"ma: count before stride", "NZCT", "CT", [&] { return orlmExtract_ma_32f(f, 64, 6, 4, out, 4, 4, 0); }},
        {"ta: stride0 0 refused with count 1", "NZCT", "T", [&] { return orlmExtract_ta_64f(g, 0, 32, 8, outg, 2, 2, 1); }},
        {"ma _P: offset before stride0", "NZCOT", "OT", [&] { return orlmExtract_ma_32f_P(tf, 2, 6, out, 2, 2, 2); }},
        {"va _L: offset before stride2", "NZCOT", "OT", [&] { return orlmExtract_va_32f_L(tf, -4, 6, out, 4, 2); }},
        {"va _P: count before offset", "NZCOT", "CO", [&] { return orlmExtract_va_64f_P(tg, 4, 64, outg, 4, -1); }},
    };
    for (const ref::OrderCase& c : cases) {
        EXPECT_EQ(c.call(), ref::expectedStatus(c.order, c.failing)) << c.what;
        EXPECT_TRUE(std::all_of(out, out + 64, [](float x) { return x == -1.f; })) << c.what;
        EXPECT_TRUE(std::all_of(outg, outg + 64, [](double x) { return x == -1.0; })) << c.what;
    }
    // Once the 32-bit product of the sizes wraps below 1, the members with the
    // product check return at once and write nothing.
    EXPECT_EQ(orlmExtract_m_32f_P(tf, 0, out, 65536, 65536), orlStatusOk);
    EXPECT_EQ(orlmExtract_ma_64f_P(tg, 0, 64, outg, 65536, 32768, 3), orlStatusOk);
    EXPECT_TRUE(std::all_of(out, out + 64, [](float x) { return x == -1.f; }));
    EXPECT_TRUE(std::all_of(outg, outg + 64, [](double x) { return x == -1.0; }));
}

}  // namespace
