// Copy between layouts, and LoadIdentity.
//
// Neither family has a kernel or a parallel route: the entry validates and
// then does the work itself. Copy moves each element as bits, item by item,
// row by row, element by element in ascending order, so that a result that
// overlaps its source gets what forward copying one element at a time gives
// (standard-layout sides that share no byte move whole rows, or one packed
// block, at once, which nobody can tell apart).
// Both test stride0 only when count > 1: with one item a stride0 is never
// used.
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include <emmintrin.h>

#include "frame/bits.h"
#include "frame/kernel.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::copy {

// ---- check orders ----------------------------------------------------------
//
//   N  the pointers of both sides        Z  width and height, or length
//   C  count                             T  stride1 and stride2 of the sides that have them
//   O  the offsets of the sides          S  stride0 of the sides that have it, if count > 1

constexpr char letterOf(Lay l) { return l == Lay::Std ? 'S' : l == Lay::P ? 'P' : 'L'; }

struct CopyOrder {
    std::string_view shape;
    bool f32, f64;
    std::string_view pair;  // source's and result's layout letters
    std::string_view order;
};
constexpr std::string_view kCopyGeneral = "NZCTOS";
constexpr CopyOrder kCopyOrders[] = {
    // shape  32f    64f    pair  order
    {"ma",    true,  true,  "PP", "NZCOS"},   // table on both sides: no stride1 or stride2
    {"va",    true,  true,  "PP", "NZCOS"},
    {"va",    true,  false, "LP", "NZCOTS"},  // offsets before stride2 in 32f only
    {"va",    true,  false, "SP", "NZCOTS"},
};

template <class E, Kind K, Lay Ls, Lay Ld>
constexpr std::string_view copyOrder()
{
    constexpr char pair[] = {letterOf(Ls), letterOf(Ld)};
    for (const CopyOrder& r : kCopyOrders)
        if (r.shape == kindName(K) && (sizeof(E) == 4 ? r.f32 : r.f64) && r.pair == std::string_view(pair, 2))
            return r.order;
    return kCopyGeneral;
}

struct IdentityOrder {
    Lay lay;
    std::string_view f32, f64;
};
constexpr IdentityOrder kIdentityOrders[] = {
    // layout    32f      64f
    {Lay::Std, "NZCTS", "NZCTS"},  // T and S are one class here: stride0 tested if count > 1
    {Lay::P,   "NZOCS", "NZCOS"},  // stride0, if count > 1, after the classes of the member's row
    {Lay::L,   "NZCTO", "NZCTO"},  // no stride0
};

template <class E, Lay L>
constexpr std::string_view identityOrder()
{
    for (const IdentityOrder& r : kIdentityOrders)
        if (r.lay == L) return sizeof(E) == 4 ? r.f32 : r.f64;
    return {};
}

// ---- the work --------------------------------------------------------------

// Item k of a matrix or vector operand, addressed as (row, column); a vector
// is one row.
template <bool Unit, class O>
inline auto itemOf(const O& o, int k, int cols)
{
    if constexpr (isVector(O::kind)) {
        const auto v = vecItem<Unit>(o, k);
        return [v](int, int j) -> decltype(auto) { return v(j); };
    } else {
        return matItem<Unit>(o, k, cols);
    }
}

template <bool Unit, class S, class D>
void copyItems(const S& src, const D& dst, int width, int height, int count)
{
    for (int k = 0; k < count; ++k) {
        const auto s = itemOf<Unit>(src, k, width);
        const auto d = itemOf<Unit>(dst, k, width);
        for (int i = 0; i < height; ++i)
            for (int j = 0; j < width; ++j) moveBits(d(i, j), s(i, j));
    }
}

// Bytes from the first to one past the last element of a standard-layout
// operand, in 64 bits on both ABIs; stride0 counts only with more than one
// item. Every stride that counts is positive by then.
template <class O>
inline std::pair<std::uint64_t, std::uint64_t> extent(const O& o, int width, int height, int count)
{
    using U = std::uint64_t;
    const U b = reinterpret_cast<std::uintptr_t>(o.p);
    const U rowStep = isVector(O::kind) ? 0 : U(o.s1);
    const U last = (count > 1 ? U(count - 1) * U(o.s0) : 0) + U(height - 1) * rowStep + U(width - 1) * U(o.s2) +
                   sizeof(typename O::Elem);
    return {b, b + last};
}

