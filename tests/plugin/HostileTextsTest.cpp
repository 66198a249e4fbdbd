#include "plugin/support/ModelBuilder.h"

#include <algorithm>

// Texts that would break the file.

namespace {

std::size_t countOf(std::string_view part, std::string_view text)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

// Reads a file as its readers do. What is left is its structure: every text in quotes and every text block is one S and
// every number 0.
class PetalScanner {
public:
    explicit PetalScanner(std::string_view text) : rest(text)
    {
        while (!rest.empty() && error.empty())
            scanToken();
        if (error.empty() && depth != 0)
            error = "parentheses are left open";
    }

    std::string structure;
    std::string error;

private:
    static bool isDigit(char byte) { return byte >= '0' && byte <= '9'; }

    void scanToken()
    {
        const char byte = rest.front();
        if (byte == '"') {
            scanQuoted();
        } else if (rest.starts_with("\n|")) {
            scanBlock();
        } else {
            depth += byte == '(' ? 1 : byte == ')' ? -1 : 0;
            if (depth < 0)
                error = "a parenthesis closes nothing after: " + structure;
            const bool isNumber = isDigit(byte);
            structure += isNumber ? '0' : byte;
            do
                rest.remove_prefix(1);
            while (isNumber && !rest.empty() && isDigit(rest.front()));
        }
    }
    void scanQuoted()
    {
        std::size_t end = 1;
        while (end < rest.size() && rest[end] != '"' && rest[end] != '\r' && rest[end] != '\n')
            end += rest[end] == '\\' ? 2 : 1;
        if (end >= rest.size() || rest[end] != '"')
            error = "a quoted text has no end: " + std::string(rest.substr(0, 60));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        structure += 'S';
    }
    void scanBlock()
    {
        while (rest.starts_with("\n|"))
            rest.remove_prefix(std::min(rest.find('\n', 1), rest.size()));
        if (!rest.starts_with("\n"))
            error = "a text block has no end";
        else
            rest.remove_prefix(1);
        structure += 'S';
    }

    std::string_view rest;
    int depth = 0;
};

enum class Treatment { Guarded, Escaped, FreeText };

// A model with a text in every place of the file that takes one. One of the places can get a hostile ending.
class TextsEverywhere {
public:
    explicit TextsEverywhere(std::size_t theHostilePlace = std::string::npos, std::string_view theEnding = {})
        : hostilePlace(theHostilePlace), ending(theEnding)
    {
        build();
    }

    struct Place {
        std::string text; // the harmless one
        Treatment treatment;
    };
    std::vector<Place> places;
    ModelBuilder builder;

private:
    KivString text(const std::string& place, Treatment treatment = Treatment::Guarded)
    {
        const bool isHostile = places.size() == hostilePlace;
        places.push_back({"[" + place + "]", treatment});
        return KivString(places.back().text + (isHostile ? std::string(ending) : ""));
    }
    KivString freeText(const std::string& place) { return text(place, Treatment::FreeText); }

    template <class Element>
    Element* described(const std::string& kind, Element* element)
    {
        element->description = freeText(kind + " description");
        element->stereotype = text(kind + " stereotype");
        return element;
    }

