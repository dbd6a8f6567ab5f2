"""Talmo's own programs in a GNOME session. Started by ./run, after a build."""
import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

from gi.repository import GLib

from gnome_test import GnomeTest
from session import wait_until

PROGRAMS = os.environ.get("TALMO_BIN", "")


@unittest.skipUnless(os.path.exists(f"{PROGRAMS}/GnomeTests"), "GnomeTests is not built")
class AdaptersTest(GnomeTest):
    def test_adapters_in_cpp(self):
        environment = dict(self.session.environment, TALMO_GNOME_SESSION="1", QT_QPA_PLATFORM="offscreen",
                           GDK_BACKEND="wayland")
        program = subprocess.Popen([f"{PROGRAMS}/GnomeTests"], env=environment, stdout=sys.stderr)
        self.addCleanup(program.kill)
        self.assertEqual(program.wait(120), 0)


class PasteTest(GnomeTest):
    def wait_for_earlier_clipboard(self):
        """It is restored in the background, once nobody has read the text for a while. Asking is reading, too."""
        for _attempt in range(10):
            next_look = time.monotonic() + 0.4
            wait_until(lambda: time.monotonic() > next_look, "the next look")
            if self.copied() == "earlier":
                return
        self.fail(f"on the clipboard: {self.copied()}")


