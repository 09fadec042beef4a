// LU decomposition: values and pivots of both paths in every member, layout
// and stride case (also in place); the tolerances and their sense, the order
// of exchange and test, ties and the final test as settled cases; what stands
// after a failure; arrays that stop at the first failing item, serially and
// per slice, and the limits; the argument checks.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "reference.h"

using t::K;
using t::L;
using t::Strides;

namespace {

constexpr double kUntouched = -777.25;  // dst before the call; exact in both types
constexpr std::int32_t kNoPerm = -9;

using Item = std::vector<double>;  // one n-by-n matrix, physical row-major
using Perm = std::vector<std::int32_t>;

struct Outcome {
    orlStatus st;
    std::vector<Item> dst;
    Perm perm;
};

// Every member through one interface: runs it on `items` (count =
// items.size()), optionally with dst the same memory as src.
struct Member {
    std::string name;
    bool f32, array;
    L lay;
    std::function<Outcome(int n, const std::vector<Item>& items, Strides st, bool inPlace)> run;

    ref::LU expect(int n, const Item& a) const
    {
        return f32 ? ref::luDecomp<float>(n, a, lay == L::P, kUntouched) : ref::luDecomp<double>(n, a, lay == L::P, kUntouched);
    }
    double round(double v) const { return f32 ? double(float(v)) : v; }
};

template <class E, K kind, L lay, class Fn>
Outcome runMember(Fn fn, int n, const std::vector<Item>& items, Strides st, bool inPlace)
{
    const int count = int(items.size());
    t::Mat<E, kind, lay> src(n, n, count, st, 11);
    t::Mat<E, kind, lay, true> dst(n, n, count, st, 12);
    src.fill([&](int k, int i, int j) { return E(items[k][i * n + j]); });
    dst.fill([&](int k, int i, int j) { return inPlace ? E(items[k][i * n + j]) : E(kUntouched); });
    Outcome o{orlStatusOk, {}, Perm(size_t(n) * count, kNoPerm)};
    const auto invoke = [&](auto srcArgs) {
        const auto groups = std::tuple_cat(srcArgs, std::make_tuple(o.perm.data()), dst.args());
        if constexpr (t::arr(kind)) return t::call(fn, groups, n, count);
        else return t::call(fn, groups, n);
    };
    o.st = inPlace ? invoke(dst.args()) : invoke(src.args());
    for (int k = 0; k < count; ++k) {
        Item d(n * n);
        for (int x = 0; x < n * n; ++x) d[x] = dst(k, x / n, x % n);
        o.dst.push_back(d);
    }
    return o;
}

std::vector<Member> members()
{
    std::vector<Member> list;
    const auto add = [&]<class E, K kind, L lay>(const char* name, auto fn) {
        list.push_back({name, sizeof(E) == 4, t::arr(kind), lay, [fn](int n, const std::vector<Item>& items, Strides st, bool inPlace) {
                            return runMember<E, kind, lay>(fn, n, items, st, inPlace);
                        }});
    };
#define ORL_ADD(E, kind, ty, lay, sfx) add.operator()<E, K::kind, L::lay>("LUDecomp_" #kind "_" #ty #sfx, orlmLUDecomp_##kind##_##ty##sfx);
    ORL_ADD(float, m, 32f, Std, ) ORL_ADD(float, m, 32f, P, _P) ORL_ADD(double, m, 64f, Std, ) ORL_ADD(double, m, 64f, P, _P)
    ORL_ADD(float, ma, 32f, Std, ) ORL_ADD(float, ma, 32f, P, _P) ORL_ADD(float, ma, 32f, L, _L)
    ORL_ADD(double, ma, 64f, Std, ) ORL_ADD(double, ma, 64f, P, _P) ORL_ADD(double, ma, 64f, L, _L)
#undef ORL_ADD
    return list;
}

// Item k of an outcome against the reference: status-independent outputs.
void expectItem(const Outcome& o, int k, int n, const ref::LU& e, const std::string& what)
{
    EXPECT_EQ(Perm(o.perm.begin() + k * n, o.perm.begin() + (k + 1) * n), e.perm) << what << " perm";
    for (int x = 0; x < n * n; ++x)
        EXPECT_TRUE(ref::sameBits(o.dst[k][x], e.dst[x]) || (std::isnan(o.dst[k][x]) && std::isnan(e.dst[x])))
            << what << " dst(" << x / n << "," << x % n << ") = " << o.dst[k][x] << ", expected " << e.dst[x];
}

// Random matrix with entries in [-2, 2], rounded to the member's type.
Item random(const Member& m, int n, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-2.0, 2.0);
    Item a(n * n);
    for (double& v : a) v = m.round(u(rng));
    return a;
}

