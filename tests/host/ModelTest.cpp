#include "Allocations.h"

#include "kiv/KivPackage.h"
#include "support/KivStringPrinting.h"

#include <algorithm>
#include <cstdint>
#include <gmock/gmock.h>
#include <map>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

template <class Element>
Element* make(KivModel& model, const char* name)
{
    auto* const element = model.create<Element>();
    element->setName(name);
    return element;
}

// Notes the names of the numbered objects, those entered as `name(` and those left as `)`.
class Recorder : public KivTraversalOperation {
public:
    void pre_process(KivObject* object, void*& /*context*/) override
    {
        if (object->isInstanceOf(KivElementType::ModelObject))
            text += std::string(object->getName().view()) + "(";
    }
    void post_process(KivObject* object, void* /*context*/) override
    {
        if (object->isInstanceOf(KivElementType::ModelObject))
            text += ")";
    }
    std::string text;
};

std::string traversalOf(KivObject& object)
{
    Recorder recorder;
    object.depthTraversal(recorder, nullptr);
    return recorder.text;
}

// A model that holds one or two of everything, each collection filled in another order than it is visited in.
class Traversal : public testing::Test {
protected:
    Traversal()
    {
        model.setName("M");
        package->addParentPackage(&model);
        inner->addParentPackage(package);
        other->addParentPackage(&model);
        auto* const diagram = make<KivClassDiagram>(model, "D");
        diagram->elements.add(class_); // drawing is not holding
        model.diagrams.add(make<KivDiagram>(model, "MD"));
        model.modelElements.add(make<KivClass>(model, "MC"));
        model.types.add(type);
        model.types.add(make<KivDerivedType>(model, "T2"));
        type->typeValues.add(make<KivTypeValue>(model, "v1"));
        type->typeValues.add(make<KivTypeValue>(model, "v2"));
        package->diagrams.add(diagram);
        package->notes.add(model.create<KivNote>());
        package->modelElements.add(association);
        package->modelElements.add(model.create<KivNote>());
        package->modelElements.add(class_);
        package->modelElements.add(make<KivGeneralization>(model, "G"));
        other->modelElements.add(make<KivDependency>(model, "De"));
        other->modelElements.add(make<KivRealization>(model, "Re"));

        class_->keys.add(make<KivForeignKey>(model, "k"));
        class_->parameters.add(make<KivArgument>(model, "p"));
        class_->operations.add(operation);
        class_->attributes.add(attribute);
        class_->attributes.add(make<KivAttribute>(model, "a2"));
        class_->keys.at(0)->attributes.add(attribute);
        attribute->type = type;
        attribute->position = 9;
        operation->arguments.add(make<KivArgument>(model, "x"));
        operation->arguments.add(make<KivArgument>(model, "y"));
        role->qualifiers.add(make<KivAttribute>(model, "q"));
        role->participant = class_;
        association->roles.add(make<KivAssociationRole>(model, "r2"));
        association->roles.add(role);
    }

    static constexpr const char* types = "T1(v1()v2())T2()";
    static constexpr const char* contents = "P(A(r2()r1(q()))C(a1()a2()o(x()y())p()k())G()I()D())O(De()Re())";

    KivModel model;
    KivDesignPackage* package = make<KivDesignPackage>(model, "P");
    KivDesignPackage* inner = make<KivDesignPackage>(model, "I");
    KivPackage* other = make<KivPackage>(model, "O");
    KivClass* class_ = make<KivClass>(model, "C");
    KivAttribute* attribute = make<KivAttribute>(model, "a1");
    KivOperation* operation = make<KivOperation>(model, "o");
    KivAssociation* association = make<KivAssociation>(model, "A");
    KivAssociationRole* role = make<KivAssociationRole>(model, "r1");
    KivType* type = make<KivBaseType>(model, "T1");
};

