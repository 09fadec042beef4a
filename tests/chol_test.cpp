// Cholesky decomposition and back-substitution: bits of every member, the
// thresholds and failure outputs, arrays that stop, route, checks.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "orlm.h"
#include "solvers.h"

namespace {

using namespace solvers;
using t::L;
using t::Strides;

enum class Rsq { Ext, Estimate, SqrtDiv };

// The decomposition as a kernel runs it: threshold t0, its reciprocal square
// root, and whether it stores late (the `_P` form of size 3: rows 0..n-2 once
// row n-2 is complete, row n-1 at the end; all others element by element).
template <class E>
Vec1 refFactor(int n, const Vec1& src, Vec1 dst, double t0, Rsq rsq, bool late)
{
    std::vector<E> l(n * n);
    const auto rows = [&](int from, int to) {
        for (int i = from; i < to; ++i) std::copy(&l[i * n], &l[i * n] + i + 1, &dst[i * n]);
    };
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j <= i; ++j) {
            E t = E(src[i * n + j]);
            for (int k = 0; k < j; ++k) t = t - l[i * n + k] * l[j * n + k];
            if (j < i) l[i * n + j] = t * l[j * n + j];
            else if (!(t > E(t0))) return dst;
            else l[i * n + i] = rsq == Rsq::Ext ? ref::rsqrtExt(t) : rsq == Rsq::Estimate ? E(ref::rsqrtEstimateNewton(float(t))) : E(1) / std::sqrt(t);
            if (!late) dst[i * n + j] = l[i * n + j];
        }
        if (late && i == n - 2) rows(0, n - 1);
    }
    if (late) rows(n - 1, n);
    return dst;
}

ORL_SOLVER_LISTS(CholeskyDecomp, CholeskyBackSubst, false)

// The kernel that a decomposition member runs, by its documented table.
Vec1 expectFactor(const Member& m, int n, const Vec1& a, Strides st, const Vec1& before)
{
    const bool p = m.lay == L::P, s2 = m.lay == L::Std && st == Strides::Wide;
    double t0 = p && n == 3 ? 0x1p-23 : 0.0;
    if (!m.f32 && m.array() && s2 && (n == 6 || n < 3 || n > 6)) t0 = 0x1p-52;
    const Rsq r = !m.array() && !p && n == 3 ? Rsq::Ext : m.f32 ? Rsq::Estimate : Rsq::SqrtDiv;
    return m.f32 ? refFactor<float>(n, a, before, t0, r, p && n == 3) : refFactor<double>(n, a, before, t0, r, p && n == 3);
}

// Forward then backward, each term subtracted in turn, times the stored reciprocal.
template <class E>
Vec1 refSolve(int n, const Vec1& f, const Vec1& b)
{
    std::vector<E> y(b.begin(), b.end());
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < i; ++j) y[i] = y[i] - E(f[i * n + j]) * y[j];
        y[i] = y[i] * E(f[i * n + i]);
    }
    for (int i = n - 1; i >= 0; --i) {
        for (int j = n - 1; j > i; --j) y[i] = y[i] - E(f[j * n + i]) * y[j];
        y[i] = y[i] * E(f[i * n + i]);
    }
    return Vec1(y.begin(), y.end());
}

// A random symmetric positive definite matrix B B^T + n I, rounded to the
// type; the strict upper triangle holds NaN, which is never to be read.
Vec1 spd(const Member& m, int n, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    Vec1 b(n * n), a(n * n);
    for (double& v : b) v = u(rng);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) {
            double s = i == j ? n : 0.0;
            for (int k = 0; k < n; ++k) s += b[i * n + k] * b[j * n + k];
            a[i * n + j] = m.round(s);
            a[j * n + i] = i == j ? a[i * n + j] : NAN;
        }
    return a;
}

// `count` items: positive definite matrices to decompose, or right-hand sides
// with random factors (reciprocals near 1 on the diagonal, NaN above it).
Case randomCase(const Member& m, int n, int count, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    Case c{n, n, {}, {}};
    for (int f = 0; f < (m.shape == Shape::ma || m.shape == Shape::mava ? count : 1); ++f) {
        Vec1 a(n * n);
        for (int x = 0; x < n * n; ++x) a[x] = x % n > x / n ? NAN : m.round(x % n == x / n ? 1.0 + u(rng) / 4 : u(rng));
        c.mats.push_back(!m.subst() ? spd(m, n, rng) : a);
    }
    for (int k = 0; m.subst() && k < count; ++k) {
        c.rhs.emplace_back(n);
        for (double& v : c.rhs.back()) v = m.round(u(rng));
    }
    return c;
}

