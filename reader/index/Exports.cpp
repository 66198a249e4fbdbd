#include "reader/index/Exports.h"

namespace reader {

namespace {

// What the exporter writes in front of each model, but for the ends of the lines.
constexpr std::string_view exportHeader = R"(
(object Petal
    version    	42
    _written   	"Rose 4.5.8054a"
    charSet    	0)

(object Design "Logical View"
    is_unit    	TRUE
    is_loaded  	TRUE
    quid       	"38F75B63013A"
)";

} // namespace

bool startsLikeAnExport(std::string_view text)
{
    std::size_t at = 0;
    for (const char wanted : exportHeader) {
        if (at < text.size() && text[at] == '\r')
            ++at;
        if (at == text.size() || text[at++] != wanted)
            return false;
    }
    return true;
}

} // namespace reader
