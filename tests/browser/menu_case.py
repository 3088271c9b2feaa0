"""What every test of a page in the browser does before, during and after."""

import tempfile
import unittest
from pathlib import Path
from urllib.parse import urlsplit

from selenium.webdriver.remote.webelement import WebElement

from browser import DESKTOP, shared_browser
from documents import GOLDEN, SAMPLE, make_page


class MenuTest(unittest.TestCase):
    page: Path | None = SAMPLE / "menu.html"  # none: every test shows its own
    size = DESKTOP
    touch = False

    def setUp(self) -> None:
        self.browser = shared_browser()
        self.browser.resize(self.size, self.touch)
        self.browser.prefer()
        self.browser.allow_scripts(True)
        if self.page:
            self.browser.open(self.page)

    def tearDown(self) -> None:
        self.assertEqual(self.browser.take_console(), [], "the console stays empty")
        strangers = [url for url in self.browser.take_requests() if urlsplit(url).scheme not in ("file", "about")]
        self.assertEqual(strangers, [], "no request leaves the disk")

    def show(self, document: Path) -> None:
        directory = tempfile.TemporaryDirectory(prefix="menu-")
        self.addCleanup(directory.cleanup)
        self.browser.open(make_page(document, Path(directory.name)))

    def show_golden(self, case: str) -> None:
        self.show(GOLDEN / case / "menu.xml")

    def toggle(self, caption: str) -> WebElement:
        return self.browser.find(f'.toggle[aria-label="Untermenü {caption}"]')

    def subs(self, caption: str) -> WebElement:
        return self.browser.find("#" + self.toggle(caption).get_attribute("aria-controls"))

    def press(self, *keys: str) -> str:
        self.browser.press(*keys)
        return self.browser.focused()

    def assert_open(self, caption: str) -> None:
        self.assertEqual(self.toggle(caption).get_attribute("aria-expanded"), "true")
        self.assertTrue(self.subs(caption).is_displayed())

    def assert_closed(self, caption: str) -> None:
        self.assertEqual(self.toggle(caption).get_attribute("aria-expanded"), "false")
        self.assertFalse(self.subs(caption).is_displayed())
