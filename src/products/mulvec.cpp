// Matrix times vector, y = op(A) x, and Gaxpy, y = A x + b: one matrix or an
// array of them, one vector or an array of them, the addend b of Gaxpy one
// vector for all items (mvav) or one per item (mva).
//
// One entry per stem validates and routes; one kernel template serves every
// variant of both stems. What differs between members is data: the letter
// table (which stored size is M and which K), the cost of each array shape,
// the limits, and the kernel table that says which path a kernel runs at the
// sizes 3 to 6 and in its general path. The packed paths add in the order of
// a sum tree (src/frame/numeric.h), the other paths in ascending k.
#include <emmintrin.h>
#include <xmmintrin.h>

#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/lanes.h"
#include "frame/numeric.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::mulvec {

enum class Op { Mul, Gaxpy };

// ---- sizes ------------------------------------------------------------------

// Length of the result (M) and of each sum (K), and the stored width of the
// matrix (the length of a `_P` table row).
//   m, ma: M = height, K = width        t, ta: M = width, K = height
// K equals src2Length is the size match of the shape.
struct Dims {
    int M, K, cols;
};

template <class A>
constexpr Dims dimsOf(int w, int h)
{
    return {A::trans ? w : h, A::trans ? h : w, w};
}

// ---- cost and limits ----------------------------------------------------------

// Mul counts the elements read and written: a shared operand once, an array
// operand and the result `count` times. Gaxpy counts the vectors only.
using CostFn = Wrap (*)(Wrap w, Wrap h, Wrap l2, Wrap l3, Wrap n);
struct CostRow {
    Op op;
    std::string_view shape;
    CostFn cost;
};
constexpr CostRow kCosts[] = {
    {Op::Mul,   "mva",  [](Wrap w, Wrap h, Wrap, Wrap, Wrap n) { return w * h + (w + h) * n; }},
    {Op::Mul,   "tva",  [](Wrap w, Wrap h, Wrap, Wrap, Wrap n) { return w * h + (w + h) * n; }},
    {Op::Mul,   "mav",  [](Wrap w, Wrap h, Wrap, Wrap, Wrap n) { return h * (w + 1) * n + w; }},
    {Op::Mul,   "tav",  [](Wrap w, Wrap h, Wrap, Wrap, Wrap n) { return w * (h + 1) * n + h; }},
    {Op::Mul,   "mava", [](Wrap w, Wrap h, Wrap, Wrap, Wrap n) { return (w * h + w + h) * n; }},
    {Op::Mul,   "tava", [](Wrap w, Wrap h, Wrap, Wrap, Wrap n) { return (w * h + w + h) * n; }},
    {Op::Gaxpy, "mva",  [](Wrap, Wrap, Wrap l2, Wrap l3, Wrap n) { return (l2 + 2 * l3) * n; }},
    {Op::Gaxpy, "mvav", [](Wrap, Wrap, Wrap l2, Wrap l3, Wrap n) { return l2 * n + l3 + l3 * n; }},
};

constexpr CostFn costOf(Op op, std::string_view shape)
{
    for (const CostRow& r : kCosts)
        if (r.op == op && r.shape == shape) return r.cost;
    return nullptr;
}

// The driver is taken when the cost is above the limit (>): Mul has the
// limits of every array product (6 for all 32f members), Gaxpy one limit.
//                             Unit   Any    L Unit L Any  P
constexpr LimitRow kMulLimits{{6,     6,     6,     6,     6,    Test::GT},   // 32f
                              {36864, 18432, 18432, 18432, 9216, Test::GT}};  // 64f
constexpr LimitRow kGaxpyLimits = both(5000, 5000, 5000, 5000, 5000, Test::GT);

// ---- kernel table -------------------------------------------------------------

// What a kernel runs at one of the sizes 3 to 6, taken only for a square
// matrix of that size: packed with the row, column or pair tree, extended,
// a scalar chain (element precision, ascending k, from the first product),
// or no unrolled form (G).
enum class Path { Row, Col, Pair, X, Chain, G };
// The general path: blocked (rows in groups of 8 accumulators from +0.0),
// running, through the destination, or the dot path of one kernel.
enum class General { Blocked, Running, Through, Dot };

struct KernelRow {
    Op op;
    Ty ty;
    Var var;
    std::string_view shapes;  // shape letters separated by blanks
    Path at[4];               // sizes 3, 4, 5, 6
    General general;
    bool perItem = false;     // `_LS2` of Mul: one call of the mv or tv `_S2` kernel per item,
                              // whose own row then applies (the sizes and general path here are unused)
};

