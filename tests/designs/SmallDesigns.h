#pragma once

#include "designs/model/Design.h"

#include <string>
#include <vector>

/// Designs as readers hand them over, made by hand.

inline design::Classifier classNamed(const std::string& name)
{
    design::Classifier classifier;
    classifier.id = name;
    classifier.name = name;
    return classifier;
}

inline design::Relationship generalization(const std::string& subtype, const std::string& supertype)
{
    design::Relationship relationship;
    relationship.id = subtype + " is " + supertype;
    relationship.kind = design::RelationshipKind::Generalization;
    relationship.client.id = subtype;
    relationship.supplier.id = supertype;
    return relationship;
}

inline design::Association association(const std::string& a, const std::string& b)
{
    design::Association association;
    association.id = a + " has " + b;
    association.ends.resize(2);
    association.ends[0].participant.id = a;
    association.ends[1].participant.id = b;
    return association;
}

/// A diagram of classes without places.
inline design::Diagram diagramOf(const std::vector<std::string>& classes)
{
    design::Diagram diagram;
    diagram.id = "diagram";
    for (const std::string& id : classes)
        diagram.boxes.push_back({id, std::nullopt, {}});
    return diagram;
}

/// One package with these classes.
inline design::Design designOf(const std::vector<design::Classifier>& classifiers)
{
    design::Design design;
    design.root.packages.resize(1);
    design.root.packages[0].name = "package";
    design.root.packages[0].classifiers = classifiers;
    return design;
}
