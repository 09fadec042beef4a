// Extract: the logical elements of an operand of any layout, packed as bits
// into one dense block: element (k, i, j) to dst[(k*H + i)*W + j], vector
// element (k, j) to dst[k*L + j]. A transposed source is written as its
// logical matrix, so the block holds the transpose of what is stored.
//
// There is no kernel and no parallel route: the entry validates and then does
// the work itself.
#include <cstdint>
#include <string_view>

#include "frame/bits.h"
#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::extract {

// ---- tables ----------------------------------------------------------------

// Check orders. The array members test stride0 at any count.
struct OrderRow {
    std::string_view shape;
    Lay lay;
    std::string_view f32, f64;
};
constexpr OrderRow kOrders[] = {
    // shape  layout    32f      64f
    {"m",  Lay::Std, "NZT",   "NZT"},
    {"m",  Lay::P,   "ZNO",   "ZNO"},
    {"t",  Lay::Std, "NZT",   "NZT"},
    {"t",  Lay::P,   "ZNO",   "ZNO"},
    {"v",  Lay::Std, "NZT",   "NZT"},
    {"v",  Lay::P,   "NZO",   "ZNO"},
    {"ma", Lay::Std, "NZCT",  "NZCT"},
    {"ma", Lay::P,   "NZCOT", "NZCOT"},
    {"ma", Lay::L,   "NZCOT", "NZCOT"},
    {"ta", Lay::Std, "NZCT",  "NZCT"},
    {"ta", Lay::P,   "NZCOT", "NZCOT"},
    {"ta", Lay::L,   "NZCOT", "NZCOT"},
    {"va", Lay::Std, "NZCT",  "NZCT"},
    {"va", Lay::P,   "NZCOT", "NZCOT"},
    {"va", Lay::L,   "NZCOT", "NZCOT"},
};

template <class E, Kind K, Lay L>
constexpr std::string_view orderOf()
{
    for (const OrderRow& r : kOrders)
        if (r.shape == kindName(K) && r.lay == L) return sizeof(E) == 4 ? r.f32 : r.f64;
    return {};
}

// Members that, after validation, form the 32-bit product of their sizes
// (the end of the table) and return with nothing written when it is below 1,
// which only an overflow can make it.
struct ProductCheck {
    std::string_view shape;
    Lay lay;
};
constexpr ProductCheck kProductChecks[] = {{"m", Lay::P}, {"v", Lay::P}, {"ma", Lay::P}};

template <Kind K, Lay L>
constexpr bool checksProduct()
{
    for (const ProductCheck& r : kProductChecks)
        if (r.shape == kindName(K) && r.lay == L) return true;
    return false;
}

// ---- the work --------------------------------------------------------------

// Standard and list layouts: for each item, row and column, in dense order.
template <class S, class E>
void packItems(const S& src, E* dst, int width, int height, int count)
{
    const int cols = S::trans ? height : width;
    for (int k = 0; k < count; ++k) {
        E* out = dst + std::ptrdiff_t(k) * width * height;
        if constexpr (isVector(S::kind)) {
            const auto s = vecItem<false>(src, k);
            for (int j = 0; j < width; ++j) moveBits(out[j], s(j));
        } else {
            const auto s = matItem<false>(src, k, cols);
            for (int i = 0; i < height; ++i)
                for (int j = 0; j < width; ++j) moveBits(out[std::ptrdiff_t(i) * width + j], s(i, j));
        }
    }
}

// Element-pointer layout, the table outermost: each entry is read once and
// serves every item, whose element lies width*height elements further on.
template <class S, class E>
void packTable(const S& src, E* dst, int width, int height, int count)
{
    const int rows = S::trans ? width : height, cols = S::trans ? height : width;  // as stored
    const std::ptrdiff_t step = std::ptrdiff_t(width) * height;
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < cols; ++c) {
            const auto* p = at(src.p[r * cols + c], src.off);
            const int i = S::trans ? c : r, j = S::trans ? r : c;
            E* out = dst + std::ptrdiff_t(i) * width + j;
            for (int k = 0; k < count; ++k) moveBits(out[k * step], *at(p, std::ptrdiff_t(k) * src.s0));
        }
}

// ---- entry -----------------------------------------------------------------

// Matrices: width, height [, count]. Vectors: length [, count].
template <class S, class... Ints>
orlStatus entry(const S& src, typename S::Elem* dst, Ints... sizes)
{
    using E = typename S::Elem;
    constexpr bool vec = isVector(S::kind);
    const int n[] = {sizes...};
    const int width = n[0], height = vec ? 1 : n[1];
    const int count = S::array ? n[sizeof...(Ints) - 1] : 1;

    Checks c;
    c.N = pointerOk(src) && dst != nullptr;
    c.Z = width >= 1 && height >= 1;
    c.C = count >= 1;
    c.T = stridesOk(src);
    c.O = offsetsOk(src);
    if (const orlStatus st = firstFailure(orderOf<E, S::kind, S::lay>(), c)) return st;

    if constexpr (checksProduct<S::kind, S::lay>())
        if ((Wrap(width) * height).value() < 1) return orlStatusOk;

    if constexpr (S::lay == Lay::P)
        packTable(src, dst, width, height, count);
    else
        packItems(src, dst, width, height, count);
    return orlStatusOk;
}

}  // namespace orl::extract

#include "extract.inc"
