<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>BoardMenu</name>
    <message>
        <source>Board</source>
        <translation>Board</translation>
    </message>
    <message>
        <source>&amp;Plug In</source>
        <translation>&amp;Einstecken</translation>
    </message>
    <message>
        <source>&amp;Unplug</source>
        <translation>&amp;Ausstecken</translation>
    </message>
    <message>
        <source>No more boards can be plugged in.</source>
        <translation>Mehr Boards lassen sich nicht einstecken.</translation>
    </message>
    <message>
        <source>Board %1</source>
        <translation>Board %1</translation>
    </message>
    <message>
        <source>No board</source>
        <translation>Kein Board</translation>
    </message>
</context>
<context>
    <name>Category</name>
    <message>
        <source>advanced</source>
        <translation>erweitert</translation>
    </message>
    <message>
        <source>other</source>
        <translation>weitere</translation>
    </message>
</context>
<context>
    <name>Fault</name>
    <message>
        <source>The first board is unplugged in the middle of a report.</source>
        <translation>Das erste Board wird mitten in einem Bericht ausgesteckt.</translation>
    </message>
    <message>
        <source>500 hot-plug notifications come within half a second, and board 9999 comes and goes.</source>
        <translation>In einer halben Sekunde kommen 500 Hot-Plug-Meldungen, und Board 9999 kommt und geht.</translation>
    </message>
    <message>
        <source>The boards together send 10,000 reports a second for 5 s.</source>
        <translation>Die Boards senden 5 s lang zusammen 10.000 Berichte in der Sekunde.</translation>
    </message>
    <message>
        <source>The first board sends 650 reports of random bytes at once.</source>
        <translation>Das erste Board sendet auf einmal 650 Berichte aus zufälligen Bytes.</translation>
    </message>
    <message>
        <source>The first board sends 256 reports at once, one of each type.</source>
        <translation>Das erste Board sendet auf einmal 256 Berichte, von jedem Typ einen.</translation>
    </message>
    <message>
        <source>The first board sends 200 texts at once that end no line.</source>
        <translation>Das erste Board sendet auf einmal 200 Texte, die keine Zeile beenden.</translation>
    </message>
    <message>
        <source>The first board sends a line of 10,000 characters.</source>
        <translation>Das erste Board sendet eine Zeile aus 10.000 Zeichen.</translation>
    </message>
    <message>
        <source>The first board sends a line of markup.</source>
        <translation>Das erste Board sendet eine Zeile mit Auszeichnungen.</translation>
    </message>
    <message>
        <source>The first board sends a line of all byte values.</source>
        <translation>Das erste Board sendet eine Zeile aus allen Bytewerten.</translation>
    </message>
    <message>
        <source>The next command takes 2 s.</source>
        <translation>Der nächste Befehl dauert 2 s.</translation>
    </message>
    <message>
        <source>Each command delivers a report on its caller&apos;s thread before it returns.</source>
        <translation>Jeder Befehl liefert einen Bericht im Thread des Aufrufers, bevor er zurückkehrt.</translation>
    </message>
    <message>
        <source>The first board cannot be enumerated.</source>
        <translation>Das erste Board lässt sich nicht aufzählen.</translation>
    </message>
    <message>
        <source>The library counts two boards more than there are.</source>
        <translation>Die Bibliothek zählt zwei Boards mehr, als da sind.</translation>
    </message>
</context>
<context>
    <name>FaultMenu</name>
    <message>
        <source>&amp;Fault</source>
        <translation>&amp;Störung</translation>
    </message>
    <message>
        <source>%1 is off.</source>
        <translation>%1 ist aus.</translation>
    </message>
</context>
<context>
    <name>HostWindow</name>
    <message>
        <source>Tendro Host</source>
        <translation>Tendro Host</translation>
    </message>
    <message>
        <source>Choose a tool from the tool bar, or press Ctrl and its number.</source>
        <translation>Wählen Sie ein Werkzeug aus der Werkzeugleiste, oder drücken Sie Strg und seine Nummer.</translation>
    </message>
    <message>
        <source>Work area</source>
        <translation>Arbeitsbereich</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Close Tool</source>
        <translation>Werkzeug &amp;schließen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber</translation>
    </message>
    <message>
        <source>%1 has no window.</source>
        <translation>%1 hat kein Fenster.</translation>
    </message>
    <message>
        <source>%1 - Tendro Host</source>
        <translation>%1 - Tendro Host</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>Menüs</translation>
    </message>
    <message>
        <source>More tools</source>
        <translation>Weitere Werkzeuge</translation>
    </message>
</context>
<context>
    <name>Replay</name>
    <message>
        <source>max</source>
        <translation>max.</translation>
    </message>
</context>
<context>
    <name>ReplayBar</name>
    <message>
        <source>waiting</source>
        <translation>wartet</translation>
    </message>
    <message>
        <source>playing</source>
        <translation>spielt</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>angehalten</translation>
    </message>
    <message>
        <source>ended</source>
        <translation>zu Ende</translation>
    </message>
    <message>
        <source>Replay</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Position of the replay</source>
        <translation>Stelle der Wiedergabe</translation>
    </message>
    <message>
        <source>Time of the replay</source>
        <translation>Zeit der Wiedergabe</translation>
    </message>
    <message>
        <source>Rate and state of the replay</source>
        <translation>Tempo und Zustand der Wiedergabe</translation>
    </message>
    <message>
        <source>More of the replay</source>
        <translation>Mehr von der Wiedergabe</translation>
    </message>
</context>
<context>
    <name>ReplayMenu</name>
    <message>
        <source>Replay</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation>&amp;Pause</translation>
    </message>
    <message>
        <source>&amp;Step</source>
        <translation>&amp;Schritt</translation>
    </message>
    <message>
        <source>&amp;Faster</source>
        <translation>Sc&amp;hneller</translation>
    </message>
    <message>
        <source>S&amp;lower</source>
        <translation>&amp;Langsamer</translation>
    </message>
    <message>
        <source>&amp;Restart</source>
        <translation>&amp;Von vorn</translation>
    </message>
</context>
<context>
    <name>ReportRates</name>
    <message>
        <source>Reports of the simulated boards</source>
        <translation>Berichte der simulierten Boards</translation>
    </message>
    <message>
        <source>Reports a second: %1 sent, %2 delivered</source>
        <translation>Berichte in der Sekunde: %1 gesendet, %2 zugestellt</translation>
    </message>
</context>
<context>
    <name>ScenarioMenu</name>
    <message>
        <source>&amp;Open...</source>
        <translation>&amp;Öffnen ...</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>&amp;Neu laden</translation>
    </message>
    <message>
        <source>Open Scenario</source>
        <translation>Szenario öffnen</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Scenario: %1</source>
        <translation>Szenario: %1</translation>
    </message>
    <message>
        <source>&amp;Scenario: %1</source>
        <translation>S&amp;zenario: %1</translation>
    </message>
    <message>
        <source>Scenario</source>
        <translation>Szenario</translation>
    </message>
    <message>
        <source>Scenarios (*.json *.pcapng)</source>
        <translation>Szenarien (*.json *.pcapng)</translation>
    </message>
</context>
</TS>
