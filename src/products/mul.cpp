// Matrix multiply: dst(k) = op(A(k)) * op(B(k)), op the identity or the
// transpose by the shape letter, A or B shared where it is no array.
//
// One entry validates and routes, one kernel template serves every variant.
// What differs between members is data: the letter tables (which stored size
// is M, N or K), the cost of each array shape, the limits, and the kernel
// table that says which numeric kind a kernel runs at sizes 3 to 6 and in its
// general path.
#include <emmintrin.h>

#include <cstdint>
#include <string_view>
#include <type_traits>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/lanes.h"
#include "frame/numeric.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::mul {

// ---- sizes ------------------------------------------------------------------

// Loop sizes of a product and the stored widths of the sources (the row
// length of a `_P` table).
struct Dims {
    int M, N, K, K2, colsA, colsB;
};

// The letter tables: which stored size of a source is M, N or K.
//   first letter   m, ma: M = h1, K = w1      t, ta: M = w1, K = h1
//   second letter  m, ma: N = w2, K = h2      t, ta: N = h2, K = w2
// K (first) == K2 (second) is the size match of the shape.
template <class A, class B>
constexpr Dims dimsOf(int w1, int h1, int w2, int h2)
{
    return {A::trans ? w1 : h1, B::trans ? h2 : w2, A::trans ? h1 : w1, B::trans ? w2 : h2, w1, w2};
}

// ---- cost and limits ----------------------------------------------------------

// Elements read and written: a shared source once, an array source and the
// destination `count` times.
using CostFn = Wrap (*)(Wrap w1, Wrap h1, Wrap w2, Wrap h2, Wrap n);
struct CostRow {
    std::string_view shape;
    CostFn cost;
};
constexpr CostRow kCosts[] = {
    {"mam",  [](Wrap w1, Wrap h1, Wrap w2, Wrap h2, Wrap n) { return w2 * h2 + (w2 + w1) * h1 * n; }},
    {"mat",  [](Wrap w1, Wrap h1, Wrap w2, Wrap h2, Wrap n) { return w2 * h2 + (h2 + w1) * h1 * n; }},
    {"tam",  [](Wrap w1, Wrap h1, Wrap w2, Wrap h2, Wrap n) { return w2 * h2 + (w2 + h1) * w1 * n; }},
    {"tat",  [](Wrap w1, Wrap h1, Wrap w2, Wrap h2, Wrap n) { return w2 * h2 + (h2 + h1) * w1 * n; }},
    {"mma",  [](Wrap w1, Wrap h1, Wrap w2, Wrap h2, Wrap n) { return w1 * h1 + (h1 + h2) * w2 * n; }},
    {"mta",  [](Wrap w1, Wrap h1, Wrap w2, Wrap h2, Wrap n) { return w1 * h1 + (h1 + w2) * h2 * n; }},
    {"tma",  [](Wrap w1, Wrap h1, Wrap w2, Wrap h2, Wrap n) { return w1 * h1 + (w1 + h2) * w2 * n; }},
    {"tta",  [](Wrap w1, Wrap h1, Wrap w2, Wrap h2, Wrap n) { return w1 * h1 + (w1 + w2) * h2 * n; }},
    {"mama", [](Wrap w1, Wrap h1, Wrap w2, Wrap h2, Wrap n) { return (w1 * h1 + h1 * w2 + w2 * h2) * n; }},
    {"mata", [](Wrap w1, Wrap h1, Wrap w2, Wrap h2, Wrap n) { return (w1 * h1 + w2 * h2 + h1 * h2) * n; }},
    {"tama", [](Wrap w1, Wrap h1, Wrap w2, Wrap h2, Wrap n) { return (w1 * h1 + w1 * w2 + w2 * h2) * n; }},
    {"tata", [](Wrap w1, Wrap h1, Wrap w2, Wrap h2, Wrap n) { return (w1 * h1 + w2 * h2 + w1 * h2) * n; }},
};

