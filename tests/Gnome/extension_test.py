"""The extension in a real GNOME Shell. Started by ./run."""
import glob
import os
import re
import subprocess
import tempfile
import time

from gi.repository import GLib

from gnome_test import SHELL, GnomeTest
from session import wait_until

PATH = "/io/github/talmo/Shell"
INTERFACE = "io.github.talmo.Shell1"
BUS = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")


class Talmo:
    """Calls the extension as Talmo does: as the owner of its name."""

    def __init__(self, session, owns_name=True):
        self.session = session
        self.client = session.client()
        self.changes = []
        self.client.bus.signal_subscribe(None, INTERFACE, "KeyChanged", PATH, None, 0,
                                         lambda *signal: self.changes.append(signal[5].unpack()))
        if owns_name:
            self.client.call(*BUS, "RequestName", GLib.Variant("(su)", ("io.github.talmo.Talmo", 4)))
            wait_until(self.is_known, "the extension to know Talmo")

    def is_known(self):
        try:
            return self.call("Focus")
        except GLib.GError:
            return False

    def call(self, method, signature="()", *arguments):
        return self.client.call(SHELL, PATH, INTERFACE, method, GLib.Variant(signature, arguments))

    def watch(self, *keys):
        return self.call("WatchKeys", "(as)", keys)[0]

    def paste(self, shortcut="Ctrl+V", window=None):
        return self.call("Paste", "(ts)", self.call("Focus")[0] if window is None else window, shortcut)[0]

    def next_change(self):
        wait_until(lambda: self.changes, "a key")
        key, is_down, _time = self.changes.pop(0)
        return key, is_down


