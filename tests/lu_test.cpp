// LU decomposition: values and pivots of both paths in every member and
// layout, the tolerance and its sense, the order of exchange and test, ties,
// the fixed final test of the unrolled path, what stands after a failure,
// arrays that stop at the first failure (serial and per slice), in-place use
// and the argument checks.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "orlcore.h"
#include "orlm.h"

using t::K;
using t::L;
using t::Mat;
using t::Strides;

namespace {

using t::Threads;

constexpr double kUntouched = -777.25;  // dst before the call; exact in both types
constexpr std::int32_t kNoPerm = -9;

using Item = std::vector<double>;  // one n-by-n matrix, physical row-major
using Perm = std::vector<std::int32_t>;

// ---- reference: the two paths transcribed step by step ---------------------

struct Expect {
    orlStatus st;
    Item dst;
    Perm perm;
};

// Unrolled path (sizes 3..6): private copy, exchange then test, >= 2^-125 or
// 2^-1021, stage 0 in long double, final test at physical (n-1, n-1); rows
// written as final, or everything at the end in _P.
template <class E>
Expect refUnrolled(int n, const Item& src, bool pLayout)
{
    const E tol = sizeof(E) == 4 ? E(std::ldexp(1.0, -125)) : E(std::ldexp(1.0, -1021));
    std::vector<E> a(src.begin(), src.end());
    Perm p(n);
    std::iota(p.begin(), p.end(), 0);
    Item dst(n * n, kUntouched);
    auto copyRow = [&](int r) {
        if (!pLayout)
            for (int j = 0; j < n; ++j) dst[r * n + j] = a[r * n + j];
    };
    for (int k = 0; k < n - 1; ++k) {
        int best = k;
        for (int i = k + 1; i < n; ++i)
            if (std::fabs(a[p[i] * n + k]) > std::fabs(a[p[best] * n + k])) best = i;
        std::swap(p[k], p[best]);
        if (!(std::fabs(a[p[k] * n + k]) >= tol)) return {orlStatusSingular, dst, p};
        const int pk = p[k];
        const E r = E(1) / a[pk * n + k];
        copyRow(pk);
        for (int i = k + 1; i < n; ++i) {
            const int pi = p[i];
            a[pi * n + k] = a[pi * n + k] * r;
            const E l = a[pi * n + k];
            for (int j = k + 1; j < n; ++j) {
                if (k == 0)
                    a[pi * n + j] = E((long double)a[pi * n + j] - (long double)l * (long double)a[pk * n + j]);
                else
                    a[pi * n + j] = a[pi * n + j] - l * a[pk * n + j];
            }
        }
    }
    if (!(std::fabs(a[(n - 1) * n + n - 1]) >= tol)) return {orlStatusSingular, dst, p};
    if (pLayout)
        dst.assign(a.begin(), a.end());
    else
        copyRow(p[n - 1]);
    return {orlStatusOk, dst, p};
}

// General path (sizes 1, 2, >= 7): in dst, test then exchange, > 2^-23 or
// 2^-52, every update in long double, final test at (perm[n-1], n-1).
template <class E>
Expect refGeneral(int n, const Item& src)
{
    const E tol = sizeof(E) == 4 ? E(std::ldexp(1.0, -23)) : E(std::ldexp(1.0, -52));
    std::vector<E> a(src.begin(), src.end());
    Perm p(n);
    std::iota(p.begin(), p.end(), 0);
    auto out = [&](orlStatus st) { return Expect{st, Item(a.begin(), a.end()), p}; };
    for (int k = 0; k < n - 1; ++k) {
        int best = k;
        for (int i = k + 1; i < n; ++i)
            if (std::fabs(a[p[i] * n + k]) > std::fabs(a[p[best] * n + k])) best = i;
        if (!(std::fabs(a[p[best] * n + k]) > tol)) return out(orlStatusSingular);
        std::swap(p[k], p[best]);
        const int pk = p[k];
        const E r = E(1) / a[pk * n + k];
        for (int i = k + 1; i < n; ++i) a[p[i] * n + k] = a[p[i] * n + k] * r;
        for (int i = k + 1; i < n; ++i)
            for (int j = k + 1; j < n; ++j)
                a[p[i] * n + j] = E((long double)a[p[i] * n + j] - (long double)a[p[i] * n + k] * (long double)a[pk * n + j]);
    }
    return out(std::fabs(a[p[n - 1] * n + n - 1]) > tol ? orlStatusOk : orlStatusSingular);
}

template <class E>
Expect reference(int n, const Item& src, bool pLayout)
{
    return n >= 3 && n <= 6 ? refUnrolled<E>(n, src, pLayout) : refGeneral<E>(n, src);
}

// ---- every member through one interface ------------------------------------

struct Outcome {
    orlStatus st;
    std::vector<Item> dst;
    Perm perm;
};

struct Member {
    std::string name;
    bool f32, array;
    L lay;
    // Runs the member on `items` (count = items.size()), optionally with dst
    // the same memory as src.
    std::function<Outcome(int n, const std::vector<Item>& items, Strides st, bool inPlace)> run;

