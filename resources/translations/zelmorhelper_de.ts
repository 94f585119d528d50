<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>About</name>
    <message>
        <source>About ZELMOR Helper</source>
        <translation>Über ZELMOR Helper</translation>
    </message>
    <message>
        <source>Fetches, updates and compiles the source codes of ZELMOR on your own machine.</source>
        <translation>Lädt, aktualisiert und kompiliert den Quellcode von ZELMOR auf Ihrem eigenen Rechner.</translation>
    </message>
    <message>
        <source>Made by the ZELMOR Helper developers</source>
        <translation>Von den Entwicklern von ZELMOR Helper</translation>
    </message>
    <message>
        <source>Thank you for using ZELMOR Helper!</source>
        <translation>Danke, dass Sie ZELMOR Helper verwenden!</translation>
    </message>
</context>
<context>
    <name>AboutController</name>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
</context>
<context>
    <name>AlertSheet</name>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
</context>
<context>
    <name>AppCommandLine</name>
    <message>
        <source>Fetches, updates and compiles the sources of the ZELMOR emulator.</source>
        <translation>Lädt, aktualisiert und kompiliert die Quelltexte des ZELMOR-Emulators.</translation>
    </message>
</context>
<context>
    <name>AppController</name>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>Get a complete copy of source codes of ZELLMOR from GitHub</source>
        <translation>Vollständigen Quellcode von ZELMOR von GitHub holen</translation>
    </message>
    <message>
        <source>Get module initialized</source>
        <translation>Module initialisieren</translation>
    </message>
    <message>
        <source>Update source codes and submodules</source>
        <translation>Quellcode und Submodule aktualisieren</translation>
    </message>
    <message>
        <source>Compile ZELMOR</source>
        <translation>ZELMOR kompilieren</translation>
    </message>
    <message>
        <source>Perform</source>
        <translation>Ausführen</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Done.</source>
        <translation>Fertig.</translation>
    </message>
    <message>
        <source>Task terminated by user.</source>
        <translation>Vorgang vom Benutzer abgebrochen.</translation>
    </message>
    <message>
        <source>All done.</source>
        <translation>Alles erledigt.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Ready to install modules</source>
        <translation>Bereit zum Installieren der Module</translation>
    </message>
    <message>
        <source>Main source codes are ready. Do you want to get modules initialized right now?</source>
        <translation>Der Hauptquellcode ist bereit. Möchten Sie die Module jetzt initialisieren?</translation>
    </message>
    <message>
        <source>Count down %d secs</source>
        <translation>Countdown: %d s</translation>
    </message>
    <message>
        <source>Checking files</source>
        <translation>Dateien werden geprüft</translation>
    </message>
    <message>
        <source>&apos;asssets&apos; not found in %@/Android.</source>
        <translation>„assets“ wurde in %@/Android nicht gefunden.</translation>
    </message>
    <message>
        <source>Please re-download a complete copy of source codes.</source>
        <translation>Bitte laden Sie den vollständigen Quellcode erneut herunter.</translation>
    </message>
    <message>
        <source>.git not found in %@.</source>
        <translation>.git wurde in %@ nicht gefunden.</translation>
    </message>
    <message>
        <source>Compiling</source>
        <translation>Wird kompiliert</translation>
    </message>
    <message>
        <source>Build in</source>
        <translation>Build-Ordner</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgabeordner</translation>
    </message>
    <message>
        <source>Moving files to output folder</source>
        <translation>Dateien werden in den Ausgabeordner verschoben</translation>
    </message>
    <message>
        <source>%@ already exists. It may be source codes.</source>
        <translation>%@ existiert bereits. Es könnte sich um Quellcode handeln.</translation>
    </message>
    <message>
        <source>Folder will add current date as extension if you choose to keep it.</source>
        <translation>Wenn Sie den Ordner behalten, wird seinem Namen das aktuelle Datum angehängt.</translation>
    </message>
    <message>
        <source>How to deal with it?</source>
        <translation>Wie möchten Sie fortfahren?</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Behalten</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Downloading source codes</source>
        <translation>Quellcode wird heruntergeladen</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Speicherort</translation>
    </message>
    <message>
        <source>Registering modules</source>
        <translation>Module werden registriert</translation>
    </message>
    <message>
        <source>Checking modules</source>
        <translation>Module werden geprüft</translation>
    </message>
    <message>
        <source>Failure.</source>
        <translation>Fehlgeschlagen.</translation>
    </message>
    <message>
        <source> or .git in it not found!</source>
        <translation> oder das darin enthaltene .git nicht gefunden!</translation>
    </message>
    <message>
        <source> gives no module name!</source>
        <translation> liefert keinen Modulnamen!</translation>
    </message>
    <message>
        <source> It is skipped.</source>
        <translation> Es wird übersprungen.</translation>
    </message>
    <message>
        <source>Module Exists</source>
        <translation>Modul vorhanden</translation>
    </message>
    <message>
        <source>Found submodule</source>
        <translation>Vorhandenes Submodul</translation>
    </message>
    <message>
        <source>Skip</source>
        <translation>Überspringen</translation>
    </message>
    <message>
        <source>Getting module</source>
        <translation>Lade Modul</translation>
    </message>
    <message>
        <source>Skip module</source>
        <translation>Überspringe Modul</translation>
    </message>
    <message>
        <source>Main source codes are ready. Do you want to get essential modules initialized right now?</source>
        <translation>Der Hauptquellcode ist bereit. Möchten Sie die benötigten Module jetzt initialisieren?</translation>
    </message>
    <message>
        <source>Ready to start initializing modules. Please wait...</source>
        <translation>Die Module werden gleich initialisiert. Bitte warten...</translation>
    </message>
    <message>
        <source>Please re-initialize it.</source>
        <translation>Bitte initialisieren Sie es erneut.</translation>
    </message>
    <message>
        <source>Updating source codes</source>
        <translation>Quellcode wird aktualisiert</translation>
    </message>
    <message>
        <source>Checking for update of ZELMOR master</source>
        <translation>Suche nach Aktualisierungen für ZELMOR (master)</translation>
    </message>
    <message>
        <source>Checking for update of submodules</source>
        <translation>Suche nach Aktualisierungen der Submodule</translation>
    </message>
    <message>
        <source> holds more than submodule entries!</source>
        <translation> enthält mehr als Submodul-Einträge!</translation>
    </message>
    <message>
        <source> The modules are not registered in .git/config.</source>
        <translation> Die Module werden nicht in .git/config eingetragen.</translation>
    </message>
    <message>
        <source> is not a plain module URL!</source>
        <translation> ist keine einfache Modul-URL!</translation>
    </message>
    <message>
        <source> is your home folder or the workspace, or holds one of them! Compiling empties the output folder: please choose another one.</source>
        <translation> ist Ihr persönlicher Ordner oder der Arbeitsordner oder enthält einen davon! Beim Kompilieren wird der Ausgabeordner geleert: Bitte wählen Sie einen anderen.</translation>
    </message>
