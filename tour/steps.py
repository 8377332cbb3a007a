# SPDX-License-Identifier: MIT
"""The steps of the tour. Each does what a user does, checks what the program then shows, and says it in a line."""
from tour import row_heights, workbook
from tour.catalog import (COEFFICIENTS, CONTENTS, FER2014, FER2017, FER2020, FIRMS, GRID_TABS, LABOUR, MACHINES,
                          MATERIALS, REGIONS, SERVER, TER, TRANSPORT, TREE_TAB, Selection, count, literal, query,
                          rows, shown)
from tour.desktop import (Program, Table, TourError, click, click_near_right_edge, click_tab, close_by_title_bar,
                          colours, drag, expect, point, press, type_text)
from tour.table_steps import (clear_filter, copy_cell, count_words, filter_by_condition, filter_by_text,
                              filter_by_value, find_text, fit_column, hide_column, leave_find, leave_keys, list_keys,
                              menu_of_cell, open_filter, restore_columns, show_only, sort_ascending, sort_by_name,
                              sort_descending, sum_rows, type_condition)

GREEN, RED, PURPLE = (0, 128, 0), (255, 0, 0), (128, 0, 128)
NOBODY = "127.0.0.99"  # where no server listens
OPEN_COMMAND = "Открыть базу данных"
SERVER_BOX = "Сервер базы данных"
CONNECTED, NOT_CONNECTED = "База FB подключена", "База FB не подключена"
REGION_PROMPT, PERIOD_PROMPT = "Выбор текущего региона", "Выбор текущего периода"
EXPORT_BUTTON = "В ексель"

# Unscaled pixels from a selector's right edge to the middle of its arrow.
LIST_ARROW = 9

FULL_REGION = "Респ. Коми"  # the fourth by name; its catalogs are the fullest
NEWEST_PERIOD = "202403"
OTHER_REGION = "Пермский край"


class Tour:
    """The program on the screen and what it is expected to show."""

    def __init__(self, executable, folder, scale, pictures=None):
        self.folder = folder
        self.pictures = pictures  # where those of the guide go
        self.executable = executable
        self.program_folder = executable.parent
        self.there_before = {path.name for path in self.program_folder.iterdir()}
        self.program = Program(executable, scale)
        self.selection = Selection(TER, FULL_REGION, NEWEST_PERIOD)
        self.exported = {}  # workbook: rows

    def end(self):
        self.program.end()

    def obituary(self):
        return self.program.obituary()

    def find(self, role, name=None, description=None):
        return self.program.find(role, name, description)

    def table(self, tab):
        return Table(self.find("table", tab.caption))

    def selector(self, prompt):
        return self.find("combo box", description=prompt)

    def status(self, panel):
        """A panel of the status bar, which is the lowest part of the main window."""
        window = self.program.root.child(0)
        *_, bar = window.children()
        return bar.child(panel)

    def choose(self, **changes):
        self.selection = self.selection._replace(**changes)

    def expect_count(self, tab, wanted=None):
        if wanted is None:
            wanted = count(tab, self.selection)
        self.expect_footer(tab, str(wanted))
        expect(f"{tab.caption}: the rows", lambda: self.table(tab).row_count, wanted)
        return wanted

    def expect_footer(self, tab, text):
        expect(f"{tab.caption}: the count under '{tab.counted}'", lambda: self.table(tab).footer, text)

    def expect_filtered(self, tab, condition):
        """The rows that fulfil a condition, out of all."""
        wanted = count(tab, self.selection, condition)
        self.expect_footer(tab, f"{wanted} из {count(tab, self.selection)}")
        expect(f"{tab.caption}: the rows", lambda: self.table(tab).row_count, wanted)
        return wanted

    def expect_column(self, tab, label, order, step):
        """Every so many rows of a column against the database."""
        place = [column.label for column in tab.columns].index(label)
        wanted = [shown(row[place]) for row in rows(tab, self.selection, order=order)]
        expect(f"'{label}' in the order of {order}",
               lambda: self.table(tab).column(label, range(0, len(wanted), step)), wanted[::step])


# Connecting

