"""Charts as programs read them: the text of a PDF by pdftotext, an SVG as XML.

usage: pictures_test.py KIGOU
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ET

KIGOU = sys.argv.pop(1)
SMALL_FONT = pathlib.Path("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf")
A4_WIDTH, MARGIN = 595.276, 42
WIDEST = 32767 * 72 / 96  # of a picture, in points
CELL_LINE = "stroke:rgb(78%,78%,78%)"
RULE = "-" * 40 + "\n"


def symbol_file(title, titles):
    """Bytes of a symbol file; titles are paths with lines of symbols."""
    text = f"〈記号〉\n名称={title}\n"
    for path, lines in titles:
        text += f"［{path}］\n{RULE}" + "".join(line + "\n" for line in lines) + RULE
    return text.encode("euc_jp")


def kanji(count):
    """So many symbols, kanji of the first level again and again."""
    cells = [bytes((0xA0 + row, 0xA0 + cell)).decode("euc_jp") for row in range(16, 47) for cell in range(1, 95)]
    return "".join((cells * (count // len(cells) + 1))[:count])


class Charts(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.environment = dict(os.environ, XDG_DATA_HOME=str(self.folder), XDG_STATE_HOME=str(self.folder))
        for name in ("PROGRAM", "COMMON", "USER"):
            self.environment.pop(f"KIGOU_{name}_DIR", None)

    def run_in_folder(self, *words, **more):
        environment = dict(self.environment, **more)
        done = subprocess.run(words, cwd=self.folder, env=environment, stdout=subprocess.PIPE, check=True)
        return done.stdout.decode()

    def chart(self, title, titles, *options):
        (self.folder / "it.kig").write_bytes(symbol_file(title, titles))
        self.run_in_folder(KIGOU, "chart", "it.kig", *options)

    def cells(self, name):
        """Width and height of an SVG, and the rectangles of its cells."""
        root = ET.parse(self.folder / name).getroot()
        boxes = []
        for path in root.iter("{http://www.w3.org/2000/svg}path"):
            if CELL_LINE in path.get("style", ""):
                numbers = [float(number) for number in re.findall(r"-?[\d.]+", path.get("d"))]
                boxes.append((min(numbers[::2]), min(numbers[1::2]), max(numbers[::2]), max(numbers[1::2])))
        return [float(number) for number in root.get("viewBox").split()[2:]], boxes

    def test_text_of_a_pdf_is_the_set_in_order(self):
        self.run_in_folder(KIGOU, "chart", "--names", "-o", "it.pdf")
        text = self.run_in_folder("pdftotext", "-raw", "it.pdf", "-")
        titles = json.loads(self.run_in_folder(KIGOU, "export", "--json"))["titles"]
        symbols = "".join("".join(title["lines"]) for title in titles).replace("　", "")
        found = re.findall(r"^(.)\n\d+-\d+ U\+([0-9A-F]{4})$", text, re.MULTILINE)
        self.assertEqual("".join(symbol for symbol, _ in found), symbols)
        self.assertEqual([(symbol, f"{ord(symbol):04X}") for symbol, _ in found], found)
        self.assertIn("→\n2-10 U+2192\n右矢印\n", text)
        deep = [title["path"] for title in titles if "／" in title["path"]]
        headings = [line for line in text.split("\n") if re.fullmatch(".+／.*(?<!（続き）)", line)]
        self.assertEqual(headings, deep)

        pages = text.rstrip("\f").split("\f")
        for number, page in enumerate(pages, 1):
            lines = page.strip("\n").split("\n")
            self.assertIn("標準の記号", lines)
            self.assertIn(f"{number} / {len(pages)}", lines)
        # Of each title its entry at the side leads to its heading and to what stands below that.
        outline = self.run_in_folder("pdftohtml", "-xml", "-i", "-stdout", "it.pdf")
        entries = re.findall(r'<item page="(\d+)">(.*?)</item>', outline)
        self.assertEqual([name for _, name in entries], [title["path"].split("／")[-1] for title in titles])
        for (page, _), title in zip(entries, titles):
            behind = pages[int(page) - 1].split("\n" + title["path"] + "\n")
            self.assertEqual(len(behind), 2, title["path"])
            first = "".join(title["lines"]).strip("　")[:1]
            self.assertIn(first, behind[1], title["path"])
        self.assertRegex(self.run_in_folder("pdfinfo", "it.pdf"), r"Title: +標準の記号\n(.*\n)*Page size: .*A4")

    def test_nothing_leaves_its_page(self):
        path = "／".join(f"長い題{level}" * 5 for level in range(9))
        self.chart("題" * 127, [("長" * 128, ["☆"]), (path, ["★" * 23, "", "→"])], "-o", "it.pdf")
        words = self.run_in_folder("pdftotext", "-bbox", "it.pdf", "-")
        ends = [(float(left), float(right)) for left, right in re.findall(r'xMin="([\d.]+)".*xMax="([\d.]+)"', words)]
        self.assertGreater(len(ends), 60)
        self.assertGreater(min(left for left, _ in ends), MARGIN - 1)
        self.assertLess(max(right for _, right in ends), A4_WIDTH - MARGIN + 1)

    def test_lines_stay_and_long_ones_are_wrapped(self):
        self.chart("行", [("甲", ["☆★", "○" * 23, "●"]), ("空", [])], "-o", "it.svg")
        _, boxes = self.cells("it.svg")
        tops = [top for _, top, _, _ in boxes]
        self.assertEqual([tops.count(top) for top in sorted(set(tops))], [2, 10, 10, 3, 1])

    def test_a_large_set_fits_in_a_picture(self):
        symbols = kanji(10000)
        lines = [symbols[at : at + 10] for at in range(0, len(symbols), 10)]
        self.chart("一万", [("前", lines[:600]), ("後", ["".join(lines[600:])])], "--names", "-o", "it.svg")
        (width, height), boxes = self.cells("it.svg")
        self.assertEqual(len(boxes), len(symbols))
        self.assertEqual(len(set(boxes)), len(symbols))
        self.assertLess(max(width, height), WIDEST)
        self.assertLess(max(right for _, _, right, _ in boxes), width)
        self.assertLess(max(bottom for _, _, _, bottom in boxes), height)

    @unittest.skipUnless(SMALL_FONT.exists(), "no DejaVu Sans")
    def test_a_symbol_that_no_font_has_is_told_of(self):
        fonts = self.folder / "fonts"
        fonts.mkdir()
        shutil.copy(SMALL_FONT, fonts)
        (self.folder / "fonts.conf").write_text(
            f"<fontconfig><dir>{fonts}</dir><cachedir>{fonts}</cachedir></fontconfig>"
        )
        self.environment["FONTCONFIG_FILE"] = str(self.folder / "fonts.conf")
        self.chart("字", [("甲", ["☆亜→亜", "唖"])], "-o", "all.svg")
        report = self.run_in_folder(KIGOU, "chart", "it.kig", "--json", "-o", "it.svg")
        self.assertEqual(json.loads(report)["no_glyph"], ["亜 16-1 U+4E9C", "唖 16-2 U+5516"])
        self.assertEqual(len(self.cells("it.svg")[1]), 5)
        done = subprocess.run(
            [KIGOU, "chart", "it.kig"], cwd=self.folder, env=self.environment, capture_output=True, check=True
        )
        self.assertIn("2 symbols have no glyph in the fonts of this machine: 亜 16-1 U+4E9C, 唖", done.stderr.decode())


if __name__ == "__main__":
    if not all(shutil.which(program) for program in ("pdftotext", "pdftohtml", "pdfinfo")):
        print("no poppler-utils")
        sys.exit(77)
    unittest.main()