</context>
<context>
    <name>ApplicationShell</name>
    <message>
        <source>ZELMOR Helper</source>
        <translation>ZELMOR Helper</translation>
    </message>
</context>
<context>
    <name>ComponentChecks</name>
    <message>
        <source>Homebrew</source>
        <translation>Homebrew</translation>
    </message>
    <message>
        <source>Git</source>
        <translation>Git</translation>
    </message>
    <message>
        <source>CMake</source>
        <translation>CMake</translation>
    </message>
    <message>
        <source>Make</source>
        <translation>Make</translation>
    </message>
    <message>
        <source>C compiler</source>
        <translation>C-Compiler</translation>
    </message>
    <message>
        <source>C++ compiler</source>
        <translation>C++-Compiler</translation>
    </message>
    <message>
        <source>SDL 2 development files</source>
        <translation>SDL-2-Entwicklungsdateien</translation>
    </message>
</context>
<context>
    <name>ConsoleFindBar</name>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Vorheriges suchen</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Nächstes suchen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
</context>
<context>
    <name>HomebrewInstaller</name>
    <message>
        <source>Installing with Homebrew</source>
        <translation>Installation mit Homebrew</translation>
    </message>
    <message>
        <source>The installer could not be started. Run the command below in a terminal.</source>
        <translation>Das Installationsprogramm konnte nicht gestartet werden. Führen Sie den Befehl unten in einem Terminal aus.</translation>
    </message>
    <message>
        <source>Apple&apos;s installer for the command line tools has opened. When it has finished, click Install again for the rest.</source>
        <translation>Apples Installationsprogramm für die Command Line Tools wurde geöffnet. Wenn es fertig ist, klicken Sie für den Rest erneut auf „Installieren“.</translation>
    </message>
    <message>
        <source>Homebrew could not install the packages; its output above says why.</source>
        <translation>Homebrew konnte die Pakete nicht installieren; seine Ausgabe oben sagt, warum.</translation>
    </message>