    Expect expect(int n, const Item& src) const
    {
        return f32 ? reference<float>(n, src, lay == L::P) : reference<double>(n, src, lay == L::P);
    }
    double round(double v) const { return f32 ? double(float(v)) : v; }
};

template <class E, K kind, L lay, class Fn>
Outcome runMember(Fn fn, int n, const std::vector<Item>& items, Strides st, bool inPlace)
{
    const int count = int(items.size());
    Mat<E, kind, lay> src(n, n, count, st, 11);
    Mat<E, kind, lay, true> dst(n, n, count, st, 12);
    auto load = [&](auto& m) { m.fill([&](int k, int i, int j) { return E(items[k][i * n + j]); }); };
    load(src);
    if (inPlace)
        load(dst);
    else
        dst.fill([](int, int, int) { return E(kUntouched); });
    Perm perm(size_t(n) * count, kNoPerm);
    auto invoke = [&](auto srcArgs) {
        const auto groups = std::tuple_cat(srcArgs, std::make_tuple(perm.data()), dst.args());
        if constexpr (t::arr(kind))
            return t::call(fn, groups, n, count);
        else
            return t::call(fn, groups, n);
    };
    Outcome o;
    o.st = inPlace ? invoke(dst.args()) : invoke(src.args());
    for (int k = 0; k < count; ++k) {
        Item d(n * n);
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) d[i * n + j] = dst(k, i, j);
        o.dst.push_back(d);
    }
    o.perm = perm;
    return o;
}

std::vector<Member> members()
{
    std::vector<Member> list;
    auto add = [&]<class E, K kind, L lay>(const char* name, auto fn) {
        list.push_back({name, sizeof(E) == 4, t::arr(kind), lay,
                        [fn](int n, const std::vector<Item>& items, Strides st, bool inPlace) {
                            return runMember<E, kind, lay>(fn, n, items, st, inPlace);
                        }});
    };
    add.operator()<float, K::m, L::Std>("orlmLUDecomp_m_32f", orlmLUDecomp_m_32f);
    add.operator()<float, K::m, L::P>("orlmLUDecomp_m_32f_P", orlmLUDecomp_m_32f_P);
    add.operator()<double, K::m, L::Std>("orlmLUDecomp_m_64f", orlmLUDecomp_m_64f);
    add.operator()<double, K::m, L::P>("orlmLUDecomp_m_64f_P", orlmLUDecomp_m_64f_P);
    add.operator()<float, K::ma, L::Std>("orlmLUDecomp_ma_32f", orlmLUDecomp_ma_32f);
    add.operator()<float, K::ma, L::P>("orlmLUDecomp_ma_32f_P", orlmLUDecomp_ma_32f_P);
    add.operator()<float, K::ma, L::L>("orlmLUDecomp_ma_32f_L", orlmLUDecomp_ma_32f_L);
    add.operator()<double, K::ma, L::Std>("orlmLUDecomp_ma_64f", orlmLUDecomp_ma_64f);
    add.operator()<double, K::ma, L::P>("orlmLUDecomp_ma_64f_P", orlmLUDecomp_ma_64f_P);
    add.operator()<double, K::ma, L::L>("orlmLUDecomp_ma_64f_L", orlmLUDecomp_ma_64f_L);
    return list;
}

