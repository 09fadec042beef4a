// Dot and cross products: every member on exact data in every layout, the
// order of additions of each kernel told apart bit for bit, the long-vector
// lane and pair sums with their peel, the extended cross product, the check
// orders, the limits and the threads.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "operands.h"
#include "reference.h"

namespace {

using t::L;
using t::Strides;
using t::Vec;

// ---- dot product -------------------------------------------------------------------

// A member on two items of length n (a single source takes item 0) in the
// stride case; the results, checked not to run past their end.
template <class E>
using DotRun = std::function<std::vector<E>(int n, Strides st, const std::vector<E>& x, const std::vector<E>& y)>;

template <class E, bool a1, bool a2, L lay, class Fn>
std::vector<E> runDot(Fn fn, int n, Strides st, const std::vector<E>& xs, const std::vector<E>& ys)
{
    Vec<E, a1, lay> x(n, 2, st, 1);
    Vec<E, a2, lay> y(n, 2, st, 2);
    for (int k = 0; k < 2; ++k)
        for (int j = 0; j < n; ++j) x(a1 ? k : 0, j) = xs[(a1 ? k : 0) * n + j], y(a2 ? k : 0, j) = ys[(a2 ? k : 0) * n + j];
    const int items = a1 || a2 ? 2 : 1;
    std::vector<E> out(items + 1, E(-7));
    if constexpr (a1 || a2) EXPECT_EQ(t::call(fn, std::tuple_cat(x.args(), y.args()), out.data(), n, 2), orlStatusOk);
    else EXPECT_EQ(t::call(fn, std::tuple_cat(x.args(), y.args()), out.data(), n), orlStatusOk);
    EXPECT_EQ(out[items], E(-7)) << "written past the results";
    return {out.begin(), out.end() - 1};
}

template <class E>
std::map<std::string, DotRun<E>> dots;

#define DOT(E, ty, shape, a1, a2, lay, sfx) \
    dots<E>[#shape "_" #ty #sfx] = [](int n, Strides st, const auto& x, const auto& y) { return runDot<E, a1, a2, L::lay>(orlmDotProduct_##shape##_##ty##sfx, n, st, x, y); };
#define DOTA(E, ty, shape, a1, a2) DOT(E, ty, shape, a1, a2, Std, ) DOT(E, ty, shape, a1, a2, P, _P) DOT(E, ty, shape, a1, a2, L, _L)

const bool dotsRegistered = [] {
    DOT(float, 32f, vv, false, false, Std, ) DOT(float, 32f, vv, false, false, P, _P) DOTA(float, 32f, vav, true, false) DOTA(float, 32f, vava, true, true)
    DOT(double, 64f, vv, false, false, Std, ) DOT(double, 64f, vv, false, false, P, _P) DOTA(double, 64f, vav, true, false) DOTA(double, 64f, vava, true, true)
    return true;
}();

// The expected result of one item: "x" extended ascending, "c" a chain from
// +0.0, else the order of additions in element precision.
template <class E>
E expectDot(const std::string& kind, const E* x, const E* y, int n)
{
    std::vector<E> p(n);
    for (int j = 0; j < n; ++j) p[j] = E(x[j] * y[j]);
    if (kind == "x") return ref::dotExt<E>(n, [&](int j) { return x[j]; }, [&](int j) { return y[j]; });
    return kind == "c" ? ref::chainFromZero(n, p.data()) : ref::sumInOrder(kind.c_str(), p.data());
}

constexpr const char* kAsc[] = {"(p0+p1)+p2", "((p0+p1)+p2)+p3", "(((p0+p1)+p2)+p3)+p4", "((((p0+p1)+p2)+p3)+p4)+p5"};
constexpr const char* k64[] = {"(p0+p1)+p2", "(p0+p2)+(p1+p3)", "((p0+p2)+(p1+p3))+p4", "(p0+(p2+p4))+(p1+(p3+p5))"};

// One row per kernel and length whose order is settled (unit and wide: the
// stride2 cases of the standard and _L members); data is drawn until the
// required order differs from every other candidate in some item. Every
// member at lengths outside 3 to 6 is a chain from +0.0, but the unit-stride
// vv and vava from their lane and pair sum limits (below).
TEST(DotProduct, OrderOfAdditionsPerKernelAndLength)
{
    ASSERT_TRUE(dotsRegistered);
    ASSERT_EQ(dots<float>.size() + dots<double>.size(), 16u);
    std::vector<std::tuple<std::string, Strides, int, std::string>> rows;
    const Strides U = Strides::Unit, W = Strides::Wide;
    for (int n = 3; n <= 6; ++n) {
        for (const char* m : {"vv_32f", "vava_32f", "vava_32f_L"}) rows.push_back({m, U, n, kAsc[n - 3]});
        for (const char* m : {"vav_32f", "vav_32f_L"}) rows.push_back({m, U, n, n == 4 ? "(p0+p1)+(p2+p3)" : kAsc[n - 3]});
        for (const char* m : {"vv_64f", "vav_64f", "vava_64f", "vav_64f_L", "vava_64f_L"}) rows.push_back({m, U, n, k64[n - 3]});
        for (const char* m : {"vv_32f", "vava_32f", "vv_64f", "vava_64f_L", "vv_32f_P", "vava_64f_P", "vav_32f_P", "vav_64f_P"})
            rows.push_back({m, m[std::string_view(m).size() - 1] == 'P' ? U : W, n, "x"});
        for (const char* m : {"vav_32f", "vav_64f_L"}) rows.push_back({m, W, n, n == 3 ? kAsc[0] : "x"});
    }
    const auto chains = [&](const auto& table) {
        for (const auto& [m, run] : table)
            for (int n : {2, 7, 12, 19})
                for (Strides st : {U, W})
                    if (n < 9 || st == W || !(m == "vv_32f" || m == "vava_32f" || m == "vv_64f" || m == "vava_64f")) rows.push_back({m, st, n, "c"});
    };
    chains(dots<float>), chains(dots<double>);
    const auto check = [](const std::string& m, Strides st, int n, const std::string& kind, auto zero) {
        using E = decltype(zero);
        std::mt19937 g(n * 7919 + int(st));
        std::vector<std::string> others = {"x"};  // the extended sum and the orders of the tables at this length
        if (n >= 3 && n <= 6) others.insert(others.end(), {kAsc[n - 3], k64[n - 3]});
        if (n == 4) others.push_back("(p0+p1)+(p2+p3)");
        const bool ax = m.rfind("vav", 0) == 0, ay = m.rfind("vava", 0) == 0;
        for (int attempt = 0; attempt < 200; ++attempt) {
            std::vector<E> x, y;
            for (int i = 0; i < 2 * n; ++i) x.push_back(ref::wild<E>(g, 24)), y.push_back(ref::wild<E>(g, 24));
            const auto want = [&](const std::string& o, int k) { return expectDot<E>(o, &x[(ax ? k : 0) * n], &y[(ay ? k : 0) * n], n); };
            if (std::any_of(others.begin(), others.end(), [&](const std::string& o) {
                    return o != kind && ref::sameBits(want(o, 0), want(kind, 0)) && ref::sameBits(want(o, 1), want(kind, 1)); }))
                continue;
            const std::vector<E> got = dots<E>.at(m)(n, st, x, y);
            for (std::size_t k = 0; k < got.size(); ++k)
                ASSERT_TRUE(ref::sameBits(got[k], want(kind, int(k)))) << m << (st == W ? " wide" : " unit") << " n " << n << " item " << k << ": want " << kind;
            return;
        }
        FAIL() << "no data tells the orders apart for " << m;
    };
    for (const auto& [m, st, n, kind] : rows) {
        if (m.find("32f") != std::string::npos) check(m, st, n, kind, 0.0f);
        else check(m, st, n, kind, 0.0);
        if (HasFatalFailure()) return;
    }
}

// Long vectors at every 16-byte phase: the lane sum (32f) and pair sum (64f)
// of the unit-stride vv and vava kernels, their peels and limits, and the
// aligned form of vava.
template <class E>
void checkLong(int phase, int n)
{
    alignas(64) E buf[2][80];
    std::mt19937 g(phase * 131 + n);
    for (E& v : buf[0]) v = ref::wild<E>(g, 24), buf[1][&v - buf[0]] = ref::wild<E>(g, 24);
    const E *x = buf[0] + phase, *y = buf[1] + phase;
    std::vector<E> p(n);
    for (int j = 0; j < n; ++j) p[j] = E(x[j] * y[j]);
    const auto sum = [&](bool aligned) {
        if constexpr (sizeof(E) == 4) return ref::laneSum(p.data(), n, std::uintptr_t(y), 11, aligned);
        else return ref::pairSum(p.data(), n, std::uintptr_t(y), 9, aligned);
    };
    const auto vvFn = [] { if constexpr (sizeof(E) == 4) return orlmDotProduct_vv_32f; else return orlmDotProduct_vv_64f; }();
    const auto vavaFn = [] { if constexpr (sizeof(E) == 4) return orlmDotProduct_vava_32f; else return orlmDotProduct_vava_64f; }();
    const int e = sizeof(E);
    E vv = 0, vava = 0;
    ASSERT_EQ(vvFn(x, e, y, e, &vv, n), orlStatusOk);
    ASSERT_EQ(vavaFn(x, 80 * e, e, y, 80 * e, e, &vava, n, 1), orlStatusOk);
    EXPECT_TRUE(ref::sameBits(vv, sum(false))) << "vv phase " << phase << " n " << n;
    EXPECT_TRUE(ref::sameBits(vava, sum(phase * e % 16 == 0))) << "vava phase " << phase << " n " << n;
}

TEST(DotProduct, LaneAndPairSumsOfLongVectors)
{
    for (int phase = 0; phase < 4; ++phase)
        for (int n : {7, 8, 9, 10, 11, 12, 19, 27, 64}) checkLong<float>(phase, n), checkLong<double>(phase, n);
}

// ---- cross product ---------------------------------------------------------------

// Unit-stride standard and _L kernels: each product rounded, then the
// difference; the others: products and difference in the extended format,
// rounded once.
template <class E, bool a1, bool a2, L lay, class Fn>
void checkCross(Fn fn, const char* name)
{
    using ref::Ext;
    constexpr bool arr = a1 || a2;
    std::mt19937 g(5);
    for (Strides st : {Strides::Unit, Strides::Wide}) {
        Vec<E, a1, lay> x(3, 9, st, 1);
        Vec<E, a2, lay> y(3, 9, st, 2);
        Vec<E, arr, lay, true> d(3, 9, st, 3);
        for (int k = 0; k < 9; ++k)
            for (int j = 0; j < 3; ++j) x(a1 ? k : 0, j) = ref::wild<E>(g, 24), y(a2 ? k : 0, j) = ref::wild<E>(g, 24);
        if constexpr (arr) ASSERT_EQ(t::call(fn, std::tuple_cat(x.args(), y.args(), d.args()), 9), orlStatusOk);
        else ASSERT_EQ(t::call(fn, std::tuple_cat(x.args(), y.args(), d.args())), orlStatusOk);
        const bool extended = st == Strides::Wide || lay == L::P;
        for (int k = 0; k < d.count; ++k)
            for (int j = 0; j < 3; ++j) {
                const int p = (j + 1) % 3, q = (j + 2) % 3, kx = a1 ? k : 0, ky = a2 ? k : 0;
                const E want = extended ? E(Ext(x(kx, p)) * Ext(y(ky, q)) - Ext(x(kx, q)) * Ext(y(ky, p)))
                                        : E(E(x(kx, p) * y(ky, q)) - E(x(kx, q) * y(ky, p)));
                ASSERT_TRUE(ref::sameBits(d(k, j), want)) << name << " item " << k << " component " << j << (extended ? " extended" : "");
            }
    }
}

TEST(CrossProduct, EveryMemberElementOrExtended)
{
#define CROSS(E, ty, shape, a1, a2)                                                                         \
    checkCross<E, a1, a2, L::Std>(orlmCrossProduct_##shape##_##ty, #shape "_" #ty);                        \
    checkCross<E, a1, a2, L::P>(orlmCrossProduct_##shape##_##ty##_P, #shape "_" #ty "_P");
#define CROSSA(E, ty, shape, a1, a2) \
    CROSS(E, ty, shape, a1, a2) checkCross<E, a1, a2, L::L>(orlmCrossProduct_##shape##_##ty##_L, #shape "_" #ty "_L");
    CROSS(float, 32f, vv, false, false) CROSSA(float, 32f, vav, true, false)
    CROSSA(float, 32f, vva, false, true) CROSSA(float, 32f, vava, true, true)
    CROSS(double, 64f, vv, false, false) CROSSA(double, 64f, vav, true, false)
    CROSSA(double, 64f, vva, false, true) CROSSA(double, 64f, vava, true, true)
}

TEST(CrossProduct, DstOverSrc1ReadsFirstOnlyInUnitStride)
{
    // Unit stride: all six components read before any store.
    float v[3] = {1, 2, 3}, u[6] = {1, 0, 2, 0, 3, 0};
    const float w[3] = {4, 5, 6}, z[6] = {4, 0, 5, 0, 6, 0};
    ASSERT_EQ(orlmCrossProduct_vv_32f(v, 4, w, 4, v, 4), orlStatusOk);
    EXPECT_EQ(std::vector<float>(v, v + 3), (std::vector<float>{-3, 6, -3}));
    // Stride2 of 8: each component stored before the sources are read again:
    // D0 = 2*6 - 3*5 = -3 replaces a0, D1 = 3*4 - (-3)*6 = 30 replaces a1, D2 = (-3)*5 - 30*4.
    ASSERT_EQ(orlmCrossProduct_vv_32f(u, 8, z, 8, u, 8), orlStatusOk);
    EXPECT_EQ(std::vector<float>({u[0], u[2], u[4]}), (std::vector<float>{-3, 30, -135}));
}

// ---- checks, limits, threads ---------------------------------------------------------

// One member per check order; the cross product has no size and tests the
// strides of vav before its count.
TEST(DotCross, CheckOrdersWithNothingWritten)
{
    t::checkRows({
        {"DotProduct_vava_32f", "NCZT", [](auto& s) { return orlmDotProduct_vava_32f(s.n(s.f), 16, 4, s.f, 16, s.t(4), s.fo, s.z(3), s.c()); }},
        {"DotProduct_vav_32f_L", "NCZTO", [](auto& s) { return orlmDotProduct_vav_32f_L(s.tf, s.o(4), 4, s.f, s.t(4), s.n(s.fo), s.z(3), s.c()); }},
        {"DotProduct_vv_64f_P", "NZO", [](auto& s) { return orlmDotProduct_vv_64f_P(s.n(s.tg), 0, s.tg, s.o(8), s.go, s.z(3)); }},
        {"CrossProduct_vav_32f", "NTC", [](auto& s) { return orlmCrossProduct_vav_32f(s.f, 12, 4, s.n(s.f), 4, s.fo, 12, s.t(4), s.c()); }},
        {"CrossProduct_vav_32f_L", "NTOC", [](auto& s) { return orlmCrossProduct_vav_32f_L(s.tf, 0, 4, s.f, s.t(4), s.n(s.to), s.o(4), 4, s.c()); }},
        {"CrossProduct_vava_64f_P", "NCTO", [](auto& s) { return orlmCrossProduct_vava_64f_P(s.n(s.tg), 0, 24, s.tg, 0, s.t(24), s.tgo, s.o(8), 24, s.c()); }},
        {"CrossProduct_vv_32f", "NT", [](auto& s) { return orlmCrossProduct_vv_32f(s.f, 4, s.f, s.t(4), s.n(s.fo), 4); }},
    }, ref::expectedStatus);
}

TEST(DotCross, LimitsAndThreads)
{
    using t::parallel;
    std::vector<float> a(3 * 20000 + 8, 1.0f), d(3 * 20000 + 8);
    std::vector<double> b(3 * 20000 + 8, 1.0), e(3 * 20000 + 8);
    // Cross product: 3*count above 20000 (40000 in the 32f _L members),
    // whatever the stride2; 2*count + 1 with a single vector.
    EXPECT_FALSE(parallel([&] { return orlmCrossProduct_vava_32f(a.data(), 12, 4, a.data(), 12, 4, d.data(), 12, 4, 6666); }));
    EXPECT_TRUE(parallel([&] { return orlmCrossProduct_vava_32f(a.data(), 12, 4, a.data(), 12, 4, d.data(), 12, 4, 6667); }));
    EXPECT_FALSE(parallel([&] { return orlmCrossProduct_vav_32f(a.data(), 12, 4, a.data(), 4, d.data(), 12, 4, 9999); }));
    EXPECT_TRUE(parallel([&] { return orlmCrossProduct_vav_32f(a.data(), 12, 4, a.data(), 4, d.data(), 12, 4, 10000); }));
    std::vector<const float*> la(20000);
    std::vector<float*> ld(20000);
    for (int k = 0; k < 20000; ++k) la[k] = a.data() + 3 * k, ld[k] = d.data() + 3 * k;
    EXPECT_FALSE(parallel([&] { return orlmCrossProduct_vava_32f_L(la.data(), 0, 4, la.data(), 0, 4, ld.data(), 0, 4, 13333); }));
    EXPECT_TRUE(parallel([&] { return orlmCrossProduct_vava_32f_L(la.data(), 0, 4, la.data(), 0, 4, ld.data(), 0, 4, 13334); }));
    // Dot product: 2*length*count above 40000 (unit stride2), 20000 (other
    // stride2); the _P limit is 20000 in 32f and 40000 in 64f; vav: length*count + length.
    EXPECT_FALSE(parallel([&] { return orlmDotProduct_vava_32f(a.data(), 16, 4, a.data(), 16, 4, d.data(), 4, 5000); }));
    EXPECT_TRUE(parallel([&] { return orlmDotProduct_vava_32f(a.data(), 16, 4, a.data(), 16, 4, d.data(), 4, 5001); }));
    EXPECT_TRUE(parallel([&] { return orlmDotProduct_vava_32f(a.data(), 16, 8, a.data(), 16, 4, d.data(), 2, 5001); }));
    const float* tf[4] = {a.data(), a.data() + 1, a.data() + 2, a.data() + 3};
    const double* tb[4] = {b.data(), b.data() + 1, b.data() + 2, b.data() + 3};
    EXPECT_TRUE(parallel([&] { return orlmDotProduct_vava_32f_P(tf, 0, 16, tf, 0, 16, d.data(), 4, 2501); }));
    EXPECT_FALSE(parallel([&] { return orlmDotProduct_vava_64f_P(tb, 0, 32, tb, 0, 32, e.data(), 4, 5000); }));
    EXPECT_FALSE(parallel([&] { return orlmDotProduct_vav_64f(b.data(), 32, 8, b.data(), 8, e.data(), 4, 9999); }));
    EXPECT_TRUE(parallel([&] { return orlmDotProduct_vav_64f(b.data(), 32, 8, b.data(), 8, e.data(), 4, 10000); }));

    // Identical bits for 1 to 4 threads, on both families.
    std::mt19937 g(3);
    std::vector<float> x(6 * 12001), y(6 * 12001), first;
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = ref::wild<float>(g, 24), y[i] = ref::wild<float>(g, 24);
    for (int T = 1; T <= 4; ++T) {
        t::Threads th(T);
        std::vector<float> out(12001 + 3 * 12001);
        ASSERT_EQ(orlmDotProduct_vava_32f(x.data(), 24, 4, y.data(), 24, 4, out.data(), 6, 12001), orlStatusOk);
        ASSERT_EQ(orlmCrossProduct_vava_32f(x.data(), 24, 8, y.data(), 24, 4, out.data() + 12001, 12, 4, 12001), orlStatusOk);
        if (T == 1) first = out;
        else ASSERT_EQ(std::memcmp(out.data(), first.data(), out.size() * 4), 0) << T << " threads";
    }
}

}  // namespace