constexpr CostFn costOf(std::string_view shape)
{
    for (const CostRow& r : kCosts)
        if (r.shape == shape) return r.cost;
    return nullptr;
}

// The driver is taken when the cost is above the limit (>). The 32f limit
// of 6 sends all but the tiniest calls to the driver, whose thread test then
// does the real filtering.
//                          Unit   Any    L Unit L Any  P
constexpr LimitRow kLimits{{6,     6,     6,     6,     6,    Test::GT},   // 32f
                           {36864, 18432, 18432, 18432, 9216, Test::GT}};  // 64f

// ---- kernel table -------------------------------------------------------------

// What a kernel runs at one of the sizes 3 to 6, taken only when M, N and K
// all equal the size: packed (P), extended (X), packed for columns 0 to 3 and
// extended for column 4 (Mix, size 5), or no unrolled form, the general path
// (G).
enum class Path { P, X, Mix, G };
constexpr Path P = Path::P, X = Path::X, Mix = Path::Mix, G = Path::G;

struct KernelRow {
    Ty ty;
    Var var;
    std::string_view shapes;  // shape letters separated by blanks
    Path at[4];               // sizes 3, 4, 5, 6
    Num general;
    bool perItem = false;     // `_LS2`: one call of the single-shape `_S2` kernel per item,
                              // whose own row then applies (the sizes and general path here are unused)
};

constexpr Ty F32 = Ty::F32, F64 = Ty::F64;
constexpr Num Blocked = Num::Blocked, Running = Num::Running, Through = Num::ThroughDst;
constexpr bool perItem = true;
constexpr std::string_view kAll = "mm mt tm tt mam mat tam tat mma mta tma tta mama mata tama tata";
constexpr std::string_view kArrays = "mam mat tam tat mma mta tma tta mama mata tama tata";

constexpr KernelRow kKernels[] = {
    // 32f      kernel    shapes                                                   3  4  5    6  general
    {F32, Var::Unit, "mm tt mam mat tam tat mma tma mama mata tama tata",          {P, P, P,   P}, Blocked},
    {F32, Var::Unit, "tm",                                                         {P, P, P,   G}, Blocked},
    {F32, Var::Unit, "mt mta tta",                                                 {X, X, X,   X}, Blocked},
    {F32, Var::L,    "mam mat tam tat mma tma mama mata tama tata",                {P, P, P,   P}, Blocked},
    {F32, Var::L,    "mta tta",                                                    {G, G, G,   G}, Blocked},
    {F32, Var::S2,   "mm mt tm tt tat mma mta tma tta mata tama tata",             {X, X, X,   X}, Running},
    {F32, Var::S2,   "mam",                                                        {P, P, Mix, X}, Running},
    {F32, Var::S2,   "mama",                                                       {P, P, Mix, G}, Running},
    {F32, Var::S2,   "mat tam",                                                    {P, G, G,   G}, Running},
    {F32, Var::P,    "mm mt tm tt tat mma mta tma tta mama mata tama tata",        {X, X, X,   X}, Through},
    {F32, Var::P,    "mam mat tam",                                                {P, G, G,   G}, Through},
    {F32, Var::LS2,  "mam mat tam tat",                                            {P, G, G,   G}, Through},
    {F32, Var::LS2,  "mma mta tma tta mama mata tama tata",                        {G, G, G,   G}, Running, perItem},
    // 64f
    {F64, Var::Unit, "mm mt tm tt mam mat tam tat mma mta tma",                    {P, P, P,   P}, Blocked},
    {F64, Var::Unit, "mama tama tata tta",                                         {X, X, X,   X}, Blocked},
    {F64, Var::Unit, "mata",                                                       {X, X, X,   X}, Running},
    {F64, Var::L,    "mam mat tam tat mma mta tma mama mata tama tata",            {P, P, P,   P}, Blocked},
    {F64, Var::L,    "tta",                                                        {G, G, G,   G}, Blocked},
    {F64, Var::S2,   kAll,                                                         {X, X, X,   X}, Running},
    {F64, Var::P,    kAll,                                                         {X, X, X,   X}, Through},
    {F64, Var::LS2,  kArrays,                                                      {G, G, G,   G}, Running, perItem},
};