constexpr Op Mul = Op::Mul, Gaxpy = Op::Gaxpy;
constexpr Ty F32 = Ty::F32, F64 = Ty::F64;
constexpr Path Row = Path::Row, Col = Path::Col, Pair = Path::Pair, X = Path::X, Chain = Path::Chain, G = Path::G;
constexpr General Blocked = General::Blocked, Running = General::Running, Through = General::Through, Dot = General::Dot;
constexpr bool perItem = true;
constexpr std::string_view kMulAll = "mv tv mva tva mav tav mava tava";
constexpr std::string_view kMulArrays = "mva tva mav tav mava tava";
constexpr std::string_view kGaxpyAll = "mv mva mvav";
constexpr std::string_view kGaxpyArrays = "mva mvav";

constexpr KernelRow kKernels[] = {
    // Mul 32f        kernel     shapes               3      4      5      6     general
    {Mul, F32, Var::Unit, "mv tv tva",          {X,     X,     X,     X},     Blocked},
    {Mul, F32, Var::Unit, "mva",                {Row,   Row,   Row,   Row},   Dot},
    {Mul, F32, Var::Unit, "mav mava",           {Row,   Row,   Row,   Row},   Blocked},
    {Mul, F32, Var::Unit, "tav tava",           {Col,   Col,   Col,   Col},   Blocked},
    {Mul, F32, Var::L,    "mav mava",           {Row,   Row,   Row,   Row},   Blocked},
    {Mul, F32, Var::L,    "tav tava",           {Col,   Col,   Col,   Col},   Blocked},
    {Mul, F32, Var::L,    "mva tva",            {G,     G,     G,     G},     Blocked},
    {Mul, F32, Var::S2,   kMulAll,              {X,     X,     X,     X},     Running},
    {Mul, F32, Var::P,    kMulAll,              {X,     X,     X,     X},     Through},
    {Mul, F32, Var::LS2,  kMulArrays,           {G,     G,     G,     G},     Running, perItem},
    // Mul 64f
    {Mul, F64, Var::Unit, "mv mva mav mava",    {Pair,  Pair,  Pair,  Pair},  Blocked},
    {Mul, F64, Var::Unit, "tv tva tav tava",    {X,     X,     X,     X},     Blocked},
    {Mul, F64, Var::L,    "mva mav mava tav",   {Pair,  Pair,  Pair,  Pair},  Blocked},
    {Mul, F64, Var::L,    "tva tava",           {G,     G,     G,     G},     Blocked},
    {Mul, F64, Var::S2,   kMulAll,              {X,     X,     X,     X},     Running},
    {Mul, F64, Var::P,    kMulAll,              {X,     X,     X,     X},     Through},
    {Mul, F64, Var::LS2,  kMulArrays,           {G,     G,     G,     G},     Running, perItem},
    // Gaxpy 32f
    {Gaxpy, F32, Var::Unit, kGaxpyAll,          {Row,   Row,   Row,   Row},   Running},
    {Gaxpy, F32, Var::L,    kGaxpyArrays,       {Row,   Row,   Row,   Row},   Through},
    {Gaxpy, F32, Var::S2,   kGaxpyAll,          {Chain, Chain, Chain, Chain}, Running},
    {Gaxpy, F32, Var::P,    kGaxpyAll,          {Chain, Chain, Chain, Chain}, Through},
    {Gaxpy, F32, Var::LS2,  kGaxpyArrays,       {Chain, Chain, Chain, Chain}, Through},
    // Gaxpy 64f
    {Gaxpy, F64, Var::Unit, kGaxpyAll,          {Pair,  Pair,  Pair,  Pair},  Running},
    {Gaxpy, F64, Var::L,    kGaxpyArrays,       {Pair,  Pair,  Pair,  Pair},  Through},
    {Gaxpy, F64, Var::S2,   kGaxpyAll,          {Chain, Chain, Chain, X},     Running},
    {Gaxpy, F64, Var::P,    kGaxpyAll,          {Chain, Chain, Chain, X},     Through},
    {Gaxpy, F64, Var::LS2,  kGaxpyArrays,       {Chain, Chain, Chain, X},     Through},
};

