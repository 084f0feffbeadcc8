#pragma once

#include <memory>
#include <string>
#include <vector>

#include "shell/movie_library.h"

namespace support {

/// Movies of plain colours. Which file was opened how often is remembered.
class FakeMovies : public shell::MovieOpener {
  public:
    std::unique_ptr<shell::MovieDecoder> open(const std::string& path) override {
        opened.push_back(path);
        return playable ? std::make_unique<Movie>(pictures) : nullptr;
    }

    bool playable = true;
    int pictures = 3;
    std::vector<std::string> opened;

  private:
    class Movie : public shell::MovieDecoder {
      public:
        explicit Movie(int pictures) : left_(pictures) {}
        bool nextFrame(shell::MovieFrame& frame) override {
            if (left_ == 0) {
                return false;
            }
            --left_;
            frame.width = 4;
            frame.height = 2;
            frame.milliseconds = 1;
            frame.pixels.assign(4 * 2 * 4, 0xFF);
            for (std::size_t i = 0; i < frame.pixels.size(); i += 4) {
                frame.pixels[i] = frame.pixels[i + 1] = 0;  // red
            }
            return true;
        }

      private:
        int left_;
    };
};

}  // namespace support
