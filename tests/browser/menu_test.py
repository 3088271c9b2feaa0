"""The exported menu in the hands of a visitor: by mouse, finger and keyboard, on a screen, on paper, in the dark."""

import re
import unittest

from selenium.webdriver.common.keys import Keys
from selenium.webdriver.remote.webelement import WebElement

from browser import DESKTOP, PHONE
from documents import GOLDEN, OWN, SAMPLE, TEMPLATES, render
from menu_case import MenuTest

SMALLEST_TARGET = 44
READABLE = 4.5


class Structure(MenuTest):
    def test_has_landmarks_a_heading_and_a_language(self) -> None:
        self.assertEqual(self.browser.find("html").get_attribute("lang"), "de")
        self.assertEqual(self.browser.find("h1").text, "Menü")
        roles = [element.aria_role for element in self.browser.find_all("header, nav, footer")]
        self.assertEqual(roles, ["banner", "navigation", "contentinfo"])
        self.assertEqual(self.browser.find("nav").accessible_name, "Menü")

    def test_shows_the_logo(self) -> None:
        self.assertEqual(self.browser.find(".logo").accessible_name, "Logo")
        self.assertGreater(self.browser.evaluate("return document.querySelector('.logo').naturalWidth"), 0)

    def test_says_what_buttons_and_help_links_are_for(self) -> None:
        self.assertEqual(self.toggle("Licht").accessible_name, "Untermenü Licht")
        names = [link.accessible_name for link in self.browser.find_all(".main > .help")]
        self.assertIn("Hilfe zu Licht", names)
        self.assertTrue(all(name.startswith("Hilfe zu ") for name in names))

    def test_names_links_by_their_caption_alone(self) -> None:
        self.assertEqual(self.browser.find(".main:nth-child(2) > a.entry").accessible_name, "Erdgeschoss")

    def test_carries_access_levels(self) -> None:
        levels = self.browser.facts(".main, .sub", "it.dataset.access")
        self.assertEqual(set(levels), {"0", "2", "4", "6", "8", "10"})

    def test_repeats_no_caption_as_tooltip(self) -> None:
        tooltips = self.browser.facts(".entry[title]", "[it.title, it.querySelector('.name').textContent]")
        self.assertIn(["Beleuchtung", "Licht"], tooltips)
        self.assertTrue(all(title != name for title, name in tooltips))

    def test_offers_large_targets(self) -> None:
        self.browser.click(self.toggle("Licht"))
        for size in (DESKTOP, PHONE):
            self.browser.resize(size)
            boxes = self.browser.facts("nav a, nav button", "[it.outerHTML, it.offsetWidth, it.offsetHeight]")
            shown = [box for box in boxes if box[1] > 0]
            self.assertGreater(len(shown), 40)
            for html, width, height in shown:
                self.assertGreaterEqual(min(width, height), SMALLEST_TARGET, html)

    def test_asks_for_its_own_files_only(self) -> None:
        names = sorted(url.rsplit("/", 1)[-1] for url in self.browser.take_requests())
        self.assertEqual(names, ["logo.svg", "menu.css", "menu.html", "menu.js"])

    def test_never_scrolls_sideways(self) -> None:
        for width in (1920, 1280, 640, 390, 320):
            self.browser.resize((width, 800))
            self.assertLessEqual(self.browser.evaluate("return document.documentElement.scrollWidth"), width)


