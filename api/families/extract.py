"""Extract: an operand of any layout packed into one dense block.

The result is one plain pointer with no stride; a transposed source is
written as its logical (transposed) matrix.
"""

from grammar import Arg, Opd, is_array
from members import Family, each

SIZES_OF = {"m": ["width", "height"], "t": ["width", "height"], "v": ["length"]}


def extract_items(stem, shape, lay):
    sizes = [Arg("int", s) for s in SIZES_OF[shape[0]]]
    count = [Arg("int", "count")] if is_array(shape) else []
    return [Opd(shape, "src"), Arg("{T}*", "dst")] + sizes + count


extract = Family(
    key="extract",
    title="Extract: the logical elements of an operand packed into dst",
    entry="orl::extract::entry",
    built=True,
)
extract.members = each([("Extract", s) for s in ["m", "t", "v", "ma", "ta", "va"]], extract_items, "extract")

FAMILIES = [extract]
