"""Multiplication of a matrix or a vector by a constant (orlmMul with c letters)."""

from grammar import plain_rule
from members import Family, each

MATRIX_SHAPES = ["mc", "tc", "mac", "tac"]
VECTOR_SHAPES = ["vc", "vac", "vca", "vaca"]


def scale_items(stem, shape, lay):
    """The plain rule: source, constant (or constant array), result, sizes, count."""
    if shape[0] == "v":
        return plain_rule(shape, ["length"], single="v")
    return plain_rule(shape, ["width", "height"])


scale = Family(
    key="scale",
    title="Multiplication by a constant: dst = src * value",
    entry="orl::scale::entry",
    built=True,
)
scale.members = each([("Mul", s) for s in MATRIX_SHAPES + VECTOR_SHAPES], scale_items, "scale")

FAMILIES = [scale]
