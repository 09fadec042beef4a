// Symmetric eigensolver: the order of the checks in every layout, the closed
// forms of orders 1 and 2 bit for bit, sorted values with orthonormal
// vectors and small residuals from order 3 on, the kernels' departures, the
// failure outputs, arrays stopping at the first failing matrix on both
// routes, identical bits over thread counts and layouts.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "reference.h"

#if defined(ORLM_HAVE_LAPACKE) && __has_include(<lapacke.h>)
#include <lapacke.h>
#define HAVE_LAPACKE 1
#endif

using t::K;
using t::L;
using t::Mat;
using t::Strides;

namespace {

using Dense = std::vector<double>;  // one n-by-n matrix, row-major

constexpr double kUntouched = -777.25;  // outputs before a call; exact in both types

// ---- one member, its operands and its call --------------------------------

// Arguments that a check case spoils; kKeep leaves one as the operand has it.
constexpr std::ptrdiff_t kKeep = 1 << 30;
struct Spoil {
    bool nullSrc = false, nullBuf = false, nullVals = false, nullVec = false;
    int n = 0, count = 0;  // 0 keeps the case's own
    bool wide = false;     // operands laid out with stride2 of three elements
    std::ptrdiff_t srcS0 = kKeep, srcS1 = kKeep, srcS2 = kKeep, srcOff = kKeep;
    std::ptrdiff_t vecS0 = kKeep, vecS1 = kKeep, vecS2 = kKeep, vecOff = kKeep;
};

// Whether the outputs (values and vectors) and the buffer still hold kUntouched.
struct Untouched {
    bool outputs = true, buffer = true;
};

// A member chosen at run time: the same cases through every member. `run`
// lays out `items` (order n) in the member's layout with every output set to
// kUntouched, calls it with the spoiled arguments and reads the outputs back.
using Run = std::function<orlStatus(int n, const std::vector<Dense>& items, const Spoil&, Dense& vals,
                                    std::vector<Dense>& vecs, Untouched&)>;
struct Member {
    std::string name;
    bool f32, array, vectors;
    L lay;
    Run run;
};

template <class E, K k, L l, bool V, class Fn>
Member makeMember(const char* name, Fn fn)
{
    const auto run = [fn](int n, const std::vector<Dense>& items, const Spoil& sp, Dense& vals, std::vector<Dense>& vecs,
                          Untouched& untouched) {
        const int count = int(items.size());
        const Strides st = sp.wide ? Strides::Wide : Strides::Unit;
        Mat<E, k, l> src(n, n, count, st, 3);
        Mat<E, k, l, true> vec(n, n, count, st, 4);
        std::vector<E> buf(size_t(n * n), E(kUntouched)), out(size_t(n * count), E(kUntouched));
        src.fill([&](int kk, int i, int j) { return E(items[kk][i * n + j]); });
        vec.fill([](int, int, int) { return E(kUntouched); });
        // The call sees the spoiled strides and offsets; the outputs are read with the operands' own.
        const auto kept = std::make_tuple(src.s0, src.s1, src.s2, src.off, vec.s0, vec.s1, vec.s2, vec.off);
        const auto set = [](std::ptrdiff_t& f, std::ptrdiff_t v) { f = v == kKeep ? f : v; };
        set(src.s0, sp.srcS0), set(src.s1, sp.srcS1), set(src.s2, sp.srcS2), set(src.off, sp.srcOff);
        set(vec.s0, sp.vecS0), set(vec.s1, sp.vecS1), set(vec.s2, sp.vecS2), set(vec.off, sp.vecOff);
        auto sa = src.args();
        auto va = vec.args();
        std::tie(src.s0, src.s1, src.s2, src.off, vec.s0, vec.s1, vec.s2, vec.off) = kept;
        if (sp.nullSrc) std::get<0>(sa) = nullptr;
        if (sp.nullVec) std::get<0>(va) = nullptr;
        E* b = sp.nullBuf ? nullptr : buf.data();
        E* w = sp.nullVals ? nullptr : out.data();
        const int nn = sp.n ? sp.n : n, cc = sp.count ? sp.count : count;
        const auto mid = [&] {
            if constexpr (V) return std::tuple_cat(std::make_tuple(b), va, std::make_tuple(w));
            else return std::make_tuple(b, w);
        }();
        const auto sizes = [&] {
            if constexpr (t::arr(k)) return std::make_tuple(nn, cc);
            else return std::make_tuple(nn);
        }();
        const orlStatus status = std::apply(fn, std::tuple_cat(sa, mid, sizes));

        vals.assign(out.begin(), out.end());
        vecs.assign(size_t(count), Dense(size_t(n * n), 0.0));
        untouched = {};
        for (double x : vals) untouched.outputs = untouched.outputs && x == kUntouched;
        for (int kk = 0; V && kk < count; ++kk)
            for (int i = 0; i < n * n; ++i) {
                vecs[kk][i] = vec(kk, i / n, i % n);
                untouched.outputs = untouched.outputs && vecs[kk][i] == kUntouched;
            }
        for (E x : buf) untouched.buffer = untouched.buffer && x == E(kUntouched);
        return status;
    };
    return {name, sizeof(E) == 4, t::arr(k), V, l, run};
}

#define MEMBER(E, k, l, V, name) makeMember<E, K::k, L::l, V>(#name, &orlm##name)

const std::vector<Member>& members()
{
    static const std::vector<Member> all = {
        MEMBER(float, m, Std, false, EigenValuesSym_m_32f),
        MEMBER(float, m, P, false, EigenValuesSym_m_32f_P),
        MEMBER(float, ma, Std, false, EigenValuesSym_ma_32f),
        MEMBER(float, ma, P, false, EigenValuesSym_ma_32f_P),
        MEMBER(float, ma, L, false, EigenValuesSym_ma_32f_L),
        MEMBER(double, m, Std, false, EigenValuesSym_m_64f),
        MEMBER(double, m, P, false, EigenValuesSym_m_64f_P),
        MEMBER(double, ma, Std, false, EigenValuesSym_ma_64f),
        MEMBER(double, ma, P, false, EigenValuesSym_ma_64f_P),
        MEMBER(double, ma, L, false, EigenValuesSym_ma_64f_L),
        MEMBER(float, m, Std, true, EigenValuesVectorsSym_m_32f),
        MEMBER(float, m, P, true, EigenValuesVectorsSym_m_32f_P),
        MEMBER(float, ma, Std, true, EigenValuesVectorsSym_ma_32f),
        MEMBER(float, ma, P, true, EigenValuesVectorsSym_ma_32f_P),
        MEMBER(float, ma, L, true, EigenValuesVectorsSym_ma_32f_L),
        MEMBER(double, m, Std, true, EigenValuesVectorsSym_m_64f),
        MEMBER(double, m, P, true, EigenValuesVectorsSym_m_64f_P),
        MEMBER(double, ma, Std, true, EigenValuesVectorsSym_ma_64f),
        MEMBER(double, ma, P, true, EigenValuesVectorsSym_ma_64f_P),
        MEMBER(double, ma, L, true, EigenValuesVectorsSym_ma_64f_L),
    };
    return all;
}

Dense randomSymmetric(int n, std::mt19937& rng, double scale = 1.0)
{
    std::uniform_real_distribution<double> u(-1, 1);
    Dense a(size_t(n * n));
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) a[i * n + j] = a[j * n + i] = std::ldexp(std::round(u(rng) * 4096), -12) * scale;
    return a;
}

