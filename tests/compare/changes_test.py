"""Makes random models, changes one thing in each, and holds what the command tells of it against the change.

    changes_test.py PETAL [COUNT [SEED]]

Half of the models are written here, with quids that stay with their elements, keys in any order and views that are
numbered anew each time. The others go through `petal export`, whose quids follow the positions of the elements. Each pair
is compared in both directions.
"""

import copy
import json
import os
import random
import subprocess
import sys
import tempfile

TYPES = ["Integer", "Money", "Label", "Date"]
DIAGRAM = "diagram Logical View::P0::Main: "


class Maker:
    """A random model as plain dictionaries."""

    def __init__(self, dice):
        self.dice = dice
        self.quid = 0x3B0000000000
        self.count = 0

    def name(self, prefix):
        self.count += 1
        return f"{prefix}{self.count}"

    def thing(self, prefix, **more):
        self.quid += self.dice.randint(1, 999)
        return {"name": self.name(prefix), "quid": f"{self.quid:012X}", **more}

    def attribute(self):
        return self.thing("attr", type=self.dice.choice(TYPES))

    def operation(self):
        return self.thing("op", parameters=[{"name": self.name("p"), "type": self.dice.choice(TYPES)}
                                            for _ in range(self.dice.randint(0, 2))])

    def klass(self):
        return self.thing("Class", attributes=[self.attribute() for _ in range(self.dice.randint(1, 4))],
                          operations=[self.operation() for _ in range(self.dice.randint(0, 3))], documentation="")

    def model(self):
        packages = []
        for i in range(3):
            package = self.thing("P", classes=[self.klass() for _ in range(self.dice.randint(2, 5))])
            package["name"] = f"P{i}"
            packages.append(package)
        return {"packages": packages,
                "boxes": [{"class": each["quid"], "x": 300 * i + 100, "y": 100, "width": 200, "height": 80}
                          for i, each in enumerate(packages[0]["classes"][:2])]}


class Writer:
    """Writes a model as a Rose file, in which what means nothing is left to the dice."""

    def __init__(self, dice):
        self.dice = dice

    def object(self, head, pairs):
        pairs = [pair for pair in pairs if pair[1]]
        self.dice.shuffle(pairs)
        return f"(object {head}\n" + "\n".join(f"    {key} \t{value}" for key, value in pairs) + ")"

    @staticmethod
    def list(kind, members):
        return f"(list {kind}\n" + "\n".join(members) + ")" if members else ""

    def attribute(self, each):
        return self.object(f'ClassAttribute "{each["name"]}"',
                           [("quid", f'"{each["quid"]}"'), ("type", f'"{each["type"]}"')])

    def operation(self, each):
        parameters = [self.object(f'Parameter "{p["name"]}"', [("type", f'"{p["type"]}"')])
                      for p in each["parameters"]]
        return self.object(f'Operation "{each["name"]}"',
                           [("quid", f'"{each["quid"]}"'), ("parameters", self.list("Parameters", parameters)),
                            ("uid", str(self.dice.randint(0, 99)))])

    def klass(self, each):
        return self.object(f'Class "{each["name"]}"',
                           [("quid", f'"{each["quid"]}"'), ("documentation", f'"{each["documentation"]}"'),
                            ("operations", self.list("Operations", map(self.operation, each["operations"]))),
                            ("class_attributes", self.list("class_attribute_list",
                                                           map(self.attribute, each["attributes"])))])

    def diagram(self, model):
        names = {each["quid"]: (package["name"], each["name"])
                 for package in model["packages"] for each in package["classes"]}
        number = self.dice.randint(1, 500)
        items = []
        for box in self.dice.sample(model["boxes"], len(model["boxes"])):
            number += self.dice.randint(1, 9)
            package, name = names[box["class"]]
            items.append(self.object(f'ClassView "Class" "Logical View::{package}::{name}" @{number}',
                                     [("location", f'({box["x"]}, {box["y"]})'), ("quidu", f'"{box["class"]}"'),
                                      ("width", str(box["width"])), ("height", str(box["height"]))]))
        return self.object('ClassDiagram "Main"', [("quid", '"3A0000000001"'), ("zoom", "100"),
                                                   ("items", self.list("diagram_item_list", items))])

    def model(self, model):
        packages = []
        for place, package in enumerate(model["packages"]):
            classes = [self.klass(each) for each in self.dice.sample(package["classes"], len(package["classes"]))]
            diagrams = [self.diagram(model)] if place == 0 else []
            packages.append(self.object(f'Class_Category "{package["name"]}"',
                                        [("quid", f'"{package["quid"]}"'),
                                         ("logical_models", self.list("unit_reference_list", classes)),
                                         ("logical_presentations", self.list("unit_reference_list", diagrams))]))
        view = self.object('Class_Category "Logical View"',
                           [("quid", '"3A0000000002"'),
                            ("logical_models", self.list("unit_reference_list", packages))])
        version = self.dice.choice([42, 47, 50])
        text = f"\n(object Petal\n    version {version}\n    charSet 0)\n\n(object Design \"Logical View\"\n" \
               f"    root_category {view})\n"
        return text.replace("\n", "\r\n") if self.dice.random() < 0.5 else text


