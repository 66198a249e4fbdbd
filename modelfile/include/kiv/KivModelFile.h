#pragma once

#include "kiv/KivPackage.h"

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Model files: a host model as JSON, field for field, read and written. `docs/model-file.md` says what may stand in
/// one. Whatever a host holds can be written, to be kept, to be looked at, or to be sent along with a fault report.

/// A mistake in a model file.
struct ModelFileFault {
    std::size_t line = 1;   ///< from 1
    std::size_t column = 1; ///< from 1, in characters
    std::string pointer;    ///< JSON pointer of the place; empty for the whole and where the JSON itself is broken
    std::string text;       ///< `expected ..., found ...`, one line

    /// `error: POINTER: TEXT`, as it stands behind the place.
    [[nodiscard]] __attribute__((visibility("default"))) std::string message() const;
};

/// The content of a model file is not what it has to be. The message has a line for each of the first twenty mistakes,
/// `FILE:LINE:COLUMN: error: POINTER: expected ..., found ...`, and says how many more there are. Where the JSON itself
/// is broken, that is the last one.
class __attribute__((visibility("default"))) ModelFileError : public std::runtime_error {
public:
    ModelFileError(const std::string& file, std::vector<ModelFileFault> theFaults, std::size_t theCount);

    /// Those of the message, in the order of the file.
    [[nodiscard]] const std::vector<ModelFileFault>& getFaults() const noexcept { return *faults; }
    /// Number of all.
    [[nodiscard]] std::size_t getCount() const noexcept { return count; }

private:
    std::shared_ptr<const std::vector<ModelFileFault>> faults; // shared, so that copying an exception throws none
    std::size_t count;
};

/// `23 more mistakes are not shown`, or the empty text for none.
[[nodiscard]] __attribute__((visibility("default"))) std::string restOfFaults(std::size_t more);

/// A model read from a file.
struct LoadedModel {
    std::unique_ptr<KivModel> model; ///< complete: the collections that mirror references are filled
    std::size_t bytes = 0;           ///< size of the file
    std::size_t objects = 0;         ///< model objects in it, the model itself included
};

/// The ids that objects have in a model file.
using KivIds = std::unordered_map<const KivObject*, std::string>;

/// Reads a model file, or standard input when `path` is `-`. Throws `ModelFileError`, and `std::system_error` with the
/// path when the file cannot be read.
[[nodiscard]] __attribute__((visibility("default"))) LoadedModel loadModel(const std::string& path);

/// The same for a text in memory; `name` stands for the file in messages. A string whose capacity leaves room for 64
/// bytes behind the text is read where it is, another one is copied.
[[nodiscard]] __attribute__((visibility("default"))) LoadedModel parseModel(const std::string& text,
                                                                            const std::string& name);

/// The same, and gives the ids of all objects that have one, for a file that is to be written again.
[[nodiscard]] __attribute__((visibility("default"))) LoadedModel parseModel(const std::string& text,
                                                                            const std::string& name, KivIds& ids);

/// Something in a model: an object, or one of its fields by its key in the file.
struct ModelFilePart {
    const KivObject* object = nullptr;
    std::string_view key = {}; ///< empty: the object
};

/// Where it stands in the file. The place of a field that the file leaves out is that of its object.
struct ModelFilePlace {
    std::size_t line = 1;   ///< from 1
    std::size_t column = 1; ///< from 1, in characters
    std::string pointer;    ///< JSON pointer
};

/// The places of parts of a model in the text that `parseModel` made it of, in their order. The text is read once more;
/// no object that the text holds may have been added to the model or taken out of it since. A part that is not in the
/// text has the place of the whole.
[[nodiscard]] __attribute__((visibility("default"))) std::vector<ModelFilePlace>
findPlaces(const std::string& text, KivModel& model, const std::vector<ModelFilePart>& parts);

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
