extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <memory>

#include "shell/movie_decoder.h"

namespace shell {

namespace {

constexpr int fallbackFrameMilliseconds = 80;
constexpr int longestFrameMilliseconds = 10000;
constexpr int largestSide = 4096;
constexpr int bytesPerPixel = 4;

struct Closer {
    void operator()(AVFormatContext* file) const { avformat_close_input(&file); }
    void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
};
template <typename Resource>
using Owned = std::unique_ptr<Resource, Closer>;

class FfmpegDecoder : public MovieDecoder {
  public:
    /// Null when the file cannot be read.
    static std::unique_ptr<MovieDecoder> open(const char* path);

    bool nextFrame(MovieFrame& frame) override;

  private:
    bool openFile(const char* path);
    bool openCodec();
    bool decodePicture();
    bool feedCodec();
    bool convert(MovieFrame& frame);
    int shownFor() const;

    Owned<AVFormatContext> file_;
    Owned<AVCodecContext> codec_;
    Owned<AVPacket> packet_{av_packet_alloc()};
    Owned<AVFrame> picture_{av_frame_alloc()};
    Owned<SwsContext> scaler_;
    int stream_ = -1;
    bool drained_ = false;
};

std::unique_ptr<MovieDecoder> FfmpegDecoder::open(const char* path) {
    auto decoder = std::make_unique<FfmpegDecoder>();
    if (!decoder->packet_ || !decoder->picture_ || !decoder->openFile(path) ||
        !decoder->openCodec()) {
        return nullptr;
    }
    return decoder;
}

bool FfmpegDecoder::openFile(const char* path) {
    AVFormatContext* file = nullptr;
    if (avformat_open_input(&file, path, nullptr, nullptr) < 0) {
        return false;
    }
    file_.reset(file);
    if (avformat_find_stream_info(file, nullptr) < 0) {
        return false;
    }
    stream_ = av_find_best_stream(file, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    return stream_ >= 0;
}

bool FfmpegDecoder::openCodec() {
    const AVCodecParameters* parameters = file_->streams[stream_]->codecpar;
    const AVCodec* decoder = avcodec_find_decoder(parameters->codec_id);
    if (decoder == nullptr) {
        return false;
    }
    codec_.reset(avcodec_alloc_context3(decoder));
    return codec_ && avcodec_parameters_to_context(codec_.get(), parameters) >= 0 &&
           avcodec_open2(codec_.get(), decoder, nullptr) >= 0;
}

bool FfmpegDecoder::nextFrame(MovieFrame& frame) { return decodePicture() && convert(frame); }

bool FfmpegDecoder::decodePicture() {
    for (;;) {
        const int result = avcodec_receive_frame(codec_.get(), picture_.get());
        if (result == 0) {
            return true;
        }
        if (result != AVERROR(EAGAIN) || drained_ || !feedCodec()) {
            return false;
        }
    }
}

/// Hands the codec the next packet of the movie, or its end.
bool FfmpegDecoder::feedCodec() {
    while (av_read_frame(file_.get(), packet_.get()) >= 0) {
        const bool ours = packet_->stream_index == stream_;
        const int result = ours ? avcodec_send_packet(codec_.get(), packet_.get()) : 0;
        av_packet_unref(packet_.get());
        if (ours) {
            return result >= 0;
        }
    }
    drained_ = true;
    return avcodec_send_packet(codec_.get(), nullptr) >= 0;
}

bool FfmpegDecoder::convert(MovieFrame& frame) {
    const int width = picture_->width;
    const int height = picture_->height;
    if (width <= 0 || height <= 0 || width > largestSide || height > largestSide) {
        return false;
    }
    scaler_.reset(sws_getCachedContext(scaler_.release(), width, height,
                                       static_cast<AVPixelFormat>(picture_->format), width, height,
                                       AV_PIX_FMT_BGRA, SWS_BILINEAR, nullptr, nullptr, nullptr));
    if (!scaler_) {
        return false;
    }
    frame.width = width;
    frame.height = height;
    frame.milliseconds = shownFor();
    frame.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                        bytesPerPixel);
    std::uint8_t* const rows[] = {frame.pixels.data()};
    const int strides[] = {width * bytesPerPixel};
    return sws_scale(scaler_.get(), picture_->data, picture_->linesize, 0, height, rows, strides) ==
           height;
}

int FfmpegDecoder::shownFor() const {
    const AVRational rate =
        av_guess_frame_rate(file_.get(), file_->streams[stream_], picture_.get());
    if (rate.num <= 0 || rate.den <= 0) {
        return fallbackFrameMilliseconds;
    }
    return static_cast<int>(
        std::clamp<std::int64_t>(1000LL * rate.den / rate.num, 1, longestFrameMilliseconds));
}

}  // namespace

}  // namespace shell

shell::MovieDecoder* verdolinOpenMovie(const char* path) {
    // A movie that is not there is an empty area, not lines on the terminal.
    av_log_set_level(AV_LOG_QUIET);
    try {
        return shell::FfmpegDecoder::open(path).release();
    } catch (...) {
        return nullptr;
    }
}