</context>
<context>
    <name>FailureDiagnosis</name>
    <message>
        <source>You may not write to the output folder %1. Choose another folder.</source>
        <translation>Sie dürfen nicht in den Ausgabeordner %1 schreiben. Wählen Sie einen anderen Ordner.</translation>
    </message>
    <message>
        <source>You may not write to the workspace folder %1. Choose another folder.</source>
        <translation>Sie dürfen nicht in den Arbeitsordner %1 schreiben. Wählen Sie einen anderen Ordner.</translation>
    </message>
    <message>
        <source>Changes made in the workspace stand in the way of the update. Keep the workspace aside and download the sources again.</source>
        <translation>Änderungen im Arbeitsordner verhindern die Aktualisierung. Legen Sie den Arbeitsordner beiseite und laden Sie die Quellen neu herunter.</translation>
    </message>
    <message>
        <source>Changes made in the workspace to %1 stand in the way of the update. Keep the workspace aside and download the sources again.</source>
        <translation>Änderungen an %1 im Arbeitsordner verhindern die Aktualisierung. Legen Sie den Arbeitsordner beiseite und laden Sie die Quellen neu herunter.</translation>
    </message>
    <message>
        <source>%1 is not installed. Install Essentials installs it.</source>
        <translation>%1 ist nicht installiert. „Benötigte Komponenten installieren“ installiert es.</translation>
    </message>
    <message>
        <source>%1 could not be started.</source>
        <translation>%1 konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>The workspace folder %1 already exists but holds no download. Move it aside and download again.</source>
        <translation>Der Arbeitsordner %1 existiert bereits, enthält aber keinen Download. Legen Sie ihn beiseite und laden Sie erneut herunter.</translation>
    </message>
    <message>
        <source>A folder without a download is in the way of git.</source>
        <translation>Ein Ordner ohne Download steht git im Weg.</translation>
    </message>
    <message>
        <source>The disk is full: it has %1 free. Free some space, then try again.</source>
        <translation>Der Datenträger ist voll: Es sind nur %1 frei. Schaffen Sie Platz und versuchen Sie es dann erneut.</translation>
    </message>
    <message>
        <source>The disk is full. Free some space, then try again.</source>
        <translation>Der Datenträger ist voll. Schaffen Sie Platz und versuchen Sie es dann erneut.</translation>
    </message>
    <message>
        <source>The server could not be reached. Check the internet connection, then try again.</source>
        <translation>Der Server war nicht erreichbar. Prüfen Sie die Internetverbindung und versuchen Sie es dann erneut.</translation>
    </message>
    <message>
        <source>The repository was not found or asks for a login: its address is wrong, or it is private.</source>
        <translation>Das Repository wurde nicht gefunden oder verlangt eine Anmeldung: Seine Adresse ist falsch, oder es ist privat.</translation>
    </message>
    <message>
        <source>CMake could not find %1, which compiling ZELMOR needs. Install Essentials installs it.</source>
        <translation>CMake hat %1 nicht gefunden, das zum Kompilieren von ZELMOR nötig ist. „Benötigte Komponenten installieren“ installiert es.</translation>
    </message>
    <message>
        <source>The compiler stopped at an error in %1, line %2.</source>
        <translation>Der Compiler hat bei einem Fehler in %1, Zeile %2, angehalten.</translation>
    </message>
    <message>
        <source>%1 was ended by signal %2.</source>
        <translation>%1 wurde durch Signal %2 beendet.</translation>
    </message>
    <message>
        <source>%1 ended with status %2.</source>
        <translation>%1 endete mit Status %2.</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Choose Another Folder...</source>
        <translation>Anderen Ordner wählen...</translation>
    </message>
    <message>
        <source>Install Essentials</source>
        <translation>Benötigte Komponenten installieren</translation>
    </message>
    <message>
        <source>Move Aside and Download Again</source>
        <translation>Beiseitelegen und neu herunterladen</translation>
    </message>