constexpr bool matches(const KernelRow& r, Op op, Ty ty, Var var, std::string_view shape)
{
    return r.op == op && r.ty == ty && r.var == var && listed(r.shapes, shape);
}

constexpr const KernelRow& rowOf(Op op, Ty ty, Var var, std::string_view shape)
{
    for (const KernelRow& r : kKernels)
        if (matches(r, op, ty, var, shape)) return r;
    return kKernels[0];
}

constexpr Sizes unrolledSizes(const KernelRow& r) { return sizesWhere(r.at, G); }

constexpr bool packed(Path p) { return p == Row || p == Col || p == Pair; }

// Every kernel of every shape has exactly one row; packed paths stand only in
// kernels whose element step is the element size; the row and column trees
// are 32f, the pair tree 64f; Gaxpy has no blocked or dot general path.
constexpr bool tableSound()
{
    struct S {
        Op op;
        std::string_view shape;
        bool array;
    };
    constexpr S shapes[] = {{Mul, "mv", false},  {Mul, "tv", false},   {Mul, "mva", true},  {Mul, "tva", true},
                            {Mul, "mav", true},  {Mul, "tav", true},   {Mul, "mava", true}, {Mul, "tava", true},
                            {Gaxpy, "mv", false}, {Gaxpy, "mva", true}, {Gaxpy, "mvav", true}};
    for (const S& s : shapes)
        for (Ty ty : {F32, F64})
            for (Var v : {Var::Unit, Var::S2, Var::P, Var::L, Var::LS2}) {
                int n = 0;
                for (const KernelRow& r : kKernels) n += matches(r, s.op, ty, v, s.shape);
                const bool exists = s.array || v == Var::Unit || v == Var::S2 || v == Var::P;
                if (n != (exists ? 1 : 0)) return false;
            }
    for (const KernelRow& r : kKernels) {
        for (Path p : r.at) {
            if (packed(p) && (r.perItem || !unitStep(r.var))) return false;
            if ((p == Row || p == Col) && r.ty != F32) return false;
            if (p == Pair && r.ty != F64) return false;
        }
        if (r.op == Gaxpy && (r.general == Blocked || r.general == Dot)) return false;
    }
    return true;
}
static_assert(tableSound(), "the kernel table must name every kernel once, with paths it can run");

constexpr const Trees& treesOf(Path p) { return p == Row ? kRowTree : p == Col ? kColumnTree : kPairTree; }

// ---- the addend -------------------------------------------------------------------

// Mul has no addend: a stand-in for Gaxpy's third operand.
struct NoAdd {
    static constexpr bool array = false;
    static constexpr Kind kind = Kind::v;
    bool unit() const { return true; }
};
inline NoAdd itemAsSingle(NoAdd, int) { return {}; }

template <bool Unit, class B>
inline auto addendItem(const B& b, int item)
{
    if constexpr (std::is_same_v<B, NoAdd>)
        return NoAdd{};
    else
        return vecItem<Unit>(b, item);
}

// One result element y = A(i, .) x in the kind, plus b(i) for Gaxpy.
template <Num kind, class E, class Bv, class Fa, class Fx>
inline void element(E& y, int K, const Fa& a, const Fx& x, const Bv& b, int i)
{
    if constexpr (std::is_same_v<Bv, NoAdd>)
        productsInto<kind, E>(y, K, a, x);
    else
        productsPlus<kind, E>(y, K, a, x, [&] { return b(i); });
}

// ---- general paths ----------------------------------------------------------------

// R rows from row i with R accumulators from +0.0, k innermost, x(k) read
// once for the R rows; the results stored once.
template <class E, int R, class XA, class XX, class XY>
inline void rowBlock(const XA& a, const XX& x, const XY& y, int i, int K)
{
    E c[R];
#pragma GCC unroll 8
    for (int r = 0; r < R; ++r) c[r] = E(0);
    for (int k = 0; k < K; ++k) {
        const E xk = x(k);
#pragma GCC unroll 8
        for (int r = 0; r < R; ++r) c[r] = c[r] + a(i + r, k) * xk;
    }
#pragma GCC unroll 8
    for (int r = 0; r < R; ++r) y(i + r) = c[r];
}

