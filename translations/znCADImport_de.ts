<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>ConverterFailure</name>
    <message>
        <source>The converter ended well.</source>
        <translation>Der Konverter hat seine Arbeit beendet.</translation>
    </message>
    <message>
        <source>The converter did not understand its command line.</source>
        <translation>Der Konverter hat seine Befehlszeile nicht verstanden.</translation>
    </message>
    <message>
        <source>The file is missing or cannot be read.</source>
        <translation>Die Datei fehlt oder ist nicht lesbar.</translation>
    </message>
    <message>
        <source>The file is of an old version and needs the update tool.</source>
        <translation>Die Datei hat eine alte Version und braucht das Aktualisierungsprogramm.</translation>
    </message>
    <message>
        <source>The file has no external parts.</source>
        <translation>Die Datei verweist auf keine Teiledateien.</translation>
    </message>
    <message>
        <source>The converter has no reader for this format.</source>
        <translation>Der Konverter kann dieses Format nicht lesen.</translation>
    </message>
    <message>
        <source>The file is damaged.</source>
        <translation>Die Datei ist beschädigt.</translation>
    </message>
    <message>
        <source>The converted file could not be written.</source>
        <translation>Die umgewandelte Datei konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The conversion needed more memory than its limit allows.</source>
        <translation>Die Umwandlung brauchte mehr Speicher, als ihre Grenze erlaubt.</translation>
    </message>
    <message>
        <source>The conversion took longer than its limit allows.</source>
        <translation>Die Umwandlung dauerte länger, als ihre Grenze erlaubt.</translation>
    </message>
    <message>
        <source>The conversion stopped making progress.</source>
        <translation>Die Umwandlung kam nicht mehr voran.</translation>
    </message>
    <message>
        <source>The conversion was cancelled.</source>
        <translation>Die Umwandlung wurde abgebrochen.</translation>
    </message>
    <message>
        <source>There is nothing to import in the file.</source>
        <translation>In der Datei ist nichts, was sich importieren lässt.</translation>
    </message>
    <message>
        <source>The machine that ran the converter failed.</source>
        <translation>Der Rechner, auf dem der Konverter lief, ist ausgefallen.</translation>
    </message>
    <message>
        <source>The converter could not be started.</source>
        <translation>Der Konverter konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>The converter was asked to stop.</source>
        <translation>Der Konverter wurde angehalten.</translation>
    </message>
    <message>
        <source>The converter crashed (signal %1).</source>
        <translation>Der Konverter ist abgestürzt (Signal %1).</translation>
    </message>
    <message>
        <source>The launcher of the converter failed.</source>
        <translation>Das Startprogramm des Konverters ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>The converter ended with the exit code %1.</source>
        <translation>Der Konverter endete mit dem Code %1.</translation>
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
    <name>ReaderProcess</name>
    <message>
        <source>the reading was cancelled</source>
        <translation>das Lesen wurde abgebrochen</translation>
    </message>
    <message>
        <source>%1 cannot be started</source>
        <translation>%1 lässt sich nicht starten</translation>
    </message>
    <message>
        <source>what %1 made of it is not whole</source>
        <translation>was %1 daraus gemacht hat, ist nicht vollständig</translation>
    </message>
    <message>
        <source>ptxconvert is not installed: files are read by this process</source>
        <translation>ptxconvert ist nicht installiert: Dateien liest dieser Prozess</translation>
    </message>
</context>
<context>
    <name>importer::AssetTableRun</name>
    <message>
        <source>the folder has no asset &quot;%1&quot;</source>
        <translation>im Ordner gibt es kein Asset „%1“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; at %2 places by %3</source>
        <translation>„%1“ an %2 Stellen durch %3</translation>
    </message>
    <message>
        <source>%1: material assets: %2</source>
        <translation>%1: Material-Assets: %2</translation>
    </message>
    <message>
        <source>%1: rows of materials.json that match nothing: %2</source>
        <translation>%1: Zeilen von materials.json, zu denen nichts passt: %2</translation>
    </message>
    <message>
        <source>%1: there is not enough memory to put material assets on it</source>
        <translation>%1: der Speicher reicht nicht, um Material-Assets zuzuweisen</translation>
    </message>
