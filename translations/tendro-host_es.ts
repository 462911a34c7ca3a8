<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES" sourcelanguage="en">
<context>
    <name>BoardMenu</name>
    <message>
        <source>Board</source>
        <translation>Placa</translation>
    </message>
    <message>
        <source>&amp;Plug In</source>
        <translation>&amp;Conectar</translation>
    </message>
    <message>
        <source>&amp;Unplug</source>
        <translation>&amp;Desconectar</translation>
    </message>
    <message>
        <source>No more boards can be plugged in.</source>
        <translation>No se pueden conectar más placas.</translation>
    </message>
    <message>
        <source>Board %1</source>
        <translation>Placa %1</translation>
    </message>
    <message>
        <source>No board</source>
        <translation>Ninguna placa</translation>
    </message>
</context>
<context>
    <name>Category</name>
    <message>
        <source>advanced</source>
        <translation>avanzado</translation>
    </message>
    <message>
        <source>other</source>
        <translation>otros</translation>
    </message>
</context>
<context>
    <name>Fault</name>
    <message>
        <source>The first board is unplugged in the middle of a report.</source>
        <translation>La primera placa se desconecta en mitad de un informe.</translation>
    </message>
    <message>
        <source>500 hot-plug notifications come within half a second, and board 9999 comes and goes.</source>
        <translation>En medio segundo llegan 500 notificaciones de conexión en caliente, y la placa 9999 aparece y desaparece.</translation>
    </message>
    <message>
        <source>The boards together send 10,000 reports a second for 5 s.</source>
        <translation>Las placas envían en conjunto 10&#xa0;000 informes por segundo durante 5&#xa0;s.</translation>
    </message>
    <message>
        <source>The first board sends 650 reports of random bytes at once.</source>
        <translation>La primera placa envía de una vez 650 informes compuestos de bytes aleatorios.</translation>
    </message>
    <message>
        <source>The first board sends 256 reports at once, one of each type.</source>
        <translation>La primera placa envía de una vez 256 informes, uno de cada tipo.</translation>
    </message>
    <message>
        <source>The first board sends 200 texts at once that end no line.</source>
        <translation>La primera placa envía de una vez 200 textos sin fin de línea.</translation>
    </message>
    <message>
        <source>The first board sends a line of 10,000 characters.</source>
        <translation>La primera placa envía una línea de 10&#xa0;000 caracteres.</translation>
    </message>
    <message>
        <source>The first board sends a line of markup.</source>
        <translation>La primera placa envía una línea de etiquetas de marcado.</translation>
    </message>
    <message>
        <source>The first board sends a line of all byte values.</source>
        <translation>La primera placa envía una línea con todos los valores de byte.</translation>
    </message>
    <message>
        <source>The next command takes 2 s.</source>
        <translation>El siguiente comando tarda 2&#xa0;s.</translation>
    </message>
    <message>
        <source>Each command delivers a report on its caller&apos;s thread before it returns.</source>
        <translation>Cada comando entrega un informe en el hilo que lo llama antes de retornar.</translation>
    </message>
    <message>
        <source>The first board cannot be enumerated.</source>
        <translation>La primera placa no se puede enumerar.</translation>
    </message>
    <message>
        <source>The library counts two boards more than there are.</source>
        <translation>La biblioteca cuenta dos placas más de las que hay.</translation>
    </message>
</context>
<context>
    <name>FaultMenu</name>
    <message>
        <source>&amp;Fault</source>
        <translation>&amp;Fallo</translation>
    </message>
    <message>
        <source>%1 is off.</source>
        <translation>%1 está desactivado.</translation>
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
        <translation>Elija una herramienta de la barra de herramientas o pulse Ctrl y su número.</translation>
    </message>
    <message>
        <source>Work area</source>
        <translation>Área de trabajo</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Herramientas</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Estado</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Archivo</translation>
    </message>
    <message>
        <source>&amp;Close Tool</source>
        <translation>&amp;Cerrar herramienta</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Salir</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>Ay&amp;uda</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Acerca de</translation>
    </message>
    <message>
        <source>%1 has no window.</source>
        <translation>%1 no tiene ventana.</translation>
    </message>
    <message>
        <source>%1 - Tendro Host</source>
        <translation>%1 - Tendro Host</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Acerca de</translation>
    </message>
    <message>
        <source>More tools</source>
        <translation>Más herramientas</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>Menús</translation>
    </message>
</context>
<context>
    <name>Replay</name>
    <message>
        <source>max</source>
        <translation>máx.</translation>
    </message>
</context>
<context>
    <name>ReplayBar</name>
    <message>
        <source>waiting</source>
        <translation>en espera</translation>
    </message>
    <message>
        <source>playing</source>
        <translation>en curso</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>en pausa</translation>
    </message>
    <message>
        <source>ended</source>
        <translation>terminada</translation>
    </message>
    <message>
        <source>Replay</source>
        <translation>Reproducción</translation>
    </message>
    <message>
        <source>Position of the replay</source>
        <translation>Posición de la reproducción</translation>
    </message>
    <message>
        <source>Time of the replay</source>
        <translation>Tiempo de la reproducción</translation>
    </message>
    <message>
        <source>Rate and state of the replay</source>
        <translation>Velocidad y estado de la reproducción</translation>
    </message>
    <message>
        <source>More of the replay</source>
        <translation>Más de la reproducción</translation>
    </message>
</context>
<context>
    <name>ReplayMenu</name>
    <message>
        <source>Replay</source>
        <translation>Reproducción</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation>&amp;Pausa</translation>
    </message>
    <message>
        <source>&amp;Step</source>
        <translation>&amp;Avanzar un paso</translation>
    </message>
    <message>
        <source>&amp;Faster</source>
        <translation>Más &amp;rápido</translation>
    </message>
    <message>
        <source>S&amp;lower</source>
        <translation>Más &amp;lento</translation>
    </message>
    <message>
        <source>&amp;Restart</source>
        <translation>Re&amp;iniciar</translation>
    </message>
</context>
<context>
    <name>ReportRates</name>
    <message>
        <source>Reports of the simulated boards</source>
        <translation>Informes de las placas simuladas</translation>
    </message>
    <message>
        <source>Reports a second: %1 sent, %2 delivered</source>
        <translation>Informes por segundo: %1 enviados, %2 entregados</translation>
    </message>
</context>
<context>
    <name>ScenarioMenu</name>
    <message>
        <source>&amp;Open...</source>
        <translation>&amp;Abrir...</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>&amp;Recargar</translation>
    </message>
    <message>
        <source>Open Scenario</source>
        <translation>Abrir escenario</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Todos los archivos (*)</translation>
    </message>
    <message>
        <source>Scenario: %1</source>
        <translation>Escenario: %1</translation>
    </message>
    <message>
        <source>&amp;Scenario: %1</source>
        <translation>&amp;Escenario: %1</translation>
    </message>
    <message>
        <source>Scenario</source>
        <translation>Escenario</translation>
    </message>
    <message>
        <source>Scenarios (*.json *.pcapng)</source>
        <translation>Escenarios (*.json *.pcapng)</translation>
    </message>
</context>
</TS>
