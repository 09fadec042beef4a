// Cholesky decomposition and back-substitution: the factor bit for bit in
// every member, size and stride case (threshold, reciprocal square root and
// store of each kernel), what stands after a failure, the triangles read and
// written, arrays that stop, the route and the thread count, the solve of
// random systems, and the argument checks of both families.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "orlm.h"
#include "solvers.h"

namespace {

using namespace solvers::names;

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

// Row by row, dst written element by element as formed (or, late, rows
// 0..n-2 once row n-2 is complete and row n-1 at the end).
template <class E>
Outcome refFactor(int n, const Vec1& src, Vec1 dst, KernelRule r)
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
                if (!(t > E(r.t0))) return {orlStatusNotPosDefinite, {dst}, false};
                l[i * n + i] = recipSqrt(t, r.rsq);
            }
            if (!r.late) dst[i * n + j] = l[i * n + j];
        }
        if (r.late && i == n - 2) rows(0, n - 1);
    }
    if (r.late) rows(n - 1, n);
    return {orlStatusOk, {dst}, false};
}


// ---- members -----------------------------------------------------------------

ORL_SOLVER_LISTS(CholeskyDecomp, CholeskyBackSubst, false)

// The kernel that a decomposition member runs, by its documented table.
KernelRule ruleOf(const Member& m, int n, Strides st)
{
    const bool p = m.lay == L::P, s2 = m.lay == L::Std && st == Strides::Wide;
    double t0 = p && n == 3 ? 0x1p-23 : 0.0;
    if (!m.f32 && m.array() && s2 && (n == 6 || n < 3 || n > 6)) t0 = 0x1p-52;
    const Rsq rsq = !m.array() && !p && n == 3 ? Rsq::Ext : m.f32 ? Rsq::Estimate : Rsq::SqrtDiv;
    return {t0, rsq, p && n == 3};
}

Outcome expectFactor(const Member& m, int n, const Vec1& a, Strides st, const Vec1& before)
{
    return m.f32 ? refFactor<float>(n, a, before, ruleOf(m, n, st)) : refFactor<double>(n, a, before, ruleOf(m, n, st));
}

// A random symmetric positive definite matrix B B^T + n I, rounded to the
// type; the strict upper triangle holds NaN, which is never to be read.
Vec1 spd(const Member& m, int n, std::mt19937& rng, bool nanAbove = true)
{
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    Vec1 b(n * n), a(n * n);
    for (double& v : b) v = u(rng);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) {
            double s = i == j ? n : 0.0;
            for (int k = 0; k < n; ++k) s += b[i * n + k] * b[j * n + k];
            a[i * n + j] = m.round(s);
            a[j * n + i] = i == j || !nanAbove ? a[i * n + j] : NAN;
        }
    return a;
}

// Fails at row `row`: the diagonal there is made negative.
Vec1 failingAt(const Member& m, int n, int row, std::mt19937& rng)
{
    Vec1 a = spd(m, n, rng, false);
    a[row * n + row] = -1.0;
    return a;
}

Case decompCase(int n, std::vector<Vec1> items) { return {n, n, std::move(items), {}}; }

// ---- decomposition -------------------------------------------------------------

TEST(CholeskyDecompValues, EveryMemberSizeAndStrideMatchesItsKernel)
{
    std::mt19937 rng(1);
    const auto list = decomps();
    ASSERT_EQ(list.size(), 10u);
    for (const Member& m : list)
        for (int n : {1, 2, 3, 4, 5, 6, 7, 9})
            for (Strides st : {Strides::Unit, Strides::Wide})
                for (bool inPlace : {false, true}) {
                    std::vector<Vec1> items;
                    for (int k = 0; k < (m.array() ? 3 : 1); ++k) items.push_back(spd(m, n, rng));
                    SCOPED_TRACE(m.name + " n=" + std::to_string(n) + (st == Strides::Wide ? " wide" : "") + (inPlace ? " in place" : ""));
                    const Outcome r = m.run(decompCase(n, items), st, inPlace);
                    ASSERT_EQ(r.st, orlStatusOk);
                    for (size_t k = 0; k < items.size(); ++k)
                        expectBits(r.out[k], expectFactor(m, n, items[k], st, inPlace ? items[k] : Vec1(n * n, kUntouched)).out[0], "");
                    if (HasFailure()) return;
                }
}

