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
        <translation>Liste der Beispiele</translation>
    </message>
    <message>
        <source>Examples</source>
        <translation>Beispiele</translation>
    </message>
    <message>
        <source>Examples Properties</source>
        <translation>Eigenschaften der Sammlung</translation>
    </message>
    <message>
        <source>Examples properties</source>
        <translation>Eigenschaften der Sammlung</translation>
    </message>
    <message>
        <source>Example Properties</source>
        <translation>Eigenschaften des Beispiels</translation>
    </message>
    <message>
        <source>Example properties</source>
        <translation>Eigenschaften des Beispiels</translation>
    </message>
    <message>
        <source>Example Content</source>
        <translation>Inhalt des Beispiels</translation>
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
</TS>
