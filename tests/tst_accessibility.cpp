#include "TestSupport.h"

#include "app/AboutController.h"
#include "app/ApplicationShell.h"
#include "app/MainMenu.h"
#include "app/ZELMORHelperAppDelegate.h"
#include "companions/installer/InstallerWindow.h"
#include "companions/statusbar/StatusbarCompanion.h"
#include "platform/Bundle.h"
#include "platform/Contrast.h"
#include "platform/Mnemonics.h"
#include "settings/LoginAgent.h"
#include "settings/PrefsController.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "ui_MainWindow.h"
#include "widgets/AlertSheet.h"
#include "widgets/ConsoleFindBar.h"
#include "widgets/Popover.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

#include <functional>

// What assistive technology (screen readers, voice control, switch access)
// finds in every window, through Qt's own accessibility interface.

namespace {

SettingsStore &store()
{
    return SettingsStore::standard();
}

// Roles a user operates or reads; each needs a name to be told apart.
bool needsName(QAccessible::Role role)
{
    using A = QAccessible;
    static const QList<QAccessible::Role> roles{
        A::PushButton,   A::CheckBox,   A::RadioButton, A::ComboBox,       A::EditableText,
        A::ProgressBar,  A::Slider,     A::SpinBox,     A::Table,          A::List,
        A::Tree,         A::MenuItem,   A::ButtonMenu,  A::ButtonDropDown, A::PageTab,
        A::Link,         A::Graphic,    A::PopupMenu,   A::Dialog,         A::Window,
        A::AlertMessage, A::HelpBalloon};
    return roles.contains(role);
}

struct Walk
{
    int named = 0;
    QStringList unnamed;
};

void walk(QAccessibleInterface *iface, Walk &result)
{
    if (!iface || !iface->isValid() || iface->state().invisible)
        return;
    if (needsName(iface->role())) {
        if (iface->text(QAccessible::Name).trimmed().isEmpty()) {
            const QObject *object = iface->object();
            result.unnamed << QStringLiteral("%1 %2 (role %3)")
                                  .arg(object ? object->metaObject()->className() : "item",
                                       object ? object->objectName() : QString())
                                  .arg(int(iface->role()), 0, 16);
        } else {
            ++result.named;
        }
    }
    for (int i = 0; i < iface->childCount(); ++i)
        walk(iface->child(i), result);
}

QAccessibleInterface *accessible(QObject *object)
{
    return QAccessible::queryAccessibleInterface(object);
}

// Every interactive control a window offers, as tests see them.
QList<QWidget *> controlsOf(QWidget *window)
{
    QList<QWidget *> controls;
    for (QWidget *w : window->findChildren<QWidget *>()) {
        if (w->window() == window && w->isVisible()
            && (qobject_cast<QAbstractButton *>(w) || qobject_cast<QLineEdit *>(w)
                || qobject_cast<QComboBox *>(w)
                || (qobject_cast<QAbstractItemView *>(w) && !qobject_cast<QHeaderView *>(w))))
            controls.append(w);
    }
    return controls;
}

enum Window {
    Main,
    PrefsPaths,
    PrefsSwitches,
    FirstLaunchSheet,
    WizardSheet,
    About,
    Alert,
    Installer,
    StatusbarMenu,
    WizardHint, // the popover of the first-launch sheet
};

const char *const WindowNames[] = {"main window with find bar", "preferences, Paths",
                                   "preferences, Switches", "first-launch sheet", "wizard sheet",
                                   "about window", "alert", "installer", "status-bar menu",
                                   "wizard hint"};

void windowRows(std::initializer_list<Window> windows)
{
    QTest::addColumn<Window>("window");
    for (Window window : windows)
        QTest::newRow(WindowNames[window]) << window;
}

QPalette palette(const QColor &window, const QColor &base, const QColor &text)
{
    QPalette p(window);
    p.setColor(QPalette::Base, base);
    p.setColor(QPalette::Text, text);
    return p;
}

} // namespace

Q_DECLARE_METATYPE(Window)

class TestAccessibility;
using Acted = std::function<bool(TestAccessibility *)>;
Q_DECLARE_METATYPE(Acted)

class TestAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QAccessible::setActive(true);
        // A bundle with the status-bar companion's Info.plist only: the
        // login agent can be named, and no companion is ever started.
        const QString info = "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app/Contents/Info.plist";
        TestSupport::writeFile(m_bundle.path() + info,
                               TestSupport::readFile(TestSupport::buildBundleDir() + info));
        Bundle::setMainBundlePath(m_bundle.path());
        store().registerApplicationDefaults(Bundle::mainBundlePath());
        PrefsController::setFolderChooser([this](QWidget *, PrefsController::Chooser which,
                                                 std::function<void(std::optional<QString>)>) {
            m_prefsChoosers.append(which);
        });
        ZELMORHelperAppDelegate::setFolderChooser(
            [this](QWidget *, const QString &, std::function<void(const QString &)> done) {
                ++m_wizardChoosers;
                done(QString());
            });
    }

    void init()
    {
        store().persisted().removeDomain();
        store().setObject(SettingsKeys::FirstLaunch, 0);
        m_prefsChoosers.clear();
        m_wizardChoosers = 0;
        m_wizardHints = 0;
        QDir(agentFolder()).removeRecursively();
        QDir().mkpath(agentFolder());
    }

    void cleanup()
    {
        delete m_alert;
        m_installer.reset();
        m_companion.reset();
        m_shell.reset();
    }

    // Every control of every window can be told apart by its name, and no
    // window presents itself as a filler pane.
    void everyControlIsNamed_data()
    {
        windowRows({Main, PrefsPaths, PrefsSwitches, FirstLaunchSheet, WizardSheet, About, Alert,
                    Installer, StatusbarMenu, WizardHint});
    }
    void everyControlIsNamed()
    {
        QFETCH(Window, window);
        QWidget *w = open(window);
        QVERIFY(w && w->isVisible());
        QAccessibleInterface *iface = accessible(w);
        QVERIFY(iface);
        QVERIFY2(iface->role() != QAccessible::Client && iface->role() != QAccessible::Pane,
                 qPrintable(QString::number(iface->role(), 16)));
        Walk result;
        walk(iface, result);
        QVERIFY2(result.unnamed.isEmpty(), qPrintable(result.unnamed.join(", ")));
        qInfo("%d named controls", result.named);
        QVERIFY(result.named > 0);
    }

    // The two choosers of a window are told apart by what they choose, and
    // the path fields are named by their labels.
    void choosersAndFieldsSayWhatTheyAre_data() { windowRows({PrefsPaths, WizardSheet}); }
    void choosersAndFieldsSayWhatTheyAre()
    {
        QFETCH(Window, window);
        QWidget *w = open(window);
        QStringList names;
        for (QWidget *control : controlsOf(w)) {
            auto *button = qobject_cast<QPushButton *>(control);
            if (button && button->text().remove('&') == "Select")
                names << accessible(button)->text(QAccessible::Name);
        }
        QCOMPARE(names.size(), 2);
        QVERIFY(names.at(0) != names.at(1));
        for (const QString &name : names)
            QVERIFY2(name.startsWith("Select "), qPrintable(name)); // what is seen is what is said
        names.clear();
        for (QLineEdit *field : w->findChildren<QLineEdit *>())
            names << accessible(field)->text(QAccessible::Name);
        names.sort();
        QCOMPARE(names, (QStringList{"Output", "Workspace"}));
    }

    // An accessibility Toggle stores what a click stores, check box by check
    // box, both ways.
    void toggleStoresWhatAClickStores_data()
    {
        QTest::addColumn<QString>("box");
        QTest::newRow("default name") << "defaultToZELMORCheckbox";
        QTest::newRow("log") << "enableLogCheckBox";
        QTest::newRow("login agent") << "enableStartup";
        QTest::newRow("quit companion") << "openquitWithHelperCheckBox";
    }
    void toggleStoresWhatAClickStores()
    {
        QFETCH(QString, box);
        store().setObject(SettingsKeys::DefaultNameZELMOR, 0);
        const QVariantMap before = store().persisted().values();
        QList<QVariantMap> stored[2]; // by click, by Toggle
        QList<bool> agent[2];
        for (const int byToggle : {0, 1}) {
            store().persisted().removeDomain();
            for (auto it = before.begin(); it != before.end(); ++it)
                store().setObject(it.key(), it.value());
            LoginAgent::uninstall();
            PrefsController prefs(nullptr);
            auto *check = prefs.window()->findChild<QCheckBox *>(box);
            QVERIFY(check);
            for (int turn = 0; turn < 2; ++turn) {
                if (byToggle) {
                    QAccessibleActionInterface *actions = accessible(check)->actionInterface();
                    QVERIFY(actions && actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
                    actions->doAction(QAccessibleActionInterface::toggleAction());
                } else {
                    check->click();
                }
                stored[byToggle] << store().persisted().values();
                agent[byToggle] << LoginAgent::isInstalled();
            }
        }
        QCOMPARE(stored[1], stored[0]);
        QCOMPARE(agent[1], agent[0]);
        // Something was stored or written: the comparison is not of nothing.
        QVERIFY(stored[0].first() != before || agent[0].first());
    }

    // Press does what a click does, button by button.
    void pressActs_data()
    {
        TestSupport::columns<Window, QString, Acted>({"window", "button", "acted"});
        using T = TestAccessibility;
        const auto row = [](const char *name, Window window, const char *button, Acted acted) {
            QTest::newRow(name) << window << QString(button) << acted;
        };
        using Ch = PrefsController::Chooser;
        row("Perform", Main, "buttonPerform",
            [](T *t) { return !t->m_shell->controller()->outputField->toPlainText().isEmpty(); });
        row("find bar, Done", Main, "Done", [](T *t) { return !t->m_shell->menu()->findBar()->isVisible(); });
        row("Select workspace", PrefsPaths, "browserRootButton", [](T *t) { return t->m_prefsChoosers == QList{Ch::Workspace}; });
        row("Select output", PrefsPaths, "browserOutputButton", [](T *t) { return t->m_prefsChoosers == QList{Ch::Output}; });
        row("help", PrefsPaths, "helpButton", [](T *t) { return t->prefs()->popover->isShown(); });
        row("Switches page", PrefsPaths, "Switches", [](T *t) { return t->prefs()->switchView->isVisible(); });
        row("Reset Warnings", PrefsSwitches, "switchResetWarnings",
            [](T *) { return store().objectForKey(SettingsKeys::FirstLaunch) == QVariant(QString("1")); });
        row("first-launch OK", FirstLaunchSheet, "firstOKButton",
            [](T *) { return store().intValue(SettingsKeys::FirstLaunch) == 0; });
        row("wizard Select", WizardSheet, "wizardBrowseOutputButton", [](T *t) { return t->m_wizardChoosers == 1; });
        row("wizard help", WizardSheet, "wizardHelpButton", [](T *t) { return t->m_shell->delegate()->iniPopover->isShown(); });
        row("wizard hint", WizardHint, "", [](T *t) { return t->m_wizardHints == 1; });
        row("wizard OK", WizardSheet, "wizardOKButton",
            [](T *) { return store().objectForKey(SettingsKeys::Initialization) == QVariant(0); });
        row("alert, second button", Alert, "Replace",
            [](T *t) { return t->m_alertAnswer == AlertSheet::FirstButtonReturn + 1; });
        row("installer, Check Again", Installer, "checkAgainButton", [](T *t) { return t->m_installerChecks == 2; });
        row("installer, Close", Installer, "closeButton", [](T *t) { return !t->m_installer->isVisible(); });
    }
    void pressActs()
    {
        QFETCH(Window, window);
        QFETCH(QString, button);
        QFETCH(Acted, acted);
        QWidget *w = open(window);
        QWidget *target = button.isEmpty() ? w : nullptr;
        for (QWidget *control : controlsOf(w)) {
            auto *b = qobject_cast<QAbstractButton *>(control);
            if (b && (b->objectName() == button || b->text().remove('&') == button))
                target = b;
        }
        QVERIFY(target);
        if (window == WizardHint)
            connect(static_cast<Popover *>(target), &Popover::clicked, this, [this] { ++m_wizardHints; });
        QAccessibleActionInterface *actions = accessible(target)->actionInterface();
        QVERIFY(actions);
        // What a click is for a button that stays pressed is a Toggle.
        auto *b = qobject_cast<QAbstractButton *>(target);
        const QString action = b && b->isCheckable() ? QAccessibleActionInterface::toggleAction()
                                                     : QAccessibleActionInterface::pressAction();
        QVERIFY(actions->actionNames().contains(action));
        QVERIFY(!acted(this));
        actions->doAction(action);
        QTRY_VERIFY(acted(this));
    }

    // "Missing" and anything else coloured stays readable on light and dark
    // palettes alike.
    void warningTextIsReadable_data()
    {
        QTest::addColumn<QPalette>("palette");
        QTest::newRow("light") << palette(QColor(0xef, 0xef, 0xef), Qt::white, Qt::black);
        QTest::newRow("dark") << palette(QColor(0x2d, 0x2d, 0x2d), QColor(0x1e, 0x1e, 0x1e),
                                         QColor(0xee, 0xee, 0xee));
        QTest::newRow("mid grey") << palette(Qt::gray, QColor(0x80, 0x80, 0x80), Qt::black);
    }
    void warningTextIsReadable()
    {
        QFETCH(QPalette, palette);
        const QColor base = palette.color(QPalette::Base);
        const QColor warning = Contrast::warningText(palette);
        QVERIFY2(Contrast::ratio(warning, base) >= Contrast::MinimumTextRatio,
                 qPrintable(warning.name() + " on " + base.name()));
        QVERIFY(warning.red() > warning.green()); // still reads as a warning
        QVERIFY(qFuzzyCompare(Contrast::ratio(Qt::black, Qt::white), 21.0));
        QVERIFY(qFuzzyCompare(Contrast::ratio(Qt::white, Qt::white), 1.0));

        // In the installer, with this palette and after a change back to
        // the standard one.
        QApplication::setPalette(palette);
        QWidget *w = open(Installer);
        QVERIFY(w);
        auto *table = w->findChild<QTableWidget *>();
        for (bool changed : {false, true}) {
            if (changed)
                QApplication::setPalette(QPalette());
            const auto missing = table->findItems("Missing", Qt::MatchExactly);
            QVERIFY(!missing.isEmpty());
            for (QTableWidgetItem *status : missing)
                QVERIFY(Contrast::ratio(status->foreground().color(), table->palette().color(QPalette::Base))
                        >= Contrast::MinimumTextRatio);
        }
    }

    // --- Keyboard alone ----------------------------------------------------

    // Tab reaches every control of every window, the preferences' page
    // buttons included.
    void tabReachesEveryControl_data()
    {
        windowRows(
            {Main, PrefsPaths, PrefsSwitches, FirstLaunchSheet, WizardSheet, Alert, Installer});
    }
    void tabReachesEveryControl()
    {
        QFETCH(Window, window);
        QWidget *w = open(window);
        QVERIFY(activate(w));
        const QList<QWidget *> controls = controlsOf(w);
        QSet<QWidget *> reached;
        for (int i = 0; i < 4 * controls.size() + 4; ++i) {
            QWidget *focus = QApplication::focusWidget();
            QVERIFY(focus);
            reached.insert(focus);
            QTest::keyClick(focus, Qt::Key_Tab);
        }
        QStringList missed;
        for (QWidget *control : controls) {
            // A button of a line edit (clear) belongs to its field.
            if (!reached.contains(control) && !qobject_cast<QLineEdit *>(control->parentWidget()))
                missed << control->metaObject()->className() + (" " + control->objectName());
        }
        QVERIFY2(missed.isEmpty(), qPrintable(missed.join(", ")));
    }

    // The Switches page and a switch on it, with keys alone, two ways.
    void switchesPageByKeyboard_data()
    {
        QTest::addColumn<bool>("turnPage"); // Ctrl+Page Down, or Tab to the page button
        QTest::newRow("Ctrl+Page Down") << true;
        QTest::newRow("Tab and Space") << false;
    }
    void switchesPageByKeyboard()
    {
        QFETCH(bool, turnPage);
        QWidget *w = open(PrefsPaths);
        QVERIFY(activate(w));
        PrefsController *prefs = this->prefs();
        if (turnPage) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown, Qt::ControlModifier);
        } else {
            QWidget *pageButton = nullptr;
            for (int i = 0; i < 20 && !pageButton; ++i) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                auto *b = qobject_cast<QAbstractButton *>(QApplication::focusWidget());
                if (b && b->text() == "Switches")
                    pageButton = b;
            }
            QVERIFY(pageButton);
            QTest::keyClick(pageButton, Qt::Key_Space);
        }
        QTRY_VERIFY(prefs->switchView->isVisible() && !prefs->pathsView->isVisible());
        QWidget *box = nullptr;
        for (int i = 0; i < 20 && box != prefs->enableLogCheckBox; ++i) {
            box = QApplication::focusWidget();
            if (box != prefs->enableLogCheckBox)
                QTest::keyClick(box, Qt::Key_Tab);
        }
        QCOMPARE(box, prefs->enableLogCheckBox);
        QTest::keyClick(box, Qt::Key_Space);
        QCOMPARE(store().objectForKey(SettingsKeys::Log), QVariant(1));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageUp, Qt::ControlModifier);
        QVERIFY(prefs->pathsView->isVisible() && !prefs->switchView->isVisible());
    }

    void escapeCloses_data() { windowRows({PrefsPaths, About, Installer}); }
    void escapeCloses()
    {
        QFETCH(Window, window);
        QWidget *w = open(window);
        QVERIFY(activate(w));
        if (window == PrefsPaths) { // an open popover goes first
            prefs()->helpButton->click();
            QVERIFY(prefs()->popover->isShown());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
            QVERIFY(!prefs()->popover->isShown() && w->isVisible());
        }
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : w, Qt::Key_Escape);
        QVERIFY(!w->isVisible());
    }

    // Preferences and Find answer their keys in every window.
    void applicationShortcutsWorkEverywhere()
    {
        QWidget *about = open(About);
        QVERIFY(activate(about));
        QTest::keyClick(about, Qt::Key_Comma, Qt::ControlModifier);
        QVERIFY(prefs() && prefs()->window()->isVisible());
        QVERIFY(activate(prefs()->window()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::ControlModifier);
        QVERIFY(m_shell->menu()->findBar()->isVisible());
        QTRY_COMPARE(QApplication::activeWindow(), m_shell->window());
        QCOMPARE(QApplication::focusWidget(), m_shell->menu()->findBar()->findField());
    }

    void mnemonics_data()
    {
        TestSupport::columns<QStringList, QStringList>({"labels", "marked"});
        using L = QStringList;
        QTest::newRow("word starts first") << L{"Hide ZELMOR Helper", "Hide Others", "Show All"}
                                           << L{"&Hide ZELMOR Helper", "Hide &Others", "&Show All"};
        QTest::newRow("then any free letter") << L{"Select", "Select", "OK"} << L{"&Select", "S&elect", "&OK"};
        QTest::newRow("case-insensitive, digits count") << L{"a", "A", "1 a"} << L{"&a", "A", "&1 a"};
        QTest::newRow("kept marks reserve their letter") << L{"Copy", "&Close"} << L{"C&opy", "&Close"};
        QTest::newRow("literal ampersand, no letter left") << L{"Find & Replace", "?"} << L{"&Find && Replace", "?"};
        QTest::newRow("translated") << L{"Bearbeiten", "Fenster", "Über ZELMOR Helper"}
                                    << L{"&Bearbeiten", "&Fenster", "&Über ZELMOR Helper"};
    }
    void mnemonics()
    {
        QFETCH(QStringList, labels);
        QFETCH(QStringList, marked);
        QCOMPARE(Mnemonics::assign(labels), marked);
        QCOMPARE(Mnemonics::assign(marked), marked); // applying again changes nothing
        for (int i = 0; i < labels.size(); ++i)
            QCOMPARE(Mnemonics::strip(marked.at(i)), Mnemonics::strip(labels.at(i)));
    }

    // Last, since they run the application to its end: Quit answers while a
    // first-launch sheet is open and leaves that sheet's setting as it was,
    // so the sequence comes back at the next start.
    void quitWhileASheetIsOpen_data()
    {
        TestSupport::columns<Window, QString>({"window", "key"});
        QTest::newRow("first-launch sheet") << FirstLaunchSheet << SettingsKeys::FirstLaunch;
        QTest::newRow("wizard sheet") << WizardSheet << SettingsKeys::Initialization;
    }
    void quitWhileASheetIsOpen()
    {
        QFETCH(Window, window);
        QFETCH(QString, key);
        QWidget *sheet = open(window);
        QVERIFY(sheet && sheet->isVisible());
        const QVariant before = store().persisted().value(key);
        QTimer guard; // a Quit that does not answer fails instead of hanging
        guard.callOnTimeout(qApp, [] { QCoreApplication::exit(1); });
        guard.start(20000);
        QTimer::singleShot(0, sheet, [this, sheet] {
            QVERIFY(activate(sheet));
            QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : sheet,
                            Qt::Key_Q, Qt::ControlModifier);
        });
        QCOMPARE(QApplication::exec(), 0);
        QCOMPARE(store().intValue(key), 1);
        QCOMPARE(store().persisted().value(key), before);
    }

