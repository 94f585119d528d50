#include "TestSupport.h"

#include "BuildConfig.h"
#include "platform/Bundle.h"

#include <QFileInfo>

using namespace TestSupport;

// The bundle the build produces, and reading bundles by path.
class TestBundle : public QObject
{
    Q_OBJECT

private slots:
    void builtBundlesHaveTheirShape_data()
    {
        columns<QString, QString>({"relative", "identifier"});
        QTest::newRow("main") << "" << ZELMOR_BUNDLE_ID;
        QTest::newRow("status bar") << "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app"
                                    << QString(ZELMOR_BUNDLE_ID) + "StatusbarApp";
        QTest::newRow("installer") << "/Contents/Library/ZELMORInstallComponets.app"
                                   << ZELMOR_INSTALLER_BUNDLE_ID;
    }
    void builtBundlesHaveTheirShape()
    {
        QFETCH(QString, relative);
        QFETCH(QString, identifier);
        const QString bundle = buildBundleDir() + relative;
        const auto info = Bundle::readInfo(bundle);
        QVERIFY(info);
        QCOMPARE(info->identifier, identifier);
        QVERIFY(!info->name.isEmpty());
        QVERIFY(!info->version.isEmpty());
        const QString exe = Bundle::executablePath(bundle);
        QCOMPARE(exe, bundle + "/Contents/MacOS/" + info->executable);
        QVERIFY(QFileInfo(exe).isExecutable());
        QVERIFY(QFileInfo(bundle + "/Contents/Resources").isDir());
    }

    // The paths of the companions inside the main bundle are used (and so
    // checked) by tst_appshell and tst_loginagent.
    void mainBundleFoundFromItsProgram()
    {
        QVERIFY(buildBundleDir().endsWith("/ZELMOR Helper.app"));
        QVERIFY(QFileInfo(buildBundleDir() + "/Contents/Helpers/defaults").isExecutable());
        // A test program does not run from a bundle: its folder stands in.
        QCOMPARE(Bundle::mainBundlePath(), QCoreApplication::applicationDirPath());
        Bundle::setMainBundlePath(buildBundleDir());
        QCOMPARE(Bundle::mainBundleIdentifier(), QString(ZELMOR_BUNDLE_ID));
        Bundle::setMainBundlePath({});
    }

    void brokenBundles()
    {
        QTemporaryDir dir;
        QVERIFY(!Bundle::readInfo(dir.path() + "/Missing.app"));
        writeFile(dir.path() + "/NoExe.app/Contents/Info.plist",
                  "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>"
                  "<key>CFBundleIdentifier</key><string>x.y</string></dict></plist>");
        QVERIFY(!Bundle::readInfo(dir.path() + "/NoExe.app"));
        writeFile(dir.path() + "/Garbage.app/Contents/Info.plist", "<plist><dict><key>");
        QVERIFY(!Bundle::readInfo(dir.path() + "/Garbage.app"));
        // Launching what is not there fails quietly.
        QVERIFY(!Bundle::launchApplication(dir.path() + "/Missing.app"));
    }

    void launchStartsTheBundleProgramDetached()
    {
        QTemporaryDir dir;
        const QString bundle = dir.path() + "/With Blank.app";
        const QString marker = dir.path() + "/ran";
        makeScriptBundle(bundle, "x.y", QString("echo \"$@\" > \"%1\"\n").arg(marker).toUtf8());
        QVERIFY(Bundle::launchApplication(bundle, {"-runMode", "autoLaunched"}));
        QTRY_COMPARE_WITH_TIMEOUT(readFile(marker), QByteArray("-runMode autoLaunched\n"), 10000);
    }
};

ZELMOR_TEST_MAIN(TestBundle)
#include "tst_bundle.moc"
