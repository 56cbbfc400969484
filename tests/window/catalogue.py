"""Tries every effect of the catalogue in a real window: adds it, sets each of its controls to both ends, types what is
no number, takes everything back and does it again, saves, reopens and saves again.

Usage: catalogue.py PROGRAM FOLDER [FROM [COUNT]], with a clip.mp4 in the folder, on a display with a window manager and
a session bus; session.sh makes these. For developers: all of them take half an hour. What ends a worker must be named;
the program itself must stay the same process.
"""

import glob
import os
import subprocess
import sys
import time

from use import Atspi, GLib, application, await_manager, first_window, named, saved, wait, walk, xdotool

BATCH = 5  # effects on one clip: more would be slow, and would be left out for that
PAUSE = 0.12  # in which a small picture is rendered


def patient(question):
    """Asks the bus again where something went while it was asked."""

    def asked(*words):
        for _ in range(20):
            while GLib.MainContext.default().iteration(False):
                pass
            try:
                return question(*words)
            except (GLib.Error, AttributeError):
                time.sleep(0.05)
        return question(*words)

    return asked


@patient
def pick(condition):
    program = application("Oribund workbench")
    return [node for node in (walk(program) if program else ()) if node and condition(node)]


@patient
def press(node, action):
    interface = node.get_action_iface()
    for index in range(interface.get_n_actions() if interface else 0):
        if interface.get_action_name(index) == action:
            interface.do_action(index)
            return


@patient
def controls(title, role):
    """The nodes of a role in the panel of that effect; the last panel where several have the title."""
    panels = pick(lambda node: node.get_role_name() == "panel" and node.get_name() == title)
    return [node for node in walk(panels[-1]) if node.get_role_name() == role] if panels else []


@patient
def message():
    """What the program says above the picture."""
    closers = pick(lambda node: node.get_name() == "Close this message")
    labels = [node for node in walk(closers[0].get_parent()) if node.get_role_name() == "label"] if closers else []
    return " ".join(node.get_name() for node in labels if is_showing(node))


def next_undo():
    return next((node.get_name() for node in pick(lambda node: node.get_name().startswith("Undo"))), "")


class Round:
    def __init__(self, process):
        self._process = process
        self._workers = self.workers()
        self.faults = []
        self.deaths = []
        self.tried = 0
        self.refused = []

    def workers(self):
        """Those that show pictures; others may come and go."""
        found = set()
        for path in glob.glob(f"/proc/{self._process.pid}/task/*/children"):
            try:
                for child in open(path, encoding="utf-8").read().split():
                    if open(f"/proc/{child}/comm", encoding="utf-8").read().strip() == "oribund-viewer":
                        found.add(child)
            except OSError:
                pass
        return found

    def fault(self, text):
        print("FAULT:", text, flush=True)
        self.faults.append(text)

    def note_deaths(self, title, what):
        """Workers that are gone, and whether a message says of what."""
        gone = self._workers - self.workers()
        self._workers = self.workers()
        if not gone:
            return
        said = message()
        print(f"{title}: {len(gone)} ended at {what}: {said}", flush=True)
        self.deaths.append(title)
        if title not in said:
            self.fault(f"{title}: a worker ended, and what is said is: {said!r}")

    def add(self, title):
        """Whether its panel is there; a sound effect goes on the other segment."""
        before = len(controls(title, "check box"))
        for _ in range(2):
            for closer in pick(lambda node: node.get_name() == "Close this message" and is_showing(node)):
                press(closer, "Press")
            xdotool("key", "Escape", "key", "ctrl+f", "key", "ctrl+a", "type", title)
            xdotool("key", "Return")
            end = time.monotonic() + 8
            while time.monotonic() < end:
                time.sleep(0.1)
                if len(controls(title, "check box")) > before or title in next_undo():
                    return True
                if title in message() and "is an effect for" in message():
                    break
                if title in message() and ("not added" in message() or "cannot be used" in message()):
                    self.refused.append(title)
                    self._workers = self.workers()  # the one that tried it
                    return False
            other = "previous" if "for pictures" in message() else "next"
            press(named(f"Select {other} segment", "menu item"), "Press")
            time.sleep(0.3)
        self.fault(f"{title}: it was not added, and what is said is: {message()!r}")
        return False

    def to_both_ends(self, title):
        for slider in controls(title, "slider"):
            value = slider.get_value_iface()
            low, high, at = value.get_minimum_value(), value.get_maximum_value(), value.get_current_value()
            for place in (low, high, at):
                value.set_current_value(place)
                time.sleep(PAUSE)
                self.note_deaths(title, f"{slider.get_name()} = {place:g}")
        for box in controls(title, "check box")[1:]:
            for _ in range(2):
                press(box, "Toggle")
                time.sleep(PAUSE)
        for list_of_items in controls(title, "combo box"):
            press(list_of_items, "SetFocus")
            for key in ("End", "Home"):
                xdotool("key", key)
                time.sleep(PAUSE)
                self.note_deaths(title, f"{list_of_items.get_name()}, {key}")

    def refuse_what_is_no_number(self, title):
        for entry in controls(title, "spin button")[:1]:
            before = entry.get_value_iface().get_current_value()
            press(entry, "SetFocus")
            for text in ("nan", "inf"):
                xdotool("key", "ctrl+a", "type", text)
                xdotool("key", "Return")
                time.sleep(PAUSE)
            xdotool("key", "Escape")
            after = entry.get_value_iface().get_current_value()
            if before != after:
                self.fault(f"{title}: what is no number was taken: {before} became {after}")

    def take_back(self, title):
        """All of it, and again."""
        undo = pick(lambda node: node.get_name().startswith("Undo"))[0]
        redo = pick(lambda node: node.get_name().startswith("Redo"))[0]
        steps = 0
        last = ""
        while last != f"Undo Add {title}" and steps < 300:
            undo.clear_cache()
            last = undo.get_name()
            press(undo, "Press")
            steps += 1
            time.sleep(0.03)
        if controls(title, "check box"):
            self.fault(f"{title}: it is still there after {steps} steps back; the last was {last!r}")
        for _ in range(steps):
            press(redo, "Press")
            time.sleep(0.03)
        if not controls(title, "check box"):
            self.fault(f"{title}: it is not there again")

    def begin(self):
        """An edit with other media has another worker."""
        self._workers = self.workers()

    def try_effect(self, title):
        self.tried += 1
        self.note_deaths(title, "the effect before")
        if not self.add(title):
            return
        time.sleep(3 * PAUSE)
        self.note_deaths(title, "its beginning")
        self.to_both_ends(title)
        self.refuse_what_is_no_number(title)
        self.take_back(title)
        self.note_deaths(title, "taking it back")


