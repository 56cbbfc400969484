#pragma once

#include <memory>

namespace Mlt
{
class Filter;
class Producer;
} // namespace Mlt

namespace workbench
{

/**
 * Has a film show its last picture to its end, wherever the rendering begins. The length of a file is that of its
 * longest stream, and rounded to the edit's frames: the last ones may have no picture. Who plays up to them sees the
 * last one stand; who begins with them would see the white of the framework's test card.
 *
 * Attached above everything else on the producer, and detached before that goes. Null when it cannot be made.
 */
std::unique_ptr<Mlt::Filter> attachEndHold(Mlt::Producer& producer);

} // namespace workbench
