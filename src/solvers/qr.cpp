// QR decomposition of h-by-w matrices, h >= w, by Householder reflectors, in
// the element type throughout.
//
// dst holds R on and above the diagonal and, below the diagonal of column k,
// the tail of reflector k's vector v (v[k] = 1 is not stored); no beta or
// norm is kept. src is copied into dst first and dst is worked on in place,
// so dst may be src. The caller's buffer (h elements) holds v while a
// reflector is applied; on the parallel route each thread uses scratch of its
// own instead. One routine serves every size; kernels differ only by layout.
#include <cmath>
#include <cstdint>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/operand.h"
#include "frame/validate.h"
#include "solvers/householder.h"

namespace orl::qr {

namespace decomp {

// Smallest squared column norm that is divided by: 2^-23 and 2^-52. It is
// compared with the square of the norm, with no regard to scale.
template <class E>
constexpr E kEps = sizeof(E) == 4 ? E(0x1p-23) : E(0x1p-52);

// One matrix; leaves at the first column whose squared norm is below eps,
// with the columns before it transformed and that column as it stood.
template <class E, class S, class D>
orlStatus factor(const S& src, E* buf, const D& a, int w, int h)
{
    for (int i = 0; i < h; ++i)
        for (int j = 0; j < w; ++j) a(i, j) = src(i, j);

    const auto v = [buf](int i) { return buf[i]; };
    for (int k = 0; k < reflectors(w, h); ++k) {
        E norm2 = E(0);
        for (int i = k; i < h; ++i) norm2 = norm2 + a(i, k) * a(i, k);
        if (kEps<E> > std::fabs(norm2)) return orlStatusDivByZero;  // a NaN passes
        E s = std::sqrt(norm2);
        buf[k] = E(1);
        if (!(a(k, k) > E(0))) s = -s;  // the sign that avoids cancellation in a(k, k) + s
        const E r = E(1) / (a(k, k) + s);
        for (int i = k + 1; i < h; ++i) buf[i] = a(i, k) * r;
        const E beta = betaOf<E>(v, k, h);
        for (int j = k; j < w; ++j) reflect([&a, j](int i) -> E& { return a(i, j); }, v, k, h, beta);
        for (int i = k + 1; i < h; ++i) a(i, k) = buf[i];
    }
    return orlStatusOk;
}

// The loop over items, with one buffer for all of them in turn.
template <Var V, class S, class D>
orlStatus kernel(int count, typename D::Elem* buf, const S& s, const D& d, int w, int h)
{
    constexpr bool unit = unitStep(V);
    for (int k = 0; k < count; ++k)
        if (const orlStatus st = factor(matItem<unit>(s, k, w), buf, matItem<unit>(d, k, w), w, h)) return st;
    return orlStatusOk;
}

// The kernel that the stride2 test selects (again, in each driver slice).
template <class S, class D>
orlStatus select(int count, typename D::Elem* buf, const S& s, const D& d, int w, int h)
{
    if (allUnit(s, d)) return kernel<varOf(D::lay, true)>(count, buf, s, d, w, h);
    return kernel<varOf(D::lay, false)>(count, buf, s, d, w, h);
}

}  // namespace decomp

// ---- entry -----------------------------------------------------------------

template <class S, class D, class E>
orlStatus decompEntry(const S& src, E* buffer, const D& dst, int width, int height, int count = 1)
{
    if (const orlStatus st = checkArgs<D::array, D::lay>(buffer, width, height, count, src, dst)) return st;
    if constexpr (!D::array) {
        return decomp::select(1, buffer, src, dst, width, height);
    } else {
        const std::int32_t cost = (Wrap(width) * height * 2 * count).value();
        return routeWithBuffer(cost, D::lay, count, buffer, height,
                               [&](int items, E* buf, const auto&... o) { return decomp::select(items, buf, o..., width, height); },
                               src, dst);
    }
}

}  // namespace orl::qr

#include "qr.inc"
