#include "logical/LogicalView.h"

#include "model/PositionOrder.h"
#include "petal/PetalWriter.h"
#include "petal/RoseKeywords.h"
#include "types/TypeNames.h"

namespace {

// Every operation is of the one kind that the code generator knows by this number.
void printOperationKind()
{
    flatList("attributes \t(list Attribute_Set", [] {
        object([] {
            line("\t(object Attribute");
            line("\ttool\t\"cg\"");
            line("\tname\t\"OperationKind\"");
            line("\tvalue\t(\"OperationKindSet\" 201)");
        });
    });
}

//     semantics\t(object Semantic_Info
//     \tPDL\t"return count;"
//     )
void printSemanticInfo(const char* opening, const KivString& text)
{
    line(opening);
    line("\tPDL\t", makeRoseDesc(text));
    line(")");
}

//     (object Parameter "count"
//     type\t"int"
//     initv\t"0")
void printParameter(const KivArgument& parameter)
{
    object([&] {
        line("(object Parameter ", quoted(parameter.getName()));
        if (parameter.type)
            line("type\t", quoted(getTypeString(parameter.type)));
        if (!parameter.initialValue.isEmpty())
            line("initv\t", makeRoseDesc(parameter.initialValue));
    });
}

} // namespace

void printParameters(const KivLinkTree<KivArgument>& parameters)
{
    if (parameters.isEmpty())
        return;
    list("parameters \t(list Parameters", [&] {
        for (const KivArgument* const parameter : argumentsByPosition(parameters))
            printParameter(*parameter);
    });
}

//     (object Operation\t"cancel"
//     attributes \t(list Attribute_Set ...)
//     quid\t"3449E000001A"
//     parameters \t(list Parameters ...)
//     result\t"bool"
//     concurrency\t"Sequential"
//     opExportControl\t"Public"
//     uid\t\t0)
int printOperations(KivOperation* operation)
{
    object([&] {
        line("(object Operation\t", quoted(operation->getName()));
        printOperationKind();
        line("quid\t", quoted(makeQuid(iquid, operation->pid)));
        if (!operation->description.isEmpty())
            line("documentation\t", makeRoseDesc(operation->description));
        if (!operation->stereotype.isEmpty())
            line("stereotype\t", quoted(operation->stereotype));
        printParameters(operation->arguments);
        if (operation->returnType)
            line("result\t", quoted(getTypeString(operation->returnType)));
        line("concurrency\t", keyword(concurrencyKeywords, operation->concurrency));
        if (!operation->preCondition.isEmpty())
            printSemanticInfo("pre_condition\t(object Semantic_Info", operation->preCondition);
        if (!operation->postCondition.isEmpty())
            printSemanticInfo("post_condition\t(object Semantic_Info", operation->postCondition);
        if (!operation->semantics.isEmpty())
            printSemanticInfo("semantics\t(object Semantic_Info", operation->semantics);
        line("opExportControl\t", keyword(visibilityKeywords, operation->visibility));
        if (operation->isFriend)
            line("friend\tTRUE");
        if (operation->isAbstract)
            line("abstract\tTRUE");
        if (operation->isVirtual)
            line("virtual\tTRUE");
        if (operation->isStatic)
            line("static\tTRUE");
        line("uid\t\t0");
    });
    return 1;
}
