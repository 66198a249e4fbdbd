#include "tool/CommandLine.h"
#include "tool/commands/Commands.h"
#include "tool/output/Ending.h"
#include "tool/output/StandardOutput.h"

#include <clocale>
#include <exception>

int main(int argc, char** argv)
{
    occupyStandardStreams();
    std::setlocale(LC_CTYPE, ""); // of the user's locale only the encoding matters: file names are in it
    watchForTheEnd();
    const StandardOutput output;
    int exitCode = exportFailed;
    try {
        exitCode = runCommandLine(argc, argv);
    } catch (const std::exception& error) {
        report(error.what());
    }
    endIsNear();
    return exitCode;
}
