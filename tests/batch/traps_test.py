"""What archives, editors and transfers make of files, and what becomes of it: `vorn check` names it, `vorn check
--repair` gives a copy that holds every ring, or says why not. Cores and rings are counted by readers of this file,
which know nothing of the program's.

Called with the program. Each specimen is made of cores that are known, spoilt in one way.
"""
import csv
import io
import os
import subprocess
import sys
import tempfile

VORN = os.path.abspath(sys.argv[1])
failures = []


# --- Cores, and how they are written

def widths(count, least=100):
    return [least + 7 * k % 53 for k in range(count)]


class Core:
    """Years from `first` on; values in the unit that the mark says, less than 0 where a ring is missing."""

    def __init__(self, name, first, values, mark):
        self.name, self.first, self.values, self.mark = name, first, values, mark

    def rings(self):
        unit = 1000.0 if self.mark == -9999 else 100.0
        return {self.first + k: None if v < 0 else round(v / unit, 4) for k, v in enumerate(self.values)}

    def lines(self, start="%-8s%4d", width=6, from_decades=True, mark=True):
        out, line = [], None
        for k, value in enumerate(self.values + ([self.mark] if mark else [])):
            year = self.first + k
            if line is None or (year if from_decades else k) % 10 == 0:
                out += [line] if line else []
                line = start % (self.name, year)
            line += "%*d" % (width, value)
        return out + [line]

    def decimals(self, digits):
        return [line[:12] + "".join(
            "%6s" % field.strip() if int(field) == self.mark else "%6.*f" % (digits, int(field) / 100)
            for field in (line[k:k + 6] for k in range(12, len(line), 6))) for line in self.lines()]


A = Core("OAK1", 1903, widths(47), 999)
B = Core("OAK2", 1913, widths(44, 60), -9999)
C = Core("OAK3", 1890, widths(65, 80), 999)
ALL = [A, B, C]


def text(*parts):
    lines = []
    for part in parts:
        lines += part.lines() if isinstance(part, Core) else [part] if isinstance(part, str) else part
    return "".join(line + "\n" for line in lines)


def by_words(core, between):
    return [between.join([line[:8].strip(), line[8:12].strip()] + line[12:].split()) for line in core.lines()]


def replaced(lines, number, change):
    return lines[:number] + [change(lines[number])] + lines[number + 1:]


# --- Readers: a core is (name, {year: mm, or None where it is missing})

def read_tucson(data):
    cores, at_end = [], True
    for number, line in enumerate(data.decode("latin-1").split("\n")):
        try:
            sign = -1 if line[7:8] == "-" else 1
            name, year = line[:7 if sign < 0 else 8].strip(), sign * int(line[8:12])
            values = [int(line[k:k + 6]) for k in range(12, len(line.rstrip()), 6)]
        except ValueError:
            if number >= 3 and line.strip():
                raise
            continue
        if at_end or cores[-1][0] != name:
            cores.append((name, {}))
        at_end = False
        for k, value in enumerate(values):
            at_end = value in (999, -9999) and (value < 0 or k == len(values) - 1)
            if at_end:
                unit = 1000.0 if value < 0 else 100.0
                rings = cores[-1][1]
                for of in rings:
                    rings[of] = None if rings[of] < 0 else round(rings[of] / unit, 4)
                break
            cores[-1][1][year + k] = value
    assert at_end, "no end mark"
    return cores


def read_heidelberg(data):
    cores = []
    for record in data.decode("latin-1").split("HEADER:")[1:]:
        keys, _, values = record.partition("DATA:")
        known = dict(line.strip().split("=", 1) for line in keys.split("\n") if "=" in line)
        count = int(known["Length"])
        first = int(known["DateBegin"]) if "DateBegin" in known else int(known["DateEnd"]) - count + 1
        unit = 1000.0 if "1000" in known["Unit"] else 100.0
        lines = values.split("\n")[1:]
        numbers = [int(line[k:k + 6]) for line in lines for k in range(0, len(line.rstrip()), 6)][:count]
        cores.append((known["KeyCode"].strip(),
                      {first + k: None if v < 0 else round(v / unit, 4) for k, v in enumerate(numbers)}))
    return cores


