<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" sourcelanguage="en">
<context>
    <name>QLineUpDownEdit</name>
    <message>
        <source>Send</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sends the command to the first board</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TendroPadscope</name>
    <message>
        <source>TendroPadscope</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Board diagnostic tool.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copyright (c) 2010 Corvane</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version 1.0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Padscope</source>
        <comment>This is the caption of a button that start a program call padscope.</comment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>bargraph</name>
    <message>
        <source>Classic Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fast Computer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Slow Computer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lock Frequency</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Raw: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Volts: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Min: %1 Max: %2 Delta: %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Signals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Milliseconds between two reports</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X fine</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Y fine</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X coarse</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Y coarse</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Voltage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>0, 60 and 120 degrees: %1, %2, %3. Magnitude: %4. Angle: %5 of 8192.</source>
        <extracomment>The components of a signal at these three angles, and its vector as it is painted.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>monitor</name>
    <message>
        <source>Teacher</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Student</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Log to file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fast Computer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Slow Computer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Newest row</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Milliseconds between two reports</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Font size</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>qorvexgraph</name>
    <message>
        <source>&lt;i&gt;No device found.&lt;/i&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;b&gt;%1 device found.&lt;/b&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;b&gt;%1 devices found.&lt;/b&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> &lt;i&gt;Paused&lt;/i&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>history/%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bar Graph</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Monitor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Command</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Padscope</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Views</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
