// Matrix multiply: values of each numeric kind bit for bit, every shape and
// layout on rectangular products, the checks and their order, the route.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "omp_probe.h"
#include "operands.h"
#include "orlcore.h"
#include "orlm.h"

namespace {

using t::K;
using t::L;
using t::Mat;
using t::Strides;

// How one result element is formed, transcribed from the stated orders.
//   P  element precision, starting with the first product
//   X  80-bit products and sums, one rounding, starting with the first product
//   B  element precision, starting at +0.0 (blocked and running scalar)
//   D  through the destination: +0.0, then K widened steps, each rounded
enum class Kd { P, X, B, D };

template <class E>
E ref(Kd kd, const std::vector<E>& a, const std::vector<E>& b)
{
    using LD = long double;
    const size_t n = a.size();
    switch (kd) {
    case Kd::P: {
        E s = a[0] * b[0];
        for (size_t k = 1; k < n; ++k) s = s + a[k] * b[k];
        return s;
    }
    case Kd::X: {
        LD s = LD(a[0]) * LD(b[0]);
        for (size_t k = 1; k < n; ++k) s = s + LD(a[k]) * LD(b[k]);
        return E(s);
    }
    case Kd::B: {
        E s = E(0);
        for (size_t k = 0; k < n; ++k) s = s + a[k] * b[k];
        return s;
    }
    case Kd::D: {
        E d = E(0);
        for (size_t k = 0; k < n; ++k) d = E(LD(a[k]) * LD(b[k]) + LD(d));
        return d;
    }
    }
    return E(0);
}

constexpr K arrOf(K a, K b) { return t::arr(a) || t::arr(b) ? K::ma : K::m; }

// One call of a member on M x K times K x N, `count` items, random data.
// Column kinds: `lo` for columns 0 to 3, `hi` from column 4 on.
template <class E, K ka, K kb, L lay>
struct Product {
    static constexpr bool array = t::arr(ka) || t::arr(kb);
    int M, N, Kk, count;
    Mat<E, ka, lay> A;
    Mat<E, kb, lay> B;
    Mat<E, arrOf(ka, kb), lay, true> D;

    Product(int m, int n, int k, int items, Strides st, unsigned seed = 7)
        : M(m), N(n), Kk(k), count(items), A(k, m, items, st, seed), B(n, k, items, st, seed + 1), D(n, m, items, st, seed + 2)
    {
        std::mt19937 rng(seed);
        std::uniform_real_distribution<E> u(E(-1), E(1));
        A.fill([&](int, int, int) { return u(rng); });
        B.fill([&](int, int, int) { return u(rng); });
        D.fill([&](int, int, int) { return E(99); });
    }

    template <class Fn>
    orlStatus call(Fn fn)
    {
        auto head = std::tuple_cat(A.args(), std::make_tuple(A.cols, A.rows), B.args(), std::make_tuple(B.cols, B.rows), D.args());
        if constexpr (array)
            return std::apply(fn, std::tuple_cat(head, std::make_tuple(count)));
        else
            return std::apply(fn, head);
    }

    E expect(Kd kd, int k, int i, int j)
    {
        std::vector<E> a(Kk), b(Kk);
        for (int q = 0; q < Kk; ++q) a[q] = A(k, i, q), b[q] = B(k, q, j);
        return ref(kd, a, b);
    }

    // Every element of every item has the bits of its column's kind.
    void check(Kd lo, Kd hi, const char* what)
    {
        int bad = 0;
        for (int k = 0; k < count; ++k)
            for (int i = 0; i < M; ++i)
                for (int j = 0; j < N; ++j) {
                    const E want = expect(j < 4 ? lo : hi, k, i, j), got = D(k, i, j);
                    if (!t::sameBits(want, got) && bad++ < 3)
                        ADD_FAILURE() << what << ": item " << k << " (" << i << ", " << j << ") got " << got << " want " << want;
                }
    }

