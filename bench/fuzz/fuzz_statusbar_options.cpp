// libFuzzer target for the status-bar companion's command line (the input,
// split at NUL bytes, with the program's name first): the platform and the
// login agent add arguments of their own, so any list must parse.

#include "companions/statusbar/StatusbarOptions.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QList<QByteArray> pieces =
        QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)).split('\0');
    QStringList arguments;
    for (const QByteArray &piece : pieces)
        arguments << QString::fromUtf8(piece);
    const StatusbarOptions options = parseStatusbarArguments(arguments);
    // Only the options themselves turn anything on.
    if (options.headless && !arguments.mid(1).contains(QStringLiteral("--no-tray")))
        std::abort();
    if (options.autoLaunched && !arguments.contains(QStringLiteral("autoLaunched")))
        std::abort();
    for (const QString &argument : arguments)
        mainBundleForCompanion(argument);
    return 0;
}
