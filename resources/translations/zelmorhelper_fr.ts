<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>About</name>
    <message>
        <source>About ZELMOR Helper</source>
        <translation>À propos de ZELMOR Helper</translation>
    </message>
    <message>
        <source>Fetches, updates and compiles the source codes of ZELMOR on your own machine.</source>
        <translation>Télécharge, met à jour et compile le code source de ZELMOR sur votre propre ordinateur.</translation>
    </message>
    <message>
        <source>Made by the ZELMOR Helper developers</source>
        <translation>Réalisé par les développeurs de ZELMOR Helper</translation>
    </message>
    <message>
        <source>Thank you for using ZELMOR Helper!</source>
        <translation>Merci d&apos;utiliser ZELMOR Helper&#xa0;!</translation>
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
        <translation>Avertissement</translation>
    </message>
</context>
<context>
    <name>AppCommandLine</name>
    <message>
        <source>Fetches, updates and compiles the sources of the ZELMOR emulator.</source>
        <translation>Télécharge, met à jour et compile les sources de l’émulateur ZELMOR.</translation>
    </message>
</context>
<context>
    <name>AppController</name>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Get a complete copy of source codes of ZELLMOR from GitHub</source>
        <translation>Obtenir une copie complète du code source de ZELMOR depuis GitHub</translation>
    </message>
    <message>
        <source>Get module initialized</source>
        <translation>Initialiser les modules</translation>
    </message>
    <message>
        <source>Update source codes and submodules</source>
        <translation>Mettre à jour le code source et les sous-modules</translation>
    </message>
    <message>
        <source>Compile ZELMOR</source>
        <translation>Compiler ZELMOR</translation>
    </message>
    <message>
        <source>Perform</source>
        <translation>Exécuter</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Done.</source>
        <translation>Terminé.</translation>
    </message>
    <message>
        <source>Task terminated by user.</source>
        <translation>Tâche interrompue par l&apos;utilisateur.</translation>
    </message>
    <message>
        <source>All done.</source>
        <translation>Tout est terminé.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Ready to install modules</source>
        <translation>Prêt à installer les modules</translation>
    </message>
    <message>
        <source>Main source codes are ready. Do you want to get modules initialized right now?</source>
        <translation>Le code source principal est prêt. Voulez-vous initialiser les modules maintenant&#xa0;?</translation>
    </message>
    <message>
        <source>Count down %d secs</source>
        <translation>Compte à rebours&#xa0;: %d s</translation>
    </message>
    <message>
        <source>Checking files</source>
        <translation>Vérification des fichiers</translation>
    </message>
    <message>
        <source>&apos;asssets&apos; not found in %@/Android.</source>
        <translation>«&#xa0;assets&#xa0;» introuvable dans %@/Android.</translation>
    </message>
    <message>
        <source>Please re-download a complete copy of source codes.</source>
        <translation>Veuillez télécharger à nouveau une copie complète du code source.</translation>
    </message>
    <message>
        <source>.git not found in %@.</source>
        <translation>.git introuvable dans %@.</translation>
    </message>
    <message>
        <source>Compiling</source>
        <translation>Compilation</translation>
    </message>
    <message>
        <source>Build in</source>
        <translation>Dossier de compilation</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Dossier de sortie</translation>
    </message>
    <message>
        <source>Moving files to output folder</source>
        <translation>Déplacement des fichiers vers le dossier de sortie</translation>
    </message>
    <message>
        <source>%@ already exists. It may be source codes.</source>
        <translation>%@ existe déjà. Il contient peut-être du code source.</translation>
    </message>
    <message>
        <source>Folder will add current date as extension if you choose to keep it.</source>
        <translation>Si vous le conservez, la date du jour sera ajoutée au nom du dossier.</translation>
    </message>
    <message>
        <source>How to deal with it?</source>
        <translation>Que voulez-vous faire&#xa0;?</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Conserver</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Remplacer</translation>
    </message>
    <message>
        <source>Downloading source codes</source>
        <translation>Téléchargement du code source</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Emplacement</translation>
    </message>
    <message>
        <source>Registering modules</source>
        <translation>Enregistrement des modules</translation>
    </message>
    <message>
        <source>Checking modules</source>
        <translation>Vérification des modules</translation>
    </message>
    <message>
        <source>Failure.</source>
        <translation>Échec.</translation>
    </message>
    <message>
        <source> or .git in it not found!</source>
        <translation> ou son dossier .git introuvable&#xa0;!</translation>
    </message>
    <message>
        <source> gives no module name!</source>
        <translation> ne donne aucun nom de module&#xa0;!</translation>
    </message>
    <message>
        <source> It is skipped.</source>
        <translation> Il est ignoré.</translation>
    </message>
    <message>
        <source>Module Exists</source>
        <translation>Le module existe</translation>
    </message>
    <message>
        <source>Found submodule</source>
        <translation>Sous-module existant</translation>
    </message>
    <message>
        <source>Skip</source>
        <translation>Ignorer</translation>
    </message>
    <message>
        <source>Getting module</source>
        <translation>Récupération du module</translation>
    </message>
    <message>
        <source>Skip module</source>
        <translation>Module ignoré&#xa0;:</translation>
    </message>
    <message>
        <source>Main source codes are ready. Do you want to get essential modules initialized right now?</source>
        <translation>Le code source principal est prêt. Voulez-vous initialiser les modules essentiels maintenant&#xa0;?</translation>
    </message>
    <message>
        <source>Ready to start initializing modules. Please wait...</source>
        <translation>Prêt à initialiser les modules. Veuillez patienter...</translation>
    </message>
    <message>
        <source>Please re-initialize it.</source>
        <translation>Veuillez l&apos;initialiser à nouveau.</translation>
    </message>
    <message>
        <source>Updating source codes</source>
        <translation>Mise à jour du code source</translation>
    </message>
    <message>
        <source>Checking for update of ZELMOR master</source>
        <translation>Recherche de mises à jour de ZELMOR (master)</translation>
    </message>
    <message>
        <source>Checking for update of submodules</source>
        <translation>Recherche de mises à jour des sous-modules</translation>
    </message>
    <message>
        <source> holds more than submodule entries!</source>
        <translation> contient plus que des entrées de sous-modules&#xa0;!</translation>
    </message>
    <message>
        <source> The modules are not registered in .git/config.</source>
        <translation> Les modules ne sont pas inscrits dans .git/config.</translation>
    </message>
    <message>
        <source> is not a plain module URL!</source>
        <translation> n’est pas une simple URL de module&#xa0;!</translation>
    </message>
    <message>
        <source> is your home folder or the workspace, or holds one of them! Compiling empties the output folder: please choose another one.</source>
        <translation> est votre dossier personnel ou le dossier de travail, ou contient l’un d’eux&#xa0;! La compilation vide le dossier de sortie&#xa0;: veuillez en choisir un autre.</translation>
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
        <translation>Compilateur C</translation>
    </message>
    <message>
        <source>C++ compiler</source>
        <translation>Compilateur C++</translation>
    </message>
    <message>
        <source>SDL 2 development files</source>
        <translation>Fichiers de développement SDL 2</translation>
    </message>
