// Matrix multiply: the numeric kind of each kernel bit for bit at sizes 3 to 6 and in its
// general path, every shape and layout on rectangular products, zero sums of -0.0, in-place
// use, the checks and their order, the costs and limits, and the same values on the driver.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "omp_probe.h"
#include "operands.h"
#include "reference.h"

namespace {

using ref::Num;
using t::K;
using t::L;
using t::Strides;

constexpr Num P = Num::Packed, X = Num::Extended, B = Num::Blocked, D = Num::ThroughDst;
constexpr K arrOf(K a, K b) { return t::arr(a) || t::arr(b) ? K::ma : K::m; }

// One call of a member on M x K times K x N, `count` items, random data.
template <class E, K ka, K kb, L lay>
struct Product {
    int M, N, Kk, count;
    t::Mat<E, ka, lay> A;
    t::Mat<E, kb, lay> B;
    t::Mat<E, arrOf(ka, kb), lay, true> D;

    Product(int m, int n, int k, int items, Strides st, unsigned seed = 7)
        : M(m), N(n), Kk(k), count(items), A(k, m, items, st, seed), B(n, k, items, st, seed + 1), D(n, m, items, st, seed + 2)
    {
        std::mt19937 rng(seed);
        std::uniform_real_distribution<E> u(E(-1), E(1));
        A.fill([&](int, int, int) { return u(rng); });
        B.fill([&](int, int, int) { return u(rng); });
        D.fill([&](int, int, int) { return E(99); });
    }

    // With `in` (a single item of the standard layout), the result goes to its memory.
    template <class Fn>
    orlStatus call(Fn fn, t::Mat<E, t::K::m, lay>* in = nullptr)
    {
        auto dst = D.args();
        if constexpr (lay == L::Std && !t::arr(ka) && !t::arr(kb))
            if (in) dst = std::make_tuple(reinterpret_cast<E*>(in->mem.data()), int(in->s1), int(in->s2));
        auto head = std::tuple_cat(A.args(), std::make_tuple(A.cols, A.rows), B.args(), std::make_tuple(B.cols, B.rows), dst);
        if constexpr (t::arr(ka) || t::arr(kb)) return std::apply(fn, std::tuple_cat(head, std::make_tuple(count)));
        else return std::apply(fn, head);
    }

    E expect(Num kind, int k, int i, int j)
    {
        return ref::dot<E>(kind, Kk, [&](int q) { return A(k, i, q); }, [&](int q) { return B(k, q, j); });
    }

    // The first element (k, i, j) with `f(kind of its column, k, i, j)`, "" if none;
    // the kind is `lo` for columns 0 to 3, `hi` from column 4 on.
    template <class F>
    std::string first(Num lo, Num hi, F f)
    {
        for (int k = 0; k < count; ++k)
            for (int i = 0; i < M; ++i)
                for (int j = 0; j < N; ++j)
                    if (f(j < 4 ? lo : hi, k, i, j)) return "item " + std::to_string(k) + " (" + std::to_string(i) + ", " + std::to_string(j) + ")";
        return "";
    }

    // Every element has the bits of its column's kind.
    void check(Num lo, Num hi, const std::string& what)
    {
        EXPECT_EQ(first(lo, hi, [&](Num kind, int k, int i, int j) { return !ref::sameBits(D(k, i, j), expect(kind, k, i, j)); }), "") << what;
    }

