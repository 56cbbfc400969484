#pragma once

#include "workbench/app/session/Background.h"
#include "workbench/model/EditData.h"

#include <functional>
#include <memory>
#include <set>
#include <string>

namespace workbench
{

class Workspace;

/** Puts effects on segments. One that is not known to be sound is tried first, where it can do no harm. */
class EffectAdder
{
public:
    explicit EffectAdder(Workspace& workspace);

    /** Adds the effect as the last one of the selected segment, or says why not. */
    void add(const std::string& service);

    /** Called with the name of the effect that takes a while to try, and with none once that is over. */
    std::function<void(const std::string& title)> trying = [](const std::string&) {};

    bool isBusy() const { return background_.pending() > 0; }

private:
    void addTo(ObjectId segment, const std::string& service);

    Workspace& workspace_;
    Background background_;
    std::shared_ptr<int> alive_ = std::make_shared<int>(); ///< gone with the adder
    std::set<std::string> sound_;                          ///< services that were tried and work
};

} // namespace workbench
