#include "reader/check/Check.h"

#include "reader/check/ReaderTraps.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace reader {

namespace {

constexpr std::size_t quidLength = 12;
constexpr std::size_t mostOfAKind = 1000;

// An object as messages call it: `(object ClassView "Class" "Logical View::Item" @17)`.
std::string described(const Object& object)
{
    std::string result = std::string(object.kind());
    for (const Value& name : object.names())
        result += " \"" + name.asText() + '"';
    if (const auto number = object.viewNumber())
        result += " @" + std::to_string(*number);
    return result;
}

bool isHex(std::string_view text)
{
    return text.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
}

std::string_view lastPart(std::string_view name)
{
    const std::size_t colons = name.rfind("::");
    return colons == std::string_view::npos ? name : name.substr(colons + 2);
}

class Check {
public:
    Check(const Document& document, const Index& index) : document(document), index(index) {}

    CheckResult run()
    {
        result.findings = document.findings();
        checkUnits();
        for (const auto& [object, first] : index.duplicateQuids())
            add(Severity::warning, "duplicate-quid", object->get("quid").position(),
                [&, &object = object, &first = first] {
                    return "the quid " + object->text("quid") + " is that of " + described(*first) + " in line " +
                           lineOf(*first) + ", too";
                });
        for (const auto& [object, first] : index.duplicateViews())
            add(Severity::warning, "duplicate-view", object->position(), [&, &object = object, &first = first] {
                return described(*object) + ": the number is that of " + described(*first) + " in line " +
                       lineOf(*first) + ", too";
            });
        checkObjects();
        for (Finding& trap : findReaderTraps(document))
            result.findings.push_back(std::move(trap));
        sort();
        return std::move(result);
    }

private:
    template <typename MakeText>
    void add(Severity severity, std::string_view kind, const char* position, const MakeText& makeText)
    {
        const std::size_t count = ++counts[{severity, kind}];
        if (count <= mostOfAKind)
            result.findings.push_back({severity, kind, document.place(position), makeText()});
        else if (count == mostOfAKind + 1)
            result.findings.push_back({severity, kind, document.place(position),
                                       "there is more of this kind (" + std::string(kind) + ") from here on"});
    }

    [[nodiscard]] std::string lineOf(const Object& object) const { return std::to_string(document.place(object).line); }

    void checkUnits()
    {
        for (const MissingUnit& unit : document.missingUnits())
            add(unit.isUnwanted ? Severity::note : Severity::warning, "unit-not-loaded", unit.stub->position(), [&] {
                return "the unit " + unit.fileName + " of " + described(*unit.stub) + " is not loaded: " + unit.reason;
            });
    }

    void checkObjects()
    {
        struct Open {
            const Object* object;
            const Object* diagram;
        };
        std::vector<Open> open = {{&document.root(), nullptr}};
        while (!open.empty()) {
            const Object& object = *open.back().object;
            diagram = diagramKindOf(object) ? &object : open.back().diagram;
            open.pop_back();
            checkObject(object);
            const std::vector<const Object*> children = childrenOf(object);
            std::for_each(children.rbegin(), children.rend(), [&](const Object* child) {
                open.push_back({child, diagram});
            });
        }
    }

    void checkObject(const Object& object)
    {
        if (!knownKindOf(object))
            ++result.unknownKinds[std::string(object.kind())];
        checkQuid(object);
        checkReferences(object);
        for (const Attribute& attribute : object.attributes()) {
            checkViewReference(object, attribute.key, attribute.value);
            if (const List* const list = attribute.value.asList())
                for (const Value& value : list->values())
                    checkViewReference(object, attribute.key, value);
        }
    }

    void checkQuid(const Object& object)
    {
        const Value& quid = object.get("quid");
        const std::string_view text = quid.raw();
        if (!quid || (quid.kind() == ValueKind::text && isHex(text) && text.size() == quidLength))
            return;
        const bool isNumber = quid.kind() == ValueKind::text && isHex(text) && !text.empty();
        add(isNumber ? Severity::note : Severity::warning, "malformed-quid", quid.position(),
            [&] { return described(object) + ": expected a quid of 12 hexadecimal digits"; });
    }

    // A quid that leads somewhere stands behind the name of what it leads to, or in a view, which has the name itself.
    void checkReferences(const Object& object)
    {
        const auto attributes = object.attributes();
        bool hasQuid = false;
        for (std::size_t i = 0; i < attributes.size(); ++i) {
            if (const std::string_view end = endOf(attributes[i].key); !end.empty()) {
                hasQuid = hasQuid || end == "supplier";
                checkReference(object, attributes[i].value, end, object.text(end));
            }
            if (attributes[i].key != "quidu")
                continue;
            hasQuid = true;
            const bool isNamed = i > 0 && attributes[i - 1].value.kind() == ValueKind::text && !object.viewNumber();
            const std::string name = isNamed ? attributes[i - 1].value.asText() : nameOfView(object);
            checkReference(object, attributes[i].value, isNamed ? attributes[i - 1].key : std::string_view(), name);
        }
        const std::string supplier = object.viewNumber() ? nameOfView(object) : object.text("supplier");
        if (!hasQuid && supplier.find("::") != std::string::npos)
            checkReference(object, object.viewNumber() ? object.names().front() : object.get("supplier"), "", supplier);
    }

