// Symmetric eigensolver: the order of the checks in every layout, the closed
// forms of orders 1 and 2 bit for bit, sorted values with orthonormal vectors
// and small residuals from order 3 on, the kernels' departures, the failure
// outputs, arrays that stop on both routes, the same bits in every layout.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
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

// Arguments that a check case spoils; kKeep leaves one as the operand has it.
constexpr std::ptrdiff_t kKeep = 1 << 30;
struct Spoil {
    bool nullSrc = false, nullBuf = false, nullVals = false, nullVec = false, wide = false;  // wide: stride2 of 3 elements
    int n = 0, count = 0;  // 0 keeps the case's own
    std::ptrdiff_t srcS0 = kKeep, srcS1 = kKeep, srcS2 = kKeep, srcOff = kKeep, vecS1 = kKeep, vecS2 = kKeep, vecOff = kKeep;
};

// What a call left: status, values and vectors read back through the layout,
// and whether the outputs and the buffer still hold kUntouched.
struct Result {
    orlStatus st;
    Dense vals;
    std::vector<Dense> vecs;
    bool outputsUntouched = true, bufferUntouched = true;
};

struct Member {
    std::string name;
    bool f32, array, vectors;
    L lay;
    std::function<Result(int n, const std::vector<Dense>& items, const Spoil&)> run;
    Result operator()(int n, const std::vector<Dense>& items, const Spoil& sp = {}) const { return run(n, items, sp); }
};

