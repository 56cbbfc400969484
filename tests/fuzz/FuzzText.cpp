// Texts from files and keyboards: whatever the bytes, conversions keep their promises.
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/base/text/NumberExpression.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace
{

using namespace oribund;

void require(bool kept)
{
    if (!kept)
        std::abort();
}

/** What was repaired once needs no further repair. */
void checkUnicode(std::string_view bytes)
{
    const WString wide = toWide(bytes);
    const String repaired = toUTF8(wide);
    require(toWide(repaired) == wide);
    require(toUTF8(toWide(repaired)) == repaired);
    require(wide.size() <= bytes.size());
    require(compareNoCase(wide, wide) == 0);
}

/** A number that was read is finite, and reads the same from a wide text; what is written of it can be read again. */
void checkNumber(std::string_view bytes)
{
    const auto number = parseDouble(bytes);
    require(parseDouble(toWide(bytes).view()) == number);
    if (number) {
        require(std::isfinite(*number));
        const auto again = parseDouble(formatNumber(*number).view());
        require(again && std::abs(*again - *number) <= 1e-6 * std::fmax(1.0, std::abs(*number)));
    }
    if (const auto whole = parseInt(bytes))
        require(number && *number == *whole);
}

/** A calculation has a finite value or a reason why not; what is a number is one here too. */
void checkExpression(std::string_view bytes)
{
    const WString text = toWide(bytes);
    const auto result = NumberExpression::evaluate(text.view(), {8.0, L"px"});
    require(result.value ? std::isfinite(*result.value) : result.problem != NumberExpression::Problem::None);
    const auto number = parseDouble(text.view());
    if (number && text.view().find_first_of(L"\r\n") == std::wstring_view::npos && text.size() <= 256)
        require(result.value && std::abs(*result.value - *number) <= 1e-15 * std::abs(*number));
}

void checkStamp(std::string_view bytes)
{
    if (const auto stamp = IdStamp::fromString(bytes))
        require(stamp->asString().view() == bytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    checkUnicode(bytes);
    checkNumber(bytes);
    checkExpression(bytes);
    checkStamp(bytes);
    return 0;
}
