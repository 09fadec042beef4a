// The homogeneous affine transform of 3D points: one 4x4 matrix M applied to
// an array of points (x, y, z, 1), each result divided by its homogeneous
// coordinate w:
//     D[i] = (M[i][0] x + M[i][1] y + M[i][2] z + M[i][3]) * (1/w)
// with one reciprocal multiplied into the three numerators.
//
// One bad point does not stop the call: a point whose |w| is not above the
// smallest normal float gets the largest finite float in its three
// components, the call returns orlStatusDivByZero, and the other points are
// done. The two kernels differ in the order of the sums, in the precision of
// the reciprocal and in the sense of the test (a NaN w is caught by the
// unit-stride kernel only).
#include <cfloat>
#include <cmath>
#include <cstdint>

#include <xmmintrin.h>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::affine {

constexpr float kTiny = FLT_MIN;  // 1.1754944e-38, the smallest normal float
constexpr float kHuge = FLT_MAX;  // 3.4028235e38, stored for a point with no w

// Cost: the elements of the array read and written and the matrix, tested
// before the stride2 test; the driver is taken above 2000.
//                                Unit  Any   L Unit L Any P
constexpr LimitRow kLimits = both(2000, 2000, 2000, 2000, 2000, Test::GT);

// Unit stride2: the matrix's columns gathered once into four 4-lane values
// with the lanes in the row order 3, 2, 0, 1, so that w is lane 0; per point
// t = (x*c0 + y*c1) + (z*c2 + c3) lane by lane in single precision, then
// 1/w formed in the extended format and rounded to single. The test "|w|
// above the smallest normal" fails for a NaN w too.
template <class M, class S, class D>
orlStatus unitKernel(int count, const M& m, const S& src, const D& dst)
{
    const auto a = matItem<false>(m, 0, 4);
    constexpr int lane[4] = {3, 2, 0, 1};
    __m128 c[4];
    for (int j = 0; j < 4; ++j) c[j] = _mm_setr_ps(a(lane[0], j), a(lane[1], j), a(lane[2], j), a(lane[3], j));
    orlStatus st = orlStatusOk;
    for (int k = 0; k < count; ++k) {
        const auto p = vecItem<true>(src, k);
        const auto d = vecItem<true>(dst, k);
        const __m128 t = _mm_add_ps(_mm_add_ps(_mm_mul_ps(_mm_set1_ps(p(0)), c[0]), _mm_mul_ps(_mm_set1_ps(p(1)), c[1])),
                                    _mm_add_ps(_mm_mul_ps(_mm_set1_ps(p(2)), c[2]), c[3]));
        const float w = _mm_cvtss_f32(t);
        if (std::fabs(w) > kTiny) {
            const float r = float(1.0L / static_cast<long double>(w));
            float out[4];
            _mm_storeu_ps(out, _mm_mul_ps(t, _mm_set1_ps(r)));
            d(0) = out[2], d(1) = out[3], d(2) = out[1];
        } else {
            d(0) = kHuge, d(1) = kHuge, d(2) = kHuge;
            st = orlStatusDivByZero;
        }
    }
    return st;
}

// Any stride2: the sixteen elements read once; per point and row the sum
// ((M[r][0] x + M[r][3]) + M[r][1] y) + M[r][2] z in single precision, then
// 1/w in single precision. The test "|w| at most the smallest normal" lets
// a NaN w through: its components come out NaN and the status stays.
template <class M, class S, class D>
orlStatus strideKernel(int count, const M& m, const S& src, const D& dst)
{
    const auto a = matItem<false>(m, 0, 4);
    float e[4][4];
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) e[i][j] = a(i, j);
    orlStatus st = orlStatusOk;
    for (int k = 0; k < count; ++k) {
        const auto p = vecItem<false>(src, k);
        const auto d = vecItem<false>(dst, k);
        const float x = p(0), y = p(1), z = p(2);
        float row[4];
        for (int r = 0; r < 4; ++r) row[r] = ((e[r][0] * x + e[r][3]) + e[r][1] * y) + e[r][2] * z;
        if (std::fabs(row[3]) <= kTiny) {
            d(0) = kHuge, d(1) = kHuge, d(2) = kHuge;
            st = orlStatusDivByZero;
        } else {
            const float r = 1.0f / row[3];
            d(0) = row[0] * r, d(1) = row[1] * r, d(2) = row[2] * r;
        }
    }
    return st;
}

template <class M, class S, class D>
orlStatus select(int count, const M& m, const S& src, const D& dst)
{
    if (allUnit(m, src, dst)) return unitKernel(count, m, src, dst);
    return strideKernel(count, m, src, dst);
}

template <class M, class S, class D>
orlStatus entry(const M& m, const S& src, const D& dst, int count)
{
    Checks c = operandChecks(m, src, dst);
    c.C = count >= 1;
    if (const orlStatus st = firstFailure("NCT", c)) return st;
    const std::int32_t cost = (Wrap(6) * count + 16).value();
    return route(cost, kLimits.of<float>(), Lay::Std, count,
                 [&](int items, const auto&... o) { return select(items, o...); }, m, src, dst);
}

}  // namespace orl::affine

#include "affine.inc"