def is_file_name(node):
    return node.get_role_name() == "text" and node.get_name().startswith("File name")


def is_showing(node):
    return node.get_state_set().contains(Atspi.StateType.SHOWING)


def answer(title, text):
    """Gives the question of that title its text."""
    question = wait(f"the question {title}", lambda: xdotool("search", "--onlyvisible", "--name", title))[-1]
    xdotool("windowactivate", "--sync", question)
    # Keys get lost where many come fast, and here it is not they that are tried.
    entry = wait("the place for a name", lambda: [node for node in pick(is_file_name) if is_showing(node)])[-1]
    entry.get_editable_text_iface().set_text_contents(text)
    time.sleep(0.2)
    press(entry, "SetFocus")
    xdotool("key", "Return")

    def gone():
        # The first Return may be for the list that completes what is typed.
        time.sleep(0.3)
        if xdotool("search", "--onlyvisible", "--name", title):
            xdotool("key", "Return")
        time.sleep(0.3)
        return not xdotool("search", "--onlyvisible", "--name", title)

    wait(f"the end of {title}", gone)


def save_and_reopen(round_, folder, number):
    first, second = (os.path.join(folder, f"batch{number}{which}.mlt") for which in ("", "-again"))
    xdotool("key", "ctrl+shift+s")
    answer("^Save", first)
    before = saved(first)
    xdotool("key", "ctrl+n", "key", "ctrl+o")
    answer("^Open", first)
    wait("the project to be back", lambda: xdotool("search", "--onlyvisible", "--name", f"^batch{number} "))
    xdotool("key", "ctrl+shift+s")
    answer("^Save", second)
    if saved(second).replace("-again", "") != before:
        round_.fault(f"batch {number}: saved again it is another project")


def titles(program):
    """The names of all effects, each once."""
    listed = subprocess.run([program, "--list-effects"], capture_output=True, text=True, check=True,
                            env=dict(os.environ, QT_QPA_PLATFORM="offscreen")).stdout
    return list(dict.fromkeys(line[35:64].strip() for line in listed.splitlines()))


def begin_batch(clip):
    xdotool("key", "ctrl+n", "key", "ctrl+o")
    answer("^Open", clip)
    wait("the clip to be there", lambda: xdotool("search", "--onlyvisible", "--name", r"^Untitled\*"))
    time.sleep(1)


def main():
    program, folder = sys.argv[1:3]
    start, count = (int(word) for word in (sys.argv[3:] + ["0", "100000"][len(sys.argv) - 3:])[:2])
    log, clip = os.path.join(folder, "log"), os.path.join(folder, "clip.mp4")
    effects = titles(program)[start:start + count]
    await_manager(folder)
    with open(log, "w", encoding="utf-8") as said, subprocess.Popen([program], stderr=said) as running:
        try:
            xdotool("windowactivate", "--sync", first_window(running, log))
            wait("the program on the bus", lambda: application("Oribund workbench"))
            time.sleep(2)
            round_ = Round(running)
            for number, at in enumerate(range(0, len(effects), BATCH)):
                begin_batch(clip)
                round_.begin()
                for title in effects[at:at + BATCH]:
                    round_.try_effect(title)
                    if running.poll() is not None:
                        raise SystemExit(f"{title}: the program ended with {running.returncode}")
                save_and_reopen(round_, folder, number)
            xdotool("key", "ctrl+q")
            if code := running.wait(timeout=30):
                round_.fault(f"the program ended with {code}")
        finally:
            running.kill()
    print(f"{round_.tried} effects in one process, {len(round_.refused)} refused: {round_.refused}")
    print(f"{len(round_.deaths)} ended a worker: {round_.deaths}; {len(round_.faults)} faults")
    sys.exit(1 if round_.faults else 0)


if __name__ == "__main__":
    main()
