#pragma once

#include "tests/support/Desk.h"

#include "oribund/host/toolkit/values/ValAdaptorBase.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace oribund::test
{

/** Keeps a value, writes down what is asked of it, and tells its widgets when the value changes. */
template <class T>
class StoreAdaptor : public ValAdaptorBase<T>
{
public:
    explicit StoreAdaptor(T initial = {})
        : value(std::move(initial))
    {
    }

    T getDataValue() override { return value; }

    bool requestSetValue(const T& requested, ChangeKind kind) override
    {
        requests.emplace_back(requested, kind);
        if (onRequest)
            onRequest();
        const T stored = convert ? convert(requested) : requested;
        if (refuses)
            return false;
        if (!(stored == value)) {
            value = stored;
            this->forceWidgetUpdate(eRedrawFlag::Yes);
        }
        return true;
    }

    void handleSeriesEnd() override { ++seriesEnds; }

    bool cancelSeries() override
    {
        ++cancels;
        if (restoresTo)
            value = *restoresTo;
        return restoresTo.has_value();
    }

    bool takeBackSeries() override
    {
        ++takenBack;
        if (restoresTo)
            value = *restoresTo;
        return restoresTo.has_value();
    }

    /** The kinds of the requests so far, for example "SCC." for a series of three and a change on its own. */
    std::string kinds() const
    {
        std::string text;
        for (const auto& request : requests)
            text += request.second == ChangeKind::Start ? 'S' : request.second == ChangeKind::Single ? '.' : 'C';
        return text;
    }

    T value;
    bool refuses = false;
    std::function<T(const T&)> convert;
    std::function<void()> onRequest;
    std::optional<T> restoresTo;
    std::vector<std::pair<T, ChangeKind>> requests;
    int seriesEnds = 0;
    int cancels = 0;
    int takenBack = 0;
};

} // namespace oribund::test
