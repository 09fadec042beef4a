// Entries and kernels of the general eigen families: EigenValues and the
// three vector families. One kernel per layout honours any stride2; the
// stages are the steps of eigsteps.h, chosen per family by the table below.
#pragma once

#include "eigensolvers/eigenframe.h"
#include "eigensolvers/eigsteps.h"

namespace orl::eig {

// What each general family computes.
struct GeneralRow {
    Fam fam;
    const Method& method;
    bool right, left;  // vectors computed, in this order when both
};

// clang-format off
//                                            method    right  left
constexpr GeneralRow kGeneral[] = {
    {Fam::EigenValues,             kValues,  false, false},
    {Fam::EigenValuesVectorsRight, kVectors, true,  false},
    {Fam::EigenValuesVectorsLeft,  kVectors, false, true},
    {Fam::EigenValuesVectors,      kVectors, true,  true},
};
// clang-format on

constexpr const GeneralRow& generalRow(Fam f)
{
    for (const GeneralRow& r : kGeneral)
        if (r.fam == f) return r;
    return kGeneral[0];
}

// A real 2-by-2 block below the perturbation threshold ends the kernel with
// orlStatusOk and nothing more written; inside the kernel it travels as this.
constexpr orlStatus kStoppedSilently = 1;

// All stages for one matrix. Buffer: H at 0; for the values family tau and a
// work vector follow, for the vector families Z (and the left vectors of the
// combined family) and then the column sums, the real and imaginary
// solution and tau.
template <Fam F, class E, class S, class... D>
orlStatus solveMatrix(const S& src, E* re, E* im, int n, E* buf, const D&... dst)
{
    constexpr GeneralRow R = generalRow(F);
    const ColMajor<E> H{buf, n};
    copyIn<E>(src, buf, n);
    if constexpr (!R.right && !R.left) {
        E* tau = buf + n * n;
        reduceToHessenberg(H, tau, tau + n);
        zeroBelowSubdiagonal(H);
        return iterateQR<kValues>(H, H, re, im);
    } else {
        constexpr int matrices = R.right && R.left ? 3 : 2;
        const ColMajor<E> Z{buf + n * n, n};
        E* work = buf + matrices * n * n;
        const VecWork<E> w{work, work + n, work + 2 * n};
        E* tau = work + 3 * n;
        reduceToHessenberg(H, tau, w.xr);
        formOrthogonal(H, tau, Z, w.xr);
        zeroBelowSubdiagonal(H);
        if (const orlStatus st = iterateQR<kVectors>(H, Z, re, im)) return st;
        columnSums(H, w.colSum);
        const ColMajor<E> V = matrices == 3 ? ColMajor<E>{buf + 2 * n * n, n} : Z;
        if (matrices == 3)
            for (int x = 0; x < n * n; ++x) V.p[x] = Z.p[x];
        const auto stop = [](Solve s) { return s == Solve::SmallBlock ? orlStatusSmallBlock : kStoppedSilently; };
        if constexpr (R.right) {
            if (const Solve s = rightVectors(H, Z, w); s != Solve::Done) return stop(s);
            normalise(Z, im);
        }
        if constexpr (R.left) {
            if (const Solve s = leftVectors(H, V, w); s != Solve::Done) return stop(s);
            normalise(V, im);
        }
        const ColMajor<E> out[2] = {Z, V};
        int o = 0;
        (copyOut(out[o++], dst, n), ...);
        return orlStatusOk;
    }
}

// The kernel of every layout: matrices one after another, stopping at the
// first that fails; the buffer is reused for each.
template <Fam F, class E, class S, class... D>
orlStatus kernel(int count, E* buf, PerItem<E> re, PerItem<E> im, int n, const S& src, const D&... dst)
{
    for (int k = 0; k < count; ++k) {
        const orlStatus st = solveMatrix<F>(matItem<false>(src, k, n), re.item(k), im.item(k), n, buf, matItem<false>(dst, k, n)...);
        if (st != orlStatusOk) return st == kStoppedSilently ? orlStatusOk : st;
    }
    return orlStatusOk;
}

template <Fam F, class E, class S, class... D>
orlStatus generalEntry(const S& src, E* re, E* im, int n, int count, E* buffer, const D&... dst)
{
    if (const orlStatus st = check<F>(buffer && re && im, n, count, src, dst...)) return st;
    return route<F, E>(
        n, count, S::lay, buffer,
        [n](int items, E* buf, PerItem<E> r, PerItem<E> i, const S& s, const D&... d) { return kernel<F>(items, buf, r, i, n, s, d...); },
        PerItem<E>{re, n}, PerItem<E>{im, n}, src, dst...);
}

// The argument lists of the exported members, by family.
template <class E, Kind K, Lay L>
using Src = Opd<const E, K, L>;
template <class E, Kind K, Lay L>
using Dst = Opd<E, K, L>;

template <class E, Kind K, Lay L>
orlStatus valuesEntry(const Src<E, K, L>& src, E* re, E* im, int n, E* buffer)
{
    return generalEntry<Fam::EigenValues>(src, re, im, n, 1, buffer);
}

template <class E, Kind K, Lay L>
orlStatus valuesEntry(const Src<E, K, L>& src, E* re, E* im, int n, int count, E* buffer)
{
    return generalEntry<Fam::EigenValues>(src, re, im, n, count, buffer);
}

template <Fam F, class E, Kind K, Lay L>
orlStatus vectorsEntry(const Src<E, K, L>& src, const Dst<E, K, L>& dst, E* re, E* im, int n, E* buffer)
{
    return generalEntry<F>(src, re, im, n, 1, buffer, dst);
}

template <Fam F, class E, Kind K, Lay L>
orlStatus vectorsEntry(const Src<E, K, L>& src, const Dst<E, K, L>& dst, E* re, E* im, int n, int count, E* buffer)
{
    return generalEntry<F>(src, re, im, n, count, buffer, dst);
}

template <Fam F, class E, Kind K, Lay L>
orlStatus vectorsEntry(const Src<E, K, L>& src, const Dst<E, K, L>& right, const Dst<E, K, L>& left, E* re, E* im, int n,
                       E* buffer)
{
    return generalEntry<F>(src, re, im, n, 1, buffer, right, left);
}

template <Fam F, class E, Kind K, Lay L>
orlStatus vectorsEntry(const Src<E, K, L>& src, const Dst<E, K, L>& right, const Dst<E, K, L>& left, E* re, E* im, int n,
                       int count, E* buffer)
{
    return generalEntry<F>(src, re, im, n, count, buffer, right, left);
}

}  // namespace orl::eig