// An identity of order n with a small matrix in its top left corner.
Item embed(int n, int m, std::initializer_list<double> top)
{
    Item a(n * n, 0.0);
    for (int i = 0; i < n; ++i) a[i * n + i] = 1.0;
    auto it = top.begin();
    for (int i = 0; i < m; ++i)
        for (int j = 0; j < m; ++j) a[i * n + j] = *it++;
    return a;
}

Item diagAt(int n, int i, double v)
{
    Item a = embed(n, 0, {});
    a[i * n + i] = v;
    return a;
}

// ---- values of both paths in every member -----------------------------------

TEST(LUDecompValues, EveryMemberSizeAndStrideMatchesItsPath)
{
    std::mt19937 rng(7);
    for (const Member& m : members())
        for (int n : {1, 2, 3, 4, 5, 6, 7, 9})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                std::vector<Item> items;
                for (int k = 0; k < (m.array ? 3 : 1); ++k) items.push_back(random(m, n, rng));
                SCOPED_TRACE(m.name + " n=" + std::to_string(n) + (st == Strides::Wide ? " wide" : ""));
                for (bool inPlace : {false, true}) {
                    const Outcome o = m.run(n, items, st, inPlace);
                    ASSERT_EQ(o.st, orlStatusOk);
                    for (int k = 0; k < int(items.size()); ++k)
                        expectItem(o, k, n, m.expect(n, items[k]), (inPlace ? "in place, item " : "item ") + std::to_string(k));
                }
                if (HasFailure()) return;
            }
}

// ---- settled cases: tolerance, sense, order of exchange and test, ties ------

struct Settled {
    const char* what;
    int n;
    Item a;
    orlStatus st;
    Perm perm;  // empty: compared with the reference only
};

template <class E>
std::vector<Settled> settled()
{
    const double tu = sizeof(E) == 4 ? 0x1p-125 : 0x1p-1021, tg = sizeof(E) == 4 ? 0x1p-23 : 0x1p-52;
    const double below = double(std::nextafter(E(tu), E(0))), above = double(std::nextafter(E(tg), E(1)));
    const orlStatus S = orlStatusSingular, ok = orlStatusOk;
    return {
        {"unrolled: pivot equal to the tolerance passes", 3, {1, 0, 0, 0, tu, 0, 0, 0, 1}, ok, {0, 1, 2}},
        {"unrolled: final element equal to the tolerance passes", 3, {1, 0, 0, 0, 1, 0, 0, 0, tu}, ok, {0, 1, 2}},
        {"unrolled: just below the tolerance fails", 4, diagAt(4, 1, below), S, {0, 1, 2, 3}},
        {"general: pivot equal to the tolerance fails", 2, {tg, 0, 0, 1}, S, {0, 1}},
        {"general: later pivot equal to the tolerance fails", 7, diagAt(7, 1, tg), S, {0, 1, 2, 3, 4, 5, 6}},
        {"general: final element equal to the tolerance fails", 7, diagAt(7, 6, tg), S, {0, 1, 2, 3, 4, 5, 6}},
        {"general: just above the tolerance passes", 2, {1, 0, 0, above}, ok, {0, 1}},
        {"size 1 at the tolerance fails", 1, {tg}, S, {0}},
        {"size 1 above the tolerance passes", 1, {above}, ok, {0}},
        {"1e-8 diagonal of order 2", 2, {E(1e-8), 0, 0, E(1e-8)}, sizeof(E) == 4 ? S : ok, {0, 1}},
        {"1e-8 diagonal of order 3 passes", 3, {E(1e-8), 0, 0, 0, E(1e-8), 0, 0, 0, E(1e-8)}, ok, {0, 1, 2}},
        // Column 0 holds only a value below the tolerance, in row 1.
        {"unrolled: failing stage's exchange is made", 3, {0, 1, 0, below, 0, 1, 0, 0, 1}, S, {1, 0, 2}},
        {"general: failing stage's exchange is not made", 7, embed(7, 2, {0, 1, tg / 2, 0}), S, {0, 1, 2, 3, 4, 5, 6}},
        {"unrolled: NaN on top of column 0 fails at once", 3, {NAN, 0, 0, 5, 1, 0, 0, 0, 1}, S, {0, 1, 2}},
        {"general: NaN on top of column 0 fails at once", 2, {NAN, 0, 5, 1}, S, {0, 1}},
        // After stage 0 takes physical row 2, positions 1 and 2 hold rows 1 and
        // 0 with |3| = |-3| in column 1: the earlier position wins.
        {"unrolled: tie keeps the earlier perm position", 3, {1, 3, 0, 0, -3, 0, 2, 0, 1}, ok, {2, 1, 0}},
        {"general: tie keeps the earlier perm position", 7, embed(7, 3, {1, 3, 0, 0, -3, 0, 2, 0, 1}), ok, {2, 1, 0, 3, 4, 5, 6}},
        // The unrolled path's final test looks at physical (n-1, n-1).
        {"unrolled: regular permutation matrix fails", 3, {0, 0, 1, 1, 0, 0, 0, 1, 0}, S, {1, 2, 0}},
        {"unrolled: singular matrix passes", 3, {0, 0, 0, 0, 1, 0, 1, 0, 1}, ok, {2, 1, 0}},
        {"general: permutation matrix of order 2 passes", 2, {0, 1, 1, 0}, ok, {1, 0}},
        {"general: permutation matrix of order 7 passes", 7, embed(7, 3, {0, 0, 1, 1, 0, 0, 0, 1, 0}), ok, {1, 2, 0, 3, 4, 5, 6}},
        // What stands after a failure at stage 0, a later stage or the final
        // test. Where column 1 is twice column 0 and the first pivot is a power
        // of two, stage 1 meets exact zeros.
        {"unrolled 3: stage 0", 3, {0, 1, 2, 0, 3, 4, 0, 5, 6}, S, {}},
        {"unrolled 3: final test", 3, {4, 0, 0, 0, 2, 0, 0, 0, 0}, S, {}},
        {"unrolled 4: stage 1", 4, {4, 8, 1, 2, 2, 4, 3, 1, 1, 2, 5, 7, 2, 4, 1, 1}, S, {}},
        {"unrolled 5: stage 1", 5, {4, 8, 1, 2, 3, 1, 2, 5, 7, 1, 2, 4, 1, 1, 2, 3, 6, 1, 1, 1, 1, 2, 4, 2, 3}, S, {}},
        {"general 2: final test", 2, {1, 2, 2, 4}, S, {}},
        {"general 7: stage 0", 7, embed(7, 2, {1e-30, 0, 0, 1}), S, {}},
        {"general 8: stage 2", 8, embed(8, 3, {1, 2, 3, 2, 4, 6, 1, 1, 1}), S, {}},
        // Infinities: an infinite pivot passes; infinity times zero gives a NaN pivot.
        {"unrolled: infinite pivot passes", 3, diagAt(3, 1, INFINITY), ok, {0, 1, 2}},
        {"general: infinite pivot passes", 7, diagAt(7, 1, INFINITY), ok, {0, 1, 2, 3, 4, 5, 6}},
        {"unrolled: infinity times zero", 3, embed(3, 2, {1, -INFINITY, 0, 1}), S, {0, 1, 2}},
        {"general: infinity times zero", 7, embed(7, 2, {1, -INFINITY, 0, 1}), S, {0, 1, 2, 3, 4, 5, 6}},
    };
}

