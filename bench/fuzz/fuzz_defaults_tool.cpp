// libFuzzer target for the `defaults` tool's command line: the input, split
// at NUL bytes, is the argument list. The tool runs for real against a
// settings folder of its own under the temporary folder (bench/fuzz.sh points
// TMPDIR into the fuzz build), so writing, locking and deleting are exercised
// too. Every run ends with a known exit status and never leaves a lock.

#include "FuzzCheck.h"
#include "settings/DefaultsTool.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace {

QTemporaryDir *settingsFolder = nullptr;


} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    settingsFolder = new QTemporaryDir(QDir::tempPath() + QStringLiteral("/fuzz-defaults-XXXXXX"));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(settingsFolder->path()));
    std::atexit([] { delete settingsFolder; });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // Long inputs only repeat what short ones test, slower.
    if (size > 4096)
        return 0;
    const QList<QByteArray> pieces =
        QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)).split('\0');
    QStringList arguments;
    for (const QByteArray &piece : pieces)
        arguments << QString::fromUtf8(piece);

    QString out;
    QString err;
    QTextStream outStream(&out);
    QTextStream errStream(&err);
    const int status = runDefaultsTool(arguments, outStream, errStream);
    outStream.flush();
    errStream.flush();
    check(status >= 0 && status <= 2);
    // Success says nothing on standard error; failure says why.
    check(status == 0 || !err.isEmpty());

    // No run leaves a lock behind; the folder is emptied now and then so the
    // domains the fuzzer invents do not pile up.
    static int runs = 0;
    if (++runs % 64 == 0) {
        const QDir folder(settingsFolder->path());
        check(folder.entryList({QStringLiteral("*.lock")}, QDir::Files | QDir::Hidden).isEmpty());
        QDir(settingsFolder->path()).removeRecursively();
        QDir().mkpath(settingsFolder->path());
    }
    return 0;
}
