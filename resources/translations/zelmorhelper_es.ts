<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>About</name>
    <message>
        <source>About ZELMOR Helper</source>
        <translation>Acerca de ZELMOR Helper</translation>
    </message>
    <message>
        <source>Fetches, updates and compiles the source codes of ZELMOR on your own machine.</source>
        <translation>Descarga, actualiza y compila el código fuente de ZELMOR en su propio equipo.</translation>
    </message>
    <message>
        <source>Made by the ZELMOR Helper developers</source>
        <translation>Creado por los desarrolladores de ZELMOR Helper</translation>
    </message>
    <message>
        <source>Thank you for using ZELMOR Helper!</source>
        <translation>¡Gracias por usar ZELMOR Helper!</translation>
    </message>
</context>
<context>
    <name>AboutController</name>
    <message>
        <source>Version %1</source>
        <translation>Versión %1</translation>
    </message>
</context>
<context>
    <name>AlertSheet</name>
    <message>
        <source>Warning</source>
        <translation>Advertencia</translation>
    </message>
</context>
<context>
    <name>AppCommandLine</name>
    <message>
        <source>Fetches, updates and compiles the sources of the ZELMOR emulator.</source>
        <translation>Descarga, actualiza y compila el código fuente del emulador ZELMOR.</translation>
    </message>
