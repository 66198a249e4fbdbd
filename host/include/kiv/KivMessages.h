#pragma once

#include "kiv/KivString.h"

#include <exception>

class KivLog;

/// A named message of the host's catalogue. In its text `%1` stands for the argument.
class __attribute__((visibility("default"))) KivMessageIdentifier {
public:
    /// Both texts must outlive the identifier; the catalogue uses literals.
    constexpr KivMessageIdentifier(const char* theName, const char* theText) noexcept : name(theName), text(theText) {}

    [[nodiscard]] constexpr const char* getName() const noexcept { return name; }
    [[nodiscard]] constexpr const char* getText() const noexcept { return text; }
    /// The finished text: the argument stands in it as a name does in a file, so that it never breaks the line.
    [[nodiscard]] KivString format(const KivString& argument) const;

    void log(KivLog& log) const;
    void log(KivLog& log, const KivString& argument) const;
    /// Throws a `KivException` with this identifier.
    [[noreturn]] void throwException(const KivString& argument) const;

private:
    const char* name;
    const char* text;
};

/// The host's exception type.
class __attribute__((visibility("default"))) KivException : public std::exception {
public:
    KivException(const KivMessageIdentifier& theIdentifier, const KivString& theArgument) noexcept;
    ~KivException() override;
    KivException(const KivException&) noexcept = default;
    KivException& operator=(const KivException&) noexcept = default;

    /// Which failure this is; compare its address or its name.
    [[nodiscard]] const KivMessageIdentifier& getIdentifier() const noexcept { return *identifier; }
    /// The argument as it was given.
    [[nodiscard]] const KivString& getArgument() const noexcept { return argument; }
    /// The finished text. Without memory to build it, the catalogue's text with its `%1`.
    [[nodiscard]] const char* what() const noexcept override
    {
        return text.isEmpty() ? identifier->getText() : text.text();
    }

private:
    const KivMessageIdentifier* identifier;
    KivString argument;
    KivString text;
};

/// One message on its way to the log. It refers to the argument, so it is to be used before the call returns.
struct __attribute__((visibility("default"))) KivLogEntry {
    const KivMessageIdentifier& identifier;
    const KivString& argument;

    /// The finished text.
    [[nodiscard]] KivString getText() const { return identifier.format(argument); }
};

/// The host's log. What an implementation throws ends the operation that logged.
class __attribute__((visibility("default"))) KivLog {
public:
    KivLog() = default;
    KivLog(const KivLog&) = delete;
    KivLog& operator=(const KivLog&) = delete;
    virtual ~KivLog();
    virtual void add(const KivLogEntry& entry) = 0;
};

/// The catalogue. The argument of each is given in parentheses.
/// Thrown: the output file cannot be opened (the path in the locale's encoding).
__attribute__((visibility("default"))) extern const KivMessageIdentifier ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE;
/// Thrown in place of an exception that is not the host's (the name of the bridge).
__attribute__((visibility("default"))) extern const KivMessageIdentifier BRIDGE_UNEXPECTED_ERROR;
/// Thrown: a text has characters that the locale's encoding lacks (the text).
__attribute__((visibility("default"))) extern const KivMessageIdentifier BRIDGE_UNCONVERTIBLE_TEXT;
/// Thrown: the package tree is deeper than an export follows (name of the package).
__attribute__((visibility("default"))) extern const KivMessageIdentifier ROS_E_PACKAGES_NESTED_TOO_DEEP;
/// Thrown: `run` was called from inside `run` (empty).
__attribute__((visibility("default"))) extern const KivMessageIdentifier ROS_E_EXPORT_RUNNING;
/// Logged: the view numbers of the file repeat (none).
__attribute__((visibility("default"))) extern const KivMessageIdentifier ROS_E_VIEW_NUMBERS_WRAP;
/// Logged: a package begins (its name).
__attribute__((visibility("default"))) extern const KivMessageIdentifier ROS_E_PRINTING_PACKAGE;
/// Logged: the classes of a package begin (none).
__attribute__((visibility("default"))) extern const KivMessageIdentifier ROS_E_PRINTING_CLASSES;
/// Logged: the associations of a package begin (none).
__attribute__((visibility("default"))) extern const KivMessageIdentifier ROS_E_PRINTING_ASSOCIATIONS;
/// Logged: the diagrams of a package begin (none).
__attribute__((visibility("default"))) extern const KivMessageIdentifier ROS_E_PRINTING_DIAGRAM;
