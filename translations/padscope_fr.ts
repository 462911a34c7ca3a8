<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR" sourcelanguage="en">
<context>
    <name>QLineUpDownEdit</name>
    <message>
        <source>Send</source>
        <translation>Envoyer</translation>
    </message>
    <message>
        <source>Sends the command to the first board</source>
        <translation>Envoie la commande à la première carte</translation>
    </message>
</context>
<context>
    <name>TendroPadscope</name>
    <message>
        <source>TendroPadscope</source>
        <translatorcomment>Nom par lequel l&apos;outil est ouvert ; identique dans toutes les langues.</translatorcomment>
        <translation>TendroPadscope</translation>
    </message>
    <message>
        <source>Board diagnostic tool.</source>
        <translation>Outil de diagnostic pour cartes.</translation>
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
        <translation>Mode classique</translation>
    </message>
    <message>
        <source>Fast Computer</source>
        <translation>PC rapide</translation>
    </message>
    <message>
        <source>Slow Computer</source>
        <translation>PC lent</translation>
    </message>
    <message>
        <source>Lock Frequency</source>
        <translation>Verrouiller la fréquence</translation>
    </message>
    <message>
        <source>Raw: %1</source>
        <translation>Valeur brute&#xa0;: %1</translation>
    </message>
    <message>
        <source>Volts: %1</source>
        <translation>Tension&#xa0;: %1&#xa0;V</translation>
    </message>
    <message>
        <source>Min: %1 Max: %2 Delta: %3</source>
        <translation>Min.&#xa0;: %1 Max.&#xa0;: %2 Écart&#xa0;: %3</translation>
    </message>
    <message>
        <source>Signals</source>
        <translation>Signaux</translation>
    </message>
    <message>
        <source>Milliseconds between two reports</source>
        <translation>Millisecondes entre deux rapports</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Fréquence</translation>
    </message>
    <message>
        <source>X fine</source>
        <translation>X fin</translation>
    </message>
    <message>
        <source>Y fine</source>
        <translation>Y fin</translation>
    </message>
    <message>
        <source>X coarse</source>
        <translation>X grossier</translation>
    </message>
    <message>
        <source>Y coarse</source>
        <translation>Y grossier</translation>
    </message>
    <message>
        <source>Voltage</source>
        <translation>Tension</translation>
    </message>
    <message>
        <source>0, 60 and 120 degrees: %1, %2, %3. Magnitude: %4. Angle: %5 of 8192.</source>
        <extracomment>The components of a signal at these three angles, and its vector as it is painted.</extracomment>
        <translation>0, 60 et 120 degrés&#xa0;: %1, %2, %3. Module&#xa0;: %4. Angle&#xa0;: %5 sur 8192.</translation>
    </message>
</context>
<context>
    <name>monitor</name>
    <message>
        <source>Teacher</source>
        <translation>Enseignant</translation>
    </message>
    <message>
        <source>Student</source>
        <translation>Élève</translation>
    </message>
    <message>
        <source>Unknown: %1</source>
        <translation>Inconnu&#xa0;: %1</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>Données</translation>
    </message>
    <message>
        <source>Log to file</source>
        <translation>Journaliser dans un fichier</translation>
    </message>
    <message>
        <source>Fast Computer</source>
        <translation>PC rapide</translation>
    </message>
    <message>
        <source>Slow Computer</source>
        <translation>PC lent</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>Lignes</translation>
    </message>
    <message>
        <source>Newest row</source>
        <translation>Ligne la plus récente</translation>
    </message>
    <message>
        <source>Milliseconds between two reports</source>
        <translation>Millisecondes entre deux rapports</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>Taille de police</translation>
    </message>
</context>
<context>
    <name>qorvexgraph</name>
    <message>
        <source>&lt;i&gt;No device found.&lt;/i&gt;</source>
        <translation>&lt;i&gt;Aucun périphérique trouvé.&lt;/i&gt;</translation>
    </message>
    <message>
        <source>&lt;b&gt;%1 device found.&lt;/b&gt;</source>
        <translation>&lt;b&gt;%1 périphérique trouvé.&lt;/b&gt;</translation>
    </message>
    <message>
        <source>&lt;b&gt;%1 devices found.&lt;/b&gt;</source>
        <translation>&lt;b&gt;%1 périphériques trouvés.&lt;/b&gt;</translation>
    </message>
    <message>
        <source> &lt;i&gt;Paused&lt;/i&gt;</source>
        <translation> &lt;i&gt;En pause&lt;/i&gt;</translation>
    </message>
    <message>
        <source>history/%1</source>
        <translatorcomment>Une clé des réglages ; identique dans toutes les langues.</translatorcomment>
        <translation>history/%1</translation>
    </message>
    <message>
        <source>Bar Graph</source>
        <translation>Graphique à barres</translation>
    </message>
    <message>
        <source>Monitor</source>
        <translation>Moniteur</translation>
    </message>
    <message>
        <source>Padscope</source>
        <translation>Padscope</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Commande</translation>
    </message>
    <message>
        <source>Views</source>
        <translation>Vues</translation>
    </message>
</context>
</TS>
