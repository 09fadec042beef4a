// Symmetric eigensolver: check orders, orders 1 and 2 bit for bit, eigenpairs
// from order 3 on, kernel departures, failure outputs, arrays, routes, layouts.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <initializer_list>
#include <random>
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
using t::Strides;

namespace {

using Dense = std::vector<double>;  // one n-by-n matrix, row-major
constexpr double kUntouched = -777.25;  // outputs before a call; exact in both types

// What a call left: status, values and vectors read back through the layout,
// and whether the outputs and the buffer still hold kUntouched.
struct Result {
    orlStatus st;
    Dense vals;
    std::vector<Dense> vecs;
    bool outputsUntouched = true, bufferUntouched = true;
};

// A member chosen at run time; `wide` lays the operands out with a stride2 of
// three elements.
struct Member {
    std::string name;
    bool f32, array, vectors;
    L lay;
    std::function<Result(int n, const std::vector<Dense>& items, bool wide)> run;
    Result operator()(int n, const std::vector<Dense>& items, bool wide = false) const { return run(n, items, wide); }
};

template <class E, K k, L l, bool V, class Fn>
Member makeMember(const char* name, Fn fn)
{
    const auto run = [fn](int n, const std::vector<Dense>& items, bool wide) {
        const int count = int(items.size());
        t::Mat<E, k, l> src(n, n, count, wide ? Strides::Wide : Strides::Unit, 3);
        t::Mat<E, k, l, true> vec(n, n, count, wide ? Strides::Wide : Strides::Unit, 4);
        std::vector<E> buf(size_t(n * n), E(kUntouched)), out(size_t(n * count), E(kUntouched));
        src.fill([&](int kk, int i, int j) { return E(items[kk][i * n + j]); });
        vec.fill([](int, int, int) { return E(kUntouched); });
        const auto mid = [&] {
            if constexpr (V) return std::tuple_cat(std::make_tuple(buf.data()), vec.args(), std::make_tuple(out.data()));
            else return std::make_tuple(buf.data(), out.data());
        }();
        const auto sizes = [&] {
            if constexpr (t::arr(k)) return std::make_tuple(n, count);
            else return std::make_tuple(n);
        }();
        Result r{std::apply(fn, std::tuple_cat(src.args(), mid, sizes)), Dense(out.begin(), out.end()), {}};
        for (int kk = 0; kk < count; ++kk) {
            r.vecs.emplace_back(size_t(n * n), 0.0);
            for (int i = 0; V && i < n * n; ++i) r.vecs[kk][i] = vec(kk, i / n, i % n);
        }
        const auto untouched = [](const Dense& d) { return std::all_of(d.begin(), d.end(), [](double x) { return x == kUntouched; }); };
        r.outputsUntouched = untouched(r.vals) && (!V || std::all_of(r.vecs.begin(), r.vecs.end(), untouched));
        r.bufferUntouched = std::all_of(buf.begin(), buf.end(), [](E x) { return x == E(kUntouched); });
        return r;
    };
    return {name, sizeof(E) == 4, t::arr(k), V, l, run};
}

#define MEMBERS(E, ty, V, stem)                                                                                  \
    makeMember<E, K::m, L::Std, V>(#stem "_m_" #ty, &orlm##stem##_m_##ty),                                      \
        makeMember<E, K::m, L::P, V>(#stem "_m_" #ty "_P", &orlm##stem##_m_##ty##_P),                            \
        makeMember<E, K::ma, L::Std, V>(#stem "_ma_" #ty, &orlm##stem##_ma_##ty),                               \
        makeMember<E, K::ma, L::P, V>(#stem "_ma_" #ty "_P", &orlm##stem##_ma_##ty##_P),                         \
        makeMember<E, K::ma, L::L, V>(#stem "_ma_" #ty "_L", &orlm##stem##_ma_##ty##_L)

const std::vector<Member>& members()
{
    static const std::vector<Member> all = {MEMBERS(float, 32f, false, EigenValuesSym), MEMBERS(double, 64f, false, EigenValuesSym),
                                            MEMBERS(float, 32f, true, EigenValuesVectorsSym), MEMBERS(double, 64f, true, EigenValuesVectorsSym)};
    return all;
}

const Member& named(const std::string& name)
{
    return *std::find_if(members().begin(), members().end(), [&](const Member& m) { return m.name == name; });
}

Dense randomSymmetric(int n, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-1, 1);
    Dense a(size_t(n * n));
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) a[i * n + j] = a[j * n + i] = std::ldexp(std::round(u(rng) * 4096), -12);
    return a;
}

Dense diag(std::initializer_list<double> d)
{
    const int n = int(d.size());
    Dense a(size_t(n * n), 0.0);
    for (int i = 0; i < n; ++i) a[i * n + i] = d.begin()[i];
    return a;
}

// One member per distinct order (single: NZT0T1T2 or NZO0O1O2; arrays of
// values NZCT0 or NZCO0T0, of vectors NZCT0T1 or NZCO0O1T0T1), a pair of
// failing classes at a time; offsets and strides fail by a half element.
TEST(EigSym, ChecksInTheirOrderAndNothingWritten)
{
    t::CheckBuffers p;
    auto& [f, fo, g, go, tf, to, tg, tgo, perm] = p;
    float *fb = fo + 40, *fw = fo + 56;  // buffer and values, which must stay untouched too
    double *gb = go + 40, *gw = go + 56;
    t::expectChecks(p, {
        {"m: NULL values before order 0", [&] { return orlmEigenValuesVectorsSym_m_64f(g, 24, 8, gb, go, 24, 8, nullptr, 0); }, orlStatusNullPointer},
        {"m: NULL buffer", [&] { return orlmEigenValuesSym_m_32f(f, 12, 4, nullptr, fw, 3); }, orlStatusNullPointer},
        {"m: order 0 before stride2", [&] { return orlmEigenValuesVectorsSym_m_64f(g, 24, 4, gb, go, 24, 8, gw, 0); }, orlStatusSize},
        {"m: destination stride1 of 0", [&] { return orlmEigenValuesVectorsSym_m_64f(g, 24, 8, gb, go, 0, 8, gw, 3); }, orlStatusStride},
        {"m: source stride2 of 1.5 elements", [&] { return orlmEigenValuesSym_m_32f(f, 12, 6, fb, fw, 3); }, orlStatusStride},
        {"m _P: NULL vectors", [&] { return orlmEigenValuesVectorsSym_m_32f_P(tf, 0, fb, nullptr, 0, fw, 3); }, orlStatusNullPointer},
        {"m _P: order 0 before offset", [&] { return orlmEigenValuesVectorsSym_m_32f_P(tf, 2, fb, to, 0, fw, 0); }, orlStatusSize},
        {"m _P: destination offset", [&] { return orlmEigenValuesVectorsSym_m_32f_P(tf, 0, fb, to, 2, fw, 3); }, orlStatusOffset},
        {"ma: NULL source before count 0", [&] { return orlmEigenValuesSym_ma_32f(nullptr, 40, 12, 4, fb, fw, 3, 0); }, orlStatusNullPointer},
        {"ma: order 0 before count 0", [&] { return orlmEigenValuesSym_ma_32f(f, 40, 12, 4, fb, fw, 0, 0); }, orlStatusSize},
        {"ma: count 0 before stride0 of 0", [&] { return orlmEigenValuesSym_ma_32f(f, 0, 12, 4, fb, fw, 3, 0); }, orlStatusCount},
        {"ma: source stride0 of 0", [&] { return orlmEigenValuesVectorsSym_ma_64f(g, 0, 24, 8, gb, go, 80, 24, 8, gw, 3, 2); }, orlStatusStride},
        {"ma _P: count 0 before offset", [&] { return orlmEigenValuesSym_ma_64f_P(tg, -8, 80, gb, gw, 3, 0); }, orlStatusCount},
        {"ma _P: offset before stride0", [&] { return orlmEigenValuesSym_ma_64f_P(tg, -8, 0, gb, gw, 3, 2); }, orlStatusOffset},
        {"ma _L: offset before strides", [&] { return orlmEigenValuesSym_ma_32f_L(tf, 2, 0, 4, fb, fw, 3, 2); }, orlStatusOffset},
        {"ma vectors _P: destination offset before source stride0", [&] { return orlmEigenValuesVectorsSym_ma_64f_P(tg, 0, -8, gb, tgo, 4, 80, gw, 3, 2); }, orlStatusOffset},
        {"ma vectors _L: destination offset before source stride2", [&] { return orlmEigenValuesVectorsSym_ma_32f_L(tf, 0, 12, 2, fb, to, -4, 12, 4, fw, 3, 2); }, orlStatusOffset},
        {"ma vectors _L: destination stride1", [&] { return orlmEigenValuesVectorsSym_ma_32f_L(tf, 0, 12, 4, fb, to, 0, 6, 4, fw, 3, 2); }, orlStatusStride},
    });
}

// Orders 1 and 2 bit for bit against the closed forms in each kernel's
// precision: the named cases, then random matrices.
TEST(EigSym, OrdersOneAndTwoBitForBit)
{
    // (2, 1) with m vectors (-1, -0), (0, -1); s < -eps: (-2, -1), ascending on purpose, m and ma vector signs
    // differ; the 5 is not read; trace within eps: +-sqrt(5); D = 0 singular, nothing written; D = 2^-30
    // singular where the test uses 2^-23 only; 2b within eps, c = 0 in the array form.
    std::vector<Dense> cases = {{2, 0, 0, 1}, {-2, 0, 0, -1}, {1, 1, 5, 3}, {1, 2, 2, -1}, {1, 1, 1, 1}, {1, 0, 0, 0x1p-30}, {3, 0x1p-30, 0x1p-30, 3}};
    std::mt19937 rng(5);
    for (int x = 0; x < 40; ++x) cases.push_back(randomSymmetric(2, rng));
    for (const Member& m : members()) {
        for (const Dense& a : cases) {
            // Each kernel's precision and test bound, as the family states them.
            const double eps = m.f32 ? 0x1p-23 : 0x1p-52, test = m.f32 && m.array && !m.vectors ? 0x1p-52 : eps;
            const auto f = ref::symOrder2<float, true>(float(a[0]), float(a[1]), float(a[3]), float(eps), float(test), m.array);
            const ref::SymOrder2<double> r = !m.f32 || (m.array && m.vectors) ? ref::symOrder2<double, false>(a[0], a[1], a[3], eps, test, m.array)
                                                                              : ref::SymOrder2<double>{f.singular, f.l0, f.l1, {{f.q[0][0], f.q[0][1]}, {f.q[1][0], f.q[1][1]}}};
            const auto round = [&](double x) { return m.f32 ? double(float(x)) : x; };
            const Result got = m(2, {a});
            const std::string what = m.name + " on " + std::to_string(a[0]) + " " + std::to_string(a[1]) + " " + std::to_string(a[3]);
            ASSERT_EQ(got.st, r.singular ? orlStatusSingular : orlStatusOk) << what;
            if (r.singular) {
                EXPECT_TRUE(got.outputsUntouched) << what;
                continue;
            }
            EXPECT_TRUE(ref::sameBits(got.vals[0], round(r.l0)) && ref::sameBits(got.vals[1], round(r.l1))) << what;
            for (int i = 0; m.vectors && i < 4; ++i) EXPECT_TRUE(ref::sameBits(got.vecs[0][i], round(r.q[i / 2][i % 2]))) << what << " element " << i;
        }
        for (double x : {0.0, -2.5}) {  // order 1: the element and a unit vector
            const Result got = m(1, {{x}});
            EXPECT_TRUE(got.st == orlStatusOk && got.vals[0] == x && (!m.vectors || got.vecs[0][0] == 1.0)) << m.name;
        }
    }
}

// Largest first, unit orthogonal vectors, |A v - lambda v| small against the
// norm of A, and the values of LAPACK's dsyev where it is installed.
void expectEigenpairs(const Member& m, int n, const Dense& a, const Result& r, const std::string& what)
{
    const double tol = 64 * n * (m.f32 ? 0x1p-23 : 0x1p-52);
    double norm = 0;
    for (double x : a) norm = std::max(norm, std::fabs(x));
    for (int k = 0; k + 1 < n; ++k) EXPECT_GE(r.vals[k], r.vals[k + 1]) << what;
    const Dense& q = r.vecs[0];
    for (int k = 0; m.vectors && k < n; ++k)
        for (int c = 0; c < n; ++c) {
            double dot = 0, av = 0;
            for (int j = 0; j < n; ++j) dot += q[j * n + k] * q[j * n + c], av += a[c * n + j] * q[j * n + k];
            EXPECT_NEAR(dot, k == c ? 1.0 : 0.0, tol) << what << " columns " << k << ", " << c;
            EXPECT_NEAR(av, r.vals[k] * q[c * n + k], tol * norm) << what << " vector " << k;
        }
#ifdef HAVE_LAPACKE
    Dense w(n, 0.0), b = a;
    ASSERT_EQ(LAPACKE_dsyev(LAPACK_ROW_MAJOR, 'N', 'L', n, b.data(), n, w.data()), 0);
    for (int k = 0; k < n; ++k) EXPECT_NEAR(r.vals[k], w[n - 1 - k], tol * norm) << what << " value " << k;
#endif
}

// Q diag(d) Q' with Q a reflection I - 2uu'/u'u: repeated values stay repeated.
Dense withValues(const std::vector<double>& d, std::mt19937& rng)
{
    const int n = int(d.size());
    std::uniform_real_distribution<double> u(-1, 1);
    Dense v(n), a(n * n, 0.0);
    double vv = 0;
    for (double& x : v) x = u(rng), vv += x * x;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j)
            for (int k = 0; k < n; ++k) a[i * n + j] += ((i == k) - 2 * v[i] * v[k] / vv) * d[k] * ((j == k) - 2 * v[j] * v[k] / vv);
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
    for (const Dense& d : {Dense{2, 2, 2, -1}, {3, -1, 3, -1, 0.5}, {1, 1, 1, 1, 1, 1}, {4, 4, -2, -2, -2, 1, 1, 1, 7}})
        cases.push_back({int(d.size()), withValues(d, rng)});
    for (const Member& m : members())
        for (const auto& [n, a] : cases) {
            const Result r = m(n, {a});
            ASSERT_EQ(r.st, orlStatusOk) << m.name << " order " << n;
            expectEigenpairs(m, n, a, r, m.name + " order " + std::to_string(n));
        }
}

// Exact outcomes, nothing to reduce or to iterate; and the failure outputs.
TEST(EigSym, DiagonalCasesAndFailures)
{
    const double tiny = 0x1p-26;  // 0.5*|e| under 2^-23 in 32f, not under 2^-52
    const struct { const char* what; Dense a; orlStatus st; Dense vals, columns; } rows[] = {  // columns: each unit vector's index
        {"identity", diag({1, 1, 1}), orlStatusOk, {1, 1, 1}, {0, 1, 2}},
        {"diagonal sorted, first of equal values first", diag({2, 5, 2}), orlStatusOk, {5, 2, 2}, {1, 0, 2}},
        {"zero eigenvalue: unsorted", diag({1, 2, 0}), orlStatusSingular, {1, 2, 0}, {0, 1, 2}},
        {"off-diagonal under 2^-23 counts as diagonal", {4, tiny, 0, tiny, 2, 0, 0, 0, 3}, orlStatusOk, {4, 3, 2}, {0, 2, 1}},
    };
    for (const Member& m : members()) {
        for (const auto& r : rows) {
            if (!m.f32 && r.a[1] == tiny) continue;
            const Result got = m(3, {r.a});
            ASSERT_EQ(got.st, r.st) << m.name << ": " << r.what;
            EXPECT_EQ(got.vals, r.vals) << m.name << ": " << r.what;
            for (int i = 0; m.vectors && i < 9; ++i) EXPECT_EQ(std::fabs(got.vecs[0][i]), i / 3 == r.columns[i % 3] ? 1.0 : 0.0) << m.name << ": " << r.what;
        }
        // Sub-diagonal entries of 1 beside a diagonal of 4e19, whose rounding
        // unit is far larger, never get under the absolute threshold.
        EXPECT_EQ(m(3, {{4e19, -1, 0, -1, 4e19, -1, 0, -1, 4e19}}).st, orlStatusNoConvergence) << m.name;
        for (double bad : {NAN, INFINITY, -INFINITY})  // non-finite elements end, in a status
            for (Dense a : {Dense{1, bad, bad, 2}, {1, bad, 0, bad, 2, 0, 0, 0, 3}}) {
                const orlStatus st = m(a.size() == 4 ? 2 : 3, {a}).st;
                EXPECT_TRUE(st == orlStatusOk || st == orlStatusNoConvergence || st == orlStatusSingular) << m.name;
            }
    }
}

// Departures of single kernels from their family's steps: a bound of 2^-23 for
// the product, and two kernels whose rounding or shift differ (both right).
TEST(EigSym, KernelDepartures)
{
    const auto run = [](const char* name, const Dense& a, bool wide) {
        const Result r = named(name)(3, {a}, wide);
        if (r.st == orlStatusOk) expectEigenpairs(named(name), 3, a, r, name);
        return r;
    };
    const Dense small = diag({1e-4, 1e-4, 1});  // eigenvalue product 1e-8
    EXPECT_EQ(run("EigenValuesVectorsSym_ma_64f", small, false).st, orlStatusSingular);
    EXPECT_EQ(run("EigenValuesVectorsSym_ma_64f_P", small, true).st, orlStatusSingular);
    EXPECT_EQ(run("EigenValuesVectorsSym_m_64f", small, false).st, orlStatusOk);
    EXPECT_EQ(run("EigenValuesSym_ma_64f", small, false).st, orlStatusOk);
    // The kernel without the departure gives the bits of the plain member.
    const struct { const char* member; Dense a; const char* plain; bool wideDeparts; } pairs[] = {
        {"EigenValuesVectorsSym_ma_32f_L", {1, 0x1p-30, 1, 0x1p-30, 2, 0, 1, 0, 3}, "EigenValuesVectorsSym_ma_32f", false},  // alpha 2^-30 positive only in 32f _L
        {"EigenValuesVectorsSym_m_32f", {1, 1, 0, 1, 1 + 0x1p-22, 1, 0, 1, 5}, "EigenValuesVectorsSym_m_32f_P", true},       // shift g = 2^-23 positive only in _S2
    };
    for (const auto& p : pairs) {
        const Result unit = run(p.member, p.a, false), wide = run(p.member, p.a, true), plain = named(p.plain)(3, {p.a});
        ASSERT_TRUE(unit.st == orlStatusOk && wide.st == orlStatusOk) << p.member;
        EXPECT_FALSE(unit.vals == wide.vals && unit.vecs == wide.vecs) << p.member << ": unit and any stride2 give the same bits";
        const Result& same = p.wideDeparts ? unit : wide;
        EXPECT_TRUE(same.vals == plain.vals && same.vecs == plain.vecs) << p.member << " against " << p.plain;
    }
}

// Every layout and stride gives the bits of the plain layout (the value
// family's single and array members too): the kernels follow the same steps.
TEST(EigSym, LayoutsAndStridesGiveThePlainBits)
{
    std::mt19937 rng(8);
    for (int n = 1; n <= 7; ++n) {
        const std::vector<Dense> items = {randomSymmetric(n, rng), randomSymmetric(n, rng), randomSymmetric(n, rng)};
        for (const Member& m : members())
            for (bool wide : {false, true}) {
                if (wide && m.lay == L::P) continue;
                const std::string base = std::string(m.vectors ? "EigenValuesVectorsSym_" : "EigenValuesSym_") + (m.array || !m.vectors ? "ma_" : "m_") + (m.f32 ? "32f" : "64f");
                const std::vector<Dense> use(items.begin(), items.begin() + (m.array ? 3 : 1));
                const Result got = m(n, use, wide), want = named(base)(n, use);
                ASSERT_EQ(got.st, orlStatusOk) << m.name;
                EXPECT_TRUE(got.vals == want.vals && got.vecs == want.vecs) << m.name << (wide ? " wide" : "") << " against " << base << " order " << n;
            }
    }
}

// An array stops at its first failing matrix (in parallel, that thread's run
// does); complete outputs equal a call on the matrix alone; the parallel route
// leaves the buffer alone, and with fewer matrices than threads stays serial.
TEST(EigSym, ArraysRoutesAndThreads)
{
    // failing < 0: none (the failing matrix is of order 3); regions the call opens; untouched items [stopsAt, resumesAt).
    const struct { const char* member; int n, count, threads, failing, regions, stopsAt, resumesAt; } rows[] = {
        {"EigenValuesVectorsSym_ma_64f", 3, 5, 1, 2, 0, 3, 5},
        {"EigenValuesSym_ma_32f_L", 3, 5, 4, 2, 0, 3, 5},             // work 60: under the limit
        {"EigenValuesVectorsSym_ma_64f", 3, 100, 2, 10, 1, 11, 50},   // work 2100 > 1700
        {"EigenValuesVectorsSym_ma_32f_P", 3, 100, 3, 40, 1, 41, 67},
        {"EigenValuesSym_ma_32f", 3, 1700, 2, 10, 1, 11, 850},        // work 20400 > 20000
        {"EigenValuesSym_ma_64f_L", 4, 1001, 4, -1, 1, 0, 0},         // work 20020
        {"EigenValuesVectorsSym_ma_32f", 20, 3, 4, -1, 0, 0, 0},      // over the limit, count < threads
    };
    for (const auto& r : rows) {
        const Member& m = named(r.member);
        std::mt19937 rng(r.count);
        std::vector<Dense> items;
        for (int k = 0; k < r.count; ++k) items.push_back(k == r.failing ? diag({1, 2, 0}) : randomSymmetric(r.n, rng));
        t::Threads th(r.threads);
        probe::reset();
        const Result got = m(r.n, items);
        EXPECT_EQ(probe::regions().count, r.regions) << r.member;
        EXPECT_EQ(got.st, r.failing >= 0 ? orlStatusSingular : orlStatusOk) << r.member;
        EXPECT_EQ(got.bufferUntouched, r.regions == 1) << r.member;
        for (int k = 0; k < r.count; ++k) {
            const Dense vals(got.vals.begin() + k * r.n, got.vals.begin() + (k + 1) * r.n);
            if (k >= r.stopsAt && k < r.resumesAt) {
                EXPECT_EQ(vals, Dense(size_t(r.n), kUntouched)) << r.member << " item " << k;
                continue;
            }
            const Result alone = m(r.n, {items[k]});
            EXPECT_TRUE(vals == alone.vals && got.vecs[k] == alone.vecs[0]) << r.member << " item " << k;
        }
    }
}

}  // namespace