// The factors (dst as it stood where nothing is written) or the solutions.
std::vector<Vec1> expected(const Member& m, const Case& c, Strides st, bool inPlace)
{
    const int n = c.w;
    std::vector<Vec1> out;
    for (size_t k = 0; k < (!m.subst() ? c.mats.size() : c.rhs.size()); ++k) {
        const Vec1& a = c.mats[m.shape == Shape::mv || m.shape == Shape::mva ? 0 : k];
        out.push_back(!m.subst() ? expectFactor(m, n, a, st, inPlace ? a : Vec1(n * n, kUntouched))
                      : m.f32     ? refSolve<float>(n, a, c.rhs[k])
                                  : refSolve<double>(n, a, c.rhs[k]));
    }
    return out;
}

TEST(Cholesky, EveryMemberSizeAndStrideMatchesItsKernel)
{
    std::mt19937 rng(1);
    ASSERT_EQ(members().size(), 26u);
    expectEveryMember(members(), {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7}, {9, 9}},
                      [&](const Member& m, int n, int, int count) { return randomCase(m, n, count, rng); }, expected);
}

// Thresholds by kernel and size on the identity with one diagonal element
// replaced; after a failure at row i the rows before it stand complete and
// row i's off-diagonal elements written (size-3 `_P`: nothing, or rows 0, 1).
TEST(Cholesky, ThresholdsAndWhatStandsAfterAFailure)
{
    enum Fails { None, P, Ma64S2, All, F32Estimate };
    // F32Estimate: 1/sqrt(inf) is 0, but the Newton step after the estimate
    // makes a NaN of it (inf * 0), on which the next row fails.
    const struct { int n, row; double pivot; Fails fails; } cases[] = {
        {3, 2, 1e-8, P}, {3, 1, 1e-8, P}, {3, 0, 0x1p-23, P}, {4, 3, 1e-30, None}, {5, 4, 1e-17, None}, {6, 5, 1e-17, Ma64S2},
        {7, 3, 0x1p-52, Ma64S2}, {1, 0, 1e-20, Ma64S2}, {4, 1, 0.0, All}, {2, 1, -1.0, All}, {6, 0, NAN, All}, {8, 5, -2.0, All},
        {3, 1, INFINITY, F32Estimate}};
    for (const Member& m : decomps())
        for (const auto& c : cases)
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                const bool fails[] = {false, m.lay == L::P, !m.f32 && m.array() && m.lay == L::Std && st == Strides::Wide, true,
                                      m.f32 && (m.array() || m.lay == L::P)};
                Vec1 a(c.n * c.n, 0.0);
                for (int i = 0; i < c.n; ++i) a[i * c.n + i] = i == c.row ? m.round(c.pivot) : 1.0;
                const Outcome r = m.run({c.n, c.n, {a}, {}}, st, false);
                const std::string what = m.name + (st == Strides::Wide ? " wide" : "") + " n=" + std::to_string(c.n) + " pivot " + std::to_string(c.pivot) + " at row " + std::to_string(c.row);
                EXPECT_EQ(r.st, fails[c.fails] ? orlStatusNotPosDefinite : orlStatusOk) << what;
                expectBits(r.out[0], expectFactor(m, c.n, a, st, Vec1(a.size(), kUntouched)), what);
            }
}

// Arrays stop at the first failing item, also each slice of the parallel route.
TEST(Cholesky, ArraysStopAtTheFirstFailure)
{
    std::mt19937 rng(2);
    for (const Member& m : decomps()) {
        if (!m.array()) continue;
        Case c = randomCase(m, 4, 1000, rng);  // 4*4*1000 is above every limit
        c.mats[5][5] = c.mats[6][0] = -1.0;
        for (int T : {1, 2}) {
            t::Threads th(T);
            const Outcome r = m.run(c, Strides::Unit, false);
            EXPECT_EQ(r.st, orlStatusNotPosDefinite) << m.name;
            expectBits(r.out[4], expectFactor(m, 4, c.mats[4], Strides::Unit, Vec1(16, kUntouched)), m.name);
            EXPECT_EQ(r.out[7], Vec1(16, kUntouched)) << m.name;
            EXPECT_EQ(r.out[999] != Vec1(16, kUntouched), T == 2) << m.name << " T=" << T;
        }
    }
}

