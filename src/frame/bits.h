// Elements moved as bits.
//
// The data-movement families copy a float or double through an unsigned
// integer of its size, so that no element passes through a floating-point
// register: an x87 load on i386 would quiet a signalling NaN, and the bits
// are the contract.
#pragma once

#include <cstdint>
#include <cstddef>

namespace orl {

typedef std::uint32_t Bits32 __attribute__((__may_alias__));
typedef std::uint64_t Bits64 __attribute__((__may_alias__));

// The integer of an element's size, allowed to alias the element.
template <std::size_t Size>
struct BitsFor;
template <>
struct BitsFor<4> {
    typedef Bits32 type;
};
template <>
struct BitsFor<8> {
    typedef Bits64 type;
};

// d := s, bit for bit; the two may be the same object.
template <class E>
inline void moveBits(E& d, const E& s)
{
    using U = typename BitsFor<sizeof(E)>::type;
    *reinterpret_cast<U*>(&d) = *reinterpret_cast<const U*>(&s);
}

}  // namespace orl
