#include <oribund/Version.h>
#include <oribund/host/base/IdStamp.h>
#include <oribund/host/base/LightweightString.h>
#include <oribund/host/base/Numeric.h>

#include <cstdio>

int main()
{
    using namespace oribund;

    std::printf("oribund %s\n", oribundDllVersionStr);

    const IdStamp effect(4, 1, 7);
    const String amount = formatNumber(12.5) + " %";
    std::printf("effect %s: amount %s\n", effect.asString().c_str(), amount.c_str());
    return 0;
}