// Blocked: rows in groups of 8, then the M mod 8 rows left together.
template <class E, class XA, class XX, class XY>
void blocked(const XA& a, const XX& x, const XY& y, int M, int K)
{
    const int M8 = M & ~7;
    for (int i = 0; i < M8; i += 8) rowBlock<E, 8>(a, x, y, i, K);
    switch (M - M8) {
    case 1: rowBlock<E, 1>(a, x, y, M8, K); break;
    case 2: rowBlock<E, 2>(a, x, y, M8, K); break;
    case 3: rowBlock<E, 3>(a, x, y, M8, K); break;
    case 4: rowBlock<E, 4>(a, x, y, M8, K); break;
    case 5: rowBlock<E, 5>(a, x, y, M8, K); break;
    case 6: rowBlock<E, 6>(a, x, y, M8, K); break;
    case 7: rowBlock<E, 7>(a, x, y, M8, K); break;
    }
}

inline bool at16(std::uintptr_t v) { return v % 16 == 0; }

// The dot general path of the unit-stride mva 32f kernel: its variant is
// chosen once, before the loop over items, by the alignment of the bases and
// the strides between rows and items.
template <class A, class Xo, class D>
void dotPath(const A& a, const Xo& x, const D& d, const Dims& s, int count)
{
    const bool aligned = at16(reinterpret_cast<std::uintptr_t>(a.p)) && at16(std::uintptr_t(a.s1)) &&
                         at16(reinterpret_cast<std::uintptr_t>(x.p)) && at16(std::uintptr_t(x.s0)) &&
                         at16(reinterpret_cast<std::uintptr_t>(d.p)) && at16(std::uintptr_t(d.s0));
    const auto m = matItem<true>(a, 0, s.cols);
    for (int item = 0; item < count; ++item) {
        const float* xv = &vecItem<true>(x, item)(0);
        const auto y = vecItem<true>(d, item);
        for (int i = 0; i < s.M; ++i) y(i) = laneSum(m.row(i), xv, s.K, 11, aligned);
    }
}

// Rows, then k, with the matrix and the vectors read where they lie.
template <General g, bool Unit, class A, class Xo, class B, class D>
void general(const A& a, const Xo& x, const B& b, const D& d, const Dims& s, int count)
{
    using E = typename D::Elem;
    if constexpr (g == General::Dot) {
        dotPath(a, x, d, s, count);
    } else {
        for (int item = 0; item < count; ++item) {
            const auto m = matItem<Unit>(a, item, s.cols);
            const auto xv = vecItem<Unit>(x, item);
            const auto y = vecItem<Unit>(d, item);
            if constexpr (g == General::Blocked) {
                blocked<E>(m, xv, y, s.M, s.K);
            } else {
                constexpr Num kind = g == General::Running ? Num::Running : Num::ThroughDst;
                const auto bv = addendItem<Unit>(b, item);
                for (int i = 0; i < s.M; ++i)
                    element<kind, E>(y(i), s.K, [&](int k) { return m(i, k); }, [&](int k) { return xv(k); }, bv, i);
            }
        }
    }
}

// ---- unrolled scalar paths: extended and the scalar chain -------------------------

template <Num kind, int N, bool Unit, class A, class Xo, class B, class D>
void unrolledScalar(const A& a, const Xo& x, const B& b, const D& d, const Dims& s, int count)
{
    using E = typename D::Elem;
    const auto sa = sourceItems<Unit, N>(a, s.cols);
    for (int item = 0; item < count; ++item) {
        const auto& m = sa(item);
        const auto xv = vecItem<Unit>(x, item);
        const auto y = vecItem<Unit>(d, item);
        const auto bv = addendItem<Unit>(b, item);
#pragma GCC unroll 8
        for (int i = 0; i < N; ++i)
            element<kind, E>(y(i), N, [&](int k) { return m(i, k); }, [&](int k) { return xv(k); }, bv, i);
    }
}

// ---- unrolled packed paths ----------------------------------------------------------

template <int G, class F>
[[gnu::always_inline]] inline void forGroups(const F& f)
{
    [&]<int... q>(std::integer_sequence<int, q...>) { (f(std::integral_constant<int, q>{}), ...); }(std::make_integer_sequence<int, G>{});
}

// The matrix by columns in vectors of lanes over the rows: lane l of group q
// holds A(q*lanes + l, k), a partial last group zero beyond row N-1. A
// multiplication then forms the products of several rows at once, and the
// tree adds them lane by lane, each lane in the tree's order.
template <class E, int N>
struct Columns {
    using Ln = Lanes<E>;
    using V = typename Ln::V;
    static constexpr int L = Ln::n;
    static constexpr int G = (N + L - 1) / L;
    template <int q>
    static constexpr int width = N - q * L < L ? N - q * L : L;

