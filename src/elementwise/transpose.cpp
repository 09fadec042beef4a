// Transpose: dst(k, j, i) = src(k, i, j), elements copied as bits.
//
// The sizes are those of the source; the result has `width` rows of `height`
// elements. Every kernel has straight-line forms for square sizes 3 to 6. For
// other sizes the 32f unit-stride kernels cut a matrix into bands of rows and
// write each band with 4x4 tiles, or, where the data does not fit the cache,
// with non-temporal stores; every other kernel runs a plain double loop.
// There is no parallel route.
#include <algorithm>
#include <cstdint>

#include <emmintrin.h>
#include <xmmintrin.h>

#include "frame/bits.h"
#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::transpose {

// ---- tuned numbers ---------------------------------------------------------

constexpr int kBandRows = 64;                     // rows of a band
constexpr int kSideForCacheQuery = 129;           // smaller side from which one matrix asks for the cache size
constexpr std::int32_t kArrayBytes = 131072;      // sources and results of an array above which the array asks
constexpr int kStreamingBandWidth = 16;           // width multiple that lets the non-temporal path cut bands

constexpr Sizes kStraightLine{3, 4, 5, 6};

// The size of the largest cache from the core library; 0 when unknown.
inline std::int32_t cacheSize()
{
    std::int32_t c = 0;
    orlGetMaxCacheSizeB(&c);
    return c;
}

// ---- band routines of the 32f unit-stride path -----------------------------

inline bool multipleOf(const void* p, std::ptrdiff_t stride, unsigned m)
{
    return (reinterpret_cast<std::uintptr_t>(p) % m) == 0 && (std::ptrdiff_t(stride) % m) == 0;
}

// One band of `rows` source rows in tiles of 4 by 4, with aligned or
// unaligned 16-byte stores; the columns and rows left over, up to 3 each,
// element by element. Strides are in bytes.
template <bool Aligned>
void bandTiles(const float* src, std::ptrdiff_t srcStride1, float* dst, std::ptrdiff_t dstStride1, int width, int rows)
{
    const int w4 = width & ~3, r4 = rows & ~3;
    for (int j = 0; j < w4; j += 4)
        for (int r = 0; r < r4; r += 4) {
            const float* s = at(src, r * srcStride1) + j;
            __m128 a = _mm_loadu_ps(s), b = _mm_loadu_ps(at(s, srcStride1)), c = _mm_loadu_ps(at(s, 2 * srcStride1)),
                   d = _mm_loadu_ps(at(s, 3 * srcStride1));
            _MM_TRANSPOSE4_PS(a, b, c, d);
            float* o = at(dst, j * dstStride1) + r;
            if constexpr (Aligned) {
                _mm_store_ps(o, a), _mm_store_ps(at(o, dstStride1), b);
                _mm_store_ps(at(o, 2 * dstStride1), c), _mm_store_ps(at(o, 3 * dstStride1), d);
            } else {
                _mm_storeu_ps(o, a), _mm_storeu_ps(at(o, dstStride1), b);
                _mm_storeu_ps(at(o, 2 * dstStride1), c), _mm_storeu_ps(at(o, 3 * dstStride1), d);
            }
        }
    for (int j = w4; j < width; ++j)
        for (int r = 0; r < rows; ++r) moveBits(at(dst, j * dstStride1)[r], at(src, r * srcStride1)[j]);
    for (int r = r4; r < rows; ++r)
        for (int j = 0; j < w4; ++j) moveBits(at(dst, j * dstStride1)[r], at(src, r * srcStride1)[j]);
}

// One band with non-temporal 32-bit stores, the source columns two at a
// time (an odd last column alone), ended by a store fence so that the stores
// are visible when the routine returns.
inline void bandStreaming(const float* src, std::ptrdiff_t srcStride1, float* dst, std::ptrdiff_t dstStride1, int width, int rows)
{
    const auto word = [](const float* p) { return int(*reinterpret_cast<const Bits32*>(p)); };
    int j = 0;
    for (; j + 1 < width; j += 2) {
        int* d0 = reinterpret_cast<int*>(at(dst, j * dstStride1));
        int* d1 = reinterpret_cast<int*>(at(dst, (j + 1) * dstStride1));
        for (int r = 0; r < rows; ++r) {
            const float* s = at(src, r * srcStride1) + j;
            _mm_stream_si32(d0 + r, word(s));
            _mm_stream_si32(d1 + r, word(s + 1));
        }
    }
    if (j < width) {
        int* d0 = reinterpret_cast<int*>(at(dst, j * dstStride1));
        for (int r = 0; r < rows; ++r) _mm_stream_si32(d0 + r, word(at(src, r * srcStride1) + j));
    }
    _mm_sfence();
}