constexpr int rowsFor(Ty ty, Var var, std::string_view shape)
{
    int n = 0;
    for (const KernelRow& r : kKernels) n += r.ty == ty && r.var == var && listed(r.shapes, shape);
    return n;
}

constexpr const KernelRow& rowOf(Ty ty, Var var, std::string_view shape)
{
    for (const KernelRow& r : kKernels)
        if (r.ty == ty && r.var == var && listed(r.shapes, shape)) return r;
    return kKernels[0];
}

// The sizes at which a kernel has an unrolled path.
constexpr Sizes unrolledSizes(const KernelRow& r) { return sizesWhere(r.at, G); }

// Every kernel of every shape has exactly one row.
constexpr bool tableComplete()
{
    for (std::string_view shape : {"mm", "mt", "tm", "tt", "mam", "mat", "tam", "tat", "mma", "mta", "tma", "tta",
                                   "mama", "mata", "tama", "tata"}) {
        const bool array = shape.size() > 2;
        for (Ty ty : {F32, F64})
            for (Var v : {Var::Unit, Var::S2, Var::P, Var::L, Var::LS2}) {
                const bool exists = array || v == Var::Unit || v == Var::S2 || v == Var::P;
                if (rowsFor(ty, v, shape) != (exists ? 1 : 0)) return false;
            }
    }
    return true;
}
static_assert(tableComplete(), "the kernel table must name every kernel exactly once");

// ---- general paths ------------------------------------------------------------

// R rows by C columns from (i, j): R*C accumulators start at +0.0, each k
// adds its R*C products, K innermost; the results are stored once.
template <class E, int R, int C, class XA, class XB, class XD>
inline void block(const XA& x, const XB& y, const XD& z, int i, int j, int K)
{
    E c[R][C];
    #pragma GCC unroll 8
    for (int r = 0; r < R; ++r)
        #pragma GCC unroll 8
        for (int q = 0; q < C; ++q) c[r][q] = E(0);
    for (int k = 0; k < K; ++k) {
        E b[C];
        #pragma GCC unroll 8
        for (int q = 0; q < C; ++q) b[q] = y(k, j + q);
        #pragma GCC unroll 8
        for (int r = 0; r < R; ++r) {
            const E a = x(i + r, k);
            #pragma GCC unroll 8
            for (int q = 0; q < C; ++q) c[r][q] = c[r][q] + a * b[q];
        }
    }
    #pragma GCC unroll 8
    for (int r = 0; r < R; ++r)
        #pragma GCC unroll 8
        for (int q = 0; q < C; ++q) z(i + r, j + q) = c[r][q];
}

// R rows from row i: pairs of columns, then an odd last column.
template <class E, int R, class XA, class XB, class XD>
inline void rowBlocks(const XA& x, const XB& y, const XD& z, int i, int N, int K)
{
    const int N2 = N & ~1;
    for (int j = 0; j < N2; j += 2) block<E, R, 2>(x, y, z, i, j, K);
    if (N & 1) block<E, R, 1>(x, y, z, i, N - 1, K);
}