TEST(LUDecompRules, SettledCasesInEveryMember)
{
    for (const Member& m : members())
        for (const Settled& c : m.f32 ? settled<float>() : settled<double>())
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                SCOPED_TRACE(m.name + ": " + c.what);
                const Outcome o = m.run(c.n, {c.a}, st, false);
                const ref::LU e = m.expect(c.n, c.a);
                EXPECT_EQ(o.st, c.st);
                EXPECT_EQ(e.st, c.st) << "reference";
                if (!c.perm.empty()) EXPECT_EQ(e.perm, c.perm) << "reference";
                expectItem(o, 0, c.n, e, "");
            }
}

// ---- arrays: the first failing item stops its run; route --------------------

// Each run of items (the whole array, or each thread's slice on the driver)
// stops at its first failing item: the items after it stay untouched, the
// other runs are complete. Cost n*n*count; the driver is taken above 20000
// (40000 for the 32f _L kernel of unit stride).
TEST(LUDecompArrays, RunsStopAtTheirFirstFailure)
{
    struct Row {
        int n, count, threads;
        std::vector<int> failing;
    };
    const Row rows[] = {
        {3, 5, 1, {2, 3}}, {5, 5, 1, {2, 3}}, {2, 5, 1, {2, 3}}, {7, 5, 1, {2, 3}},
        {3, 4500, 2, {5}}, {4, 1250, 3, {}}, {4, 1251, 3, {}}, {8, 400, 3, {200}},
    };
    std::mt19937 rng(5);
    for (const Member& m : members()) {
        if (!m.array) continue;
        for (const Row& r : rows) {
            SCOPED_TRACE(m.name + " n=" + std::to_string(r.n) + " count=" + std::to_string(r.count));
            std::vector<Item> items;
            for (int k = 0; k < r.count; ++k) items.push_back(random(m, r.n, rng));
            for (int k : r.failing) items[k] = Item(r.n * r.n, 0.0);  // fails at stage 0 on both paths
            t::Threads th(r.threads);
            probe::reset();
            const Outcome o = m.run(r.n, items, Strides::Unit, false);
            const bool parallel = r.threads > 1 && r.n * r.n * r.count > (m.f32 && m.lay == L::L ? 40000 : 20000);
            EXPECT_EQ(probe::regions().count, parallel ? 1 : 0);
            EXPECT_EQ(o.st, r.failing.empty() ? orlStatusOk : orlStatusSingular);
            const int T = parallel ? r.threads : 1, chunk = r.count / T, rest = r.count % T;
            int first = 0;
            for (int i = 0; i < T; ++i) {
                const int end = first + chunk + (i < rest);
                bool stopped = false;
                for (int k = first; k < end; ++k) {
                    if (stopped) {
                        EXPECT_EQ(o.perm[k * r.n], kNoPerm) << "item " << k;
                        EXPECT_EQ(o.dst[k][0], kUntouched) << "item " << k;
                    } else {
                        expectItem(o, k, r.n, m.expect(r.n, items[k]), "item " + std::to_string(k));
                    }
                    stopped = stopped || std::find(r.failing.begin(), r.failing.end(), k) != r.failing.end();
                }
                first = end;
            }
            if (HasFailure()) return;
        }
    }
}