</context>
<context>
    <name>Installer</name>
    <message>
        <source>Install Components</source>
        <translation>Komponenten installieren</translation>
    </message>
    <message>
        <source>ZELMOR Helper uses these tools to download and compile ZELMOR.</source>
        <translation>ZELMOR Helper verwendet diese Werkzeuge, um ZELMOR herunterzuladen und zu kompilieren.</translation>
    </message>
    <message>
        <source>Component</source>
        <translation>Komponente</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Speicherort</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Check Again</source>
        <translation>Erneut prüfen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Components</source>
        <translation>Komponenten</translation>
    </message>
    <message>
        <source>Install command</source>
        <translation>Installationsbefehl</translation>
    </message>
    <message>
        <source>Installation progress</source>
        <translation>Installationsfortschritt</translation>
    </message>
    <message>
        <source>Installation status</source>
        <translation>Installationsstatus</translation>
    </message>
    <message>
        <source>Installer output</source>
        <translation>Ausgabe des Installationsprogramms</translation>
    </message>
    <message>
        <source>Refresh and Try Again</source>
        <translation>Aktualisieren und erneut versuchen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
</context>
<context>
    <name>InstallerWindow</name>
    <message>
        <source>Checking…</source>
        <translation>Wird geprüft…</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Fehlt</translation>
    </message>
    <message>
        <source>Found</source>
        <translation>Gefunden</translation>
    </message>
    <message>
        <source>Found, version %1</source>
        <translation>Gefunden, Version %1</translation>
    </message>
    <message>
        <source>not at %1</source>
        <translation>nicht unter %1</translation>
    </message>
    <message>
        <source>Everything ZELMOR Helper needs is installed.</source>
        <translation>Alles, was ZELMOR Helper benötigt, ist installiert.</translation>
    </message>
    <message>
        <source>To install what is missing, run this in a terminal, then click Check Again:</source>
        <translation>Um das Fehlende zu installieren, führen Sie dies in einem Terminal aus und klicken Sie dann auf „Erneut prüfen“:</translation>
    </message>
    <message>
        <source>Or run this in a terminal, then click Check Again:</source>
        <translation>Oder führen Sie dies in einem Terminal aus und klicken Sie dann auf „Erneut prüfen“:</translation>
    </message>
    <message>
        <source>Installing what is missing. The system may ask for your password.</source>
        <translation>Das Fehlende wird installiert. Das System fragt eventuell nach Ihrem Passwort.</translation>
    </message>
    <message>
        <source>Click Install to install what is missing.</source>
        <translation>Klicken Sie auf „Installieren“, um das Fehlende zu installieren.</translation>
    </message>
    <message>
        <source>Checks the tools ZELMOR Helper needs and installs the missing ones.</source>
        <translation>Prüft die Werkzeuge, die ZELMOR Helper braucht, und installiert die fehlenden.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Operation</source>
        <translation>Vorgang</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>Konsole</translation>
    </message>
    <message>
        <source>Activity</source>
        <translation>Aktivität</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
</context>
<context>
    <name>MessageBar</name>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
</context>
<context>
    <name>OperationNotice</name>
    <message>
        <source>ZELMOR Helper</source>
        <translation>ZELMOR Helper</translation>
    </message>
    <message>
        <source>%1 ended with a problem</source>
        <translation>%1 endete mit einem Problem</translation>
    </message>
</context>
<context>
    <name>PackageInstaller</name>
    <message>
        <source>Installation finished.</source>
        <translation>Installation abgeschlossen.</translation>
    </message>
    <message>
        <source>The installation was cancelled. The list shows what is installed now.</source>
        <translation>Die Installation wurde abgebrochen. Die Liste zeigt, was jetzt installiert ist.</translation>
    </message>