    V c[N][G];

    template <bool Tr, class Acc>
    [[gnu::always_inline]] void load(const Acc& a)
    {
        if constexpr (Tr) {
            // A column of the transpose is a stored row.
#pragma GCC unroll 8
            for (int k = 0; k < N; ++k) forGroups<G>([&](auto q) { c[k][q] = Ln::template load<width<decltype(q)::value>>(a.row(k) + q * L); });
        } else if constexpr (sizeof(E) == 4 && N == 4) {
            __m128 r0 = _mm_loadu_ps(a.row(0)), r1 = _mm_loadu_ps(a.row(1)), r2 = _mm_loadu_ps(a.row(2)), r3 = _mm_loadu_ps(a.row(3));
            _MM_TRANSPOSE4_PS(r0, r1, r2, r3);
            c[0][0] = r0, c[1][0] = r1, c[2][0] = r2, c[3][0] = r3;
        } else {
#pragma GCC unroll 8
            for (int k = 0; k < N; ++k)
                forGroups<G>([&](auto q) { c[k][q] = Ln::template gather<width<decltype(q)::value>>([&](int l) { return a(q * L + l, k); }); });
        }
    }
};

// x(k) in every lane, for k = 0 .. N-1: whole runs of lanes loaded at once
// and spread, the rest one by one.
template <class E, int N, class Acc>
[[gnu::always_inline]] inline void broadcasts(const Acc& x, typename Lanes<E>::V (&xb)[N])
{
    using Ln = Lanes<E>;
    constexpr int L = Ln::n, full = N / L;
    const E* p = &x(0);
    forGroups<full>([&](auto q) {
        const auto v = Ln::template load<L>(p + q * L);
        forGroups<L>([&](auto l) { xb[q * L + l] = Ln::template splat<decltype(l)::value>(v); });
    });
#pragma GCC unroll 8
    for (int k = full * L; k < N; ++k) xb[k] = Ln::bcast(p[k]);
}

// One item: for each group of rows, the N products of column times x(k),
// added by the tree, plus the addend for Gaxpy; stored by a store as wide as
// the group, so that nothing beyond element N-1 is written.
template <Tree T, class E, int N, class Xv, class Yv, class Bv>
inline void columnsTimes(const Columns<E, N>& c, const Xv& x, const Yv& y, const Bv& b)
{
    using Ln = Lanes<E>;
    using V = typename Ln::V;
    constexpr int L = Ln::n;
    V xb[N];
    broadcasts<E, N>(x, xb);
    forGroups<Columns<E, N>::G>([&](auto q) {
        constexpr int w = Columns<E, N>::template width<decltype(q)::value>;
        V p[N];
#pragma GCC unroll 8
        for (int k = 0; k < N; ++k) p[k] = Ln::mul(c.c[k][q], xb[k]);
        V r = treeSum<T>(p, [](V u, V v) { return Ln::add(u, v); });
        if constexpr (!std::is_same_v<Bv, NoAdd>) r = Ln::add(r, Ln::template load<w>(&b(q * L)));
        Ln::template store<w>(&y(q * L), r);
    });
}

// The loop over items: a shared matrix is arranged in columns once, before
// the loop; an array of matrices item by item.
template <Path path, int N, class A, class Xo, class B, class D>
void unrolledPacked(const A& opdA, const Xo& opdX, const B& opdB, const D& opdD, const Dims& s, int count)
{
    using E = typename D::Elem;
    constexpr Tree T = treesOf(path).of(N);
    // Local copies: the vector stores may alias anything, and the compiler
    // would otherwise reload the operand fields after each of them.
    const A a = opdA;
    const Xo x = opdX;
    const B b = opdB;
    const D d = opdD;
    if constexpr (!A::array) {
        Columns<E, N> c;
        c.template load<A::trans>(matItem<true>(a, 0, s.cols));
        for (int item = 0; item < count; ++item)
            columnsTimes<T>(c, vecItem<true>(x, item), vecItem<true>(d, item), addendItem<true>(b, item));
    } else {
        for (int item = 0; item < count; ++item) {
            Columns<E, N> c;
            c.template load<A::trans>(matItem<true>(a, item, s.cols));
            columnsTimes<T>(c, vecItem<true>(x, item), vecItem<true>(d, item), addendItem<true>(b, item));
        }
    }
}

