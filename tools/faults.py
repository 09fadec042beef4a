#!/usr/bin/env python3
"""Seeded faults: does the test suite notice when the library is wrong?

Applies one fault at a time to a copy of the tree (the working tree as it
is, uncommitted changes included; the tree itself is never modified),
rebuilds incrementally in one reusable build directory, runs the test
programs of the first four families and of the frame, and prints for each
fault whether a test program failed (caught) or all passed (missed).

    python3 tools/faults.py                 # every fault
    python3 tools/faults.py --only lu mul   # faults whose file or text match
    python3 tools/faults.py --list          # the table, nothing built
    python3 tools/faults.py --compare REV   # also the test programs of commit REV
    python3 tools/faults.py --families "chol;qr" --only chol qr   # other families

--families names the families to build and whose test programs to run
(each family's tests/<family>_test.cpp and tests/<family>_*_test.cpp, plus
the frame's); by default the first four.

For developers, not for CI: a full run rebuilds each source file a few times.
"""
import argparse
import glob
import hashlib
import os
import shutil
import subprocess
import sys
import tempfile
import time

FAMILIES = "addsub;mul;lu;lubacksubst"

AS = "src/elementwise/addsub.cpp"
MUL = "src/products/mul.cpp"
LU = "src/solvers/lu.cpp"
BS = "src/solvers/lubacksubst.cpp"
DISP = "src/frame/dispatch.h"
VAL = "src/frame/validate.h"
NUM = "src/frame/numeric.h"
OPD = "src/frame/operand.h"
ELIM = "src/solvers/elimination.h"

