"""The fuzz driver's member table, produced from the member description.

For every member of the given families: a call thunk that passes an array of
argument slots to the exported function, the role of each C parameter (which
operand it belongs to and which field of the operand's group it is), the
operands with their kind, layout and whether the member writes them, the
extent of each operand in terms of the member's size arguments, and the set
of statuses the member may return.

Extents are stored rows and columns of one item (a vector is one row), or the
element count of a plain pointer argument over the whole call. They follow
the naming of the grammar: an operand `x` with sizes `xWidth`/`xHeight` or
`xLength` has those; otherwise `widthHeight`, `width`/`height` or `length`.
The few results whose extent is a function of other operands are listed in
RESULT_EXTENTS.
"""

from grammar import ELEM, Arg, op_layout

# Status codes in the order of the driver's bit mask (fuzz/harness.h).
STATUS_BITS = ["Ok", "SmallBlock", "Size", "NullPointer", "DivByZero", "NotPosDefinite", "Stride",
               "Singular", "Offset", "Count", "SizeMismatch", "NoConvergence"]

# Statuses of the computation itself, by stem: what the member reports
# about its data after the arguments passed their checks.
COMPUTED = {
    "LUDecomp": ["Singular"],
    "Invert": ["Singular"],
    "CholeskyDecomp": ["NotPosDefinite"],
    "QRDecomp": ["DivByZero"],
    "AffineTransform3DH": ["DivByZero"],
    "EigenValuesSym": ["NoConvergence", "Singular"],
    "EigenValuesVectorsSym": ["NoConvergence", "Singular"],
    "EigenValues": ["SmallBlock", "NoConvergence"],
    "EigenValuesVectorsRight": ["SmallBlock", "NoConvergence"],
    "EigenValuesVectorsLeft": ["SmallBlock", "NoConvergence"],
    "EigenValuesVectors": ["SmallBlock", "NoConvergence"],
}

# Results shaped by their sources: (family key, operand) -> rows, cols as C
# expressions of the size arguments; `t1`/`t2` say whether source 1/2 is read
# transposed.
RESULT_EXTENTS = {
    ("mul", "dst"): ("t1 ? src1Width : src1Height", "t2 ? src2Height : src2Width"),
    ("mulvec", "dst"): ("1", "t1 ? src1Width : src1Height"),
    ("transpose", "dst"): ("width", "height"),
    ("qrbacksubst", "dst"): ("1", "width"),
    ("qrbacksubst", "rhs"): ("1", "height"),
    ("dotcross", "src1"): ("1", "3"),   # the cross product only; the dot product has `length`
    ("dotcross", "src2"): ("1", "3"),
    ("dotcross", "dst"): ("1", "3"),
    ("affine", "src1"): ("4", "4"),
    ("affine", "src2"): ("1", "3"),
    ("affine", "dst"): ("1", "3"),
}

# Plain pointer arguments: elements over the whole call (`cnt` is count, or 1).
PLAIN_EXTENTS = {
    "perm": "widthHeight * cnt",
    "dstValues": "widthHeight * cnt",
    "dstValuesRe": "widthHeight * cnt",
    "dstValuesIm": "widthHeight * cnt",
    "bufSize": "1",
}
BUFFER_OF_STEM = {
    "Invert": "widthHeight * (widthHeight + 1)",
    "Det": "widthHeight * (widthHeight + 1)",
    "QRDecomp": "height",
    "QRBackSubst": "height",
    "EigenValuesSym": "widthHeight * widthHeight",
    "EigenValuesVectorsSym": "widthHeight * widthHeight",
    "EigenValues": "widthHeight * (widthHeight + 5)",
    "EigenValuesVectorsRight": "widthHeight * (3 * widthHeight + 5)",
    "EigenValuesVectorsLeft": "widthHeight * (3 * widthHeight + 5)",
    "EigenValuesVectors": "widthHeight * (3 * widthHeight + 5)",
}
# Plain `dst`: one number an item, or for these stems the product of the
# member's sizes an item (the packed elements of Extract).
PACKED_DST_STEMS = {"Extract"}

# Members documented to leave a test out that their like members have: the
# driver never makes these arguments invalid, as the member would take them.
# (member, operand or None for all, field)
UNTESTED = [
    ("orlmAdd_vaca_32f_P", "src", "s0"),
    ("orlmAdd_vca_64f_P", None, "off"),
    ("orlmSub_cav_32f_P", None, "off"),
]

ROLE = {"p": "Base", "s0": "S0", "s1": "S1", "s2": "S2", "off": "Off"}
LAY = {"": "S", "P": "P", "L": "L"}


def size_names(m):
    return [it.name for it in m.items if isinstance(it, Arg) and it.ctype == "int" and it.name != "count"]


def opd_extent(fam, m, it, sizes):
    if (fam.key, it.name) in RESULT_EXTENTS and not (fam.key == "dotcross" and m.stem == "DotProduct"):
        return RESULT_EXTENTS[(fam.key, it.name)]
    k = it.kind[0]
    stem = it.prefix if it.prefix and it.prefix != "dst" else it.name
    if k == "c":
        return ("1", "1")
    if f"{stem}Length" in sizes:
        return ("1", f"{stem}Length")
    if f"{stem}Width" in sizes:
        return (f"{stem}Height", f"{stem}Width")
    if "widthHeight" in sizes:
        return ("1", "widthHeight") if k == "v" else ("widthHeight", "widthHeight")
    if k == "v":
        return ("1", "length")
    return ("width", "height") if k == "t" else ("height", "width")


