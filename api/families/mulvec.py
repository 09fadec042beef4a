"""Matrix times vector (orlmMul of a matrix and a vector) and Gaxpy (y = A x + b)."""

from grammar import Arg, Opd, is_array, split_shape
from members import Family, each

MULVEC_SHAPES = ["mv", "tv", "mva", "tva", "mav", "tav", "mava", "tava"]
GAXPY_SHAPES = ["mv", "mva", "mvav"]


def mulvec_items(stem, shape, lay):
    """Matrix group and its stored width and height, the vector group and its
    length, for Gaxpy the addend's group and length, the result, the count.
    Gaxpy's `mva` adds an array of vectors, `mvav` one vector to every item."""
    kinds = split_shape(shape)
    mat, vec = kinds[0], kinds[1]
    arr = any(is_array(k) for k in kinds)
    items = [Opd(mat, "src1"), Arg("int", "src1Width"), Arg("int", "src1Height"),
             Opd(vec, "src2"), Arg("int", "src2Length")]
    if stem == "Gaxpy":
        addend = kinds[2] if len(kinds) > 2 else vec
        items += [Opd(addend, "src3"), Arg("int", "src3Length")]
    items.append(Opd("va" if arr else "v", "dst", result=True))
    return items + ([Arg("int", "count")] if arr else [])


mulvec = Family(
    key="mulvec",
    title="Matrix times vector: dst = op(src1) * src2; Gaxpy: dst = src1 * src2 + src3",
    entry="orl::mulvec::{stem}Entry",
    built=True,
)
mulvec.members = each([("Mul", s) for s in MULVEC_SHAPES] + [("Gaxpy", s) for s in GAXPY_SHAPES],
                      mulvec_items, "mulvec")

FAMILIES = [mulvec]
