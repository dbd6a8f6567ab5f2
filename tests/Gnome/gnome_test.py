"""What the tests in a GNOME session share."""
import atexit
import json
import os
import sys
import time
import unittest

from gi.repository import GLib

from session import Session, wait_until

UUID = "talmo-43@talmo.github.io"
SHELL = "org.gnome.Shell"


def parse(line):
    """text_window.py writes JSON; the windows of the end-to-end tests write "text: x" and "focus: yes"."""
    if line.startswith(b"{"):
        return json.loads(line)
    what, _, value = line.decode().partition(": ")
    return {what: {"yes": True, "no": False}.get(value, value)}


class Window:
    """A window of the session that has the focus: of text_window.py, or of another program."""

    def __init__(self, session, kind, backend="wayland", command=None):
        self._unread = b""
        self.lines = []
        script = os.path.join(os.path.dirname(__file__), "text_window.py")
        self._program = session.program(*(command or ("/usr/bin/python3", script, kind)), GDK_BACKEND=backend,
                                        QT_QPA_PLATFORM=backend)
        os.set_blocking(self._program.stdout.fileno(), False)
        self.process = self._program.pid

    def wait_for_focus(self, session):
        wait_until(lambda: session.eval("global.display.focus_window?.get_pid()") == self.process, "the focus", 20)
        wait_until(lambda: {"focus": True} in self.read(), "the window to notice", 20)

    def read(self):
        self._unread += self._program.stdout.read() or b""
        *lines, self._unread = self._unread.split(b"\n")
        self.lines += map(parse, lines)
        return self.lines

    def keys(self):
        return [line["key"] for line in self.read() if "key" in line]

    def wait_for_text(self, text):
        wait_until(lambda: {"text": text} in self.read(), f"the text {text!r}; got {self.lines}")

    def close(self):
        self._program.kill()
        self._program.wait()
        self._program.stdout.close()


class GnomeTest(unittest.TestCase):
    """All tests share one session, with the extension enabled at the start of each."""
    session = None

    @classmethod
    def setUpClass(cls):
        if GnomeTest.session is None:
            start = time.monotonic()
            GnomeTest.session = Session()
            atexit.register(GnomeTest.session.stop)
            print(f"GNOME Shell {cls.session.eval('imports.misc.config.PACKAGE_VERSION')}, "
                  f"up after {time.monotonic() - start:.1f} s", file=sys.stderr)

    def setUp(self):
        self.extensions("EnableExtension")

    def extensions(self, method):
        self.session.tester.call(SHELL, "/org/gnome/Shell", "org.gnome.Shell.Extensions", method,
                                 GLib.Variant("(s)", (UUID,)))

    def window(self, kind="text", backend="wayland", command=None):
        window = Window(self.session, kind, backend, command)
        self.addCleanup(window.close)
        window.wait_for_focus(self.session)
        return window

    def copy(self, text):
        self.session.eval("imports.gi.St.Clipboard.get_default().set_text("
                          f"imports.gi.St.ClipboardType.CLIPBOARD, {json.dumps(text)})")

    def copied(self):
        """The text on the clipboard; None if there is none."""
        self.session.eval("delete window.talmoClip; imports.gi.St.Clipboard.get_default().get_text("
                          "imports.gi.St.ClipboardType.CLIPBOARD, (_, text) => { window.talmoClip = [text]; }); 1")
        return wait_until(lambda: self.session.eval("window.talmoClip ?? null"), "the clipboard")[0]