</context>
<context>
    <name>importer::ConvertedRoad</name>
    <message>
        <source>Starting</source>
        <translation>Starten</translation>
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
        <source>elements stand more than %1 inside one another</source>
        <translation>mehr als %1 Elemente stehen ineinander</translation>
    </message>
    <message>
        <source>an element has more than %1 attributes</source>
        <translation>ein Element hat mehr als %1 Attribute</translation>
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
        <source>the attribute %1 of a Material has a word among its numbers</source>
        <translation>das Attribut %1 eines Material hat ein Wort unter seinen Zahlen</translation>
    </message>
    <message>
        <source>the file cannot be read</source>
        <translation>die Datei ist nicht lesbar</translation>
    </message>
    <message>
        <source>there is not enough memory for the document</source>
        <translation>für das Dokument reicht der Speicher nicht</translation>
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
    <name>importer::DocumentReading</name>
    <message>
        <source>the document in the form that is read cannot be written: %1</source>
        <translation>das Dokument lässt sich in der Form, die gelesen wird, nicht schreiben: %1</translation>
    </message>
</context>
<context>
    <name>importer::ElementDocuments</name>
    <message>
        <source>the import names more than %1 elements of other documents</source>
        <translation>der Import nennt mehr als %1 Elemente anderer Dokumente</translation>
    </message>
</context>
<context>
    <name>importer::EmptyImport</name>
    <message>
        <source>%1: nothing came in: there is no shape in it, and no place for one</source>
        <translation>%1: Es kam nichts herein: Die Datei enthält keine Form und keinen Platz für eine</translation>
    </message>
    <message>
        <source>%1: the file is empty: it holds no shape, mesh or curve</source>
        <translation>%1: Die Datei ist leer: Sie enthält keine Form, kein Netz und keine Kurve</translation>
    </message>
    <message>
        <source>%1: nothing of it can be drawn; nodes of its structure: %2</source>
        <translation>%1: Nichts davon kann gezeichnet werden; Knoten der Struktur: %2</translation>
    </message>
</context>
<context>
    <name>importer::FailureReason</name>
    <message>
        <source>the converter ended well but wrote no scene file</source>
        <translation>der Konverter endete ohne Fehler, hat aber keine Szenendatei geschrieben</translation>
    </message>
    <message>
        <source>the conversion failed</source>
        <translation>die Umwandlung ist fehlgeschlagen</translation>
    </message>
</context>
<context>
    <name>importer::ImportRoad</name>
    <message>
        <source>saved views of part files</source>
        <translation>gespeicherte Ansichten von Teiledateien</translation>
    </message>
</context>
<context>
    <name>importer::NativeRoad</name>
    <message>
        <source>Loading</source>
        <translation>Laden</translation>
    </message>
    <message>
        <source>Optimising</source>
        <translation>Optimieren</translation>
    </message>
    <message>
        <source>%1: there is not enough memory to put its tree in order</source>
        <translation>%1: der Speicher reicht nicht, um den Baum zu ordnen</translation>
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
    <name>importer::PartImports</name>
    <message>
        <source>%1 of %2 parts done, %3 running, %4 failed</source>
        <translation>%1 von %2 Teilen fertig, %3 in Arbeit, %4 fehlgeschlagen</translation>
    </message>
</context>
<context>
    <name>importer::PartsListFile</name>
    <message>
        <source>the parts list has columns for %1 of %2 attributes</source>
        <translation>Die Stückliste hat Spalten für %1 von %2 Attributen</translation>
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
    <message>
        <source>%1: there is not enough memory</source>
        <translation>%1: Der Speicher reicht nicht</translation>
    </message>
