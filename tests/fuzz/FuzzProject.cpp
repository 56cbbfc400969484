// Project files: whatever the bytes, what is read is an edit without fault, and survives being saved and read again.
#include "tests/support/SampleEdit.h"
#include "workbench/store/ProjectFile.h"

#include <cstdint>
#include <cstdlib>

namespace
{

using namespace sample;

void require(bool kept)
{
    if (!kept)
        std::abort();
}

/** Whether writing it is quick: curves are written frame by frame. */
bool isShort(const EditData& edit)
{
    long long frames = 0;
    for (const TrackData& track : edit.tracks)
        for (const SegmentData& segment : track.segments)
            frames += segment.effects.empty() ? 0 : segment.length;
    return frames < 20'000;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ProjectReading reading = parseProject({reinterpret_cast<const char*>(data), size}, "/folder", catalogue());
    require(reading.error.empty() == reading.edit.has_value());
    if (!reading)
        return 0;
    require(findFault(*reading.edit).empty());
    const EditModel edit(*reading.edit, catalogue());
    const EditData opened = edit.snapshot();
    if (!isShort(opened))
        return 0;
    const ProjectReading again = parseProject(projectXml(edit, reading.view, {}), {}, catalogue());
    require(again && again.warnings.empty() && *again.edit == opened && again.view == reading.view);
    return 0;
}