    // The data tells `kind` from its rival somewhere, so that a pass means something.
    bool tellsApart(Num kind)
    {
        using enum Num;  // the members A, B and D hide the short names
        const Num rival = kind == Packed ? Extended : kind == Extended ? Packed : kind == Blocked ? ThroughDst : Blocked;
        return first(kind, kind, [&](Num, int k, int i, int j) { return !ref::sameBits(expect(kind, k, i, j), expect(rival, k, i, j)); }) != "";
    }
};

template <class E, K ka, K kb, L lay, class Fn>
void square(Fn fn, int n, Strides st, Num lo, Num hi, const char* what, int count = 5)
{
    Product<E, ka, kb, lay> p(n, n, n, count, st);
    ASSERT_EQ(p.call(fn), orlStatusOk) << what;
    p.check(lo, hi, what + std::string(" n=") + std::to_string(n));
    EXPECT_TRUE(p.tellsApart(lo)) << what;
}

#define SQ(E, a, b, lay, fn, n, st, lo, hi) square<E, K::a, K::b, L::lay>(fn, n, Strides::st, lo, hi, #fn " " #st)
#define SQ2(E, a, b, lay, fn, st, n1, k1, n2, k2) SQ(E, a, b, lay, fn, n1, st, k1, k1), SQ(E, a, b, lay, fn, n2, st, k2, k2)

// A row per kernel group of the kernel table (Mix: columns 0 to 3 packed,
// column 4 extended), a shape with a shared operand beside a plain one.
TEST(MulKinds, EveryKernelGroup)
{
    for (int n : {3, 4, 5, 6}) {
        SQ(float, m, m, Std, orlmMul_mm_32f, n, Unit, P, P);
        SQ(float, ma, m, Std, orlmMul_mam_32f, n, Unit, P, P);
        SQ(float, ta, ta, Std, orlmMul_tata_32f, n, Unit, P, P);
        SQ(float, m, t, Std, orlmMul_mt_32f, n, Unit, X, X);
        SQ(float, ma, ma, L, orlmMul_mama_32f_L, n, Unit, P, P);
        SQ(float, m, ta, L, orlmMul_mta_32f_L, n, Unit, B, B);
        SQ(float, m, m, Std, orlmMul_mm_32f, n, Wide, X, X);
        SQ(float, m, m, P, orlmMul_mm_32f_P, n, Unit, X, X);
        SQ(float, ma, m, Std, orlmMul_mam_32f, n, Wide, n == 6 ? X : P, n >= 5 ? X : P);
        SQ(float, m, ma, L, orlmMul_mma_32f_L, n, Wide, X, X);  // per item through the mm _S2 kernel
    }
    SQ2(float, t, m, Std, orlmMul_tm_32f, Unit, 5, P, 6, B);
    SQ(float, ma, ma, Std, orlmMul_mama_32f, 5, Wide, P, X);
    SQ(float, ma, ma, Std, orlmMul_mama_32f, 6, Wide, B, B);
    SQ2(float, ma, t, Std, orlmMul_mat_32f, Wide, 3, P, 4, B);
    SQ2(float, ma, m, P, orlmMul_mam_32f_P, Unit, 3, P, 4, D);
    SQ2(float, ta, t, L, orlmMul_tat_32f_L, Wide, 3, P, 5, D);
    SQ(float, ma, ma, L, orlmMul_mama_32f_L, 5, Wide, X, X);  // mm _S2 has no Mix
    for (int n : {3, 4, 5, 6}) {
        SQ(double, m, m, Std, orlmMul_mm_64f, n, Unit, P, P);
        SQ(double, t, ma, Std, orlmMul_tma_64f, n, Unit, P, P);
        SQ(double, ma, ma, Std, orlmMul_mama_64f, n, Unit, X, X);
        SQ(double, ma, ta, Std, orlmMul_mata_64f, n, Unit, X, X);
        SQ(double, ma, ma, L, orlmMul_mama_64f_L, n, Unit, P, P);
        SQ(double, t, ta, L, orlmMul_tta_64f_L, n, Unit, B, B);
        SQ(double, m, m, Std, orlmMul_mm_64f, n, Wide, X, X);
        SQ(double, ma, m, P, orlmMul_mam_64f_P, n, Unit, X, X);
        SQ(double, ma, m, L, orlmMul_mam_64f_L, n, Wide, X, X);
    }
}

// Products of -0.0: the packed and extended sums keep the sign, the kinds
// that start from +0.0 (blocked, running, through the destination) do not.
TEST(MulKinds, NegativeZeroProducts)
{
    const auto negative = [](auto&& p, auto fn) {  // the sign of -0.0 times 1, 2, ...
        using E = typename decltype(p.A)::E;
        p.A.fill([](int, int, int) { return -E(0); });
        p.B.fill([](int, int i, int j) { return E(1 + i + j); });
        EXPECT_EQ(p.call(fn), orlStatusOk);
        return std::signbit(p.D(0, p.M - 1, p.N - 1));
    };
    using F = Product<float, K::t, K::m, L::Std>;
    using G = Product<double, K::t, K::m, L::Std>;
    EXPECT_TRUE(negative(F(5, 5, 5, 1, Strides::Unit), orlmMul_tm_32f));   // packed
    EXPECT_FALSE(negative(F(6, 6, 6, 1, Strides::Unit), orlmMul_tm_32f));  // blocked
    EXPECT_FALSE(negative(F(7, 7, 7, 1, Strides::Wide), orlmMul_tm_32f));  // running
    EXPECT_TRUE(negative(F(4, 4, 4, 1, Strides::Wide), orlmMul_tm_32f));   // extended
    EXPECT_TRUE(negative(G(4, 4, 4, 1, Strides::Unit), orlmMul_tm_64f));   // packed
    EXPECT_FALSE(negative(G(7, 7, 7, 1, Strides::Unit), orlmMul_tm_64f));  // blocked
    EXPECT_FALSE(negative(G(2, 2, 2, 1, Strides::Wide), orlmMul_tm_64f));  // running
    EXPECT_FALSE(negative(Product<float, K::m, K::m, L::P>(2, 3, 1, 1, Strides::Unit), orlmMul_mm_32f_P));  // K = 1: one product added to +0.0
}

// ---- every shape and layout on rectangular products --------------------------

#define SHAPES_SINGLE(X) X(mm, m, m) X(mt, m, t) X(tm, t, m) X(tt, t, t)
#define SHAPES_ARRAY(X)                                                                                        \
    X(mam, ma, m) X(mat, ma, t) X(tam, ta, m) X(tat, ta, t) X(mma, m, ma) X(mta, m, ta) X(tma, t, ma)          \
    X(tta, t, ta) X(mama, ma, ma) X(mata, ma, ta) X(tama, ta, ma) X(tata, ta, ta)

// The general path of each variant: blocked (unit stride) or running (same bits) in the
// standard layout, through the destination in _P; _L blocked, _LS2 through the destination
// where it has its own loop (32f mam mat tam tat), else running through the _S2 kernel.
template <class E, K ka, K kb, L lay, class Fn>
void rectangular(Fn fn, bool ownLoopLS2)
{
    for (const auto [M, N, Kk] : {std::tuple{2, 4, 3}, {3, 2, 4}, {5, 3, 7}, {7, 7, 7}, {1, 1, 1}, {4, 1, 2}, {9, 5, 3}})
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            if (lay == L::P && st == Strides::Wide) continue;
            Product<E, ka, kb, lay> p(M, N, Kk, 3, st);
            ASSERT_EQ(p.call(fn), orlStatusOk);
            const Num kind = lay == L::P || (lay == L::L && st == Strides::Wide && ownLoopLS2) ? D : B;
            const std::string what = "M " + std::to_string(M) + " N " + std::to_string(N) + " K " + std::to_string(Kk) + (st == Strides::Wide ? " wide" : "");
            p.check(kind, kind, what);
            if (M == 7) EXPECT_TRUE(p.tellsApart(kind)) << what;
            if (::testing::Test::HasFailure()) return;
        }
}

