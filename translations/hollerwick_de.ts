<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>ExampleBrowserDialog</name>
    <message>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <source>Examples browser</source>
        <translation>Beispiele durchsuchen</translation>
    </message>
    <message>
        <source>Search examples</source>
        <translation>Beispiele suchen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Filters</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Examples</source>
        <translation>Beispiele</translation>
    </message>
    <message>
        <source>Configure example</source>
        <translation>Beispiel einrichten</translation>
    </message>
    <message>
        <source>EXAMPLE NAME</source>
        <translation>NAME DES BEISPIELS</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Speicherort</translation>
    </message>
    <message>
        <source>Choose location</source>
        <translation>Speicherort wählen</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <source>Warning: the location holds files already</source>
        <translation>Warnung: Am Speicherort liegen bereits Dateien</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;[ ! ]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;[ ! ]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Create</source>
        <translation>Anlegen</translation>
    </message>
</context>
<context>
    <name>ExamplesBundleEditor</name>
    <message>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <source>Examples List</source>
        <translation>Beispiele</translation>
    </message>
    <message>
        <source>Examples</source>
        <translation>Beispiele</translation>
    </message>
    <message>
        <source>Examples Properties</source>
        <translation>Sammlung</translation>
    </message>
    <message>
        <source>Examples properties</source>
        <translation>Eigenschaften der Sammlung</translation>
    </message>
    <message>
        <source>Example Properties</source>
        <translation>Eigenschaften</translation>
    </message>
    <message>
        <source>Example properties</source>
        <translation>Eigenschaften des Beispiels</translation>
    </message>
    <message>
        <source>Example Content</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Example content</source>
        <translation>Inhalt des Beispiels</translation>
    </message>
    <message>
        <source>Build Requirements</source>
        <translation>Voraussetzungen</translation>
    </message>
    <message>
        <source>Build requirements</source>
        <translation>Voraussetzungen</translation>
    </message>
</context>
<context>
    <name>HostShell::CallCompletion</name>
    <message>
        <source>Functions that begin so</source>
        <translation>Funktionen, die so beginnen</translation>
    </message>
</context>
<context>
    <name>HostShell::ConsoleHistory</name>
    <message>
        <source>Cannot write the history %1: %2</source>
        <translation>Der Verlauf %1 kann nicht geschrieben werden: %2</translation>
    </message>
</context>
<context>
    <name>HostShell::ConsoleWindow</name>
    <message>
        <source>Write a script, or drop a file here. Tab completes the name of a function, F5 runs the script.</source>
        <translation>Schreiben Sie ein Skript, oder legen Sie hier eine Datei ab. Tab ergänzt den Namen einer Funktion, F5 führt das Skript aus.</translation>
    </message>
    <message>
        <source>&amp;Output</source>
        <translation>Aus&amp;gabe</translation>
    </message>
    <message>
        <source>&amp;Log</source>
        <translation>&amp;Protokoll</translation>
    </message>
    <message>
        <source>&amp;Script</source>
        <translation>&amp;Skript</translation>
    </message>
    <message>
        <source>L&amp;ine</source>
        <translation>&amp;Zeile</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>One line to run at once; Up and Down bring back earlier ones</source>
        <translation>Eine Zeile, die sofort läuft; Auf und Ab holen frühere zurück</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;New script</source>
        <translation>&amp;Neues Skript</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>Ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save &amp;as…</source>
        <translation>Speichern &amp;unter …</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>&amp;Complete</source>
        <translation>Er&amp;gänzen</translation>
    </message>
    <message>
        <source>&amp;Indent</source>
        <translation>&amp;Einrücken</translation>
    </message>
    <message>
        <source>Unin&amp;dent</source>
        <translation>&amp;Ausrücken</translation>
    </message>
    <message>
        <source>&amp;Run</source>
        <translation>&amp;Ausführen</translation>
    </message>
    <message>
        <source>&amp;Run script</source>
        <translation>Skript &amp;ausführen</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>A&amp;nhalten</translation>
    </message>
    <message>
        <source>&amp;Clear output and log</source>
        <translation>Ausgabe und Protokoll &amp;leeren</translation>
    </message>
    <message>
        <source>&amp;History</source>
        <translation>&amp;Verlauf</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>A&amp;nsicht</translation>
    </message>
    <message>
        <source>&amp;Next pane</source>
        <translation>&amp;Nächster Bereich</translation>
    </message>
    <message>
        <source>&amp;Previous pane</source>
        <translation>&amp;Voriger Bereich</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Function at the cursor</source>
        <translation>&amp;Funktion an der Schreibmarke</translation>
    </message>
    <message>
        <source>&amp;About Hollerwick</source>
        <translation>&amp;Über Hollerwick</translation>
    </message>
    <message>
        <source>About Hollerwick</source>
        <translation>Über Hollerwick</translation>
    </message>
    <message>
        <source>Hollerwick %1

Bundles for the designs of a circuit simulator: examples, barrels of examples, schematics and scripts.</source>
        <translation>Hollerwick %1

