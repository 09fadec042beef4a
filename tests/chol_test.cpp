// Cholesky decomposition and back-substitution: the factor bit for bit in
// every member, size and stride case (threshold, reciprocal square root and
// store of each kernel), what stands after a failure, the triangles read and
// written, arrays that stop, the route and the thread count, the solve of
// random systems, and the argument checks of both families.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "orlcore.h"
#include "orlm.h"
#include "reference.h"

using t::K;
using t::L;
using t::Mat;
using t::Strides;
using t::Vec;

namespace {

using t::Threads;
using Item = std::vector<double>;  // one n-by-n matrix, row-major
using Vec1 = std::vector<double>;

constexpr double kUntouched = -777.25;

// ---- reference: the decomposition as each kernel runs it --------------------

enum class Rsq { Ext, Estimate, SqrtDiv };

// What a kernel does at size n: its threshold, its reciprocal square root,
// whether it stores late (the `_P` form of size 3).
struct KernelRule {
    double t0;
    Rsq rsq;
    bool late;
};

template <class E>
E recipSqrt(E t, Rsq how)
{
    if (how == Rsq::Ext) return ref::rsqrtExt(t);
    if (how == Rsq::Estimate) return E(ref::rsqrtEstimateNewton(float(t)));
    return E(1) / std::sqrt(t);
}

struct Expect {
    orlStatus st;
    Item dst;
};

// Row by row, dst written element by element as formed (or, late, rows
// 0..n-2 once row n-2 is complete and row n-1 at the end).
template <class E>
Expect refFactor(int n, const Item& src, Item dst, KernelRule r)
{
    std::vector<E> l(n * n);
    auto rows = [&](int from, int to) {
        for (int i = from; i < to; ++i)
            for (int j = 0; j <= i; ++j) dst[i * n + j] = l[i * n + j];
    };
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j <= i; ++j) {
            E t = E(src[i * n + j]);
            for (int k = 0; k < j; ++k) t = t - l[i * n + k] * l[j * n + k];
            if (j < i) {
                l[i * n + j] = t * l[j * n + j];
            } else {
                if (!(t > E(r.t0))) return {orlStatusNotPosDefinite, dst};
                l[i * n + i] = recipSqrt(t, r.rsq);
            }
            if (!r.late) dst[i * n + j] = l[i * n + j];
        }
        if (r.late && i == n - 2) rows(0, n - 1);
    }
    if (r.late) rows(n - 1, n);
    return {orlStatusOk, dst};
}

// ---- the decomposition members ------------------------------------------------

struct Outcome {
    orlStatus st;
    std::vector<Item> dst;
};

struct Decomp {
    std::string name;
    bool f32, array;
    L lay;
    std::function<Outcome(int n, const std::vector<Item>&, Strides, bool inPlace)> run;

    // The kernel's rules, as the member's documentation states them.
    KernelRule rule(int n, Strides st) const
    {
        const bool p = lay == L::P, s2 = lay == L::Std && st == Strides::Wide;
        double t0 = 0;
        if (p && n == 3) t0 = 0x1p-23;
        if (!f32 && array && s2 && (n == 6 || n < 3 || n > 6)) t0 = 0x1p-52;
        const Rsq rsq = !array && !p && n == 3 ? Rsq::Ext : f32 ? Rsq::Estimate : Rsq::SqrtDiv;
        return {t0, rsq, p && n == 3};
    }
    Expect expect(int n, const Item& src, Strides st, const Item& before) const
    {
        return f32 ? refFactor<float>(n, src, before, rule(n, st)) : refFactor<double>(n, src, before, rule(n, st));
    }
    double round(double v) const { return f32 ? double(float(v)) : v; }
};

