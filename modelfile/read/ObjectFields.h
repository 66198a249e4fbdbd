#pragma once

#include "modelfile/read/Builder.h"

#include <limits>

// Entries for the tables of keys: members of an object, references, lists, and what every model object has.

/// Elements that were made for the list they are put into, and so are not there yet.
struct KivNewElements {
    template <class Element>
    static void add(KivSequenceOf<Element>& elements, Element* element)
    {
        elements.append(element);
    }
};

namespace modelfile {

template <class Member>
struct MemberOf;
template <class Class, class Type>
struct MemberOf<Type Class::*> {
    using Owner = Class;
};

template <auto Member, class Target>
void readMember(Builder& builder, Target& target, Value& value)
{
    auto& member = target.*Member;
    using Type = std::remove_reference_t<decltype(member)>;
    if constexpr (std::is_same_v<Type, bool>)
        member = Builder::readBool(value);
    else if constexpr (std::is_same_v<Type, KivString>)
        member = KivString(builder.readText(value));
    else
        member = Builder::readInteger<Type>(value);
}

template <auto Member, class Target>
void assignMember(void* owner, KivObject* object)
{
    auto& member = static_cast<Target*>(owner)->*Member;
    member = static_cast<std::remove_reference_t<decltype(member)>>(object);
}

template <class Type>
constexpr KivElementType codeOf()
{
    if constexpr (std::is_same_v<Type, KivType>)
        return KivElementType::Type;
    else if constexpr (std::is_same_v<Type, KivClass>)
        return KivElementType::Class;
    else if constexpr (std::is_same_v<Type, KivKey>)
        return KivElementType::Key;
    else if constexpr (std::is_same_v<Type, KivAttribute>)
        return KivElementType::Attribute;
    else if constexpr (std::is_same_v<Type, KivClassDiagram>)
        return KivElementType::ClassDiagram;
    else
        return KivElementType::ModelObject;
}

/// A text, a flag or a number.
template <auto Member>
constexpr auto member(std::string_view key)
{
    using Target = typename MemberOf<decltype(Member)>::Owner;
    return Field<Target>{key, readMember<Member, Target>};
}

/// A number that has names.
template <auto Member, const auto& Names>
constexpr auto code(std::string_view key)
{
    using Target = typename MemberOf<decltype(Member)>::Owner;
    return Field<Target>{
        key, [](Builder& builder, Target& target, Value& value) { target.*Member = builder.readCode(value, Names); }};
}

template <auto Member>
constexpr auto reference(std::string_view key)
{
    using Target = typename MemberOf<decltype(Member)>::Owner;
    return Field<Target>{key, [](Builder& builder, Target& target, Value& value) {
                             using Type = std::remove_pointer_t<std::remove_reference_t<decltype(target.*Member)>>;
                             builder.references.referAtOnce(value, codeOf<Type>(), assignMember<Member, Target>,
                                                            &target);
                         }};
}

/// A collection of references to objects of the class `Element`.
template <auto Member, class Element>
constexpr auto referenceList(std::string_view key)
{
    using Target = typename MemberOf<decltype(Member)>::Owner;
    return Field<Target>{key, [](Builder& builder, Target& target, Value& value) {
                             constexpr auto add = [](void* owner, KivObject* object) {
                                 (static_cast<Target*>(owner)->*Member).add(static_cast<Element*>(object));
                             };
                             builder.readList(value, [&](Value& item, std::size_t /*index*/) {
                                 builder.references.refer(item, codeOf<Element>(), add, &target);
                             });
                         }};
}

/// The entry for `kind`, which was looked up before the object was made.
template <class Target>
constexpr Field<Target> knownKind()
{
    return {"kind", [](Builder& builder, Target& /*target*/, Value& value) { (void)builder.readText(value); }};
}

void readNotes(Builder& builder, KivVector<KivNote>& notes, Value& value);
void readProjections(Builder& builder, KivVector<KivProjection>& projections, Value& value);

/// `own` behind the keys that every model object has.
template <class Target, std::size_t Own>
constexpr auto withCommonFields(const std::array<Field<Target>, Own>& own)
{
    constexpr std::size_t commonCount = 7;
    std::array<Field<Target>, commonCount + Own> fields = {
        Field<Target>{"id",
                      [](Builder& builder, Target& target, Value& value) {
                          if constexpr (requires { target.takeId(builder, value); })
                              target.takeId(builder, value);
                          else
                              builder.references.takeId(value, &target);
                      }},
        Field<Target>{"name", [](Builder& builder, Target& target,
                                 Value& value) { target.setName(KivString(builder.readText(value))); }},
        Field<Target>{"description", readMember<&KivObject::description, Target>},
        Field<Target>{"stereotype", readMember<&KivModelObject::stereotype, Target>},
        Field<Target>{"modelLevel", readMember<&KivModelObject::modelLevel, Target>},
        Field<Target>{"notes",
                      [](Builder& builder, Target& target, Value& value) { readNotes(builder, target.notes, value); }},
        Field<Target>{"projections", [](Builder& builder, Target& target,
                                        Value& value) { readProjections(builder, target.projections, value); }},
    };
    std::copy(own.begin(), own.end(), fields.begin() + commonCount);
    return fields;
}

/// The objects of a list while it is read; their collection gets them when their number is known, and no more room than
/// they need.
template <class Element>
class MadeObjects {
public:
    explicit MadeObjects(Builder& builder) : stack(builder.unfinished), start(stack.size()) {}
    ~MadeObjects() { stack.resize(start); }
    MadeObjects(const MadeObjects&) = delete;
    MadeObjects& operator=(const MadeObjects&) = delete;

    void add(Element* element) { stack.push_back(element); }
    template <class Elements>
    void moveTo(Elements& elements) const
    {
        if (stack.size() == start)
            return; // an empty collection has no memory
        elements.reserve(stack.size() - start);
        for (std::size_t i = start; i < stack.size(); ++i)
            KivNewElements::add(elements, static_cast<Element*>(stack[i]));
    }

private:
    std::vector<KivObject*>& stack;
    std::size_t start;
};

/// What `position` is where the file does not tell it.
[[nodiscard]] constexpr std::int16_t defaultPosition(std::size_t index)
{
    return static_cast<std::int16_t>(std::min<std::size_t>(index, std::numeric_limits<std::int16_t>::max()));
}

/// Reads a list of objects of one class into `elements`.
template <class Element, class Elements, std::size_t Count>
void readElements(Builder& builder, Elements& elements, Value& value, const std::array<Field<Element>, Count>& fields)
{
    MadeObjects<Element> made(builder);
    builder.readList(value, [&](Value& item, std::size_t index) {
        Object object = builder.readObject(item);
        auto* const element = builder.create<Element>();
        if constexpr (requires { element->position; })
            element->position = defaultPosition(index);
        builder.readFields(object, *element, fields);
        made.add(element);
    });
    made.moveTo(elements);
}

/// The keys that the reader knows in one kind of object, for the test that holds reader and schema together.
struct ObjectKeys {
    std::string_view objectKind;
    std::vector<std::string_view> keys;
};

template <class Target, std::size_t Count>
ObjectKeys keysOf(std::string_view objectKind, const std::array<Field<Target>, Count>& fields)
{
    ObjectKeys result{objectKind, {}};
    for (const auto& field : fields)
        result.keys.push_back(field.key.view());
    return result;
}

} // namespace modelfile