    void build()
    {
        KivDesignPackage* const root = builder.package(text("Logical View"));
        root->description = freeText("root description");
        KivDesignPackage* const package = described("package", builder.package(text("package"), root));
        KivType* const type = builder.type(text("type"));
        KivType* const color = builder.enumeration(text("enumeration"), {{"", ""}});
        color->typeValues.at(0)->setName(text("literal", Treatment::Escaped));
        color->typeValues.at(0)->value = text("value", Treatment::Escaped);
        KivClass* const a = described("class", builder.addClass(text("a"), package));
        KivClass* const b = builder.addClass(text("b"), package);
        a->classType = 2;
        a->cardinality = text("cardinality");
        builder.argument(text("template parameter"), a->parameters, type)->initialValue = freeText("template value");
        KivAttribute* const attribute = described("attribute", builder.attribute(text("attribute"), a, type));
        attribute->initialValue = freeText("attribute value");
        builder.attribute(text("other attribute"), a, color);
        KivOperation* const operation = described("operation", builder.operation(text("operation"), a));
        operation->returnType = type;
        operation->preCondition = freeText("before");
        operation->postCondition = freeText("after");
        operation->semantics = freeText("semantics");
        builder.argument(text("argument"), operation->arguments, type)->initialValue = freeText("argument value");
        KivGeneralization* const is =
            described("generalization", builder.generalization(text("generalization"), package, {a}, {b}));
        KivRealization* const does = builder.realization("realization", package, a, b);
        KivDependency* const needs = described("dependency", builder.dependency(text("dependency"), package, a, b));
        KivAssociation* const has = described("association", builder.association(text("association"), package));
        has->constraint = freeText("constraint");
        has->isAggregation = true;
        has->associationClass = builder.addClass(text("association class"), package);
        KivAssociationRole* const from = builder.role(text("from"), has, a);
        from->constraint = freeText("role constraint");
        from->description = freeText("role description");
        from->multiplicity = {0, 1, true};
        KivAttribute* const qualifier = builder.make<KivAttribute>(text("qualifier"));
        from->qualifiers.add(qualifier);
        from->key = builder.key<KivCandidateKey>("key", a, {attribute});
        attribute->keyMappings.add({from->key, builder.make<KivAttribute>(freeText("counterpart"))});
        builder.role(text("to"), has, b);
        KivClassDiagram* const diagram = builder.diagram(text("diagram"), root, {a, b, has, is, does, needs});
        diagram->description = freeText("diagram description");
        builder.note(freeText("free note"), diagram);
        builder.note(freeText("note"), a);
        builder.projection(a, diagram, 100, 100, 50, 50)->fontName = text("font");
        builder.projection(b, diagram, 300, 300, 50, 50);
        for (KivModelObject* const object : std::initializer_list<KivModelObject*>{is, does, needs})
            builder.lineProjection(object, diagram, "(100,100)\r\n(300,300)");
    }

    std::size_t hostilePlace;
    std::string_view ending;
};

std::string exportTexts(TextsEverywhere& texts, const char* types)
{
    return exportedLogicalView(
        texts.builder.model,
        {{BP_SUPPORTED_TYPES, types}, {BP_GENERATE_QUALIFIERS, "True"}, {BP_SHOW_CONSTRAINTS_IN_DIAGRAMS, "True"}});
}

} // namespace

// In two type systems, since enumerations have two forms.
class HostileTexts : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(, HostileTexts, testing::Values("As is", "C++"));

TEST_P(HostileTexts, LeaveTheFileWhole)
{
    TextsEverywhere harmless;
    const std::string file = exportTexts(harmless, GetParam());
    const PetalScanner expected(file);
    ASSERT_EQ(expected.error, "");
    for (const char* const ending : {"\"", "line\nfeed", "carriage\rreturn", "backslash\\", "\\\"", "back\\slash",
                                     "\n|\")", "\")\r\n(object Class \"", ") ( (("}) {
        for (std::size_t i = 0; i < harmless.places.size(); ++i) {
            const auto& [text, treatment] = harmless.places[i];
            SCOPED_TRACE(text + " and " + testing::PrintToString(ending));
            TextsEverywhere texts(i, ending);
            const std::string hostileFile = exportTexts(texts, GetParam());
            const PetalScanner scanner(hostileFile);
            EXPECT_EQ(scanner.error, "");
            EXPECT_TRUE(scanner.structure == expected.structure);
            if (treatment == Treatment::FreeText)
                continue;
            const KivString name(text + ending);
            const KivString form = treatment == Treatment::Escaped ? name.escapeChars() : guardedName(name);
            EXPECT_GT(countOf(text, file), 0U);
            EXPECT_EQ(countOf(form.view(), hostileFile), countOf(text, file));
        }
    }
}
