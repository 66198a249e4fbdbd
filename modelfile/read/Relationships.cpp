#include "modelfile/read/Tables.h"

namespace modelfile {

namespace {

// A bound of a multiplicity that is a text: a number, or `n` or `*` for as many as one likes.
std::optional<int> boundOf(std::string_view text)
{
    if (const std::optional<int> named = codeNamed(boundNames, text))
        return named;
    int bound = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), bound);
    const bool isNumber = error == std::errc() && end == text.data() + text.size() && bound >= 0;
    return isNumber ? std::optional(bound) : std::nullopt;
}

KivMultiplicity multiplicityOf(Builder& builder, Value& value)
{
    const std::string_view token = Builder::tokenOf(value);
    const std::string_view text = builder.readText(value);
    const std::size_t dots = text.find("..");
    const std::optional<int> lower = boundOf(text.substr(0, dots));
    const std::optional<int> upper = dots == std::string_view::npos ? lower : boundOf(text.substr(dots + 2));
    if (!lower || !upper)
        Builder::fail(token.data(), R"(a multiplicity such as "1", "0..1", "0..n" or "n")",
                      "the text " + text::jsonQuoted(shownPart(text)));
    return {*lower, *upper, true};
}

constexpr auto multiplicityFields =
    fieldTable(code<&KivMultiplicity::lower, boundNames>("lower"), code<&KivMultiplicity::upper, boundNames>("upper"));

void readMultiplicity(Builder& builder, KivAssociationRole& role, Value& value)
{
    if (const std::string_view token = Builder::tokenOf(value); token.starts_with('"')) {
        role.multiplicity = multiplicityOf(builder, value);
        return;
    }
    Object object = builder.readObject(value);
    role.multiplicity.isPresent = builder.hasFields(object);
    builder.readFields(object, role.multiplicity, multiplicityFields);
}

constexpr auto roleFields = withCommonFields(
    fieldTable(reference<&KivAssociationRole::participant>("participant"),
               Field<KivAssociationRole>{"multiplicity", readMultiplicity},
               member<&KivAssociationRole::isAggregateEnd>("isAggregateEnd"),
               member<&KivAssociationRole::isNavigable>("isNavigable"),
               member<&KivAssociationRole::isStatic>("isStatic"), member<&KivAssociationRole::isFriend>("isFriend"),
               code<&KivAssociationRole::visibility, visibilityNames>("visibility"),
               code<&KivAssociationRole::containment, containmentNames>("containment"),
               member<&KivAssociationRole::constraint>("constraint"), reference<&KivAssociationRole::key>("key"),
               Field<KivAssociationRole>{"qualifiers", readQualifiers}));

constexpr auto associationFields = withCommonFields(fieldTable(
    knownKind<KivAssociation>(), member<&KivAssociation::isAggregation>("isAggregation"),
    member<&KivAssociation::constraint>("constraint"), reference<&KivAssociation::associationClass>("associationClass"),
    Field<KivAssociation>{"roles", [](Builder& builder, KivAssociation& association, Value& value) {
                              readElements(builder, association.roles, value, roleFields);
                          }}));

constexpr auto generalizationFields = withCommonFields(
    fieldTable(knownKind<KivGeneralization>(), referenceList<&KivGeneralization::supertypes, KivClass>("supertypes"),
               referenceList<&KivGeneralization::subtypes, KivClass>("subtypes"),
               code<&KivGeneralization::visibility, visibilityNames>("visibility"),
               member<&KivGeneralization::isVirtual>("isVirtual"), member<&KivGeneralization::isFriend>("isFriend")));

constexpr auto dependencyFields =
    withCommonFields(fieldTable(knownKind<KivDependency>(), reference<&KivDependency::client>("client"),
                                reference<&KivDependency::supplier>("supplier")));

constexpr auto realizationFields =
    withCommonFields(fieldTable(knownKind<KivRealization>(), reference<&KivRealization::client>("client"),
                                reference<&KivRealization::supplier>("supplier")));

template <class Element, std::size_t Count>
KivObject* readElement(Builder& builder, Object& object, const std::array<Field<Element>, Count>& fields)
{
    auto* const element = builder.create<Element>();
    builder.readFields(object, *element, fields);
    return element;
}

} // namespace

KivObject* readAssociation(Builder& builder, Object& object)
{
    return readElement(builder, object, associationFields);
}

KivObject* readGeneralization(Builder& builder, Object& object)
{
    return readElement(builder, object, generalizationFields);
}

KivObject* readDependency(Builder& builder, Object& object)
{
    return readElement(builder, object, dependencyFields);
}

KivObject* readRealization(Builder& builder, Object& object)
{
    return readElement(builder, object, realizationFields);
}

std::vector<ObjectKeys> relationshipKeys()
{
    return {keysOf("association", associationFields),   keysOf("role", roleFields),
            keysOf("multiplicity", multiplicityFields), keysOf("generalization", generalizationFields),
            keysOf("dependency", dependencyFields),     keysOf("realization", realizationFields)};
}

} // namespace modelfile
