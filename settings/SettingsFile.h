#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QVariantMap>

// The text of a settings file where the platform has no defaults database:
// one JSON object, keys to strings or numbers. JSON keeps numbers and
// strings apart, which an INI file would not.
namespace SettingsFile {

// Anything larger is not a settings file of ours: it is neither read nor
// overwritten.
constexpr qint64 MaxBytes = 1024 * 1024;

// False when data is not one JSON object. Strings stay strings; integral
// numbers that a double holds exactly become qlonglong, other finite numbers
// double; booleans 0/1; anything else (arrays, objects, null) is skipped.
bool decode(const QByteArray &data, QVariantMap *values);

// The steps of decode, for writers that must keep entries they do not
// understand: the object itself, and the values read from it.
bool parse(const QByteArray &data, QJsonObject *object);
QVariantMap valuesOf(const QJsonObject &object);
// Strings as strings, finite doubles as numbers, everything else as an
// integer.
QJsonValue toJson(const QVariant &value);
QByteArray encode(const QJsonObject &object);

} // namespace SettingsFile
