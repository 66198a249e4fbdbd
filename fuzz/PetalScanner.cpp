#include "PetalScanner.h"

#include <stdexcept>

namespace {

class PetalScanner {
public:
    explicit PetalScanner(std::string_view theFile) : file(theFile) {}

    void scan()
    {
        while (at < file.size())
            scanToken();
        if (depth != 0)
            fail("parentheses that are closed at the end");
        if (objects != 2)
            fail("two objects at the top");
    }

private:
    void scanToken()
    {
        const char byte = file[at];
        if (byte == '"')
            return skipQuoted();
        if (byte == '\n')
            return skipBlock();
        if (byte == '\r') {
            if (file.substr(at, 2) != "\r\n")
                fail("a line feed behind a carriage return");
            at += 2;
            return;
        }
        if (byte == '(' && depth++ == 0)
            ++objects;
        if (byte == ')' && depth-- == 0)
            fail("no closing parenthesis without an opening one");
        if (byte != '\t' && (byte < ' ' || byte > '~'))
            fail("printable ASCII outside of texts");
        ++at;
    }

    void skipQuoted()
    {
        for (++at; at < file.size() && file[at] != '"'; ++at) {
            if (file[at] == '\\')
                ++at;
            if (at < file.size() && (file[at] == '\r' || file[at] == '\n'))
                fail("no line end in a quoted text");
        }
        if (at >= file.size())
            fail("a closing quote");
        ++at;
    }

    // Lines that begin with LF and bar; a last LF ends them.
    void skipBlock()
    {
        if (file.substr(at, 2) != "\n|")
            fail("a text block behind a bare line feed");
        while (file.substr(at, 2) == "\n|") {
            at = file.find('\n', at + 1);
            if (at == std::string_view::npos)
                fail("a line feed behind a text block");
        }
        ++at;
    }

    [[noreturn]] void fail(const std::string& expectation) const
    {
        const std::size_t start = at < 40 ? 0 : at - 40;
        throw std::runtime_error(expectation + " at byte " + std::to_string(at) + ", after: " +
                                 std::string(file.substr(start, at < file.size() ? at - start : std::string::npos)));
    }

    std::string_view file;
    std::size_t at = 0;
    std::size_t depth = 0;
    std::size_t objects = 0;
};

} // namespace

std::string findPetalFault(std::string_view file)
{
    try {
        PetalScanner(file).scan();
    } catch (const std::runtime_error& fault) {
        return fault.what();
    }
    return file.ends_with(petalLastLine) ? "" : "the last line of every file at the end";
}