// ---- argument checks -------------------------------------------------------

TEST(LUDecompChecks, ClassesInOrderAndNothingWritten)
{
    t::CheckBuffers b;
    std::int32_t* perm = b.perm;
    const auto tf = b.tf;
    const auto to = b.to;
    struct Case {
        const char *order, *failing;
        std::function<orlStatus()> call;
    };
    const Case cases[] = {
        {"NCZT", "NC", [&] { return orlmLUDecomp_ma_32f(b.f, 64, 16, 4, nullptr, b.fo, 64, 16, 4, 2, 0); }},
        {"NZT", "NZ", [&] { return orlmLUDecomp_m_64f(nullptr, 32, 8, perm, b.go, 32, 8, 0); }},
        {"NZO", "NZO", [&] { return orlmLUDecomp_m_32f_P(tf, 2, perm, nullptr, 0, 0); }},
        {"NCZTO", "NCO", [&] { return orlmLUDecomp_ma_64f_L(b.tg, -8, 32, 8, nullptr, b.tgo, 0, 32, 8, 2, 0); }},
        {"NCZT", "CZ", [&] { return orlmLUDecomp_ma_64f(b.g, 64, 32, 8, perm, b.go, 64, 32, 8, 0, 0); }},
        {"NCZTO", "CT", [&] { return orlmLUDecomp_ma_32f_P(tf, 0, 6, perm, to, 0, 64, 2, -1); }},
        {"NCZT", "ZT", [&] { return orlmLUDecomp_ma_32f(b.f, 64, 6, 4, perm, b.fo, 64, 16, 4, 0, 1); }},
        {"NZO", "ZO", [&] { return orlmLUDecomp_m_64f_P(b.tg, 4, perm, b.tgo, 0, 0); }},
        {"NZT", "T", [&] { return orlmLUDecomp_m_32f(b.f, 16, 4, perm, b.fo, 6, 4, 2); }},
        {"NZT", "T", [&] { return orlmLUDecomp_m_64f(b.g, 12, 8, perm, b.go, 32, 8, 2); }},
        {"NCZT", "T", [&] { return orlmLUDecomp_ma_64f(b.g, 64, 32, 0, perm, b.go, 64, 32, 8, 2, 1); }},
        {"NCZT", "T", [&] { return orlmLUDecomp_ma_32f(b.f, 0, 16, 4, perm, b.fo, 64, 16, 4, 2, 1); }},
        {"NCZTO", "TO", [&] { return orlmLUDecomp_ma_32f_P(tf, 2, 64, perm, to, 0, -4, 2, 1); }},
        {"NCZTO", "TO", [&] { return orlmLUDecomp_ma_32f_L(tf, -4, 16, 4, perm, to, 0, 16, 2, 2, 1); }},
        {"NCZTO", "O", [&] { return orlmLUDecomp_ma_32f_P(tf, 2, 64, perm, to, 0, 64, 2, 1); }},
        {"NCZTO", "O", [&] { return orlmLUDecomp_ma_32f_L(tf, 0, 16, 4, perm, to, -4, 16, 4, 2, 1); }},
        {"NZO", "O", [&] { return orlmLUDecomp_m_64f_P(b.tg, 0, perm, b.tgo, 4, 2); }},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.call(), ref::expectedStatus(c.order, c.failing)) << c.order << " failing " << c.failing;
        EXPECT_TRUE(b.untouched()) << c.order << " failing " << c.failing;
    }
    // The same values pass where they are valid: a stride of 12 in 32f, offsets of 0.
    EXPECT_EQ(orlmLUDecomp_m_32f(b.f, 12, 4, perm, b.fo, 12, 4, 2), orlStatusOk);
    EXPECT_EQ(orlmLUDecomp_ma_32f_P(tf, 0, 64, perm, to, 0, 64, 2, 1), orlStatusOk);
}

}  // namespace
