#include "petal/Indentation.h"

#include "petal/Pieces.h"

#include <string>

Indentation indent;

KivString Indentation::text() const
{
    std::string start(bound(*this), '\0');
    start.resize(static_cast<std::size_t>(copy(start.data(), *this) - start.data()));
    return KivString(start);
}
