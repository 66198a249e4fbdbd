#include "tool/VersionText.h"

#include "Version.h"

#include "designs/layout/LayoutLibrary.h"
#include "dump/forms/Sqlite.h"
#include "render/paper/PictureLibrary.h"

#include <CLI/Version.hpp>
#include <gnu/libc-version.h>
#include <stdexcept>

namespace {

// Of a library that is opened when it is first needed; or why it cannot be.
template <class Library>
std::string versionsOf(const Library& library)
{
    try {
        return library().versions();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

} // namespace

std::string versionText()
{
    std::string text = std::string("petal ") + petalVersion;
    text.append("\n\nBuilt by:  ").append(petalBuild);
    text.append("\nReads by:  simdjson ").append(simdjsonVersion).append(", pugixml ").append(pugixmlVersion);
    text.append("\nPlaces by: ").append(versionsOf(design::layoutLibrary));
    text.append("\nDraws by:  ").append(versionsOf(render::pictureLibrary));
    text.append("\nDumps by:  SQLite ").append(dump::sqliteVersion());
    text.append("\nRuns on:   glibc ").append(gnu_get_libc_version());
    text.append(", options by CLI11 " CLI11_VERSION);
    return text.append("\nLicence:   MIT, ").append(petalCopyright);
}
