"""Walks the tree of a panel as a screen reader does, over the accessibility bus, and works it.

Usage: walk.py PROGRAM, on a display and a session bus of its own.
"""

import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 30.0


def wait(what, found):
    """What `found` gives once that is something; news come in meanwhile."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        while GLib.MainContext.default().iteration(False):
            pass
        try:
            if result := found():
                return result
        except GLib.Error:
            pass  # the program is still getting ready
        time.sleep(0.05)
    raise SystemExit(f"in vain: {what}")


def children(node):
    return [node.get_child_at_index(i) for i in range(node.get_child_count())]


def walk(node):
    yield node
    for child in children(node):
        if child:
            yield from walk(child)


def application(name):
    found = [app for app in children(Atspi.get_desktop(0)) if app and app.get_name() == name]
    return found[0] if found else None


def main():
    news = []
    listener = Atspi.EventListener.new(lambda event: news.append((event.type, event.source.get_name())))
    for kind in ("object:property-change:accessible-value", "object:state-changed"):
        listener.register(kind)
    with subprocess.Popen([sys.argv[1]], stdin=subprocess.PIPE) as program:
        try:
            app = wait("the program on the bus", lambda: application("atspi_panel"))
            wanted = ("Saturation", "Preserve luma", "Radius", "Notes", "shut")

            def panel():
                nodes = {node.get_name(): node for node in walk(app)}
                return nodes if all(name in nodes for name in wanted) else None

            named = wait("the panel's controls", panel)

            def check(what, good):
                if not good:
                    raise SystemExit(f"{what}; there is {sorted((n.get_role_name(), n.get_name()) for n in walk(app))}")

            roles = {name: named[name].get_role_name() for name in wanted}
            check(f"roles {roles}", list(roles.values()) == ["slider", "check box", "spin button", "table", "table cell"])
            slider, box = named["Saturation"].get_value_iface(), named["Preserve luma"]
            check("the slider's value", slider.get_current_value() == 4.0 and slider.get_maximum_value() == 10.0)
            place = named["Saturation"].get_component_iface().get_extents(Atspi.CoordType.WINDOW)
            check(f"the slider's place {place.x},{place.y} {place.width}", (place.x, place.y, place.width) == (10, 10, 200))
            cell = named["Notes"].get_component_iface().get_extents(Atspi.CoordType.SCREEN)
            at = app.get_child_at_index(0).get_component_iface().get_accessible_at_point(
                cell.x + 5, cell.y + 5, Atspi.CoordType.SCREEN)
            check("something at the table's place", at is not None)

            slider.set_current_value(7.0)
            wait("the slider's new value", lambda: slider.get_current_value() == 7.0)
            wait("news of it", lambda: any(k.endswith("accessible-value") and n == "Saturation" for k, n in news))
            box.get_action_iface().do_action(0)
            wait("the mark", lambda: box.get_state_set().contains(Atspi.StateType.CHECKED))
            wait("news of it", lambda: ("object:state-changed:checked", "Preserve luma") in news)
            named["Saturation"].get_component_iface().grab_focus()
            wait("the keyboard", lambda: named["Saturation"].get_state_set().contains(Atspi.StateType.FOCUSED))
        finally:
            program.stdin.close()
    print(f"nodes walked, worked and told of; {len(news)} news")


if __name__ == "__main__":
    main()
