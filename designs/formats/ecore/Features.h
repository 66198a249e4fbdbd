#pragma once

#include "designs/formats/ecore/Plan.h"

#include <pugixml.hpp>

namespace design::ecore {

/// Adds the structural features and operations of a class to its node.
void writeFeatures(Plan& plan, const Classifier& classifier, pugi::xml_node node, Report& report);

/// Adds the documentation of an element as the generators of code look for it, and tells what of it has no place.
void describe(const Element& element, std::string_view kind, pugi::xml_node node, Report& report);

/// Sets an attribute of XML, whose value is without signs that XML cannot hold.
void set(pugi::xml_node node, const char* name, std::string_view value);

} // namespace design::ecore
