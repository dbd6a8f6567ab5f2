"""How long a text takes into a Wayland window of GNOME Shell: by Talmo, and by the clipboard and a key of the shell's
own remote desktop, in turn. Started by scripts/bench-wayland."""
import os
import statistics
import subprocess
import time
import unittest

from gi.repository import GLib

from adapters_test import WithoutExtensionTest
from session import wait_until

ROUNDS = int(os.environ.get("TALMO_BENCH_ROUNDS", "20"))


class PasteTimes(WithoutExtensionTest):
    """None of the tests that it inherits is run here."""

    def setUp(self):
        super().setUp()
        self.samples = {}
        self.lost = {}
        self.number = 0

    def time(self, way, insert):
        self.number += 1
        mark = f"<{self.number}>"
        start = time.monotonic()
        insert(f"a text of some words, number {mark}")
        samples = self.samples.setdefault(way, [])
        try:
            wait_until(lambda: any(mark in line.get("text", "") for line in self.shown.read()), mark)
            samples.append((time.monotonic() - start) * 1000)
        except AssertionError:
            self.lost[way] = self.lost.get(way, 0) + 1
        pause = time.monotonic() + 0.4  # Until the clipboard is restored.
        wait_until(lambda: time.monotonic() > pause, "the pause")

    def switch(self, method, effect):
        """Waits until Talmo has noticed."""
        before = self.said().count(effect)
        self.extensions(method)
        wait_until(lambda: self.said().count(effect) > before, effect)

    def by_talmo(self, text):
        self.assertEqual(self.insert(text), (0, ""), self.said())

    def by_clipboard(self, text):
        # wl-copy would need a window that gets the focus here; the shell bridges the clipboard of X.
        subprocess.run(["xclip", "-selection", "clipboard"], env=self.session.environment, input=text, text=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        for key, is_down in ((29, True), (47, True), (47, False), (29, False)):
            self.session.tester.call(*self.session._keyboard, "NotifyKeyboardKeycode",
                                     GLib.Variant("(ub)", (key, is_down)))

    def runTest(self):
        before = os.getloadavg()[0]
        self.start_talmo(**{"linux.pasteWithLentKeyboard": True})
        self.shown = self.window()
        self.copy("earlier")
        self.switch("EnableExtension", "is available")
        self.insert("The first paste of a session that has just started is lost at times. ")
        self.switch("DisableExtension", "is gone")
        for _round in range(ROUNDS):
            self.switch("EnableExtension", "is available")
            self.time("talmoctl insert, by the extension", self.by_talmo)
            self.switch("DisableExtension", "is gone")
            self.time("talmoctl insert, by the lent keyboard", self.by_talmo)
            self.time("xclip, then Ctrl+V", self.by_clipboard)
        reference = statistics.median(self.samples["xclip, then Ctrl+V"])
        print(f"GNOME Shell, {ROUNDS} rounds; load average {before:.1f} to {os.getloadavg()[0]:.1f}")
        for way, times in self.samples.items():
            p95 = sorted(times)[max(0, round(len(times) * 0.95) - 1)]
            print(f"{way:40} p50 {statistics.median(times):6.1f} ms  p95 {p95:6.1f} ms  "
                  f"{statistics.median(times) / reference:.2f} of the last  lost {self.lost.get(way, 0)}")


def load_tests(_loader, _tests, _pattern):
    return unittest.TestSuite([PasteTimes("runTest")])
