#include "oribund/host/toolkit/lists/iTableAdaptor.h"

#include "oribund/host/canvas/UifStd.h"

namespace oribund
{

iTableAdaptor::iTableAdaptor() = default;

iTableAdaptor::~iTableAdaptor()
{
    events_.notify({TableAdaptorEvent::Kind::Gone});
}

bool iTableAdaptor::drawField(CanvasRenderer&, const XY<int>&, const Kt::Box<int>&, const Colour&)
{
    return false;
}

IdStamp iTableAdaptor::getRowId(int) const
{
    return {};
}

int iTableAdaptor::getRowHeight() const
{
    return UifStd::getRowHeight();
}

XY<int> iTableAdaptor::getSize() const
{
    return {};
}

bool iTableAdaptor::isVisible() const
{
    return true;
}

void iTableAdaptor::tableChanged()
{
    events_.notify({TableAdaptorEvent::Kind::Changed});
}

} // namespace oribund
