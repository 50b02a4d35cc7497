<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>ConvertedRoad</name>
    <message>
        <source>Starting</source>
        <translation>Starten</translation>
    </message>
    <message>
        <source>the conversion failed</source>
        <translation>die Umwandlung ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>Laden</translation>
    </message>
    <message>
        <source>%1 of %2 parts done, %3 running, %4 failed</source>
        <translation>%1 von %2 Teilen fertig, %3 in Arbeit, %4 fehlgeschlagen</translation>
    </message>
</context>
<context>
    <name>NativeRoad</name>
    <message>
        <source>Loading</source>
        <translation>Laden</translation>
    </message>
</context>
<context>
    <name>PartImports</name>
    <message>
        <source>the conversion failed</source>
        <translation>die Umwandlung ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>the conversion wrote nothing</source>
        <translation>die Umwandlung hat nichts geschrieben</translation>
    </message>
</context>
<context>
    <name>PtxToOsg</name>
    <message>
        <source>Reading</source>
        <translation>Einlesen</translation>
    </message>
    <message>
        <source>Converting</source>
        <translation>Umwandeln</translation>
    </message>
    <message>
        <source>Processing</source>
        <translation>Verarbeiten</translation>
    </message>
    <message>
        <source>Merging</source>
        <translation>Zusammenführen</translation>
    </message>
    <message>
        <source>Stitching</source>
        <translation>Vernähen</translation>
    </message>
    <message>
        <source>Unifying surface normals</source>
        <translation>Flächennormalen angleichen</translation>
    </message>
    <message>
        <source>Tessellating</source>
        <translation>Tessellieren</translation>
    </message>
    <message>
        <source>Building scene tree</source>
        <translation>Szenenbaum aufbauen</translation>
    </message>
    <message>
        <source>Cleaning up</source>
        <translation>Aufräumen</translation>
    </message>
    <message>
        <source>Writing file</source>
        <translation>Datei schreiben</translation>
    </message>
    <message>
        <source>Finished conversion</source>
        <translation>Umwandlung beendet</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
</context>
<context>
    <name>TreeFinish</name>
    <message>
        <source>the tree could not be brought into the scene</source>
        <translation>der Baum konnte nicht in die Szene gebracht werden</translation>
    </message>
    <message>
        <source>Optimising</source>
        <translation>Optimieren</translation>
    </message>
</context>
<context>
    <name>znPtxConverterJob</name>
    <message>
        <source>No external part files found. Retrying with inlined option.</source>
        <translation>Keine externen Teiledateien gefunden. Neuer Versuch mit eingebetteten Teilen.</translation>
    </message>
    <message>
        <source>Updating Legacy Stylar File</source>
        <translation>Alte Stylar-Datei wird aktualisiert</translation>
    </message>
</context>
</TS>