    // The data tells `kd` apart from `rival` somewhere, so that a passing
    // check means something.
    bool tellsApart(Kd kd, Kd rival)
    {
        for (int k = 0; k < count; ++k)
            for (int i = 0; i < M; ++i)
                for (int j = 0; j < N; ++j)
                    if (!t::sameBits(expect(kd, k, i, j), expect(rival, k, i, j))) return true;
        return false;
    }
};

constexpr Kd rivalOf(Kd k) { return k == Kd::P ? Kd::X : k == Kd::X ? Kd::P : k == Kd::B ? Kd::D : Kd::B; }

// A square product of size n in one member, checked against its kinds.
template <class E, K ka, K kb, L lay, class Fn>
void square(Fn fn, int n, Strides st, Kd lo, Kd hi, const char* what)
{
    Product<E, ka, kb, lay> p(n, n, n, 5, st);
    ASSERT_EQ(p.call(fn), orlStatusOk) << what;
    p.check(lo, hi, what);
    EXPECT_TRUE(p.tellsApart(lo, rivalOf(lo))) << what;
}

#define SQ(E, a, b, lay, fn, n, st, lo, hi) square<E, K::a, K::b, L::lay>(fn, n, Strides::st, Kd::lo, Kd::hi, #fn " " #n " " #st)

TEST(MulKinds, Float)
{
    // Unit-stride kernels: packed, extended where the table says, blocked where G.
    for (int n : {3, 4, 5, 6}) {
        SQ(float, m, m, Std, orlmMul_mm_32f, n, Unit, P, P);
        SQ(float, ma, m, Std, orlmMul_mam_32f, n, Unit, P, P);
        SQ(float, m, ma, Std, orlmMul_mma_32f, n, Unit, P, P);
        SQ(float, ma, ma, Std, orlmMul_mama_32f, n, Unit, P, P);
        SQ(float, t, t, Std, orlmMul_tt_32f, n, Unit, P, P);
        SQ(float, ta, ta, Std, orlmMul_tata_32f, n, Unit, P, P);
        SQ(float, m, t, Std, orlmMul_mt_32f, n, Unit, X, X);
        SQ(float, t, ta, Std, orlmMul_tta_32f, n, Unit, X, X);
        SQ(float, ma, ma, L, orlmMul_mama_32f_L, n, Unit, P, P);
        SQ(float, ta, m, L, orlmMul_tam_32f_L, n, Unit, P, P);
        SQ(float, m, ta, L, orlmMul_mta_32f_L, n, Unit, B, B);
        SQ(float, m, m, Std, orlmMul_mm_32f, n, Wide, X, X);
        SQ(float, m, m, P, orlmMul_mm_32f_P, n, Unit, X, X);
        // mam _S2: P P Mix X (Mix: columns 0-3 packed, column 4 extended).
        square<float, K::ma, K::m, L::Std>(orlmMul_mam_32f, n, Strides::Wide, n == 6 ? Kd::X : Kd::P,
                                           n >= 5 ? Kd::X : Kd::P, "mam_32f _S2");
        SQ(float, m, ma, L, orlmMul_mma_32f_L, n, Wide, X, X);  // per item through the mm _S2 kernel
    }
    SQ(float, t, m, Std, orlmMul_tm_32f, 5, Unit, P, P);
    SQ(float, t, m, Std, orlmMul_tm_32f, 6, Unit, B, B);
    SQ(float, ma, ma, Std, orlmMul_mama_32f, 5, Wide, P, X);
    SQ(float, ma, ma, Std, orlmMul_mama_32f, 6, Wide, B, B);
    SQ(float, ma, t, Std, orlmMul_mat_32f, 3, Wide, P, P);
    SQ(float, ma, t, Std, orlmMul_mat_32f, 4, Wide, B, B);
    SQ(float, ma, m, P, orlmMul_mam_32f_P, 3, Unit, P, P);
    SQ(float, ma, m, P, orlmMul_mam_32f_P, 4, Unit, D, D);
    SQ(float, ma, ma, P, orlmMul_mama_32f_P, 4, Unit, X, X);
    SQ(float, ta, t, L, orlmMul_tat_32f_L, 3, Wide, P, P);
    SQ(float, ta, t, L, orlmMul_tat_32f_L, 5, Wide, D, D);
    SQ(float, ma, ma, L, orlmMul_mama_32f_L, 5, Wide, X, X);  // mm _S2 has no Mix
}

TEST(MulKinds, Double)
{
    for (int n : {3, 4, 5, 6}) {
        SQ(double, m, m, Std, orlmMul_mm_64f, n, Unit, P, P);
        SQ(double, t, t, Std, orlmMul_tt_64f, n, Unit, P, P);
        SQ(double, ma, m, Std, orlmMul_mam_64f, n, Unit, P, P);
        SQ(double, m, ma, Std, orlmMul_mma_64f, n, Unit, P, P);
        SQ(double, t, ma, Std, orlmMul_tma_64f, n, Unit, P, P);
        SQ(double, ma, ma, Std, orlmMul_mama_64f, n, Unit, X, X);
        SQ(double, ta, ta, Std, orlmMul_tata_64f, n, Unit, X, X);
        SQ(double, ma, ta, Std, orlmMul_mata_64f, n, Unit, X, X);
        SQ(double, ma, ma, L, orlmMul_mama_64f_L, n, Unit, P, P);
        SQ(double, t, ta, L, orlmMul_tta_64f_L, n, Unit, B, B);
        SQ(double, m, m, Std, orlmMul_mm_64f, n, Wide, X, X);
        SQ(double, ma, m, P, orlmMul_mam_64f_P, n, Unit, X, X);
        SQ(double, ma, m, L, orlmMul_mam_64f_L, n, Wide, X, X);
    }
}

// A 3x3 mm against mt on the same contiguous data (B given as its own
// transpose): the packed and the extended kind differ in the last bit.
TEST(MulKinds, MmAgainstMtOnSameData)
{
    Product<float, K::m, K::m, L::Std> p(3, 3, 3, 1, Strides::Unit, 11);
    Product<float, K::m, K::t, L::Std> q(3, 3, 3, 1, Strides::Unit, 11);
    p.A.fill([&](int, int i, int j) { return q.A(0, i, j); });
    p.B.fill([&](int, int i, int j) { return q.B(0, i, j); });
    ASSERT_EQ(p.call(orlmMul_mm_32f), orlStatusOk);
    ASSERT_EQ(q.call(orlmMul_mt_32f), orlStatusOk);
    p.check(Kd::P, Kd::P, "mm");
    q.check(Kd::X, Kd::X, "mt");
    bool differ = false;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) differ |= !t::sameBits(p.D(0, i, j), q.D(0, i, j));
    EXPECT_TRUE(differ);
}