Dense diag(std::initializer_list<double> d)
{
    const int n = int(d.size());
    Dense a(size_t(n * n), 0.0);
    int i = 0;
    for (double x : d) a[i * n + i] = x, ++i;
    return a;
}

// ---- checks ----------------------------------------------------------------

// Stride and offset values that fail: not a multiple of the element size,
// zero, negative. `half` is E/2, which fails in both types.
TEST(EigSym, ChecksInTheirOrderAndNothingWritten)
{
    struct Row {
        const char* what;
        std::function<bool(const Member&)> applies;
        std::function<Spoil(std::ptrdiff_t E)> spoil;
        orlStatus st;
    };
    const auto any = [](const Member&) { return true; };
    const auto std_ = [](const Member& m) { return m.lay == L::Std; };
    const auto arrays = [](const Member& m) { return m.array; };
    const auto vectorsP = [](const Member& m) { return m.vectors && m.array && m.lay == L::P; };
    const Row rows[] = {
        {"NULL src before order 0 and count 0", any, [](auto) { Spoil s; s.nullSrc = true, s.n = -1, s.count = -1; return s; }, orlStatusNullPointer},
        {"NULL buffer", any, [](auto) { Spoil s; s.nullBuf = true; return s; }, orlStatusNullPointer},
        {"NULL values", any, [](auto) { Spoil s; s.nullVals = true; return s; }, orlStatusNullPointer},
        {"NULL vectors", [](const Member& m) { return m.vectors; }, [](auto) { Spoil s; s.nullVec = true; return s; }, orlStatusNullPointer},
        {"order 0 before count 0 and bad strides", any,
         [](auto E) { Spoil s; s.n = -1, s.count = -1, s.srcS0 = s.srcS1 = s.srcS2 = E / 2, s.srcOff = -E; return s; }, orlStatusSize},
        {"count 0 before bad strides and offsets", arrays,
         [](auto E) { Spoil s; s.count = -1, s.srcS0 = s.srcS1 = s.srcS2 = s.vecS2 = 0, s.srcOff = s.vecOff = E / 2; return s; }, orlStatusCount},
        {"source stride2 of 1.5 elements", std_, [](auto E) { Spoil s; s.srcS2 = E + E / 2; return s; }, orlStatusStride},
        {"destination stride1 of 0", [](const Member& m) { return m.vectors && m.lay == L::Std; }, [](auto) { Spoil s; s.vecS1 = 0; return s; }, orlStatusStride},
        {"source stride0 of 0", [](const Member& m) { return m.array && m.lay != L::L; }, [](auto) { Spoil s; s.srcS0 = 0; return s; }, orlStatusStride},
        {"source offset -4", [](const Member& m) { return m.lay != L::Std; }, [](auto) { Spoil s; s.srcOff = -4; return s; }, orlStatusOffset},
        {"destination offset E/2", [](const Member& m) { return m.vectors && m.lay != L::Std; }, [](auto E) { Spoil s; s.vecOff = E / 2; return s; }, orlStatusOffset},
        {"_P arrays: source offset before source stride0", [](const Member& m) { return m.array && m.lay == L::P; },
         [](auto) { Spoil s; s.srcS0 = 0, s.srcOff = -4; return s; }, orlStatusOffset},
        {"_P vector arrays: destination offset before source stride0", vectorsP, [](auto) { Spoil s; s.srcS0 = -8, s.vecOff = 2; return s; }, orlStatusOffset},
        {"_L: source offset before source strides", [](const Member& m) { return m.lay == L::L; },
         [](auto) { Spoil s; s.srcS1 = 0, s.srcOff = -8; return s; }, orlStatusOffset},
        {"_L vectors: destination offset before source stride2", [](const Member& m) { return m.vectors && m.lay == L::L; },
         [](auto E) { Spoil s; s.srcS2 = E / 2, s.vecOff = -E; return s; }, orlStatusOffset},
        {"single _P: no strides to test", [](const Member& m) { return !m.array && m.lay == L::P; },
         [](auto) { Spoil s; s.srcS0 = s.srcS1 = s.srcS2 = s.vecS2 = 0; return s; }, orlStatusOk},
        {"offset 0 passes", [](const Member& m) { return m.lay != L::Std; }, [](auto) { Spoil s; s.srcOff = 0, s.vecOff = 0; return s; }, orlStatusOk},
    };
    std::mt19937 rng(11);
    const std::vector<Dense> items = {randomSymmetric(3, rng), randomSymmetric(3, rng)};
    for (const Member& m : members())
        for (const Row& r : rows) {
            if (!r.applies(m)) continue;
            Dense vals;
            std::vector<Dense> vecs;
            Untouched untouched;
            const std::vector<Dense> use(items.begin(), items.begin() + (m.array ? 2 : 1));
            EXPECT_EQ(m.run(3, use, r.spoil(m.f32 ? 4 : 8), vals, vecs, untouched), r.st) << m.name << ": " << r.what;
            if (r.st != orlStatusOk) EXPECT_TRUE(untouched.outputs && untouched.buffer) << m.name << ": " << r.what;
        }
}

