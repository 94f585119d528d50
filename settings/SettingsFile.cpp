#include "settings/SettingsFile.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace SettingsFile {

namespace {

// Beyond 2^53 a double no longer holds every integer, and near 2^63 the
// conversion to qlonglong would overflow; such numbers stay doubles.
constexpr double kExactIntegerLimit = 9007199254740992.0;

QVariant fromJson(const QJsonValue &value)
{
    if (value.isString())
        return value.toString();
    if (value.isDouble()) {
        const double d = value.toDouble();
        if (!std::isfinite(d))
            return {};
        if (std::trunc(d) == d && std::fabs(d) <= kExactIntegerLimit)
            return QVariant::fromValue<qlonglong>(static_cast<qlonglong>(d));
        return d;
    }
    if (value.isBool())
        return QVariant::fromValue<qlonglong>(value.toBool() ? 1 : 0);
    return {};
}

} // namespace

QJsonValue toJson(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
    case QMetaType::QByteArray:
        return value.toString();
    case QMetaType::Double:
    case QMetaType::Float: {
        // JSON has no spelling for NaN or infinity.
        const double d = value.toDouble();
        return std::isfinite(d) ? QJsonValue(d) : QJsonValue(0);
    }
    default:
        return QJsonValue(value.toLongLong());
    }
}

bool parse(const QByteArray &data, QJsonObject *object)
{
    if (data.size() > MaxBytes)
        return false;
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(data, &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject())
        return false;
    *object = doc.object();
    return true;
}

QVariantMap valuesOf(const QJsonObject &object)
{
    QVariantMap values;
    for (auto it = object.begin(); it != object.end(); ++it) {
        const QVariant v = fromJson(it.value());
        if (v.isValid())
            values.insert(it.key(), v);
    }
    return values;
}

bool decode(const QByteArray &data, QVariantMap *values)
{
    QJsonObject object;
    if (!parse(data, &object))
        return false;
    *values = valuesOf(object);
    return true;
}

QByteArray encode(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

} // namespace SettingsFile
