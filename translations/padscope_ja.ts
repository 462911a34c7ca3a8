<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="en">
<context>
    <name>QLineUpDownEdit</name>
    <message>
        <source>Send</source>
        <translation>送信</translation>
    </message>
    <message>
        <source>Sends the command to the first board</source>
        <translation>コマンドを最初のボードに送信します</translation>
    </message>
</context>
<context>
    <name>TendroPadscope</name>
    <message>
        <source>TendroPadscope</source>
        <translatorcomment>ツールを開くときの名前。すべての言語で同じ。</translatorcomment>
        <translation>TendroPadscope</translation>
    </message>
    <message>
        <source>Board diagnostic tool.</source>
        <translation>ボードの診断ツールです。</translation>
    </message>
    <message>
        <source>Copyright (c) 2010 Corvane</source>
        <translation>Copyright (c) 2010 Corvane</translation>
    </message>
    <message>
        <source>Version 1.0</source>
        <translation>バージョン 1.0</translation>
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
        <translation>クラシックモード</translation>
    </message>
    <message>
        <source>Fast Computer</source>
        <translation>高速な PC</translation>
    </message>
    <message>
        <source>Slow Computer</source>
        <translation>低速な PC</translation>
    </message>
    <message>
        <source>Lock Frequency</source>
        <translation>周波数を固定</translation>
    </message>
    <message>
        <source>Raw: %1</source>
        <translation>生の値: %1</translation>
    </message>
    <message>
        <source>Volts: %1</source>
        <translation>電圧: %1 V</translation>
    </message>
    <message>
        <source>Min: %1 Max: %2 Delta: %3</source>
        <translation>最小: %1 最大: %2 差: %3</translation>
    </message>
    <message>
        <source>Signals</source>
        <translation>信号</translation>
    </message>
    <message>
        <source>Milliseconds between two reports</source>
        <translation>レポートの間隔 (ミリ秒)</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>周波数</translation>
    </message>
    <message>
        <source>X fine</source>
        <translation>X 精測</translation>
    </message>
    <message>
        <source>Y fine</source>
        <translation>Y 精測</translation>
    </message>
    <message>
        <source>X coarse</source>
        <translation>X 粗測</translation>
    </message>
    <message>
        <source>Y coarse</source>
        <translation>Y 粗測</translation>
    </message>
    <message>
        <source>Voltage</source>
        <translation>電圧</translation>
    </message>
    <message>
        <source>0, 60 and 120 degrees: %1, %2, %3. Magnitude: %4. Angle: %5 of 8192.</source>
        <extracomment>The components of a signal at these three angles, and its vector as it is painted.</extracomment>
        <translation>0、60、120 度: %1、%2、%3。大きさ: %4。角度: %5 (全周 8192)。</translation>
    </message>
</context>
<context>
    <name>monitor</name>
    <message>
        <source>Teacher</source>
        <translatorcomment>ログファイルは Latin-1 なので、ログに必要な語はラテン文字でも書く。</translatorcomment>
        <translation>Teacher (先生)</translation>
    </message>
    <message>
        <source>Student</source>
        <translatorcomment>ログファイルは Latin-1 なので、ログに必要な語はラテン文字でも書く。</translatorcomment>
        <translation>Student (生徒)</translation>
    </message>
    <message>
        <source>Unknown: %1</source>
        <translatorcomment>ログファイルは Latin-1 なので、ログに必要な語はラテン文字でも書く。</translatorcomment>
        <translation>Unknown (不明): %1</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>データ</translation>
    </message>
    <message>
        <source>Log to file</source>
        <translation>ファイルに記録</translation>
    </message>
    <message>
        <source>Fast Computer</source>
        <translation>高速な PC</translation>
    </message>
    <message>
        <source>Slow Computer</source>
        <translation>低速な PC</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>データ行</translation>
    </message>
    <message>
        <source>Newest row</source>
        <translation>最新の行</translation>
    </message>
    <message>
        <source>Milliseconds between two reports</source>
        <translation>レポートの間隔 (ミリ秒)</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>フォントサイズ</translation>
    </message>
</context>
<context>
    <name>qorvexgraph</name>
    <message>
        <source>&lt;i&gt;No device found.&lt;/i&gt;</source>
        <translation>&lt;i&gt;デバイスが見つかりません。&lt;/i&gt;</translation>
    </message>
    <message>
        <source>&lt;b&gt;%1 device found.&lt;/b&gt;</source>
        <translation>&lt;b&gt;%1 台のデバイスが見つかりました。&lt;/b&gt;</translation>
    </message>
    <message>
        <source>&lt;b&gt;%1 devices found.&lt;/b&gt;</source>
        <translation>&lt;b&gt;%1 台のデバイスが見つかりました。&lt;/b&gt;</translation>
    </message>
    <message>
        <source> &lt;i&gt;Paused&lt;/i&gt;</source>
        <translation> &lt;i&gt;一時停止中&lt;/i&gt;</translation>
    </message>
    <message>
        <source>history/%1</source>
        <translatorcomment>設定のキー。すべての言語で同じ。</translatorcomment>
        <translation>history/%1</translation>
    </message>
    <message>
        <source>Bar Graph</source>
        <translation>棒グラフ</translation>
    </message>
    <message>
        <source>Monitor</source>
        <translation>モニター</translation>
    </message>
    <message>
        <source>Padscope</source>
        <translation>Padscope</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>コマンド</translation>
    </message>
    <message>
        <source>Views</source>
        <translation>ビュー</translation>
    </message>
</context>
</TS>
