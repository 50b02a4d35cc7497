<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>importer::cluster::ClusterProbe</name>
    <message>
        <source>srun cannot be started: is Slurm installed here?</source>
        <translation>srun lässt sich nicht starten: ist Slurm hier installiert?</translation>
    </message>
    <message>
        <source>the node %1 did not answer%2</source>
        <translation>der Knoten %1 hat nicht geantwortet%2</translation>
    </message>
    <message>
        <source>the node %1 has no converter %2</source>
        <translation>der Knoten %1 hat keinen Konverter %2</translation>
    </message>
    <message>
        <source>the folder of %1 is not shared with the cluster: the node %2 does not see this file there</source>
        <translation>der Ordner von %1 ist mit dem Cluster nicht gemeinsam: der Knoten %2 sieht diese Datei dort nicht</translation>
    </message>
    <message>
        <source>the folder %1 is not shared with the cluster: what is written there on one side does not arrive on the other (node %2)</source>
        <translation>der Ordner %1 ist mit dem Cluster nicht gemeinsam: was dort auf einer Seite geschrieben wird, kommt auf der anderen nicht an (Knoten %2)</translation>
    </message>
</context>
<context>
    <name>importer::ConvertedRoad</name>
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
</context>
<context>
    <name>importer::DocumentFault</name>
    <message>
        <source>there is a zero byte in the text</source>
        <translation>im Text steht ein Null-Byte</translation>
    </message>
    <message>
        <source>the elements are nested too deeply</source>
        <translation>die Elemente sind zu tief verschachtelt</translation>
    </message>
    <message>
        <source>an element has too many attributes</source>
        <translation>ein Element hat zu viele Attribute</translation>
    </message>
    <message>
        <source>the document is cut off</source>
        <translation>das Dokument ist abgeschnitten</translation>
    </message>
    <message>
        <source>an end tag has no element</source>
        <translation>ein End-Tag hat kein Element</translation>
    </message>
    <message>
        <source>the XML declaration is damaged</source>
        <translation>die XML-Deklaration ist beschädigt</translation>
    </message>
    <message>
        <source>a character is not valid UTF-8</source>
        <translation>ein Zeichen ist kein gültiges UTF-8</translation>
    </message>
    <message>
        <source>value %1 of a Transform is not a number that fits</source>
        <translation>Wert %1 eines Transform ist keine passende Zahl</translation>
    </message>
    <message>
        <source>the document begins with the element %1, not with PLMXML</source>
        <translation>das Dokument beginnt mit dem Element %1 statt mit PLMXML</translation>
    </message>
    <message>
        <source>the document is empty</source>
        <translation>das Dokument ist leer</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>es gibt keine solche Datei</translation>
    </message>
    <message>
        <source>this is no file</source>
        <translation>das ist keine Datei</translation>
    </message>
    <message>
        <source>the file cannot be read: %1</source>
        <translation>die Datei ist nicht lesbar: %1</translation>
    </message>
</context>
<context>
    <name>zn::MissingParts</name>
    <message>
        <source>the file could not be read</source>
        <translation>die Datei konnte nicht gelesen werden</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>es gibt keine solche Datei</translation>
    </message>
    <message>
        <source>%1 (used by %2)</source>
        <translation>%1 (gebraucht von %2)</translation>
    </message>
    <message>
        <source>%1 (used by %2 and %3 more)</source>
        <translation>%1 (gebraucht von %2 und %3 weiteren)</translation>
    </message>
</context>
<context>
    <name>importer::ImportRoad</name>
    <message>
        <source>saved views of part files are left out: %1</source>
        <translation>gespeicherte Ansichten von Teiledateien bleiben weg: %1</translation>
    </message>
</context>
<context>
    <name>importer::NativeRoad</name>
    <message>
        <source>Loading</source>
        <translation>Laden</translation>
    </message>
</context>
<context>
    <name>importer::NestedDocuments</name>
    <message>
        <source>the document gave no tree</source>
        <translation>das Dokument ergab keinen Baum</translation>
    </message>
    <message>
        <source>line %1, column %2</source>
        <translation>Zeile %1, Spalte %2</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>es gibt keine solche Datei</translation>
    </message>
    <message>
        <source>the document leads back to itself</source>
        <translation>das Dokument führt auf sich selbst zurück</translation>
    </message>
    <message>
        <source>more than %1 documents are nested</source>
        <translation>mehr als %1 Dokumente sind ineinander verschachtelt</translation>
    </message>
    <message>
        <source>the import has more than %1 documents</source>
        <translation>der Import hat mehr als %1 Dokumente</translation>
    </message>
