#pragma once

/// Reads the command line of `petal`, runs the command and returns the process's exit code.
int runCommandLine(int argc, char** argv);
