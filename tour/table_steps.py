# SPDX-License-Identifier: MIT
"""Steps in the table of the materials: its order, filters, search, menus, sums and columns."""
import re
from decimal import Decimal

from tour.catalog import MATERIALS, count, literal, rows, shown
from tour.desktop import (NotShown, click, click_near_right_edge, clipboard, double_click_right_edge, expect, press,
                          right_click, type_text)

FILTER_BUTTON = 12  # unscaled pixels from a header's right edge to its middle


def sort_ascending(tour):
    click(tour.table(MATERIALS).header("Сметная"))
    tour.expect_column(MATERIALS, "Сметная", "CMETNAY nulls first", 60)
    return "a click on 'Сметная' sorts by price, rows without one first"


def sort_descending(tour):
    click(tour.table(MATERIALS).header("Сметная"))
    tour.expect_column(MATERIALS, "Сметная", "CMETNAY desc nulls last", 60)
    return "the second click turns the order round"


def sort_by_name(tour):
    place = [column.label for column in MATERIALS.columns].index("Наименование")
    names = [shown(row[place]) for row in rows(MATERIALS, tour.selection)]
    wanted = sorted(names, key=natural_key)[::60]
    click(tour.table(MATERIALS).header("Наименование"))
    expect("the names in their order",
           lambda: tour.table(MATERIALS).column("Наименование", range(0, len(names), 60)), wanted)
    return "'Наименование' sorts by the Russian alphabet, and numbers within the names by value"


def natural_key(text):
    """Numbers before letters, and by value, but for the digits of a decimal; Latin letters before Russian ones."""
    key = []
    for match in re.finditer(r"(?<=\d,)\d+|\d+|\D", text.lower().replace("ё", "е")):
        part = match.group()
        if part.isdigit():
            is_fraction = re.search(r"\d,$", text[:match.start()])
            key.append((1, 0, part) if is_fraction else (1, len(part.lstrip("0")), part.lstrip("0")))
        else:
            key.append((3 if part >= "а" else 2 if part.isalpha() else 0, ord(part), ""))
    return key


def filter_popup(tour, label):
    """The filter of a column: it is where the focus is."""
    expect("the focus in the filter", lambda: tour.program.focus.parent.name, f"Фильтр: {label}")
    return tour.program.focus.parent


def open_filter(tour, label):
    click_near_right_edge(tour.table(MATERIALS).header(label), FILTER_BUTTON)
    place = [column.label for column in MATERIALS.columns].index(label)
    values = {row[place] for row in rows(MATERIALS, tour.selection)}
    wanted = ["(Все)", "(Пустые)"] + sorted(values - {None})
    items = filter_popup(tour, label).find("list")
    expect("the values", lambda: [item.name for item in items.children()], wanted)
    return f"the filter of '{label}' offers its {len(values)} values"


def filter_by_value(tour, label, value):
    popup = filter_popup(tour, label)
    for item in ("(Все)", value):
        click(popup.find("list item", item))
    click(popup.find("push button", "ОК"))
    field = next(column.field for column in MATERIALS.columns if column.label == label)
    found = tour.expect_filtered(MATERIALS, f"{field} = {literal(value)}")
    tour.find("label", f"«{label}» равно «{value}»")
    return f"'{label}' is '{value}' in {found} rows"


def filter_by_text(tour, text):
    click_near_right_edge(tour.table(MATERIALS).header("Наименование"), FILTER_BUTTON)
    popup = filter_popup(tour, "Наименование")
    type_text(text)
    expect("the typed text", lambda: popup.find("text").text, text)
    press("Return")
    found = tour.expect_filtered(MATERIALS, f"NAME containing {literal(text)}")
    tour.find("label", f"«Наименование» содержит «{text}»")
    return f"{found} names hold '{text}'"


def clear_filter(tour):
    click(tour.find("push button", "Сбросить фильтр"))
    found = tour.expect_count(MATERIALS)
    expect("the filter bar", lambda: tour.program.shows("push button", "Сбросить фильтр"), False)
    return f"all {found} materials are back"


def find_text(tour, text):
    press("ctrl+f")
    field = tour.find("text", "Найти")
    type_text(text)
    expect("the typed text", lambda: field.text, text)
    place = current_name(tour, text)
    press("Return")
    expect("the next place", lambda: current_name(tour, text) > place, True)
    type_text("ъъ")
    tour.find("label", "Не найдено")
    return f"Ctrl+F finds '{text}' in row {place + 1} and goes on from there"


def current_name(tour, text):
    """The current row, whose name must hold the text."""
    table = tour.table(MATERIALS)
    row = table.current_row
    if row is None or text.lower() not in table.column("Наименование", [row])[0].lower():
        raise NotShown(f"the current row {row} does not hold '{text}'")
    return row


def leave_find(tour):
    press("Escape")
    expect("the find bar", lambda: tour.program.shows("text", "Найти"), False)
    expect("the focus", lambda: tour.table(MATERIALS).element.focused, True)
    return "Escape returns to the grid"


