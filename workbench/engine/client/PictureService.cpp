#include "workbench/engine/client/PictureService.h"

#include "workbench/engine/protocol/MessageCodec.h"
#include "workbench/engine/protocol/Wire.h"
#include "workbench/store/files/FileIdentity.h"

#include <algorithm>
#include <cstring>
#include <tuple>
#include <utility>

namespace workbench
{

struct PictureService::Job {
    PictureRequest wanted;
    std::vector<std::string> files; // that it is made of
    Done done;
    std::uint64_t number = 0; // in the order of asking
    Priority priority = Priority::Visible;
    Keeping keeping = Keeping::OnDisk;
    bool isToBeMade = false; // it was looked for on the disk

    auto rank() const { return std::tuple(priority, isToBeMade, number); }
};

namespace
{

std::vector<std::string> filesOf(const PictureRequest& wanted)
{
    if (const auto* thumbnail = std::get_if<request::MakeThumbnail>(&wanted))
        return placesOf(thumbnail->projection);
    return {std::get<request::MakeWaveform>(wanted).path};
}

/** All that a picture depends on. */
std::string keyOf(const PictureRequest& wanted, const std::vector<std::string>& files)
{
    WireWriter key;
    key.number(kProtocolVersion);
    for (const std::string& file : files) {
        const FileStamp stamp = stampOf(file);
        key.text(file);
        key.number(stamp.device);
        key.number(stamp.number);
        key.number(stamp.size);
        key.number(stamp.changed);
    }
    const std::vector<std::uint8_t> stamps = key.take();
    const std::vector<std::uint8_t> message =
        encode(std::visit([](const auto& one) -> Request { return one; }, wanted));
    return std::string(stamps.begin(), stamps.end()).append(message.begin(), message.end());
}

std::string_view textOf(const std::vector<std::uint8_t>& bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string pack(const Made& made)
{
    if (made.waveform)
        return std::string(textOf(encode(event::WaveformMade{*made.waveform, {}})));
    WireWriter size;
    size.number(made.picture->width);
    size.number(made.picture->height);
    const PixelBytes& pixels = made.picture->rgba;
    return std::string(textOf(size.take())).append(reinterpret_cast<const char*>(pixels.data()), pixels.size());
}

std::optional<Made> unpackWaveform(std::span<const std::uint8_t> bytes)
{
    const std::optional<Event> event = decodeEvent(bytes);
    const auto* kept = event ? std::get_if<event::WaveformMade>(&*event) : nullptr;
    if (!kept)
        return std::nullopt;
    Made made;
    made.waveform = std::make_shared<const WaveformPeaks>(kept->peaks);
    return made;
}

std::optional<Made> unpackPicture(std::span<const std::uint8_t> bytes)
{
    constexpr std::size_t kSizes = 2 * sizeof(int);
    WireReader size(bytes);
    auto image = std::make_shared<FrameImage>();
    image->width = size.number<int>();
    image->height = size.number<int>();
    if (size.failed() || image->width <= 0 || image->height <= 0 ||
        bytes.size() != kSizes + byteCount(image->width, image->height))
        return std::nullopt;
    const std::shared_ptr<std::uint8_t[]> pixels = std::make_shared_for_overwrite<std::uint8_t[]>(bytes.size());
    std::memcpy(pixels.get(), bytes.data() + kSizes, bytes.size() - kSizes);
    image->rgba = PixelBytes(pixels, bytes.size() - kSizes);
    Made made;
    made.picture = std::move(image);
    return made;
}

std::optional<Made> unpack(const PictureRequest& wanted, const std::string& kept)
{
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(kept.data()), kept.size());
    return std::holds_alternative<request::MakeWaveform>(wanted) ? unpackWaveform(bytes) : unpackPicture(bytes);
}

} // namespace

PictureService::PictureService(std::shared_ptr<EngineHost> host, Settings settings, Post post)
    : host_(std::move(host))
    , settings_(std::move(settings))
    , post_(std::move(post))
    , kept_(settings_.folder, settings_.limit)
    , thread_([this] { run(); })
{
}

PictureService::~PictureService()
{
    {
        const std::lock_guard lock(mutex_);
        quit_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

PictureService::Ticket PictureService::request(PictureRequest wanted, Priority priority, Done done, Keeping keeping)
{
    std::vector<std::string> files = filesOf(wanted);
    Ticket job;
    {
        const std::lock_guard lock(mutex_);
        files_.insert(files.begin(), files.end());
        job = std::make_shared<Job>(
            Job{std::move(wanted), std::move(files), std::move(done), ++count_, priority, keeping});
        waiting_.push_back(job);
    }
    changed_.notify_one();
    return job;
}

void PictureService::setPriority(const Ticket& ticket, Priority priority)
{
    const std::lock_guard lock(mutex_);
    ticket->priority = priority;
}

// The thread

void PictureService::run()
{
    while (const Ticket job = next())
        work(job);
}

/** What is to be done now; null when there is an end to it. Waits for it. */
PictureService::Ticket PictureService::next()
{
    std::unique_lock lock(mutex_);
    for (;;) {
        waitForJobs(lock);
        if (quit_)
            return nullptr;
        Ticket best;
        std::erase_if(waiting_, [&](const std::weak_ptr<Job>& waiting) {
            const Ticket job = waiting.lock();
            if (job && (!best || job->rank() < best->rank()))
                best = job;
            return !job;
        });
        std::erase_if(waiting_, [&](const std::weak_ptr<Job>& waiting) { return waiting.lock() == best; });
        if (best)
            return best;
    }
}

void PictureService::waitForJobs(std::unique_lock<std::mutex>& lock)
{
    const auto hasSomething = [this] { return quit_ || !waiting_.empty(); };
    if (resting_)
        return changed_.wait(lock, hasSomething);
    if (changed_.wait_for(lock, settings_.restAfter, hasSomething))
        return;
    resting_ = true;
    files_.clear();
    lock.unlock();
    host_->rest();
    lock.lock();
}

void PictureService::work(const Ticket& job)
{
    const std::string key = keyOf(job->wanted, job->files);
    if (job->isToBeMade)
        return make(job, key);
    if (answerFromMemory(job, key))
        return;
    // Others may be on the disk, and come before what takes longer.
    const std::lock_guard lock(mutex_);
    job->isToBeMade = true;
    waiting_.push_back(job);
}

bool PictureService::answerFromMemory(const Ticket& job, const std::string& key)
{
    std::optional<Made> made;
    if (hopeless_.contains(key))
        made = Made{nullptr, nullptr, "It ended the engine before.", true};
    else if (job->keeping == Keeping::None)
        return false;
    else if (const std::optional<std::string> kept = kept_.find(key))
        made = unpack(job->wanted, *kept);
    if (made)
        tell(job, std::move(*made));
    return made.has_value();
}

void PictureService::make(const Ticket& job, const std::string& key)
{
    std::vector<std::string> soon;
    {
        const std::lock_guard lock(mutex_);
        files_.insert(job->files.begin(), job->files.end());
        soon.assign(files_.begin(), files_.end());
    }
    resting_ = false;
    Made made = host_->make(job->wanted, job->files, soon, quit_);
    if (made.isFinal)
        hopeless_.insert(key);
    if (job->keeping == Keeping::OnDisk && (made.picture || made.waveform))
        kept_.keep(key, pack(made));
    tell(job, std::move(made));
}

void PictureService::tell(const Ticket& job, Made made) const
{
    post_([weak = std::weak_ptr<Job>(job), made = std::move(made)] {
        if (const Ticket asked = weak.lock())
            asked->done(made);
    });
}

} // namespace workbench
