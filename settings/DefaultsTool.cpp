#include "settings/DefaultsTool.h"

#include "settings/DefaultsDomain.h"

#include <QRegularExpression>

namespace {

constexpr int kUsageError = 2;

const char kUsage[] = "usage: defaults read DOMAIN [KEY]\n"
                      "       defaults read-type DOMAIN KEY\n"
                      "       defaults write DOMAIN KEY [-string] TEXT\n"
                      "       defaults write DOMAIN KEY -int NUMBER\n"
                      "       defaults delete DOMAIN [KEY]\n";

QString quoted(const QString &text)
{
    QString s = text;
    s.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    s.replace(QLatin1Char('"'), QStringLiteral("\\\""));
    s.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    return QLatin1Char('"') + s + QLatin1Char('"');
}

bool isNumber(const QVariant &v)
{
    return v.typeId() != QMetaType::QString;
}

QString render(const QVariant &v)
{
    return isNumber(v) ? v.toString() : quoted(v.toString());
}

QString renderKey(const QString &key)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9_.]+$"));
    return plain.match(key).hasMatch() ? key : quoted(key);
}

// A domain is a file name on this platform; refuse anything that would leave
// the settings folder.
bool validDomain(const QString &domain)
{
    return !domain.isEmpty() && !domain.contains(QLatin1Char('/')) && domain != QStringLiteral(".")
           && domain != QStringLiteral("..");
}

int missingDomain(QTextStream &err, const QString &domain)
{
    err << "Domain " << domain << " does not exist\n";
    return 1;
}

int unreadableDomain(QTextStream &err, const DefaultsDomain &d, DefaultsDomain::State state)
{
    if (state == DefaultsDomain::State::Unreadable)
        err << "Domain " << d.domain() << " cannot be read (" << d.filePath() << " is damaged)\n";
    else
        err << "Domain " << d.domain() << " cannot be read: " << d.problem() << "\n";
    return 1;
}

int missingPair(QTextStream &err, const QString &domain, const QString &key)
{
    err << "The domain/default pair of (" << domain << ", " << key << ") does not exist\n";
    return 1;
}

int read(const DefaultsDomain &d, const QStringList &rest, QTextStream &out, QTextStream &err,
         bool typeOnly)
{
    const DefaultsDomain::State state = d.state();
    switch (state) {
    case DefaultsDomain::State::Missing:
        return missingDomain(err, d.domain());
    case DefaultsDomain::State::Unreadable:
    case DefaultsDomain::State::Inaccessible:
    case DefaultsDomain::State::TooLarge:
        return unreadableDomain(err, d, state);
    case DefaultsDomain::State::Valid:
        break;
    }
    const QVariantMap values = d.values();
    if (rest.isEmpty()) {
        out << "{\n";
        for (auto it = values.begin(); it != values.end(); ++it)
            out << "    " << renderKey(it.key()) << " = " << render(it.value()) << ";\n";
        out << "}\n";
        return 0;
    }
    const auto it = values.find(rest.first());
    if (it == values.end())
        return missingPair(err, d.domain(), rest.first());
    if (typeOnly)
        out << "Type is " << (isNumber(it.value()) ? "integer" : "string") << "\n";
    else
        out << render(it.value()) << "\n";
    return 0;
}

int write(DefaultsDomain &d, const QStringList &rest, QTextStream &err)
{
    QVariant value;
    if (rest.size() == 2) {
        value = rest.at(1);
    } else if (rest.size() == 3 && rest.at(1) == QStringLiteral("-string")) {
        value = rest.at(2);
    } else if (rest.size() == 3
               && (rest.at(1) == QStringLiteral("-int") || rest.at(1) == QStringLiteral("-integer"))) {
        bool ok = false;
        const qlonglong n = rest.at(2).trimmed().toLongLong(&ok);
        if (!ok) {
            err << "defaults: \"" << rest.at(2) << "\" is not an integer\n";
            return kUsageError;
        }
        value = QVariant::fromValue(n);
    } else {
        err << kUsage;
        return kUsageError;
    }
    const bool written = d.setValue(rest.first(), value);
    if (!d.problem().isEmpty())
        err << "defaults: " << d.problem() << "\n";
    else if (!written)
        err << "defaults: could not write " << d.filePath() << "\n";
    return written ? 0 : 1;
}

int remove(DefaultsDomain &d, const QStringList &rest, QTextStream &err)
{
    const DefaultsDomain::State state = d.state();
    if (state == DefaultsDomain::State::Missing)
        return missingDomain(err, d.domain());
    if (rest.isEmpty()) {
        if (!d.removeDomain()) {
            err << "defaults: could not remove " << d.filePath()
                << (d.problem().isEmpty() ? QString() : ": " + d.problem()) << "\n";
            return 1;
        }
        return 0;
    }
    if (state != DefaultsDomain::State::Valid)
        return unreadableDomain(err, d, state);
    if (!d.values().contains(rest.first()))
        return missingPair(err, d.domain(), rest.first());
    if (!d.removeValue(rest.first())) {
        err << "defaults: "
            << (d.problem().isEmpty() ? "could not write " + d.filePath() : d.problem()) << "\n";
        return 1;
    }
    return 0;
}

} // namespace

int runDefaultsTool(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    if (arguments.size() < 2) {
        err << kUsage;
        return kUsageError;
    }
    const QString command = arguments.at(0);
    const QString domain = arguments.at(1);
    const QStringList rest = arguments.mid(2);
    if (!validDomain(domain)) {
        err << "defaults: \"" << domain << "\" is not a domain name\n";
        return kUsageError;
    }
    DefaultsDomain d(domain);
    if (command == QStringLiteral("read") && rest.size() <= 1)
        return read(d, rest, out, err, false);
    if (command == QStringLiteral("read-type") && rest.size() == 1)
        return read(d, rest, out, err, true);
    if (command == QStringLiteral("write") && !rest.isEmpty())
        return write(d, rest, err);
    if (command == QStringLiteral("delete") && rest.size() <= 1)
        return remove(d, rest, err);
    err << kUsage;
    return kUsageError;
}
