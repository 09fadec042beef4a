// LU back-substitution: values of both paths in every member and layout
// (also with dst equal to rhs), the different roundings of the two paths,
// mva against mava, the solution in natural order after pivoting, the route,
// the argument checks, and whole solves of random well-conditioned systems of sizes 1 to 64.
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
using t::Vec;

namespace {

using t::Threads;

using Vec1 = std::vector<double>;
using Perm = std::vector<std::int32_t>;

// ---- reference: the two paths transcribed -----------------------------------

// a: physical row-major factor; p: its perm.
template <class E>
Vec1 refSolve(int n, const Vec1& a, const Perm& p, const Vec1& rhs)
{
    auto A = [&](int r, int c) { return E(a[r * n + c]); };
    std::vector<E> x(n);
    if (n >= 3 && n <= 6) {
        // Reciprocals first; term by term; backward from the highest column.
        std::vector<E> inv(n);
        for (int i = 0; i < n; ++i) inv[i] = E(1) / A(p[i], i);
        for (int i = 0; i < n; ++i) x[i] = E(rhs[p[i]]);
        for (int i = 1; i < n; ++i)
            for (int j = 0; j < i; ++j) x[i] = x[i] - A(p[i], j) * x[j];
        for (int i = n - 1; i >= 0; --i) {
            for (int j = n - 1; j > i; --j) x[i] = x[i] - A(p[i], j) * x[j];
            x[i] = x[i] * inv[i];
        }
    } else {
        // Sum from zero, then one subtraction; a true division per unknown.
        x[0] = E(rhs[p[0]]);
        for (int i = 1; i < n; ++i) {
            E s = 0;
            for (int j = 0; j < i; ++j) s = s + A(p[i], j) * x[j];
            x[i] = E(rhs[p[i]]) - s;
        }
        x[n - 1] = x[n - 1] / A(p[n - 1], n - 1);
        for (int i = n - 2; i >= 0; --i) {
            E s = 0;
            for (int j = i + 1; j < n; ++j) s = s + A(p[i], j) * x[j];
            x[i] = (x[i] - s) / A(p[i], i);
        }
    }
    return Vec1(x.begin(), x.end());
}

// ---- every member through one interface ------------------------------------

enum class Shape { mv, mva, mava };

struct Problem {
    int n;
    std::vector<Vec1> factors;  // one (mv, mva) or one per item (mava)
    std::vector<Perm> perms;    // alike
    std::vector<Vec1> rhs;      // one per item
};

struct Member {
    std::string name;
    bool f32;
    Shape shape;
    L lay;
    std::function<std::vector<Vec1>(const Problem&, Strides, bool inPlace)> run;

