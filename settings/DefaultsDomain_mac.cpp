#include "settings/DefaultsDomain.h"

#include <CoreFoundation/CoreFoundation.h>

// macOS keeps the domain in the user's defaults database; CFPreferences keeps
// CFNumber and CFString apart and is what the `defaults` command edits.

namespace {

CFStringRef cf(const QString &s)
{
    return s.toCFString();
}

QVariant fromCF(CFPropertyListRef value)
{
    if (!value)
        return {};
    if (CFGetTypeID(value) == CFStringGetTypeID())
        return QString::fromCFString(static_cast<CFStringRef>(value));
    if (CFGetTypeID(value) == CFNumberGetTypeID()) {
        long long n = 0;
        CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberLongLongType, &n);
        return QVariant::fromValue<qlonglong>(n);
    }
    if (CFGetTypeID(value) == CFBooleanGetTypeID())
        return QVariant::fromValue<qlonglong>(CFBooleanGetValue(static_cast<CFBooleanRef>(value)));
    return {};
}

} // namespace

DefaultsDomain::DefaultsDomain(QString domain) : m_domain(std::move(domain)) {}

QString DefaultsDomain::filePathForDomain(const QString &)
{
    return {};
}

QString DefaultsDomain::filePath() const
{
    return {};
}

DefaultsDomain::State DefaultsDomain::state() const
{
    return values().isEmpty() ? State::Missing : State::Valid;
}

QVariantMap DefaultsDomain::values() const
{
    QVariantMap map;
    CFStringRef app = cf(m_domain);
    CFPreferencesAppSynchronize(app);
    CFArrayRef keys = CFPreferencesCopyKeyList(app, kCFPreferencesCurrentUser, kCFPreferencesAnyHost);
    if (keys) {
        for (CFIndex i = 0; i < CFArrayGetCount(keys); ++i) {
            auto key = static_cast<CFStringRef>(CFArrayGetValueAtIndex(keys, i));
            CFPropertyListRef v = CFPreferencesCopyAppValue(key, app);
            const QVariant value = fromCF(v);
            if (value.isValid())
                map.insert(QString::fromCFString(key), value);
            if (v)
                CFRelease(v);
        }
        CFRelease(keys);
    }
    CFRelease(app);
    return map;
}

QVariant DefaultsDomain::value(const QString &key) const
{
    CFStringRef app = cf(m_domain);
    CFStringRef k = cf(key);
    CFPreferencesAppSynchronize(app);
    CFPropertyListRef v = CFPreferencesCopyAppValue(k, app);
    const QVariant result = fromCF(v);
    if (v)
        CFRelease(v);
    CFRelease(k);
    CFRelease(app);
    return result;
}

bool DefaultsDomain::setValue(const QString &key, const QVariant &value)
{
    CFStringRef app = cf(m_domain);
    CFStringRef k = cf(key);
    CFPropertyListRef v = nullptr;
    if (value.typeId() == QMetaType::QString) {
        v = cf(value.toString());
    } else {
        const long long n = value.toLongLong();
        v = CFNumberCreate(kCFAllocatorDefault, kCFNumberLongLongType, &n);
    }
    CFPreferencesSetAppValue(k, v, app);
    const bool ok = CFPreferencesAppSynchronize(app);
    CFRelease(v);
    CFRelease(k);
    CFRelease(app);
    return ok;
}

bool DefaultsDomain::removeValue(const QString &key)
{
    CFStringRef app = cf(m_domain);
    CFStringRef k = cf(key);
    CFPreferencesSetAppValue(k, nullptr, app);
    const bool ok = CFPreferencesAppSynchronize(app);
    CFRelease(k);
    CFRelease(app);
    return ok;
}

bool DefaultsDomain::removeDomain()
{
    const QVariantMap all = values();
    for (auto it = all.begin(); it != all.end(); ++it)
        removeValue(it.key());
    return true;
}