// Blocked scalar: blocks of 4 rows by 2 columns with 8 accumulators, an odd
// last column with 4; then the 1 to 3 rows left, together, in the same
// blocks of columns. The blocking decides the order of the stores, not the
// value of any element.
template <class E, class XA, class XB, class XD>
void blocked(const XA& x, const XB& y, const XD& z, int M, int N, int K)
{
    const int M4 = M & ~3, N2 = N & ~1;
    for (int i = 0; i < M4; i += 4) {
        for (int j = 0; j < N2; j += 2) {
            // The main block written out: the compiler keeps the eight
            // accumulators in registers this way.
            E c00 = E(0), c01 = E(0), c10 = E(0), c11 = E(0), c20 = E(0), c21 = E(0), c30 = E(0), c31 = E(0);
            for (int k = 0; k < K; ++k) {
                const E b0 = y(k, j), b1 = y(k, j + 1);
                const E a0 = x(i, k), a1 = x(i + 1, k), a2 = x(i + 2, k), a3 = x(i + 3, k);
                c00 = c00 + a0 * b0; c01 = c01 + a0 * b1;
                c10 = c10 + a1 * b0; c11 = c11 + a1 * b1;
                c20 = c20 + a2 * b0; c21 = c21 + a2 * b1;
                c30 = c30 + a3 * b0; c31 = c31 + a3 * b1;
            }
            z(i, j) = c00; z(i, j + 1) = c01;
            z(i + 1, j) = c10; z(i + 1, j + 1) = c11;
            z(i + 2, j) = c20; z(i + 2, j + 1) = c21;
            z(i + 3, j) = c30; z(i + 3, j + 1) = c31;
        }
        if (N & 1) block<E, 4, 1>(x, y, z, i, N - 1, K);
    }
    switch (M - M4) {
    case 1: rowBlocks<E, 1>(x, y, z, M4, N, K); break;
    case 2: rowBlocks<E, 2>(x, y, z, M4, N, K); break;
    case 3: rowBlocks<E, 3>(x, y, z, M4, N, K); break;
    }
}

// Rows, then columns, then k; shared sources are read where they lie.
template <Num kind, bool Unit, class A, class B, class D>
void general(const A& a, const B& b, const D& d, const Dims& s, int count)
{
    using E = typename D::Elem;
    for (int item = 0; item < count; ++item) {
        const auto x = matItem<Unit>(a, item, s.colsA);
        const auto y = matItem<Unit>(b, item, s.colsB);
        const auto z = matItem<Unit>(d, item, s.N);
        if constexpr (kind == Num::Blocked) {
            blocked<E>(x, y, z, s.M, s.N, s.K);
        } else {
            for (int i = 0; i < s.M; ++i)
                for (int j = 0; j < s.N; ++j)
                    productsInto<kind, E>(z(i, j), s.K, [&](int k) { return x(i, k); }, [&](int k) { return y(k, j); });
        }
    }
}

// ---- unrolled paths, one element at a time ----------------------------------------

// The unrolled forms of the strided, pointer-table and extended kernels: each
// element formed in its kind (Mix: packed but for an extended column 4), the
// shared source held for the whole call.
template <Path path, int N, bool Unit, class A, class B, class D>
void unrolledScalar(const A& a, const B& b, const D& d, const Dims& s, int count)
{
    using E = typename D::Elem;
    const auto sa = sourceItems<Unit, N>(a, s.colsA);
    const auto sb = sourceItems<Unit, N>(b, s.colsB);
    for (int item = 0; item < count; ++item) {
        const auto& x = sa(item);
        const auto& y = sb(item);
        const auto z = matItem<Unit>(d, item, N);
        #pragma GCC unroll 8
        for (int i = 0; i < N; ++i)
            #pragma GCC unroll 8
            for (int j = 0; j < N; ++j) {
                const auto xi = [&](int k) { return x(i, k); };
                const auto yj = [&](int k) { return y(k, j); };
                if (path == Path::X || (path == Path::Mix && j == 4))
                    z(i, j) = sumOfProducts<Num::Extended, E>(N, xi, yj);
                else
                    z(i, j) = sumOfProducts<Num::Packed, E>(N, xi, yj);
            }
    }
}

// ---- unrolled packed paths of the unit-stride kernels --------------------------------

// The SSE lanes of the element type, and for 32f the forms that hold
// columns 4 and 5 of two rows in one register at size 6.
template <class E>
struct Vx : Lanes<E> {};