// Worked by hand: L = {2; 1 2; 1 1 2} stores 1/2 on its diagonal, and
// x = (1, 2, 3) solves b = (14, 21, 26).
TEST(CholeskyDecompValues, HandWorkedCaseIn64f)
{
    const Vec1 a = {4, NAN, NAN, 2, 5, NAN, 2, 3, 6}, f = {0.5, kUntouched, kUntouched, 1, 0.5, kUntouched, 1, 1, 0.5};
    for (const Member& m : decomps())
        if (!m.f32) expectBits(m.run(decompCase(3, {a}), Strides::Wide, false).out[0], f, m.name);
    for (const Member& m : substs())
        if (!m.f32) expectBits(m.run({3, 3, {f, f}, {{14, 21, 26}, {14, 21, 26}}}, Strides::Unit, false).out[0], {1, 2, 3}, m.name);
}

// Thresholds and the sense of the test, by kernel and size: the identity
// with one diagonal element replaced.
TEST(CholeskyDecompRules, ThresholdsBySizeAndKernel)
{
    const auto P = [](const Member& m, Strides) { return m.lay == L::P; };
    const auto ma64S2 = [](const Member& m, Strides st) { return !m.f32 && m.array() && m.lay == L::Std && st == Strides::Wide; };
    const auto none = [](const Member&, Strides) { return false; };
    const auto all = [](const Member&, Strides) { return true; };
    struct {
        const char* what;
        int n, row;
        double pivot;
        std::function<bool(const Member&, Strides)> fails;
    } const cases[] = {
        {"3x3 pivot 1e-8 fails in _P", 3, 2, 1e-8, P},
        {"3x3 pivot 2^-23 fails in _P (strict)", 3, 0, 0x1p-23, P},
        {"4x4 pivot 1e-30 passes", 4, 3, 1e-30, none},
        {"6x6 pivot 1e-17 fails in ma_64f_S2", 6, 5, 1e-17, ma64S2},
        {"5x5 pivot 1e-17 passes", 5, 4, 1e-17, none},
        {"7x7 pivot 2^-52 fails in ma_64f_S2", 7, 3, 0x1p-52, ma64S2},
        {"1x1 pivot 1e-20 fails in ma_64f_S2", 1, 0, 1e-20, ma64S2},
        {"zero fails", 4, 1, 0.0, all},
        {"negative fails", 2, 1, -1.0, all},
        {"NaN fails", 6, 0, NAN, all},
        // 1/sqrt(inf) is 0, but the Newton step after the estimate makes a
        // NaN of it (inf * 0), on which the next row fails.
        {"infinity: NaN after the estimate", 3, 1, INFINITY, [](const Member& m, Strides) { return m.f32 && (m.array() || m.lay == L::P); }},
    };
    for (const Member& m : decomps())
        for (const auto& c : cases)
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                Vec1 a(c.n * c.n, 0.0);
                for (int i = 0; i < c.n; ++i) a[i * c.n + i] = i == c.row ? m.round(c.pivot) : 1.0;
                const Outcome r = m.run(decompCase(c.n, {a}), st, false);
                SCOPED_TRACE(m.name + ": " + c.what + (st == Strides::Wide ? " wide" : ""));
                EXPECT_EQ(r.st, c.fails(m, st) ? orlStatusNotPosDefinite : orlStatusOk);
                expectBits(r.out[0], expectFactor(m, c.n, a, st, Vec1(a.size(), kUntouched)).out[0], "");
            }
}