def start(tour):
    window = tour.program.root.child(0)
    tour.find("menu item", OPEN_COMMAND)
    expect("the tool bar", lambda: tour.program.shows("tool bar"), False)
    expect("the connection's panel", lambda: tour.status(0).name, "")
    return f"the window '{window.name}' has its menu and no tool bar"


def ask_for_server(tour):
    click(tour.find("menu item", OPEN_COMMAND))
    box = tour.program.dialog(SERVER_BOX)
    box.find("label", "Введите IP сервера")
    expect("the preset address", lambda: box.find("text").text, SERVER)
    expect("the focus", lambda: box.find("text").focused, True)
    return f"the input box offers {SERVER}"


def miss_server(tour):
    press("ctrl+a")
    type_text(NOBODY)
    expect("the typed address", lambda: tour.program.dialog(SERVER_BOX).find("text").text, NOBODY)
    press("Return")
    expect_connection(tour, NOT_CONNECTED, RED)
    expect("the tool bar", lambda: tour.program.shows("tool bar"), False)
    return f"{NOBODY} does not answer: '{NOT_CONNECTED}' in red, no tool bar"


def connect(tour):
    click(tour.find("menu item", OPEN_COMMAND))
    click(tour.program.dialog(SERVER_BOX).find("push button", "OK"))
    expect_connection(tour, CONNECTED, GREEN)
    for edition in (TER, FER2014, FER2017, FER2020):
        tour.find("push button", edition.caption)
    return f"'{CONNECTED}' in green, the tool bar has its four editions"


def expect_connection(tour, text, colour):
    expect("the connection's panel", lambda: tour.status(0).name, text)
    expect("its colour is there", lambda: colour in colours(tour.status(0)), True)


def keyboard_locks(tour):
    for panel, key, name in ((2, "Caps_Lock", "CAPS"), (3, "Num_Lock", "NUM")):
        expect("the panel", lambda: tour.status(panel).name, name)
        for is_on in (True, False):
            press(key)
            expect(f"{name} is lit", lambda: PURPLE in colours(tour.status(panel)), is_on)
    return "CAPS and NUM are purple while their keys are locked"


# Choosing

def open_edition(tour, edition, region, period, keys=None):
    button = tour.find("push button", edition.caption)
    if keys:
        press(keys)
    else:
        click(button)
    tour.selection = Selection(edition, region, period)
    tour.find("label", f"   {edition.caption}")
    expect("the region", lambda: tour.selector(REGION_PROMPT).name, region)
    expect("the period", lambda: tour.selector(PERIOD_PROMPT).name, period)
    found = tour.expect_count(MATERIALS)
    expect("the focus in the first row", lambda: tour.table(MATERIALS).cell(0, 0).focused, True)
    expect("the current row", lambda: tour.table(MATERIALS).current_row, 0)
    first = [shown(value) for value in rows(MATERIALS, tour.selection)[0]]
    expect("the first row", lambda: tour.table(MATERIALS).row(0), first)
    price = dict(zip(tour.table(MATERIALS).columns, first))["Сметная"]
    return f"{edition.caption}, {region}, {period}: {found} materials, the first for {price}, focus on it"


def hint(tour):
    point(tour.find("push button", FER2020.caption))
    expect("the hint", lambda: tour.status(1).name, "Тип ФЕР2020")
    point(tour.find("push button", "Закрыть"))
    expect("no hint", lambda: tour.status(1).name, "")
    return "the status bar shows a command's hint while the mouse is over it"


def open_region_list(tour):
    selector = tour.selector(REGION_PROMPT)
    click_near_right_edge(selector, LIST_ARROW)
    wanted = [region for region, in rows(REGIONS, tour.selection)]
    expect("the regions", lambda: [item.name for item in selector.find("list").children()], wanted)
    return f"the list has the {len(wanted)} regions of the database"


def region_from_list(tour, region):
    click(tour.selector(REGION_PROMPT).find("list item", region))
    expect("the region", lambda: tour.selector(REGION_PROMPT).name, region)
    tour.choose(region=region)
    return f"chosen with the mouse, {region} has {tour.expect_count(MATERIALS)} materials"


