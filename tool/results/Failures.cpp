#include "tool/results/Failures.h"

#include "tool/input/DesignImport.h"
#include "tool/output/FileRoles.h"
#include "tool/output/StandardOutput.h"
#include "tool/output/Writing.h"

#include "reader/document/Document.h"
#include "text/Files.h"

#include "kiv/KivMessages.h"
#include "kiv/KivModelFile.h"

#include <cerrno>
#include <iostream>
#include <new>
#include <system_error>

namespace {

// The system's error as users know it: what it happened to and why.
std::string messageOf(const std::system_error& error)
{
    const std::string what = error.what();
    const std::string reason = error.code().message();
    return what.ends_with(reason) ? what : what + ": " + reason;
}

} // namespace

int endOfOutput(int exitCode, int failure)
{
    std::cout.flush();
    if (std::cout)
        return exitCode;
    const auto* const output = dynamic_cast<const StandardOutput*>(std::cout.rdbuf());
    const int error = output && output->error() != 0 ? output->error() : EIO;
    if (error == EPIPE)
        return exportFailed;
    report("standard output: " + std::generic_category().message(error));
    return failure;
}

int reportFailures(const std::string& input, const std::string& output, const std::function<int()>& work)
{
    try {
        return work();
    } catch (const ModelFileError& error) {
        report(error.what());
        return invalidModel;
    } catch (const DesignError& error) {
        report(error.what());
        return invalidModel;
    } catch (const reader::NotPetal& error) {
        const std::string other = whyNotARoseFile(input);
        report(text::fileName(input) + ": " + (other.empty() ? error.what() : other));
        return invalidModel;
    } catch (const text::FileUnreadable& error) {
        report(messageOf(error));
        return invalidModel;
    } catch (const FileClash& error) {
        report(error.what());
        return wrongUsage;
    } catch (const WrongUsage& error) {
        report(error.what());
        return wrongUsage;
    } catch (const PipeClosed&) {
        return exportFailed; // as with other programs, nobody wants to hear about it
    } catch (const std::system_error& error) {
        report(messageOf(error));
    } catch (const KivException& error) {
        report(output + ": " + error.what());
    } catch (const std::bad_alloc&) {
        report(text::fileName(input) + ": not enough memory for this model");
    } catch (const std::exception& error) {
        report(error.what());
    }
    return exportFailed;
}