// Products of -0.0: the packed and extended sums keep the sign, the kinds
// that start from +0.0 (blocked, running, through the destination) do not.
TEST(MulKinds, NegativeZeroProducts)
{
    const auto run = [](auto fn, auto tag, int n, Strides st) {
        using E = decltype(tag);
        Product<E, K::t, K::m, L::Std> p(n, n, n, 1, st);
        p.A.fill([](int, int, int) { return -E(0); });
        p.B.fill([](int, int i, int j) { return E(1 + i + j); });
        EXPECT_EQ(p.call(fn), orlStatusOk);
        return std::signbit(p.D(0, n - 1, n - 1));
    };
    EXPECT_TRUE(run(orlmMul_tm_32f, 0.0f, 5, Strides::Unit));     // packed
    EXPECT_FALSE(run(orlmMul_tm_32f, 0.0f, 6, Strides::Unit));    // blocked
    EXPECT_FALSE(run(orlmMul_tm_32f, 0.0f, 7, Strides::Wide));    // running
    EXPECT_TRUE(run(orlmMul_tm_32f, 0.0f, 4, Strides::Wide));     // extended
    EXPECT_TRUE(run(orlmMul_tm_64f, 0.0, 4, Strides::Unit));      // packed
    EXPECT_FALSE(run(orlmMul_tm_64f, 0.0, 7, Strides::Unit));     // blocked
    EXPECT_FALSE(run(orlmMul_tm_64f, 1.0 * 0, 2, Strides::Wide)); // running
    // K = 1: the one product added to +0.0.
    Product<float, K::m, K::m, L::P> q(2, 3, 1, 1, Strides::Unit);
    q.A.fill([](int, int, int) { return -0.0f; });
    ASSERT_EQ(q.call(orlmMul_mm_32f_P), orlStatusOk);
    EXPECT_FALSE(std::signbit(q.D(0, 1, 2)));
}

// ---- every shape and layout on rectangular products --------------------------

#define SHAPES_SINGLE(X) X(mm, m, m) X(mt, m, t) X(tm, t, m) X(tt, t, t)
#define SHAPES_ARRAY(X)                                                                                        \
    X(mam, ma, m) X(mat, ma, t) X(tam, ta, m) X(tat, ta, t) X(mma, m, ma) X(mta, m, ta) X(tma, t, ma)          \
    X(tta, t, ta) X(mama, ma, ma) X(mata, ma, ta) X(tama, ta, ma) X(tata, ta, ta)

