"""Transpose: dst(k, j, i) = src(k, i, j).

The sizes, those of the source, stand between the source's group and the
result's.
"""

from grammar import Arg, Opd, is_array
from members import Family, each


def transpose_items(stem, shape, lay):
    count = [Arg("int", "count")] if is_array(shape) else []
    return [Opd(shape, "src"), Arg("int", "width"), Arg("int", "height"), Opd(shape, "dst", result=True)] + count


transpose = Family(
    key="transpose",
    title="Transpose: dst = transpose(src)",
    entry="orl::transpose::entry",
    built=True,
)
transpose.members = each([("Transpose", "m"), ("Transpose", "ma")], transpose_items, "transpose")

FAMILIES = [transpose]
