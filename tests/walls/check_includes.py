#!/usr/bin/env python3
"""The walls of the house: who includes whom in src/, and which room links which.

    check_includes.py SRC        checks a source tree against rooms.txt
    check_includes.py --self-test

The linker alone does not keep a wall: a header with nothing but inline code needs no library, and
all rooms share one include path. Exit 1 names every line that goes through a wall.
"""
import pathlib
import re
import sys
import tempfile

INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s*(?:"([^"]+)"|<([^>]+)>)')
PER_SYSTEM = re.compile(
    r"^\s*#\s*(?:if|ifdef|ifndef|elif|elifdef)\b.*"
    r"\b(_WIN32|_WIN64|WIN32|__linux__|__unix__|__MINGW32__|__WX\w+__|_MSC_VER)\b")
ROOM_CALL = re.compile(r"morvelle_room\s*\(\s*(\w+)(.*?)\)", re.DOTALL)
SOURCES = {".cpp", ".h", ".hpp", ".inc"}
TOOLKIT = re.compile(r"^(wx|gtk|gdk|gdk-pixbuf|atk|glib|pango|cairo|gio|X11)(/|\.h$|-object\.h$)")
WINDOWS = re.compile(
    r"^(windows|windowsx|windef|winbase|winnt|winreg|winuser|winver|winspool|wingdi|shellapi|shlobj"
    r"|shlwapi|commdlg|commctrl|objbase|ole2|tlhelp32|psapi|oleacc|wab|wabapi)\.h$", re.IGNORECASE)
# A room's library is named after the last part of its path; a room may be split by system or by
# toolkit (platform_wx), and its halves keep to the room's line.
LIBRARY_ROOMS = {"messages": "app/messages"}
HALF = re.compile(r"_(wx|win32|linux|posix)$")


class Room:
    def __init__(self, used, sees):
        self.used = used
        self.sees = sees


def read_rooms(text):
    """The table: name -> Room, `used` closed over what the used rooms use."""
    rooms = {}
    for line in text.splitlines():
        line = line.split("#")[0].strip()
        if not line:
            continue
        name, _, rest = line.partition(":")
        used, _, sees = rest.partition("+")
        rooms[name.strip()] = Room(set(used.split()), set(sees.split()))
    for room in rooms.values():
        grown = set()
        while grown != room.used:
            grown = set(room.used)
            for used in grown:
                room.used |= rooms[used].used
    for name, room in rooms.items():
        if name in room.used:
            raise ValueError(f"{name} uses itself through another room")
    return rooms


def room_of(path, rooms):
    """The room of a path below src/: its longest folder that is a room; None for a stranger."""
    folder = pathlib.PurePosixPath(path).parent
    if str(folder) == ".":
        return "main"
    for candidate in [folder, *folder.parents]:
        if str(candidate) in rooms:
            return str(candidate)
    return None


def fault_of_include(name, target, quoted, room, rooms):
    """What is wrong with a file of this room including that header; None when nothing is."""
    sees = rooms[room].sees
    if quoted or room_of(target, rooms) not in (None, "main"):
        used = room_of(target, rooms)
        if used in (None, "main"):
            return f'"{target}" does not start with a room'
        if used != room and used not in rooms[room].used:
            return f"{room} may not include {used}: {target}"
        return None
    stem = pathlib.PurePosixPath(name).stem
    if WINDOWS.match(target):
        if not stem.endswith("_win32") or not sees:
            return f"{target} is for *_win32.* alone"
    elif TOOLKIT.match(target):
        if "wx" not in sees and not ("system" in sees and stem.endswith("_wx")):
            return f"{target} is for view, main.cpp and platform's *_wx.* alone"
    elif re.search(r"[./]", target) and not sees:
        return f"{room} sees the C++ standard library only: {target}"
    return None


def faults_of_file(name, text, rooms):
    room = room_of(name, rooms)
    if room is None:
        return [f"{name}: in no room of rooms.txt"]
    if room == "main" and name != "main.cpp":
        return [f"{name}: main.cpp is the only file outside the rooms"]
    faults = []
    for number, line in enumerate(text.splitlines(), 1):
        include = INCLUDE.match(line)
        if include:
            fault = fault_of_include(name, include[1] or include[2], bool(include[1]), room, rooms)
            if fault:
                faults.append(f"{name}:{number}: {fault}")
        elif not rooms[room].sees and PER_SYSTEM.match(line):
            faults.append(f"{name}:{number}: an #if per system; give each its own file")
    return faults


def room_of_library(library):
    room = HALF.sub("", library)
    return LIBRARY_ROOMS.get(room, room)


def faults_of_links(name, text, rooms):
    """The link lines of CMake against the same table."""
    faults = []
    for library, arguments in ROOM_CALL.findall(re.sub(r"#.*", "", text)):
        room = room_of_library(library)
        if room not in rooms:
            faults.append(f"{name}: {library} is no room of rooms.txt")
            continue
        sees = rooms[room].sees
        _, _, used_words = arguments.partition("USES")
        for word in used_words.partition("SOURCES")[0].split():
            used = room_of_library(word)
            if word == "wx":
                allowed = "wx" in sees or ("system" in sees and library.endswith("_wx"))
            else:
                allowed = used in rooms[room].used or (used == room and word != library)
            if not allowed:
                faults.append(f"{name}: {library} may not link {word}")
    return faults


def faults_of_tree(src, rooms):
    faults, files = [], 0
    for path in sorted(src.rglob("*")):
        name = path.relative_to(src).as_posix()
        if path.suffix in SOURCES:
            files += 1
            faults += faults_of_file(name, path.read_text("utf-8", "replace"), rooms)
        elif path.name in ("CMakeLists.txt", "room.cmake"):
            faults += faults_of_links(name, path.read_text("utf-8"), rooms)
    if not files:
        faults.append(f"{src}: no source file there")
    return faults


