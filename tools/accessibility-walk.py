#!/usr/bin/env python3
"""Walks the desktop program as a screen reader user does: through the accessibility
bus (AT-SPI), with the actions a screen reader offers ("Toggle", "Press", typing into
a text field), on a real X server. Each road checks the exact texts the program
shows on the way: window titles, messages, captions. Every press is answered at
once, also one that opens a modal window or a menu: "  About" and "Help" are timed,
on the main road and behind a load that never ends, Print All and the drop-down of
"Classify Soil   " on the main road, and the OK that opens the cone factors screen.

    tools/accessibility-walk.sh [pemlo executable]

runs every road in a fresh X server with its own session and accessibility buses.
This script is the part that talks to the bus; it expects DISPLAY and the buses set
up and the program's path as its argument.
"""
import os
import subprocess
import sys
import tempfile
import time

import pyatspi

APP_NAME = "Pemlo CPT"
FAILURES = []
STARTED = []   # the program's processes, to end whatever a failed road left running


# --- Finding things on the bus ---------------------------------------------------------

def application():
    desktop = pyatspi.Registry.getDesktop(0)
    for i in range(desktop.childCount):
        app = desktop.getChildAtIndex(i)
        if app is not None and app.name == APP_NAME:
            return app
    return None


def walk(acc, depth=0):
    if acc is None or depth > 40:
        return
    yield acc
    try:
        count = acc.childCount
    except Exception:
        return
    for i in range(count):
        try:
            child = acc.getChildAtIndex(i)
        except Exception:
            continue
        yield from walk(child, depth + 1)


def showing(acc):
    try:
        return acc.getState().contains(pyatspi.STATE_SHOWING)
    except Exception:
        return False


def windows():
    app = application()
    if app is None:
        return []
    return [app.getChildAtIndex(i) for i in range(app.childCount) if showing(app.getChildAtIndex(i))]


def wait_for(what, find, timeout=15.0):
    end = time.time() + timeout
    while time.time() < end:
        try:
            found = find()
        except Exception:
            found = None
        if found:
            return found
        time.sleep(0.1)
    raise TimeoutError("waited in vain for " + what)


def window(title, timeout=15.0):
    return wait_for("the window " + repr(title),
                    lambda: next((w for w in windows() if w.name == title), None), timeout)


def window_starting(prefix, timeout=15.0):
    return wait_for("a window starting " + repr(prefix),
                    lambda: next((w for w in windows() if w.name.startswith(prefix)), None), timeout)


def control(root, name, role=None):
    def find():
        for acc in walk(root):
            if acc.name == name and (role is None or acc.getRoleName() == role):
                return acc
        return None
    return wait_for("%s %r" % (role or "control", name), find)


def actions(acc):
    try:
        ai = acc.queryAction()
    except NotImplementedError:
        return []
    return [ai.getName(i) for i in range(ai.nActions)]


def act(acc, action):
    """Runs the action and waits for the program's answer; returns how long that took
    in seconds. A press that opens a modal window is answered before the window opens."""
    ai = acc.queryAction()
    for i in range(ai.nActions):
        if ai.getName(i) == action:
            started = time.monotonic()
            ai.doAction(i)
            return time.monotonic() - started
    raise AssertionError("%r offers no %r action (it offers %s)" % (acc.name, action, actions(acc)))


def press_opening(root, name, title):
    """Presses a button that opens a modal window: the press must be answered at once
    (a screen reader waits for that answer), and the window then opens. Closes it by
    its OK."""
    took = act(control(root, name, "push button"), "Press")
    check(took < 0.5, "the press of %r is answered at once (%.2f s)" % (name, took))
    opened = window(title)
    act(control(opened, "OK", "push button"), "Press")
    wait_for("the window %r to close" % title, lambda: all(w.name != title for w in windows()))


def check(condition, message):
    if not condition:
        FAILURES.append(message)
        print("  FAILED: " + message)
    else:
        print("  ok: " + message)


def message_text(box):
    texts = [acc.name for acc in walk(box) if acc.getRoleName() == "label" and acc.name]
    return "\n".join(texts)