// ---- closed forms ----------------------------------------------------------

// Orders 1 and 2 bit for bit against the closed forms in each kernel's
// precision. Rows of the cases worth naming, then random matrices.
TEST(EigSym, OrdersOneAndTwoBitForBit)
{
    const std::vector<Dense> named = {
        {2, 0, 0, 1},    // values (2, 1); m vectors (-1, -0), (0, -1)
        {-2, 0, 0, -1},  // s < -eps: (-2, -1), ascending on purpose; m and ma vector signs differ
        {1, 1, 5, 3},    // the 5 is not read: [[1, 1], [1, 3]]
        {1, 2, 2, -1},   // trace within eps: +-sqrt(5)
        {1, 1, 1, 1},    // D = 0: singular, nothing written
        {1, 0, 0, 0x1p-30},  // D = 2^-30: singular where the test uses 2^-23 only
        {3, 0x1p-30, 0x1p-30, 3},  // 2b within eps, c = 0 in the array form
    };
    std::vector<Dense> cases = named;
    std::mt19937 rng(5);
    for (int x = 0; x < 40; ++x) cases.push_back(randomSymmetric(2, rng));

    for (const Member& m : members())
        for (const Dense& a : cases) {
            // Each kernel's precision and test bound, as the family states them.
            const double eps = m.f32 ? 0x1p-23 : 0x1p-52;
            const double test = m.f32 && m.array && !m.vectors ? 0x1p-52 : eps;
            ref::SymOrder2<double> r;
            if (!m.f32 || (m.array && m.vectors))
                r = ref::symOrder2<double, false>(a[0], a[1], a[3], eps, test, m.array);
            else {
                const auto f = ref::symOrder2<float, true>(float(a[0]), float(a[1]), float(a[3]), float(eps), float(test), m.array);
                r = {f.singular, f.l0, f.l1, {{f.q[0][0], f.q[0][1]}, {f.q[1][0], f.q[1][1]}}};
            }
            const auto round = [&](double x) { return m.f32 ? double(float(x)) : x; };
            Dense vals;
            std::vector<Dense> vecs;
            Untouched untouched;
            const orlStatus st = m.run(2, {a}, {}, vals, vecs, untouched);
            const std::string what = m.name + " on " + std::to_string(a[0]) + " " + std::to_string(a[1]) + " " + std::to_string(a[3]);
            ASSERT_EQ(st, r.singular ? orlStatusSingular : orlStatusOk) << what;
            if (r.singular) {
                EXPECT_TRUE(untouched.outputs) << what;
                continue;
            }
            EXPECT_TRUE(ref::sameBits(vals[0], round(r.l0)) && ref::sameBits(vals[1], round(r.l1))) << what << ": " << vals[0] << " " << vals[1];
            if (m.vectors)
                for (int i = 0; i < 4; ++i) EXPECT_TRUE(ref::sameBits(vecs[0][i], round(r.q[i / 2][i % 2]))) << what << " element " << i;
        }
}

