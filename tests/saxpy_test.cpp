// Saxpy and LComb: values in every member, layout and stride case, the
// precision class of every kernel told apart bit for bit, the argument
// checks, the limits of the route, and equal bits for any thread count.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "orlcore.h"
#include "orlm.h"
#include "reference.h"

using t::L;
using t::Strides;
using t::Threads;

namespace {

enum class Fill { Exact, Witness };

// Dyadic values: every product and sum is exact, so both classes give these bits.
template <class E>
E value(unsigned seed, int k, int j)
{
    return E(int((seed * 131 + k * 37 + j * 5) % 61) - 30) * E(0.25);
}

// Inputs on which the two classes differ. With x = v1 = 1 + 2^-12 (32f) the
// product 1 + 2^-11 + 2^-24 rounds to 1 + 2^-11 in class R, and y = 2^-24
// then ties back to it; class X keeps the exact 1 + 2^-11 + 2^-23. The 64f
// values do the same one binade lower in the significand. LComb's second
// product v2 * y is exact and gives the same y.
template <class E>
struct Witness {
    static constexpr bool f32 = sizeof(E) == 4;
    E x = f32 ? E(1 + 0x1p-12) : E(1 + 0x1p-27);
    E y = f32 ? E(0x1p-24) : E(0x1p-53);
    E v2 = E(0.5);
};

// Which class a result shows: R, X, or '?' for neither.
template <class E>
char classOf(E got, E v1, E x, E v2, E y, bool lcomb)
{
    const E r = lcomb ? ref::scaledSumR(v1, x, v2, y) : ref::saxpyR(v1, x, y);
    const E xx = lcomb ? ref::scaledSumX(v1, x, v2, y) : ref::saxpyX(v1, x, y);
    if (t::sameBits(got, r) && !t::sameBits(got, xx)) return 'R';
    if (t::sameBits(got, xx) && !t::sameBits(got, r)) return 'X';
    return t::sameBits(got, r) ? '=' : '?';
}

// Runs a member on fresh operands; returns the class that every element of
// every item shows ('=' where both agree, as for the exact values), or the
// first odd one.
template <class E, bool arr1, bool arr2, L lay, bool lcomb, class Fn>
char run(Fn fn, Fill fill, int n, int count, Strides st)
{
    constexpr bool arr = arr1 || arr2;
    t::Vec<E, arr1, lay> a(n, count, st, 1);
    t::Vec<E, arr2, lay> b(n, count, st, 2);
    t::Vec<E, arr, lay, true> d(n, count, st, 3);
    const Witness<E> w;
    const E v1 = fill == Fill::Exact ? E(-1.5) : w.x;
    const E v2 = fill == Fill::Exact ? E(2) : (lcomb ? w.v2 : E(1));
    const E y = fill == Fill::Witness && lcomb ? w.y / w.v2 : w.y;
    const int items = arr ? count : 1;
    for (int k = 0; k < items; ++k)
        for (int j = 0; j < n; ++j) {
            if (arr1 || k == 0) a(k, j) = fill == Fill::Exact ? value<E>(1, k, j) : w.x;
            if (arr2 || k == 0) b(k, j) = fill == Fill::Exact ? value<E>(2, k, j) : y;
            d(k, j) = std::numeric_limits<E>::quiet_NaN();
        }
    orlStatus st2;
    const auto tail = [&] {
        if constexpr (arr) return std::make_tuple(n, count); else return std::make_tuple(n);
    }();
    if constexpr (lcomb)
        st2 = std::apply(fn, std::tuple_cat(a.args(), std::make_tuple(v1), b.args(), std::make_tuple(v2), d.args(), tail));
    else
        st2 = std::apply(fn, std::tuple_cat(a.args(), std::make_tuple(v1), b.args(), d.args(), tail));
    if (st2 != orlStatusOk) return 's';
    char seen = 0;
    for (int k = 0; k < items; ++k)
        for (int j = 0; j < n; ++j) {
            const char c = classOf(d(k, j), v1, a(arr1 ? k : 0, j), lcomb ? v2 : E(1), b(arr2 ? k : 0, j), lcomb);
            if (c == '?' || (seen && c != seen)) return '?';
            seen = c;
        }
    return seen;
}

// A member with its classes as the documented tables give them: unit stride
// at lengths 3-6 and other lengths, _L at 3-6 and other, then _S2/_LS2/_P.
struct Member {
    std::string name;
    L lay;
    const char* classes;
    std::function<char(Fill, int, int, Strides)> run;
};

std::vector<Member>& members()
{
    static std::vector<Member> list;
    return list;
}

template <class E, bool arr1, bool arr2, L lay, bool lcomb, class Fn>
void add(std::string name, const char* classes, Fn fn)
{
    members().push_back({name, lay, classes, [fn](Fill f, int n, int c, Strides st) { return run<E, arr1, arr2, lay, lcomb>(fn, f, n, c, st); }});
}

#define ORL_SX(stem, shape, type, E, a1, a2, lc, cls)                                                   \
    add<E, a1, a2, L::Std, lc>("orlm" #stem "_" #shape "_" #type, cls, orlm##stem##_##shape##_##type);   \
    add<E, a1, a2, L::P, lc>("orlm" #stem "_" #shape "_" #type "_P", cls, orlm##stem##_##shape##_##type##_P);
#define ORL_SXA(stem, shape, type, E, a1, a2, lc, cls) \
    ORL_SX(stem, shape, type, E, a1, a2, lc, cls)      \
    add<E, a1, a2, L::L, lc>("orlm" #stem "_" #shape "_" #type "_L", cls, orlm##stem##_##shape##_##type##_L);

const bool registered = [] {
    //                                                 Unit 3-6, other; _L 3-6, other; _S2 _LS2 _P
    ORL_SX(Saxpy, vv, 32f, float, false, false, false, "RX--X")
    ORL_SX(Saxpy, vv, 64f, double, false, false, false, "RR--X")
    ORL_SXA(Saxpy, vav, 32f, float, true, false, false, "RXRXX")
    ORL_SXA(Saxpy, vav, 64f, double, true, false, false, "XXRXX")
    ORL_SXA(Saxpy, vva, 32f, float, false, true, false, "RXRXR")
    ORL_SXA(Saxpy, vva, 64f, double, false, true, false, "XXRXX")
    ORL_SXA(Saxpy, vava, 32f, float, true, true, false, "RXRXX")
    ORL_SXA(Saxpy, vava, 64f, double, true, true, false, "RXRXX")
    ORL_SX(LComb, vv, 32f, float, false, false, true, "RX--X")
    ORL_SX(LComb, vv, 64f, double, false, false, true, "RX--X")
    ORL_SXA(LComb, vav, 32f, float, true, false, true, "RXRXX")
    ORL_SXA(LComb, vav, 64f, double, true, false, true, "RXRXX")
    ORL_SXA(LComb, vava, 32f, float, true, true, true, "RXRXX")
    ORL_SXA(LComb, vava, 64f, double, true, true, true, "RXRXX")
    return true;
}();

TEST(SaxpyValues, EveryMemberLengthStrideAndCount)
{
    ASSERT_TRUE(registered);
    EXPECT_EQ(members().size(), 38u);
    for (const Member& m : members())
        for (int n : {1, 3, 4, 5, 6, 7, 13})
            for (Strides st : {Strides::Unit, Strides::Wide})
                for (int count : {1, 3})
                    EXPECT_EQ(m.run(Fill::Exact, n, count, st), '=')
                        << m.name << " length " << n << " count " << count << (st == Strides::Wide ? " wide" : " unit");
}

// Every kernel of every member, at a length with a straight-line form and
// at one without.
TEST(SaxpyPrecision, ClassOfEveryKernel)
{
    const Witness<float> wf;
    ASSERT_NE(ref::saxpyR(wf.x, wf.x, wf.y), ref::saxpyX(wf.x, wf.x, wf.y));
    const Witness<double> wd;
    ASSERT_NE(ref::saxpyR(wd.x, wd.x, wd.y), ref::saxpyX(wd.x, wd.x, wd.y));
    for (const Member& m : members())
        for (int n : {3, 4, 6, 7, 12})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                const bool straight = n >= 3 && n <= 6;
                const int column = m.lay == L::P || st == Strides::Wide ? 4 : (m.lay == L::L ? 2 : 0) + (straight ? 0 : 1);
                EXPECT_EQ(m.run(Fill::Witness, n, 2, st), m.classes[column])
                    << m.name << " length " << n << (st == Strides::Wide ? " any stride" : " unit stride");
            }
}

TEST(SaxpyValues, ZeroScaleStillReadsTheSource)
{
    const float inf = std::numeric_limits<float>::infinity();
    const float x[4] = {1, inf, 2, std::nanf("")}, y[4] = {1, 2, 3, 4};
    float d[4];
    ASSERT_EQ(orlmSaxpy_vv_32f(x, 4, 0.f, y, 4, d, 4, 4), orlStatusOk);
    EXPECT_EQ(d[0], 1.f);
    EXPECT_TRUE(std::isnan(d[1]));
    EXPECT_TRUE(std::isnan(d[3]));
    // In place: each element is read before it is written.
    float z[7] = {1, 2, 3, 4, 5, 6, 7};
    ASSERT_EQ(orlmLComb_vv_32f(z, 4, 2.f, y, 4, 1.f, z, 4, 4), orlStatusOk);
    EXPECT_EQ(z[3], 12.f);
}

// ---- argument checks and route ---------------------------------------------

TEST(SaxpyChecks, GeneralOrderInEveryShape)
{
    float f[64] = {}, out[64];
    std::fill(out, out + 64, -1.f);
    const float* tf[8];
    float* to[8];
    for (int i = 0; i < 8; ++i) tf[i] = f + i, to[i] = out + i;
    struct Case {
        const char* what;
        std::function<orlStatus()> call;
        orlStatus expect;
    };
    const Case cases[] = {
        {"vav: count before strides", [&] { return orlmSaxpy_vav_32f(f, 64, 6, 1.f, f, 4, out, 64, 4, 4, 0); }, orlStatusCount},
        {"vav: size before strides", [&] { return orlmLComb_vav_32f(f, 64, 6, 1.f, f, 4, 1.f, out, 64, 4, 0, 1); }, orlStatusSize},
        {"vv: NULL first", [&] { return orlmSaxpy_vv_32f(f, 4, 1.f, nullptr, 4, out, 4, 0); }, orlStatusNullPointer},
        {"vv _P: size before offset", [&] { return orlmLComb_vv_32f_P(tf, 2, 1.f, tf, 0, 1.f, to, 0, 0); }, orlStatusSize},
        {"vva _L: stride before offset", [&] { return orlmSaxpy_vva_32f_L(f, 6, 1.f, tf, 2, 4, to, 0, 4, 4, 1); }, orlStatusStride},
        {"vava _P: offset", [&] { return orlmSaxpy_vava_32f_P(tf, 0, 64, 1.f, tf, 0, 64, to, -4, 64, 4, 1); }, orlStatusOffset},
        {"64f stride of 12", [&] { return orlmLComb_vava_64f(reinterpret_cast<const double*>(f), 64, 12, 1.0, reinterpret_cast<const double*>(f), 64, 8, 1.0, reinterpret_cast<double*>(out), 64, 8, 2, 1); }, orlStatusStride},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.call(), c.expect) << c.what;
        EXPECT_TRUE(std::all_of(out, out + 64, [](float v) { return v == -1.f; })) << c.what;
    }
}

TEST(SaxpyRoute, Limits)
{
    Threads two(2);
    t::Pool<float> f(4000, 1000, 32);
    t::Pool<double> g(4000, 1000, 32);
    struct Case {
        const char* what;
        std::function<orlStatus()> call;
        bool parallel;
    };
    // (2n+1)*L with L = 32: n = 624 gives 39968, 625 gives 40032, 312 gives 20000, 313 gives 20064.
    const Case cases[] = {
        {"Saxpy vav 32f 39968", [&] { return orlmSaxpy_vav_32f(f.S, 4, 4, 1.f, f.S, 4, f.D, 4, 4, 32, 624); }, false},
        {"Saxpy vav 32f 40032", [&] { return orlmSaxpy_vav_32f(f.S, 4, 4, 1.f, f.S, 4, f.D, 4, 4, 32, 625); }, true},
        {"Saxpy vva 64f _P 39968", [&] { return orlmSaxpy_vva_64f_P(g.tbl.data(), 0, 1.0, g.tbl.data(), 0, 8, g.dtbl.data(), 0, 8, 32, 624); }, false},
        {"Saxpy vva 64f _P 40032", [&] { return orlmSaxpy_vva_64f_P(g.tbl.data(), 0, 1.0, g.tbl.data(), 0, 8, g.dtbl.data(), 0, 8, 32, 625); }, true},
        {"Saxpy vav 64f _L any 39968", [&] { return orlmSaxpy_vav_64f_L(g.lst.data(), 0, 16, 1.0, g.S, 8, g.dlst.data(), 0, 16, 32, 624); }, false},
        {"LComb vav 32f 20000", [&] { return orlmLComb_vav_32f(f.S, 4, 4, 1.f, f.S, 4, 1.f, f.D, 4, 4, 32, 312); }, false},
        {"LComb vav 32f 20064", [&] { return orlmLComb_vav_32f(f.S, 4, 4, 1.f, f.S, 4, 1.f, f.D, 4, 4, 32, 313); }, true},
        {"LComb vav 32f _L unit 20064", [&] { return orlmLComb_vav_32f_L(f.lst.data(), 0, 4, 1.f, f.S, 4, 1.f, f.dlst.data(), 0, 4, 32, 313); }, false},
        {"LComb vav 32f _L unit 40032", [&] { return orlmLComb_vav_32f_L(f.lst.data(), 0, 4, 1.f, f.S, 4, 1.f, f.dlst.data(), 0, 4, 32, 625); }, true},
        {"LComb vav 32f _L any 20064", [&] { return orlmLComb_vav_32f_L(f.lst.data(), 0, 8, 1.f, f.S, 4, 1.f, f.dlst.data(), 0, 4, 32, 313); }, true},
        {"LComb vav 64f _L unit 20064", [&] { return orlmLComb_vav_64f_L(g.lst.data(), 0, 8, 1.0, g.S, 8, 1.0, g.dlst.data(), 0, 8, 32, 313); }, true},
        // 3*L*n: 3*4*1666 = 19992, 3*4*1667 = 20004
        {"LComb vava 64f 19992", [&] { return orlmLComb_vava_64f(g.S, 8, 8, 1.0, g.S, 8, 8, 1.0, g.D, 8, 8, 4, 1666); }, false},
        {"LComb vava 64f 20004", [&] { return orlmLComb_vava_64f(g.S, 8, 8, 1.0, g.S, 8, 8, 1.0, g.D, 8, 8, 4, 1667); }, true},
    };
    for (const Case& c : cases) {
        probe::reset();
        EXPECT_EQ(c.call(), orlStatusOk) << c.what;
        EXPECT_EQ(probe::regions().count > 0, c.parallel) << c.what;
    }
}

// Each item is computed alone by the same kernel, whatever the split.
TEST(SaxpyRoute, SameBitsForOneToFourThreads)
{
    const int n = 5001, len = 7;
    t::Vec<double, true, L::P> a(len, n, Strides::Unit, 1);
    t::Vec<double, false, L::P> b(len, 1, Strides::Unit, 2);
    for (int j = 0; j < len; ++j) {
        b(0, j) = j / 7.0;
        for (int k = 0; k < n; ++k) a(k, j) = 1.0 / (k + 3);
    }
    std::vector<double> first;
    for (int threads = 1; threads <= 4; ++threads) {
        Threads th(threads);
        t::Vec<double, true, L::P, true> d(len, n, Strides::Unit, 3);
        probe::reset();
        ASSERT_EQ(t::call(orlmLComb_vav_64f_P, std::tuple_cat(a.args(), std::make_tuple(1.0 / 3), b.args(), std::make_tuple(0.1), d.args()), len, n),
                  orlStatusOk);
        EXPECT_EQ(probe::regions().count, threads > 1 ? 1 : 0);
        std::vector<double> got;
        for (int k = 0; k < n; ++k)
            for (int j = 0; j < len; ++j) got.push_back(d(k, j));
        if (threads == 1) first = got;
        EXPECT_EQ(std::memcmp(first.data(), got.data(), got.size() * sizeof(double)), 0) << threads;
    }
}

}  // namespace
