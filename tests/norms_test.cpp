// Norms and trace: every member in every layout against the order, precision
// and root its kernel must use, the guards of the Frobenius norm, the trace's
// two precisions and its running general path, the checks, limits and
// threads.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "operands.h"
#include "reference.h"

namespace {

using t::K;
using t::L;
using t::Mat;
using t::Strides;
using t::Vec;

// ---- L2Norm ----------------------------------------------------------------------

// The sum of an L2Norm kernel ("x" extended ascending, "c" a chain, "lane",
// "pair", else an order) and its root (r refined, s true root in element
// precision, X in the extended format). var: u standard unit stride2, w
// standard other, P, l _L unit, m _L other.
std::pair<std::string, char> l2Kind(bool f32, bool array, char var, int n)
{
    static const char* asc[] = {"(q0+q1)+q2", "((q0+q1)+q2)+q3", "(((q0+q1)+q2)+q3)+q4", "((((q0+q1)+q2)+q3)+q4)+q5"};
    static const char* v32[] = {"(q0+q1)+q2", "(q0+q1)+(q2+q3)", "((q0+q1)+(q2+q3))+q4", "((q0+q1)+(q2+q3))+(q4+q5)"};
    static const char* va32[] = {"(q0+q1)+q2", "((q0+q1)+q2)+q3", "((q0+q2)+(q1+q3))+q4", "((q0+q2)+q4)+((q1+q3)+q5)"};
    static const char* t64[] = {"(q0+q2)+q1", "(q0+q2)+(q1+q3)", "((q0+q2)+q4)+(q1+q3)", "((q0+q2)+q4)+((q1+q3)+q5)"};
    const bool fixed = n >= 3 && n <= 6, unit = var == 'u' || var == 'l';
    const int i = fixed ? n - 3 : 0;
    if (f32 && unit) return fixed ? std::pair{array ? va32[i] : v32[i], 'r'} : std::pair{array ? "c" : "lane", 's'};
    if (f32 || !fixed) return {fixed ? asc[i] : !array && var == 'u' ? "pair" : "c", 's'};
    if (unit) return {t64[i], 's'};
    if (array && (var == 'P' || (var == 'm' && n > 3))) return {"x", 'X'};
    return {n == 6 ? "x" : asc[i], 's'};
}

template <class E>
E expectL2(const std::pair<std::string, char>& kind, const std::vector<E>& x, std::uintptr_t addr)
{
    const int n = int(x.size());
    std::vector<E> q(n);
    for (int j = 0; j < n; ++j) q[j] = E(x[j] * x[j]);
    const ref::Ext ext = ref::dotExt<ref::Ext>(n, [&](int j) { return x[j]; }, [&](int j) { return x[j]; });
    E s;
    if (kind.first == "x") s = E(ext);
    else if (kind.first == "c") s = ref::chainFromZero(n, q.data());
    else if (kind.first == "lane") s = E(ref::laneSum(reinterpret_cast<const float*>(q.data()), n, addr, 11, false));
    else if (kind.first == "pair") s = E(ref::pairSum(reinterpret_cast<const double*>(q.data()), n, addr, 9, false));
    else s = ref::sumInOrder(kind.first.c_str(), q.data());
    if (kind.second == 'r') return E(ref::refinedRoot(float(s)));
    return kind.second == 'X' ? E(sqrtl(ext)) : std::sqrt(s);
}

// Many items (or calls): a sum in another order differs in some of them.
template <class E, bool array, L lay, class Fn>
void checkL2(const char* name, Fn fn, Strides st, int n, std::mt19937& g)
{
    for (int rep = 0; rep < (array ? 1 : 40); ++rep) {
        const int count = array ? 40 : 1;
        Vec<E, array, lay> v(n, count, st, 4);
        for (int k = 0; k < count; ++k)
            for (int j = 0; j < n; ++j) v(k, j) = ref::wild<E>(g, 16);
        std::vector<E> out(count + 1, E(-1));
        if constexpr (array) ASSERT_EQ(t::call(fn, v.args(), out.data(), n, count), orlStatusOk);
        else ASSERT_EQ(t::call(fn, v.args(), out.data(), n), orlStatusOk);
        ASSERT_EQ(out[count], E(-1));
        const char var = lay == L::P ? 'P' : lay == L::L && array ? (st == Strides::Unit ? 'l' : 'm') : (st == Strides::Unit ? 'u' : 'w');
        const auto kind = l2Kind(sizeof(E) == 4, array, var, n);
        for (int k = 0; k < count; ++k) {
            std::vector<E> x(n);
            for (int j = 0; j < n; ++j) x[j] = v(k, j);
            const E want = expectL2(kind, x, reinterpret_cast<std::uintptr_t>(&v(k, 0)));
            ASSERT_TRUE(ref::sameBits(out[k], want)) << name << " " << var << " n " << n << " item " << k << ": " << kind.first << " "
                                                     << kind.second << " got " << out[k] << " want " << want;
        }
    }
}

TEST(L2Norm, EveryKernelOrderAndRoot)
{
    std::mt19937 g(11);
#define L2(E, ty, sfx, array, lay) checkL2<E, array, L::lay>(#ty #sfx, orlmL2Norm_##ty##sfx, st, n, g);
    for (int n : {1, 2, 3, 4, 5, 6, 7, 11, 12, 19, 30})
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            L2(float, v_32f, , false, Std) L2(float, v_32f, _P, false, P) L2(float, va_32f, , true, Std)
            L2(float, va_32f, _P, true, P) L2(float, va_32f, _L, true, L) L2(double, v_64f, , false, Std)
            L2(double, v_64f, _P, false, P) L2(double, va_64f, , true, Std) L2(double, va_64f, _P, true, P)
            L2(double, va_64f, _L, true, L)
            if (HasFatalFailure()) return;
        }
#undef L2
    // A zero vector: the refined path has no guard (0 * inf is NaN), the true roots give 0.
    const float z[14] = {};
    float r = 0;
    ASSERT_EQ(orlmL2Norm_v_32f(z, 4, &r, 4), orlStatusOk);
    EXPECT_TRUE(std::isnan(r));
    ASSERT_EQ(orlmL2Norm_v_32f(z, 8, &r, 4), orlStatusOk);
    EXPECT_EQ(r, 0.0f);
}