</context>
<context>
    <name>AppController</name>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Get a complete copy of source codes of ZELLMOR from GitHub</source>
        <translation>Obtener una copia completa del código fuente de ZELMOR desde GitHub</translation>
    </message>
    <message>
        <source>Get module initialized</source>
        <translation>Inicializar los módulos</translation>
    </message>
    <message>
        <source>Update source codes and submodules</source>
        <translation>Actualizar el código fuente y los submódulos</translation>
    </message>
    <message>
        <source>Compile ZELMOR</source>
        <translation>Compilar ZELMOR</translation>
    </message>
    <message>
        <source>Perform</source>
        <translation>Ejecutar</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Done.</source>
        <translation>Hecho.</translation>
    </message>
    <message>
        <source>Task terminated by user.</source>
        <translation>Tarea interrumpida por el usuario.</translation>
    </message>
    <message>
        <source>All done.</source>
        <translation>Todo listo.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Ready to install modules</source>
        <translation>Listo para instalar los módulos</translation>
    </message>
    <message>
        <source>Main source codes are ready. Do you want to get modules initialized right now?</source>
        <translation>El código fuente principal está listo. ¿Desea inicializar los módulos ahora?</translation>
    </message>
    <message>
        <source>Count down %d secs</source>
        <translation>Cuenta atrás: %d s</translation>
    </message>
    <message>
        <source>Checking files</source>
        <translation>Comprobando los archivos</translation>
    </message>
    <message>
        <source>&apos;asssets&apos; not found in %@/Android.</source>
        <translation>No se encontró «assets» en %@/Android.</translation>
    </message>
    <message>
        <source>Please re-download a complete copy of source codes.</source>
        <translation>Vuelva a descargar una copia completa del código fuente.</translation>
    </message>
    <message>
        <source>.git not found in %@.</source>
        <translation>No se encontró .git en %@.</translation>
    </message>
    <message>
        <source>Compiling</source>
        <translation>Compilando</translation>
    </message>
    <message>
        <source>Build in</source>
        <translation>Carpeta de compilación</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Carpeta de salida</translation>
    </message>
    <message>
        <source>Moving files to output folder</source>
        <translation>Moviendo los archivos a la carpeta de salida</translation>
    </message>
    <message>
        <source>%@ already exists. It may be source codes.</source>
        <translation>%@ ya existe. Puede que contenga código fuente.</translation>
    </message>
    <message>
        <source>Folder will add current date as extension if you choose to keep it.</source>
        <translation>Si decide conservarla, se añadirá la fecha actual al nombre de la carpeta.</translation>
    </message>
    <message>
        <source>How to deal with it?</source>
        <translation>¿Qué desea hacer?</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Conservar</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Reemplazar</translation>
    </message>
    <message>
        <source>Downloading source codes</source>
        <translation>Descargando el código fuente</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Ubicación</translation>
    </message>
    <message>
        <source>Registering modules</source>
        <translation>Registrando los módulos</translation>
    </message>
    <message>
        <source>Checking modules</source>
        <translation>Comprobando los módulos</translation>
    </message>
    <message>
        <source>Failure.</source>
        <translation>Fallo.</translation>
    </message>
    <message>
        <source> or .git in it not found!</source>
        <translation> o su carpeta .git no encontrada.</translation>
    </message>
    <message>
        <source> gives no module name!</source>
        <translation> no indica ningún nombre de módulo.</translation>
    </message>
    <message>
        <source> It is skipped.</source>
        <translation> Se omite.</translation>
    </message>
    <message>
        <source>Module Exists</source>
        <translation>El módulo ya existe</translation>
    </message>
    <message>
        <source>Found submodule</source>
        <translation>Se encontró el submódulo</translation>
    </message>
    <message>
        <source>Skip</source>
        <translation>Omitir</translation>
    </message>
    <message>
        <source>Getting module</source>
        <translation>Obteniendo el módulo</translation>
    </message>
    <message>
        <source>Skip module</source>
        <translation>Omitiendo el módulo</translation>
    </message>
    <message>
        <source>Main source codes are ready. Do you want to get essential modules initialized right now?</source>
        <translation>El código fuente principal está listo. ¿Desea inicializar ahora los módulos esenciales?</translation>
    </message>
    <message>
        <source>Ready to start initializing modules. Please wait...</source>
        <translation>Listo para inicializar los módulos. Espere, por favor...</translation>
    </message>
    <message>
        <source>Please re-initialize it.</source>
        <translation>Vuelva a inicializarlo.</translation>
    </message>
    <message>
        <source>Updating source codes</source>
        <translation>Actualizando el código fuente</translation>
    </message>
    <message>
        <source>Checking for update of ZELMOR master</source>
        <translation>Buscando actualizaciones de ZELMOR (master)</translation>
    </message>
    <message>
        <source>Checking for update of submodules</source>
        <translation>Buscando actualizaciones de los submódulos</translation>
    </message>
    <message>
        <source> holds more than submodule entries!</source>
        <translation> contiene más que entradas de submódulos.</translation>
    </message>
    <message>
        <source> The modules are not registered in .git/config.</source>
        <translation> Los módulos no se registran en .git/config.</translation>
    </message>
    <message>
        <source> is not a plain module URL!</source>
        <translation> no es una URL de módulo simple.</translation>
    </message>
    <message>
        <source> is your home folder or the workspace, or holds one of them! Compiling empties the output folder: please choose another one.</source>
        <translation> es su carpeta personal o la carpeta de trabajo, o contiene una de ellas. Al compilar se vacía la carpeta de salida: elija otra.</translation>
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
        <translation>Compilador de C</translation>
    </message>
    <message>
        <source>C++ compiler</source>
        <translation>Compilador de C++</translation>
    </message>
    <message>
        <source>SDL 2 development files</source>
        <translation>Archivos de desarrollo de SDL 2</translation>
    </message>
</context>
<context>
    <name>ConsoleFindBar</name>
    <message>
        <source>Find</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Buscar anterior</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Buscar siguiente</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Listo</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>No encontrado</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Borrar</translation>
    </message>
</context>
<context>
    <name>HomebrewInstaller</name>
    <message>
        <source>Installing with Homebrew</source>
        <translation>Instalando con Homebrew</translation>
    </message>
    <message>
        <source>The installer could not be started. Run the command below in a terminal.</source>
        <translation>No se pudo iniciar el instalador. Ejecute el comando de abajo en un terminal.</translation>
    </message>
    <message>
        <source>Apple&apos;s installer for the command line tools has opened. When it has finished, click Install again for the rest.</source>
        <translation>Se ha abierto el instalador de Apple de las herramientas de línea de comandos. Cuando termine, haga clic de nuevo en «Instalar» para el resto.</translation>
    </message>
    <message>
        <source>Homebrew could not install the packages; its output above says why.</source>
        <translation>Homebrew no pudo instalar los paquetes; su salida de arriba explica por qué.</translation>
    </message>
