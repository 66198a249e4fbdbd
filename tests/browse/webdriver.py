"""Drives Chromium through chromedriver, by its protocol over HTTP and the standard library."""

import base64
import json
import re
import shutil
import subprocess
import time
import urllib.error
import urllib.request

ELEMENT = "element-6066-11e4-a52e-4f735466cecf"
KEYS = {
    "Escape": "\ue00c",
    "Enter": "\ue007",
    "Tab": "\ue004",
    "Left": "\ue012",
    "Up": "\ue013",
    "Right": "\ue014",
    "Down": "\ue015",
    "Home": "\ue011",
    "End": "\ue010",
}


def missing_programs():
    return [name for name in ("chromium", "chromedriver") if shutil.which(name) is None]


class Browser:
    """A window of a headless browser with a profile of its own, which cannot reach any network."""

    def __init__(self, profile, width=1280, height=860, arguments=()):
        self.driver = subprocess.Popen(
            ["chromedriver", "--port=0"], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        self.session = None
        try:
            self.address = "http://127.0.0.1:" + self.port()
            options = {
                "binary": shutil.which("chromium"),
                "args": ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                         "--no-first-run", "--disable-background-networking", "--force-device-scale-factor=1",
                         "--host-resolver-rules=MAP * ~NOTFOUND", f"--user-data-dir={profile}",
                         f"--window-size={width},{height}", *arguments],
            }
            wanted = {"browserName": "chrome", "goog:chromeOptions": options,
                      "goog:loggingPrefs": {"browser": "ALL"}, "timeouts": {"script": 60000, "pageLoad": 120000}}
            self.session = self.request(
                "POST", "/session", {"capabilities": {"alwaysMatch": wanted}})["sessionId"]
        except BaseException:
            self.close()
            raise

    def port(self):
        for line in self.driver.stdout:
            found = re.search(r"started successfully on port (\d+)", line)
            if found:
                return found.group(1)
        raise RuntimeError("chromedriver did not start")

    def close(self):
        try:
            if self.session:
                self.request("DELETE", f"/session/{self.session}")
        finally:
            self.driver.terminate()
            self.driver.wait()
            self.driver.stdout.close()

    def request(self, method, path, body=None):
        data = None if method == "GET" else json.dumps(body or {}).encode()
        request = urllib.request.Request(self.address + path, data, {"Content-Type": "application/json"}, method=method)
        try:
            with urllib.request.urlopen(request, timeout=180) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(json.load(error)["value"]["message"]) from None

    def command(self, method, path, body=None):
        return self.request(method, f"/session/{self.session}{path}", body)

    def open(self, address):
        self.command("POST", "/url", {"url": address})

    def script(self, text, *arguments):
        """What the function body `text` returns."""
        return self.command("POST", "/execute/sync", {"script": text, "args": list(arguments)})

    def after_script(self, text, *arguments):
        """What `text` hands to the function `done`."""
        text = "const done = arguments[arguments.length - 1];" + text
        return self.command("POST", "/execute/async", {"script": text, "args": list(arguments)})

    def find(self, selector):
        return self.command("POST", "/element", {"using": "css selector", "value": selector})[ELEMENT]

    def find_all(self, selector):
        found = self.command("POST", "/elements", {"using": "css selector", "value": selector})
        return [element[ELEMENT] for element in found]

    def click(self, selector):
        """Waits for what is drawn anew or still moves into place."""
        patience = 10
        end = time.monotonic() + patience
        while True:
            try:
                return self.command("POST", f"/element/{self.find(selector)}/click")
            except RuntimeError:
                if time.monotonic() > end:
                    raise
                time.sleep(0.1)

    def label(self, element):
        """The name that assistive programs call the element."""
        return self.command("GET", f"/element/{element}/computedlabel")

    def role(self, element):
        return self.command("GET", f"/element/{element}/computedrole")

    def press(self, *keys):
        """Each is a name in KEYS or a text."""
        typed = "".join(KEYS.get(key, key) for key in keys)
        actions = [{"type": kind, "value": key} for key in typed for kind in ("keyDown", "keyUp")]
        self.command("POST", "/actions", {"actions": [{"type": "key", "id": "keys", "actions": actions}]})

    def middle_click(self, selector):
        place = {"type": "pointerMove", "duration": 0, "x": 0, "y": 0, "origin": {ELEMENT: self.find(selector)}}
        moves = [place, {"type": "pointerDown", "button": 1}, {"type": "pointerUp", "button": 1}]
        self.command("POST", "/actions", {"actions": [{"type": "pointer", "id": "mouse", "actions": moves}]})

    def wheel(self, x, y, amount):
        step = {"type": "scroll", "x": x, "y": y, "deltaX": 0, "deltaY": amount, "duration": 0, "origin": "viewport"}
        self.command("POST", "/actions", {"actions": [{"type": "wheel", "id": "wheel", "actions": [step]}]})

    def drag(self, x, y, dx, dy):
        moves = [{"type": "pointerMove", "duration": 0, "x": x, "y": y}, {"type": "pointerDown", "button": 0},
                 {"type": "pointerMove", "duration": 50, "x": x + dx, "y": y + dy}, {"type": "pointerUp", "button": 0}]
        self.command("POST", "/actions", {"actions": [{"type": "pointer", "id": "mouse", "actions": moves}]})

    def back(self):
        self.command("POST", "/back")

    def forward(self):
        self.command("POST", "/forward")

    def devtools(self, command, **parameters):
        return self.command("POST", "/goog/cdp/execute", {"cmd": command, "params": parameters})

    def console(self):
        """What the console says since it was asked last: errors of scripts and of the policy of the page."""
        return [entry["message"] for entry in self.command("POST", "/se/log", {"type": "browser"})]

    def screenshot(self, path):
        with open(path, "wb") as file:
            file.write(base64.b64decode(self.command("GET", "/screenshot")))

    def wait_for(self, condition, seconds=10):
        """Until the expression `condition` is true in the page."""
        end = time.monotonic() + seconds
        while not self.script("return Boolean(" + condition + ")"):
            if time.monotonic() > end:
                raise AssertionError("in vain: " + condition)
            time.sleep(0.02)
