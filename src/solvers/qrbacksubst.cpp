// QR back-substitution: solves A x = b, in the least-squares sense when A is
// taller than wide, from what the QR decomposition left: Q^T b by the stored
// reflectors (each beta formed again from its tail), then R x = (Q^T b)[0..w-1]
// backward with a true division by each diagonal element. The residual part
// (Q^T b)[w..h-1] is dropped. All arithmetic is in the element type.
//
//   form            sizes               Q^T b kept in     betas formed
//   straight-line   width = height,     locals            once a call in mva,
//                   3 to 6                                once a matrix in mava
//   general         all others          the buffer (or    for every system
//                                       thread scratch)
//
// Both forms run the same steps in the same order. The straight-line forms
// store dst only after all of rhs is read and do not touch the buffer.
#include <cstdint>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/operand.h"
#include "frame/validate.h"
#include "solvers/householder.h"

namespace orl::qr {

namespace subst {

constexpr Sizes kUnrolledSizes{3, 4, 5, 6};

// R x = y backward, x(w-1) first; each unknown is (y(i) - s) / R(i, i) with
// s summed from zero in ascending column order.
template <class E, class A, class Y, class X>
inline void solveR(const A& a, const Y& y, const X& x, int w)
{
    x(w - 1) = y(w - 1) / a(w - 1, w - 1);
    for (int i = w - 2; i >= 0; --i) {
        E s = E(0);
        for (int j = i + 1; j < w; ++j) s = s + a(i, j) * x(j);
        x(i) = (y(i) - s) / a(i, i);
    }
}

// ---- straight-line forms -----------------------------------------------------

template <class E, int N>
struct Factor {
    E a[N][N];
    E beta[N - 1];

    template <class A>
    void load(const A& m)
    {
        for (int i = 0; i < N; ++i)
            for (int j = 0; j < N; ++j) a[i][j] = m(i, j);
        for (int k = 0; k < N - 1; ++k) beta[k] = betaOf<E>([this, k](int i) { return a[i][k]; }, k, N);
    }

    template <class B, class X>
    void solve(const B& rhs, const X& dst) const
    {
        E y[N], x[N];
        for (int i = 0; i < N; ++i) y[i] = rhs(i);
        for (int k = 0; k < N - 1; ++k)
            reflect([&y](int i) -> E& { return y[i]; }, [this, k](int i) { return a[i][k]; }, k, N, beta[k]);
        solveR<E>([this](int i, int j) { return a[i][j]; }, [&y](int i) { return y[i]; },
                  [&x](int i) -> E& { return x[i]; }, N);
        for (int i = 0; i < N; ++i) dst(i) = x[i];
    }
};

template <int N, bool unit, class S, class B, class X>
void unrolled(int count, const S& s, const B& b, const X& x)
{
    using E = typename X::Elem;
    Factor<E, N> f;
    if constexpr (!S::array) f.load(matItem<unit>(s, 0, N));
    for (int k = 0; k < count; ++k) {
        if constexpr (S::array) f.load(matItem<unit>(s, k, N));
        f.solve(vecItem<unit>(b, k), vecItem<unit>(x, k));
    }
}

// ---- general form --------------------------------------------------------------

template <bool unit, class S, class B, class X>
void general(int count, typename X::Elem* buf, const S& s, const B& b, const X& x, int w, int h)
{
    using E = typename X::Elem;
    const auto y = [buf](int i) -> E& { return buf[i]; };
    for (int k = 0; k < count; ++k) {
        const auto a = matItem<unit>(s, k, w);
        const auto rhs = vecItem<unit>(b, k);
        for (int i = 0; i < h; ++i) buf[i] = rhs(i);
        for (int r = 0; r < reflectors(w, h); ++r) {
            const auto v = [&a, r](int i) { return a(i, r); };
            reflect(y, v, r, h, betaOf<E>(v, r, h));
        }
        solveR<E>(a, y, vecItem<unit>(x, k), w);
    }
}

// ---- kernel ----------------------------------------------------------------------

template <Var V, class S, class B, class X>
orlStatus kernel(int count, typename X::Elem* buf, const S& s, const B& b, const X& x, int w, int h)
{
    constexpr bool unit = unitStep(V);
    return bySize<kUnrolledSizes>(
        w == h ? w : 0, [&](auto N) { return unrolled<decltype(N)::value, unit>(count, s, b, x), orlStatusOk; },
        [&] { return general<unit>(count, buf, s, b, x, w, h), orlStatusOk; });
}

// The kernel that the stride2 test selects (again, in each driver slice).
template <class S, class B, class X>
orlStatus select(int count, typename X::Elem* buf, const S& s, const B& b, const X& x, int w, int h)
{
    if (allUnit(s, b, x)) return kernel<varOf(X::lay, true)>(count, buf, s, b, x, w, h);
    return kernel<varOf(X::lay, false)>(count, buf, s, b, x, w, h);
}

}  // namespace subst

// ---- entry -----------------------------------------------------------------------

template <class S, class B, class X, class E>
orlStatus backSubstEntry(const S& src, E* buffer, const B& rhs, const X& dst, int width, int height, int count = 1)
{
    if (const orlStatus st = checkArgs<X::array, X::lay>(buffer, width, height, count, src, rhs, dst)) return st;
    if constexpr (!X::array) {
        return subst::select(1, buffer, src, rhs, dst, width, height);
    } else {
        const Wrap w = width, h = height, n = count;
        const std::int32_t cost = (S::array ? (w * h + w + h) * n : w * h + (w + h) * n).value();
        return routeWithBuffer(cost, X::lay, count, buffer, height,
                               [&](int items, E* buf, const auto&... o) { return subst::select(items, buf, o..., width, height); },
                               src, rhs, dst);
    }
}

}  // namespace orl::qr

#include "qrbacksubst.inc"