    // Petal version 50 has a quid for each end of a transition.
    static std::string_view endOf(std::string_view key)
    {
        constexpr std::string_view behind = "_quidu";
        return key == "supplier_quidu" || key == "client_quidu" ? key.substr(0, key.size() - behind.size())
                                                                : std::string_view();
    }

    static std::string nameOfView(const Object& object)
    {
        for (const Value& name : object.names())
            if (name.raw().find("::") != std::string_view::npos)
                return name.asText();
        return {};
    }

    void checkReference(const Object& object, const Value& at, std::string_view key, const std::string& name)
    {
        const bool isQuid = at.raw().find("::") == std::string_view::npos;
        const Reference reference = index.lookUp(isQuid ? at.raw() : std::string_view(), name);
        // The Component View and the Logical View find each other by name; the quids of many models are stale there.
        const bool isOneOfTheViews = (key == "subsystem" || key == "category") && name.find("::") == std::string::npos;
        const bool isNameEnough = !isQuid || isOneOfTheViews;
        switch (reference.state) {
        case ReferenceState::none:
            ++result.none;
            return;
        case ReferenceState::unloaded:
            ++result.unloaded;
            add(Severity::note, "reference-into-unit", at.position(),
                [&] { return described(object) + " refers to " + meant(at, name) + " in a unit that is not loaded"; });
            return;
        case ReferenceState::found:
            if (!reference.isByName || isNameEnough) {
                ++result.found;
                checkName(object, at, name, reference);
                return;
            }
            break;
        case ReferenceState::missing:
            break;
        }
        ++result.missing;
        reportMissing(object, at, name, reference);
    }

    void reportMissing(const Object& object, const Value& at, const std::string& name, const Reference& reference)
    {
        const bool isView = object.viewNumber() || diagram;
        add(Severity::warning, isView ? "view-without-element" : "dangling-reference", at.position(), [&] {
            const std::string text = described(object) + (isView ? " shows " : " refers to ") + meant(at, name);
            if (!reference.element)
                return text + ", but there is no such element";
            return text + ", but what is called so in line " + lineOf(*reference.element) + " has another quid";
        });
    }

    static std::string meant(const Value& at, const std::string& name)
    {
        const bool isQuid = at.raw().find("::") == std::string_view::npos;
        if (!isQuid)
            return '"' + name + '"';
        return "quid " + std::string(at.raw()) + (name.empty() ? "" : " (\"" + name + "\")");
    }

    // The names of states go through their state machines, which are no part of other full names.
    static bool endsAtState(const Object& object, ElementKind target)
    {
        return target == ElementKind::behavior && object.has("supplier_quidu");
    }

    // Readers that go by names find something else than those that go by quids.
    void checkName(const Object& object, const Value& at, const std::string& name, const Reference& reference)
    {
        const ElementKind kind = elementKindOf(*reference.element);
        if (reference.isByName || name.find("::") == std::string::npos || kind == ElementKind::none ||
            endsAtState(object, kind))
            return;
        const std::string_view shortName = std::string_view(name).substr(0, name.rfind(" (")); // `Main (module body)`
        if (index.isCalled(*reference.element, name) ||
            (reference.element->is("module") && index.isCalled(*reference.element, shortName)))
            return;
        const std::string called(reference.element->name());
        const bool isMoved = lastPart(name) == lastPart(called) && object.is("CategoryView");
        add(isMoved ? Severity::note : Severity::warning, "other-name", at.position(), [&] {
            return described(object) + " calls by \"" + name + "\" what is \"" + index.path(*reference.element) +
                   "\" by its quid; readers that go by names lose it";
        });
    }

    void checkViewReference(const Object& object, std::string_view key, const Value& value)
    {
        const auto number = value.asReference();
        if (!number)
            return;
        const Object* const scope = key == "mechanism_ref" ? nullptr : diagram;
        if (index.viewIn(scope, object, *number))
            return;
        add(Severity::warning, "dangling-view", value.position(), [&] {
            return described(object) + ": " + std::string(key) + " is @" + std::string(value.raw()) +
                   ", a number that nothing has " + (scope ? "in its diagram" : "in this file");
        });
    }

    void sort()
    {
        std::map<std::string_view, std::size_t> order;
        for (const File& file : document.files())
            order.emplace(file.name, order.size());
        const auto key = [&](const Finding& finding) {
            return std::tuple(order[finding.place.file], finding.place.line, finding.place.column);
        };
        std::stable_sort(result.findings.begin(), result.findings.end(),
                         [&](const Finding& a, const Finding& b) { return key(a) < key(b); });
    }

    const Document& document;
    const Index& index;
    const Object* diagram = nullptr; // around the object that is being checked
    std::map<std::pair<Severity, std::string_view>, std::size_t> counts;
    CheckResult result;
};

} // namespace

CheckResult check(const Document& document, const Index& index)
{
    return Check(document, index).run();
}

} // namespace reader
