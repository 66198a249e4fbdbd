#include "kiv/KivMessages.h"

#include <new>

const KivMessageIdentifier ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE("ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE",
                                                            "unable to open output file '%1'");
const KivMessageIdentifier BRIDGE_UNEXPECTED_ERROR("BRIDGE_UNEXPECTED_ERROR", "unexpected error in bridge '%1'");
const KivMessageIdentifier BRIDGE_UNCONVERTIBLE_TEXT("BRIDGE_UNCONVERTIBLE_TEXT",
                                                     "text cannot be written in the locale's encoding: '%1'");
const KivMessageIdentifier ROS_E_PACKAGES_NESTED_TOO_DEEP("ROS_E_PACKAGES_NESTED_TOO_DEEP",
                                                          "packages nested deeper than 512 levels: '%1'");
const KivMessageIdentifier ROS_E_EXPORT_RUNNING("ROS_E_EXPORT_RUNNING", "an export is already running");
const KivMessageIdentifier ROS_E_VIEW_NUMBERS_WRAP("ROS_E_VIEW_NUMBERS_WRAP",
                                                   "too many diagrams: view numbers pass the 32-bit range");
const KivMessageIdentifier ROS_E_PRINTING_PACKAGE("ROS_E_PRINTING_PACKAGE", "writing package '%1'");
const KivMessageIdentifier ROS_E_PRINTING_CLASSES("ROS_E_PRINTING_CLASSES", "writing classes");
const KivMessageIdentifier ROS_E_PRINTING_ASSOCIATIONS("ROS_E_PRINTING_ASSOCIATIONS", "writing associations");
const KivMessageIdentifier ROS_E_PRINTING_DIAGRAM("ROS_E_PRINTING_DIAGRAM", "writing diagrams");

KivString KivMessageIdentifier::format(const KivString& argument) const
{
    const std::string_view pattern = text;
    const std::size_t place = pattern.find("%1");
    KivString result(pattern.substr(0, place));
    if (place != std::string_view::npos) {
        result.add(guardedName(argument).view());
        result.add(pattern.substr(place + 2));
    }
    return result;
}

void KivMessageIdentifier::log(KivLog& log) const
{
    log.add({*this, KivString()});
}

void KivMessageIdentifier::log(KivLog& log, const KivString& argument) const
{
    log.add({*this, argument});
}

void KivMessageIdentifier::throwException(const KivString& argument) const
{
    throw KivException(*this, argument);
}

KivException::KivException(const KivMessageIdentifier& theIdentifier, const KivString& theArgument) noexcept
    : identifier(&theIdentifier), argument(theArgument)
{
    try {
        text = identifier->format(argument);
    } catch (const std::exception&) {
        text = KivString(); // what() falls back to the catalogue's text
    }
}

KivException::~KivException() = default;
KivLog::~KivLog() = default;