// Compares one item with the reference: status-independent outputs.
void expectItem(const Outcome& o, int k, int n, const Expect& e, const std::string& what)
{
    for (int x = 0; x < n; ++x) EXPECT_EQ(o.perm[size_t(k) * n + x], e.perm[x]) << what << " perm[" << x << "]";
    for (int x = 0; x < n * n; ++x)
        EXPECT_TRUE(t::sameBits(o.dst[k][x], e.dst[x]))
            << what << " dst(" << x / n << "," << x % n << ") = " << o.dst[k][x] << ", expected " << e.dst[x];
}

// Random matrix with entries in [-2, 2], rounded to the member's type.
Item random(const Member& m, int n, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-2.0, 2.0);
    Item a(n * n);
    for (double& v : a) v = m.round(u(rng));
    return a;
}

Item identity(int n)
{
    Item a(n * n, 0.0);
    for (int i = 0; i < n; ++i) a[i * n + i] = 1.0;
    return a;
}

// An identity of order n with one diagonal element replaced.
Item diagAt(int n, int i, double v)
{
    Item a = identity(n);
    a[i * n + i] = v;
    return a;
}

// A small matrix in the top left corner of an identity of order n.
Item embed(int n, int m, std::initializer_list<double> top)
{
    Item a = identity(n);
    auto it = top.begin();
    for (int i = 0; i < m; ++i)
        for (int j = 0; j < m; ++j) a[i * n + j] = *it++;
    return a;
}

// ---- values of both paths in every member -----------------------------------

TEST(LUDecompValues, EveryMemberSizeAndStrideMatchesItsPath)
{
    std::mt19937 rng(7);
    for (const Member& m : members())
        for (int n : {1, 2, 3, 4, 5, 6, 7, 9})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                std::vector<Item> items;
                for (int k = 0; k < (m.array ? 3 : 1); ++k) items.push_back(random(m, n, rng));
                const Outcome o = m.run(n, items, st, false);
                SCOPED_TRACE(m.name + " n=" + std::to_string(n) + (st == Strides::Wide ? " wide" : ""));
                ASSERT_EQ(o.st, orlStatusOk);
                for (int k = 0; k < int(items.size()); ++k) expectItem(o, k, n, m.expect(n, items[k]), "item " + std::to_string(k));
                if (HasFailure()) return;
            }
}

// ---- tolerance, sense, order of exchange and test, ties -------------------

struct Fixed {
    const char* what;
    int n;
    Item a;
    orlStatus st;                       // expected status
    Perm perm;     // expected perm (empty: not checked here)
};

