// Matrix inverse: each closed form bit for bit (the adjugate with its tests and
// reciprocals, the 32f block methods with their ties), the elimination of
// orders 2 and 7 up by property and on exact cases, order 1, the tolerances,
// failures, arrays on both routes, in-place use and the argument checks.
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

using ref::Sense;
using t::K;
using t::L;
using t::Strides;

namespace {

constexpr double kUntouched = -777.25;
using Item = std::vector<double>;
using Outcome = std::pair<orlStatus, std::vector<Item>>;

struct Member {
    std::string name;
    bool f32, array;
    L lay;
    std::function<Outcome(int n, const std::vector<Item>&, Strides, bool inPlace)> run;
    double round(double v) const { return f32 ? double(float(v)) : v; }
    double next(double v, double to) const { return f32 ? double(std::nextafter(float(v), float(to))) : std::nextafter(v, to); }
};

template <class E, K kind, L lay, class Fn>
Member member(const char* name, Fn fn)
{
    return {name, sizeof(E) == 4, t::arr(kind), lay, [fn](int n, const std::vector<Item>& items, Strides st, bool inPlace) {
                std::vector<E> buffer(n * (n + 1));
                return t::runSquare<E, kind, lay>(fn, n, items, st, inPlace, buffer.data(), kUntouched);
            }};
}

std::vector<Member> members()
{
#define M(E, kind, lay, fn) member<E, K::kind, L::lay>(#fn, fn)
    return {M(float, m, Std, orlmInvert_m_32f),   M(float, m, P, orlmInvert_m_32f_P),   M(double, m, Std, orlmInvert_m_64f),
            M(double, m, P, orlmInvert_m_64f_P),  M(float, ma, Std, orlmInvert_ma_32f), M(float, ma, P, orlmInvert_ma_32f_P),
            M(float, ma, L, orlmInvert_ma_32f_L), M(double, ma, Std, orlmInvert_ma_64f), M(double, ma, P, orlmInvert_ma_64f_P),
            M(double, ma, L, orlmInvert_ma_64f_L)};
#undef M
}

// The rule a member runs at order n: the test, the reciprocal and the
// tolerance in units of the smallest normal (block: the 32f block method);
// outside 3 to 6 the elimination's test of the determinant.
struct Row {
    Sense sense;
    bool estimate, block;
    int units;
};

Row rowOf(const Member& m, int n, Strides st)
{
    const int rule = 2 * n * n * n;
    if (n < 3 || n > 6) return {Sense::TolAtLeast, false, false, rule};
    if (m.lay != L::P && st == Strides::Unit) {  // the plain kernels
        if (m.f32) return {n <= 4 ? Sense::TolAbove : Sense::NotAtLeast, true, n >= 5, rule};
        const int units[] = {108, 256, 250, 432};
        return {n == 3 ? Sense::TolAbove : Sense::NotAtLeast, false, false, units[n - 3]};
    }
    return {m.array ? Sense::TolAbove : Sense::NotAtLeast, false, false, rule};
}

// The expected inverse of a closed-form item; empty when it is singular.
template <class E>
Item closedForm(const Row& r, const Item& src, int n)
{
    const ref::Sq<E> a(src.begin(), src.end());
    ref::Sq<E> inv;
    bool ok = false;
    if constexpr (sizeof(E) == 4) ok = r.block && ref::blockInverse(a, n, ref::tolerance<E>(r.units), inv);
    if (!r.block) ok = ref::adjugateInverse(a, n, r.sense, r.estimate, ref::tolerance<E>(r.units), inv);
    return ok ? Item(inv.begin(), inv.end()) : Item();
}

Item closedForm(const Member& m, const Item& a, int n, Strides st)
{
    return m.f32 ? closedForm<float>(rowOf(m, n, st), a, n) : closedForm<double>(rowOf(m, n, st), a, n);
}

void expectBits(const Item& got, const Item& want, const std::string& what)
{
    ASSERT_EQ(got.size(), want.size()) << what;
    for (size_t x = 0; x < want.size(); ++x)
        ASSERT_TRUE(ref::sameBits(got[x], want[x]) || (std::isnan(got[x]) && std::isnan(want[x])))
            << what << " element " << x << ": " << got[x] << " vs " << want[x];
}

// Bits where a closed form applies, else A * inv = I to a few units.
void expectValue(const Member& m, const Item& a, const Item& inv, int n, Strides st, const std::string& what)
{
    if (n >= 3 && n <= 6) return expectBits(inv, closedForm(m, a, n, st), what);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            const double s = ref::sumElem<double>(n, [&](int k) { return a[i * n + k] * inv[k * n + j]; });
            ASSERT_NEAR(s, i == j ? 1.0 : 0.0, (m.f32 ? 1e-5 : 1e-13) * n) << what << " (" << i << "," << j << ")";
        }
}