    double round(double v) const { return f32 ? double(float(v)) : v; }
    Vec1 expect(const Problem& pr, int k) const
    {
        const int f = shape == Shape::mava ? k : 0;
        return f32 ? refSolve<float>(pr.n, pr.factors[f], pr.perms[f], pr.rhs[k])
                   : refSolve<double>(pr.n, pr.factors[f], pr.perms[f], pr.rhs[k]);
    }
};

template <class E, Shape shape, L lay, class Fn>
std::vector<Vec1> runMember(Fn fn, const Problem& pr, Strides st, bool inPlace)
{
    constexpr bool arr = shape != Shape::mv;
    constexpr K mk = shape == Shape::mava ? K::ma : K::m;
    const int n = pr.n, count = int(pr.rhs.size());
    Mat<E, mk, lay> a(n, n, count, st, 21);
    a.fill([&](int k, int i, int j) { return E(pr.factors[k][i * n + j]); });
    Perm perm;
    for (const Perm& p : pr.perms) perm.insert(perm.end(), p.begin(), p.end());
    Vec<E, arr, lay> b(n, count, st, 22);
    Vec<E, arr, lay, true> x(n, count, st, 23);
    for (int k = 0; k < count; ++k)
        for (int j = 0; j < n; ++j) b(k, j) = E(pr.rhs[k][j]), x(k, j) = inPlace ? E(pr.rhs[k][j]) : E(-5);
    auto invoke = [&](auto rhsArgs) {
        const auto groups = std::tuple_cat(a.args(), std::make_tuple(static_cast<const std::int32_t*>(perm.data())), rhsArgs, x.args());
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

std::vector<Member> members()
{
    std::vector<Member> list;
    auto add = [&]<class E, Shape shape, L lay>(const char* name, auto fn) {
        list.push_back({name, sizeof(E) == 4, shape, lay, [fn](const Problem& pr, Strides st, bool inPlace) {
                            return runMember<E, shape, lay>(fn, pr, st, inPlace);
                        }});
    };
#define ORL_ADD(shape, E, ty, lay, suffix) \
    add.operator()<E, Shape::shape, L::lay>("orlmLUBackSubst_" #shape "_" #ty #suffix, orlmLUBackSubst_##shape##_##ty##suffix);
#define ORL_ADD2(shape, lay, suffix) ORL_ADD(shape, float, 32f, lay, suffix) ORL_ADD(shape, double, 64f, lay, suffix)
    ORL_ADD2(mv, Std, ) ORL_ADD2(mv, P, _P)
    ORL_ADD2(mva, Std, ) ORL_ADD2(mva, P, _P) ORL_ADD2(mva, L, _L)
    ORL_ADD2(mava, Std, ) ORL_ADD2(mava, P, _P) ORL_ADD2(mava, L, _L)
#undef ORL_ADD2
#undef ORL_ADD
    return list;
}

// A random factor with a diagonal away from zero, a random perm, and random
// right-hand sides, rounded to the member's type.
Problem randomProblem(const Member& m, int n, int count, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-2.0, 2.0);
    Problem pr{n, {}, {}, {}};
    for (int f = 0; f < (m.shape == Shape::mava ? count : 1); ++f) {
        Perm p(n);
        std::iota(p.begin(), p.end(), 0);
        std::shuffle(p.begin(), p.end(), rng);
        Vec1 a(n * n);
        for (double& v : a) v = m.round(u(rng));
        for (int i = 0; i < n; ++i) a[p[i] * n + i] = m.round(u(rng) >= 0 ? 1.0 + u(rng) / 4 : -1.0 - u(rng) / 4);
        pr.factors.push_back(a);
        pr.perms.push_back(p);
    }
    for (int k = 0; k < count; ++k) {
        Vec1 b(n);
        for (double& v : b) v = m.round(u(rng));
        pr.rhs.push_back(b);
    }
    return pr;
}

void expectSame(const Member& m, const Problem& pr, const std::vector<Vec1>& got, const std::string& what)
{
    for (int k = 0; k < int(got.size()); ++k) {
        const Vec1 e = m.expect(pr, k);
        for (int j = 0; j < pr.n; ++j)
            EXPECT_TRUE(t::sameBits(got[k][j], e[j])) << what << " item " << k << " x[" << j << "] = " << got[k][j] << ", expected " << e[j];
    }
}

// ---- values ----------------------------------------------------------------

TEST(LUBackSubstValues, EveryMemberSizeAndStrideMatchesItsPath)
{
    std::mt19937 rng(31);
    const auto list = members();
    EXPECT_EQ(list.size(), 16u);
    for (const Member& m : list)
        for (int n : {1, 2, 3, 4, 5, 6, 7, 10})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                const Problem pr = randomProblem(m, n, m.shape == Shape::mv ? 1 : 3, rng);
                SCOPED_TRACE(m.name + " n=" + std::to_string(n) + (st == Strides::Wide ? " wide" : ""));
                expectSame(m, pr, m.run(pr, st, false), "");
                // dst may be rhs itself where all of rhs is read before the first store.
                if (n >= 3 && n <= 6) expectSame(m, pr, m.run(pr, st, true), "dst = rhs");
                if (HasFailure()) return;
            }
}

// x = 5 over a diagonal of 3: the unrolled path gives 5 * fl(1/3), the
// general path fl(5/3), and the two differ in the last bit in both types.
TEST(LUBackSubstValues, PathsRoundDifferently)
{
    for (const Member& m : members())
        for (int n : {3, 6, 2, 7}) {
            Problem pr{n, {Vec1(n * n, 0.0)}, {Perm(n)}, {}};
            std::iota(pr.perms[0].begin(), pr.perms[0].end(), 0);
            for (int i = 0; i < n; ++i) pr.factors[0][i * n + i] = 3.0;
            pr.rhs.assign(m.shape == Shape::mv ? 1 : 2, Vec1(n, 5.0));
            if (m.shape == Shape::mava) pr.factors.push_back(pr.factors[0]), pr.perms.push_back(pr.perms[0]);
            const double byReciprocal = m.round(5.0 * m.round(1.0 / 3.0)), byDivision = m.round(5.0 / 3.0);
            ASSERT_NE(byReciprocal, byDivision);
            const bool unrolled = n >= 3 && n <= 6;
            const auto got = m.run(pr, Strides::Unit, false);
            for (const Vec1& x : got)
                for (double v : x) EXPECT_EQ(v, unrolled ? byReciprocal : byDivision) << m.name << " n=" << n;
        }
}

// One factor against many right-hand sides equals the same factor repeated
// for each of them, on the serial and on the parallel route.
TEST(LUBackSubstValues, MvaEqualsMavaWithTheFactorRepeated)
{
    std::mt19937 rng(37);
    const auto list = members();
    for (const Member& shared : list) {
        if (shared.shape != Shape::mva) continue;
        const Member& each = *std::find_if(list.begin(), list.end(), [&](const Member& m) {
            return m.shape == Shape::mava && m.f32 == shared.f32 && m.lay == shared.lay;
        });
        for (auto [n, count] : {std::pair{4, 5}, std::pair{2, 9}, std::pair{7, 4}, std::pair{5, 300}}) {
            const Problem pr = randomProblem(shared, n, count, rng);
            Problem repeated = pr;
            repeated.factors.assign(count, pr.factors[0]);
            repeated.perms.assign(count, pr.perms[0]);
            for (int T : {1, 2}) {
                Threads th(T);
                const auto one = shared.run(pr, Strides::Wide, false);
                const auto many = each.run(repeated, Strides::Wide, false);
                for (int k = 0; k < count; ++k)
                    for (int j = 0; j < n; ++j)
                        ASSERT_TRUE(t::sameBits(one[k][j], many[k][j])) << shared.name << " n=" << n << " T=" << T << " item " << k;
            }
        }
    }
}

// ---- route -----------------------------------------------------------------

TEST(LUBackSubstRoute, WorkAboveSeventeenHundredGoesParallel)
{
    std::mt19937 rng(43);
    for (const Member& m : members()) {
        if (m.shape == Shape::mv) continue;
        // mva: (n + 2*count)*n; mava: n*(n + 2)*count; both with n = 2.
        const int atLimit = m.shape == Shape::mva ? 424 : 212;  // 1700 and 1696
        for (int count : {atLimit, atLimit + 1}) {
            const Problem pr = randomProblem(m, 2, count, rng);
            Threads th(2);
            probe::reset();
            const auto got = m.run(pr, Strides::Unit, false);
            EXPECT_EQ(probe::regions().count, count == atLimit ? 0 : 1) << m.name << " count " << count;
            expectSame(m, pr, got, m.name);
        }
    }
}

// ---- whole solves ----------------------------------------------------------

// Decomposition and back-substitution of random diagonally dominant systems:
// the residual is within a small multiple of the rounding unit.
template <class E>
void solveAndCheck(int n, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    std::vector<E> a(n * n), b(n), lu(n * n), x(n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) a[i * n + j] = E(u(rng) + (i == j ? (u(rng) < 0 ? -n : n) : 0));
    for (E& v : b) v = E(u(rng));
    std::vector<std::int32_t> perm(n);
    const int s1 = n * int(sizeof(E)), s2 = int(sizeof(E));
    orlStatus st, st2;
    if constexpr (sizeof(E) == 4) {
        st = orlmLUDecomp_m_32f(a.data(), s1, s2, perm.data(), lu.data(), s1, s2, n);
        st2 = orlmLUBackSubst_mv_32f(lu.data(), s1, s2, perm.data(), b.data(), s2, x.data(), s2, n);
    } else {
        st = orlmLUDecomp_m_64f(a.data(), s1, s2, perm.data(), lu.data(), s1, s2, n);
        st2 = orlmLUBackSubst_mv_64f(lu.data(), s1, s2, perm.data(), b.data(), s2, x.data(), s2, n);
    }
    ASSERT_EQ(st, orlStatusOk) << n;
    ASSERT_EQ(st2, orlStatusOk) << n;
    long double worst = 0, scale = 0;
    for (int i = 0; i < n; ++i) {
        long double r = b[i], mag = std::fabs((long double)b[i]);
        for (int j = 0; j < n; ++j) r -= (long double)a[i * n + j] * x[j], mag += std::fabs((long double)a[i * n + j] * x[j]);
        worst = std::max(worst, std::fabs(r));
        scale = std::max(scale, mag);
    }
    EXPECT_LE(worst, 4 * n * std::numeric_limits<E>::epsilon() * scale) << "n=" << n;
}

TEST(LUBackSubstSolve, RandomWellConditionedSystemsOfSizesOneTo64)
{
    std::mt19937 rng(47);
    for (int n = 1; n <= 64; ++n)
        for (int trial = 0; trial < 3; ++trial) {
            solveAndCheck<float>(n, rng);
            solveAndCheck<double>(n, rng);
        }
}

// The solution stands in natural order after a decomposition that pivoted:
// exact small-integer systems with x = 1, 2, 3, ... on both paths.
TEST(LUBackSubstSolve, NaturalOrderAfterPivoting)
{
    for (int n : {3, 7}) {
        std::vector<double> a(n * n, 0.0), lu(n * n), b(n), x(n);
        const double top[9] = {0, 2, 0, 0, 0, 4, 1, 0, 2};
        for (int i = 0; i < n; ++i) a[i * n + i] = 1.0;
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) a[i * n + j] = top[i * 3 + j];
        for (int i = 0; i < n; ++i) {
            b[i] = 0;
            for (int j = 0; j < n; ++j) b[i] += a[i * n + j] * (j + 1);
        }
        std::vector<std::int32_t> perm(n);
        const int s1 = n * 8;
        ASSERT_EQ(orlmLUDecomp_m_64f(a.data(), s1, 8, perm.data(), lu.data(), s1, 8, n), orlStatusOk);
        EXPECT_EQ(perm[0], 2);
        EXPECT_EQ(perm[1], 0);
        ASSERT_EQ(orlmLUBackSubst_mv_64f(lu.data(), s1, 8, perm.data(), b.data(), 8, x.data(), 8, n), orlStatusOk);
        for (int j = 0; j < n; ++j) EXPECT_EQ(x[j], j + 1) << "n=" << n;
    }
}

// ---- argument checks -------------------------------------------------------

TEST(LUBackSubstChecks, ClassesInOrderAndNothingWritten)
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
    const std::int32_t perm[4] = {1, 0, 3, 2};
    auto untouched = [&] {
        return std::all_of(fo, fo + 64, [](float v) { return v == -1.f; }) &&
               std::all_of(go, go + 64, [](double v) { return v == -1.0; });
    };
    struct Case {
        const char* what;
        std::function<orlStatus()> call;
        orlStatus expect;
    };
    const Case cases[] = {
        {"NULL perm before size", [&] { return orlmLUBackSubst_mv_32f(f, 16, 4, nullptr, f, 4, fo, 4, 0); }, orlStatusNullPointer},
        {"NULL rhs before count", [&] { return orlmLUBackSubst_mva_64f(g, 32, 8, perm, nullptr, 32, 8, go, 32, 8, 2, 0); }, orlStatusNullPointer},
        {"NULL dst list", [&] { return orlmLUBackSubst_mava_32f_L(tf, 0, 16, 4, perm, tf, 0, 4, nullptr, 0, 4, 2, 1); }, orlStatusNullPointer},
        {"count before size", [&] { return orlmLUBackSubst_mava_64f(g, 64, 32, 8, perm, g, 32, 8, go, 32, 8, 0, 0); }, orlStatusCount},
        {"count before stride, _L", [&] { return orlmLUBackSubst_mva_32f_L(f, 6, 4, perm, tf, 0, 4, to, 0, 4, 2, 0); }, orlStatusCount},
        {"size before stride", [&] { return orlmLUBackSubst_mva_32f(f, 16, 4, perm, f, 6, 4, fo, 16, 4, 0, 1); }, orlStatusSize},
        {"size before offset, _P", [&] { return orlmLUBackSubst_mv_64f_P(tg, 4, perm, tg, 0, tgo, 0, -3); }, orlStatusSize},
        {"rhs stride of 6", [&] { return orlmLUBackSubst_mv_32f(f, 16, 4, perm, f, 6, fo, 4, 2); }, orlStatusStride},
        {"stride of 12 in 64f", [&] { return orlmLUBackSubst_mava_64f(g, 64, 12, 8, perm, g, 32, 8, go, 32, 8, 2, 1); }, orlStatusStride},
        {"stride0 of 0 with count 1", [&] { return orlmLUBackSubst_mva_32f(f, 16, 4, perm, f, 16, 4, fo, 0, 4, 2, 1); }, orlStatusStride},
        {"shared matrix stride in _L", [&] { return orlmLUBackSubst_mva_32f_L(f, 16, 0, perm, tf, 2, 4, to, 0, 4, 2, 1); }, orlStatusStride},
        {"_P stride0 before offset", [&] { return orlmLUBackSubst_mava_32f_P(tf, 2, 64, perm, tf, 0, -4, to, 0, 64, 2, 1); }, orlStatusStride},
        {"_P offset of 2", [&] { return orlmLUBackSubst_mva_32f_P(tf, 0, perm, tf, 2, 64, to, 0, 64, 2, 1); }, orlStatusOffset},
        {"_L offset of -8", [&] { return orlmLUBackSubst_mava_64f_L(tg, 0, 32, 8, perm, tg, 0, 8, tgo, -8, 8, 2, 1); }, orlStatusOffset},
        {"single _P offset of 4 in 64f", [&] { return orlmLUBackSubst_mv_64f_P(tg, 0, perm, tg, 0, tgo, 4, 2); }, orlStatusOffset},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.call(), c.expect) << c.what;
        EXPECT_TRUE(untouched()) << c.what;
    }
    EXPECT_EQ(orlmLUBackSubst_mva_32f_P(tf, 0, perm, tf, 0, 64, to, 0, 64, 2, 1), orlStatusOk);
}

}  // namespace
