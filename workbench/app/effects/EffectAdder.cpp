#include "workbench/app/effects/EffectAdder.h"

#include "workbench/app/session/Say.h"
#include "workbench/app/session/Workspace.h"

#include <QApplication>
#include <QTimer>

namespace workbench
{

namespace
{

constexpr int kWonderAfter = 400; // ms, after which somebody wonders whether anything happens

} // namespace

EffectAdder::EffectAdder(Workspace& workspace)
    : workspace_(workspace)
{
}

void EffectAdder::add(const std::string& service)
{
    const EffectCatalogue::Entry effect = workspace_.catalogue().find(service);
    const Segment* const segment = workspace_.targetSegment();
    if (!effect)
        return say("The effect " + quoted(service) + " is not installed.");
    if (!effect->blockedBecause.empty())
        return say(quoted(effect->title) + " cannot be used: " + effect->blockedBecause);
    if (!segment)
        return say("There is no segment to put " + quoted(effect->title) + " on. Open media, or select a segment.");
    const ObjectId target = segment->id();
    if (effect->curated || sound_.contains(service))
        return addTo(target, service);
    QTimer::singleShot(kWonderAfter, qApp, [this, title = effect->title, alive = std::weak_ptr(alive_)] {
        if (!alive.expired() && isBusy())
            trying(title);
    });
    background_.run([this, effect, target, engine = workspace_.engine()]() -> Background::Completion {
        const EffectProbeResult result = engine->probeEffect(effect->service, effect->fixedProperties);
        return [this, effect, target, result] {
            trying({});
            if (!result.works() && result.outcome != EffectProbeResult::Outcome::NotTried)
                return say(quoted(effect->title) + " was not added: the effect " + result.message,
                           oribund::MessageSink::Severity::Error);
            sound_.insert(effect->service);
            addTo(target, effect->service);
        };
    });
}

void EffectAdder::addTo(ObjectId segment, const std::string& service)
{
    if (const EditOutcome outcome = workspace_.editor().addEffect(segment, service); !outcome)
        say(outcome.refused);
}

} // namespace workbench
