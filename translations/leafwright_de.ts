<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>ActionTable</name>
    <message>
        <source>Open…</source>
        <translation>Öffnen …</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Save As…</source>
        <translation>Speichern unter …</translation>
    </message>
    <message>
        <source>Open in Default Application</source>
        <translation>Im Standardprogramm öffnen</translation>
    </message>
    <message>
        <source>Revert Outline to Saved</source>
        <translation>Zur gespeicherten Gliederung zurückkehren</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederherstellen</translation>
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
        <source>Select Level 1</source>
        <translation>Ebene 1 auswählen</translation>
    </message>
    <message>
        <source>Select Level 2</source>
        <translation>Ebene 2 auswählen</translation>
    </message>
    <message>
        <source>Select Level 3</source>
        <translation>Ebene 3 auswählen</translation>
    </message>
    <message>
        <source>Search and Select…</source>
        <translation>Suchen und auswählen …</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <translation>Einstellungen …</translation>
    </message>
    <message>
        <source>Add Sibling</source>
        <translation>Eintrag hinzufügen</translation>
    </message>
    <message>
        <source>Add Child</source>
        <translation>Untereintrag hinzufügen</translation>
    </message>
    <message>
        <source>Add Selected Text as Sibling</source>
        <translation>Ausgewählten Text als Eintrag hinzufügen</translation>
    </message>
    <message>
        <source>Add Selected Text as Child</source>
        <translation>Ausgewählten Text als Untereintrag hinzufügen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Promote Children</source>
        <translation>Untereinträge hochstufen</translation>
    </message>
    <message>
        <source>Move Left</source>
        <translation>Nach links</translation>
    </message>
    <message>
        <source>Move Right</source>
        <translation>Nach rechts</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <source>Expand</source>
        <translation>Aufklappen</translation>
    </message>
    <message>
        <source>Collapse</source>
        <translation>Zuklappen</translation>
    </message>
    <message>
        <source>Number Sequentially…</source>
        <translation>Fortlaufend nummerieren …</translation>
    </message>
    <message>
        <source>Find and Replace…</source>
        <translation>Suchen und ersetzen …</translation>
    </message>
    <message>
        <source>Add Prefix…</source>
        <translation>Vorsatz hinzufügen …</translation>
    </message>
    <message>
        <source>Title Case</source>
        <translation>Wortanfänge Groß</translation>
    </message>
    <message>
        <source>UPPER CASE</source>
        <translation>GROSSBUCHSTABEN</translation>
    </message>
    <message>
        <source>lower case</source>
        <translation>kleinbuchstaben</translation>
    </message>
    <message>
        <source>Title Case Selected Row</source>
        <translation>Wortanfänge Groß in der ausgewählten Zeile</translation>
    </message>
    <message>
        <source>AutoTOC…</source>
        <translation>AutoTOC …</translation>
    </message>
    <message>
        <source>AutoTOC with Last Map</source>
        <translation>AutoTOC mit letzter Tabelle</translation>
    </message>
    <message>
        <source>Self-Calibrating AutoTOC</source>
        <translation>Selbstabgleichendes AutoTOC</translation>
    </message>
    <message>
        <source>MiniTOC from Selection</source>
        <translation>MiniTOC aus der Auswahl</translation>
    </message>
    <message>
        <source>Use Selection for H1</source>
        <translation>Auswahl für H1 verwenden</translation>
    </message>
    <message>
        <source>Use Selection for H2</source>
        <translation>Auswahl für H2 verwenden</translation>
    </message>
    <message>
        <source>Use Selection for H3</source>
        <translation>Auswahl für H3 verwenden</translation>
    </message>
    <message>
        <source>Use Selection for H4</source>
        <translation>Auswahl für H4 verwenden</translation>
    </message>
    <message>
        <source>Load Heading Map…</source>
        <translation>Überschriftentabelle laden …</translation>
    </message>
    <message>
        <source>Save Heading Map…</source>
        <translation>Überschriftentabelle speichern …</translation>
    </message>
    <message>
        <source>Delete Selected Headings</source>
        <translation>Ausgewählte Überschriften löschen</translation>
    </message>
    <message>
        <source>Reset Heading Map</source>
        <translation>Überschriftentabelle leeren</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Zoom to Fit</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <source>Next Page</source>
        <translation>Nächste Seite</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <translation>Vorige Seite</translation>
    </message>
    <message>
        <source>Show Target of Selected Item</source>
        <translation>Ziel des ausgewählten Eintrags zeigen</translation>
    </message>
    <message>
        <source>Next Page Label Corner</source>
        <translation>Nächste Ecke für die Seitenbezeichnung</translation>
    </message>
    <message>
        <source>Printed Page Number…</source>
        <translation>Gedruckte Seitenzahl …</translation>
    </message>
    <message>
        <source>User Guide</source>
        <translation>Benutzerhandbuch</translation>
    </message>
    <message>
        <source>Tutorials</source>
        <translation>Anleitungen</translation>
    </message>
    <message>
        <source>Leafwright Online</source>
        <translation>Leafwright im Internet</translation>
    </message>
    <message>
        <source>Leafwright in the App Store</source>
        <translation>Leafwright im App-Store</translation>
    </message>
    <message>
        <source>Email Customer Support</source>
        <translation>E-Mail an den Kundendienst</translation>
    </message>
    <message>
        <source>Send Feedback</source>
        <translation>Rückmeldung senden</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Aktualisierungen suchen …</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über Leafwright</translation>
    </message>
    <message>
        <source>Open Clicked Row</source>
        <translation>Angeklickte Zeile öffnen</translation>
    </message>
    <message>
        <source>Log Fonts of Current Page</source>
        <translation>Schriften der aktuellen Seite protokollieren</translation>
    </message>
    <message>
        <source>Count Fonts of Document</source>
        <translation>Schriften des Dokuments zählen</translation>
    </message>
    <message>
        <source>Locate Selected Text</source>
        <translation>Ausgewählten Text orten</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Outline</source>
        <translation>&amp;Gliederung</translation>
    </message>
    <message>
        <source>&amp;Titles</source>
        <translation>&amp;Titel</translation>
    </message>
    <message>
        <source>&amp;Contents</source>
        <translation>&amp;Inhalt</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Fit Page</source>
        <translation>Ganze Seite</translation>
    </message>
    <message>
        <source>Actual Size</source>
        <translation>Originalgröße</translation>
    </message>
    <message>
        <source>Go to Page…</source>
        <translation>Gehe zu Seite …</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vor</translation>
    </message>
    <message>
        <source>Find Contents…</source>
        <translation>Inhalt finden …</translation>
    </message>
    <message>
        <source>Complete from Existing Entries</source>
        <translation>Nach vorhandenen Einträgen vervollständigen</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
    <message>
        <source>Step Back</source>
        <translation>Schritt zurück</translation>
    </message>
    <message>
        <source>Step Forward</source>
        <translation>Schritt vor</translation>
    </message>
    <message>
        <source>Open in Viewers</source>
        <translation>In Betrachtern aufgeklappt</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Fett</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>Kursiv</translation>
    </message>
    <message>
        <source>Colour…</source>
        <translation>Farbe …</translation>
    </message>
    <message>
        <source>Import Outline…</source>
        <translation>Gliederung importieren …</translation>
    </message>
    <message>
        <source>Export Outline…</source>
        <translation>Gliederung exportieren …</translation>
    </message>
    <message>
        <source>Find in Pages…</source>
        <translation>In Seiten suchen …</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Weitersuchen</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Rückwärts suchen</translation>
    </message>
    <message>
        <source>Filter…</source>
        <translation>Filtern …</translation>
    </message>
    <message>
        <source>Reveal Current Entry</source>
        <translation>Gelesenen Eintrag zeigen</translation>
    </message>
    <message>
        <source>Point Selected Entry Here</source>
        <translation>Ausgewählten Eintrag hierher führen</translation>
    </message>
</context>
<context>
    <name>Application</name>
    <message>
        <source>Asks for a file if there is none to show.</source>
        <translation>Fragt nach einer Datei, wenn keine zu zeigen ist.</translation>
    </message>
    <message>
        <source>Waits to be told over D-Bus what to open.</source>
        <translation>Wartet darauf, über D-Bus zu erfahren, was zu öffnen ist.</translation>
    </message>
    <message>
        <source>Edits the outline (table of contents) of PDF files.</source>
        <translation>Bearbeitet die Gliederung (das Inhaltsverzeichnis) von PDF-Dateien.</translation>
    </message>
    <message>
        <source>The files to open.</source>
        <translation>Die zu öffnenden Dateien.</translation>
    </message>
    <message>
        <source>leafwright: no document is open. Name a PDF file: leafwright FILE.pdf
</source>
        <translation>leafwright: Es ist kein Dokument offen. Nennen Sie eine PDF-Datei: leafwright DATEI.pdf
</translation>
    </message>
</context>
<context>
    <name>ApplyCommand</name>
    <message>
        <source>%1: the outline can&apos;t be read: %2</source>
        <translation>%1: Die Gliederung ist nicht lesbar: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: no page is labelled &quot;%2&quot;; the entry leads to the first page</source>
        <translation>„%1“: Keine Seite heißt „%2“; der Eintrag führt zur ersten Seite</translation>
    </message>
    <message>
        <source>%1 more entries with unknown page labels lead to the first page</source>
        <translation>%1 weitere Einträge mit unbekannten Seitenbezeichnungen führen zur ersten Seite</translation>
    </message>
    <message>
        <source>%1 entries have no page; they are written without one</source>
        <translation>%1 Einträge haben keine Seite; sie werden ohne geschrieben</translation>
    </message>
    <message>
        <source>The PDF.</source>
        <translation>Die PDF.</translation>
    </message>
    <message>
        <source>The outline, in a file; &quot;-&quot; is standard input.</source>
        <translation>Die Gliederung in einer Datei; „-“ ist die Standardeingabe.</translation>
    </message>
    <message>
        <source>-o OUT is missing</source>
        <translation>-o OUT fehlt</translation>
    </message>
    <message>
        <source>Writes an outline, given as JSON, plus lines or in a form of other programs, into a PDF.</source>
        <translation>Schreibt eine Gliederung, als JSON, Plus-Zeilen oder in einer Form anderer Programme, in eine PDF.</translation>
    </message>
    <message>
        <source>TREE is what &quot;outline&quot; prints, in any format but text, edited or not. An entry&apos;s page is told by its pageLabel; of pages with the same label it is the last. pageIndex counts only without a pageLabel, or with --keep-pages where it is a page with that label. An entry at [0, 0] is given the middle of its page&apos;s top edge. An empty TREE is refused: [] says that no outline is wanted.</source>
        <translation>TREE ist, was „outline“ ausgibt, in jedem Format außer text, bearbeitet oder nicht. Die Seite eines Eintrags nennt sein pageLabel; von Seiten mit gleicher Bezeichnung gilt die letzte. pageIndex zählt nur ohne pageLabel, oder mit --keep-pages, wenn es eine Seite mit dieser Bezeichnung ist. Ein Eintrag bei [0, 0] bekommt die Mitte des oberen Rands seiner Seite. Ein leeres TREE wird abgelehnt: [] sagt, dass keine Gliederung gewünscht ist.</translation>
    </message>
    <message>
        <source>The format of TREE: one of %1. Without it, that is told by the extension of its name and by how it begins.</source>
        <translation>Das Format von TREE: eines von %1. Ohne diese Angabe sagen es die Endung seines Namens und sein Anfang.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no format that can be read; there are %2</source>
        <translation>„%1“ ist kein Format, das gelesen werden kann; es gibt %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: &quot;%2&quot; is read as a printed page number, which no page is known to have; the entry leads to the first page</source>
        <translation>„%1“: „%2“ wird als gedruckte Seitenzahl gelesen, die von keiner Seite bekannt ist; der Eintrag führt zur ersten Seite</translation>
    </message>
    <message>
        <source>%1 entries did something that only the file has that they come from; they are written without it</source>
        <translation>%1 Einträge haben etwas ausgeführt, was nur die Datei hat, aus der sie stammen; sie werden ohne das geschrieben</translation>
    </message>
    <message>
        <source>%1 entries have an action beside their page; they lead to the page and are written without the action</source>
        <translation>%1 Einträge haben neben ihrer Seite eine Aktion; sie führen zur Seite und werden ohne die Aktion geschrieben</translation>
    </message>
</context>
<context>
    <name>AutoTOCCommand</name>
    <message>
        <source>%1: nothing was written</source>
        <translation>%1: Es wurde nichts geschrieben</translation>
    </message>
    <message>
        <source>%1: no headings were found</source>
        <translation>%1: Es wurden keine Überschriften gefunden</translation>
    </message>
    <message>
        <source>%1: no headings were found; the outline stays as it was</source>
        <translation>%1: Es wurden keine Überschriften gefunden; die Gliederung bleibt, wie sie war</translation>
    </message>
    <message>
        <source>Makes the headings of a PDF, found by their fonts, its outline.</source>
        <translation>Macht die Überschriften einer PDF, an ihren Schriften erkannt, zu ihrer Gliederung.</translation>
    </message>
    <message>
        <source>The PDF, or several with --out-dir.</source>
        <translation>Die PDF oder, mit --out-dir, mehrere.</translation>
    </message>
    <message>
        <source>The deepest level of headings (3).</source>
        <translation>Die tiefste Ebene der Überschriften (3).</translation>
    </message>
    <message>
        <source>A heading map to use in place of the guessed one.</source>
        <translation>Eine Überschriftentabelle anstelle der vermuteten.</translation>
    </message>
    <message>
        <source>Tells headings by how often their fonts occur as well, and corrects the levels as they appear; in place of a map.</source>
        <translation>Erkennt Überschriften auch an der Häufigkeit ihrer Schriften und berichtigt die Ebenen unterwegs; anstelle einer Tabelle.</translation>
    </message>
    <message>
        <source>Adds the headings behind the existing outline.</source>
        <translation>Fügt die Überschriften hinter der vorhandenen Gliederung an.</translation>
    </message>
    <message>
        <source>Puts the headings below one entry, &quot;AutoTOC&quot; and the depth.</source>
        <translation>Setzt die Überschriften unter einen Eintrag, „AutoTOC“ und die Tiefe.</translation>
    </message>
    <message>
        <source>--max-depth wants a number from 1</source>
        <translation>--max-depth braucht eine Zahl ab 1</translation>
    </message>
    <message>
        <source>--calibrate makes a map of its own; --map can&apos;t be given with it</source>
        <translation>--calibrate macht sich eine eigene Tabelle; --map geht nicht zugleich</translation>
    </message>
    <message>
        <source>%1: its text has fewer than two fonts, from which nothing can be told</source>
        <translation>%1: Der Text hat weniger als zwei Schriften, woraus sich nichts ersehen lässt</translation>
    </message>
    <message>
        <source>Text in a font larger than the body text&apos;s is a heading; its level goes by the font&apos;s size, or by a map (see &quot;fonts --save-map&quot;), or by how often fonts occur (--calibrate). The headings take the place of the outline, unless --keep is given. With --out-dir, several files are done at once, on all cores, each in a process of its own; one that takes more than 60 seconds, or --timeout, is given up.</source>
        <translation>Text in einer größeren Schrift als der des Fließtexts ist eine Überschrift; ihre Ebene richtet sich nach der Größe der Schrift, nach einer Tabelle (siehe „fonts --save-map“) oder nach der Häufigkeit der Schriften (--calibrate). Die Überschriften ersetzen die Gliederung, außer mit --keep. Mit --out-dir werden mehrere Dateien zugleich bearbeitet, auf allen Kernen, jede in einem eigenen Prozess; eine, die länger als 60 Sekunden braucht, oder als --timeout, wird aufgegeben.</translation>
    </message>
</context>
<context>
    <name>AutoTOCCommands</name>
    <message>
        <source>AutoTOC</source>
        <translation>AutoTOC</translation>
    </message>
    <message>
        <source>Build an outline from the fonts of the headings?

Text in the fonts of the heading map becomes entries under a new one at the end of the outline. What is there already stays as it is.</source>
        <translation>Aus den Schriften der Überschriften eine Gliederung erzeugen?