TEST_F(Traversal, VisitsWhatAnObjectHoldsInOrder)
{
    const std::string expected = std::string("M(") + types + "MC()" + contents + "MD())";
    EXPECT_EQ(traversalOf(model), expected);
    EXPECT_EQ(traversalOf(model), expected) << "a second time";
    EXPECT_EQ(traversalOf(*other), "O(De()Re())");
    EXPECT_EQ(traversalOf(*operation), "o(x()y())");
}

TEST_F(Traversal, VisitsEachObjectOnce)
{
    const std::string expected = traversalOf(model);
    model.types.add(type);                 // twice in a collection
    role->qualifiers.add(attribute);       // in two collections
    package->modelElements.add(nullptr);   // nobody
    other->modelElements.add(class_);      // in two packages
    other->childPackages.add(inner);       // a child of two packages
    inner->childPackages.add(&model);      // a tree that holds itself
    inner->modelElements.add(association); // in the middle of its own visit
    KivNote* const note = model.create<KivNote>();
    for (KivModelObject* const owner : std::initializer_list<KivModelObject*>{class_, role, type})
        owner->notes.add(note);
    std::string moved = expected;
    moved.replace(moved.find("q()"), 3, "q()a1()");
    moved.erase(moved.find("C(a1()") + 2, 4);
    EXPECT_EQ(traversalOf(model), moved);
}

TEST_F(Traversal, HandsTheContextDown)
{
    // Each object sets itself as the context of what it holds.
    struct Operation : KivTraversalOperation {
        void pre_process(KivObject* object, void*& context) override
        {
            parents[object] = static_cast<KivObject*>(context);
            context = object;
        }
        void post_process(KivObject* object, void* context) override { EXPECT_EQ(context, object); }
        std::map<KivObject*, KivObject*> parents;
    } operation_;
    KivNote start;
    model.depthTraversal(operation_, &start);
    const std::pair<KivObject*, KivObject*> rows[] = {{&model, &start},
                                                      {type, &model},
                                                      {package, &model},
                                                      {other, &model},
                                                      {inner, package},
                                                      {class_, package},
                                                      {association, package},
                                                      {package->diagrams.at(0), package},
                                                      {attribute, class_},
                                                      {operation, class_},
                                                      {role, association},
                                                      {role->qualifiers.at(0), role},
                                                      {type->typeValues.at(1), type},
                                                      {operation->arguments.at(1), operation}};
    for (const auto& [object, parent] : rows)
        EXPECT_EQ(operation_.parents.at(object), parent) << object->getName().text();
}

TEST(DeepTraversal, NeitherRecursesNorAllocates)
{
    constexpr long depth = 100'000;
    struct Counter : KivTraversalOperation {
        void pre_process(KivObject* /*object*/, void*& context) override
        {
            const std::uintptr_t level = reinterpret_cast<std::uintptr_t>(context) + 1;
            context = reinterpret_cast<void*>(level);
            deepest = std::max(deepest, level);
        }
        void post_process(KivObject* /*object*/, void* /*context*/) override { ++left; }
        std::uintptr_t deepest = 0;
        long left = 0;
    } counter;
    KivModel model;
    KivPackage* last = &model;
    for (long i = 0; i < depth; ++i) {
        auto* const package = model.create<KivDesignPackage>();
        last->addChildPackage(package);
        last = package;
    }
    last->modelElements.add(model.create<KivClass>());
    const std::size_t before = allocationCount();
    model.depthTraversal(counter, nullptr);
    EXPECT_EQ(allocationCount(), before);
    EXPECT_EQ(counter.left, depth + 2);
    EXPECT_EQ(counter.deepest, std::uintptr_t{depth + 2});
}

class Packages : public testing::Test {
protected:
    using Children = std::vector<KivPackage*>;
    static Children childrenOf(const KivPackage& package)
    {
        return {package.childPackages.begin(), package.childPackages.end()};
    }

    KivModel model;
    KivPackage* a = make<KivPackage>(model, "a");
    KivPackage* b = make<KivPackage>(model, "b");
    KivPackage* x = make<KivPackage>(model, "x");
    KivPackage* y = make<KivPackage>(model, "y");
};

