"""Runs every query and program of the page about dumps on a model, and holds its tables against the database:

    queries_test.py PETAL SOURCE_DIR
"""

import pathlib
import re
import sqlite3
import subprocess
import sys
import tempfile

MODEL = r"""
(object Petal version 42 charSet 0)
(object Design "Logical View"
root_category (object Class_Category "Logical View" quid "0000000000A0" logical_models (list unit_reference_list
(object Class_Category "Orders" quid "0000000000A1" logical_models (list unit_reference_list
(object Class "Order" quid "0000000000A2" documentation "What is asked for"
operations (list Operations (object Operation "pay" quid "0000000000A3"))
class_attributes (list class_attribute_list
(object ClassAttribute "bill" quid "0000000000A4" type "Bill" quidu "0000000000A6")))))
(object Class_Category "Billing" quid "0000000000A5" logical_models (list unit_reference_list
(object Class "Bill" quid "0000000000A6"
used_nodes (list uses_relationship_list
(object Uses_Relationship quid "0000000000A7" supplier "Logical View::Gone" quidu "0000000000FF"))))))
logical_presentations (list unit_reference_list
(object ClassDiagram "Main" quid "0000000000A8" items (list diagram_item_list
(object ClassView "Class" "Logical View::Orders::Order" @1 location (100, 200) width 300 height 150
quidu "0000000000A2"))))))
"""

# What each query of the page answers, in its order; of the last only the first row.
ANSWERS = [
    [("class", "Logical View::Billing::Bill", "orders.mdl", 11)],
    [("Logical View::Orders::Order::bill", "attribute", "type", "Logical View::Billing::Bill")],
    [("Logical View::Main", 100.0, 200.0, 300.0, 150.0)],
    [("orders.mdl", 13, "Uses_Relationship", None, "quidu", "0000000000FF")],
    [("Logical View::Orders::Order", 1), ("Logical View::Billing::Bill", 0)],
    [("Class", "Order", "quid", "text", "0000000000A2", 6)],
]
PROGRAM_ANSWER = "6 class Logical View::Orders::Order\n11 class Logical View::Billing::Bill\n"


def blocks(page, language):
    return re.findall(rf"```{language}\n(.*?)```", page, re.DOTALL)


def documented_tables(page):
    tables = {}
    for section in re.split(r"^### ", page, flags=re.MULTILINE)[1:]:
        name, _, rest = section.partition("\n")
        rows = re.findall(r"^\| (`[^|]*) \|", re.split(r"^## ", rest, flags=re.MULTILINE)[0], re.MULTILINE)
        tables[name] = {column for row in rows for column in re.findall(r"`(\w+)`", row)}
    return tables


def main(petal, source):
    page = pathlib.Path(source, "docs", "dump.md").read_text(encoding="utf-8")
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "orders.mdl").write_text(MODEL, encoding="utf-8")
        for form in (["--sqlite", "orders.db"], ["--json", "-o", "orders.json"]):
            subprocess.run([petal, "dump", "-q", "orders.mdl", *form], cwd=folder, check=True)
        database = sqlite3.connect(f"{folder}/orders.db")

        queries = blocks(page, "sql")
        assert len(queries) == len(ANSWERS), f"there are {len(queries)} queries"
        for query, answer in zip(queries, ANSWERS):
            found = database.execute(query).fetchall()
            assert found[: len(answer)] == answer, f"{query}\nanswers {found}, expected {answer}"
            assert query == queries[-1] or len(found) == len(answer), f"{query}\nanswers {found}"

        names = {row[0] for row in database.execute("SELECT name FROM sqlite_master WHERE type = 'table'")}
        columns = {name: {row[1] for row in database.execute(f"PRAGMA table_info({name})")} for name in names}
        documented = documented_tables(page)
        assert documented == columns, f"the page has {documented}, the database {columns}"

        (program,) = blocks(page, "python")
        ran = subprocess.run([sys.executable, "-c", program], cwd=folder, check=True, capture_output=True, text=True)
        assert ran.stdout == PROGRAM_ANSWER, ran.stdout


if __name__ == "__main__":
    main(*sys.argv[1:])
