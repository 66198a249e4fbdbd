#include "render/paper/Text.h"

#include "render/paper/PictureLibrary.h"
#include "text/Utf8.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace render {

namespace {

// Words up to this width are kept whole, whatever room there is for them.
constexpr double widestUnbroken = 1500;
constexpr double narrowestPart = 300; // of a broken word

// What is drawn of a text, in bytes.
constexpr std::size_t longestText = 10000;

// Of widths that are kept, and of lines whose widths are.
constexpr std::size_t mostWidths = 20000;
constexpr std::size_t longestKept = 200;

// What is measured letter by letter: letters, fonts, and how many letters take as long as it takes to begin. The widths
// of what comes later are estimated.
constexpr std::size_t mostMeasured = 12000000;
constexpr std::size_t beginning = 40;
constexpr std::size_t mostFaces = 100;
constexpr double usualLetter = 0.55; // of the height of the letters' square

std::size_t nextCharacter(std::string_view text, std::size_t at)
{
    ++at;
    while (at < text.size() && text::isContinuation(text[at]))
        ++at;
    return at;
}

// U+FFFE and U+FFFF, U+0080 to U+009F.
bool isNoText(std::string_view character)
{
    return character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF" ||
           (character.size() == 2 && character[0] == '\xC2' && static_cast<unsigned char>(character[1]) < 0xA0U);
}

// Bytes of the longest start of `word` that is not wider than `width`, at least a character.
std::size_t fitting(std::string_view word, const Font& font, double width, const TextMeasure& measure)
{
    std::vector<std::size_t> ends;
    for (std::size_t end = 0; end < word.size();)
        ends.push_back(end = nextCharacter(word, end));
    const auto isNarrow = [&](std::size_t end) {
        return measure.width(std::string(word.substr(0, end)), font) <= width;
    };
    const auto first = std::partition_point(ends.begin(), ends.end(), isNarrow);
    return first == ends.begin() ? ends.front() : *std::prev(first);
}

void skipBlanks(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
}

void wrapLine(std::string_view rest, const Font& font, double width, const TextMeasure& measure,
              std::vector<std::string>& lines)
{
    std::string line;
    while (!rest.empty()) {
        const std::size_t blank = rest.find(' ', 1);
        std::string_view word = rest.substr(0, blank);
        if (measure.width(line + std::string(word), font) <= width) {
            line += word;
        } else if (!line.empty()) {
            lines.push_back(line);
            line.clear();
            skipBlanks(rest);
            continue;
        } else {
            if (measure.width(std::string(word), font) > widestUnbroken)
                word = word.substr(0, fitting(word, font, std::max(width, narrowestPart), measure));
            lines.emplace_back(word);
            rest.remove_prefix(word.size());
            skipBlanks(rest);
            continue;
        }
        rest.remove_prefix(word.size());
    }
    if (!line.empty())
        lines.push_back(line);
}

} // namespace

struct PangoMeasure::Widths {
    TextWidths measure;                             // from the first width on; most commands need none
    std::unordered_map<std::string, double> widths; // of what was asked for before: names stand in many places
    std::unordered_set<std::string> faces;
    std::size_t measured = 0;

    double widthOf(const std::string& line, const Font& font)
    {
        if (faces.size() < mostFaces)
            faces.insert(font.face);
        measured += line.size() + beginning;
        if (measured > mostMeasured || !faces.contains(font.face))
            return static_cast<double>(text::countCharacters(line)) * font.em() * usualLetter;
        return measure(line, font);
    }
};

PangoMeasure::PangoMeasure() : known(std::make_unique<Widths>()) {}

PangoMeasure::~PangoMeasure() = default;

double PangoMeasure::width(const std::string& line, const Font& font) const
{
    if (!known->measure)
        known->measure = pictureLibrary().newTextWidths();
    if (line.size() > longestKept)
        return known->widthOf(line, font);
    const std::string key = std::to_string(font.size)
                                .append(font.isBold ? "b" : "")
                                .append(font.isItalic ? "i" : "")
                                .append(font.face)
                                .append("\n")
                                .append(line);
    if (known->widths.size() >= mostWidths)
        known->widths.clear();
    const auto [entry, isNew] = known->widths.try_emplace(key, 0);
    if (isNew)
        entry->second = known->widthOf(line, font);
    return entry->second;
}

std::string cleanText(std::string_view text, bool keepsLines)
{
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        if (result.size() >= longestText)
            return result.append("\u2026");
        const std::size_t end = nextCharacter(text, at);
        const std::string_view character = text.substr(at, end - at);
        const auto lead = static_cast<unsigned char>(character[0]);
        at = end;
        if (lead == '\n' && keepsLines)
            result += '\n';
        else if (lead == '\t' || lead == '\n')
            result += ' ';
        else if (lead >= 0x20U && lead != 0x7FU && !isNoText(character))
            result += character;
    }
    return result;
}

FittedLine fitted(const std::string& line, const Font& font, double room, const TextMeasure& measure)
{
    constexpr double rounding = 0.5;
    constexpr std::string_view ellipsis = "\u2026";
    FittedLine result = {line, measure.width(line, font)};
    if (result.width <= room + rounding)
        return result;
    if (result.width * narrowest > room) {
        const double rest = room / narrowest - measure.width(std::string(ellipsis), font);
        result.text = rest > 0 ? line.substr(0, fitting(line, font, rest, measure)) : std::string();
        result.text += ellipsis;
        result.width = measure.width(result.text, font);
        result.isCut = true;
    }
    result.scale = std::clamp(room / result.width, narrowest, 1.0);
    result.width *= result.scale;
    return result;
}

std::vector<std::string> wrapped(const std::string& text, const Font& font, double width, const TextMeasure& measure)
{
    std::vector<std::string> lines;
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = rest.substr(0, end);
        if (width > 0 && !line.empty())
            wrapLine(line, font, width, measure, lines);
        else
            lines.emplace_back(line);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    while (!lines.empty() && lines.back().empty())
        lines.pop_back();
    return lines;
}

Size TextBlock::size(const TextMeasure& measure) const
{
    double width = 0;
    for (const std::string& line : lines)
        width = std::max(width, measure.width(line, font));
    return {width, static_cast<double>(lines.size()) * font.lineHeight()};
}

void TextBlock::cutTo(double height)
{
    constexpr double share = 0.15; // of the last line may be missing: letters do not fill their lines
    const double room = std::max(height / font.lineHeight() + share, 1.0);
    if (static_cast<double>(lines.size()) <= room)
        return;
    lines.resize(static_cast<std::size_t>(room));
    lines.back() += "\u2026";
}

} // namespace render
