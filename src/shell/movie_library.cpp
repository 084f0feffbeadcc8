#include "shell/movie_library.h"

#include "base/failure.h"
#include "platform/shell_services.h"

namespace shell {

namespace {

constexpr const char* libraryName = "libverdolin_movies";

}  // namespace

bool MovieLibrary::findLibrary() {
    try {
        const std::string place = shell_.programFolder() + shell_.pathSeparator() + libraryName;
        library_.setFileName(QString::fromStdString(place));
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