// n = 2: decomposition n*n*count against 7500/2000 (32f/64f standard),
// 2000/720 (_L unit stride), 2000; mva (n + 2 count) n against 1200 (32f
// standard) or 720; mava (n n + 2 n) count against 2050 (32f standard unit
// stride, 64f _P) or 1700. Just at the limit and one above.
TEST(Cholesky, RouteLimitsAndThreadCounts)
{
    std::mt19937 rng(7);
    for (const Member& m : members())
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            if (!m.array()) continue;
            const bool unit = st == Strides::Unit || m.lay == L::P, std32 = m.f32 && m.lay == L::Std;
            const bool ma = m.shape == Shape::ma, mva = m.shape == Shape::mva;
            const int limit = ma ? (std32 ? 7500 : m.lay == L::L && !m.f32 && unit ? 720 : 2000)
                            : mva ? (std32 ? 1200 : 720) : (std32 && unit) || (!m.f32 && m.lay == L::P) ? 2050 : 1700;
            const int perItem = ma || mva ? 4 : 8, fixed = mva ? 4 : 0;
            for (int count : {(limit - fixed) / perItem, (limit - fixed) / perItem + 1})
                solvers::expectRouteAndThreads(m, randomCase(m, 2, count, rng), st, fixed + perItem * count, limit);
        }
}

// A pair of classes of each distinct order, failing together.
TEST(Cholesky, ChecksInOrderAndNothingWritten)
{
    t::CheckBuffers p;
    auto& [f, fo, g, go, tf, to, tg, tgo, perm] = p;
    t::expectChecks(p, {
        {"m: NULL dst before size", [&] { return orlmCholeskyDecomp_m_32f(f, 16, 4, nullptr, 16, 4, 0); }, orlStatusNullPointer},
        {"m: size before stride", [&] { return orlmCholeskyBackSubst_mv_64f(g, 32, 8, g, 4, go, 8, 0); }, orlStatusSize},
        {"m: stride of 12 in 64f", [&] { return orlmCholeskyDecomp_m_64f(g, 12, 8, go, 32, 8, 2); }, orlStatusStride},
        {"m _P: size before offset", [&] { return orlmCholeskyBackSubst_mv_64f_P(tg, 4, tg, 0, tgo, 0, 0); }, orlStatusSize},
        {"m _P: offset of 2", [&] { return orlmCholeskyDecomp_m_32f_P(tf, 2, to, 0, 2); }, orlStatusOffset},
        {"ma: NULL table before count", [&] { return orlmCholeskyDecomp_ma_64f_P(nullptr, 0, 8, tgo, 0, 8, 2, 0); }, orlStatusNullPointer},
        {"ma: count before size", [&] { return orlmCholeskyDecomp_ma_32f(f, 64, 16, 4, fo, 64, 16, 4, 0, 0); }, orlStatusCount},
        {"ma: size before stride", [&] { return orlmCholeskyDecomp_ma_64f_L(tg, 0, 6, 8, tgo, 0, 32, 8, 0, 1); }, orlStatusSize},
        {"ma: stride0 of 0", [&] { return orlmCholeskyBackSubst_mava_64f(g, 64, 32, 8, g, 0, 8, go, 32, 8, 2, 1); }, orlStatusStride},
        {"ma _L: stride before offset", [&] { return orlmCholeskyDecomp_ma_32f_L(tf, 2, 16, 0, to, 0, 16, 4, 2, 1); }, orlStatusStride},
        {"ma _P: stride before offset", [&] { return orlmCholeskyBackSubst_mva_32f_P(tf, 2, tf, 0, 3, to, 0, 8, 2, 1); }, orlStatusStride},
        {"ma _P: offset of -8", [&] { return orlmCholeskyBackSubst_mava_64f_P(tg, 0, 64, tg, -8, 64, tgo, 0, 64, 2, 1); }, orlStatusOffset},
        // mva in _L: N T O Z C.
        {"mva _L: NULL list first", [&] { return orlmCholeskyBackSubst_mva_64f_L(g, 32, 0, nullptr, 4, 8, tgo, 0, 8, 0, 0); }, orlStatusNullPointer},
        {"mva _L: stride before offset", [&] { return orlmCholeskyBackSubst_mva_32f_L(f, 16, 6, tf, 2, 4, to, 0, 4, 0, 0); }, orlStatusStride},
        {"mva _L: offset before size", [&] { return orlmCholeskyBackSubst_mva_64f_L(g, 32, 8, tg, 4, 8, tgo, 0, 8, 0, 1); }, orlStatusOffset},
        {"mva _L: size before count", [&] { return orlmCholeskyBackSubst_mva_32f_L(f, 16, 4, tf, 0, 4, to, 0, 4, 0, 0); }, orlStatusSize},
    });
    EXPECT_EQ(orlmCholeskyBackSubst_mva_32f_L(f, 16, 4, tf, 0, 4, to, 0, 4, 2, 1), orlStatusOk);
}

}  // namespace