TEST_F(Packages, HaveOneParent)
{
    a->addChildPackage(x);
    y->addParentPackage(a);
    EXPECT_THAT(childrenOf(*a), ElementsAre(x, y));
    a->addChildPackage(x); // again
    EXPECT_THAT(childrenOf(*a), ElementsAre(x, y));
    b->addChildPackage(x);
    EXPECT_THAT(childrenOf(*a), ElementsAre(y));
    EXPECT_THAT(childrenOf(*b), ElementsAre(x));
    EXPECT_EQ(x->getParent(), b);
    EXPECT_EQ(a->childPackages.find("x"), nullptr);
    EXPECT_EQ(b->childPackages.find("x"), x);

    a->removeChildPackage(x); // which is not there
    EXPECT_EQ(x->getParent(), b);
    b->removeChildPackage(x);
    EXPECT_EQ(x->getParent(), nullptr);
    EXPECT_TRUE(b->childPackages.isEmpty());
    x->addParentPackage(a);
    EXPECT_THAT(childrenOf(*a), ElementsAre(y, x));

    x->setName("other"); // found where it is now
    EXPECT_EQ(a->childPackages.find("other"), x);

    b->childPackages.add(x); // past the operations
    b->addChildPackage(x);
    EXPECT_THAT(childrenOf(*b), ElementsAre(x)) << "as a child once only";
    EXPECT_THAT(childrenOf(*a), ElementsAre(y));
}

TEST_F(Packages, AreFoundUnderTheirNewNames)
{
    for (int i = 0; i < 30; ++i) // more than are searched one by one
        a->addChildPackage(make<KivPackage>(model, "filler"));
    KivPackage* const filler = a->childPackages.at(0);
    a->addChildPackage(x);
    a->addChildPackage(y);
    EXPECT_EQ(a->childPackages.find("x"), x);
    y->setName("x");
    EXPECT_EQ(a->childPackages.find("x"), x) << "the first of a name is found";
    EXPECT_EQ(a->childPackages.find("y"), nullptr);
    x->setName("filler");
    EXPECT_EQ(a->childPackages.find("x"), y);
    EXPECT_EQ(a->childPackages.find("filler"), filler);
    filler->setName("");
    EXPECT_EQ(a->childPackages.find(""), filler);
    EXPECT_EQ(a->childPackages.find("filler"), a->childPackages.at(1));
    y->setName("X");
    EXPECT_EQ(a->childPackages.find("x"), nullptr) << "names are exact";
}

TEST_F(Packages, StayWhereTheyAreWhenThereIsNoMemory)
{
    for (std::size_t before = 0; before < 10; ++before) {
        a->addChildPackage(x);
        a->addChildPackage(y);
        bool isThrown = false;
        try {
            const RefusedAllocation refused(before);
            b->addChildPackage(x);
        } catch (const std::bad_alloc&) {
            isThrown = true;
        }
        EXPECT_THAT(childrenOf(*a), isThrown ? Children({x, y}) : Children({y}));
        EXPECT_THAT(childrenOf(*b), isThrown ? Children() : Children({x}));
        EXPECT_EQ(x->getParent(), isThrown ? a : b);
        for (KivPackage* const package : {x, y})
            package->getParent()->removeChildPackage(package);
        b->childPackages.removeAll();
    }
}

TEST(NewObjects, HaveTheHostsDefaults)
{
    const KivProjection projection;
    EXPECT_THAT((std::vector<int>{projection.lineColor, projection.fillColor, projection.fontColor, projection.fontSize,
                                  projection.x, projection.y, projection.width, projection.height}),
                ElementsAre(3342489, 13434879, 0, 10, 0, 0, 0, 0));
    EXPECT_EQ(projection.fontName, "Arial");
    EXPECT_EQ(KivClass().classType, 1);
    EXPECT_EQ(KivAttribute().containment, 2);
    EXPECT_EQ(KivAssociationRole().containment, 2);
}

} // namespace
