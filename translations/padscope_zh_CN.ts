<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>QLineUpDownEdit</name>
    <message>
        <source>Send</source>
        <translation>发送</translation>
    </message>
    <message>
        <source>Sends the command to the first board</source>
        <translation>将命令发送到第一块数位板</translation>
    </message>
</context>
<context>
    <name>TendroPadscope</name>
    <message>
        <source>TendroPadscope</source>
        <translatorcomment>打开工具所用的名称；在所有语言中保持不变。</translatorcomment>
        <translation>TendroPadscope</translation>
    </message>
    <message>
        <source>Board diagnostic tool.</source>
        <translation>数位板诊断工具。</translation>
    </message>
    <message>
        <source>Copyright (c) 2010 Corvane</source>
        <translation>Copyright (c) 2010 Corvane</translation>
    </message>
    <message>
        <source>Version 1.0</source>
        <translation>版本 1.0</translation>
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
        <translation>经典模式</translation>
    </message>
    <message>
        <source>Fast Computer</source>
        <translation>快速计算机</translation>
    </message>
    <message>
        <source>Slow Computer</source>
        <translation>慢速计算机</translation>
    </message>
    <message>
        <source>Lock Frequency</source>
        <translation>锁定频率</translation>
    </message>
    <message>
        <source>Raw: %1</source>
        <translation>原始值：%1</translation>
    </message>
    <message>
        <source>Volts: %1</source>
        <translation>电压：%1 V</translation>
    </message>
    <message>
        <source>Min: %1 Max: %2 Delta: %3</source>
        <translation>最小：%1 最大：%2 差值：%3</translation>
    </message>
    <message>
        <source>Signals</source>
        <translation>信号</translation>
    </message>
    <message>
        <source>Milliseconds between two reports</source>
        <translation>报告间隔（毫秒）</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>频率</translation>
    </message>
    <message>
        <source>X fine</source>
        <translation>X 精测</translation>
    </message>
    <message>
        <source>Y fine</source>
        <translation>Y 精测</translation>
    </message>
    <message>
        <source>X coarse</source>
        <translation>X 粗测</translation>
    </message>
    <message>
        <source>Y coarse</source>
        <translation>Y 粗测</translation>
    </message>
    <message>
        <source>Voltage</source>
        <translation>电压</translation>
    </message>
    <message>
        <source>0, 60 and 120 degrees: %1, %2, %3. Magnitude: %4. Angle: %5 of 8192.</source>
        <extracomment>The components of a signal at these three angles, and its vector as it is painted.</extracomment>
        <translation>0、60、120 度：%1、%2、%3。幅值：%4。角度：%5（全周 8192）。</translation>
    </message>
</context>
<context>
    <name>monitor</name>
    <message>
        <source>Teacher</source>
        <translatorcomment>日志文件采用 Latin-1 编码，因此日志所需的词也用拉丁字母书写。</translatorcomment>
        <translation>Teacher (教师)</translation>
    </message>
    <message>
        <source>Student</source>
        <translatorcomment>日志文件采用 Latin-1 编码，因此日志所需的词也用拉丁字母书写。</translatorcomment>
        <translation>Student (学生)</translation>
    </message>
    <message>
        <source>Unknown: %1</source>
        <translatorcomment>日志文件采用 Latin-1 编码，因此日志所需的词也用拉丁字母书写。</translatorcomment>
        <translation>Unknown (未知): %1</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>数据</translation>
    </message>
    <message>
        <source>Log to file</source>
        <translation>记录到文件</translation>
    </message>
    <message>
        <source>Fast Computer</source>
        <translation>快速计算机</translation>
    </message>
    <message>
        <source>Slow Computer</source>
        <translation>慢速计算机</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>数据行</translation>
    </message>
    <message>
        <source>Newest row</source>
        <translation>最新一行</translation>
    </message>
    <message>
        <source>Milliseconds between two reports</source>
        <translation>报告间隔（毫秒）</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>字体大小</translation>
    </message>
</context>
<context>
    <name>qorvexgraph</name>
    <message>
        <source>&lt;i&gt;No device found.&lt;/i&gt;</source>
        <translation>&lt;i&gt;未找到设备。&lt;/i&gt;</translation>
    </message>
    <message>
        <source>&lt;b&gt;%1 device found.&lt;/b&gt;</source>
        <translation>&lt;b&gt;找到 %1 台设备。&lt;/b&gt;</translation>
    </message>
    <message>
        <source>&lt;b&gt;%1 devices found.&lt;/b&gt;</source>
        <translation>&lt;b&gt;找到 %1 台设备。&lt;/b&gt;</translation>
    </message>
    <message>
        <source> &lt;i&gt;Paused&lt;/i&gt;</source>
        <translation> &lt;i&gt;已暂停&lt;/i&gt;</translation>
    </message>
    <message>
        <source>history/%1</source>
        <translatorcomment>设置中的键；在所有语言中保持不变。</translatorcomment>
        <translation>history/%1</translation>
    </message>
    <message>
        <source>Bar Graph</source>
        <translation>柱状图</translation>
    </message>
    <message>
        <source>Monitor</source>
        <translation>监视器</translation>
    </message>
    <message>
        <source>Padscope</source>
        <translation>Padscope</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>命令</translation>
    </message>
    <message>
        <source>Views</source>
        <translation>视图</translation>
    </message>
</context>
</TS>