Text in den Schriften der Überschriftentabelle wird zu Einträgen unter einem neuen am Ende der Gliederung. Was schon da ist, bleibt, wie es ist.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Build Outline</source>
        <translation>Gliederung erzeugen</translation>
    </message>
    <message>
        <source>Unable to run AutoTOC</source>
        <translation>AutoTOC ist nicht möglich</translation>
    </message>
    <message>
        <source>Leafwright was unable to decipher the fonts used in this PDF.</source>
        <translation>Leafwright konnte die Schriften dieser PDF nicht entziffern.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>AutoTOCProgress</name>
    <message>
        <source>AutoTOC</source>
        <translation>AutoTOC</translation>
    </message>
    <message>
        <source>Counting the fonts:</source>
        <translation>Schriften zählen:</translation>
    </message>
    <message>
        <source>Choosing heading fonts:</source>
        <translation>Schriften der Überschriften bestimmen:</translation>
    </message>
    <message>
        <source>Building the outline:</source>
        <translation>Gliederung erzeugen:</translation>
    </message>
</context>
<context>
    <name>Batch</name>
    <message>
        <source>%1 of %2 files failed</source>
        <translation>%1 von %2 Dateien sind misslungen</translation>
    </message>
    <message>
        <source>cancelled: %1 of %2 files were not begun</source>
        <translation>abgebrochen: %1 von %2 Dateien wurden nicht begonnen</translation>
    </message>
</context>
<context>
    <name>BatchCommand</name>
    <message>
        <source>--jobs wants a number from 1 to %1</source>
        <translation>--jobs verlangt eine Zahl von 1 bis %1</translation>
    </message>
    <message>
        <source>--memory wants a number of megabytes, or 0</source>
        <translation>--memory verlangt eine Zahl von Megabyte oder 0</translation>
    </message>
    <message>
        <source>How many files are done at once; as many as there are cores, unless given.</source>
        <translation>Wie viele Dateien gleichzeitig bearbeitet werden; ohne Angabe so viele, wie es Kerne gibt.</translation>
    </message>
    <message>
        <source>Notes in a file what came of each job. A second start with it passes over what is done.</source>
        <translation>Hält in einer Datei fest, was aus jedem Auftrag wurde. Ein zweiter Start mit ihr übergeht, was fertig ist.</translation>
    </message>
    <message>
        <source>Gives a file up that takes more memory, in megabytes; 0 lets it take what it likes.</source>
        <translation>Gibt eine Datei auf, die mehr Speicher braucht, in Megabyte; bei 0 darf sie beliebig viel.</translation>
    </message>
    <message>
        <source>Where the results go of jobs that have no &quot;out&quot;, under the names of their files; made if it is not there.</source>
        <translation>Wohin die Ergebnisse von Aufträgen ohne &quot;out&quot; kommen, unter den Namen ihrer Dateien; der Ordner wird angelegt, wenn es ihn nicht gibt.</translation>
    </message>
    <message>
        <source>Does very many files, told by standard input, a line each.</source>
        <translation>Bearbeitet sehr viele Dateien, die die Standardeingabe nennt, eine je Zeile.</translation>
    </message>
    <message>
        <source>A line is a path, or a JSON object with &quot;file&quot;, &quot;out&quot; and options of the command by their names. Each is done in a process of its own, the largest first; what becomes of one, or takes more than 60 seconds or --timeout, stops no other. Of each, a line of JSON tells what came of it. COMMAND is autotoc, contents, apply, run, info, outline or fonts, with options for all jobs behind it, and the arguments beside the file.</source>
        <translation>Eine Zeile ist ein Pfad oder ein JSON-Objekt mit &quot;file&quot;, &quot;out&quot; und Optionen des Befehls unter ihren Namen. Jede Datei wird in einem eigenen Prozess bearbeitet, die größten zuerst; was aus einer wird, oder dass sie mehr als 60 Sekunden oder --timeout braucht, hält keine andere auf. Zu jeder sagt eine Zeile JSON, was aus ihr wurde. COMMAND ist autotoc, contents, apply, run, info, outline oder fonts, dahinter Optionen für alle Aufträge und die Argumente neben der Datei.</translation>
    </message>
    <message>
        <source>The command, its options and arguments.</source>
        <translation>Der Befehl, seine Optionen und Argumente.</translation>
    </message>
</context>
<context>
    <name>BatchJob</name>
    <message>
        <source>&quot;%1&quot; wants a path</source>
        <translation>&quot;%1&quot; verlangt einen Pfad</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: no path has a null character</source>
        <translation>&quot;%1&quot;: kein Pfad hat ein Nullzeichen</translation>
    </message>
    <message>
        <source>&quot;file&quot; is missing</source>
        <translation>&quot;file&quot; fehlt</translation>
    </message>
    <message>
        <source>no path has a null character</source>
        <translation>kein Pfad hat ein Nullzeichen</translation>
    </message>
    <message>
        <source>this is no JSON: %1</source>
        <translation>das ist kein JSON: %1</translation>
    </message>
</context>
<context>
    <name>BatchRenaming</name>
    <message>
        <source>Example:</source>
        <translation>Beispiel:</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Number Sequentially</source>
        <translation>Fortlaufend nummerieren</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummerieren</translation>
    </message>
    <message>
        <source>Find and Replace</source>
        <translation>Suchen und ersetzen</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Add Prefix</source>
        <translation>Vorsatz hinzufügen</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Beispiel</translation>
    </message>
    <message>
        <source>&amp;Prefix:</source>
        <translation>&amp;Vorsatz:</translation>
    </message>
    <message>
        <source>&amp;Between prefix and number:</source>
        <translation>&amp;Zwischen Vorsatz und Nummer:</translation>
    </message>
    <message>
        <source>&amp;First number:</source>
        <translation>&amp;Erste Nummer:</translation>
    </message>
    <message>
        <source>&amp;Step:</source>
        <translation>S&amp;chritt:</translation>
    </message>
    <message>
        <source>Between number and &amp;title:</source>
        <translation>Zwischen Nummer und &amp;Titel:</translation>
    </message>
    <message>
        <source>&amp;Find:</source>
        <translation>&amp;Suchen:</translation>
    </message>
    <message>
        <source>Replace &amp;with:</source>
        <translation>Ersetzen &amp;durch:</translation>
    </message>
    <message>
        <source>&amp;Ignore case</source>
        <translation>&amp;Groß- und Kleinschreibung ignorieren</translation>
    </message>
    <message>
        <source>Puts the prefix and a number in front of each selected title.</source>
        <translation>Setzt den Vorsatz und eine Nummer vor jeden ausgewählten Titel.</translation>
    </message>
    <message>
        <source>Replaces a text wherever it occurs in the selected titles.</source>
        <translation>Ersetzt einen Text überall, wo er in den ausgewählten Titeln vorkommt.</translation>
    </message>
    <message>
        <source>Puts the prefix and a blank in front of each selected title.</source>
        <translation>Setzt den Vorsatz und ein Leerzeichen vor jeden ausgewählten Titel.</translation>
    </message>
    <message>
        <source>%1 of %2 titles change</source>
        <translation>%1 von %2 Titeln ändern sich</translation>
    </message>
    <message>
        <source>%1 of %2 titles changed</source>
        <translation>%1 von %2 Titeln geändert</translation>
    </message>
</context>
<context>
    <name>BatchReport</name>
    <message>
        <source>other reasons</source>
        <translation>andere Gründe</translation>
    </message>
</context>
<context>
    <name>BatchRun</name>
    <message>
        <source>this prints more than a line can hold; &quot;out&quot; takes it</source>
        <translation>hier wird mehr ausgegeben, als eine Zeile fasst; &quot;out&quot; nimmt es auf</translation>
    </message>
    <message>
        <source>line %1 is too long for a job</source>
        <translation>Zeile %1 ist zu lang für einen Auftrag</translation>
    </message>
    <message>
        <source>the jobs can&apos;t be read: %1</source>
        <translation>die Aufträge können nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>with --log, no file is written over: whether that was done could not be told</source>
        <translation>mit --log wird keine Datei überschrieben: ob das geschehen ist, ließe sich nicht feststellen</translation>
    </message>
    <message>
        <source>%1 of %2 jobs failed</source>
        <translation>%1 von %2 Aufträgen sind gescheitert</translation>
    </message>
    <message>
        <source>ended early: what has no line was not begun</source>
        <translation>vorzeitig beendet: was keine Zeile hat, wurde nicht begonnen</translation>
    </message>
    <message>
        <source>with --log, a script needs an &quot;out&quot;: whether it has saved over the file could not be told</source>
        <translation>mit --log braucht ein Skript ein „out“: Ob es die Datei überschrieben hat, ließe sich nicht sagen</translation>
    </message>
    <message>
        <source>1 job done</source>
        <translation>1 Auftrag erledigt</translation>
    </message>
    <message>
        <source>%1 jobs done</source>
        <translation>%1 Aufträge erledigt</translation>
    </message>
</context>
<context>
    <name>Command</name>
    <message>
        <source>Usage: %1</source>
        <translation>Aufruf: %1</translation>
    </message>
    <message>
        <source>Shows this help.</source>
        <translation>Zeigt diese Hilfe.</translation>
    </message>
    <message>
        <source>%1 is missing</source>
        <translation>%1 fehlt</translation>
    </message>
    <message>
        <source>unexpected argument &quot;%1&quot;</source>
        <translation>unerwartetes Argument „%1“</translation>
    </message>
    <message>
        <source>usage: %1</source>
        <translation>Aufruf: %1</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>der Speicher reicht nicht aus</translation>
    </message>
    <message>
        <source>--timeout wants a number of seconds, or 0</source>
        <translation>--timeout erwartet eine Anzahl von Sekunden, oder 0</translation>
    </message>
    <message>
        <source>Gives a file up that takes longer than this; 0 lets it take as long as it likes.</source>
        <translation>Gibt eine Datei auf, die länger braucht; 0 lässt ihr beliebig viel Zeit.</translation>
    </message>
    <message>
        <source>%1: the value is empty</source>
        <translation>%1: Der Wert ist leer</translation>
    </message>
    <message>
        <source>standard output is a terminal, which can&apos;t show a PDF; nothing was written</source>
        <translation>die Standardausgabe ist ein Terminal, das keine PDF zeigen kann; nichts wurde geschrieben</translation>
    </message>
    <message>
        <source>-o - and %1 would be printed into each other</source>
        <translation>-o - und %1 gerieten durcheinander</translation>
    </message>
    <message>
        <source>The PDF to write; &quot;-&quot; is standard output. It may be the input, which is then replaced when the new file is complete.</source>
        <translation>Die zu schreibende PDF; „-“ ist die Standardausgabe. Es darf die Eingabe sein; sie wird dann ersetzt, sobald die neue Datei vollständig ist.</translation>
    </message>
    <message>
        <source>Does not say what was done, only what is wrong.</source>
        <translation>Sagt nicht, was getan wurde, nur was nicht stimmt.</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>Usage: leafwright-cli COMMAND [options] ARGUMENTS
Reads, builds and writes the outline (bookmarks) of PDF files.

Commands:
</source>
        <translation>Aufruf: leafwright-cli BEFEHL [Optionen] ARGUMENTE
Liest, erzeugt und schreibt die Gliederung (Lesezeichen) von PDF-Dateien.

Befehle:
</translation>
    </message>
    <message>
        <source>
&quot;leafwright-cli COMMAND --help&quot; explains a command.
Exit status: 0 done, 1 failed, 2 wrong usage.
</source>
        <translation>
„leafwright-cli BEFEHL --help“ erklärt einen Befehl.
Rückgabewert: 0 erledigt, 1 misslungen, 2 falscher Aufruf.
</translation>
    </message>
    <message>
        <source>no command given; try --help</source>
        <translation>kein Befehl angegeben; siehe --help</translation>
    </message>
    <message>
        <source>there is no command &quot;%1&quot;; try --help</source>
        <translation>es gibt keinen Befehl „%1“; siehe --help</translation>
    </message>
</context>
<context>
    <name>Console</name>
    <message>
        <source>the result could not be written to standard output</source>
        <translation>das Ergebnis ließ sich nicht auf die Standardausgabe schreiben</translation>
    </message>
</context>
<context>
    <name>ContentsCommand</name>
    <message>
        <source>%1: cancelled; nothing was written</source>
        <translation>%1: abgebrochen; es wurde nichts geschrieben</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1: the copy with recognised text can&apos;t be read: %2</source>
        <translation>%1: Die Kopie mit erkanntem Text ist nicht lesbar: %2</translation>
    </message>
    <message>
        <source>%1: the copy with recognised text has other pages</source>
        <translation>%1: Die Kopie mit erkanntem Text hat andere Seiten</translation>
    </message>
    <message>
        <source>%1: page images without text; run text recognition first</source>
        <translation>%1: Bilder von Seiten ohne Text; zuerst muss der Text erkannt werden</translation>
    </message>
    <message>
        <source>%1: no headings were found; the outline stays as it was</source>
        <translation>%1: Es wurden keine Überschriften gefunden; die Gliederung bleibt, wie sie war</translation>
    </message>
    <message>
        <source>--max-depth wants a number from 1</source>
        <translation>--max-depth braucht eine Zahl ab 1</translation>
    </message>
    <message>
        <source>--deeper and --as-printed exclude each other</source>
        <translation>--deeper und --as-printed schließen einander aus</translation>
    </message>
    <message>
        <source>what is printed is of one file; with several, neither --explain nor --report -</source>
        <translation>ausgegeben wird etwas nur zu einer Datei; bei mehreren weder --explain noch --report -</translation>
    </message>
    <message>
        <source>--explain and --report - would be printed into each other</source>
        <translation>--explain und --report - gerieten durcheinander</translation>
    </message>
    <message>
        <source>The deepest level of entries (any).</source>
        <translation>Die tiefste Ebene der Einträge (jede).</translation>
    </message>
    <message>
        <source>Goes deeper than the printed contents, to every heading found.</source>
        <translation>Geht tiefer als das gedruckte Inhaltsverzeichnis, bis zu jeder gefundenen Überschrift.</translation>
    </message>
    <message>
        <source>Goes no deeper than the printed contents, where there are any.</source>
        <translation>Geht nicht tiefer als das gedruckte Inhaltsverzeichnis, wo es eines gibt.</translation>
    </message>
    <message>
        <source>Ignores links, named destinations, page labels and the structure of a tagged PDF.</source>
        <translation>Übergeht Verknüpfungen, benannte Ziele, Seitenbezeichnungen und die Struktur einer PDF mit Tags.</translation>
    </message>
    <message>
        <source>Recognises the text of page images first, in a copy, by the program ocrmypdf.</source>
        <translation>Erkennt zuerst den Text von Seitenbildern, in einer Kopie, mit dem Programm ocrmypdf.</translation>
    </message>
    <message>
        <source>The languages to recognise, such as deu+eng; implies --ocr.</source>
        <translation>Die zu erkennenden Sprachen, etwa deu+eng; schließt --ocr ein.</translation>
    </message>
    <message>
        <source>Adds the entries behind the existing outline.</source>
        <translation>Fügt die Einträge hinter der vorhandenen Gliederung an.</translation>
    </message>
    <message>
        <source>Tells of each entry where it comes from and how sure it is, as JSON; &quot;-&quot; is standard output. With --out-dir, R is a folder, with a report a file.</source>
        <translation>Sagt zu jedem Eintrag, woher er kommt und wie sicher er ist, als JSON; „-“ ist die Standardausgabe. Mit --out-dir ist R ein Ordner, mit einem Bericht je Datei.</translation>
    </message>
    <message>
        <source>Prints what was found at each stage.</source>
        <translation>Gibt aus, was auf jeder Stufe gefunden wurde.</translation>
    </message>
    <message>
        <source>Reads a PDF as a reader does, and makes what it finds the outline.</source>
        <translation>Liest eine PDF wie ein Leser und macht, was es findet, zur Gliederung.</translation>
    </message>
    <message>
        <source>The PDF, or several with --out-dir.</source>
        <translation>Die PDF oder, mit --out-dir, mehrere.</translation>
    </message>
    <message>
        <source>--ocr needs the program ocrmypdf; install the package of that name</source>
        <translation>--ocr braucht das Programm ocrmypdf; installieren Sie das Paket dieses Namens</translation>
    </message>
    <message>
        <source>%1: %2 of %3 pages are without text; --ocr recognises that of images</source>
        <translation>%1: %2 von %3 Seiten sind ohne Text; --ocr erkennt den von Bildern</translation>
    </message>
    <message>
        <source>What the author printed as contents is the outline, as far as there is any; else it is made of the headings, told by their look, numbers, links and names. It takes the place of the outline, unless --keep is given. With --out-dir, several files are done at once, on all cores, each in a process of its own; one that takes more than 60 seconds, or --timeout, is given up. With --ocr, which takes seconds a page, only --timeout limits the time.</source>
        <translation>Was der Autor als Inhaltsverzeichnis gedruckt hat, ist die Gliederung, soweit es eines gibt; sonst besteht sie aus den Überschriften, die an Aussehen, Nummern, Verknüpfungen und Namen erkannt werden. Sie ersetzt die vorhandene, außer mit --keep. Mit --out-dir werden mehrere Dateien zugleich bearbeitet, auf allen Kernen, jede in einem eigenen Prozess; eine, die länger als 60 Sekunden oder --timeout braucht, wird aufgegeben. Mit --ocr, das Sekunden je Seite braucht, begrenzt nur --timeout die Zeit.</translation>
    </message>
    <message>
        <source>; %1 was written</source>
        <translation>; %1 wurde geschrieben</translation>
    </message>
    <message>
        <source>%1: no text was recognised in the page images</source>
        <translation>%1: In den Bildern der Seiten wurde kein Text erkannt</translation>
    </message>