template <class E, K kind, L lay, class Fn>
Outcome runDecomp(Fn fn, int n, const std::vector<Item>& items, Strides st, bool inPlace)
{
    const int count = int(items.size());
    Mat<E, kind, lay> src(n, n, count, st, 3);
    Mat<E, kind, lay, true> dst(n, n, count, st, 4);
    src.fill([&](int k, int i, int j) { return E(items[k][i * n + j]); });
    dst.fill([&](int k, int i, int j) { return inPlace ? E(items[k][i * n + j]) : E(kUntouched); });
    auto invoke = [&](auto srcArgs) {
        if constexpr (t::arr(kind))
            return t::call(fn, std::tuple_cat(srcArgs, dst.args()), n, count);
        else
            return t::call(fn, std::tuple_cat(srcArgs, dst.args()), n);
    };
    Outcome o{inPlace ? invoke(dst.args()) : invoke(src.args()), {}};
    for (int k = 0; k < count; ++k) {
        Item d(n * n);
        for (int x = 0; x < n * n; ++x) d[x] = dst(k, x / n, x % n);
        o.dst.push_back(d);
    }
    return o;
}

std::vector<Decomp> decomps()
{
    std::vector<Decomp> list;
    auto add = [&]<class E, K kind, L lay>(const char* name, auto fn) {
        list.push_back({name, sizeof(E) == 4, t::arr(kind), lay, [fn](int n, const std::vector<Item>& it, Strides st, bool ip) {
                            return runDecomp<E, kind, lay>(fn, n, it, st, ip);
                        }});
    };
#define ORL_ADD(shape, kind, E, ty, lay, suffix) \
    add.operator()<E, K::kind, L::lay>("orlmCholeskyDecomp_" #shape "_" #ty #suffix, orlmCholeskyDecomp_##shape##_##ty##suffix);
#define ORL_ADD2(shape, kind, lay, suffix) ORL_ADD(shape, kind, float, 32f, lay, suffix) ORL_ADD(shape, kind, double, 64f, lay, suffix)
    ORL_ADD2(m, m, Std, ) ORL_ADD2(m, m, P, _P) ORL_ADD2(ma, ma, Std, ) ORL_ADD2(ma, ma, P, _P) ORL_ADD2(ma, ma, L, _L)
#undef ORL_ADD2
#undef ORL_ADD
    return list;
}

// A random symmetric positive definite matrix B B^T + n I, rounded to the
// member's type; the strict upper triangle holds NaN, which must not matter.
Item spd(const Decomp& m, int n, std::mt19937& rng, bool nanAbove = true)
{
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    Item b(n * n), a(n * n);
    for (double& v : b) v = u(rng);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) {
            double s = i == j ? n : 0.0;
            for (int k = 0; k < n; ++k) s += b[i * n + k] * b[j * n + k];
            a[i * n + j] = m.round(s);
            a[j * n + i] = i == j ? a[i * n + j] : nanAbove ? NAN : a[i * n + j];
        }
    return a;
}

void expectItem(const Item& got, const Item& want, const std::string& what)
{
    for (size_t x = 0; x < got.size(); ++x)
        EXPECT_TRUE(ref::sameBits(got[x], want[x])) << what << " element " << x << " = " << got[x] << ", expected " << want[x];
}

// ---- decomposition: values and rules -------------------------------------------

TEST(CholeskyDecompValues, EveryMemberSizeAndStrideMatchesItsKernel)
{
    std::mt19937 rng(1);
    const auto list = decomps();
    ASSERT_EQ(list.size(), 10u);
    for (const Decomp& m : list)
        for (int n : {1, 2, 3, 4, 5, 6, 7, 9})
            for (Strides st : {Strides::Unit, Strides::Wide})
                for (bool inPlace : {false, true}) {
                    std::vector<Item> items;
                    for (int k = 0; k < (m.array ? 3 : 1); ++k) items.push_back(spd(m, n, rng));
                    SCOPED_TRACE(m.name + " n=" + std::to_string(n) + (st == Strides::Wide ? " wide" : "") + (inPlace ? " in place" : ""));
                    const Outcome o = m.run(n, items, st, inPlace);
                    ASSERT_EQ(o.st, orlStatusOk);
                    for (int k = 0; k < int(items.size()); ++k)
                        expectItem(o.dst[k], m.expect(n, items[k], st, inPlace ? items[k] : Item(n * n, kUntouched)).dst, "item " + std::to_string(k));
                    if (HasFailure()) return;
                }
}