</context>
<context>
    <name>ConsoleFindBar</name>
    <message>
        <source>Find</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Rechercher le précédent</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Rechercher le suivant</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Terminé</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Introuvable</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Effacer</translation>
    </message>
</context>
<context>
    <name>HomebrewInstaller</name>
    <message>
        <source>Installing with Homebrew</source>
        <translation>Installation avec Homebrew</translation>
    </message>
    <message>
        <source>The installer could not be started. Run the command below in a terminal.</source>
        <translation>Le programme d'installation n'a pas pu être lancé. Exécutez la commande ci-dessous dans un terminal.</translation>
    </message>
    <message>
        <source>Apple&apos;s installer for the command line tools has opened. When it has finished, click Install again for the rest.</source>
        <translation>Le programme d'installation d'Apple pour les outils en ligne de commande s'est ouvert. Quand il a terminé, cliquez à nouveau sur « Installer » pour le reste.</translation>
    </message>
    <message>
        <source>Homebrew could not install the packages; its output above says why.</source>
        <translation>Homebrew n'a pas pu installer les paquets ; sa sortie ci-dessus indique pourquoi.</translation>
    </message>
</context>
<context>
    <name>FailureDiagnosis</name>
    <message>
        <source>You may not write to the output folder %1. Choose another folder.</source>
        <translation>Vous ne pouvez pas écrire dans le dossier de sortie %1. Choisissez un autre dossier.</translation>
    </message>
    <message>
        <source>You may not write to the workspace folder %1. Choose another folder.</source>
        <translation>Vous ne pouvez pas écrire dans le dossier de travail %1. Choisissez un autre dossier.</translation>
    </message>
    <message>
        <source>Changes made in the workspace stand in the way of the update. Keep the workspace aside and download the sources again.</source>
        <translation>Des modifications faites dans le dossier de travail empêchent la mise à jour. Mettez le dossier de travail de côté et téléchargez à nouveau les sources.</translation>
    </message>
    <message>
        <source>Changes made in the workspace to %1 stand in the way of the update. Keep the workspace aside and download the sources again.</source>
        <translation>Des modifications de %1 dans le dossier de travail empêchent la mise à jour. Mettez le dossier de travail de côté et téléchargez à nouveau les sources.</translation>
    </message>
    <message>
        <source>%1 is not installed. Install Essentials installs it.</source>
        <translation>%1 n&apos;est pas installé. «&#xa0;Installer les composants requis&#xa0;» l&apos;installe.</translation>
    </message>
    <message>
        <source>%1 could not be started.</source>
        <translation>%1 n&apos;a pas pu être lancé.</translation>
    </message>
    <message>
        <source>The workspace folder %1 already exists but holds no download. Move it aside and download again.</source>
        <translation>Le dossier de travail %1 existe déjà mais ne contient aucun téléchargement. Mettez-le de côté et téléchargez à nouveau.</translation>
    </message>
    <message>
        <source>A folder without a download is in the way of git.</source>
        <translation>Un dossier sans téléchargement gêne git.</translation>
    </message>
    <message>
        <source>The disk is full: it has %1 free. Free some space, then try again.</source>
        <translation>Le disque est plein&#xa0;: il ne reste que %1 de libre. Libérez de la place, puis réessayez.</translation>
    </message>
    <message>
        <source>The disk is full. Free some space, then try again.</source>
        <translation>Le disque est plein. Libérez de la place, puis réessayez.</translation>
    </message>
    <message>
        <source>The server could not be reached. Check the internet connection, then try again.</source>
        <translation>Le serveur est injoignable. Vérifiez la connexion à Internet, puis réessayez.</translation>
    </message>
    <message>
        <source>The repository was not found or asks for a login: its address is wrong, or it is private.</source>
        <translation>Le dépôt est introuvable ou demande une connexion&#xa0;: son adresse est fausse, ou il est privé.</translation>
    </message>
    <message>
        <source>CMake could not find %1, which compiling ZELMOR needs. Install Essentials installs it.</source>
        <translation>CMake n&apos;a pas trouvé %1, nécessaire pour compiler ZELMOR. «&#xa0;Installer les composants requis&#xa0;» l&apos;installe.</translation>
    </message>
    <message>
        <source>The compiler stopped at an error in %1, line %2.</source>
        <translation>Le compilateur s&apos;est arrêté sur une erreur dans %1, ligne %2.</translation>
    </message>
    <message>
        <source>%1 was ended by signal %2.</source>
        <translation>%1 a été arrêté par le signal %2.</translation>
    </message>
    <message>
        <source>%1 ended with status %2.</source>
        <translation>%1 s&apos;est terminé avec le code %2.</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Choose Another Folder...</source>
        <translation>Choisir un autre dossier...</translation>
    </message>
    <message>
        <source>Install Essentials</source>
        <translation>Installer les composants requis</translation>
    </message>
    <message>
        <source>Move Aside and Download Again</source>
        <translation>Mettre de côté et télécharger à nouveau</translation>
    </message>
