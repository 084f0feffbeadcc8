#include "shell/movie_player.h"

#include <QPainter>

namespace shell {

MoviePlayer::MoviePlayer(MovieOpener& opener, QWidget* parent) : QWidget(parent), opener_(opener) {
    setProperty("windowMode", "Window");
    setProperty("quality", "High");
    setProperty("scaleMode", "ShowAll");
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.callOnTimeout(this, [this] { advance(); });
}

void MoviePlayer::setMovie(const std::string& path) {
    stop();
    path_ = path;
    if (isVisible()) {
        start();
    }
}

void MoviePlayer::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    start();
}

void MoviePlayer::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    stop();
}

/// The first picture comes with the next turn of the event loop, so that the window around it is on
/// the screen before a movie is looked for.
void MoviePlayer::start() { timer_.start(0); }

void MoviePlayer::stop() {
    timer_.stop();
    decoder_.reset();
    frame_ = {};
    update();
}

void MoviePlayer::advance() {
    if (!readFrame()) {
        stop();
        return;
    }
    ++framesShown_;
    timer_.start(frame_.milliseconds);
    update();
}

bool MoviePlayer::readFrame() {
    if (decoder_ && decoder_->nextFrame(frame_)) {
        return true;
    }
    // From the beginning, for the first time or again.
    decoder_ = opener_.open(path_);
    return decoder_ && decoder_->nextFrame(frame_);
}

void MoviePlayer::paintEvent(QPaintEvent*) {
    if (frame_.pixels.empty()) {
        return;
    }
    const QImage picture(frame_.pixels.data(), frame_.width, frame_.height, QImage::Format_RGB32);
    const QSize shown = picture.size().scaled(size(), Qt::KeepAspectRatio);
    QRect place(QPoint(), shown);
    place.moveCenter(rect().center());
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, picture);
}

}  // namespace shell