// One matrix cut into bands of rows. With nonTemporal false the matrix
// decides for itself: a smaller side of at least 129 asks for the cache size,
// and a matrix whose source and result together exceed it is streamed.
inline void transposeBands(const float* src, std::ptrdiff_t srcStride1, float* dst, std::ptrdiff_t dstStride1, int width,
                           int height, bool nonTemporal)
{
    if (!nonTemporal && std::min(width, height) >= kSideForCacheQuery) {
        const std::int32_t c = cacheSize();
        nonTemporal = c != 0 && c < (Wrap(width) * height * 8).value();
    }
    const int band = !nonTemporal ? std::min(height, kBandRows)
                     : width % kStreamingBandWidth == 0 && height >= kBandRows ? kBandRows
                                                                               : height;
    for (int r0 = 0; r0 < height; r0 += band) {
        const int rows = std::min(band, height - r0);
        if (nonTemporal)
            bandStreaming(src, srcStride1, dst, dstStride1, width, rows);
        else if (multipleOf(src, srcStride1, 8) && multipleOf(dst, dstStride1, 16))
            bandTiles<true>(src, srcStride1, dst, dstStride1, width, rows);
        else
            bandTiles<false>(src, srcStride1, dst, dstStride1, width, rows);
        src = at(src, rows * srcStride1);
        dst += rows;  // the band's rows are columns of the result
    }
}

// Once for a whole array: stream every item when all sources and results
// (width*height*count*8 bytes, 32-bit arithmetic) exceed 131072 bytes and
// three quarters of the cache.
inline bool arrayStreams(int width, int height, int count)
{
    const std::int32_t total = (Wrap(width) * height * count * 8).value();
    if (total <= kArrayBytes) return false;
    const std::int32_t c = cacheSize();
    return c != 0 && total > c - c / 4;
}

// ---- kernels ---------------------------------------------------------------

// Straight-line form of order N: a loop over items only. 32f rows of
// adjacent elements at N = 4 go through one register transpose.
template <bool Unit, int N, class S, class D>
void straightLine(const S& src, const D& dst, int count)
{
    constexpr bool packed = Unit && N == 4 && std::is_same_v<typename D::Elem, float> && S::lay != Lay::P;
    for (int k = 0; k < count; ++k) {
        const auto s = matItem<Unit>(src, k, N);
        const auto d = matItem<Unit>(dst, k, N);
        if constexpr (packed) {
            __m128 a = _mm_loadu_ps(s.row(0)), b = _mm_loadu_ps(s.row(1)), c = _mm_loadu_ps(s.row(2)), e = _mm_loadu_ps(s.row(3));
            _MM_TRANSPOSE4_PS(a, b, c, e);
            _mm_storeu_ps(d.row(0), a), _mm_storeu_ps(d.row(1), b), _mm_storeu_ps(d.row(2), c), _mm_storeu_ps(d.row(3), e);
        } else {
#pragma GCC unroll 6
            for (int i = 0; i < N; ++i)
#pragma GCC unroll 6
                for (int j = 0; j < N; ++j) moveBits(d(j, i), s(i, j));
        }
    }
}

// For each item, for each i, for each j, one element.
template <bool Unit, class S, class D>
void plainLoop(const S& src, const D& dst, int width, int height, int count)
{
    for (int k = 0; k < count; ++k) {
        const auto s = matItem<Unit>(src, k, width);
        const auto d = matItem<Unit>(dst, k, height);
        for (int i = 0; i < height; ++i)
            for (int j = 0; j < width; ++j) moveBits(d(j, i), s(i, j));
    }
}

template <Var V, class S, class D>
orlStatus kernel(const S& src, const D& dst, int width, int height, int count)
{
    constexpr bool unit = unitStep(V);
    constexpr bool banded = unit && std::is_same_v<typename D::Elem, float>;  // ownorlmTranspose_*_32f and _32f_L
    return bySize<kStraightLine>(
        width == height ? width : 0, [&](auto n) { return straightLine<unit, decltype(n)::value>(src, dst, count), orlStatusOk; },
        [&] {
            if constexpr (banded) {
                const bool stream = D::array && arrayStreams(width, height, count);
                for (int k = 0; k < count; ++k) {
                    const auto s = matItem<true>(src, k, width);
                    const auto d = matItem<true>(dst, k, height);
                    transposeBands(s.b, s.s1, d.b, d.s1, width, height, stream);
                }
            } else {
                plainLoop<unit>(src, dst, width, height, count);
            }
            return orlStatusOk;
        });
}

// ---- entry -----------------------------------------------------------------

template <class S, class D>
orlStatus entry(const S& src, int width, int height, const D& dst, int count = 1)
{
    Checks c = operandChecks(src, dst);
    c.C = count >= 1;
    c.Z = sizesOk({width, height});
    if (const orlStatus st = firstFailure(generalOrder(D::array, D::lay), c)) return st;

    if (allUnit(src, dst)) return kernel<varOf(D::lay, true)>(src, dst, width, height, count);
    return kernel<varOf(D::lay, false)>(src, dst, width, height, count);
}

}  // namespace orl::transpose

#include "transpose.inc"