TEST(EigSym, OrderOneTakesTheElementAndAUnitVector)
{
    for (const Member& m : members())
        for (double x : {0.0, -2.5}) {
            Dense vals;
            std::vector<Dense> vecs;
            Untouched untouched;
            EXPECT_EQ(m.run(1, {{x}}, {}, vals, vecs, untouched), orlStatusOk) << m.name;
            EXPECT_EQ(vals[0], x) << m.name;
            if (m.vectors) EXPECT_EQ(vecs[0][0], 1.0) << m.name;
        }
}


// ---- orders 3 and above ----------------------------------------------------

// Largest first, unit orthogonal vectors, |A v - lambda v| small against the
// norm of A, and the values of LAPACK's dsyev where it is installed.
void expectEigenpairs(const Member& m, int n, const Dense& a, const Dense& vals, const Dense& q, const std::string& what)
{
    const double eps = m.f32 ? 0x1p-23 : 0x1p-52, tol = 64 * n * eps;
    double norm = 0;
    for (double x : a) norm = std::max(norm, std::fabs(x));
    for (int k = 0; k + 1 < n; ++k) EXPECT_GE(vals[k], vals[k + 1]) << what;
    if (m.vectors)
        for (int k = 0; k < n; ++k) {
            for (int c = 0; c < n; ++c) {
                double dot = 0;
                for (int r = 0; r < n; ++r) dot += q[r * n + k] * q[r * n + c];
                EXPECT_NEAR(dot, k == c ? 1.0 : 0.0, tol) << what << " columns " << k << ", " << c;
            }
            for (int r = 0; r < n; ++r) {
                double av = 0;
                for (int j = 0; j < n; ++j) av += a[r * n + j] * q[j * n + k];
                EXPECT_NEAR(av, vals[k] * q[r * n + k], tol * norm) << what << " vector " << k;
            }
        }
#ifdef HAVE_LAPACKE
    Dense w(n, 0.0), b = a;
    ASSERT_EQ(LAPACKE_dsyev(LAPACK_ROW_MAJOR, 'N', 'L', n, b.data(), n, w.data()), 0);
    for (int k = 0; k < n; ++k) EXPECT_NEAR(vals[k], w[n - 1 - k], tol * norm) << what << " value " << k;
#endif
}

