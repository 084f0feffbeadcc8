#pragma once

#include <cstdint>
#include <vector>

namespace shell {

/// One picture of a movie.
struct MovieFrame {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;  ///< rows from the top; blue, green, red, 255 for each pixel
    int milliseconds = 0;              ///< how long it is shown
};

/// Reads the pictures of one movie file, once from the beginning to the end.
class MovieDecoder {
  public:
    virtual ~MovieDecoder() = default;
    /// Reads the next picture into `frame`, whose memory is used again. False at the end, and where
    /// the rest of the file cannot be read.
    virtual bool nextFrame(MovieFrame& frame) = 0;
};

}  // namespace shell

// The one entry of the library in which the decoder lives. The program looks it up at run time, so
// that it also runs where the library, or one that it needs, is not there.
extern "C" {
/// A decoder, to be deleted by the caller; null where `path` (UTF-8) is no movie that can be read.
shell::MovieDecoder* verdolinOpenMovie(const char* path);
}