</context>
<context>
    <name>FailureDiagnosis</name>
    <message>
        <source>You may not write to the output folder %1. Choose another folder.</source>
        <translation>No puede escribir en la carpeta de salida %1. Elija otra carpeta.</translation>
    </message>
    <message>
        <source>You may not write to the workspace folder %1. Choose another folder.</source>
        <translation>No puede escribir en la carpeta de trabajo %1. Elija otra carpeta.</translation>
    </message>
    <message>
        <source>Changes made in the workspace stand in the way of the update. Keep the workspace aside and download the sources again.</source>
        <translation>Hay cambios en la carpeta de trabajo que impiden la actualización. Aparte la carpeta de trabajo y vuelva a descargar las fuentes.</translation>
    </message>
    <message>
        <source>Changes made in the workspace to %1 stand in the way of the update. Keep the workspace aside and download the sources again.</source>
        <translation>Hay cambios en %1 en la carpeta de trabajo que impiden la actualización. Aparte la carpeta de trabajo y vuelva a descargar las fuentes.</translation>
    </message>
    <message>
        <source>%1 is not installed. Install Essentials installs it.</source>
        <translation>%1 no está instalado. «Instalar los componentes necesarios» lo instala.</translation>
    </message>
    <message>
        <source>%1 could not be started.</source>
        <translation>No se pudo iniciar %1.</translation>
    </message>
    <message>
        <source>The workspace folder %1 already exists but holds no download. Move it aside and download again.</source>
        <translation>La carpeta de trabajo %1 ya existe pero no contiene ninguna descarga. Apártela y vuelva a descargar.</translation>
    </message>
    <message>
        <source>A folder without a download is in the way of git.</source>
        <translation>Una carpeta sin descarga impide el trabajo de git.</translation>
    </message>
    <message>
        <source>The disk is full: it has %1 free. Free some space, then try again.</source>
        <translation>El disco está lleno: solo quedan %1 libres. Libere espacio y vuelva a intentarlo.</translation>
    </message>
    <message>
        <source>The disk is full. Free some space, then try again.</source>
        <translation>El disco está lleno. Libere espacio y vuelva a intentarlo.</translation>
    </message>
    <message>
        <source>The server could not be reached. Check the internet connection, then try again.</source>
        <translation>No se pudo contactar con el servidor. Compruebe la conexión a Internet y vuelva a intentarlo.</translation>
    </message>
    <message>
        <source>The repository was not found or asks for a login: its address is wrong, or it is private.</source>
        <translation>No se encontró el repositorio o pide iniciar sesión: su dirección es incorrecta o es privado.</translation>
    </message>
    <message>
        <source>CMake could not find %1, which compiling ZELMOR needs. Install Essentials installs it.</source>
        <translation>CMake no encontró %1, necesario para compilar ZELMOR. «Instalar los componentes necesarios» lo instala.</translation>
    </message>
    <message>
        <source>The compiler stopped at an error in %1, line %2.</source>
        <translation>El compilador se detuvo en un error en %1, línea %2.</translation>
    </message>
    <message>
        <source>%1 was ended by signal %2.</source>
        <translation>%1 terminó por la señal %2.</translation>
    </message>
    <message>
        <source>%1 ended with status %2.</source>
        <translation>%1 terminó con el estado %2.</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>Choose Another Folder...</source>
        <translation>Elegir otra carpeta...</translation>
    </message>
    <message>
        <source>Install Essentials</source>
        <translation>Instalar los componentes necesarios</translation>
    </message>
    <message>
        <source>Move Aside and Download Again</source>
        <translation>Apartar y volver a descargar</translation>
    </message>
