"""Copy between layouts, and LoadIdentity: arrays of matrices or vectors.

Copy names a layout for each side by two letters behind the type
(orlmCopy_ma_32f_PL: source through a table, result through a list); each
side's argument group follows its own letter. LoadIdentity has one array
operand, the result.
"""

from dataclasses import dataclass

from grammar import Arg, Member, Opd
from members import TYPES, Family

PAIRS = ["SS", "SP", "SL", "PS", "PP", "PL", "LS", "LP", "LL"]
LAYOUT_OF_LETTER = {"S": "", "P": "P", "L": "L"}
SIZES_OF = {"ma": ["width", "height"], "va": ["length"]}


@dataclass
class SideOpd(Opd):
    """An operand whose group follows a layout of its own (Copy's pairs)."""
    layout: str = ""


def copy_members():
    out = []
    for shape in ["ma", "va"]:
        for t in TYPES:
            for pair in PAIRS:
                src, dst = (LAYOUT_OF_LETTER[c] for c in pair)
                items = [SideOpd(shape, "src", layout=src), SideOpd(shape, "dst", result=True, layout=dst)]
                items += [Arg("int", s) for s in SIZES_OF[shape]] + [Arg("int", "count")]
                out.append(Member("copy", "Copy", shape, t, "", items, suffix=pair))
    return out


def identity_members():
    return [Member("copy", "LoadIdentity", "ma", t, lay,
                   [Opd("ma", "dst", result=True), Arg("int", "width"), Arg("int", "height"), Arg("int", "count")])
            for t in TYPES for lay in ["", "P", "L"]]


copy = Family(
    key="copy",
    title="Copy between layouts: dst = src, element by element; LoadIdentity: dst = I",
    entry="orl::copy::{stem}",
    built=True,
)
copy.members = copy_members() + identity_members()

FAMILIES = [copy]
