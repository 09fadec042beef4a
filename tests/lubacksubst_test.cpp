// LU back-substitution: values of both paths in every member, layout and
// stride case (also with dst equal to rhs), on both routes; the argument
// checks; whole solves of random well-conditioned systems of sizes 1 to 64.
#include <gtest/gtest.h>

#include <limits>

#include "omp_probe.h"
#include "operands.h"
#include "reference.h"

using t::K;
using t::L;
using t::Strides;

namespace {

using Vec1 = std::vector<double>;
using Perm = std::vector<std::int32_t>;

enum class Shape { mv, mva, mava };

struct Problem {
    int n;
    std::vector<Vec1> factors;  // one (mv, mva) or one per item (mava), physical row-major
    std::vector<Perm> perms;    // alike
    std::vector<Vec1> rhs;      // one per item
};

// Every member through one interface.
struct Member {
    std::string name;
    bool f32;
    Shape shape;
    std::function<std::vector<Vec1>(const Problem&, Strides, bool inPlace)> run;

    double round(double v) const { return f32 ? double(float(v)) : v; }
    Vec1 expect(const Problem& pr, int k) const
    {
        const int f = shape == Shape::mava ? k : 0;
        return f32 ? ref::luSolve<float>(pr.n, pr.factors[f], pr.perms[f], pr.rhs[k])
                   : ref::luSolve<double>(pr.n, pr.factors[f], pr.perms[f], pr.rhs[k]);
    }
};

template <class E, Shape shape, L lay, class Fn>
std::vector<Vec1> runMember(Fn fn, const Problem& pr, Strides st, bool inPlace)
{
    constexpr bool arr = shape != Shape::mv;
    const int n = pr.n, count = int(pr.rhs.size());
    t::Mat<E, shape == Shape::mava ? K::ma : K::m, lay> a(n, n, count, st, 21);
    a.fill([&](int k, int i, int j) { return E(pr.factors[k][i * n + j]); });
    Perm perm;
    for (const Perm& p : pr.perms) perm.insert(perm.end(), p.begin(), p.end());
    t::Vec<E, arr, lay> b(n, count, st, 22);
    t::Vec<E, arr, lay, true> x(n, count, st, 23);
    for (int k = 0; k < count; ++k)
        for (int j = 0; j < n; ++j) b(k, j) = E(pr.rhs[k][j]), x(k, j) = inPlace ? E(pr.rhs[k][j]) : E(-5);
    const auto invoke = [&](auto rhsArgs) {
        const auto groups = std::tuple_cat(a.args(), std::make_tuple(static_cast<const std::int32_t*>(perm.data())), rhsArgs, x.args());
        if constexpr (arr) return t::call(fn, groups, n, count);
        else return t::call(fn, groups, n);
    };
    EXPECT_EQ(inPlace ? invoke(x.args()) : invoke(b.args()), orlStatusOk);
    std::vector<Vec1> out(count, Vec1(n));
    for (int k = 0; k < count; ++k)
        for (int j = 0; j < n; ++j) out[k][j] = x(k, j);
    return out;
}

std::vector<Member> members()
{
#define M(E, shape, lay, fn) \
    Member{#fn, sizeof(E) == 4, Shape::shape, [](const Problem& pr, Strides st, bool in) { return runMember<E, Shape::shape, L::lay>(fn, pr, st, in); }}
#define M2(shape, lay, sfx) M(float, shape, lay, orlmLUBackSubst_##shape##_32f##sfx), M(double, shape, lay, orlmLUBackSubst_##shape##_64f##sfx)
    return {M2(mv, Std, ), M2(mv, P, _P), M2(mva, Std, ), M2(mva, P, _P), M2(mva, L, _L), M2(mava, Std, ), M2(mava, P, _P), M2(mava, L, _L)};
#undef M2
#undef M
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
    pr.rhs.assign(count, Vec1(n));
    for (Vec1& r : pr.rhs)
        for (double& v : r) v = m.round(u(rng));
    return pr;
}

void expectSame(const Member& m, const Problem& pr, const std::vector<Vec1>& got, const std::string& what)
{
    for (int k = 0; k < int(got.size()); ++k) {
        const Vec1 e = m.expect(pr, k);
        for (int j = 0; j < pr.n; ++j)
            EXPECT_TRUE(ref::sameBits(got[k][j], e[j])) << what << " item " << k << " x[" << j << "] = " << got[k][j] << ", expected " << e[j];
    }
}

// ---- values ----------------------------------------------------------------

TEST(LUBackSubstValues, EveryMemberSizeAndStrideMatchesItsPath)
{
    std::mt19937 rng(31);
    for (const Member& m : members())
        for (int n : {1, 2, 3, 4, 5, 6, 7, 10})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                const Problem pr = randomProblem(m, n, m.shape == Shape::mv ? 1 : 3, rng);
                SCOPED_TRACE(m.name + " n=" + std::to_string(n) + (st == Strides::Wide ? " wide" : ""));
                expectSame(m, pr, m.run(pr, st, false), "");
                // dst may be rhs itself where all of rhs is read before the first store.
                if (ref::unrolledSize(n)) expectSame(m, pr, m.run(pr, st, true), "dst = rhs");
                if (HasFailure()) return;
            }
}

// ---- route -----------------------------------------------------------------

// mva costs (n + 2*count)*n, mava n*(n + 2)*count; the driver is taken above
// 1700. With n = 2 the last serial counts are 424 (1700) and 212 (1696).
TEST(LUBackSubstRoute, WorkAboveSeventeenHundredGoesParallel)
{
    std::mt19937 rng(43);
    for (const Member& m : members()) {
        if (m.shape == Shape::mv) continue;
        const int atLimit = m.shape == Shape::mva ? 424 : 212;
        for (int count : {atLimit, atLimit + 1, 2000}) {
            const Problem pr = randomProblem(m, count == 2000 ? 5 : 2, count, rng);
            t::Threads th(3);
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
void solveAndCheck(int n, std::mt19937& rng, auto decomp, auto solve)
{
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    std::vector<E> a(n * n), b(n), lu(n * n), x(n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) a[i * n + j] = E(u(rng) + (i == j ? (u(rng) < 0 ? -n : n) : 0));
    for (E& v : b) v = E(u(rng));
    std::vector<std::int32_t> perm(n);
    const int s1 = n * int(sizeof(E)), s2 = int(sizeof(E));
    ASSERT_EQ(decomp(a.data(), s1, s2, perm.data(), lu.data(), s1, s2, n), orlStatusOk);
    ASSERT_EQ(solve(lu.data(), s1, s2, perm.data(), b.data(), s2, x.data(), s2, n), orlStatusOk);
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
            solveAndCheck<float>(n, rng, orlmLUDecomp_m_32f, orlmLUBackSubst_mv_32f);
            solveAndCheck<double>(n, rng, orlmLUDecomp_m_64f, orlmLUBackSubst_mv_64f);
        }
}

// ---- argument checks -------------------------------------------------------

TEST(LUBackSubstChecks, ClassesInOrderAndNothingWritten)
{
    t::CheckBuffers b;
    const std::int32_t perm[4] = {1, 0, 3, 2};
    const std::tuple<const char*, const char*, std::function<orlStatus()>> cases[] = {
        {"NZT", "NZ", [&] { return orlmLUBackSubst_mv_32f(b.f, 16, 4, nullptr, b.f, 4, b.fo, 4, 0); }},
        {"NCZT", "NC", [&] { return orlmLUBackSubst_mva_64f(b.g, 32, 8, perm, nullptr, 32, 8, b.go, 32, 8, 2, 0); }},
        {"NCZTO", "N", [&] { return orlmLUBackSubst_mava_32f_L(b.tf, 0, 16, 4, perm, b.tf, 0, 4, nullptr, 0, 4, 2, 1); }},
        {"NCZT", "CZ", [&] { return orlmLUBackSubst_mava_64f(b.g, 64, 32, 8, perm, b.g, 32, 8, b.go, 32, 8, 0, 0); }},
        {"NCZTO", "CT", [&] { return orlmLUBackSubst_mva_32f_L(b.f, 6, 4, perm, b.tf, 0, 4, b.to, 0, 4, 2, 0); }},
        {"NCZT", "ZT", [&] { return orlmLUBackSubst_mva_32f(b.f, 16, 4, perm, b.f, 6, 4, b.fo, 16, 4, 0, 1); }},
        {"NZO", "ZO", [&] { return orlmLUBackSubst_mv_64f_P(b.tg, 4, perm, b.tg, 0, b.tgo, 0, -3); }},
        {"NCZT", "T", [&] { return orlmLUBackSubst_mava_64f(b.g, 64, 12, 8, perm, b.g, 32, 8, b.go, 32, 8, 2, 1); }},
        {"NCZTO", "TO", [&] { return orlmLUBackSubst_mva_32f_L(b.f, 16, 0, perm, b.tf, 2, 4, b.to, 0, 4, 2, 1); }},
        {"NCZTO", "O", [&] { return orlmLUBackSubst_mva_32f_P(b.tf, 0, perm, b.tf, 2, 64, b.to, 0, 64, 2, 1); }},
        {"NZO", "O", [&] { return orlmLUBackSubst_mv_64f_P(b.tg, 0, perm, b.tg, 0, b.tgo, 4, 2); }},
    };
    for (const auto& [order, failing, call] : cases) {
        EXPECT_EQ(call(), ref::expectedStatus(order, failing)) << order << " failing " << failing;
        EXPECT_TRUE(b.untouched()) << order << " failing " << failing;
    }
    EXPECT_EQ(orlmLUBackSubst_mva_32f_P(b.tf, 0, perm, b.tf, 0, 64, b.to, 0, 64, 2, 1), orlStatusOk);
}

}  // namespace
