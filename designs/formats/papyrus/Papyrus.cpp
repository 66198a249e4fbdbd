#include "designs/formats/Formats.h"

#include "designs/formats/papyrus/Notation.h"
#include "designs/formats/papyrus/Write.h"
#include "designs/formats/uml2/Uml2.h"

#include <cstdint>
#include <optional>

namespace design {

namespace {

std::string fileWith(const std::filesystem::path& path, const char* extension)
{
    return path.filename().replace_extension(extension).string();
}

// The files of one design that may be given.
enum class Part : std::uint8_t {
    Model,    ///< .uml, perhaps with the diagrams in it
    Diagrams, ///< .notation
    Windows,  ///< .di: what the tool had open
};

// Windows and diagrams are told by the names of their files as well, since there may be nothing in them.
Part partOf(const Source& source, std::string_view head)
{
    if (uml2::hasModel(head))
        return Part::Model;
    const std::string ending = source.path.extension().string();
    if (head.find("<notation:Diagram") != std::string_view::npos || ending == ".notation")
        return Part::Diagrams;
    return ending == ".di" ? Part::Windows : Part::Model;
}

bool recognizes(const Source& source)
{
    const std::string head = xml::head(source.text);
    if (partOf(source, head) != Part::Model)
        return head.find("<notation:Diagram") != std::string::npos || head.find("xmi:version=") != std::string::npos;
    if (!uml2::hasModel(head))
        return false;
    return head.find("xmlns:notation=") != std::string::npos ||
           uml2::isBeside(source.path, fileWith(source.path, ".notation"));
}

// A fault in a file beside the one that was given is told with its name.
xml::Document documentBeside(const std::string& bytes, const std::string& name)
{
    try {
        return xml::Document(bytes);
    } catch (const UnreadableDesign& fault) {
        throw UnreadableDesign(name + ": " + fault.what());
    }
}

// The file of that ending beside the one that was given.
std::optional<xml::Document> readOther(const Source& source, const char* extension)
{
    const std::string name = fileWith(source.path, extension);
    const std::optional<std::string> bytes = uml2::readBeside(source.path, name);
    return bytes ? std::optional(documentBeside(*bytes, name)) : std::nullopt;
}

Design read(const Source& source, Report& report)
{
    const Part part = partOf(source, xml::head(source.text));
    const std::string modelName = fileWith(source.path, ".uml");
    const auto model = part == Part::Model ? std::nullopt : readOther(source, ".uml");
    if (part != Part::Model && !model)
        throw UnreadableDesign((part == Part::Diagrams ? "1:1: diagrams alone" : "1:1: windows of a design alone") +
                               ("; the model is missing: " + modelName));
    const auto diagrams = part == Part::Diagrams ? std::nullopt : readOther(source, ".notation");
    const xml::Document given(source.text);
    uml2::Outside outside(part == Part::Model ? source.path : source.path.parent_path() / modelName);
    Design design = uml2::read(model ? *model : given, outside, report);
    const xml::Document* drawn = part == Part::Windows ? &*model : &given;
    if (diagrams)
        drawn = &*diagrams;
    papyrus::readDiagrams(drawn->root(), design, outside, report);
    return design;
}

} // namespace

Format papyrusFormat()
{
    return {"papyrus",
            "Papyrus model (.uml) with the diagrams beside it (.notation)",
            {".di", ".uml", ".notation"},
            "a uml:Model or uml:Package with packaged elements",
            recognizes,
            read,
            papyrus::write};
}

} // namespace design
