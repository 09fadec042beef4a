// Matrix times vector and Gaxpy: the sum trees and kinds of each kernel bit
// for bit, the dot path and its dependence on addresses, every member on
// rectangular sizes, the checks and their order, the route.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "operands.h"
#include "reference.h"

namespace {

using t::K;
using t::L;
using t::Mat;
using t::Strides;
using t::Vec;
using ref::Num;

// How one result element is formed: packed by the row, column or pair tree
// (in ref::Tree's order), extended (Gaxpy: the addend added there too),
// element precision from the first product (Chain) or from +0.0 (B, blocked
// and running), through the destination (D), or the dot path (Dot).
enum class Kd { Row, Col, Pair, X, Chain, B, D, Dot };

// Gaxpy's addend: none (Mul), one vector for all items, one per item.
enum class Add { None, One, Each };

// y = op(A) x (+ b) on an M x K matrix as the member reads it, `count` items.
template <class E, K ka, bool xa, L lay, Add add = Add::None>
struct MV {
    static constexpr bool array = t::arr(ka) || xa;
    int M, Kk, count;
    Mat<E, ka, lay> A;  // logical A(i, k) whatever the letter
    Vec<E, xa, lay> X;
    Vec<E, add == Add::Each, lay> B;
    Vec<E, array, lay, true> Y;

    MV(int m, int k, int items, Strides st, unsigned seed = 7)
        : M(m), Kk(k), count(array ? items : 1), A(k, m, items, st, seed), X(k, items, st, seed + 1), B(m, items, st, seed + 2),
          Y(m, items, st, seed + 3)
    {
        std::mt19937 rng(seed);
        std::uniform_real_distribution<E> u(E(-1), E(1));
        // Magnitudes over 2^-8 .. 2^8: other orders differ in the last bit on some elements.
        A.fill([&](int, int, int) { return std::ldexp(u(rng), int(rng() % 17) - 8); });
        for (int n = 0; n < X.count; ++n)
            for (int k = 0; k < Kk; ++k) X(n, k) = u(rng);
        for (int n = 0; n < B.count; ++n)
            for (int i = 0; i < M; ++i) B(n, i) = u(rng);
    }

    template <class Fn>
    orlStatus call(Fn fn)
    {
        auto head = std::tuple_cat(A.args(), std::make_tuple(A.cols, A.rows), X.args(), std::make_tuple(Kk));
        auto all = [&] {
            if constexpr (add == Add::None) return std::tuple_cat(head, Y.args());
            else return std::tuple_cat(head, B.args(), std::make_tuple(M), Y.args());
        }();
        if constexpr (array) return t::call(fn, all, count);
        else return t::call(fn, all);
    }

    // The dot path's variant: all bases and the strides between rows and items on 16 bytes.
    bool aligned()
    {
        const auto a16 = [](auto v) { return (std::uintptr_t(v) & 15) == 0; };
        return a16(A.mem.data()) && a16(A.s1) && a16(X.mem.data()) && a16(X.s0) && a16(Y.mem.data()) && a16(Y.s0);
    }

    E expect(Kd kd, int n, int i)
    {
        using Ext = ref::Ext;
        const auto a = [&](int k) { return A(n, i, k); };
        const auto x = [&](int k) { return X(xa ? n : 0, k); };
        const E b = add == Add::None ? E(0) : B(add == Add::Each ? n : 0, i);
        std::vector<E> p(Kk);
        for (int k = 0; k < Kk; ++k) p[k] = a(k) * x(k);
        E s{};
        switch (kd) {
        case Kd::X:
            if (add == Add::None) return ref::dot<E>(Num::Extended, Kk, a, x);
            return ref::sumExt<E>(Kk + 1, [&](int k) { return k < Kk ? Ext(a(k)) * Ext(x(k)) : Ext(b); });
        case Kd::D:
            s = ref::dot<E>(Num::ThroughDst, Kk, a, x);
            return add == Add::None ? s : E(Ext(s) + Ext(b));
        case Kd::Chain: s = ref::dot<E>(Num::Packed, Kk, a, x); break;
        case Kd::B: s = ref::dot<E>(Num::Blocked, Kk, a, x); break;
        case Kd::Dot:
            if constexpr (sizeof(E) == 4) s = ref::laneSum(p.data(), Kk, std::uintptr_t(&X(xa ? n : 0, 0)), 11, aligned());
            break;
        default: s = ref::sumInOrder(ref::treeOrder(ref::Tree(int(kd)), Kk), p.data());
        }
        return add == Add::None ? s : s + b;
    }