template <>
struct Vx<float> : Lanes<float> {
    static V set(float a, float b, float c, float d) { return _mm_setr_ps(a, b, c, d); }
    // Columns 4 and 5 of a row, twice: (b4, b5, b4, b5).
    static V pair2(const float* p)
    {
        const V v = _mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(p));
        return _mm_movelh_ps(v, v);
    }
    // (x, x, y, y): one element of two rows, for columns 4 and 5 of both.
    static V rows2(float x, float y) { return _mm_setr_ps(x, x, y, y); }
    static void storePair(float* lo, float* hi, V v)
    {
        _mm_storel_pi(reinterpret_cast<__m64*>(lo), v);
        _mm_storeh_pi(reinterpret_cast<__m64*>(hi), v);
    }
};

// Column plan of one row of the result: G vector groups of columns, then R
// columns left over: none, one scalar column, or (32f, size 6) columns 4 and
// 5, done two rows at a time in one register. 32f size 3 is one group of
// three lanes.
template <class E, int N>
struct Plan {
    static constexpr int lanes = Vx<E>::lanes;
    static constexpr bool three = sizeof(E) == 4 && N == 3;
    static constexpr int G = three ? 1 : N / lanes;
    static constexpr int R = three ? 0 : N % lanes;
};

// The rows of the second operand in hand, by the column plan.
template <class E, int N>
struct Rows {
    using X = Vx<E>;
    using V = typename X::V;
    using Pl = Plan<E, N>;
    V g[N][Pl::G];
    E s[N];      // the scalar column (R == 1)
    V pair[N];   // columns 4 and 5 (R == 2)

    template <bool Tr, class Acc>
    void load(const Acc& b)
    {
        #pragma GCC unroll 8
        for (int k = 0; k < N; ++k) {
            if constexpr (!Tr) {
                const E* r = b.row(k);
                #pragma GCC unroll 8
                for (int q = 0; q < Pl::G; ++q) {
                    if constexpr (Pl::three)
                        g[k][q] = X::template load<3>(r);
                    else
                        g[k][q] = X::load(r + q * Pl::lanes);
                }
                if constexpr (Pl::R == 1) s[k] = r[N - 1];
                if constexpr (Pl::R == 2) pair[k] = X::pair2(r + 4);
            } else {
                // Row k of the second operand is a stored column: gathered.
                #pragma GCC unroll 8
                for (int q = 0; q < Pl::G; ++q) {
                    const int j = q * Pl::lanes;
                    if constexpr (sizeof(E) == 4)
                        g[k][q] = X::set(b(k, j), b(k, j + 1), b(k, j + 2), Pl::three ? 0.0f : b(k, j + 3));
                    else
                        g[k][q] = _mm_setr_pd(b(k, j), b(k, j + 1));
                }
                if constexpr (Pl::R == 1) s[k] = b(k, N - 1);
                if constexpr (Pl::R == 2) pair[k] = X::set(b(k, 4), b(k, 5), b(k, 4), b(k, 5));
            }
        }
    }
};

// The first operand's elements as scalars and as vectors of one element in
// every lane: broadcast while the item is read, or, for a shared operand,
// broadcast once before the loop over items and held.
template <class E, class Acc>
struct OnTheFly {
    Acc a;
    E operator()(int i, int k) const { return a(i, k); }
    typename Vx<E>::V vec(int i, int k) const { return Vx<E>::bcast(a(i, k)); }
};

// Row i of the first operand as broadcasts: element by element, or, for a
// stored 32f row of four elements read as it lies, one load and a shuffle
// for each element (measured: a gain at size 4 only).
template <class XA, int N>
struct RowBroadcasts {
    const XA& a;
    int i;
    auto vec(int k) const { return a.vec(i, k); }
};

template <class T, bool Unit, int N>
    requires(N == 4)