</context>
<context>
    <name>Installer</name>
    <message>
        <source>Install Components</source>
        <translation>Installer les composants</translation>
    </message>
    <message>
        <source>ZELMOR Helper uses these tools to download and compile ZELMOR.</source>
        <translation>ZELMOR Helper utilise ces outils pour télécharger et compiler ZELMOR.</translation>
    </message>
    <message>
        <source>Component</source>
        <translation>Composant</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>État</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Emplacement</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Check Again</source>
        <translation>Vérifier à nouveau</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Components</source>
        <translation>Composants</translation>
    </message>
    <message>
        <source>Install command</source>
        <translation>Commande d’installation</translation>
    </message>
    <message>
        <source>Installation progress</source>
        <translation>Progression de l'installation</translation>
    </message>
    <message>
        <source>Installation status</source>
        <translation>État de l'installation</translation>
    </message>
    <message>
        <source>Installer output</source>
        <translation>Sortie du programme d'installation</translation>
    </message>
    <message>
        <source>Refresh and Try Again</source>
        <translation>Actualiser et réessayer</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installer</translation>
    </message>
</context>
<context>
    <name>InstallerWindow</name>
    <message>
        <source>Checking…</source>
        <translation>Vérification…</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Manquant</translation>
    </message>
    <message>
        <source>Found</source>
        <translation>Trouvé</translation>
    </message>
    <message>
        <source>Found, version %1</source>
        <translation>Trouvé, version %1</translation>
    </message>
    <message>
        <source>not at %1</source>
        <translation>introuvable à l&apos;emplacement %1</translation>
    </message>
    <message>
        <source>Everything ZELMOR Helper needs is installed.</source>
        <translation>Tout ce dont ZELMOR Helper a besoin est installé.</translation>
    </message>
    <message>
        <source>To install what is missing, run this in a terminal, then click Check Again:</source>
        <translation>Pour installer ce qui manque, exécutez ceci dans un terminal, puis cliquez sur «&#xa0;Vérifier à nouveau&#xa0;»&#xa0;:</translation>
    </message>
    <message>
        <source>Or run this in a terminal, then click Check Again:</source>
        <translation>Ou exécutez ceci dans un terminal, puis cliquez sur « Vérifier à nouveau » :</translation>
    </message>
    <message>
        <source>Installing what is missing. The system may ask for your password.</source>
        <translation>Installation de ce qui manque. Le système peut vous demander votre mot de passe.</translation>
    </message>
    <message>
        <source>Click Install to install what is missing.</source>
        <translation>Cliquez sur « Installer » pour installer ce qui manque.</translation>
    </message>
    <message>
        <source>Checks the tools ZELMOR Helper needs and installs the missing ones.</source>
        <translation>Vérifie les outils dont ZELMOR Helper a besoin et installe ceux qui manquent.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Operation</source>
        <translation>Opération</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>Console</translation>
    </message>
    <message>
        <source>Activity</source>
        <translation>Activité</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progression</translation>
    </message>
