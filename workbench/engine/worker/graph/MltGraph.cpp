#include "workbench/engine/worker/graph/MltGraph.h"

#include "workbench/engine/protocol/TraceMarks.h"
#include "workbench/engine/worker/graph/ClipSource.h"
#include "workbench/engine/worker/graph/FilterTrace.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/engine/worker/graph/ServiceFaults.h"
#include "workbench/engine/worker/graph/SoundGuard.h"
#include "workbench/model/projection/Admission.h"
#include "workbench/model/projection/AllowList.h"
#include "workbench/model/projection/ProjectionQueries.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <mutex>
#include <string_view>
#include <utility>

namespace workbench
{

/** A medium with the effects on it. */
struct MltGraph::Clip {
    ClipSource source;
    std::vector<std::unique_ptr<Mlt::Filter>> attached; // effects and markers

    Clip(const std::shared_ptr<Mlt::Profile>& profile, const ProjectedClip& wanted,
         const std::shared_ptr<OpenSources>& sources, std::function<void(const std::string&)> report)
        : source(profile, wanted, sources, std::move(report))
    {
    }

    ~Clip() { detachAll(); }

    Clip(const Clip&) = delete;
    Clip& operator=(const Clip&) = delete;

    Mlt::Producer& producer() const { return *source.producer(); }

    void detachAll()
    {
        for (const auto& filter : attached)
            producer().detach(*filter);
        attached.clear();
    }
};

/** What went wrong since it was asked for. Sources add to it, on whatever thread they are opened. */
class MltGraph::Problems
{
public:
    void add(EngineProblem problem)
    {
        const std::lock_guard lock(mutex_);
        problems_.push_back(std::move(problem));
    }

    std::vector<EngineProblem> take()
    {
        const std::lock_guard lock(mutex_);
        return std::exchange(problems_, {});
    }

private:
    std::mutex mutex_;
    std::vector<EngineProblem> problems_;
};

/** An effect or transition that is at work. */
struct MltGraph::Made {
    AllowList::Use use;
    std::string name; // of the service
    std::unique_ptr<Mlt::Service> service;
    std::string effect; // id of the effect that it is, or that it masks
};

namespace
{

constexpr std::string_view kFfmpegEffect = "avfilter.";
// So few are open from the beginning; of many, those that are shown. A track shows two at a time, and soon the next.
constexpr std::size_t kOpenedAtOnce = 16;
constexpr std::size_t kOpen = 32;
constexpr std::size_t kOpenPerTrack = 4;
// A playlist goes over all of its entries whenever one is added: a longer track is one of playlists.
constexpr std::size_t kEntriesOfAPlaylist = 64;
// A file on a slow disk may take longer to be opened than a frame may take.
constexpr std::chrono::seconds kOpening{10};

/** An effect is at work while it is made and set up, too. */
class AtWork
{
public:
    AtWork(TraceMarks* marks, const std::string& effect)
        : marks_(marks)
    {
        if (marks_)
            marks_->enter(effectMark(effect));
    }

