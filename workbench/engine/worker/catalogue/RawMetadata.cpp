#include "workbench/engine/worker/catalogue/RawMetadata.h"

#include "workbench/engine/worker/graph/MltSession.h"

#include <mlt++/Mlt.h>

#include <memory>

namespace workbench
{

namespace
{

std::string textOf(Mlt::Properties& properties, const char* name)
{
    const char* value = properties.get(name);
    return value ? value : "";
}

bool isYes(const std::string& text)
{
    return text == "yes" || text == "true" || text == "1";
}

/** The properties nested under a name; invalid when there are none. */
Mlt::Properties nested(Mlt::Properties& properties, const char* name)
{
    return Mlt::Properties(static_cast<mlt_properties>(properties.get_data(name)));
}

std::vector<std::string> listOf(Mlt::Properties& properties, const char* name)
{
    std::vector<std::string> result;
    Mlt::Properties list = nested(properties, name);
    for (int i = 0; list.is_valid() && i < list.count(); ++i)
        if (const char* value = list.get(i))
            result.emplace_back(value);
    return result;
}

RawParam readParam(Mlt::Properties& source)
{
    RawParam param;
    param.identifier = textOf(source, "identifier");
    param.title = textOf(source, "title");
    param.type = textOf(source, "type");
    param.description = textOf(source, "description");
    param.unit = textOf(source, "unit");
    param.widget = textOf(source, "widget");
    param.minimum = textOf(source, "minimum");
    param.maximum = textOf(source, "maximum");
    param.defaultText = textOf(source, "default");
    param.values = listOf(source, "values");
    param.readOnly = isYes(textOf(source, "readonly"));
    param.animated = isYes(textOf(source, "animation"));
    return param;
}

RawEffect readEffect(const char* service, Mlt::Properties& source)
{
    RawEffect effect;
    effect.service = service;
    effect.title = textOf(source, "title");
    effect.description = textOf(source, "description");
    effect.tags = listOf(source, "tags");
    Mlt::Properties params = nested(source, "parameters");
    for (int i = 0; params.is_valid() && i < params.count(); ++i) {
        Mlt::Properties param = nested(params, params.get_name(i));
        if (param.is_valid())
            effect.params.push_back(readParam(param));
    }
    return effect;
}

} // namespace

std::vector<RawEffect> readMetadata(MltSession& session)
{
    std::vector<RawEffect> result;
    Mlt::Repository& repository = session.repository();
    const std::unique_ptr<Mlt::Properties> filters(repository.filters());
    for (int i = 0; filters && i < filters->count(); ++i) {
        const char* service = filters->get_name(i);
        // A service without metadata gives an empty object rather than a null pointer.
        const std::unique_ptr<Mlt::Properties> metadata(repository.metadata(mlt_service_filter_type, service));
        if (metadata && metadata->is_valid() && metadata->count() > 0)
            result.push_back(readEffect(service, *metadata));
    }
    return result;
}

} // namespace workbench
