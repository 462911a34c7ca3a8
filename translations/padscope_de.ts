<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>QLineUpDownEdit</name>
    <message>
        <source>Send</source>
        <translation>Senden</translation>
    </message>
    <message>
        <source>Sends the command to the first board</source>
        <translation>Sendet den Befehl an das erste Board</translation>
    </message>
</context>
<context>
    <name>TendroPadscope</name>
    <message>
        <source>TendroPadscope</source>
        <translatorcomment>Name, mit dem das Werkzeug geöffnet wird; bleibt in jeder Sprache gleich.</translatorcomment>
        <translation>TendroPadscope</translation>
    </message>
    <message>
        <source>Board diagnostic tool.</source>
        <translation>Diagnosewerkzeug für Boards.</translation>
    </message>
    <message>
        <source>Copyright (c) 2010 Corvane</source>
        <translation>Copyright (c) 2010 Corvane</translation>
    </message>
    <message>
        <source>Version 1.0</source>
        <translation>Version 1.0</translation>
    </message>
    <message>
        <source>Padscope</source>
        <comment>This is the caption of a button that start a program call padscope.</comment>
        <translation>Padscope</translation>
    </message>
</context>
<context>
    <name>bargraph</name>
    <message>
        <source>Classic Mode</source>
        <translation>Klassischer Modus</translation>
    </message>
    <message>
        <source>Fast Computer</source>
        <translation>Schneller Rechner</translation>
    </message>
    <message>
        <source>Slow Computer</source>
        <translation>Langsamer Rechner</translation>
    </message>
    <message>
        <source>Lock Frequency</source>
        <translation>Frequenz festhalten</translation>
    </message>
    <message>
        <source>Raw: %1</source>
        <translation>Rohwert: %1</translation>
    </message>
    <message>
        <source>Volts: %1</source>
        <translation>Spannung: %1 V</translation>
    </message>
    <message>
        <source>Min: %1 Max: %2 Delta: %3</source>
        <translation>Min.: %1 Max.: %2 Delta: %3</translation>
    </message>
    <message>
        <source>Signals</source>
        <translation>Signale</translation>
    </message>
    <message>
        <source>Milliseconds between two reports</source>
        <translation>Millisekunden zwischen zwei Berichten</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>X fine</source>
        <translation>X fein</translation>
    </message>
    <message>
        <source>Y fine</source>
        <translation>Y fein</translation>
    </message>
    <message>
        <source>X coarse</source>
        <translation>X grob</translation>
    </message>
    <message>
        <source>Y coarse</source>
        <translation>Y grob</translation>
    </message>
    <message>
        <source>Voltage</source>
        <translation>Spannung</translation>
    </message>
    <message>
        <source>0, 60 and 120 degrees: %1, %2, %3. Magnitude: %4. Angle: %5 of 8192.</source>
        <extracomment>The components of a signal at these three angles, and its vector as it is painted.</extracomment>
        <translation>0, 60 und 120 Grad: %1, %2, %3. Betrag: %4. Winkel: %5 von 8192.</translation>
    </message>
</context>
<context>
    <name>monitor</name>
    <message>
        <source>Teacher</source>
        <translation>Lehrer</translation>
    </message>
    <message>
        <source>Student</source>
        <translation>Schüler</translation>
    </message>
    <message>
        <source>Unknown: %1</source>
        <translation>Unbekannt: %1</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>Daten</translation>
    </message>
    <message>
        <source>Log to file</source>
        <translation>In Datei protokollieren</translation>
    </message>
    <message>
        <source>Fast Computer</source>
        <translation>Schneller Rechner</translation>
    </message>
    <message>
        <source>Slow Computer</source>
        <translation>Langsamer Rechner</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>Zeilen</translation>
    </message>
    <message>
        <source>Newest row</source>
        <translation>Neueste Zeile</translation>
    </message>
    <message>
        <source>Milliseconds between two reports</source>
        <translation>Millisekunden zwischen zwei Berichten</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>Schriftgröße</translation>
    </message>
</context>
<context>
    <name>qorvexgraph</name>
    <message>
        <source>&lt;i&gt;No device found.&lt;/i&gt;</source>
        <translation>&lt;i&gt;Kein Gerät gefunden.&lt;/i&gt;</translation>
    </message>
    <message>
        <source>&lt;b&gt;%1 device found.&lt;/b&gt;</source>
        <translation>&lt;b&gt;%1 Gerät gefunden.&lt;/b&gt;</translation>
    </message>
    <message>
        <source>&lt;b&gt;%1 devices found.&lt;/b&gt;</source>
        <translation>&lt;b&gt;%1 Geräte gefunden.&lt;/b&gt;</translation>
    </message>
    <message>
        <source> &lt;i&gt;Paused&lt;/i&gt;</source>
        <translation> &lt;i&gt;Angehalten&lt;/i&gt;</translation>
    </message>
    <message>
        <source>history/%1</source>
        <translatorcomment>Ein Schlüssel in den Einstellungen; bleibt in jeder Sprache gleich.</translatorcomment>
        <translation>history/%1</translation>
    </message>
    <message>
        <source>Bar Graph</source>
        <translation>Balkenanzeige</translation>
    </message>
    <message>
        <source>Monitor</source>
        <translation>Monitor</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Padscope</source>
        <translation>Padscope</translation>
    </message>
    <message>
        <source>Views</source>
        <translation>Ansichten</translation>
    </message>
</context>
</TS>
