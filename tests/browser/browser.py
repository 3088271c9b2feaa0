"""A browser without a window, and what a visitor does with it."""

import atexit
import functools
import json
import os
import shutil
import tempfile
import time
from pathlib import Path
from typing import Any, Callable

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.actions import interaction
from selenium.webdriver.common.actions.action_builder import ActionBuilder
from selenium.webdriver.common.actions.pointer_input import PointerInput
from selenium.webdriver.common.by import By
from selenium.webdriver.remote.webelement import WebElement

DESKTOP = (1280, 900)
PHONE = (390, 844)

# A machine without a mouse counts as one that cannot point exactly; these tests have a mouse.
MOUSE = "primaryHoverType=2,availableHoverTypes=2,primaryPointerType=4,availablePointerTypes=4"


def start_driver(profile: str) -> webdriver.Chrome:
    options = webdriver.ChromeOptions()
    options.binary_location = shutil.which("chromium")
    for argument in (
        "--headless=new",
        "--lang=de",
        "--disable-background-networking",
        "--disable-component-update",
        "--disable-dev-shm-usage",
        "--disable-gpu",
        f"--blink-settings={MOUSE}",
        "--no-first-run",
        "--host-resolver-rules=MAP * ~NOTFOUND",
        f"--user-data-dir={profile}",
    ):
        options.add_argument(argument)
    if os.geteuid() == 0:
        options.add_argument("--no-sandbox")
    options.add_experimental_option("prefs", {"intl.accept_languages": "de-DE,de"})
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    return webdriver.Chrome(options=options, service=Service(shutil.which("chromedriver")))


class Browser:
    def __init__(self) -> None:
        self._profile = tempfile.mkdtemp(prefix="profile-")
        self._driver = start_driver(self._profile)
        self._touch = False
        self.command("Emulation.setFocusEmulationEnabled", enabled=True)

    def quit(self) -> None:
        self._driver.quit()
        shutil.rmtree(self._profile, ignore_errors=True)

    def open(self, file: Path, fragment: str = "") -> None:
        """Opens the file afresh, also when only the fragment differs from what is shown."""
        self._driver.get("about:blank")
        self.take_console()
        self.take_requests()
        self._driver.get(file.as_uri() + fragment)

    @property
    def url(self) -> str:
        return self._driver.current_url

    # What stands on the page

    def find(self, selector: str) -> WebElement:
        return self._driver.find_element(By.CSS_SELECTOR, selector)

    def find_all(self, selector: str) -> list[WebElement]:
        return self._driver.find_elements(By.CSS_SELECTOR, selector)

    def evaluate(self, script: str, *arguments: Any) -> Any:
        return self._driver.execute_script(script, *arguments)

    def facts(self, selector: str, expression: str) -> list[Any]:
        """What the expression says of every such element, all in one go; "it" is the element."""
        return self.evaluate(f"return [...document.querySelectorAll(arguments[0])].map(it => {expression})", selector)

    def visible(self, selector: str) -> list[bool]:
        return self.facts(selector, "it.checkVisibility()")

    def style(self, selector: str, name: str) -> str:
        return self.find(selector).value_of_css_property(name)

    def focused(self) -> str:
        """What a screen reader would say of the element that has the focus."""
        return self._driver.switch_to.active_element.accessible_name

    def focused_element(self) -> WebElement:
        return self._driver.switch_to.active_element

    # What the visitor does

    def press(self, *keys: str) -> None:
        for key in keys:
            ActionChains(self._driver, duration=0).send_keys(key).perform()

    def click(self, element: WebElement) -> None:
        ActionChains(self._driver, duration=0).move_to_element(element).click().perform()

    def tap(self, element: WebElement) -> None:
        finger = PointerInput(interaction.POINTER_TOUCH, "finger")
        actions = ActionBuilder(self._driver, mouse=finger, duration=0)
        actions.pointer_action.move_to(element).pointer_down().pointer_up()
        actions.perform()

    # What the visitor has

    def resize(self, size: tuple[int, int], touch: bool = False) -> None:
        width, height = size
        metrics = {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": touch}
        self.command("Emulation.setDeviceMetricsOverride", **metrics)
        if touch != self._touch:  # switching it off, even when it is off, takes the mouse away until the next page
            self.command("Emulation.setTouchEmulationEnabled", enabled=touch)
            self._touch = touch

    def prefer(self, media: str = "", **features: str) -> None:
        listed = [{"name": name.replace("_", "-"), "value": value} for name, value in features.items()]
        self.command("Emulation.setEmulatedMedia", media=media, features=listed)

    def allow_scripts(self, allowed: bool) -> None:
        self.command("Emulation.setScriptExecutionDisabled", value=not allowed)

    def command(self, name: str, **parameters: Any) -> Any:
        return self._driver.execute_cdp_cmd(name, parameters)

    # What happened behind the page

    def take_console(self) -> list[str]:
        return [entry["message"] for entry in self._driver.get_log("browser")]

    def take_requests(self) -> list[str]:
        messages = (json.loads(entry["message"])["message"] for entry in self._driver.get_log("performance"))
        return [m["params"]["request"]["url"] for m in messages if m["method"] == "Network.requestWillBeSent"]

    def wait_for(self, condition: Callable[[], bool], seconds: float = 5) -> bool:
        end = time.monotonic() + seconds
        while not condition():
            if time.monotonic() > end:
                return False
            time.sleep(0.02)
        return True

    def picture(self, file: Path) -> None:
        height = self.evaluate("return document.documentElement.scrollHeight")
        width = self.evaluate("return window.innerWidth")
        self.resize((width, height), self._touch)
        self._driver.save_screenshot(str(file))


@functools.cache
def shared_browser() -> Browser:
    """One for all tests, because starting it takes longer than most of them."""
    browser = Browser()
    atexit.register(browser.quit)
    return browser