// ---- kernel ---------------------------------------------------------------------

template <Op op, class A, class Xo, class B>
constexpr ShapeName shapeOf()
{
    // Gaxpy's mvav names its shared addend; mv and mva do not.
    if constexpr (op == Op::Gaxpy && Xo::array && !B::array)
        return kShape<A::kind, Xo::kind, B::kind>;
    else
        return kShape<A::kind, Xo::kind>;
}

template <Var V, Op op, class A, class Xo, class B, class D>
orlStatus kernel(const A& a, const Xo& x, const B& b, const D& d, const Dims& s, int count)
{
    using E = typename D::Elem;
    constexpr KernelRow row = rowOf(op, tyOf<E>, V, shapeOf<op, A, Xo, B>().view());
    if constexpr (row.perItem) {
        for (int item = 0; item < count; ++item)
            kernel<Var::S2, op>(itemAsSingle(a, item), itemAsSingle(x, item), itemAsSingle(b, item), itemAsSingle(d, item), s, 1);
        return orlStatusOk;
    } else {
        return bySize<unrolledSizes(row)>(
            s.M == s.K ? s.M : 0,
            [&](auto n) {
                constexpr int N = decltype(n)::value;
                constexpr Path path = row.at[N - 3];
                if constexpr (packed(path))
                    unrolledPacked<path, N>(a, x, b, d, s, count);
                else
                    unrolledScalar<path == Path::X ? Num::Extended : Num::Packed, N, unitStep(V)>(a, x, b, d, s, count);
                return orlStatusOk;
            },
            [&] { return general<row.general, unitStep(V)>(a, x, b, d, s, count), orlStatusOk; });
    }
}

// The kernel that the stride2 test of all operands selects.
template <Op op, class A, class Xo, class B, class D>
orlStatus select(const A& a, const Xo& x, const B& b, const D& d, const Dims& s, int count)
{
    if (allUnit(a, x, b, d)) return kernel<varOf(D::lay, true), op>(a, x, b, d, s, count);
    return kernel<varOf(D::lay, false), op>(a, x, b, d, s, count);
}

// ---- entries ----------------------------------------------------------------------

// Checks N C Z R T O; R is K == src2Length (and, for Gaxpy, M == src3Length).
template <class A, class Xo, class D>
orlStatus MulEntry(const A& a, int w, int h, const Xo& x, int l2, const D& d, int count = 1)
{
    using E = typename D::Elem;
    const Dims s = dimsOf<A>(w, h);
    Checks c = operandChecks(a, x, d);
    c.C = count >= 1;
    c.Z = sizesOk({w, h, l2});
    c.R = s.K == l2;
    if (const orlStatus st = firstFailure(generalOrder(D::array, D::lay, true), c)) return st;

    if constexpr (!D::array) {
        return select<Op::Mul>(a, x, NoAdd{}, d, s, 1);
    } else {
        constexpr CostFn cost = costOf(Op::Mul, shapeOf<Op::Mul, A, Xo, NoAdd>().view());
        return route(cost(w, h, l2, 0, count).value(), kMulLimits.of<E>(), D::lay, count,
                     [&](int n, const auto& a1, const auto& x1, const auto& d1) { return select<Op::Mul>(a1, x1, NoAdd{}, d1, s, n); },
                     a, x, d);
    }
}

template <class A, class Xo, class B, class D>
orlStatus GaxpyEntry(const A& a, int w, int h, const Xo& x, int l2, const B& b, int l3, const D& d, int count = 1)
{
    using E = typename D::Elem;
    const Dims s = dimsOf<A>(w, h);
    Checks c = operandChecks(a, x, b, d);
    c.C = count >= 1;
    c.Z = sizesOk({w, h, l2, l3});
    c.R = w == l2 && h == l3;
    if (const orlStatus st = firstFailure(generalOrder(D::array, D::lay, true), c)) return st;

    if constexpr (!D::array) {
        return select<Op::Gaxpy>(a, x, b, d, s, 1);
    } else {
        constexpr CostFn cost = costOf(Op::Gaxpy, shapeOf<Op::Gaxpy, A, Xo, B>().view());
        return route(cost(w, h, l2, l3, count).value(), kGaxpyLimits.of<E>(), D::lay, count,
                     [&](int n, const auto&... o) { return select<Op::Gaxpy>(o..., s, n); }, a, x, b, d);
    }
}

}  // namespace orl::mulvec

#include "mulvec.inc"
