#pragma once

#include "kiv/KivPackage.h"

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Model files: a host model as JSON, field for field, read and written. `docs/model-file.md` says what may stand in
/// one. Whatever a host holds can be written, to be kept, to be looked at, or to be sent along with a fault report.

/// The content of a model file is not what it has to be. The message names the file, the place and the reason:
/// `FILE:POINTER: expected ..., found ...`, or `FILE:LINE:COLUMN: ...` where the JSON itself is broken.
class __attribute__((visibility("default"))) ModelFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A model read from a file.
struct LoadedModel {
    std::unique_ptr<KivModel> model; ///< complete: the collections that mirror references are filled
    std::size_t bytes = 0;           ///< size of the file
    std::size_t objects = 0;         ///< model objects in it, the model itself included
};

/// Reads a model file, or standard input when `path` is `-`. Throws `ModelFileError`, and `std::system_error` with the
/// path when the file cannot be read.
[[nodiscard]] __attribute__((visibility("default"))) LoadedModel loadModel(const std::string& path);

/// The same for a text in memory; `name` stands for the file in messages. A string whose capacity leaves room for 64
/// bytes behind the text is read where it is, another one is copied.
[[nodiscard]] __attribute__((visibility("default"))) LoadedModel parseModel(const std::string& text,
                                                                            const std::string& name);

/// Gives the id of an object, or the empty text for an object that has none. Ids must differ.
using KivIdOf = std::function<std::string(const KivObject&)>;

/// Something that a model file cannot say, and that is not in it for that reason.
struct ModelFileLoss {
    std::string object; ///< e.g. `class Bank/Account`
    std::string reason; ///< one clause, e.g. `its generalizations stand in an order of their own`
};

/// A model holds what a model file cannot say. The message names the first such object and the reason.
class __attribute__((visibility("default"))) ModelFileLossError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Writes a model as a model file. Read back, it gives the same export with every option, and written again the same
/// bytes. An object has the id that `idOf` gives; one that is referred to and gets none has one made of its kind and
/// its path. Throws `ModelFileLossError`, before anything is written, when a model file cannot say all that the model
/// holds: when an object stands in two places or is of a class of the host's own, mirrored collections are in another
/// order than the one in which a pass meets what they mirror, or a text is not UTF-8. Whether the stream took
/// everything is for the caller to ask it.
__attribute__((visibility("default"))) void writeModelFile(KivModel& model, std::ostream& stream,
                                                           const KivIdOf& idOf = {});

/// The same, but writes whatever a model file can say, and gives back what it cannot.
__attribute__((visibility("default"))) std::vector<ModelFileLoss>
writeModelFileWithLosses(KivModel& model, std::ostream& stream, const KivIdOf& idOf = {});
