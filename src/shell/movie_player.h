#pragma once

#include <QImage>
#include <QTimer>
#include <QWidget>
#include <memory>
#include <string>

#include "shell/movie_library.h"

namespace shell {

/// Plays a movie over and over while it can be seen. The whole picture is shown, in its own
/// proportions and smoothly scaled. Without a movie, or with one that cannot be played, the area is
/// empty; nothing is said about that.
class MoviePlayer : public QWidget {
  public:
    /// `opener` must outlive the player.
    MoviePlayer(MovieOpener& opener, QWidget* parent);

    /// Sets the file that is played from now on. Whether it exists is not asked here.
    void setMovie(const std::string& path);
    const std::string& movie() const { return path_; }
    /// True while pictures are shown.
    bool isPlaying() const { return decoder_ != nullptr; }
    /// How many pictures have been shown so far.
    int framesShown() const { return framesShown_; }

    QSize sizeHint() const override { return {480, 300}; }

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void start();
    void stop();
    void advance();
    bool readFrame();

    MovieOpener& opener_;
    std::string path_;
    std::unique_ptr<MovieDecoder> decoder_;
    MovieFrame frame_;
    QTimer timer_;
    int framesShown_ = 0;
};

}  // namespace shell