// A small case worked by hand: A = L L^T with L = {2; 1 2; 1 1 2}, so the
// factor holds 1/2 on its diagonal, and x = (1, 2, 3) solves b = (14, 21, 26).
TEST(CholeskyDecompValues, HandWorkedCaseInEvery64fMember)
{
    const Item a = {4, NAN, NAN, 2, 5, NAN, 2, 3, 6};
    const Item f = {0.5, kUntouched, kUntouched, 1, 0.5, kUntouched, 1, 1, 0.5};
    for (const Decomp& m : decomps()) {
        if (m.f32) continue;
        const Outcome o = m.run(3, {a}, Strides::Wide, false);
        EXPECT_EQ(o.st, orlStatusOk) << m.name;
        expectItem(o.dst[0], f, m.name);
    }
    double x[3];
    const double b[3] = {14, 21, 26}, lf[9] = {0.5, 0, 0, 1, 0.5, 0, 1, 1, 0.5};
    ASSERT_EQ(orlmCholeskyBackSubst_mv_64f(lf, 24, 8, b, 8, x, 8, 3), orlStatusOk);
    EXPECT_EQ(Vec1(x, x + 3), Vec1({1, 2, 3}));
}

struct RuleCase {
    const char* what;
    int n;
    int row;          // the diagonal set to `pivot`: the rest is the identity
    double pivot;
    std::function<bool(const Decomp&, Strides)> passes;
};

// Thresholds and the sense of the test, by kernel and size.
TEST(CholeskyDecompRules, ThresholdsBySizeAndKernel)
{
    const auto isP = [](const Decomp& m, Strides) { return m.lay == L::P; };
    const auto isMa64S2 = [](const Decomp& m, Strides st) { return !m.f32 && m.array && m.lay == L::Std && st == Strides::Wide; };
    const RuleCase cases[] = {
        {"3x3 pivot 1e-8 fails in _P only", 3, 2, 1e-8, [&](const Decomp& m, Strides st) { return !isP(m, st); }},
        {"3x3 pivot 2^-23 fails in _P (strict)", 3, 0, 0x1p-23, [&](const Decomp& m, Strides st) { return !isP(m, st); }},
        {"4x4 pivot 1e-30 passes everywhere", 4, 3, 1e-30, [](const Decomp&, Strides) { return true; }},
        {"6x6 pivot 1e-17 fails in ma_64f_S2 only", 6, 5, 1e-17, [&](const Decomp& m, Strides st) { return !isMa64S2(m, st); }},
        {"5x5 pivot 1e-17 passes everywhere", 5, 4, 1e-17, [](const Decomp&, Strides) { return true; }},
        {"7x7 pivot 2^-52 fails in ma_64f_S2 only", 7, 3, 0x1p-52, [&](const Decomp& m, Strides st) { return !isMa64S2(m, st); }},
        {"1x1 pivot 1e-20 fails in ma_64f_S2 only", 1, 0, 1e-20, [&](const Decomp& m, Strides st) { return !isMa64S2(m, st); }},
        {"zero fails", 4, 1, 0.0, [](const Decomp&, Strides) { return false; }},
        {"negative fails", 2, 1, -1.0, [](const Decomp&, Strides) { return false; }},
        {"NaN fails", 6, 0, NAN, [](const Decomp&, Strides) { return false; }},
        // 1/sqrt(inf) is 0, but the Newton step after the estimate makes a
        // NaN of it (inf * 0), and the next row fails on that NaN.
        {"infinity: NaN after the estimate", 3, 1, INFINITY, [](const Decomp& m, Strides) { return !m.f32 || (!m.array && m.lay == L::Std); }},
    };
    for (const Decomp& m : decomps())
        for (const RuleCase& c : cases)
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                Item a(c.n * c.n, 0.0);
                for (int i = 0; i < c.n; ++i) a[i * c.n + i] = 1.0;
                a[c.row * c.n + c.row] = m.round(c.pivot);
                const Outcome o = m.run(c.n, {a}, st, false);
                SCOPED_TRACE(m.name + ": " + c.what + (st == Strides::Wide ? " wide" : ""));
                EXPECT_EQ(o.st, c.passes(m, st) ? orlStatusOk : orlStatusNotPosDefinite);
                expectItem(o.dst[0], m.expect(c.n, a, st, Item(a.size(), kUntouched)).dst, "");
            }
}

