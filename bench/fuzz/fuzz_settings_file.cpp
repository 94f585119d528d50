// libFuzzer target for the settings file's text: whatever is on disk (another
// program's file, a half-written one from an older version, a hostile one),
// decoding neither crashes nor misreads, every value reads as an integer
// without undefined behaviour, and what is written back reads the same.

#include "FuzzCheck.h"
#include "settings/SettingsFile.h"
#include "settings/SettingsStore.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    QJsonObject object;
    if (!SettingsFile::parse(text, &object)) {
        QVariantMap values;
        check(!SettingsFile::decode(text, &values));
        return 0;
    }
    const QVariantMap values = SettingsFile::valuesOf(object);
    for (auto it = values.begin(); it != values.end(); ++it) {
        const QMetaType::Type type = static_cast<QMetaType::Type>(it.value().typeId());
        check(type == QMetaType::QString || type == QMetaType::LongLong
              || type == QMetaType::Double);
        const int n = intValueOf(it.value());
        if (type == QMetaType::LongLong && it.value().toLongLong() >= 0
            && it.value().toLongLong() <= 1000)
            check(n == it.value().toLongLong());
        check(!it.value().toString().isNull() || type != QMetaType::QString);
    }

    // A writer keeps what it does not understand and rewrites the rest.
    QVariantMap again;
    check(SettingsFile::decode(SettingsFile::encode(object), &again));
    check(again == values);

    QJsonObject rewritten;
    for (auto it = values.begin(); it != values.end(); ++it)
        rewritten.insert(it.key(), SettingsFile::toJson(it.value()));
    check(SettingsFile::decode(SettingsFile::encode(rewritten), &again));
    check(again == values);
    return 0;
}
