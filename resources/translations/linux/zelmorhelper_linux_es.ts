<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>ZELMORHelperAppDelegate</name>
    <message>
        <source>You need to install Xcode(larger in file size but recommend) or command line tool(needless for Xcode), homebrew, cmake, sdl.
 
(cmake and sdl can be installed through homebrew)</source>
        <translation>Necesita instalar git, cmake, make, un compilador de C/C++ y los archivos de desarrollo de SDL 2.
 
(«Instalar los componentes necesarios» en el menú ZELMOR Helper los instala)</translation>
    </message>
</context>
</TS>
