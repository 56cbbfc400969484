#include "workbench/app/timeline/ClipPictures.h"

#include "workbench/model/projection/MediaProjection.h"

#include <QImage>

#include <algorithm>

namespace workbench
{

namespace
{

constexpr std::size_t kMostKept = 4000;
constexpr int kWidest = 4; // times the height

QPixmap toPixmap(const FrameImage& image)
{
    const QImage pixels(image.rgba.data(), image.width, image.height, 4 * image.width, QImage::Format_RGBA8888);
    return QPixmap::fromImage(pixels.copy());
}

} // namespace

ClipPictures::ClipPictures(PictureService& service, std::function<void()> arrived)
    : service_(service)
    , arrived_(std::move(arrived))
{
}

void ClipPictures::begin()
{
    ++painting_;
}

void ClipPictures::end()
{
    forget(frames_);
    forget(sounds_);
}

void ClipPictures::forget(Entries& entries) const
{
    const bool isFull = entries.size() > kMostKept;
    std::erase_if(entries, [&](const auto& entry) {
        return entry.second.painted != painting_ && (entry.second.ticket || isFull);
    });
}

/** Entries stay where they are in the map, and with one that goes its ticket goes. */
template <class Take>
void ClipPictures::ask(Entry& entry, PictureRequest wanted, Take take)
{
    entry.ticket =
        service_.request(std::move(wanted), PictureService::Priority::Visible, [this, &entry, take](const Made& made) {
            take(entry, made);
            entry.ticket.reset();
            arrived_();
        });
}

const QPixmap* ClipPictures::frame(const MediaInfo& media, const FormatData& format, int frame, int height)
{
    const auto [place, isNew] = frames_.try_emplace({media.path, frame});
    Entry& entry = place->second;
    entry.painted = painting_;
    if (isNew)
        ask(entry,
            request::MakeThumbnail{projectMedia(media, format.fpsNumerator, format.fpsDenominator),
                                   media.isStill() ? 0 : frame, kWidest * height, height},
            [](Entry& known, const Made& made) {
                if (made.picture)
                    known.picture = toPixmap(*made.picture);
            });
    return entry.picture.isNull() ? nullptr : &entry.picture;
}

const WaveformPeaks* ClipPictures::sound(const MediaInfo& media, int piece)
{
    const auto [place, isNew] = sounds_.try_emplace({media.path, piece});
    Entry& entry = place->second;
    entry.painted = painting_;
    if (isNew)
        ask(entry,
            request::MakeWaveform{media.path, 0, piece * kPieceLength, kPieceLength,
                                  static_cast<int>(kPieceLength) * kPartsPerSecond},
            [](Entry& known, const Made& made) { known.sound = made.waveform; });
    return entry.sound.get();
}

void ClipPictures::clear()
{
    frames_.clear();
    sounds_.clear();
}

bool ClipPictures::isComplete() const
{
    const auto hasCome = [](const auto& entry) { return !entry.second.ticket; };
    return std::ranges::all_of(frames_, hasCome) && std::ranges::all_of(sounds_, hasCome);
}

} // namespace workbench