</context>
<context>
    <name>importer::PreparedDocument</name>
    <message>
        <source>the document names no file with a shape; its structure has %1 places</source>
        <translation>das Dokument nennt keine Datei mit einer Form; seine Struktur hat %1 Stellen</translation>
    </message>
    <message>
        <source>%1 of %2 parts are without a shape</source>
        <translation>%1 von %2 Teilen sind ohne Form</translation>
    </message>
    <message>
        <source>%1 of %2 parts are switched off</source>
        <translation>%1 von %2 Teilen sind ausgeschaltet</translation>
    </message>
    <message>
        <source>%1 conditions are not evaluated; everything is shown</source>
        <translation>%1 Bedingungen werden nicht ausgewertet; alles wird gezeigt</translation>
    </message>
    <message>
        <source>%1 transforms have not the numbers that they need, and move nothing</source>
        <translation>%1 Transformationen haben nicht die Zahlen, die sie brauchen, und bewegen nichts</translation>
    </message>
    <message>
        <source>%1 occurrences speak of no place of the structure and are passed over, the first in line %2</source>
        <translation>%1 Vorkommen nennen keinen Platz der Struktur und werden übergangen, das erste in Zeile %2</translation>
    </message>
    <message>
        <source>%1 attributes of materials are no numbers and are left out</source>
        <translation>%1 Attribute von Materialien sind keine Zahlen und werden weggelassen</translation>
    </message>
    <message>
        <source>%1 occurrences are claimed by several others; they stand below the first</source>
        <translation>%1 Vorkommen werden von mehreren anderen beansprucht; sie stehen unter dem ersten</translation>
    </message>
    <message>
        <source>of %1 views the one called %2 was taken</source>
        <translation>von %1 Ansichten wurde die mit dem Namen %2 genommen</translation>
    </message>
    <message>
        <source>representations left out: %1 (%2)</source>
        <translation>ausgelassene Darstellungen: %1 (%2)</translation>
    </message>
    <message>
        <source>%1 occurrences speak of a place that an earlier one speaks of and are passed over, the first in line %2</source>
        <translation>%1 Vorkommen sprechen von einem Platz, von dem ein früheres spricht, und werden übergangen, das erste in Zeile %2</translation>
    </message>
    <message>
        <source>%1 shapes inside the document are not read</source>
        <translation>%1 Formen im Dokument selbst werden nicht gelesen</translation>
    </message>
    <message>
        <source>the view is a choice among the places of the graph; all of them are shown</source>
        <translation>die Ansicht ist eine Auswahl aus den Plätzen des Graphen; alle werden gezeigt</translation>
    </message>
</context>
<context>
    <name>importer::SceneQuery</name>
    <message>
        <source>&apos;)&apos; is missing</source>
        <translation>„)“ fehlt</translation>
    </message>
    <message>
        <source>&apos;|&apos; or &apos;&amp;&apos; is missing</source>
        <translation>„|“ oder „&amp;“ fehlt</translation>
    </message>
    <message>
        <source>%1 (at character %2)</source>
        <translation>%1 (bei Zeichen %2)</translation>
    </message>
    <message>
        <source>a closing quote is missing</source>
        <translation>Ein schließendes Anführungszeichen fehlt</translation>
    </message>
    <message>
        <source>a comparison is missing</source>
        <translation>Ein Vergleich fehlt</translation>
    </message>
    <message>
        <source>a test begins with name, product, id, material or attribute:NAME</source>
        <translation>Eine Bedingung beginnt mit name, product, id, material oder attribute:NAME</translation>
    </message>
    <message>
        <source>the brackets are nested too deeply</source>
        <translation>Die Klammern sind zu tief verschachtelt</translation>
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
    <name>importer::materials::AssetTable</name>
    <message>
        <source>There is not enough memory for the file.</source>
        <translation>Der Speicher reicht für die Datei nicht.</translation>
    </message>
    <message>
        <source>a table of materials is an object with a list &quot;rows&quot;</source>
        <translation>eine Materialtabelle ist ein Objekt mit einer Liste „rows“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not known</source>
        <translation>„%1“ ist nicht bekannt</translation>
    </message>
    <message>
        <source>this is no JSON text</source>
        <translation>das ist kein JSON-Text</translation>
    </message>
    <message>
        <source>this is no text, or an empty one</source>
        <translation>das ist kein Text, oder ein leerer</translation>
    </message>
    <message>
        <source>a row looks at one thing only</source>
        <translation>eine Zeile fragt nur nach einem</translation>
    </message>
    <message>
        <source>a colour is written as &quot;#rrggbb&quot;</source>
        <translation>eine Farbe schreibt man als „#rrggbb“</translation>
    </message>
    <message>
        <source>an attribute is written as &quot;name=value&quot;</source>
        <translation>ein Attribut schreibt man als „Name=Wert“</translation>
    </message>
    <message>
        <source>a row is an object</source>
        <translation>eine Zeile ist ein Objekt</translation>
    </message>
    <message>
        <source>a row needs the name or the uuid of an &quot;asset&quot;</source>
        <translation>eine Zeile braucht den Namen oder die uuid eines „asset“</translation>
    </message>
    <message>
        <source>a row needs one of &quot;occurrence&quot;, &quot;part&quot;, &quot;material&quot;, &quot;attribute&quot; and &quot;color&quot;</source>
        <translation>eine Zeile braucht „occurrence“, „part“, „material“, „attribute“ oder „color“</translation>
    </message>