// The general path of each variant: blocked (unit stride) or running
// (other stride2) in the standard layout, through the destination in _P;
// _L blocked, and _LS2 through the destination where it has its own loop
// (32f mam mat tam tat), else running through the single-shape _S2 kernel.
template <class E, K ka, K kb, L lay, class Fn>
void rectangular(Fn fn, bool ownLoopLS2)
{
    struct Sz {
        int M, N, K;
    };
    for (Sz z : {Sz{2, 4, 3}, Sz{3, 2, 4}, Sz{5, 3, 7}, Sz{7, 7, 7}, Sz{1, 1, 1}, Sz{4, 1, 2}, Sz{9, 5, 3}})
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            if (lay == L::P && st == Strides::Wide) continue;
            Product<E, ka, kb, lay> p(z.M, z.N, z.K, 3, st);
            ASSERT_EQ(p.call(fn), orlStatusOk);
            Kd kd = lay == L::P ? Kd::D : Kd::B;
            if (lay == L::L && st == Strides::Wide && ownLoopLS2) kd = Kd::D;
            p.check(kd, kd, "rectangular");
            if (z.M == 7) EXPECT_TRUE(p.tellsApart(kd, rivalOf(kd)));  // blocked or running against through-dst
            if (::testing::Test::HasFailure()) {
                ADD_FAILURE() << "M " << z.M << " N " << z.N << " K " << z.K << " wide " << (st == Strides::Wide);
                return;
            }
        }
}

// The 32f _LS2 kernels with a loop of their own.
bool ownLoopLS2(std::string_view s) { return s == "mam" || s == "mat" || s == "tam" || s == "tat"; }