// After a failure at row i: rows before it complete, row i's off-diagonal
// elements written and its diagonal not; `_P` at size 3 nothing, or rows 0
// and 1 after a failure at row 2. Arrays stop at the first failing item,
// also each slice of the parallel route for itself.
TEST(CholeskyDecompFailure, OutputsPerKernelAndArraysThatStop)
{
    std::mt19937 rng(2);
    for (const Member& m : decomps()) {
        for (int n : {1, 2, 3, 4, 6, 8})
            for (int row = 0; row < n; ++row) {
                const Vec1 a = failingAt(m, n, row, rng);
                const Outcome r = m.run(decompCase(n, {a}), Strides::Wide, false);
                SCOPED_TRACE(m.name + " n=" + std::to_string(n) + " row " + std::to_string(row));
                EXPECT_EQ(r.st, orlStatusNotPosDefinite);
                expectBits(r.out[0], expectFactor(m, n, a, Strides::Wide, Vec1(n * n, kUntouched)).out[0], "");
                const bool late = m.lay == L::P && n == 3;
                for (int j = 0; j <= row; ++j) EXPECT_EQ(r.out[0][row * n + j] != kUntouched, j < row && !late) << j;
                if (late) EXPECT_EQ(r.out[0][0] != kUntouched, row == 2);
            }
        if (!m.array()) continue;
        const int count = 1000;  // 4*4*1000 is above every limit
        std::vector<Vec1> items;
        for (int k = 0; k < count; ++k) items.push_back(k == 5 || k == 6 ? failingAt(m, 4, 0, rng) : spd(m, 4, rng));
        for (int T : {1, 2}) {
            t::Threads th(T);
            const Outcome r = m.run(decompCase(4, items), Strides::Unit, false);
            EXPECT_EQ(r.st, orlStatusNotPosDefinite) << m.name;
            expectBits(r.out[4], expectFactor(m, 4, items[4], Strides::Unit, Vec1(16, kUntouched)).out[0], m.name);
            EXPECT_EQ(r.out[7], Vec1(16, kUntouched)) << m.name;
            const bool secondSliceDone = r.out[count - 1] != Vec1(16, kUntouched);
            EXPECT_EQ(secondSliceDone, T == 2) << m.name;
        }
    }
}

// ---- back-substitution -------------------------------------------------------------

template <class E>
Vec1 refSolve(int n, const Vec1& f, const Vec1& b)
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

// Random factors (reciprocals near 1 on the diagonal, NaN in the strict
// upper triangle, which is never read) and right-hand sides.
Case randomSystems(const Member& m, int n, int count, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    Case c{n, n, {}, {}};
    for (int f = 0; f < (m.shape == Shape::mava ? count : 1); ++f) {
        Vec1 a(n * n);
        for (int x = 0; x < n * n; ++x) a[x] = x % n > x / n ? NAN : m.round(x % n == x / n ? 1.0 + u(rng) / 4 : u(rng));
        c.mats.push_back(a);
    }
    for (int k = 0; k < count; ++k) {
        c.rhs.emplace_back(n);
        for (double& v : c.rhs.back()) v = m.round(u(rng));
    }
    return c;
}

TEST(CholeskyBackSubstValues, EveryMemberSizeAndStrideMatches)
{
    std::mt19937 rng(6);
    const auto list = substs();
    ASSERT_EQ(list.size(), 16u);
    for (const Member& m : list)
        for (int n : {1, 2, 3, 4, 5, 6, 7, 12})
            for (Strides st : {Strides::Unit, Strides::Wide})
                for (bool inPlace : {false, true}) {
                    const Case c = randomSystems(m, n, m.shape == Shape::mv ? 1 : 3, rng);
                    const Outcome r = m.run(c, st, inPlace);
                    SCOPED_TRACE(m.name + " n=" + std::to_string(n) + (st == Strides::Wide ? " wide" : "") + (inPlace ? " dst = rhs" : ""));
                    for (size_t k = 0; k < c.rhs.size(); ++k) {
                        const Vec1& f = c.mats[m.shape == Shape::mava ? k : 0];
                        expectBits(r.out[k], m.f32 ? refSolve<float>(n, f, c.rhs[k]) : refSolve<double>(n, f, c.rhs[k]), "");
                    }
                    if (HasFailure()) return;
                }
}