</context>
<context>
    <name>PackageKitRules</name>
    <message>
        <source>Waiting for another installer…</source>
        <translation>Warten auf ein anderes Installationsprogramm…</translation>
    </message>
    <message>
        <source>Waiting for authentication</source>
        <translation>Warten auf Authentifizierung</translation>
    </message>
    <message>
        <source>Starting</source>
        <translation>Wird gestartet</translation>
    </message>
    <message>
        <source>Looking up packages</source>
        <translation>Pakete werden gesucht</translation>
    </message>
    <message>
        <source>Refreshing package lists</source>
        <translation>Paketlisten werden aktualisiert</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>Herunterladen</translation>
    </message>
    <message>
        <source>Installing</source>
        <translation>Installieren</translation>
    </message>
    <message>
        <source>Checking signatures</source>
        <translation>Signaturen werden geprüft</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>Wird abgeschlossen</translation>
    </message>
    <message>
        <source>Cancelling</source>
        <translation>Wird abgebrochen</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>Abgeschlossen</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>In Arbeit</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Not available from this system&apos;s package sources: %1.</source>
        <translation>In den Paketquellen dieses Systems nicht verfügbar: %1.</translation>
    </message>
    <message>
        <source>Nothing was installed: the packages are not signed by a source this system trusts. Check the package sources in the system&apos;s software settings, or run the command below in a terminal.</source>
        <translation>Es wurde nichts installiert: Die Pakete sind nicht von einer Quelle signiert, der dieses System vertraut. Prüfen Sie die Paketquellen in den Software-Einstellungen des Systems, oder führen Sie den Befehl unten in einem Terminal aus.</translation>
    </message>
    <message>
        <source>Installing was not authorized: the password prompt was cancelled, the password was wrong, or no password prompt can be shown in this session. Click Install to try again, or run the command below in a terminal.</source>
        <translation>Die Installation wurde nicht erlaubt: Die Passwortabfrage wurde abgebrochen, das Passwort war falsch, oder in dieser Sitzung kann keine Passwortabfrage angezeigt werden. Klicken Sie auf „Installieren“, um es erneut zu versuchen, oder führen Sie den Befehl unten in einem Terminal aus.</translation>
    </message>
    <message>
        <source>Another installer is using the package manager. Wait until it has finished, then click Install again.</source>
        <translation>Ein anderes Installationsprogramm verwendet die Paketverwaltung. Warten Sie, bis es fertig ist, und klicken Sie dann erneut auf „Installieren“.</translation>
    </message>
    <message>
        <source>The packages could not be downloaded. Check the internet connection, then click Install again.</source>
        <translation>Die Pakete konnten nicht heruntergeladen werden. Prüfen Sie die Internetverbindung und klicken Sie dann erneut auf „Installieren“.</translation>
    </message>
    <message>
        <source>There is not enough free disk space. Free some space, then click Install again.</source>
        <translation>Es ist nicht genug freier Speicherplatz vorhanden. Geben Sie Platz frei und klicken Sie dann erneut auf „Installieren“.</translation>
    </message>
    <message>
        <source>The package manager could not install the packages. Run the command below in a terminal to see why.</source>
        <translation>Die Paketverwaltung konnte die Pakete nicht installieren. Führen Sie den Befehl unten in einem Terminal aus, um den Grund zu sehen.</translation>
    </message>
    <message>
        <source>The package manager could not install the packages: %1</source>
        <translation>Die Paketverwaltung konnte die Pakete nicht installieren: %1</translation>
    </message>
    <message>
        <source>PackageKit, which installs software on this system, is not available. Run the command below in a terminal, then click Check Again.</source>
        <translation>PackageKit, das auf diesem System Software installiert, ist nicht verfügbar. Führen Sie den Befehl unten in einem Terminal aus und klicken Sie dann auf „Erneut prüfen“.</translation>
    </message>
    <message>
        <source>This computer is offline. Connect it to the internet, then click Install again.</source>
        <translation>Dieser Computer ist offline. Verbinden Sie ihn mit dem Internet und klicken Sie dann erneut auf „Installieren“.</translation>
    </message>
    <message>
        <source>The package manager stopped before it finished. The list shows what is installed now; click Install to try again.</source>
        <translation>Die Paketverwaltung wurde beendet, bevor sie fertig war. Die Liste zeigt, was jetzt installiert ist; klicken Sie auf „Installieren“, um es erneut zu versuchen.</translation>
    </message>
    <message>
        <source>This system&apos;s package lists do not know %1. Refresh the package lists and try again?</source>
        <translation>Die Paketlisten dieses Systems kennen %1 nicht. Die Paketlisten aktualisieren und es erneut versuchen?</translation>
    </message>
    <message>
        <source>%1 cannot be found in this system&apos;s package sources, even after refreshing the package lists. Check the package sources in the system&apos;s software settings, or run the command below in a terminal.</source>
        <translation>%1 ist in den Paketquellen dieses Systems auch nach dem Aktualisieren der Paketlisten nicht zu finden. Prüfen Sie die Paketquellen in den Software-Einstellungen des Systems, oder führen Sie den Befehl unten in einem Terminal aus.</translation>
    </message>