def plain_extent(m, it, sizes):
    if it.name == "buffer":
        return BUFFER_OF_STEM[m.stem]
    if it.name == "dst":
        return " * ".join(sizes + ["cnt"]) if m.stem in PACKED_DST_STEMS else "cnt"
    return PLAIN_EXTENTS[it.name]


def statuses(m, sizes):
    fields = [f for it in m.items if not isinstance(it, Arg) for f in it.fields(op_layout(m, it))]
    have = {"Ok", "NullPointer"} | set(COMPUTED.get(m.stem, []))
    if any(isinstance(it, Arg) and it.name == "count" for it in m.items):
        have.add("Count")
    if sizes:
        have.add("Size")
    if len(sizes) >= 2:
        have.add("SizeMismatch")
    if any(f[0] in ("s0", "s1", "s2") for f in fields):
        have.add("Stride")
    if any(f[0] == "off" for f in fields):
        have.add("Offset")
    return " | ".join(f"bit(orlStatus{s})" for s in STATUS_BITS if s in have)


def member_entry(i, fam, m):
    T = ELEM[m.type]
    sizes = size_names(m)
    params, opnds, exts, casts = [], [], [], []
    groups = m.param_groups()
    for it, group in zip(m.items, groups):
        if isinstance(it, Arg):
            ctype = group[0][0]
            if ctype == "int":
                role = "Count" if it.name == "count" else "Size"
                params.append(f"{{Role::{role}, -1, true}}")
                casts.append(f"s[{len(casts)}].i")
                continue
            o = len(opnds)
            written = not ctype.startswith("const")
            el = "I32" if "int32_t" in ctype else "T"
            opnds.append(f'{{\'b\', false, \'S\', {str(written).lower()}, El::{el}, "{it.name}"}}')
            exts.append(f"e[{o}] = {{1, {plain_extent(m, it, sizes)}}};")
            params.append(f"{{Role::Base, {o}, true}}")
            casts.append(f"({ctype})s[{len(casts)}].p")
            continue
        o = len(opnds)
        lay = op_layout(m, it)
        opnds.append(f"{{'{it.kind[0]}', {str(it.kind.endswith('a')).lower()}, '{LAY[lay]}', "
                     f"{str(it.result).lower()}, El::T, \"{it.name}\"}}")
        rows, cols = opd_extent(fam, m, it, sizes)
        exts.append(f"e[{o}] = {{{rows}, {cols}}};")
        for (f, _, r), (ctype, _) in zip(it.fields(lay), group):
            tested = "false" if any(n == m.name and on in (None, it.name) and fl == f for n, on, fl in UNTESTED) \
                else "true"
            if r == "value":
                params.append(f"{{Role::Value, {o}, false}}")
                casts.append(f"({T})s[{len(casts)}].d")
            elif r in ("ptr", "tbl"):
                params.append(f"{{Role::{'Table' if r == 'tbl' else 'Base'}, {o}, true}}")
                casts.append(f"({ctype})s[{len(casts)}].p")
            else:
                params.append(f"{{Role::{ROLE[f]}, {o}, {tested}}}")
                casts.append(f"s[{len(casts)}].i")
    kinds = [it.kind for it in m.items if not isinstance(it, Arg)]
    t1 = "true" if kinds and kinds[0].startswith("t") else "false"
    t2 = "true" if len(kinds) > 1 and kinds[1].startswith("t") else "false"
    vals = "".join(f"const long {n} = a[{j}]; (void){n}; " for n, j in
                   ((it.name, idx) for idx, it in enumerate(_flat(m)) if it is not None))
    out = [f"static orlStatus call{i}(const Slot* s) {{ return {m.name}({', '.join(casts)}); }}",
           f"static void ext{i}([[maybe_unused]] const long* a, Ext* e) {{ const bool t1 = {t1}, t2 = {t2}; "
           f"(void)t1; (void)t2; {vals}const long cnt = {'count' if 'count' in _names(m) else '1'}; "
           f"(void)cnt; {' '.join(exts)} }}",
           f"static const Param params{i}[] = {{{', '.join(params)}}};",
           f"static const Operand opnds{i}[] = {{{', '.join(opnds)}}};"]
    row = (f'{{"{m.name}", "{fam.key}", {"true" if m.type == "64f" else "false"}, '
           f"reinterpret_cast<void (*)()>(&{m.name}), {len(params)}, params{i}, {len(opnds)}, opnds{i}, "
           f"ext{i}, call{i}, {statuses(m, sizes)}}}")
    return "\n".join(out), row


def _flat(m):
    """Per C parameter: the plain int Arg it is, or None."""
    out = []
    for it, group in zip(m.items, m.param_groups()):
        if isinstance(it, Arg) and group[0][0] == "int":
            out.append(it)
        else:
            out += [None] * len(group)
    return out


def _names(m):
    return [it.name for it in m.items if isinstance(it, Arg)]


def table_text(families, keys):
    bodies, rows = [], []
    n = 0
    for fam in families:
        if not fam.built or fam.key not in keys:
            continue
        for m in fam.members:
            body, row = member_entry(n, fam, m)
            bodies.append(body)
            rows.append(row)
            n += 1
    return ("// Generated by api/orlgen.py fuzz-table from api/members.py: the fuzz driver's member table.\n"
            '#include "harness.h"\n\nnamespace fz {\n\n' + "\n\n".join(bodies) +
            "\n\nconst Member kMembers[] = {\n    " + ",\n    ".join(rows) + "\n};\n"
            f"const int kMemberCount = {n};\n\n}}  // namespace fz\n")
