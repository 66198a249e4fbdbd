#include "petal/Indentation.h"

Indentation indent;

namespace {

constexpr std::size_t lineEnd = 2; // CR LF

void cutToDepth()
{
    indent.text.truncate(lineEnd + static_cast<std::size_t>(indent.depth));
}

} // namespace

void resetIndent()
{
    indent = Indentation();
}

void increaseIndent()
{
    indent.text.add(std::string_view("\t"));
    ++indent.depth;
}

void decreaseIndent()
{
    if (indent.depth > 0)
        --indent.depth;
    cutToDepth();
}
