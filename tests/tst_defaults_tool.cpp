#include "TestSupport.h"

#include <QProcess>

using namespace TestSupport;

// The bundle's `defaults` program as a user runs it from a shell. How its
// values meet the application's store is in tst_settings.
class TestDefaultsTool : public QObject
{
    Q_OBJECT

private:
    struct Result
    {
        int code;
        QByteArray out;
        QByteArray err;
    };
    static Result tool(const QStringList &arguments)
    {
        QProcess p;
        p.start(buildBundleDir() + "/Contents/Helpers/defaults", arguments);
        p.waitForFinished();
        return {p.exitCode(), p.readAllStandardOutput(), p.readAllStandardError()};
    }
    const QString domain = "org.zelmor.tooltest";

private slots:
    void init() { tool({"delete", domain}); }

    void writeReadDelete()
    {
        QCOMPARE(tool({"write", domain, "Workspace", "-string", "/a b/c"}).code, 0);
        QCOMPARE(tool({"write", domain, "log", "-int", "1"}).code, 0);
        QCOMPARE(tool({"write", domain, "plain", "text \"quoted\""}).code, 0);
        QCOMPARE(tool({"read", domain, "plain"}).out, QByteArray("\"text \\\"quoted\\\"\"\n"));
        QCOMPARE(tool({"read", domain}).out,
                 QByteArray("{\n    Workspace = \"/a b/c\";\n    log = 1;\n"
                            "    plain = \"text \\\"quoted\\\"\";\n}\n"));
        QCOMPARE(tool({"delete", domain, "log"}).code, 0);
        QCOMPARE(tool({"read", domain, "log"}).code, 1);
        QCOMPARE(tool({"delete", domain}).code, 0);
        QCOMPARE(tool({"read", domain}).code, 1);
    }

    void errors_data()
    {
        // domainExists: the "missing key" rows fail for the right reason.
        columns<QStringList, int, QString, bool>({"arguments", "code", "message", "domainExists"});
        const QString d = "org.zelmor.tooltest";
        const QString noDomain = "Domain org.zelmor.tooltest does not exist";
        const QString noKey = "(org.zelmor.tooltest, nokey) does not exist";
        QTest::newRow("no arguments") << QStringList{} << 2 << "usage: defaults" << false;
        QTest::newRow("unknown command") << QStringList{"frob", d} << 2 << "usage: defaults" << false;
        QTest::newRow("read missing domain") << QStringList{"read", d} << 1 << noDomain << false;
        QTest::newRow("delete missing domain") << QStringList{"delete", d} << 1 << noDomain << false;
        QTest::newRow("read missing key") << QStringList{"read", d, "nokey"} << 1 << noKey << true;
        QTest::newRow("delete missing key") << QStringList{"delete", d, "nokey"} << 1 << noKey << true;
        QTest::newRow("int not a number")
            << QStringList{"write", d, "k", "-int", "x1"} << 2 << "is not an integer" << false;
        QTest::newRow("write without value") << QStringList{"write", d, "k"} << 2 << "usage" << false;
        QTest::newRow("unknown type")
            << QStringList{"write", d, "k", "-float", "1"} << 2 << "usage" << false;
        QTest::newRow("domain with slash")
            << QStringList{"read", "../etc"} << 2 << "is not a domain name" << false;
        QTest::newRow("read too many") << QStringList{"read", d, "a", "b"} << 2 << "usage" << false;
    }
    void errors()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        QFETCH(bool, domainExists);
        if (domainExists)
            tool({"write", domain, "present", "-int", "3"});
        const Result r = tool(arguments);
        QTEST(r.code, "code");
        QVERIFY2(r.err.contains(message.toUtf8()), r.err.constData());
        QVERIFY(r.out.isEmpty());
    }

    void damagedDomainIsReportedNotDestroyed()
    {
        const QString folder = qEnvironmentVariable("XDG_CONFIG_HOME");
        const QString path = folder + "/" + domain + ".json";
        writeFile(path, "not json");
        const Result r = tool({"read", domain});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains("cannot be read"));
        QCOMPARE(readFile(path), QByteArray("not json"));
        // Writing keeps the damaged file aside and starts afresh.
        QCOMPARE(tool({"write", domain, "k", "-int", "2"}).code, 0);
        QCOMPARE(tool({"read", domain, "k"}).out, QByteArray("2\n"));
        QCOMPARE(QDir(folder).entryList({domain + ".json.unreadable-*"}).size(), 1);
    }
};

ZELMOR_TEST_MAIN(TestDefaultsTool)
#include "tst_defaults_tool.moc"
