<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>BoardMenu</name>
    <message>
        <source>Board</source>
        <translation>数位板(B)</translation>
    </message>
    <message>
        <source>&amp;Plug In</source>
        <translation>插入(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Unplug</source>
        <translation>拔出(&amp;U)</translation>
    </message>
    <message>
        <source>No more boards can be plugged in.</source>
        <translation>无法再插入更多数位板。</translation>
    </message>
    <message>
        <source>Board %1</source>
        <translation>数位板 %1</translation>
    </message>
    <message>
        <source>No board</source>
        <translation>没有数位板</translation>
    </message>
</context>
<context>
    <name>Category</name>
    <message>
        <source>advanced</source>
        <translation>高级(A)</translation>
    </message>
    <message>
        <source>other</source>
        <translation>其他(O)</translation>
    </message>
</context>
<context>
    <name>Fault</name>
    <message>
        <source>The first board is unplugged in the middle of a report.</source>
        <translation>第一块数位板在报告发送到一半时被拔出。</translation>
    </message>
    <message>
        <source>500 hot-plug notifications come within half a second, and board 9999 comes and goes.</source>
        <translation>半秒内收到 500 条热插拔通知，数位板 9999 反复出现又消失。</translation>
    </message>
    <message>
        <source>The boards together send 10,000 reports a second for 5 s.</source>
        <translation>所有数位板合计每秒发送 10,000 个报告，持续 5 秒。</translation>
    </message>
    <message>
        <source>The first board sends 650 reports of random bytes at once.</source>
        <translation>第一块数位板一次性发送 650 个由随机字节组成的报告。</translation>
    </message>
    <message>
        <source>The first board sends 256 reports at once, one of each type.</source>
        <translation>第一块数位板一次性发送 256 个报告，每种类型一个。</translation>
    </message>
    <message>
        <source>The first board sends 200 texts at once that end no line.</source>
        <translation>第一块数位板一次性发送 200 段没有换行符的文本。</translation>
    </message>
    <message>
        <source>The first board sends a line of 10,000 characters.</source>
        <translation>第一块数位板发送一行 10,000 个字符的文本。</translation>
    </message>
    <message>
        <source>The first board sends a line of markup.</source>
        <translation>第一块数位板发送一行包含标记的文本。</translation>
    </message>
    <message>
        <source>The first board sends a line of all byte values.</source>
        <translation>第一块数位板发送一行包含所有字节值的文本。</translation>
    </message>
    <message>
        <source>The next command takes 2 s.</source>
        <translation>下一条命令耗时 2 秒。</translation>
    </message>
    <message>
        <source>Each command delivers a report on its caller&apos;s thread before it returns.</source>
        <translation>每条命令在返回前都会在调用者的线程中送达一个报告。</translation>
    </message>
    <message>
        <source>The first board cannot be enumerated.</source>
        <translation>无法枚举第一块数位板。</translation>
    </message>
    <message>
        <source>The library counts two boards more than there are.</source>
        <translation>库返回的数位板数量比实际多两块。</translation>
    </message>
</context>
<context>
    <name>FaultMenu</name>
    <message>
        <source>&amp;Fault</source>
        <translation>故障(&amp;F)</translation>
    </message>
    <message>
        <source>%1 is off.</source>
        <translation>%1 已关闭。</translation>
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
        <translation>请从工具栏选择一个工具，或按住 Ctrl 并按工具编号。</translation>
    </message>
    <message>
        <source>Work area</source>
        <translation>工作区</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>工具</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Close Tool</source>
        <translation>关闭工具(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>关于(&amp;A)</translation>
    </message>
    <message>
        <source>%1 has no window.</source>
        <translation>%1 没有窗口。</translation>
    </message>
    <message>
        <source>%1 - Tendro Host</source>
        <translation>%1 - Tendro Host</translation>
    </message>
    <message>
        <source>About</source>
        <translation>关于</translation>
    </message>
    <message>
        <source>More tools</source>
        <translation>更多工具</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>菜单</translation>
    </message>
</context>
<context>
    <name>Replay</name>
    <message>
        <source>max</source>
        <translation>最快</translation>
    </message>
</context>
<context>
    <name>ReplayBar</name>
    <message>
        <source>waiting</source>
        <translation>等待中</translation>
    </message>
    <message>
        <source>playing</source>
        <translation>回放中</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>已暂停</translation>
    </message>
    <message>
        <source>ended</source>
        <translation>已结束</translation>
    </message>
    <message>
        <source>Replay</source>
        <translation>回放</translation>
    </message>
    <message>
        <source>Position of the replay</source>
        <translation>回放位置</translation>
    </message>
    <message>
        <source>Time of the replay</source>
        <translation>回放时间</translation>
    </message>
    <message>
        <source>Rate and state of the replay</source>
        <translation>回放速度和状态</translation>
    </message>
    <message>
        <source>More of the replay</source>
        <translation>回放的更多内容</translation>
    </message>
</context>
<context>
    <name>ReplayMenu</name>
    <message>
        <source>Replay</source>
        <translation>回放(R)</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation>暂停(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Step</source>
        <translation>单步(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Faster</source>
        <translation>加速(&amp;F)</translation>
    </message>
    <message>
        <source>S&amp;lower</source>
        <translation>减速(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Restart</source>
        <translation>从头开始(&amp;R)</translation>
    </message>
</context>
<context>
    <name>ReportRates</name>
    <message>
        <source>Reports of the simulated boards</source>
        <translation>虚拟数位板的报告</translation>
    </message>
    <message>
        <source>Reports a second: %1 sent, %2 delivered</source>
        <translation>每秒报告数：发送 %1，送达 %2</translation>
    </message>
</context>
<context>
    <name>ScenarioMenu</name>
    <message>
        <source>&amp;Open...</source>
        <translation>打开(&amp;O)...</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>重新加载(&amp;R)</translation>
    </message>
    <message>
        <source>Open Scenario</source>
        <translation>打开场景</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>所有文件 (*)</translation>
    </message>
    <message>
        <source>Scenario: %1</source>
        <translation>场景：%1</translation>
    </message>
    <message>
        <source>&amp;Scenario: %1</source>
        <translation>场景(&amp;S)：%1</translation>
    </message>
    <message>
        <source>Scenario</source>
        <translation>场景</translation>
    </message>
    <message>
        <source>Scenarios (*.json *.pcapng)</source>
        <translation>场景 (*.json *.pcapng)</translation>
    </message>
</context>
</TS>
