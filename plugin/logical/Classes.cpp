#include "logical/LogicalView.h"

#include "model/ExportState.h"
#include "model/NumberBlocks.h"
#include "model/PositionOrder.h"
#include "model/WrittenElements.h"
#include "petal/PetalWriter.h"
#include "petal/RoseKeywords.h"
#include "types/TypeNames.h"

#include <algorithm>

namespace {

//     (object Inheritance_Relationship
//     quid       \t"3449E8000068"
//     label      \t""
//     supplier   \t"Vehicle"
//     quidu      \t"3449E200001A"
//     exportControl \t"Public")
void printSuperclass(const KivGeneralization& generalization, long number, const KivClass& supertype)
{
    object([&] {
        line("(object Inheritance_Relationship");
        line("quid       \t", quoted(makeQuid(nquid, number)));
        if (!generalization.description.isEmpty())
            line("documentation \t", makeRoseDesc(generalization.description));
        if (!generalization.stereotype.isEmpty())
            line("stereotype\t", quoted(generalization.stereotype));
        line("label      \t", quoted(generalization.getName()));
        line("supplier   \t", quoted(supertype.getName()));
        line("quidu      \t", quoted(makeQuid(equid, supertype.pid)));
        line("exportControl \t", keyword(visibilityKeywords, generalization.visibility));
        if (generalization.isVirtual)
            line("virtual\tTRUE");
        if (generalization.isFriend)
            line("friend\tTRUE");
    });
}

// The relationship of a subtype to a supertype has a number of its own, the one that its view on a diagram refers to.
void printSuperclasses(const KivGeneralization& generalization, const KivClass& theClass)
{
    if (isHidden(generalization))
        return;
    const GeneralizationBlock block(generalization);
    const std::size_t subtype = std::min(generalization.subtypes.indexOf(&theClass), generalization.subtypes.count());
    for (std::size_t k = 0; k < generalization.supertypes.count(); ++k)
        if (const KivClass* const supertype = generalization.supertypes.at(k))
            printSuperclass(generalization, block.pair(k, subtype), *supertype);
}

void printSuperclassList(const KivClass& theClass)
{
    if (theClass.generalizations.isEmpty())
        return;
    list("superclasses \t(list inheritance_relationship_list", [&] {
        for (const KivGeneralization* const generalization : theClass.generalizations)
            if (generalization)
                printSuperclasses(*generalization, theClass);
    });
}

// A relationship that lacks an end is none.
template <class Relationship>
bool isComplete(const Relationship& relationship)
{
    return relationship.client && relationship.supplier;
}

//     (object Realize_Relationship
//     quid       \t"3449E0000068"
//     supplier   \t"Printable"
//     quidu      \t"3449E200001A")
void printRealization(const KivRealization& realization)
{
    object([&] {
        line("(object Realize_Relationship");
        line("quid       \t", quoted(makeQuid(iquid, realization.pid)));
        line("supplier   \t", quoted(realization.supplier->getName()));
        line("quidu      \t", quoted(makeQuid(equid, realization.supplier->pid)));
    });
}

void printRealizedInterfaces(const KivClass& theClass)
{
    listOf("realized_interfaces \t(list realize_rel_list", theClass.realizations, isComplete<KivRealization>,
           printRealization);
}

//     (object Uses_Relationship
//     quid       \t"3449E0000068"
//     label      \t"reads"
//     supplier   \t"Clock"
//     quidu      \t"3449E200001A")
void printDependency(const KivDependency& dependency)
{
    object([&] {
        line("(object Uses_Relationship");
        line("quid       \t", quoted(makeQuid(iquid, dependency.pid)));
        if (!dependency.description.isEmpty())
            line("documentation \t", makeRoseDesc(dependency.description));
        if (!dependency.stereotype.isEmpty())
            line("stereotype\t", quoted(dependency.stereotype));
        line("label      \t", quoted(dependency.getName()));
        line("supplier   \t", quoted(dependency.supplier->getName()));
        line("quidu      \t", quoted(makeQuid(equid, dependency.supplier->pid)));
    });
}

void printUsedClasses(const KivClass& theClass)
{
    listOf("used_nodes \t(list uses_relationship_list", theClass.dependencies, isComplete<KivDependency>,
           printDependency);
}

//     abstract\tTRUE
//     cardinality \t(value Cardinality "0..1")
//     exportControl\t"Public"
//     concurrency\t"Sequential"
//     space\t"4"
void printTypedClassProperties(const KivClass& theClass)
{
    if (theClass.isAbstract)
        line("abstract\tTRUE");
    if (!theClass.cardinality.isEmpty() && theClass.cardinality != "0")
        line("cardinality \t(value Cardinality ", quoted(theClass.cardinality), ")");
    line("exportControl\t", keyword(classVisibilityKeywords, theClass.visibility));
    line("concurrency\t", keyword(concurrencyKeywords, theClass.concurrency));
    if (theClass.space != 0)
        line("space\t\"", theClass.space, "\"");
}

void printOperationList(const KivClass& theClass)
{
    if (theClass.operations.isEmpty())
        return;
    KivOperationByPosition operations;
    theClass.getOperationByPosition(operations);
    list("operations\t(list Operations", [&] {
        for (KivOperation* const operation : operations)
            printOperations(operation);
    });
}

bool isInForeignKey(const KivAttribute& attribute)
{
    return std::any_of(attribute.keys.begin(), attribute.keys.end(),
                       [](const KivKey* key) { return key && key->elementType == KivElementType::ForeignKey; });
}

bool isExported(const KivAttribute& attribute)
{
    return !isHidden(attribute) && (exportFKattr || !isInForeignKey(attribute));
}

void printAttributeList(const KivClass& theClass)
{
    listOf("class_attributes \t(list class_attribute_list", attributesByPosition(theClass), isExported,
           [](KivAttribute& attribute) { printAttributes(&attribute); });
}

} // namespace

//     (object Class "Order"
//     quid\t"3449E200001A"
//     superclasses \t(list inheritance_relationship_list ...)
//     exportControl\t"Public"
//     concurrency\t"Sequential"
//     operations\t(list Operations ...)
//     class_attributes \t(list class_attribute_list ...)
//     language    "C++")
int printClasses(KivClass* theClass)
{
    if (isHidden(*theClass))
        return 1;
    const bool typed = theClass->classType != dataClassType;
    object([&] {
        line("(object ", keyword(classKinds, theClass->classType), " ", quoted(theClass->getName()));
        line("quid\t", quoted(makeQuid(equid, theClass->pid)));
        if (!theClass->description.isEmpty())
            line("documentation\t", makeRoseDesc(theClass->description));
        if (!theClass->stereotype.isEmpty())
            line("stereotype\t", quoted(theClass->stereotype));
        else if (theClass->classType == interfaceClassType)
            line("stereotype\t\"Interface\"");
        printSuperclassList(*theClass);
        printRealizedInterfaces(*theClass);
        printUsedClasses(*theClass);
        if (theClass->isPersistent)
            line("persistence\t\"Persistent\"");
        if (typed)
            printTypedClassProperties(*theClass);
        if (typed)
            printOperationList(*theClass);
        printAttributeList(*theClass);
        if (typed)
            printParameters(theClass->parameters);
        line("language    ", isCppTypeSystem() ? "\"C++\"" : "\"Java\"");
    });
    return 1;
}