// ---- FrobNorm --------------------------------------------------------------------------

// Elements of +-1: every order gives the exact sum w*h, so each member shows
// its root and its reading of the layout: refined in the contiguous 32f
// kernels (sizes 3 to 6 of ma_32f unit, every size of m_32f), true roots elsewhere.
TEST(FrobNorm, EveryMemberOnSquaresOfOne)
{
    for (int w : {1, 2, 3, 4, 5, 6, 7})
        for (int h : {w, 3})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                auto go = [&](auto m, auto fn, auto array, bool refined, const char* name) {
                    using E = typename decltype(m)::E;
                    m.fill([](int kk, int i, int j) { return E((kk + i + j) % 2 ? -1 : 1); });
                    std::vector<E> d(m.count);
                    if constexpr (decltype(array)::value) ASSERT_EQ(t::call(fn, m.args(), w, h, d.data(), m.count), orlStatusOk) << name;
                    else ASSERT_EQ(t::call(fn, m.args(), w, h, d.data()), orlStatusOk) << name;
                    const E want = refined ? E(ref::refinedRoot(float(w * h))) : std::sqrt(E(w * h));
                    for (E v : d) ASSERT_EQ(v, want) << name << " " << w << "x" << h << (st == Strides::Unit ? " unit" : " wide");
                };
#define FROB(E, k, lay, items, refined, ty, sfx) go(Mat<E, K::k, L::lay>(w, h, items, st, 1), orlmFrobNorm_##k##_##ty##sfx, std::bool_constant<items != 1>{}, refined, #k #ty #sfx);
                FROB(float, m, Std, 1, true, 32f, ) FROB(float, m, P, 1, false, 32f, _P)
                FROB(float, ma, Std, 5, st == Strides::Unit, 32f, ) FROB(float, ma, P, 5, false, 32f, _P)
                FROB(float, ma, L, 5, false, 32f, _L) FROB(double, m, Std, 1, false, 64f, ) FROB(double, m, P, 1, false, 64f, _P)
                FROB(double, ma, Std, 5, false, 64f, ) FROB(double, ma, P, 5, false, 64f, _P) FROB(double, ma, L, 5, false, 64f, _L)
#undef FROB
                if (HasFatalFailure()) return;
            }
}