</context>
<context>
    <name>ContentsCommands</name>
    <message>
        <source>The copy with the recognised text has other pages.</source>
        <translation>Die Kopie mit dem erkannten Text hat andere Seiten.</translation>
    </message>
    <message>
        <source>Find Contents</source>
        <translation>Inhalt finden</translation>
    </message>
    <message>
        <source>Reading the pages:</source>
        <translation>Seiten lesen:</translation>
    </message>
    <message>
        <source>The pages are images without text.</source>
        <translation>Die Seiten sind Bilder ohne Text.</translation>
    </message>
    <message>
        <source>The program ocrmypdf can recognise their text; install the package of that name.</source>
        <translation>Das Programm ocrmypdf kann ihren Text erkennen; installieren Sie das Paket dieses Namens.</translation>
    </message>
    <message>
        <source>Languages, such as deu+eng:</source>
        <translation>Sprachen, etwa deu+eng:</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Recognise Text</source>
        <translation>Text erkennen</translation>
    </message>
    <message>
        <source>Recognising the text:</source>
        <translation>Text erkennen:</translation>
    </message>
    <message>
        <source>The text could not be recognised.</source>
        <translation>Der Text konnte nicht erkannt werden.</translation>
    </message>
    <message>
        <source>No headings were found.</source>
        <translation>Es wurden keine Überschriften gefunden.</translation>
    </message>
    <message>
        <source>The outline stays as it was.</source>
        <translation>Die Gliederung bleibt, wie sie war.</translation>
    </message>
    <message>
        <source>Nothing is missing.</source>
        <translation>Es fehlt nichts.</translation>
    </message>
    <message>
        <source>No other heading looks like those of the entries that are there.</source>
        <translation>Keine andere Überschrift sieht aus wie die der vorhandenen Einträge.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>%1 of %2 pages are without text.</source>
        <translation>%1 von %2 Seiten sind ohne Text.</translation>
    </message>
    <message>
        <source>Recognise their text with the program ocrmypdf?</source>
        <translation>Den Text mit dem Programm ocrmypdf erkennen?</translation>
    </message>
    <message>
        <source>That takes some seconds a page. It is done in a copy; the file stays as it is.</source>
        <translation>Das dauert einige Sekunden je Seite. Es geschieht in einer Kopie; die Datei bleibt, wie sie ist.</translation>
    </message>
    <message>
        <source>Go On Without</source>
        <translation>Ohne sie fortfahren</translation>
    </message>
    <message>
        <source>No text was recognised in the page images.</source>
        <translation>In den Bildern der Seiten wurde kein Text erkannt.</translation>
    </message>
    <message>
        <source>Find Contents: %1</source>
        <translation>Inhalt finden: %1</translation>
    </message>
    <message>
        <source>%1 added</source>
        <translation>%1 hinzugefügt</translation>
    </message>
</context>
<context>
    <name>CountText</name>
    <message>
        <source>1 entry</source>
        <translation>1 Eintrag</translation>
    </message>
    <message>
        <source>%1 entries</source>
        <translation>%1 Einträge</translation>
    </message>
    <message>
        <source>1 page</source>
        <translation>1 Seite</translation>
    </message>
    <message>
        <source>%1 pages</source>
        <translation>%1 Seiten</translation>
    </message>
    <message>
        <source>1 file</source>
        <translation>1 Datei</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 Dateien</translation>
    </message>
</context>
<context>
    <name>CpdfBookmarks</name>
    <message>
        <source>not of the form 0 &quot;Title&quot; 12</source>
        <translation>nicht von der Form 0 &quot;Titel&quot; 12</translation>
    </message>
    <message>
        <source>its level is deeper by more than one</source>
        <translation>die Ebene ist um mehr als eine tiefer</translation>
    </message>
</context>
<context>
    <name>EditMenuCommands</name>
    <message>
        <source>“%1” takes changes of the outline back, “%2” does them again.</source>
        <translation>„%1“ nimmt Änderungen der Gliederung zurück, „%2“ macht sie wieder.</translation>
    </message>
</context>
<context>
    <name>EntriesElsewhere</name>
    <message>
        <source>“%1” (page %2, now %3)</source>
        <translation>„%1“ (Seite %2, jetzt %3)</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 und %2 weitere</translation>
    </message>
</context>
<context>
    <name>EntryParts</name>
    <message>
        <source>there is no page %1; the pages are 1 to %2</source>
        <translation>es gibt keine Seite %1; die Seiten sind 1 bis %2</translation>
    </message>
</context>
<context>
    <name>ExchangeCommands</name>
    <message>
        <source>Export Outline</source>
        <translation>Gliederung exportieren</translation>
    </message>
    <message>
        <source>%1 was not written: the end of its name does not say in which form. Names may end in one of these: %2.</source>
        <translation>%1 wurde nicht geschrieben: Die Endung des Namens sagt nicht, in welcher Form. Namen können so enden: %2.</translation>
    </message>
    <message>
        <source>%1 was not written: it is the PDF that is open.</source>
        <translation>%1 wurde nicht geschrieben: Es ist die PDF, die offen ist.</translation>
    </message>
    <message>
        <source>Import Outline</source>
        <translation>Gliederung importieren</translation>
    </message>
    <message>
        <source>the file can&apos;t be read: %1</source>
        <translation>die Datei kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>what it holds is in none of the forms that its name allows</source>
        <translation>was darin steht, hat keine der Formen, die der Name zulässt</translation>
    </message>
    <message>
        <source>Do you want to replace the outline that is there?</source>
        <translation>Soll die vorhandene Gliederung ersetzt werden?</translation>
    </message>
    <message>
        <source>Otherwise the imported entries come behind its own. Step Back takes either back.</source>
        <translation>Sonst kommen die importierten Einträge hinter ihre eigenen. „Schritt zurück“ nimmt beides zurück.</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>%1 was not written: in this form, the outline is larger than %2 MB.</source>
        <translation>%1 wurde nicht geschrieben: In dieser Form ist die Gliederung größer als %2 MB.</translation>
    </message>
    <message>
        <source>%1: this form counts pages, and no page is known to have the label of %2 entries, the first of which is “%3”. They lead nowhere there.</source>
        <translation>%1: Diese Form zählt die Seiten, und von keiner ist bekannt, dass sie die Bezeichnung von %2 Einträgen hat, deren erste „%3“ ist. Sie führen dort nirgendwohin.</translation>
    </message>
    <message>
        <source>No page is known to have the label of %1 imported entries, the first of which is “%2”. When they are saved, they lead to the first page.</source>
        <translation>Von keiner Seite ist bekannt, dass sie die Bezeichnung von %1 importierten Einträgen hat, deren erste „%2“ ist. Gesichert führen sie auf die erste Seite.</translation>
    </message>
    <message>
        <source>%1 imported entries did something that only the file has that they come from. They lead nowhere now.</source>
        <translation>%1 importierte Einträge haben etwas ausgeführt, was nur die Datei hat, aus der sie stammen. Sie führen jetzt nirgendwohin.</translation>
    </message>
    <message>
        <source>Exported, %1</source>
        <translation>Exportiert, %1</translation>
    </message>
    <message>
        <source>Imported, %1</source>
        <translation>Importiert, %1</translation>
    </message>
    <message>
        <source>%1 imported entries have an action beside their page. They lead to the page, without the action.</source>
        <translation>%1 importierte Einträge haben neben ihrer Seite eine Aktion. Sie führen zur Seite, ohne die Aktion.</translation>
    </message>
</context>
<context>
    <name>FileAttributes</name>
    <message>
        <source>its extended attributes could not be kept</source>
        <translation>ihre erweiterten Attribute ließen sich nicht erhalten</translation>
    </message>
    <message>
        <source>its access list could not be kept</source>
        <translation>ihre Zugriffsliste ließ sich nicht erhalten</translation>
    </message>
    <message>
        <source>its extended attribute &quot;%1&quot; could not be kept</source>
        <translation>ihr erweitertes Attribut „%1“ ließ sich nicht erhalten</translation>
    </message>
    <message>
        <source>it belonged to another user, and belongs to you now</source>
        <translation>sie gehörte jemand anderem und gehört jetzt Ihnen</translation>
    </message>
    <message>
        <source>its group could not be kept</source>
        <translation>ihre Gruppe ließ sich nicht erhalten</translation>
    </message>
    <message>
        <source>its permissions could not be kept</source>
        <translation>ihre Zugriffsrechte ließen sich nicht erhalten</translation>
    </message>
</context>
<context>
    <name>FileClash</name>
    <message>
        <source>%1 is read, and would be overwritten; nothing was written</source>
        <translation>%1 wird gelesen und würde überschrieben; nichts wurde geschrieben</translation>
    </message>
    <message>
        <source>two results would be written to %1; nothing was written</source>
        <translation>zwei Ergebnisse kämen nach %1; nichts wurde geschrieben</translation>
    </message>
    <message>
        <source>standard output leads to a file that is read; nothing was written</source>
        <translation>die Standardausgabe führt in eine Datei, die gelesen wird; nichts wurde geschrieben</translation>
    </message>
</context>
<context>
    <name>FileOnDisk</name>
    <message>
        <source>another program has written to it since it was read; open it again</source>
        <translation>ein anderes Programm hat hineingeschrieben, seit die Datei gelesen wurde; bitte noch einmal öffnen</translation>
    </message>
    <message>
        <source>another program has written to %1 since it was read; open that again</source>
        <translation>ein anderes Programm hat in %1 geschrieben, seit diese Datei gelesen wurde; bitte diese noch einmal öffnen</translation>
    </message>
    <message>
        <source>another program has put another file there since this one was read; open that, or write to another place</source>
        <translation>ein anderes Programm hat eine andere Datei dorthin gelegt, seit diese gelesen wurde; bitte jene öffnen oder an einen anderen Ort schreiben</translation>
    </message>
    <message>
        <source>it is no longer where it was read; write to another place</source>
        <translation>die Datei ist nicht mehr da, wo sie gelesen wurde; bitte an einen anderen Ort schreiben</translation>
    </message>
    <message>
        <source>whether another program has changed %1 since it was read can&apos;t be told: %2</source>
        <translation>ob ein anderes Programm %1 geändert hat, seit die Datei gelesen wurde, lässt sich nicht feststellen: %2</translation>
    </message>
</context>
<context>
    <name>FileReading</name>
    <message>
        <source>the folder that this program was started in is gone, and with it what a relative path begins at; go to another folder, or give the whole path</source>
        <translation>der Ordner, in dem dieses Programm gestartet wurde, ist nicht mehr da, und mit ihm, wo ein relativer Pfad beginnt; wechseln Sie in einen anderen Ordner, oder geben Sie den ganzen Pfad an</translation>
    </message>
    <message>
        <source>it is larger than %1 MB</source>
        <translation>sie ist größer als %1 MB</translation>
    </message>
</context>
<context>
    <name>FileReplacement</name>
    <message>
        <source>it had other names (hard links), which still lead to the old file</source>
        <translation>sie hatte weitere Namen (harte Links), die noch zur alten Datei führen</translation>
    </message>
    <message>
        <source>nobody reads from this pipe</source>
        <translation>niemand liest aus dieser Pipe</translation>
    </message>
    <message>
        <source>%1 was written, but may not outlive a power failure: %2</source>
        <translation>%1 wurde geschrieben, übersteht aber vielleicht keinen Stromausfall: %2</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 ließ sich nicht schreiben: %2</translation>
    </message>
    <message>
        <source>%1 could not be put back as it was: %2</source>
        <translation>%1 ließ sich nicht wiederherstellen: %2</translation>
    </message>
    <message>
        <source>the file system gives no file a second name</source>
        <translation>das Dateisystem gibt keiner Datei einen zweiten Namen</translation>
    </message>
    <message>
        <source>another program gives files other names there at the same time; what it has left is in %1</source>
        <translation>ein anderes Programm benennt dort zur selben Zeit Dateien um; was es hinterlassen hat, steht in %1</translation>
    </message>
    <message>
        <source>another program has put another file there meanwhile</source>
        <translation>ein anderes Programm hat inzwischen eine andere Datei dorthin gelegt</translation>
    </message>
    <message>
        <source>no temporary file can be made in %1: %2</source>
        <translation>in %1 lässt sich keine temporäre Datei anlegen: %2</translation>
    </message>
    <message>
        <source>a PDF stands there, which only a PDF may replace</source>
        <translation>dort steht eine PDF-Datei, die nur eine PDF-Datei ersetzen darf</translation>
    </message>
    <message>
        <source>a file with the name of a PDF stands there, which only a PDF may replace</source>
        <translation>dort steht eine Datei mit dem Namen einer PDF-Datei, die nur eine PDF-Datei ersetzen darf</translation>
    </message>
</context>
<context>
    <name>FileTarget</name>
    <message>
        <source>it is a folder</source>
        <translation>es ist ein Ordner</translation>
    </message>
    <message>
        <source>it is a socket; only a file can be replaced</source>
        <translation>es ist ein Socket; nur eine Datei lässt sich ersetzen</translation>
    </message>
    <message>
        <source>it is a device; only a file can be replaced</source>
        <translation>es ist ein Gerät; nur eine Datei lässt sich ersetzen</translation>
    </message>
</context>
<context>
    <name>FindCommands</name>
    <message>
        <source>Searching…</source>
        <translation>Sucht …</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>%1 found so far</source>
        <translation>Bisher %1 gefunden</translation>
    </message>
    <message>
        <source>%1 of %2 so far</source>
        <translation>%1 von bisher %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>%1, from the beginning again</source>
        <translation>%1, wieder von vorn</translation>
    </message>
    <message>
        <source>%1, from the end again</source>
        <translation>%1, wieder von hinten</translation>
    </message>
    <message>
        <source>Not enough memory to search all pages</source>
        <translation>Zu wenig Speicher, um alle Seiten zu durchsuchen</translation>
    </message>
</context>
<context>
    <name>FontsCommand</name>
    <message>
        <source>Counts the fonts and guesses which are headings, as JSON.</source>
        <translation>Zählt die Schriften und vermutet, welche Überschriften sind, als JSON.</translation>
    </message>
    <message>
        <source>&quot;census&quot; has every font of the text with its number of characters and runs; &quot;map&quot; has the fonts larger than the body text&apos;s with the heading level guessed for each.</source>
        <translation>„census“ enthält jede Schrift des Texts mit der Zahl ihrer Zeichen und Läufe; „map“ enthält die Schriften, die größer als die des Fließtexts sind, mit der für jede vermuteten Ebene.</translation>
    </message>
    <message>
        <source>The PDF.</source>
        <translation>Die PDF.</translation>
    </message>
    <message>
        <source>Also saves the guessed map to a file that &quot;autotoc --map&quot; reads, to be edited.</source>
        <translation>Speichert die vermutete Tabelle auch in eine Datei, die „autotoc --map“ liest, zum Bearbeiten.</translation>
    </message>
    <message>
        <source>%1: %2 fonts, %3 of them of headings</source>
        <translation>%1: %2 Schriften, davon %3 von Überschriften</translation>
    </message>
</context>
<context>
    <name>HashFile</name>
    <message>
        <source>the temporary files can&apos;t be used: %1</source>
        <translation>die temporären Dateien lassen sich nicht verwenden: %1</translation>
    </message>
