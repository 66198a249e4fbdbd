#include "CommandLine.h"
#include "Commands.h"
#include "TemporaryFile.h"

#include <clocale>
#include <exception>

int main(int argc, char** argv)
{
    occupyStandardStreams();
    std::setlocale(LC_CTYPE, ""); // of the user's locale only the encoding matters: file names are in it
    handleSignals();
    try {
        return runCommandLine(argc, argv);
    } catch (const std::exception& error) {
        report(error.what());
        return exportFailed;
    }
}
