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

// Many items (or calls): a sum in another order differs in some of them.
template <class E, bool array, L lay, class Fn>
void checkL2(const char* name, Fn fn, Strides st, int n, std::mt19937& g)
{
    const int count = array ? 40 : 1;
    const char var = lay == L::P ? 'P' : lay == L::L && array ? (st == Strides::Unit ? 'l' : 'm') : (st == Strides::Unit ? 'u' : 'w');
    const auto [sum, root] = l2Kind(sizeof(E) == 4, array, var, n);
    for (int rep = 0; rep < 41 - count; ++rep) {
        Vec<E, array, lay> v(n, count, st, 4);
        std::vector<E> out(count + 1, E(-1)), q(n);
        for (int k = 0; k < count; ++k)
            for (int j = 0; j < n; ++j) v(k, j) = ref::wild<E>(g, 16);
        if constexpr (array) ASSERT_EQ(t::call(fn, v.args(), out.data(), n, count), orlStatusOk);
        else ASSERT_EQ(t::call(fn, v.args(), out.data(), n), orlStatusOk);
        ASSERT_EQ(out[count], E(-1));
        for (int k = 0; k < count; ++k) {
            for (int j = 0; j < n; ++j) q[j] = E(v(k, j) * v(k, j));
            const ref::Ext ext = ref::dotExt<ref::Ext>(n, [&](int j) { return v(k, j); }, [&](int j) { return v(k, j); });
            const auto addr = reinterpret_cast<std::uintptr_t>(&v(k, 0));
            E s;
            if (sum == "x") s = E(ext);
            else if (sum == "c") s = ref::chainFromZero(n, q.data());
            else if (sum == "lane") s = E(ref::laneSum(reinterpret_cast<const float*>(q.data()), n, addr, 11, false));
            else if (sum == "pair") s = E(ref::pairSum(reinterpret_cast<const double*>(q.data()), n, addr, 9, false));
            else s = ref::sumInOrder(sum.c_str(), q.data());
            const E want = root == 'r' ? E(ref::refinedRoot(float(s))) : root == 'X' ? E(sqrtl(ext)) : std::sqrt(s);
            ASSERT_TRUE(ref::sameBits(out[k], want)) << name << " " << var << " n " << n << " item " << k << ": " << sum << " " << root;
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
    const float z[8] = {};
    float r[2];
    ASSERT_EQ(orlmL2Norm_v_32f(z, 4, r, 4), orlStatusOk);
    ASSERT_EQ(orlmL2Norm_v_32f(z, 8, r + 1, 4), orlStatusOk);
    EXPECT_TRUE(std::isnan(r[0]) && r[1] == 0.0f);
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
    float z[9] = {}, lone[9] = {0, 0, 0, 0, 1e-4f}, zeros[54] = {}, r[5], out[6];
    alignas(16) const float eps[2] = {0x1p-12f, 0x1p-12f};  // squares 2^-24 each: s = 2^-23, the epsilon
    alignas(16) const float lane0[8] = {0, 1e10f, 1e10f, 1e10f, 0, 1e10f, 1e10f, 1e10f};  // squares 0 and 4 of the run zero
    const float* tbl[2] = {eps, eps + 1};
    ASSERT_EQ(orlmFrobNorm_m_32f(z, 12, 4, 3, 3, r), orlStatusOk);                 // m_32f: s "above" eps, no NaN
    ASSERT_EQ(orlmFrobNorm_m_32f(lone, 12, 4, 3, 3, r + 1), orlStatusOk);          // s = 1e-8
    ASSERT_EQ(orlmFrobNorm_m_32f(eps, 8, 4, 2, 1, r + 2), orlStatusOk);            // s exactly eps
    ASSERT_EQ(orlmFrobNorm_m_32f_P(tbl, 0, 2, 1, r + 3), orlStatusOk);             // _P: s "at least" eps
    ASSERT_EQ(orlmFrobNorm_ma_32f(lane0, 32, 16, 4, 4, 2, r + 4, 1), orlStatusOk);  // the lane-0 guard
    EXPECT_EQ(std::vector<float>(r, r + 5), (std::vector<float>{0, 0, 0, std::sqrt(FLT_EPSILON), 0}));
    EXPECT_FALSE(std::signbit(r[0]));
    ASSERT_EQ(orlmFrobNorm_m_32f(lane0, 16, 4, 4, 2, r), orlStatusOk);  // no lane-0 guard in m_32f
    EXPECT_NEAR(r[0], std::sqrt(6.0f) * 1e10f, 1e4f);
    double lone64[9] = {0, 0, 0, 0, 1e-4}, r64 = 0;  // m_64f has no guard
    ASSERT_EQ(orlmFrobNorm_m_64f(lone64, 24, 8, 3, 3, &r64), orlStatusOk);
    EXPECT_EQ(r64, 1e-4);
    // ma_32f 3x3, unit stride2: groups of four unguarded (NaN), the two items after them guarded (0).
    ASSERT_EQ(orlmFrobNorm_ma_32f(zeros, 36, 12, 4, 3, 3, out, 6), orlStatusOk);
    for (int k = 0; k < 6; ++k) EXPECT_TRUE(k < 4 ? std::isnan(out[k]) : out[k] == 0.0f) << k;
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
    std::vector<float> a(6 * 40001 + 64, 1.0f), d(40001 + 4);
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
        ASSERT_EQ(orlmL2Norm_va_32f(a.data(), 24, 4, d.data(), 6, 40001), orlStatusOk);
        if (T == 1) first = d;
        EXPECT_EQ(d, first) << T << " threads";
    }
}

}  // namespace
