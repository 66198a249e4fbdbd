#include "petal/FixedText.h"
#include "petal/PetalWriter.h"

#include "plugin/support/ModelBuilder.h"

#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <limits>

using testing::EndsWith;
using testing::StartsWith;

namespace {

template <class Write>
std::string written(const Write& write)
{
    const TemporaryPath path;
    theFile.clear();
    theFile.open(path.get());
    write();
    theFile.close();
    return path.content();
}

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

} // namespace

TEST(Quids, HavePrefixAndNumber)
{
    const struct {
        QuidForm form;
        long number;
        const char* quid;
    } rows[] = {
        {pquid, 10, "344A1400000A"},
        {iquid, 0, "3449E0000000"},
        {equid, 26, "3449E200001A"},
        {nquid, 104, "3449E8000068"},
        {aquid, 1000026, "3449E40F425A"},
        {asquid, 0xFFFFFF, "3449E6FFFFFF"},
        {asquid, 0x1000000, "3449E61000000"},
        {iquid, 0x1FFFFFFFF, "3449E01FFFFFFFF"},
        {iquid, std::numeric_limits<long>::max(), "3449E07FFFFFFFFFFFFFFF"},
    };
    for (const auto& row : rows) {
        std::array<char, longestQuid> text;
        const char* const end = copy(text.data(), makeQuid(row.form, row.number));
        EXPECT_EQ(std::string_view(text.data(), end), row.quid);
    }
}

TEST(Indentation, IsCrLfAndTabs)
{
    resetIndent();
    int depth = 0;
    for (const char step : std::string_view("+++----+-+++++++++++++++++++++++++++++++--")) {
        step == '+' ? increaseIndent() : decreaseIndent();
        depth = std::max(0, depth + (step == '+' ? 1 : -1));
        EXPECT_EQ(indent.depth, depth);
        EXPECT_EQ(indent.text().view(), "\r\n" + std::string(static_cast<std::size_t>(depth), '\t'));
    }
    resetIndent();
    EXPECT_EQ(indent.depth, 0);
    EXPECT_EQ(indent.text(), "\r\n");
}

TEST(RoseDesc, IsAQuotedTextOrABlock)
{
    const struct {
        const char* text;
        const char* form;
        const char* bracedForm;
    } rows[] = {
        {"", "\"\"", "\"{}\""},
        {"plain text", "\"plain text\"", "\"{plain text}\""},
        {"C:\\temp\\", "\"C:\\\\temp\\\\\"", "\"{C:\\\\temp\\\\}\""},
        {"a\tb\r", "\"a\tb\\r\"", "\"{a\tb\\r}\""},
        {"Line one\nLine two", "\n|Line one\n|Line two\n", "\n|{Line one\n|Line two}\n"},
        {"One\n", "\n|One\n|\n", "\n|{One\n|}\n"},
        {"\n", "\n|\n|\n", "\n|{\n|}\n"},
        {"\n\n|x", "\n|\n|\n||x\n", "\n|{\n|\n||x}\n"},
        {"a \"word\"", "\n|a \"word\"\n", "\n|{a \"word\"}\n"},
        {"\"", "\n|\"\n", "\n|{\"}\n"},
        {"a\r\nb\r\n", "\n|a\r\n|b\r\n|\n", "\n|{a\r\n|b\r\n|}\n"},
        {"back\\slash\nstays", "\n|back\\slash\n|stays\n", "\n|{back\\slash\n|stays}\n"},
        {"ab\ncde", "\n|ab\n|cde\n", "\n|{ab\n|cde}\n"},
    };
    for (const auto& row : rows) {
        const KivString text = row.text;
        for (const auto& [desc, form] : {std::pair(makeRoseDesc(text), std::string(row.form)),
                                         std::pair(makeBracedRoseDesc(text), std::string(row.bracedForm))}) {
            SCOPED_TRACE(form);
            EXPECT_EQ(written([&] { append(desc); }), form);
            EXPECT_EQ(PetalScanner(form).structure, "S");
            // The measures are those of the form as a text of its own.
            EXPECT_EQ(writtenLength(desc), form.size());
            EXPECT_EQ(measureLines(desc).lines, measureLines(std::string_view(form)).lines);
            EXPECT_EQ(measureLines(desc).longest, measureLines(std::string_view(form)).longest);
        }
    }
}

TEST(RoseDesc, MeasuresLinesWithTheLineFeedThatBeginsThem)
{
    const struct {
        std::string_view text;
        std::size_t lines;
        std::size_t longest;
    } rows[] = {
        {"", 1, 0},
        {"ab", 1, 2},
        {"ab\ncde", 2, 4},
        {"abcde\nf", 2, 5},
        {"\n", 2, 1},
        {"a\n\n", 3, 1},
        {"\n|ab\n|cde\n", 4, 5},
        {"abc\r\nabc", 2, 4},
        {"abcd\n", 2, 4},
        {"ab\ncd", 2, 3},
        {"\xC3\xA4\n\xC3\xA4", 2, 3},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(measureLines(row.text).lines, row.lines) << row.text;
        EXPECT_EQ(measureLines(row.text).longest, row.longest) << row.text;
    }
}