TEST(MulShapes, RectangularEveryShapeAndLayout)
{
#define SINGLE(s, a, b)                                                                          \
    rectangular<float, K::a, K::b, L::Std>(orlmMul_##s##_32f, false);                            \
    rectangular<double, K::a, K::b, L::Std>(orlmMul_##s##_64f, false);                           \
    rectangular<float, K::a, K::b, L::P>(orlmMul_##s##_32f_P, false);                            \
    rectangular<double, K::a, K::b, L::P>(orlmMul_##s##_64f_P, false);
#define ARRAY(s, a, b)                                                                           \
    SINGLE(s, a, b)                                                                              \
    rectangular<float, K::a, K::b, L::L>(orlmMul_##s##_32f_L, ownLoopLS2(#s));                 \
    rectangular<double, K::a, K::b, L::L>(orlmMul_##s##_64f_L, false);
    SHAPES_SINGLE(SINGLE)
    SHAPES_ARRAY(ARRAY)
#undef SINGLE
#undef ARRAY
}

// ---- overlap --------------------------------------------------------------------

// The packed 4x4 mm has the second operand's rows in hand and reads a row of
// the first whole before storing its result row: in place on either source
// it gives the plain product.
TEST(MulOverlap, PackedInPlace)
{
    for (int which : {1, 2}) {
        Product<float, K::m, K::m, L::Std> p(4, 4, 4, 1, Strides::Unit);
        std::vector<float> want(16);
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) want[i * 4 + j] = p.expect(Kd::P, 0, i, j);
        auto& in = which == 1 ? p.A : p.B;
        const float* src = reinterpret_cast<const float*>(in.mem.data());
        float* dst = reinterpret_cast<float*>(in.mem.data());
        const int s1 = int(in.s1);
        const orlStatus st = which == 1 ? orlmMul_mm_32f(src, s1, 4, 4, 4, reinterpret_cast<const float*>(p.B.mem.data()), int(p.B.s1), 4, 4, 4, dst, s1, 4)
                                        : orlmMul_mm_32f(reinterpret_cast<const float*>(p.A.mem.data()), int(p.A.s1), 4, 4, 4, src, s1, 4, 4, 4, dst, s1, 4);
        ASSERT_EQ(st, orlStatusOk);
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) EXPECT_TRUE(t::sameBits(in(0, i, j), want[i * 4 + j])) << which << " " << i << " " << j;
    }
}

// The running general path clears D(i, j) before reading anything: in place
// on the first source, later elements of a row see the cleared and stored
// values. Transcribed on a copy of the memory.
TEST(MulOverlap, RunningInPlaceOnFirstSource)
{
    const int n = 7, s = 2;  // stride2 of 2 elements
    std::vector<double> a(n * n * s), b(n * n * s);
    std::mt19937 rng(3);
    std::uniform_real_distribution<double> u(-1, 1);
    for (auto& v : a) v = u(rng);
    for (auto& v : b) v = u(rng);
    std::vector<double> sim = a;
    auto A = [&](int i, int k) -> double& { return sim[(i * n + k) * s]; };
    auto B = [&](int k, int j) { return b[(k * n + j) * s]; };
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            A(i, j) = 0;
            double r = 0;
            for (int k = 0; k < n; ++k) {
                r = r + A(i, k) * B(k, j);
                A(i, j) = r;
            }
        }
    const int st1 = n * s * 8, st2 = s * 8;
    ASSERT_EQ(orlmMul_mm_64f(a.data(), st1, st2, n, n, b.data(), st1, st2, n, n, a.data(), st1, st2), orlStatusOk);
    for (size_t x = 0; x < a.size(); x += s) EXPECT_TRUE(t::sameBits(a[x], sim[x])) << x;
}

// ---- checks ----------------------------------------------------------------------

// Arguments to spoil, one class at a time or two at once.
struct Spoil {
    bool null = false;
    int count = 2, w1 = 3, h2 = 3, stride = 0, offset = 0;  // stride 0: the good value
};

// The order N C Z R T O, for a member with or without count, strides, offsets.
orlStatus expected(const Spoil& s, bool array, bool hasT, bool hasO)
{
    if (s.null) return orlStatusNullPointer;
    if (array && s.count < 1) return orlStatusCount;
    if (s.w1 < 1 || s.h2 < 1) return orlStatusSize;
    if (s.w1 != s.h2) return orlStatusSizeMismatch;
    if (hasT && s.stride != 0) return orlStatusStride;
    if (hasO && s.offset != 0) return orlStatusOffset;
    return orlStatusOk;
}

const Spoil kSpoils[] = {
    {.null = true, .count = 0},
    {.count = 0, .w1 = 0},
    {.w1 = 0, .stride = 1},
    {.w1 = 4, .stride = 1},
    {.h2 = 0, .offset = 1},
    {.stride = 1, .offset = 1},
    {.offset = 1},
    {.stride = 1},
    {.stride = 2},  // a stride of 0
    {},
};

template <class E>
struct Buffers {
    std::vector<E> a = std::vector<E>(18, E(1)), b = std::vector<E>(18, E(1)), d = std::vector<E>(18, E(-5));
    std::vector<const E*> ta, tb;
    std::vector<E*> td;
    Buffers()
    {
        for (int x = 0; x < 9; ++x) ta.push_back(&a[x]), tb.push_back(&b[x]), td.push_back(&d[x]);
    }
    bool untouched() const
    {
        return std::all_of(d.begin(), d.end(), [](E v) { return v == E(-5); });
    }
};

// A bad stride is half an element more than a good one (or 0); a bad offset
// is minus one element or half of one.
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
void checkMember(const char* name, bool array, bool hasT, bool hasO, Call call)
{
    for (const Spoil& s : kSpoils) {
        Buffers<E> buf;
        const orlStatus want = expected(s, array, hasT, hasO);
        const orlStatus got = call(buf, s);
        EXPECT_EQ(got, want) << name << " null " << s.null << " count " << s.count << " w1 " << s.w1 << " h2 " << s.h2
                             << " stride " << s.stride << " offset " << s.offset;
        if (want != orlStatusOk) EXPECT_TRUE(buf.untouched()) << name;
    }
}

TEST(MulChecks, OrderAndNothingWritten)
{
    checkMember<float>("mama_32f", true, true, false, [](Buffers<float>& b, const Spoil& s) {
        return orlmMul_mama_32f(b.a.data(), 36, 12, strideOf<float>(s, 4), s.w1, 3, b.b.data(), 36, 12, 4, 3, s.h2,
                                s.null ? nullptr : b.d.data(), 36, 12, 4, s.count);
    });
    checkMember<double>("mama_64f_P", true, true, true, [](Buffers<double>& b, const Spoil& s) {
        return orlmMul_mama_64f_P(b.ta.data(), offsetOf<double>(s), strideOf<double>(s, 8), s.w1, 3, b.tb.data(), 0, 8, 3, s.h2,
                                  s.null ? nullptr : b.td.data(), 0, 8, s.count);
    });
    checkMember<float>("mam_32f_L", true, true, true, [](Buffers<float>& b, const Spoil& s) {
        const float* la[2] = {b.a.data(), b.a.data() + 9};
        float* ld[2] = {b.d.data(), b.d.data() + 9};
        return orlmMul_mam_32f_L(la, offsetOf<float>(s), 12, 4, s.w1, 3, b.b.data(), 12, strideOf<float>(s, 4), 3, s.h2,
                                 s.null ? nullptr : ld, 0, 12, 4, s.count);
    });
    checkMember<double>("tm_64f", false, true, false, [](Buffers<double>& b, const Spoil& s) {
        // tm: K is h1 for the first operand; the spoiled size stands there.
        return orlmMul_tm_64f(b.a.data(), 24, 8, 3, s.w1, b.b.data(), strideOf<double>(s, 24), 8, 3, s.h2,
                              s.null ? nullptr : b.d.data(), 24, 8);
    });
    checkMember<float>("tt_32f_P", false, false, true, [](Buffers<float>& b, const Spoil& s) {
        // tt: K is h1 and w2.
        return orlmMul_tt_32f_P(b.ta.data(), 0, 3, s.w1, b.tb.data(), offsetOf<float>(s), s.h2, 3,
                                s.null ? nullptr : b.td.data(), 0);
    });
}

// ---- route --------------------------------------------------------------------------

using t::Threads;

// Cost of each array shape, from its stored sizes.
long long costOf(std::string_view s, long long w1, long long h1, long long w2, long long h2, long long n)
{
    if (s == "mam") return w2 * h2 + (w2 + w1) * h1 * n;
    if (s == "mat") return w2 * h2 + (h2 + w1) * h1 * n;
    if (s == "tam") return w2 * h2 + (w2 + h1) * w1 * n;
    if (s == "tat") return w2 * h2 + (h2 + h1) * w1 * n;
    if (s == "mma") return w1 * h1 + (h1 + h2) * w2 * n;
    if (s == "mta") return w1 * h1 + (h1 + w2) * h2 * n;
    if (s == "tma") return w1 * h1 + (w1 + h2) * w2 * n;
    if (s == "tta") return w1 * h1 + (w1 + w2) * h2 * n;
    if (s == "mama") return (w1 * h1 + h1 * w2 + w2 * h2) * n;
    if (s == "mata") return (w1 * h1 + w2 * h2 + h1 * h2) * n;
    if (s == "tama") return (w1 * h1 + w1 * w2 + w2 * h2) * n;
    return (w1 * h1 + w2 * h2 + w1 * h2) * n;  // tata
}

// Does the call open a parallel region?
template <class E, K ka, K kb, L lay, class Fn>
bool parallel(Fn fn, int M, int N, int Kk, int n, Strides st)
{
    Product<E, ka, kb, lay> p(M, N, Kk, n, st);
    probe::reset();
    EXPECT_EQ(p.call(fn), orlStatusOk);
    return probe::regions().count > 0;
}

// The largest count whose cost stays at the limit is serial, one more is parallel.
template <class E, K ka, K kb, L lay, class Fn>
void limitEdge(Fn fn, std::string_view shape, Strides st, long long limit)
{
    const int M = 2, N = 3, Kk = 5;
    Product<E, ka, kb, lay> probeSizes(M, N, Kk, 1, st);
    const auto cost = [&](long long n) {
        return costOf(shape, probeSizes.A.cols, probeSizes.A.rows, probeSizes.B.cols, probeSizes.B.rows, n);
    };
    int n = 1;
    while (cost(n + 1) <= limit) ++n;
    EXPECT_FALSE((parallel<E, ka, kb, lay>(fn, M, N, Kk, n, st))) << shape << " count " << n;
    EXPECT_TRUE((parallel<E, ka, kb, lay>(fn, M, N, Kk, n + 1, st))) << shape << " count " << n + 1;
}

TEST(MulRoute, CostFormulasAndLimits64f)
{
    Threads two(2);
#define EDGE(s, a, b) limitEdge<double, K::a, K::b, L::Std>(orlmMul_##s##_64f, #s, Strides::Unit, 36864);
    SHAPES_ARRAY(EDGE)
#undef EDGE
    limitEdge<double, K::ma, K::ma, L::Std>(orlmMul_mama_64f, "mama", Strides::Wide, 18432);
    limitEdge<double, K::m, K::ta, L::L>(orlmMul_mta_64f_L, "mta", Strides::Unit, 18432);
    limitEdge<double, K::ta, K::m, L::L>(orlmMul_tam_64f_L, "tam", Strides::Wide, 18432);
    limitEdge<double, K::ma, K::t, L::P>(orlmMul_mat_64f_P, "mat", Strides::Unit, 9216);
}

TEST(MulRoute, SmallLimitOf32f)
{
    Threads two(2);
    // 1x1 items: mam costs 1 + 2n, mama 3n.
    EXPECT_FALSE((parallel<float, K::ma, K::m, L::Std>(orlmMul_mam_32f, 1, 1, 1, 2, Strides::Unit)));
    EXPECT_TRUE((parallel<float, K::ma, K::m, L::Std>(orlmMul_mam_32f, 1, 1, 1, 3, Strides::Unit)));
    EXPECT_FALSE((parallel<float, K::ma, K::ma, L::P>(orlmMul_mama_32f_P, 1, 1, 1, 2, Strides::Unit)));
    EXPECT_TRUE((parallel<float, K::ma, K::ma, L::P>(orlmMul_mama_32f_P, 1, 1, 1, 3, Strides::Unit)));
    EXPECT_TRUE((parallel<float, K::ta, K::ta, L::L>(orlmMul_tata_32f_L, 1, 1, 1, 3, Strides::Wide)));
    // Fewer items than threads: serial whatever the cost.
    Threads four(4);
    EXPECT_FALSE((parallel<float, K::ma, K::ma, L::Std>(orlmMul_mama_32f, 6, 6, 6, 3, Strides::Unit)));
    // Single shapes have no driver.
    EXPECT_FALSE((parallel<float, K::m, K::m, L::Std>(orlmMul_mm_32f, 60, 60, 60, 1, Strides::Unit)));
}

// A cost that wraps to a negative 32-bit number takes the serial route.
// 4 x 65536 items times a shared 65536 x 1, items overlapping one element apart:
// 65536 + 65537 * 4 * 8192 passes 2^31.
TEST(MulRoute, WrappedCostIsSerial)
{
    Threads two(2);
    const int Kk = 65536, n = 8192;
    std::vector<float> a(4 * Kk + n, 0.5f), b(Kk, 0.25f), d(4 + n, 0.0f);
    probe::reset();
    ASSERT_EQ(orlmMul_mam_32f(a.data(), 4, Kk * 4, 4, Kk, 4, b.data(), 4, 4, 1, Kk, d.data(), 4, 4, 4, n), orlStatusOk);
    EXPECT_EQ(probe::regions().count, 0);
    EXPECT_EQ(d[n + 2], 0.125f * Kk);
}

// The split over threads changes nothing in the values.
TEST(MulRoute, SameBitsForOneToFourThreads)
{
    const auto run = [](auto tag, auto fn, int M, int N, int Kk, int n, Strides st, auto tagA, auto tagB) {
        using E = decltype(tag);
        std::vector<std::vector<unsigned char>> outs;
        for (int T = 1; T <= 4; ++T) {
            Threads th(T);
            Product<E, decltype(tagA)::value, decltype(tagB)::value, L::Std> p(M, N, Kk, n, st);
            EXPECT_EQ(p.call(fn), orlStatusOk);
            outs.push_back(p.D.mem);
        }
        for (int T = 1; T < 4; ++T) EXPECT_EQ(outs[T], outs[0]) << "threads " << T + 1;
    };
    using MA = std::integral_constant<K, K::ma>;
    using M_ = std::integral_constant<K, K::m>;
    run(0.0f, orlmMul_mama_32f, 4, 4, 4, 37, Strides::Unit, MA{}, MA{});
    run(0.0f, orlmMul_mma_32f, 5, 3, 7, 23, Strides::Wide, M_{}, MA{});
    run(0.0, orlmMul_mam_64f, 5, 3, 7, 2000, Strides::Unit, MA{}, M_{});
}

}  // namespace
