"""Add and subtract of vectors and constants: the vector part of the add/sub
family (key addsub, one source file with the matrices)."""

from grammar import plain_rule
from members import Family, each

VEC_ADD_SHAPES = ["vv", "vav", "vava", "vc", "vac", "vca", "vaca"]
VEC_SUB_SHAPES = ["vv", "vav", "vva", "vava", "vc", "vac", "vca", "vaca", "cv", "cva", "cav", "cava"]

# A shape that starts with a constant tells the sense of the subtraction
# (constant minus vector); its arguments still give the vector group first.
VECTOR_FIRST = {"cv": "vc", "cva": "vac", "cav": "vca", "cava": "vaca"}


def vector_items(stem, shape, lay):
    return plain_rule(VECTOR_FIRST.get(shape, shape), ["length"], "v")


addsub_vec = Family(
    key="addsub",
    title="Vector add and subtract: dst = src1 +/- src2, dst = src +/- value; cv cva cav cava: dst = value - src",
    entry="orl::addsub::entry<orl::addsub::Op::{stem}, orl::addsub::leadingConstant(\"{shape}\")>",
    built=True,
)
addsub_vec.members = each([("Add", s) for s in VEC_ADD_SHAPES] + [("Sub", s) for s in VEC_SUB_SHAPES],
                          vector_items, "addsub")

FAMILIES = [addsub_vec]
