#pragma once

// What a program of the command line asks of the console that it runs on and of the process itself.

namespace platform {

enum class StandardStream { Input, Output, Error };

bool isTerminal(StandardStream stream);
/// Width of the terminal that messages go to, in characters; 80 where it is not known.
int terminalColumns();

/// To be called first: standard streams that the caller has closed become ones that hold and take
/// nothing, so that no file opened later is taken for one of them; writing into a pipe that nobody
/// reads any more becomes an ordinary failure instead of the end of the process.
void prepareStandardStreams();

/// From now on the first interruption (Ctrl+C, a request to end, a terminal that is closed) is only
/// noted. The next one ends the process as if nobody watched.
void watchInterruptions();
bool wasInterrupted();

}  // namespace platform
