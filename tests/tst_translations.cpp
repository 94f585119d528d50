#include "TestSupport.h"

#include "BuildConfig.h"
#include "app/ApplicationShell.h"
#include "app/ZELMORHelperAppDelegate.h"
#include "platform/Bundle.h"
#include "platform/Translation.h"
#include "ui_MainWindow.h"
#include "widgets/ConsoleView.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>

using namespace TestSupport;

namespace {

struct Entry
{
    QString context, source, translation; // an unfinished translation is empty
};

// The entries of a .ts file; *keysOnly tells a file in the source language.
QList<Entry> readTs(const QString &path, bool *keysOnly)
{
    QList<Entry> entries;
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader xml(&file);
    Entry entry;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto attributes = xml.attributes();
        if (xml.name() == u"TS") {
            *keysOnly = attributes.value("language") == attributes.value("sourcelanguage");
        } else if (xml.name() == u"name") {
            entry.context = xml.readElementText();
        } else if (xml.name() == u"source") {
            entry.source = xml.readElementText();
        } else if (xml.name() == u"translation") {
            entry.translation = xml.readElementText(QXmlStreamReader::IncludeChildElements);
            if (!attributes.value("type").isEmpty())
                entry.translation.clear();
            entries.append(entry);
        }
    }
    return entries;
}

// %1..%99, %n, and the two placeholders formatText() fills.
QStringList placeholders(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("%(?:\\d{1,2}|n|@|d)"));
    QStringList found;
    for (const auto &match : pattern.globalMatch(text))
        found << match.captured();
    found.sort();
    return found;
}

struct InterfaceFile
{
    QString context;                 // its class, under which lupdate files its texts
    QStringList translatedShortcuts; // key sequences left to translators
};

InterfaceFile readUi(const QString &path)
{
    InterfaceFile ui;
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader xml(&file);
    bool inShortcut = false;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"class" && ui.context.isEmpty()) {
            ui.context = xml.readElementText();
        } else if (xml.name() == u"property") {
            inShortcut = xml.attributes().value("name") == u"shortcut";
        } else if (xml.name() == u"string" && inShortcut) {
            inShortcut = false;
            if (xml.attributes().value("notr") != u"true")
                ui.translatedShortcuts << xml.readElementText();
        }
    }
    return ui;
}

// Every text a user can read in a window and its menus: titles, labels,
// buttons, menu items, and what a screen reader or a tooltip says.
QStringList shownTexts(QWidget *window)
{
    QStringList texts{window->windowTitle()};
    QList<QWidget *> widgets = window->findChildren<QWidget *>();
    widgets << window;
    for (QWidget *w : widgets) {
        if (w->window() != window)
            continue; // a window of its own, listed by itself
        texts << w->accessibleName() << w->toolTip();
        if (auto *label = qobject_cast<QLabel *>(w))
            texts << label->text();
        else if (auto *button = qobject_cast<QAbstractButton *>(w))
            texts << button->text();
        else if (auto *menu = qobject_cast<QMenu *>(w))
            texts << menu->title();
    }
    for (QAction *action : window->findChildren<QAction *>())
        texts << action->text();
    for (QString &text : texts)
        text.remove('&'); // mnemonics
    texts.removeAll(QString());
    return texts;
}

// Starts the application as a German user does, from a bundle without
// companions (starting them fails quietly). Returns the language installed.
QString startInGerman(ApplicationShell &shell, const QTemporaryDir &bundle)
{
    Bundle::setMainBundlePath(bundle.path() + "/ZELMOR Helper.app");
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const QString language = installTranslator();
    QLocale::setDefault(QLocale::system());
    shell.start();
    // The sheets come with the finished launch.
    if (!QSignalSpy(&shell, &ApplicationShell::launchFinished).wait())
        return QStringLiteral("(launch did not finish)");
    return language;
}

} // namespace