struct RowBroadcasts<OnTheFly<float, MatItem<T, false, Unit>>, N> {
    const OnTheFly<float, MatItem<T, false, Unit>>& a;
    int i;
    __m128 r = _mm_loadu_ps(a.a.row(i));
    __m128 vec(int k) const
    {
        switch (k) {
        case 0: return _mm_shuffle_ps(r, r, 0x00);
        case 1: return _mm_shuffle_ps(r, r, 0x55);
        case 2: return _mm_shuffle_ps(r, r, 0xaa);
        case 3: return _mm_shuffle_ps(r, r, 0xff);
        }
        return a.vec(i, k);
    }
};

template <class E, int N>
struct HeldBroadcasts {
    typename Vx<E>::V v[N][N];
    E s[N][N];
    E operator()(int i, int k) const { return s[i][k]; }
    typename Vx<E>::V vec(int i, int k) const { return v[i][k]; }
};

template <class E, int N, class Acc>
inline HeldBroadcasts<E, N> holdBroadcasts(const Acc& a)
{
    HeldBroadcasts<E, N> h;
    #pragma GCC unroll 8
    for (int i = 0; i < N; ++i)
        #pragma GCC unroll 8
        for (int k = 0; k < N; ++k) {
            h.s[i][k] = a(i, k);
            h.v[i][k] = Vx<E>::bcast(h.s[i][k]);
        }
    return h;
}

// One item: for each row i, broadcast A(i, k) and add its product with row
// k of the second operand, k = 0 .. N-1. A row of A is read whole before its
// result row is stored; columns 4 and 5 of a 32f size 6 follow for row pairs.
template <class E, int N, class XA, class XD>
inline void rowsTimes(const XA& a, const Rows<E, N>& b, const XD& d)
{
    using X = Vx<E>;
    using V = typename X::V;
    using Pl = Plan<E, N>;
    #pragma GCC unroll 8
    for (int i = 0; i < N; ++i) {
        V acc[Pl::G];
        E sc{};
        const RowBroadcasts<XA, N> ar{a, i};
        {
            const V ai = ar.vec(0);
            #pragma GCC unroll 8
            for (int q = 0; q < Pl::G; ++q) acc[q] = X::mul(ai, b.g[0][q]);
            if constexpr (Pl::R == 1) sc = a(i, 0) * b.s[0];
        }
        #pragma GCC unroll 8
        for (int k = 1; k < N; ++k) {
            const V ai = ar.vec(k);
            #pragma GCC unroll 8
            for (int q = 0; q < Pl::G; ++q) acc[q] = X::add(acc[q], X::mul(ai, b.g[k][q]));
            if constexpr (Pl::R == 1) sc = sc + a(i, k) * b.s[k];
        }
        E* out = d.row(i);
        #pragma GCC unroll 8
        for (int q = 0; q < Pl::G; ++q) {
            if constexpr (Pl::three)
                X::template store<3>(out, acc[q]);
            else
                X::store(out + q * Pl::lanes, acc[q]);
        }
        if constexpr (Pl::R == 1) out[N - 1] = sc;
    }
    if constexpr (Pl::R == 2) {
        #pragma GCC unroll 8
        for (int i = 0; i < N; i += 2) {
            V acc = X::mul(X::rows2(a(i, 0), a(i + 1, 0)), b.pair[0]);
            #pragma GCC unroll 8
            for (int k = 1; k < N; ++k) acc = X::add(acc, X::mul(X::rows2(a(i, k), a(i + 1, k)), b.pair[k]));
            X::storePair(d.row(i) + 4, d.row(i + 1) + 4, acc);
        }
    }
}

