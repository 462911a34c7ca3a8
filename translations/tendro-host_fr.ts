<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR" sourcelanguage="en">
<context>
    <name>BoardMenu</name>
    <message>
        <source>Board</source>
        <translation>Carte</translation>
    </message>
    <message>
        <source>&amp;Plug In</source>
        <translation>&amp;Brancher</translation>
    </message>
    <message>
        <source>&amp;Unplug</source>
        <translation>&amp;Débrancher</translation>
    </message>
    <message>
        <source>No more boards can be plugged in.</source>
        <translation>Impossible de brancher d&apos;autres cartes.</translation>
    </message>
    <message>
        <source>Board %1</source>
        <translation>Carte %1</translation>
    </message>
    <message>
        <source>No board</source>
        <translation>Aucune carte</translation>
    </message>
</context>
<context>
    <name>Category</name>
    <message>
        <source>advanced</source>
        <translation>avancé</translation>
    </message>
    <message>
        <source>other</source>
        <translation>autres</translation>
    </message>
</context>
<context>
    <name>Fault</name>
    <message>
        <source>The first board is unplugged in the middle of a report.</source>
        <translation>La première carte est débranchée au milieu d&apos;un rapport.</translation>
    </message>
    <message>
        <source>500 hot-plug notifications come within half a second, and board 9999 comes and goes.</source>
        <translation>500 notifications de branchement à chaud arrivent en une demi-seconde, et la carte 9999 apparaît et disparaît.</translation>
    </message>
    <message>
        <source>The boards together send 10,000 reports a second for 5 s.</source>
        <translation>Les cartes envoient ensemble 10&#xa0;000 rapports par seconde pendant 5&#xa0;s.</translation>
    </message>
    <message>
        <source>The first board sends 650 reports of random bytes at once.</source>
        <translation>La première carte envoie d&apos;un coup 650 rapports composés d&apos;octets aléatoires.</translation>
    </message>
    <message>
        <source>The first board sends 256 reports at once, one of each type.</source>
        <translation>La première carte envoie d&apos;un coup 256 rapports, un de chaque type.</translation>
    </message>
    <message>
        <source>The first board sends 200 texts at once that end no line.</source>
        <translation>La première carte envoie d&apos;un coup 200 textes sans fin de ligne.</translation>
    </message>
    <message>
        <source>The first board sends a line of 10,000 characters.</source>
        <translation>La première carte envoie une ligne de 10&#xa0;000 caractères.</translation>
    </message>
    <message>
        <source>The first board sends a line of markup.</source>
        <translation>La première carte envoie une ligne de balises.</translation>
    </message>
    <message>
        <source>The first board sends a line of all byte values.</source>
        <translation>La première carte envoie une ligne contenant toutes les valeurs d&apos;octet.</translation>
    </message>
    <message>
        <source>The next command takes 2 s.</source>
        <translation>La prochaine commande dure 2&#xa0;s.</translation>
    </message>
    <message>
        <source>Each command delivers a report on its caller&apos;s thread before it returns.</source>
        <translation>Chaque commande remet un rapport dans le thread de l&apos;appelant avant de rendre la main.</translation>
    </message>
    <message>
        <source>The first board cannot be enumerated.</source>
        <translation>La première carte ne peut pas être énumérée.</translation>
    </message>
    <message>
        <source>The library counts two boards more than there are.</source>
        <translation>La bibliothèque compte deux cartes de plus qu&apos;il n&apos;y en a.</translation>
    </message>
</context>
<context>
    <name>FaultMenu</name>
    <message>
        <source>&amp;Fault</source>
        <translation>Dé&amp;faut</translation>
    </message>
    <message>
        <source>%1 is off.</source>
        <translation>%1 est désactivé.</translation>
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
        <translation>Choisissez un outil dans la barre d&apos;outils, ou appuyez sur Ctrl et sur son numéro.</translation>
    </message>
    <message>
        <source>Work area</source>
        <translation>Zone de travail</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Outils</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>État</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>&amp;Close Tool</source>
        <translation>&amp;Fermer l&apos;outil</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Aide</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>À &amp;propos</translation>
    </message>
    <message>
        <source>%1 has no window.</source>
        <translation>%1 n&apos;a pas de fenêtre.</translation>
    </message>
    <message>
        <source>%1 - Tendro Host</source>
        <translation>%1 - Tendro Host</translation>
    </message>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
    <message>
        <source>More tools</source>
        <translation>Autres outils</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>Menus</translation>
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
        <translation>en attente</translation>
    </message>
    <message>
        <source>playing</source>
        <translation>en cours</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>en pause</translation>
    </message>
    <message>
        <source>ended</source>
        <translation>terminée</translation>
    </message>
    <message>
        <source>Replay</source>
        <translation>Relecture</translation>
    </message>
    <message>
        <source>Position of the replay</source>
        <translation>Position de la relecture</translation>
    </message>
    <message>
        <source>Time of the replay</source>
        <translation>Temps de la relecture</translation>
    </message>
    <message>
        <source>Rate and state of the replay</source>
        <translation>Vitesse et état de la relecture</translation>
    </message>
    <message>
        <source>More of the replay</source>
        <translation>Suite de la relecture</translation>
    </message>
</context>
<context>
    <name>ReplayMenu</name>
    <message>
        <source>Replay</source>
        <translation>Relecture</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation>&amp;Pause</translation>
    </message>
    <message>
        <source>&amp;Step</source>
        <translation>&amp;Avancer d&apos;un pas</translation>
    </message>
    <message>
        <source>&amp;Faster</source>
        <translation>Plus &amp;vite</translation>
    </message>
    <message>
        <source>S&amp;lower</source>
        <translation>Plus &amp;lentement</translation>
    </message>
    <message>
        <source>&amp;Restart</source>
        <translation>&amp;Recommencer</translation>
    </message>
</context>
<context>
    <name>ReportRates</name>
    <message>
        <source>Reports of the simulated boards</source>
        <translation>Rapports des cartes simulées</translation>
    </message>
    <message>
        <source>Reports a second: %1 sent, %2 delivered</source>
        <translation>Rapports par seconde&#xa0;: %1 envoyés, %2 remis</translation>
    </message>
</context>
<context>
    <name>ScenarioMenu</name>
    <message>
        <source>&amp;Open...</source>
        <translation>&amp;Ouvrir...</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>&amp;Recharger</translation>
    </message>
    <message>
        <source>Open Scenario</source>
        <translation>Ouvrir un scénario</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Tous les fichiers (*)</translation>
    </message>
    <message>
        <source>Scenario: %1</source>
        <translation>Scénario&#xa0;: %1</translation>
    </message>
    <message>
        <source>&amp;Scenario: %1</source>
        <translation>&amp;Scénario&#xa0;: %1</translation>
    </message>
    <message>
        <source>Scenario</source>
        <translation>Scénario</translation>
    </message>
    <message>
        <source>Scenarios (*.json *.pcapng)</source>
        <translation>Scénarios (*.json *.pcapng)</translation>
    </message>
</context>
</TS>
