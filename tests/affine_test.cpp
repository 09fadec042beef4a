// The homogeneous affine transform: both kernels bit for bit (their orders of
// sums and their reciprocals), the test of w in both senses, the checks, the
// route and the threads.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "orlm.h"
#include "reference.h"

namespace {

// The transform of one point as each kernel computes it: unit stride2 sums
// (x*m0 + y*m1) + (z*m2 + m3) and multiplies by 1/w formed in the extended
// format; any stride2 sums ((m0*x + m3) + m1*y) + m2*z and uses 1/w in single.
void expectPoint(const float m[16], const float p[3], bool unit, float out[3], bool& bad)
{
    float row[4];
    for (int r = 0; r < 4; ++r) {
        const float* a = m + 4 * r;
        row[r] = unit ? (p[0] * a[0] + p[1] * a[1]) + (p[2] * a[2] + a[3]) : ((a[0] * p[0] + a[3]) + a[1] * p[1]) + a[2] * p[2];
    }
    bad = unit ? !(std::fabs(row[3]) > FLT_MIN) : std::fabs(row[3]) <= FLT_MIN;
    const float r = unit ? float(1.0L / ref::Ext(row[3])) : 1.0f / row[3];
    for (int i = 0; i < 3; ++i) out[i] = bad ? FLT_MAX : row[i] * r;
}

struct Points {
    int count, step;  // floats between components (1 or 2)
    std::vector<float> src, dst;
    Points(int n, int s) : count(n), step(s), src(size_t(n) * 3 * s + 4), dst(size_t(n) * 3 * s + 4, -1.0f) {}
    float* at(std::vector<float>& v, int k, int j) { return &v[size_t(k) * 3 * step + j * step]; }
    orlStatus run(const float* m, int mStep)
    {
        const int s2 = 4 * step;
        return orlmAffineTransform3DH_mva_32f(m, 16 * mStep, 4 * mStep, src.data(), 3 * s2, s2, dst.data(), 3 * s2, s2, count);
    }
};

TEST(AffineTransform, BothKernelsBitForBit)
{
    std::mt19937 g(8);
    std::uniform_real_distribution<float> u(-4, 4);
    float m[16], m2[32];
    for (int i = 0; i < 16; ++i) m[i] = u(g), m2[2 * i] = m[i];
    m[12] = m2[24] = 0.01f;  // w near zero for some points, both signs
    for (int step : {1, 2})
        for (int count : {1, 2, 7, 50}) {
            Points p(count, step);
            for (int k = 0; k < count; ++k)
                for (int j = 0; j < 3; ++j) *p.at(p.src, k, j) = u(g);
            // Matrix stride2 1 or 2 elements: the unit kernel needs all three.
            for (int ms : {1, 2}) {
                const orlStatus st = p.run(ms == 1 ? m : m2, ms);
                const bool unit = step == 1 && ms == 1;
                bool any = false;
                for (int k = 0; k < count; ++k) {
                    float want[3], pt[3] = {*p.at(p.src, k, 0), *p.at(p.src, k, 1), *p.at(p.src, k, 2)};
                    bool bad;
                    expectPoint(m, pt, unit, want, bad);
                    any |= bad;
                    for (int j = 0; j < 3; ++j)
                        ASSERT_TRUE(ref::sameBits(*p.at(p.dst, k, j), want[j])) << (unit ? "unit" : "S2") << " item " << k << " component " << j;
                }
                EXPECT_EQ(st, any ? orlStatusDivByZero : orlStatusOk);
            }
        }
}

TEST(AffineTransform, SmallNaNAndOtherPointsDone)
{
    // Last row (0, 0, 1, 0): w is the point's z.
    const float m[16] = {1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0, 0, 1, 0};
    const float w[] = {FLT_MIN, std::nextafter(FLT_MIN, 1.0f), 0x1p-140f, NAN, 2.0f};
    for (int step : {1, 2}) {
        Points p(5, step);
        for (int k = 0; k < 5; ++k) *p.at(p.src, k, 0) = 1, *p.at(p.src, k, 1) = 1, *p.at(p.src, k, 2) = w[k];
        EXPECT_EQ(p.run(m, 1), orlStatusDivByZero);
        EXPECT_EQ(*p.at(p.dst, 0, 0), FLT_MAX);               // exactly the smallest normal: no w
        EXPECT_LT(*p.at(p.dst, 1, 0), FLT_MAX);               // the next float is divided by
        EXPECT_EQ(*p.at(p.dst, 2, 0), FLT_MAX);               // a denormal w is no w
        if (step == 1) EXPECT_EQ(*p.at(p.dst, 3, 1), FLT_MAX);  // NaN caught by the unit kernel ...
        else EXPECT_TRUE(std::isnan(*p.at(p.dst, 3, 1)));     // ... and passed through by the other
        EXPECT_EQ(*p.at(p.dst, 4, 2), (w[4] + 3) * 0.5f);    // later points are still done
    }
    // A NaN w alone: the strided kernel reports nothing.
    Points q(1, 2);
    *q.at(q.src, 0, 2) = NAN;
    EXPECT_EQ(q.run(m, 1), orlStatusOk);
}

TEST(AffineTransform, ChecksRouteAndThreads)
{
    const float m[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    std::vector<float> s(3 * 4000, 1.0f), d(3 * 4000, -1.0f);
    EXPECT_EQ(orlmAffineTransform3DH_mva_32f(m, 16, 4, nullptr, 12, 4, d.data(), 12, 4, 0), orlStatusNullPointer);
    EXPECT_EQ(orlmAffineTransform3DH_mva_32f(m, 16, 4, s.data(), 12, 4, d.data(), 12, 2, 0), orlStatusCount);
    EXPECT_EQ(orlmAffineTransform3DH_mva_32f(m, 16, 0, s.data(), 12, 4, d.data(), 12, 4, 1), orlStatusStride);
    EXPECT_EQ(orlmAffineTransform3DH_mva_32f(m, 16, 4, s.data(), -12, 4, d.data(), 12, 4, 1), orlStatusStride);
    for (float v : d) ASSERT_EQ(v, -1.0f);

    auto parallel = [&](int count) {
        t::Threads two(2);
        probe::reset();
        EXPECT_EQ(orlmAffineTransform3DH_mva_32f(m, 16, 4, s.data(), 12, 8, d.data(), 12, 4, count), orlStatusOk);
        return probe::regions().count > 0;
    };
    EXPECT_FALSE(parallel(330));  // cost 6*330 + 16 = 1996
    EXPECT_TRUE(parallel(331));   // 2002

    // Identical bits for 1 to 4 threads, and the status of a bad point in
    // the last slice reaches the caller.
    std::mt19937 g(1);
    std::uniform_real_distribution<float> u(-2, 2);
    for (float& v : s) v = u(g);
    s[3 * 3999 + 2] = 0;
    const float proj[16] = {1, 2, 0, 1, 0, 1, 3, 0, 2, 0, 1, 1, 0, 0, 1, 0};
    std::vector<float> first;
    for (int T = 1; T <= 4; ++T) {
        t::Threads th(T);
        std::vector<float> out(3 * 4000);
        ASSERT_EQ(orlmAffineTransform3DH_mva_32f(proj, 16, 4, s.data(), 12, 4, out.data(), 12, 4, 4000), orlStatusDivByZero);
        if (T == 1) first = out;
        else ASSERT_EQ(std::memcmp(out.data(), first.data(), out.size() * 4), 0) << T << " threads";
    }
}

}  // namespace