# (file, exact old text, new text, what the fault does)
FAULTS = [
    (AS, "static_cast<E>(static_cast<Acc>(a) - static_cast<Acc>(b))",
     "static_cast<E>(static_cast<Acc>(a) + static_cast<Acc>(b))", "subtraction adds"),
    (AS, "_mm_sub_ps(x, y)", "_mm_sub_ps(y, x)", "packed 32f rows subtract the wrong way round"),
    (AS, '{Op::Add, "mam", Lay::Std, "NCTZ"}', '{Op::Add, "mam", Lay::Std, "NCZT"}',
     "Add mam order string: Z and T swapped"),
    (AS, "both(36864, 18432, 18432, 18432, 9216, Test::GE)", "both(36864, 18432, 18432, 18432, 9216, Test::GT)",
     "add/sub limit test >= made >"),
    (AS, "both(36864, 18432, 18432, 18432, 9216, Test::GE)", "both(36864, 18432, 18432, 18432, 9215, Test::GE)",
     "add/sub _P limit off by one"),
    (AS, "Wrap(2) * count + 1", "Wrap(2) * count", "add/sub cost of a shared operand off by one"),
    (AS, "case Var::Unit: return array && !vector;", "case Var::Unit: return !vector;",
     "64f single-item unit kernel sums in extended"),
    (AS, '{Op::Add, "mat", Ty::F32, Var::Unit, k456}', '{Op::Add, "mat", Ty::F32, Var::Unit, k345}',
     "form table row of Add mat 32f off by one size"),
    (MUL, "return {A::trans ? w1 : h1, B::trans ? h2 : w2,", "return {A::trans ? h1 : w1, B::trans ? h2 : w2,",
     "letter table: M of the first source swapped"),
    (MUL, "w2 * h2 + (h2 + w1) * h1 * n; }}", "w2 * h2 + (w2 + w1) * h1 * n; }}", "cost of mat uses the wrong size"),
    (MUL, "{6,     6,     6,     6,     6,    Test::GT}", "{6,     6,     6,     6,     6,    Test::GE}",
     "32f limit test > made >="),
    (MUL, '"mt mta tta",                                                 {X, X, X,   X}',
     '"mt mta tta",                                                 {P, X, X,   X}',
     "kernel table: mt 32f size 3 given the packed kind"),
    (MUL, '{F64, Var::L,    "tta",                                                        {G, G, G,   G}, Blocked}',
     '{F64, Var::L,    "tta",                                                        {G, G, G,   G}, Through}',
     "kernel table: general path of tta 64f _L through the destination"),
    (MUL, "(path == Path::Mix && j == 4)", "(path == Path::Mix && j == 3)", "mixed kind: extended column off by one"),
    (MUL, "c.R = s.K == s.K2;", "c.R = true;", "size-match guard removed"),
    (MUL, "case 3: rowBlocks<E, 3>(x, y, z, M4, N, K); break;", "case 3: rowBlocks<E, 2>(x, y, z, M4, N, K); break;",
     "blocked: three rows left over done as two"),
    (LU, "constexpr PathRule kUnrolled{0x1p-125f, 0x1p-1021, Pass::AtLeast,",
     "constexpr PathRule kUnrolled{0x1p-125f, 0x1p-1021, Pass::Above,", "unrolled pivot test >= made >"),
    (LU, "constexpr PathRule kGeneral {0x1p-23f,", "constexpr PathRule kGeneral {0x1p-22f,",
     "general 32f tolerance off by a factor of two"),
    (ELIM, "if (m > p.mag) p = {i, m};", "if (m >= p.mag) p = {i, m};", "ties take the later row"),
    (LU, "Pass::AtLeast, true,  Final::FixedLast", "Pass::AtLeast, true,  Final::PermLast",
     "unrolled final test at the pivoted element"),
    (LU, "Pass::AtLeast, true,", "Pass::AtLeast, false,", "unrolled path tests before the exchange"),
    (LU, "Final::FixedLast, Upd::FirstStage}", "Final::FixedLast, Upd::AllStages}",
     "unrolled updates all extended (wrong numeric kind)"),
    (LU, "if (st != orlStatusOk) return st;\n    }\n    return orlStatusOk;", "(void)st;\n    }\n    return orlStatusOk;",
     "arrays go on after a failing item (guard removed)"),
    (LU, "if (st == orlStatusOk)\n            for (int i = 0; i < N; ++i)", "for (int i = 0; i < N; ++i)",
     "_P writes the copy after a failure (guard removed)"),
    (BS, "y[i] = y[i] * inv[i];", "y[i] = y[i] / a[i][i];", "unrolled path divides (wrong rounding)"),
    (BS, "dst(i) = rhs(p[i]) - sum;", "dst(i) = rhs(i) - sum;", "general path reads rhs without perm"),
    (BS, "for (int j = N - 1; j > i; --j) y[i] = y[i] - a[i][j] * y[j];",
     "for (int j = i + 1; j < N; ++j) y[i] = y[i] - a[i][j] * y[j];", "unrolled backward terms in ascending order"),
    (BS, "both(1700, 1700, 1700, 1700, 1700, Test::GT)", "both(1700, 1700, 1700, 1700, 1700, Test::GE)",
     "back-substitution limit test > made >="),
    (BS, "(Wrap(n) + Wrap(2) * items) * n", "(Wrap(n) + items) * n", "mva cost formula wrong"),
    (BS, "{perm, S::array ? n : 0}", "{perm, n}", "mva steps through perm per item"),
    (DISP, "chunk + (i < rest ? 1 : 0)}", "chunk + (i <= rest ? 1 : 0)}", "driver slice boundary off by one"),
    (VAL, "return (s & std::ptrdiff_t(sizeof(Elem) - 1)) == 0 && s >= 1;",
     "return (s & std::ptrdiff_t(sizeof(Elem) - 1)) == 0 && s >= 0;", "stride of 0 accepted"),
    (VAL, 'return l == Lay::Std ? "NCZT" : "NCZTO";', 'return l == Lay::Std ? "NCZT" : "NCZOT";',
     "general order: T and O swapped"),
    (NUM, "        d = E(0);\n        E r = E(0);", "        E r = E(0);", "running kind: destination not cleared first"),
]

