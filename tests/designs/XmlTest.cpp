#include "designs/DesignLines.h"
#include "designs/Files.h"

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;

std::string modelWith(const std::string& content)
{
    return "<uml:Model xmlns:uml=\"u\" xmlns:xmi=\"x\" xmi:id=\"m\" name=\"m\">" + content + "</uml:Model>";
}

TEST(Xml, IsReadInEveryEncoding)
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

TEST(Xml, HasItsFaultsNamedWithLineAndColumn)
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
        EXPECT_THAT(faultOf({row.text, "-"}), StartsWith(row.start)) << row.what;
        EXPECT_THAT(faultOf({row.text, "-"}), HasSubstr(row.word)) << row.what;
    }
    EXPECT_EQ(faultOf({modelWith("<a name=\"&amp;&#233; &\"/><!-- &b; --><![CDATA[&b;]]>"), "-"}), "none");
}

TEST(Xml, MayReferToNothing)
{
    const char* const contents[] = {
        "<packagedElement xmi:type='uml:Association' xmi:id='a' memberEnd='b b c'/>",
        "<packagedElement xmi:type='uml:AssociationClass' xmi:id='a'><ownedEnd xmi:id='a'/></packagedElement>",
        "<packagedElement xmi:type='uml:Dependency' client='x'/>",
        "<packagedElement xmi:type='uml:Class' xmi:id='c'><generalization/><ownedAttribute/></packagedElement>",
        "<packagedElement xmi:type='uml:Class' xmi:id='c'><ownedAttribute association='c'/></packagedElement>",
        "<ownedComment body='b' annotatedElement='x y'/><ownedRule><specification/></ownedRule>",
    };
    for (const std::string content : contents)
        EXPECT_THAT(linesOf({modelWith(content), "-"}), Contains("package m")) << content;
}

} // namespace