template <class E>
std::vector<Fixed> fixedCases()
{
    const double tu = sizeof(E) == 4 ? std::ldexp(1.0, -125) : std::ldexp(1.0, -1021);
    const double tg = sizeof(E) == 4 ? std::ldexp(1.0, -23) : std::ldexp(1.0, -52);
    const double below_u = double(std::nextafter(E(tu), E(0))), above_g = double(std::nextafter(E(tg), E(1)));
    return {
        {"unrolled: pivot equal to the tolerance passes", 3, {1, 0, 0, 0, tu, 0, 0, 0, 1}, orlStatusOk, {0, 1, 2}},
        {"unrolled: final element equal to the tolerance passes", 3, {1, 0, 0, 0, 1, 0, 0, 0, tu}, orlStatusOk, {0, 1, 2}},
        {"unrolled: just below the tolerance fails", 4, diagAt(4, 1, below_u), orlStatusSingular, {0, 1, 2, 3}},
        {"general: pivot equal to the tolerance fails", 2, {tg, 0, 0, 1}, orlStatusSingular, {0, 1}},
        {"general: later pivot equal to the tolerance fails", 7, diagAt(7, 1, tg), orlStatusSingular, {0, 1, 2, 3, 4, 5, 6}},
        {"general: final element equal to the tolerance fails", 7, diagAt(7, 6, tg), orlStatusSingular, {0, 1, 2, 3, 4, 5, 6}},
        {"general: just above the tolerance passes", 2, {1, 0, 0, above_g}, orlStatusOk, {0, 1}},
        {"size 1 at the tolerance fails", 1, {tg}, orlStatusSingular, {0}},
        {"size 1 above the tolerance passes", 1, {above_g}, orlStatusOk, {0}},
        {"1e-8 diagonal of order 2 fails", 2, {E(1e-8), 0, 0, E(1e-8)}, sizeof(E) == 4 ? orlStatusSingular : orlStatusOk, {0, 1}},
        {"1e-8 diagonal of order 3 passes", 3, {E(1e-8), 0, 0, 0, E(1e-8), 0, 0, 0, E(1e-8)}, orlStatusOk, {0, 1, 2}},
        // Column 0 holds only a value below the tolerance, in row 1.
        {"unrolled: failing stage's exchange is made", 3, {0, 1, 0, below_u, 0, 1, 0, 0, 1}, orlStatusSingular, {1, 0, 2}},
        {"general: failing stage's exchange is not made", 7, embed(7, 2, {0, 1, tg / 2, 0}), orlStatusSingular, {0, 1, 2, 3, 4, 5, 6}},
        {"unrolled: NaN on top of column 0 fails at once", 3, {NAN, 0, 0, 5, 1, 0, 0, 0, 1}, orlStatusSingular, {0, 1, 2}},
        {"general: NaN on top of column 0 fails at once", 2, {NAN, 0, 5, 1}, orlStatusSingular, {0, 1}},
        // After stage 0 takes physical row 2, positions 1 and 2 hold rows 1
        // and 0 with |3| = |-3| in column 1: the earlier position, the higher
        // physical row, wins.
        {"unrolled: tie keeps the earlier perm position", 3, {1, 3, 0, 0, -3, 0, 2, 0, 1}, orlStatusOk, {2, 1, 0}},
        {"general: tie keeps the earlier perm position", 7, embed(7, 3, {1, 3, 0, 0, -3, 0, 2, 0, 1}), orlStatusOk, {2, 1, 0, 3, 4, 5, 6}},
        // Fixed final test of the unrolled path.
        {"unrolled: regular permutation matrix fails", 3, {0, 0, 1, 1, 0, 0, 0, 1, 0}, orlStatusSingular, {1, 2, 0}},
        {"unrolled: singular matrix passes", 3, {0, 0, 0, 0, 1, 0, 1, 0, 1}, orlStatusOk, {2, 1, 0}},
        {"general: permutation matrix of order 2 passes", 2, {0, 1, 1, 0}, orlStatusOk, {1, 0}},
        {"general: permutation matrix of order 7 passes", 7, embed(7, 3, {0, 0, 1, 1, 0, 0, 0, 1, 0}), orlStatusOk, {1, 2, 0, 3, 4, 5, 6}},
    };
}

TEST(LUDecompRules, ToleranceSenseExchangeOrderTiesAndFinalTest)
{
    for (const Member& m : members()) {
        const auto cases = m.f32 ? fixedCases<float>() : fixedCases<double>();
        for (const Fixed& c : cases) {
            SCOPED_TRACE(m.name + ": " + c.what);
            const Outcome o = m.run(c.n, {c.a}, Strides::Unit, false);
            EXPECT_EQ(o.st, c.st);
            EXPECT_EQ(Perm(o.perm.begin(), o.perm.begin() + c.n), c.perm);
            expectItem(o, 0, c.n, m.expect(c.n, c.a), "");
        }
    }
}

