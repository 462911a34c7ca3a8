<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR" sourcelanguage="en">
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
</context>
</TS>