def read_compact(data):
    cores, lines = [], data.decode("latin-1").split("\n")
    while lines and lines[0].strip():
        header = lines.pop(0)
        count, first, name = int(header[1:8]), int(header[10:18]), header[21:29].strip()
        a_line, width = (int(word) for word in header[71:79].strip("()").split(".")[0].split("F"))
        numbers = []
        while len(numbers) < count:
            line = lines.pop(0)
            numbers += [int(line[k:k + width]) for k in range(0, len(line), width)][:a_line]
        cores.append((name, {first + k: None if v < 0 else v / 1000.0 for k, v in enumerate(numbers)}))
    return cores


# --- The program

def vorn(*arguments):
    return subprocess.run([VORN, *arguments], capture_output=True, check=False)


def findings(path):
    rows = list(csv.DictReader(io.StringIO(vorn("check", "--format", "csv", path).stdout.decode("latin-1"))))
    return rows, [row for row in rows if row["severity"] == "error"]


def sorted_cores(cores):
    merged = {}
    for name, rings in cores:  # stretches of one core, as far as they tell different years
        if name in merged and not merged[name].keys() & rings.keys():
            merged[name].update(rings)
        else:
            merged.setdefault(name, {}).update(rings)
    return sorted((name, sorted(rings.items())) for name, rings in merged.items())


def expect(condition, name, words):
    if not condition:
        failures.append(name + ": " + words)


def expect_cores(name, found, wanted, what):
    wanted = sorted_cores((core.name, core.rings()) for core in wanted)
    found = sorted_cores(found)
    expect(found == wanted, name, "%s: %d cores, %d rings, not %d and %d, or others" % (
        what, len(found), sum(len(c[1]) for c in found), len(wanted), sum(len(c[1]) for c in wanted)))


def as_read(path):
    converted = vorn("convert", path, "--to", "tucson")
    expect(converted.returncode == 0, path, converted.stderr.decode("latin-1"))
    return read_tucson(converted.stdout)


def look(folder, name, data, outcome, cores, named=None, words=None, unit=None, reader=read_tucson):
    """`outcome`: whole, where the program reads all; copy, where a copy holds all; asked, where there is none, and why
    is said in these words. `named`: a finding that is there, with its line."""
    path = os.path.join(folder, name.replace(" ", "_") + ".rwl")
    mended = os.path.join(folder, "mended", os.path.basename(path))
    with open(path, "wb") as out:
        out.write(data if isinstance(data, bytes) else data.encode("latin-1"))
    rows, errors = findings(path)
    said = [(row["check"], row["line"]) for row in rows]
    expect(named is None or named in said, name, "not named: %s among %s" % (named, said))
    repair = vorn("check", "--repair", "-o", os.path.dirname(mended), *(["--unit", unit] if unit else []), path)
    said = repair.stderr.decode("latin-1")
    if outcome == "whole":
        expect(not errors, name, "an error: %s" % errors)
        expect_cores(name, as_read(path), cores, "as read")
        expect(not os.path.exists(mended), name, "a copy that nobody needs")
    if outcome == "copy":
        expect(os.path.exists(mended), name, "no copy: " + said)
        if os.path.exists(mended):
            expect(not findings(mended)[1], name, "the copy has errors")
            with open(mended, "rb") as copy:
                expect_cores(name, reader(copy.read()), cores, "the copy")
            expect_cores(name, as_read(mended), cores, "the copy as read")
    if outcome == "asked":
        expect(not os.path.exists(mended) and repair.returncode == 4, name, "a copy, or no word")
        expect("no copy: " in said and words in said, name, "not said: %s in %s" % (words, said))
    with open(path, "rb") as original:
        expect(original.read() == (data if isinstance(data, bytes) else data.encode("latin-1")), name, "changed")
    return said


