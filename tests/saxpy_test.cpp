// Saxpy and LComb: values and the precision class of every kernel in every member,
// layout and stride case, on both routes; the argument checks; the limits of the route.
#include <cmath>
#include <limits>

#include "omp_probe.h"
#include "operands.h"
#include "reference.h"

using t::L;
using t::Strides;
using t::Threads;

namespace {

// Element 0 of every item tells the classes apart. With x = v1 = 1 + 2^-12
// (32f) the product 1 + 2^-11 + 2^-24 rounds to 1 + 2^-11 in class R, and
// y = 2^-24 then ties back to it; class X keeps the exact 1 + 2^-11 + 2^-23.
// The 64f values do the same one binade lower in the significand. LComb's
// second product v2 * y (v2 = 0.5) is exact and gives the same y.
template <class E>
struct Witness {
    static constexpr bool f32 = sizeof(E) == 4;
    E x = f32 ? E(1 + 0x1p-12) : E(1 + 0x1p-27);
    E y = f32 ? E(0x1p-24) : E(0x1p-53);
};

// Runs a member on fresh operands and checks every element of every item
// against the class that its kernel has by `classes`: unit stride at lengths
// 3-6 and other, _L at 3-6 and other, then _S2/_LS2/_P.
template <class E, bool arr1, bool arr2, L lay, bool lcomb, class Fn>
void check(Fn fn, const char* classes, int n, int count, Strides st)
{
    constexpr bool arr = arr1 || arr2;
    t::Vec<E, arr1, lay> a(n, count, st, 1);
    t::Vec<E, arr2, lay> b(n, count, st, 2);
    t::Vec<E, arr, lay, true> d(n, count, st, 3);
    const Witness<E> w;
    const E v1 = w.x, v2 = lcomb ? E(0.5) : E(1);
    // Dyadic values elsewhere: with these scales both classes give their exact sums.
    const auto value = [](int seed, int k, int j) { return E(int((seed * 131 + k * 37 + j * 5) % 61) - 30) * E(0.25); };
    for (int k = 0; k < d.count; ++k)
        for (int j = 0; j < n; ++j)
            a(k, j) = j ? value(1, k, j) : w.x, b(k, j) = j ? value(2, k, j) : w.y / v2, d(k, j) = NAN;
    const auto tail = [&] {
        if constexpr (arr) return std::make_tuple(n, count); else return std::make_tuple(n);
    }();
    orlStatus status;
    if constexpr (lcomb)
        status = std::apply(fn, std::tuple_cat(a.args(), std::make_tuple(v1), b.args(), std::make_tuple(v2), d.args(), tail));
    else
        status = std::apply(fn, std::tuple_cat(a.args(), std::make_tuple(v1), b.args(), d.args(), tail));
    ASSERT_EQ(status, orlStatusOk);
    const bool straight = n >= 3 && n <= 6;
    const char cls = classes[lay == L::P || st == Strides::Wide ? 4 : (lay == L::L ? 2 : 0) + (straight ? 0 : 1)];
    for (int k = 0; k < d.count; ++k)
        for (int j = 0; j < n; ++j) {
            const E x = a(k, j), y = b(k, j);
            const E r = lcomb ? ref::scaledSumR(v1, x, v2, y) : ref::saxpyR(v1, x, y);
            const E e = lcomb ? ref::scaledSumX(v1, x, v2, y) : ref::saxpyX(v1, x, y);
            ASSERT_TRUE(t::sameBits(d(k, j), cls == 'R' ? r : e)) << "class " << cls << ", item " << k << " element " << j;
        }
}

#define ORL_ONE(stem, sh, ty, E, a1, a2, cls, lay, sfx)                                              \
    t::registry().push_back({"orlm" #stem "_" #sh "_" #ty #sfx, [](int n, int, int c, Strides st) { \
        check<E, a1, a2, L::lay, #stem[0] == 'L'>(orlm##stem##_##sh##_##ty##sfx, cls, n, c, st); }});
#define ORL_SX(stem, sh, ty, E, a1, a2, cls) \
    ORL_ONE(stem, sh, ty, E, a1, a2, cls, Std, ) ORL_ONE(stem, sh, ty, E, a1, a2, cls, P, _P)
#define ORL_SXA(stem, sh, ty, E, a1, a2, cls) ORL_SX(stem, sh, ty, E, a1, a2, cls) ORL_ONE(stem, sh, ty, E, a1, a2, cls, L, _L)

const bool registered = [] {
    //                                          Unit 3-6, other; _L 3-6, other; _S2 _LS2 _P
    ORL_SX(Saxpy, vv, 32f, float, false, false, "RX--X")
    ORL_SX(Saxpy, vv, 64f, double, false, false, "RR--X")
    ORL_SXA(Saxpy, vav, 32f, float, true, false, "RXRXX")
    ORL_SXA(Saxpy, vav, 64f, double, true, false, "XXRXX")
    ORL_SXA(Saxpy, vva, 32f, float, false, true, "RXRXR")
    ORL_SXA(Saxpy, vva, 64f, double, false, true, "XXRXX")
    ORL_SXA(Saxpy, vava, 32f, float, true, true, "RXRXX")
    ORL_SXA(Saxpy, vava, 64f, double, true, true, "RXRXX")
    ORL_SX(LComb, vv, 32f, float, false, false, "RX--X")
    ORL_SX(LComb, vv, 64f, double, false, false, "RX--X")
    ORL_SXA(LComb, vav, 32f, float, true, false, "RXRXX")
    ORL_SXA(LComb, vav, 64f, double, true, false, "RXRXX")
    ORL_SXA(LComb, vava, 32f, float, true, true, "RXRXX")
    ORL_SXA(LComb, vava, 64f, double, true, true, "RXRXX")
    return true;
}();

TEST(SaxpyValues, EveryMemberLengthStrideAndCountInItsClass)
{
    ASSERT_TRUE(registered);
    const Witness<float> wf;
    const Witness<double> wd;
    ASSERT_NE(ref::saxpyR(wf.x, wf.x, wf.y), ref::saxpyX(wf.x, wf.x, wf.y));
    ASSERT_NE(ref::saxpyR(wd.x, wd.x, wd.y), ref::saxpyX(wd.x, wd.x, wd.y));
    t::checkEveryMember(38, {{1, 1}, {3, 1}, {4, 1}, {5, 1}, {6, 1}, {7, 1}, {12, 1}, {13, 1}});
}

// On the driver every item is computed by the same kernel as on the calling thread.
TEST(SaxpyValues, ArrayOnTheDriver)
{
    Threads three(3);
    probe::reset();
    check<double, true, false, L::P, true>(orlmLComb_vav_64f_P, "RXRXX", 7, 5001, Strides::Unit);
    EXPECT_EQ(probe::regions().count, 1);
}

TEST(SaxpyValues, ZeroScaleStillReadsTheSource)
{
    const float inf = std::numeric_limits<float>::infinity();
    const float x[4] = {1, inf, 2, std::nanf("")}, y[4] = {1, 2, 3, 4};
    float d[4];
    ASSERT_EQ(orlmSaxpy_vv_32f(x, 4, 0.f, y, 4, d, 4, 4), orlStatusOk);
    EXPECT_TRUE(d[0] == 1.f && std::isnan(d[1]) && std::isnan(d[3]));
    // In place: each element is read before it is written.
    float z[7] = {1, 2, 3, 4, 5, 6, 7};
    ASSERT_EQ(orlmLComb_vv_32f(z, 4, 2.f, y, 4, 1.f, z, 4, 4), orlStatusOk);
    EXPECT_EQ(z[3], 12.f);
}

// ---- argument checks and route ---------------------------------------------

TEST(SaxpyChecks, GeneralOrderInEveryShape)
{
    t::CheckBuffers b;
    const std::pair<std::function<orlStatus()>, orlStatus> cases[] = {
        {[&] { return orlmSaxpy_vav_32f(b.f, 64, 6, 1.f, b.f, 4, b.fo, 64, 4, 4, 0); }, orlStatusCount},  // count before strides
        {[&] { return orlmLComb_vav_32f(b.f, 64, 6, 1.f, b.f, 4, 1.f, b.fo, 64, 4, 0, 1); }, orlStatusSize},  // size before strides
        {[&] { return orlmSaxpy_vv_32f(b.f, 4, 1.f, nullptr, 4, b.fo, 4, 0); }, orlStatusNullPointer},
        {[&] { return orlmLComb_vv_32f_P(b.tf, 2, 1.f, b.tf, 0, 1.f, b.to, 0, 0); }, orlStatusSize},  // size before offset
        {[&] { return orlmSaxpy_vva_32f_L(b.f, 6, 1.f, b.tf, 2, 4, b.to, 0, 4, 4, 1); }, orlStatusStride},  // stride before offset
        {[&] { return orlmSaxpy_vava_32f_P(b.tf, 0, 64, 1.f, b.tf, 0, 64, b.to, -4, 64, 4, 1); }, orlStatusOffset},
        {[&] { return orlmLComb_vava_64f(b.g, 64, 12, 1.0, b.g, 64, 8, 1.0, b.go, 64, 8, 2, 1); }, orlStatusStride},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(cases[i].first(), cases[i].second) << "case " << i;
        EXPECT_TRUE(b.untouched()) << "case " << i;
    }
}

TEST(SaxpyRoute, Limits)
{
    Threads two(2);
    t::Pool<float> f(4000, 1000, 32);
    t::Pool<double> g(4000, 1000, 32);
    struct Case { const char* what; std::function<orlStatus()> call; bool parallel; };
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

}  // namespace
