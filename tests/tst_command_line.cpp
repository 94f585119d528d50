#include "TestSupport.h"

#include "BuildConfig.h"

#include <QProcess>

using namespace TestSupport;

namespace {

QString programPath(const QString &program)
{
    const QString bundle = buildBundleDir();
    if (program == "app")
        return bundle + "/Contents/MacOS/ZELMORHelper";
    if (program == "statusbar")
        return bundle
               + "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app/Contents/MacOS/"
                 "ZELMORHelperStatusbarApp";
    return bundle + "/Contents/Library/ZELMORInstallComponets.app/Contents/MacOS/ZELMORInstallComponets";
}

} // namespace

// The three programs answer --help and --version and refuse what they do not
// know, all before any window: they run here with a display that does not
// exist, where making the application object would abort.
class TestCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void answersWithoutADisplay_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("standardOutput"); // contained
        QTest::addColumn<QString>("standardError");  // contained

        const QString version = QStringLiteral(ZELMOR_VERSION);
        QTest::newRow("app --help") << "app" << QStringList{"--help"} << 0
                                    << "Usage: ZELMORHelper [options]" << "";
        QTest::newRow("app -h") << "app" << QStringList{"-h"} << 0 << "--version" << "";
        QTest::newRow("app --version") << "app" << QStringList{"--version"} << 0
                                       << "ZELMOR Helper " + version + "\n" << "";
        QTest::newRow("app unknown") << "app" << QStringList{"--bogus"} << 2 << ""
                                     << "ZELMORHelper: Unknown option 'bogus'.";
        QTest::newRow("app value of a Qt option is not an option")
            << "app" << QStringList{"-style", "fusion", "--version"} << 0 << version << "";
        QTest::newRow("statusbar --help") << "statusbar" << QStringList{"--help"} << 0
                                          << "--runMode <mode>" << "";
        QTest::newRow("statusbar --version")
            << "statusbar" << QStringList{"-runMode", "autoLaunched", "--version"} << 0
            << "ZELMOR Helper Statusbar App " + version + "\n" << "";
        QTest::newRow("statusbar unknown") << "statusbar" << QStringList{"--bogus"} << 2 << ""
                                           << "Unknown option 'bogus'.";
        QTest::newRow("statusbar run mode without its value")
            << "statusbar" << QStringList{"-runMode"} << 2 << "" << "Missing value after '-runMode'.";
        QTest::newRow("installer --help") << "installer" << QStringList{"--help"} << 0
                                          << "Usage: ZELMORInstallComponets [options]" << "";
        QTest::newRow("installer --version") << "installer" << QStringList{"--version"} << 0
                                             << "ZELMOR Install Componets " + version + "\n" << "";
        QTest::newRow("installer unknown") << "installer" << QStringList{"-x"} << 2 << ""
                                           << "Unknown option 'x'.";
    }
    void answersWithoutADisplay()
    {
        QFETCH(QString, program);
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, standardOutput);
        QFETCH(QString, standardError);

        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "xcb");
        environment.remove("DISPLAY");
        environment.remove("WAYLAND_DISPLAY");
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(programPath(program), arguments);
        QVERIFY(process.waitForFinished(30000));
        const QString out = QString::fromLocal8Bit(process.readAllStandardOutput());
        const QString err = QString::fromLocal8Bit(process.readAllStandardError());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), exitCode);
        QVERIFY2(out.contains(standardOutput), qPrintable(out));
        QVERIFY2(err.contains(standardError), qPrintable(err));
        if (exitCode == 0)
            QVERIFY2(err.isEmpty(), qPrintable(err));
        else
            QVERIFY2(out.isEmpty() && err.contains("--help"), qPrintable(out + err));
    }
};

ZELMOR_TEST_MAIN(TestCommandLine)
#include "tst_command_line.moc"