TEST(Pieces, SurviveEveryByte)
{
    const auto escaped = [](char byte) -> std::string {
        return byte == '\\'   ? "\\\\"
               : byte == '"'  ? "\\\""
               : byte == '\n' ? "\\n"
               : byte == '\r' ? "\\r"
                              : std::string(1, byte);
    };
    for (int code = 1; code < 256; ++code) {
        const char byte = static_cast<char>(code);
        const std::string inside = std::string("\\") + byte + "x";
        const std::string atEnd = std::string("\\x") + byte;
        const bool isBlock = byte == '\n' || byte == '"';
        const bool isHarmful = isBlock || byte == '\r';
        const std::string escapedInside = "\\\\" + escaped(byte) + "x";
        const std::string escapedAtEnd = "\\\\x" + escaped(byte);
        const std::string name = isHarmful ? escapedInside : inside;
        const std::string nameEnd = isHarmful || byte == '\\' ? escapedAtEnd : atEnd;
        const std::string desc =
            isBlock ? "\n|" + (byte == '"' ? inside : std::string("\\\n|x")) + "\n" : "\"" + escapedInside + "\"";
        const KivString text(inside);
        const KivString textEnd(atEnd);
        EXPECT_EQ(written([&] {
                      append(quoted(text), quoted("<<", text, ">>"), "\"", guarded(text), "\"", quoted(textEnd),
                             makeRoseDesc(text));
                  }),
                  "\"" + name + "\"\"<<" + name + ">>\"\"" + name + "\"\"" + nameEnd + "\"" + desc)
            << "byte " << code;
    }
}

TEST(Numbers, AreDecimal)
{
    std::vector<long> numbers = {0, std::numeric_limits<int>::min(), std::numeric_limits<long>::min(),
                                 std::numeric_limits<long>::max()};
    for (long power = 1; power <= std::numeric_limits<long>::max() / 10; power *= 10)
        for (const long number : {power - 1, power, power + 1, 7 * power, -power})
            numbers.push_back(number);
    for (const long number : numbers)
        EXPECT_EQ(written([&] { append(number, "|"); }), std::to_string(number) + "|");
    EXPECT_EQ(written([] { append(std::numeric_limits<unsigned long>::max()); }), "18446744073709551615");
}

// A line goes into the stream's buffer whole, or in pieces where the buffer ends; the file must not tell.
TEST(Pieces, DoNotDependOnTheBuffer)
{
    constexpr std::size_t bufferSize = PetalFile::bufferSize;
    const KivString quotes(std::string(40, '"'));
    const KivString lineFeeds(std::string(40, '\n'));
    std::string escapedQuotes;
    std::string bars;
    for (int i = 0; i < 40; ++i) {
        escapedQuotes += "\\\"";
        bars += "\n|";
    }
    const struct {
        std::function<void()> write;
        std::string text;
    } rows[] = {
        {[&] { append(quoted(quotes)); }, "\"" + escapedQuotes + "\""},
        {[&] { append(makeBracedRoseDesc(lineFeeds)); }, "\n|{" + bars + "}\n"},
        {[&] { append("a\t", quoted(makeQuid(equid, 26)), -2147483647 - 1, ")"); }, "a\t\"3449E200001A\"-2147483648)"},
        {[&] { append(Indentation{40}, keyword(visibilityKeywords, 3), 7); },
         "\r\n" + std::string(40, '\t') + "\"Implementation\"7"},
    };
    for (const auto& row : rows)
        for (std::size_t before = bufferSize - 90; before <= bufferSize + 1; ++before) {
            const std::string filler(before, 'x');
            const auto write = [&] {
                append(std::string_view(filler));
                row.write();
                append("next");
            };
            ASSERT_TRUE(written(write) == filler + row.text + "next") << before << " bytes before " << row.text;
        }
    for (const std::size_t size : {bufferSize - 1, bufferSize, bufferSize + 1, 3 * bufferSize + 7}) {
        std::string plain(size, 'a');
        const KivString name(plain);
        plain[size / 2] = '\n';
        const KivString text(plain);
        std::string block = plain;
        block.insert(size / 2 + 1, "|");
        std::string escaped = plain;
        escaped.replace(size / 2, 1, "\\n");
        ASSERT_TRUE(written([&] { append(quoted(name), quoted(text), makeRoseDesc(text), makeRoseDesc(name)); }) ==
                    "\"" + std::string(size, 'a') + "\"\"" + escaped + "\"\n|" + block + "\n\"" +
                        std::string(size, 'a') + "\"")
            << size << " bytes";
    }
}

TEST(Pieces, FailWhereNoFileIsOpen)
{
    theFile.clear();
    append("quid\t", quoted(makeQuid(equid, 26)));
    EXPECT_TRUE(theFile.fail());
}