</context>
<context>
    <name>MessageBar</name>
    <message>
        <source>Problem</source>
        <translation>Problème</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Avertissement</translation>
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
        <translation>%1 s&apos;est terminé avec un problème</translation>
    </message>
</context>
<context>
    <name>PackageInstaller</name>
    <message>
        <source>Installation finished.</source>
        <translation>Installation terminée.</translation>
    </message>
    <message>
        <source>The installation was cancelled. The list shows what is installed now.</source>
        <translation>L'installation a été annulée. La liste montre ce qui est installé maintenant.</translation>
    </message>
</context>
<context>
    <name>PackageKitRules</name>
    <message>
        <source>Waiting for another installer…</source>
        <translation>En attente d'un autre programme d'installation…</translation>
    </message>
    <message>
        <source>Waiting for authentication</source>
        <translation>En attente d'authentification</translation>
    </message>
    <message>
        <source>Starting</source>
        <translation>Démarrage</translation>
    </message>
    <message>
        <source>Looking up packages</source>
        <translation>Recherche des paquets</translation>
    </message>
    <message>
        <source>Refreshing package lists</source>
        <translation>Actualisation des listes de paquets</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>Téléchargement</translation>
    </message>
    <message>
        <source>Installing</source>
        <translation>Installation</translation>
    </message>
    <message>
        <source>Checking signatures</source>
        <translation>Vérification des signatures</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>Finalisation</translation>
    </message>
    <message>
        <source>Cancelling</source>
        <translation>Annulation</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>Terminé</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>En cours</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1 : %2</translation>
    </message>
    <message>
        <source>Not available from this system&apos;s package sources: %1.</source>
        <translation>Non disponible dans les sources de paquets de ce système : %1.</translation>
    </message>
    <message>
        <source>Nothing was installed: the packages are not signed by a source this system trusts. Check the package sources in the system&apos;s software settings, or run the command below in a terminal.</source>
        <translation>Rien n'a été installé : les paquets ne sont pas signés par une source à laquelle ce système fait confiance. Vérifiez les sources de paquets dans les réglages logiciels du système, ou exécutez la commande ci-dessous dans un terminal.</translation>
    </message>
    <message>
        <source>Installing was not authorized: the password prompt was cancelled, the password was wrong, or no password prompt can be shown in this session. Click Install to try again, or run the command below in a terminal.</source>
        <translation>L'installation n'a pas été autorisée : la demande de mot de passe a été annulée, le mot de passe était erroné, ou aucune demande de mot de passe ne peut s'afficher dans cette session. Cliquez sur « Installer » pour réessayer, ou exécutez la commande ci-dessous dans un terminal.</translation>
    </message>
    <message>
        <source>Another installer is using the package manager. Wait until it has finished, then click Install again.</source>
        <translation>Un autre programme d'installation utilise le gestionnaire de paquets. Attendez qu'il ait terminé, puis cliquez à nouveau sur « Installer ».</translation>
    </message>
    <message>
        <source>The packages could not be downloaded. Check the internet connection, then click Install again.</source>
        <translation>Les paquets n'ont pas pu être téléchargés. Vérifiez la connexion à Internet, puis cliquez à nouveau sur « Installer ».</translation>
    </message>
    <message>
        <source>There is not enough free disk space. Free some space, then click Install again.</source>
        <translation>Il n'y a pas assez d'espace disque libre. Libérez de l'espace, puis cliquez à nouveau sur « Installer ».</translation>
    </message>
    <message>
        <source>The package manager could not install the packages. Run the command below in a terminal to see why.</source>
        <translation>Le gestionnaire de paquets n'a pas pu installer les paquets. Exécutez la commande ci-dessous dans un terminal pour voir pourquoi.</translation>
    </message>
    <message>
        <source>The package manager could not install the packages: %1</source>
        <translation>Le gestionnaire de paquets n'a pas pu installer les paquets : %1</translation>
    </message>
    <message>
        <source>PackageKit, which installs software on this system, is not available. Run the command below in a terminal, then click Check Again.</source>
        <translation>PackageKit, qui installe les logiciels sur ce système, n'est pas disponible. Exécutez la commande ci-dessous dans un terminal, puis cliquez sur « Vérifier à nouveau ».</translation>
    </message>
    <message>
        <source>This computer is offline. Connect it to the internet, then click Install again.</source>
        <translation>Cet ordinateur est hors ligne. Connectez-le à Internet, puis cliquez à nouveau sur « Installer ».</translation>
    </message>
    <message>
        <source>The package manager stopped before it finished. The list shows what is installed now; click Install to try again.</source>
        <translation>Le gestionnaire de paquets s'est arrêté avant d'avoir terminé. La liste montre ce qui est installé maintenant ; cliquez sur « Installer » pour réessayer.</translation>
    </message>
    <message>
        <source>This system&apos;s package lists do not know %1. Refresh the package lists and try again?</source>
        <translation>Les listes de paquets de ce système ne connaissent pas %1. Actualiser les listes de paquets et réessayer ?</translation>
    </message>
    <message>
        <source>%1 cannot be found in this system&apos;s package sources, even after refreshing the package lists. Check the package sources in the system&apos;s software settings, or run the command below in a terminal.</source>
        <translation>%1 est introuvable dans les sources de paquets de ce système, même après l'actualisation des listes de paquets. Vérifiez les sources de paquets dans les réglages logiciels du système, ou exécutez la commande ci-dessous dans un terminal.</translation>
    </message>