# invert, det
INV = "src/solvers/invert.cpp"
DET = "src/solvers/det.cpp"
EXP = "src/solvers/expansion.h"
FAULTS += [
    (INV, "kOrder1Single = Sense::NotAbove;", "kOrder1Single = Sense::NotAtLeast;", "invert order 1 single test > made >="),
    (INV, "Recip::Division, 108}", "Recip::Division, 107}", "invert 64f plain order 3 tolerance off by one unit"),
    (INV, "kScan5[5] = {3, 2, 1, 0, 4};", "kScan5[5] = {1, 2, 3, 0, 4};", "invert block order 5: pivot columns scanned in the wrong order"),
    (INV, "kEliminationDet = Sense::TolAtLeast;", "kEliminationDet = Sense::TolAbove;", "invert elimination determinant test >= made >"),
    (INV, "c = tol >= std::fabs(x) ? tol : c * (x * sign);", "c = tol >= std::fabs(x) ? E(0) : c * (x * sign);",
     "invert elimination: a vanishing cofactor gives 0, not the tolerance"),
    (INV, "q = rule.recip == Recip::Estimate ? reciprocalEstimate(D) : E(1) / D;", "q = E(1) / D;",
     "invert 32f adjugate divides where it takes the estimate (wrong numeric kind)"),
    (INV, "for (int j = 0; j < N; ++j) std::swap(inv[0][j], inv[pc][j]);", "(void)pc;",
     "invert block: the column exchange is not undone in the inverse"),
    (INV, "(Wrap(2) * count * n)", "(Wrap(2) * count)", "invert cost uses the wrong size"),
    (DET, "if (N == 4) return mask == 0b0011;", "if (N == 4) return mask == 0b1100;", "det order 4 extended: the wrong minor parked"),
    (DET, "eliminateBuffer<Mult::Division>", "eliminateBuffer<Mult::Reciprocal>", "det elimination multiplies by 1/pivot (wrong rounding)"),
    (DET, "{Expansion::LastRowElem, OnSmallPivot::ZeroSign};", "{Expansion::LastRowElem, OnSmallPivot::ZeroResult};",
     "det arrays end with 0.0 at a small pivot"),
    (EXP, "C == Cols::Descending ? N - 1 - i : i;", "C == Cols::Descending ? i : i;",
     "element-type expansion in ascending columns (wrong summation order)"),
]

# eigbufsize, eigsym, eigvalues, eigvectors, chol, cholbacksubst, qr, qrbacksubst
CH, CHB, QR, QRB, HH = ("src/solvers/chol.cpp", "src/solvers/cholbacksubst.cpp", "src/solvers/qr.cpp",
                        "src/solvers/qrbacksubst.cpp", "src/solvers/householder.h")
ESYM, EFR, ESTEP = "src/eigensolvers/eigsym.cpp", "src/eigensolvers/eigenframe.h", "src/eigensolvers/eigsteps.h"
FAULTS += [
    (CH, "if (!(t > t0)) return orlStatusNotPosDefinite;", "if (!(t >= t0)) return orlStatusNotPosDefinite;",
     "Cholesky pivot test > made >="),
    (CH, "constexpr RsqRow k32Single     {Rsq::Extended, Rsq::Estimate};",
     "constexpr RsqRow k32Single     {Rsq::Estimate, Rsq::Estimate};",
     "Cholesky 32f single size 3: estimate instead of extended (wrong numeric kind)"),
    (CH, "constexpr LimitRow kLimits{{7500, 7500, 2000,  2000,  2000, Test::GT},",
     "constexpr LimitRow kLimits{{7500, 7500, 2000,  2000,  2000, Test::GE},", "Cholesky 32f limit test > made >="),
    (CHB, 'return mva && lay == Lay::L ? "NTOZC" : generalOrder(array, lay);',
     'return mva && lay == Lay::L ? "NTOCZ" : generalOrder(array, lay);',
     "Cholesky back-substitution mva _L order string: Z and C swapped"),
    (QR, "if (kEps<E> > std::fabs(norm2)) return orlStatusDivByZero;",
     "if (kEps<E> >= std::fabs(norm2)) return orlStatusDivByZero;", "QR squared-norm test > made >="),
    (HH, "constexpr int reflectors(int w, int h) { return w < h ? w : w - 1; }",
     "constexpr int reflectors(int w, int h) { return w <= h ? w : w - 1; }",
     "QR reflector count off by one on square matrices"),
    (QRB, "(S::array ? (w * h + w + h) * n : w * h + (w + h) * n)", "(S::array ? (w * h + w) * n : w * h + (w + h) * n)",
     "QR back-substitution mava cost formula wrong"),
    (ESYM, "{Fam::EigenValuesVectorsSym, Shape::m,  32, only(Var::S2), Dep::TopDownShiftSignAtZero},",
     "{Fam::EigenValuesVectorsSym, Shape::m,  32, only(Var::Unit), Dep::TopDownShiftSignAtZero},",
     "symmetric eigen: shift departure given to the wrong kernel"),
    (ESYM, "if (v[j] > v[best]) best = j;", "if (v[j] >= v[best]) best = j;",
     "symmetric eigen: equal values sorted last first"),
    (EFR, '{"NZCT0T1T2", "NZCO0T0O1O2T1T2", "NZCO0T0O1O2T1T2"}', '{"NZCT0T1T2", "NZCO0T0O1T1O2T2", "NZCO0T0O1O2T1T2"}',
     "general eigen vectors _P order string: O2 and T1 swapped"),
    (ESTEP, "for (int k = 1; k < ki; ++k) X[k - 1] = -T(k, ki);", "for (int k = 1; k < ki; ++k) X[k - 1] = T(k, ki);",
     "right eigenvectors: right-hand side of a real value with the wrong sign"),
    (EFR, "const int k = q == Query::EigenValuesGetBufSize ? 1 : 3;",
     "const int k = q == Query::EigenValuesGetBufSize ? 1 : 2;", "vectors buffer-size query too small"),
]