    ~AtWork()
    {
        if (marks_)
            marks_->leave();
    }

    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;

private:
    TraceMarks* marks_;
};

void setProperties(Mlt::Properties& target, const ProjectedProperties& properties)
{
    for (const ProjectedProperty& property : properties)
        target.set(property.name.c_str(), property.value.c_str());
}

EngineProblem::Kind kindOf(Refusal::What what)
{
    return what == Refusal::What::Clip ? EngineProblem::Kind::MediaMissing : EngineProblem::Kind::EffectMissing;
}

} // namespace

std::unique_ptr<MltGraph> MltGraph::build(std::shared_ptr<MltSession> session, const Projection& projection,
                                          Options options)
{
    const Admission admission = admit(projection, *session->allowList());
    return std::unique_ptr<MltGraph>(new MltGraph(std::move(session), admission, options));
}

MltGraph::MltGraph(std::shared_ptr<MltSession> session, const Admission& admission, Options& options)
    : session_(std::move(session))
    , allowed_(session_->allowList())
    , marks_(options.marks)
    , projectedProfile_(admission.projection.profile)
    , length_(admission.projection.length)
    , silenced_(std::make_shared<SilencedEffects>())
{
    const Projection& projection = admission.projection;
    options.bypassed.insert(admission.left.begin(), admission.left.end());
    MltGraph* former = options.former.get();
    makeProfile(projection.profile, former);
    if (former) {
        silenced_ = former->silenced_;
        former->byId_.clear();
        former->tractor_.reset(); // gives up its hold on the clips
    }
    sources_ = former && former->profile_ == profile_ ? former->sources_ : std::make_shared<OpenSources>();
    sources_->allow(kOpen + kOpenPerTrack * projection.tracks.size());
    sources_->whenOpening([marks = marks_] {
        if (marks)
            marks->allowUntil(TraceMarks::Clock::now() + kOpening);
    });
    problems_ = former && former->profile_ == profile_ ? former->problems_ : std::make_shared<Problems>();
    for (const ProjectedClip& clip : projection.clips) {
        openClip(clip, former);
        ClipSource& source = clips_[clip.id]->source;
        if (projection.clips.size() <= kOpenedAtOnce || !source.isThere())
            source.open();
        attachFilters(*clips_[clip.id], clip, options);
    }

    tractor_ = std::make_unique<Mlt::Tractor>(*profile_);
    int index = 0;
    for (const ProjectedTrack& track : projection.tracks)
        addTrack(track, index++);
    for (const ProjectedTransition& transition : projection.transitions)
        addTransition(*tractor_, transition);
    if (length_ <= 0)
        length_ = tractor_->get_length();
    for (const Refusal& refusal : admission.refusals)
        report(kindOf(refusal.what), refusal.subject, refusal.message);
}

MltGraph::~MltGraph()
{
    // Whatever refers to the profile goes before it, and everything before the session.
    tractor_.reset();
    byId_.clear();
    clips_.clear();
    sources_.reset();
    profile_.reset();
}

void MltGraph::makeProfile(const ProjectedProfile& wanted, MltGraph* former)
{
    if (former && former->projectedProfile_ == wanted) {
        profile_ = former->profile_;
        return;
    }
    if (former)
        former->clips_.clear();
    profile_ = std::make_shared<Mlt::Profile>();
    profile_->set_width(wanted.width);
    profile_->set_height(wanted.height);
    profile_->set_frame_rate(wanted.fpsNumerator, wanted.fpsDenominator);
    profile_->set_sample_aspect(wanted.sampleAspectNumerator, wanted.sampleAspectDenominator);
    profile_->set_display_aspect(wanted.width * wanted.sampleAspectNumerator,
                                 wanted.height * wanted.sampleAspectDenominator);
    profile_->set_colorspace(wanted.colourspace);
    profile_->set_progressive(wanted.progressive ? 1 : 0);
    profile_->set_explicit(1);
}

void MltGraph::openClip(const ProjectedClip& wanted, MltGraph* former)
{
    if (former) {
        const auto open = former->clips_.find(wanted.id);
        if (open != former->clips_.end() && open->second->source.serves(wanted)) {
            open->second->detachAll();
            open->second->source.stretchTo(wanted);
            clips_[wanted.id] = std::move(open->second);
            former->clips_.erase(open);
            return;
        }
    }
    clips_[wanted.id] = std::make_unique<Clip>(profile_, wanted, sources_,
                                               [problems = problems_, id = wanted.id](const std::string& message) {
                                                   problems->add({EngineProblem::Kind::MediaMissing, message, id, {}});
                                               });
}

void MltGraph::attachFilters(Clip& clip, const ProjectedClip& wanted, const Options& options)
{
    std::vector<const ProjectedFilter*> filters;
    for (const ProjectedFilter& filter : wanted.filters)
        if (!options.bypassed.contains(filter.effectId()))
            filters.push_back(&filter);
    const auto mark = [&](std::size_t done) {
        if (!options.marks || filters.empty())
            return;
        const std::string below = done > 0 ? filters[done - 1]->effectId() : std::string();
        const std::string next = done < filters.size() ? filters[done]->effectId() : std::string();
        if (auto marker = attachMarker(clip.producer(), *options.marks, below, next))
            clip.attached.push_back(std::move(marker));
    };

    mark(0);
    for (std::size_t i = 0; i < filters.size(); ++i) {
        const ProjectedFilter& source = *filters[i];
        const AtWork atWork(options.marks, source.effectId());
        auto filter = std::make_unique<Mlt::Filter>(*profile_, source.service.c_str());
        if (filter->is_valid()) {
            forgetFault(*filter);
            setProperties(*filter, source.properties);
            filter->set_in_and_out(source.in, source.out);
            clip.producer().attach(*filter);
            byId_[source.id] = {source.partOf.empty() ? AllowList::Use::Filter : AllowList::Use::MaskFilter,
                                source.service, std::make_unique<Mlt::Service>(*filter), source.effectId()};
            clip.attached.push_back(std::move(filter));
            if (isSoundEffect(source.service))
                if (auto guard = attachSoundGuard(clip.producer(), source.id, silenced_))
                    clip.attached.push_back(std::move(guard));
        } else {
            report(EngineProblem::Kind::EffectMissing, source.id,
                   "The effect " + inQuotes(source.service) + " is not installed.");
        }
        mark(i + 1);
    }
}

bool MltGraph::isSoundEffect(const std::string& service) const
{
    const EffectCatalogue::Entry effect = allowed_->effects().find(service);
    return effect && effect->medium == EffectDescription::Medium::Audio;
}

std::unique_ptr<Mlt::Producer> MltGraph::makeCut(const ProjectedCut& cut)
{
    const auto clip = clips_.find(cut.clip);
    if (clip == clips_.end())
        return nullptr;
    return std::unique_ptr<Mlt::Producer>(clip->second->producer().cut(cut.in, cut.out));
}

std::unique_ptr<Mlt::Tractor> MltGraph::makeMix(const ProjectedEntry& entry)
{
    auto tractor = std::make_unique<Mlt::Tractor>(*profile_);
    int index = 0;
    for (const ProjectedCut* cut : {&entry.first, &entry.second}) {
        if (const std::unique_ptr<Mlt::Producer> producer = makeCut(*cut))
            tractor->set_track(*producer, index);
        ++index;
    }
    for (const ProjectedTransition& transition : entry.transitions)
        addTransition(*tractor, transition);
    return tractor;
}

void MltGraph::addTrack(const ProjectedTrack& track, int index)
{
    Mlt::Playlist playlist(*profile_);
    if (!track.id.empty())
        playlist.set("id", track.id.c_str());
    playlist.set("hide", static_cast<int>(track.hide));

    const std::span<const ProjectedEntry> entries(track.entries);
    if (entries.size() <= kEntriesOfAPlaylist)
        addEntries(playlist, entries);
    for (std::size_t from = 0; entries.size() > kEntriesOfAPlaylist && from < entries.size();
         from += kEntriesOfAPlaylist) {
        Mlt::Playlist part(*profile_);
        addEntries(part, entries.subspan(from, std::min(kEntriesOfAPlaylist, entries.size() - from)));
        playlist.append(part, 0, part.get_playtime() - 1);
    }
    tractor_->set_track(playlist, index);
}

void MltGraph::addEntries(Mlt::Playlist& playlist, std::span<const ProjectedEntry> entries)
{
    for (const ProjectedEntry& entry : entries) {
        if (entry.kind == ProjectedEntry::Kind::Blank) {
            playlist.blank(entry.length - 1);
        } else if (entry.kind == ProjectedEntry::Kind::Mix) {
            const std::unique_ptr<Mlt::Tractor> mix = makeMix(entry);
            playlist.append(*mix, 0, entry.length - 1);
        } else {
            const auto clip = clips_.find(entry.first.clip);
            if (clip != clips_.end())
                playlist.append(clip->second->producer(), entry.first.in, entry.first.out);
            else
                playlist.blank(entry.first.out - entry.first.in);
        }
    }
}

void MltGraph::addTransition(Mlt::Tractor& tractor, const ProjectedTransition& wanted)
{
    Mlt::Transition transition(*profile_, wanted.service.c_str());
    if (!transition.is_valid()) {
        report(EngineProblem::Kind::EffectMissing, wanted.id,
               "The transition " + inQuotes(wanted.service) + " is not installed.");
        return;
    }
    setProperties(transition, wanted.properties);
    if (wanted.in == 0 && wanted.out == 0)
        transition.set("always_active", 1);
    else
        transition.set_in_and_out(wanted.in, wanted.out);
    tractor.plant_transition(transition, wanted.aTrack, wanted.bTrack);
    if (!wanted.id.empty())
        byId_[wanted.id] = {AllowList::Use::Transition, wanted.service, std::make_unique<Mlt::Service>(transition),
                            wanted.id};
}

void MltGraph::report(EngineProblem::Kind kind, const std::string& subject, std::string message)
{
    problems_->add({kind, std::move(message), subject, {}});
}

Mlt::Producer& MltGraph::producer()
{
    return *tractor_;
}

std::vector<EngineProblem> MltGraph::takeProblems()
{
    for (const std::string& id : silenced_->take())
        if (const auto found = byId_.find(id); found != byId_.end()) {
            const EffectCatalogue::Entry effect = allowed_->effects().find(found->second.name);
            const std::string title = effect ? effect->title : found->second.name;
            problems_->add(
                {EngineProblem::Kind::EffectSilenced,
                 "The effect " + inQuotes(title) + " makes sound that cannot be played. There is silence instead.",
                 id,
                 {found->second.name}});
        }
    return problems_->take();
}

bool MltGraph::apply(const PropertyUpdate& update)
{
    const auto found = byId_.find(update.service);
    if (found == byId_.end() ||
        !allowed_->allowsProperty(found->second.use, found->second.name, update.property, update.value))
        return false;
    const AtWork atWork(marks_, found->second.effect);
    if (isBroken(found->second))
        makeAnew(found->second);
    // Not under the service's lock: it is not recursive, and some effects take it when a property changes.
    found->second.service->set(update.property.c_str(), update.value.c_str());
    return true;
}

bool MltGraph::makesAnew(const std::vector<PropertyUpdate>& updates) const
{
    return std::any_of(updates.begin(), updates.end(), [this](const PropertyUpdate& update) {
        const auto found = byId_.find(update.service);
        return found != byId_.end() && isBroken(found->second);
    });
}

bool MltGraph::isBroken(const Made& made) const
{
    return made.name.starts_with(kFfmpegEffect) && hasFault(*made.service);
}

/** In its old place, with its old settings. */
void MltGraph::makeAnew(Made& broken)
{
    const auto isIt = [&](const auto& filter) { return filter->get_service() == broken.service->get_service(); };
    for (const auto& [id, clip] : clips_) {
        const auto place = std::find_if(clip->attached.begin(), clip->attached.end(), isIt);
        if (place == clip->attached.end())
            continue;
        auto fresh = std::make_unique<Mlt::Filter>(*profile_, broken.name.c_str());
        for (int i = 0; i < broken.service->count(); ++i)
            if (const std::string name = broken.service->get_name(i); name.starts_with("av.") || name == "disable")
                fresh->set(name.c_str(), broken.service->get(i));
        fresh->set_in_and_out((*place)->get_in(), (*place)->get_out());
        forgetFault(*fresh);
        for (const auto& filter : clip->attached)
            clip->producer().detach(*filter);
        broken.service = std::make_unique<Mlt::Service>(*fresh);
        *place = std::move(fresh);
        for (const auto& filter : clip->attached)
            clip->producer().attach(*filter);
        return;
    }
}

std::vector<Mlt::Service*> MltGraph::services() const
{
    std::vector<Mlt::Service*> result{tractor_.get()};
    for (const auto& [id, made] : byId_)
        result.push_back(made.service.get());
    for (const auto& [id, clip] : clips_) {
        result.push_back(clip->source.producer());
        if (Mlt::Producer* const opened = clip->source.opened())
            result.push_back(opened);
        for (const auto& filter : clip->attached)
            result.push_back(filter.get());
    }
    return result;
}

} // namespace workbench
