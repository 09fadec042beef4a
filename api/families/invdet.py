"""Matrix inverse and determinant: one square matrix or an array of them,
with a caller's work buffer of n*(n+1) elements."""

from grammar import Arg, Opd
from members import Family, each


def invert_items(stem, shape, lay):
    arr = shape == "ma"
    return [Opd(shape, "src"), Arg("{T}*", "buffer"), Opd(shape, "dst", result=True),
            Arg("int", "widthHeight")] + ([Arg("int", "count")] if arr else [])


def det_items(stem, shape, lay):
    arr = shape == "ma"
    return [Opd(shape, "src"), Arg("int", "widthHeight"), Arg("{T}*", "buffer"),
            Arg("{T}*", "dst")] + ([Arg("int", "count")] if arr else [])


invert = Family(
    key="invert",
    title="Matrix inverse: dst = inverse(src)",
    entry="orl::invert::entry",
    built=True,
)
invert.members = each([("Invert", "m"), ("Invert", "ma")], invert_items, "invert")

det = Family(
    key="det",
    title="Determinant: dst = det(src), one result an item with no stride",
    entry="orl::det::entry",
    built=True,
)
det.members = each([("Det", "m"), ("Det", "ma")], det_items, "det")

FAMILIES = [invert, det]
