#include "designs/DesignLines.h"
#include "designs/formats/Format.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <map>

namespace {

using design::Design;
using design::Report;
using design::Source;
using design::UnreadableDesign;
using testing::Contains;
using testing::HasSubstr;

using testing::StartsWith;

std::filesystem::path pathOf(const std::string& name)
{
    return std::filesystem::path(PETAL_DESIGNS) / name;
}

std::string bytesOf(const std::string& name)
{
    std::ifstream stream(pathOf(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

const design::Format* formatOf(const Source& source)
{
    const auto formats = design::formats();
    const auto found = std::find_if(formats.begin(), formats.end(),
                                    [&source](const design::Format& format) { return format.recognizes(source); });
    return found == formats.end() ? nullptr : &*found;
}

std::vector<std::string> linesOf(const Source& source)
{
    const design::Format* const format = formatOf(source);
    if (format == nullptr)
        return {"of no format"};
    Report report;
    Design design = format->read(source, report);
    return DesignLines(std::move(design), report).lines();
}

/// What the reader of its format says against a text.
std::string faultOf(const std::string& text)
{
    try {
        linesOf({text, "-"});
    } catch (const UnreadableDesign& fault) {
        return fault.what();
    }
    return "none";
}

std::string modelWith(const std::string& content)
{
    return "<uml:Model xmlns:uml=\"u\" xmlns:xmi=\"x\" xmi:id=\"m\" name=\"m\">" + content + "</uml:Model>";
}

TEST(XmlFormats, AreToldByTheirContent)
{
    const struct {
        const char* file;
        const char* format;
    } rows[] = {
        {"enterprise-architect.xml", "ea"},
        {"shop.uml", "papyrus"},
        {"shop.notation", "papyrus"},
        {"umbrello.xmi", "umbrello"},
        {"umbrello2.xmi", "umbrello"},
        {"plain.xmi", "xmi"},
        {"common.uml", "xmi"},
        {"shop.ecore", "ecore"},
    };
    for (const auto& row : rows) {
        const std::string bytes = bytesOf(row.file);
        const design::Format* const format = formatOf({bytes, pathOf(row.file)});
        ASSERT_NE(format, nullptr) << row.file;
        EXPECT_EQ(format->name, row.format) << row.file;
    }
}

TEST(XmlFormats, TakeWhatTheFilesHold)
{
    const struct {
        const char* file;
        const char* line;
    } rows[] = {
        {"enterprise-architect.xml", "package Caf\u00e9"},
        {"enterprise-architect.xml",
         "class Order in Caf\u00e9 abstract <<Entity>> {What a guest wants \u2013 all of it} note(Ask first)"},
        {"enterprise-architect.xml", "private derived attribute Order.total : int [0..*] = 7"},
        {"enterprise-architect.xml", "protected static attribute Order.unit : Currency <<column>> {of money}"},
        {"enterprise-architect.xml", "public abstract operation Order.pay(inout amount : int) : boolean {Pays}"},
        {"enterprise-architect.xml", "association : Order  composite - Item items [0..*] <<ordered>> {in order of wish}"
                                     " -> {who wants what}"},
        {"enterprise-architect.xml", "generalization Order - Document"},
        {"enterprise-architect.xml", "diagram Orders in Caf\u00e9 {the main one}"},
        {"enterprise-architect.xml", "box Order 100,200 200x60 fill cce6ff border ff0000 font Arial 9"},
        {"enterprise-architect.xml", "box <EAID_base> 150,20 100x60"},
        {"enterprise-architect.xml", "line EAID_a1 220,230 220,120 550,120 border ff"},
        {"enterprise-architect.xml", "line EAID_g1 170,230 170,50"},
        {"enterprise-architect.xml", "left sequence diagram Steps"},
        {"enterprise-architect.xml", "class first in Caf\xC3\xA9 <<object>>"},
        {"enterprise-architect.xml", "dependency Order - first"},
        {"enterprise-architect.xml", "left package import "},
        {"shop.uml", "package shop {Everything sold}"},
        {"shop.uml", "class Order in sales <<Entity, Root>> {One order} note(a note on it)"},
        {"shop.uml", "private attribute Order.total : Integer constraint(total > 0)"},
        {"shop.uml", "public static attribute Order.state : State"},
        {"shop.uml", "public attribute Order.lost : _Missing12345678901234567"},
        {"shop.uml", "enumeration Kind in sales"},
        {"shop.uml", "literal Kind.small = 4"},
        {"shop.uml", "association holds: Item items [0..*] -> - Order order composite qualifier number"},
        {"shop.uml", "associationclass Sale in sales"},
        {"shop.uml", "association Sale: Item seller - Payable sold -> class Sale"},
        {"shop.uml", "realization Order - Payable"},
        {"shop.uml", "dependency Order - Base <<use>>"},
        {"shop.uml", "box Order -40,20 200x100 fill cce6ff border ff0000 font Segoe UI 11"},
        {"shop.uml", "box Seen 400,300 0x0"},
        {"shop.uml", "box Payable 610,230 80x40"},
        {"shop.uml", "line _a 400,50 280,60 160,70"},
        {"shop.uml", "line _ir 60,120 60,250 610,250"},
        {"shop.uml", "left state machine life"},
        {"shop.uml", "left activity diagram Flow"},
        {"shop.uml", "class Seen in External"},
        {"shop.notation", "line _a 400,50 280,60 160,70"},
        {"one-file.uml", "line _a 400,50 280,60 160,70"},
        {"umbrello.xmi", "class Order in Logical View <T> abstract <<entity>> {One order} note(on the order)"},
        {"umbrello.xmi", "protected static attribute Order.total : int = 7 {a sum}"},
        {"umbrello.xmi", "private static abstract operation Order.pay(out amount : int = 1) : int"},
        {"umbrello.xmi", "literal Kind.small = 4"},
        {"umbrello.xmi", "interface Payable in Logical View"},
        {"umbrello.xmi", "primitive int in Logical View"},
        {"umbrello.xmi", "association holds: Order order [1] composite - Item items [0..*] ->"},
        {"umbrello.xmi", "generalization Order - <nowhere>"},
        {"umbrello.xmi", "realization Order - Payable"},
        {"umbrello.xmi", "note Logical View (on nothing)"},
        {"umbrello.xmi", "box Order -30.5,40 120x60 fill ffff00 border ff0000 font Noto Sans 9"},
        {"umbrello.xmi", "box Item 300,40 80x30 fill ffffc0 border ff0000 font Noto Sans 9"},
        {"umbrello.xmi", "box Payable 0,300 80x30"},
        {"umbrello.xmi", "line as1 89.5,60 200,20 300,50 border ff00"},
        {"umbrello.xmi", "left use case buy"},
        {"umbrello.xmi", "left sequence diagram Steps"},
        {"umbrello2.xmi", "class Order in Logical View <<entity>>"},
        {"umbrello2.xmi", "private attribute Order.total : int"},
        {"umbrello2.xmi", "generalization Order - Document"},
        {"umbrello2.xmi", "line g1 50,200 50,50"},
        {"plain.xmi", "class Order in shop <T> {One order}"},
        {"plain.xmi", "public attribute Order.code : String [k]"},
        {"plain.xmi", "public attribute Order.kind : Kind = small"},
        {"plain.xmi", "public operation Order.pay() : Kind [0..1] pre open"},
        {"plain.xmi", "interface Pay in shop"},
        {"plain.xmi", "association : Order  - Pay  shared"},
        {"plain.xmi", "generalization Order - <gone>"},
        {"plain.xmi", "dependency Order2 - Pay <<abstraction>>"},
        {"plain.xmi", "line as 110,30 300,30"},
        {"plain.xmi", "class Till in shop <<component>>"},
        {"plain.xmi", "left association "},
        {"shop.ecore", "class Order in shop abstract {One order}"},
        {"shop.ecore", "public derived attribute Order.total : Money = 7"},
        {"shop.ecore", "public operation Order.pay(in amount : Money) : EBoolean [1]"},
        {"shop.ecore", "association : Order order [1] composite -> - Item items [0..*] ->"},
        {"shop.ecore", "association : Order  - Kind kind [1] ->"},
        {"shop.ecore", "generalization Order - Document"},
        {"shop.ecore", "generalization Order - EObject"},
        {"shop.ecore", "interface Document in base"},
        {"shop.ecore", "literal Kind.small = 4"},
    };
    std::map<std::string, std::vector<std::string>> read;
    for (const auto& row : rows) {
        auto& lines = read[row.file];
        const std::string bytes = bytesOf(row.file);
        if (lines.empty())
            lines = linesOf({bytes, pathOf(row.file)});
        EXPECT_THAT(lines, Contains(row.line)) << row.file;
    }
}

// What is an end of an association, or only told a second time, must not come twice.
TEST(XmlFormats, TakeNothingTwice)
{
    const struct {
        const char* file;
        const char* start;
        std::ptrdiff_t count;
    } rows[] = {
        {"enterprise-architect.xml", "public attribute Order.", 0},
        {"enterprise-architect.xml", "association ", 1},
        {"enterprise-architect.xml", "box ", 3},
        {"shop.uml", "public attribute Order.items", 0},
        {"shop.uml", "association ", 2},
        {"shop.uml", "box ", 5},
        {"umbrello.xmi", "generalization ", 1},
        {"umbrello.xmi", "line ", 1},
        {"plain.xmi", "association ", 1},
        {"shop.ecore", "association ", 2},
    };
    for (const auto& row : rows) {
        const std::string bytes = bytesOf(row.file);
        const std::vector<std::string> lines = linesOf({bytes, pathOf(row.file)});
        EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                                [&row](const std::string& line) { return line.starts_with(row.start); }),
                  row.count)
            << row.file << ": " << row.start;
    }
}

TEST(XmlFormats, ReadEveryEncoding)
{
    const std::string tree = modelWith("<packagedElement xmi:type=\"uml:Class\" xmi:id=\"c\" name=\"%\"/>");
    const auto named = [&tree](const std::string& start, const std::string& name) {
        std::string text = start + tree;
        return text.replace(text.find('%'), 1, name);
    };
    const auto wide = [](const std::string& text, bool isBig) {
        std::string bytes;
        for (const char letter : text) {
            bytes += isBig ? std::string(1, '\0') + letter : std::string(1, letter);
            if (!isBig)
                bytes += '\0';
        }
        return bytes;
    };
    const struct {
        const char* what;
        std::string text;
        const char* name;
    } rows[] = {
        {"undeclared UTF-8", named("", "\xC3\xA9"), "\u00e9"},
        {"UTF-8 with a mark", named("\xEF\xBB\xBF", "\xC3\xA9"), "\u00e9"},
        {"undeclared Windows-1252", named("", "\xE9\x96"), "\u00e9\u2013"},
        {"declared as UTF-8, but Windows-1252", named("<?xml version='1.0' encoding='UTF-8'?>", "\xE9"), "\u00e9"},
        {"Windows-1252 that could be UTF-8", named("<?xml version='1.0' encoding='windows-1252'?>", "\xC3\xA9"),
         "\u00c3\u00a9"},
        {"ISO 8859-2", named("<?xml version=\"1.0\" encoding=\"ISO-8859-2\"?>", "\xB9"), "\u0161"},
        {"UTF-16, little end first", "\xFF\xFE" + wide(named("", "e"), false), "e"},
        {"UTF-16 without a mark, big end first", wide(named("", "e"), true), "e"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(linesOf({row.text, "-"}), Contains("class " + std::string(row.name) + " in m")) << row.what;
}

TEST(XmlFormats, NameTheFaultWithLineAndColumn)
{
    std::string nested;
    for (int i = 0; i < 600; ++i)
        nested += "<a>";
    for (int i = 0; i < 600; ++i)
        nested += "</a>";
    const struct {
        const char* what;
        std::string text;
        const char* start;
        const char* word;
    } rows[] = {
        {"an end tag cut away", "<uml:Model>\n <packagedElement>\n</uml:Model>", "3:", "mismatch"},
        {"cut in the middle", "<uml:Model>\n <packagedEl", "2:", ""},
        {"an entity of its own", "<!DOCTYPE a [<!ENTITY b \"c\">]>\n<uml:Model name=\"&b;\"/>",
         "2:18: ", "&b; is not expanded"},
        {"entities in entities", "<!DOCTYPE a [<!ENTITY b \"&c;&c;\">]><uml:Model/>", "1:26: ", "&c; is not expanded"},
        {"too deep", modelWith(nested), "1:", "nested more than"},
        {"an encoding that nobody knows", "<?xml version=\"1.0\" encoding=\"klingon\"?><uml:Model/>",
         "1:1: ", "klingon"},
    };
    for (const auto& row : rows) {
        EXPECT_THAT(faultOf(row.text), StartsWith(row.start)) << row.what;
        EXPECT_THAT(faultOf(row.text), HasSubstr(row.word)) << row.what;
    }
    EXPECT_EQ(faultOf(modelWith("<a name=\"&amp;&#233; &\"/><!-- &b; --><![CDATA[&b;]]>")), "none");
}

// A file cut anywhere either is refused in words or was whole enough to be read.
TEST(XmlFormats, ReadOrRefuseAFileCutAnywhere)
{
    for (const char* const name : {"enterprise-architect.xml", "shop.uml", "umbrello.xmi", "plain.xmi", "shop.ecore"}) {
        const std::string bytes = bytesOf(name);
        const Source whole{bytes, "-"};
        const design::Format* const format = formatOf(whole);
        ASSERT_NE(format, nullptr) << name;
        for (std::size_t length = 0; length + 2 < bytes.size(); length += 7) {
            Report report;
            try {
                static_cast<void>(format->read({std::string_view(bytes).substr(0, length), "-"}, report));
                ADD_FAILURE() << name << " cut at " << length << " was read";
            } catch (const UnreadableDesign& fault) {
                EXPECT_THAT(fault.what(), HasSubstr(": ")) << name << " cut at " << length;
            }
        }
    }
}

TEST(XmlFormats, EndureReferencesToNothing)
{
    const char* const contents[] = {
        "<packagedElement xmi:type='uml:Association' xmi:id='a' memberEnd='b b c'/>",
        "<packagedElement xmi:type='uml:AssociationClass' xmi:id='a'><ownedEnd xmi:id='a'/></packagedElement>",
        "<packagedElement xmi:type='uml:Dependency' client='x'/>",
        "<packagedElement xmi:type='uml:Class' xmi:id='c'><generalization/><ownedAttribute "
        "association='c'/></packagedElement>",
        "<ownedComment body='b' annotatedElement='x y'/><ownedRule><specification/></ownedRule>",
    };
    for (const std::string content : contents)
        EXPECT_THAT(linesOf({modelWith(content), "-"}), Contains("package m")) << content;
}

} // namespace
