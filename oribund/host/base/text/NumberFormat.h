#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/text/NumberExpression.h"

namespace oribund
{

/** How a number is shown to a person, and what is made of a text that is typed in its place. */
struct ORIBUND_API NumberFormat {
    /** How many are shown, 0 to 15, without trailing zeros. The number itself is not rounded. */
    int decimals = 6;
    /** What is shown for a value of 1: 100 for a percentage. Not 0. */
    double factor = 1.0;
    /** Stands right behind the number: with the blank before it, if there is to be one. */
    WString unit;
    /** Above 0, so many digits and a power of ten, "1.25e-7", in the place of decimals. At most 15. */
    int significant = 0;

    /** The number in per cent, with its sign. */
    static NumberFormat percentage(int decimals) { return {decimals, 100.0, L" %"}; }

    /** Whether it shows percentages, so that the sign adds nothing to what is typed. */
    bool isPercentage() const;

    WString textOf(double value) const;

    /**
     * The value that a text stands for. A percentage means itself where percentages are shown, otherwise that part of
     * `now`, the value that is there.
     */
    NumberExpression::Result valueOf(const WString& text, double now) const;

    /** A number as adaptors exchange it: all its digits and nothing else. */
    static WString plain(double value);

    bool operator==(const NumberFormat&) const = default;
};

} // namespace oribund