// Q diag(d) Q' with Q a reflection I - 2uu'/u'u: repeated values stay repeated.
Dense withValues(const std::vector<double>& d, std::mt19937& rng)
{
    const int n = int(d.size());
    std::uniform_real_distribution<double> u(-1, 1);
    Dense v(n, 0.0), a(n * n, 0.0);
    double vv = 0;
    for (double& x : v) x = u(rng), vv += x * x;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            for (int k = 0; k < n; ++k) {
                const double qik = (i == k) - 2 * v[i] * v[k] / vv, qjk = (j == k) - 2 * v[j] * v[k] / vv;
                a[i * n + j] += qik * d[k] * qjk;
            }
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < i; ++j) a[j * n + i] = a[i * n + j];
    return a;
}

TEST(EigSym, RandomAndRepeatedValuesOfOrdersThreeToTen)
{
    std::mt19937 rng(21);
    std::vector<std::pair<int, Dense>> cases;
    for (int n = 3; n <= 10; ++n)
        for (int x = 0; x < 3; ++x) cases.push_back({n, randomSymmetric(n, rng)});
    cases.push_back({4, withValues({2, 2, 2, -1}, rng)});
    cases.push_back({5, withValues({3, -1, 3, -1, 0.5}, rng)});
    cases.push_back({6, withValues({1, 1, 1, 1, 1, 1}, rng)});
    cases.push_back({9, withValues({4, 4, -2, -2, -2, 1, 1, 1, 7}, rng)});
    for (const Member& m : members())
        for (const auto& [n, a] : cases) {
            Dense vals;
            std::vector<Dense> vecs;
            Untouched untouched;
            const std::string what = m.name + " order " + std::to_string(n);
            ASSERT_EQ(m.run(n, {a}, {}, vals, vecs, untouched), orlStatusOk) << what;
            expectEigenpairs(m, n, m.f32 ? Dense(a.begin(), a.end()) : a, vals, vecs[0], what);
        }
}

// Exact outcomes: nothing to reduce or to iterate.
TEST(EigSym, DiagonalCasesAndSingularity)
{
    struct Row {
        const char* what;
        Dense a;
        orlStatus st;
        Dense vals;      // in the order the member leaves them
        Dense columns;   // the unit vector's index of each column
    };
    const double tiny = 0x1p-26;  // 0.5*|e| under 2^-23 in 32f, not under 2^-52
    const Row rows32[] = {
        {"identity", diag({1, 1, 1}), orlStatusOk, {1, 1, 1}, {0, 1, 2}},
        {"diagonal sorted, first of equal values first", diag({2, 5, 2}), orlStatusOk, {5, 2, 2}, {1, 0, 2}},
        {"zero eigenvalue: unsorted", diag({1, 2, 0}), orlStatusSingular, {1, 2, 0}, {0, 1, 2}},
        {"off-diagonal under 2^-23 counts as diagonal", {4, tiny, 0, tiny, 2, 0, 0, 0, 3}, orlStatusOk, {4, 3, 2}, {0, 2, 1}},
    };
    for (const Member& m : members())
        for (const Row& r : rows32) {
            if (!m.f32 && r.a[1] == tiny) continue;
            Dense vals;
            std::vector<Dense> vecs;
            Untouched untouched;
            const std::string what = m.name + ": " + r.what;
            ASSERT_EQ(m.run(3, {r.a}, {}, vals, vecs, untouched), r.st) << what;
            EXPECT_EQ(vals, r.vals) << what;
            if (m.vectors)
                for (int c = 0; c < 3; ++c)
                    for (int i = 0; i < 3; ++i)
                        EXPECT_EQ(std::fabs(vecs[0][i * 3 + c]), i == r.columns[c] ? 1.0 : 0.0) << what;
        }
}

