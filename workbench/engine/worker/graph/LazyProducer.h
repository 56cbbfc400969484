#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <mutex>

namespace Mlt
{
class Producer;
class Profile;
} // namespace Mlt

namespace workbench
{

/**
 * What is open of the sources of an edit: those that a picture was asked of last. An edit of thousands of cuts has no
 * more files open than one of a few. Any thread.
 */
class OpenSources
{
public:
    using Source = std::shared_ptr<Mlt::Producer>;

    /** Never empty: what cannot be opened is stood in for. */
    using Open = std::function<Source()>;

    /** Where one clip's source is kept while it is open. */
    struct Place {
        Open open;
        Source source;
    };

    /** How many may be open. */
    void allow(std::size_t most);

    /** Called before a source is opened, on the thread that does it. */
    void whenOpening(std::function<void()> tell);

    /** The source of the place, opened when it is not. Others are closed for it; frames keep what they come from. */
    Source use(const std::shared_ptr<Place>& place);

private:
    std::mutex mutex_;
    std::size_t most_ = 1;
    std::function<void()> tell_;
    std::list<std::weak_ptr<Place>> open_; // that which was used last is the first
};

/**
 * A producer of `length` frames that opens its source when a frame is asked for, and frame by frame shows what the
 * source shows. Effects are attached to it, not to the source. Null when the framework has no room for it.
 */
std::unique_ptr<Mlt::Producer> makeLazyProducer(Mlt::Profile& profile, int length, std::shared_ptr<OpenSources> sources,
                                                std::shared_ptr<OpenSources::Place> place);

} // namespace workbench