</context>
<context>
    <name>HeadingMapCommands</name>
    <message>
        <source>Save Heading Map</source>
        <translation>Überschriftentabelle speichern</translation>
    </message>
    <message>
        <source>Load Heading Map</source>
        <translation>Überschriftentabelle laden</translation>
    </message>
    <message>
        <source>%1: the map can&apos;t be read: %2</source>
        <translation>%1: Die Tabelle ist nicht lesbar: %2</translation>
    </message>
    <message>
        <source>%1:%2: the text is not UTF-8</source>
        <translation>%1:%2: Der Text ist nicht UTF-8</translation>
    </message>
    <message>
        <source>The heading map was emptied.</source>
        <translation>Die Überschriftentabelle wurde geleert.</translation>
    </message>
    <message>
        <source>Bring It Back</source>
        <translation>Zurückholen</translation>
    </message>
</context>
<context>
    <name>HeadingMapFile</name>
    <message>
        <source>%1: the map can&apos;t be read: %2</source>
        <translation>%1: Die Tabelle ist nicht lesbar: %2</translation>
    </message>
    <message>
        <source>%1:%2: not of the form H1/18.0/&quot;Times&quot; +B; the line is passed over</source>
        <translation>%1:%2: nicht von der Form H1/18.0/&quot;Times&quot; +B; die Zeile wird übergangen</translation>
    </message>
    <message>
        <source>%1: there is no heading font in this map</source>
        <translation>%1: In dieser Tabelle steht keine Schrift einer Überschrift</translation>
    </message>
    <message>
        <source>%1:%2: the text is not UTF-8</source>
        <translation>%1:%2: Der Text ist nicht UTF-8</translation>
    </message>