// Random matrices with a heavy diagonal, well conditioned. With `tie` 1 (0), row 0 is small
// but for 3 and -3 in columns 1 and 3 (0 and 4): the 32f block methods take column 3 (0).
Item random(const Member& m, int n, std::mt19937& rng, int tie = -1)
{
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    Item a(n * n);
    for (int x = 0; x < n * n; ++x) a[x] = m.round((u(rng) + (x % (n + 1) == 0 ? 2.0 * n : 0.0)) / (x < n && tie >= 0 ? 8 : 1));
    if (tie >= 0) a[tie ? 1 : 0] = 3, a[tie ? 3 : 4] = -3;
    return a;
}

std::string tag(const Member& m, int n, Strides st) { return m.name + " n=" + std::to_string(n) + (st == Strides::Wide ? " wide" : ""); }

// ---- values and rules ------------------------------------------------------

TEST(InvertValues, EveryMemberOrderAndStride)
{
    std::mt19937 rng(1);
    for (const Member& m : members())
        for (int n : {2, 3, 4, 5, 6, 7, 8})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                std::vector<Item> items;
                for (int k = 0; k < (m.array ? 3 : 1); ++k) items.push_back(random(m, n, rng, n == 5 || n == 6 ? 1 - k % 2 : -1));
                const Outcome o = m.run(n, items, st, false);
                ASSERT_EQ(o.first, orlStatusOk) << tag(m, n, st);
                for (int k = 0; k < int(items.size()); ++k) expectValue(m, items[k], o.second[k], n, st, tag(m, n, st));
                // The closed forms read everything first: dst may be src.
                if (n >= 3 && n <= 6) expectBits(m.run(n, items, st, true).second[0], closedForm(m, items[0], n, st), tag(m, n, st) + " in place");
            }
}

// D at, just below and just above the tolerance, and NaN: diag(1, .., 1, d)
// has determinant d, which the block methods also test last and the
// elimination of orders 2 and 7 tests with T(n) >= |D| (there zero cofactors
// give +-T(n)/d: only the last element is 1/d).
TEST(InvertRules, TolerancesAndTheirSense)
{
    for (const Member& m : members())
        for (int n : {2, 3, 4, 5, 6, 7})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                const Row r = rowOf(m, n, st);
                const double tol = m.f32 ? double(ref::tolerance<float>(r.units)) : ref::tolerance<double>(r.units);
                for (double d : {tol, m.next(tol, 0), m.next(tol, 1), double(NAN)}) {
                    Item diag(n * n, 0.0);
                    for (int i = 0; i < n; ++i) diag[i * n + i] = i == n - 1 ? d : 1.0;
                    const Outcome o = m.run(n, {diag}, st, false);
                    const bool fails = m.f32 ? ref::singularBy(r.sense, float(d), float(tol)) : ref::singularBy(r.sense, d, tol);
                    EXPECT_EQ(o.first, fails ? orlStatusSingular : orlStatusOk) << tag(m, n, st) << " d=" << d;
                    if (!fails && n >= 3 && n <= 6) expectBits(o.second[0], closedForm(m, diag, n, st), tag(m, n, st));
                    else if (!fails && d == d) EXPECT_EQ(o.second[0][n * n - 1], m.round(1.0 / d)) << tag(m, n, st);
                }
            }
}

// Exact results of the elimination at order 2, and order 1 in the entry:
// the single forms need |x| > T(1), the arrays fail on T(1) >= |x|.
TEST(InvertRules, ExactCasesOfTheEliminationAndOrderOne)
{
    for (const Member& m : members()) {
        const double q = m.round(1.0 / 6.0), off = m.round(-m.round(m.f32 ? ref::orderTol<float>(2) : ref::orderTol<double>(2)) * q);
        const std::tuple<const char*, Item, orlStatus, Item> cases[] = {
            {"diag(2, 3): a zero cofactor gives -T(2)/6", {2, 0, 0, 3}, orlStatusOk, {m.round(3 * q), off, off, m.round(2 * q)}},
            {"first pivot 0", {0, 0, 0, 1}, orlStatusSingular, Item(4, kUntouched)},
            {"a NaN determinant passes", {1, 0, 0, NAN}, orlStatusOk, Item(4, NAN)},
        };
        for (const auto& [what, a, st, want] : cases) {
            const Outcome o = m.run(2, {a}, Strides::Unit, false);
            EXPECT_EQ(o.first, st) << m.name << ": " << what;
            expectBits(o.second[0], want, m.name + ": " + what);
        }
        EXPECT_EQ(m.run(1, {{m.f32 ? ref::orderTol<float>(1) : ref::orderTol<double>(1)}}, Strides::Unit, false).first, orlStatusSingular) << m.name;
        EXPECT_EQ(m.run(1, {{NAN}}, Strides::Unit, false).first, m.array ? orlStatusOk : orlStatusSingular) << m.name;
        EXPECT_EQ(m.run(1, {{-4}}, Strides::Wide, false).second[0][0], -0.25) << m.name;
    }
}

