"""Argument grammar of the exported members.

A member's argument list is a sequence of items. An Opd item is one operand
and stands for its whole argument group, which depends on the operand's kind
and on the member's layout; an Arg item is one plain argument (a size, the
count, a pivot table, a buffer). The adapters pass each group to the family's
entry as one view value, and each plain argument as it is.
"""

from dataclasses import dataclass, field

ELEM = {"32f": "float", "64f": "double"}
ARRAY_OF = {"m": "ma", "t": "ta", "v": "va", "c": "ca"}


def split_shape(shape):
    """'mvav' -> ['m', 'va', 'v']: an 'a' belongs to the letter before it."""
    kinds = []
    for ch in shape:
        if ch == "a":
            kinds[-1] += "a"
        else:
            kinds.append(ch)
    return kinds


def is_array(kind):
    return kind.endswith("a")


@dataclass
class Opd:
    kind: str          # m t v c ma ta va ca
    name: str          # src, src1, dst, values ...
    result: bool = False
    prefix: str = ""   # name stem of strides and offset where it differs from `name`

    def fields(self, layout):
        """(field, suffix, role) triples of the group; role is ptr, tbl, int or value."""
        k, arr = self.kind[0], is_array(self.kind)
        if k == "c":
            if not arr:
                return [("p", "", "value")]
            if layout == "L":
                return [("p", "", "tbl"), ("off", "Offset", "int")]
            return [("p", "", "ptr"), ("s0", "Stride0", "int")]
        inner = [("s1", "Stride1", "int"), ("s2", "Stride2", "int")] if k in "mt" else [("s2", "Stride2", "int")]
        if layout == "P":
            return [("p", "", "tbl"), ("off", "Offset", "int")] + ([("s0", "Stride0", "int")] if arr else [])
        if layout == "L" and arr:
            return [("p", "", "tbl"), ("off", "Offset", "int")] + inner
        return [("p", "", "ptr")] + ([("s0", "Stride0", "int")] if arr else []) + inner


@dataclass
class Arg:
    ctype: str         # C type with {T} for the element type
    name: str


@dataclass
class Member:
    family: str
    stem: str
    shape: str
    type: str
    layout: str        # "", "P" or "L"
    items: list = field(default_factory=list)
    suffix: str = ""   # name ending other than the layout (Copy's layout pairs)

    @property
    def name(self):
        base = f"orlm{self.stem}_{self.shape}_{self.type}" if self.shape else f"orlm{self.stem}_{self.type}"
        if self.suffix:
            return f"{base}_{self.suffix}"
        return f"{base}_{self.layout}" if self.layout else base

    def params(self):
        """[(C type, name)] in argument order."""
        return [p for group in self.param_groups() for p in group]

    def param_groups(self):
        """The parameters an item at a time: an operand's group, or one plain argument."""
        T = ELEM[self.type]
        groups = []
        for it in self.items:
            out = []
            groups.append(out)
            if isinstance(it, Arg):
                out.append((it.ctype.replace("{T}", T), it.name))
                continue
            lay = op_layout(self, it)
            cT = T if it.result else f"const {T}"
            stem = it.prefix or it.name
            for _, suf, role in it.fields(lay):
                if role == "value":
                    out.append((T, it.name))
                elif role == "ptr":
                    out.append((f"{cT}*", it.name))
                elif role == "tbl":
                    out.append((f"{cT}* const*", it.name))
                else:
                    out.append(("int", stem + suf))
        return groups

    def call(self):
        """Arguments of the family entry: one view per operand, plain args as they are."""
        T = ELEM[self.type]
        out = []
        for it in self.items:
            if isinstance(it, Arg):
                out.append(it.name)
                continue
            lay = op_layout(self, it)
            cT = T if it.result else f"const {T}"
            stem = it.prefix or it.name
            order = ["p", "s0", "s1", "s2", "off"]  # declaration order of the view's fields
            fields = sorted(it.fields(lay), key=lambda f: order.index(f[0]))
            inits = ", ".join(f".{f} = {it.name if f == 'p' else stem + suf}" for f, suf, _ in fields)
            out.append(f"orl::Opd<{cT}, orl::Kind::{it.kind}, orl::Lay::{lay or 'Std'}>{{{inits}}}")
        return out


def op_layout(member, opd):
    """The layout an operand's group follows: Copy names one per operand."""
    return getattr(opd, "layout", None) or member.layout


# ---- the plain rule and its common pieces ---------------------------------

def operands(shape):
    """Source operands of a shape: matrices and vectors named src (one) or
    src1, src2, ... (several); a constant is `value`, a constant array `values`."""
    kinds = split_shape(shape)
    sources = [k for k in kinds if k[0] != "c"]
    out, n = [], 0
    for k in kinds:
        if k[0] == "c":
            out.append(Opd(k, "values" if is_array(k) else "value"))
        else:
            n += 1
            out.append(Opd(k, "src" if len(sources) == 1 else f"src{n}"))
    return out


def result_of(shape, single="m"):
    arr = any(is_array(k) for k in split_shape(shape))
    return Opd(single + ("a" if arr else ""), "dst", result=True)


def count_of(shape):
    return [Arg("int", "count")] if any(is_array(k) for k in split_shape(shape)) else []


def plain_rule(shape, sizes, single="m"):
    """Sources in shape order, the result, the sizes, the count."""
    return operands(shape) + [result_of(shape, single)] + [Arg("int", s) for s in sizes] + count_of(shape)


def layouts_of(shape):
    """Non-array shapes have the standard and _P members; array shapes all three."""
    return ["", "P", "L"] if any(is_array(k) for k in split_shape(shape)) else ["", "P"]