TEST(FrobNorm, GuardsPerKernel)
{
    // m_32f: the sum "above" eps: a zero matrix is +0.0 (no NaN), a lone 1e-4
    // (s = 1e-8) and a sum of exactly eps are 0; m_64f has no guard.
    float z[9] = {}, r = -1;
    ASSERT_EQ(orlmFrobNorm_m_32f(z, 12, 4, 3, 3, &r), orlStatusOk);
    EXPECT_TRUE(ref::sameBits(r, 0.0f));
    z[4] = 1e-4f;
    ASSERT_EQ(orlmFrobNorm_m_32f(z, 12, 4, 3, 3, &r), orlStatusOk);
    EXPECT_EQ(r, 0.0f);
    alignas(16) const float quarter[2] = {0x1p-12f, 0x1p-12f};  // squares 2^-24 each: s = 2^-23 = eps
    ASSERT_EQ(orlmFrobNorm_m_32f(quarter, 8, 4, 2, 1, &r), orlStatusOk);
    EXPECT_EQ(r, 0.0f);
    double zd[9] = {0, 0, 0, 0, 1e-4}, rd = 0;
    ASSERT_EQ(orlmFrobNorm_m_64f(zd, 24, 8, 3, 3, &rd), orlStatusOk);
    EXPECT_EQ(rd, 1e-4);
    // "At least" eps in the _P kernels: a sum of exactly eps gives its root.
    const float* tbl2[2] = {quarter, quarter + 1};
    ASSERT_EQ(orlmFrobNorm_m_32f_P(tbl2, 0, 2, 1, &r), orlStatusOk);
    EXPECT_EQ(r, std::sqrt(FLT_EPSILON));
    // ma_32f 3x3, unit stride2: groups of four unguarded (NaN), the two items after them guarded (0).
    std::vector<float> zeros(9 * 6, 0.0f), out(6);
    ASSERT_EQ(orlmFrobNorm_ma_32f(zeros.data(), 36, 12, 4, 3, 3, out.data(), 6), orlStatusOk);
    for (int k = 0; k < 6; ++k) EXPECT_EQ(std::isnan(out[k]), k < 4) << k;
    EXPECT_EQ(out[4] + out[5], 0.0f);
    // The lane-0 guard: 4x2 aligned items whose squares 0 and 4 of the run are
    // zero: ma_32f gives 0, m_32f the true norm.
    alignas(16) float m[8] = {0, 1e10f, 1e10f, 1e10f, 0, 1e10f, 1e10f, 1e10f};
    ASSERT_EQ(orlmFrobNorm_ma_32f(m, 32, 16, 4, 4, 2, &r, 1), orlStatusOk);
    EXPECT_EQ(r, 0.0f);
    ASSERT_EQ(orlmFrobNorm_m_32f(m, 16, 4, 4, 2, &r), orlStatusOk);
    EXPECT_NEAR(r, std::sqrt(6.0f) * 1e10f, 1e4f);
}

// ---- Trace ----------------------------------------------------------------------------------

// Diagonal 1 + k, 2^-24, 2^-24, ...: element precision loses the small terms,
// the extended format of the other straight-line forms keeps them.
TEST(Trace, PrecisionPerKernelAndRunningGeneralPath)
{
    auto diag = [](int k, int i, int j) { return i != j ? 5.0f : i == 0 ? 1.0f + float(k) : 0x1p-24f; };
    for (int n : {1, 2, 3, 4, 5, 6, 7})
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            const auto expect = [&](int k, bool ext) {
                if (n >= 3 && n <= 6 && ext) return float(ref::Ext(1.0f + float(k)) + ref::Ext(n - 1) * 0x1p-24L);
                float s = 1.0f + float(k);
                for (int i = 1; i < n; ++i) s += 0x1p-24f;
                return s;
            };
            Mat<float, K::ma, L::Std> a(n, n, 3, st, 1);
            Mat<float, K::ma, L::L> l(n, n, 3, st, 2);
            Mat<float, K::ma, L::P> p(n, n, 3, st, 3);
            a.fill(diag), l.fill(diag), p.fill(diag);
            float d[3][3];
            ASSERT_EQ(t::call(orlmTrace_ma_32f, a.args(), n, d[0], 3), orlStatusOk);
            ASSERT_EQ(t::call(orlmTrace_ma_32f_L, l.args(), n, d[1], 3), orlStatusOk);
            ASSERT_EQ(t::call(orlmTrace_ma_32f_P, p.args(), n, d[2], 3), orlStatusOk);
            for (int k = 0; k < 3; ++k)
                for (int x = 0; x < 3; ++x) EXPECT_EQ(d[x][k], expect(k, x == 2 || st == Strides::Wide)) << "n " << n << " layout " << x;
        }
    // 1x1: the running sum starts at +0.0, so -0.0 becomes +0.0.
    const double m = -0.0, *tbl[1] = {&m};
    double r = 1;
    ASSERT_EQ(orlmTrace_m_64f(&m, 8, 8, 1, &r), orlStatusOk);
    EXPECT_TRUE(ref::sameBits(r, 0.0));
    ASSERT_EQ(orlmTrace_m_64f_P(tbl, 0, 1, &r), orlStatusOk);
    EXPECT_TRUE(ref::sameBits(r, 0.0));
}

