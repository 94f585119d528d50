#include "workflow/TextFormat.h"

QString formatText(const QString &format, const QStringList &arguments)
{
    QString result;
    result.reserve(format.size() + 64);
    qsizetype next = 0;
    for (qsizetype i = 0; i < format.size(); ++i) {
        const QChar c = format.at(i);
        if (c != u'%' || i + 1 >= format.size()) {
            result.append(c);
            continue;
        }
        const QChar kind = format.at(i + 1);
        if (kind == u'@' || kind == u'd') {
            result.append(next < arguments.size() ? arguments.at(next) : QStringLiteral("(null)"));
            ++next;
            ++i;
        } else if (kind == u'%') {
            result.append(u'%');
            ++i;
        } else {
            result.append(c);
        }
    }
    return result;
}
