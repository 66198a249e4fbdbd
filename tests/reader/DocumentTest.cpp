#include "PetalTexts.h"

#include <gmock/gmock.h>

namespace {

using reader::Document;

std::string named(std::string_view charSet, std::string_view name)
{
    return std::string("(object Petal version 44 charSet ")
        .append(charSet)
        .append(")\n(object Design \"")
        .append(name)
        .append("\"\nnote \n|")
        .append(name)
        .append("\nlast 1)");
}

TEST(Document, DecodesByCharSetBeforeItReads)
{
    const struct {
        const char* charSet;
        const char* bytes;
        const char* charset; // given on the command line
        const char* encoding;
        const char* text;
    } rows[] = {
        {"0",
         "Gr\xf6\xdf"
         "e",
         "", "CP1252", "Größe"},
        {"0", "plain", "", "CP1252", "plain"},
        {"77", "\x80", "", "CP1252", "€"},                // not known
        {"128", "\x95\x5c\x83\x7c", "", "CP932", "表ポ"}, // a backslash and a bar as second bytes
        {"129", "\xb0\xa1", "", "CP949", "가"},
        {"134", "\x81\x5c\x81\x7c", "", "CP936", "乗亅"},
        {"136", "\xa5\x5c", "", "CP950", "功"},
        {"161", "\xc1\xe1", "", "CP1253", "Αα"},
        {"162", "\xdd", "", "CP1254", "İ"},
        {"163", "\xd0", "", "CP1258", "Đ"},
        {"177", "\xe0", "", "CP1255", "א"},
        {"178", "\x81", "", "CP1256", "پ"},
        {"186", "\xe0", "", "CP1257", "ą"},
        {"204", "\xc6", "", "CP1251", "Ж"},
        {"222", "\xa1", "", "CP874", "ก"},
        {"238", "\x9a", "", "CP1250", "š"},
        {"128", "Größe", "", "UTF-8", "Größe"},
        {"0", "\xc6", "CP1251", "CP1251", "Ж"},
        {"0", "\xc3\xa4", "CP1252", "CP1252", "Ã¤"},
        {"99999999999999999999", "\xe4", "", "CP1252", "ä"},
    };
    for (const auto& row : rows) {
        const Document document = read(named(row.charSet, row.bytes), row.charset);
        EXPECT_EQ(document.root().name(), row.text) << row.charSet;
        EXPECT_EQ(document.root().text("note"), row.text) << row.charSet;
        EXPECT_EQ(document.files().front().encoding, row.encoding) << row.charSet;
        EXPECT_TRUE(document.findings().empty()) << row.charSet << row.text;
    }
}

TEST(Document, TakesByteOrderMarks)
{
    std::string wide("\xff\xfe", 2);
    for (const char c : model("a 1"))
        wide.append({c, '\0'});
    for (const std::string& text : {"\xef\xbb\xbf" + model("a 1"), wide}) {
        const Document document = read(text);
        EXPECT_EQ(document.root().integer("a"), 1);
        EXPECT_EQ(document.place(document.root().get("a").position()).line, 7U);
    }
}

TEST(Document, SaysWhichBytesAreNoCharacters)
{
    const Document document = read(named("128", "\xff"
                                                "a\xff\x95"));
    ASSERT_EQ(document.findings().size(), 1U);
    EXPECT_EQ(document.findings().front().kind, "charset");
    EXPECT_EQ(document.place(document.root()).line, 2U);
    EXPECT_EQ(document.findings().front().place.line, 2U);
    EXPECT_EQ(document.root().name(), "\uFFFDa\uFFFD\uFFFD");
}

// Windows-1252 has characters for nearly all bytes, so files in other charsets are only told by those that it lacks.
TEST(Document, SaysWhichCharsetWouldFit)
{
    const struct {
        const char* bytes;
        const char* charset;
    } rows[] = {
        {"\201\321\317\307\316\312 \215\307\201 \220\322\307\321\324", "CP1256"},
        {"\271\372\217\322\360\214\363w\362\236\215\357\217K\217\210\321b", "CP936"},
        {"\200\356\360\220\345 \217\340\352 \220\340\352", "CP1251"},
        {"na\357ve caf\351 \201 \215 \220 gar\347on \374ber", ""}, // no script has all of these letters
        {"\201\317\321 \230\335\312", ""},                         // a few say nothing
    };
    for (const auto& row : rows) {
        const Document document = read(named("0", row.bytes));
        const std::string hint = *row.charset ? std::string("--charset ").append(row.charset) : std::string();
        EXPECT_EQ(document.findings().size(), *row.charset ? 1U : 0U) << row.bytes;
        for (const reader::Finding& finding : document.findings()) {
            EXPECT_EQ(finding.kind, "charset");
            EXPECT_THAT(finding.text, testing::HasSubstr(hint)) << row.bytes;
        }
        EXPECT_TRUE(read(named("0", row.bytes), "CP1252").findings().empty()) << row.bytes;
    }
}

TEST(Document, ReadsBothFormsOfTheHeaderAndBothLineEnds)
{
    for (const char* const header :
         {"(object Petal\r\n    version    \t37\r\n    _written   \t\"Rose\"\r\n    charSet    \t0)\r\n",
          "(object Petal version 37 _written \"Rose\" charSet 0)\n"}) {
        const Document document = read(std::string(header) + "(object Design \"x\" a 1)");
        const reader::File& file = document.files().front();
        EXPECT_EQ(file.version, 37) << header;
        EXPECT_EQ(file.writtenBy, "Rose") << header;
        EXPECT_EQ(document.root().integer("a"), 1) << header;
    }
}

TEST(Document, RefusesWhatIsNoPetalFile)
{
    for (const char* const text : {"", "  \n", "{}", "<xml/>", "(list x)", "(", "object",
                                   "\x7f"
                                   "ELF"})
        EXPECT_THROW(static_cast<void>(read(text)), reader::NotPetal) << text;
    EXPECT_THROW(static_cast<void>(read(model(""), "no such charset")), reader::NotPetal);
    EXPECT_THROW(Document("/nowhere/none.mdl"), reader::NotPetal);
}

TEST(Document, KnowsThePlaceOfEverything)
{
    std::string body;
    constexpr std::size_t lines = 10000; // several pages of text
    for (std::size_t i = 0; i < lines; ++i)
        body += "\tä (object O)\n";
    const Document document = read(model(body));
    std::size_t line = 7;
    for (const reader::Attribute& attribute : document.root().attributes()) {
        const reader::Place place = document.place(attribute.value.position());
        ASSERT_EQ(place.line, line++);
        ASSERT_EQ(place.column, 4U);
        ASSERT_EQ(place.file, "test.mdl");
    }
    EXPECT_EQ(line, 7 + lines);
}

} // namespace