// Every text reaches every language, and the application speaks the user's
// language (its companions too: see tst_companions).
class TestTranslations : public QObject
{
    Q_OBJECT

private slots:
    // Refreshes copies of the translation files from the sources, as the
    // update_translations target would (the folders of resources/CMakeLists.txt),
    // and lists per language what a translator still has to do.
    // tools/translation_status.sh runs this alone and reads its output.
    void everyTextIsTranslated()
    {
        const QDir sources(QStringLiteral(ZELMOR_SOURCE_DIR));
        QTemporaryDir copies;
        const auto tsFiles = QDir(sources.filePath("resources/translations"))
                                 .entryInfoList({"*.ts"}, QDir::Files, QDir::Name);
        QVERIFY(tsFiles.size() >= 4); // English keys plus three languages
        QStringList arguments{"-silent",      "-locations", "none",
                              "-no-obsolete", "-I",         sources.path()};
        for (const char *folder :
             {"app", "workflow", "settings", "widgets", "platform", "companions", "resources"})
            arguments << sources.filePath(folder);
        arguments << "-ts";
        for (const QFileInfo &ts : tsFiles) {
            arguments << copies.filePath(ts.fileName());
            QVERIFY(QFile::copy(ts.filePath(), arguments.last()));
        }
        int exitCode = -1;
        run(QStringLiteral(ZELMOR_LUPDATE), arguments, QString(), &exitCode);
        QCOMPARE(exitCode, 0);

        QStringList problems;
        for (const QFileInfo &ts : tsFiles) {
            bool keysOnly = false; // the English file only lists the keys
            QSet<QString> known;
            for (const Entry &e : readTs(ts.filePath(), &keysOnly))
                known.insert(e.context + '\x04' + e.source);
            const QList<Entry> after = readTs(copies.filePath(ts.fileName()), &keysOnly);
            QVERIFY(!after.isEmpty());
            const QString language = ts.baseName().section('_', -1);
            int missing = 0, unfinished = 0, mismatched = 0;
            for (const Entry &e : after) {
                const QString where =
                    QStringLiteral("%1: [%2] \"%3\"")
                        .arg(language, e.context, QString(e.source).replace('\n', "\\n"));
                if (!known.contains(e.context + '\x04' + e.source)) {
                    ++missing;
                    problems << where + " is missing";
                } else if (keysOnly) {
                    continue;
                } else if (e.translation.trimmed().isEmpty()) {
                    ++unfinished;
                    problems << where + " is unfinished";
                } else if (placeholders(e.source) != placeholders(e.translation)) {
                    ++mismatched;
                    problems << where + " has other placeholders: \""
                                    + QString(e.translation).replace('\n', "\\n") + "\"";
                }
            }
            qInfo("%s: %lld texts, %d missing, %d unfinished, %d with other placeholders",
                  qPrintable(language), qlonglong(after.size()), missing, unfinished, mismatched);
        }
        QVERIFY2(problems.isEmpty(), qPrintable("\n" + problems.join('\n')));
    }

    // A text that both an interface file and the code set is translated once,
    // where the code sets it: the file's copy is marked notr="true", since the
    // code's text replaces it anyway. Key sequences are not translated at
    // all; Qt names the keys in the user's language itself.
    void noTextIsTranslatedTwice()
    {
        // The same words in other places, where they may need other words in
        // another language.
        static const QMultiHash<QString, QString> ownPlaces{
            // the about window's title, not the menu command
            {"About", "About ZELMOR Helper"},
            // the component installer's own window
            {"Installer", "Cancel"},
            {"Installer", "Close"},
            {"Installer", "Copy"},
            {"Installer", "Location"}};

        const QDir resources(QStringLiteral(ZELMOR_SOURCE_DIR "/resources"));
        QSet<QString> interfaceContexts;
        QStringList problems;
        for (const QFileInfo &file : resources.entryInfoList({"*.ui"}, QDir::Files)) {
            const InterfaceFile ui = readUi(file.filePath());
            QVERIFY2(!ui.context.isEmpty(), qPrintable(file.fileName()));
            interfaceContexts.insert(ui.context);
            for (const QString &keys : ui.translatedShortcuts)
                problems << QStringLiteral("%1: the shortcut \"%2\" is translatable")
                                .arg(file.fileName(), keys);
        }
        bool keysOnly = false;
        const QList<Entry> entries =
            readTs(resources.filePath("translations/zelmorhelper_en.ts"), &keysOnly);
        QVERIFY(keysOnly && !entries.isEmpty());
        QMultiHash<QString, QString> contextsOf; // source -> contexts in code
        for (const Entry &e : entries) {
            if (!interfaceContexts.contains(e.context))
                contextsOf.insert(e.source, e.context);
        }
        for (const Entry &e : entries) {
            if (!interfaceContexts.contains(e.context) || ownPlaces.contains(e.context, e.source))
                continue;
            const QStringList inCode = contextsOf.values(e.source);
            if (!inCode.isEmpty())
                problems << QStringLiteral("\"%1\" is translated under %2 and under %3")
                                .arg(e.source, e.context, inCode.join(", "));
        }
        // One line each: a long list would be cut short in a failure message.
        for (const QString &problem : std::as_const(problems))
            qWarning("%s", qPrintable(problem));
        QVERIFY2(problems.isEmpty(), qPrintable(QString::number(problems.size()) + " problems"));
    }