class Keyboard(MenuTest):
    def reach_everything(self) -> set[WebElement]:
        reached: set[WebElement] = set()
        self.browser.press(Keys.TAB)
        while (element := self.browser.focused_element()).tag_name != "body":
            if element.tag_name == "button" and element.get_attribute("aria-expanded") == "false":
                self.browser.press(Keys.ENTER)
            elif element.tag_name == "a":
                reached.add(element)
            self.browser.press(Keys.TAB)
        return reached

    def test_tab_and_enter_reach_every_link(self) -> None:
        every = set(self.browser.find_all("a"))
        self.assertGreater(len(every), 80)
        self.assertEqual(self.reach_everything(), every)

    def test_the_focus_is_always_visible(self) -> None:
        self.browser.press(Keys.TAB, Keys.TAB, Keys.TAB)
        self.assertEqual(self.browser.focused_element().value_of_css_property("outline-style"), "solid")

    def test_skips_to_the_menu(self) -> None:
        self.assertEqual(self.press(Keys.TAB), "Zum Menü springen")
        self.assertTrue(self.browser.wait_for(lambda: self.browser.find(".skip").rect["y"] >= 0))
        self.browser.press(Keys.ENTER)
        self.assertEqual(self.browser.focused_element().get_attribute("id"), "menue")
        self.assertEqual(self.press(Keys.TAB), "Übersicht")

    def test_enter_and_space_open_and_close(self) -> None:
        self.toggle("Licht").send_keys(Keys.ENTER)
        self.assert_open("Licht")
        self.browser.press(Keys.SPACE)
        self.assert_closed("Licht")

    def test_enter_follows_a_link(self) -> None:
        self.show(OWN / "current.xml")
        self.toggle("Licht").send_keys(Keys.ENTER)
        self.assertEqual(self.press(Keys.TAB, Keys.TAB), "Stelle dieser Seite")
        self.browser.press(Keys.ENTER)
        self.assertTrue(self.browser.url.endswith("menu.html#stelle"))

    def test_arrows_move_between_main_items(self) -> None:
        self.browser.press(Keys.TAB, Keys.TAB)
        self.assertEqual(self.browser.focused(), "Übersicht")
        self.assertEqual(self.press(Keys.RIGHT), "Erdgeschoss")
        self.assertEqual(self.press(Keys.DOWN), "Obergeschoss")
        self.assertEqual(self.press(Keys.RIGHT), "Untermenü Keller und Garage")
        self.assertEqual(self.press(Keys.UP), "Obergeschoss")
        self.assertEqual(self.press(Keys.LEFT), "Erdgeschoss")

    def test_home_and_end_go_to_the_ends(self) -> None:
        self.browser.press(Keys.TAB, Keys.TAB)
        self.assertEqual(self.press(Keys.END), "Logout")
        self.assertEqual(self.press(Keys.RIGHT), "Logout")
        self.assertEqual(self.press(Keys.HOME), "Übersicht")
        self.assertEqual(self.press(Keys.LEFT), "Übersicht")

    def test_arrows_move_inside_a_sub_menu(self) -> None:
        self.toggle("Obergeschoss").send_keys(Keys.ENTER)
        self.assertEqual(self.press(Keys.DOWN), "Galerie")
        self.assertEqual(self.press(Keys.DOWN), "Schlafzimmer")
        self.assertEqual(self.press(Keys.END), "Bad")
        self.assertEqual(self.press(Keys.DOWN), "Bad")
        self.assertEqual(self.press(Keys.HOME), "Galerie")
        self.assertEqual(self.press(Keys.UP), "Untermenü Obergeschoss")

    def test_arrows_leave_a_sub_menu_sideways(self) -> None:
        self.toggle("Obergeschoss").send_keys(Keys.ENTER)
        self.assertEqual(self.press(Keys.DOWN, Keys.RIGHT), "Untermenü Keller und Garage")
        self.assert_closed("Obergeschoss")

    def test_arrows_pass_over_text(self) -> None:
        self.show_golden("bare-items")
        self.assertEqual(self.press(Keys.TAB, Keys.TAB), "Untermenü Titel statt Name")
        self.assertEqual(self.press(Keys.RIGHT), "Hilfe zu Nur Hilfe, kein Verweis")
        self.assertEqual(self.press(Keys.HOME), "Untermenü Titel statt Name")
        self.assertEqual(self.press(Keys.ENTER, Keys.DOWN), "Ohne Bezeichnung")
        self.assertEqual(self.press(Keys.DOWN), "Hilfe zu Nur Hilfe")

    def test_escape_closes_and_returns_the_focus(self) -> None:
        self.toggle("Heizung").send_keys(Keys.ENTER)
        self.browser.press(Keys.DOWN, Keys.DOWN)
        self.assertEqual(self.press(Keys.ESCAPE), "Untermenü Heizung")
        self.assert_closed("Heizung")

    def test_escape_with_nothing_open_changes_nothing(self) -> None:
        self.browser.press(Keys.TAB, Keys.TAB)
        self.assertEqual(self.press(Keys.ESCAPE), "Übersicht")

    def test_keys_with_modifiers_belong_to_the_browser(self) -> None:
        self.browser.press(Keys.TAB, Keys.TAB)
        self.browser.focused_element().send_keys(Keys.SHIFT + Keys.ARROW_RIGHT)
        self.assertEqual(self.browser.focused(), "Übersicht")

    def test_tabbing_on_closes_what_covers_other_items(self) -> None:
        self.toggle("Obergeschoss").send_keys(Keys.ENTER)
        self.browser.press(Keys.DOWN, Keys.END, Keys.TAB)
        self.assertEqual(self.browser.focused(), "Untermenü Keller und Garage")
        self.assert_closed("Obergeschoss")


