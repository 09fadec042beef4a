// QR decomposition and back-substitution: bits of every member, the
// squared-norm test and its failure outputs, arrays that stop, the route with
// its per-thread scratch, the argument checks.
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

// The decomposition's steps as documented; on a failure dst holds the
// columns before it transformed.
template <class E>
Vec1 refDecomp(int w, int h, const Vec1& src)
{
    const E eps = sizeof(E) == 4 ? E(0x1p-23) : E(0x1p-52);
    std::vector<E> a(src.begin(), src.end()), v(h);
    const auto A = [&](int i, int j) -> E& { return a[i * w + j]; };
    for (int k = 0; k < (w < h ? w : w - 1); ++k) {
        E norm2 = 0, sum = 1;
        for (int i = k; i < h; ++i) norm2 = norm2 + A(i, k) * A(i, k);
        if (eps > std::fabs(norm2)) break;
        const E s = A(k, k) > 0 ? std::sqrt(norm2) : -std::sqrt(norm2), r = E(1) / (A(k, k) + s);
        v[k] = 1;
        for (int i = k + 1; i < h; ++i) v[i] = A(i, k) * r, sum = sum + v[i] * v[i];
        for (int j = k; j < w; ++j) {
            E t = A(k, j);
            for (int i = k + 1; i < h; ++i) t = t + A(i, j) * v[i];
            t = t * (E(-2) / sum);
            for (int i = k; i < h; ++i) A(i, j) = A(i, j) + v[i] * t;
        }
        for (int i = k + 1; i < h; ++i) A(i, k) = v[i];
    }
    return Vec1(a.begin(), a.end());
}

// Q^T b by the stored reflectors (beta formed again), then R x = b backward.
template <class E>
Vec1 refSolve(int w, int h, const Vec1& f, const Vec1& rhs)
{
    const auto S = [&](int i, int j) { return E(f[i * w + j]); };
    std::vector<E> b(rhs.begin(), rhs.end()), x(w);
    for (int k = 0; k < (w < h ? w : w - 1); ++k) {
        E t = b[k], s = 1;
        for (int i = k + 1; i < h; ++i) t = t + b[i] * S(i, k), s = s + S(i, k) * S(i, k);
        t = t * (E(-2) / s);
        b[k] = b[k] + t;
        for (int i = k + 1; i < h; ++i) b[i] = b[i] + S(i, k) * t;
    }
    for (int i = w - 1; i >= 0; --i) {
        E s = 0;
        for (int j = i + 1; j < w; ++j) s = s + S(i, j) * x[j];
        x[i] = i == w - 1 ? b[i] / S(i, i) : (b[i] - s) / S(i, i);
    }
    return Vec1(x.begin(), x.end());
}

ORL_SOLVER_LISTS(QRDecomp, QRBackSubst, true)

Vec1 expectQR(const Member& m, int w, int h, const Vec1& a) { return m.f32 ? refDecomp<float>(w, h, a) : refDecomp<double>(w, h, a); }

Vec1 random(const Member& m, int n, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-2.0, 2.0);
    Vec1 a(n);
    for (double& v : a) v = m.round(u(rng));
    return a;
}

// `count` items: matrices, or factors (diagonal away from 0) and right-hand sides.
Case randomCase(const Member& m, int w, int h, int count, std::mt19937& rng)
{
    Case c{w, h, {}, {}};
    for (int f = 0; f < (m.shape == Shape::ma || m.shape == Shape::mava ? count : 1); ++f) {
        c.mats.push_back(random(m, w * h, rng));
        for (int i = 0; i < w && m.subst(); ++i) c.mats.back()[i * w + i] += c.mats.back()[i * w + i] < 0 ? -1 : 1;
    }
    for (int k = 0; k < count && m.subst(); ++k) c.rhs.push_back(random(m, h, rng));
    return c;
}

std::vector<Vec1> expected(const Member& m, const Case& c)
{
    std::vector<Vec1> out;
    for (size_t k = 0; k < (!m.subst() ? c.mats.size() : c.rhs.size()); ++k) {
        const Vec1& a = c.mats[m.shape == Shape::mv || m.shape == Shape::mva ? 0 : k];
        out.push_back(!m.subst() ? expectQR(m, c.w, c.h, a) : m.f32 ? refSolve<float>(c.w, c.h, a, c.rhs[k]) : refSolve<double>(c.w, c.h, a, c.rhs[k]));
    }
    return out;
}

