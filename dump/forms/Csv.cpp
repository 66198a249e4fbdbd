#include "dump/forms/Csv.h"

#include "dump/rows/Tables.h"
#include "text/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <utility>
#include <vector>

namespace dump {

namespace {

constexpr std::size_t pieceSize = std::size_t{64} * 1024;

template <typename Number>
void appendNumber(std::string& out, Number number)
{
    std::array<char, 400> digits; // more than any number has
    out.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

void appendQuoted(std::string& out, std::string_view text)
{
    out += '"';
    for (const char c : text) {
        if (c == '"')
            out += "\"\"";
        else if (c == '\0')
            out += text::replacementCharacter;
        else
            out += c;
    }
    out += '"';
}

void appendText(std::string& out, std::string_view text)
{
    const auto isSpecial = [](char c) { return c == '"' || c == ',' || c == '\r' || c == '\n' || c == '\0'; };
    if (text.empty() || std::ranges::any_of(text, isSpecial))
        appendQuoted(out, text);
    else
        out += text;
}

void appendCell(std::string& out, const Cell& cell)
{
    if (const auto* const whole = std::get_if<std::int64_t>(&cell))
        appendNumber(out, *whole);
    else if (const auto* const real = std::get_if<double>(&cell))
        appendNumber(out, *real);
    else if (const auto* const text = std::get_if<std::string_view>(&cell))
        appendText(out, *text);
}

template <typename Cells, typename Append>
void appendLine(std::string& out, const Cells& cells, const Append& append)
{
    bool isFirst = true;
    for (const auto& cell : cells) {
        if (!std::exchange(isFirst, false))
            out += ',';
        append(cell);
    }
    out += "\r\n";
}

} // namespace

void writeCsv(const Source& source, const std::function<void(TableName, std::string_view)>& write)
{
    std::vector<std::string> pieces(tables().size());
    for (std::size_t i = 0; i < pieces.size(); ++i)
        appendLine(pieces[i], tables()[i].columns, [&](const Column& column) { pieces[i] += column.name; });
    giveRows(source, [&](TableName table, std::span<const Cell> cells) {
        std::string& piece = pieces[static_cast<std::size_t>(table)];
        appendLine(piece, cells, [&](const Cell& cell) { appendCell(piece, cell); });
        if (piece.size() < pieceSize)
            return;
        write(table, piece);
        piece.clear();
    });
    for (std::size_t i = 0; i < pieces.size(); ++i)
        if (!pieces[i].empty())
            write(static_cast<TableName>(i), pieces[i]);
}

} // namespace dump