</context>
<context>
    <name>Preferences</name>
    <message>
        <source>Select workspace folder</source>
        <translation>Arbeitsordner auswählen</translation>
    </message>
    <message>
        <source>Select output folder</source>
        <translation>Ausgabeordner auswählen</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
</context>
<context>
    <name>PrefsController</name>
    <message>
        <source>Select</source>
        <translation>Auswählen</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Paths</source>
        <translation>Pfade</translation>
    </message>
    <message>
        <source>Workspace</source>
        <translation>Arbeitsordner</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgabeordner</translation>
    </message>
    <message>
        <source>Use &apos;ZELMOR&apos; and &apos;Output&apos; as default name of workspace and output folder</source>
        <translation>„ZELMOR“ und „Output“ als Standardnamen für Arbeits- und Ausgabeordner verwenden</translation>
    </message>
    <message>
        <source>If you want to use &apos;ZELMOR&apos; as the default name of workspace  and &apos;Output&apos; as the name of output folder, you just need to choose the parent folder of them. Otherwise, you need to choose the complete path.</source>
        <translation>Wenn „ZELMOR“ der Standardname des Arbeitsordners und „Output“ der Name des Ausgabeordners sein soll, wählen Sie nur den Ordner, in dem sie liegen. Andernfalls wählen Sie den vollständigen Pfad.</translation>
    </message>
    <message>
        <source>Switches</source>
        <translation>Schalter</translation>
    </message>
    <message>
        <source>Reset All</source>
        <translation>Alles zurücksetzen</translation>
    </message>
    <message>
        <source>Reset Warnings</source>
        <translation>Hinweise zurücksetzen</translation>
    </message>
    <message>
        <source>Enable Log</source>
        <translation>Protokoll aktivieren</translation>
    </message>
    <message>
        <source>Enable ZELMOR Helper Statusbar App Statup at Login</source>
        <translation>ZELMOR Helper Statusbar App bei der Anmeldung starten</translation>
    </message>
    <message>
        <source>Quit statusbar app with ZELMOR Helper</source>
        <translation>Statusleisten-App zusammen mit ZELMOR Helper beenden</translation>
    </message>
    <message>
        <source>* Please restart ZELMOR Helper to take effect(s).</source>
        <translation>* Bitte starten Sie ZELMOR Helper neu, damit die Änderungen wirksam werden.</translation>
    </message>
    <message>
        <source>ZELMOR Helper must restart to take effects of changes.</source>
        <translation>ZELMOR Helper muss neu gestartet werden, damit die Änderungen wirksam werden.</translation>
    </message>
    <message>
        <source>You can restart the application later through the menu bar item.</source>
        <translation>Sie können das Programm auch später über den Menüeintrag neu starten.</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Neu starten</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>Notice</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Count down %d secs</source>
        <translation>Countdown: %d s</translation>
    </message>
    <message>
        <source>More Pages</source>
        <translation>Weitere Seiten</translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Displays help on commandline options.</source>
        <translation>Zeigt Hilfe zu den Befehlszeilenoptionen an.</translation>
    </message>
</context>
<context>
    <name>StatusbarCompanion</name>
    <message>
        <source>Open ZELMOR Helper</source>
        <translation>ZELMOR Helper öffnen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>ZELMOR Helper</source>
        <translation>ZELMOR Helper</translation>
    </message>
    <message>
        <source>ZELMOR Helper Statusbar App is running.</source>
        <translation>ZELMOR Helper Statusbar App läuft.</translation>
    </message>
    <message>
        <source>%1 — %2%</source>
        <translation>%1 — %2&#xa0;%</translation>
    </message>
    <message>
        <source>No system tray is available on this desktop; exiting.</source>
        <translation>Diese Arbeitsumgebung hat keinen Infobereich für Symbole; das Programm wird beendet.</translation>
    </message>
    <message>
        <source>Another instance is already running; exiting.</source>
        <translation>Eine andere Instanz läuft bereits; das Programm wird beendet.</translation>
    </message>
    <message>
        <source>Shows the operation ZELMOR Helper is running in the system tray.</source>
        <translation>Zeigt im Systembereich der Kontrollleiste, welchen Vorgang ZELMOR Helper gerade ausführt.</translation>
    </message>
    <message>
        <source>How it was started; &quot;autoLaunched&quot; (at login) skips the greeting.</source>
        <translation>Wie das Programm gestartet wurde; „autoLaunched“ (bei der Anmeldung) überspringt die Begrüßung.</translation>
    </message>
    <message>
        <source>Run without a tray icon (sessions without a tray).</source>
        <translation>Ohne Symbol im Systembereich laufen (für Sitzungen ohne Systembereich).</translation>
    </message>
    <message>
        <source>%1 ended with a problem: %2</source>
        <translation>%1 endete mit einem Problem: %2</translation>
    </message>
