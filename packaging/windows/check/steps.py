# SPDX-License-Identifier: MIT
"""The steps of the check. Each does what a user does, holds what comes of it against the server, and says it."""
import os
import shutil
import signal
import struct
import subprocess
from pathlib import Path

from tour import catalog, workbook
from tour.catalog import FER2014, FER2017, FER2020, MATERIALS, TER, Selection, count, query, rows
from tour.desktop import NotShown, TourError, click, colours, expect, press, screenshot, type_text, wait_for
from windows.check.screen import BLOCK, Area, Text, active_window, find, is_number, read, shows

ADDRESS = "127.0.0.51"  # of a server that nothing else uses
LIFETIME = 3600  # seconds until it ends by itself
REPOSITORY = Path(__file__).parents[3]

WHOLE = Area(0, 0, 1366, 768)
FIRST_COMMAND = Area(2, 39, 28, 18)  # within its frame, which spoils the recognition
COMMANDS = Area(0, 0, 1366, 120)  # menu, tool bar and selectors
BUTTON = Area(10, 156, 112, 20)
FOOTER = Area(8, 719, 66, 20)  # the count under the first column, within its frame
STATUS = Area(0, 746, 400, 22)

RIGHT_EDGE = Text("the right edge of the window", (1300, 300, 60, 100))

GREEN, RED, BLACK = (0, 128, 0), (255, 0, 0), (0, 0, 0)
PATIENCE = 60  # seconds for what takes Wine its time
FIXED_FILE_INFO = b"\xbd\x04\xef\xfe"  # VS_FIXEDFILEINFO.dwSignature, winver.h
LONGEST_PATH = 259  # characters that Windows allows a program that asks for no more
LONGEST_NAME = 100  # of a folder; twice as many bytes here

FIRST_REGION, NEWEST_PERIOD = "Респ. Коми", "202403"
OTHER_REGION, THIRD_REGION = "Пермский край", "Томская обл."
HELD_OPEN = "файл открыт в другой программе; закройте его там"


def windows_path(path):
    """As Wine names a path of this machine."""
    return "Z:" + str(path).replace("/", "\\")


class Check:
    """The program, the server, and what is chosen."""

    def __init__(self, program, client, holder, folder):
        self.archive, self.client, self.holder, self.folder = program, client, holder, folder
        self.place = folder / "Сметы и цены v1.0"
        self.server = folder / "server"
        self.process = None
        self.boxes = 0
        self.output = open(folder / "program-output.txt", "a", encoding="utf-8")
        self.selection = Selection(TER, FIRST_REGION, NEWEST_PERIOD)
        catalog.DATABASE = catalog.DATABASE.replace(catalog.SERVER, ADDRESS, 1)

    @property
    def version(self):
        return self.archive.name.split("-")[1]

    @property
    def workbook(self):
        return self.place / (workbook.file_name(MATERIALS, self.selection) + ".xlsx")

    @property
    def log(self):
        """The lines of the error log, in the code page of Russian Windows."""
        path = self.place / "Tarvelo.log"
        return path.read_text(encoding="cp1251").splitlines() if path.exists() else []

    def choose(self, **changes):
        self.selection = self.selection._replace(**changes)

    def launch(self):
        self.process = subprocess.Popen(
            ["wine", windows_path(self.place / "Tarvelo.exe")], cwd=self.folder, stdout=self.output, stderr=self.output)
        see("Открыть базу данных", COMMANDS)

    def private_server(self, *arguments):
        subprocess.run([REPOSITORY / "database/private-server", *arguments, "--root", self.server], check=True,
                       stdout=self.output)

    def start_server(self):
        self.private_server("start", "--address", ADDRESS, "--lifetime", str(LIFETIME), "--catalog", "sample")

    def obituary(self):
        status = self.process.poll() if self.process else None
        return "" if status is None else f" The program has ended with status {status}."

    def end(self):
        if self.process and self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        self.private_server("stop")
        self.output.close()


# What is to be seen

def see(text, area=WHOLE):
    return wait_for(lambda: find(text, area), PATIENCE)


def see_command(edition):
    return see(edition.caption, FIRST_COMMAND if edition == TER else COMMANDS)


def expect_dialog(check, words, language="rus"):
    """Waits for a message box in which these words are to be read, and confirms it."""
    def look():
        title, place = active_window()
        if place.height > WHOLE.height / 2 or not shows(words, place, language):
            raise NotShown(f"no box '{words}' on the screen; the window '{title}' says: {read(place, BLOCK)}")
    wait_for(look, PATIENCE)
    check.boxes += 1
    screenshot(check.folder / f"box-{check.boxes:02}.png")
    press("Return")
    expect_main_window()


