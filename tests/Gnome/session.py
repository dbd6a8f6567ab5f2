"""A GNOME session without a screen: private buses, a mock of the login service, and GNOME Shell itself."""
import json
import os
import re
import subprocess
import time

from gi.repository import Gio, GLib

SYSTEM_BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>custom</type><listen>unix:path={path}</listen><auth>EXTERNAL</auth>
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy>
</busconfig>"""

# The codes of evdev, which the remote desktop interface takes.
KEYS = {"right ctrl": 97, "left ctrl": 29, "shift": 42, "alt": 56, "pause": 119, "a": 30, "c": 46, "f13": 183,
        "escape": 1}


def wait_until(condition, what, seconds=10):
    """Runs the main context until the condition holds."""
    context = GLib.MainContext.default()
    end = time.monotonic() + seconds
    while not (result := condition()):
        if time.monotonic() > end:
            raise AssertionError(f"timed out waiting for {what}")
        wake = GLib.timeout_add(5, lambda: False)
        context.iteration(True)
        if (source := context.find_source_by_id(wake)) is not None:
            source.destroy()
    return result


class Client:
    """A connection of its own to the session bus."""

    def __init__(self, address):
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)

    def call(self, name, path, interface, method, arguments=None):
        """The results as a tuple. Runs the main context while it waits."""
        done = []
        self.bus.call(name, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 20000, None,
                      lambda bus, result: done.append(result))
        wait_until(lambda: done, f"the answer to {method}", 25)
        return self.bus.call_finish(done[0]).unpack()

    def close(self):
        self.bus.close_sync(None)


class Session:
    def __init__(self):
        self._processes = []
        self.environment = dict(os.environ, XDG_CURRENT_DESKTOP="GNOME", XDG_SESSION_TYPE="wayland")
        run = os.environ["XDG_RUNTIME_DIR"]
        try:
            self._start_buses(run)
            self._start_shell(run)
        except BaseException:
            self.stop()
            raise

    def _start(self, *command, **options):
        process = subprocess.Popen(command, env=self.environment, **options)
        self._processes.append(process)
        return process

    def _start_buses(self, run):
        for name, variable in (("system", "DBUS_SYSTEM_BUS_ADDRESS"), ("session", "DBUS_SESSION_BUS_ADDRESS")):
            path = f"{run}/{name}_bus"
            config = ["--session", f"--address=unix:path={path}"]
            if name == "system":
                with open(f"{run}/system.conf", "w") as file:
                    file.write(SYSTEM_BUS.format(path=path))
                config = [f"--config-file={run}/system.conf"]
            self._start("dbus-daemon", "--nofork", *config, stderr=subprocess.DEVNULL)
            wait_until(lambda: os.path.exists(path), f"the {name} bus")
            self.environment[variable] = f"unix:path={path}"
        self._start("/usr/bin/python3", "-m", "dbusmock", "--template", "logind", stdout=subprocess.DEVNULL,
                    stderr=subprocess.DEVNULL)
        self._wait_for_name("--system", "org.freedesktop.login1")

    def _wait_for_name(self, bus, name):
        subprocess.run(["gdbus", "wait", bus, "--timeout", "60", name], env=self.environment, check=True)

    def _start_shell(self, run):
        self.log = os.environ.get("KEEP_LOG", f"{run}/shell.log")
        with open(self.log, "w") as log:
            self._start("gnome-shell", "--headless", "--wayland", "--virtual-monitor", "1280x800",
                        "--wayland-display", "wayland-talmo", "--unsafe-mode", stdout=log, stderr=log)
        self._wait_for_name("--session", "org.gnome.Shell")
        display = wait_until(self._x_display, "the X server's display", 60)
        authority = [f"{run}/{name}" for name in os.listdir(run) if name.startswith(".mutter-Xwaylandauth")]
        self.environment.update(WAYLAND_DISPLAY="wayland-talmo", DISPLAY=display, XAUTHORITY=authority[0])
        self.tester = self.client()
        wait_until(self._has_started, "the shell", 60)
        self.eval("Main.overview.hide()")  # With which the shell starts.
        wait_until(lambda: self.eval("Main.overview.visible") is False, "the overview to be gone")
        self._plug_in_keyboard()

    def _x_display(self):
        with open(self.log) as log:
            found = re.search(r"public X11 display (:\d+)", log.read())
        return found and found[1]

    def _has_started(self):
        try:
            return self.eval("Main.layoutManager._startingUp") is False
        except (GLib.GError, RuntimeError):
            return False  # The shell owns its name before it can answer.

    def client(self):
        return Client(self.environment["DBUS_SESSION_BUS_ADDRESS"])

    def eval(self, code):
        """The value of JavaScript run in the shell."""
        ok, value = self.tester.call("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell", "Eval",
                                     GLib.Variant("(s)", (code,)))
        if not ok:
            raise RuntimeError(value)
        return json.loads(value) if value else None

    def _plug_in_keyboard(self):
        """The seat has no keyboard before its first key, which is lost."""
        service = "org.gnome.Mutter.RemoteDesktop"
        path, = self.tester.call(service, "/org/gnome/Mutter/RemoteDesktop", service, "CreateSession")
        self._keyboard = (service, path, f"{service}.Session")
        self.tester.call(*self._keyboard, "Start")
        self.tap("shift")

    def key(self, name, is_down):
        self.tester.call(*self._keyboard, "NotifyKeyboardKeycode", GLib.Variant("(ub)", (KEYS[name], is_down)))

    def tap(self, name):
        self.key(name, True)
        self.key(name, False)

    def program(self, *arguments, **environment):
        """A program of the session with its output in a pipe."""
        return subprocess.Popen(arguments, env=dict(self.environment, **environment), stdout=subprocess.PIPE, bufsize=0)

    def stop(self):
        for process in reversed(self._processes):
            process.terminate()
        for process in self._processes:
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