// Square (with and without straight-line back-substitution) and tall; a zero
// on the diagonal of R gives an infinity and no failure.
TEST(QR, EveryMemberShapeAndStrideMatches)
{
    std::mt19937 rng(1);
    ASSERT_EQ(members().size(), 26u);
    expectEveryMember(members(), {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7}, {1, 4}, {3, 4}, {4, 6}, {2, 9}, {6, 8}},
                      [&](const Member& m, int w, int h, int count) { return randomCase(m, w, h, count, rng); },
                      [](const Member& m, const Case& c, Strides, bool) { return expected(m, c); });
    const Vec1 r = {1, 2, 0, 0, 4, 0, 0, 0, 0};
    for (const Member& m : substs()) EXPECT_TRUE(std::isinf(m.run({3, 3, {r, r}, {{1, 1, 1}, {1, 1, 1}}}, Strides::Unit, false).out[0][2])) << m.name;
}

// The test on the squared norm: strict, absolute, NaN passing; no test on
// the last column of a square matrix. t^2 is eps/2 (32f) or eps/4 (64f).
TEST(QR, SquaredNormTestAndWhatStandsAfterIt)
{
    const double n32 = 0x1p-12, n64 = 0x1p-27, s32 = 1e-4, s64 = 1e-9;
    const struct { int w, h; Vec1 a32, a64; orlStatus st; } cases[] = {
        {1, 4, {n32, 0, 0, 0}, {n64, 0, 0, 0}, orlStatusDivByZero},  // squared norm below eps
        {1, 4, {n32, 0, n32, 0}, {n64, n64, n64, n64}, orlStatusOk},  // eps passes
        {2, 3, {s32, 1, s32, 2, s32, 3}, {s64, 1, s64, 2, s64, 3}, orlStatusDivByZero},  // a short column
        {2, 3, {1, 0, 2, 0, 2, 0}, {}, orlStatusDivByZero},  // second column zero: fails at k = 1
        {3, 3, {1, 2, 0, 3, 4, 0, 5, 7, 0}, {}, orlStatusOk},  // zero last column of a square matrix
        {1, 1, {0}, {}, orlStatusOk},
        {2, 2, {NAN, 1, 1, 1}, {}, orlStatusOk},
        {2, 3, {0, 1, 3, 1, 4, 2}, {}, orlStatusOk},  // zero pivot
        {2, 3, {1, INFINITY, 3, 1, 4, 2}, {}, orlStatusOk},
    };
    for (const Member& m : decomps()) {
        for (const auto& c : cases) {
            Vec1 a = m.f32 || c.a64.empty() ? c.a32 : c.a64;
            for (double& x : a) x = m.round(x);
            const Outcome o = m.run({c.w, c.h, {a, a}, {}}, Strides::Wide, false);
            EXPECT_EQ(o.st, c.st) << m.name << " " << c.w << "x" << c.h << " " << a[0];
            expectBits(o.out[0], expectQR(m, c.w, c.h, a), m.name);
        }
        // A zero pivot takes s negative: R(0, 0) = +5 for the column (0, 3, 4).
        EXPECT_NEAR(m.run({1, 3, {{0, 3, 4}, {0, 3, 4}}, {}}, Strides::Unit, false).out[0][0], 5.0, 1e-5) << m.name;
    }
}

// Arrays stop at the first failing matrix, each slice of the parallel route
// for itself; there each thread works in scratch of its own, not the buffer.
TEST(QR, ArraysStopAtTheFirstFailure)
{
    std::mt19937 rng(2);
    const Vec1 bad = {1, 0, 2, 0, 2, 0};  // 2x3 failing at k = 1
    for (const Member& m : decomps()) {
        if (!m.array()) continue;
        Case c = randomCase(m, 2, 3, 250, rng);  // 2*3*2*250 is above every limit
        c.mats[3] = c.mats[4] = bad;
        for (int T : {1, 2}) {
            t::Threads th(T);
            const Outcome o = m.run(c, Strides::Unit, false);
            EXPECT_EQ(o.st, orlStatusDivByZero) << m.name;
            EXPECT_EQ(o.bufferUsed, T == 1) << m.name;
            expectBits(o.out[2], expectQR(m, 2, 3, c.mats[2]), m.name + " item 2");
            expectBits(o.out[3], expectQR(m, 2, 3, bad), m.name + " failing item");
            EXPECT_EQ(o.out[4], Vec1(6, kUntouched)) << m.name;
            EXPECT_EQ(o.out[249] != Vec1(6, kUntouched), T == 2) << m.name << " T=" << T;
        }
    }
}