# matrix-vector products, scaling, dot and cross products, norms and trace, the affine transform
MV, SC, DC, NR, AF = ("src/products/mulvec.cpp", "src/products/scale.cpp", "src/products/dotcross.cpp",
                      "src/products/norms.cpp", "src/products/affine.cpp")
FAULTS += [
    (MV, '{Mul, F32, Var::Unit, "tav tava",           {Col,   Col,   Col,   Col}',
     '{Mul, F32, Var::Unit, "tav tava",           {Col,   Row,   Col,   Col}', "kernel table: tav 32f size 4 given the row tree"),
    (MV, "c.R = w == l2 && h == l3;", "c.R = w == l2;", "Gaxpy: addend length match removed"),
    (MV, "kGaxpyLimits = both(5000, 5000, 5000, 5000, 5000, Test::GT)",
     "kGaxpyLimits = both(5000, 5000, 5000, 5000, 5000, Test::GE)", "Gaxpy limit test > made >="),
    (SC, "constexpr bool runs = unitStep(V) && !S::trans;", "constexpr bool runs = unitStep(V);",
     "transposed sources scaled as contiguous rows"),
    (SC, "return l * n + l + n; }", "return l * n + l; }", "vca cost formula off by the count"),
    (DC, '"(p0+p1)+(p2+p3)"', '"(p0+p2)+(p1+p3)"', "dot form table: vav 32f length 4 in the wrong order"),
    (DC, '{"vav", Lay::L, "NTOC"}', '{"vav", Lay::L, "NTCO"}', "cross vav _L order string: O and C swapped"),
    (DC, "if constexpr (unit) {\n            const E a0", "if constexpr (true) {\n            const E a0",
     "cross product: strided kernels in element precision (wrong numeric kind)"),
    (NR, "case Guard::AtLeast: if (!(s >= kEps<E>))", "case Guard::AtLeast: if (!(s > kEps<E>))",
     "Frobenius guard at least eps made above eps"),
    (NR, '"((q0+q2)+q4)+((q1+q3)+q5)"}, Root::Refined', '"((q0+q1)+(q2+q3))+(q4+q5)"}, Root::Refined',
     "L2 table: va 32f length 6 in the order of v"),
    (NR, "kMatLimits{{20000, 20000, 40000,", "kMatLimits{{20000, 20000, 20000,", "32f _L unit matrix limit row off"),
    (AF, "if (std::fabs(w) > kTiny)", "if (std::fabs(w) >= kTiny)", "affine unit kernel: w test > made >="),
]


# Vector add/sub, Saxpy and LComb, Copy, Extract, LoadIdentity, Transpose.
SX = "src/elementwise/saxpy.cpp"
CP = "src/elementwise/copy.cpp"
EX = "src/elementwise/extract.cpp"
TR = "src/elementwise/transpose.cpp"
FAULTS += [
    (AS, '{Op::Add, "vav", Lay::Std, "NZTC"}', '{Op::Add, "vav", Lay::Std, "NZCT"}',
     "Add vav order string: C and T swapped"),
    (AS, '{"cva", 0, 0, 2, 1},', '{"cva", 0, 0, 2, 0},', "vector cost of cva off by one"),
    (AS, "case Var::Unit: return array && !vector;", "case Var::Unit: return array;",
     "64f unit-stride vector arrays sum in extended"),
    (SX, "{Stem::Saxpy, \"vva\", Ty::F32,      R,        X,          R,      X,        R},",
     "{Stem::Saxpy, \"vva\", Ty::F32,      R,        X,          R,      X,        X},",
     "class table: Saxpy vva 32f _S2/_LS2/_P given class X"),
    (SX, "constexpr Sizes kForms{3, 4, 5, 6};", "constexpr Sizes kForms{3, 4, 5};",
     "straight-line sizes one short (6 takes the general class)"),
    (SX, "P::add(p, P::mul(P::splat(v2), P::load(y + j)))", "P::add(p, P::mul(P::splat(v1), P::load(y + j)))",
     "packed LComb scales the second vector by the first value"),
    (CP, '{Lay::P,   "NZOCS", "NZCOS"},', '{Lay::P,   "NZCOS", "NZCOS"},', "LoadIdentity 32f _P order: O and C swapped"),
    (CP, "c.S = count <= 1 || (stride0Ok(src) && stride0Ok(dst));", "c.S = stride0Ok(src) && stride0Ok(dst);",
     "Copy tests stride0 with one item (guard removed)"),
    (CP, "if ((height == 1 || (s1 == row && d1 == row))", "if ((height <= 2 || (s1 == row && d1 == row))",
     "Copy moves two padded rows as one block"),
    (EX, "const int i = S::trans ? c : r, j = S::trans ? r : c;", "const int i = r, j = c;",
     "Extract _P writes a transposed source as stored"),
    (TR, "for (int r = r4; r < rows; ++r)", "for (int r = r4 + 1; r < rows; ++r)",
     "32f band tiles: first row left over skipped"),
    (TR, "return c != 0 && total > c - c / 4;", "return c == 0 || total > c - c / 4;",
     "array streams when the cache size is unknown (sense flipped)"),
]


