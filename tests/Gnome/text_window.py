"""text_window.py KIND: a window that prints what it gets as lines of JSON. KIND: text, password or terminal."""
import json
import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
gi.require_version("Vte", "2.91")
from gi.repository import Gdk, GLib, Gtk, Vte


def say(**what):
    print(json.dumps(what), flush=True)


def text_view():
    view = Gtk.TextView()
    view.get_buffer().connect("changed", lambda buffer: say(text=buffer.props.text))
    view.connect("key-press-event", lambda _view, event: say(key=Gdk.keyval_name(event.keyval), state=int(event.state)))
    return view


def password_entry():
    entry = Gtk.Entry(visibility=False, input_purpose=Gtk.InputPurpose.PASSWORD)
    entry.connect("changed", lambda _entry: say(text=entry.get_text()))
    return entry


def terminal():
    """Pastes with Ctrl+Shift+V, as terminals do; the widget alone has no shortcuts."""
    view = Vte.Terminal()

    def pressed(_view, event):
        both = Gdk.ModifierType.CONTROL_MASK | Gdk.ModifierType.SHIFT_MASK
        if event.state & both == both and event.keyval == Gdk.KEY_V:
            view.paste_clipboard()
            return True
        return False

    view.connect("key-press-event", pressed)
    view.connect("commit", lambda _view, text, _size: say(text=text))
    view.spawn_async(Vte.PtyFlags.DEFAULT, None, ["/bin/cat"], None, GLib.SpawnFlags.DEFAULT, None, None, -1, None, None)
    return view


# The window's class, by which programs are known.
GLib.set_prgname("org.gnome.Terminal" if sys.argv[1] == "terminal" else "talmo-text-window")
window = Gtk.Window(title=sys.argv[1], default_width=500, default_height=200)
window.add({"text": text_view, "password": password_entry, "terminal": terminal}[sys.argv[1]]())
window.connect("focus-in-event", lambda *_: say(focus=True))
window.connect("focus-out-event", lambda *_: say(focus=False))
window.show_all()
Gtk.main()