// ---- checks, limits, threads -------------------------------------------------------------------

// The general order N C Z T O for every reduction: one member per order.
TEST(NormsTrace, ChecksLimitsAndThreads)
{
    t::checkRows({
        {"Trace_ma_32f", "NCZT", [](auto& s) { return orlmTrace_ma_32f(s.f, 64, 16, s.t(4), s.z(4), s.n(s.fo), s.c()); }},
        {"L2Norm_va_64f_L", "NCZTO", [](auto& s) { return orlmL2Norm_va_64f_L(s.tg, s.o(8), s.t(8), s.n(s.go), s.z(4), s.c()); }},
        {"FrobNorm_m_32f_P", "NZO", [](auto& s) { return orlmFrobNorm_m_32f_P(s.tf, s.o(4), s.z(2), 3, s.n(s.fo)); }},
        {"L2Norm_v_64f", "NZT", [](auto& s) { return orlmL2Norm_v_64f(s.g, s.t(8), s.n(s.go), s.z(5)); }},
    }, ref::expectedStatus);

    // Cost above the limit: 20000, but 40000 for the 32f _L unit-stride Frobenius norm and trace.
    using t::parallel;
    std::vector<float> a(6 * 40001 + 64, 1.0f), d(40001 + 4, -1.0f);
    std::vector<const float*> many(40001, a.data());
    EXPECT_FALSE(parallel([&] { return orlmL2Norm_va_32f(a.data(), 16, 4, d.data(), 4, 5000); }));
    EXPECT_TRUE(parallel([&] { return orlmL2Norm_va_32f(a.data(), 16, 4, d.data(), 4, 5001); }));
    EXPECT_TRUE(parallel([&] { return orlmTrace_ma_32f(a.data(), 16, 8, 4, 2, d.data(), 10001); }));
    EXPECT_FALSE(parallel([&] { return orlmTrace_ma_32f_L(many.data(), 0, 8, 4, 2, d.data(), 20000); }));
    EXPECT_TRUE(parallel([&] { return orlmTrace_ma_32f_L(many.data(), 0, 8, 4, 2, d.data(), 20001); }));
    EXPECT_TRUE(parallel([&] { return orlmFrobNorm_ma_32f_L(many.data(), 0, 8, 8, 2, 2, d.data(), 5001); }));
    EXPECT_FALSE(parallel([&] { return orlmFrobNorm_ma_32f_L(many.data(), 0, 8, 4, 2, 2, d.data(), 10000); }));

    // Identical bits for 1 to 4 threads.
    std::mt19937 g(2);
    for (float& v : a) v = ref::wild<float>(g, 16);
    std::vector<float> first;
    for (int T = 1; T <= 4; ++T) {
        t::Threads th(T);
        std::vector<float> out(3 * 40001);
        ASSERT_EQ(orlmL2Norm_va_32f(a.data(), 24, 4, out.data(), 6, 40001), orlStatusOk);
        ASSERT_EQ(orlmFrobNorm_ma_32f(a.data(), 24, 12, 4, 3, 2, out.data() + 40001, 40001), orlStatusOk);
        ASSERT_EQ(orlmTrace_ma_32f(a.data(), 16, 8, 4, 2, out.data() + 80002, 40001), orlStatusOk);
        if (T == 1) first = out;
        else ASSERT_EQ(std::memcmp(out.data(), first.data(), out.size() * 4), 0) << T << " threads";
    }
}

}  // namespace
