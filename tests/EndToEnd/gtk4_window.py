"""GtkWindow.cpp for GTK 4."""
import gi

gi.require_version("Gtk", "4.0")
from gi.repository import GLib, Gtk


def say(what, value):
    print(f"{what}: {value}", flush=True)


Gtk.init()
window = Gtk.Window(title="Target", default_width=500, default_height=300)
view = Gtk.TextView()
view.get_buffer().connect("changed", lambda buffer: say("text", buffer.props.text.replace("\n", "\\n")))
window.connect("notify::is-active", lambda *_: say("focus", "yes" if window.is_active() else "no"))
window.set_child(view)
window.present()
view.grab_focus()
GLib.MainLoop().run()
