#pragma once

#include <string>
#include <vector>

// What a program of the command line asks of the console that it runs on and of the process itself.

namespace platform {

/// The arguments that main() was given, without the program's name, as UTF-8; on a system whose
/// main() gets them in its code page they are fetched anew, so that none loses a character.
std::vector<std::string> programArguments(int count, char** arguments);

enum class StandardStream { Input, Output, Error };

bool isTerminal(StandardStream stream);
/// Width of the terminal that messages go to, in characters; 80 where it is not known.
int terminalColumns();

/// To be called first: standard streams that the caller has closed become ones that hold and take
/// nothing, so that no file opened later is taken for one of them; writing into a pipe that nobody
/// reads any more becomes an ordinary failure instead of the end of the process; a console takes
/// UTF-8 and escape sequences, and nothing changes the bytes on their way.
void prepareStandardStreams();

/// From now on the first interruption (Ctrl+C, a request to end, a terminal that is closed) is only
/// noted. The next one ends the process as if nobody watched.
void watchInterruptions();
bool wasInterrupted();

}  // namespace platform
