// Norms and trace: every member in every layout against the order, precision
// and root its kernel must use, the guards of the Frobenius norm, the trace's
// two precisions and its running general path, the checks, limits and
// threads.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "orlm.h"
#include "reference.h"

namespace {

using t::K;
using t::L;
using t::Mat;
using t::Strides;
using t::Vec;

template <class E>
E wild(std::mt19937& g)
{
    return ref::wild<E>(g, 16);
}

// ---- L2Norm ----------------------------------------------------------------------

// The kernel a call reaches: u standard unit stride2, w standard other,
// P, l _L unit, m _L other.
struct L2Kind {
    std::string sum;  // an order of additions, "x" extended ascending, "c" chain, "lane", "pair"
    char root;        // r refined, s true root in element precision, X in the extended format
};

// The kinds of every L2Norm kernel, as the family's table gives them.
L2Kind l2Kind(bool f32, bool array, char var, int n)
{
    static const char* asc[] = {"", "", "", "(q0+q1)+q2", "((q0+q1)+q2)+q3", "(((q0+q1)+q2)+q3)+q4", "((((q0+q1)+q2)+q3)+q4)+q5"};
    static const char* v32[] = {"", "", "", "(q0+q1)+q2", "(q0+q1)+(q2+q3)", "((q0+q1)+(q2+q3))+q4", "((q0+q1)+(q2+q3))+(q4+q5)"};
    static const char* va32[] = {"", "", "", "(q0+q1)+q2", "((q0+q1)+q2)+q3", "((q0+q2)+(q1+q3))+q4", "((q0+q2)+q4)+((q1+q3)+q5)"};
    static const char* t64[] = {"", "", "", "(q0+q2)+q1", "(q0+q2)+(q1+q3)", "((q0+q2)+q4)+(q1+q3)", "((q0+q2)+q4)+((q1+q3)+q5)"};
    const bool fixed = n >= 3 && n <= 6, unit = var == 'u' || var == 'l';
    if (f32) {
        if (unit && !array) return fixed ? L2Kind{v32[n], 'r'} : L2Kind{"lane", 's'};
        if (unit) return fixed ? L2Kind{va32[n], 'r'} : L2Kind{"c", 's'};
        return fixed ? L2Kind{asc[n], 's'} : L2Kind{"c", 's'};
    }
    if (!fixed) return {!array && var == 'u' ? "pair" : "c", 's'};
    if (unit) return {t64[n], 's'};
    if (array && var == 'P') return {"x", 'X'};
    if (array && var == 'm') return n == 3 ? L2Kind{asc[3], 's'} : L2Kind{"x", 'X'};
    return n == 6 ? L2Kind{"x", 's'} : L2Kind{asc[n], 's'};
}

template <class E>
E expectL2(const L2Kind& k, const std::vector<E>& x, std::uintptr_t addr)
{
    const int n = int(x.size());
    std::vector<E> q(n);
    for (int j = 0; j < n; ++j) q[j] = E(x[j] * x[j]);
    ref::Ext ext = 0;
    E s;
    if (k.sum == "x") {
        ext = ref::dotExt<ref::Ext>(n, [&](int j) { return x[j]; }, [&](int j) { return x[j]; });
        s = E(ext);
    } else if (k.sum == "c") {
        s = ref::chainFromZero(n, q.data());
    } else if (k.sum == "lane") {
        s = E(ref::laneSum(reinterpret_cast<const float*>(q.data()), n, addr, 11, false));
    } else if (k.sum == "pair") {
        s = E(ref::pairSum(reinterpret_cast<const double*>(q.data()), n, addr, 9, false));
    } else {
        s = ref::sumInOrder(k.sum.c_str(), q.data());
    }
    if (k.root == 'r') return E(ref::refinedRoot(float(s)));
    if (k.root == 'X') return E(sqrtl(ext));
    return std::sqrt(s);
}

template <class E, bool array, L lay, class Fn>
void checkL2(const std::string& name, Fn fn, Strides st, int n, std::mt19937& g)
{
    // Many items (or calls): a sum in another order differs in some of them.
    for (int rep = 0; rep < (array ? 1 : 40); ++rep) {
    const int count = array ? 40 : 1;
    Vec<E, array, lay> v(n, count, st, 4);
    for (int k = 0; k < count; ++k)
        for (int j = 0; j < n; ++j) v(k, j) = wild<E>(g);
    std::vector<E> out(count + 1, E(-1));
    orlStatus s;
    if constexpr (array) s = t::call(fn, v.args(), out.data(), n, count);
    else s = t::call(fn, v.args(), out.data(), n);
    ASSERT_EQ(s, orlStatusOk);
    ASSERT_EQ(out[count], E(-1));
    const char var = lay == L::P ? 'P' : lay == L::L && array ? (st == Strides::Unit ? 'l' : 'm') : (st == Strides::Unit ? 'u' : 'w');
    const L2Kind kind = l2Kind(sizeof(E) == 4, array, var, n);
    for (int k = 0; k < count; ++k) {
        std::vector<E> x(n);
        for (int j = 0; j < n; ++j) x[j] = v(k, j);
        const E want = expectL2(kind, x, reinterpret_cast<std::uintptr_t>(&v(k, 0)));
        ASSERT_TRUE(ref::sameBits(out[k], want)) << name << " " << var << " n " << n << " item " << k << ": " << kind.sum << " "
                                                 << kind.root << " got " << out[k] << " want " << want;
    }
    }
}

TEST(L2Norm, EveryKernelOrderAndRoot)
{
    std::mt19937 g(11);
    for (int n : {1, 2, 3, 4, 5, 6, 7, 11, 12, 19, 30})
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            checkL2<float, false, L::Std>("v_32f", orlmL2Norm_v_32f, st, n, g);
            checkL2<float, false, L::P>("v_32f_P", orlmL2Norm_v_32f_P, st, n, g);
            checkL2<float, true, L::Std>("va_32f", orlmL2Norm_va_32f, st, n, g);
            checkL2<float, true, L::P>("va_32f_P", orlmL2Norm_va_32f_P, st, n, g);
            checkL2<float, true, L::L>("va_32f_L", orlmL2Norm_va_32f_L, st, n, g);
            checkL2<double, false, L::Std>("v_64f", orlmL2Norm_v_64f, st, n, g);
            checkL2<double, false, L::P>("v_64f_P", orlmL2Norm_v_64f_P, st, n, g);
            checkL2<double, true, L::Std>("va_64f", orlmL2Norm_va_64f, st, n, g);
            checkL2<double, true, L::P>("va_64f_P", orlmL2Norm_va_64f_P, st, n, g);
            checkL2<double, true, L::L>("va_64f_L", orlmL2Norm_va_64f_L, st, n, g);
            if (HasFatalFailure()) return;
        }
}

