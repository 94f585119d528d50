// libFuzzer target for reading a bundle's Info.plist: a bundle is anything on
// disk the user (or a download) put there, so the reader must survive any
// text and only answer with both the identifier and the program set.

#include "platform/Bundle.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray plist(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto info = Bundle::parseInfo(plist);
    if (info && (info->identifier.isEmpty() || info->executable.isEmpty()))
        std::abort();
    return 0;
}