@unittest.skipUnless(os.path.exists(f"{PROGRAMS}/talmoctl"), "talmoctl is not built")
class InsertionTest(PasteTest):
    def insert(self, text):
        """Starts talmoctl insert."""
        program = subprocess.Popen([f"{PROGRAMS}/talmoctl", "insert"], env=self.session.environment, text=True,
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.addCleanup(program.kill)
        program.stdin.write(text)
        program.stdin.close()
        return program

    def result(self, program):
        wait_until(lambda: program.poll() is not None, "the end of talmoctl", 20)
        output = program.stdout.read() + program.stderr.read()
        program.stdout.close()
        program.stderr.close()
        return program.returncode, output

    def test_inserts_into_wayland_window_and_restores_clipboard(self):
        window = self.window()
        self.copy("earlier")
        status, output = self.result(self.insert("Zwölf ✓"))
        self.assertEqual((status, output), (0, ""))
        window.wait_for_text("Zwölf ✓")
        self.wait_for_earlier_clipboard()
        self.assertNotIn({"focus": False}, window.read())

    def test_inserts_into_terminal(self):
        window = self.window("terminal")
        self.copy("earlier")
        self.assertEqual(self.result(self.insert("ls")), (0, ""))
        window.wait_for_text("ls")
        self.wait_for_earlier_clipboard()

    def test_inserts_into_x_window(self):
        window = self.window(backend="x11")
        self.copy("earlier")
        self.assertEqual(self.result(self.insert("over X")), (0, ""))
        window.wait_for_text("over X")
        self.wait_for_earlier_clipboard()

    def test_inserts_ten_times_in_a_row(self):
        window = self.window()
        self.copy("earlier")
        for number in range(10):
            self.assertEqual(self.result(self.insert(f"{number} ")), (0, ""))
        window.wait_for_text("0 1 2 3 4 5 6 7 8 9 ")
        self.wait_for_earlier_clipboard()

    def test_frozen_window_gets_text_and_not_earlier_clipboard(self):
        window = self.window()
        self.copy("earlier")
        os.kill(window.process, signal.SIGSTOP)
        GLib.timeout_add(400, lambda: os.kill(window.process, signal.SIGCONT))
        self.assertEqual(self.result(self.insert("right")), (0, ""))
        window.wait_for_text("right")
        self.wait_for_earlier_clipboard()

    def test_says_so_if_no_window_has_focus(self):
        status, output = self.result(self.insert("nowhere"))
        self.assertNotEqual((status, output), (0, ""))
        self.assertIn("clipboard", output)

    def test_says_so_without_extension(self):
        window = self.window()
        self.extensions("DisableExtension")
        program = self.insert("by hand")
        wait_until(lambda: self.copied() == "by hand", "the text on the clipboard")
        program.terminate()
        _status, output = self.result(program)
        self.assertIn("Ctrl+V", output)
        self.assertEqual(window.keys(), [])


@unittest.skipUnless(os.path.exists(f"{PROGRAMS}/talmo"), "talmo is not built")
class ProgramTest(GnomeTest):
    def test_talmo_watches_key_and_releases_it_at_end(self):
        window = self.window()
        program = subprocess.Popen([f"{PROGRAMS}/talmo"], env=self.session.environment, stdout=subprocess.PIPE,
                                   stderr=subprocess.STDOUT)
        self.addCleanup(program.stdout.close)
        self.addCleanup(program.kill)

        def reaches(key):
            before = len(window.keys())
            self.session.tap("right ctrl")
            self.session.tap("a")
            wait_until(lambda: "a" in window.keys()[before:], "the next key")
            return key in window.keys()[before:]

        wait_until(lambda: not reaches("Control_R"), "the key to be watched", 20)
        program.terminate()
        self.assertEqual(program.wait(10), 0)
        wait_until(lambda: reaches("Control_R"), "the key to be free")


class RunningTalmoTest(PasteTest):
    def start_talmo(self, **settings):
        folder = tempfile.mkdtemp(dir=os.environ["XDG_RUNTIME_DIR"])
        os.mkdir(f"{folder}/talmo")
        with open(f"{folder}/talmo/settings.json", "w") as file:
            json.dump({"linux.welcomeShown": True, "linux.languageModelAddress": "off"} | settings, file)
        self.environment = dict(self.session.environment, XDG_CONFIG_HOME=folder,
                                QT_LOGGING_RULES="talmo.general.debug=true")
        program = subprocess.Popen([f"{PROGRAMS}/talmo"], env=self.environment, stdout=subprocess.PIPE,
                                   stderr=subprocess.STDOUT)
        self.addCleanup(program.stdout.close)
        self.addCleanup(program.wait)
        self.addCleanup(program.kill)
        os.set_blocking(program.stdout.fileno(), False)
        self.talmo = program
        self.output = b""
        self.wait_for_output("ready:")

    def said(self):
        self.output += self.talmo.stdout.read() or b""
        return self.output.decode()

    def wait_for_output(self, text):
        wait_until(lambda: text in self.said(), f"{text!r} from Talmo", 20)

    def insert(self, text):
        program = subprocess.Popen([f"{PROGRAMS}/talmoctl", "insert"], env=self.environment, text=True,
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.addCleanup(program.stdout.close)
        self.addCleanup(program.kill)
        program.stdin.write(text)
        program.stdin.close()
        wait_until(lambda: program.poll() is not None, "the end of talmoctl", 20)
        return program.returncode, program.stdout.read()


@unittest.skipUnless(os.path.exists(f"{PROGRAMS}/talmo"), "talmo is not built")
class WithoutExtensionTest(RunningTalmoTest):
    """Talmo while the extension is not enabled."""

    def setUp(self):
        super().setUp()
        self.extensions("DisableExtension")

    def primary(self, text=None):
        kind = "imports.gi.St.ClipboardType.PRIMARY"
        if text is not None:
            return self.session.eval(f"imports.gi.St.Clipboard.get_default().set_text({kind}, {json.dumps(text)})")
        self.session.eval("delete window.talmoPrimary; imports.gi.St.Clipboard.get_default().get_text("
                          f"{kind}, (_, text) => {{ window.talmoPrimary = [text]; }}); 1")
        return wait_until(lambda: self.session.eval("window.talmoPrimary ?? null"), "the selection")[0]

    def test_pastes_with_lent_keyboard_once_allowed(self):
        self.start_talmo(**{"linux.pasteWithLentKeyboard": True})
        for kind, backend in (("text", "wayland"), ("terminal", "wayland"), ("text", "x11")):
            with self.subTest(kind=kind, backend=backend):
                window = self.window(kind, backend)
                self.copy("earlier")
                self.primary("selected")
                self.assertEqual(self.insert("lent"), (0, ""))
                wait_until(lambda: any("lent" in line.get("text", "") for line in window.read()),
                           f"the text; got {window.lines}")
                self.wait_for_earlier_clipboard()
                wait_until(lambda: self.primary() == "selected", "the earlier selection")
                self.assertFalse(any("earlier" in line.get("text", "") for line in window.read()))
                window.close()

    def test_presses_nothing_until_allowed(self):
        self.start_talmo()
        self.assertIn("only if you allow it", self.said())
        window = self.window()
        status, output = self.insert("by hand")
        self.assertNotEqual(status, 0)
        self.assertIn("Copied: press", output)
        self.assertEqual(self.copied(), "by hand")
        self.assertEqual(window.keys(), [])


@unittest.skipUnless(os.path.exists(f"{PROGRAMS}/talmo"), "talmo is not built")
class CommitTest(RunningTalmoTest):
    """Text that the shell's input method gives to the field."""
    WINDOWS = {
        "GTK 3": {"kind": "text"},
        "terminal": {"kind": "terminal"},
        "GTK 4": {"command": ("/usr/bin/python3", "tests/EndToEnd/gtk4_window.py")},
    }

    def setUp(self):
        super().setUp()
        self.start_talmo(**{"linux.commitText": True})
        self.wait_for_output("extension of GNOME Shell is available")

    def has_field(self):
        return self.session.eval("!!imports.ui.main.inputMethod.currentFocus")

    def test_field_gets_text_without_clipboard_or_key(self):
        for name, options in self.WINDOWS.items():
            with self.subTest(window=name):
                window = self.window(**options)
                wait_until(self.has_field, "the window's field")
                self.copy("earlier")
                self.assertEqual(self.insert("Zwölf ✓"), (0, ""))
                wait_until(lambda: any("Zwölf ✓" in line.get("text", "") for line in window.read()),
                           f"the text; got {window.lines}")
                self.assertEqual(self.copied(), "earlier", self.said())
                self.assertEqual(window.keys(), [])
                window.close()

    def test_window_without_field_is_pasted_into(self):
        for name, options in (("X", {"backend": "x11"}), ("Qt 6", {"command": (f"{PROGRAMS}/talmo-qt-entry-window",)})):
            with self.subTest(window=name):
                window = self.window(**options)
                self.copy("earlier")
                self.assertEqual(self.insert("pasted"), (0, ""))
                self.assertFalse(self.has_field())
                window.wait_for_text("pasted")
                self.wait_for_earlier_clipboard()
                window.close()

    def test_text_too_long_to_give_is_pasted(self):
        window = self.window()
        self.assertEqual(self.insert("word " * 200), (0, ""))
        window.wait_for_text("word " * 200)
        self.assertIn("v", window.keys())


@unittest.skipUnless(os.path.exists(f"{PROGRAMS}/talmo"), "talmo is not built")
@unittest.skipUnless(all(map(shutil.which, ("pulseaudio", "paplay", "flite"))), "no sound server or no voice")
class DictationTest(GnomeTest):
    """Speech at one end, text in a window at the other."""

    def setUp(self):
        super().setUp()
        folder = tempfile.mkdtemp(dir=os.environ["XDG_RUNTIME_DIR"])
        self.session.environment["PULSE_SERVER"] = f"unix:{folder}/native"
        # An idle null sink renders in blocks of up to two seconds unless rewinding is disabled.
        self.start("pulseaudio", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "-n", "--realtime=no",
                   "-L", f"module-native-protocol-unix socket={folder}/native auth-anonymous=1",
                   "-L", "module-null-sink sink_name=speech rate=48000 channels=2 format=float32le norewinds=1",
                   "-L", "module-remap-source master=speech.monitor source_name=mic")
        wait_until(lambda: "mic" in self.run_program("pactl", "get-default-source") or
                   self.run_program("pactl", "set-default-source", "mic"), "the sound server", 20)
        self.speech = f"{folder}/speech.wav"
        self.run_program("flite", "-voice", "slt", "-t", "thank you very much", "-o", self.speech)
        self.talmo = self.start(f"{PROGRAMS}/talmo", XDG_CONFIG_HOME=folder)  # So that each start is the first.
        os.set_blocking(self.talmo.stdout.fileno(), False)
        self.output = b""
        self.wait_for_output("ready:")

    def start(self, *command, **environment):
        program = subprocess.Popen(command, env=dict(self.session.environment, **environment),
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.addCleanup(program.stdout.close)
        self.addCleanup(program.wait)
        self.addCleanup(program.kill)
        return program

    def run_program(self, *command):
        return subprocess.run(command, env=self.session.environment, stdout=subprocess.PIPE, text=True,
                              stderr=subprocess.DEVNULL, check=False).stdout

    def wait_for_output(self, text):
        def has_come():
            self.output += self.talmo.stdout.read() or b""
            before, found, after = self.output.partition(text.encode())
            self.output = after if found else before
            return found
        try:
            wait_until(has_come, f"{text!r} from Talmo", 20)
        except AssertionError as error:
            raise AssertionError(f"{error}, which said: {self.output.decode()}") from None

    def dictate(self):
        self.session.key("right ctrl", True)
        self.wait_for_output("state: recording")
        player = self.start("paplay", "--device=speech", "--latency-msec=20", self.speech)
        wait_until(lambda: player.poll() is not None, "the end of the speech")
        self.session.key("right ctrl", False)

    def test_dictates_into_wayland_window(self):
        window = self.window()
        self.copy("earlier")
        self.dictate()
        wait_until(lambda: any("thank you very much" in line.get("text", "").lower() for line in window.read()),
                   f"the dictation in the window; got {window.lines}", 20)
        self.assertNotIn({"focus": False}, window.read())
        wait_until(lambda: self.copied() == "earlier", "the earlier clipboard")

    def test_dictates_into_own_welcome(self):
        wait_until(lambda: self.session.eval("global.display.focus_window?.get_title()") == "Welcome to Talmo",
                   "the welcome", 20)
        self.dictate()
        self.wait_for_output("state: inserting")
        self.wait_for_output("state: idle")  # It would be an error if the field had not taken the text.