</context>
<context>
    <name>Preferences</name>
    <message>
        <source>Select workspace folder</source>
        <translation>Choisir le dossier de travail</translation>
    </message>
    <message>
        <source>Select output folder</source>
        <translation>Choisir le dossier de sortie</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Aide</translation>
    </message>
</context>
<context>
    <name>PrefsController</name>
    <message>
        <source>Select</source>
        <translation>Choisir</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Préférences</translation>
    </message>
    <message>
        <source>Paths</source>
        <translation>Chemins</translation>
    </message>
    <message>
        <source>Workspace</source>
        <translation>Dossier de travail</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Dossier de sortie</translation>
    </message>
    <message>
        <source>Use &apos;ZELMOR&apos; and &apos;Output&apos; as default name of workspace and output folder</source>
        <translation>Utiliser «&#xa0;ZELMOR&#xa0;» et «&#xa0;Output&#xa0;» comme noms par défaut des dossiers de travail et de sortie</translation>
    </message>
    <message>
        <source>If you want to use &apos;ZELMOR&apos; as the default name of workspace  and &apos;Output&apos; as the name of output folder, you just need to choose the parent folder of them. Otherwise, you need to choose the complete path.</source>
        <translation>Si vous voulez utiliser «&#xa0;ZELMOR&#xa0;» comme nom par défaut du dossier de travail et «&#xa0;Output&#xa0;» comme nom du dossier de sortie, choisissez simplement le dossier qui les contient. Sinon, choisissez le chemin complet.</translation>
    </message>
    <message>
        <source>Switches</source>
        <translation>Options</translation>
    </message>
    <message>
        <source>Reset All</source>
        <translation>Tout réinitialiser</translation>
    </message>
    <message>
        <source>Reset Warnings</source>
        <translation>Réinitialiser les avertissements</translation>
    </message>
    <message>
        <source>Enable Log</source>
        <translation>Activer le journal</translation>
    </message>
    <message>
        <source>Enable ZELMOR Helper Statusbar App Statup at Login</source>
        <translation>Lancer ZELMOR Helper Statusbar App à l&apos;ouverture de session</translation>
    </message>
    <message>
        <source>Quit statusbar app with ZELMOR Helper</source>
        <translation>Quitter l&apos;application de la barre d&apos;état avec ZELMOR Helper</translation>
    </message>
    <message>
        <source>* Please restart ZELMOR Helper to take effect(s).</source>
        <translation>* Veuillez redémarrer ZELMOR Helper pour appliquer les changements.</translation>
    </message>
    <message>
        <source>ZELMOR Helper must restart to take effects of changes.</source>
        <translation>ZELMOR Helper doit redémarrer pour appliquer les changements.</translation>
    </message>
    <message>
        <source>You can restart the application later through the menu bar item.</source>
        <translation>Vous pourrez redémarrer l&apos;application plus tard depuis la barre des menus.</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Redémarrer</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Plus tard</translation>
    </message>
    <message>
        <source>Notice</source>
        <translation>Remarque</translation>
    </message>
    <message>
        <source>Count down %d secs</source>
        <translation>Compte à rebours&#xa0;: %d s</translation>
    </message>
    <message>
        <source>More Pages</source>
        <translation>Autres pages</translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Displays help on commandline options.</source>
        <translation>Affiche l’aide sur les options de la ligne de commande.</translation>
    </message>