// Where the two sides share no byte the order of the moves cannot be seen,
// and rows of adjacent elements move 16 bytes at a time; a result that
// overlaps its source keeps the element-by-element forward copy. Pointers
// and strides come by value so that they stay in registers.
template <class E>
void copyRows(const E* src, std::ptrdiff_t s0, std::ptrdiff_t s1, E* dst, std::ptrdiff_t d0, std::ptrdiff_t d1, int width,
              int height, int count)
{
    // Both sides one packed block: one block move.
    const std::ptrdiff_t row = std::ptrdiff_t(width) * std::ptrdiff_t(sizeof(E)), item = row * height;
    if ((height == 1 || (s1 == row && d1 == row)) && (count == 1 || (s0 == item && d0 == item))) {
        std::memcpy(dst, src, std::size_t(item) * std::size_t(count));
        return;
    }
    constexpr int lanes = 16 / sizeof(E);
    const auto move16 = [](E* d, const E* s) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(d), _mm_loadu_si128(reinterpret_cast<const __m128i*>(s)));
    };
    for (int k = 0; k < count; ++k, src = at(src, s0), dst = at(dst, d0)) {
        const E* a = src;
        E* b = dst;
        if (width == lanes) {  // one move a row: 4x4 floats, 2x2 doubles
            for (int i = 0; i < height; ++i, a = at(a, s1), b = at(b, d1)) move16(b, a);
            continue;
        }
        for (int i = 0; i < height; ++i, a = at(a, s1), b = at(b, d1)) {
            int j = 0;
            for (; j + lanes <= width; j += lanes) move16(b + j, a + j);
            for (; j < width; ++j) moveBits(b[j], a[j]);
        }
    }
}

// ---- entries ---------------------------------------------------------------

// Copy_ma: width, height, count. Copy_va: length, count.
template <class S, class D, class... Ints>
orlStatus Copy(const S& src, const D& dst, Ints... sizes)
{
    using E = typename D::Elem;
    constexpr bool vec = isVector(S::kind);
    const int n[] = {sizes...};
    const int width = n[0], height = vec ? 1 : n[1], count = n[sizeof...(Ints) - 1];

    Checks c;
    c.N = pointerOk(src) && pointerOk(dst);
    c.Z = width >= 1 && height >= 1;
    c.C = count >= 1;
    c.T = innerStridesOk(src) && innerStridesOk(dst);
    c.O = offsetsOk(src) && offsetsOk(dst);
    c.S = count <= 1 || (stride0Ok(src) && stride0Ok(dst));
    if (const orlStatus st = firstFailure(copyOrder<E, S::kind, S::lay, D::lay>(), c)) return st;

    if constexpr (S::lay == Lay::Std && D::lay == Lay::Std) {
        const auto a = extent(src, width, height, count), b = extent(dst, width, height, count);
        if (allUnit(src, dst) && (a.second <= b.first || b.second <= a.first))
            return copyRows(src.p, count > 1 ? src.s0 : 0, vec ? 0 : src.s1, dst.p, count > 1 ? dst.s0 : 0, vec ? 0 : dst.s1,
                            width, height, count),
                   orlStatusOk;
    }
    if (allUnit(src, dst))
        copyItems<true>(src, dst, width, height, count);
    else
        copyItems<false>(src, dst, width, height, count);
    return orlStatusOk;
}

// Each row: zeros over the whole row, then the one on the diagonal where the
// row has it.
template <class D>
orlStatus LoadIdentity(const D& dst, int width, int height, int count)
{
    using E = typename D::Elem;
    Checks c;
    c.N = pointerOk(dst);
    c.Z = sizesOk({width, height});
    c.C = count >= 1;
    c.T = innerStridesOk(dst);
    c.O = offsetsOk(dst);
    c.S = count <= 1 || stride0Ok(dst);
    if (const orlStatus st = firstFailure(identityOrder<E, D::lay>(), c)) return st;

    for (int k = 0; k < count; ++k) {
        const auto d = matItem<false>(dst, k, width);
        for (int i = 0; i < height; ++i) {
            for (int j = 0; j < width; ++j) d(i, j) = E(0);
            if (i < width) d(i, i) = E(1);
        }
    }
    return orlStatusOk;
}

}  // namespace orl::copy

#include "copy.inc"
