"""The exported surface of liborlmt7, described once.

Each family lists its members by stem, shape, type and layout, and how its
argument list is formed. orlgen.py turns this into the public header
include/orlm.h, the adapters of each family's source file, and the list of
exported names. A family with built=False is described but not yet exported.
"""

from dataclasses import dataclass, field

from grammar import Arg, Member, Opd, is_array, layouts_of, plain_rule, split_shape

TYPES = ["32f", "64f"]


@dataclass
class Family:
    key: str           # name of the generated adapter file
    title: str         # heading in the public header
    entry: str         # C++ entry template; {stem} and {elem} are replaced by the member's stem and element type
    built: bool
    members: list = field(default_factory=list)


def each(stems_shapes, items_of, family):
    """Members for every (stem, shape) pair, type and layout of the shape."""
    out = []
    for stem, shape in stems_shapes:
        for t in TYPES:
            for lay in layouts_of(shape):
                out.append(Member(family, stem, shape, t, lay, items_of(stem, shape, lay)))
    return out


# ---- matrix add and subtract ----------------------------------------------

ADD_SHAPES = ["mm", "tm", "tt", "mam", "tam", "mat", "tat", "mama", "tama", "tata"]
SUB_SHAPES = ["mm", "tm", "mt", "tt", "mam", "tam", "mat", "tat", "mma", "tma", "mta", "tta",
              "mama", "tama", "mata", "tata"]

addsub = Family(
    key="addsub",
    title="Matrix add and subtract: dst = src1 + src2, dst = src1 - src2",
    entry="orl::addsub::entry<orl::addsub::Op::{stem}>",
    built=True,
)
addsub.members = each([("Add", s) for s in ADD_SHAPES] + [("Sub", s) for s in SUB_SHAPES],
                      lambda stem, shape, lay: plain_rule(shape, ["width", "height"]), "addsub")


# ---- matrix multiply ------------------------------------------------------

MUL_SHAPES = ["mm", "mt", "tm", "tt", "mam", "mat", "tam", "tat", "mma", "mta", "tma", "tta",
              "mama", "mata", "tama", "tata"]


def product_items(stem, shape, lay):
    """Each source's group is followed by its own stored width and height."""
    items = []
    for i, kind in enumerate(split_shape(shape)):
        n = f"src{i + 1}"
        items += [Opd(kind, n), Arg("int", f"{n}Width"), Arg("int", f"{n}Height")]
    arr = any(is_array(k) for k in split_shape(shape))
    items.append(Opd("ma" if arr else "m", "dst", result=True))
    return items + ([Arg("int", "count")] if arr else [])


mul = Family(
    key="mul",
    title="Matrix multiply: dst = op(src1) * op(src2)",
    entry="orl::mul::entry",
    built=True,
)
mul.members = each([("Mul", s) for s in MUL_SHAPES], product_items, "mul")


# ---- LU decomposition and back-substitution -------------------------------

def lu_items(stem, shape, lay):
    arr = shape == "ma"
    return [Opd(shape, "src"), Arg("int32_t*", "perm"), Opd(shape, "dst", result=True),
            Arg("int", "widthHeight")] + ([Arg("int", "count")] if arr else [])


def lubs_items(stem, shape, lay):
    kinds = split_shape(shape)          # m v | m va | ma va
    arr = is_array(kinds[1])
    return [Opd(kinds[0], "src"), Arg("const int32_t*", "perm"), Opd(kinds[1], "rhs"),
            Opd(kinds[1], "dst", result=True), Arg("int", "widthHeight")] + ([Arg("int", "count")] if arr else [])


lu = Family(
    key="lu",
    title="LU decomposition with partial pivoting",
    entry="orl::lu::decompEntry",
    built=True,
)
lu.members = each([("LUDecomp", "m"), ("LUDecomp", "ma")], lu_items, "lu")

lubs = Family(
    key="lubacksubst",
    title="LU back-substitution: solve A x = b from the factor and perm",
    entry="orl::lu::backSubstEntry",
    built=True,
)
lubs.members = each([("LUBackSubst", "mv"), ("LUBackSubst", "mva"), ("LUBackSubst", "mava")], lubs_items, "lubacksubst")

FAMILIES = [addsub, mul, lu, lubs]


def _family_modules():
    """The families described in api/families/, one module each, by name."""
    import importlib
    import os
    here = os.path.join(os.path.dirname(os.path.abspath(__file__)), "families")
    names = sorted(f[:-3] for f in os.listdir(here) if f.endswith(".py") and not f.startswith("_"))
    return [importlib.import_module(f"families.{n}") for n in names]


for _mod in _family_modules():
    FAMILIES += _mod.FAMILIES
