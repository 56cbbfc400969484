#pragma once

#include "workbench/engine/client/PictureService.h"
#include "workbench/model/EditData.h"

#include <QPixmap>

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace workbench
{

/**
 * First frames and sound of the clips that a strip shows. What is not there yet is asked for, and taken back when it is
 * not painted any more. User-interface thread only.
 */
class ClipPictures
{
public:
    static constexpr double kPieceLength = 30.0; ///< seconds of sound that are asked for at a time
    static constexpr int kPartsPerSecond = 50;

    /** `arrived` is called when there is more to paint. The service outlives what is made here. */
    ClipPictures(PictureService& service, std::function<void()> arrived);

    /** Each painting is between the two. What it does not ask for, and is still to come, is not wanted any more. */
    void begin();
    void end();

    /** The frame, counted in the edit's rate, of such a height in pixels of the screen; null for none as yet. */
    const QPixmap* frame(const MediaInfo& media, const FormatData& format, int frame, int height);

    /** A piece of the sound, counted from the start of the file; null for none as yet. */
    const WaveformPeaks* sound(const MediaInfo& media, int piece);

    /** Nothing is left of what was shown: another edit comes. */
    void clear();

    /** Whether nothing that was asked for is still to come. */
    bool isComplete() const;

private:
    struct Entry {
        PictureService::Ticket ticket; ///< until it has come
        QPixmap picture;
        std::shared_ptr<const WaveformPeaks> sound;
        int painted = 0; ///< when it was asked for last
    };

    using Key = std::pair<std::string, int>;
    using Entries = std::map<Key, Entry>;

    template <class Take>
    void ask(Entry& entry, PictureRequest wanted, Take take);
    void forget(Entries& entries) const;

    PictureService& service_;
    const std::function<void()> arrived_;
    Entries frames_;
    Entries sounds_;
    int painting_ = 0;
};

} // namespace workbench