</context>
<context>
    <name>Installer</name>
    <message>
        <source>Install Components</source>
        <translation>Instalar componentes</translation>
    </message>
    <message>
        <source>ZELMOR Helper uses these tools to download and compile ZELMOR.</source>
        <translation>ZELMOR Helper usa estas herramientas para descargar y compilar ZELMOR.</translation>
    </message>
    <message>
        <source>Component</source>
        <translation>Componente</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Estado</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Ubicación</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>Check Again</source>
        <translation>Volver a comprobar</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Components</source>
        <translation>Componentes</translation>
    </message>
    <message>
        <source>Install command</source>
        <translation>Comando de instalación</translation>
    </message>
    <message>
        <source>Installation progress</source>
        <translation>Progreso de la instalación</translation>
    </message>
    <message>
        <source>Installation status</source>
        <translation>Estado de la instalación</translation>
    </message>
    <message>
        <source>Installer output</source>
        <translation>Salida del instalador</translation>
    </message>
    <message>
        <source>Refresh and Try Again</source>
        <translation>Actualizar y volver a intentar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Instalar</translation>
    </message>
</context>
<context>
    <name>InstallerWindow</name>
    <message>
        <source>Checking…</source>
        <translation>Comprobando…</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Falta</translation>
    </message>
    <message>
        <source>Found</source>
        <translation>Encontrado</translation>
    </message>
    <message>
        <source>Found, version %1</source>
        <translation>Encontrado, versión %1</translation>
    </message>
    <message>
        <source>not at %1</source>
        <translation>no está en %1</translation>
    </message>
    <message>
        <source>Everything ZELMOR Helper needs is installed.</source>
        <translation>Todo lo que ZELMOR Helper necesita está instalado.</translation>
    </message>
    <message>
        <source>To install what is missing, run this in a terminal, then click Check Again:</source>
        <translation>Para instalar lo que falta, ejecute esto en un terminal y después haga clic en «Volver a comprobar»:</translation>
    </message>
    <message>
        <source>Or run this in a terminal, then click Check Again:</source>
        <translation>O ejecute esto en un terminal y después haga clic en «Volver a comprobar»:</translation>
    </message>
    <message>
        <source>Installing what is missing. The system may ask for your password.</source>
        <translation>Instalando lo que falta. El sistema puede pedirle su contraseña.</translation>
    </message>
    <message>
        <source>Click Install to install what is missing.</source>
        <translation>Haga clic en «Instalar» para instalar lo que falta.</translation>
    </message>
    <message>
        <source>Checks the tools ZELMOR Helper needs and installs the missing ones.</source>
        <translation>Comprueba las herramientas que necesita ZELMOR Helper e instala las que faltan.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Operation</source>
        <translation>Operación</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>Consola</translation>
    </message>
    <message>
        <source>Activity</source>
        <translation>Actividad</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progreso</translation>
    </message>
</context>
<context>
    <name>MessageBar</name>
    <message>
        <source>Problem</source>
        <translation>Problema</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Advertencia</translation>
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
        <translation>%1 terminó con un problema</translation>
    </message>
</context>
<context>
    <name>PackageInstaller</name>
    <message>
        <source>Installation finished.</source>
        <translation>Instalación terminada.</translation>
    </message>
    <message>
        <source>The installation was cancelled. The list shows what is installed now.</source>
        <translation>Se canceló la instalación. La lista muestra lo que está instalado ahora.</translation>
    </message>
