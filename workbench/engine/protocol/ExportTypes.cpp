#include "workbench/engine/protocol/ExportTypes.h"

#include <algorithm>

namespace workbench
{

const ExportPreset* findExportPreset(const std::vector<ExportPreset>& presets, std::string_view path)
{
    const std::size_t dot = path.rfind('.');
    if (dot == std::string_view::npos)
        return nullptr;
    std::string extension(path.substr(dot + 1));
    for (char& c : extension)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    const auto found = std::find_if(presets.begin(), presets.end(),
                                    [&](const ExportPreset& preset) { return preset.extension == extension; });
    return found == presets.end() ? nullptr : &*found;
}

} // namespace workbench
