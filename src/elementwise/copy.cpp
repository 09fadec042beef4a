// Copy between layouts, and LoadIdentity.
//
// Neither family has a kernel or a parallel route: the entry validates and
// then does the work itself. Copy moves each element as bits, item by item,
// row by row, element by element in ascending order, so that a result that
// overlaps its source gets what forward copying one element at a time gives.
// Both test stride0 only when count > 1: with one item a stride0 is never
// used.
#include <string_view>

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