// ---- decomposition: failure outputs, arrays, route ------------------------------

// A matrix that fails at row `row`: its diagonal there is made too small.
Item failingAt(const Decomp& m, int n, int row, std::mt19937& rng)
{
    Item a = spd(m, n, rng, false);
    a[row * n + row] = -1.0;
    return a;
}

// Rows before the failing one complete, that row's off-diagonal elements
// written and its diagonal not; `_P` at size 3 nothing, or rows 0 and 1.
TEST(CholeskyDecompFailure, OutputsPerKernel)
{
    std::mt19937 rng(2);
    for (const Decomp& m : decomps())
        for (int n : {1, 2, 3, 4, 6, 8})
            for (int row = 0; row < n; ++row) {
                const Item a = failingAt(m, n, row, rng);
                const Outcome o = m.run(n, {a}, Strides::Wide, false);
                SCOPED_TRACE(m.name + " n=" + std::to_string(n) + " row " + std::to_string(row));
                const Expect e = m.expect(n, a, Strides::Wide, Item(n * n, kUntouched));
                ASSERT_EQ(e.st, orlStatusNotPosDefinite);
                EXPECT_EQ(o.st, e.st);
                expectItem(o.dst[0], e.dst, "");
                // Spelled out: the written elements of the failing row.
                const bool late = m.lay == L::P && n == 3;
                for (int j = 0; j <= row; ++j) {
                    const bool written = j < row && !late;
                    EXPECT_EQ(o.dst[0][row * n + j] != kUntouched, written) << "(" << row << "," << j << ")";
                }
                if (late) EXPECT_EQ(o.dst[0][0] != kUntouched, row == 2);
            }
}

TEST(CholeskyDecompFailure, ArraysStopAtTheFirstFailingItem)
{
    std::mt19937 rng(3);
    for (const Decomp& m : decomps()) {
        if (!m.array) continue;
        for (int n : {3, 5, 2, 7}) {
            std::vector<Item> items;
            for (int k = 0; k < 5; ++k) items.push_back(k == 2 || k == 3 ? failingAt(m, n, 0, rng) : spd(m, n, rng));
            const Outcome o = m.run(n, items, Strides::Unit, false);
            SCOPED_TRACE(m.name + " n=" + std::to_string(n));
            EXPECT_EQ(o.st, orlStatusNotPosDefinite);
            for (int k = 0; k < 2; ++k) expectItem(o.dst[k], m.expect(n, items[k], Strides::Unit, Item(n * n, kUntouched)).dst, "item " + std::to_string(k));
            for (int k = 2; k < 5; ++k) EXPECT_EQ(o.dst[k], Item(n * n, kUntouched)) << "item " << k;
        }
    }
}

// Above the limit with two threads each slice stops for itself; with 1 to 4
// threads every item has the same bits.
TEST(CholeskyDecompRoute, SlicesAndThreadCounts)
{
    std::mt19937 rng(4);
    const int n = 4, count = 1000;  // 16000: above every limit
    for (const Decomp& m : decomps()) {
        if (!m.array) continue;
        std::vector<Item> items;
        for (int k = 0; k < count; ++k) items.push_back(spd(m, n, rng));
        std::vector<Item> first;
        for (int T = 1; T <= 4; ++T) {
            Threads th(T);
            probe::reset();
            const Outcome o = m.run(n, items, Strides::Unit, false);
            EXPECT_EQ(probe::regions().count, T > 1 ? 1 : 0) << m.name << " T=" << T;
            ASSERT_EQ(o.st, orlStatusOk);
            if (T == 1) first = o.dst;
            for (int k = 0; k < count; k += 37) expectItem(o.dst[k], first[k], m.name + " T=" + std::to_string(T));
        }
        items[5] = failingAt(m, n, 1, rng);
        Threads th(2);
        const Outcome o = m.run(n, items, Strides::Unit, false);
        EXPECT_EQ(o.st, orlStatusNotPosDefinite) << m.name;
        EXPECT_EQ(o.dst[6], Item(n * n, kUntouched)) << m.name;
        expectItem(o.dst[count - 1], first[count - 1], m.name + " second slice");
    }
}

