#include "cli/checked_output.h"

#include <cerrno>
#include <string>
#include <system_error>

#include "base/failure.h"

namespace cli {
namespace {

[[noreturn]] void failOutput(int errorNumber) {
    throw base::FileFailure("standard output: " +
                            (errorNumber == 0 ? std::string("it takes nothing more")
                                              : std::generic_category().message(errorNumber)));
}

}  // namespace

void writeChecked(std::ostream& stream, std::string_view text) {
    errno = 0;
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    if (!stream) {
        failOutput(errno);
    }
}

void flushChecked(std::ostream& stream) {
    errno = 0;
    stream.flush();
    if (!stream) {
        failOutput(errno);
    }
}

}  // namespace cli