// The loop over items of a packed unrolled path: a shared source is loaded
// once, before the loop (the first one as broadcasts); the second operand's
// rows are in hand before the first store of an item.
template <int N, class A, class B, class D>
void unrolledPacked(const A& opdA, const B& opdB, const D& opdD, const Dims& s, int count)
{
    using E = typename D::Elem;
    // Local copies: the vector stores may alias anything, and the compiler
    // would otherwise reload the operand fields after each of them.
    const A a = opdA;
    const B b = opdB;
    const D d = opdD;
    const auto sa = [&] {
        if constexpr (A::array)
            return [&](int item) { return OnTheFly<E, decltype(matItem<true>(a, item, s.colsA))>{matItem<true>(a, item, s.colsA)}; };
        else
            return [h = holdBroadcasts<E, N>(matItem<true>(a, 0, s.colsA))](int) -> const HeldBroadcasts<E, N>& { return h; };
    }();
    if constexpr (!B::array) {
        Rows<E, N> rb;
        rb.template load<B::trans>(matItem<true>(b, 0, s.colsB));
        for (int item = 0; item < count; ++item) rowsTimes<E, N>(sa(item), rb, matItem<true>(d, item, N));
    } else {
        for (int item = 0; item < count; ++item) {
            Rows<E, N> rb;
            rb.template load<B::trans>(matItem<true>(b, item, s.colsB));
            rowsTimes<E, N>(sa(item), rb, matItem<true>(d, item, N));
        }
    }
}

// ---- kernel ---------------------------------------------------------------------

template <Path path, int N, Var V, class A, class B, class D>
void unrolled(const A& a, const B& b, const D& d, const Dims& s, int count)
{
    if constexpr (path == Path::P && unitStep(V))
        unrolledPacked<N>(a, b, d, s, count);
    else
        unrolledScalar<path, N, unitStep(V)>(a, b, d, s, count);
}

template <Var V, class A, class B, class D>
orlStatus kernel(const A& a, const B& b, const D& d, const Dims& s, int count)
{
    using E = typename D::Elem;
    constexpr KernelRow row = rowOf(tyOf<E>, V, kShape<A::kind, B::kind>.view());
    if constexpr (row.perItem) {
        for (int item = 0; item < count; ++item)
            kernel<Var::S2>(itemAsSingle(a, item), itemAsSingle(b, item), itemAsSingle(d, item), s, 1);
        return orlStatusOk;
    } else {
        return bySize<unrolledSizes(row)>(
            s.M == s.N && s.N == s.K ? s.M : 0,
            [&](auto n) {
                constexpr int N = decltype(n)::value;
                return unrolled<row.at[N - 3], N, V>(a, b, d, s, count), orlStatusOk;
            },
            [&] { return general<row.general, unitStep(V)>(a, b, d, s, count), orlStatusOk; });
    }
}

// The kernel that the stride2 test selects.
template <class A, class B, class D>
orlStatus select(const A& a, const B& b, const D& d, const Dims& s, int count)
{
    if (allUnit(a, b, d)) return kernel<varOf(D::lay, true)>(a, b, d, s, count);
    return kernel<varOf(D::lay, false)>(a, b, d, s, count);
}

// ---- entry ----------------------------------------------------------------------

template <class A, class B, class D>
orlStatus entry(const A& a, int w1, int h1, const B& b, int w2, int h2, const D& d, int count = 1)
{
    using E = typename D::Elem;
    const Dims s = dimsOf<A, B>(w1, h1, w2, h2);

    Checks c = operandChecks(a, b, d);
    c.C = count >= 1;
    c.Z = sizesOk({w1, h1, w2, h2});
    c.R = s.K == s.K2;
    if (const orlStatus st = firstFailure(generalOrder(D::array, D::lay, true), c)) return st;

    if constexpr (!D::array) {
        return select(a, b, d, s, 1);
    } else {
        constexpr CostFn cost = costOf(kShape<A::kind, B::kind>.view());
        return route(cost(w1, h1, w2, h2, count).value(), kLimits.of<E>(), D::lay, count,
                     [&](int n, const auto&... o) { return select(o..., s, n); }, a, b, d);
    }
}

}  // namespace orl::mul

#include "mul.inc"
