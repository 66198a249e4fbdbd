#pragma once

#include <csignal>

// How the process begins and ends, whoever ends it.

/// Occupies the standard streams that are closed, so that no file of ours becomes one of them. Reading and writing
/// them fails all the same. To be called first of all.
void occupyStandardStreams();

/// Makes signals that end the process remove its temporary files first, and say so when a fault is the reason; makes
/// writes past a limit or to a closed pipe fail instead of ending the process; and says so when a library ends the
/// process. To be called once, before the first temporary file.
void watchForTheEnd();

/// From here on an end of the process is nothing to speak of.
void endIsNear();

/// Keeps signals away while a file and its name in the list below come or go together.
class SignalBlock {
public:
    SignalBlock();
    ~SignalBlock();
    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;

private:
    sigset_t before;
};

/// Puts a path into the list of files that are removed when the process is ended, or takes it from there. The text has
/// to stay where it is in between.
void removeAtEnd(const char* path);
void keepAtEnd(const char* path);
