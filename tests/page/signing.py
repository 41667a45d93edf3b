"""Coming in with a password."""
import os
import pathlib
import time

from browser import Keys
from case import FOLDER, Page

PASSWORD = "correct horse"


class Signing(Page):
    name = "signing"
    options = ("--password-file", os.path.join(FOLDER, "password"))

    @classmethod
    def setUpClass(cls):
        pathlib.Path(cls.options[1]).write_text(PASSWORD + "\n")
        super().setUpClass()

    def enter(self, password):
        self.browser.element("input[type=password]").send_keys(password, Keys.ENTER)

    def test_password(self):
        b = self.browser
        b.driver.delete_all_cookies()
        b.open(self.server.root)
        b.click("a", "password")
        self.enter("wrong battery")
        b.element("[role=alert]", "not the password")
        self.enter(PASSWORD)  # so soon not even the right one
        b.element("[role=alert]", "Too soon")
        b.shot("password")
        time.sleep(0.6)
        self.enter(PASSWORD)
        b.element(".budget")
        # A page that is open asks in its place, and goes on where it was.
        b.go("#/grid/4/01/2025?site=1&kind=0")
        self.server.stop()
        self.server.start(*self.options)
        b.click("a", "Report")
        self.enter("wrong battery")
        b.element(".connection", "That is not right")
        b.element(".connection input").clear()
        self.enter(PASSWORD)
        b.element(".connection", "Too soon")
        time.sleep(0.6)
        b.element(".connection input").clear()
        self.enter(PASSWORD)
        b.element(".axes")
        b.absent(".connection")