def period_by_keys(tour, period):
    press("Tab")
    expect("the focus in the period", lambda: tour.program.focus.description, PERIOD_PROMPT)
    press("Down")
    expect("the period", lambda: tour.selector(PERIOD_PROMPT).name, period)
    tour.choose(period=period)
    return f"Tab and Down: {period} has {tour.expect_count(MATERIALS)} materials"


def type_period(tour, period):
    field = enter_selector(tour, PERIOD_PROMPT)
    type_text(period[:-1])
    expect("the period so far", lambda: field.text, period[:-1])
    tour.expect_count(MATERIALS, 0)
    type_text(period[-1])
    expect("the period", lambda: field.text, period)
    tour.choose(period=period)
    return f"typed, {period[:-1]} has no rows and {period} has {tour.expect_count(MATERIALS)}"


def type_region(tour, region):
    field = enter_selector(tour, REGION_PROMPT)
    for end in range(1, len(region)):
        type_text(region[end - 1])
        expect("the region so far", lambda end=end: field.text, region[:end])
    before = tour.expect_count(MATERIALS)
    type_text(region[-1])
    expect("the region", lambda: field.text, region)
    tour.choose(region=region)
    return f"typed, {region} has {tour.expect_count(MATERIALS)} materials; until its last letter there were {before}"


def enter_selector(tour, prompt):
    field = tour.selector(prompt).find("text")
    click(field)
    press("ctrl+a")
    return field


# Tabs