// The limits: n*n*count against 7500/2000 (32f/64f standard), 2000/720 (_L
// unit stride), 2000 otherwise.
TEST(CholeskyDecompRoute, Limits)
{
    std::mt19937 rng(5);
    for (const Decomp& m : decomps()) {
        if (!m.array) continue;
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            const bool wide = st == Strides::Wide;
            const int limit = m.lay == L::Std ? (m.f32 ? 7500 : 2000) : m.lay == L::L && !m.f32 && !wide ? 720 : 2000;
            for (int count : {limit / 4, limit / 4 + 1}) {  // n = 2: cost 4*count
                std::vector<Item> items(count, spd(m, 2, rng));
                Threads th(2);
                probe::reset();
                ASSERT_EQ(m.run(2, items, st, false).st, orlStatusOk);
                EXPECT_EQ(probe::regions().count, 4 * count > limit ? 1 : 0) << m.name << " count " << count << (wide ? " wide" : "");
            }
        }
    }
}

// ---- back-substitution -------------------------------------------------------------

enum class Shape { mv, mva, mava };

struct Problem {
    int n;
    std::vector<Item> factors;  // one (mv, mva) or one per item (mava)
    std::vector<Vec1> rhs;
};

template <class E>
Vec1 refSolve(int n, const Item& f, const Vec1& b)
{
    std::vector<E> y(n);
    for (int i = 0; i < n; ++i) {
        E t = E(b[i]);
        for (int j = 0; j < i; ++j) t = t - E(f[i * n + j]) * y[j];
        y[i] = t * E(f[i * n + i]);
    }
    for (int i = n - 1; i >= 0; --i) {
        E t = y[i];
        for (int j = n - 1; j > i; --j) t = t - E(f[j * n + i]) * y[j];
        y[i] = t * E(f[i * n + i]);
    }
    return Vec1(y.begin(), y.end());
}

struct Subst {
    std::string name;
    bool f32;
    Shape shape;
    L lay;
    std::function<std::vector<Vec1>(const Problem&, Strides, bool inPlace)> run;
    Vec1 expect(const Problem& pr, int k) const
    {
        const Item& f = pr.factors[shape == Shape::mava ? k : 0];
        return f32 ? refSolve<float>(pr.n, f, pr.rhs[k]) : refSolve<double>(pr.n, f, pr.rhs[k]);
    }
};

template <class E, Shape shape, L lay, class Fn>
std::vector<Vec1> runSubst(Fn fn, const Problem& pr, Strides st, bool inPlace)
{
    constexpr bool arr = shape != Shape::mv;
    const int n = pr.n, count = int(pr.rhs.size());
    Mat<E, shape == Shape::mava ? K::ma : K::m, lay> a(n, n, count, st, 5);
    a.fill([&](int k, int i, int j) { return E(pr.factors[k][i * n + j]); });
    Vec<E, arr, lay> b(n, count, st, 6);
    Vec<E, arr, lay, true> x(n, count, st, 7);
    for (int k = 0; k < count; ++k)
        for (int j = 0; j < n; ++j) b(k, j) = E(pr.rhs[k][j]), x(k, j) = inPlace ? E(pr.rhs[k][j]) : E(kUntouched);
    auto invoke = [&](auto rhsArgs) {
        const auto groups = std::tuple_cat(a.args(), rhsArgs, x.args());
        if constexpr (arr)
            return t::call(fn, groups, n, count);
        else
            return t::call(fn, groups, n);
    };
    EXPECT_EQ(inPlace ? invoke(x.args()) : invoke(b.args()), orlStatusOk);
    std::vector<Vec1> out(count, Vec1(n));
    for (int k = 0; k < count; ++k)
        for (int j = 0; j < n; ++j) out[k][j] = x(k, j);
    return out;
}

