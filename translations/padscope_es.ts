<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES" sourcelanguage="en">
<context>
    <name>QLineUpDownEdit</name>
    <message>
        <source>Send</source>
        <translation>Enviar</translation>
    </message>
    <message>
        <source>Sends the command to the first board</source>
        <translation>Envía el comando a la primera placa</translation>
    </message>
</context>
<context>
    <name>TendroPadscope</name>
    <message>
        <source>TendroPadscope</source>
        <translatorcomment>Nombre con el que se abre la herramienta; igual en todos los idiomas.</translatorcomment>
        <translation>TendroPadscope</translation>
    </message>
    <message>
        <source>Board diagnostic tool.</source>
        <translation>Herramienta de diagnóstico de placas.</translation>
    </message>
    <message>
        <source>Copyright (c) 2010 Corvane</source>
        <translation>Copyright (c) 2010 Corvane</translation>
    </message>
    <message>
        <source>Version 1.0</source>
        <translation>Versión 1.0</translation>
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
        <translation>Modo clásico</translation>
    </message>
    <message>
        <source>Fast Computer</source>
        <translation>PC rápido</translation>
    </message>
    <message>
        <source>Slow Computer</source>
        <translation>PC lento</translation>
    </message>
    <message>
        <source>Lock Frequency</source>
        <translation>Fijar frecuencia</translation>
    </message>
    <message>
        <source>Raw: %1</source>
        <translation>Valor bruto: %1</translation>
    </message>
    <message>
        <source>Volts: %1</source>
        <translation>Tensión: %1&#xa0;V</translation>
    </message>
    <message>
        <source>Min: %1 Max: %2 Delta: %3</source>
        <translation>Mín.: %1 Máx.: %2 Diferencia: %3</translation>
    </message>
    <message>
        <source>Signals</source>
        <translation>Señales</translation>
    </message>
    <message>
        <source>Milliseconds between two reports</source>
        <translation>Milisegundos entre dos informes</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frecuencia</translation>
    </message>
    <message>
        <source>X fine</source>
        <translation>X fino</translation>
    </message>
    <message>
        <source>Y fine</source>
        <translation>Y fino</translation>
    </message>
    <message>
        <source>X coarse</source>
        <translation>X grueso</translation>
    </message>
    <message>
        <source>Y coarse</source>
        <translation>Y grueso</translation>
    </message>
    <message>
        <source>Voltage</source>
        <translation>Tensión</translation>
    </message>
    <message>
        <source>0, 60 and 120 degrees: %1, %2, %3. Magnitude: %4. Angle: %5 of 8192.</source>
        <extracomment>The components of a signal at these three angles, and its vector as it is painted.</extracomment>
        <translation>0, 60 y 120 grados: %1, %2, %3. Módulo: %4. Ángulo: %5 de 8192.</translation>
    </message>
</context>
<context>
    <name>monitor</name>
    <message>
        <source>Teacher</source>
        <translation>Profesor</translation>
    </message>
    <message>
        <source>Student</source>
        <translation>Alumno</translation>
    </message>
    <message>
        <source>Unknown: %1</source>
        <translation>Desconocido: %1</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>Datos</translation>
    </message>
    <message>
        <source>Log to file</source>
        <translation>Registrar en archivo</translation>
    </message>
    <message>
        <source>Fast Computer</source>
        <translation>PC rápido</translation>
    </message>
    <message>
        <source>Slow Computer</source>
        <translation>PC lento</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>Filas</translation>
    </message>
    <message>
        <source>Newest row</source>
        <translation>Fila más reciente</translation>
    </message>
    <message>
        <source>Milliseconds between two reports</source>
        <translation>Milisegundos entre dos informes</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>Tamaño de letra</translation>
    </message>
</context>
<context>
    <name>qorvexgraph</name>
    <message>
        <source>&lt;i&gt;No device found.&lt;/i&gt;</source>
        <translation>&lt;i&gt;No se encontró ningún dispositivo.&lt;/i&gt;</translation>
    </message>
    <message>
        <source>&lt;b&gt;%1 device found.&lt;/b&gt;</source>
        <translation>&lt;b&gt;%1 dispositivo encontrado.&lt;/b&gt;</translation>
    </message>
    <message>
        <source>&lt;b&gt;%1 devices found.&lt;/b&gt;</source>
        <translation>&lt;b&gt;%1 dispositivos encontrados.&lt;/b&gt;</translation>
    </message>
    <message>
        <source> &lt;i&gt;Paused&lt;/i&gt;</source>
        <translation> &lt;i&gt;En pausa&lt;/i&gt;</translation>
    </message>
    <message>
        <source>history/%1</source>
        <translatorcomment>Una clave de los ajustes; igual en todos los idiomas.</translatorcomment>
        <translation>history/%1</translation>
    </message>
    <message>
        <source>Bar Graph</source>
        <translation>Gráfico de barras</translation>
    </message>
    <message>
        <source>Monitor</source>
        <translation>Monitor</translation>
    </message>
    <message>
        <source>Padscope</source>
        <translation>Padscope</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Comando</translation>
    </message>
    <message>
        <source>Views</source>
        <translation>Vistas</translation>
    </message>
</context>
</TS>