TEST(L2Norm, ZeroVectorPerPath)
{
    // The refined path has no guard: 0 * inf is NaN. The true roots give 0.
    const float z[14] = {};
    float r = 0;
    ASSERT_EQ(orlmL2Norm_v_32f(z, 4, &r, 4), orlStatusOk);
    EXPECT_TRUE(std::isnan(r));
    ASSERT_EQ(orlmL2Norm_v_32f(z, 8, &r, 4), orlStatusOk);
    EXPECT_EQ(r, 0.0f);
    ASSERT_EQ(orlmL2Norm_v_32f(z, 4, &r, 7), orlStatusOk);
    EXPECT_EQ(r, 0.0f);
}

// ---- FrobNorm --------------------------------------------------------------------------

TEST(FrobNorm, EveryMemberOnSquaresOfOne)
{
    // Elements of +-1: every order gives the exact sum w*h, so each member
    // shows its root and its reading of the layout: refined in the contiguous
    // 32f kernels (sizes 3 to 6 of ma_32f unit, every size of m_32f), true
    // roots elsewhere.
    for (int w : {1, 2, 3, 4, 5, 6, 7})
        for (int h : {w, 3})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                std::vector<double> out;
                const double sum = double(w * h);
                auto go = [&](auto m, auto fn, auto arr, bool refined, const char* name) {
                    using E = typename decltype(m)::E;
                    m.fill([](int kk, int i, int j) { return E((kk + i + j) % 2 ? -1 : 1); });
                    std::vector<E> d(m.count);
                    orlStatus s;
                    if constexpr (decltype(arr)::value) s = t::call(fn, m.args(), w, h, d.data(), m.count);
                    else s = t::call(fn, m.args(), w, h, d.data());
                    ASSERT_EQ(s, orlStatusOk) << name;
                    const E want = refined ? E(ref::refinedRoot(float(sum))) : std::sqrt(E(sum));
                    for (E v : d) ASSERT_EQ(v, want) << name << " " << w << "x" << h << (st == Strides::Unit ? " unit" : " wide");
                };
                const bool unit = st == Strides::Unit;
                go(Mat<float, K::m, L::Std>(w, h, 1, st, 1), orlmFrobNorm_m_32f, std::false_type{}, true, "m_32f");
                go(Mat<float, K::m, L::P>(w, h, 1, st, 1), orlmFrobNorm_m_32f_P, std::false_type{}, false, "m_32f_P");
                go(Mat<float, K::ma, L::Std>(w, h, 5, st, 1), orlmFrobNorm_ma_32f, std::true_type{}, unit, "ma_32f");
                go(Mat<float, K::ma, L::P>(w, h, 5, st, 1), orlmFrobNorm_ma_32f_P, std::true_type{}, false, "ma_32f_P");
                go(Mat<float, K::ma, L::L>(w, h, 5, st, 1), orlmFrobNorm_ma_32f_L, std::true_type{}, false, "ma_32f_L");
                go(Mat<double, K::m, L::Std>(w, h, 1, st, 1), orlmFrobNorm_m_64f, std::false_type{}, false, "m_64f");
                go(Mat<double, K::m, L::P>(w, h, 1, st, 1), orlmFrobNorm_m_64f_P, std::false_type{}, false, "m_64f_P");
                go(Mat<double, K::ma, L::Std>(w, h, 5, st, 1), orlmFrobNorm_ma_64f, std::true_type{}, false, "ma_64f");
                go(Mat<double, K::ma, L::P>(w, h, 5, st, 1), orlmFrobNorm_ma_64f_P, std::true_type{}, false, "ma_64f_P");
                go(Mat<double, K::ma, L::L>(w, h, 5, st, 1), orlmFrobNorm_ma_64f_L, std::true_type{}, false, "ma_64f_L");
                if (HasFatalFailure()) return;
            }
}

