// The homogeneous affine transform: both kernels bit for bit (their orders of
// sums and their reciprocals), the test of w in both senses, the checks, the
// route and the threads.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <random>
#include <vector>

#include "operands.h"
#include "reference.h"

namespace {

using Points = t::Vec<float, true, t::L::Std>;
using Result = t::Vec<float, true, t::L::Std, true>;

// The transform of one point as each kernel computes it: unit stride2 sums
// (x*m0 + y*m1) + (z*m2 + m3) and multiplies by 1/w formed in the extended
// format; any stride2 sums ((m0*x + m3) + m1*y) + m2*z and uses 1/w in single.
bool expectPoint(const float m[16], const float p[3], bool unit, float out[3])
{
    float row[4];
    for (int r = 0; r < 4; ++r) {
        const float* a = m + 4 * r;
        row[r] = unit ? (p[0] * a[0] + p[1] * a[1]) + (p[2] * a[2] + a[3]) : ((a[0] * p[0] + a[3]) + a[1] * p[1]) + a[2] * p[2];
    }
    const bool bad = unit ? !(std::fabs(row[3]) > FLT_MIN) : std::fabs(row[3]) <= FLT_MIN;
    const float r = unit ? float(1.0L / ref::Ext(row[3])) : 1.0f / row[3];
    for (int i = 0; i < 3; ++i) out[i] = bad ? FLT_MAX : row[i] * r;
    return bad;
}

// The matrix with stride2 of `ms` elements, the points and results in `st`.
orlStatus run(const float* m, int ms, Points& p, Result& d)
{
    return t::call(orlmAffineTransform3DH_mva_32f, std::tuple_cat(std::make_tuple(m, 16 * ms, 4 * ms), p.args(), d.args()), p.count);
}

// A random matrix with w near zero for some points, the same with stride2 of
// two elements, and one whose w is the point's z; the first points' z a NaN
// (alone in a call of one point: the strided kernel reports nothing), the
// smallest normal (no w), the next float (divided by), a denormal (no w).
TEST(AffineTransform, BothKernelsBitForBit)
{
    std::mt19937 g(8);
    std::uniform_real_distribution<float> u(-4, 4);
    float m[16], m2[32];
    for (int i = 0; i < 16; ++i) m[i] = u(g), m2[2 * i] = m[i];
    m[12] = m2[24] = 0.01f;
    const float proj[16] = {1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0, 0, 1, 0};
    const float special[] = {NAN, FLT_MIN, std::nextafter(FLT_MIN, 1.0f), 0x1p-140f};
    for (t::Strides st : {t::Strides::Unit, t::Strides::Wide})
        for (int count : {1, 2, 7, 50})
            for (int c = 0; c < 3; ++c) {
                Points p(3, count, st, 1);
                Result d(3, count, st, 2);
                for (int k = 0; k < count; ++k)
                    for (int j = 0; j < 3; ++j) p(k, j) = j == 2 && k < 4 ? special[k] : u(g);
                const orlStatus status = run(c == 0 ? m : c == 1 ? m2 : proj, c == 1 ? 2 : 1, p, d);
                const bool unit = st == t::Strides::Unit && c != 1;
                bool any = false;
                for (int k = 0; k < count; ++k) {
                    float want[3], pt[3] = {p(k, 0), p(k, 1), p(k, 2)};
                    any |= expectPoint(c == 2 ? proj : m, pt, unit, want);
                    for (int j = 0; j < 3; ++j)
                        ASSERT_TRUE(ref::sameBits(d(k, j), want[j])) << (unit ? "unit" : "S2") << " matrix " << c << " item " << k << " component " << j;
                }
                EXPECT_EQ(status, any ? orlStatusDivByZero : orlStatusOk) << "matrix " << c << " count " << count;
            }
}

TEST(AffineTransform, ChecksRouteAndThreads)
{
    t::checkRows({{"mva_32f", "NCT", [](auto& s) { return orlmAffineTransform3DH_mva_32f(s.f, 16, s.t(4), s.n(s.f), 12, 4, s.fo, 12, 4, s.c()); }}},
                 ref::expectedStatus);
    // Cost 6*count + 16 above 2000: 330 points are serial, 331 not.
    const float id[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    std::vector<float> s(3 * 4000, 1.0f), d(3 * 4000);
    for (int n : {330, 331})
        EXPECT_EQ(t::parallel([&] { return orlmAffineTransform3DH_mva_32f(id, 16, 4, s.data(), 12, 8, d.data(), 12, 4, n); }), n == 331);
    // Identical bits for 1 to 4 threads, and the status of a bad point in the last slice reaches the caller.
    std::mt19937 g(1);
    for (float& v : s) v = std::uniform_real_distribution<float>(-2, 2)(g);
    s[3 * 3999 + 2] = 0;
    const float proj[16] = {1, 2, 0, 1, 0, 1, 3, 0, 2, 0, 1, 1, 0, 0, 1, 0};
    std::vector<float> first;
    for (int T = 1; T <= 4; ++T) {
        t::Threads th(T);
        ASSERT_EQ(orlmAffineTransform3DH_mva_32f(proj, 16, 4, s.data(), 12, 4, d.data(), 12, 4, 4000), orlStatusDivByZero);
        if (T == 1) first = d;
        EXPECT_EQ(d, first) << T << " threads";
    }
}

}  // namespace