</context>
<context>
    <name>HtmlOutline</name>
    <message>
        <source>a list ends that has not begun</source>
        <translation>eine Liste endet, die nicht begonnen hat</translation>
    </message>
    <message>
        <source>an item (li) stands in no list</source>
        <translation>ein Listenpunkt (li) steht in keiner Liste</translation>
    </message>
    <message>
        <source>a link leads neither to a page (#page=12) nor to an address of the web</source>
        <translation>ein Verweis führt weder auf eine Seite (#page=12) noch zu einer Adresse im Netz</translation>
    </message>
    <message>
        <source>a tag or a comment does not end</source>
        <translation>eine Auszeichnung oder ein Kommentar endet nicht</translation>
    </message>
    <message>
        <source>a list does not end</source>
        <translation>eine Liste endet nicht</translation>
    </message>
    <message>
        <source>there is no list in it</source>
        <translation>darin ist keine Liste</translation>
    </message>
</context>
<context>
    <name>InfoCommand</name>
    <message>
        <source>Tells what kind of file a PDF is, as JSON.</source>
        <translation>Sagt, was für eine Datei eine PDF ist, als JSON.</translation>
    </message>
    <message>
        <source>The number of pages, the version, and whether the file is locked (needs a password), encrypted, damaged and repaired on opening, signed, and has an outline. Of a locked file, the pages and what is on them can&apos;t be told.</source>
        <translation>Die Zahl der Seiten, die Version und ob die Datei gesperrt (braucht ein Passwort), verschlüsselt, beschädigt und beim Öffnen repariert, signiert ist und eine Gliederung hat. Von einer gesperrten Datei sind die Seiten und ihr Inhalt nicht zu erfahren.</translation>
    </message>
    <message>
        <source>The PDF.</source>
        <translation>Die PDF.</translation>
    </message>
</context>
<context>
    <name>JobCommand</name>
    <message>
        <source>&quot;%1&quot; is no command of a batch; there are %2</source>
        <translation>&quot;%1&quot; ist kein Befehl für viele Dateien; es gibt %2</translation>
    </message>
    <message>
        <source>--%1 is not for all jobs; each says it in its line</source>
        <translation>--%1 gilt nicht für alle Aufträge; jeder sagt es in seiner Zeile</translation>
    </message>
    <message>
        <source>--%1: the value is empty</source>
        <translation>--%1: der Wert ist leer</translation>
    </message>
    <message>
        <source>standard input has the jobs</source>
        <translation>die Standardeingabe hat die Aufträge</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: the files are told by standard input</source>
        <translation>&quot;%1&quot;: die Dateien nennt die Standardeingabe</translation>
    </message>
    <message>
        <source>%1 has no option &quot;%2&quot;</source>
        <translation>%1 hat keine Option &quot;%2&quot;</translation>
    </message>
    <message>
        <source>&quot;%1&quot; wants a text or a number</source>
        <translation>&quot;%1&quot; verlangt einen Text oder eine Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; wants true or false</source>
        <translation>&quot;%1&quot; verlangt true oder false</translation>
    </message>
    <message>
        <source>&quot;%1&quot; wants a path</source>
        <translation>&quot;%1&quot; verlangt einen Pfad</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing</source>
        <translation>&quot;%1&quot; fehlt</translation>
    </message>
    <message>
        <source>&quot;out&quot; is missing, and there is no --out-dir</source>
        <translation>&quot;out&quot; fehlt, und --out-dir ist nicht angegeben</translation>
    </message>
</context>
<context>
    <name>JobLog</name>
    <message>
        <source>%1: the log can&apos;t be used: %2</source>
        <translation>%1: das Protokoll kann nicht benutzt werden: %2</translation>
    </message>
    <message>
        <source>it is no file</source>
        <translation>es ist keine Datei</translation>
    </message>
    <message>
        <source>another batch is writing to it</source>
        <translation>ein anderer Lauf schreibt gerade hinein</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>line %1 is too long for one of a log</source>
        <translation>Zeile %1 ist zu lang für ein Protokoll</translation>
    </message>
    <message>
        <source>its last line is not what a batch has written</source>
        <translation>seine letzte Zeile hat kein Lauf geschrieben</translation>
    </message>
    <message>
        <source>line %1 is not what a batch has written</source>
        <translation>Zeile %1 hat kein Lauf geschrieben</translation>
    </message>
    <message>
        <source>its only line was cut off before it could be told from other files; if it is a log, remove it</source>
        <translation>seine einzige Zeile ist abgeschnitten, ehe sie sich von anderen Dateien unterscheiden ließe; wenn es ein Protokoll ist, entfernen Sie es</translation>
    </message>
</context>
<context>
    <name>JsonNodeChecks</name>
    <message>
        <source>keys that are not known were passed over, with all that they hold: %1; known are %2</source>
        <translation>unbekannte Schlüssel wurden übergangen, mit allem, was sie enthalten: %1; bekannt sind %2</translation>
    </message>
</context>
<context>
    <name>JsonNodes</name>
    <message>
        <source>a node must be an object</source>
        <translation>ein Knoten muss ein Objekt sein</translation>
    </message>
    <message>
        <source>&quot;title&quot; must be a string</source>
        <translation>„title“ muss eine Zeichenkette sein</translation>
    </message>
    <message>
        <source>&quot;children&quot; must be an array</source>
        <translation>„children“ muss ein Feld sein</translation>
    </message>
    <message>
        <source>&quot;pageLabel&quot; must be a string or null</source>
        <translation>„pageLabel“ muss eine Zeichenkette oder null sein</translation>
    </message>
    <message>
        <source>&quot;pageIndex&quot; must be a page, from 0 to %1</source>
        <translation>„pageIndex“ muss eine Seite sein, von 0 bis %1</translation>
    </message>
    <message>
        <source>&quot;point&quot; must be two numbers, [x, y], in points</source>
        <translation>„point“ muss aus zwei Zahlen bestehen, [x, y], in Punkt</translation>
    </message>
    <message>
        <source>&quot;entry&quot; must be an object number or null</source>
        <translation>&quot;entry&quot; muss eine Objektnummer oder null sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be true or false</source>
        <translation>&quot;%1&quot; muss true oder false sein</translation>
    </message>
    <message>
        <source>&quot;color&quot; must be null or three numbers from 0 to 1, [red, green, blue]</source>
        <translation>&quot;color&quot; muss null oder drei Zahlen von 0 bis 1 sein, [Rot, Grün, Blau]</translation>
    </message>
    <message>
        <source>&quot;action&quot; must be null or an object with a &quot;type&quot;</source>
        <translation>&quot;action&quot; muss null oder ein Objekt mit einem &quot;type&quot; sein</translation>
    </message>
    <message>
        <source>an &quot;action&quot; of type %1 must have a &quot;%2&quot;</source>
        <translation>eine &quot;action&quot; vom Typ %1 braucht ein &quot;%2&quot;</translation>
    </message>
    <message>
        <source>an outline in JSON is an array of nodes</source>
        <translation>eine Gliederung in JSON ist ein Feld von Knoten</translation>
    </message>
    <message>
        <source>the outline was made of another file, or of an earlier edition: what only the entries of this file have is not kept</source>
        <translation>die Gliederung wurde aus einer anderen Datei gemacht oder aus einer früheren Ausgabe: Was nur die Einträge dieser Datei haben, bleibt nicht erhalten</translation>
    </message>
</context>
<context>
    <name>JsonText</name>
    <message>
        <source>the JSON is nested too deeply; plus lines hold outlines of any depth</source>
        <translation>das JSON ist zu tief verschachtelt; Plus-Zeilen fassen Gliederungen jeder Tiefe</translation>
    </message>
</context>
<context>
    <name>LabelsCommand</name>
    <message>
        <source>Lists the page labels, as a JSON array by page.</source>
        <translation>Listet die Seitenbezeichnungen auf, als JSON-Feld nach Seiten.</translation>
    </message>
    <message>
        <source>A label is a page&apos;s printed name, such as &quot;iv&quot;. A page without one has its number, counted from 1.</source>
        <translation>Eine Bezeichnung ist der gedruckte Name einer Seite, wie „iv“. Eine Seite ohne hat ihre Nummer, ab 1 gezählt.</translation>
    </message>
    <message>
        <source>The PDF.</source>
        <translation>Die PDF.</translation>
    </message>
</context>
<context>
    <name>MarkdownOutline</name>
    <message>
        <source>not of the form &quot;- [Title](#page=12)&quot;</source>
        <translation>nicht von der Form „- [Titel](#page=12)“</translation>
    </message>
</context>
<context>
    <name>MiniTOCCommand</name>
    <message>
        <source>there is no page %1; the pages are 1 to %2</source>
        <translation>es gibt keine Seite %1; die Seiten sind 1 bis %2</translation>
    </message>
    <message>
        <source>page %1 has no text &quot;%2&quot;</source>
        <translation>Seite %1 hat keinen Text „%2“</translation>
    </message>
    <message>
        <source>Finds headings by example, and adds them to the outline of a PDF.</source>
        <translation>Findet Überschriften nach einem Beispiel und fügt sie der Gliederung einer PDF hinzu.</translation>
    </message>
    <message>
        <source>SAMPLE is a heading&apos;s text, or as much of it as shows its fonts. Every place in the PDF where text has the same fonts in the same order is a heading; they go below one new entry, &quot;MiniTOC&quot;, at the end of the outline.</source>
        <translation>SAMPLE ist der Text einer Überschrift, oder so viel davon, dass ihre Schriften zu sehen sind. Jede Stelle der PDF, an der Text dieselben Schriften in derselben Folge hat, ist eine Überschrift; sie kommen unter einen neuen Eintrag, „MiniTOC“, am Ende der Gliederung.</translation>
    </message>
    <message>
        <source>The PDF.</source>
        <translation>Die PDF.</translation>
    </message>
    <message>
        <source>The page that has the sample, counted from 1.</source>
        <translation>Die Seite mit dem Beispiel, ab 1 gezählt.</translation>
    </message>
    <message>
        <source>The sample. Where the page has it more than once, the first counts.</source>
        <translation>Das Beispiel. Wo die Seite es mehrmals hat, zählt das erste.</translation>
    </message>
    <message>
        <source>-o OUT is missing</source>
        <translation>-o OUT fehlt</translation>
    </message>
    <message>
        <source>--page N is missing</source>
        <translation>--page N fehlt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no page number</source>
        <translation>„%1“ ist keine Seitennummer</translation>
    </message>
    <message>
        <source>--text SAMPLE is missing</source>
        <translation>--text SAMPLE fehlt</translation>
    </message>
</context>
<context>
    <name>MuPDFContext</name>
    <message>
        <source>it was cut short by another program</source>
        <translation>ein anderes Programm hat sie gekürzt</translation>
    </message>
    <message>
        <source>it takes more memory than a file may have</source>
        <translation>sie braucht mehr Speicher, als einer Datei zusteht</translation>
    </message>
    <message>
        <source>there is not enough memory for it</source>
        <translation>für sie ist nicht genug Speicher da</translation>
    </message>
    <message>
        <source>the text of its page %1 takes longer to read than a page may take</source>
        <translation>den Text ihrer Seite %1 zu lesen dauert länger, als einer Seite zusteht</translation>
    </message>
</context>
<context>
    <name>MuPDFEngine</name>
    <message>
        <source>the file is empty</source>
        <translation>die Datei ist leer</translation>
    </message>
    <message>
        <source>it holds no pages</source>
        <translation>sie enthält keine Seiten</translation>
    </message>
    <message>
        <source>the file could not be read whole, and nothing is to be lost: %1</source>
        <translation>die Datei ließ sich nicht ganz lesen, und nichts soll verloren gehen: %1</translation>
    </message>
    <message>
        <source>no thread can be started: %1</source>
        <translation>es lässt sich kein Thread starten: %1</translation>
    </message>
    <message>
        <source>This is not the password.</source>
        <translation>Das ist nicht das Passwort.</translation>
    </message>
</context>
<context>
    <name>NavigationCommands</name>
    <message>
        <source>Page %1 (%2 of %3)</source>
        <translation>Seite %1 (%2 von %3)</translation>
    </message>
    <message>
        <source>Go to Page</source>
        <translation>Gehe zu Seite</translation>
    </message>
    <message>
        <source>&amp;Label or number:</source>
        <translation>&amp;Bezeichnung oder Nummer:</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Los</translation>
    </message>
    <message>
        <source>There is no such page.</source>
        <translation>Diese Seite gibt es nicht.</translation>
    </message>
</context>
<context>
    <name>OpenFile</name>
    <message>
        <source>%1: this PDF is locked: it can&apos;t be read without its password. Save a copy without a password first.</source>
        <translation>%1: Diese PDF ist gesperrt und ohne ihr Passwort nicht lesbar. Speichern Sie zuerst eine Kopie ohne Passwort.</translation>
    </message>
    <message>
        <source>%1: there is no such file</source>
        <translation>%1: Diese Datei gibt es nicht</translation>
    </message>
    <message>
        <source>%1: the file can&apos;t be read: %2</source>
        <translation>%1: Die Datei ist nicht lesbar: %2</translation>
    </message>
    <message>
        <source>%1: this is not a PDF that can be read, even after repair: %2</source>
        <translation>%1: Das ist keine lesbare PDF, auch nicht nach einer Reparatur: %2</translation>
    </message>
    <message>
        <source>%1: this PDF is encrypted: its outline can&apos;t be edited. Save a copy without encryption first.</source>
        <translation>%1: Diese PDF ist verschlüsselt, ihre Gliederung lässt sich nicht bearbeiten. Speichern Sie zuerst eine Kopie ohne Verschlüsselung.</translation>
    </message>
    <message>
        <source>Entries whose page label was not edited keep the page that they came with; without this, they lead to the last page that has their label.</source>
        <translation>Einträge, deren Seitenbezeichnung nicht bearbeitet wurde, behalten die Seite, mit der sie kamen; sonst führen sie zur letzten Seite mit ihrer Bezeichnung.</translation>
    </message>
    <message>
        <source>%1: %2 entries lead elsewhere now, to the last page with their label: %3; --keep-pages keeps their pages</source>
        <translation>%1: %2 Einträge führen jetzt woandershin, zur letzten Seite mit ihrer Bezeichnung: %3; --keep-pages behält ihre Seiten bei</translation>
    </message>
    <message>
        <source>%1: %2 entries lead elsewhere now, for a page label that begins with &quot;p&quot; is read as a printed page number: %3; --keep-pages keeps their pages</source>
        <translation>%1: %2 Einträge führen jetzt woandershin, denn eine Seitenbezeichnung, die mit „p“ beginnt, wird als gedruckte Seitenzahl gelesen: %3; --keep-pages behält ihre Seiten bei</translation>
    </message>
</context>
<context>
    <name>OpmlOutline</name>
    <message>
        <source>an outline element must have the attribute text</source>
        <translation>ein Element outline muss das Attribut text haben</translation>
    </message>
    <message>
        <source>a link leads neither to a page (#page=12) nor to an address of the web</source>
        <translation>ein Verweis führt weder auf eine Seite (#page=12) noch zu einer Adresse im Netz</translation>
    </message>
    <message>
        <source>the attribute page must be a number</source>
        <translation>das Attribut page muss eine Zahl sein</translation>
    </message>
    <message>
        <source>it declares entities or other things, which are not read</source>
        <translation>es vereinbart Entitäten oder anderes, was nicht gelesen wird</translation>
    </message>
    <message>
        <source>it is no OPML</source>
        <translation>es ist kein OPML</translation>
    </message>
    <message>
        <source>an element has too many attributes</source>
        <translation>ein Element hat zu viele Attribute</translation>
    </message>
</context>
<context>
    <name>OtherPrograms</name>
    <message>
        <source>Another program has written to “%1”, and the pages that are shown here are no longer in it. Load its new pages to go on; the outline stays as you have it.</source>
        <translation>Ein anderes Programm hat in „%1“ geschrieben, und die Seiten, die hier zu sehen sind, stehen nicht mehr darin. Laden Sie die neuen Seiten, um weiterzuarbeiten; die Gliederung bleibt, wie Sie sie haben.</translation>
    </message>
    <message>
        <source>Another program has replaced “%1”. Load its new pages, and the outline stays as you have it; or save what is shown here in another place.</source>
        <translation>Ein anderes Programm hat „%1“ ersetzt. Laden Sie die neuen Seiten, und die Gliederung bleibt, wie Sie sie haben; oder speichern Sie an einem anderen Ort, was hier zu sehen ist.</translation>
    </message>
    <message>
        <source>“%1” is no longer where it was. What is shown here can still be saved.</source>
        <translation>„%1“ ist nicht mehr da, wo es war. Was hier zu sehen ist, lässt sich noch speichern.</translation>
    </message>
    <message>
        <source>Whether another program has changed “%1” can’t be told at the moment.</source>
        <translation>Ob ein anderes Programm „%1“ geändert hat, lässt sich im Moment nicht feststellen.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>“%1” is no longer where it was</source>
        <translation>„%1“ ist nicht mehr da, wo es war</translation>
    </message>
    <message>
        <source>It was removed or given another name, or its folder is not there at the moment. Saving it here makes it anew.</source>
        <translation>Die Datei wurde gelöscht oder umbenannt, oder ihr Ordner ist im Moment nicht da. Beim Speichern an dieser Stelle entsteht sie neu.</translation>
    </message>
    <message>
        <source>Save Here</source>
        <translation>Hier speichern</translation>
    </message>
    <message>
        <source>Saving here puts the pages that are shown in place of whatever is there now.</source>
        <translation>Beim Speichern an dieser Stelle kommen die Seiten, die hier zu sehen sind, an die Stelle dessen, was jetzt dort ist.</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Another program has replaced “%1”</source>
        <translation>Ein anderes Programm hat „%1“ ersetzt</translation>
    </message>
    <message>
        <source>Load New Pages</source>
        <translation>Neue Seiten laden</translation>
    </message>
    <message>
        <source>Another program has written to “%1”</source>
        <translation>Ein anderes Programm hat in „%1“ geschrieben</translation>
    </message>
    <message>
        <source>The pages that are shown here are no longer in the file, so they can’t be saved. Loading its new pages keeps the outline as you have it, to be saved then.</source>
        <translation>Die Seiten, die hier zu sehen sind, stehen nicht mehr in der Datei und lassen sich nicht speichern. Beim Laden der neuen Seiten bleibt die Gliederung, wie Sie sie haben, und kann dann gespeichert werden.</translation>
    </message>
    <message>
        <source>Do you want to keep the outline while “%1” is loaded again?</source>
        <translation>Möchten Sie die Gliederung behalten, wenn „%1“ neu geladen wird?</translation>
    </message>
    <message>
        <source>Its entries are found again by their page labels. If the outline that the file has now takes its place, yours is lost.</source>
        <translation>Ihre Einträge werden an den Seitenbezeichnungen wiedergefunden. Kommt die Gliederung, die die Datei jetzt hat, an ihre Stelle, geht Ihre verloren.</translation>
    </message>
    <message>
        <source>Keep Outline</source>
        <translation>Gliederung behalten</translation>
    </message>
    <message>
        <source>Take Outline of File</source>
        <translation>Gliederung der Datei nehmen</translation>
    </message>
</context>
<context>
    <name>OutlineCommand</name>
    <message>
        <source>The PDF.</source>
        <translation>Die PDF.</translation>
    </message>
    <message>
        <source>Prints the outline, as JSON, plus lines, text or in a form of other programs.</source>
        <translation>Gibt die Gliederung aus, als JSON, Plus-Zeilen, Text oder in einer Form anderer Programme.</translation>
    </message>
    <message>
        <source>JSON nodes have title, pageLabel, pageIndex (from 0), point ([x, y] in points from the page&apos;s lower left; [0, 0] is no particular spot) and children. Plus lines have one &quot;+&quot; a level, &quot;@&quot; and the page label, and the title. &quot;apply&quot; reads all formats but text.</source>
        <translation>JSON-Knoten haben title, pageLabel, pageIndex (ab 0), point ([x, y] in Punkt von links unten auf der Seite; [0, 0] ist keine bestimmte Stelle) und children. Plus-Zeilen haben je Ebene ein „+“, „@“ mit der Seitenbezeichnung und den Titel. „apply“ liest alle Formate außer text.</translation>
    </message>
    <message>
        <source>One of %1; the first is the default.</source>
        <translation>Eines von %1; das erste gilt von selbst.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no format; there are %2</source>
        <translation>„%1“ ist kein Format; es gibt %2</translation>
    </message>
</context>
<context>
    <name>OutlineDocument</name>
    <message>
        <source>The file is locked or encrypted now, and its outline could not be saved.</source>
        <translation>Die Datei ist jetzt gesperrt oder verschlüsselt, und ihre Gliederung ließe sich nicht speichern.</translation>
    </message>
</context>
<context>
    <name>OutlineFormat</name>
    <message>
        <source>it is larger than %1 MB</source>
        <translation>sie ist größer als %1 MB</translation>
    </message>
    <message>
        <source>there is no entry in it; [] in JSON says that no outline is wanted</source>
        <translation>darin steht kein Eintrag; [] in JSON sagt, dass keine Gliederung gewünscht ist</translation>
    </message>
</context>
<context>
    <name>OutlineOutput</name>
    <message>
        <source>Where the PDFs go that are made of several files, under their own names; made if it is not there.</source>
        <translation>Wohin die aus mehreren Dateien entstehenden PDFs kommen, unter ihren eigenen Namen; wird angelegt, wenn nicht vorhanden.</translation>
    </message>
    <message>
        <source>either -o OUT or --out-dir DIR must be given</source>
        <translation>Entweder -o OUT oder --out-dir DIR ist anzugeben</translation>
    </message>
    <message>
        <source>several files need --out-dir DIR</source>
        <translation>Mehrere Dateien brauchen --out-dir DIR</translation>
    </message>
    <message>
        <source>two of the files are named &quot;%1&quot;</source>
        <translation>Zwei der Dateien heißen „%1“</translation>
    </message>
    <message>
        <source>%1: the folder could not be made: %2</source>
        <translation>%1: Der Ordner ließ sich nicht anlegen: %2</translation>
    </message>
    <message>
        <source>%1: %2 written</source>
        <translation>%1: %2 geschrieben</translation>
    </message>
    <message>
        <source>standard output</source>
        <translation>Standardausgabe</translation>
    </message>
    <message>
        <source>%1 written, %2</source>
        <translation>%1 geschrieben, %2</translation>
    </message>
</context>
<context>
    <name>OutputFile</name>
    <message>
        <source>the original was cut short by another program</source>
        <translation>die Vorlage wurde von einem anderen Programm gekürzt</translation>
    </message>
</context>
<context>
    <name>PDFDocument</name>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 ließ sich nicht schreiben: %2</translation>
    </message>
    <message>
        <source>%1 could not be written: it is locked, and without its password nothing of it can be read</source>
        <translation>%1 ließ sich nicht schreiben: Die Datei ist gesperrt, und ohne ihr Kennwort lässt sich nichts daraus lesen</translation>
    </message>
    <message>
        <source>it is encrypted</source>
        <translation>sie ist verschlüsselt</translation>
    </message>
    <message>
        <source>%1: it was damaged and has been written new</source>
        <translation>%1: Die Datei war beschädigt und wurde neu geschrieben</translation>
    </message>
</context>
<context>
    <name>PdfcpuBookmarks</name>
    <message>
        <source>&quot;color&quot; must have R, G and B, numbers from 0 to 1</source>
        <translation>„color“ muss R, G und B haben, Zahlen von 0 bis 1</translation>
    </message>
    <message>
        <source>a bookmark must be an object</source>
        <translation>ein Lesezeichen muss ein Objekt sein</translation>
    </message>
    <message>
        <source>&quot;title&quot; must be a string</source>
        <translation>„title“ muss eine Zeichenkette sein</translation>
    </message>
    <message>
        <source>&quot;page&quot; must be the number of a page</source>
        <translation>„page“ muss die Nummer einer Seite sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be true or false</source>
        <translation>&quot;%1&quot; muss true oder false sein</translation>
    </message>
    <message>
        <source>&quot;kids&quot; must be an array</source>
        <translation>„kids“ muss ein Feld sein</translation>
    </message>
    <message>
        <source>there is no array &quot;bookmarks&quot; in it</source>
        <translation>darin ist kein Feld „bookmarks“</translation>
    </message>
</context>
<context>
    <name>PdftkBookmarks</name>
    <message>
        <source>there is no BookmarkBegin before it</source>
        <translation>davor steht kein BookmarkBegin</translation>
    </message>
    <message>
        <source>neither a line of a bookmark nor of another section</source>
        <translation>weder eine Zeile eines Lesezeichens noch eines anderen Abschnitts</translation>
    </message>
    <message>
        <source>this bookmark lacks its BookmarkTitle or BookmarkLevel</source>
        <translation>diesem Lesezeichen fehlt BookmarkTitle oder BookmarkLevel</translation>
    </message>
    <message>
        <source>a bookmark has a title, a level and a page number only</source>
        <translation>ein Lesezeichen hat nur Titel, Ebene und Seitennummer</translation>
    </message>
    <message>
        <source>there must be a number behind the colon</source>
        <translation>hinter dem Doppelpunkt muss eine Zahl stehen</translation>
    </message>
    <message>
        <source>there is no bookmark in it</source>
        <translation>darin ist kein Lesezeichen</translation>
    </message>
</context>
<context>
    <name>PlusLines</name>
    <message>
        <source>not of the form &quot;+ @12 Title&quot;</source>
        <translation>nicht von der Form „+ @12 Titel“</translation>
    </message>
</context>
<context>
    <name>PrintedPageCommands</name>
    <message>
        <source>Printed Page Number</source>
        <translation>Gedruckte Seitenzahl</translation>
    </message>
    <message>
        <source>Which number is printed on the page that is shown?</source>
        <translation>Welche Zahl ist auf der gezeigten Seite gedruckt?</translation>
    </message>
    <message>
        <source>Printed page number:</source>
        <translation>Gedruckte Seitenzahl:</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Could not interpret printed page number</source>
        <translation>Die gedruckte Seitenzahl ist nicht zu deuten</translation>
    </message>
    <message>
        <source>Both the page label and printed page number must be integers.</source>
        <translation>Die Seitenbezeichnung und die gedruckte Seitenzahl müssen ganze Zahlen sein.</translation>
    </message>
</context>
<context>
    <name>ProgramStart</name>
    <message>
        <source>%1 is set, but not by the process that has started this one; it is for this program&apos;s own use, so unset it</source>
        <translation>%1 ist gesetzt, aber nicht von dem Prozess, der diesen gestartet hat; die Variable ist nur für dieses Programm selbst, entfernen Sie sie</translation>
    </message>
</context>
<context>
    <name>ProgressSheet</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Saving</source>
        <translation>Speichern</translation>
    </message>
</context>
<context>
    <name>ReadOutline</name>
    <message>
        <source>line %1</source>
        <translation>Zeile %1</translation>
    </message>
    <message>
        <source>the text is not UTF-8</source>
        <translation>der Text ist nicht UTF-8</translation>
    </message>
    <message>
        <source>there are more than %1 entries</source>
        <translation>es sind mehr als %1 Einträge</translation>
    </message>
    <message>
        <source>there are more than %1 levels</source>
        <translation>es sind mehr als %1 Ebenen</translation>
    </message>
</context>
<context>
    <name>RecentDocumentsMenu</name>
    <message>
        <source>Clear List</source>
        <translation>Liste leeren</translation>
    </message>
    <message>
        <source>Open Recent</source>
        <translation>Zuletzt geöffnet</translation>
    </message>
</context>
<context>
    <name>RecoveryFile</name>
    <message>
        <source>the folder %1 is somebody else’s</source>
        <translation>der Ordner %1 gehört jemand anderem</translation>
    </message>
    <message>
        <source>it is damaged, and stays there for four weeks</source>
        <translation>die Datei ist beschädigt und bleibt vier Wochen dort</translation>
    </message>
    <message>
        <source>a later version of the program has kept it</source>
        <translation>eine neuere Version des Programms hat es aufbewahrt</translation>
    </message>
    <message>
        <source>the outline is too large</source>
        <translation>die Gliederung ist zu groß</translation>
    </message>
    <message>
        <source>it is too large</source>
        <translation>es ist zu groß</translation>
    </message>
</context>
<context>
    <name>RecoveryWriter</name>
    <message>
        <source>there is not enough memory</source>
        <translation>der Speicher reicht nicht aus</translation>
    </message>
</context>
<context>
    <name>Refusals</name>
    <message>
        <source>The file is locked by a password.</source>
        <translation>Die Datei ist durch ein Passwort gesperrt.</translation>
    </message>
    <message>
        <source>The file is encrypted, and can’t be changed.</source>
        <translation>Die Datei ist verschlüsselt und kann nicht geändert werden.</translation>
    </message>
    <message>
        <source>Not all of the file could be read, and what is missing would be lost.</source>
        <translation>Nicht alles in der Datei konnte gelesen werden, und was fehlt, ginge verloren.</translation>
    </message>
    <message>
        <source>The file is read-only. It can be saved in another place.</source>
        <translation>Die Datei ist schreibgeschützt. Sie kann an anderer Stelle gespeichert werden.</translation>
    </message>
    <message>
        <source>No entry is selected.</source>
        <translation>Kein Eintrag ist ausgewählt.</translation>
    </message>
    <message>
        <source>This takes one selected entry.</source>
        <translation>Dazu muss genau ein Eintrag ausgewählt sein.</translation>
    </message>
    <message>
        <source>This takes one selected entry with others below it.</source>
        <translation>Dazu muss genau ein Eintrag ausgewählt sein, unter dem andere stehen.</translation>
    </message>
    <message>
        <source>No text is selected on the pages.</source>
        <translation>Auf den Seiten ist kein Text ausgewählt.</translation>
    </message>
</context>
<context>
    <name>RepairDoubt</name>
    <message>
        <source>it is damaged: which of several versions of object %1 is meant can’t be told</source>
        <translation>sie ist beschädigt: welche von mehreren Fassungen des Objekts %1 gemeint ist, ist nicht festzustellen</translation>
    </message>
    <message>
        <source>it is damaged: where the stream of object %1 ends can’t be told</source>
        <translation>sie ist beschädigt: wo der Datenstrom des Objekts %1 endet, ist nicht festzustellen</translation>
    </message>
</context>
<context>
    <name>ReportCommand</name>
    <message>
        <source>Tells what came of batches: a page of HTML, and CSV.</source>
        <translation>Sagt, was aus vielen Dateien wurde: eine Seite HTML und CSV.</translation>
    </message>
    <message>
        <source>Reads the logs of &quot;batch&quot;, or what it has printed. A job counts once: as done where a line says so, else by its last line. Without --html and --csv, the page is printed.</source>
        <translation>Liest die Protokolle von &quot;batch&quot; oder was es ausgegeben hat. Ein Auftrag zählt einmal: als fertig, wo eine Zeile das sagt, sonst nach seiner letzten Zeile. Ohne --html und --csv wird die Seite ausgegeben.</translation>
    </message>
    <message>
        <source>A log, or several.</source>
        <translation>Ein Protokoll oder mehrere.</translation>
    </message>
    <message>
        <source>Where the page goes, with all that it needs; &quot;-&quot; is standard output.</source>
        <translation>Wohin die Seite kommt, mit allem, was sie braucht; &quot;-&quot; ist die Standardausgabe.</translation>
    </message>
    <message>
        <source>Where a table goes that has a line a job; &quot;-&quot; is standard output.</source>
        <translation>Wohin eine Tabelle mit einer Zeile je Auftrag kommt; &quot;-&quot; ist die Standardausgabe.</translation>
    </message>
    <message>
        <source>1 job reported</source>
        <translation>1 Auftrag im Bericht</translation>
    </message>
    <message>
        <source>%1 jobs reported</source>
        <translation>%1 Aufträge im Bericht</translation>
    </message>
</context>
<context>
    <name>ReportLogs</name>
    <message>
        <source>the log can&apos;t be read: %1</source>
        <translation>das Protokoll kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>%1: the last line was cut off; it is left out</source>
        <translation>%1: die letzte Zeile ist abgeschnitten; sie wird ausgelassen</translation>
    </message>
    <message>
        <source>line %1 is not what a batch has written</source>
        <translation>Zeile %1 hat kein Lauf geschrieben</translation>
    </message>
    <message>
        <source>line %1 is too long</source>
        <translation>Zeile %1 ist zu lang</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
</context>
<context>
    <name>ReportPage</name>
    <message>
        <source>What</source>
        <translation>Was</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>done</source>
        <translation>fertig</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>gescheitert</translation>
    </message>
    <message>
        <source>pages of what is done</source>
        <translation>Seiten dessen, was fertig ist</translation>
    </message>
    <message>
        <source>entries of what is done</source>
        <translation>Einträge dessen, was fertig ist</translation>
    </message>
    <message>
        <source>seconds of all workers</source>
        <translation>Sekunden aller Prozesse</translation>
    </message>
    <message>
        <source>Why jobs failed</source>
        <translation>Woran Aufträge gescheitert sind</translation>
    </message>
    <message>
        <source>Jobs</source>
        <translation>Aufträge</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>Grund</translation>
    </message>
    <message>
        <source>For example</source>
        <translation>Zum Beispiel</translation>
    </message>
    <message>
        <source>half take up to %1, nine of ten up to %2, the most is %3</source>
        <translation>die Hälfte braucht bis zu %1, neun von zehn bis zu %2, am meisten sind %3</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Stand</translation>
    </message>
    <message>
        <source>Seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>Size (MB)</source>
        <translation>Größe (MB)</translation>
    </message>
    <message>
        <source>Memory (MB)</source>
        <translation>Speicher (MB)</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Entries</source>
        <translation>Einträge</translation>
    </message>
    <message>
        <source>What came of the batch</source>
        <translation>Was aus den Dateien wurde</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Speicher</translation>
    </message>
    <message>
        <source>MB</source>
        <translation>MB</translation>
    </message>
    <message>
        <source>The slowest</source>
        <translation>Die langsamsten</translation>
    </message>
    <message>
        <source>The largest files</source>
        <translation>Die größten Dateien</translation>
    </message>
</context>
<context>
    <name>RunCommand</name>
    <message>
        <source>Plays a script: whatever can be done in the window.</source>
        <translation>Spielt ein Skript ab: alles, was im Fenster getan werden kann.</translation>
    </message>
    <message>
        <source>STEPS is a JSON array of commands and gestures, which are played on FILE. FILE changes only where the script saves it. When a step can&apos;t be played, nothing at all is written.</source>
        <translation>STEPS ist ein JSON-Feld von Befehlen und Gesten, die auf FILE abgespielt werden. FILE ändert sich nur, wo das Skript es speichert. Lässt sich ein Schritt nicht abspielen, so wird gar nichts geschrieben.</translation>
    </message>
    <message>
        <source>The script; &quot;-&quot; is standard input.</source>
        <translation>Das Skript; „-“ ist die Standardeingabe.</translation>
    </message>
    <message>
        <source>The PDF.</source>
        <translation>Die PDF.</translation>
    </message>
    <message>
        <source>Tells what came of each step, as JSON; &quot;-&quot; is standard output.</source>
        <translation>Sagt, was aus jedem Schritt wurde, als JSON; „-“ ist die Standardausgabe.</translation>
    </message>
    <message>
        <source>Lists all commands as JSON instead, without arguments.</source>
        <translation>Listet stattdessen alle Befehle als JSON auf, ohne Argumente.</translation>
    </message>
</context>
<context>
    <name>ScriptFiles</name>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 ließ sich nicht schreiben: %2</translation>
    </message>
    <message>
        <source>the folder %1 could not be made: %2</source>
        <translation>der Ordner %1 ließ sich nicht anlegen: %2</translation>
    </message>
    <message>
        <source>it could not be copied to %1: %2</source>
        <translation>sie ließ sich nicht nach %1 kopieren: %2</translation>
    </message>
    <message>
        <source>something else is to be written there too</source>
        <translation>dorthin soll auch etwas anderes geschrieben werden</translation>
    </message>
    <message>
        <source>another program writes to it at the moment</source>
        <translation>ein anderes Programm schreibt gerade hinein</translation>
    </message>
    <message>
        <source>it is read, and would be overwritten</source>
        <translation>wird gelesen und würde überschrieben</translation>
    </message>
    <message>
        <source>two results would be written to it</source>
        <translation>zwei Ergebnisse kämen dorthin</translation>
    </message>
</context>
<context>
    <name>ScriptGestures</name>
    <message>
        <source>the path %1 leads nowhere</source>
        <translation>der Pfad %1 führt nirgendwohin</translation>
    </message>
    <message>
        <source>there is no page %1; there are %2</source>
        <translation>es gibt keine Seite %1; es sind %2</translation>
    </message>
    <message>
        <source>there is no place %1 among %2 items</source>
        <translation>es gibt keine Stelle %1 unter %2 Einträgen</translation>
    </message>
    <message>
        <source>no spot has been picked; put a pageDoubleClick before the step</source>
        <translation>es wurde keine Stelle gewählt; setzen Sie ein pageDoubleClick vor den Schritt</translation>
    </message>
    <message>
        <source>the page&apos;s text has %1 characters only</source>
        <translation>der Text der Seite hat nur %1 Zeichen</translation>
    </message>
    <message>
        <source>the page does not hold that text</source>
        <translation>die Seite enthält diesen Text nicht</translation>
    </message>
    <message>
        <source>the point can&apos;t be brought into view</source>
        <translation>der Punkt lässt sich nicht ins Bild bringen</translation>
    </message>
    <message>
        <source>the heading map has no row %1</source>
        <translation>die Überschriftentabelle hat keine Zeile %1</translation>
    </message>
</context>
<context>
    <name>ScriptLibrary</name>
    <message>
        <source>the part of the program that plays scripts can&apos;t be loaded: %1</source>
        <translation>der Teil des Programms, der Skripte abspielt, lässt sich nicht laden: %1</translation>
    </message>
</context>
<context>
    <name>ScriptPlatform</name>
    <message>
        <source>there is no folder %1</source>
        <translation>es gibt keinen Ordner %1</translation>
    </message>
    <message>
        <source>there is no file %1</source>
        <translation>es gibt keine Datei %1</translation>
    </message>
    <message>
        <source>the panel does not offer %1</source>
        <translation>das Fenster bietet %1 nicht an</translation>
    </message>
    <message>
        <source>the alert &quot;%1&quot; finds no answer; put one of these before the step: %2</source>
        <translation>die Meldung „%1“ findet keine Antwort; setzen Sie eine von diesen vor den Schritt: %2</translation>
    </message>
    <message>
        <source>the alert &quot;%1&quot; has no button &quot;%2&quot;, but these: %3</source>
        <translation>die Meldung „%1“ hat keinen Knopf „%2“, sondern diese: %3</translation>
    </message>
    <message>
        <source>the panel &quot;%1&quot; finds no file; put a chooseFile before the step</source>
        <translation>das Fenster „%1“ findet keine Datei; setzen Sie ein chooseFile vor den Schritt</translation>
    </message>
</context>
<context>
    <name>ScriptPlayer</name>
    <message>
        <source>the document has been closed</source>
        <translation>das Dokument wurde geschlossen</translation>
    </message>
    <message>
        <source>a window waits for a person: &quot;%1&quot;</source>
        <translation>ein Fenster wartet auf einen Menschen: „%1“</translation>
    </message>
    <message>
        <source>no sheet opened to take the fields</source>
        <translation>es ging kein Fenster auf, das die Felder annimmt</translation>
    </message>
</context>
<context>
    <name>ScriptRun</name>
    <message>
        <source>the script can&apos;t be read: %1</source>
        <translation>das Skript ist nicht lesbar: %1</translation>
    </message>
    <message>
        <source>the report could not be written: %1</source>
        <translation>der Bericht ließ sich nicht schreiben: %1</translation>
    </message>
    <message>
        <source>the script closed the document; there is no outline to write</source>
        <translation>das Skript hat das Dokument geschlossen; es gibt keine Gliederung zu schreiben</translation>
    </message>
    <message>
        <source>scripts need a program with windows</source>
        <translation>Skripte brauchen ein Programm mit Fenstern</translation>
    </message>
    <message>
        <source>1 step played</source>
        <translation>1 Schritt gespielt</translation>
    </message>
    <message>
        <source>%1 steps played</source>
        <translation>%1 Schritte gespielt</translation>
    </message>
    <message>
        <source>; %1 written</source>
        <translation>; %1 geschrieben</translation>
    </message>
    <message>
        <source>standard output</source>
        <translation>Standardausgabe</translation>
    </message>
    <message>
        <source>it is there already; in a batch, a script replaces only its &quot;out&quot; or, where it has none, its own file</source>
        <translation>sie ist schon da; in einem Lauf über viele Dateien ersetzt ein Skript nur sein &quot;out&quot; oder, wo es keines hat, seine eigene Datei</translation>
    </message>
</context>
<context>
    <name>ScriptSheets</name>
    <message>
        <source>it has none</source>
        <translation>es hat keine</translation>
    </message>
    <message>
        <source>the sheet &quot;%1&quot; has no field &quot;%2&quot;; its fields: %3</source>
        <translation>das Fenster „%1“ hat kein Feld „%2“; seine Felder: %3</translation>
    </message>
    <message>
        <source>the field &quot;%1&quot; does not take such a value</source>
        <translation>das Feld „%1“ nimmt einen solchen Wert nicht an</translation>
    </message>
    <message>
        <source>the sheet &quot;%1&quot; has no button with the tag %2</source>
        <translation>das Fenster „%1“ hat keinen Knopf mit der Marke %2</translation>
    </message>
</context>
<context>
    <name>ScriptStep</name>
    <message>
        <source>a path, such as [0, 2]</source>
        <translation>ein Pfad wie [0, 2]</translation>
    </message>
    <message>
        <source>an array of paths, such as [[0], [1, 2]]</source>
        <translation>ein Feld von Pfaden wie [[0], [1, 2]]</translation>
    </message>
    <message>
        <source>an array of rows, counted from 0</source>
        <translation>ein Feld von Zeilen, ab 0 gezählt</translation>
    </message>
    <message>
        <source>a whole number from 1</source>
        <translation>eine ganze Zahl ab 1</translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation>eine ganze Zahl</translation>
    </message>
    <message>
        <source>a number from 0</source>
        <translation>eine Zahl ab 0</translation>
    </message>
    <message>
        <source>a text</source>
        <translation>ein Text</translation>
    </message>
    <message>
        <source>a text or null</source>
        <translation>ein Text oder null</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>true oder false</translation>
    </message>
    <message>
        <source>a point, [x, y]</source>
        <translation>ein Punkt, [x, y]</translation>
    </message>
    <message>
        <source>a range of text, [location, length]</source>
        <translation>ein Textbereich, [Ort, Länge]</translation>
    </message>
    <message>
        <source>an object of texts, numbers, true or false by name</source>
        <translation>ein Objekt mit Texten, Zahlen, true oder false nach Namen</translation>
    </message>
    <message>
        <source>a place, {&quot;parent&quot;: a path or null, &quot;index&quot;: a position, or -1 for onto the parent}</source>
        <translation>ein Ort, {&quot;parent&quot;: ein Pfad oder null, &quot;index&quot;: eine Stelle, oder -1 für auf den Eintrag selbst}</translation>
    </message>
    <message>
        <source>one of &quot;items&quot;, &quot;point&quot; and &quot;text&quot;</source>
        <translation>„items“, „point“ oder „text“</translation>
    </message>
    <message>
        <source>one of &quot;title&quot; and &quot;page&quot;</source>
        <translation>„title“ oder „page“</translation>
    </message>
    <message>
        <source>a button&apos;s title, or its number from 0</source>
        <translation>die Aufschrift eines Knopfs oder seine Nummer ab 0</translation>
    </message>
    <message>
        <source>a text, a number, true, false, or null to remove it</source>
        <translation>ein Text, eine Zahl, true, false, oder null zum Entfernen</translation>
    </message>
    <message>
        <source>it takes no &quot;%1&quot;</source>
        <translation>es nimmt kein „%1“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing</source>
        <translation>„%1“ fehlt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be %2</source>
        <translation>„%1“ muss dies sein: %2</translation>
    </message>
    <message>
        <source>either &quot;text&quot; or &quot;range&quot; must be given</source>
        <translation>entweder „text“ oder „range“ ist anzugeben</translation>
    </message>
    <message>
        <source>&quot;occurrence&quot; counts occurrences of &quot;text&quot;, which is missing</source>
        <translation>„occurrence“ zählt Vorkommen von „text“, das fehlt</translation>
    </message>
    <message>
        <source>&quot;text&quot; is empty</source>
        <translation>„text“ ist leer</translation>
    </message>
    <message>
        <source>&quot;paths&quot; belongs to the kind &quot;items&quot;, and only to that</source>
        <translation>„paths“ gehört zur Art „items“ und nur zu ihr</translation>
    </message>
    <message>
        <source>there is no such step</source>
        <translation>einen solchen Schritt gibt es nicht</translation>
    </message>
    <message>
        <source>step %1: %2</source>
        <translation>Schritt %1: %2</translation>
    </message>
    <message>
        <source>step %1 (%2): %3</source>
        <translation>Schritt %1 (%2): %3</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>a script is an array of steps</source>
        <translation>ein Skript ist ein Feld von Schritten</translation>
    </message>
    <message>
        <source>it must be an object with a text &quot;do&quot;</source>
        <translation>es muss ein Objekt mit einem Text „do“ sein</translation>
    </message>
</context>
<context>
    <name>SelectionCommands</name>
    <message>
        <source>Search and Select</source>
        <translation>Suchen und auswählen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Auswählen</translation>
    </message>
    <message>
        <source>Selects all items whose titles contain a text. Upper and lower case make a difference.</source>
        <translation>Wählt alle Einträge aus, deren Titel einen Text enthalten. Groß- und Kleinschreibung zählen.</translation>
    </message>
    <message>
        <source>&amp;Text:</source>
        <translation>&amp;Text:</translation>
    </message>
    <message>
        <source>No title contains this text.</source>
        <translation>Kein Titel enthält diesen Text.</translation>
    </message>
    <message>
        <source>Selects %1.</source>
        <translation>Wählt %1 aus.</translation>
    </message>
</context>
<context>
    <name>StepCommands</name>
    <message>
        <source>Remove 1 Entry</source>
        <translation>1 Eintrag entfernen</translation>
    </message>
    <message>
        <source>Remove %1 Entries</source>
        <translation>%1 Einträge entfernen</translation>
    </message>
    <message>
        <source>Edit Title</source>
        <translation>Titel bearbeiten</translation>
    </message>
    <message>
        <source>Edit Page</source>
        <translation>Seite bearbeiten</translation>
    </message>
    <message>
        <source>Drop</source>
        <translation>Ablegen</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Änderung</translation>
    </message>
    <message>
        <source>Recover Outline</source>
        <translation>Gliederung wiederherstellen</translation>
    </message>
    <message>
        <source>Taken back: %1</source>
        <translation>Zurückgenommen: %1</translation>
    </message>
    <message>
        <source>Done again: %1</source>
        <translation>Wiederholt: %1</translation>
    </message>
</context>
<context>
    <name>SystemError</name>
    <message>
        <source>it is a pipe or a device, and not a file</source>
        <translation>es ist eine Pipe oder ein Gerät und keine Datei</translation>
    </message>
</context>
<context>
    <name>TargetCommands</name>
    <message>
        <source>“%1” leads to page %2</source>
        <translation>„%1“ führt zur Seite %2</translation>
    </message>
</context>
<context>
    <name>TemporaryFolder</name>
    <message>
        <source>no folder for temporary files can be made in %1: %2</source>
        <translation>in %1 lässt sich kein Ordner für vorläufige Dateien anlegen: %2</translation>
    </message>
</context>
<context>
    <name>TextCommand</name>
    <message>
        <source>Prints the text as runs of one font, a JSON object a line.</source>
        <translation>Gibt den Text als Läufe je einer Schrift aus, ein JSON-Objekt je Zeile.</translation>
    </message>
    <message>
        <source>Each run has its page (from 1), location and length in the page&apos;s text, font, size in points, bold, italic, bounds ([x, y, width, height] in points from the page&apos;s lower left) and text. Every line of text ends with a line feed that belongs to its last run.</source>
        <translation>Jeder Lauf hat seine Seite (page, ab 1), Ort und Länge im Text der Seite (location, length), Schrift (font), Größe in Punkt (size), bold, italic, bounds ([x, y, Breite, Höhe] in Punkt von links unten auf der Seite) und text. Jede Textzeile endet mit einem Zeilenvorschub, der zu ihrem letzten Lauf gehört.</translation>
    </message>
    <message>
        <source>The PDF.</source>
        <translation>Die PDF.</translation>
    </message>
    <message>
        <source>Only this page, counted from 1.</source>
        <translation>Nur diese Seite, ab 1 gezählt.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no page number</source>
        <translation>„%1“ ist keine Seitennummer</translation>
    </message>
    <message>
        <source>%1: there is no page %2; the pages are 1 to %3</source>
        <translation>%1: Es gibt keine Seite %2; die Seiten sind 1 bis %3</translation>
    </message>
</context>
<context>
    <name>TextRecognition</name>
    <message>
        <source>text could not be recognised: %1</source>
        <translation>Text ließ sich nicht erkennen: %1</translation>
    </message>
    <message>
        <source>the program %1 is not there; install the package of that name</source>
        <translation>das Programm %1 ist nicht da; installieren Sie das Paket dieses Namens</translation>
    </message>
    <message>
        <source>%1 wrote nothing</source>
        <translation>%1 hat nichts geschrieben</translation>
    </message>
    <message>
        <source>the temporary folder can&apos;t be written to</source>
        <translation>in den temporären Ordner lässt sich nicht schreiben</translation>
    </message>
</context>
<context>
    <name>UsedPlaces</name>
    <message>
        <source>another job writes to this file</source>
        <translation>ein anderer Auftrag schreibt in diese Datei</translation>
    </message>
    <message>
        <source>two results would be written to %1</source>
        <translation>zwei Ergebnisse kämen nach %1</translation>
    </message>
    <message>
        <source>%1 is read, and would be overwritten</source>
        <translation>%1 wird gelesen und würde überschrieben</translation>
    </message>
    <message>
        <source>%1 is a stream, in which results would not be told apart</source>
        <translation>%1 ist ein Strom, in dem sich Ergebnisse nicht unterscheiden ließen</translation>
    </message>
    <message>
        <source>another job writes to %1, which is read</source>
        <translation>ein anderer Auftrag schreibt in %1, was gelesen wird</translation>
    </message>
</context>
<context>
    <name>WholeFileWriter</name>
    <message>
        <source>it is damaged, and too large (over 2 GiB) to be written new</source>
        <translation>sie ist beschädigt und zu groß (über 2 GiB), um neu geschrieben zu werden</translation>
    </message>
    <message>
        <source>it is damaged: a page&apos;s content runs on into other objects</source>
        <translation>sie ist beschädigt: Der Inhalt einer Seite läuft in andere Objekte hinein</translation>
    </message>
</context>
<context>
    <name>WorkerProcess</name>
    <message>
        <source>the program ended unexpectedly: %1</source>
        <translation>das Programm endete unerwartet: %1</translation>
    </message>
    <message>
        <source>given up after %1 s</source>
        <translation>nach %1 s aufgegeben</translation>
    </message>
    <message>
        <source>no process could be started: %1</source>
        <translation>es ließ sich kein Prozess starten: %1</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>; %1 was written, but may not outlive a power failure</source>
        <translation>; %1 wurde geschrieben, übersteht aber vielleicht keinen Stromausfall</translation>
    </message>
</context>
<context>
    <name>WrittenFile</name>
    <message>
        <source>what was written does not read back as it should: %1</source>
        <translation>was geschrieben wurde, liest sich nicht wie es soll: %1</translation>
    </message>
    <message>
        <source>it is locked</source>
        <translation>es ist gesperrt</translation>
    </message>
    <message>
        <source>its pages are others</source>
        <translation>seine Seiten sind andere</translation>
    </message>
    <message>
        <source>its outline is another</source>
        <translation>seine Gliederung ist eine andere</translation>
    </message>
    <message>
        <source>it needs repair</source>
        <translation>es muss repariert werden</translation>
    </message>
</context>
<context>
    <name>leafwright::AboutWindow</name>
    <message>
        <source>About Leafwright</source>
        <translation>Über Leafwright</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Free software under the GNU Affero General Public License, version 3 or later (AGPL-3.0-or-later). You may use, share and change it under its terms. It comes without any warranty.</source>
        <translation>Freie Software unter der GNU Affero General Public License, Version 3 oder neuer (AGPL-3.0-or-later). Unter deren Bedingungen dürfen Sie sie verwenden, weitergeben und verändern. Sie kommt ohne jede Gewähr.</translation>
    </message>
    <message>
        <source>Built on Qt %1 and %2.</source>
        <translation>Beruht auf Qt %1 und %2.</translation>
    </message>
    <message>
        <source>Edits the outline (bookmarks) of PDF files.</source>
        <translation>Bearbeitet die Gliederung (Lesezeichen) von PDF-Dateien.</translation>
    </message>
    <message>
        <source>&amp;Web Site</source>
        <translation>&amp;Webseite</translation>
    </message>
</context>
<context>
    <name>leafwright::AppDelegate</name>
    <message>
        <source>There is no file “%1”</source>
        <translation>Es gibt keine Datei „%1“</translation>
    </message>
    <message>
        <source>It may have been moved or renamed.</source>
        <translation>Sie wurde vielleicht verschoben oder umbenannt.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>To follow the TOC link and open the correct page in PDF, hold down CMD while double-clicking.</source>
        <translation>Um dem Eintrag zu folgen und die richtige Seite der PDF zu öffnen, halten Sie beim Doppelklick Strg gedrückt.</translation>
    </message>
    <message>
        <source>Double-click to follow the TOC link. Hold down CMD while double-clicking TOC item to edit the TOC item.</source>
        <translation>Ein Doppelklick folgt dem Eintrag. Halten Sie beim Doppelklick auf einen Eintrag Strg gedrückt, um ihn zu bearbeiten.</translation>
    </message>
    <message>
        <source>“%1” could not be opened: %2</source>
        <translation>„%1“ konnte nicht geöffnet werden: %2</translation>
    </message>
</context>
<context>
    <name>leafwright::AppSandboxFileAccess</name>
    <message>
        <source>Allow Access</source>
        <translation>Zugriff erlauben</translation>
    </message>
    <message>
        <source>%1 needs to access this path to continue. Click Allow to continue.</source>
        <translation>%1 braucht Zugriff auf diesen Pfad, um fortzufahren. Klicken Sie dafür auf „Erlauben“.</translation>
    </message>
    <message>
        <source>Allow</source>
        <translation>Erlauben</translation>
    </message>
</context>
<context>
    <name>leafwright::ContentsProposal</name>
    <message>
        <source>printed contents</source>
        <translation>gedrucktes Inhaltsverzeichnis</translation>
    </message>
    <message>
        <source>style of the heading</source>
        <translation>Aussehen der Überschrift</translation>
    </message>
    <message>
        <source>link</source>
        <translation>Verweis</translation>
    </message>
    <message>
        <source>named destination</source>
        <translation>benanntes Ziel</translation>
    </message>
    <message>
        <source>structure of the PDF</source>
        <translation>Struktur der PDF</translation>
    </message>
    <message>
        <source>%1 % sure; found by: %2</source>
        <translation>Zu %1 % sicher; gefunden durch: %2</translation>
    </message>
    <message>
        <source>Find Contents</source>
        <translation>Inhalt finden</translation>
    </message>
    <message>
        <source>Proposed outline</source>
        <translation>Vorgeschlagene Gliederung</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Complete Outline</source>
        <translation>Gliederung vervollständigen</translation>
    </message>
    <message>
        <source>Use as Outline</source>
        <translation>Als Gliederung verwenden</translation>
    </message>
    <message>
        <source>Next &amp;Doubtful</source>
        <translation>Nächster &amp;Zweifelhafter</translation>
    </message>
    <message>
        <source>Shows the next entry that is marked as doubtful</source>
        <translation>Zeigt den nächsten Eintrag, der als zweifelhaft gekennzeichnet ist</translation>
    </message>
    <message>
        <source>Proposed entries</source>
        <translation>Vorgeschlagene Einträge</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Seite</translation>
    </message>
    <message>
        <source>Whether the entry is doubtful</source>
        <translation>Ob der Eintrag zweifelhaft ist</translation>
    </message>
    <message>
        <source>&amp;Accept All Like This</source>
        <translation>Alle wie diesen a&amp;nnehmen</translation>
    </message>
    <message>
        <source>Takes every heading of the same style</source>
        <translation>Nimmt jede Überschrift, die ebenso aussieht</translation>
    </message>
    <message>
        <source>&amp;Reject All Like This</source>
        <translation>Alle wie diesen ab&amp;lehnen</translation>
    </message>
    <message>
        <source>Leaves out every heading of the same style</source>
        <translation>Lässt jede Überschrift weg, die ebenso aussieht</translation>
    </message>
    <message>
        <source>Styles of headings</source>
        <translation>Arten von Überschriften</translation>
    </message>
    <message>
        <source>Style of headings</source>
        <translation>Art von Überschriften</translation>
    </message>
    <message>
        <source>Found</source>
        <translation>Gefunden</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Ebene</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>&amp;Levels:</source>
        <translation>&amp;Ebenen:</translation>
    </message>
    <message>
        <source>Dee&amp;per than the printed contents</source>
        <translation>Tiefer als das gedr&amp;uckte Inhaltsverzeichnis</translation>
    </message>
    <message>
        <source>%1, %2 points</source>
        <translation>%1, %2 Punkt</translation>
    </message>
    <message>
        <source>Entries: %1, of which doubtful: %2</source>
        <translation>Einträge: %1, davon zweifelhaft: %2</translation>
    </message>
    <message>
        <source>Replace the outline that &amp;is there</source>
        <translation>Die vorhandene Gliederung e&amp;rsetzen</translation>
    </message>
</context>
<context>
    <name>leafwright::Document</name>
    <message>
        <source>Do you want to save the changes to “%1”?</source>
        <translation>Möchten Sie die Änderungen an „%1“ speichern?</translation>
    </message>
    <message>
        <source>Your changes to the outline are lost if you don’t save them.</source>
        <translation>Ihre Änderungen an der Gliederung gehen verloren, wenn Sie sie nicht speichern.</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>leafwright::DocumentController</name>
    <message>
        <source>Open PDF</source>
        <translation>PDF öffnen</translation>
    </message>
    <message>
        <source>“%1” can’t be opened</source>
        <translation>„%1“ lässt sich nicht öffnen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>leafwright::DocumentStatusBar</name>
    <message>
        <source>Locked by a password</source>
        <translation>Durch ein Passwort gesperrt</translation>
    </message>
    <message>
        <source>%1 of %2 shown</source>
        <translation>%2, davon %1 gezeigt</translation>
    </message>
    <message>
        <source>%1, %2 selected</source>
        <translation>%1, %2 ausgewählt</translation>
    </message>
    <message>
        <source>%1, not to be changed as the file is encrypted</source>
        <translation>%1, nicht zu ändern, da die Datei verschlüsselt ist</translation>
    </message>
    <message>
        <source>Page %1 (%2 of %3)</source>
        <translation>Seite %1 (%2 von %3)</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>leafwright::DocumentWindow</name>
    <message>
        <source>Toolbar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>%1[*] — Leafwright</source>
        <translation>%1[*] — Leafwright</translation>
    </message>
    <message>
        <source>No entries yet.

Contents &gt; Find Contents… reads the pages and proposes an outline. Or select a heading on the page and drag it here.</source>
        <translation>Noch keine Einträge.

Inhalt &gt; Inhalt finden … liest die Seiten und schlägt eine Gliederung vor. Oder markieren Sie auf der Seite eine Überschrift, und ziehen Sie sie hierher.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 (read-only)</source>
        <translation>%1 (schreibgeschützt)</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Outline pane</source>
        <translation>Bereich der Gliederung</translation>
    </message>
    <message>
        <source>Divider between outline and heading map</source>
        <translation>Trennlinie zwischen Gliederung und Überschriftentabelle</translation>
    </message>
    <message>
        <source>This PDF is locked by a password, so its fonts can’t be counted.</source>
        <translation>Dieses PDF ist durch ein Passwort gesperrt; seine Schriften können nicht gezählt werden.</translation>
    </message>
    <message>
        <source>The fonts of this PDF are being counted.</source>
        <translation>Die Schriften dieses PDFs werden gezählt.</translation>
    </message>
</context>
<context>
    <name>leafwright::FindBar</name>
    <message>
        <source>Find in Pages</source>
        <translation>In Seiten suchen</translation>
    </message>
    <message>
        <source>Find:</source>
        <translation>Suchen:</translation>
    </message>
    <message>
        <source>Text to be found on the pages</source>
        <translation>Text, der auf den Seiten gesucht wird</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>Vorige Stelle</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Nächste Stelle</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>leafwright::HeadingMapModel</name>
    <message>
        <source>Level</source>
        <translation>Ebene</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Schrift</translation>
    </message>
    <message>
        <source>No font has the level H%1. These headings stand a single level below those before them.</source>
        <translation>Keine Schrift hat die Ebene H%1. Diese Überschriften stehen eine einzige Ebene unter denen vor ihnen.</translation>
    </message>
    <message>
        <source>Pieces of text in this font: %1</source>
        <translation>Textstücke in dieser Schrift: %1</translation>
    </message>
    <message>
        <source>How many pieces of text are set in the font</source>
        <translation>Wie viele Textstücke in der Schrift gesetzt sind</translation>
    </message>
    <message>
        <source>The first text in the font</source>
        <translation>Der erste Text in der Schrift</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>Beispiel</translation>
    </message>
</context>
<context>
    <name>leafwright::HeadingMapView</name>
    <message>
        <source>Heading map</source>
        <translation>Überschriftentabelle</translation>
    </message>
    <message>
        <source>No font counts as that of headings. Select text of a heading on the page and choose Contents &gt; Use Selection for H1, or load a map.</source>
        <translation>Keine Schrift gilt als die von Überschriften. Wählen Sie Text einer Überschrift auf der Seite aus und dann Inhalt &gt; Auswahl für H1 verwenden, oder laden Sie eine Tabelle.</translation>
    </message>
</context>
<context>
    <name>leafwright::MyDocument</name>
    <message>
        <source>Unable to open PDF</source>
        <translation>PDF lässt sich nicht öffnen</translation>
    </message>
    <message>
        <source>Unfortunately, Leafwright cannot display this PDF.</source>
        <translation>Leider kann Leafwright diese PDF nicht anzeigen.</translation>
    </message>
    <message>
        <source>Generating Temporary PDF...</source>
        <translation>Vorläufige PDF wird erzeugt …</translation>
    </message>
    <message>
        <source>Saving PDF...</source>
        <translation>PDF wird gespeichert …</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>This PDF is locked</source>
        <translation>Diese PDF ist gesperrt</translation>
    </message>
    <message>
        <source>Unfortunately, Leafwright cannot edit Table of Contents in locked PDFs.</source>
        <translation>Leider kann Leafwright das Inhaltsverzeichnis gesperrter PDFs nicht bearbeiten.</translation>
    </message>
    <message>
        <source>This PDF is encrypted</source>
        <translation>Diese PDF ist verschlüsselt</translation>
    </message>
    <message>
        <source>Unfortunately, Leafwright cannot edit Table of Contents in encrypted PDFs.</source>
        <translation>Leider kann Leafwright das Inhaltsverzeichnis verschlüsselter PDFs nicht bearbeiten.</translation>
    </message>
    <message>
        <source>This PDF (version %1) may not save correctly</source>
        <translation>Diese PDF (Version %1) wird vielleicht nicht richtig gespeichert</translation>
    </message>
    <message>
        <source>Leafwright works best with PDF versions 1.4 and lower. Use the Preview feature to test the embedded TOC before saving changes back to the original PDF.</source>
        <translation>Leafwright arbeitet am besten mit PDF bis Version 1.4. Prüfen Sie das eingebettete Inhaltsverzeichnis mit der Vorschau, bevor Sie Änderungen in die ursprüngliche PDF speichern.</translation>
    </message>
    <message>
        <source>New Dragged Target</source>
        <translation>Neues gezogenes Ziel</translation>
    </message>
    <message>
        <source>Would you like to preview the TOC?</source>
        <translation>Möchten Sie eine Vorschau des Inhaltsverzeichnisses?</translation>
    </message>
    <message>
        <source>Before saving changes to original PDF, do you want to generate a temporary PDF to review the TOC created by Leafwright?</source>
        <translation>Möchten Sie vor dem Speichern in die ursprüngliche PDF eine vorläufige erzeugen, um das Inhaltsverzeichnis von Leafwright zu prüfen?</translation>
    </message>
    <message>
        <source>Generate Temporary PDF</source>
        <translation>Vorläufige PDF erzeugen</translation>
    </message>
    <message>
        <source>Save PDF</source>
        <translation>PDF speichern</translation>
    </message>
    <message>
        <source>Save PDF As</source>
        <translation>PDF speichern unter</translation>
    </message>
    <message>
        <source>Untitled</source>
        <translation>Ohne Titel</translation>
    </message>
    <message>
        <source>Some pages of this PDF have the same label, and saving leads these entries to the last page with theirs: %1.</source>
        <translation>Mehrere Seiten dieser PDF haben dieselbe Bezeichnung. Beim Speichern führen diese Einträge dann zur letzten Seite mit ihrer Bezeichnung: %1.</translation>
    </message>
    <message>
        <source>Keep Their Pages</source>
        <translation>Seiten beibehalten</translation>
    </message>
    <message>
        <source>The preview could not be made</source>
        <translation>Die Vorschau ließ sich nicht anlegen</translation>
    </message>
    <message>
        <source>No folder for temporary files can be made.</source>
        <translation>Es lässt sich kein Ordner für temporäre Dateien anlegen.</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>Der Speicher reicht nicht aus.</translation>
    </message>
    <message>
        <source>Not all of this PDF could be read: %1. It can&apos;t be saved, for what is missing would be lost.</source>
        <translation>Nicht alles in dieser PDF ließ sich lesen: %1. Sie lässt sich nicht speichern, denn was fehlt, ginge verloren.</translation>
    </message>
    <message>
        <source>Not all of this PDF could be read: %1. What is made of its text may not be all.</source>
        <translation>Nicht alles in dieser PDF ließ sich lesen: %1. Was aus ihrem Text entsteht, ist vielleicht nicht alles.</translation>
    </message>
    <message>
        <source>Unable to load “%1”</source>
        <translation>„%1“ lässt sich nicht laden</translation>
    </message>
    <message>
        <source>%1 entries have page labels that no page has any more (%2), and saving leads them to the first page.</source>
        <translation>%1 Einträge haben Seitenbezeichnungen, die keine Seite mehr hat (%2), und führen nach dem Speichern zur ersten Seite.</translation>
    </message>
    <message>
        <source>%1 entries that did something else than show a page lead nowhere now, because the file does not have them any more.</source>
        <translation>%1 Einträge, die etwas anderes taten, als eine Seite zu zeigen, führen jetzt nirgendwohin, weil die Datei sie nicht mehr hat.</translation>
    </message>
    <message>
        <source>Page labels that begin with “p” are read as printed page numbers, and saving leads these entries to the pages with those: %1.</source>
        <translation>Seitenbezeichnungen, die mit „p“ beginnen, werden als gedruckte Seitenzahlen gelesen, und das Speichern führt diese Einträge zu den Seiten mit diesen Zahlen: %1.</translation>
    </message>
    <message>
        <source>Entries that the filter hides were removed with those above them: %1. Step Back brings them back.</source>
        <translation>Einträge, die der Filter verbirgt, wurden mit denen über ihnen entfernt: %1. Ein Schritt zurück bringt sie wieder.</translation>
    </message>
    <message>
        <source>Reverted, %1</source>
        <translation>Zurückgesetzt, %1</translation>
    </message>
    <message>
        <source>%1 removed</source>
        <translation>%1 entfernt</translation>
    </message>
    <message>
        <source>This PDF is locked by a password, so its pages can’t be shown.</source>
        <translation>Dieses PDF ist durch ein Passwort gesperrt; seine Seiten können nicht gezeigt werden.</translation>
    </message>
    <message>
        <source>No page of this PDF can be read. The file may be damaged.</source>
        <translation>Keine Seite dieses PDF ist lesbar. Die Datei ist vielleicht beschädigt.</translation>
    </message>
    <message>
        <source>Saved, %1</source>
        <translation>Gespeichert, %1</translation>
    </message>
</context>
<context>
    <name>leafwright::NoticeBar</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>leafwright::OutlineFilter</name>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Filter of the outline</source>
        <translation>Filter der Gliederung</translation>
    </message>
    <message>
        <source>Filter (%1)</source>
        <translation>Filter (%1)</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>The selected entry is hidden by the filter, and selected no longer.</source>
        <translation>Der ausgewählte Eintrag ist vom Filter verborgen und nicht mehr ausgewählt.</translation>
    </message>
    <message>
        <source>%1 selected entries are hidden by the filter, and selected no longer.</source>
        <translation>%1 ausgewählte Einträge sind vom Filter verborgen und nicht mehr ausgewählt.</translation>
    </message>
</context>
<context>
    <name>leafwright::OutlineView</name>
    <message>
        <source>Outline</source>
        <translation>Gliederung</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 und %2 weitere</translation>
    </message>
    <message>
        <source>No entry has this text.</source>
        <translation>Kein Eintrag enthält diesen Text.</translation>
    </message>
</context>
<context>
    <name>leafwright::PDFView</name>
    <message>
        <source>Page</source>
        <translation>Seite</translation>
    </message>
</context>
<context>
    <name>leafwright::PasswordBar</name>
    <message>
        <source>This PDF is locked. With its password you can look at it:</source>
        <translation>Diese PDF ist gesperrt. Mit ihrem Passwort können Sie sie ansehen:</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>Show Pages</source>
        <translation>Seiten zeigen</translation>
    </message>
</context>
<context>
    <name>leafwright::PreferencesWindow</name>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Starting and Opening</source>
        <translation>Starten und Öffnen</translation>
    </message>
    <message>
        <source>Open the user &amp;guide when Leafwright starts</source>
        <translation>Beim Start von Leafwright das &amp;Handbuch öffnen</translation>
    </message>
    <message>
        <source>&amp;Warn about PDFs of a version newer than 1.4</source>
        <translation>Vor PDFs einer Version über 1.4 &amp;warnen</translation>
    </message>
    <message>
        <source>&amp;Read the text of all pages in the background</source>
        <translation>Den Text aller Seiten im Hintergrund &amp;lesen</translation>
    </message>
    <message>
        <source>Outline</source>
        <translation>Gliederung</translation>
    </message>
    <message>
        <source>&amp;Double-click edits the item</source>
        <translation>&amp;Doppelklick bearbeitet den Eintrag</translation>
    </message>
    <message>
        <source>AutoTOC</source>
        <translation>AutoTOC</translation>
    </message>
    <message>
        <source>&amp;Levels of headings at most:</source>
        <translation>&amp;Ebenen von Überschriften höchstens:</translation>
    </message>
    <message>
        <source>For Self-Calibrating AutoTOC:</source>
        <translation>Für das selbstabgleichende AutoTOC:</translation>
    </message>
    <message>
        <source>Leave out the &amp;body text’s font, and smaller ones</source>
        <translation>Die Schrift des &amp;Fließtexts und kleinere auslassen</translation>
    </message>
    <message>
        <source>Leave out fonts that are rarely &amp;used</source>
        <translation>&amp;Selten verwendete Schriften auslassen</translation>
    </message>
    <message>
        <source>Lead to the &amp;heading itself, not only to its page</source>
        <translation>Zur &amp;Überschrift selbst führen, nicht nur zu ihrer Seite</translation>
    </message>
    <message>
        <source>Saving</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Offer a &amp;preview before the PDF is saved</source>
        <translation>Vor dem Speichern der PDF eine &amp;Vorschau anbieten</translation>
    </message>
    <message>
        <source>Recalculate targets in the &amp;middle of a page’s top edge</source>
        <translation>Ziele in der &amp;Mitte des oberen Seitenrands neu berechnen</translation>
    </message>
    <message>
        <source>Has no effect in this version: such targets are always kept.</source>
        <translation>Ohne Wirkung in dieser Version: Solche Ziele bleiben immer erhalten.</translation>
    </message>
    <message>
        <source>&amp;Keep the pages of entries where page labels repeat</source>
        <translation>Seiten der Einträge &amp;beibehalten, wo sich Seitenbezeichnungen wiederholen</translation>
    </message>
    <message>
        <source>Undo &amp;steps back where there is nothing to undo</source>
        <translation>&amp;Rückgängig geht einen Schritt zurück, wo es sonst nichts täte</translation>
    </message>
</context>
<context>
    <name>leafwright::Recovery</name>
    <message>
        <source>What you change can’t be kept for the case that the program is ended before you save: %1.</source>
        <translation>Was Sie ändern, kann nicht für den Fall aufbewahrt werden, dass das Programm vor dem Speichern beendet wird: %1.</translation>
    </message>
    <message>
        <source>Recover Outline</source>
        <translation>Gliederung wiederherstellen</translation>
    </message>
    <message>
        <source>1 entry</source>
        <translation>1 Eintrag</translation>
    </message>
    <message>
        <source>%1 entries</source>
        <translation>%1 Einträgen</translation>
    </message>
    <message>
        <source>The file has changed since. Entries are found again by their page labels.</source>
        <translation>Die Datei hat sich seitdem geändert. Die Einträge werden anhand ihrer Seitenbezeichnungen wiedergefunden.</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>Recover</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Changes that were not saved can’t be read. %1.</source>
        <translation>Nicht gespeicherte Änderungen können nicht gelesen werden. %1.</translation>
    </message>
    <message>
        <source>What was kept of your changes can’t be removed, and may be offered again by the next start: %1.</source>
        <translation>Was von Ihren Änderungen aufbewahrt wurde, kann nicht entfernt werden und wird beim nächsten Start vielleicht wieder angeboten: %1.</translation>
    </message>
    <message>
        <source>Changes to the outline of “%1” were not saved. It can be had again as it was on %2 at %3, with %4.</source>
        <translation>Änderungen an der Gliederung von „%1“ wurden nicht gespeichert. Sie lässt sich so wiederherstellen, wie sie am %2 um %3 war, mit %4.</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>der Speicher reicht nicht aus</translation>
    </message>
    <message>
        <source>Changes to the outline of “%1” were not saved, and are kept as they were on %2 at %3. They can’t be put into this file, which can’t be edited.</source>
        <translation>Änderungen an der Gliederung von „%1“ wurden nicht gespeichert und sind aufbewahrt, wie sie am %2 um %3 waren. Sie können nicht in diese Datei übernommen werden, da sie nicht bearbeitet werden kann.</translation>
    </message>
    <message>
        <source>It is the latest of %1 that are kept. When it is discarded, the one before is offered.</source>
        <translation>Es ist die neueste von %1, die aufbewahrt sind. Wird sie verworfen, wird die davor angeboten.</translation>
    </message>
    <message>
        <source>It was kept for “%1”.</source>
        <translation>Sie wurde für „%1“ aufbewahrt.</translation>
    </message>
    <message>
        <source>Discard Outline</source>
        <translation>Gliederung verwerfen</translation>
    </message>
    <message>
        <source>The outline was kept for “%1” as that file was then. If you have the file elsewhere, these changes to its outline are lost.</source>
        <translation>Die Gliederung wurde für „%1“ aufbewahrt, wie diese Datei damals war. Falls Sie die Datei anderswo haben, gehen diese Änderungen an ihrer Gliederung verloren.</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Behalten</translation>
    </message>
</context>
<context>
    <name>leafwright::SplitViewDivider</name>
    <message>
        <source>Divider %1</source>
        <translation>Trennlinie %1</translation>
    </message>
    <message>
        <source>Divider between %1 and %2</source>
        <translation>Trennlinie zwischen %1 und %2</translation>
    </message>
</context>
<context>
    <name>leafwright::ThumbnailView</name>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
</context>
<context>
    <name>leafwright::TitleColorSheet</name>
    <message>
        <source>Black</source>
        <translation>Schwarz</translation>
    </message>
    <message>
        <source>Grey</source>
        <translation>Grau</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>Orange</source>
        <translation>Orange</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Purple</source>
        <translation>Violett</translation>
    </message>
    <message>
        <source>Brown</source>
        <translation>Braun</translation>
    </message>
    <message>
        <source>Title Colour</source>
        <translation>Farbe der Titel</translation>
    </message>
    <message>
        <source>Viewers show the titles of the selected entries in this colour.</source>
        <translation>Betrachter zeigen die Titel der ausgewählten Einträge in dieser Farbe.</translation>
    </message>
    <message>
        <source>&amp;Colour:</source>
        <translation>&amp;Farbe:</translation>
    </message>
    <message>
        <source>&amp;More Colours…</source>
        <translation>&amp;Weitere Farben …</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Set Colour</source>
        <translation>Farbe setzen</translation>
    </message>
    <message>
        <source>No Colour</source>
        <translation>Keine Farbe</translation>
    </message>
</context>
<context>
    <name>leafwright::TreeController</name>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Seite</translation>
    </message>
    <message>
        <source>No page has this label. The entry leads to the first page.</source>
        <translation>Keine Seite hat diese Bezeichnung. Der Eintrag führt zur ersten Seite.</translation>
    </message>
</context>
<context>
    <name>leafwright::UpdateWindow</name>
    <message>
        <source>Software Update</source>
        <translation>Aktualisierung</translation>
    </message>
    <message>
        <source>Checking</source>
        <translation>Suche</translation>
    </message>
    <message>
        <source>What is new</source>
        <translation>Was neu ist</translation>
    </message>
    <message>
        <source>&amp;Open Download Page</source>
        <translation>&amp;Download-Seite öffnen</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Nach Aktualisierungen wird gesucht …</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Leafwright %1 is available</source>
        <translation>Leafwright %1 ist erhältlich</translation>
    </message>
    <message>
        <source>You have %1. Your package manager may offer the new version as well.</source>
        <translation>Sie haben %1. Vielleicht bietet auch Ihre Paketverwaltung die neue Version an.</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>&amp;Später</translation>
    </message>
    <message>
        <source>Leafwright is up to date</source>
        <translation>Leafwright ist auf dem neuesten Stand</translation>
    </message>
    <message>
        <source>There is no version newer than yours, which is %1.</source>
        <translation>Es gibt keine neuere Version als Ihre, und das ist %1.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Unable to check for updates</source>
        <translation>Die Suche nach Aktualisierungen ist nicht möglich</translation>
    </message>
</context>
<context>
    <name>leafwright::Updater</name>
    <message>
        <source>The server took too long to answer.</source>
        <translation>Der Server hat zu lange nicht geantwortet.</translation>
    </message>
    <message>
        <source>The server’s answer is too long.</source>
        <translation>Die Antwort des Servers ist zu lang.</translation>
    </message>
    <message>
        <source>The server could not be reached, or has no list of versions: %1.</source>
        <translation>Der Server ist nicht erreichbar oder hat keine Liste der Versionen: %1.</translation>
    </message>
    <message>
        <source>The server’s answer could not be understood.</source>
        <translation>Die Antwort des Servers ist unverständlich.</translation>
    </message>
</context>
</TS>