    void check(Kd kd, const std::string& what)
    {
        for (int n = 0; n < count; ++n)
            for (int i = 0; i < M; ++i)
                ASSERT_TRUE(t::sameBits(expect(kd, n, i), Y(n, i))) << what << ": item " << n << " row " << i << " want " << expect(kd, n, i);
    }

    // The data tells `kd` from `rival` somewhere, so that a passing check means something.
    bool tellsApart(Kd kd, Kd rival)
    {
        for (int n = 0; n < count; ++n)
            for (int i = 0; i < M; ++i)
                if (!t::sameBits(expect(kd, n, i), expect(rival, n, i))) return true;
        return false;
    }
};

// A square matrix of order n against its kind, the data shown to tell that
// kind from its nearest rivals: a tree from the ascending order (at 3 every
// tree is ascending) and from the extended sum; the row tree from the column
// tree at 4 and 6. Single items run on several data sets.
template <class E, K ka, bool xa, L lay, Add add, class Fn>
void square(Fn fn, int n, Strides st, Kd kd, const std::string& what)
{
    using P = MV<E, ka, xa, lay, add>;
    const bool tree = kd == Kd::Row || kd == Kd::Col || kd == Kd::Pair;
    bool rival = false, chain = !(tree && n > 3), col = !(kd == Kd::Row && n % 2 == 0), dst = kd != Kd::B;
    for (unsigned seed = 7; seed < (P::array ? 8u : 15u); ++seed) {
        P p(n, n, 5, st, seed);
        ASSERT_EQ(p.call(fn), orlStatusOk) << what;
        p.check(kd, what);
        rival = rival || p.tellsApart(kd, kd == Kd::X ? Kd::Chain : Kd::X);
        chain = chain || p.tellsApart(kd, Kd::Chain);
        col = col || p.tellsApart(kd, Kd::Col);
        dst = dst || p.tellsApart(kd, Kd::D);
    }
    EXPECT_TRUE(rival && chain && col && dst) << what << ": the data does not tell the kind from its rivals";
}

// One row per kernel whose paths at 3 to 6 are settled: the member in 32f
// and in 64f, the stride case, the kind of each.
#define NAME_Std(fn, ty) fn##_##ty
#define NAME_P(fn, ty) fn##_##ty##_P
#define NAME_L(fn, ty) fn##_##ty##_L
#define SQ(a, xa, lay, add, fn, st, k32, k64)                                                                                    \
    square<float, K::a, xa, L::lay, Add::add>(NAME_##lay(fn, 32f), n, Strides::st, k32, #fn " 32f " #lay " " #st " " + std::to_string(n)); \
    square<double, K::a, xa, L::lay, Add::add>(NAME_##lay(fn, 64f), n, Strides::st, k64, #fn " 64f " #lay " " #st " " + std::to_string(n));

TEST(MulVecKinds, EveryKernelAtSizesThreeToSix)
{
    constexpr Kd Row = Kd::Row, Col = Kd::Col, Pair = Kd::Pair, X = Kd::X, Chain = Kd::Chain, B = Kd::B;
    for (int n : {3, 4, 5, 6}) {
        const Kd chainToFive = n < 6 ? Chain : X;  // Gaxpy 64f other stride2, _P, _LS2
        // Unit stride2: 32f extended for mv tv tva, else rows for m letters, columns for t; 64f pairs for m, extended for t.
        SQ(m, false, Std, None, orlmMul_mv, Unit, X, Pair)
        SQ(t, false, Std, None, orlmMul_tv, Unit, X, X)
        SQ(t, true, Std, None, orlmMul_tva, Unit, X, X)
        SQ(m, true, Std, None, orlmMul_mva, Unit, Row, Pair)
        SQ(ma, false, Std, None, orlmMul_mav, Unit, Row, Pair)
        SQ(ma, true, Std, None, orlmMul_mava, Unit, Row, Pair)
        SQ(ta, false, Std, None, orlmMul_tav, Unit, Col, X)
        SQ(ta, true, Std, None, orlmMul_tava, Unit, Col, X)
        // _L: trees for an array of matrices (and 64f mva), the general path for the others.
        SQ(ma, true, L, None, orlmMul_mava, Unit, Row, Pair)
        SQ(ta, false, L, None, orlmMul_tav, Unit, Col, Pair)
        SQ(ta, true, L, None, orlmMul_tava, Unit, Col, B)
        SQ(m, true, L, None, orlmMul_mva, Unit, B, Pair)
        SQ(t, true, L, None, orlmMul_tva, Unit, B, B)
        // Other stride2, _P, and _LS2 (the mv or tv kernel per item): extended.
        SQ(m, true, Std, None, orlmMul_mva, Wide, X, X)
        SQ(ta, true, Std, None, orlmMul_tava, Wide, X, X)
        SQ(ma, true, P, None, orlmMul_mava, Unit, X, X)
        SQ(t, false, P, None, orlmMul_tv, Unit, X, X)
        SQ(ta, true, L, None, orlmMul_tava, Wide, X, X)
        SQ(m, true, L, None, orlmMul_mva, Wide, X, X)
        // Gaxpy: the tree plus b in unit-stride kernels, else a chain plus b (64f at 6: extended).
        SQ(m, false, Std, One, orlmGaxpy_mv, Unit, Row, Pair)
        SQ(m, true, Std, Each, orlmGaxpy_mva, Unit, Row, Pair)
        SQ(m, true, L, One, orlmGaxpy_mvav, Unit, Row, Pair)
        SQ(m, true, Std, Each, orlmGaxpy_mva, Wide, Chain, chainToFive)
        SQ(m, true, P, One, orlmGaxpy_mvav, Unit, Chain, chainToFive)
        SQ(m, true, L, Each, orlmGaxpy_mva, Wide, Chain, chainToFive)
    }
}

// Products of -0.0 keep their sign in the packed and extended sums and lose
// it in the kinds that start from +0.0 (the data above cannot tell these apart).
TEST(MulVecKinds, NegativeZeroProducts)
{
    const auto negative = [](auto fn, auto tag, int n, Strides st) {
        MV<decltype(tag), K::ma, true, L::Std> p(n, n, 1, st);
        p.A.fill([](int, int, int) { return -decltype(tag)(0); });
        for (int k = 0; k < n; ++k) p.X(0, k) = decltype(tag)(1 + k);  // -0.0 products
        EXPECT_EQ(p.call(fn), orlStatusOk);
        return std::signbit(p.Y(0, n - 1));
    };
    EXPECT_TRUE(negative(orlmMul_mava_32f, 0.0f, 4, Strides::Unit));   // row tree
    EXPECT_TRUE(negative(orlmMul_mava_64f, 0.0, 6, Strides::Unit));    // extended
    EXPECT_FALSE(negative(orlmMul_mava_32f, 0.0f, 7, Strides::Unit));  // blocked
    EXPECT_FALSE(negative(orlmMul_mava_64f, 0.0, 2, Strides::Wide));   // running
}

// mva 32f on rows past the sizes 3 to 6: on 16-byte aligned data a lane sum
// from K = 8, else a chain below K = 11 and a peel up to x's next boundary.
TEST(MulVecDot, AlignedUnalignedAndPeel)
{
    const int M = 3, count = 4;
    for (auto [Kk, shift] : std::initializer_list<std::pair<int, int>>{{10, 0}, {10, 1}, {13, 0}, {13, 1}, {13, 2}, {13, 3}, {19, 3}, {7, 0}}) {
        const int s = 16 * ((Kk + 3) / 4 + 1);  // between rows and items, in elements: 16-byte steps
        alignas(64) static float mem[1200];
        float *a = mem + shift, *x = a + M * s, *y = x + count * s;
        std::mt19937 rng(Kk * 10 + shift);
        for (int k = 0; k < M * s + count * s; ++k) a[k] = std::uniform_real_distribution<float>(-1, 1)(rng);
        ASSERT_EQ(orlmMul_mva_32f(a, 4 * s, 4, Kk, M, x, 4 * s, 4, Kk, y, 4 * s, 4, count), orlStatusOk);
        int differ = 0;
        for (int n = 0; n < count; ++n)
            for (int i = 0; i < M; ++i) {
                std::vector<float> p(Kk);
                for (int k = 0; k < Kk; ++k) p[k] = a[i * s + k] * x[n * s + k];
                const float want = ref::laneSum(p.data(), Kk, std::uintptr_t(x + n * s), 11, shift == 0);
                EXPECT_TRUE(t::sameBits(y[n * s + i], want)) << "K " << Kk << " shift " << shift << " item " << n << " row " << i;
                differ += !t::sameBits(want, ref::chainFromZero(Kk, p.data()));
            }
        if (shift == 0 ? Kk < 8 : Kk < 11) EXPECT_EQ(differ, 0) << Kk << " " << shift;
        else EXPECT_GT(differ, 0) << "data does not tell the dot order from a chain: K " << Kk << " shift " << shift;
    }
}

// Every member on rectangular sizes, its general path: from +0.0 (blocked or
// running), through the destination in _P and Gaxpy _L, the dot path in mva 32f.
template <class E, K ka, bool xa, L lay, Add add, class Fn>
void rectangular(Fn fn, bool dot)
{
    for (auto [M, Kk] : std::initializer_list<std::pair<int, int>>{{2, 5}, {5, 2}, {3, 4}, {1, 1}, {9, 3}, {8, 13}, {11, 12}})
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            if (lay == L::P && st == Strides::Wide) continue;
            MV<E, ka, xa, lay, add> p(M, Kk, 3, st);
            ASSERT_EQ(p.call(fn), orlStatusOk);
            Kd kd = lay == L::P || (add != Add::None && lay == L::L) ? Kd::D : dot && st == Strides::Unit ? Kd::Dot : Kd::B;
            p.check(kd, "rectangular M " + std::to_string(M) + " K " + std::to_string(Kk) + (st == Strides::Wide ? " wide" : ""));
            if (Kk >= 11) EXPECT_TRUE(p.tellsApart(kd, kd == Kd::D ? Kd::B : Kd::D));
            if (::testing::Test::HasFailure()) return;
        }
}

TEST(MulVecShapes, RectangularEveryMember)
{
#define RECT(s, a, xa, lays, add, fn32, fn64)                                                                               \
    rectangular<float, K::a, xa, L::lays, Add::add>(fn32, Add::add == Add::None && std::string_view(#s) == "mva" && L::lays == L::Std); \
    rectangular<double, K::a, xa, L::lays, Add::add>(fn64, false);
#define SINGLE(s, a, xa) RECT(s, a, xa, Std, None, orlmMul_##s##_32f, orlmMul_##s##_64f) RECT(s, a, xa, P, None, orlmMul_##s##_32f_P, orlmMul_##s##_64f_P)
#define ARRAY(s, a, xa) SINGLE(s, a, xa) RECT(s, a, xa, L, None, orlmMul_##s##_32f_L, orlmMul_##s##_64f_L)
#define GAXPY(s, a, xa, lays, add, sfx) RECT(s, a, xa, lays, add, orlmGaxpy_##s##_32f##sfx, orlmGaxpy_##s##_64f##sfx)
    SINGLE(mv, m, false) SINGLE(tv, t, false)
    ARRAY(mva, m, true) ARRAY(tva, t, true) ARRAY(mav, ma, false) ARRAY(tav, ta, false) ARRAY(mava, ma, true) ARRAY(tava, ta, true)
    GAXPY(mv, m, false, Std, One, ) GAXPY(mv, m, false, P, One, _P)
    GAXPY(mva, m, true, Std, Each, ) GAXPY(mva, m, true, P, Each, _P) GAXPY(mva, m, true, L, Each, _L)
    GAXPY(mvav, m, true, Std, One, ) GAXPY(mvav, m, true, P, One, _P) GAXPY(mvav, m, true, L, One, _L)
}

// One member per check order: 3 x 3 matrices (a t letter's K is the height),
// R spoils src2Length, or Gaxpy_mv's src3Length; nothing written on failure.
TEST(MulVecChecks, OrderMismatchAndNothingWritten)
{
    t::checkRows({
        {"mva_32f", "NCZRT", [](auto& s) { return orlmMul_mva_32f(s.f, 12, s.t(4), s.z(3), 3, s.f, 12, 4, s.r(3), s.n(s.fo), 12, 4, s.c()); }},
        {"tav_64f_P", "NCZRTO", [](auto& s) { return orlmMul_tav_64f_P(s.tg, s.o(8), s.t(72), 3, s.z(3), s.tg, 0, s.r(3), s.n(s.tgo), 0, 24, s.c()); }},
        {"mv_64f", "NZRT", [](auto& s) { return orlmMul_mv_64f(s.g, 24, 8, s.z(3), 3, s.g, s.t(8), s.r(3), s.n(s.go), 8); }},
        {"tv_32f_P", "NZRO", [](auto& s) { return orlmMul_tv_32f_P(s.tf, 0, 3, s.z(3), s.tf, s.o(4), s.r(3), s.n(s.to), 0); }},
        {"Gaxpy_mv_32f", "NZRT", [](auto& s) { return orlmGaxpy_mv_32f(s.f, 12, 4, s.z(3), 3, s.f, 4, 3, s.f, s.t(4), s.r(3), s.n(s.fo), 4); }},
        {"Gaxpy_mvav_64f_L", "NCZRTO", [](auto& s) {
             return orlmGaxpy_mvav_64f_L(s.g, 24, 8, s.z(3), 3, s.tg, 0, 8, s.r(3), s.g, s.t(8), 3, s.n(s.tgo), s.o(8), 8, s.c()); }},
    }, ref::expectedStatus);
}

// ---- route -------------------------------------------------------------------------

// The largest count whose cost stays at the limit is serial, one more is
// parallel; M = 3 and K = 2 unless given, so that Mul's stored width and
// height are 2 and 3 (m letters) or 3 and 2 (t letters).
template <class E, K ka, bool xa, L lay, Add add = Add::None, class Fn, class Cost>
void limitEdge(Fn fn, Strides st, long long limit, Cost cost, int M = 3, int Kk = 2)
{
    int n = 1;
    while (cost(n + 1) <= limit) ++n;
    for (int items : {n, n + 1}) {
        MV<E, ka, xa, lay, add> p(M, Kk, items, st);
        EXPECT_EQ(t::parallel([&] { return p.call(fn); }), items > n) << "count " << items << " limit " << limit;
    }
}

// Costs: mva tva w*h + (w+h)*n, mav h*(w+1)*n + w, tav w*(h+1)*n + h, mava
// tava (w*h+w+h)*n; Gaxpy mva (l2 + 2*l3)*n, mvav l2*n + l3 + l3*n.
TEST(MulVecRoute, CostFormulasAndLimits)
{
    limitEdge<double, K::m, true, L::Std>(orlmMul_mva_64f, Strides::Unit, 36864, [](long long n) { return 6 + 5 * n; });
    limitEdge<double, K::ma, false, L::Std>(orlmMul_mav_64f, Strides::Unit, 36864, [](long long n) { return 9 * n + 2; });
    limitEdge<double, K::ta, false, L::Std>(orlmMul_tav_64f, Strides::Unit, 36864, [](long long n) { return 9 * n + 2; });
    limitEdge<double, K::ma, true, L::Std>(orlmMul_mava_64f, Strides::Unit, 36864, [](long long n) { return 11 * n; });
    limitEdge<double, K::ta, true, L::Std>(orlmMul_tava_64f, Strides::Wide, 18432, [](long long n) { return 11 * n; });
    limitEdge<double, K::ma, false, L::L>(orlmMul_mav_64f_L, Strides::Unit, 18432, [](long long n) { return 9 * n + 2; });
    limitEdge<double, K::t, true, L::P>(orlmMul_tva_64f_P, Strides::Unit, 9216, [](long long n) { return 6 + 5 * n; });
    limitEdge<float, K::ta, false, L::Std>(orlmMul_tav_32f, Strides::Unit, 6, [](long long n) { return 2 * n + 1; }, 1, 1);
    // Gaxpy: one limit of 5000; M = 4 makes a cost of exactly 5000 (serial) at 500 items.
    limitEdge<float, K::m, true, L::Std, Add::Each>(orlmGaxpy_mva_32f, Strides::Unit, 5000, [](long long n) { return 10 * n; }, 4, 2);
    limitEdge<float, K::m, true, L::P, Add::One>(orlmGaxpy_mvav_32f_P, Strides::Unit, 5000, [](long long n) { return 5 * n + 3; });
    // Single shapes have no driver.
    MV<float, K::m, false, L::Std> single(300, 300, 1, Strides::Unit);
    EXPECT_FALSE(t::parallel([&] { return single.call(orlmMul_mv_32f); }));
}

// A cost that wraps to a negative 32-bit number takes the serial route: mva
// 32f with one row of 65536 and 32768 items costs 65536 + 65537 * 32768, past
// 2^31; the vectors overlap. 2^31 products take minutes under the i386
// emulator, and the cost is the same 32-bit arithmetic there.
TEST(MulVecRoute, WrappedCostIsSerial)
{
    if (sizeof(void*) == 4) GTEST_SKIP() << "too slow under emulation";
    const int w = 65536, n = 32768;
    std::vector<float> a(w, 0.5f), x(w + n, 0.25f), y(n, 0.0f);
    EXPECT_FALSE(t::parallel([&] { return orlmMul_mva_32f(a.data(), 4 * w, 4, w, 1, x.data(), 4, 4, w, y.data(), 4, 4, n); }));
    EXPECT_EQ(y[0], 0.125f * w);
    EXPECT_EQ(y[n - 1], 0.125f * w);
}

// The split over threads changes nothing in the values.
TEST(MulVecRoute, SameBitsForOneToFourThreads)
{
    std::vector<std::vector<unsigned char>> outs;
    for (int T = 1; T <= 4; ++T) {
        t::Threads th(T);
        MV<double, K::m, true, L::P, Add::Each> p(6, 6, 2000, Strides::Unit);
        EXPECT_EQ(p.call(orlmGaxpy_mva_64f_P), orlStatusOk);
        outs.push_back(p.Y.mem);
        EXPECT_EQ(outs[T - 1], outs[0]) << "threads " << T;
    }
}

}  // namespace