private:
    PrefsController *prefs() const { return m_shell->prefsController(); }
    Ui::MainWindow *ui() const { return m_shell->window()->ui(); }
    bool activate(QWidget *w)
    {
        w->raise();
        w->activateWindow();
        return QTest::qWaitForWindowActive(w);
    }

    QString agentFolder() const { return TestSupport::homeDir() + "/.config/autostart"; }

    void startShell(int firstLaunch)
    {
        store().setObject(SettingsKeys::FirstLaunch, firstLaunch);
        m_shell = std::make_unique<ApplicationShell>();
        m_shell->start();
    }

    QWidget *open(Window window)
    {
        switch (window) {
        case Main:
            startShell(0);
            ui()->popupSelection->setCurrentIndex(2); // an update, which finds nothing to update
            ui()->menuFind->trigger();
            return m_shell->window();
        case PrefsPaths:
        case PrefsSwitches:
            startShell(0);
            ui()->menuPrefs->trigger();
            if (window == PrefsSwitches)
                prefs()->toolbarSwitch->trigger();
            return prefs()->window();
        case FirstLaunchSheet:
            startShell(1);
            return m_shell->delegate()->firstLaunchWindow;
        case WizardSheet:
            startShell(1);
            m_shell->delegate()->closeFirstLaunch();
            return m_shell->delegate()->wizardWindow;
        case About:
            startShell(0);
            ui()->menuAbout->trigger();
            return m_shell->aboutController()->window();
        case Alert:
            startShell(0);
            m_alertAnswer = 0;
            m_alert = new AlertSheet(m_shell->window());
            m_alert->setMessageText("Notice");
            m_alert->setInformativeText("Something is in the way.");
            for (const char *title : {"Keep", "Replace", "Cancel"})
                m_alert->addButtonWithTitle(title);
            m_alert->beginSheet(m_shell->window(), [this](int answer) { m_alertAnswer = answer; });
            return m_alert;
        case Installer: {
            // Nothing on the search path: every component is missing.
            m_installer = std::make_unique<InstallerWindow>(ComponentChecks::Platform::Debian,
                                                            m_emptyDir.path(), "/nonexistent/cmake");
            m_installerChecks = 0;
            connect(m_installer.get(), &InstallerWindow::checksFinished, this, [this] { ++m_installerChecks; });
            m_installer->show();
            return QTest::qWaitFor([this] { return m_installerChecks == 1; }, 20000) ? m_installer.get() : nullptr;
        }
        case WizardHint:
            startShell(1);
            return m_shell->delegate()->tryWizardPopover;
        case StatusbarMenu:
            m_companion = std::make_unique<StatusbarCompanion>(
                "org.zelmor.test.a11y", Bundle::mainBundlePath(), StatusbarOptions{false, true});
            m_companion->menu()->popup(QPoint(10, 10));
            return m_companion->menu();
        }
        return nullptr;
    }

    std::unique_ptr<ApplicationShell> m_shell;
    std::unique_ptr<InstallerWindow> m_installer;
    std::unique_ptr<StatusbarCompanion> m_companion;
    QPointer<AlertSheet> m_alert;
    int m_alertAnswer = 0;
    QList<PrefsController::Chooser> m_prefsChoosers;
    int m_wizardChoosers = 0;
    int m_installerChecks = 0;
    int m_wizardHints = 0;
    QTemporaryDir m_emptyDir;
    QTemporaryDir m_bundle;
};

ZELMOR_TEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