class Mouse(MenuTest):
    def test_a_click_opens_and_closes(self) -> None:
        self.assert_closed("Licht")
        self.browser.click(self.toggle("Licht"))
        self.assert_open("Licht")
        self.browser.click(self.toggle("Licht"))
        self.assert_closed("Licht")

    def test_one_sub_menu_is_open_at_a_time(self) -> None:
        self.browser.click(self.toggle("Licht"))
        self.browser.click(self.toggle("Rollläden"))
        self.assert_closed("Licht")
        self.assert_open("Rollläden")

    def test_a_click_elsewhere_closes(self) -> None:
        self.browser.click(self.toggle("Licht"))
        self.browser.click(self.browser.find("h1"))
        self.assert_closed("Licht")

    def test_the_sub_menu_of_the_last_row_comes_into_view(self) -> None:
        self.browser.resize((1280, 420))
        self.browser.click(self.toggle("Zeitprogramme"))
        bottom = self.browser.evaluate("return arguments[0].getBoundingClientRect().bottom", self.subs("Zeitprogramme"))
        self.assertLessEqual(bottom, 420)

    def test_a_caption_without_link_opens_its_sub_menu(self) -> None:
        self.browser.click(self.browser.find(".opener"))
        self.assert_open("Keller und Garage")
        self.browser.click(self.browser.find(".opener"))
        self.assert_closed("Keller und Garage")

    def test_the_link_of_an_item_with_sub_items_is_followed(self) -> None:
        self.show(OWN / "current.xml")
        toggle = self.toggle("Licht")
        self.assertTrue(self.browser.find(".main > a.entry").get_attribute("href").endswith("/licht.html"))
        self.browser.click(toggle)
        self.browser.click(self.browser.find(".sub:nth-child(2) > a"))
        self.assertTrue(self.browser.url.endswith("menu.html#stelle"))


class Touch(MenuTest):
    size = PHONE
    touch = True

    def test_a_tap_opens_and_closes(self) -> None:
        self.browser.tap(self.toggle("Erdgeschoss"))
        self.assert_open("Erdgeschoss")
        self.browser.tap(self.toggle("Erdgeschoss"))
        self.assert_closed("Erdgeschoss")

    def test_a_tap_on_a_caption_without_link_opens(self) -> None:
        self.browser.tap(self.browser.find(".opener"))
        self.assert_open("Keller und Garage")

    def test_the_list_stands_in_the_flow_of_the_page(self) -> None:
        self.browser.tap(self.toggle("Erdgeschoss"))
        bottom = self.subs("Erdgeschoss").rect
        self.assertGreaterEqual(self.toggle("Obergeschoss").rect["y"], bottom["y"] + bottom["height"])

    def test_the_button_stays_under_the_finger(self) -> None:
        def top() -> float:
            return self.browser.evaluate("return arguments[0].getBoundingClientRect().top", self.toggle("Heizung"))

        self.browser.tap(self.toggle("Erdgeschoss"))
        self.browser.evaluate("arguments[0].scrollIntoView({block: 'center'})", self.toggle("Heizung"))
        before = top()
        self.browser.tap(self.toggle("Heizung"))
        self.assert_open("Heizung")
        self.assert_closed("Erdgeschoss")
        self.assertAlmostEqual(top(), before, delta=1)

    def test_hints_for_the_keyboard_are_hidden(self) -> None:
        self.assertFalse(self.browser.find(".hints").is_displayed())