</context>
<context>
    <name>PackageKitRules</name>
    <message>
        <source>Waiting for another installer…</source>
        <translation>Esperando a otro instalador…</translation>
    </message>
    <message>
        <source>Waiting for authentication</source>
        <translation>Esperando la autenticación</translation>
    </message>
    <message>
        <source>Starting</source>
        <translation>Iniciando</translation>
    </message>
    <message>
        <source>Looking up packages</source>
        <translation>Buscando los paquetes</translation>
    </message>
    <message>
        <source>Refreshing package lists</source>
        <translation>Actualizando las listas de paquetes</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>Descargando</translation>
    </message>
    <message>
        <source>Installing</source>
        <translation>Instalando</translation>
    </message>
    <message>
        <source>Checking signatures</source>
        <translation>Comprobando las firmas</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>Terminando</translation>
    </message>
    <message>
        <source>Cancelling</source>
        <translation>Cancelando</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>Terminado</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>Trabajando</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Not available from this system&apos;s package sources: %1.</source>
        <translation>No disponible en las fuentes de paquetes de este sistema: %1.</translation>
    </message>
    <message>
        <source>Nothing was installed: the packages are not signed by a source this system trusts. Check the package sources in the system&apos;s software settings, or run the command below in a terminal.</source>
        <translation>No se instaló nada: los paquetes no están firmados por una fuente en la que confíe este sistema. Compruebe las fuentes de paquetes en la configuración de software del sistema o ejecute el comando de abajo en un terminal.</translation>
    </message>
    <message>
        <source>Installing was not authorized: the password prompt was cancelled, the password was wrong, or no password prompt can be shown in this session. Click Install to try again, or run the command below in a terminal.</source>
        <translation>La instalación no se autorizó: se canceló la petición de contraseña, la contraseña era incorrecta o en esta sesión no se puede mostrar ninguna petición de contraseña. Haga clic en «Instalar» para volver a intentarlo o ejecute el comando de abajo en un terminal.</translation>
    </message>
    <message>
        <source>Another installer is using the package manager. Wait until it has finished, then click Install again.</source>
        <translation>Otro instalador está usando el gestor de paquetes. Espere a que termine y después haga clic de nuevo en «Instalar».</translation>
    </message>
    <message>
        <source>The packages could not be downloaded. Check the internet connection, then click Install again.</source>
        <translation>No se pudieron descargar los paquetes. Compruebe la conexión a internet y después haga clic de nuevo en «Instalar».</translation>
    </message>
    <message>
        <source>There is not enough free disk space. Free some space, then click Install again.</source>
        <translation>No hay suficiente espacio libre en el disco. Libere espacio y después haga clic de nuevo en «Instalar».</translation>
    </message>
    <message>
        <source>The package manager could not install the packages. Run the command below in a terminal to see why.</source>
        <translation>El gestor de paquetes no pudo instalar los paquetes. Ejecute el comando de abajo en un terminal para ver por qué.</translation>
    </message>
    <message>
        <source>The package manager could not install the packages: %1</source>
        <translation>El gestor de paquetes no pudo instalar los paquetes: %1</translation>
    </message>
    <message>
        <source>PackageKit, which installs software on this system, is not available. Run the command below in a terminal, then click Check Again.</source>
        <translation>PackageKit, que instala el software en este sistema, no está disponible. Ejecute el comando de abajo en un terminal y después haga clic en «Volver a comprobar».</translation>
    </message>
    <message>
        <source>This computer is offline. Connect it to the internet, then click Install again.</source>
        <translation>Este equipo no tiene conexión. Conéctelo a internet y después haga clic de nuevo en «Instalar».</translation>
    </message>
    <message>
        <source>The package manager stopped before it finished. The list shows what is installed now; click Install to try again.</source>
        <translation>El gestor de paquetes se detuvo antes de terminar. La lista muestra lo que está instalado ahora; haga clic en «Instalar» para volver a intentarlo.</translation>
    </message>
    <message>
        <source>This system&apos;s package lists do not know %1. Refresh the package lists and try again?</source>
        <translation>Las listas de paquetes de este sistema no conocen %1. ¿Actualizar las listas de paquetes y volver a intentarlo?</translation>
    </message>
    <message>
        <source>%1 cannot be found in this system&apos;s package sources, even after refreshing the package lists. Check the package sources in the system&apos;s software settings, or run the command below in a terminal.</source>
        <translation>%1 no se encuentra en las fuentes de paquetes de este sistema, ni siquiera después de actualizar las listas de paquetes. Compruebe las fuentes de paquetes en la configuración de software del sistema o ejecute el comando de abajo en un terminal.</translation>
    </message>
</context>
<context>
    <name>Preferences</name>
    <message>
        <source>Select workspace folder</source>
        <translation>Seleccionar la carpeta de trabajo</translation>
    </message>
    <message>
        <source>Select output folder</source>
        <translation>Seleccionar la carpeta de salida</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Ayuda</translation>
    </message>