std::vector<Subst> substs()
{
    std::vector<Subst> list;
    auto add = [&]<class E, Shape shape, L lay>(const char* name, auto fn) {
        list.push_back({name, sizeof(E) == 4, shape, lay, [fn](const Problem& pr, Strides st, bool ip) {
                            return runSubst<E, shape, lay>(fn, pr, st, ip);
                        }});
    };
#define ORL_ADD(shape, E, ty, lay, suffix) \
    add.operator()<E, Shape::shape, L::lay>("orlmCholeskyBackSubst_" #shape "_" #ty #suffix, orlmCholeskyBackSubst_##shape##_##ty##suffix);
#define ORL_ADD2(shape, lay, suffix) ORL_ADD(shape, float, 32f, lay, suffix) ORL_ADD(shape, double, 64f, lay, suffix)
    ORL_ADD2(mv, Std, ) ORL_ADD2(mv, P, _P)
    ORL_ADD2(mva, Std, ) ORL_ADD2(mva, P, _P) ORL_ADD2(mva, L, _L)
    ORL_ADD2(mava, Std, ) ORL_ADD2(mava, P, _P) ORL_ADD2(mava, L, _L)
#undef ORL_ADD2
#undef ORL_ADD
    return list;
}

// Random factors (diagonal reciprocals near 1) with NaN in the strict upper
// triangle, which is never read; random right-hand sides.
Problem randomProblem(const Subst& m, int n, int count, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    auto rd = [&](double v) { return m.f32 ? double(float(v)) : v; };
    Problem pr{n, {}, {}};
    for (int f = 0; f < (m.shape == Shape::mava ? count : 1); ++f) {
        Item a(n * n);
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) a[i * n + j] = j > i ? NAN : rd(i == j ? 1.0 + u(rng) / 4 : u(rng));
        pr.factors.push_back(a);
    }
    for (int k = 0; k < count; ++k) {
        Vec1 b(n);
        for (double& v : b) v = rd(u(rng));
        pr.rhs.push_back(b);
    }
    return pr;
}

void expectSolved(const Subst& m, const Problem& pr, const std::vector<Vec1>& got, const std::string& what)
{
    for (int k = 0; k < int(got.size()); ++k) expectItem(got[k], m.expect(pr, k), what + " item " + std::to_string(k));
}

TEST(CholeskyBackSubstValues, EveryMemberSizeAndStrideMatches)
{
    std::mt19937 rng(6);
    const auto list = substs();
    ASSERT_EQ(list.size(), 16u);
    for (const Subst& m : list)
        for (int n : {1, 2, 3, 4, 5, 6, 7, 12})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                const Problem pr = randomProblem(m, n, m.shape == Shape::mv ? 1 : 3, rng);
                SCOPED_TRACE(m.name + " n=" + std::to_string(n) + (st == Strides::Wide ? " wide" : ""));
                expectSolved(m, pr, m.run(pr, st, false), "");
                expectSolved(m, pr, m.run(pr, st, true), "dst = rhs");
                if (HasFailure()) return;
            }
}

// mva limits (n + 2 count) n: 1200 for 32f standard, 720 elsewhere; mava
// (n n + 2 n) count: 2050 for 32f standard unit and 64f _P, 1700 elsewhere.
// Results are the same bits on both routes and for 1 to 4 threads.
TEST(CholeskyBackSubstRoute, LimitsAndThreadCounts)
{
    std::mt19937 rng(7);
    for (const Subst& m : substs()) {
        if (m.shape == Shape::mv) continue;
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            const bool unit = st == Strides::Unit || m.lay == L::P;
            const int limit = m.shape == Shape::mva ? (m.f32 && m.lay == L::Std ? 1200 : 720)
                              : (m.f32 && m.lay == L::Std && unit) || (!m.f32 && m.lay == L::P) ? 2050 : 1700;
            // n = 2: mva cost 4 + 4 count, mava 8 count.
            const int atLimit = m.shape == Shape::mva ? (limit - 4) / 4 : limit / 8;
            for (int count : {atLimit, atLimit + 1}) {
                const Problem pr = randomProblem(m, 2, count, rng);
                const int cost = m.shape == Shape::mva ? 4 + 4 * count : 8 * count;
                for (int T = 1; T <= 4; ++T) {
                    Threads th(T);
                    probe::reset();
                    const auto got = m.run(pr, st, false);
                    EXPECT_EQ(probe::regions().count, T > 1 && cost > limit ? 1 : 0) << m.name << " count " << count << " T=" << T;
                    expectSolved(m, pr, got, m.name);
                }
            }
        }
    }
}