def expect_main_window():
    def is_main():
        title, place = active_window()
        return title == "Tarvelo" and place.height > WHOLE.height / 2
    expect("the main window is the active one", is_main, True, PATIENCE)


def expect_connection(text, colour):
    expect("the colour of the connection's panel",
           lambda: colour in colours(Text(text, tuple(STATUS)[:4])), True, PATIENCE)
    see(text, STATUS)


def expect_count(check):
    wanted = count(MATERIALS, check.selection)
    expect(f"the footer shows {wanted}", lambda: is_number(wanted, FOOTER), True, PATIENCE)
    return wanted


# Starting and connecting

def tell_version(check):
    """Without a display, as a script asks; the system shows the same of the file."""
    environment = {name: value for name, value in os.environ.items() if name != "DISPLAY"}
    program = check.archive / "Tarvelo.exe"
    for option, words in (("--version", "Tarvelo " + check.version), ("--help", "--version")):
        answer = subprocess.run(["wine", program, option], env=environment, stdout=subprocess.PIPE,
                                stderr=check.output, check=False)
        if answer.returncode != 0 or words not in answer.stdout.decode():
            raise TourError(f"{option} ends with {answer.returncode} and says {answer.stdout}")
    # Wine's desktop has no display now, and keeps none.
    subprocess.run(["wineserver", "-k"], check=False)
    numbers = [int(part) for part in check.version.split(".")] + [0]
    place = program.read_bytes().index(FIXED_FILE_INFO) + len(FIXED_FILE_INFO) + 4
    high, low = struct.unpack("<II", program.read_bytes()[place:place + 8])
    if [high >> 16, high & 0xFFFF, low >> 16, low & 0xFFFF] != numbers:
        raise TourError(f"the file's properties show the version {high >> 16}.{high & 0xFFFF}.{low >> 16}")
    return f"--version, the file's properties and the archive's name say {check.version}"


def unpack(check):
    for earlier in check.place.glob("*"):
        raise TourError(f"{earlier} is there already")
    shutil.copytree(check.archive, check.place)
    check.launch()
    title, place = active_window()
    expect("the window fills the screen", lambda: BLACK in colours(RIGHT_EDGE), False, PATIENCE)
    return f"in a folder with blanks, points and Cyrillic letters '{title}' starts, {place.width}x{place.height}"


def ask_for_connection():
    click(see("Открыть базу данных", COMMANDS))
    expect("the input box", lambda: active_window()[0], "Сервер базы данных", PATIENCE)
    press("ctrl+a")
    type_text(ADDRESS)
    press("Return")
    expect_main_window()


def miss_client(check):
    ask_for_connection()
    expect_connection("База FB не подключена", RED)
    return "without a Firebird client it cannot connect and says so in red"


def connect(check):
    close_window(check)
    shutil.copy(check.client, check.place)
    check.start_server()
    check.launch()
    ask_for_connection()
    expect_connection("База FB подключена", GREEN)
    for edition in (TER, FER2014, FER2017, FER2020):
        see_command(edition)
    return f"with {check.client.name} beside it, it is connected to {ADDRESS} and offers its four editions"


# Editions and regions

def open_edition(check, edition):
    click(see_command(edition))
    check.choose(edition=edition, region=FIRST_REGION, period=NEWEST_PERIOD)
    see(FIRST_REGION, COMMANDS)
    return f"{edition.caption} shows {expect_count(check)} materials"


def read_russian(check):
    """The captions of the columns, and the first name, which is longer than a line."""
    for column in MATERIALS.columns:
        see(column.label)
    name = rows(MATERIALS, check.selection)[0][2]
    if not shows(name, WHOLE):
        raise TourError(f"'{name}' is not to be read")
    return f"all {len(MATERIALS.columns)} captions and the name '{name}' are to be read"


def choose_region(check, region):
    click(see(check.selection.region, COMMANDS))
    press("F4")
    click(see(region))
    see(region, COMMANDS)
    check.choose(region=region)
    return f"chosen from the list, {region} has {expect_count(check)} materials"


# Workbooks

def export(check):
    click(see("В ексель", BUTTON))
    expect_dialog(check, "Выгрузка завершена")
    found = workbook.check(check.workbook, MATERIALS, MATERIALS.columns, rows(MATERIALS, check.selection))
    left = sorted(path.name for path in check.place.glob(".*"))
    if left:
        raise TourError(f"beside the workbook it has left {left}")
    return f"'{check.workbook.name}' has {found} rows, all as in the database"


