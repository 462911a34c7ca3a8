<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="en">
<context>
    <name>BoardMenu</name>
    <message>
        <source>Board</source>
        <translation>ボード(B)</translation>
    </message>
    <message>
        <source>&amp;Plug In</source>
        <translation>接続(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Unplug</source>
        <translation>取り外し(&amp;U)</translation>
    </message>
    <message>
        <source>No more boards can be plugged in.</source>
        <translation>これ以上ボードを接続できません。</translation>
    </message>
    <message>
        <source>Board %1</source>
        <translation>ボード %1</translation>
    </message>
    <message>
        <source>No board</source>
        <translation>ボードなし</translation>
    </message>
</context>
<context>
    <name>Category</name>
    <message>
        <source>advanced</source>
        <translation>高度な機能(A)</translation>
    </message>
    <message>
        <source>other</source>
        <translation>その他(O)</translation>
    </message>
</context>
<context>
    <name>Fault</name>
    <message>
        <source>The first board is unplugged in the middle of a report.</source>
        <translation>最初のボードが、レポートの送信途中で取り外されます。</translation>
    </message>
    <message>
        <source>500 hot-plug notifications come within half a second, and board 9999 comes and goes.</source>
        <translation>0.5 秒間にホットプラグ通知が 500 件届き、ボード 9999 が現れては消えます。</translation>
    </message>
    <message>
        <source>The boards together send 10,000 reports a second for 5 s.</source>
        <translation>全ボードが合計で毎秒 10,000 件のレポートを 5 秒間送信します。</translation>
    </message>
    <message>
        <source>The first board sends 650 reports of random bytes at once.</source>
        <translation>最初のボードがランダムなバイトのレポートを一度に 650 件送信します。</translation>
    </message>
    <message>
        <source>The first board sends 256 reports at once, one of each type.</source>
        <translation>最初のボードが各タイプ 1 件ずつ、一度に 256 件のレポートを送信します。</translation>
    </message>
    <message>
        <source>The first board sends 200 texts at once that end no line.</source>
        <translation>最初のボードが改行で終わらないテキストを一度に 200 件送信します。</translation>
    </message>
    <message>
        <source>The first board sends a line of 10,000 characters.</source>
        <translation>最初のボードが 10,000 文字の行を送信します。</translation>
    </message>
    <message>
        <source>The first board sends a line of markup.</source>
        <translation>最初のボードがマークアップを含む行を送信します。</translation>
    </message>
    <message>
        <source>The first board sends a line of all byte values.</source>
        <translation>最初のボードがすべてのバイト値を含む行を送信します。</translation>
    </message>
    <message>
        <source>The next command takes 2 s.</source>
        <translation>次のコマンドに 2 秒かかります。</translation>
    </message>
    <message>
        <source>Each command delivers a report on its caller&apos;s thread before it returns.</source>
        <translation>各コマンドは、制御を戻す前に、呼び出し元のスレッドでレポートを 1 件配信します。</translation>
    </message>
    <message>
        <source>The first board cannot be enumerated.</source>
        <translation>最初のボードを列挙できません。</translation>
    </message>
    <message>
        <source>The library counts two boards more than there are.</source>
        <translation>ライブラリが返すボード数が、実際より 2 台多くなります。</translation>
    </message>
</context>
<context>
    <name>FaultMenu</name>
    <message>
        <source>&amp;Fault</source>
        <translation>障害(&amp;F)</translation>
    </message>
    <message>
        <source>%1 is off.</source>
        <translation>%1 はオフです。</translation>
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
        <translation>ツールバーからツールを選ぶか、Ctrl キーを押しながらツールの番号を押してください。</translation>
    </message>
    <message>
        <source>Work area</source>
        <translation>作業領域</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>ツール</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>ステータス</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>ファイル(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Close Tool</source>
        <translation>ツールを閉じる(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>終了(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>ヘルプ(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>バージョン情報(&amp;A)</translation>
    </message>
    <message>
        <source>%1 has no window.</source>
        <translation>%1 にはウィンドウがありません。</translation>
    </message>
    <message>
        <source>%1 - Tendro Host</source>
        <translation>%1 - Tendro Host</translation>
    </message>
    <message>
        <source>About</source>
        <translation>バージョン情報</translation>
    </message>
    <message>
        <source>More tools</source>
        <translation>その他のツール</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>メニュー</translation>
    </message>
</context>
<context>
    <name>Replay</name>
    <message>
        <source>max</source>
        <translation>最大</translation>
    </message>
</context>
<context>
    <name>ReplayBar</name>
    <message>
        <source>waiting</source>
        <translation>待機中</translation>
    </message>
    <message>
        <source>playing</source>
        <translation>再生中</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>一時停止中</translation>
    </message>
    <message>
        <source>ended</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Replay</source>
        <translation>再生</translation>
    </message>
    <message>
        <source>Position of the replay</source>
        <translation>再生位置</translation>
    </message>
    <message>
        <source>Time of the replay</source>
        <translation>再生時間</translation>
    </message>
    <message>
        <source>Rate and state of the replay</source>
        <translation>再生速度と状態</translation>
    </message>
    <message>
        <source>More of the replay</source>
        <translation>再生のその他の項目</translation>
    </message>
</context>
<context>
    <name>ReplayMenu</name>
    <message>
        <source>Replay</source>
        <translation>再生(R)</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation>一時停止(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Step</source>
        <translation>1 ステップ進む(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Faster</source>
        <translation>速くする(&amp;F)</translation>
    </message>
    <message>
        <source>S&amp;lower</source>
        <translation>遅くする(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Restart</source>
        <translation>最初から再生(&amp;R)</translation>
    </message>
</context>
<context>
    <name>ReportRates</name>
    <message>
        <source>Reports of the simulated boards</source>
        <translation>シミュレートされたボードのレポート</translation>
    </message>
    <message>
        <source>Reports a second: %1 sent, %2 delivered</source>
        <translation>毎秒のレポート数: 送信 %1、配信 %2</translation>
    </message>
</context>
<context>
    <name>ScenarioMenu</name>
    <message>
        <source>&amp;Open...</source>
        <translation>開く(&amp;O)...</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>再読み込み(&amp;R)</translation>
    </message>
    <message>
        <source>Open Scenario</source>
        <translation>シナリオを開く</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>すべてのファイル (*)</translation>
    </message>
    <message>
        <source>Scenario: %1</source>
        <translation>シナリオ: %1</translation>
    </message>
    <message>
        <source>&amp;Scenario: %1</source>
        <translation>シナリオ(&amp;S): %1</translation>
    </message>
    <message>
        <source>Scenario</source>
        <translation>シナリオ</translation>
    </message>
    <message>
        <source>Scenarios (*.json *.pcapng)</source>
        <translation>シナリオ (*.json *.pcapng)</translation>
    </message>
</context>
</TS>