// 2x3 items: decomposition 2*w*h*count, mva w*h + (w+h)*count, mava
// (w*h + w + h)*count, against 2800 (standard) or 1800; at the limit and one above.
TEST(QR, RouteLimitsAndThreadCounts)
{
    std::mt19937 rng(5);
    for (const Member& m : members()) {
        if (!m.array()) continue;
        const int limit = m.lay == L::Std ? 2800 : 1800, fixed = m.shape == Shape::mva ? 6 : 0;
        const int perItem = m.shape == Shape::ma ? 12 : m.shape == Shape::mva ? 5 : 11;
        for (int count : {(limit - fixed) / perItem, (limit - fixed) / perItem + 1})
            solvers::expectRouteAndThreads(m, randomCase(m, 2, 3, count, rng), Strides::Wide, fixed + perItem * count, limit);
    }
}

// Order NZTR, NZOR, NCZTR or NCZTOR: a pair of classes failing together.
TEST(QR, ChecksInOrderAndNothingWritten)
{
    t::CheckBuffers p;
    auto& [f, fo, g, go, tf, to, tg, tgo, perm] = p;
    float* fb = fo + 48;  // buffers must stay untouched too
    double* gb = go + 48;
    t::expectChecks(p, {
        {"NULL buffer at size 1", [&] { return orlmQRDecomp_m_32f(f, 4, 4, nullptr, fo, 4, 4, 1, 1); }, orlStatusNullPointer},
        {"NULL buffer before count", [&] { return orlmQRBackSubst_mava_64f_L(tg, 0, 16, 8, nullptr, tg, 0, 8, tgo, 0, 8, 2, 2, 0); }, orlStatusNullPointer},
        {"NULL rhs", [&] { return orlmQRBackSubst_mv_64f_P(tg, 0, gb, nullptr, 0, tgo, 0, 2, 2); }, orlStatusNullPointer},
        {"count before size", [&] { return orlmQRDecomp_ma_32f(f, 64, 16, 4, fb, fo, 64, 16, 4, 0, 2, 0); }, orlStatusCount},
        {"size before mismatch", [&] { return orlmQRDecomp_m_64f(g, 32, 8, gb, go, 32, 8, 3, 0); }, orlStatusSize},
        {"stride before mismatch", [&] { return orlmQRDecomp_m_32f(f, 16, 6, fb, fo, 16, 4, 3, 2); }, orlStatusStride},
        {"offset before mismatch, _P", [&] { return orlmQRDecomp_m_64f_P(tg, 4, gb, tgo, 0, 3, 2); }, orlStatusOffset},
        {"stride before offset, _L", [&] { return orlmQRDecomp_ma_32f_L(tf, 2, 16, 0, fb, to, 0, 16, 4, 2, 2, 1); }, orlStatusStride},
        {"offset before mismatch, _L", [&] { return orlmQRBackSubst_mva_32f_L(f, 16, 4, fb, tf, 2, 4, to, 0, 4, 3, 2, 1); }, orlStatusOffset},
        {"stride0 of 0 in mva", [&] { return orlmQRBackSubst_mva_64f(g, 16, 8, gb, g, 0, 8, go, 16, 8, 2, 2, 1); }, orlStatusStride},
        {"width above height", [&] { return orlmQRBackSubst_mava_32f_P(tf, 0, 64, fb, tf, 0, 64, to, 0, 64, 3, 2, 1); }, orlStatusSizeMismatch},
        {"width above height, single", [&] { return orlmQRDecomp_m_64f(g, 32, 8, gb, go, 32, 8, 4, 3); }, orlStatusSizeMismatch},
    });
}

}  // namespace
