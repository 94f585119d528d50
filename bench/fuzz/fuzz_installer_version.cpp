// libFuzzer target for the installer's version reading: whatever a tool on
// the user's PATH prints (in any encoding, of any length), the version shown
// is one trimmed line.

#include "companions/installer/ComponentChecks.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray output(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString version = ComponentChecks::parseVersion(output);
    if (version != version.trimmed() || version.contains(QLatin1Char('\n')))
        std::abort();
    return 0;
}