// ---- decomposition and solve together ----------------------------------------

// Random positive definite systems of sizes 1 to 10 through the single
// members: the residual is small next to the size of the terms.
template <class E>
void solveAndCheck(int n, std::mt19937& rng)
{
    const Decomp m{"", sizeof(E) == 4, false, L::Std, {}};
    const Item a64 = spd(m, n, rng, false);
    std::vector<E> a(a64.begin(), a64.end()), f(n * n), b(n), x(n);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    for (E& v : b) v = E(u(rng));
    const int e = sizeof(E), s1 = n * e;
    orlStatus st, st2;
    if constexpr (sizeof(E) == 4) {
        st = orlmCholeskyDecomp_m_32f(a.data(), s1, e, f.data(), s1, e, n);
        st2 = orlmCholeskyBackSubst_mv_32f(f.data(), s1, e, b.data(), e, x.data(), e, n);
    } else {
        st = orlmCholeskyDecomp_m_64f(a.data(), s1, e, f.data(), s1, e, n);
        st2 = orlmCholeskyBackSubst_mv_64f(f.data(), s1, e, b.data(), e, x.data(), e, n);
    }
    ASSERT_EQ(st, orlStatusOk);
    ASSERT_EQ(st2, orlStatusOk);
    // 32f carries about 22 good bits on the factor's diagonal.
    const long double unit = sizeof(E) == 4 ? 0x1p-21L : 0x1p-51L;
    for (int i = 0; i < n; ++i) {
        long double r = b[i], mag = std::fabs((long double)b[i]);
        for (int j = 0; j < n; ++j) r -= (long double)a[i * n + j] * x[j], mag += std::fabs((long double)a[i * n + j] * x[j]);
        EXPECT_LE(std::fabs(r), 4 * n * unit * mag) << "n=" << n << " row " << i;
    }
}

TEST(CholeskySolve, RandomSystemsOfSizesOneToTen)
{
    std::mt19937 rng(8);
    for (int n = 1; n <= 10; ++n)
        for (int trial = 0; trial < 4; ++trial) {
            solveAndCheck<float>(n, rng);
            solveAndCheck<double>(n, rng);
        }
}

// ---- argument checks -------------------------------------------------------------

