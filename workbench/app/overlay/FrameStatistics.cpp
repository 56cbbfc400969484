#include "workbench/app/overlay/FrameStatistics.h"

#include <utility>

namespace workbench
{

namespace
{
/** Enough to tell how colours are distributed. */
constexpr int kCountedWidth = 160;
constexpr int kCountedHeight = 160;

/** In a drag nobody looks at it. Milliseconds. */
constexpr int kPause = 120;
} // namespace

FrameStatistics::FrameStatistics(Workspace& workspace)
    : workspace_(workspace)
    , replaced_(this, &FrameStatistics::handleReplaced)
    , time_(this, &FrameStatistics::handleTime)
    , playing_(this, &FrameStatistics::handlePlaying)
    , edit_(this, &FrameStatistics::handleModification)
    , params_(this, &FrameStatistics::handleParam)
{
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, [this] { ask(); });
    replaced_.attach(workspace_.replaced());
    time_.attach(workspace_.vob().getCurrentTimeServer().notifier());
    playing_.attach(workspace_.vob().playServer().notifier());
    handleReplaced({});
    workspace_.vob().setFrameStatistics(this);
}

FrameStatistics::~FrameStatistics()
{
    workspace_.vob().setFrameStatistics(nullptr);
}

const oribund::iFrameStatistics::Histogram* FrameStatistics::histogram(const oribund::IdStamp& effect,
                                                                       oribund::ColourAxis axis)
{
    const auto [place, isNew] = known_.try_emplace(effect);
    Known& known = place->second;
    known.isWanted = true;
    if (isNew) {
        known.input =
            std::make_unique<InputPicture>(workspace_.vob(), workspace_.pictures(),
                                           [this, effect](const FrameImagePtr& picture) { receive(effect, picture); });
        // Not now: whoever asks may be in the middle of an edit.
        timer_.start(0);
    }
    return known.count ? &(*known.count)[static_cast<std::size_t>(axis)] : nullptr;
}

void FrameStatistics::ask()
{
    if (workspace_.vob().isPlaying())
        return;
    std::erase_if(known_, [](const auto& one) { return !one.second.isWanted; });
    for (auto& [effect, known] : known_)
        known.input->ask(effect, kCountedWidth, kCountedHeight);
}

void FrameStatistics::receive(const oribund::IdStamp& effect, const FrameImagePtr& picture)
{
    Known& known = known_.at(effect);
    if (!picture && !known.count)
        return;
    known.count = picture ? std::optional(countColours(*picture)) : std::nullopt;
    // Who still shows it asks again.
    known.isWanted = false;
    changes_.notify(*this);
}

// What may make it another

int FrameStatistics::handleReplaced(const EditReplaced&)
{
    known_.clear();
    edit_.detach();
    params_.detach();
    edit_.attach(workspace_.edit().modifications());
    params_.attach(workspace_.edit().paramEdits());
    return 0;
}

int FrameStatistics::handleTime(const oribund::ValServerEvent<double>& event)
{
    if (event.kind == oribund::ValEventKind::Changed)
        askSoon();
    return 0;
}

int FrameStatistics::handlePlaying(const oribund::ValServerEvent<bool>& event)
{
    if (event.kind == oribund::ValEventKind::Changed)
        askSoon();
    return 0;
}

int FrameStatistics::handleModification(const oribund::EditModification&)
{
    askSoon();
    return 0;
}

int FrameStatistics::handleParam(const ParamEdited&)
{
    askSoon();
    return 0;
}

void FrameStatistics::askSoon()
{
    if (!known_.empty())
        timer_.start(kPause);
}

} // namespace workbench
