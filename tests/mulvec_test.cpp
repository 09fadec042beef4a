// Matrix times vector and Gaxpy: the sum trees and kinds of each kernel bit
// for bit, the dot path and its dependence on addresses, every member on
// rectangular sizes, the checks and their order, the route.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "orlcore.h"
#include "orlm.h"
#include "reference.h"

namespace {

using t::K;
using t::L;
using t::Mat;
using t::Strides;
using t::Threads;
using t::Vec;

// How one result element is formed:
//   Row, Col, Pair  packed, the products added by that tree
//   X               extended, one rounding (Gaxpy: the addend added there too)
//   Chain           element precision from the first product, ascending k
//   B               element precision from +0.0 (blocked and running)
//   D               through the destination
//   Dot             the dot path, by the addresses of the data
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
        // Magnitudes spread over 2^-8 .. 2^8, so that sums in different
        // orders or precisions differ in the last bit on few elements.
        A.fill([&](int, int, int) { return std::ldexp(u(rng), int(rng() % 17) - 8); });
        for (int n = 0; n < X.count; ++n)
            for (int k = 0; k < Kk; ++k) X(n, k) = u(rng);
        for (int n = 0; n < B.count; ++n)
            for (int i = 0; i < M; ++i) B(n, i) = u(rng);
        for (int n = 0; n < Y.count; ++n)
            for (int i = 0; i < M; ++i) Y(n, i) = E(99);
    }

    template <class Fn>
    orlStatus call(Fn fn)
    {
        auto head = std::tuple_cat(A.args(), std::make_tuple(A.cols, A.rows), X.args(), std::make_tuple(Kk));
        auto mid = [&] {
            if constexpr (add == Add::None) return head;
            else return std::tuple_cat(head, B.args(), std::make_tuple(M));
        }();
        auto all = std::tuple_cat(mid, Y.args());
        if constexpr (array) return std::apply(fn, std::tuple_cat(all, std::make_tuple(count)));
        else return std::apply(fn, all);
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
        E s{};
        switch (kd) {
        case Kd::Row: case Kd::Col: case Kd::Pair: {
            E p[6];
            for (int k = 0; k < Kk; ++k) p[k] = a(k) * x(k);
            s = ref::treeSum(kd == Kd::Row ? ref::Tree::Row : kd == Kd::Col ? ref::Tree::Column : ref::Tree::Pair, p, Kk);
            break;
        }
        case Kd::X:
            if (add == Add::None) return ref::dotExt<E>(Kk, a, x);
            return ref::sumExt<E>(Kk + 1, [&](int k) { return k < Kk ? Ext(a(k)) * Ext(x(k)) : Ext(b); });
        case Kd::Chain: s = ref::dotElem<E>(Kk, a, x); break;
        case Kd::B: s = ref::dotFromZero<E>(Kk, a, x); break;
        case Kd::D:
            s = ref::dotThroughDst<E>(Kk, a, x);
            return add == Add::None ? s : E(Ext(s) + Ext(b));
        case Kd::Dot:
            if constexpr (sizeof(E) == 4) s = ref::dotPath32f(Kk, &A(n, i, 0), &X(xa ? n : 0, 0), aligned());
            break;
        }
        return add == Add::None ? s : s + b;
    }

    void check(Kd kd, const std::string& what)
    {
        int bad = 0;
        for (int n = 0; n < count; ++n)
            for (int i = 0; i < M; ++i) {
                const E want = expect(kd, n, i), got = Y(n, i);
                if (!t::sameBits(want, got) && bad++ < 3)
                    ADD_FAILURE() << what << ": item " << n << " row " << i << " got " << got << " want " << want;
            }
    }

    // The data tells `kd` apart from `rival` somewhere, so that a passing
    // check means something.
    bool tellsApart(Kd kd, Kd rival)
    {
        for (int n = 0; n < count; ++n)
            for (int i = 0; i < M; ++i)
                if (!t::sameBits(expect(kd, n, i), expect(rival, n, i))) return true;
        return false;
    }
};

