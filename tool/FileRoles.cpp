#include "FileRoles.h"

#include "Commands.h"
#include "DesignImport.h"
#include "ModelFile.h"

#include "kiv/KivMessages.h"

#include <filesystem>
#include <new>
#include <system_error>

namespace {

std::filesystem::path realPath(const std::string& path)
{
    std::error_code none;
    return std::filesystem::weakly_canonical(std::filesystem::absolute(path, none), none);
}

bool isSameFile(const std::string& a, const std::string& b)
{
    std::error_code none;
    return !a.empty() && a != "-" && !b.empty() && b != "-" &&
           (std::filesystem::equivalent(a, b, none) || realPath(a) == realPath(b));
}

// The system's error as users know it: what it happened to and why.
std::string messageOf(const std::system_error& error)
{
    const std::string what = error.what();
    const std::string reason = error.code().message();
    return what.ends_with(reason) ? what : what + ": " + reason;
}

} // namespace

std::string clashOf(const std::vector<FileRole>& files)
{
    for (auto a = files.begin(); a != files.end(); ++a) {
        for (auto b = a + 1; b != files.end(); ++b) {
            if (isSameFile(a->path, b->path))
                return b->path + ": " + b->role + " would overwrite " + a->role;
            if (a != files.begin() && a->path == "-" && b->path == "-")
                return std::string("standard output cannot take ") + a->role + " and " + b->role + " both";
        }
    }
    return "";
}

int reportFailures(const std::string& input, const std::string& output, const std::function<void()>& work)
{
    try {
        work();
        return done;
    } catch (const ModelFileError& error) {
        report(error.what());
        return invalidModel;
    } catch (const DesignError& error) {
        report(error.what());
        return invalidModel;
    } catch (const ModelUnreadable& error) {
        report(messageOf(error));
        return invalidModel;
    } catch (const std::system_error& error) {
        report(messageOf(error));
    } catch (const KivException& error) {
        report(output + ": " + error.what());
    } catch (const std::bad_alloc&) {
        report(input + ": not enough memory for this model");
    } catch (const std::exception& error) {
        report(error.what());
    }
    return exportFailed;
}
