#pragma once

#include <memory>
#include <string>

namespace Mlt
{
class Filter;
class Service;
} // namespace Mlt

namespace workbench
{

class TraceMarks;

/**
 * Attaches a marker above what is attached so far: a filter that does nothing but note in the marks that the rendering
 * passes it. With a marker below the first effect of a clip and one above each, the rendering is in an effect whenever
 * the last marker it passed was that effect's.
 *
 * `effect` is the id of the effect just below the marker, `next` of the one to be attached after it; both may be empty.
 * The marks outlive what is made here. Null when the framework has no room.
 */
std::unique_ptr<Mlt::Filter> attachMarker(Mlt::Service& service, TraceMarks& marks, const std::string& effect,
                                          const std::string& next);

} // namespace workbench
