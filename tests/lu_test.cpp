// LU decomposition: values and pivots of both paths in every member, layout
// and stride case (also in place); tolerances, sense, order of exchange and
// test, ties, the final test and what stands after a failure as settled cases;
// arrays that stop at the first failing item, serially and per slice; limits.
#include <gtest/gtest.h>

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

// Every member through one interface, optionally with dst the same memory as src.
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
Member member(const char* name, Fn fn)
{
    return {name, sizeof(E) == 4, t::arr(kind), lay, [fn](int n, const std::vector<Item>& items, Strides st, bool inPlace) {
                Outcome o{orlStatusOk, {}, Perm(n * items.size(), kNoPerm)};
                std::tie(o.st, o.dst) = t::runSquare<E, kind, lay>(fn, n, items, st, inPlace, o.perm.data(), kUntouched);
                return o;
            }};
}

std::vector<Member> members()
{
#define M(E, kind, lay, fn) member<E, K::kind, L::lay>(#fn, fn)
    return {M(float, m, Std, orlmLUDecomp_m_32f),   M(float, m, P, orlmLUDecomp_m_32f_P),   M(double, m, Std, orlmLUDecomp_m_64f),
            M(double, m, P, orlmLUDecomp_m_64f_P),  M(float, ma, Std, orlmLUDecomp_ma_32f), M(float, ma, P, orlmLUDecomp_ma_32f_P),
            M(float, ma, L, orlmLUDecomp_ma_32f_L), M(double, ma, Std, orlmLUDecomp_ma_64f), M(double, ma, P, orlmLUDecomp_ma_64f_P),
            M(double, ma, L, orlmLUDecomp_ma_64f_L)};
#undef M
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

// What, order, matrix, status and perm (empty: compared with the reference only).
using Settled = std::tuple<const char*, int, Item, orlStatus, Perm>;

template <class E>
std::vector<Settled> settled()
{
    const double tu = sizeof(E) == 4 ? 0x1p-125 : 0x1p-1021, tg = sizeof(E) == 4 ? 0x1p-23 : 0x1p-52;
    const double below = double(std::nextafter(E(tu), E(0))), above = double(std::nextafter(E(tg), E(1)));
    const orlStatus S = orlStatusSingular, ok = orlStatusOk;
    return {
        {"unrolled: pivot equal to the tolerance passes", 3, {1, 0, 0, 0, tu, 0, 0, 0, 1}, ok, {0, 1, 2}},
        {"unrolled: just below the tolerance fails", 4, embed(4, 2, {1, 0, 0, below}), S, {0, 1, 2, 3}},
        {"general: pivot equal to the tolerance fails", 2, {tg, 0, 0, 1}, S, {0, 1}},
        {"general: final element equal to the tolerance fails", 2, {1, 0, 0, tg}, S, {0, 1}},
        {"general: just above the tolerance passes", 2, {1, 0, 0, above}, ok, {0, 1}},
        {"size 1 at the tolerance fails", 1, {tg}, S, {0}},
        // Column 0 holds only a value below the tolerance, in row 1.
        {"unrolled: failing stage's exchange is made", 3, {0, 1, 0, below, 0, 1, 0, 0, 1}, S, {1, 0, 2}},
        {"general: failing stage's exchange is not made", 7, embed(7, 2, {0, 1, tg / 2, 0}), S, {0, 1, 2, 3, 4, 5, 6}},
        {"unrolled: NaN on top of column 0 fails at once", 3, {NAN, 0, 0, 5, 1, 0, 0, 0, 1}, S, {0, 1, 2}},
        // After stage 0 takes physical row 2, positions 1 and 2 hold rows 1 and
        // 0 with |3| = |-3| in column 1: the earlier position wins.
        {"unrolled: tie keeps the earlier perm position", 3, {1, 3, 0, 0, -3, 0, 2, 0, 1}, ok, {2, 1, 0}},
        // The unrolled path's final test looks at physical (n-1, n-1).
        {"unrolled: regular permutation matrix fails", 3, {0, 0, 1, 1, 0, 0, 0, 1, 0}, S, {1, 2, 0}},
        {"general: permutation matrix of order 7 passes", 7, embed(7, 3, {0, 0, 1, 1, 0, 0, 0, 1, 0}), ok, {1, 2, 0, 3, 4, 5, 6}},
        // What stands after a failure at stage 0, a later stage or the final
        // test. Where column 1 is twice column 0 and the first pivot is a power
        // of two, stage 1 meets exact zeros.
        {"unrolled 3: final test", 3, {4, 0, 0, 0, 2, 0, 0, 0, 0}, S, {}},
        {"unrolled 4: stage 1", 4, {4, 8, 1, 2, 2, 4, 3, 1, 1, 2, 5, 7, 2, 4, 1, 1}, S, {}},
        {"general 2: final test", 2, {1, 2, 2, 4}, S, {}},
        {"general 8: stage 2", 8, embed(8, 3, {1, 2, 3, 2, 4, 6, 1, 1, 1}), S, {}},
        // Infinities: an infinite pivot passes; infinity times zero gives a NaN pivot.
        {"general: infinite pivot passes", 7, embed(7, 2, {1, 0, 0, INFINITY}), ok, {0, 1, 2, 3, 4, 5, 6}},
        {"unrolled: infinity times zero", 3, embed(3, 2, {1, -INFINITY, 0, 1}), S, {0, 1, 2}},
    };
}

TEST(LUDecompRules, SettledCasesInEveryMember)
{
    for (const Member& m : members())
        for (const auto& [what, n, a, status, perm] : m.f32 ? settled<float>() : settled<double>())
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                SCOPED_TRACE(m.name + ": " + what);
                const ref::LU e = m.expect(n, a);
                const Outcome o = m.run(n, {a}, st, false);
                EXPECT_EQ(o.st, status);
                EXPECT_EQ(e.st, status) << "reference";
                if (!perm.empty()) EXPECT_EQ(e.perm, perm) << "reference";
                expectItem(o, 0, n, e, "");
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
            const int T = parallel ? r.threads : 1;
            for (int i = 0, first = 0, end; i < T; first = end, ++i) {
                end = first + r.count / T + (i < r.count % T);
                for (int k = first, stopped = 0; k < end; ++k) {
                    if (stopped) EXPECT_TRUE(o.perm[k * r.n] == kNoPerm && o.dst[k][0] == kUntouched) << "item " << k;
                    else expectItem(o, k, r.n, m.expect(r.n, items[k]), "item " + std::to_string(k));
                    stopped = stopped || std::find(r.failing.begin(), r.failing.end(), k) != r.failing.end();
                }
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
        {"NZT", "T", [&] { return orlmLUDecomp_m_64f(b.g, 12, 8, perm, b.go, 32, 8, 2); }},
        {"NCZT", "T", [&] { return orlmLUDecomp_ma_64f(b.g, 64, 32, 0, perm, b.go, 64, 32, 8, 2, 1); }},
        {"NCZT", "T", [&] { return orlmLUDecomp_ma_32f(b.f, 0, 16, 4, perm, b.fo, 64, 16, 4, 2, 1); }},
        {"NCZTO", "TO", [&] { return orlmLUDecomp_ma_32f_P(tf, 2, 64, perm, to, 0, -4, 2, 1); }},
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
