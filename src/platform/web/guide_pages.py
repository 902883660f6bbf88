"""The user's guide as one piece of HTML: its pages with their pictures in them, and links that lead nowhere else."""

import base64
import pathlib
import re
import subprocess

import markdown
from markdown.extensions.toc import slugify
from markdown.treeprocessors import Treeprocessor

# In the order in which they follow one another; links to other files of docs/ are shown as text.
PAGES = [
    "guide.md",
    "first-crossdating.md",
    "journal.md",
    "formats/list-file.md",
    "formats/tucson-raw.md",
    "formats/heidelberg.md",
    "formats/compact.md",
    "formats/tucson-index.md",
    "formats/two-column.md",
    "formats/column-table.md",
    "glossary.md",
    "findings.md",
    "deliberate.md",
]
COLOURS_OF_PICTURES = "64"


def name_of(page):
    return re.sub(r"[^a-z0-9]+", "-", page.removesuffix(".md").lower())


def picture(path):
    """The picture in fewer colours, as a data: address."""
    packed = subprocess.run(
        ["pngquant", COLOURS_OF_PICTURES, "--speed", "1", "--strip", "-"],
        input=path.read_bytes(), stdout=subprocess.PIPE, check=True).stdout
    return "data:image/png;base64," + base64.b64encode(packed).decode("ascii")


class Ties(Treeprocessor):
    """Gives headings names of their own page, links their places in the whole, and pictures their bytes."""

    def __init__(self, md, docs, page):
        super().__init__(md)
        self.docs, self.page = docs, page

    def run(self, root):
        for element in root.iter():
            if re.fullmatch("h[1-6]", element.tag) and "id" in element.attrib:
                element.set("id", f"{name_of(self.page)}--{element.get('id')}")
            if element.tag == "a":
                self.tie(element)
            if element.tag == "img":
                element.set("src", picture(self.docs / pathlib.PurePosixPath(self.page).parent / element.get("src")))
            self.unstyle(element)

    def tie(self, link):
        target = self.place_of(link.attrib.pop("href", ""))
        if target:
            link.set("href", "#" + target)
        else:
            link.tag = "span"
            link.attrib.pop("title", None)

    def place_of(self, target):
        """The name of what a link leads to; nothing where it leads out of the guide."""
        if re.match("[a-z]+:", target):
            return ""
        page, _, heading = target.partition("#")
        here = pathlib.PurePosixPath(self.page)
        parts = []
        for part in (here.parent / page).parts if page else here.parts:
            parts = parts[:-1] if part == ".." else parts + [part]
        page = "/".join(parts)
        if page not in PAGES or target.startswith("../" * (len(here.parts))):
            return ""
        return f"{name_of(page)}--{heading}" if heading else name_of(page)

    @staticmethod
    def unstyle(element):
        """What stands to the right in a table: styles in elements are not let through."""
        style = element.attrib.pop("style", "")
        if "right" in style:
            element.set("class", "right")


def page_html(docs, page):
    md = markdown.Markdown(extensions=["tables", "fenced_code", "toc"],
                           extension_configs={"toc": {"slugify": slugify}}, output_format="xhtml")
    md.treeprocessors.register(Ties(md, docs, page), "ties", -10)
    body = md.convert((docs / page).read_text(encoding="utf-8"))
    return f'<section id="{name_of(page)}">\n{body}\n</section>\n'


def guide_html(docs):
    html = '<div id="guide">\n' + "".join(page_html(docs, page) for page in PAGES) + "</div>\n"
    ids = set(re.findall(r' id="([^"]*)"', html))
    lost = sorted(set(re.findall(r' href="#([^"]*)"', html)) - ids)
    if lost:
        raise SystemExit("the guide has links that lead nowhere: " + ", ".join(lost))
    return html
