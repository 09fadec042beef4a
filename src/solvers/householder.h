// Householder reflectors as the QR decomposition stores them and the QR
// back-substitution applies them again: the steps both families share.
//
// Reflector k of an h-row matrix is H = I + beta v v^T with v[k] = 1 (not
// stored) and v[i], i > k, the tail stored below the diagonal of column k.
// No scale factor is stored: beta = -2 / (1 + v[k+1]^2 + ... + v[h-1]^2) is
// formed again, in the same order, wherever it is needed.
#pragma once

#include <string_view>

#include "frame/dispatch.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::qr {

// Check order of both families: the relation width <= height comes last,
// after every layout check.
constexpr std::string_view orderOf(bool array, Lay lay)
{
    if (lay == Lay::Std) return array ? "NCZTR" : "NZTR";
    return array ? "NCZTOR" : "NZOR";
}

// The same limits in the decomposition and in both back-substitution shapes;
// the driver is taken above them.
//                                  Unit  Any   L Unit L Any  P
constexpr LimitRow kLimits = both(2800, 2800, 1800,  1800,  1800, Test::GT);

// The argument checks of both entries: every operand, the buffer, the
// count, width and height, and last width <= height.
template <bool array, Lay lay, class E, class... Ops>
orlStatus checkArgs(const E* buffer, int width, int height, int count, const Ops&... ops)
{
    Checks c = operandChecks(ops...);
    c.N = c.N && buffer != nullptr;
    c.C = count >= 1;
    c.Z = width >= 1 && height >= 1;
    c.R = width <= height;
    return firstFailure(orderOf(array, lay), c);
}

// The route of both array entries: `kernel(items, buf, args...)` with buf
// the caller's buffer on the serial route, and each thread's own scratch of
// `height` elements on the parallel one.
template <class E, class Kernel, class... Args>
orlStatus routeWithBuffer(std::int32_t cost, Lay lay, int count, E* buffer, int height, Kernel&& kernel,
                          const Args&... args)
{
    return routeScratch(cost, kLimits.of<E>(), lay, count, std::size_t(height) * sizeof(E),
                        [&](int items, void* scratch, const auto&... o) {
                            return kernel(items, scratch ? static_cast<E*>(scratch) : buffer, o...);
                        },
                        args...);
}

// Number of reflectors: the last column of a square matrix has none.
constexpr int reflectors(int w, int h) { return w < h ? w : w - 1; }

// beta of reflector k from its tail v(i), i = k+1 .. h-1, summed ascending.
template <class E, class V>
inline E betaOf(const V& v, int k, int h)
{
    E sum = E(1);
    for (int i = k + 1; i < h; ++i) sum = sum + v(i) * v(i);
    return E(-2) / sum;
}

// x := H x on the elements k .. h-1 of x:
//   t = (x[k] + x[k+1] v[k+1] + ... + x[h-1] v[h-1]) * beta,
//   x[k] = x[k] + t, x[i] = x[i] + v[i] t.
template <class E, class X, class V>
inline void reflect(const X& x, const V& v, int k, int h, E beta)
{
    E t = x(k);
    for (int i = k + 1; i < h; ++i) t = t + x(i) * v(i);
    t = t * beta;
    x(k) = x(k) + t;
    for (int i = k + 1; i < h; ++i) x(i) = x(i) + v(i) * t;
}

}  // namespace orl::qr
