#include "designs/convert/Classes.h"

#include "designs/convert/Documentation.h"
#include "designs/model/Texts.h"

namespace design {

namespace {

int classTypeOf(ClassForm form)
{
    switch (form) {
    case ClassForm::Parameterized:
        return KivClassType::ParameterizedClass;
    case ClassForm::Instantiated:
        return KivClassType::InstantiatedClass;
    case ClassForm::Utility:
        return KivClassType::ClassUtility;
    case ClassForm::ParameterizedUtility:
        return KivClassType::ParameterizedClassUtility;
    case ClassForm::InstantiatedUtility:
        return KivClassType::InstantiatedClassUtility;
    case ClassForm::Metaclass:
        return KivClassType::Metaclass;
    case ClassForm::Data:
        return KivClassType::DataClass;
    case ClassForm::Plain:
        break;
    }
    return KivClassType::Class;
}

int numberOf(Concurrency concurrency)
{
    switch (concurrency) {
    case Concurrency::Sequential:
        return KivConcurrency::Sequential;
    case Concurrency::Guarded:
        return KivConcurrency::Guarded;
    case Concurrency::Active:
        return KivConcurrency::Active;
    case Concurrency::Synchronous:
        break;
    }
    return KivConcurrency::Synchronous;
}

Kind countedAs(ClassifierKind kind)
{
    switch (kind) {
    case ClassifierKind::Interface:
        return Kind::Interfaces;
    case ClassifierKind::DataType:
    case ClassifierKind::PrimitiveType:
        return Kind::DataTypes;
    case ClassifierKind::Enumeration:
        return Kind::Enumerations;
    case ClassifierKind::Class:
    case ClassifierKind::AssociationClass:
    case ClassifierKind::Actor:
    case ClassifierKind::UseCase:
        break;
    }
    return Kind::Classes;
}

} // namespace

// The literals of an enumeration that is a class stand before its attributes, as attributes without a type. The
// attributes that identify an object are its candidate key.
void ClassConverter::fill(KivClass& target, const Classifier& classifier)
{
    builder.count(countedAs(classifier.kind));
    builder.describe(target, classifier, documentationOf(classifier), stereotypeFor(classifier.kind));
    if (classifier.kind == ClassifierKind::Interface)
        target.classType = KivClassType::Interface;
    else if (classifier.form != ClassForm::Plain)
        target.classType = classTypeOf(classifier.form);
    else if (!classifier.templateParameters.empty() && !classifier.staysClass)
        target.classType = KivClassType::ParameterizedClass;
    target.visibility = numberOf(classifier.visibility);
    target.isAbstract = classifier.isAbstract;
    target.concurrency = numberOf(classifier.concurrency);
    target.isPersistent = classifier.isPersistent;
    target.cardinality = builder.text(classifier, classifier.cardinality);
    target.space = classifier.space;
    for (const Literal& literal : classifier.literals)
        addLiteral(target.attributes, literal);
    KivCandidateKey* key = nullptr;
    for (const Attribute& attribute : classifier.attributes) {
        KivAttribute* const added = addTo(target.attributes, attribute);
        if (!attribute.isIdentifier)
            continue;
        if (!key) {
            key = builder.create<KivCandidateKey>();
            target.keys.add(key);
        }
        key->attributes.add(added);
    }
    for (const Operation& operation : classifier.operations)
        addOperation(target, operation);
    for (const Parameter& parameter : classifier.templateParameters)
        addParameter(target.parameters, parameter);
}

void ClassConverter::addLiteral(KivVector<KivAttribute>& attributes, const Literal& literal)
{
    builder.count(Kind::Literals);
    auto* const attribute = builder.create<KivAttribute>(literal, documentationOf(literal));
    attribute->initialValue = builder.text(literal, literal.value);
    attribute->position = nextPosition(attributes);
    attributes.add(attribute);
}

KivAttribute* ClassConverter::addTo(KivVector<KivAttribute>& attributes, const Attribute& attribute)
{
    builder.count(Kind::Attributes);
    auto* const added = builder.create<KivAttribute>(attribute, documentationOf(attribute));
    added->type = types.typeOf(attribute.type);
    added->initialValue = builder.text(attribute, attribute.initialValue);
    added->visibility = numberOf(attribute.visibility);
    added->containment = numberOf(attribute.containment);
    added->isStatic = attribute.isStatic;
    added->isDerived = attribute.isDerived;
    added->position = nextPosition(attributes);
    attributes.add(added);
    return added;
}

void ClassConverter::addOperation(KivClass& target, const Operation& operation)
{
    builder.count(Kind::Operations);
    auto* const added = builder.create<KivOperation>(operation, documentationOf(operation));
    added->visibility = numberOf(operation.visibility);
    added->isAbstract = operation.isAbstract;
    added->isStatic = operation.isStatic;
    added->isVirtual = operation.isVirtual;
    added->isFriend = operation.isFriend;
    added->concurrency = numberOf(operation.concurrency);
    added->semantics = builder.text(operation, operation.semantics);
    added->preCondition = builder.text(operation, operation.preCondition);
    added->postCondition = builder.text(operation, operation.postCondition);
    added->returnType = types.typeOf(operation.returnType);
    for (const Parameter& parameter : operation.parameters)
        addParameter(added->arguments, parameter);
    added->position = nextPosition(target.operations);
    target.operations.add(added);
}

void ClassConverter::addParameter(KivLinkTree<KivArgument>& arguments, const Parameter& parameter)
{
    builder.count(Kind::Parameters);
    auto* const added = builder.create<KivArgument>(parameter, parameter.documentation);
    added->type = types.typeOf(parameter.type);
    added->initialValue = builder.text(parameter, parameter.initialValue);
    added->position = nextPosition(arguments);
    arguments.add(added);
}

} // namespace design