def only_line(lines):
    if len(lines) != 1:
        raise TourError(f"the log has got {len(lines)} lines instead of one: {lines}")
    return lines[0]


def replace_held(check):
    """Another process has the workbook open as spreadsheets do."""
    before, lines = check.workbook.read_bytes(), len(check.log)
    with subprocess.Popen(["wine", check.holder, windows_path(check.workbook)], stdin=subprocess.PIPE,
                          stdout=subprocess.PIPE, stderr=check.output) as holder:
        if not holder.stdout.readline().startswith(b"open"):
            raise TourError("the workbook cannot be held open")
        click(see("В ексель", BUTTON))
        expect_dialog(check, HELD_OPEN)
        holder.stdin.close()
    if check.workbook.read_bytes() != before:
        raise TourError("a workbook that is held open has been written")
    line = only_line(check.log[lines:])
    if not (":ExportError:" in line and HELD_OPEN in line and check.workbook.name in line
            and line.endswith(" Компонент Button1")):
        raise TourError(f"the log says '{line}'")
    export(check)
    return f"a workbook that is held open stays as it is, then is replaced; the log: '{line}'"


# The server

def kill_server(check):
    os.kill(int((check.server / "server.pid").read_text()), signal.SIGKILL)
    lines = len(check.log)
    click(see(check.selection.region, COMMANDS))
    press("F4")
    click(see(THIRD_REGION))
    message = "Error reading data from the connection."  # the client's own words
    expect_dialog(check, message, "eng")
    line = only_line(check.log[lines:])
    if f":DatabaseError:{message}" not in line:
        raise TourError(f"the log says '{line}'")
    return f"the server is killed and the program lives on; the log: '{line}'"


def reconnect(check):
    check.start_server()
    ask_for_connection()
    expect_connection("База FB подключена", GREEN)
    see(THIRD_REGION, COMMANDS)
    check.choose(region=THIRD_REGION)
    choose_region(check, OTHER_REGION)
    return f"the server is back, the program is connected again and reads {expect_count(check)} materials"


# Ends

def close_window(check):
    """By the key that the window manager gives the button of the title bar."""
    expect_main_window()
    press("alt+F4")
    try:
        status = check.process.wait(PATIENCE)
    except subprocess.TimeoutExpired:
        raise TourError("the program does not end") from None
    if status != 0:
        raise TourError(f"the program has ended with {status}")


def close(check):
    close_window(check)
    left, = query(["count(*)"], "from MON$ATTACHMENTS where MON$SYSTEM_FLAG = 0 and "
                                "MON$ATTACHMENT_ID <> CURRENT_CONNECTION")[0]
    if left != "0":
        raise TourError(f"it has left {left} connections on the server")
    return "the program ends with 0 and leaves no connection behind"


def use_long_path(check):
    """The program's own files can still be loaded, but its workbooks have longer paths than Windows takes."""
    room = LONGEST_PATH - len(windows_path(check.folder / "platforms/qwindows.dll")) - len("/")
    folders = []
    while room > 2:
        folders.append("Сметы".ljust(min(room, LONGEST_NAME), "ы"))
        room -= len(folders[-1]) + len("/")
    place = check.folder.joinpath(*folders)
    place.parent.mkdir(parents=True)
    check.place = check.place.rename(place)
    check.launch()
    ask_for_connection()
    open_edition(check, TER)
    export(check)
    length = len(windows_path(check.workbook))
    if length <= LONGEST_PATH:
        raise TourError(f"the path has {length} characters only")
    return f"a workbook is written to a path of {length} characters"


STEPS = (
    ("version", tell_version),
    ("start", unpack),
    ("no-client", miss_client),
    ("connect", connect),
    ("open-ter", open_edition, TER),
    ("russian", read_russian),
    ("export-ter", export),
    ("other-region", choose_region, OTHER_REGION),
    ("export-other-region", export),
    ("replace-held", replace_held),
    ("open-fer2014", open_edition, FER2014),
    ("open-fer2017", open_edition, FER2017),
    ("open-fer2020", open_edition, FER2020),
    ("export-fer2020", export),
    ("kill-server", kill_server),
    ("reconnect", reconnect),
    ("export-again", export),
    ("close", close),
    ("long-path", use_long_path),
    ("close-again", close),
)
