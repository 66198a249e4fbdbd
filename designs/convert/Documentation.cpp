#include "designs/convert/Documentation.h"

#include "designs/model/Texts.h"

namespace design {

namespace {

std::string joined(const std::vector<std::string>& texts)
{
    std::string result;
    for (const std::string& text : texts)
        result.append(result.empty() ? "" : ", ").append(text);
    return result;
}

void addMultiplicity(std::string& text, const std::string& what, const std::optional<Multiplicity>& multiplicity)
{
    const bool isPlain =
        multiplicity && multiplicity->text.empty() && multiplicity->lower == 1 && multiplicity->upper == 1;
    if (multiplicity && !isPlain)
        addLine(text, what + textOf(*multiplicity));
}

// "Parameter rate: inout, 0..*, of the day"; empty when there is nothing to say.
std::string lineFor(const Parameter& parameter)
{
    std::vector<std::string> parts;
    if (parameter.direction != Direction::In)
        parts.emplace_back(parameter.direction == Direction::Out ? "out" : "inout");
    std::string multiplicity;
    addMultiplicity(multiplicity, "", parameter.multiplicity);
    for (const std::string& part : {multiplicity, joined(parameter.constraints), parameter.documentation})
        if (!part.empty())
            parts.push_back(part);
    return parts.empty() ? "" : "Parameter " + parameter.name + ": " + joined(parts);
}

} // namespace

std::string documentationOf(const Element& element)
{
    std::string text = element.documentation;
    for (const std::string& constraint : element.constraints)
        addLine(text, "{" + constraint + "}");
    return text;
}

std::string documentationOf(const Attribute& attribute)
{
    std::string text = documentationOf(static_cast<const Element&>(attribute));
    addMultiplicity(text, "Multiplicity: ", attribute.multiplicity);
    if (attribute.isReadOnly)
        addLine(text, "{readOnly}");
    if (attribute.isIdentifier)
        addLine(text, "{id}");
    return text;
}

std::string documentationOf(const Operation& operation)
{
    std::string text = documentationOf(static_cast<const Element&>(operation));
    for (const Parameter& parameter : operation.parameters)
        addLine(text, lineFor(parameter));
    addMultiplicity(text, "Multiplicity of the result: ", operation.returnMultiplicity);
    return text;
}

std::string documentationOf(const AssociationEnd& end)
{
    std::string text = end.documentation;
    if (end.multiplicity && !end.multiplicity->text.empty())
        addLine(text, "Multiplicity: " + end.multiplicity->text);
    return text;
}

std::string constraintOf(const Association& association)
{
    std::vector<std::string> constraints = association.constraints;
    if (association.isDerived)
        constraints.emplace_back("derived");
    return joined(constraints);
}

std::string constraintOf(const AssociationEnd& end)
{
    std::vector<std::string> constraints = end.constraints;
    if (end.isDerived)
        constraints.emplace_back("derived");
    return joined(constraints);
}

} // namespace design