    // The machine's language does not leak into the tests, which all expect
    // the English texts; the application, though, speaks German to a German.
    void theApplicationStartsInGerman()
    {
        const QString language = installTranslator();
        QVERIFY(language.isEmpty() || language == "en");
        QCOMPARE(AppController::tr("Perform"), QString("Perform"));

        QTemporaryDir bundle;
        ApplicationShell shell;
        QCOMPARE(startInGerman(shell, bundle), QString("de"));
        Ui::MainWindow *ui = shell.window()->ui();
        // As shown: the mnemonics are placed on the translated texts.
        QCOMPARE(ui->menuEdit->title().remove('&'), QString("Bearbeiten"));
        QCOMPARE(ui->menuWindow->title().remove('&'), QString("Fenster"));
        QCOMPARE(ui->menuQuit->text().remove('&'), QString("ZELMOR Helper beenden"));
        // Qt's own texts too: the key names shown beside the menu items.
        QCOMPARE(ui->menuQuit->shortcut().toString(QKeySequence::NativeText), QString("Strg+Q"));
        QCOMPARE(shell.delegate()->firstTitle->text(), QString("Willkommen"));
#ifdef Q_OS_MACOS
        QVERIFY(shell.delegate()->firstMessage->text().startsWith("Sie müssen Xcode"));
#else // the prerequisites name this system's tools
        QVERIFY(shell.delegate()->firstMessage->text().startsWith("Sie müssen git"));
#endif

        AppController *controller = shell.controller();
        QCOMPARE(controller->buttonPerform->text(), QString("Ausführen"));
        controller->popupSelection->setCurrentIndex(
            controller->popupSelection->findData(AppController::TagUpdate));
        controller->perform(); // the workspace does not exist: the check fails at once
        const QString console = controller->outputField->string();
        QVERIFY2(console.startsWith("\nDateien werden geprüft...\n"), qPrintable(console));
        QVERIFY2(console.contains("Fehlgeschlagen.\nFehler: "), qPrintable(console));
    }

    // What a German user sees in every window, the sheets and menus included:
    // no English text where German has other words.
    void everyWindowShowsGerman()
    {
        QTemporaryDir bundle;
        ApplicationShell shell;
        QCOMPARE(startInGerman(shell, bundle), QString("de"));
        AppController *controller = shell.controller();
        QCOMPARE(shell.delegate()->firstLaunchWindow->windowTitle(), QString("Willkommen"));
        shell.delegate()->closeFirstLaunch();
        QVERIFY(shell.delegate()->wizardWindow);
        QCOMPARE(shell.delegate()->wizardWindow->windowTitle(), QString("Ersteinrichtung"));
        controller->showPrefs();
        controller->aboutApp();
        QHash<QString, QString> german;
        bool keysOnly = false;
        for (const Entry &e :
             readTs(QStringLiteral(ZELMOR_SOURCE_DIR "/resources/translations/zelmorhelper_de.ts"),
                    &keysOnly)) {
            if (e.translation != e.source)
                german.insert(e.source, e.translation);
        }
        QStringList english;
        for (QWidget *window : QApplication::topLevelWidgets()) {
            for (const QString &text : shownTexts(window)) {
                if (german.contains(text))
                    english << QStringLiteral("%1: \"%2\"").arg(window->objectName(), text);
            }
        }
        QVERIFY2(english.isEmpty(), qPrintable("\n" + english.join('\n')));
    }
};

ZELMOR_TEST_MAIN(TestTranslations)

#include "tst_translations.moc"
