"""Saxpy (dst = value * src1 + src2) and LComb (dst = value1 * src1 + value2 * src2)."""

from grammar import Arg, Opd, is_array, split_shape
from members import Family, each


def scaled_items(stem, shape, lay):
    """Saxpy: the value follows the first source. LComb: each source is
    followed by its own scale."""
    k1, k2 = split_shape(shape)
    arr = is_array(k1) or is_array(k2)
    scale1 = Opd("c", "value1" if stem == "LComb" else "value")
    items = [Opd(k1, "src1"), scale1, Opd(k2, "src2")]
    if stem == "LComb":
        items.append(Opd("c", "value2"))
    items += [Opd("va" if arr else "v", "dst", result=True), Arg("int", "length")]
    return items + ([Arg("int", "count")] if arr else [])


saxpy = Family(
    key="saxpy",
    title="Saxpy and LComb: dst = value * src1 + src2, dst = value1 * src1 + value2 * src2",
    entry="orl::saxpy::entry<orl::saxpy::Stem::{stem}>",
    built=True,
)
saxpy.members = each([("Saxpy", s) for s in ["vv", "vav", "vva", "vava"]] + [("LComb", s) for s in ["vv", "vav", "vava"]],
                     scaled_items, "saxpy")

FAMILIES = [saxpy]
