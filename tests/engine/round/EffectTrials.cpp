#include "tests/engine/round/EffectTrials.h"

#include "workbench/model/EffectDescription.h"
#include "workbench/model/ParamConversion.h"
#include "workbench/model/projection/ParamBaker.h"

#include <optional>
#include <random>

namespace workbench
{

namespace
{

using Values = std::vector<PlainValue>;

/** What can be set, from end to end. */
Values valuesOf(const ParamDescription& param)
{
    const double middle = (param.minimum + param.maximum) / 2.0;
    switch (param.kind) {
    case ParamKind::Bool:
        return {false, true};
    case ParamKind::Colour:
        return {std::array{0.0, 0.0, 0.0, 0.0}, std::array{0.2, 0.4, 0.6, 0.5}, std::array{1.0, 1.0, 1.0, 1.0}};
    case ParamKind::Point:
        return {std::array{param.minimum, param.minimum}, std::array{param.minimum, param.maximum},
                std::array{middle, middle}, std::array{param.maximum, param.maximum}};
    case ParamKind::IntList:
    case ParamKind::TextList: {
        Values items;
        for (const ListItem& item : param.items)
            items.emplace_back(item.raw);
        return items;
    }
    default:
        return {param.minimum, middle, param.maximum};
    }
}

std::string textOf(const ProjectedProperties& properties)
{
    std::string text;
    for (const ProjectedProperty& property : properties)
        text += (text.empty() ? "" : " ") + property.name + '=' + property.value;
    return text;
}

class Trials
{
public:
    Trials(const EffectDescription& effect, int length)
        : effect_(effect)
        , span_{length, 0, length - 1}
        , chosen_(effect.params.size())
    {
    }

    std::vector<EffectTrial> make(int chances)
    {
        add("defaults");
        for (std::size_t i = 0; i < chosen_.size(); ++i) {
            addEach(i);
            chosen_.assign(chosen_.size(), std::nullopt);
        }
        if (chosen_.size() > 1) {
            chooseAll("all lowest", [](const Values& values) { return values.front(); });
            chooseAll("all highest", [](const Values& values) { return values.back(); });
        }
        for (int i = 0; i < (chosen_.empty() ? 0 : chances); ++i)
            chooseAll("chance", [this](const Values& values) { return any(values); });
        return std::move(trials_);
    }

private:
    void addEach(std::size_t index)
    {
        const ParamDescription& param = effect_.params[index];
        for (const PlainValue& value : valuesOf(param)) {
            chosen_[index] = ParamData{param.property, value, false, {}};
            add(textOf(written(index)));
        }
        if (param.animatable && (param.kind == ParamKind::Double || param.kind == ParamKind::Angle)) {
            const ChannelData moving{{0.0, param.minimum, {}, {}, {}}, {1.0, param.maximum, {}, {}, {}}};
            chosen_[index] = ParamData{param.property, param.minimum, true, {moving}};
            add(param.property + " moving");
        }
    }

    template <class Choice>
    void chooseAll(const std::string& name, Choice&& choice)
    {
        std::string what = name;
        for (std::size_t i = 0; i < chosen_.size(); ++i) {
            chosen_[i] = ParamData{effect_.params[i].property, choice(valuesOf(effect_.params[i])), false, {}};
            what += ' ' + textOf(written(i));
        }
        add(what);
        chosen_.assign(chosen_.size(), std::nullopt);
    }

    PlainValue any(const Values& values)
    {
        const double* const low = std::get_if<double>(&values.front());
        if (!low)
            return values[random_() % values.size()];
        return *low + (std::get<double>(values.back()) - *low) * static_cast<double>(random_()) / std::mt19937::max();
    }

    ProjectedProperties written(std::size_t index) const
    {
        const ParamDescription& param = effect_.params[index];
        ProjectedProperties properties;
        if (const auto model = makeParam(param, {})) {
            if (chosen_[index])
                restoreParam(*model, *chosen_[index]);
            bakeParam(param, *model, span_, properties);
        }
        return properties;
    }

    void add(const std::string& what)
    {
        EffectTrial trial{what, {}};
        for (const auto& [name, value] : effect_.fixedProperties)
            trial.properties.push_back({name, value});
        for (std::size_t i = 0; i < chosen_.size(); ++i)
            for (ProjectedProperty& property : written(i))
                trial.properties.push_back(std::move(property));
        trials_.push_back(std::move(trial));
    }

    const EffectDescription& effect_;
    BakeSpan span_;
    std::vector<std::optional<ParamData>> chosen_; // empty: the default
    std::vector<EffectTrial> trials_;
    std::mt19937 random_;
};

} // namespace

std::vector<EffectTrial> trialsOf(const EffectDescription& effect, int length, int chances)
{
    return Trials(effect, length).make(chances);
}

} // namespace workbench