def tucson(trial):
    plain = text(*ALL)
    note = "Some words about the core that follows"
    trial("plain", plain, "whole", ALL)
    # Lines that are no data.
    trial("blank line between", text(A, "", B, C), "copy", ALL, ("behind-end", "7"))
    trial("blank line within", text(A.lines()[:3], "", A.lines()[3:], B, C), "copy", ALL, ("behind-end", "4"))
    trial("line of blanks within", text(A.lines()[:3], " " * 20, A.lines()[3:], B, C), "copy", ALL)
    trial("tab alone", text(A, "\t", B, C), "copy", ALL, ("tab", "7"))
    trial("first line blank", text("", A, B, C), "whole", ALL)
    trial("four blank lines first", text(["", "", "", ""], A, B, C), "copy", ALL)
    for count in (1, 2):
        trial("%d header lines" % count, text([note] * count, A, B, C), "whole", ALL)
    for count in (4, 5, 12):
        trial("%d header lines" % count, text([note] * count, A, B, C), "copy", ALL)
    trial("template", text(["# NOAA line %d" % k for k in range(99)], A, B, C), "copy", ALL, ("imported", ""))
    trial("blank lines in the header", text(note, "", note, "", A, B, C), "copy", ALL)
    trial("notes in the middle", text(A, note, "and more", B, C), "copy", ALL, ("no-decade", "7"))
    trial("note within a core", text(A.lines()[:3], "# glued here", A.lines()[3:], B, C), "copy", ALL)
    trial("note at the end", text(A, B, C, note), "copy", ALL, ("no-decade", "19"))
    trial("note behind a blank line", text(A, B, C, "", note), "whole", ALL, ("no-decade", "20"))
    trial("statistics at the end", text(A, B, C, "OAK    498 .7494   .2927  .5110"), "copy", ALL)
    # Columns.
    trial("tabs", text(*(by_words(core, "\t") for core in ALL)), "copy", ALL, ("tab", "1"))
    trial("tabs on a line", text(A, replaced(B.lines(), 2, lambda line: by_words(B, "\t")[2]), C), "copy", ALL)
    trial("semicolons", text(*(by_words(core, ";") for core in ALL)), "copy", ALL)
    for length in (6, 7, 8):
        core = Core("ABCDEFGH"[:length], 1903, widths(47), 999)
        trial("name of %d" % length, text(core, B), "whole", [core, B])
    long_name = Core("ABCDEFGHI", 1903, widths(47), 999)
    for place, parts in (("first", (long_name.lines("%-9s%4d"), B)), ("last", (B, long_name.lines("%-9s%4d")))):
        trial("name of 9 " + place, text(*parts), "asked", [], words="may hold data")
    trial("name of 9 and a blank", text(B, long_name.lines("%-9s %4d")), "asked", [], words="its name is too long")
    blanks = Core("OAK 1 A", 1903, widths(47), 999)
    trial("blanks in a name", text(blanks, B), "whole", [blanks, B])
    touching = Core("AKK00010", 1386, widths(47), -9999)
    trial("name that touches the year", text(touching, B), "whole", [touching, B])
    left = Core("EGR108", 1713, widths(47), -9999)
    trial("a core one column to the left", text(B, left.lines("%-7s%4d")), "copy", [B, left], ("shifted", "6"))
    trial("the first core to the left", text(left.lines("%-7s%4d"), B), "copy", [left, B], ("lost-series", "1"))
    trial("the first line to the left, behind a header",
          text("A header", replaced(A.lines(), 0, lambda line: line[:7] + line[8:]), B), "copy", [A, B],
          ("header-is-data", "2"))
    trial("a name with blanks to the left", text(B, blanks.lines("%-7s%4d")), "copy", [B, blanks])
    trial("a core one column to the right", text(B, left.lines("%-9s%4d"), A), "copy", [B, left, A])
    trial("all to the right", text(*([" " + line for line in core.lines()] for core in ALL)), "copy", ALL)
    trial("columns of 5", text(B, A.lines(width=5)), "copy", [B, A])
    trial("columns of 5 that touch", text([line for line in Core("OAK1", 1903, [10000 + k for k in range(47)], -9999)
                                           .lines(width=5)]), "asked", [], words="columns of another width")
    trial("mark that touches in columns of 5", text(A.lines(width=5), B.lines(width=5)), "asked", [],
          words="line 11 may hold data")
    trial("columns of 7", text(A.lines(width=7), B.lines(width=7)), "copy", [A, B])
    negative = Core("OAK1", 1903, widths(20) + [-999, -999] + widths(20), -9999)
    trial("missing rings that touch", text(negative, A and B), "whole", [negative, B])
    wide = Core("OAK1", 1903, widths(20) + [123456, -99999] + widths(20), -9999)
    trial("wide rings that touch", text(wide, B), "whole", [wide, B], ("run-together", "3"))
    trial("blanks to column 80", text(*([line.ljust(80) for line in core.lines()] for core in ALL)), "whole", ALL)
    trial("notes behind the columns", text(A, [line.ljust(82) + "glued" for line in B.lines()], C), "whole", ALL)
    trial("notes behind the first core", text([line.ljust(82) + "glued" for line in A.lines()], B, C), "copy", ALL)
    trial("note behind the first line", text(replaced(A.lines(), 0, lambda line: line + "  x"), B, C), "copy", ALL)
    # Years.
    for first in (-384, -1384):
        early = Core("OAK1", first, widths(47), 999)
        trial("from %d on" % first, text(early.lines("%-7s%5d") if first < -999 else early, B), "whole", [early, B])
    early = Core("OAK1", -384, widths(47), 999)
    signed = [line[:7] + "-0" + line[9:] for line in early.lines()]
    trial("sign in column 8", text(signed, B), "copy", [early, B], ("header-is-data", "1"))
    apart = [line[:8] + "- " + line[10:] for line in Core("OAK1", -84, widths(47), 999).lines()]
    trial("sign apart from the year", text(apart, B), "asked", [], words="may hold data")
    trial("years of five digits", text(Core("OAK1", -10503, widths(47), 999).lines("%-6s%6d"), B), "asked", [],
          words="goes back to")
    trial("lines of ten from the first year", text(A.lines(from_decades=False), B), "copy", [A, B])
    trial("lines of ten, another core", text(B, A.lines(from_decades=False)), "copy", [B, A],
          ("decades-do-not-follow", "7"))
    lines = A.lines()
    trial("years out of order", text(lines[:2], lines[3], lines[2], lines[4:], B), "copy", [A, B])
    trial("a decade twice", text(lines[:3], lines[2:], B), "copy", [A, B], ("years-out-of-order", "4"))
    other = lines[2][:12] + "".join("%6d" % value for value in widths(10, 300))
    trial("a decade twice, otherwise", text(lines[:3], other, lines[3:], B), "asked", [], words="goes back to 1920")
    # Values and marks.
    millimetres = [Core("OAK1", 1903, widths(47), 999), Core("OAK2", 1913, widths(44, 60), 999)]
    decimal = text(*(core.decimals(2) for core in millimetres))
    trial("decimal points", decimal, "asked", [], words="--unit millimetres")
    trial("decimal points, millimetres", decimal, "copy", millimetres, unit="millimetres")
    trial("decimal points in one core", text(B, A.decimals(2)), "asked", [], ("bad-field", "6"), "--unit millimetres")
    trial("no mark", text(B, A.lines(mark=False)), "asked", [], ("no-end-mark", "6"), "choose its unit by --unit")
    trial("no mark, hundredths", text(B, A.lines(mark=False)), "copy", [B, A], unit="hundredths")
    trial("both marks", text(A, B, C), "whole", ALL)
    rings = Core("OAK1", 1903, [990 + k for k in range(47)], -9999)
    trial("rings of 999", text(rings, B), "whole", [rings, B])
    zeros = replaced(A.lines(), 5, lambda line: line + "     0" * 9)
    trial("zeros behind the mark", text(zeros, B, C), "whole", ALL, ("behind-mark", "6"))
    trial("letter for a digit", text(A, replaced(B.lines(), 2, lambda line: line.replace("   101", "   l01"))), "asked",
          [], ("bad-field", "9"), "what is its width?")
    # Names.
    later = Core("OAK1", 1963, widths(20), 999)
    trial("one name, apart", text(A, B, later), "whole", [A, B, later], ("gap", "12"))
    trial("cores that take turns", text([line for pair in zip(A.lines(), B.lines()) for line in pair], A.lines()[5:], C),
          "copy", ALL)
    same = Core("OAK1", 1903, widths(47, 70), 999)
    trial("cores of one name that take turns",
          text([line for pair in zip(A.lines(), same.lines()) for line in pair], B), "asked", [], words="goes back to")
    # Bytes.
    for name, end in (("CR CR LF", "\r\r\n"), ("CR", "\r"), ("CR LF", "\r\n")):
        trial(name, plain.replace("\n", end), "whole", ALL, ("line-ends", ""))
    for name, end in (("Ctrl-Z", "\x1a"), ("Ctrl-Z line", "\x1a\n")):
        trial(name + " at the end", plain + end, "whole", ALL, ("control-z", ""))
    trial("Ctrl-Z in the middle", text(A, "\x1a", B, C), "copy", ALL, ("control-z-inside", "7"))
    trial("Ctrl-Z before a line", text(A, replaced(B.lines(), 0, lambda line: "\x1a" + line), C), "copy", ALL)
    trial("rubbish behind Ctrl-Z", plain + "\x1a\0\0 13 garbage\n", "copy", ALL)
    trial("zero bytes at the end", plain + "\0" * 100, "copy", ALL, ("control-character", "19"))
    trial("byte order mark", "\xef\xbb\xbf" + plain, "copy", ALL, ("byte-order-mark", "1"))
    trial("byte order mark before a header", "\xef\xbb\xbfSite\n" + plain, "whole", ALL)
    for name, encoding in (("little", "utf-16-le"), ("big", "utf-16-be")):
        trial("UTF-16 " + name, ("\ufeff" + plain).encode(encoding), "asked", [], words="text in UTF-16")
        trial("UTF-16 without a mark " + name, plain.encode(encoding), "asked", [], words="text in UTF-16")
    trial("empty", "", "asked", [], words="the file is empty")
    trial("header lines alone", text(note, note, note), "asked", [], words="no layout that is known")
    trial("page of the web", "\n <HTML>\n<body>not found</body>\n", "asked", [], words="a page of the web")