template <class E, K k, L l, bool V, class Fn>
Member makeMember(const char* name, Fn fn)
{
    const auto run = [fn](int n, const std::vector<Dense>& items, const Spoil& sp) {
        const int count = int(items.size());
        const Strides st = sp.wide ? Strides::Wide : Strides::Unit;
        t::Mat<E, k, l> src(n, n, count, st, 3);
        t::Mat<E, k, l, true> vec(n, n, count, st, 4);
        std::vector<E> buf(size_t(n * n), E(kUntouched)), out(size_t(n * count), E(kUntouched));
        src.fill([&](int kk, int i, int j) { return E(items[kk][i * n + j]); });
        vec.fill([](int, int, int) { return E(kUntouched); });
        // The call sees the spoiled strides and offsets; the outputs are read with the operands' own.
        const auto kept = std::make_tuple(src.s0, src.s1, src.s2, src.off, vec.s1, vec.s2, vec.off);
        const auto set = [](std::ptrdiff_t& f, std::ptrdiff_t v) { f = v == kKeep ? f : v; };
        set(src.s0, sp.srcS0), set(src.s1, sp.srcS1), set(src.s2, sp.srcS2), set(src.off, sp.srcOff);
        set(vec.s1, sp.vecS1), set(vec.s2, sp.vecS2), set(vec.off, sp.vecOff);
        auto sa = src.args();
        auto va = vec.args();
        std::tie(src.s0, src.s1, src.s2, src.off, vec.s1, vec.s2, vec.off) = kept;
        if (sp.nullSrc) std::get<0>(sa) = nullptr;
        if (sp.nullVec) std::get<0>(va) = nullptr;
        E* const b = sp.nullBuf ? nullptr : buf.data();
        E* const w = sp.nullVals ? nullptr : out.data();
        const auto mid = [&] {
            if constexpr (V) return std::tuple_cat(std::make_tuple(b), va, std::make_tuple(w));
            else return std::make_tuple(b, w);
        }();
        const auto sizes = [&] {
            if constexpr (t::arr(k)) return std::make_tuple(sp.n ? sp.n : n, sp.count ? sp.count : count);
            else return std::make_tuple(sp.n ? sp.n : n);
        }();
        Result r{std::apply(fn, std::tuple_cat(sa, mid, sizes)), Dense(out.begin(), out.end()), {}};
        for (int kk = 0; kk < count; ++kk) {
            r.vecs.emplace_back(size_t(n * n), 0.0);
            for (int i = 0; V && i < n * n; ++i) r.vecs[kk][i] = vec(kk, i / n, i % n);
        }
        for (const Dense& d : r.vecs)
            r.outputsUntouched = r.outputsUntouched && std::all_of(d.begin(), d.end(), [](double x) { return !V || x == kUntouched; });
        r.outputsUntouched = r.outputsUntouched && std::all_of(r.vals.begin(), r.vals.end(), [](double x) { return x == kUntouched; });
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

// Stride and offset values that fail: not a multiple of the element size,
// zero, negative (E/2 fails in both types). Every member, against its order.
TEST(EigSym, ChecksInTheirOrderAndNothingWritten)
{
    using Applies = bool (*)(const Member&);
    const Applies any = [](const Member&) { return true; }, vectors = [](const Member& m) { return m.vectors; };
    const Applies notStd = [](const Member& m) { return m.lay != L::Std; }, vectorsNotStd = [](const Member& m) { return m.vectors && m.lay != L::Std; };
    const struct { const char* what; Applies applies; std::function<Spoil(std::ptrdiff_t E)> spoil; orlStatus st; } rows[] = {
        {"NULL src before order 0 and count 0", any, [](auto) { return Spoil{.nullSrc = true, .n = -1, .count = -1}; }, orlStatusNullPointer},
        {"NULL buffer", any, [](auto) { return Spoil{.nullBuf = true}; }, orlStatusNullPointer},
        {"NULL values", any, [](auto) { return Spoil{.nullVals = true}; }, orlStatusNullPointer},
        {"NULL vectors", vectors, [](auto) { return Spoil{.nullVec = true}; }, orlStatusNullPointer},
        {"order 0 before count 0 and bad strides", any, [](auto E) { return Spoil{.n = -1, .count = -1, .srcS0 = E / 2, .srcS1 = E / 2, .srcS2 = E / 2, .srcOff = -E}; }, orlStatusSize},
        {"count 0 before bad strides and offsets", [](const Member& m) { return m.array; },
         [](auto E) { return Spoil{.count = -1, .srcS0 = 0, .srcS1 = 0, .srcS2 = 0, .srcOff = E / 2, .vecS2 = 0, .vecOff = E / 2}; }, orlStatusCount},
        {"source stride2 of 1.5 elements", [](const Member& m) { return m.lay == L::Std; }, [](auto E) { return Spoil{.srcS2 = E + E / 2}; }, orlStatusStride},
        {"destination stride1 of 0", [](const Member& m) { return m.vectors && m.lay == L::Std; }, [](auto) { return Spoil{.vecS1 = 0}; }, orlStatusStride},
        {"source stride0 of 0", [](const Member& m) { return m.array && m.lay != L::L; }, [](auto) { return Spoil{.srcS0 = 0}; }, orlStatusStride},
        {"source offset -4", notStd, [](auto) { return Spoil{.srcOff = -4}; }, orlStatusOffset},
        {"destination offset E/2", vectorsNotStd, [](auto E) { return Spoil{.vecOff = E / 2}; }, orlStatusOffset},
        {"_P arrays: source offset before source stride0", [](const Member& m) { return m.array && m.lay == L::P; },
         [](auto) { return Spoil{.srcS0 = 0, .srcOff = -4}; }, orlStatusOffset},
        {"_P vector arrays: destination offset before source stride0", [](const Member& m) { return m.vectors && m.array && m.lay == L::P; },
         [](auto) { return Spoil{.srcS0 = -8, .vecOff = 2}; }, orlStatusOffset},
        {"_L: source offset before source strides", [](const Member& m) { return m.lay == L::L; }, [](auto) { return Spoil{.srcS1 = 0, .srcOff = -8}; }, orlStatusOffset},
        {"_L vectors: destination offset before source stride2", [](const Member& m) { return m.vectors && m.lay == L::L; },
         [](auto E) { return Spoil{.srcS2 = E / 2, .vecOff = -E}; }, orlStatusOffset},
        {"single _P: no strides to test", [](const Member& m) { return !m.array && m.lay == L::P; },
         [](auto) { return Spoil{.srcS0 = 0, .srcS1 = 0, .srcS2 = 0, .vecS2 = 0}; }, orlStatusOk},
        {"offset 0 passes", notStd, [](auto) { return Spoil{.srcOff = 0, .vecOff = 0}; }, orlStatusOk},
    };
    std::mt19937 rng(11);
    const std::vector<Dense> items = {randomSymmetric(3, rng), randomSymmetric(3, rng)};
    for (const Member& m : members())
        for (const auto& r : rows) {
            if (!r.applies(m)) continue;
            const Result got = m(3, {items.begin(), items.begin() + (m.array ? 2 : 1)}, r.spoil(m.f32 ? 4 : 8));
            EXPECT_EQ(got.st, r.st) << m.name << ": " << r.what;
            if (r.st != orlStatusOk) EXPECT_TRUE(got.outputsUntouched && got.bufferUntouched) << m.name << ": " << r.what;
        }
}

// Orders 1 and 2 bit for bit against the closed forms in each kernel's
// precision: the named cases, then random matrices.
TEST(EigSym, OrdersOneAndTwoBitForBit)
{
    std::vector<Dense> cases = {
        {2, 0, 0, 1},              // values (2, 1); m vectors (-1, -0), (0, -1)
        {-2, 0, 0, -1},            // s < -eps: (-2, -1), ascending on purpose; m and ma vector signs differ
        {1, 1, 5, 3},              // the 5 is not read: [[1, 1], [1, 3]]
        {1, 2, 2, -1},             // trace within eps: +-sqrt(5)
        {1, 1, 1, 1},              // D = 0: singular, nothing written
        {1, 0, 0, 0x1p-30},        // D = 2^-30: singular where the test uses 2^-23 only
        {3, 0x1p-30, 0x1p-30, 3},  // 2b within eps, c = 0 in the array form
    };
    std::mt19937 rng(5);
    for (int x = 0; x < 40; ++x) cases.push_back(randomSymmetric(2, rng));
    for (const Member& m : members()) {
        for (const Dense& a : cases) {
            // Each kernel's precision and test bound, as the family states them.
            const double eps = m.f32 ? 0x1p-23 : 0x1p-52, test = m.f32 && m.array && !m.vectors ? 0x1p-52 : eps;
            ref::SymOrder2<double> r;
            if (!m.f32 || (m.array && m.vectors)) {
                r = ref::symOrder2<double, false>(a[0], a[1], a[3], eps, test, m.array);
            } else {
                const auto f = ref::symOrder2<float, true>(float(a[0]), float(a[1]), float(a[3]), float(eps), float(test), m.array);
                r = {f.singular, f.l0, f.l1, {{f.q[0][0], f.q[0][1]}, {f.q[1][0], f.q[1][1]}}};
            }
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
            for (int n : {2, 3, 5}) {
                Dense a = diag({1, 2, 3, 4, 5});
                a.resize(size_t(n * n));
                a[1] = a[n] = bad;
                const orlStatus st = m(n, {a}).st;
                EXPECT_TRUE(st == orlStatusOk || st == orlStatusNoConvergence || st == orlStatusSingular) << m.name;
            }
    }
}

// Departures of single kernels from their family's common steps: a bound of
// 2^-23 for the product, and two kernels whose rounding or shift differs from
// their neighbours' (different bits, both right).
TEST(EigSym, KernelDepartures)
{
    const auto run = [](const char* name, const Dense& a, bool wide) {
        const Result r = named(name)(3, {a}, Spoil{.wide = wide});
        if (r.st == orlStatusOk) expectEigenpairs(named(name), 3, a, r, name);
        return r;
    };
    const Dense small = diag({1e-4, 1e-4, 1});  // eigenvalue product 1e-8
    EXPECT_EQ(run("EigenValuesVectorsSym_ma_64f", small, false).st, orlStatusSingular);
    EXPECT_EQ(run("EigenValuesVectorsSym_ma_64f_P", small, true).st, orlStatusSingular);
    EXPECT_EQ(run("EigenValuesVectorsSym_m_64f", small, false).st, orlStatusOk);
    EXPECT_EQ(run("EigenValuesSym_ma_64f", small, false).st, orlStatusOk);
    const struct { const char* member; Dense a; } pairs[] = {
        // alpha = 2^-30 is above 2^-52 but not above eps: only the 32f _L
        // kernel takes it as positive in the reduction.
        {"EigenValuesVectorsSym_ma_32f_L", {1, 0x1p-30, 1, 0x1p-30, 2, 0, 1, 0, 3}},
        // Top-down sweep with a shift g of exactly 2^-23: the 32f _S2 kernel
        // takes it as positive, the others not.
        {"EigenValuesVectorsSym_m_32f", {1, 1, 0, 1, 1 + 0x1p-22, 1, 0, 1, 5}},
    };
    for (const auto& p : pairs) {
        const Result unit = run(p.member, p.a, false), wide = run(p.member, p.a, true);
        ASSERT_TRUE(unit.st == orlStatusOk && wide.st == orlStatusOk) << p.member;
        EXPECT_FALSE(unit.vals == wide.vals && unit.vecs == wide.vecs) << p.member << ": unit and any stride2 give the same bits";
    }
}

// Within a family, type and shape the kernels follow the same steps, so every
// layout and stride gives the bits of the plain layout; the value family's
// single and array members too.
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
                const Result got = m(n, use, Spoil{.wide = wide}), want = named(base)(n, use);
                ASSERT_EQ(got.st, orlStatusOk) << m.name;
                EXPECT_TRUE(got.vals == want.vals && got.vecs == want.vecs) << m.name << (wide ? " wide" : "") << " against " << base << " order " << n;
            }
    }
}

// An array stops at its first failing matrix: on the direct route the later
// ones stay untouched, on the parallel route only the rest of that thread's
// run does. Complete outputs equal a call on the matrix alone; the parallel
// route leaves the caller's buffer alone, and with fewer matrices than
// threads the call stays serial.
TEST(EigSym, ArraysRoutesAndThreads)
{
    const struct {
        const char* member;
        int n, count, threads, failing;  // failing < 0: none; the failing matrix is of order 3
        int regions;                     // parallel regions the call opens
        int stopsAt, resumesAt;          // untouched items: [stopsAt, resumesAt)
    } rows[] = {
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