// The departures of single kernels from their family's common steps: a
// bound of 2^-23 for the product, and two kernels whose rounding or shift
// differs from their neighbours' (different bits, both right).
TEST(EigSym, KernelDepartures)
{
    auto run = [](const std::string& name, const Dense& a, bool wide, Dense& vals, Dense& vecs) {
        for (const Member& m : members())
            if (m.name == name) {
                Untouched u;
                Spoil sp;
                sp.wide = wide;
                std::vector<Dense> q;
                const orlStatus st = m.run(3, {a}, sp, vals, q, u);
                vecs = q[0];
                if (st == orlStatusOk) expectEigenpairs(m, 3, a, vals, vecs, name);
                return st;
            }
        ADD_FAILURE() << name;
        return orlStatus(1);
    };
    Dense v1, v2, q1, q2;
    const Dense small = diag({1e-4, 1e-4, 1});  // eigenvalue product 1e-8
    EXPECT_EQ(run("EigenValuesVectorsSym_ma_64f", small, false, v1, q1), orlStatusSingular);
    EXPECT_EQ(run("EigenValuesVectorsSym_ma_64f_P", small, true, v1, q1), orlStatusSingular);
    EXPECT_EQ(run("EigenValuesVectorsSym_m_64f", small, false, v1, q1), orlStatusOk);
    EXPECT_EQ(run("EigenValuesSym_ma_64f", small, false, v1, q1), orlStatusOk);

    struct Pair {
        const char* member;
        Dense a;
    };
    const Pair pairs[] = {
        // alpha = 2^-30 is above 2^-52 but not above eps: only the 32f _L
        // kernel takes it as positive in the reduction.
        {"EigenValuesVectorsSym_ma_32f_L", {1, 0x1p-30, 1, 0x1p-30, 2, 0, 1, 0, 3}},
        // Top-down sweep with a shift g of exactly 2^-23: the 32f _S2 kernel
        // takes it as positive, the others not.
        {"EigenValuesVectorsSym_m_32f", {1, 1, 0, 1, 1 + 0x1p-22, 1, 0, 1, 5}},
    };
    for (const Pair& p : pairs) {
        ASSERT_EQ(run(p.member, p.a, false, v1, q1), orlStatusOk) << p.member;
        ASSERT_EQ(run(p.member, p.a, true, v2, q2), orlStatusOk) << p.member;
        EXPECT_NE(v1 == v2 && q1 == q2, true) << p.member << ": unit and any stride2 give the same bits";
    }
}

// NaN and infinite elements end. Sub-diagonal entries of 1 beside a
// diagonal of 4e19, whose rounding unit is far larger, never get under the
// absolute threshold: the sweeps run out.
TEST(EigSym, BadElementsEndAndNoConvergence)
{
    const double inf = std::numeric_limits<double>::infinity(), nan = std::nan("");
    for (const Member& m : members()) {
        const Dense big = {4e19, -1, 0, -1, 4e19, -1, 0, -1, 4e19};
        Dense vals;
        std::vector<Dense> vecs;
        Untouched untouched;
        EXPECT_EQ(m.run(3, {big}, {}, vals, vecs, untouched), orlStatusNoConvergence) << m.name;
        for (double bad : {nan, inf, -inf})
            for (int n : {2, 3, 5}) {
                Dense a = diag({1, 2, 3, 4, 5});
                a.resize(size_t(n * n));
                a[1] = a[n] = bad;
                const orlStatus st = m.run(n, {a}, {}, vals, vecs, untouched);
                EXPECT_TRUE(st == orlStatusOk || st == orlStatusNoConvergence || st == orlStatusSingular) << m.name;
            }
    }
}

// ---- layouts, arrays and threads -------------------------------------------

const Member& named(const std::string& name)
{
    for (const Member& m : members())
        if (m.name == name) return m;
    throw std::runtime_error(name);
}

