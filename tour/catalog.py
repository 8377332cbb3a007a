# SPDX-License-Identifier: MIT
"""What the database says: the tables behind the tabs, read by isql-fb from the server that the program uses."""
import os
import subprocess
from decimal import Decimal
from typing import NamedTuple

SERVER = "127.0.0.1"  # the program offers it
DATABASE = SERVER + r"/3050:C:\DATA\BAZAKATALOG.FDB"
PASSWORD = "pinewoods"

# Control characters that no text of the catalog holds.
NULL, END_OF_VALUE, END_OF_ROW = "\2", "\x1f", "\x1e"


class DatabaseError(Exception):
    """The database has not answered a query."""


class Column(NamedTuple):
    label: str
    field: str
    digits: int | None = None  # after the decimal point of a number; None: a text


class Tab(NamedTuple):
    caption: str
    table: str  # {} stands for the edition
    columns: tuple[Column, ...]
    counted: str  # the column over the count of the footer
    file_text: str
    order: str | None = None
    per_selection: bool = True  # shows the rows of the chosen region and period


class Edition(NamedTuple):
    caption: str
    prefix: str  # of its tables


class Selection(NamedTuple):
    edition: Edition
    region: str
    period: str


CODE = Column("Код", "KOD", 0)
NAME = Column("Наименование", "NAME")
UNIT = Column("Ед.изм", "EDIZM")
BASIS = Column("Обоснование", "OBOSNOV")

MATERIALS = Tab(
    "КТЦ_Материалы", "{}KATALOGKTC_TABLE",
    (CODE, Column("Номер", "NOMER"), NAME, UNIT, Column("Брутто", "BRUTTO"), Column("Класс груза", "KLASSGR"),
     Column("Код узла", "KODUZLA"), Column("Базовая", "BAZOVAY", 2), Column("Оптовая", "OPTOVAY", 2),
     Column("Сметная", "CMETNAY", 2), Column("Индекс", "INDEKS", 2)),
    "Код", "_КТЦ_Материалы_", "KOD")
CONTENTS = Tab(
    "КТЦ_Материалы_оглавление", "{}KATOGLAVLENIE_TABLE",
    (CODE, Column("Пункт оглавления", "PUNKT"), Column("Код узла", "KODUZLA")),
    "Код", "_КТЦ_Материалы_оглавление_", "KOD")
MACHINES = Tab(
    "КТЦ_Машины", "{}MASH_TABLE",
    (CODE, BASIS, NAME, UNIT, Column("ЭММ", "EMM", 2), Column("ЗПМ", "ZMP", 2)),
    "Код", "_КТЦ_Машины_", "KOD")
LABOUR = Tab(
    "КТЦ_Труд", "{}TRUD_TABLE", (CODE, BASIS, NAME, UNIT, Column("ОЗП", "OZP", 2)),
    "Код", "_КТЦ_Труд_", "KOD")
TRANSPORT = Tab(
    "Каталог перевозка", "FER20KATALOGPEREVOZKA_TABLE",
    (CODE, BASIS, NAME, Column("Класс", "KLASSGR"), Column("Сметная цена 2001", "CMETNAY", 2),
     Column("Текущая цена", "TECCENA", 2)),
    "Код", "_Каталог перевозка_", "KOD")
REGIONS = Tab(
    "Справочник регионов", "REGION", (Column("Регион", "NAME"),),
    "Регион", "_Регионы", "NAME", per_selection=False)
FIRMS = Tab(
    "Справочник фирм", "FIRMS",
    (Column("ИНН", "INN"), Column("Наименование", "FULLNAME"), Column("Адрес", "URADDRESS"),
     Column("ВЕБсайт", "WEBSITE")),
    "ИНН", "_Фирмы", per_selection=False)
COEFFICIENTS = Tab(
    "Региональные коэффициенты", "OGRANICHENIE",
    (Column("Регион", "NAME"), Column("Коэффициент", "KOEFF", 4)),
    "Регион", "_Региональные коэффициенты", per_selection=False)

GRID_TABS = (MATERIALS, CONTENTS, MACHINES, LABOUR, TRANSPORT, REGIONS, FIRMS, COEFFICIENTS)
TREE_TAB = "Каталог"

TER = Edition("ТЕР", "TER")
FER2014 = Edition("ФЕР2014И2", "FER14I2")
FER2017 = Edition("ФЕР2017И5", "FER17I5")
FER2020 = Edition("ФЕР2020", "FER20")


def literal(text):
    return "'" + text.replace("'", "''") + "'"


def query(fields, rest):
    """The rows of "select fields rest", each a list of texts and None."""
    values = (f"coalesce(cast({field} as varchar(1000)), ascii_char({ord(NULL)}))" for field in fields)
    row = f" || ascii_char({ord(END_OF_VALUE)}) || ".join(values)
    script = f"set heading off; set list on; select {row} || ascii_char({ord(END_OF_ROW)}) {rest};"
    # A FIREBIRD of the caller could name a folder without a client configuration.
    environment = {name: value for name, value in os.environ.items() if name != "FIREBIRD"}
    outcome = subprocess.run(
        ["isql-fb", "-quiet", "-bail", "-ch", "UTF8", "-user", "SYSDBA", "-password", PASSWORD, DATABASE],
        input=script.encode(), capture_output=True, env=environment, check=False)
    if outcome.returncode != 0 or outcome.stderr:
        raise DatabaseError(f"isql-fb has failed: {outcome.stderr.decode(errors='replace')}{script}")
    name_width = len("CONCATENATION".ljust(32))
    rows = outcome.stdout.decode().split(END_OF_ROW)[:-1]
    return [[None if value == NULL else value for value in row.lstrip("\n")[name_width:].split(END_OF_VALUE)]
            for row in rows]


def _source(tab, selection, condition):
    conditions = [condition] if condition else []
    if tab.per_selection:
        conditions += [f"PER = {literal(selection.period)}",
                       f"REGIONID = (select ID from REGION R where R.NAME = {literal(selection.region)})"]
    where = " where " + " and ".join(conditions) if conditions else ""
    return f"from {tab.table.format(selection.edition.prefix)}{where}"


def count(tab, selection, condition=None):
    return int(query(["count(*)"], _source(tab, selection, condition))[0][0])


def rows(tab, selection, condition=None, order=None):
    """The rows that the tab should show: texts, exact decimals and None, column by column."""
    order = order or tab.order
    found = query([column.field for column in tab.columns],
                  _source(tab, selection, condition) + (f" order by {order}" if order else ""))
    return [[value if value is None or column.digits is None else Decimal(value)
             for value, column in zip(row, tab.columns)] for row in found]


def shown(value):
    """A value as a Russian user reads it."""
    return "" if value is None else str(value).replace(".", ",") if isinstance(value, Decimal) else value