OAK = "HEADER:\nKeyCode=OAK1\nUnit=1/100 mm\n"
RINGS = "".join("%6d%s" % (v, "\n" if k % 10 == 9 else "") for k, v in enumerate(widths(47))) + "     0" * 3 + "\n"
RECORD = OAK + "DateEnd=1949\nLength=47\nDATA:Tree\n" + RINGS


def heidelberg(trial_all):
    def trial(*arguments, **named):
        trial_all(*arguments, **named, reader=read_heidelberg)
    trial("heidelberg", RECORD, "whole", [A])
    trial("heidelberg, blank lines first", "\n\n" + RECORD, "copy", [A])
    trial("heidelberg, words first", "From the laboratory\n" + RECORD, "copy", [A])
    trial("heidelberg, byte order mark", "\xef\xbb\xbf" + RECORD, "copy", [A])
    trial("heidelberg, blank lines behind", RECORD + "\n\n \n", "whole", [A])
    trial("heidelberg, line without a keyword", RECORD.replace("Unit", "some words\nUnit"), "whole", [A])
    trial("heidelberg, blank line among the values", RECORD.replace("\n   117", "\n\n   117"), "copy", [A])
    words = " ".join(str(v) for v in widths(47))
    trial("heidelberg, values by blanks", RECORD.replace(RINGS, words + "\n"), "copy", [A])
    trial("heidelberg, values by tabs", RECORD.replace(RINGS, words.replace(" ", "\t") + "\n"), "copy", [A])
    trial("heidelberg, one value a line", RECORD.replace(RINGS, words.replace(" ", "\n") + "\n"), "copy", [A])
    trial("heidelberg, no length", RECORD.replace("Length=47", "DateBegin=1903"), "copy", [A])
    # What the importers read has a Tucson copy.
    trial_all("heidelberg, no length at all", RECORD.replace("Length=47\n", ""), "copy", [A])
    trial("heidelberg, too few values", RECORD.replace("Length=47", "Length=147"), "asked", [], words="50 values stand")
    trial("heidelberg, pairs", RECORD.replace("Tree", "Double"), "asked", [], words="take turns")
    trial("heidelberg, cut in a header", RECORD + OAK, "asked", [], words="a record without values")


