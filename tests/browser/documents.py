"""The menus under test: where they stand, and how one becomes a page in a directory of its own."""

import shutil
from pathlib import Path

from lxml import etree

ROOT = Path(__file__).resolve().parents[2]
TEMPLATES = ROOT / "examples/home/config/lang/shared/templates/kolt/_menu"
SAMPLE = ROOT / "examples/musterhaus/_menu"
GOLDEN = ROOT / "tests/data/menu/html"
OWN = Path(__file__).resolve().parent / "data"


def render(document: Path) -> bytes:
    """The page that the product's stylesheet makes of the document, with nothing allowed that an export forbids."""
    access = etree.XSLTAccessControl.DENY_ALL
    stylesheet = etree.XSLT(etree.parse(TEMPLATES / "menu.xsl"), access_control=access)
    return bytes(stylesheet(etree.parse(document, etree.XMLParser(no_network=True))))


def make_page(document: Path, directory: Path) -> Path:
    for name in ("menu.js", "menu.css"):
        shutil.copy(TEMPLATES / name, directory)
    page = directory / "menu.html"
    page.write_bytes(render(document))
    return page
