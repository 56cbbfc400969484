#pragma once

#include "oribund/host/effects/params/ParamValue.h"
#include "workbench/model/EditData.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace workbench
{

struct ParamDescription;

// How the values of parameters stand in the properties of a service, written and read. Numbers have a point whatever
// the locale.

/** A number as a service reads it: 12 significant digits. */
std::string serviceNumber(double value);

/** One number of a parameter, in shown units, as its service has it. */
std::string serviceNumber(const ParamDescription& description, double shown);

/** The reverse: a number of the service in shown units. Nothing for what is no finite number. */
std::optional<double> shownNumber(const ParamDescription& description, std::string_view raw);

/** A number as a service has it; some programs write it with the comma of their country. */
std::optional<double> numberFromService(std::string_view raw);

/** "#rrggbb", "#aarrggbb" or "0xrrggbbaa" as r, g, b, a. */
std::optional<std::array<double, 4>> parseServiceColour(std::string_view text);

/** A value as the text of the one property that holds it all. */
std::string serviceText(const ParamDescription& description, const oribund::ParamValue& value);

/** The reverse. Nothing for what the parameter cannot hold. */
std::optional<PlainValue> plainFromService(const ParamDescription& description, const std::string& raw);

/** The parts of a text between separators; none is empty. */
std::vector<std::string_view> splitText(std::string_view text, std::string_view separators);

} // namespace workbench
