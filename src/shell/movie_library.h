#pragma once

#include <QLibrary>
#include <memory>
#include <string>

#include "shell/movie_decoder.h"

namespace platform {
class ShellServices;
}

namespace shell {

/// Opens movies.
class MovieOpener {
  public:
    virtual ~MovieOpener() = default;
    /// Null where the file at `path` is no movie, or where nothing is there to read movies with.
    virtual std::unique_ptr<MovieDecoder> open(const std::string& path) = 0;
};

/// Opens movies with the library "verdolin_movies" beside the program. It is loaded when the first
/// movie is wanted, not at start-up, as it draws in many others.
class MovieLibrary : public MovieOpener {
  public:
    /// `shell` must outlive this.
    explicit MovieLibrary(platform::ShellServices& shell) : shell_(shell) {}
    std::unique_ptr<MovieDecoder> open(const std::string& path) override;

  private:
    bool findLibrary();

    platform::ShellServices& shell_;
    QLibrary library_;
};

}  // namespace shell