def model_file(model):
    """The same as a model file; it has no diagrams."""
    def klass(each):
        return {"kind": "class", "name": each["name"], "description": each["documentation"],
                "attributes": [{"name": a["name"], "type": a["type"]} for a in each["attributes"]],
                "operations": [{"name": o["name"], "arguments": [{"name": p["name"], "type": p["type"]}
                                                                  for p in o["parameters"]]}
                               for o in each["operations"]]}
    packages = [{"name": p["name"], "modelElements": [klass(each) for each in p["classes"]]}
                for p in model["packages"]]
    return json.dumps({"format": "kiv-model", "version": 1, "childPackages": packages,
                       "types": [{"id": each, "name": each, "dataType": each} for each in TYPES]})


def attribute_line(each):
    return f"attribute {each['name']} : {each['type']}"


def operation_line(each):
    parameters = ", ".join(f"{p['name']} : {p['type']}" for p in each["parameters"])
    return f"operation {each['name']}({parameters})"


def without_views(model, klass):
    model["boxes"] = [box for box in model["boxes"] if box["class"] != klass["quid"]]


# Each change alters `model` and returns what is told of it forward and backward, or None where it cannot be made.

def add_attribute(model, make, dice):
    klass = dice.choice(dice.choice(model["packages"])["classes"])
    fresh = make.attribute()
    klass["attributes"].insert(dice.randint(0, len(klass["attributes"])), fresh)
    return ["+ " + attribute_line(fresh)], ["- " + attribute_line(fresh)]


def add_operation(model, make, dice):
    klass = dice.choice(dice.choice(model["packages"])["classes"])
    fresh = make.operation()
    klass["operations"].insert(dice.randint(0, len(klass["operations"])), fresh)
    return ["+ " + operation_line(fresh)], ["- " + operation_line(fresh)]


def add_class(model, make, dice):
    package = dice.choice(model["packages"])
    fresh = make.klass()
    package["classes"].insert(dice.randint(0, len(package["classes"])), fresh)
    return ["+ class " + fresh["name"]], ["- class " + fresh["name"]]


def rename_class(model, make, dice):
    klass = dice.choice(dice.choice(model["packages"])["classes"])
    old, klass["name"] = klass["name"], make.name("Other")
    return ([f"~ class {klass['name']}: renamed from {old}"], [f"~ class {old}: renamed from {klass['name']}"])


def rename_attribute(model, make, dice):
    each = dice.choice(dice.choice(dice.choice(model["packages"])["classes"])["attributes"])
    old, each["name"] = each["name"], make.name("other")
    return ([f"~ attribute {each['name']}: renamed from {old}"], [f"~ attribute {old}: renamed from {each['name']}"])


def rename_package(model, make, dice):
    package = dice.choice(model["packages"][1:])
    old, package["name"] = package["name"], make.name("Q")
    return ([f"~ package Logical View::{package['name']}: renamed from {old}"],
            [f"~ package Logical View::{old}: renamed from {package['name']}"])


def retype_attribute(model, _, dice):
    each = dice.choice(dice.choice(dice.choice(model["packages"])["classes"])["attributes"])
    old = each["type"]
    each["type"] = dice.choice([other for other in TYPES if other != old])
    start = f"~ attribute {each['name']}: type "
    return [start + f"{old} -> {each['type']}"], [start + f"{each['type']} -> {old}"]