// Texts of all sizes, so that pieces of the file end in the middle of one, and large ones put them out of step.
TEST(Pieces, FollowEachOtherThroughALargeFile)
{
    std::string texts;
    const auto write = [&] {
        std::size_t size = 1;
        while (texts.size() < 20 * PetalFile::pieceSize) {
            size = size * 48271 % 2147483647;
            const std::size_t limit = size % 50 == 0 ? 2 * PetalFile::bufferSize : size % 7 == 0 ? 40000 : 90;
            const std::string text(size % limit, static_cast<char>('a' + size % 26));
            append(std::string_view(text), size);
            texts += text + std::to_string(size);
        }
    };
    const std::string file = written(write);
    ASSERT_TRUE(file == texts) << "differs from byte "
                               << std::mismatch(file.begin(), file.end(), texts.begin(), texts.end()).first -
                                      file.begin();
}

TEST(Lists, CloseOnTheLastLineUnlessAnExceptionLeavesThem)
{
    resetIndent();
    const auto writeList = [](bool fails) {
        return written([&] {
            try {
                const List outer("outer\t(list x");
                const List inner("inner\t(list y");
                line("entry");
                if (fails)
                    throw 1;
            } catch (int) {
            }
            line("after");
        });
    };
    EXPECT_EQ(writeList(false), petalLines(R"(
outer\t(list x
    inner\t(list y
        entry))
after)"));
    EXPECT_EQ(writeList(true), petalLines(R"(
outer\t(list x
    inner\t(list y
        entry
after)"));
}

// Fixed text

TEST(FixedText, Header)
{
    const std::string header = written(writeHeader);
    EXPECT_EQ(countOf("\r\n", header), 47U) << "the last of the 48 texts has none";
    EXPECT_EQ(countOf("\n", header), 47U);
    EXPECT_THAT(header, StartsWith("\r\n(object Petal\r\n    version    \t42\r\n"));
    EXPECT_THAT(header, EndsWith("\t\titems      \t(list diagram_item_list))))"));
    EXPECT_EQ(countOf("(", header), countOf(")", header) + 1) << "the design stays open";
    EXPECT_EQ(PetalScanner(header + ")").error, "");
}

TEST(FixedText, Footer)
{
    const std::string footer = written(writeFooter);
    EXPECT_EQ(countOf("\r\n", footer), 633U);
    EXPECT_EQ(countOf("\n", footer), 633U);
    EXPECT_THAT(footer, StartsWith("\r\n\troot_subsystem \t(object SubSystem \"Component View\"\r\n"));
    EXPECT_THAT(footer, EndsWith("\r\n\tquid       \t\"38F75B630146\"))\r\n"));
    EXPECT_EQ(PetalScanner("(" + footer).error, "");
    EXPECT_EQ(countOf("    (object Attribute\r\n", footer), 151U);
}

TEST(FixedText, Properties)
{
    const std::string footer = written(writeFooter);
    const struct {
        const char* tool;
        std::size_t outermost;
        std::size_t all;
    } tools[] = {{"DDL", 4, 26},    {"IDL", 12, 72},    {"Java", 9, 50},
                 {"Velmora", 1, 1}, {"Tarnwick", 1, 1}, {"SCC", 1, 1}};
    std::size_t before = 0;
    for (const auto& row : tools) {
        const std::string toolLine = std::string("\ttool       \t\"") + row.tool + "\"\r\n";
        EXPECT_EQ(countOf(toolLine, footer), row.all) << row.tool;
        EXPECT_EQ(countOf("\r\n\t    (object Attribute\r\n\t" + toolLine, footer), row.outermost) << row.tool;
        EXPECT_LT(before, footer.find(toolLine)) << row.tool;
        before = footer.find(toolLine);
    }
    const struct {
        const char* name;
        const char* value; // with what closes behind it
    } entries[] = {
        {"propertyId", "\"809135966\")"},
        {"DataBase", "(\"DataBaseSet\" 800))"},
        {"Watcom", "804)))"},
        {"DDLScriptFilename", "\"DDL1.SQL\")))"},
        {"CheckConstraint", "\"\")))"},
        {"Union", "81)))))"},
        {"CmIdentification", "(value Text \"  %X% %Q% %Z% %W%\"))"},
        {"Sequence", "47)))))"},
        {"GenerateForwardReference", "FALSE)"},
        {"Private", "64)))"},
        {"AdditionalImports", "(value Text \"\"))))"},
        {"default__Uses", "(list Attribute_Set"},
    };
    for (const auto& row : entries) {
        const std::size_t name = footer.find(std::string("name       \t\"") + row.name + "\"\r\n");
        const std::size_t value = footer.find("value      \t", name) + 12;
        EXPECT_EQ(footer.substr(value, footer.find("\r\n", value) - value), row.value) << row.name;
    }
    EXPECT_THAT(footer,
                EndsWith("\"HiddenTool\"\r\n\t\tvalue      \tFALSE))\r\n\tquid       \t\"38F75B630146\"))\r\n"));
}

// Names that would break the file

namespace {

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
