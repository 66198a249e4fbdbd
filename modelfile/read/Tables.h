#pragma once

#include "kiv/KivModelFile.h"
#include "modelfile/read/ObjectFields.h"

// What the tables of keys, one file for each kind of object, give each other.

namespace modelfile {

void readType(Builder& builder, KivModel& model, Value& value);
void readQualifiers(Builder& builder, KivAssociationRole& role, Value& value);
[[nodiscard]] KivObject* readClass(Builder& builder, Object& object);
[[nodiscard]] KivObject* readAssociation(Builder& builder, Object& object);
[[nodiscard]] KivObject* readGeneralization(Builder& builder, Object& object);
[[nodiscard]] KivObject* readDependency(Builder& builder, Object& object);
[[nodiscard]] KivObject* readRealization(Builder& builder, Object& object);
void readDiagrams(Builder& builder, KivPackage& package, Value& value);
void readModelElements(Builder& builder, KivPackage& package, Value& value);
[[nodiscard]] KivPackage* readPackage(Builder& builder, Value& value, std::size_t level);
/// Each class diagram of a package is told which one lists it.
void setDiagramPackages(KivPackage& package);

[[nodiscard]] std::vector<ObjectKeys> projectionKeys();
[[nodiscard]] std::vector<ObjectKeys> typeKeys();
[[nodiscard]] std::vector<ObjectKeys> classKeys();
[[nodiscard]] std::vector<ObjectKeys> relationshipKeys();
[[nodiscard]] std::vector<ObjectKeys> diagramKeys();
[[nodiscard]] std::vector<ObjectKeys> packageKeys();
/// What is noted besides while a model file is read, unless it is null.
struct AlsoWanted {
    ObjectPlaces* places = nullptr; ///< behind a byte order mark
    KivIds* ids = nullptr;
};
[[nodiscard]] LoadedModel parse(const std::string& text, const std::string& name, const AlsoWanted& wanted);

/// All of them, and those of the model.
[[nodiscard]] std::vector<ObjectKeys> modelFileKeys();

} // namespace modelfile