</context>
<context>
    <name>ZELMORHelperAppDelegate</name>
    <message>
        <source>ZELMOR Helper</source>
        <translation>ZELMOR Helper</translation>
    </message>
    <message>
        <source>About ZELMOR Helper</source>
        <translation>Über ZELMOR Helper</translation>
    </message>
    <message>
        <source>Re-launch ZELMOR Helper</source>
        <translation>ZELMOR Helper neu starten</translation>
    </message>
    <message>
        <source>Launch ZELMOR Helper Statusbar App</source>
        <translation>ZELMOR Helper Statusbar App starten</translation>
    </message>
    <message>
        <source>Install Essentials</source>
        <translation>Benötigte Komponenten installieren</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>Einstellungen...</translation>
    </message>
    <message>
        <source>Hide ZELMOR Helper</source>
        <translation>ZELMOR Helper ausblenden</translation>
    </message>
    <message>
        <source>Hide Others</source>
        <translation>Andere ausblenden</translation>
    </message>
    <message>
        <source>Show All</source>
        <translation>Alle einblenden</translation>
    </message>
    <message>
        <source>Quit ZELMOR Helper</source>
        <translation>ZELMOR Helper beenden</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Find...</source>
        <translation>Suchen...</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Nächstes suchen</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Vorheriges suchen</translation>
    </message>
    <message>
        <source>Use Selection for Find</source>
        <translation>Auswahl für Suche verwenden</translation>
    </message>
    <message>
        <source>Jump to Selection</source>
        <translation>Zur Auswahl springen</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoomen</translation>
    </message>
    <message>
        <source>Bring All to Front</source>
        <translation>Alle nach vorne bringen</translation>
    </message>
    <message>
        <source>Welcome</source>
        <translation>Willkommen</translation>
    </message>
    <message>
        <source>You need to install Xcode(larger in file size but recommend) or command line tool(needless for Xcode), homebrew, cmake, sdl.
 
(cmake and sdl can be installed through homebrew)</source>
        <translation>Sie müssen Xcode (groß, aber empfohlen) oder die Command Line Tools (mit Xcode unnötig), Homebrew, cmake und SDL installieren.
 
(cmake und SDL lassen sich über Homebrew installieren)</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Don&apos;t know how to install? Click here to try wizard.</source>
        <translation>Sie wissen nicht, wie man sie installiert? Klicken Sie hier, um den Assistenten zu starten.</translation>
    </message>
    <message>
        <source>Initialization</source>
        <translation>Ersteinrichtung</translation>
    </message>
    <message>
        <source>Please set where to store source codes of ZELMOR and where to output compiled ZELMOR.</source>
        <translation>Legen Sie fest, wo der Quellcode von ZELMOR gespeichert und wohin das kompilierte ZELMOR ausgegeben wird.</translation>
    </message>
    <message>
        <source>Workspace</source>
        <translation>Arbeitsordner</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgabeordner</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Auswählen</translation>
    </message>
</context>
<context>
    <name>firstLaunch</name>
    <message>
        <source>Try Wizard</source>
        <translation>Assistenten ausprobieren</translation>
    </message>
</context>
<context>
    <name>wizard</name>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>The workspace keeps the source codes of ZELMOR; it is also where ZELMOR is compiled. The output folder receives the compiled ZELMOR and its assets. A folder named ZELMOR is created in the folder you select, and the output goes into its Output folder.</source>
        <translation>Der Arbeitsordner enthält den Quellcode von ZELMOR; dort wird ZELMOR auch kompiliert. Der Ausgabeordner erhält das kompilierte ZELMOR und seine Assets. In dem Ordner, den Sie auswählen, wird ein Ordner namens ZELMOR angelegt; die Ausgabe kommt darin in den Ordner Output.</translation>
    </message>
    <message>
        <source>Select workspace folder</source>
        <translation>Arbeitsordner auswählen</translation>
    </message>
    <message>
        <source>Select output folder</source>
        <translation>Ausgabeordner auswählen</translation>
    </message>
</context>
</TS>
