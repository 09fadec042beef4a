// Multiplication by a constant: dst = src * value, element by element, for a
// matrix (mc), its transpose (tc), a vector (vc), arrays of them (mac, tac,
// vac), one vector by an array of constants (vca) and an array of vectors by
// an array of constants (vaca).
//
// Every element of the result is one product, rounded once to the element
// type: there is no sum, so every path, vector or scalar, gives the same bits
// and the kernels differ in speed only. Contiguous rows are scaled a vector
// of lanes at a time, everything else element by element.
//
// In tc and tac `width` and `height` describe the result: it has `height`
// rows and `width` columns, and the stored source has `width` rows and
// `height` columns; dst(r, c) = src(c, r) * value.
#include <string_view>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/lanes.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::scale {

// ---- cost and limits ----------------------------------------------------------

// Sizes of a call: rows and columns of the result (one row for a vector) and
// the stored width of the source (the row length of its `_P` table).
struct Dims {
    int rows, cols, srcCols;
};

using CostFn = Wrap (*)(Wrap rows, Wrap cols, Wrap n);
struct ShapeRow {
    std::string_view shape;
    CostFn cost;
    LimitRow limits;
};

// The driver is taken when the cost is above the limit (>).
//                                                                                Unit   Any    L Unit L Any  P
constexpr ShapeRow kShapes[] = {
    {"mac",  [](Wrap r, Wrap c, Wrap n) { return 2 * c * r * n; },   {{35000, 35000, 35000, 15000, 17000, Test::GT},    // 32f
                                                                      {35000, 35000, 35000, 35000, 17000, Test::GT}}},  // 64f
    {"tac",  [](Wrap r, Wrap c, Wrap n) { return 2 * c * r * n; },   {{35000, 35000, 35000, 15000, 17000, Test::GT},
                                                                      {35000, 35000, 35000, 35000, 17000, Test::GT}}},
    {"vac",  [](Wrap, Wrap l, Wrap n) { return 2 * l * n; },         {{6,     6,     6,     6,     6,     Test::GT},
                                                                      {36864, 18432, 18432, 18432, 9216,  Test::GT}}},
    {"vca",  [](Wrap, Wrap l, Wrap n) { return l * n + l + n; },     both(36864, 36864, 18432, 18432, 9216, Test::GT)},
    {"vaca", [](Wrap, Wrap l, Wrap n) { return 2 * l * n + n; },     both(36864, 36864, 18432, 18432, 9216, Test::GT)},
};

constexpr const ShapeRow& shapeRow(std::string_view shape)
{
    for (const ShapeRow& r : kShapes)
        if (r.shape == shape) return r;
    return kShapes[0];
}

// ---- kernel ---------------------------------------------------------------------

// A contiguous run of n elements: lanes, then the elements left one by one.
// Each vector is read before it is written, so dst may equal src.
template <class E>
inline void scaleRun(const E* s, E* d, int n, E v)
{
    using Ln = Lanes<E>;
    const auto vv = Ln::bcast(v);
    int j = 0;
    for (; j + Ln::n <= n; j += Ln::n) Ln::template store<Ln::n>(d + j, Ln::mul(Ln::template load<Ln::n>(s + j), vv));
    for (; j < n; ++j) d[j] = s[j] * v;
}

template <Var V, class S, class C, class D>
orlStatus kernel(const S& src, const C& c, const D& dst, const Dims& z, int count)
{
    using E = typename D::Elem;
    // Rows whose elements lie side by side in both operands.
    constexpr bool runs = unitStep(V) && !S::trans;
    for (int item = 0; item < count; ++item) {
        const E v = constItem(c, item);
        if constexpr (isVector(S::kind)) {
            const auto x = vecItem<unitStep(V)>(src, item);
            const auto y = vecItem<unitStep(V)>(dst, item);
            if constexpr (runs)
                scaleRun(&x(0), &y(0), z.cols, v);
            else
                for (int j = 0; j < z.cols; ++j) y(j) = x(j) * v;
        } else {
            const auto x = matItem<unitStep(V)>(src, item, z.srcCols);
            const auto y = matItem<unitStep(V)>(dst, item, z.cols);
            for (int i = 0; i < z.rows; ++i) {
                if constexpr (runs)
                    scaleRun(x.row(i), y.row(i), z.cols, v);
                else
                    for (int j = 0; j < z.cols; ++j) y(i, j) = x(i, j) * v;
            }
        }
    }
    return orlStatusOk;
}

// The kernel that the stride2 test of source and destination selects.
template <class S, class C, class D>
orlStatus select(const S& s, const C& c, const D& d, const Dims& z, int count)
{
    if (allUnit(s, d)) return kernel<varOf(D::lay, true)>(s, c, d, z, count);
    return kernel<varOf(D::lay, false)>(s, c, d, z, count);
}

// ---- entry ----------------------------------------------------------------------

// Sizes: `length` for a vector, `width`, `height` for a matrix, then `count`
// for an array member. Checks N C Z T O in the general order; the constant
// itself is not tested.
template <class S, class C, class D, class... Ints>
orlStatus entry(const S& s, const C& c, const D& d, Ints... ints)
{
    using E = typename D::Elem;
    const int arg[] = {ints...};
    constexpr bool vec = isVector(S::kind);
    const int cols = arg[0], rows = vec ? 1 : arg[1];
    const int count = D::array ? arg[vec ? 1 : 2] : 1;
    const Dims z{rows, cols, S::trans ? rows : cols};

    Checks ck = operandChecks(s, c, d);
    ck.C = count >= 1;
    ck.Z = sizesOk({rows, cols});
    if (const orlStatus st = firstFailure(generalOrder(D::array, D::lay), ck)) return st;

    if constexpr (!D::array) {
        return select(s, c, d, z, 1);
    } else {
        constexpr const ShapeRow& row = shapeRow(kShape<S::kind, C::kind>.view());
        return route(row.cost(rows, cols, count).value(), row.limits.of<E>(), D::lay, count,
                     [&](int n, const auto&... o) { return select(o..., z, n); }, s, c, d);
    }
}

}  // namespace orl::scale

#include "scale.inc"
