<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
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
</context>
</TS>
