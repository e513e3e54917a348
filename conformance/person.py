"""What a person does before the tool: sessions that `kelvane watch` and `kelvane ui` carry out, as sessions/NAME.txt
tells. Its lines are read from the top:

    with watch | ui      which verb; then until the first other line
    set KEY=VALUE        a key of the configuration; PACKAGE stands for the name of the conformance package
    ACTION ...           for watch as it reads them; for ui one of those below, in the main dialog or the one of `in`

    in DIALOG                      check COMPONENT on|off         command NAME      answer BUTTON
    press COMPONENT                type, enter COMPONENT TEXT     open NAME.EXT     path PATH
    choose COMPONENT NAME          mark COMPONENT ROW...          window NUMBER     close DIALOG
    select, expand, collapse, activate COMPONENT NODE             save              closeWindow
"""
import http.cookiejar
import json
import re
import signal
import subprocess
import time
import urllib.request

PATIENCE = 120  # seconds for what one action leads to
WORDS = {"command": "command", "open": "model", "path": "path", "answer": "button", "window": "window", "close": "dialog"}
OF_COMPONENT = {"press": None, "check": "on", "choose": "name", "type": "text", "enter": "text", "mark": "rows",
                "select": "node", "expand": "node", "collapse": "node", "activate": "node"}


def session(text, package):
    """(verb, keys, actions) of the text of a session."""
    lines = [line for line in text.splitlines() if line.strip() and not line.startswith("#")]
    verb = lines[0].removeprefix("with ")
    keys = [line.removeprefix("set ").replace("PACKAGE", package) for line in lines if line.startswith("set ")]
    return verb, keys, [line for line in lines[1:] if not line.startswith("set ")]


def action(line, dialog):
    """What the server of `kelvane ui` takes for a line."""
    name, _, rest = line.partition(" ")
    if name in WORDS:
        value = int(rest) if name in ("answer", "window") else None if rest == "none" else rest
        return {"do": name, WORDS[name]: value}
    if name not in OF_COMPONENT:
        return {"do": name}
    component, _, value = rest.partition(" ")
    asked = {"do": name, "dialog": dialog, "component": component}
    if OF_COMPONENT[name]:
        asked[OF_COMPONENT[name]] = {"on": value == "on", "rows": value.split()}.get(OF_COMPONENT[name], value)
    return asked


class Browser:
    """The page of `kelvane ui`, without one."""

    def __init__(self, address):
        self.base = address.partition("/?")[0]
        self.opener = urllib.request.build_opener(urllib.request.HTTPCookieProcessor(http.cookiejar.CookieJar()))
        self.opener.open(address).read()

    def state(self):
        return json.loads(self.opener.open(self.base + "/state").read())

    def do(self, asked):
        request = urllib.request.Request(self.base + "/do", json.dumps(asked).encode(),
                                         {"Content-Type": "application/json", "Origin": self.base})
        before = self.state()["question"]
        number = json.loads(self.opener.open(request).read())["number"]
        until = time.monotonic() + PATIENCE
        while time.monotonic() < until:
            state = self.state()
            done = state["worked"] >= number and not state["busy"]
            if done or (state["question"] and state["question"] != before):
                return state
            time.sleep(0.01)
        raise SystemExit(f"{asked} has no end")


def press_all(lines, words, **process):
    """Starts `kelvane ui`, presses all that the lines tell, and ends it. SystemExit at the first that is refused."""
    dialog = "kvanerunner"
    with subprocess.Popen(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **process) as program:
        address = next((match for line in program.stdout if (match := re.search(r"http://\S+", line))), None)
        if not address:
            raise SystemExit(f"{words[1]} doesn't start")
        try:
            browser = Browser(address.group(0))
            for line in lines:
                if line.startswith("in "):
                    dialog = line.removeprefix("in ")
                    continue
                notice = browser.do(action(line, dialog))["notice"]
                if notice:
                    raise SystemExit(f"{line}: {notice['text']}")
        finally:
            program.send_signal(signal.SIGINT)
            program.communicate()