class CurrentPage(MenuTest):
    def current(self) -> list[str]:
        return [link.accessible_name for link in self.browser.find_all('[aria-current="page"]')]

    def test_the_shown_page_is_marked(self) -> None:
        self.assertEqual(self.current(), ["Übersicht"])

    def test_a_sub_item_marks_its_main_item_too(self) -> None:
        self.show(OWN / "current.xml")
        self.browser.click(self.toggle("Licht"))
        self.assertEqual(self.current(), ["Diese Seite"])
        self.assertIn("holds-current", self.browser.find(".main").get_attribute("class"))

    def test_an_anchor_is_nearer_than_its_page(self) -> None:
        self.show(OWN / "current.xml")
        self.browser.click(self.toggle("Licht"))
        self.browser.click(self.browser.find(".sub:nth-child(2) > a"))
        self.assertTrue(self.browser.wait_for(lambda: self.current() == ["Stelle dieser Seite"]))

    def test_another_anchor_still_marks_the_page(self) -> None:
        self.browser.open(self.page, "#menue")
        self.assertEqual(self.current(), ["Übersicht"])


class WithoutScript(MenuTest):
    def setUp(self) -> None:
        super().setUp()
        self.browser.allow_scripts(False)
        self.browser.open(self.page)

    def tearDown(self) -> None:
        self.browser.allow_scripts(True)
        super().tearDown()

    def test_every_item_is_there(self) -> None:
        self.assertTrue(all(self.browser.visible(".entry")))

    def test_nothing_is_there_that_would_not_work(self) -> None:
        self.assertFalse(any(self.browser.visible(".toggle, .hints")))

    def test_tab_reaches_every_link(self) -> None:
        count = len(self.browser.find_all("a"))
        for _ in range(count):
            self.browser.press(Keys.TAB)
        self.assertEqual(self.browser.focused(), "Logout")


class Appearance(MenuTest):
    def colours(self, selector: str, behind: str) -> tuple[str, str]:
        return self.browser.style(selector, "color"), self.browser.style(behind, "background-color")

    def assert_readable(self) -> None:
        for selector, behind in (
            (".main > a.entry:not([aria-current])", ".main"),
            (".sub > a.entry", ".subs"),
            ('[aria-current="page"]', ".main"),
            (".help", ".main"),
            (".toggle", ".main"),
            (".main:last-child .mark", ".main:last-child .mark"),
            (".holds-current .mark", ".holds-current .mark"),
            (".hints", "body"),
            ("h1", "body"),
        ):
            self.assertGreaterEqual(contrast(*self.colours(selector, behind)), READABLE, selector)

    def test_light_is_readable(self) -> None:
        self.browser.prefer(prefers_color_scheme="light", prefers_reduced_motion="reduce")
        self.assertGreater(luminance(self.browser.style("body", "background-color")), 0.8)
        self.assert_readable()

    def test_dark_is_readable(self) -> None:
        self.browser.prefer(prefers_color_scheme="dark", prefers_reduced_motion="reduce")
        self.assertLess(luminance(self.browser.style("body", "background-color")), 0.05)
        self.assert_readable()

    def test_paper_is_black_on_white_and_shows_everything(self) -> None:
        self.browser.prefer(media="print", prefers_color_scheme="dark", prefers_reduced_motion="reduce")
        self.assertEqual(self.browser.style("body", "background-color"), "rgba(255, 255, 255, 1)")
        self.assertTrue(all(self.browser.visible(".entry")))
        self.assertEqual(set(self.browser.facts(".entry", "getComputedStyle(it).color")), {"rgb(0, 0, 0)"})
        self.assertFalse(any(self.browser.visible(".toggle, .help, .mark, .hints")))

    def test_nothing_moves_for_those_who_do_not_want_it(self) -> None:
        self.browser.prefer(prefers_reduced_motion="reduce")
        self.assertEqual(self.browser.style(".entry", "transition-duration"), "0s")
        self.browser.prefer(prefers_reduced_motion="no-preference")
        self.assertNotEqual(self.browser.style(".entry", "transition-duration"), "0s")

    def test_forced_colours_keep_cards_and_the_current_page_apart(self) -> None:
        self.browser.prefer(forced_colors="active")
        self.assertEqual(self.browser.style(".main", "border-top-style"), "solid")
        self.assertEqual(self.browser.style('[aria-current="page"]', "outline-style"), "solid")