def type_condition(tour, label, condition):
    click_near_right_edge(tour.table(MATERIALS).header(label), FILTER_BUTTON)
    popup = filter_popup(tour, label)
    type_text(">")
    expect("the button", lambda: popup.find("push button", "ОК").enabled, False)
    expect_heard(tour, "После «>» нужно число")
    press("ctrl+a")
    type_text(condition)
    expect("the typed condition", lambda: popup.find("text").text, condition)
    return f"the filter of '{label}' takes '{condition}'; before, '>' alone is told to be none"


def filter_by_condition(tour, label, sql, words):
    press("Return")
    found = tour.expect_filtered(MATERIALS, sql)
    tour.find("label", f"«{label}» {words}")
    return f"it leaves {found} rows: '{label}' {words}"


def expect_heard(tour, text):
    expect("what assistive technology hears", lambda: text in tour.program.heard_names, True)


def field_of(label):
    return next(column.field for column in MATERIALS.columns if column.label == label)


def open_menu(tour, element):
    """The menu of an element, in which the first entry that can be chosen has the focus."""
    right_click(element)
    press("Down")  # the menu stands nowhere in the tree until something in it has the focus
    expect("the menu", lambda: tour.program.focus.parent.role, "popup menu")
    return tour.program.focus.parent


def choose_entry(tour, name):
    """By the keyboard, in the open menu."""
    while tour.program.focus.name != name:
        before = tour.program.focus.name
        press("Down")
        expect("another entry", lambda before=before: tour.program.focus.name != before, True)
    press("Return")


def menu_of_cell(tour, label):
    """By the mouse in the third row."""
    table = tour.table(MATERIALS)
    cell = table.cell(2, table.columns.index(label))
    menu = open_menu(tour, cell)
    entries = [entry.name for entry in menu.children() if entry.name]
    for wanted in ("Копировать ячейку", f"Оставить только «{cell.name}»", "Найти…", f"Столбец «{label}»"):
        if wanted not in entries:
            raise NotShown(f"the menu has {entries}, but no '{wanted}'")
    expect("the current row", lambda: tour.table(MATERIALS).current_row, 2)
    return f"a right click opens a menu of {len(entries)} entries and makes the row current"


def show_only(tour, label):
    table = tour.table(MATERIALS)
    value = table.cell(2, table.columns.index(label)).name
    choose_entry(tour, f"Оставить только «{value}»")
    found = tour.expect_filtered(MATERIALS, f"{field_of(label)} = {literal(value)}")
    expect("the focus in the table", lambda: tour.table(MATERIALS).element.focused, True)
    return f"its entry 'Оставить только «{value}»' leaves {found} rows"


def count_words(tour, text, words):
    press("ctrl+a")
    type_text(text)
    wanted = count(MATERIALS, tour.selection, " and ".join(f"NAME containing {literal(word)}" for word in words))
    outcome = re.compile(rf"\d+ из {wanted}")
    expect("which of how many", lambda: any(outcome.fullmatch(name) for name in tour.program.heard_names), True)
    for word in words:
        current_name(tour, word)
    return f"'{text}' is found in {wanted} names, in any order"


def sum_rows(tour, number):
    table = tour.table(MATERIALS)
    press("ctrl+Home", *["shift+Down"] * (number - 1))
    prices = [text for text in table.column("Сметная", range(number)) if text]
    total = sum(Decimal(text.replace(",", ".")) for text in prices)
    wanted = f"выделено {number} из {count(MATERIALS, tour.selection)}"
    expect("the selected rows", lambda: tour.table(MATERIALS).footer.split("; ")[0], wanted)
    expect("their sum", lambda: f"Сметная: {shown(total)}" in tour.table(MATERIALS).footer.split("; "), True)
    return f"the footer shows '{wanted}' and {shown(total)} under 'Сметная'"


def copy_cell(tour, label):
    table = tour.table(MATERIALS)
    cell = table.cell(0, table.columns.index(label))
    click(cell)
    press("ctrl+shift+c")
    expect("the clipboard", clipboard, cell.name)
    return f"Ctrl+Shift+C copies '{cell.name}'"


def hide_column(tour, label):
    labels = tour.table(MATERIALS).columns
    open_menu(tour, tour.table(MATERIALS).header(label))
    choose_entry(tour, "Скрыть столбец")
    expect("the columns", lambda: tour.table(MATERIALS).columns, [each for each in labels if each != label])
    return f"the header's menu hides '{label}'"


def fit_column(tour, label):
    before = tour.table(MATERIALS).header(label).box[2]
    double_click_right_edge(tour.table(MATERIALS).header(label))
    expect("a wider column", lambda: tour.table(MATERIALS).header(label).box[2] > before, True)
    return f"a double click on its edge widens '{label}' from {before} to {tour.table(MATERIALS).header(label).box[2]}"


def restore_columns(tour):
    open_menu(tour, tour.table(MATERIALS).header("Код"))
    choose_entry(tour, "Исходный вид")
    expect("the columns", lambda: tour.table(MATERIALS).columns, [column.label for column in MATERIALS.columns])
    return "'Исходный вид' brings all columns back"


def list_keys(tour):
    press("F1")
    page = tour.program.dialog("Клавиши")
    page.find("push button")
    return "F1 shows a page of all keys"


def leave_keys(tour):
    press("Escape")
    expect("the dialogs", tour.program.dialogs, [])
    expect("the focus in the table", lambda: tour.table(MATERIALS).element.focused, True)
    return "Escape closes it"
