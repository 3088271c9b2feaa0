"""Pictures of the sample menu, for eyes and for the manual. VELMORA_PICTURES names their directory."""

import os
from pathlib import Path

from selenium.webdriver.common.keys import Keys

from browser import PHONE
from menu_case import MenuTest


class Pictures(MenuTest):
    def take(self, name: str) -> None:
        self.browser.picture(Path(os.environ["VELMORA_PICTURES"]) / f"menu-{name}.png")

    def test_light(self) -> None:
        self.browser.prefer(prefers_color_scheme="light", prefers_reduced_motion="reduce")
        self.browser.click(self.toggle("Rollläden"))
        self.take("light")

    def test_dark(self) -> None:
        self.browser.prefer(prefers_color_scheme="dark", prefers_reduced_motion="reduce")
        self.browser.click(self.toggle("Rollläden"))
        self.browser.press(Keys.DOWN, Keys.DOWN)
        self.take("dark")

    def test_phone(self) -> None:
        self.browser.resize(PHONE, touch=True)
        self.browser.prefer(prefers_reduced_motion="reduce")
        self.browser.tap(self.toggle("Erdgeschoss"))
        self.take("phone")

    def test_print(self) -> None:
        self.browser.resize((794, 1123))
        self.browser.prefer(media="print")
        self.take("print")

    def test_forced_colours(self) -> None:
        self.browser.prefer(forced_colors="active", prefers_reduced_motion="reduce")
        self.browser.click(self.toggle("Rollläden"))
        self.take("forced-colours")

    def test_without_script(self) -> None:
        self.addCleanup(self.browser.allow_scripts, True)
        self.browser.allow_scripts(False)
        self.browser.open(self.page)
        self.take("without-script")