def compact_core(core):
    out = "%8d=N%8d=I %-8s%42s(19F4.0)\n" % (len(core.values), core.first, core.name, "")
    return out + "".join("%4d%s" % (v * 10, "\n" if k % 19 == 18 or k + 1 == len(core.values) else "")
                         for k, v in enumerate(core.values))


def compact(trial_all):
    def trial(*arguments, **named):
        trial_all(*arguments, **named, reader=read_compact)
    one, two = compact_core(A), compact_core(C)
    trial("compact", one + two, "whole", [A, C])
    trial("compact, blank lines first", "\n\n" + one + two, "copy", [A, C])
    trial("compact, words first", "From the laboratory\n" + one + two, "copy", [A, C])
    trial("compact, blank line between", one + "\n" + two, "copy", [A, C])
    trial("compact, blank line among the values", one.replace("\n1270", "\n\n1270") + two, "copy", [A, C])
    trial("compact, too few values", one[:-30].rsplit("\n", 1)[0] + "\n" + two, "asked", [], words="more values")


def main():
    with tempfile.TemporaryDirectory() as folder:
        os.mkdir(os.path.join(folder, "mended"))
        count = 0

        def trial(name, data, outcome, cores, named=None, words=None, unit=None, reader=read_tucson):
            nonlocal count
            count += 1
            look(folder, name, data, outcome, cores, named, words, unit, reader)
        for part in (tucson, heidelberg, compact):
            part(trial)
    for failure in failures:
        print(failure)
    print("%d specimens, %d failures" % (count, len(failures)))
    return 1 if failures else 0


sys.exit(main())