</context>
<context>
    <name>importer::plmxml::FileFacts</name>
    <message>
        <source>line %1 names it &quot;%2&quot;</source>
        <translation>Zeile %1 nennt sie &quot;%2&quot;</translation>
    </message>
    <message>
        <source>what is there is no regular file; %1</source>
        <translation>was dort steht, ist keine gewöhnliche Datei; %1</translation>
    </message>
</context>
<context>
    <name>importer::plmxml::Refusal</name>
    <message>
        <source>the document has no element &quot;%1&quot; that a structure begins with</source>
        <translation>das Dokument hat kein Element &quot;%1&quot;, mit dem eine Struktur beginnt</translation>
    </message>
    <message>
        <source>the document places no part: it has no instance, no part and no occurrence at the top of a product structure</source>
        <translation>das Dokument platziert kein Teil: es hat keine Instanz, kein Teil und kein Vorkommen an der Spitze einer Produktstruktur</translation>
    </message>
    <message>
        <source>there is not enough memory for this document</source>
        <translation>Der Speicher reicht für dieses Dokument nicht</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; in line %3</source>
        <translation>%1 &quot;%2&quot; in Zeile %3</translation>
    </message>
    <message>
        <source>the structure contains itself: %1 leads back to a part that is around it</source>
        <translation>die Struktur enthält sich selbst: %1 führt zurück zu einem Teil, in dem es steht</translation>
    </message>
    <message>
        <source>the structure is deeper than %1 levels at %2</source>
        <translation>die Struktur ist bei %2 tiefer als %1 Ebenen</translation>
    </message>
    <message>
        <source>the structure has more than %1 places; %2 places a part that is at %3 of them</source>
        <translation>die Struktur hat mehr als %1 Plätze; %2 platziert ein Teil, das an %3 von ihnen steht</translation>
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
    <name>zn::Importer</name>
    <message>
        <source>%1: these settings have no effect on files of its kind: %2</source>
        <translation>%1: diese Einstellungen wirken auf Dateien dieser Art nicht: %2</translation>
    </message>
    <message>
        <source>%1: there is not enough memory to look at its normals</source>
        <translation>%1: der Speicher reicht nicht, um die Normalen zu prüfen</translation>
    </message>
    <message>
        <source>%1: there is not enough memory for texture coordinates</source>
        <translation>%1: der Speicher reicht nicht für Texturkoordinaten</translation>
    </message>
</context>
<context>
    <name>zn::LeftOutContent</name>
    <message>
        <source>%1 are left out: %2</source>
        <translation>%1 bleiben weg: %2</translation>
    </message>
    <message>
        <source>%1 are left out: %2, in %3 files</source>
        <translation>%1 bleiben weg: %2, in %3 Dateien</translation>
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
