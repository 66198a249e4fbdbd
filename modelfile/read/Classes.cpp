#include "modelfile/read/Tables.h"

namespace modelfile {

namespace {

constexpr auto argumentFields =
    withCommonFields(fieldTable(member<&KivArgument::position>("position"), reference<&KivArgument::type>("type"),
                                member<&KivArgument::initialValue>("initialValue")));

template <auto Member>
constexpr Field<PendingKeyMapping> mappingReference(std::string_view key)
{
    return {key, [](Builder& builder, PendingKeyMapping& pending, Value& value) {
                using Type = std::remove_pointer_t<std::remove_reference_t<decltype(pending.mapping.*Member)>>;
                builder.references.referAtOnce(value, codeOf<Type>(), assignMember<Member, KivKeyMapping>,
                                               &pending.mapping);
            }};
}

constexpr auto keyMappingFields = fieldTable(mappingReference<&KivKeyMapping::key>("key"),
                                             mappingReference<&KivKeyMapping::counterpart>("counterpart"));

void readKeyMappings(Builder& builder, KivAttribute& attribute, Value& value)
{
    builder.readList(value, [&](Value& item, std::size_t /*index*/) {
        Object object = builder.readObject(item);
        PendingKeyMapping& pending = builder.keyMappings.emplace_back(PendingKeyMapping{&attribute, {}});
        builder.readFields(object, pending, keyMappingFields);
        builder.references.atEnd(
            [](void* owner, KivObject* /*none*/) {
                const auto& complete = *static_cast<PendingKeyMapping*>(owner);
                complete.attribute->keyMappings.add(complete.mapping);
            },
            &pending);
    });
}

constexpr auto attributeFields = withCommonFields(fieldTable(
    member<&KivAttribute::position>("position"), reference<&KivAttribute::type>("type"),
    member<&KivAttribute::initialValue>("initialValue"), code<&KivAttribute::visibility, visibilityNames>("visibility"),
    code<&KivAttribute::containment, containmentNames>("containment"), member<&KivAttribute::isStatic>("isStatic"),
    member<&KivAttribute::isDerived>("isDerived"), Field<KivAttribute>{"keyMappings", readKeyMappings}));

constexpr auto operationFields = withCommonFields(fieldTable(
    member<&KivOperation::position>("position"), code<&KivOperation::visibility, visibilityNames>("visibility"),
    code<&KivOperation::concurrency, concurrencyNames>("concurrency"), member<&KivOperation::isAbstract>("isAbstract"),
    member<&KivOperation::isFriend>("isFriend"), member<&KivOperation::isStatic>("isStatic"),
    member<&KivOperation::isVirtual>("isVirtual"), member<&KivOperation::semantics>("semantics"),
    member<&KivOperation::preCondition>("preCondition"), member<&KivOperation::postCondition>("postCondition"),
    reference<&KivOperation::returnType>("returnType"),
    Field<KivOperation>{"arguments", [](Builder& builder, KivOperation& operation, Value& value) {
                            readElements(builder, operation.arguments, value, argumentFields);
                        }}));

constexpr auto keyFields =
    withCommonFields(fieldTable(knownKind<KivKey>(), referenceList<&KivKey::attributes, KivAttribute>("attributes")));

void readKey(Builder& builder, KivClass& owner, Value& value)
{
    constexpr std::array<std::string_view, 2> kinds = {"candidateKey", "foreignKey"};
    Object object = builder.readObject(value);
    KivKey* key = nullptr;
    if (builder.readKind(object, kinds, 0) == 0)
        key = builder.create<KivCandidateKey>();
    else
        key = builder.create<KivForeignKey>();
    builder.readFields(object, *key, keyFields);
    owner.keys.add(key);
}

constexpr auto classFields = withCommonFields(
    fieldTable(knownKind<KivClass>(), code<&KivClass::classType, classTypeNames>("classType"),
               code<&KivClass::visibility, classVisibilityNames>("visibility"),
               code<&KivClass::concurrency, concurrencyNames>("concurrency"), member<&KivClass::space>("space"),
               member<&KivClass::isAbstract>("isAbstract"), member<&KivClass::isPersistent>("isPersistent"),
               member<&KivClass::cardinality>("cardinality"),
               Field<KivClass>{"attributes",
                               [](Builder& builder, KivClass& target, Value& value) {
                                   readElements(builder, target.attributes, value, attributeFields);
                               }},
               Field<KivClass>{"operations",
                               [](Builder& builder, KivClass& target, Value& value) {
                                   readElements(builder, target.operations, value, operationFields);
                               }},
               Field<KivClass>{"parameters",
                               [](Builder& builder, KivClass& target, Value& value) {
                                   readElements(builder, target.parameters, value, argumentFields);
                               }},
               Field<KivClass>{"keys", [](Builder& builder, KivClass& target, Value& value) {
                                   builder.readList(value, [&](Value& item, std::size_t /*index*/) {
                                       readKey(builder, target, item);
                                   });
                               }}));

} // namespace

KivObject* readClass(Builder& builder, Object& object)
{
    auto* const made = builder.create<KivClass>();
    builder.readFields(object, *made, classFields);
    return made;
}

void readQualifiers(Builder& builder, KivAssociationRole& role, Value& value)
{
    readElements(builder, role.qualifiers, value, attributeFields);
}

std::vector<ObjectKeys> classKeys()
{
    return {keysOf("class", classFields),           keysOf("attribute", attributeFields),
            keysOf("keyMapping", keyMappingFields), keysOf("operation", operationFields),
            keysOf("argument", argumentFields),     keysOf("key", keyFields)};
}

} // namespace modelfile
