#pragma once

#include "kiv/KivPackage.h"

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// The content of a model file is not what it has to be. The message names the file, the place and the reason:
/// `FILE:POINTER: what was expected, what was found`, or `FILE:LINE:COLUMN: ...` where the JSON itself is broken.
class ModelFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The model file cannot be read; the message names it and the reason.
class ModelUnreadable : public std::system_error {
public:
    using std::system_error::system_error;
};

/// A model read from a file.
struct LoadedModel {
    std::unique_ptr<KivModel> model;
    std::size_t bytes = 0;   ///< size of the file
    std::size_t objects = 0; ///< model objects in it, the model itself included
};

/// The whole content of a file, with free room behind it for the parser.
struct FileContent {
    std::unique_ptr<char[]> data;
    std::size_t size = 0;
    std::size_t capacity = 0;

    [[nodiscard]] std::string_view text() const { return {data.get(), size}; }
};

/// Reads a file, or standard input when `path` is `-`. Throws `ModelUnreadable`.
[[nodiscard]] FileContent readFile(const std::string& path);

/// What messages call the file.
[[nodiscard]] std::string fileName(const std::string& path);

/// The model in the content of a model file; `name` stands for the file in messages. Throws `ModelFileError`.
[[nodiscard]] LoadedModel parseModel(const FileContent& content, const std::string& name);

/// Reads a model file, or standard input when `path` is `-`. Throws `ModelFileError` or `ModelUnreadable`.
[[nodiscard]] LoadedModel loadModel(const std::string& path);

/// The same for a text in memory; `name` stands for the file in messages.
[[nodiscard]] LoadedModel parseModel(std::string_view text, const std::string& name);

/// The keys that the reader knows in each kind of object, for the test that holds reader and schema together.
struct ModelFileKeys {
    std::string_view objectKind;
    std::vector<std::string_view> keys;
};
[[nodiscard]] std::vector<ModelFileKeys> modelFileKeys();
