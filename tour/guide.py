# SPDX-License-Identifier: MIT
"""The pictures of the guide: a shorter way through the program, with a halt at each thing that the guide shows."""
import subprocess

from tour.catalog import FIRMS, MATERIALS, TER
from tour.desktop import TourError, click, expect, picture, picture_of_page, point, press, type_text
from tour.steps import (FULL_REGION, NEWEST_PERIOD, OTHER_REGION, REGION_PROMPT, arrange, ask_for_server, close_browser,
                        close_program, connect, enter_selector, export, export_arranged, miss_server, open_edition,
                        open_region_list, search_tree, show_tab, show_tree, start, type_region)
from tour.table_steps import (clear_filter, copy_cell, count_words, filter_by_condition, filter_by_value, leave_find,
                              leave_keys, list_keys, menu_of_cell, open_filter, sum_rows, type_condition)

SIZE = 1366, 768  # of all pictures; on a narrower screen the tabs would not all be seen
MOST_BYTES = 80_000
OFFICE_TIMEOUT = 120  # seconds


def show(tour, name):
    """Takes a picture of the screen."""
    return keep(tour, name, picture)


def keep(tour, name, make):
    path = tour.pictures / f"{name}.png"
    make(path)
    size = path.stat().st_size
    if size > MOST_BYTES:
        raise TourError(f"{path} has {size} bytes, more than {MOST_BYTES}")
    return f"{path} has {size} bytes"


def show_workbook(tour, name):
    """Takes a picture of how the last workbook is printed."""
    workbook = list(tour.exported)[-1]
    subprocess.run(
        ["soffice", f"-env:UserInstallation={(tour.folder / 'office-profile').as_uri()}", "--headless",
         "--convert-to", "pdf", "--outdir", tour.folder, workbook],
        capture_output=True, timeout=OFFICE_TIMEOUT, check=True)
    page = tour.folder / f"{workbook.stem}.pdf"
    return keep(tour, name, lambda path: picture_of_page(page, path, *SIZE))


def choose_region(tour, region):
    click(tour.selector(REGION_PROMPT).find("list item", region))
    expect("the region", lambda: tour.selector(REGION_PROMPT).name, region)
    return f"{region} has {tour.expect_count(MATERIALS)} materials"


def half_a_region(tour, text):
    enter_selector(tour, REGION_PROMPT)
    type_text(text)
    warning = f"По этому тексту регион не выбран. Показан «{tour.selection.region}»"
    before = tour.program.window_count()
    point(tour.find("combo box", description=warning))
    expect("its tool tip", lambda: tour.program.window_count() > before, True)
    return f"'{text}' is no region, and the selector says so"


def rest_of_region(tour, text):
    type_text(text)
    tour.choose(region=tour.selector(REGION_PROMPT).name)
    return f"with '{text}' it is {tour.selection.region}, which has {tour.expect_count(MATERIALS)} materials"


def open_find(tour):
    press("ctrl+f")
    tour.find("text", "Найти")
    return "Ctrl+F opens the find bar"


def leave_menu(tour):
    press("Escape")
    expect("the focus in the table", lambda: tour.table(MATERIALS).element.focused, True)
    return "Escape closes the menu"


def confirm(tour):
    press("Return")
    expect("the dialogs", tour.program.dialogs, [])
    return "Enter closes the message"


GUIDE = (
    ("start", start),
    ("ask-for-server", ask_for_server),
    ("show", show, "connect"),
    ("miss-server", miss_server),
    ("show", show, "not-connected"),
    ("connect", connect),
    ("open-ter", open_edition, TER, FULL_REGION, NEWEST_PERIOD),
    ("show", show, "materials"),
    ("open-region-list", open_region_list),
    ("show", show, "regions"),
    ("choose-region", choose_region, FULL_REGION),
    ("half-a-region", half_a_region, OTHER_REGION[:6]),
    ("show", show, "red-selector"),
    ("rest-of-region", rest_of_region, OTHER_REGION[6:]),
    ("type-region", type_region, FULL_REGION),
    ("open-filter", open_filter, "Ед.изм"),
    ("show", show, "filter"),
    ("filter-by-value", filter_by_value, "Ед.изм", "кг"),
    ("clear-filter", clear_filter),
    ("type-condition", type_condition, "Сметная", ">1000 <=5000"),
    ("show", show, "condition"),
    ("filter-by-condition", filter_by_condition, "Сметная", "CMETNAY > 1000 and CMETNAY <= 5000",
     "больше 1000 и не больше 5000"),
    ("clear-condition", clear_filter),
    ("open-find", open_find),
    ("count-words", count_words, "2,5 КАБЕЛ", ("кабел", "2,5")),
    ("show", show, "find"),
    ("leave-find", leave_find),
    ("sum-rows", sum_rows, 4),
    ("show", show, "sum"),
    ("copy-cell", copy_cell, "Сметная"),
    ("menu-of-cell", menu_of_cell, "Ед.изм"),
    ("show", show, "menu"),
    ("leave-menu", leave_menu),
    ("list-keys", list_keys),
    ("show", show, "keys"),
    ("leave-keys", leave_keys),
    ("arrange", arrange, "марка"),
    ("show", show, "arranged"),
    ("export", export),
    ("show", show, "exported"),
    ("confirm", confirm),
    ("export-arranged", export_arranged, "марка"),
    ("workbook", show_workbook, "workbook"),
    ("tab-firms", show_tab, FIRMS),
    ("show", show, "firms"),
    ("show-tree", show_tree),
    ("search-tree", search_tree, "задвижки"),
    ("show", show, "tree"),
    ("close-browser", close_browser),
    ("close-program", close_program),
)