// The regular 3x3 permutation matrix: rows 1 and 2 of dst written, row 0
// untouched, in the standard layouts; nothing written in _P.
TEST(LUDecompRules, FixedFinalTestLeavesRowsOneAndTwo)
{
    const Item a = {0, 0, 1, 1, 0, 0, 0, 1, 0};
    for (const Member& m : members()) {
        const Outcome o = m.run(3, {a}, Strides::Wide, false);
        ASSERT_EQ(o.st, orlStatusSingular) << m.name;
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) {
                const bool written = m.lay != L::P && i != 0;
                EXPECT_EQ(o.dst[0][i * 3 + j], written ? a[i * 3 + j] : kUntouched) << m.name << " (" << i << "," << j << ")";
            }
    }
}

// ---- outputs after failure, arrays that stop ------------------------------

// Failing at stage 0, at a later stage and at the final test, on both
// paths. Where column 1 is twice column 0 and the first pivot is a power of
// two, stage 1 meets exact zeros.
std::vector<Item> failing()
{
    return {
        {0, 1, 2, 0, 3, 4, 0, 5, 6},                                   // 3: stage 0
        {4, 0, 0, 0, 2, 0, 0, 0, 0},                                   // 3: final test
        {4, 8, 1, 2, 2, 4, 3, 1, 1, 2, 5, 7, 2, 4, 1, 1},              // 4: stage 1
        {4, 8, 1, 2, 3, 1, 2, 5, 7, 1, 2, 4, 1, 1, 2, 3, 6, 1, 1, 1, 1, 2, 4, 2, 3},  // 5: stage 1
        {1, 2, 2, 4},                                                  // 2: final test
        embed(7, 2, {1e-30, 0, 0, 1}),                                 // 7: stage 0
        embed(8, 3, {1, 2, 3, 2, 4, 6, 1, 1, 1}),                      // 8: stage 2
    };
}

TEST(LUDecompFailure, OutputsPerPathAndLayout)
{
    for (const Member& m : members())
        for (const Item& a : failing()) {
            const int n = int(std::lround(std::sqrt(double(a.size()))));
            const Expect e = m.expect(n, a);
            const Outcome o = m.run(n, {a}, Strides::Wide, false);
            SCOPED_TRACE(m.name + " n=" + std::to_string(n));
            ASSERT_EQ(e.st, orlStatusSingular);
            EXPECT_EQ(o.st, e.st);
            expectItem(o, 0, n, e, "");
        }
}

TEST(LUDecompFailure, ArraysStopAtTheFirstFailingItem)
{
    std::mt19937 rng(5);
    for (const Member& m : members()) {
        if (!m.array) continue;
        for (int n : {3, 5, 2, 7}) {
            std::vector<Item> items;
            for (int k = 0; k < 5; ++k) items.push_back(random(m, n, rng));
            items[2] = Item(n * n, 0.0);  // fails at stage 0 on both paths
            items[3] = Item(n * n, 0.0);
            const Outcome o = m.run(n, items, Strides::Unit, false);
            SCOPED_TRACE(m.name + " n=" + std::to_string(n));
            EXPECT_EQ(o.st, orlStatusSingular);
            for (int k = 0; k < 3; ++k) expectItem(o, k, n, m.expect(n, items[k]), "item " + std::to_string(k));
            for (int k = 3; k < 5; ++k) {
                for (int x = 0; x < n; ++x) EXPECT_EQ(o.perm[k * n + x], kNoPerm) << "item " << k;
                for (double v : o.dst[k]) EXPECT_EQ(v, kUntouched) << "item " << k;
            }
        }
    }
}