def retype_parameter(model, _, dice):
    operations = [o for p in model["packages"] for c in p["classes"] for o in c["operations"] if o["parameters"]]
    if not operations:
        return None
    each = dice.choice(dice.choice(operations)["parameters"])
    old = each["type"]
    each["type"] = dice.choice([other for other in TYPES if other != old])
    start = f"~ parameter {each['name']}: type "
    return [start + f"{old} -> {each['type']}"], [start + f"{each['type']} -> {old}"]


def document_class(model, _, dice):
    klass = dice.choice(dice.choice(model["packages"])["classes"])
    klass["documentation"] = "Of use."
    return ([f'~ class {klass["name"]}: documentation "Of use." added'],
            [f'~ class {klass["name"]}: documentation "Of use." removed'])


def move_class(model, _, dice):
    source, target = dice.sample(model["packages"], 2)
    klass = source["classes"].pop(dice.randrange(len(source["classes"])))
    target["classes"].insert(dice.randint(0, len(target["classes"])), klass)
    start = f"~ class {klass['name']}: moved from Logical View::"
    return [start + source["name"]], [start + target["name"]]


def reorder_attributes(model, _, dice):
    lists = [c["attributes"] for p in model["packages"] for c in p["classes"] if len(c["attributes"]) > 2]
    if not lists:
        return None
    attributes = dice.choice(lists)
    attributes.insert(0, attributes.pop())
    first, last = attributes[0]["name"], attributes[-1]["name"]
    return [f"~ attribute {first}: now first"], [f"~ attribute {first}: now behind {last}"]


def nothing(_model, _make, _dice):
    return [], []


def move_box(model, _, dice):
    box = dice.choice(model["boxes"])
    box["y"] += dice.randint(1, 400)
    return view_told(model, box, "moved"), view_told(model, box, "moved")


def resize_box(model, _, dice):
    box = dice.choice(model["boxes"])
    box["width"] += dice.randint(1, 400)
    return view_told(model, box, "resized"), view_told(model, box, "resized")


def hide_box(model, _, dice):
    box = model["boxes"].pop(dice.randrange(len(model["boxes"])))
    return view_told(model, box, "hidden"), view_told(model, box, "shown")


def view_told(model, box, word):
    name = next(c["name"] for p in model["packages"] for c in p["classes"] if c["quid"] == box["class"])
    return [f"{DIAGRAM}{name} {word}"]


OF_MODELS = [add_attribute, add_operation, add_class, rename_class, rename_attribute, rename_package, retype_attribute,
             retype_parameter, document_class, move_class, reorder_attributes, nothing]
OF_DIAGRAMS = [move_box, resize_box, hide_box]


def told(petal, old, new):
    run = subprocess.run([petal, "diff", old, new], capture_output=True, text=True, check=False)
    lines = [line.strip() for line in run.stdout.splitlines()]
    changes = [line for line in lines if line[:2] in ("+ ", "- ", "~ ") or line.startswith("diagram ")]
    if run.stderr or run.returncode != (1 if changes else 0):
        changes.append(f"exit code {run.returncode}: {run.stderr}")
    return changes


def write(petal, folder, name, model, dice, exports):
    path = os.path.join(folder, name + ".mdl")
    if exports:
        source = os.path.join(folder, name + ".json")
        with open(source, "w", encoding="utf-8") as file:
            file.write(model_file(model))
        subprocess.run([petal, "export", "-q", source, "-o", path], check=True)
    else:
        with open(path, "w", encoding="utf-8", newline="") as file:
            file.write(Writer(dice).model(model))
    return path


def main():
    petal = os.path.abspath(sys.argv[1])
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 60
    seed = int(sys.argv[3]) if len(sys.argv) > 3 else 1
    faults = 0
    with tempfile.TemporaryDirectory() as folder:
        for number in range(seed * 100000, seed * 100000 + count):
            dice = random.Random(number)
            exports = number % 2 == 1
            make = Maker(dice)
            before = make.model()
            after = copy.deepcopy(before)
            change = dice.choice(OF_MODELS if exports else OF_MODELS + OF_DIAGRAMS)
            expected = change(after, make, dice)
            if expected is None:
                continue
            old = write(petal, folder, "old", before, dice, exports)
            new = write(petal, folder, "new", after, dice, exports)
            for found, wanted in ((told(petal, old, new), expected[0]), (told(petal, new, old), expected[1])):
                if found != wanted:
                    faults += 1
                    print(f"model {number} ({change.__name__}): expected {wanted}, told {found}", file=sys.stderr)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