def answer_message(title, expected_text=None):
    box = window(title)
    if expected_text is not None:
        shown = message_text(box)
        check(expected_text in shown.replace("\r", ""),
              "message %r reads %r (shows %r)" % (title, expected_text, shown))
    act(control(box, "OK", "push button"), "Press")
    wait_for("the message to close", lambda: all(w.name != title for w in windows()))


def choose_file(path):
    dialog = wait_for("the file dialog",
                      lambda: next((w for w in windows() if w.getRoleName() == "dialog"), None))
    field = wait_for("the file name field", lambda: next(
        (a for a in walk(dialog) if a.getRoleName() == "text" and "File name" in (a.name or "")), None))
    field.queryEditableText().setTextContents(path)
    act(control(dialog, "Open", "push button"), "Press")


# --- The window system's own titles ---------------------------------------------------

def native_titles():
    """_NET_WM_NAME of every mapped top-level window, as the window system shows it."""
    out = subprocess.run(["xwininfo", "-root", "-children"], capture_output=True, text=True).stdout
    titles = []
    for line in out.splitlines():
        line = line.strip()
        if not line.startswith("0x"):
            continue
        wid = line.split()[0]
        state = subprocess.run(["xwininfo", "-id", wid], capture_output=True, text=True).stdout
        if "IsViewable" not in state:
            continue
        prop = subprocess.run(["xprop", "-id", wid, "_NET_WM_NAME"], capture_output=True, text=True).stdout
        if "=" in prop:
            value = prop.split("=", 1)[1].strip()
            titles.append(value[1:-1] if value.startswith('"') else value)
        elif "not found" in prop:
            titles.append("")
    return titles


def check_native_title(title):
    titles = wait_for("the window system to show " + repr(title), lambda: [t for t in native_titles() if t == title] or None, 5)
    check(bool(titles), "the window system shows the title %r exactly" % title)


# --- The roads --------------------------------------------------------------------------

def window_holding(text, what):
    """The showing window with a control of that name (for windows without a title)."""
    return wait_for(what, lambda: next((w for w in windows() if any(a.name == text for a in walk(w))), None))


def load(open_file, data, options, message_title, message_text):
    """Chooses the options by Toggle, loads the file through the file dialog and
    answers the message the load shows."""
    for option in options:
        act(control(open_file, option, "radio button"), "Toggle")
    act(control(open_file, "Load Data File", "push button"), "Press")
    choose_file(data)
    answer_message(message_title, message_text)


def start(program, again=True):
    """Starts the program and waits for its first window on the bus. A first start on a
    fresh machine can be slow (font caches, the registry starting on demand), so the wait
    is long; when it is in vain, the failure says what the program and the X server did.
    A program whose window the X server shows but the bus does not never reached the
    accessibility bus, which is the bus's race, not the program's: it is started once
    more, and says so."""
    log = tempfile.TemporaryFile()
    proc = subprocess.Popen([program], stdout=subprocess.DEVNULL, stderr=log)
    STARTED.append(proc)
    try:
        open_file = window("Open Cone Data File", 60)
    except TimeoutError as e:
        log.seek(0)
        said = log.read().decode(errors="replace").strip()[-2000:]
        ended = proc.poll()
        if again and ended is None and "Open Cone Data File" in native_titles():
            print("  note: the first window is on the X server but not on the bus; starting again")
            proc.kill()
            proc.wait()
            return start(program, again=False)
        raise TimeoutError("%s (the program %s; the X server shows %s; it said: %s)" % (
            e, "ended with %d" % ended if ended is not None else "still runs",
            native_titles(), said or "nothing")) from None
    return proc, open_file


def wait_for_registry():
    """The registry answers before the first program starts, so that the program's
    registration is not the one that has to start it."""
    wait_for("the accessibility registry",
             lambda: pyatspi.Registry.getDesktop(0).childCount >= 0 or True, 30)