TEST(FrobNorm, GuardsPerKernel)
{
    // m_32f: the combined sum against eps, "above": a 3x3 zero matrix is 0
    // with no NaN, and a lone 1e-4 (s = 1e-8) is 0; m_64f has no guard.
    float z[9] = {};
    float r = -1;
    ASSERT_EQ(orlmFrobNorm_m_32f(z, 12, 4, 3, 3, &r), orlStatusOk);
    EXPECT_TRUE(ref::sameBits(r, 0.0f));
    z[4] = 1e-4f;
    ASSERT_EQ(orlmFrobNorm_m_32f(z, 12, 4, 3, 3, &r), orlStatusOk);
    EXPECT_EQ(r, 0.0f);
    double zd[9] = {};
    zd[4] = 1e-4;
    double rd = 0;
    ASSERT_EQ(orlmFrobNorm_m_64f(zd, 24, 8, 3, 3, &rd), orlStatusOk);
    EXPECT_EQ(rd, 1e-4);

    // ma_32f 3x3, unit stride2: groups of four unguarded (NaN), the two
    // items after them guarded (0).
    std::vector<float> zeros(9 * 6, 0.0f), out(6);
    ASSERT_EQ(orlmFrobNorm_ma_32f(zeros.data(), 36, 12, 4, 3, 3, out.data(), 6), orlStatusOk);
    for (int k = 0; k < 4; ++k) EXPECT_TRUE(std::isnan(out[k])) << k;
    EXPECT_EQ(out[4], 0.0f);
    EXPECT_EQ(out[5], 0.0f);

    // The lane-0 guard: 4x2 aligned items with adjacent rows whose squares 0
    // and 4 of the run are zero: ma_32f gives 0, m_32f the true norm.
    alignas(16) float m[8] = {0, 1e10f, 1e10f, 1e10f, 0, 1e10f, 1e10f, 1e10f};
    float one = 0;
    ASSERT_EQ(orlmFrobNorm_ma_32f(m, 32, 16, 4, 4, 2, &one, 1), orlStatusOk);
    EXPECT_EQ(one, 0.0f);
    ASSERT_EQ(orlmFrobNorm_m_32f(m, 16, 4, 4, 2, &one), orlStatusOk);
    EXPECT_NEAR(one, std::sqrt(6.0f) * 1e10f, 1e4f);

    // "At least" eps in the _P kernels: a sum of exactly eps gives its root.
    const float quarter[2] = {0x1p-12f, 0x1p-12f};  // squares 2^-24 each: s = 2^-23 = eps
    const float* tbl2[2] = {quarter, quarter + 1};
    ASSERT_EQ(orlmFrobNorm_m_32f_P(tbl2, 0, 2, 1, &one), orlStatusOk);
    EXPECT_EQ(one, std::sqrt(FLT_EPSILON));
    alignas(16) float run[2] = {0x1p-12f, 0x1p-12f};
    ASSERT_EQ(orlmFrobNorm_m_32f(run, 8, 4, 2, 1, &one), orlStatusOk);
    EXPECT_EQ(one, 0.0f);  // "above": exactly eps is 0
}

