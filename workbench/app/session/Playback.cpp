#include "workbench/app/session/Playback.h"

#include "workbench/model/projection/Projector.h"

#include <QCoreApplication>

#include <algorithm>
#include <mutex>
#include <optional>

namespace workbench
{

using oribund::EditModification;

/** What the engine has to say, until the user interface's thread comes to hear it. The latest of each kind counts. */
struct Playback::Mail : std::enable_shared_from_this<Playback::Mail> {
    std::mutex mutex;
    Playback* receiver = nullptr; // user interface's thread only
    bool posted = false;
    FrameImagePtr picture;
    std::optional<int> position;
    std::optional<bool> playing;
    std::vector<EngineProblem> problems;

    template <class Change>
    void post(Change&& change)
    {
        const std::lock_guard lock(mutex);
        change(*this);
        if (std::exchange(posted, true))
            return;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self = shared_from_this()] {
                if (self->receiver)
                    self->receiver->deliver();
            },
            Qt::QueuedConnection);
    }
};

Playback::Playback(std::shared_ptr<EngineHost> host, ModelVob& vob, Display display)
    : vob_(vob)
    , display_(std::move(display))
    , timeCallback_(this, &Playback::handleTime)
    , editCallback_(this, &Playback::handleModification)
    , paramCallback_(this, &Playback::handleParam)
    , mail_(std::make_shared<Mail>())
    , engine_(std::move(host), callbacks())
{
    mail_->receiver = this;
    flushTimer_.setSingleShot(true);
    QObject::connect(&flushTimer_, &QTimer::timeout, [this] { flush(); });
    timeCallback_.attach(vob_.getCurrentTimeServer().notifier());
    vob_.setTransport(this);
    editReplaced();
}

Playback::~Playback()
{
    mail_->receiver = nullptr;
    vob_.setTransport(nullptr);
}

EngineCallbacks Playback::callbacks()
{
    const std::shared_ptr<Mail> mail = mail_;
    EngineCallbacks callbacks;
    callbacks.frame = [mail](FrameImagePtr picture) { mail->post([&](Mail& m) { m.picture = std::move(picture); }); };
    callbacks.position = [mail](int frame) { mail->post([&](Mail& m) { m.position = frame; }); };
    callbacks.playing = [mail](bool playing) { mail->post([&](Mail& m) { m.playing = playing; }); };
    callbacks.problem = [mail](const EngineProblem& problem) {
        mail->post([&](Mail& m) { m.problems.push_back(problem); });
    };
    return callbacks;
}

void Playback::editReplaced()
{
    editCallback_.detach();
    paramCallback_.detach();
    changedParams_.clear();
    if (const EditModelPtr& edit = vob_.editModel()) {
        editCallback_.attach(edit->modifications());
        paramCallback_.attach(edit->paramEdits());
    }
    structureChanged_ = true;
    flushTimer_.start(0);
}

void Playback::setPictureSize(int width, int height)
{
    if (width == width_ && height == height_)
        return;
    width_ = width;
    height_ = height;
    requestFrame();
}

void Playback::retryEffects(const std::string& id)
{
    engine_.retryEffects(id);
    display_.leftOutMayDiffer();
}

bool Playback::isUpToDate() const
{
    const EditModelPtr& edit = vob_.editModel();
    if (flushTimer_.isActive())
        return false;
    const int frames = edit ? edit->timeline().endFrame() : 0;
    return frames == 0 || (shownRevision_ == revision_ && shownFrame_ == std::min(vob_.currentFrame(), frames - 1));
}

// To the engine

void Playback::startPlay()
{
    flush();
    requestFrame();
    engine_.play();
    vob_.playStateChanged(true); // a second press while the engine is slow to begin is to pause
}

void Playback::stopPlay()
{
    engine_.pause();
    // What never began is not told to end. Otherwise pictures come until it has ended.
    if (!enginePlays_)
        vob_.playStateChanged(false);
}

int Playback::handleTime(const oribund::ValServerEvent<double>& event)
{
    if (event.kind == oribund::ValEventKind::Changed && !following_ && vob_.currentFrame() != requested_)
        requestFrame();
    return 0;
}

int Playback::handleModification(const EditModification& modification)
{
    // Values come by handleParam(), and cues are not seen in the picture.
    if (modification.type == EditModification::Type::EffectContent || modification.type == EditModification::Type::Cues)
        return 0;
    structureChanged_ = true;
    flushTimer_.start(0);
    return 0;
}

int Playback::handleParam(const ParamEdited& edited)
{
    changedParams_.insert({edited.effect, edited.param});
    if (!flushTimer_.isActive())
        flushTimer_.start(0);
    return 0;
}

void Playback::flush()
{
    flushTimer_.stop();
    const EditModelPtr& edit = vob_.editModel();
    const auto params = std::exchange(changedParams_, {});
    if (!edit)
        return;
    if (std::exchange(structureChanged_, false)) {
        revision_ = engine_.load(project(*edit));
        vob_.setCurrentTime(vob_.getCurrentTime()); // the edit may have become shorter
    } else if (!params.empty()) {
        std::vector<PropertyUpdate> updates;
        for (const auto& [effect, param] : params) {
            std::vector<PropertyUpdate> some = projectParam(*edit, effect, param);
            updates.insert(updates.end(), some.begin(), some.end());
        }
        revision_ = engine_.update(std::move(updates));
    } else {
        return;
    }
    display_.leftOutMayDiffer();
    // The player goes on by itself, and shows what was changed.
    if (!vob_.isPlaying())
        requestFrame();
}

void Playback::requestFrame()
{
    const EditModelPtr& edit = vob_.editModel();
    if (!edit || width_ <= 0 || height_ <= 0)
        return;
    requested_ = vob_.currentFrame();
    const int frames = edit->timeline().endFrame();
    if (frames == 0)
        display_.picture(nullptr);
    else
        engine_.requestFrame(std::min(requested_, frames - 1), width_, height_);
}

// From the engine

void Playback::deliver()
{
    FrameImagePtr picture;
    std::optional<int> position;
    std::optional<bool> playing;
    std::vector<EngineProblem> problems;
    {
        const std::lock_guard lock(mail_->mutex);
        mail_->posted = false;
        picture = std::move(mail_->picture);
        position = std::exchange(mail_->position, std::nullopt);
        playing = std::exchange(mail_->playing, std::nullopt);
        problems = std::exchange(mail_->problems, {});
    }
    if (playing)
        enginePlays_ = *playing;
    if (playing && *playing)
        vob_.playStateChanged(true);
    if (position && vob_.isPlaying()) {
        following_ = true;
        vob_.setCurrentTime(vob_.timeOf(*position));
        following_ = false;
        requested_ = *position;
    }
    if (playing && !*playing) {
        vob_.playStateChanged(false);
        requestFrame(); // the frame at rest, in full quality
    }
    if (picture && vob_.editModel() && vob_.editModel()->getEndTime() > 0.0) {
        shownRevision_ = picture->revision;
        shownFrame_ = picture->frame;
        display_.picture(picture);
    }
    for (const EngineProblem& problem : problems)
        display_.problem(problem);
    if (!problems.empty())
        display_.leftOutMayDiffer();
}

} // namespace workbench