// A square matrix of order n in one member, checked against its kind, and
// the data shown to tell that kind from its nearest rivals: a tree from the
// ascending order (sizes 4 to 6; at 3 every tree is the ascending order) and
// from the extended sum; the row tree from the column tree at 4 and 6.
// Members of one item run on several data sets, so that there are enough
// elements to tell the kinds apart.
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

#define SQ(E, a, xa, lay, add, fn, st, kd) \
    square<E, K::a, xa, L::lay, Add::add>(fn, n, Strides::st, Kd::kd, std::string(#fn " " #st " ") + std::to_string(n))

TEST(MulVecKinds, Float)
{
    for (int n : {3, 4, 5, 6}) {
        // Unit-stride kernels: extended for mv tv tva, the row tree for m
        // letters, the column tree for t letters.
        SQ(float, m, false, Std, None, orlmMul_mv_32f, Unit, X);
        SQ(float, t, false, Std, None, orlmMul_tv_32f, Unit, X);
        SQ(float, t, true, Std, None, orlmMul_tva_32f, Unit, X);
        SQ(float, m, true, Std, None, orlmMul_mva_32f, Unit, Row);
        SQ(float, ma, false, Std, None, orlmMul_mav_32f, Unit, Row);
        SQ(float, ma, true, Std, None, orlmMul_mava_32f, Unit, Row);
        SQ(float, ta, false, Std, None, orlmMul_tav_32f, Unit, Col);
        SQ(float, ta, true, Std, None, orlmMul_tava_32f, Unit, Col);
        // _L: trees for an array of matrices, the general path for mva tva.
        SQ(float, ma, true, L, None, orlmMul_mava_32f_L, Unit, Row);
        SQ(float, ta, false, L, None, orlmMul_tav_32f_L, Unit, Col);
        SQ(float, m, true, L, None, orlmMul_mva_32f_L, Unit, B);
        SQ(float, t, true, L, None, orlmMul_tva_32f_L, Unit, B);
        // Other stride2, _P, and _LS2 (the mv or tv _S2 kernel per item): extended.
        SQ(float, m, true, Std, None, orlmMul_mva_32f, Wide, X);
        SQ(float, ta, true, Std, None, orlmMul_tava_32f, Wide, X);
        SQ(float, ma, true, P, None, orlmMul_mava_32f_P, Unit, X);
        SQ(float, t, false, P, None, orlmMul_tv_32f_P, Unit, X);
        SQ(float, ta, true, L, None, orlmMul_tava_32f_L, Wide, X);
        SQ(float, m, true, L, None, orlmMul_mva_32f_L, Wide, X);
        // Gaxpy: the row tree plus b in unit-stride kernels, else a chain plus b.
        SQ(float, m, false, Std, One, orlmGaxpy_mv_32f, Unit, Row);
        SQ(float, m, true, Std, Each, orlmGaxpy_mva_32f, Unit, Row);
        SQ(float, m, true, L, One, orlmGaxpy_mvav_32f_L, Unit, Row);
        SQ(float, m, true, Std, Each, orlmGaxpy_mva_32f, Wide, Chain);
        SQ(float, m, true, P, One, orlmGaxpy_mvav_32f_P, Unit, Chain);
        SQ(float, m, true, L, Each, orlmGaxpy_mva_32f_L, Wide, Chain);
    }
}

TEST(MulVecKinds, Double)
{
    for (int n : {3, 4, 5, 6}) {
        SQ(double, m, false, Std, None, orlmMul_mv_64f, Unit, Pair);
        SQ(double, m, true, Std, None, orlmMul_mva_64f, Unit, Pair);
        SQ(double, ma, false, Std, None, orlmMul_mav_64f, Unit, Pair);
        SQ(double, ma, true, Std, None, orlmMul_mava_64f, Unit, Pair);
        SQ(double, t, false, Std, None, orlmMul_tv_64f, Unit, X);
        SQ(double, t, true, Std, None, orlmMul_tva_64f, Unit, X);
        SQ(double, ta, false, Std, None, orlmMul_tav_64f, Unit, X);
        SQ(double, ta, true, Std, None, orlmMul_tava_64f, Unit, X);
        SQ(double, m, true, L, None, orlmMul_mva_64f_L, Unit, Pair);
        SQ(double, ta, false, L, None, orlmMul_tav_64f_L, Unit, Pair);
        SQ(double, t, true, L, None, orlmMul_tva_64f_L, Unit, B);
        SQ(double, ta, true, L, None, orlmMul_tava_64f_L, Unit, B);
        SQ(double, m, false, Std, None, orlmMul_mv_64f, Wide, X);
        SQ(double, ta, false, P, None, orlmMul_tav_64f_P, Unit, X);
        SQ(double, ma, true, L, None, orlmMul_mava_64f_L, Wide, X);
        SQ(double, m, false, Std, One, orlmGaxpy_mv_64f, Unit, Pair);
        SQ(double, m, true, L, One, orlmGaxpy_mvav_64f_L, Unit, Pair);
        // Gaxpy 64f other stride2, _P, _LS2: a chain at 3 to 5, extended at 6.
        if (n < 6) {
            SQ(double, m, true, Std, Each, orlmGaxpy_mva_64f, Wide, Chain);
            SQ(double, m, false, P, One, orlmGaxpy_mv_64f_P, Unit, Chain);
            SQ(double, m, true, L, One, orlmGaxpy_mvav_64f_L, Wide, Chain);
        } else {
            SQ(double, m, true, Std, Each, orlmGaxpy_mva_64f, Wide, X);
            SQ(double, m, false, P, One, orlmGaxpy_mv_64f_P, Unit, X);
            SQ(double, m, true, L, One, orlmGaxpy_mvav_64f_L, Wide, X);
        }
    }
}

// The same 4x4 contiguous data: mv rounds once from the extended format, mva
// with one item adds (p0+p2)+(p1+p3) in single precision, tva (on the data
// stored transposed) is extended again.
TEST(MulVecKinds, MvMvaTvaOnSameData)
{
    MV<float, K::m, false, L::Std> mv(4, 4, 1, Strides::Unit, 21);
    MV<float, K::m, true, L::Std> mva(4, 4, 1, Strides::Unit, 21);
    MV<float, K::t, true, L::Std> tva(4, 4, 1, Strides::Unit, 21);
    for (int i = 0; i < 4; ++i)
        for (int k = 0; k < 4; ++k) mva.A(0, i, k) = tva.A(0, i, k) = mv.A(0, i, k);
    for (int k = 0; k < 4; ++k) mva.X(0, k) = tva.X(0, k) = mv.X(0, k);
    ASSERT_EQ(mv.call(orlmMul_mv_32f), orlStatusOk);
    ASSERT_EQ(mva.call(orlmMul_mva_32f), orlStatusOk);
    ASSERT_EQ(tva.call(orlmMul_tva_32f), orlStatusOk);
    bool differ = false;
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(t::sameBits(mv.Y(0, i), tva.Y(0, i))) << i;
        differ |= !t::sameBits(mv.Y(0, i), mva.Y(0, i));
    }
    EXPECT_TRUE(differ);
    mva.check(Kd::Row, "mva");
}

// ---- the dot path -------------------------------------------------------------------

// mva 32f with K = 10 on 16-byte aligned data: a block of 8 in lanes, then
// two scalar additions; the same data moved off 16 bytes is one chain from
// +0.0; with K = 13 the unaligned variant peels up to the vector's boundary.
TEST(MulVecDot, AlignedUnalignedAndPeel)
{
    struct Case {
        int K, shift;  // shift: elements by which x, A and y are moved off 16 bytes
    };
    const int M = 3, count = 4;
    for (Case c : {Case{10, 0}, Case{10, 1}, Case{13, 0}, Case{13, 1}, Case{13, 2}, Case{13, 3}, Case{19, 3}, Case{7, 0}}) {
        // Rows of A and items of x and y 16 bytes apart (64 bytes), so that
        // only the shift decides the variant.
        const int s1 = 16 * ((c.K + 3) / 4 + 1), s0 = s1;  // in elements
        const std::size_t bytes = 4 * std::size_t(M * s1 + 2 * count * s0 + 64);
        float* mem = static_cast<float*>(std::aligned_alloc(64, (bytes + 63) / 64 * 64));
        float* a = mem + c.shift;
        float* x = mem + M * s1 + c.shift;
        float* y = x + count * s0;
        std::mt19937 rng(c.K * 10 + c.shift);
        std::uniform_real_distribution<float> u(-1, 1);
        for (int i = 0; i < M; ++i)
            for (int k = 0; k < c.K; ++k) a[i * s1 + k] = u(rng);
        for (int n = 0; n < count; ++n)
            for (int k = 0; k < c.K; ++k) x[n * s0 + k] = u(rng);
        ASSERT_EQ(orlmMul_mva_32f(a, 4 * s1, 4, c.K, M, x, 4 * s0, 4, c.K, y, 4 * s0, 4, count), orlStatusOk);
        int differ = 0;
        for (int n = 0; n < count; ++n)
            for (int i = 0; i < M; ++i) {
                const float want = ref::dotPath32f(c.K, a + i * s1, x + n * s0, c.shift == 0);
                const float chain = ref::dotFromZero<float>(c.K, [&](int k) { return a[i * s1 + k]; }, [&](int k) { return x[n * s0 + k]; });
                EXPECT_TRUE(t::sameBits(y[n * s0 + i], want)) << "K " << c.K << " shift " << c.shift << " item " << n << " row " << i;
                differ += !t::sameBits(want, chain);
            }
        const bool chainOnly = c.shift == 0 ? c.K < 8 : c.K < 11;
        if (chainOnly) EXPECT_EQ(differ, 0) << c.K << " " << c.shift;
        else EXPECT_GT(differ, 0) << "data does not tell the dot order from a chain: K " << c.K << " shift " << c.shift;
        std::free(mem);
    }
}

// ---- every member on rectangular sizes: the general paths -----------------------

// The general path of a kernel: Mul blocked where the element step is the
// element size, running elsewhere (both from +0.0), through the destination
// in _P; the dot path in the unit-stride mva 32f kernel. Gaxpy running in
// the standard layout, through the destination in _P, _L and _LS2.
template <class E, K ka, bool xa, L lay, Add add, class Fn>
void rectangular(Fn fn, bool dot)
{
    struct Sz {
        int M, K;
    };
    for (Sz z : {Sz{2, 5}, Sz{5, 2}, Sz{3, 4}, Sz{1, 1}, Sz{9, 3}, Sz{8, 13}, Sz{11, 12}})
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            if (lay == L::P && st == Strides::Wide) continue;
            MV<E, ka, xa, lay, add> p(z.M, z.K, 3, st);
            ASSERT_EQ(p.call(fn), orlStatusOk);
            Kd kd = lay == L::P || (add != Add::None && lay == L::L) ? Kd::D : Kd::B;
            if (dot && st == Strides::Unit) kd = Kd::Dot;
            p.check(kd, "rectangular");
            if (z.K >= 11) EXPECT_TRUE(p.tellsApart(kd, kd == Kd::D ? Kd::B : Kd::D));
            if (::testing::Test::HasFailure()) {
                ADD_FAILURE() << "M " << z.M << " K " << z.K << " wide " << (st == Strides::Wide);
                return;
            }
        }
}