// ---- Trace ----------------------------------------------------------------------------------

TEST(Trace, PrecisionPerKernelAndRunningGeneralPath)
{
    // Diagonal 1, 2^-24, 2^-24, ...: element precision loses both small terms,
    // the extended format keeps them (1 + 2^-23).
    auto diag = [](int k, int i, int j) { return i != j ? 5.0f : i == 0 ? 1.0f + float(k) : 0x1p-24f; };
    for (int n : {1, 2, 3, 4, 5, 6, 7}) {
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            auto expect = [&](int k, bool ext) {
                if (n < 3 || n > 6 || !ext) {
                    float s = n < 3 || n > 6 ? 0.0f + (1.0f + float(k)) : 1.0f + float(k);
                    for (int i = 1; i < n; ++i) s += 0x1p-24f;
                    return s;
                }
                return float(ref::Ext(1.0f + float(k)) + ref::Ext(n - 1) * 0x1p-24L);
            };
            Mat<float, K::ma, L::Std> a(n, n, 3, st, 1);
            Mat<float, K::ma, L::L> l(n, n, 3, st, 2);
            Mat<float, K::ma, L::P> p(n, n, 3, st, 3);
            a.fill(diag), l.fill(diag), p.fill(diag);
            float d[3][4];
            ASSERT_EQ(t::call(orlmTrace_ma_32f, a.args(), n, d[0], 3), orlStatusOk);
            ASSERT_EQ(t::call(orlmTrace_ma_32f_L, l.args(), n, d[1], 3), orlStatusOk);
            ASSERT_EQ(t::call(orlmTrace_ma_32f_P, p.args(), n, d[2], 3), orlStatusOk);
            const bool unit = st == Strides::Unit;
            for (int k = 0; k < 3; ++k) {
                EXPECT_EQ(d[0][k], expect(k, !unit)) << "ma n " << n << " item " << k;
                EXPECT_EQ(d[1][k], expect(k, !unit)) << "ma_L n " << n;
                EXPECT_EQ(d[2][k], expect(k, true)) << "ma_P n " << n;
            }
        }
    }
    // 1x1: the running sum starts at +0.0, so -0.0 becomes +0.0.
    const double m = -0.0;
    double r = 1;
    ASSERT_EQ(orlmTrace_m_64f(&m, 8, 8, 1, &r), orlStatusOk);
    EXPECT_TRUE(ref::sameBits(r, 0.0));
    const double* tbl[1] = {&m};
    ASSERT_EQ(orlmTrace_m_64f_P(tbl, 0, 1, &r), orlStatusOk);
    EXPECT_TRUE(ref::sameBits(r, 0.0));
}

