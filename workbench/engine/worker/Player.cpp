#include "workbench/engine/worker/Player.h"

#include "workbench/engine/worker/graph/OwnFilter.h"

#include <mlt++/Mlt.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

namespace workbench
{

/** The framework's callbacks are C functions. */
struct Player::Listener {
    static void call(mlt_properties, void* self, mlt_event_data data)
    {
        static_cast<Player*>(self)->frameShown(mlt_event_data_to_frame(data));
    }
};

namespace
{

// A consumer always asks for pictures of the profile's size. This filter, above everything, asks for smaller ones.

int scaledImage(mlt_frame frame, uint8_t** image, mlt_image_format* format, int* width, int* height, int writable)
{
    const auto filter = static_cast<mlt_filter>(mlt_frame_pop_service(frame));
    const auto* size = static_cast<const FrameSize*>(filter->child);
    *width = size->width;
    *height = size->height;
    return mlt_frame_get_image(frame, image, format, width, height, writable);
}

mlt_frame scalePreparation(mlt_filter filter, mlt_frame frame)
{
    mlt_frame_push_service(frame, filter);
    mlt_frame_push_get_image(frame, scaledImage);
    return frame;
}

std::unique_ptr<Mlt::Filter> makeScaler(FrameSize size)
{
    return makeOwnFilter(size, scalePreparation);
}

bool hasSoundDevice()
{
    std::error_code ignored;
    for (const auto& device : std::filesystem::directory_iterator("/dev/snd", ignored))
        if (device.path().filename().string().starts_with("pcm"))
            return true;
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    const std::string base = runtime ? runtime : "";
    return std::getenv("PULSE_SERVER") || (!base.empty() && (std::filesystem::exists(base + "/pulse/native", ignored) ||
                                                             std::filesystem::exists(base + "/pipewire-0", ignored)));
}

} // namespace

bool Player::prepareSound(bool wanted)
{
    if (std::getenv("SDL_AUDIODRIVER"))
        return true;
    const bool available = hasSoundDevice();
    if (!available || !wanted)
        setenv("SDL_AUDIODRIVER", "dummy", 1);
    return available;
}

Player::Player(Mlt::Profile& profile, Mlt::Producer& producer, FrameSize size, Surroundings surroundings,
               std::function<void(Shown)> shown)
    : producer_(producer)
    , surroundings_(std::move(surroundings))
    , shown_(std::move(shown))
    , scaler_(makeScaler(size))
    , consumer_(std::make_unique<Mlt::Consumer>(profile, "sdl2_audio"))
{
    if (!consumer_->is_valid())
        return;
    consumer_->set("real_time", 1);
    consumer_->set("terminate_on_pause", 0);
    consumer_->set("mlt_image_format", "rgba");
    consumer_->set("rescale", "bilinear");
    consumer_->set("buffer", 8);
    consumer_->set("prefill", 1);
    if (scaler_)
        producer_.attach(*scaler_);
    event_.reset(consumer_->listen("consumer-frame-show", this, Listener::call));
}

Player::~Player()
{
    if (!consumer_->is_valid())
        return;
    started_ = false;
    consumer_->stop();
    event_.reset();
    if (scaler_)
        producer_.detach(*scaler_);
    producer_.set_speed(0.0);
    surroundings_.marks.setDeadline(TraceMarks::Work::Playback, TraceMarks::Clock::time_point::max());
}

bool Player::start(int fromFrame)
{
    if (!consumer_->is_valid())
        return false;
    producer_.seek(fromFrame);
    producer_.set_speed(1.0);
    expectFrame();
    started_ = true;
    consumer_->connect(producer_);
    return consumer_->start() == 0;
}

void Player::seek(int frame)
{
    producer_.seek(frame);
    producer_.set_speed(1.0);
    consumer_->purge();
}

void Player::discardAhead()
{
    consumer_->purge();
}

void Player::expectFrame()
{
    surroundings_.marks.setDeadline(TraceMarks::Work::Playback, TraceMarks::Clock::now() + surroundings_.limit);
}

void Player::frameShown(void* source)
{
    if (!source || !started_)
        return;
    expectFrame();
    Mlt::Frame frame(static_cast<mlt_frame>(source));
    Shown shown;
    shown.frame = frame.get_position();
    shown.atEnd = frame.get_double("_speed") == 0.0;
    if (frame.get_int("rendered") != 0)
        shown.image = copyImage(frame, 0, 0, surroundings_.memory);
    shown_(std::move(shown));
}

} // namespace workbench
