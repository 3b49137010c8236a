#!/usr/bin/env python3
"""Reads hostile books, one start of the program each: hostile-pages.py PROGRAM FOLDER [NAME...]

During the attack, F11 enters full screen and Escape leaves it, Ctrl+W or the window's close button closes the book, and
Ctrl+Q ends the program, all with real keys. No process of the page remains, and memory is limited. Prints the figures of
each. With PAGORA_STRICT=1 the times must be within the limits, which a busy machine cannot meet."""

import os
import pathlib
import subprocess
import sys
import time

PROGRAM, FOLDER, NAMES = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3:]
STRICT = os.environ.get("PAGORA_STRICT") == "1"
# Seconds that each page has for its attack.
ATTACK = float(os.environ.get("PAGORA_ATTACK", "4"))
CLOSE, GONE, END = (0.5, 2, 2) if STRICT else (60, 60, 60)
# The window manager draws the close button, so a key of the window manager is used.
WAYS = {"Ctrl+W": "ctrl+w", "button": "alt+F4"}
# Limits in megabytes: of the program; of a page process and of the network process, including growth between two
# checks.
MOST = {"pagora": 700, "WebKitWebProces": 2300, "WebKitNetworkPr": 1200}
# Attacks during which the page is also turned: the text must stay visible.
TURNED = {"addresses", "focus", "slow frames", "titles", "alerts", "programs", "workers"}
TICKS = os.sysconf("SC_CLK_TCK")


def read(path):
    try:
        return pathlib.Path(path).read_text()
    except OSError:
        return ""


def parents():
    found = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit() and (stat := read(f"/proc/{entry}/stat")):
            fields = stat.rpartition(")")[2].split()
            if fields[0] != "Z":
                found[int(entry)] = int(fields[1])
    return found


def below(root):
    """Returns the descendants of a process, by id, with their names."""
    children = {}
    for child, parent in parents().items():
        children.setdefault(parent, []).append(child)
    found, todo = {}, [root]
    while todo:
        for child in children.get(todo.pop(), []):
            found[child] = read(f"/proc/{child}/comm").strip()
            todo.append(child)
    return found


def engine(root):
    return {pid: name for pid, name in below(root).items() if name.startswith("WebKit")}


def megabytes(pid):
    total = 0
    for line in read(f"/proc/{pid}/status").splitlines():
        if line.startswith(("RssAnon:", "RssShmem:", "VmSwap:")):
            total += int(line.split()[1])
    return total / 1024


def processor(pid):
    fields = read(f"/proc/{pid}/stat").rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / TICKS if fields else 0


def is_alive(pid):
    return (stat := read(f"/proc/{pid}/stat")) != "" and stat.rpartition(")")[2].split()[0] != "Z"


def title():
    return subprocess.run(["xdotool", "getactivewindow", "getwindowname"], capture_output=True, text=True).stdout.strip()


def key(name):
    subprocess.run(["xdotool", "key", name], check=True)


def seconds_until(condition, limit):
    """Returns the seconds until the condition holds; None if it does not hold within `limit` seconds."""
    start = time.monotonic()
    while not condition():
        if time.monotonic() - start > limit:
            return None
        time.sleep(0.01)
    return time.monotonic() - start


def fail(name, what):
    subprocess.run(["import", "-window", "root", os.environ.get("PAGORA_PICTURE", "failed.png")], check=False)
    sys.exit(f"{name}: {what}")


def picture():
    """Returns the pixels in the middle of the page, as bytes."""
    command = ["import", "-window", "root", "-crop", "400x300+450+200", "-depth", "8", "rgb:-"]
    return subprocess.run(command, capture_output=True, check=True).stdout


def seconds_to_turn(name):
    """Returns the time until a press of Right shows another page."""
    before = picture()
    key("Right")
    turned = seconds_until(lambda: picture() != before, 60)
    if turned is None:
        fail(name, "Right turns no page")
    return turned


def window_size():
    geometry = subprocess.run(["xdotool", "getactivewindow", "getwindowgeometry"], capture_output=True, text=True).stdout
    return geometry.rpartition("Geometry:")[2].strip()


def seconds_to_leave_full_screen(name):
    """Returns the time until Escape has left full screen."""
    before = window_size()
    key("F11")
    if seconds_until(lambda: window_size() not in (before, ""), 60) is None:
        fail(name, "F11 does nothing")
    key("Escape")
    left = seconds_until(lambda: window_size() == before, 60)
    if left is None or left > CLOSE:
        fail(name, f"Escape took {left} s")
    return left


def attack(name, way):
    program = subprocess.Popen(
        [PROGRAM, str(FOLDER / f"{name}.epub")], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        return measured(name, way, program)
    finally:
        program.kill()
        program.wait()


def measured(name, way, program):
    if seconds_until(lambda: title() == f"Pagora - {name}", 120) is None:
        fail(name, "does not open")
    peak, met = dict.fromkeys(MOST, 0), {}
    end = time.monotonic() + ATTACK
    while time.monotonic() < end:
        found = engine(program.pid)
        met |= found
        for pid, process in (found | {program.pid: "pagora"}).items():
            if process in peak:
                peak[process] = max(peak[process], megabytes(pid))
        time.sleep(0.05)

    turned = seconds_to_turn(name) if name in TURNED else None

    escaped = seconds_to_leave_full_screen(name)

    pages = [pid for pid, process in engine(program.pid).items() if process == "WebKitWebProces"]
    key(WAYS[way])
    closed = seconds_until(lambda: title() == "Pagora", max(CLOSE, 60))
    if closed is None or closed > CLOSE:
        fail(name, f"{way} took {closed} s")
    gone = seconds_until(lambda: not any(map(is_alive, pages)), max(GONE, 60))
    if gone is None or gone > GONE:
        fail(name, f"its page process ended after {gone} s")
    networks = [pid for pid, process in engine(program.pid).items() if process == "WebKitNetworkPr"]
    busy = seconds_until(lambda: is_at_rest(networks), 60)
    if busy is None:
        fail(name, "the network process does not come to rest")
    kept = max(map(megabytes, networks), default=0)

    met |= engine(program.pid)
    key("ctrl+q")
    ended = seconds_until(lambda: program.poll() is not None, 60)
    if ended is None or program.returncode != 0:
        fail(name, f"the program ended with {program.returncode}")
    left = seconds_until(lambda: not any(map(is_alive, met)), max(END, 60))
    if left is None or left > END:
        fail(name, f"its last process ended {left} s after the program")
    for process, most in MOST.items():
        if peak[process] > most:
            fail(name, f"{process} took {peak[process]:.0f} MB")
    turn = "    -" if turned is None else f"{turned:5.1f}"
    return (f"{turn} {escaped * 1000:6.0f} {way} {closed * 1000:5.0f} {gone:5.1f} {ended:5.1f} {left:5.1f} "
            f"{peak['pagora']:6.0f} "
            f"{peak['WebKitWebProces']:6.0f} {peak['WebKitNetworkPr']:6.0f} {kept:6.0f}")


def is_at_rest(pids):
    before = sum(map(processor, pids))
    time.sleep(0.5)
    return sum(map(processor, pids)) - before < 0.05


print(f"{'attack':<18}  turn Escape closed by     gone   end  left program  page network kept (s, ms, ms, s, s, s, MB)",
      flush=True)
for number, each in enumerate(NAMES or sorted(path.stem for path in FOLDER.glob("*.epub"))):
    print(f"{each:<18} {attack(each, list(WAYS)[number % len(WAYS)])}", flush=True)
