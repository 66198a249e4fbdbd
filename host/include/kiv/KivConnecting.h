#pragma once

#include "kiv/KivPackage.h"

/// Fills the collections that mirror references, as an export expects them: a class's `generalizations`,
/// `realizations`, `dependencies` and `links`, and an attribute's `keys`. Each is filled in the order in which a pass
/// over the model meets the objects that hold the references. The collections are empty before.
__attribute__((visibility("default"))) void connect(KivModel& model);

/// A collection that does not hold what a pass over the model would put there.
struct KivUnconnected {
    const KivObject* owner = nullptr; ///< the class or attribute
    const char* collection = nullptr; ///< name of the field
};

/// The first class or attribute, in the order of a pass, with a collection that is not what `connect` makes of it; an
/// owner of null when there is none.
[[nodiscard]] __attribute__((visibility("default"))) KivUnconnected findUnconnected(KivModel& model);
