#!/usr/bin/python3
"""Reads programs as a screen reader does, over the accessibility bus.

    reader.py listen PROGRAM        print what happens in it, a line each, until standard input closes:
                                      says: NAME           a notification appeared, which is spoken
                                      focus: ROLE: NAME    the keyboard focus moved
                                      name: ROLE: NAME     a name was announced as changed
                                      description: ROLE: NAME
                                      value: ROLE: NAME
    reader.py tree PROGRAM          print what it shows, a line each: depth, role, name, name of its label, description,
                                    value, states, separated by tabs
    reader.py is-there PROGRAM      exit with 0 if it is on the bus, else with 1
"""
import sys
import warnings

import gi

gi.require_version("Atspi", "2.0")
warnings.simplefilter("ignore", DeprecationWarning)  # Debian 12 has nothing newer than what is deprecated.
from gi.repository import Atspi, GLib  # noqa: E402

STATES = {
    Atspi.StateType.FOCUSABLE: "focusable",
    Atspi.StateType.FOCUSED: "focused",
    Atspi.StateType.SENSITIVE: "enabled",
    Atspi.StateType.ACTIVE: "active",
    Atspi.StateType.CHECKED: "checked",
}


def say(line):
    print(line.replace("\n", " "), flush=True)


def listen(program):
    def is_its(source):
        application = source.get_application()
        return application is not None and application.get_name() == program

    def showing(event):
        # Roles that Orca speaks as soon as they appear.
        if event.detail1 and event.source.get_role() in (Atspi.Role.NOTIFICATION, Atspi.Role.ALERT):
            say(f"says: {event.source.get_name()}")

    def focused(event):
        if event.detail1:
            say(f"focus: {event.source.get_role_name()}: {event.source.get_name()}")

    def changed(what):
        return lambda event: say(f"{what}: {event.source.get_role_name()}: {event.source.get_name()}")

    def announced(event):
        say(f"says: {event.any_data}")

    handlers = {
        "object:state-changed:showing": showing,
        "object:announcement": announced,
        "object:state-changed:focused": focused,
        "object:property-change:accessible-name": changed("name"),
        "object:property-change:accessible-description": changed("description"),
        "object:property-change:accessible-value": changed("value"),
    }

    def handle(event):
        try:
            if is_its(event.source):
                for name, handler in handlers.items():
                    if event.type.startswith(name):
                        handler(event)
        except GLib.Error:
            pass  # Gone by now.

    listener = Atspi.EventListener.new(handle)
    for name in handlers:
        listener.register(name)
    GLib.io_add_watch(sys.stdin.fileno(), GLib.IO_HUP | GLib.IO_IN, lambda *_: Atspi.event_quit())
    say("listening")
    Atspi.event_main()


def application(program):
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        child = desktop.get_child_at_index(index)
        if child is not None and child.get_name() == program:
            return child
    return None


def label_of(node):
    for relation in node.get_relation_set():
        if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
            return relation.get_target(0).get_name()
    return ""


def value_of(node):
    value = node.get_value_iface()
    return "" if value is None else f"{value.get_current_value():g}"


def print_tree(node, depth=0):
    states = node.get_state_set()
    if depth > 0 and not states.contains(Atspi.StateType.SHOWING):
        return
    words = [word for state, word in STATES.items() if states.contains(state)]
    say("\t".join([str(depth), node.get_role_name(), node.get_name(), label_of(node), node.get_description(),
                   value_of(node), " ".join(words)]))
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None:
            print_tree(child, depth + 1)


def main():
    if len(sys.argv) != 3 or sys.argv[1] not in ("listen", "tree", "is-there"):
        sys.exit(__doc__)
    Atspi.init()
    program = sys.argv[2]
    if sys.argv[1] == "listen":
        listen(program)
        return
    found = application(program)
    if found is None:
        sys.exit(f"{program} is not on the accessibility bus")
    if sys.argv[1] == "tree":
        print_tree(found)


if __name__ == "__main__":
    main()