Bündel für die Entwürfe eines Schaltungssimulators: Beispiele, Sammlungen von Beispielen, Schaltpläne und Skripte.</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message numerus="yes">
        <source>%1… (%n more characters)</source>
        <translation>
            <numerusform>%1 … (noch %n Zeichen)</numerusform>
            <numerusform>%1 … (noch %n Zeichen)</numerusform>
        </translation>
    </message>
    <message>
        <source>Scripts (*.js);;All files (*)</source>
        <translation>Skripte (*.js);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Ready.</source>
        <translation>Bereit.</translation>
    </message>
    <message>
        <source>Stopped.</source>
        <translation>Angehalten.</translation>
    </message>
    <message>
        <source>Ended by exit(%1).</source>
        <translation>Durch exit(%1) beendet.</translation>
    </message>
    <message>
        <source>Done.</source>
        <translation>Fertig.</translation>
    </message>
    <message>
        <source>Stopping…</source>
        <translation>Wird angehalten …</translation>
    </message>
    <message>
        <source>Running…</source>
        <translation>Läuft …</translation>
    </message>
    <message>
        <source>Open window</source>
        <translation>Fenster öffnen</translation>
    </message>
    <message>
        <source>Open file</source>
        <translation>Datei öffnen</translation>
    </message>
    <message>
        <source>Open script</source>
        <translation>Skript öffnen</translation>
    </message>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>%1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Scripts and bundles (*.js *.kvbdl.zip *.kvexs *.kvexs.zip *.kvsbd.zip *.zip);;All files (*)</source>
        <translation>Skripte und Bündel (*.js *.kvbdl.zip *.kvexs *.kvexs.zip *.kvsbd.zip *.zip);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Save script</source>
        <translation>Skript speichern</translation>
    </message>
    <message>
        <source>Cannot write %1: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Unsaved script</source>
        <translation>Skript nicht gespeichert</translation>
    </message>
    <message>
        <source>Save the changes of the script?</source>
        <translation>Sollen die Änderungen am Skript gespeichert werden?</translation>
    </message>
    <message>
        <source>new script</source>
        <translation>neues Skript</translation>
    </message>
    <message>
        <source>%1[*] - Hollerwick</source>
        <translation>%1[*] - Hollerwick</translation>
    </message>
    <message>
        <source>Script</source>
        <translation>Skript</translation>
    </message>
    <message>
        <source>The script does not stop. End the program at once?</source>
        <translation>Das Skript lässt sich nicht anhalten. Soll das Programm sofort beendet werden?</translation>
    </message>
    <message>
        <source>&amp;End the program</source>
        <translation>Programm &amp;beenden</translation>
    </message>
</context>
<context>
    <name>HostShell::FunctionPane</name>
    <message>
        <source>There is no documentation.</source>
        <translation>Es gibt keine Dokumentation.</translation>
    </message>
    <message>
        <source>F&amp;unctions</source>
        <translation>F&amp;unktionen</translation>
    </message>
    <message>
        <source>&amp;Documentation</source>
        <translation>D&amp;okumentation</translation>
    </message>
</context>
<context>
    <name>HostShell::WindowMenu</name>
    <message>
        <source>&amp;Windows</source>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>New &amp;design from examples…</source>
        <translation>Neuer &amp;Entwurf aus Beispielen …</translation>
    </message>
    <message>
        <source>&amp;Browse a barrel of examples…</source>
        <translation>Sammlung &amp;durchsuchen …</translation>
    </message>
    <message>
        <source>Browse a d&amp;irectory of examples…</source>
        <translation>&amp;Verzeichnis mit Beispielen durchsuchen …</translation>
    </message>
    <message>
        <source>&amp;New example</source>
        <translation>&amp;Neues Beispiel</translation>
    </message>
    <message>
        <source>Edit an &amp;example…</source>
        <translation>&amp;Beispiel bearbeiten …</translation>
    </message>
    <message>
        <source>&amp;Show the panes of a barrel…</source>
        <translation>Bereiche einer &amp;Sammlung zeigen …</translation>
    </message>
    <message>
        <source>New s&amp;criptable bundle</source>
        <translation>Neues S&amp;kript-Bündel</translation>
    </message>
    <message>
        <source>Edi&amp;t a scriptable bundle…</source>
        <translation>Skript-Bündel bea&amp;rbeiten …</translation>
    </message>
    <message>
        <source>&amp;View the parts of a package…</source>
        <translation>&amp;Teile eines Pakets zeigen …</translation>
    </message>
    <message>
        <source>View parts and &amp;relationships of a package…</source>
        <translation>Teile und Be&amp;ziehungen eines Pakets zeigen …</translation>
    </message>
    <message>
        <source>Choose barrels of examples</source>
        <translation>Sammlungen von Beispielen wählen</translation>
    </message>
    <message>
        <source>Barrels of examples (*.kvexs *.kvexs.zip);;All files (*)</source>
        <translation>Sammlungen von Beispielen (*.kvexs *.kvexs.zip);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Choose a directory for the new design</source>
        <translation>Verzeichnis für den neuen Entwurf wählen</translation>
    </message>
    <message>
        <source>Choose a barrel of examples</source>
        <translation>Sammlung von Beispielen wählen</translation>
    </message>
    <message>
        <source>Choose an example</source>
        <translation>Beispiel wählen</translation>
    </message>
    <message>
        <source>Example bundles (*.kvbdl.zip *.zip);;All files (*)</source>
        <translation>Beispielbündel (*.kvbdl.zip *.zip);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Choose a scriptable bundle</source>
        <translation>Skript-Bündel wählen</translation>
    </message>
    <message>
        <source>Scriptable bundles (*.kvsbd.zip *.zip);;All files (*)</source>
        <translation>Skript-Bündel (*.kvsbd.zip *.zip);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Choose a package</source>
        <translation>Paket wählen</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Choose a directory with examples</source>
        <translation>Verzeichnis mit Beispielen wählen</translation>
    </message>
</context>
</TS>