class ExtensionTest(GnomeTest):
    def setUp(self):
        super().setUp()
        self.talmo = Talmo(self.session)
        self.addCleanup(self.close, self.talmo)

    def close(self, talmo):
        if not talmo.client.bus.is_closed():
            talmo.client.close()

    def set_layout(self, layout):
        self.session.eval("imports.gi.Gio.Settings.new('org.gnome.desktop.input-sources').set_value('sources', "
                          f"new imports.gi.GLib.Variant('a(ss)', [['xkb', '{layout}']]))")
        manager = "imports.ui.status.keyboard.getInputSourceManager()"
        wait_until(lambda: self.session.eval(f"{manager}.currentSource?.xkbId") == layout, "the layout")

    def assert_refused(self, error, call, *arguments):
        with self.assertRaises(GLib.GError) as raised:
            call(*arguments)
        self.assertIn(error, raised.exception.message)

    def test_reports_press_and_release_while_wayland_window_has_focus(self):
        window = self.window()
        self.assertEqual(self.talmo.watch("Control_R"), ["Control_R"])
        self.session.key("right ctrl", True)
        self.assertEqual(self.talmo.next_change(), ("Control_R", True))
        self.assertEqual(self.talmo.changes, [])
        self.session.key("right ctrl", False)
        self.assertEqual(self.talmo.next_change(), ("Control_R", False))
        self.assertNotIn({"focus": False}, window.read())

    def test_reports_release_of_key_that_is_no_modifier(self):
        self.talmo.watch("Pause")
        for seconds in (0.1, 1.0):  # Without repeats, and with many.
            self.session.key("pause", True)
            self.assertEqual(self.talmo.next_change(), ("Pause", True))
            end = time.monotonic() + seconds
            wait_until(lambda: time.monotonic() > end, "the time")
            self.assertEqual(self.talmo.changes, [])
            self.session.key("pause", False)
            self.assertEqual(self.talmo.next_change(), ("Pause", False))

    def test_watched_modifier_still_acts_as_one(self):
        window = self.window()
        self.talmo.watch("Control_R")
        self.session.key("right ctrl", True)
        self.session.tap("c")
        self.session.key("right ctrl", False)
        wait_until(lambda: {"key": "c", "state": 4} in window.read(), "Ctrl+C")
        self.assertEqual([self.talmo.next_change(), self.talmo.next_change()],
                         [("Control_R", True), ("Control_R", False)])

    def test_keeps_key_held_when_another_is_watched_too(self):
        self.talmo.watch("Control_R")
        self.session.key("right ctrl", True)
        self.assertEqual(self.talmo.next_change(), ("Control_R", True))
        self.assertEqual(self.talmo.watch("Control_R", "<Control>Escape"), ["Control_R", "<Control>Escape"])
        self.session.tap("escape")
        self.assertEqual(self.talmo.next_change(), ("<Control>Escape", True))
        self.session.key("right ctrl", False)
        self.assertIn(("Control_R", False), [self.talmo.next_change(), self.talmo.next_change()])

    def test_releases_held_key_when_it_is_no_longer_watched(self):
        self.talmo.watch("Control_R")
        self.session.key("right ctrl", True)
        self.assertEqual(self.talmo.next_change(), ("Control_R", True))
        self.talmo.watch()
        self.assertEqual(self.talmo.next_change(), ("Control_R", False))
        self.session.key("right ctrl", False)
        self.session.tap("right ctrl")
        self.talmo.call("Focus")  # A key reported before this answer would have arrived before it.
        self.assertEqual(self.talmo.changes, [])

    def test_does_not_watch_keys_that_type_nor_more_than_eight(self):
        self.assertEqual(self.talmo.watch("a", "space", "<Control>a", "Control_L", "Return", "1", "F9"), ["F9"])
        self.assertEqual(len(self.talmo.watch(*[f"F{n}" for n in range(1, 13)])), 8)

    def test_leaves_out_keys_that_keyboard_lacks(self):
        self.assertEqual(self.talmo.watch("F13", "F9"), ["F9"])

    def test_pastes_into_text_field(self):
        window = self.window()
        self.copy("zwölf ✓")
        self.assertEqual(self.talmo.paste(), "posted")
        window.wait_for_text("zwölf ✓")
        self.assertEqual(window.keys(), ["Control_L", "v"])

    def test_pastes_into_terminal(self):
        window = self.window("terminal")
        self.copy("ls")
        self.assertEqual(self.talmo.paste("Ctrl+Shift+V"), "posted")
        window.wait_for_text("ls")

    def test_pastes_into_x_window(self):
        window = self.window(backend="x11")
        self.copy("over X")
        self.assertEqual(self.talmo.paste(), "posted")
        window.wait_for_text("over X")

    def test_pastes_while_dictation_key_is_held(self):
        window = self.window()
        self.talmo.watch("Control_R")
        self.copy("held")
        self.session.key("right ctrl", True)
        self.assertEqual(self.talmo.next_change(), ("Control_R", True))
        self.assertEqual(self.talmo.paste(), "posted")
        window.wait_for_text("held")
        self.assertEqual(self.talmo.changes, [])
        self.session.key("right ctrl", False)
        self.assertEqual(self.talmo.next_change(), ("Control_R", False))

    def test_pastes_with_layouts_that_have_v_elsewhere_or_not_at_all(self):
        window = self.window()
        self.addCleanup(self.set_layout, "us")
        for text, layout in (("Дворак", "us+dvorak"), ("Русский", "ru"), ("Ελληνικά", "gr")):
            self.set_layout(layout)
            self.copy(text)
            before = window.read()[-1].get("text", "")
            self.assertEqual(self.talmo.paste(), "posted")
            wait_until(lambda: any(line.get("text", "").endswith(text) for line in window.read()), f"{layout}")
            self.assertNotEqual(before, text)

    def test_waits_for_shift_to_be_released_before_pasting(self):
        window = self.window()
        self.copy("later")
        self.session.key("shift", True)
        GLib.timeout_add(100, lambda: self.session.key("shift", False))
        self.assertEqual(self.talmo.paste(), "posted")
        window.wait_for_text("later")

    def test_presses_nothing_while_shift_is_held_too_long(self):
        window = self.window()
        self.session.key("shift", True)
        self.addCleanup(self.session.key, "shift", False)
        self.assertEqual(self.talmo.paste(), "keys-held")
        self.assertEqual(window.keys(), ["Shift_L"])

    def test_presses_nothing_if_another_window_has_focus(self):
        first = self.window()
        number = self.talmo.call("Focus")[0]
        second = self.window()
        self.assertEqual(self.talmo.paste(window=number), "window-changed")
        self.session.tap("a")
        second.wait_for_text("a")
        self.assertEqual(first.keys() + second.keys(), ["a"])

    def test_presses_nothing_while_overview_is_open(self):
        window = self.window()
        number = self.talmo.call("Focus")[0]
        self.session.eval("Main.overview.show()")
        self.addCleanup(self.session.eval, "Main.overview.hide()")
        self.assertEqual(self.talmo.paste(window=number), "keyboard-grabbed")
        self.assertEqual(window.keys(), [])

    def test_refuses_all_other_shortcuts(self):
        window = self.window()
        for shortcut in ("Ctrl+A", "Return", "v", "toString", ""):
            self.assert_refused("InvalidArgs", self.talmo.paste, shortcut)
        self.assertEqual(window.keys(), [])

    def commit(self, text):
        """Once the toolkit has announced its field."""
        wait_until(lambda: self.talmo.call("Focus")[5] == 1, "the field")
        return self.talmo.call("Commit", "(ts)", self.talmo.call("Focus")[0], text)[0]

    def test_commits_text_to_field_without_key_or_clipboard(self):
        window = self.window()
        self.copy("earlier")
        self.assertEqual(self.commit("Zwölf ✓\nlines"), "committed")
        window.wait_for_text("Zwölf ✓\nlines")
        self.assertEqual(window.keys(), [])
        self.assertEqual(self.copied(), "earlier")

    def test_commits_longest_text_and_none_that_is_longer(self):
        window = self.window()
        text = 30 * (29 * "😀" + "\n")
        self.assertEqual(self.commit(text + "x"), "too-long")
        self.assertEqual(self.commit(text), "committed")
        window.wait_for_text(text)

    def test_commits_to_terminal(self):
        window = self.window("terminal")
        self.assertEqual(self.commit("ls"), "committed")
        window.wait_for_text("ls")

    def test_commits_nothing_to_password_field(self):
        window = self.window("password")
        wait_until(lambda: self.talmo.call("Focus")[5] == 2, "the password field")
        self.assertEqual(self.talmo.call("Commit", "(ts)", self.talmo.call("Focus")[0], "secret")[0], "no-field")
        self.assertFalse(any("text" in line for line in window.read()))

    def test_commits_nothing_to_another_window(self):
        window = self.window()
        self.assertEqual(self.talmo.call("Commit", "(ts)", self.talmo.call("Focus")[0] + 1, "x")[0], "window-changed")
        self.assertFalse(any("text" in line for line in window.read()))

    def test_module_for_newer_shells_can_be_loaded(self):
        """With stand-ins for what these import from the shell, which only they have."""
        with open(os.path.expanduser("~/.local/share/gnome-shell/extensions/talmo@talmo.github.io/extension.js")) as file:
            code = re.sub(r"import .* from 'resource://.*\n", "", file.read())
        with tempfile.NamedTemporaryFile("w", suffix=".js") as module:
            module.write(f"const Main = {{}}, getInputSourceManager = () => null; class Extension {{}}\n{code}\n"
                         "print(typeof TalmoExtension.prototype.enable, typeof TalmoShell.prototype.CommitAsync);\n")
            module.flush()
            folders = ":".join(glob.glob("/usr/lib/*/mutter-*") + ["/usr/lib/gnome-shell"])
            result = subprocess.run(["gjs", "-m", module.name], capture_output=True, text=True, check=False,
                                    env=dict(os.environ, GI_TYPELIB_PATH=folders, LD_LIBRARY_PATH=folders))
        self.assertEqual((result.stdout, result.stderr), ("function function\n", ""))

    def test_describes_focused_window(self):
        window = self.window()
        # The toolkit announces its text field only after the window has the focus.
        wait_until(lambda: self.talmo.call("Focus")[5] == 1, "the text field")
        number, _application, window_class, process, is_fullscreen, _field = self.talmo.call("Focus")
        self.assertGreater(number, 0)
        self.assertIn("talmo-text-window", window_class)
        self.assertEqual((process, is_fullscreen), (window.process, False))
        self.session.eval("global.display.focus_window.make_fullscreen()")
        wait_until(lambda: self.talmo.call("Focus")[4], "full screen")

    def test_recognises_password_field(self):
        self.window("password")
        wait_until(lambda: self.talmo.call("Focus")[5] == 2, "the password field")

    def test_describes_no_window_as_zero(self):
        wait_until(lambda: self.talmo.call("Focus") == (0, "", "", 0, False, 0), "a description of no window")

    def test_refuses_callers_that_do_not_own_talmos_name(self):
        stranger = Talmo(self.session, owns_name=False)
        self.addCleanup(self.close, stranger)
        window = self.window()
        number = self.talmo.call("Focus")[0]
        self.assert_refused("AccessDenied", stranger.call, "Focus")
        self.assert_refused("AccessDenied", stranger.watch, "Control_R")
        self.assert_refused("AccessDenied", stranger.paste, "Ctrl+V", number)
        self.assert_refused("AccessDenied", stranger.paste, "Ctrl+A", number)
        self.assert_refused("AccessDenied", stranger.call, "Commit", "(ts)", number, "x")
        self.assertEqual(window.keys(), [])

    def test_tells_only_talmo_of_keys(self):
        stranger = Talmo(self.session, owns_name=False)
        self.addCleanup(self.close, stranger)
        self.talmo.watch("Control_R")
        self.session.tap("right ctrl")
        self.assertEqual(self.talmo.next_change(), ("Control_R", True))
        self.assertEqual(self.talmo.next_change(), ("Control_R", False))
        stranger.client.call(*BUS, "GetId")
        self.assertEqual(stranger.changes, [])

    def test_keys_reach_windows_again_when_talmo_has_ended(self):
        window = self.window()
        self.talmo.watch("Control_R")
        self.talmo.client.close()

        def reaches():
            self.session.tap("right ctrl")
            return "Control_R" in window.keys()

        wait_until(reaches, "Right Ctrl in the window")

    def test_disabled_extension_leaves_bus_and_releases_held_key(self):
        self.talmo.watch("Control_R")
        self.session.key("right ctrl", True)
        self.assertEqual(self.talmo.next_change(), ("Control_R", True))
        self.extensions("DisableExtension")
        self.assertEqual(self.talmo.next_change(), ("Control_R", False))
        self.session.key("right ctrl", False)
        has_owner = GLib.Variant("(s)", ("io.github.talmo.Shell",))
        wait_until(lambda: self.talmo.client.call(*BUS, "NameHasOwner", has_owner) == (False,), "the name to go")
        self.assert_refused("UnknownMethod", self.talmo.call, "Focus")
