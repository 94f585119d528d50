#include "settings/DefaultsTool.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return runDefaultsTool(app.arguments().mid(1), out, err);
}
