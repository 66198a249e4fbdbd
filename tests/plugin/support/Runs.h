#pragma once

#include "plugin/support/ModelBuilder.h"

#include <cstdlib>
#include <string>
#include <vector>

/// Exports of a design that has some of everything, and what they leave behind.

using Names = std::vector<std::string>;

inline int runPlugin(KivModel& model, KivOptionList& options, KivLog& log)
{
    return KivIbmRationalRose98ExportDllInterface().run("any name", model, options, log);
}

/// What a run throws: the identifier's name and the argument.
inline std::string failureOf(KivModel& model, KivOptionList& options, KivLog& log)
{
    try {
        runPlugin(model, options, log);
        return "nothing";
    } catch (const KivException& exception) {
        return exception.getIdentifier().getName() + std::string(" ") + exception.getArgument().text();
    }
}

/// A minus sign marks those that are no design packages.
inline Names childNames(const KivPackage& package)
{
    Names names;
    for (const KivPackage* const child : package.childPackages) {
        const std::string name = child->getName().text();
        names.push_back(child->elementType == KivElementType::DesignPackage ? name : "-" + name);
    }
    return names;
}

/// The names that follow each occurrence of `opening`, in file order.
inline Names namesAfter(std::string_view file, std::string_view opening)
{
    Names names;
    for (std::size_t at = file.find(opening); at != std::string_view::npos; at = file.find(opening, at)) {
        at += opening.size();
        names.emplace_back(file.substr(at, file.find('"', at) - at));
    }
    return names;
}

/// What an export may leave behind in a model: numbers, marks.
inline void expectNoTraces(KivModel& model)
{
    class NumberSum : public KivTraversalOperation {
    public:
        void post_process(KivObject* object, void* /*context*/) override
        {
            if (object->isInstanceOf(KivElementType::ModelObject))
                sum += std::abs(static_cast<KivModelObject*>(object)->pid);
        }
        long sum = 0;
    };
    NumberSum numbers;
    model.depthTraversal(numbers, nullptr);
    EXPECT_EQ(numbers.sum, 0);
    for (const KivType* const type : model.types)
        EXPECT_EQ(type->generalPointer, nullptr) << type->getName().text();
}

/// Some of everything that the Logical View has, in two packages below `top`, or at the top of the model.
inline void fill(ModelBuilder& builder, KivPackage* top)
{
    KivDesignPackage* const orders = builder.package("Orders", top);
    KivDesignPackage* const stock = builder.package("Stock", top);
    KivType* const color = builder.enumeration("Color", {{"RED", "0"}, {"GREEN", "1"}});
    KivClass* const order = builder.addClass("Order", orders);
    KivClass* const item = builder.addClass("Item", stock);
    KivAttribute* const number = builder.attribute("number", order, builder.type("Number", "INTEGER"));
    builder.attribute("color", item, color);
    builder.argument("shade", builder.operation("paint", item)->arguments, color);
    KivAssociation* const holds = builder.association("holds", stock, order, item);
    holds->constraint = "at least one";
    holds->roles.at(0)->key = builder.key<KivForeignKey>("orderKey", order, {number});
    KivClassDiagram* const diagram = builder.diagram("Main", orders, {order, item, holds});
    builder.projection(order, diagram, 1000, 700, 300, 200);
    builder.projection(item, diagram, 400, 300, 300, 200);
    for (KivAssociationRole* const role : holds->roles)
        builder.lineProjection(role, diagram, "(1000,700)\r\n(400,300)");
}

/// The file of that design.
inline std::string referenceFile()
{
    ModelBuilder builder;
    fill(builder, builder.package("Logical View"));
    return exportedFile(builder.model);
}