</context>
<context>
    <name>StatusbarCompanion</name>
    <message>
        <source>Open ZELMOR Helper</source>
        <translation>Ouvrir ZELMOR Helper</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>ZELMOR Helper</source>
        <translation>ZELMOR Helper</translation>
    </message>
    <message>
        <source>ZELMOR Helper Statusbar App is running.</source>
        <translation>ZELMOR Helper Statusbar App est en cours d&apos;exécution.</translation>
    </message>
    <message>
        <source>%1 — %2%</source>
        <translation>%1 — %2&#xa0;%</translation>
    </message>
    <message>
        <source>No system tray is available on this desktop; exiting.</source>
        <translation>Aucune zone de notification n&apos;est disponible sur ce bureau&#xa0;; fermeture.</translation>
    </message>
    <message>
        <source>Another instance is already running; exiting.</source>
        <translation>Une autre instance est déjà en cours d&apos;exécution&#xa0;; fermeture.</translation>
    </message>
    <message>
        <source>Shows the operation ZELMOR Helper is running in the system tray.</source>
        <translation>Affiche dans la zone de notification l’opération que ZELMOR Helper est en train d’exécuter.</translation>
    </message>
    <message>
        <source>How it was started; &quot;autoLaunched&quot; (at login) skips the greeting.</source>
        <translation>Mode de démarrage&#xa0;; «&#xa0;autoLaunched&#xa0;» (à l’ouverture de session) saute le message d’accueil.</translation>
    </message>
    <message>
        <source>Run without a tray icon (sessions without a tray).</source>
        <translation>Fonctionner sans icône dans la zone de notification (sessions qui n’en ont pas).</translation>
    </message>
    <message>
        <source>%1 ended with a problem: %2</source>
        <translation>%1 s&apos;est terminé avec un problème&#xa0;: %2</translation>
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
        <translation>À propos de ZELMOR Helper</translation>
    </message>
    <message>
        <source>Re-launch ZELMOR Helper</source>
        <translation>Relancer ZELMOR Helper</translation>
    </message>
    <message>
        <source>Launch ZELMOR Helper Statusbar App</source>
        <translation>Lancer ZELMOR Helper Statusbar App</translation>
    </message>
    <message>
        <source>Install Essentials</source>
        <translation>Installer les composants requis</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>Préférences...</translation>
    </message>
    <message>
        <source>Hide ZELMOR Helper</source>
        <translation>Masquer ZELMOR Helper</translation>
    </message>
    <message>
        <source>Hide Others</source>
        <translation>Masquer les autres</translation>
    </message>
    <message>
        <source>Show All</source>
        <translation>Tout afficher</translation>
    </message>
    <message>
        <source>Quit ZELMOR Helper</source>
        <translation>Quitter ZELMOR Helper</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Édition</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Tout sélectionner</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Find...</source>
        <translation>Rechercher...</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Rechercher le suivant</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Rechercher le précédent</translation>
    </message>
    <message>
        <source>Use Selection for Find</source>
        <translation>Rechercher la sélection</translation>
    </message>
    <message>
        <source>Jump to Selection</source>
        <translation>Aller à la sélection</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenêtre</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Réduire</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Bring All to Front</source>
        <translation>Tout ramener au premier plan</translation>
    </message>
    <message>
        <source>Welcome</source>
        <translation>Bienvenue</translation>
    </message>
    <message>
        <source>You need to install Xcode(larger in file size but recommend) or command line tool(needless for Xcode), homebrew, cmake, sdl.
 