bool ownLoopLS2(std::string_view s) { return s == "mam" || s == "mat" || s == "tam" || s == "tat"; }

TEST(MulShapes, RectangularEveryShapeAndLayout)
{
#define SINGLE(s, a, b)                                                                                                      \
    rectangular<float, K::a, K::b, L::Std>(orlmMul_##s##_32f, false), rectangular<double, K::a, K::b, L::Std>(orlmMul_##s##_64f, false); \
    rectangular<float, K::a, K::b, L::P>(orlmMul_##s##_32f_P, false), rectangular<double, K::a, K::b, L::P>(orlmMul_##s##_64f_P, false);
#define ARRAY(s, a, b) \
    SINGLE(s, a, b) rectangular<float, K::a, K::b, L::L>(orlmMul_##s##_32f_L, ownLoopLS2(#s)), rectangular<double, K::a, K::b, L::L>(orlmMul_##s##_64f_L, false);
    SHAPES_SINGLE(SINGLE)
    SHAPES_ARRAY(ARRAY)
#undef SINGLE
#undef ARRAY
}

// ---- overlap --------------------------------------------------------------------

// The packed 4x4 mm has the second operand's rows in hand and reads a row of the first
// whole before storing its result row: in place on either source it gives the product.
TEST(MulOverlap, PackedInPlaceOnEitherSource)
{
    for (int which : {0, 1}) {
        Product<float, K::m, K::m, L::Std> p(4, 4, 4, 1, Strides::Unit);
        std::vector<float> want;
        for (int x = 0; x < 16; ++x) want.push_back(p.expect(P, 0, x / 4, x % 4));
        auto& in = which ? p.B : p.A;
        ASSERT_EQ(p.call(orlmMul_mm_32f, &in), orlStatusOk);
        for (int x = 0; x < 16; ++x) EXPECT_TRUE(ref::sameBits(in(0, x / 4, x % 4), want[x])) << which << " element " << x;
    }
}

// The running general path clears D(i, j) before reading anything: in place on the first
// source, later elements of a row see the cleared and stored values (transcribed on a copy).
TEST(MulOverlap, RunningInPlaceOnFirstSource)
{
    Product<double, K::m, K::m, L::Std> p(7, 7, 7, 1, Strides::Wide);
    auto sim = p.A;
    for (int i = 0; i < 7; ++i)
        for (int j = 0; j < 7; ++j) {
            double r = sim(0, i, j) = 0;
            for (int k = 0; k < 7; ++k) sim(0, i, j) = r = r + sim(0, i, k) * p.B(0, k, j);
        }
    ASSERT_EQ(p.call(orlmMul_mm_64f, &p.A), orlStatusOk);
    for (int x = 0; x < 49; ++x) EXPECT_TRUE(ref::sameBits(p.A(0, x / 7, x % 7), sim(0, x / 7, x % 7))) << "element " << x;
}

// ---- checks ----------------------------------------------------------------------

// Arguments to spoil: one class at a time or two at once. A bad stride is
// half an element more than a good one (stride 1) or 0 (stride 2); a bad
// offset is minus one element.
struct Spoil { bool null = false; int count = 2, w1 = 3, h2 = 3, stride = 0, offset = 0; };

const Spoil kSpoils[] = {
    {.null = true, .count = 0}, {.count = 0, .w1 = 0}, {.w1 = 0, .stride = 1}, {.w1 = 4, .stride = 1},
    {.h2 = 0, .offset = 1},     {.stride = 1, .offset = 1}, {.offset = 1}, {.stride = 1}, {.stride = 2}, {},
};

template <class E> int strideOf(const Spoil& s, int good) { return s.stride == 0 ? good : s.stride == 1 ? good + int(sizeof(E)) / 2 : 0; }
template <class E> int offsetOf(const Spoil& s) { return s.offset ? -int(sizeof(E)) : 0; }

// The classes a spoil makes fail; the member's order is the general one with the size match.
template <class E, class Call>
void checkMember(const char* name, bool array, bool hasT, bool hasO, Call call)
{
    const std::string_view order = ref::generalOrder(array, !hasO, true);
    for (const Spoil& s : kSpoils) {
        t::CheckBuffers pool;
        std::string failing;
        if (s.null) failing += 'N';
        if (array && s.count < 1) failing += 'C';
        if (s.w1 < 1 || s.h2 < 1) failing += 'Z';
        if (s.w1 != s.h2) failing += 'R';
        if (hasT && s.stride) failing += 'T';
        if (hasO && s.offset) failing += 'O';
        EXPECT_EQ(call(pool, s), ref::expectedStatus(order, failing)) << name << " failing " << failing;
        EXPECT_TRUE(failing.empty() || pool.untouched()) << name << " failing " << failing;
    }
}

TEST(MulChecks, OrderAndNothingWritten)
{
    using Pool = t::CheckBuffers;
    checkMember<float>("mama_32f", true, true, false, [](Pool& b, const Spoil& s) {
        return orlmMul_mama_32f(b.f, 36, 12, strideOf<float>(s, 4), s.w1, 3, b.f, 36, 12, 4, 3, s.h2, s.null ? nullptr : b.fo, 36, 12, 4, s.count);
    });
    checkMember<float>("mam_32f_L", true, true, true, [](Pool& b, const Spoil& s) {
        float* ld[2] = {b.fo, b.fo + 9};
        return orlmMul_mam_32f_L(b.tf, offsetOf<float>(s), 12, 4, s.w1, 3, b.f, 12, strideOf<float>(s, 4), 3, s.h2,
                                 s.null ? nullptr : ld, 0, 12, 4, s.count);
    });
    checkMember<double>("tm_64f", false, true, false, [](Pool& b, const Spoil& s) {  // tm: K is h1
        return orlmMul_tm_64f(b.g, 24, 8, 3, s.w1, b.g, strideOf<double>(s, 24), 8, 3, s.h2, s.null ? nullptr : b.go, 24, 8);
    });
    checkMember<float>("tt_32f_P", false, false, true, [](Pool& b, const Spoil& s) {  // tt: K is h1 and w2
        return orlmMul_tt_32f_P(b.tf, 0, 3, s.w1, b.tf, offsetOf<float>(s), s.h2, 3, s.null ? nullptr : b.to, 0);
    });
}

// ---- route --------------------------------------------------------------------------

// The cost counts the elements read and written: a shared source once, array
// sources and the result `count` times. The largest count whose cost stays
// at the limit is serial, one more is parallel. Items of M x K times K x N.
template <class E, K ka, K kb, L lay, class Fn>
void limitEdge(Fn fn, Strides st, long long limit, const char* what, int M = 2, int N = 3, int Kk = 5)
{
    const auto cost = [&](long long n) {
        const long long a = M * Kk, b = Kk * N;
        return (t::arr(ka) ? 0 : a) + (t::arr(kb) ? 0 : b) + ((t::arr(ka) ? a : 0) + (t::arr(kb) ? b : 0) + M * N) * n;
    };
    const int last = ref::lastSerialCount(cost, limit, false);
    for (int n : {last, last + 1}) {
        Product<E, ka, kb, lay> p(M, N, Kk, n, st);
        probe::reset();
        EXPECT_EQ(p.call(fn), orlStatusOk);
        EXPECT_EQ(probe::regions().count, n > last ? 1 : 0) << what << " count " << n;
    }
}

TEST(MulRoute, CostFormulasAndLimits)
{
    t::Threads two(2);
#define EDGE(s, a, b) limitEdge<double, K::a, K::b, L::Std>(orlmMul_##s##_64f, Strides::Unit, 36864, #s);
    SHAPES_ARRAY(EDGE)
#undef EDGE
    limitEdge<double, K::ma, K::ma, L::Std>(orlmMul_mama_64f, Strides::Wide, 18432, "mama wide");
    limitEdge<double, K::m, K::ta, L::L>(orlmMul_mta_64f_L, Strides::Unit, 18432, "mta_L");
    limitEdge<double, K::ta, K::m, L::L>(orlmMul_tam_64f_L, Strides::Wide, 18432, "tam_L wide");
    limitEdge<double, K::ma, K::t, L::P>(orlmMul_mat_64f_P, Strides::Unit, 9216, "mat_P");
    // 32f: a limit of 6 (1x1 items: mam costs 1 + 2n, mama 3n); single members have no driver.
    limitEdge<float, K::ma, K::m, L::Std>(orlmMul_mam_32f, Strides::Unit, 6, "mam_32f", 1, 1, 1);
    limitEdge<float, K::ma, K::ma, L::P>(orlmMul_mama_32f_P, Strides::Unit, 6, "mama_32f_P", 1, 1, 1);
    limitEdge<float, K::ta, K::ta, L::L>(orlmMul_tata_32f_L, Strides::Wide, 6, "tata_32f_L wide", 1, 1, 1);
    Product<float, K::m, K::m, L::Std> single(60, 60, 60, 1, Strides::Unit);
    probe::reset();
    EXPECT_EQ(single.call(orlmMul_mm_32f), orlStatusOk);
    EXPECT_EQ(probe::regions().count, 0);
}

// Every item of every slice has its kind's bits on the driver, in each layout.
TEST(MulRoute, ValuesOnTheDriver)
{
    t::Threads three(3);
    probe::reset();
    SQ(float, ma, ma, Std, orlmMul_mama_32f, 4, Unit, P, P);
    square<double, K::ma, K::m, L::Std>(orlmMul_mam_64f, 5, Strides::Wide, X, X, "mam_64f wide", 800);
    square<double, K::ma, K::ma, L::P>(orlmMul_mama_64f_P, 3, Strides::Unit, X, X, "mama_64f_P", 400);
    square<double, K::m, K::ma, L::L>(orlmMul_mma_64f_L, 7, Strides::Unit, B, B, "mma_64f_L", 400);
    square<float, K::ta, K::t, L::L>(orlmMul_tat_32f_L, 5, Strides::Wide, D, D, "tat_32f_L");
    EXPECT_EQ(probe::regions().count, 5);
}

}  // namespace
