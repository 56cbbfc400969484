#pragma once

#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/edit/monitor/FXVobClient.h"
#include "oribund/host/notify/ChangeKind.h"
#include "workbench/app/overlay/EffectHandles.h"

namespace workbench
{

/**
 * The edits that are made with one handle: a drag, which is one undo step, or a single step by key. Whatever it calls
 * may destroy it: nothing here is touched after a write.
 */
class HandleDrag final : public oribund::FXVobClient
{
public:
    /** `view` is of the effect that has the handle's parameter. */
    HandleDrag(const oribund::FXViewHandle& view, const PictureHandle& handle);

    /** Whether the user may change the parameter now. */
    bool mayEdit() const;

    /** Takes hold of the handle, which is the one it was made for, where it is now. */
    void begin(const PictureHandle& handle, const PictureMapping& mapping);

    bool isBegun() const { return begun_; }

    /** Somebody else has ended it, such as an undo in its middle: what was done stands. */
    bool isLost() const { return gesture_.isLost(); }

    /** To where the handle was at the beginning, and a distance in the view. */
    void moveBy(const PictureMapping::Pixels& distance);

    void finish();

    /** Puts back what was there at the beginning. */
    void abort();

    /** A step on its own; x alone counts for what has one number. */
    void stepBy(const oribund::Vector2d& difference);

    /** To the parameter's default. */
    void reset();

    /** The value at the current time, empty when there is none. */
    std::optional<oribund::ParamValue> value() const;

private:
    double fxTime() const;
    void write(const oribund::ParamValue& value, oribund::ChangeKind kind);

    PictureHandle handle_;
    PictureMapping mapping_;
    std::optional<oribund::ParamValue> original_;
    oribund::EditGesture gesture_;
    bool begun_ = false;
    bool written_ = false;
};

} // namespace workbench
