#pragma once

#include "designs/formats/ecore/Names.h"
#include "designs/formats/Format.h"

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace design::ecore {

/// What a classifier becomes.
enum class Metaclass : std::uint8_t {
    None,
    Class,
    DataType,
    Enum,
};

/// What one end of an association, or an attribute whose type is a class, becomes: a reference in the class at the
/// other end.
struct ReferencePlan {
    std::string name;
    const AssociationEnd* end = nullptr;  ///< where it leads to; null for an attribute
    const Attribute* attribute = nullptr; ///< null for an end
    const Classifier* owner = nullptr;
    const Classifier* type = nullptr;
    bool isContainment = false;
    const ReferencePlan* opposite = nullptr;
};

struct AttributePlan {
    std::string name;
    const Attribute* attribute = nullptr;
    std::string type;      ///< link
    std::string ecoreType; ///< the name of a type of Ecore; or empty
    const Classifier* enumeration = nullptr;
};

/// A class with its features under the names that they will have.
struct ClassPlan {
    Scope names;
    std::vector<const Classifier*> supertypes;
    std::vector<AttributePlan> attributes;
    std::deque<ReferencePlan> references; ///< which stay where they are
};

/// What becomes of each part of a design, settled before anything is written: references name each other by paths of
/// names.
class Plan {
public:
    Plan(const Writing& theWriting, Report& theReport);

    /// The package that the file is about. Those around it hold nothing else.
    [[nodiscard]] const Package& outermost() const { return *outermostPackage; }
    /// The packages in one, the placeholders among them.
    [[nodiscard]] std::vector<const Package*> packagesIn(const Package& package) const;
    [[nodiscard]] Metaclass metaclassOf(const Classifier& classifier) const;
    [[nodiscard]] const std::string& nameOf(const Element& element) const { return names.at(&element); }
    /// "#//shop/Order"; a link with the name of a feature behind it leads to that.
    [[nodiscard]] const std::string& pathOf(const Classifier& classifier) const { return paths.at(&classifier); }
    [[nodiscard]] const ClassPlan& classOf(const Classifier& classifier) const { return classes.at(&classifier); }
    /// A link to what a type means, and the name of a type of Ecore where it is one; never empty.
    struct TypeLink {
        std::string link;
        std::string ecoreType;
        const Classifier* classifier = nullptr;
    };
    [[nodiscard]] TypeLink typeOf(const Reference& type);
    /// Names of data types that are in no package of the design.
    [[nodiscard]] const std::vector<std::string>& furtherTypes() const { return furtherNames; }

private:
    void findOutermost();
    void leavePackage(const Package& package);
    void forEachPackageOfFile(const std::function<void(const Package&)>& visit) const;
    void findMetaclasses();
    void namePackage(const Package& package, const std::string& path);
    void planSupertypes();
    void dropCycles();
    void planAttributes();
    void planAssociation(const Association& association);
    void addReference(const Association& association, std::size_t end);
    void makeUniqueAmongInherited();
    struct SharedNames;
    [[nodiscard]] std::unordered_set<std::string> inheritedNames(const ClassPlan& plan, SharedNames& shared) const;

    const Writing& writing;
    Report& report;
    const Package* outermostPackage;
    const Package* placeholders = nullptr;          // which lie in the outermost one
    Scope classifierNames;                          // of the outermost package
    std::vector<const Classifier*> inOrder;         // those that become classes
    std::vector<const Classifier*> supertypesFirst; // the same
    std::unordered_map<const Classifier*, Metaclass> metaclasses;
    std::unordered_map<const Element*, std::string> names;
    std::unordered_map<const Classifier*, std::string> paths;
    std::unordered_map<const Classifier*, ClassPlan> classes;
    std::unordered_map<std::string, std::string> furtherTypesByName; // paths
    std::vector<std::string> furtherNames;
};

/// "size, now size2": what the report calls what has got another name.
[[nodiscard]] std::string renamed(std::string_view from, std::string_view to);

/// The name that the element has in the scope; the report says when that is not its own.
[[nodiscard]] std::string takeName(Scope& scope, const Element& element, std::string_view kind,
                                   std::string_view otherwise, Report& report);

/// The Java class of a data type, from the attribute or property that Rose files keep it in; or empty.
[[nodiscard]] std::string javaClassOf(const Classifier& dataType);

/// The value of a property that an Ecore tool keeps; empty when there is none.
[[nodiscard]] std::string_view propertyOf(const Element& element, std::string_view name);

} // namespace design::ecore