#define MUL_SINGLE(X) X(mv, m, false) X(tv, t, false)
#define MUL_ARRAY(X) X(mva, m, true) X(tva, t, true) X(mav, ma, false) X(tav, ta, false) X(mava, ma, true) X(tava, ta, true)

TEST(MulVecShapes, RectangularEveryMember)
{
#define RECT(s, a, xa, lays, add, fn32, fn64)                                        \
    rectangular<float, K::a, xa, L::lays, Add::add>(fn32, Add::add == Add::None && std::string_view(#s) == "mva" && L::lays == L::Std); \
    rectangular<double, K::a, xa, L::lays, Add::add>(fn64, false);
#define SINGLE(s, a, xa)                                                  \
    RECT(s, a, xa, Std, None, orlmMul_##s##_32f, orlmMul_##s##_64f)       \
    RECT(s, a, xa, P, None, orlmMul_##s##_32f_P, orlmMul_##s##_64f_P)
#define ARRAY(s, a, xa) SINGLE(s, a, xa) RECT(s, a, xa, L, None, orlmMul_##s##_32f_L, orlmMul_##s##_64f_L)
    MUL_SINGLE(SINGLE)
    MUL_ARRAY(ARRAY)
    RECT(mv, m, false, Std, One, orlmGaxpy_mv_32f, orlmGaxpy_mv_64f)
    RECT(mv, m, false, P, One, orlmGaxpy_mv_32f_P, orlmGaxpy_mv_64f_P)
    RECT(mva, m, true, Std, Each, orlmGaxpy_mva_32f, orlmGaxpy_mva_64f)
    RECT(mva, m, true, P, Each, orlmGaxpy_mva_32f_P, orlmGaxpy_mva_64f_P)
    RECT(mva, m, true, L, Each, orlmGaxpy_mva_32f_L, orlmGaxpy_mva_64f_L)
    RECT(mvav, m, true, Std, One, orlmGaxpy_mvav_32f, orlmGaxpy_mvav_64f)
    RECT(mvav, m, true, P, One, orlmGaxpy_mvav_32f_P, orlmGaxpy_mvav_64f_P)
    RECT(mvav, m, true, L, One, orlmGaxpy_mvav_32f_L, orlmGaxpy_mvav_64f_L)
#undef RECT
#undef SINGLE
#undef ARRAY
}

// Products of -0.0 keep their sign in the packed and extended sums and lose
// it in the kinds that start from +0.0.
TEST(MulVecKinds, NegativeZeroProducts)
{
    const auto run = [](auto fn, auto tag, int n, Strides st) {
        using E = decltype(tag);
        MV<E, K::ma, true, L::Std> p(n, n, 1, st);
        p.A.fill([](int, int, int) { return -E(0); });
        for (int k = 0; k < n; ++k) p.X(0, k) = E(1 + k);
        EXPECT_EQ(p.call(fn), orlStatusOk);
        return std::signbit(p.Y(0, n - 1));
    };
    EXPECT_TRUE(run(orlmMul_mava_32f, 0.0f, 4, Strides::Unit));   // row tree
    EXPECT_TRUE(run(orlmMul_mava_64f, 0.0, 6, Strides::Unit));    // extended
    EXPECT_TRUE(run(orlmMul_mava_32f, 0.0f, 5, Strides::Wide));   // extended
    EXPECT_FALSE(run(orlmMul_mava_32f, 0.0f, 7, Strides::Unit));  // blocked
    EXPECT_FALSE(run(orlmMul_mava_64f, 0.0, 2, Strides::Wide));   // running
}

// ---- checks ------------------------------------------------------------------------

// Arguments to spoil; `stride` 1 is half an element too many, 2 a stride of 0;
// `offset` 1 is minus one element.
struct Spoil {
    bool null = false;
    int count = 2, w = 3, l2 = 3, l3 = 3, stride = 0, offset = 0;
};

const Spoil kSpoils[] = {
    {.null = true, .count = 0, .w = 0},
    {.count = 0, .w = 0},
    {.w = 0, .l2 = 4, .stride = 1},
    {.l2 = 4, .stride = 1},
    {.l3 = 2, .offset = 1},
    {.l2 = 2, .l3 = 2},
    {.stride = 1, .offset = 1},
    {.offset = 1},
    {.stride = 2},
    {},
};

// The general order N C Z R T O: what a member with or without count,
// strides and offsets returns. Gaxpy's R covers both lengths.
orlStatus expected(const Spoil& s, bool array, bool gaxpy, bool hasT, bool hasO)
{
    std::string failing;
    if (s.null) failing += 'N';
    if (array && s.count < 1) failing += 'C';
    if (s.w < 1 || s.l2 < 1 || s.l3 < 1) failing += 'Z';
    if (s.w != s.l2 || (gaxpy && s.l3 != 3)) failing += 'R';
    if (hasT && s.stride) failing += 'T';
    if (hasO && s.offset) failing += 'O';
    return ref::expectedStatus(array ? "NCZRTO" : "NZRTO", failing);
}

template <class E>
struct Buffers {
    std::vector<E> a = std::vector<E>(32, E(1)), x = std::vector<E>(32, E(1)), d = std::vector<E>(32, E(-5));
    std::vector<const E*> ta, tx;
    std::vector<E*> td;
    Buffers()
    {
        for (int k = 0; k < 9; ++k) ta.push_back(&a[k]), tx.push_back(&x[k]), td.push_back(&d[k]);
    }
    bool untouched() const
    {
        return std::all_of(d.begin(), d.end(), [](E v) { return v == E(-5); });
    }
};

template <class E>
int strideOf(const Spoil& s, int good)
{
    return s.stride == 0 ? good : s.stride == 1 ? good + int(sizeof(E)) / 2 : 0;
}
template <class E>
int offsetOf(const Spoil& s)
{
    return s.offset ? -int(sizeof(E)) : 0;
}

template <class E, class Call>
void checkMember(const char* name, bool array, bool gaxpy, bool hasT, bool hasO, Call call)
{
    for (const Spoil& s : kSpoils) {
        Buffers<E> buf;
        const orlStatus want = expected(s, array, gaxpy, hasT, hasO);
        EXPECT_EQ(call(buf, s), want) << name << " null " << s.null << " count " << s.count << " w " << s.w << " l2 " << s.l2
                                      << " l3 " << s.l3 << " stride " << s.stride << " offset " << s.offset;
        if (want != orlStatusOk) EXPECT_TRUE(buf.untouched()) << name;
    }
}

TEST(MulVecChecks, OrderMismatchAndNothingWritten)
{
    // The matrix is 3 rows of width w; l2 must equal w (m letters) or the height (t).
    checkMember<float>("mva_32f", true, false, true, false, [](Buffers<float>& b, const Spoil& s) {
        return orlmMul_mva_32f(b.a.data(), 12, strideOf<float>(s, 4), s.w, 3, b.x.data(), 12, 4, s.l2, s.null ? nullptr : b.d.data(),
                               12, 4, s.count);
    });
    checkMember<double>("tav_64f_P", true, false, true, true, [](Buffers<double>& b, const Spoil& s) {
        // tav: K is the height, so the spoiled width stands as the height.
        return orlmMul_tav_64f_P(b.ta.data(), offsetOf<double>(s), strideOf<double>(s, 8), 3, s.w, b.tx.data(), 0, s.l2,
                                 s.null ? nullptr : b.td.data(), 0, 8, s.count);
    });
    checkMember<float>("mava_32f_L", true, false, true, true, [](Buffers<float>& b, const Spoil& s) {
        const float* la[2] = {b.a.data(), b.a.data() + 9};
        const float* lx[2] = {b.x.data(), b.x.data() + 3};
        float* ld[2] = {b.d.data(), b.d.data() + 3};
        return orlmMul_mava_32f_L(la, 0, 12, 4, s.w, 3, lx, offsetOf<float>(s), strideOf<float>(s, 4), s.l2,
                                  s.null ? nullptr : ld, 0, 4, s.count);
    });
    checkMember<double>("mv_64f", false, false, true, false, [](Buffers<double>& b, const Spoil& s) {
        return orlmMul_mv_64f(b.a.data(), 24, 8, s.w, 3, b.x.data(), strideOf<double>(s, 8), s.l2, s.null ? nullptr : b.d.data(), 8);
    });
    checkMember<float>("tv_32f_P", false, false, false, true, [](Buffers<float>& b, const Spoil& s) {
        return orlmMul_tv_32f_P(b.ta.data(), 0, 3, s.w, b.tx.data(), offsetOf<float>(s), s.l2, s.null ? nullptr : b.td.data(), 0);
    });
    // Gaxpy: l3 must equal the height 3.
    checkMember<float>("Gaxpy_mv_32f", false, true, true, false, [](Buffers<float>& b, const Spoil& s) {
        return orlmGaxpy_mv_32f(b.a.data(), 12, 4, s.w, 3, b.x.data(), 4, s.l2, b.x.data(), strideOf<float>(s, 4), s.l3,
                                s.null ? nullptr : b.d.data(), 4);
    });
    checkMember<double>("Gaxpy_mvav_64f_L", true, true, true, true, [](Buffers<double>& b, const Spoil& s) {
        const double* lx[2] = {b.x.data(), b.x.data() + 3};
        double* ld[2] = {b.d.data(), b.d.data() + 3};
        return orlmGaxpy_mvav_64f_L(b.a.data(), 24, 8, s.w, 3, lx, 0, 8, s.l2, b.x.data(), strideOf<double>(s, 8), s.l3,
                                    s.null ? nullptr : ld, offsetOf<double>(s), 8, s.count);
    });
    checkMember<float>("Gaxpy_mva_32f_P", true, true, true, true, [](Buffers<float>& b, const Spoil& s) {
        return orlmGaxpy_mva_32f_P(b.ta.data(), 0, s.w, 3, b.tx.data(), 0, 12, s.l2, b.tx.data(), offsetOf<float>(s),
                                   strideOf<float>(s, 12), s.l3, s.null ? nullptr : b.td.data(), 0, 12, s.count);
    });
}

// ---- route -------------------------------------------------------------------------

// Cost of each array shape from the stored width w, height h and the lengths.
long long costOf(std::string_view s, long long w, long long h, long long l2, long long l3, long long n)
{
    if (s == "mva" || s == "tva") return w * h + (w + h) * n;
    if (s == "mav") return h * (w + 1) * n + w;
    if (s == "tav") return w * (h + 1) * n + h;
    if (s == "mava" || s == "tava") return (w * h + w + h) * n;
    if (s == "Gaxpy_mva") return (l2 + 2 * l3) * n;
    return l2 * n + l3 + l3 * n;  // Gaxpy_mvav
}

template <class E, K ka, bool xa, L lay, Add add, class Fn>
bool parallel(Fn fn, int M, int Kk, int n, Strides st)
{
    MV<E, ka, xa, lay, add> p(M, Kk, n, st);
    probe::reset();
    EXPECT_EQ(p.call(fn), orlStatusOk);
    return probe::regions().count > 0;
}

// The largest count whose cost stays at the limit is serial, one more is parallel.
template <class E, K ka, bool xa, L lay, Add add = Add::None, class Fn>
void limitEdge(Fn fn, std::string_view shape, Strides st, long long limit, int M = 3, int Kk = 2)
{
    MV<E, ka, xa, lay, add> sizes(M, Kk, 1, st);
    const auto cost = [&](long long n) { return costOf(shape, sizes.A.cols, sizes.A.rows, Kk, M, n); };
    int n = 1;
    while (cost(n + 1) <= limit) ++n;
    if (shape == "Gaxpy_mva" && M == 4 && Kk == 2) EXPECT_EQ(cost(n), limit);  // exactly the limit: serial
    EXPECT_FALSE((parallel<E, ka, xa, lay, add>(fn, M, Kk, n, st))) << shape << " count " << n;
    EXPECT_TRUE((parallel<E, ka, xa, lay, add>(fn, M, Kk, n + 1, st))) << shape << " count " << n + 1;
}

TEST(MulVecRoute, CostFormulasAndLimits)
{
    Threads two(2);
    limitEdge<double, K::m, true, L::Std>(orlmMul_mva_64f, "mva", Strides::Unit, 36864);
    limitEdge<double, K::t, true, L::Std>(orlmMul_tva_64f, "tva", Strides::Unit, 36864);
    limitEdge<double, K::ma, false, L::Std>(orlmMul_mav_64f, "mav", Strides::Unit, 36864);
    limitEdge<double, K::ta, false, L::Std>(orlmMul_tav_64f, "tav", Strides::Unit, 36864);
    limitEdge<double, K::ma, true, L::Std>(orlmMul_mava_64f, "mava", Strides::Unit, 36864);
    limitEdge<double, K::ta, true, L::Std>(orlmMul_tava_64f, "tava", Strides::Wide, 18432);
    limitEdge<double, K::ma, false, L::L>(orlmMul_mav_64f_L, "mav", Strides::Unit, 18432);
    limitEdge<double, K::t, true, L::P>(orlmMul_tva_64f_P, "tva", Strides::Unit, 9216);
    limitEdge<float, K::ta, false, L::Std>(orlmMul_tav_32f, "tav", Strides::Unit, 6, 1, 1);
    limitEdge<float, K::ma, true, L::P>(orlmMul_mava_32f_P, "mava", Strides::Unit, 6, 1, 1);
    // Gaxpy: one limit of 5000; (2 + 2*4) * 500 is exactly 5000.
    limitEdge<float, K::m, true, L::Std, Add::Each>(orlmGaxpy_mva_32f, "Gaxpy_mva", Strides::Unit, 5000, 4, 2);
    limitEdge<double, K::m, true, L::L, Add::Each>(orlmGaxpy_mva_64f_L, "Gaxpy_mva", Strides::Wide, 5000, 4, 2);
    limitEdge<float, K::m, true, L::P, Add::One>(orlmGaxpy_mvav_32f_P, "Gaxpy_mvav", Strides::Unit, 5000);
    // Single shapes have no driver; fewer items than threads stay serial.
    EXPECT_FALSE((parallel<float, K::m, false, L::Std, Add::None>(orlmMul_mv_32f, 300, 300, 1, Strides::Unit)));
    Threads four(4);
    EXPECT_FALSE((parallel<float, K::ma, true, L::Std, Add::None>(orlmMul_mava_32f, 6, 6, 3, Strides::Unit)));
}

// A cost that wraps to a negative 32-bit number takes the serial route: mva
// 32f with one row of 65536 and 32768 items costs 65536 + 65537 * 32768,
// past 2^31. The vectors overlap one element apart, so that the call needs
// little memory, and each row is the dot path's vector loop, so that it is
// quick.
TEST(MulVecRoute, WrappedCostIsSerial)
{
    // 2^31 products take minutes under the i386 emulator; the cost is the
    // same 32-bit arithmetic on both ABIs.
    if (sizeof(void*) == 4) GTEST_SKIP() << "too slow under emulation";
    Threads two(2);
    const int w = 65536, n = 32768;
    std::vector<float> a(w, 0.5f), x(w + n, 0.25f), y(n, 0.0f);
    probe::reset();
    ASSERT_EQ(orlmMul_mva_32f(a.data(), 4 * w, 4, w, 1, x.data(), 4, 4, w, y.data(), 4, 4, n), orlStatusOk);
    EXPECT_EQ(probe::regions().count, 0);
    EXPECT_EQ(y[0], 0.125f * w);
    EXPECT_EQ(y[n - 1], 0.125f * w);
}

// The split over threads changes nothing in the values.
TEST(MulVecRoute, SameBitsForOneToFourThreads)
{
    const auto run = [](auto make, auto fn) {
        std::vector<std::vector<unsigned char>> outs;
        for (int T = 1; T <= 4; ++T) {
            Threads th(T);
            auto p = make();
            EXPECT_EQ(p.call(fn), orlStatusOk);
            outs.push_back(p.Y.mem);
        }
        for (int T = 1; T < 4; ++T) EXPECT_EQ(outs[T], outs[0]) << "threads " << T + 1;
    };
    run([] { return MV<float, K::ma, true, L::Std>(4, 4, 37, Strides::Unit); }, orlmMul_mava_32f);
    run([] { return MV<float, K::m, true, L::L>(5, 7, 23, Strides::Wide); }, orlmMul_mva_32f_L);
    run([] { return MV<double, K::m, true, L::P, Add::Each>(6, 6, 2000, Strides::Unit); }, orlmGaxpy_mva_64f_P);
    run([] { return MV<double, K::m, true, L::Std>(6, 6, 5000, Strides::Unit); }, orlmMul_mva_64f);
}

}  // namespace