// ---- failures, arrays and route --------------------------------------------

// Each run of items (the array, or each thread's slice on the driver) stops
// at its first failing item: a failing 32f plain block method leaves the rows
// it works in (row 0, and 1 at order 6), the items after it stay untouched.
// Cost 2*n*count; the driver is taken above 20000 (40000: 32f _L unit).
TEST(InvertArrays, RunsStopAtTheirFirstFailureOnBothRoutes)
{
    struct Run {
        int n, count, threads;
        std::vector<int> failing;
    };
    const Run runs[] = {{2, 5, 1, {2, 3}}, {3, 5, 1, {2, 3}}, {5, 5, 1, {2, 3}}, {6, 5, 1, {2, 3}}, {7, 5, 1, {2, 3}},
                        {4, 2500, 3, {}},  {4, 2501, 3, {5, 1700}}, {2, 10001, 2, {5}}};
    std::mt19937 rng(4);
    for (const Member& m : members())
        for (Strides st : {Strides::Unit, Strides::Wide})
            for (Run r : runs) {
                if ((!m.array || st == Strides::Wide) && r.threads > 1) continue;
                if (!m.array) r.count = 1, r.failing = {0};
                const int n = r.n;
                std::vector<Item> items;
                for (int k = 0; k < r.count; ++k) items.push_back(random(m, n, rng));
                for (int k : r.failing) std::fill(items[k].end() - n, items[k].end(), 0.0);  // last row zero
                t::Threads th(r.threads);
                probe::reset();
                const Outcome o = m.run(n, items, st, false);
                const bool parallel = r.threads > 1 && 2 * n * r.count > (m.f32 && m.lay == L::L ? 40000 : 20000);
                EXPECT_EQ(probe::regions().count, parallel ? 1 : 0) << tag(m, n, st);
                EXPECT_EQ(o.first, r.failing.empty() ? orlStatusOk : orlStatusSingular) << tag(m, n, st);
                const int T = parallel ? r.threads : 1, written = rowOf(m, n, st).block ? n - 4 : 0;
                for (int i = 0, first = 0, end; i < T; first = end, ++i) {
                    end = first + r.count / T + (i < r.count % T);
                    for (int k = first, stopped = 0; k < end; ++k) {
                        const bool fails = std::find(r.failing.begin(), r.failing.end(), k) != r.failing.end();
                        if (stopped || fails)
                            for (int x = 0; x < n * n; ++x)
                                ASSERT_EQ(o.second[k][x], !stopped && x / n < written ? items[k][x] : kUntouched) << tag(m, n, st) << " item " << k;
                        else if (k % 7 == 0 || r.count < 10)
                            expectValue(m, items[k], o.second[k], n, st, tag(m, n, st) + " item " + std::to_string(k));
                        stopped = stopped || fails;
                    }
                }
            }
}

TEST(InvertChecks, ClassesInOrderAndNothingWritten)
{
    t::CheckBuffers b;  // the scratch (b.fo + 32, b.go + 32) lies in the results: a failing call writes nothing there either
    const std::tuple<const char*, const char*, std::function<orlStatus()>> cases[] = {
        {"NZT", "N", [&] { return orlmInvert_m_32f(b.f, 12, 4, nullptr, b.fo, 12, 4, 1); }},
        {"NCZT", "NC", [&] { return orlmInvert_ma_64f(b.g, 72, 24, 8, b.go + 32, nullptr, 72, 24, 8, 3, 0); }},
        {"NCZTO", "CZO", [&] { return orlmInvert_ma_32f_L(b.tf, -4, 12, 4, b.fo + 32, b.to, 0, 12, 4, 0, 0); }},
        {"NZO", "ZO", [&] { return orlmInvert_m_32f_P(b.tf, 2, b.fo + 32, b.to, 0, 0); }},
        {"NZT", "T", [&] { return orlmInvert_m_64f(b.g, 24, 8, b.go + 32, b.go, 12, 8, 3); }},
        {"NCZTO", "TO", [&] { return orlmInvert_ma_64f_P(b.tg, 4, -8, b.go + 32, b.tgo, 0, 72, 3, 1); }},
        {"NCZTO", "O", [&] { return orlmInvert_ma_32f_L(b.tf, 2, 12, 4, b.fo + 32, b.to, 0, 12, 4, 3, 1); }},
    };
    for (const auto& [order, failing, call] : cases) {
        EXPECT_EQ(call(), ref::expectedStatus(order, failing)) << order << " failing " << failing;
        EXPECT_TRUE(b.untouched()) << order << " failing " << failing;
    }
}

}  // namespace