// On the parallel route each slice stops for itself: with two threads a
// failure in the first slice leaves the second slice complete.
TEST(LUDecompFailure, ParallelSlicesStopForThemselves)
{
    std::mt19937 rng(9);
    const int n = 3, count = 4500;  // n*n*count = 40500, above every limit
    for (const Member& m : members()) {
        if (!m.array) continue;
        std::vector<Item> items;
        for (int k = 0; k < count; ++k) items.push_back(random(m, n, rng));
        items[5] = Item(n * n, 0.0);
        Threads th(2);
        probe::reset();
        const Outcome o = m.run(n, items, Strides::Unit, false);
        SCOPED_TRACE(m.name);
        EXPECT_EQ(probe::regions().count, 1);
        EXPECT_EQ(o.st, orlStatusSingular);
        for (int k : {0, 4, 2250, 2251, 4499}) expectItem(o, k, n, m.expect(n, items[k]), "item " + std::to_string(k));
        for (int k : {6, 2249}) EXPECT_EQ(o.perm[k * n], kNoPerm) << "item " << k;
    }
}

TEST(LUDecompRoute, LimitAndThreadsGiveTheSameResults)
{
    std::mt19937 rng(13);
    for (const Member& m : members()) {
        if (!m.array) continue;
        for (auto [n, count] : {std::pair{4, 1250}, std::pair{4, 1251}, std::pair{8, 400}}) {
            std::vector<Item> items;
            for (int k = 0; k < count; ++k) items.push_back(random(m, n, rng));
            for (int T : {1, 3}) {
                Threads th(T);
                probe::reset();
                const Outcome o = m.run(n, items, Strides::Unit, false);
                SCOPED_TRACE(m.name + " n=" + std::to_string(n) + " count=" + std::to_string(count) + " T=" + std::to_string(T));
                // 16*1250 = 20000 stays serial (limit 20000, or 40000 for the
                // 32f _L unit case); 16*1251 goes parallel where the limit is 20000.
                const bool parallel = T > 1 && n * n * count > (m.f32 && m.lay == L::L ? 40000 : 20000);
                EXPECT_EQ(probe::regions().count, parallel ? 1 : 0);
                ASSERT_EQ(o.st, orlStatusOk);
                for (int k : {0, count / 3, count / 2 + 1, count - 1}) expectItem(o, k, n, m.expect(n, items[k]), "item " + std::to_string(k));
            }
        }
    }
}

// ---- in place, NaN and infinity --------------------------------------------

TEST(LUDecompInPlace, SrcEqualToDstGivesTheSameResult)
{
    std::mt19937 rng(17);
    for (const Member& m : members())
        for (int n : {2, 3, 4, 5, 6, 7}) {
            const Item a = random(m, n, rng);
            const Outcome o = m.run(n, {a}, Strides::Wide, true);
            SCOPED_TRACE(m.name + " n=" + std::to_string(n));
            ASSERT_EQ(o.st, orlStatusOk);
            expectItem(o, 0, n, m.expect(n, a), "");
        }
}

// Infinities anywhere: no crash, and the status and perm that the
// comparisons of the path give (NaN pivots are among the fixed cases).
TEST(LUDecompInPlace, InfinityDoesNotCrash)
{
    std::mt19937 rng(19);
    for (const Member& m : members())
        for (int n : {2, 3, 6, 7}) {
            Item a = random(m, n, rng);
            a[rng() % (n * n)] = n % 2 ? INFINITY : -INFINITY;
            const Outcome o = m.run(n, {a}, Strides::Unit, false);
            const Expect e = m.expect(n, a);
            EXPECT_EQ(o.st, e.st) << m.name << " n=" << n;
            EXPECT_EQ(Perm(o.perm.begin(), o.perm.begin() + n), e.perm) << m.name;
        }
}

// ---- argument checks -------------------------------------------------------