TEST(CholeskyChecks, ClassesInOrderAndNothingWritten)
{
    float f[64], fo[64];
    double g[64], go[64];
    const float* tf[64];
    float* to[64];
    const double* tg[64];
    double* tgo[64];
    for (int i = 0; i < 64; ++i) {
        f[i] = float(i % 5 + 1), g[i] = i % 5 + 1, fo[i] = -1.f, go[i] = -1.0;
        tf[i] = f + i, to[i] = fo + i, tg[i] = g + i, tgo[i] = go + i;
    }
    auto untouched = [&] {
        return std::all_of(fo, fo + 64, [](float v) { return v == -1.f; }) && std::all_of(go, go + 64, [](double v) { return v == -1.0; });
    };
    struct Case {
        const char* what;
        std::function<orlStatus()> call;
        orlStatus expect;
    };
    const Case cases[] = {
        {"decomp: NULL dst before size", [&] { return orlmCholeskyDecomp_m_32f(f, 16, 4, nullptr, 16, 4, 0); }, orlStatusNullPointer},
        {"decomp: NULL table before count", [&] { return orlmCholeskyDecomp_ma_64f_P(nullptr, 0, 8, tgo, 0, 8, 2, 0); }, orlStatusNullPointer},
        {"decomp: count before size", [&] { return orlmCholeskyDecomp_ma_32f(f, 64, 16, 4, fo, 64, 16, 4, 0, 0); }, orlStatusCount},
        {"decomp: size before stride", [&] { return orlmCholeskyDecomp_ma_64f_L(tg, 0, 6, 8, tgo, 0, 32, 8, 0, 1); }, orlStatusSize},
        {"decomp: stride of 12 in 64f", [&] { return orlmCholeskyDecomp_m_64f(g, 12, 8, go, 32, 8, 2); }, orlStatusStride},
        {"decomp: stride0 of 0", [&] { return orlmCholeskyDecomp_ma_32f(f, 0, 16, 4, fo, 64, 16, 4, 2, 1); }, orlStatusStride},
        {"decomp: _L stride before offset", [&] { return orlmCholeskyDecomp_ma_32f_L(tf, 2, 16, 0, to, 0, 16, 4, 2, 1); }, orlStatusStride},
        {"decomp: _P offset of 2", [&] { return orlmCholeskyDecomp_m_32f_P(tf, 2, to, 0, 2); }, orlStatusOffset},
        {"decomp: _P offset of 4 in 64f", [&] { return orlmCholeskyDecomp_ma_64f_P(tg, 0, 64, tgo, 4, 64, 2, 1); }, orlStatusOffset},
        {"mv: NULL rhs", [&] { return orlmCholeskyBackSubst_mv_32f(f, 16, 4, nullptr, 4, fo, 4, 2); }, orlStatusNullPointer},
        {"mv: size before stride", [&] { return orlmCholeskyBackSubst_mv_64f(g, 32, 8, g, 4, go, 8, 0); }, orlStatusSize},
        {"mv _P: size before offset", [&] { return orlmCholeskyBackSubst_mv_64f_P(tg, 4, tg, 0, tgo, 0, 0); }, orlStatusSize},
        {"mva: count before size", [&] { return orlmCholeskyBackSubst_mva_32f(f, 16, 4, f, 8, 4, fo, 8, 4, 0, 0); }, orlStatusCount},
        {"mva _P: stride before offset", [&] { return orlmCholeskyBackSubst_mva_32f_P(tf, 2, tf, 0, 3, to, 0, 8, 2, 1); }, orlStatusStride},
        // mva in _L: N T O Z C.
        {"mva _L: stride before count", [&] { return orlmCholeskyBackSubst_mva_32f_L(f, 16, 6, tf, 0, 4, to, 0, 4, 2, 0); }, orlStatusStride},
        {"mva _L: offset before size", [&] { return orlmCholeskyBackSubst_mva_64f_L(g, 32, 8, tg, 4, 8, tgo, 0, 8, 0, 1); }, orlStatusOffset},
        {"mva _L: size before count", [&] { return orlmCholeskyBackSubst_mva_32f_L(f, 16, 4, tf, 0, 4, to, 0, 4, 0, 0); }, orlStatusSize},
        {"mva _L: NULL list first", [&] { return orlmCholeskyBackSubst_mva_64f_L(g, 32, 0, nullptr, 4, 8, tgo, 0, 8, 0, 0); }, orlStatusNullPointer},
        {"mava _L: count before stride", [&] { return orlmCholeskyBackSubst_mava_32f_L(tf, 0, 16, 6, tf, 0, 4, to, 0, 4, 2, 0); }, orlStatusCount},
        {"mava: stride0 of 0", [&] { return orlmCholeskyBackSubst_mava_64f(g, 64, 32, 8, g, 0, 8, go, 32, 8, 2, 1); }, orlStatusStride},
        {"mava _P: offset of -8", [&] { return orlmCholeskyBackSubst_mava_64f_P(tg, 0, 64, tg, -8, 64, tgo, 0, 64, 2, 1); }, orlStatusOffset},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.call(), c.expect) << c.what;
        EXPECT_TRUE(untouched()) << c.what;
    }
    EXPECT_EQ(orlmCholeskyBackSubst_mva_32f_L(f, 16, 4, tf, 0, 4, to, 0, 4, 2, 1), orlStatusOk);
}

}  // namespace