</context>
<context>
    <name>importer::cluster::NodeLosses</name>
    <message>
        <source>a conversion</source>
        <translation>eine Umwandlung</translation>
    </message>
    <message>
        <source>%1: the node %2 failed; it is converted again on another</source>
        <translation>%1: der Knoten %2 ist ausgefallen; die Umwandlung läuft noch einmal auf einem anderen</translation>
    </message>
    <message>
        <source>The node %1 failed, and before it the node %2.</source>
        <translation>Der Knoten %1 ist ausgefallen, und vor ihm der Knoten %2.</translation>
    </message>
</context>
<context>
    <name>importer::PartImports</name>
    <message>
        <source>the conversion failed</source>
        <translation>die Umwandlung ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>the conversion wrote nothing</source>
        <translation>die Umwandlung hat nichts geschrieben</translation>
    </message>
    <message>
        <source>%1 of %2 parts done, %3 running, %4 failed</source>
        <translation>%1 von %2 Teilen fertig, %3 in Arbeit, %4 fehlgeschlagen</translation>
    </message>
</context>
<context>
    <name>importer::PlmxmlRoad</name>
    <message>
        <source>Reading document</source>
        <translation>Dokument lesen</translation>
    </message>
    <message>
        <source>Part files found: %1</source>
        <translation>Teiledateien gefunden: %1</translation>
    </message>
    <message>
        <source>Loading %1</source>
        <translation>%1 laden</translation>
    </message>
    <message>
        <source>%1: the document gave no tree</source>
        <translation>%1: das Dokument ergab keinen Baum</translation>
    </message>
    <message>
        <source>part files at %1 places would make too large a tree</source>
        <translation>Teiledateien an %1 Stellen ergäben einen zu großen Baum</translation>
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
    <name>QObject</name>
    <message>
        <source>cannot make a folder for converted files in %1: %2</source>
        <translation>in %1 lässt sich kein Ordner für umgewandelte Dateien anlegen: %2</translation>
    </message>
</context>
<context>
    <name>importer::cluster::SlurmAllocation</name>
    <message>
        <source>the scheduler tells nothing of the allocation that can be understood</source>
        <translation>der Scheduler sagt über die Zuteilung nichts Verständliches</translation>
    </message>
    <message>
        <source>%1 cannot be started: is Slurm installed here?</source>
        <translation>%1 lässt sich nicht starten: ist Slurm hier installiert?</translation>
    </message>
    <message>
        <source>%1 gave none</source>
        <translation>%1 hat keine gegeben</translation>
    </message>
</context>
<context>
    <name>importer::TreeOptimization</name>
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
    <name>zn::ClusterImport</name>
    <message>
        <source>waiting for the cluster: %1</source>
        <translation>Warten auf den Cluster: %1</translation>
    </message>
    <message>
        <source>no allocation of the cluster: %1</source>
        <translation>keine Zuteilung auf dem Cluster: %1</translation>
    </message>
    <message>
        <source>the allocation of the cluster ended: %1</source>
        <translation>die Zuteilung auf dem Cluster ist zu Ende: %1</translation>
    </message>
    <message>
        <source>waiting for the cluster</source>
        <translation>Warten auf den Cluster</translation>
    </message>
    <message>
        <source>looking from each node whether the folders are shared</source>
        <translation>jeder Knoten prüft, ob die Ordner gemeinsam sind</translation>
    </message>
    <message>
        <source>job %1 of the cluster: %2 nodes, %3 conversions at a time; the number inside one part may stand still</source>
        <translation>Auftrag %1 auf dem Cluster: %2 Knoten, %3 Umwandlungen zugleich; die Zahl innerhalb eines Teils kann stehen bleiben</translation>
    </message>
    <message>
        <source>the allocation of the cluster ended: all of its nodes failed</source>
        <translation>die Zuteilung auf dem Cluster ist zu Ende: alle Knoten sind ausgefallen</translation>
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