def sh(cmd, cwd=None, timeout=None, log=None):
    try:
        r = subprocess.run(cmd, cwd=cwd, timeout=timeout, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    except subprocess.TimeoutExpired:
        return None, "timed out"
    if log:
        with open(log, "a") as f:
            f.write(f"$ {' '.join(cmd)}\n{r.stdout}\n")
    return r.returncode, r.stdout


def write_if_changed(path, data):
    """Rewrite a file only when its bytes change, so that a reused build does not redo it."""
    if not (os.path.exists(path) and open(path, "rb").read() == data):
        with open(path, "wb") as f:
            f.write(data)


def sync(root, dst):
    """Copy the working tree into dst, rewriting only files that differ, so
    that the build there stays incremental."""
    files = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=root, check=True,
                           stdout=subprocess.PIPE).stdout.decode().split("\0")
    for rel in filter(None, files):
        if os.path.isfile(os.path.join(root, rel)):
            data = open(os.path.join(root, rel), "rb").read()
        else:
            continue
        out = os.path.join(dst, rel)
        if os.path.exists(out) and open(out, "rb").read() == data:
            continue
        os.makedirs(os.path.dirname(out), exist_ok=True)
        with open(out, "wb") as f:
            f.write(data)


def main():
    ap = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    ap.add_argument("--work", help="directory for the copy and the build (reused between runs)")
    ap.add_argument("--only", nargs="*", help="only faults whose file, text or description contain one of these")
    ap.add_argument("--pick", help="only these faults, by number in --list (e.g. 1,4,9)")
    ap.add_argument("--compare", metavar="REV",
                    help="also run the test programs of commit REV against each faulted library, as a second column")
    ap.add_argument("--timeout", type=int, default=300, help="seconds for one test program")
    ap.add_argument("--jobs", type=int, default=2)
    ap.add_argument("--list", action="store_true")
    ap.add_argument("--families", default=FAMILIES, help='families to build and test, e.g. "chol;qr"')
    args = ap.parse_args()
    families = args.families
    here = os.path.dirname(os.path.abspath(__file__))
    # Each family's program and the programs of its parts (tests/<family>_*_test.cpp), as CMake finds them.
    tests = os.path.join(here, "..", "tests")
    PROGRAMS = ["frame_test"] + [os.path.basename(p)[:-4] for f in families.split(";")
                                 for p in [os.path.join(tests, f + "_test.cpp")] + sorted(glob.glob(os.path.join(tests, f + "_*_test.cpp")))
                                 if os.path.exists(p)]

    root = subprocess.run(["git", "rev-parse", "--show-toplevel"], cwd=os.path.dirname(os.path.abspath(__file__)),
                          check=True, stdout=subprocess.PIPE, text=True).stdout.strip()
    numbered = list(enumerate(FAULTS, 1))
    if args.pick:
        wanted = {int(x) for x in args.pick.split(",")}
        numbered = [(n, f) for n, f in numbered if n in wanted]
    if args.only:
        numbered = [(n, f) for n, f in numbered if any(w in f[0] or w in f[1] or w in f[3] for w in args.only)]
    if args.list:
        for n, (path, old, new, what) in numbered:
            print(f"{n:3} {path:32} {what}")
        return 0

    work = args.work or os.path.join(tempfile.gettempdir(), "orlm-faults-" + hashlib.md5(root.encode()).hexdigest()[:8])
    tree, build, log = os.path.join(work, "tree"), os.path.join(work, "build"), os.path.join(work, "log.txt")
    os.makedirs(tree, exist_ok=True)
    open(log, "w").close()
    sync(root, tree)
    suites = {"now": PROGRAMS}
    if args.compare:
        # The other suite's programs beside this one's, against the same library.
        suites[args.compare] = []
        cml = open(os.path.join(root, "tests", "CMakeLists.txt")).read()
        for prog in PROGRAMS:
            text = subprocess.run(["git", "show", f"{args.compare}:tests/{prog}.cpp"], cwd=root, check=True,
                                  stdout=subprocess.PIPE).stdout
            name = "cmp_" + prog
            write_if_changed(os.path.join(tree, "tests", name + ".cpp"), text)
            cml += f"\norlm_test({name} {name}.cpp)\n"
            suites[args.compare].append(name)
        write_if_changed(os.path.join(tree, "tests", "CMakeLists.txt"), cml.encode())
    targets = [p for progs in suites.values() for p in progs]
    print(f"tree copy {tree}, build {build}, log {log}", flush=True)

    for n, (path, old, new, what) in numbered:
        count = open(os.path.join(tree, path)).read().count(old)
        if count != 1:
            print(f"fault table out of date: {n} '{what}': old text found {count} times in {path}")
            return 2

    # The library at -O0: the faults are in the logic, and -O0 builds several
    # times faster. Test programs keep their own -O1 and are not relinked
    # when only the library changes.
    if not os.path.exists(os.path.join(build, "build.ninja")):
        rc, out = sh(["cmake", "-S", tree, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=RelWithDebInfo",
                      "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O0", "-DCMAKE_C_FLAGS_RELWITHDEBINFO=-O0",
                      "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", f"-DORLM_FAMILY_FILTER={families}",
                      "-DORLM_EXAMPLES=OFF"], log=log)
        if rc != 0:
            print(out)
            return 2

    def run_suite(progs, first):
        # The family's own program first: most faults stop there.
        for prog in sorted(progs, key=lambda p: not p.endswith(first)):
            rc, out = sh([os.path.join(build, "tests", prog), "--gtest_brief=1", "--gtest_fail_fast"],
                         timeout=args.timeout, log=log)
            if rc != 0:
                line = next((l for l in out.splitlines() if "Failure" in l or "FAILED" in l), out.strip()[-80:])
                return "caught", f"{prog}: {'timeout' if rc is None else line.strip()[:70]}"
        return "missed", ""

    def build_and_test(first=""):
        rc, out = sh(["cmake", "--build", build, f"-j{args.jobs}", "--target"] + targets, log=log)
        if rc != 0:
            return {name: ("no build", "") for name in suites}
        return {name: run_suite(progs, first) for name, progs in suites.items()}

    t0 = time.time()
    base = build_and_test()
    if any(v != "missed" for v, _ in base.values()):
        print(f"the unmodified tree does not build and pass ({base}); see {log}")
        return 2
    print(f"unmodified tree builds and passes ({time.time() - t0:.0f} s)", flush=True)
    print("  #  " + "  ".join(f"{name:8}" for name in suites) + "file / fault", flush=True)

    results = []
    for n, (path, old, new, what) in sorted(numbered, key=lambda x: x[1][0]):  # one rebuild a fault within a file
        file = os.path.join(tree, path)
        original = open(file).read()
        with open(file, "w") as f:
            f.write(original.replace(old, new, 1))
        t0 = time.time()
        try:
            family = os.path.splitext(os.path.basename(path))[0]
            got = build_and_test(family + "_test" if "/frame/" not in path else "frame_test")
        finally:
            with open(file, "w") as f:
                f.write(original)
        results.append((n, what, got))
        why = "; ".join(w for _, w in got.values() if w)
        print(f"{n:3}  " + "  ".join(f"{v:8}" for v, _ in got.values())
              + f"{path} {what} ({time.time() - t0:.0f} s) {why}", flush=True)

    print()
    for name in suites:
        verdicts = [got[name][0] for _, _, got in results]
        built = [v for v in verdicts if v != "no build"]
        print(f"{name}: caught {built.count('caught')} of {len(built)} faults"
              + (f" ({len(verdicts) - len(built)} did not build)" if len(built) < len(verdicts) else ""))
        for n, what, got in results:
            if got[name][0] == "missed":
                print(f"  missed {n}: {what}")
    return 0 if all(got[name][0] != "missed" for _, _, got in results for name in suites) else 1


if __name__ == "__main__":
    sys.exit(main())