(cmake and sdl can be installed through homebrew)</source>
        <translation>Vous devez installer Xcode (volumineux mais recommandé) ou les Command Line Tools (inutiles avec Xcode), Homebrew, cmake et SDL.
 
(cmake et SDL peuvent être installés avec Homebrew)</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Don&apos;t know how to install? Click here to try wizard.</source>
        <translation>Vous ne savez pas comment les installer&#xa0;? Cliquez ici pour essayer l&apos;assistant.</translation>
    </message>
    <message>
        <source>Initialization</source>
        <translation>Initialisation</translation>
    </message>
    <message>
        <source>Please set where to store source codes of ZELMOR and where to output compiled ZELMOR.</source>
        <translation>Indiquez où enregistrer le code source de ZELMOR et où placer ZELMOR une fois compilé.</translation>
    </message>
    <message>
        <source>Workspace</source>
        <translation>Dossier de travail</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Dossier de sortie</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Choisir</translation>
    </message>
</context>
<context>
    <name>firstLaunch</name>
    <message>
        <source>Try Wizard</source>
        <translation>Essayer l&apos;assistant</translation>
    </message>
</context>
<context>
    <name>wizard</name>
    <message>
        <source>Help</source>
        <translation>Aide</translation>
    </message>
    <message>
        <source>The workspace keeps the source codes of ZELMOR; it is also where ZELMOR is compiled. The output folder receives the compiled ZELMOR and its assets. A folder named ZELMOR is created in the folder you select, and the output goes into its Output folder.</source>
        <translation>Le dossier de travail contient le code source de ZELMOR&#xa0;; c&apos;est aussi là que ZELMOR est compilé. Le dossier de sortie reçoit ZELMOR compilé et ses ressources. Un dossier nommé ZELMOR est créé dans le dossier que vous choisissez, et la sortie va dans son dossier Output.</translation>
    </message>
    <message>
        <source>Select workspace folder</source>
        <translation>Choisir le dossier de travail</translation>
    </message>
    <message>
        <source>Select output folder</source>
        <translation>Choisir le dossier de sortie</translation>
    </message>
</context>
</TS>