</context>
<context>
    <name>PrefsController</name>
    <message>
        <source>Select</source>
        <translation>Seleccionar</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Preferencias</translation>
    </message>
    <message>
        <source>Paths</source>
        <translation>Rutas</translation>
    </message>
    <message>
        <source>Workspace</source>
        <translation>Carpeta de trabajo</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Carpeta de salida</translation>
    </message>
    <message>
        <source>Use &apos;ZELMOR&apos; and &apos;Output&apos; as default name of workspace and output folder</source>
        <translation>Usar «ZELMOR» y «Output» como nombres predeterminados de las carpetas de trabajo y de salida</translation>
    </message>
    <message>
        <source>If you want to use &apos;ZELMOR&apos; as the default name of workspace  and &apos;Output&apos; as the name of output folder, you just need to choose the parent folder of them. Otherwise, you need to choose the complete path.</source>
        <translation>Si desea usar «ZELMOR» como nombre predeterminado de la carpeta de trabajo y «Output» como nombre de la carpeta de salida, basta con elegir la carpeta que las contiene. De lo contrario, elija la ruta completa.</translation>
    </message>
    <message>
        <source>Switches</source>
        <translation>Opciones</translation>
    </message>
    <message>
        <source>Reset All</source>
        <translation>Restablecer todo</translation>
    </message>
    <message>
        <source>Reset Warnings</source>
        <translation>Restablecer los avisos</translation>
    </message>
    <message>
        <source>Enable Log</source>
        <translation>Activar el registro</translation>
    </message>
    <message>
        <source>Enable ZELMOR Helper Statusbar App Statup at Login</source>
        <translation>Iniciar ZELMOR Helper Statusbar App al iniciar sesión</translation>
    </message>
    <message>
        <source>Quit statusbar app with ZELMOR Helper</source>
        <translation>Cerrar la aplicación de la barra de estado junto con ZELMOR Helper</translation>
    </message>
    <message>
        <source>* Please restart ZELMOR Helper to take effect(s).</source>
        <translation>* Reinicie ZELMOR Helper para aplicar los cambios.</translation>
    </message>
    <message>
        <source>ZELMOR Helper must restart to take effects of changes.</source>
        <translation>ZELMOR Helper debe reiniciarse para aplicar los cambios.</translation>
    </message>
    <message>
        <source>You can restart the application later through the menu bar item.</source>
        <translation>Puede reiniciar la aplicación más tarde desde la barra de menús.</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Reiniciar</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Más tarde</translation>
    </message>
    <message>
        <source>Notice</source>
        <translation>Aviso</translation>
    </message>
    <message>
        <source>Count down %d secs</source>
        <translation>Cuenta atrás: %d s</translation>
    </message>
    <message>
        <source>More Pages</source>
        <translation>Más páginas</translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Displays help on commandline options.</source>
        <translation>Muestra la ayuda sobre las opciones de la línea de órdenes.</translation>
    </message>
