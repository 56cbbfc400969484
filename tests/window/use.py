"""Uses the workbench in a real window, as a person does: the mouse is moved and keys are pressed on the display.

Usage: use.py PROGRAM FOLDER, with a clip.mp4 in the folder, on a display with a window manager and a session bus. What
is to be seen is asked of the accessibility bus, what was done of the saved project.
"""

import glob
import os
import re
import subprocess
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "skin", "atspi"))
from walk import Atspi, GLib, application, wait, walk  # noqa: E402


def xdotool(*words):
    return subprocess.run(["xdotool", *map(str, words)], capture_output=True, text=True, check=False).stdout.split()


def named(name, role):
    """The node of the program with that name and role that is on the screen, or None."""
    program = application("Oribund workbench")
    for node in walk(program) if program else ():
        if node.get_name() == name and node.get_role_name() == role:
            return node
    return None


class Slider:
    def __init__(self, name):
        self._node = wait(f"the slider {name}", lambda: named(name, "slider"))

    def value(self):
        return self._node.get_value_iface().get_current_value()

    def share(self):
        number = self._node.get_value_iface()
        least, most = number.get_minimum_value(), number.get_maximum_value()
        return (self.value() - least) / (most - least)

    def drag(self, share, escape=False):
        """From where it stands now to that share of its width."""
        before = self.value()
        box = self._node.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
        y = box.y + box.height // 2
        xdotool("mousemove", box.x + 4, y, "mousedown", 1)
        for step in range(1, 6):
            xdotool("mousemove", "--sync", box.x + 4 + int((box.width - 8) * share * step / 5), y)
        wait("the slider to follow", lambda: self.value() != before)
        if escape:
            xdotool("key", "Escape")
        else:
            wait("the slider to arrive", lambda: abs(self.share() - share) < 0.05)
        xdotool("mouseup", 1)


def saved(path):
    """The text of the project once it is whole on disk."""

    def read():
        if not os.path.exists(path):
            return None
        with open(path, encoding="utf-8") as file:
            text = file.read()
        return text if "</mlt>" in text else None

    return wait("the saved project", read)


def await_manager(folder):
    """A window that wants to come up while its manager still starts may never do so."""
    wait("the window manager", lambda: os.path.exists(os.path.join(folder, "managed")))


def first_window(program, log):
    """The program's window. When none comes up, says what there is instead."""
    try:
        return wait("the window", lambda: xdotool("search", "--onlyvisible", "--name", "Oribund workbench"))[-1]
    except SystemExit as fault:
        print(fault)
    print("the program:", "is running" if program.poll() is None else f"ended with {program.returncode}")
    with open(log, encoding="utf-8", errors="replace") as said:
        print("it said:", said.read())
    for thread in glob.glob(f"/proc/{program.pid}/task/*"):
        state = [open(f"{thread}/{name}", encoding="utf-8").read().strip() for name in ("comm", "wchan", "syscall")]
        print("thread:", *state)
    for found in xdotool("search", "--name", ".*"):
        print("window:", found, *xdotool("getwindowname", found, "getwindowgeometry", found))
    sys.exit(1)


def use(program, log):
    window = first_window(program, log)
    xdotool("windowactivate", "--sync", window)
    wait("the clip to be there", lambda: xdotool("search", "--onlyvisible", "--name", r"^Untitled\*"))

    xdotool("key", "ctrl+f", "type", "brightness")
    xdotool("key", "Return")
    level = Slider("Brightness")
    before = level.value()
    level.drag(0.9, escape=True)
    wait("Escape to restore", lambda: level.value() == before)
    level.drag(0.5)
    after = level.value()
    assert after != before, f"the drag changed nothing: {after}"
    xdotool("key", "ctrl+z")
    wait("one step back", lambda: level.value() == before)
    xdotool("key", "ctrl+shift+z")
    wait("the step again", lambda: level.value() == after)


def main():
    program, folder = sys.argv[1:3]
    log = os.path.join(folder, "log")
    await_manager(folder)
    command = [program, os.path.join(folder, "clip.mp4")]
    with open(log, "w", encoding="utf-8") as said, subprocess.Popen(command, stderr=said) as running:
        try:
            use(running, log)
            project = os.path.join(folder, "film.mlt")
            xdotool("key", "ctrl+s")
            wait("the question for a name", lambda: xdotool("search", "--onlyvisible", "--name", "^Save"))
            xdotool("type", project)
            xdotool("key", "Return")
            effects = re.findall(r'"constant":([0-9.]+),"property":"0"}],"service":"frei0r.brightness"', saved(project))
            assert len(effects) == 1 and 0.4 < float(effects[0]) < 0.6, f"effects saved: {effects}"
            xdotool("key", "ctrl+q")
            code = running.wait(timeout=30)
            assert code == 0, f"it did not end well: {code}, {open(log, encoding='utf-8').read()}"
        finally:
            running.kill()
    print("used in a window")


if __name__ == "__main__":
    main()