def show_tab(tour, tab):
    click_tab(tour.find("page tab", tab.caption))
    expect("the columns", lambda: tour.table(tab).columns, [column.label for column in tab.columns])
    found = tour.expect_count(tab)
    tour.expect_column(tab, tab.counted, tab.order, max(1, found // 40))
    return f"{tab.caption}: {found} rows"


def show_tree(tour):
    click_tab(tour.find("page tab", TREE_TAB))
    wanted = [name for name, in query(["NAME"], "from KATALOG where PARENTID is null")]
    expect("the nodes", lambda: tree_nodes(tour), wanted)
    return f"{TREE_TAB}: {len(wanted)} nodes at the top"


# The tree

def tree_nodes(tour):
    return [node.name for node in tour.find("tree").children()]


def search_tree(tour, text):
    field = tour.find("text", "Поиск в дереве")
    click(field)
    type_text(text)
    expect("the typed text", lambda: field.text, text)
    found, wanted = with_ancestors(f"NAME containing {literal(text)}")
    expect("the nodes", lambda: sorted(tree_nodes(tour)), sorted(wanted))
    return f"{found} nodes hold '{text}', {len(wanted)} are shown with those above them"


def with_ancestors(condition):
    """How many nodes fulfil the condition, and the names of these and of all above them."""
    nodes = {node: (parent, name) for node, parent, name in query(["ID", "PARENTID", "NAME"], "from KATALOG")}
    found = [node for node, in query(["ID"], f"from KATALOG where {condition}")]
    shown_nodes = set()
    for node in found:
        while node is not None and node not in shown_nodes:
            shown_nodes.add(node)
            node, _ = nodes[node]
    return len(found), [nodes[node][1] for node in shown_nodes]


def clear_tree_search(tour):
    click(tour.find("push button", "Очистить поиск"))
    expect("the search text", lambda: tour.find("text", "Поиск в дереве").text, "")
    expect("nodes", lambda: len(tree_nodes(tour)) > 0, True)
    return "the tree is whole again"


def type_in_tree(tour, text):
    tree = tour.find("tree")
    click(tree.child(0), across=0.25)  # in the column of the names, which is searched then
    type_text(text)
    expect("the current node", lambda: [node.name[:len(text)] for node in tree.children() if node.selected], [text])
    node, = (node for node in tree.children() if node.selected)
    expect("its place on the screen", lambda: node.box[3] > 0, True)
    return f"typing goes to '{node.name}'"


# Export

def export(tour):
    """Exports the grid of the tab in front."""
    click(tour.find("push button", EXPORT_BUTTON))
    tour.program.dialog("Tarvelo").find("label", "Выгрузка завершена")
    return "the export ends with its message"


def check_export(tour, tab, columns=None, wanted=None, keys=None):
    """Confirms the message and compares the workbook; returns what it is and holds."""
    click(tour.program.dialog("Tarvelo").find("push button"))
    expect("the dialogs", tour.program.dialogs, [])
    path = tour.program_folder / (workbook.file_name(tab, tour.selection) + ".xlsx")
    if not path.exists():
        raise TourError(f"there is no {path}")
    columns = columns or tab.columns
    wanted = rows(tab, tour.selection) if wanted is None else wanted
    tour.exported[path] = workbook.check(path, tab, columns, wanted, keys)
    return f"'{path.name}' has {len(columns)} columns and {len(wanted)} rows, all as in the database"


def refuse_export(tour):
    """A folder stands where the workbook should come to stand."""
    place = tour.program_folder / (workbook.file_name(MATERIALS, tour.selection) + ".xlsx")
    place.mkdir()
    click(tour.find("push button", EXPORT_BUTTON))
    labels = [part.name.replace("\u200b", "") for part in tour.program.dialog("Tarvelo").descendants()
              if part.role == "label"]
    told, = (label for label in labels if place.name in label)
    press("Return")
    expect("the dialogs", tour.program.dialogs, [])
    place.rmdir()
    log = tour.program_folder / "Tarvelo.log"
    line, = log.read_text(encoding="utf-8").splitlines()
    if not line.endswith(f":ExportError:{told} Компонент Button1"):
        raise TourError(f"the log says '{line}', the box '{told}'")
    log.unlink()
    return f"where a folder has its name the workbook cannot come: '{told}', and so the log"


def export_all(tour):
    for tab in GRID_TABS:
        click_tab(tour.find("page tab", tab.caption))
        export(tour)
        check_export(tour, tab)
    return f"the workbooks of all {len(GRID_TABS)} grids of {tour.selection.edition.caption} equal the database"


def arrange(tour, text):
    """Another order of the columns, two columns to sort by and a filter."""
    table = tour.table(MATERIALS)
    drag(table.header("Индекс"), table.header("Номер"))
    labels = [column.label for column in MATERIALS.columns if column.label != "Индекс"]
    labels.insert(labels.index("Номер"), "Индекс")
    expect("the columns", lambda: tour.table(MATERIALS).columns, labels)
    click(table.header("Ед.изм"))
    click(table.header("Сметная"), held_key="shift")
    filter_by_text(tour, text)
    return f"'Индекс' before 'Номер', by 'Ед.изм' and 'Сметная', only names with '{text}'"


def export_arranged(tour, text):
    labels = tour.table(MATERIALS).columns
    by_label = {column.label: column for column in MATERIALS.columns}
    columns = tuple(by_label[label] for label in labels)
    wanted = rows(MATERIALS._replace(columns=columns), tour.selection, f"NAME containing {literal(text)}",
                  "EDIZM nulls first, CMETNAY nulls first")
    export(tour)
    return check_export(tour, MATERIALS, columns, wanted, [labels.index("Ед.изм"), labels.index("Сметная")])


def open_in_office(tour):
    workbook.check_in_office(tour.exported, tour.folder)
    workbook.require(row_heights.check(list(tour.exported)), "rows of workbooks are not as tall as their texts need")
    return f"LibreOffice opens all {len(tour.exported)} workbooks and finds their rows as tall as they should be"


# The end

def close_browser(tour):
    click(tour.find("push button", "Закрыть"))
    expect("the browser", lambda: tour.program.shows("page tab list"), False)
    tour.find("tool bar")
    expect_connection(tour, CONNECTED, GREEN)
    return "'Закрыть' leaves the tool bar and the connection"


def start_again(tour):
    tour.program.end()
    tour.program = Program(tour.executable, tour.program.scale)
    return start(tour)


def close_program(tour):
    click(tour.find("push button", "Закрыть"))
    expect_end(tour)
    return "'Закрыть' ends the program; beside it lie its workbooks and no error log"


def close_window(tour):
    tour.find("page tab list")
    close_by_title_bar(tour.program.root.child(0))
    expect_end(tour)
    return "so does the title bar, a browser being open"


def expect_end(tour):
    status = tour.program.exit_status()
    if status != 0:
        raise TourError(f"the program ends with {status}")
    left = {path.name for path in tour.program_folder.iterdir()}
    wanted = {path.name for path in tour.exported} | tour.there_before
    if left != wanted:
        raise TourError(f"beside the program there are also {sorted(left - wanted)}")


STEPS = (
    ("start", start),
    ("ask-for-server", ask_for_server),
    ("miss-server", miss_server),
    ("connect", connect),
    ("keyboard-locks", keyboard_locks),
    ("open-ter", open_edition, TER, FULL_REGION, NEWEST_PERIOD),
    ("hint", hint),
    ("open-region-list", open_region_list),
    ("region-from-list", region_from_list, "Томская обл."),
    ("period-by-keys", period_by_keys, "202312"),
    ("type-period", type_period, "202306"),
    ("type-region", type_region, FULL_REGION),
    ("type-newest-period", type_period, NEWEST_PERIOD),
    ("refuse-export", refuse_export),
    ("export", export),
    ("workbook", check_export, MATERIALS),
    ("tab-contents", show_tab, CONTENTS),
    ("tab-machines", show_tab, MACHINES),
    ("tab-labour", show_tab, LABOUR),
    ("tab-transport", show_tab, TRANSPORT),
    ("tab-regions", show_tab, REGIONS),
    ("tab-firms", show_tab, FIRMS),
    ("tab-coefficients", show_tab, COEFFICIENTS),
    ("tab-tree", show_tree),
    ("search-tree", search_tree, "задвижки"),
    ("clear-tree-search", clear_tree_search),
    ("type-in-tree", type_in_tree, "Группа 10.1.04"),
    ("tab-materials", show_tab, MATERIALS),
    ("sort", sort_ascending),
    ("sort-descending", sort_descending),
    ("sort-by-name", sort_by_name),
    ("open-filter", open_filter, "Ед.изм"),
    ("filter-by-value", filter_by_value, "Ед.изм", "кг"),
    ("clear-filter", clear_filter),
    ("filter-by-text", filter_by_text, "Щебень"),
    ("clear-text-filter", clear_filter),
    ("type-condition", type_condition, "Сметная", ">1000 <=5000"),
    ("filter-by-condition", filter_by_condition, "Сметная", "CMETNAY > 1000 and CMETNAY <= 5000",
     "больше 1000 и не больше 5000"),
    ("clear-condition", clear_filter),
    ("menu-of-cell", menu_of_cell, "Ед.изм"),
    ("show-only", show_only, "Ед.изм"),
    ("clear-shown-only", clear_filter),
    ("find", find_text, "кабел"),
    ("count-words", count_words, "2,5 КАБЕЛ", ("кабел", "2,5")),
    ("leave-find", leave_find),
    ("sum-rows", sum_rows, 4),
    ("copy-cell", copy_cell, "Сметная"),
    ("hide-column", hide_column, "Брутто"),
    ("fit-column", fit_column, "Наименование"),
    ("restore-columns", restore_columns),
    ("list-keys", list_keys),
    ("leave-keys", leave_keys),
    ("open-fer2014", open_edition, FER2014, FULL_REGION, NEWEST_PERIOD),
    ("open-fer2017", open_edition, FER2017, FULL_REGION, NEWEST_PERIOD),
    ("open-fer2020", open_edition, FER2020, FULL_REGION, NEWEST_PERIOD),
    ("open-ter-again", open_edition, TER, FULL_REGION, NEWEST_PERIOD),
    ("export-ter", export_all),
    ("open-fer2020-by-key", open_edition, FER2020, FULL_REGION, NEWEST_PERIOD, "alt+2"),
    ("other-region", type_region, OTHER_REGION),
    ("export-fer2020", export_all),
    ("back-to-materials", show_tab, MATERIALS),
    ("full-region", type_region, FULL_REGION),
    ("arrange", arrange, "марка"),
    ("export-arranged", export_arranged, "марка"),
    ("office", open_in_office),
    ("close-browser", close_browser),
    ("close-program", close_program),
    ("start-again", start_again),
    ("connect-again", connect),
    ("open-browser-again", open_edition, TER, FULL_REGION, NEWEST_PERIOD),
    ("close-window", close_window),
)