def print_all(screen):
    """Print All is answered at once too: where no printer is set up, its failure's
    message box opens after the press, and is answered; with a printer the page goes."""
    took = act(control(screen, "Print All     "), "Press")
    check(took < 0.5, "the press of 'Print All' is answered at once (%.2f s)" % took)
    try:
        box = window(APP_NAME, 5)
    except TimeoutError:
        return
    check("A Printing Error" in message_text(box), "a failed print says so (%r)" % message_text(box))
    act(control(box, "OK", "push button"), "Press")
    wait_for("the message to close", lambda: all(w.name != APP_NAME for w in windows()))


def main_road(program, sounding):
    print("Main road: SI data by Toggle, a real sounding, both views, Exit")
    proc, open_file = start(program)
    check_native_title("Open Cone Data File")
    focused = [a.name for a in walk(open_file) if a.getState().contains(pyatspi.STATE_FOCUSED)]
    check(focused == ["English Units "], "the focus rests on the units of the file, not on Exit (%s)" % focused)
    press_opening(open_file, "  About", "About " + APP_NAME)
    press_opening(open_file, "Help", APP_NAME + " Help")

    load(open_file, sounding, ["SI Units "], " Data Import from Text File",
         "Cone Data File: " + sounding + "\n was successfully opened. \n Total Number of Lines = ")
    check(control(open_file, "SI Units", "radio button").getState().contains(pyatspi.STATE_CHECKED),
          "Toggle on \"SI Units \" selects SI graph units")

    act(control(open_file, "Plot Cone Data", "push button"), "Press")
    titles = window_holding("Enter Project Information", "the project information screen")
    check(titles.name == "", "the project information screen has no title (%r)" % titles.name)
    check_native_title("")
    act(control(titles, "OK", "push button"), "Press")

    cpt = window("CPT Data -  File:  " + sounding)
    check_native_title("CPT Data -  File:  " + sounding)
    classify = control(cpt, "Classify Soil   ")
    check("Press" in actions(classify), "\"Classify Soil   \" offers Press (%s)" % actions(classify))
    menu_items = [a.name for a in walk(classify) if a.getRoleName() == "menu item"]
    check(menu_items == ["Pemlo & Korvu (1999) Method", "Robertson & Campanella (19**)", "Pemlo (19**)"],
          "the drop-down entries read exactly (%s)" % menu_items)
    took = act(classify, "ShowMenu")
    check(took < 0.5, "the drop-down of \"Classify Soil   \" opens after its press is answered (%.2f s)" % took)
    # An entry that does nothing closes the menu and leaves the screen as it was.
    entry = wait_for("the drop-down's entries", lambda: next(
        (a for a in walk(classify) if a.getRoleName() == "menu item" and a.name == "Robertson & Campanella (19**)"
         and showing(a)), None), 5)
    act(entry, actions(entry)[0])
    wait_for("the drop-down to close", lambda: not showing(entry), 5)
    act(classify, "Press")
    results_title = " Classification using: Korvu & Pemlo (1999) - File: " + sounding
    results = window(results_title)
    check_native_title(results_title)
    act(control(results, "Back      ", "push button"), "Press")
    wait_for("the results view to close", lambda: all(w.name != results_title for w in windows()))

    print_all(cpt)

    act(control(cpt, "Plot U & V", "push button"), "Press")
    uv_title = " U and V Plot - File: " + sounding
    uv = window(uv_title)
    check_native_title(uv_title)
    act(control(uv, "Back      ", "push button"), "Press")
    wait_for("the U and V view to close", lambda: all(w.name != uv_title for w in windows()))

    act(control(cpt, "Exit           ", "push button"), "Press")
    check(proc.wait(10) == 0, "Exit ends the program")


def six_columns(program, data):
    print("Side road: six columns")
    proc, open_file = start(program)
    load(open_file, data, ["SI Units "], "Open File Error", "Could not read data from file")
    check_native_title("Open Cone Data File")
    check(not control(open_file, "Plot Cone Data").getState().contains(pyatspi.STATE_ENABLED),
          "a failed first load leaves Plot Cone Data disabled")
    act(control(open_file, "Exit", "push button"), "Press")
    check(proc.wait(10) == 0, "Exit ends the program")


