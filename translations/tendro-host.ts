<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" sourcelanguage="en">
<context>
    <name>BoardMenu</name>
    <message>
        <source>Board</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Plug In</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Unplug</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No more boards can be plugged in.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Board %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No board</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Category</name>
    <message>
        <source>advanced</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>other</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Fault</name>
    <message>
        <source>The first board is unplugged in the middle of a report.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>500 hot-plug notifications come within half a second, and board 9999 comes and goes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The boards together send 10,000 reports a second for 5 s.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The first board sends 650 reports of random bytes at once.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The first board sends 256 reports at once, one of each type.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The first board sends 200 texts at once that end no line.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The first board sends a line of 10,000 characters.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The first board sends a line of markup.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The first board sends a line of all byte values.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The next command takes 2 s.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Each command delivers a report on its caller&apos;s thread before it returns.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The first board cannot be enumerated.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The library counts two boards more than there are.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FaultMenu</name>
    <message>
        <source>&amp;Fault</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is off.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HostWindow</name>
    <message>
        <source>Tendro Host</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a tool from the tool bar, or press Ctrl and its number.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Work area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tools</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Status</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Close Tool</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has no window.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 - Tendro Host</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Menus</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>More tools</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Replay</name>
    <message>
        <source>max</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ReplayBar</name>
    <message>
        <source>waiting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>playing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>paused</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ended</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position of the replay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time of the replay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rate and state of the replay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>More of the replay</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ReplayMenu</name>
    <message>
        <source>Replay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Faster</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>S&amp;lower</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Restart</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ReportRates</name>
    <message>
        <source>Reports of the simulated boards</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reports a second: %1 sent, %2 delivered</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ScenarioMenu</name>
    <message>
        <source>&amp;Open...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Scenario</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scenario: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Scenario: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scenario</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scenarios (*.json *.pcapng)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