TEST(LUDecompChecks, ClassesInOrderAndNothingWritten)
{
    float f[64];
    double g[64];
    float fo[64];
    double go[64];
    const float* tf[64];
    float* to[64];
    const double* tg[64];
    double* tgo[64];
    for (int i = 0; i < 64; ++i) {
        f[i] = float(i % 7 + 1), g[i] = i % 7 + 1, fo[i] = -1.f, go[i] = -1.0;
        tf[i] = f + i, to[i] = fo + i, tg[i] = g + i, tgo[i] = go + i;
    }
    std::int32_t perm[16];
    std::fill(perm, perm + 16, kNoPerm);
    auto untouched = [&] {
        for (int i = 0; i < 64; ++i)
            if (fo[i] != -1.f || go[i] != -1.0) return false;
        return std::all_of(perm, perm + 16, [](std::int32_t p) { return p == kNoPerm; });
    };
    struct Case {
        const char* what;
        std::function<orlStatus()> call;
        orlStatus expect;
    };
    const Case cases[] = {
        {"NULL perm before count", [&] { return orlmLUDecomp_ma_32f(f, 64, 16, 4, nullptr, fo, 64, 16, 4, 2, 0); }, orlStatusNullPointer},
        {"NULL src", [&] { return orlmLUDecomp_m_64f(nullptr, 32, 8, perm, go, 32, 8, 0); }, orlStatusNullPointer},
        {"NULL dst table", [&] { return orlmLUDecomp_m_32f_P(tf, 2, perm, nullptr, 0, 0); }, orlStatusNullPointer},
        {"NULL perm, _L", [&] { return orlmLUDecomp_ma_64f_L(tg, -8, 32, 8, nullptr, tgo, 0, 32, 8, 2, 0); }, orlStatusNullPointer},
        {"count before size", [&] { return orlmLUDecomp_ma_64f(g, 64, 32, 8, perm, go, 64, 32, 8, 0, 0); }, orlStatusCount},
        {"count before stride, _P", [&] { return orlmLUDecomp_ma_32f_P(tf, 0, 6, perm, to, 0, 64, 2, -1); }, orlStatusCount},
        {"size before stride", [&] { return orlmLUDecomp_ma_32f(f, 64, 6, 4, perm, fo, 64, 16, 4, 0, 1); }, orlStatusSize},
        {"size before offset, single _P", [&] { return orlmLUDecomp_m_64f_P(tg, 4, perm, tgo, 0, 0); }, orlStatusSize},
        {"stride of 6", [&] { return orlmLUDecomp_m_32f(f, 16, 4, perm, fo, 6, 4, 2); }, orlStatusStride},
        {"stride of 12 in 64f", [&] { return orlmLUDecomp_m_64f(g, 12, 8, perm, go, 32, 8, 2); }, orlStatusStride},
        {"stride2 of 0", [&] { return orlmLUDecomp_ma_64f(g, 64, 32, 0, perm, go, 64, 32, 8, 2, 1); }, orlStatusStride},
        {"stride0 of 0 with count 1", [&] { return orlmLUDecomp_ma_32f(f, 0, 16, 4, perm, fo, 64, 16, 4, 2, 1); }, orlStatusStride},
        {"_P stride0 before offset", [&] { return orlmLUDecomp_ma_32f_P(tf, 2, 64, perm, to, 0, -4, 2, 1); }, orlStatusStride},
        {"_L stride before offset", [&] { return orlmLUDecomp_ma_32f_L(tf, -4, 16, 4, perm, to, 0, 16, 2, 2, 1); }, orlStatusStride},
        {"_P offset of 2", [&] { return orlmLUDecomp_ma_32f_P(tf, 2, 64, perm, to, 0, 64, 2, 1); }, orlStatusOffset},
        {"_L offset of -4", [&] { return orlmLUDecomp_ma_32f_L(tf, 0, 16, 4, perm, to, -4, 16, 4, 2, 1); }, orlStatusOffset},
        {"single _P offset of 4 in 64f", [&] { return orlmLUDecomp_m_64f_P(tg, 0, perm, tgo, 4, 2); }, orlStatusOffset},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.call(), c.expect) << c.what;
        EXPECT_TRUE(untouched()) << c.what;
    }
    // The same values pass where they are valid: a stride of 12 in 32f, offsets of 0.
    EXPECT_EQ(orlmLUDecomp_m_32f(f, 12, 4, perm, fo, 12, 4, 2), orlStatusOk);
    EXPECT_EQ(orlmLUDecomp_ma_32f_P(tf, 0, 64, perm, to, 0, 64, 2, 1), orlStatusOk);
}

}  // namespace
