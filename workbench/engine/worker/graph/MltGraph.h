#pragma once

#include "workbench/engine/protocol/EngineTypes.h"
#include "workbench/model/projection/Projection.h"

#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace Mlt
{
class Playlist;
class Producer;
class Profile;
class Service;
class Tractor;
} // namespace Mlt

namespace workbench
{

struct Admission;
class AllowList;
class MltSession;
class OpenSources;
class SilencedEffects;
class TraceMarks;

/**
 * The services that render one projection of an edit. Used by one thread at a time; players and exporters that read
 * from its producer on threads of their own are stopped before it changes or goes.
 */
class MltGraph
{
public:
    struct Options {
        std::set<std::string> bypassed;   ///< ids of effects that are left out
        TraceMarks* marks = nullptr;      ///< when given, tells which effect is at work; outlives the graph
        std::unique_ptr<MltGraph> former; ///< media that it has open and that are still wanted are taken over
    };

    /** Always makes a graph: what is not allowed, cannot be opened or found is replaced or left out, and told by
        takeProblems(). */
    static std::unique_ptr<MltGraph> build(std::shared_ptr<MltSession> session, const Projection& projection,
                                           Options options);

    ~MltGraph();

    MltGraph(const MltGraph&) = delete;
    MltGraph& operator=(const MltGraph&) = delete;

    Mlt::Profile& profile() { return *profile_; }

    /** The whole edit. */
    Mlt::Producer& producer();

    int length() const { return length_; }

    /** Those that came up since the last call: in the making, when a source was opened for a frame, or when the sound
       of an effect was replaced by silence. Each is told once. */
    std::vector<EngineProblem> takeProblems();

    /** False when there is no such effect or transition, or when the value is not allowed. */
    bool apply(const PropertyUpdate& update);

    /** Whether one of the changes makes an effect anew, for which nobody may be reading from producer(). */
    bool makesAnew(const std::vector<PropertyUpdate>& updates) const;

    /** Every service of the graph, for counting what is still alive. */
    std::vector<Mlt::Service*> services() const;

private:
    struct Clip;
    class Problems;
    struct Made;

    MltGraph(std::shared_ptr<MltSession> session, const Admission& admission, Options& options);

    void makeProfile(const ProjectedProfile& wanted, MltGraph* former);
    void openClip(const ProjectedClip& wanted, MltGraph* former);
    void attachFilters(Clip& clip, const ProjectedClip& wanted, const Options& options);
    void addTrack(const ProjectedTrack& track, int index);
    void addEntries(Mlt::Playlist& playlist, std::span<const ProjectedEntry> entries);
    std::unique_ptr<Mlt::Tractor> makeMix(const ProjectedEntry& entry);
    std::unique_ptr<Mlt::Producer> makeCut(const ProjectedCut& cut);
    void addTransition(Mlt::Tractor& tractor, const ProjectedTransition& wanted);
    bool isSoundEffect(const std::string& service) const;
    bool isBroken(const Made& made) const;
    void makeAnew(Made& broken);
    void report(EngineProblem::Kind kind, const std::string& subject, std::string message);

    std::shared_ptr<MltSession> session_;
    std::shared_ptr<const AllowList> allowed_;
    TraceMarks* marks_;
    ProjectedProfile projectedProfile_;
    std::shared_ptr<Mlt::Profile> profile_;
    std::shared_ptr<OpenSources> sources_;
    std::map<std::string, std::unique_ptr<Clip>> clips_;
    std::map<std::string, Made> byId_; // effects and transitions
    std::unique_ptr<Mlt::Tractor> tractor_;
    std::shared_ptr<Problems> problems_;
    int length_ = 0;
    std::shared_ptr<SilencedEffects> silenced_;
};

} // namespace workbench