</context>
<context>
    <name>StatusbarCompanion</name>
    <message>
        <source>Open ZELMOR Helper</source>
        <translation>Abrir ZELMOR Helper</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>ZELMOR Helper</source>
        <translation>ZELMOR Helper</translation>
    </message>
    <message>
        <source>ZELMOR Helper Statusbar App is running.</source>
        <translation>ZELMOR Helper Statusbar App se está ejecutando.</translation>
    </message>
    <message>
        <source>%1 — %2%</source>
        <translation>%1 — %2&#xa0;%</translation>
    </message>
    <message>
        <source>No system tray is available on this desktop; exiting.</source>
        <translation>Este escritorio no tiene bandeja del sistema; saliendo.</translation>
    </message>
    <message>
        <source>Another instance is already running; exiting.</source>
        <translation>Ya se está ejecutando otra instancia; saliendo.</translation>
    </message>
    <message>
        <source>Shows the operation ZELMOR Helper is running in the system tray.</source>
        <translation>Muestra en la bandeja del sistema la operación que está ejecutando ZELMOR Helper.</translation>
    </message>
    <message>
        <source>How it was started; &quot;autoLaunched&quot; (at login) skips the greeting.</source>
        <translation>Cómo se inició; «autoLaunched» (al iniciar sesión) omite el saludo.</translation>
    </message>
    <message>
        <source>Run without a tray icon (sessions without a tray).</source>
        <translation>Funcionar sin icono en la bandeja (sesiones sin bandeja del sistema).</translation>
    </message>
    <message>
        <source>%1 ended with a problem: %2</source>
        <translation>%1 terminó con un problema: %2</translation>
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
        <translation>Acerca de ZELMOR Helper</translation>
    </message>
    <message>
        <source>Re-launch ZELMOR Helper</source>
        <translation>Reiniciar ZELMOR Helper</translation>
    </message>
    <message>
        <source>Launch ZELMOR Helper Statusbar App</source>
        <translation>Abrir ZELMOR Helper Statusbar App</translation>
    </message>
    <message>
        <source>Install Essentials</source>
        <translation>Instalar los componentes necesarios</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>Preferencias...</translation>
    </message>
    <message>
        <source>Hide ZELMOR Helper</source>
        <translation>Ocultar ZELMOR Helper</translation>
    </message>
    <message>
        <source>Hide Others</source>
        <translation>Ocultar otros</translation>
    </message>
    <message>
        <source>Show All</source>
        <translation>Mostrar todo</translation>
    </message>
    <message>
        <source>Quit ZELMOR Helper</source>
        <translation>Salir de ZELMOR Helper</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Edición</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Seleccionar todo</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Find...</source>
        <translation>Buscar...</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Buscar siguiente</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Buscar anterior</translation>
    </message>
    <message>
        <source>Use Selection for Find</source>
        <translation>Buscar la selección</translation>
    </message>
    <message>
        <source>Jump to Selection</source>
        <translation>Ir a la selección</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Ventana</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimizar</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Bring All to Front</source>
        <translation>Traer todo al frente</translation>
    </message>
    <message>
        <source>Welcome</source>
        <translation>Bienvenido</translation>
    </message>
    <message>
        <source>You need to install Xcode(larger in file size but recommend) or command line tool(needless for Xcode), homebrew, cmake, sdl.
 
(cmake and sdl can be installed through homebrew)</source>
        <translation>Debe instalar Xcode (ocupa más, pero es lo recomendado) o las Command Line Tools (innecesarias con Xcode), Homebrew, cmake y SDL.
 
(cmake y SDL se pueden instalar con Homebrew)</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Don&apos;t know how to install? Click here to try wizard.</source>
        <translation>¿No sabe cómo instalarlos? Haga clic aquí para probar el asistente.</translation>
    </message>
    <message>
        <source>Initialization</source>
        <translation>Inicialización</translation>
    </message>
    <message>
        <source>Please set where to store source codes of ZELMOR and where to output compiled ZELMOR.</source>
        <translation>Indique dónde guardar el código fuente de ZELMOR y dónde colocar ZELMOR una vez compilado.</translation>
    </message>
    <message>
        <source>Workspace</source>
        <translation>Carpeta de trabajo</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Carpeta de salida</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Seleccionar</translation>
    </message>
</context>
<context>
    <name>firstLaunch</name>
    <message>
        <source>Try Wizard</source>
        <translation>Probar el asistente</translation>
    </message>
</context>
<context>
    <name>wizard</name>
    <message>
        <source>Help</source>
        <translation>Ayuda</translation>
    </message>
    <message>
        <source>The workspace keeps the source codes of ZELMOR; it is also where ZELMOR is compiled. The output folder receives the compiled ZELMOR and its assets. A folder named ZELMOR is created in the folder you select, and the output goes into its Output folder.</source>
        <translation>La carpeta de trabajo guarda el código fuente de ZELMOR; también es donde se compila ZELMOR. La carpeta de salida recibe ZELMOR compilado y sus recursos. En la carpeta que elija se crea una carpeta llamada ZELMOR, y la salida va a su carpeta Output.</translation>
    </message>
    <message>
        <source>Select workspace folder</source>
        <translation>Seleccionar la carpeta de trabajo</translation>
    </message>
    <message>
        <source>Select output folder</source>
        <translation>Seleccionar la carpeta de salida</translation>
    </message>
</context>
</TS>