class Documents(MenuTest):
    page = None

    def captions(self) -> list[str]:
        return self.browser.facts(".name", "it.textContent")

    def test_escaped_markup_is_text(self) -> None:
        self.show_golden("escapes")
        script = "<script>document.title=1</script>"
        self.assertEqual(self.captions(), ["<b>Bad</b>", script, "&amp;", "{caption}"])
        self.assertEqual(self.browser.find_all("nav b, nav script"), [])
        self.assertEqual(self.browser.evaluate("return document.title"), "Menü")

    def test_unsafe_links_are_inert(self) -> None:
        self.show_golden("unsafe-links")
        schemes = self.browser.facts("a", "it.protocol")
        self.assertEqual(set(schemes), {"file:", "https:", "mailto:", "database:"})
        self.assertEqual(self.browser.find_all(".logo"), [])
        before = self.browser.url
        for caption in ("Skript", "Daten"):
            self.browser.click(self.toggle(caption))
            for entry in self.subs(caption).find_elements("css selector", "span.entry"):
                self.browser.click(entry)
        self.assertEqual(self.browser.url, before)
        self.assertEqual(self.browser.evaluate("return document.title"), "Menü")

    def test_windows_characters_are_shown(self) -> None:
        self.show_golden("umlauts")
        expected = ["Überblick „Süd“", "Änne’s Zimmer…", "Café • Žižkov ™", "ABC"]
        self.assertEqual(self.captions(), expected)
        self.assertIn("0,30 €", self.browser.find(".entry").get_attribute("title"))

    def test_an_empty_menu_says_so(self) -> None:
        self.show_golden("empty")
        self.assertEqual(self.browser.find("nav").text, "Das Menü ist leer.")

    def test_items_without_link_are_text(self) -> None:
        self.show_golden("bare-items")
        self.assertEqual(self.browser.find_all("a:not([href])"), [])
        self.assertEqual(self.captions()[:3], ["Ohne Bezeichnung", "Titel statt Name", "Ohne Bezeichnung"])

    def assert_the_logo_is_missed(self) -> None:
        (message,) = self.browser.take_console()
        self.assertIn("logo.svg", message)

    def test_level_1_shows_main_items_only(self) -> None:
        self.show_golden("levels-1")
        self.assertEqual(self.captions(), ["Licht", "Keller", "Logout"])
        self.assertEqual(self.browser.find_all(".toggle"), [])
        self.assert_the_logo_is_missed()

    def test_level_2_shows_sub_items(self) -> None:
        self.show_golden("levels-2")
        self.assertEqual(self.captions(), ["Licht", "Flur", "Garage", "Keller", "Werkstatt", "Logout"])
        self.assertEqual(len(self.browser.find_all(".toggle")), 2)
        self.assert_the_logo_is_missed()


class Files(unittest.TestCase):
    def test_the_stylesheet_makes_the_golden_pages(self) -> None:
        cases = sorted(path.parent for path in GOLDEN.glob("*/menu.xml"))
        self.assertGreater(len(cases), 0)
        for case in cases:
            with self.subTest(case.name):
                self.assertEqual(render(case / "menu.xml"), (case / "menu.html").read_bytes())

    def test_the_page_of_the_sample_is_up_to_date(self) -> None:
        self.assertEqual(render(SAMPLE / "menu.xml"), (SAMPLE / "menu.html").read_bytes())

    def test_the_sample_has_the_templates_of_the_product(self) -> None:
        for name in ("menu.xsl", "menu.js", "menu.css"):
            self.assertEqual((SAMPLE / name).read_bytes(), (TEMPLATES / name).read_bytes(), name)


def luminance(colour: str) -> float:
    def linear(channel: float) -> float:
        return channel / 12.92 if channel <= 0.04045 else ((channel + 0.055) / 1.055) ** 2.4

    red, green, blue = (linear(int(number) / 255) for number in re.findall(r"\d+", colour)[:3])
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(one: str, other: str) -> float:
    darker, lighter = sorted((luminance(one), luminance(other)))
    return (lighter + 0.05) / (darker + 0.05)
