#pragma once

namespace oribund::qt
{

/** A native widget that a surface has opened for a glob, and that goes when the glob does. */
class GlobFollower
{
public:
    virtual ~GlobFollower() = default;

    /** Something has changed on the surface: looks whether the glob is still there. */
    virtual void followGlob() = 0;
};

} // namespace oribund::qt