// Within a family, type and shape the kernels follow the same steps, so every
// layout and stride gives the bits of the plain layout; the value family's
// single and array members too.
TEST(EigSym, LayoutsAndStridesGiveThePlainBits)
{
    std::mt19937 rng(8);
    for (int n = 1; n <= 7; ++n) {
        const std::vector<Dense> items = {randomSymmetric(n, rng), randomSymmetric(n, rng), randomSymmetric(n, rng)};
        for (const Member& m : members()) {
            const std::string base = (m.vectors ? std::string("EigenValuesVectorsSym_") : std::string("EigenValuesSym_")) +
                                     (m.array || !m.vectors ? "ma_" : "m_") + (m.f32 ? "32f" : "64f");
            for (bool wide : {false, true}) {
                if (wide && m.lay == L::P) continue;
                Spoil sp;
                sp.wide = wide;
                Dense v1, v2;
                std::vector<Dense> q1, q2;
                Untouched u;
                const std::vector<Dense> use(items.begin(), items.begin() + (m.array ? 3 : 1));
                ASSERT_EQ(m.run(n, use, sp, v1, q1, u), orlStatusOk) << m.name;
                ASSERT_EQ(named(base).run(n, use, {}, v2, q2, u), orlStatusOk);
                EXPECT_TRUE(v1 == v2 && q1 == q2) << m.name << (wide ? " wide" : "") << " against " << base << " order " << n;
            }
        }
    }
}

// An array stops at its first failing matrix: on the direct route the later
// ones stay untouched, on the parallel route only the rest of that thread's
// run does. Outputs that are complete equal a call on the matrix alone, and
// do not depend on the thread count; the parallel route leaves the caller's
// buffer alone, and with fewer matrices than threads the call stays serial.
TEST(EigSym, ArraysRoutesAndThreads)
{
    struct Row {
        const char* member;
        int n, count, threads, failing;  // failing < 0: none; the failing matrix is of order 3
        int regions;                    // parallel regions the call opens
        int stopsAt, resumesAt;         // untouched items: [stopsAt, resumesAt)
    };
    const Row rows[] = {
        {"EigenValuesVectorsSym_ma_64f", 3, 5, 1, 2, 0, 3, 5},
        {"EigenValuesSym_ma_32f_L", 3, 5, 4, 2, 0, 3, 5},             // work 60: under the limit
        {"EigenValuesVectorsSym_ma_64f", 3, 100, 2, 10, 1, 11, 50},   // work 2100 > 1700
        {"EigenValuesVectorsSym_ma_32f_P", 3, 100, 3, 40, 1, 41, 67},
        {"EigenValuesSym_ma_32f", 3, 1700, 2, 10, 1, 11, 850},        // work 20400 > 20000
        {"EigenValuesSym_ma_64f_L", 4, 1001, 4, -1, 1, 0, 0},         // work 20020
        {"EigenValuesVectorsSym_ma_32f", 20, 3, 4, -1, 0, 0, 0},      // over the limit, count < threads
    };
    for (const Row& r : rows) {
        const Member& m = named(r.member);
        std::mt19937 rng(r.count);
        std::vector<Dense> items;
        for (int k = 0; k < r.count; ++k) items.push_back(k == r.failing ? diag({1, 2, 0}) : randomSymmetric(r.n, rng));
        Dense vals;
        std::vector<Dense> vecs;
        Untouched u;
        orlStatus st;
        {
            t::Threads th(r.threads);
            probe::reset();
            st = m.run(r.n, items, {}, vals, vecs, u);
            EXPECT_EQ(probe::regions().count, r.regions) << r.member;
        }
        EXPECT_EQ(st, r.failing >= 0 ? orlStatusSingular : orlStatusOk) << r.member;
        EXPECT_EQ(u.buffer, r.regions == 1) << r.member;
        for (int k = 0; k < r.count; ++k) {
            const Dense got(vals.begin() + k * r.n, vals.begin() + (k + 1) * r.n);
            if (k >= r.stopsAt && k < r.resumesAt) {
                EXPECT_EQ(got, Dense(size_t(r.n), kUntouched)) << r.member << " item " << k;
                continue;
            }
            Dense alone;
            std::vector<Dense> aloneVecs;
            Untouched ua;
            m.run(r.n, {items[k]}, {}, alone, aloneVecs, ua);
            EXPECT_TRUE(got == alone && vecs[k] == aloneVecs[0]) << r.member << " item " << k;
        }
        if (r.failing >= 0) continue;
        for (int T = 1; T <= 4; ++T) {  // the same bits for every thread count
            t::Threads th(T);
            Dense v2;
            std::vector<Dense> q2;
            m.run(r.n, items, {}, v2, q2, u);
            EXPECT_TRUE(v2 == vals && q2 == vecs) << r.member << " with " << T << " threads";
        }
    }
}

}  // namespace
