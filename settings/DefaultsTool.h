#pragma once

#include <QStringList>
#include <QTextStream>

// The `defaults` command of the bundle: read, write and delete values of a
// settings domain from a shell. Strings print quoted and numbers bare, so the
// two stay distinguishable. Returns the exit status.
int runDefaultsTool(const QStringList &arguments, QTextStream &out, QTextStream &err);