def millivolts(program, data):
    print("Side road: millivolt data by Toggle, the cone factors screen, Back and Cancel")
    proc, open_file = start(program)
    load(open_file, data, ["SI Units", "m-MilliVolts"], " Data Import from Text File", " Total Number of Lines = 3")
    act(control(open_file, "Plot Cone Data", "push button"), "Press")
    titles = window_holding("Enter Project Information", "the project information screen")
    took = act(control(titles, "OK", "push button"), "Press")
    check(took < 0.5, "the OK that opens the cone factors screen is answered at once (%.2f s)" % took)
    factors = window_holding("Cone Conversion Factors:", "the cone factors screen")
    check(factors.name == "", "the cone factors screen has no title (%r)" % factors.name)
    act(control(factors, "Continue", "push button"), "Press")
    cpt = window("CPT Data -  File:  " + data)
    act(control(cpt, "Back      ", "push button"), "Press")
    titles = window_holding("Enter Project Information", "the project information screen again")
    check(showing(titles), "Back reveals the project information screen")
    act(control(titles, "Cancel", "push button"), "Press")
    open_file = window("Open Cone Data File")
    english = control(open_file, "English Units ", "radio button")
    check(english.getState().contains(pyatspi.STATE_CHECKED), "Cancel builds a fresh open-file screen (English data)")
    # The options show their defaults again; the graph units the user chose live on in
    # the record (the screen tests check that), not on the fresh screen.
    check(control(open_file, "English Units", "radio button").getState().contains(pyatspi.STATE_CHECKED),
          "the fresh open-file screen shows English graph units")
    act(control(open_file, "Exit", "push button"), "Press")
    check(proc.wait(10) == 0, "Exit ends the program")


def one_column(program, data):
    print("Side road: one column, a load that never ends")
    proc, open_file = start(program)
    act(control(open_file, "Load Data File", "push button"), "Press")
    choose_file(data)
    time.sleep(1.0)
    check(all(w.getRoleName() != "alert" for w in windows()), "no message for a first line of one value")
    check(not control(open_file, "Load Data File").getState().contains(pyatspi.STATE_ENABLED),
          "the open-file screen waits on its load")
    press_opening(open_file, "  About", "About " + APP_NAME)
    press_opening(open_file, "Help", APP_NAME + " Help")
    act(control(open_file, "Exit", "push button"), "Press")
    check(proc.wait(10) == 0, "Exit still ends the program")


def main():
    program = os.path.abspath(sys.argv[1])
    sounding = os.path.abspath(sys.argv[2])
    wait_for_registry()
    with tempfile.TemporaryDirectory() as scratch:
        six = os.path.join(scratch, "six.txt")
        mv = os.path.join(scratch, "mv.txt")
        one = os.path.join(scratch, "one.txt")
        with open(six, "w", newline="") as f:
            f.write("title\r\n" * 10 + "1.0 2.0 3.0 4.0 5.0 6.0\r\n")
        with open(mv, "w", newline="") as f:
            f.write("title\r\n" * 10 + "1.0,1.0,1.0\r\n2.0,2.0,1.5\r\n3.0,1.5,1.2\r\n")
        with open(one, "w", newline="") as f:
            f.write("title\r\n" * 10 + "1.0\r\n2.0\r\n")
        for road, args in ((main_road, (sounding,)), (six_columns, (six,)), (millivolts, (mv,)),
                           (one_column, (one,))):
            try:
                road(program, *args)
            except Exception as e:  # a road that cannot go on is one failure, the next road runs
                FAILURES.append("%s: %s" % (road.__name__, e))
                print("  FAILED: %s: %s" % (road.__name__, e))
            for proc in STARTED:
                if proc.poll() is None:
                    proc.kill()
                    proc.wait()
            time.sleep(0.5)
    print("%d failure(s)" % len(FAILURES))
    return 1 if FAILURES else 0


if __name__ == "__main__":
    sys.exit(main())