// ---- checks, limits, threads -------------------------------------------------------------------

TEST(NormsTrace, ChecksLimitsAndThreads)
{
    // N C Z T O in that order, nothing written.
    std::vector<float> a(6 * 40001 + 64, 1.0f), d(40001 + 4, -1.0f);
    const float* lst[2] = {a.data(), a.data() + 16};
    struct Case {
        orlStatus want;
        std::function<orlStatus()> call;
    };
    const Case cases[] = {
        {orlStatusNullPointer, [&] { return orlmTrace_ma_32f(a.data(), 64, 16, 4, 0, nullptr, 0); }},
        {orlStatusCount, [&] { return orlmFrobNorm_ma_32f(a.data(), 64, 16, 4, 0, 4, d.data(), 0); }},
        {orlStatusSize, [&] { return orlmL2Norm_va_32f(a.data(), 16, 2, d.data(), 0, 2); }},
        {orlStatusStride, [&] { return orlmFrobNorm_ma_32f(a.data(), 64, 16, 2, 4, 4, d.data(), 2); }},
        {orlStatusStride, [&] { return orlmL2Norm_va_32f_L(lst, -4, 6, d.data(), 4, 2); }},
        {orlStatusOffset, [&] { return orlmTrace_ma_32f_L(lst, -4, 16, 4, 4, d.data(), 2); }},
        {orlStatusOffset, [&] { return orlmL2Norm_v_32f_P(lst, 2, d.data(), 2); }},
        {orlStatusSize, [&] { return orlmL2Norm_v_32f_P(lst, 2, d.data(), 0); }},
    };
    for (const Case& c : cases) EXPECT_EQ(c.call(), c.want);
    for (float v : d) ASSERT_EQ(v, -1.0f);

    auto parallel = [](auto call) {
        t::Threads two(2);
        probe::reset();
        EXPECT_EQ(call(), orlStatusOk);
        return probe::regions().count > 0;
    };
    // Cost above the limit: 20000, but 40000 for the 32f _L unit-stride
    // Frobenius norm and trace.
    EXPECT_FALSE(parallel([&] { return orlmL2Norm_va_32f(a.data(), 16, 4, d.data(), 4, 5000); }));
    EXPECT_TRUE(parallel([&] { return orlmL2Norm_va_32f(a.data(), 16, 4, d.data(), 4, 5001); }));
    EXPECT_TRUE(parallel([&] { return orlmTrace_ma_32f(a.data(), 16, 8, 4, 2, d.data(), 10001); }));
    std::vector<const float*> many(40001, a.data());
    EXPECT_FALSE(parallel([&] { return orlmTrace_ma_32f_L(many.data(), 0, 8, 4, 2, d.data(), 20000); }));
    EXPECT_TRUE(parallel([&] { return orlmTrace_ma_32f_L(many.data(), 0, 8, 4, 2, d.data(), 20001); }));
    EXPECT_TRUE(parallel([&] { return orlmFrobNorm_ma_32f_L(many.data(), 0, 8, 8, 2, 2, d.data(), 5001); }));
    EXPECT_FALSE(parallel([&] { return orlmFrobNorm_ma_32f_L(many.data(), 0, 8, 4, 2, 2, d.data(), 10000); }));

    std::mt19937 g(2);
    for (float& v : a) v = wild<float>(g);
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
