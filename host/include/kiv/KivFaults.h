#pragma once

#include "kiv/KivPackage.h"

#include <cstdint>
#include <string>
#include <vector>

/// What in a model an export takes as it stands and that is surely not meant so.
enum class KivFaultKind : std::uint8_t {
    NotWritten,      ///< elements or diagrams outside of the packages that are written
    DrawnOnly,       ///< classes on a written diagram that are not written themselves
    NoPlace,         ///< boxes on a written diagram that have no projection
    MissingEnd,      ///< a relation without one of its ends
    RoleCount,       ///< an association of other than two roles
    NoName,          ///< a class without a name
    SameName,        ///< a class with the name of one before it in its package
    Cycle,           ///< a class that inherits from itself, or a package that holds itself
    NegativeSize,    ///< a width, height, font size or length
    Bounds,          ///< a multiplicity whose lower bound is above the upper one
    UnknownCode,     ///< a number that is no code
    UnknownDataType, ///< a data type that is no identifier
};

/// The name of a kind as it stands in reports, such as `not-written`.
[[nodiscard]] __attribute__((visibility("default"))) const char* nameOf(KivFaultKind kind);

struct KivFault {
    KivFaultKind kind = KivFaultKind::NotWritten;
    const KivObject* object = nullptr; ///< what it is about, or what holds that
    const char* field = "";            ///< name of the field; empty: the object as a whole
    std::string text; ///< e.g. `the class "Order" has the name of another class of the package "Sales"`
};

/// The faults of a model whose mirrored collections are filled (see `connect`), package by package. The model is left
/// as it is.
[[nodiscard]] __attribute__((visibility("default"))) std::vector<KivFault> findFaults(const KivModel& model);
