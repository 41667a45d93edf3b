"""A browser without a window, and what tests do in it."""
import json
import os
import time

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys

PATIENCE = 30  # seconds

# A grid as it is shown: the columns' names, and the texts of its rows.
GRID = """
const grid = [...document.querySelectorAll(arguments[0] + " .grid, " + arguments[0] + ".grid")].at(-1);
const texts = (line) => [...line.children].map((cell) => cell.textContent);
const rows = [...grid.querySelectorAll(".grid-body .row")].sort((a, b) => a.ariaRowIndex - b.ariaRowIndex);
return {columns: [...grid.querySelectorAll("[role=columnheader]")].map((cell) => cell.dataset.name),
        titles: [...grid.querySelectorAll("[role=columnheader]")].map((cell) => cell.textContent),
        rows: rows.map(texts), totals: [...grid.querySelectorAll(".grid-foot .row")].map(texts)};
"""


class Browser:
    def __init__(self, folder, width=1280, height=800):
        self.folder = folder
        options = webdriver.ChromeOptions()
        options.binary_location = "/usr/bin/chromium"
        for word in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
                     "--hide-scrollbars", "--force-prefers-reduced-motion", f"--window-size={width},{height}"):
            options.add_argument(word)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        self.driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
        self.size(width, height)
        self.driver.execute_cdp_cmd("Browser.grantPermissions",
                                    {"permissions": ["clipboardReadWrite", "clipboardSanitizedWrite"]})

    def size(self, width, height, mobile=False):
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                    {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": mobile})

    def media(self, **features):
        """dark=True, media="print" """
        scheme = [{"name": "prefers-color-scheme", "value": "dark" if features.get("dark") else "light"}]
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                    {"media": features.get("media", ""), "features": scheme})

    def slow(self, milliseconds=0, bytes_a_second=-1):
        self.driver.execute_cdp_cmd("Network.enable", {})
        self.driver.execute_cdp_cmd("Network.emulateNetworkConditions", {
            "offline": False, "latency": milliseconds, "downloadThroughput": bytes_a_second,
            "uploadThroughput": bytes_a_second})

    def hold(self, command):
        """From now on the server's answer to a command comes when window.release() lets it through."""
        self.js("""const real = window.fetch;
                window.fetch = async (path, options) => {
                  const answer = await real(path, options);
                  if (String(path).endsWith("/run/" + arguments[0])) await new Promise((go) => (window.release = go));
                  return answer;
                };""", command)

    def open(self, address):
        self.driver.get(address)

    def go(self, place):
        self.js("""if (location.hash === arguments[0]) dispatchEvent(new HashChangeEvent("hashchange"));
                   else location.hash = arguments[0];""", place)
        self.wait(lambda: not self.js("return document.querySelector('main[aria-busy]')"), "the view of " + place)

    def come_back(self):
        """As to a page that was behind others: it looks at once what has changed."""
        self.js("document.dispatchEvent(new Event('visibilitychange'))")

    def js(self, script, *values):
        return self.driver.execute_script(script, *values)

    def wait(self, condition, what):
        """@return what the condition answered, which is asked until it is true."""
        end = time.monotonic() + PATIENCE
        while True:
            answer = condition()
            if answer:
                return answer
            if time.monotonic() > end:
                self.shot("failure")
                raise AssertionError(f"waited in vain for {what}")
            time.sleep(0.03)

    def element(self, selector, text=None):
        """The first one that is shown, with a text in it."""
        script = """return [...document.querySelectorAll(arguments[0])].find((each) => each.checkVisibility()
                    && (arguments[1] === null || each.textContent.includes(arguments[1])))"""
        return self.wait(lambda: self.js(script, selector, text), f"{selector} {text or ''}")

    def all(self, selector):
        return self.driver.find_elements("css selector", selector)

    def count(self, selector):
        return self.js("return document.querySelectorAll(arguments[0]).length", selector)

    def absent(self, selector):
        return self.wait(lambda: not self.js("return document.querySelector(arguments[0])", selector), f"no {selector}")

    def text(self, selector):
        return self.element(selector).text

    def click(self, selector, text=None):
        self.element(selector, text).click()

    def keys(self, *keys):
        ActionChains(self.driver).send_keys(*keys).perform()

    def chord(self, *keys):
        """The last key with the others held."""
        chain = ActionChains(self.driver)
        for key in keys[:-1]:
            chain.key_down(key)
        chain.send_keys(keys[-1])
        for key in reversed(keys[:-1]):
            chain.key_up(key)
        chain.perform()

    def drag(self, source, target):
        chain = ActionChains(self.driver).click_and_hold(source).move_by_offset(12, 6)
        chain.move_to_element(target).release().perform()

    def copy(self, text):
        """Puts a text into the clipboard."""
        script = "navigator.clipboard.writeText(arguments[0]).finally(arguments[1])"
        self.driver.execute_async_script(script, text)

    def paste(self):
        self.chord(Keys.CONTROL, "v")

    def grid(self, selector="main"):
        return self.js(GRID, selector)

    def cell(self, row, column):
        """A cell of the last grid by its row's place and its column's name."""
        return self.js("""
            const grid = [...document.querySelectorAll("main .grid")].find((each) => each.checkVisibility());
            const heads = [...grid.querySelectorAll("[role=columnheader]")];
            const place = heads.findIndex((cell) => cell.dataset.name === arguments[1]);
            return grid.querySelector(`.grid-body [data-row="${arguments[0]}"][data-column="${place}"]`);
            """, row, column)

    def cell_text(self, row, column):
        return self.js("return arguments[0]?.textContent", self.cell(row, column))

    def state(self, row, column):
        return self.js("return arguments[0]?.dataset.state", self.cell(row, column))

    def focused(self):
        return self.driver.switch_to.active_element

    def shot(self, name):
        path = os.path.join(self.folder, name + ".png")
        self.driver.save_screenshot(path)
        return path

    def wide(self):
        """Whether the page or what it shows scrolls sideways, by pixels."""
        return self.js("""const main = document.querySelector("main");
                          return Math.max(document.documentElement.scrollWidth - innerWidth,
                                          main.scrollWidth - main.clientWidth);""")

    def complaints(self):
        """What the console says that no test provoked: refusals of the server are told there too."""
        told = [entry for entry in self.driver.get_log("browser")
                if entry["level"] == "SEVERE" and entry["source"] != "network"]
        return [json.dumps(entry) for entry in told]

    def quit(self):
        self.driver.quit()