// ---- route -------------------------------------------------------------------------

// Limits, n = 2: decomposition n*n*count against 7500/2000 (32f/64f
// standard), 2000/720 (_L unit stride), 2000; mva (n + 2 count) n against
// 1200 (32f standard) or 720; mava (n n + 2 n) count against 2050 (32f
// standard unit stride, 64f _P) or 1700. Just at the limit and one above.
TEST(CholeskyRoute, LimitsAndThreadCounts)
{
    std::mt19937 rng(7);
    std::vector<Member> list = decomps();
    for (const Member& m : substs()) list.push_back(m);
    for (const Member& m : list) {
        if (!m.array()) continue;
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            const bool unit = st == Strides::Unit || m.lay == L::P, std32 = m.f32 && m.lay == L::Std;
            int limit, perItem, fixed = 0;
            if (m.shape == Shape::ma)
                limit = std32 ? 7500 : m.lay == L::L && !m.f32 && unit ? 720 : 2000, perItem = 4;
            else if (m.shape == Shape::mva)
                limit = std32 ? 1200 : 720, perItem = 4, fixed = 4;
            else
                limit = (std32 && unit) || (!m.f32 && m.lay == L::P) ? 2050 : 1700, perItem = 8;
            for (int count : {(limit - fixed) / perItem, (limit - fixed) / perItem + 1}) {
                Case c = m.shape == Shape::ma ? decompCase(2, std::vector<Vec1>(count, spd(m, 2, rng))) : randomSystems(m, 2, count, rng);
                solvers::expectRouteAndThreads(m, c, st, fixed + perItem * count, limit);
            }
        }
    }
}

// ---- decomposition and solve together ----------------------------------------

// Random positive definite systems of sizes 1 to 10 through the single
// members: the residual is small next to the terms (32f: about 22 good bits
// on the factor's diagonal).
TEST(CholeskySolve, RandomSystemsOfSizesOneToTen)
{
    std::mt19937 rng(8);
    const auto ds = decomps(), ss = substs();
    for (int i : {0, 1}) {  // orlm..._m_32f and _m_64f; mv_32f and mv_64f
        const Member &d = ds[i], &s = ss[i];
        const long double unit = d.f32 ? 0x1p-21L : 0x1p-51L;
        for (int n = 1; n <= 10; ++n)
            for (int trial = 0; trial < 4; ++trial) {
                const Vec1 a = spd(d, n, rng, false);
                const Outcome f = d.run(decompCase(n, {a}), Strides::Unit, false);
                Vec1 b(n);
                for (double& v : b) v = d.round(std::uniform_real_distribution<double>(-1, 1)(rng));
                const Outcome x = s.run({n, n, f.out, {b}}, Strides::Unit, false);
                ASSERT_EQ(f.st, orlStatusOk);
                for (int r = 0; r < n; ++r) {
                    long double res = b[r], mag = std::fabs(b[r]);
                    for (int j = 0; j < n; ++j) res -= (long double)a[r * n + j] * x.out[0][j], mag += std::fabs(a[r * n + j] * x.out[0][j]);
                    EXPECT_LE(std::fabs(res), 4 * n * unit * mag) << d.name << " n=" << n << " row " << r;
                }
            }
    }
}

// ---- argument checks -------------------------------------------------------------

TEST(CholeskyChecks, ClassesInOrderAndNothingWritten)
{
    solvers::Pools p;
    auto& [f, fo, fb, g, go, gb, tf, to, tg, tgo] = p;
    solvers::expectChecks(p, {
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
    });
    EXPECT_EQ(orlmCholeskyBackSubst_mva_32f_L(f, 16, 4, tf, 0, 4, to, 0, 4, 2, 1), orlStatusOk);
}

}  // namespace
