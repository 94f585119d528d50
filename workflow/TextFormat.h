#pragma once

#include <QString>
#include <QStringList>

// Fills a console format in one pass: each "%@" or "%d" takes the next
// argument in order, "%%" gives "%". The formats and the string-table keys
// keep the placeholders they have always had ("Count down %d secs"), so
// existing translations still match; an argument is never scanned again, so a
// path that contains "%@" or "%1" is printed as it stands. A placeholder with
// no argument left gives "(null)", as a missing text always has.
QString formatText(const QString &format, const QStringList &arguments);