# File, line, and what the report must hold; "" where the line is allowed.
CASES = [
    ("core/a.h", '#include "app/messages/text.h"', ""),
    ("core/a.h", '#include "core/b.h"', ""),
    ("core/a.h", "#include <string>", ""),
    ("core/a.h", '#include "app/settings.h"', "core may not include app: app/settings.h"),
    ("core/a.h", '  #  include "ui/controls.h"', "core may not include ui"),
    ("core/a.h", "#include <ui/controls.h>", "core may not include ui"),
    ("core/a.h", '#include "b.h"', "does not start with a room"),
    ("core/a.h", '#include "../ui/controls.h"', "does not start with a room"),
    ("core/a.h", "#include <unistd.h>", "standard library only"),
    ("core/a.h", "#include <sys/stat.h>", "standard library only"),
    ("core/a_wx.cpp", "#include <wx/string.h>", "alone"),
    ("core/a_win32.cpp", "#include <windows.h>", "*_win32.* alone"),
    ("core/a.cpp", "#ifdef _WIN32", "an #if per system"),
    ("core/a.cpp", "#if !defined(__linux__)", "an #if per system"),
    ("core/a.cpp", "#ifdef NDEBUG", ""),
    ("dbx/a.cpp", '#include "ports/registry_store.h"', ""),
    ("dbx/a.cpp", '#include "files/roe.h"', "dbx may not include files"),
    ("app/messages/a.h", '#include "core/b.h"', "app/messages may not include core"),
    ("app/messages/a.h", '#include "app/settings.h"', "app/messages may not include app:"),
    ("app/a.h", '#include "wab/reader.h"', ""),
    ("app/a.h", '#include "ui/controls.h"', "app may not include ui"),
    ("ui/a.h", '#include "core/b.h"', ""),
    ("ui/a.h", '#include "platform/printer_wx.h"', "ui may not include platform"),
    ("ui/a.h", "#include <wx/frame.h>", "alone"),
    ("ports/a.h", '#include "app/messages/text.h"', "ports may not include app/messages"),
    ("platform/a_linux.cpp", "#include <unistd.h>", ""),
    ("platform/a_linux.cpp", "#include <wx/frame.h>", "alone"),
    ("platform/a_linux.cpp", "#include <windows.h>", "*_win32.* alone"),
    ("platform/a_wx.cpp", "#include <wx/frame.h>", ""),
    ("platform/a_win32.cpp", "#include <Windows.h>", ""),
    ("platform/a.cpp", '#include "core/b.h"', "platform may not include core"),
    ("view/a.cpp", "#include <wx/frame.h>", ""),
    ("view/a.cpp", "#include <gtk/gtk.h>", ""),
    ("view/a.cpp", '#include "core/b.h"', ""),
    ("view/a.cpp", '#include "platform/b.h"', "view may not include platform"),
    ("view/a.cpp", "#include <windows.h>", "*_win32.* alone"),
    ("main.cpp", '#include "platform/b.h"', ""),
    ("main.cpp", "#include <wx/app.h>", ""),
    ("helper.cpp", "", "main.cpp is the only file"),
    ("attic/a.cpp", "", "in no room"),
    ("core/room.cmake", "morvelle_room(core SOURCES core/a.cpp USES messages ports)", ""),
    ("core/room.cmake", "morvelle_room(core SOURCES core/a.cpp\n  USES ui)", "core may not link ui"),
    ("core/room.cmake", "morvelle_room(core USES ui SOURCES core/a.cpp)", "core may not link ui"),
    ("core/room.cmake", "morvelle_room(core USES wx)", "core may not link wx"),
    ("core/room.cmake", "morvelle_room(attic USES core)", "attic is no room"),
    ("view/room.cmake", "morvelle_room(platform_wx USES messages ports platform wx)", ""),
    ("view/room.cmake", "morvelle_room(platform USES messages wx)", "platform may not link wx"),
    ("view/room.cmake", "morvelle_room(platform_wx USES core)", "platform_wx may not link core"),
    ("view/room.cmake", "morvelle_room(view USES ui ports wx)", ""),
    ("view/room.cmake", "morvelle_room(view USES ui platform)", "view may not link platform"),
]


def self_test(rooms):
    failures = []
    for name, line, wanted in CASES:
        with tempfile.TemporaryDirectory() as folder:
            src = pathlib.Path(folder)
            for file, text in (("main.cpp", "int main() {}\n"), (name, line + "\n")):
                (src / file).parent.mkdir(parents=True, exist_ok=True)
                (src / file).write_text(text, "utf-8")
            faults = faults_of_tree(src, rooms)
        good = len(faults) == 1 and wanted in faults[0] if wanted else not faults
        if not good:
            failures.append(f"{name}: {line!r}: wanted {wanted or 'nothing'!r}, got {faults}")
    with tempfile.TemporaryDirectory() as folder:
        if not faults_of_tree(pathlib.Path(folder), rooms):
            failures.append("an empty tree passes")
    try:
        read_rooms("a: b\nb: a\n")
        failures.append("a ring of rooms passes")
    except ValueError:
        pass
    return failures


def main():
    rooms = read_rooms((pathlib.Path(__file__).parent / "rooms.txt").read_text("utf-8"))
    if sys.argv[1:] == ["--self-test"]:
        faults = self_test(rooms)
    elif len(sys.argv) == 2:
        faults = faults_of_tree(pathlib.Path(sys.argv[1]), rooms)
    else:
        sys.exit(__doc__)
    for fault in faults:
        print(fault)
    sys.exit(1 if faults else 0)


main()
