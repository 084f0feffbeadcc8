#include "shell/movie_library.h"

#include "base/failure.h"
#include "platform/program_file.h"

namespace shell {

namespace {

constexpr const char* libraryName = "libverdolin_movies";

}  // namespace

bool MovieLibrary::findLibrary() {
    try {
        library_.setFileName(QString::fromStdString(platform::programFile(shell_, {libraryName})));
        return true;
    } catch (const base::Failure&) {
        return false;
    }
}

std::unique_ptr<MovieDecoder> MovieLibrary::open(const std::string& path) {
    if (!library_.isLoaded() && !findLibrary()) {
        return nullptr;
    }
    const auto openMovie =
        reinterpret_cast<decltype(&verdolinOpenMovie)>(library_.resolve("verdolinOpenMovie"));
    return std::unique_ptr<MovieDecoder>(openMovie == nullptr ? nullptr : openMovie(path.c_str()));
}

}  // namespace shell
