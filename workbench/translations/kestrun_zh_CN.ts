<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en_US">
<context>
    <name>AppearancePage</name>
    <message>
        <source>Theme:</source>
        <translation>主题：</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>浅色</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>深色</translation>
    </message>
    <message>
        <source>Language:</source>
        <translation>语言：</translation>
    </message>
    <message>
        <source>Open editors are opened anew when theme or language change.</source>
        <translation>切换主题或语言时，已打开的编辑器会重新打开。</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外观</translation>
    </message>
</context>
<context>
    <name>AxesDifferenceDialog</name>
    <message>
        <source>Take axes over</source>
        <translation>下载轴</translation>
    </message>
    <message>
        <source>Differences</source>
        <translation>差异</translation>
    </message>
    <message>
        <source>Axis</source>
        <translation>轴</translation>
    </message>
    <message>
        <source>Parameter</source>
        <translation>参数</translation>
    </message>
    <message>
        <source>In the project</source>
        <translation>工程中</translation>
    </message>
    <message>
        <source>In the controller</source>
        <translation>控制器中</translation>
    </message>
    <message>
        <source>Taking over puts all axes of the project into the controller in place of its own. Axes that differ in their numbers cannot be debugged before that.</source>
        <translation>下载会用工程中的全部轴替换控制器中的轴。在此之前，编号不同的轴不能调试。</translation>
    </message>
    <message>
        <source>The axes of the project and of the controller at %1 are not the same. Axes that differ: %2, differences: %3.</source>
        <translation>工程与控制器 %1 中的轴不一致。不同的轴：%2，差异：%3。</translation>
    </message>
    <message>
        <source>Take over</source>
        <translation>下载</translation>
    </message>
    <message>
        <source>Not now</source>
        <translation>暂不</translation>
    </message>
    <message>
        <source>present</source>
        <translation>存在</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>缺少</translation>
    </message>
    <message>
        <source>whole axis</source>
        <translation>整个轴</translation>
    </message>
</context>
<context>
    <name>AxesTakeover</name>
    <message>
        <source>The axes of the controller at %1 cannot be read: %2</source>
        <translation>无法读取 %1 处控制器的轴：%2</translation>
    </message>
    <message>
        <source>The axes of the controller at %1 cannot be read, so online debugging is off: %2</source>
        <translation>无法读取控制器 %1 中的轴，因此在线调试不可用：%2</translation>
    </message>
    <message>
        <source>The controller has the axes of the project.</source>
        <translation>控制器中的轴与工程一致。</translation>
    </message>
    <message>
        <source>The axes in the controller at %1 have been replaced; they are compared with the project again.</source>
        <translation>控制器 %1 中的轴已被更换，将重新与工程比较。</translation>
    </message>
    <message>
        <source>The controller at %1 has taken the axes over.</source>
        <translation>轴已下载到控制器 %1。</translation>
    </message>
    <message>
        <source>axis %1: </source>
        <translation>轴 %1：</translation>
    </message>
    <message>
        <source>axis %1, %2: </source>
        <translation>轴 %1，%2：</translation>
    </message>
    <message>
        <source>The controller at %1 has not taken the axes over: %2%3 %4</source>
        <translation>控制器 %1 未接受下载的轴：%2%3 %4</translation>
    </message>
    <message>
        <source>The controller runs its axes with other parameters than the project has.</source>
        <translation>控制器中轴的参数与工程不同。</translation>
    </message>
    <message>
        <source>The controller has other axes than the project; online debugging is off until it has taken the project&apos;s axes over.</source>
        <translation>控制器中的轴与工程不同；在下载工程中的轴之前，在线调试不可用。</translation>
    </message>
</context>
<context>
    <name>AxisModel</name>
    <message>
        <source>The axis %1 is not stored: it has been removed.</source>
        <translation>轴 %1 未保存：它已被删除。</translation>
    </message>
    <message>
        <source>The axis %1 is not stored. %2</source>
        <translation>轴 %1 未保存。%2</translation>
    </message>
</context>
<context>
    <name>CommandLog</name>
    <message>
        <source>Stop all axes</source>
        <translation>停止所有轴</translation>
    </message>
    <message>
        <source>hold</source>
        <translation>保持</translation>
    </message>
    <message>
        <source>release</source>
        <translation>解除</translation>
    </message>
    <message>
        <source>Debug mode</source>
        <translation>调试模式</translation>
    </message>
    <message>
        <source>enter</source>
        <translation>进入</translation>
    </message>
    <message>
        <source>leave</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>使能</translation>
    </message>
    <message>
        <source>on</source>
        <translation>开</translation>
    </message>
    <message>
        <source>off</source>
        <translation>关</translation>
    </message>
    <message>
        <source>Preset position</source>
        <translation>预设位置</translation>
    </message>
    <message>
        <source>Origin offset</source>
        <translation>原点偏移</translation>
    </message>
    <message>
        <source>Speed multiplier</source>
        <translation>速度倍率</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>回原点</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Absolute move</source>
        <translation>绝对定位</translation>
    </message>
    <message>
        <source>Relative move</source>
        <translation>相对定位</translation>
    </message>
    <message>
        <source>Continuous move</source>
        <translation>连续运动</translation>
    </message>
    <message>
        <source>Jog forwards</source>
        <translation>正向点动</translation>
    </message>
    <message>
        <source>start</source>
        <translation>开始</translation>
    </message>
    <message>
        <source>end</source>
        <translation>结束</translation>
    </message>
    <message>
        <source>Jog backwards</source>
        <translation>负向点动</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>复位</translation>
    </message>
    <message>
        <source>time-out %1 ms</source>
        <translation>超时 %1 ms</translation>
    </message>
    <message>
        <source>position</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>velocity</source>
        <translation>速度</translation>
    </message>
    <message>
        <source>acceleration</source>
        <translation>加速度</translation>
    </message>
    <message>
        <source>deceleration</source>
        <translation>减速度</translation>
    </message>
    <message>
        <source>jerk</source>
        <translation>加加速度</translation>
    </message>
    <message>
        <source>all</source>
        <translation>全部</translation>
    </message>
    <message>
        <source>done</source>
        <translation>完成</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Axis</source>
        <translation>轴</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>命令</translation>
    </message>
    <message>
        <source>Arguments</source>
        <translation>参数</translation>
    </message>
    <message>
        <source>Answer</source>
        <translation>应答</translation>
    </message>
    <message>
        <source>Duration (ms)</source>
        <translation>耗时 (ms)</translation>
    </message>
</context>
<context>
    <name>CommandLogPanel</name>
    <message>
        <source>Copy the chosen lines, or all</source>
        <translation>复制所选行；未选择时复制全部</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清空</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>命令</translation>
    </message>
</context>
<context>
    <name>CommunicationPage</name>
    <message>
        <source>Poll period:</source>
        <translation>轮询周期：</translation>
    </message>
    <message>
        <source> ms</source>
        <translation> 毫秒</translation>
    </message>
    <message>
        <source>Time-out in debug mode:</source>
        <translation>调试模式超时：</translation>
    </message>
    <message>
        <source>Twelve poll periods (%1 ms) do not stay below the time-out (%2 ms): the controller may leave debug mode while an axis is being watched.</source>
        <translation>十二个轮询周期（%1 毫秒）不小于超时时间（%2 毫秒）：监视轴时控制器可能会退出调试模式。</translation>
    </message>
    <message>
        <source>Communication</source>
        <translation>通信</translation>
    </message>
</context>
<context>
    <name>ComparisonFlows</name>
    <message>
        <source>Compare with project</source>
        <translation>与工程比较</translation>
    </message>
    <message>
        <source>Kestrun projects (*%1)</source>
        <translation>Kestrun 工程 (*%1)</translation>
    </message>
    <message>
        <source>Comparing with %1.</source>
        <translation>正在与 %1 比较。</translation>
    </message>
</context>
<context>
    <name>ComparisonPanel</name>
    <message>
        <source>Compare with project…</source>
        <translation>与工程比较…</translation>
    </message>
    <message>
        <source>Close comparison</source>
        <translation>关闭比较</translation>
    </message>
    <message>
        <source>This project</source>
        <translation>本工程</translation>
    </message>
    <message>
        <source>Other project</source>
        <translation>另一工程</translation>
    </message>
    <message>
        <source>Only keys that differ</source>
        <translation>仅显示不同的项</translation>
    </message>
    <message>
        <source>Keys of the axis with both values</source>
        <translation>轴的各项及两侧的值</translation>
    </message>
    <message>
        <source>= Equal</source>
        <translation>= 相同</translation>
    </message>
    <message>
        <source>≠ Different</source>
        <translation>≠ 不同</translation>
    </message>
    <message>
        <source>← Only in this project</source>
        <translation>← 仅在本工程中</translation>
    </message>
    <message>
        <source>→ Only in the other project</source>
        <translation>→ 仅在另一工程中</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>No comparison is on.</source>
        <translation>当前没有比较。</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>项</translation>
    </message>
    <message>
        <source>Controller: %1</source>
        <translation>控制器：%1</translation>
    </message>
    <message>
        <source>Program style: addresses only</source>
        <translation>编程方式：仅地址</translation>
    </message>
    <message>
        <source>Program style: variables and addresses</source>
        <translation>编程方式：变量与地址</translation>
    </message>
    <message>
        <source>Cycle time: %1</source>
        <translation>周期时间：%1</translation>
    </message>
    <message>
        <source>Source: %1</source>
        <translation>源程序：%1</translation>
    </message>
</context>
<context>
    <name>ConnectDialog</name>
    <message>
        <source>Connect to a controller</source>
        <translation>连接控制器</translation>
    </message>
    <message>
        <source>&amp;Address:</source>
        <translation>地址(&amp;A)：</translation>
    </message>
    <message>
        <source>&amp;Token:</source>
        <translation>令牌(&amp;T)：</translation>
    </message>
    <message>
        <source>only on this machine; not remembered</source>
        <translation>仅用于本机；不保存</translation>
    </message>
    <message>
        <source>A&amp;uthority:</source>
        <translation>颁发机构(&amp;U)：</translation>
    </message>
    <message>
        <source>Choose the authority&apos;s file</source>
        <translation>选择颁发机构的文件</translation>
    </message>
    <message>
        <source>C&amp;ertificate:</source>
        <translation>证书(&amp;E)：</translation>
    </message>
    <message>
        <source>Choose the certificate&apos;s file</source>
        <translation>选择证书文件</translation>
    </message>
    <message>
        <source>&amp;Key:</source>
        <translation>密钥(&amp;K)：</translation>
    </message>
    <message>
        <source>Choose the key&apos;s file</source>
        <translation>选择密钥文件</translation>
    </message>
    <message>
        <source>&amp;Direct login: only look, without comparing and debugging axes</source>
        <translation>直接登录(&amp;D)：仅查看，不比较也不调试轴</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>连接</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Certificate of the authority</source>
        <translation>颁发机构的证书</translation>
    </message>
    <message>
        <source>Certificate of this client</source>
        <translation>本客户端的证书</translation>
    </message>
    <message>
        <source>Key of this client</source>
        <translation>本客户端的密钥</translation>
    </message>
    <message>
        <source>PEM files (*.pem *.crt *.key);;All files (*)</source>
        <translation>PEM 文件 (*.pem *.crt *.key);;所有文件 (*)</translation>
    </message>
    <message>
        <source>Enter the controller&apos;s address, host and port, such as 127.0.0.1:50700.</source>
        <translation>请输入控制器的地址（主机和端口），例如 127.0.0.1:50700。</translation>
    </message>
    <message>
        <source>Enter the token that the controller was given.</source>
        <translation>请输入交给控制器的令牌。</translation>
    </message>
</context>
<context>
    <name>ConnectionIndicator</name>
    <message>
        <source>Starting the built-in controller…</source>
        <translation>正在启动内置控制器…</translation>
    </message>
    <message>
        <source>Connecting to %1…</source>
        <translation>正在连接 %1…</translation>
    </message>
    <message>
        <source>Connected to %1, comparing the axes…</source>
        <translation>已连接 %1，正在比较轴…</translation>
    </message>
    <message>
        <source>Connection to %1 lost, reconnecting…</source>
        <translation>与 %1 的连接已断开，正在重新连接…</translation>
    </message>
    <message>
        <source>Offline</source>
        <translation>离线</translation>
    </message>
    <message>
        <source>Direct login, no debugging: %1 at %2, protocol version %3</source>
        <translation>直接登录，不能调试：%1，%2，协议版本 %3</translation>
    </message>
    <message>
        <source>Online: %1 at %2, protocol version %3</source>
        <translation>在线：%1，%2，协议版本 %3</translation>
    </message>
</context>
<context>
    <name>ConnectionTexts</name>
    <message>
        <source>No controller address is given.</source>
        <translation>没有给出控制器地址。</translation>
    </message>
    <message>
        <source>Connecting to %1 needs mutual TLS. Make certificates with scripts/make-certificates and choose the three files in the options.</source>
        <translation>连接到 %1 需要双向 TLS。请用 scripts/make-certificates 生成证书，并在选项中选择这三个文件。</translation>
    </message>
    <message>
        <source>Mutual TLS needs an authority, a certificate and a key; one of them is not given.</source>
        <translation>双向 TLS 需要 CA 证书、证书和密钥；其中一项未给出。</translation>
    </message>
    <message>
        <source>The file %1 cannot be read.</source>
        <translation>无法读取文件 %1。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no address; a host and a port such as 127.0.0.1:50700 are needed.</source>
        <translation>“%1”不是地址；需要主机和端口，例如 127.0.0.1:50700。</translation>
    </message>
    <message>
        <source>The controller has ended the connection.</source>
        <translation>控制器已结束连接。</translation>
    </message>
    <message>
        <source>The file %1 is no PEM file.</source>
        <translation>文件 %1 不是 PEM 文件。</translation>
    </message>
    <message>
        <source>The controller at %1 speaks version %2 of the protocol, this program version %3.</source>
        <translation>%1 处的控制器使用协议版本 %2，本程序使用版本 %3。</translation>
    </message>
    <message>
        <source>The controller at %1 has refused the connection.</source>
        <translation>%1 处的控制器拒绝了连接。</translation>
    </message>
    <message>
        <source>No controller answers at %1.</source>
        <translation>%1 处没有控制器应答。</translation>
    </message>
    <message>
        <source>No controller answers at %1: there is none, or the certificates do not fit.</source>
        <translation>%1 处没有控制器应答：没有控制器，或证书不匹配。</translation>
    </message>
    <message>
        <source>The controller at %1 has not answered the login.</source>
        <translation>%1 处的控制器没有应答登录。</translation>
    </message>
    <message>
        <source>The controller at %1 has refused the login. %2</source>
        <translation>%1 处的控制器拒绝了登录。%2</translation>
    </message>
</context>
<context>
    <name>ControllerCatalog</name>
    <message>
        <source>There are no controller descriptions in %1.</source>
        <translation>%1 中没有控制器描述文件。</translation>
    </message>
</context>
<context>
    <name>ControllerDescription</name>
    <message>
        <source>: stands there twice</source>
        <translation>：出现了两次</translation>
    </message>
    <message>
        <source>at byte %1: %2</source>
        <translation>第 %1 字节：%2</translation>
    </message>
    <message>
        <source>/: an object is expected</source>
        <translation>/：应为对象</translation>
    </message>
    <message>
        <source>another type has the display name &quot;%1&quot;</source>
        <translation>显示名称“%1”已用于另一类型</translation>
    </message>
    <message>
        <source>no axis type has this display name</source>
        <translation>没有轴类型使用此显示名称</translation>
    </message>
    <message>
        <source>another point has the key %1</source>
        <translation>键 %1 已用于另一输入点</translation>
    </message>
    <message>
        <source>another point has the name &quot;%1&quot;</source>
        <translation>名称“%1”已用于另一输入点</translation>
    </message>
    <message>
        <source>another state has the text &quot;%1&quot;</source>
        <translation>文本“%1”已用于另一状态</translation>
    </message>
    <message>
        <source>another entry of this class has the code %1</source>
        <translation>同类中已有代码 %1</translation>
    </message>
    <message>
        <source>the list is empty</source>
        <translation>列表为空</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no display name of an axis type</source>
        <translation>“%1”不是轴类型的显示名称</translation>
    </message>
    <message>
        <source>there is no limit for &quot;%1&quot;</source>
        <translation>“%1”没有数量限制</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no homing method</source>
        <translation>“%1”不是回原点方式</translation>
    </message>
    <message>
        <source>&quot;Homing_35&quot;, which virtual axes need, is missing</source>
        <translation>缺少虚轴所需的“Homing_35”</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no input point</source>
        <translation>“%1”不是输入点</translation>
    </message>
</context>
<context>
    <name>ControllerDialog</name>
    <message>
        <source>Change controller</source>
        <translation>更换控制器</translation>
    </message>
    <message>
        <source>Controllers</source>
        <translation>控制器</translation>
    </message>
    <message>
        <source>Axes that cannot exist on the new controller are removed, and the other axes&apos; devices and signals are carried over by name as far as the new controller has them. This cannot be undone.</source>
        <translation>新控制器不支持的轴将被删除，其余轴的设备和信号在新控制器具备时按名称沿用。此操作无法撤销。</translation>
    </message>
    <message>
        <source>Present controller: %1</source>
        <translation>当前控制器：%1</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>更换</translation>
    </message>
</context>
<context>
    <name>ControllerProcess</name>
    <message>
        <source>The controller %1 cannot be started: %2</source>
        <translation>无法启动控制器 %1：%2</translation>
    </message>
    <message>
        <source>The controller has ended.</source>
        <translation>控制器已退出。</translation>
    </message>
</context>
<context>
    <name>CurveExport</name>
    <message>
        <source>Time [s]</source>
        <translation>时间 [s]</translation>
    </message>
    <message>
        <source>The curves are not saved: %1 cannot be written. %2</source>
        <translation>曲线未保存：无法写入 %1。%2</translation>
    </message>
</context>
<context>
    <name>CurveLegend</name>
    <message>
        <source>Set position</source>
        <translation>设定位置</translation>
    </message>
    <message>
        <source>Actual position</source>
        <translation>实际位置</translation>
    </message>
    <message>
        <source>Set velocity</source>
        <translation>设定速度</translation>
    </message>
    <message>
        <source>Actual velocity</source>
        <translation>实际速度</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>单位</translation>
    </message>
    <message>
        <source>Unit/s</source>
        <translation>单位/秒</translation>
    </message>
    <message>
        <source>Curve</source>
        <translation>曲线</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>值</translation>
    </message>
    <message>
        <source>Curves shown</source>
        <translation>显示的曲线</translation>
    </message>
    <message>
        <source>Stop recording this axis</source>
        <translation>停止记录此轴</translation>
    </message>
</context>
<context>
    <name>CurvePanel</name>
    <message>
        <source>Export curves</source>
        <translation>导出曲线</translation>
    </message>
    <message>
        <source>Comma-separated values (*.csv)</source>
        <translation>逗号分隔值 (*.csv)</translation>
    </message>
    <message>
        <source>The curves are being saved…</source>
        <translation>正在保存曲线…</translation>
    </message>
    <message>
        <source>The curves are saved in %1.</source>
        <translation>曲线已保存到 %1。</translation>
    </message>
    <message>
        <source>Values at %1 s</source>
        <translation>%1 s 处的值</translation>
    </message>
    <message>
        <source>Paused; recording goes on</source>
        <translation>已暂停；记录仍在继续</translation>
    </message>
    <message>
        <source>No axis is recorded: open an axis&apos;s online tab while online</source>
        <translation>未记录任何轴：请在联机时打开轴的在线调试页</translation>
    </message>
    <message>
        <source>The last %1 minutes are kept</source>
        <translation>保留最近 %1 分钟</translation>
    </message>
    <message>
        <source>Curves</source>
        <translation>曲线</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Follow</source>
        <translation>跟随</translation>
    </message>
    <message>
        <source>Show all</source>
        <translation>显示全部</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清除</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>导出…</translation>
    </message>
    <message>
        <source>Hold the picture; recording goes on</source>
        <translation>保持画面不动；记录仍在继续</translation>
    </message>
    <message>
        <source>Let the newest readings run through (End)</source>
        <translation>跟随显示最新读数 (End)</translation>
    </message>
    <message>
        <source>Show everything that is kept (Home)</source>
        <translation>显示全部保留的读数 (Home)</translation>
    </message>
    <message>
        <source>Back to the part shown before (Backspace, right button)</source>
        <translation>返回之前显示的部分（Backspace、鼠标右键）</translation>
    </message>
    <message>
        <source>Forget all readings</source>
        <translation>清除全部读数</translation>
    </message>
    <message>
        <source>Write the readings of the shown curves to a file</source>
        <translation>将显示曲线的读数写入文件</translation>
    </message>
    <message>
        <source>Tools for the curves</source>
        <translation>曲线工具</translation>
    </message>
    <message>
        <source>State of the curves</source>
        <translation>曲线状态</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Velocity</source>
        <translation>速度</translation>
    </message>
    <message>
        <source>Plot: %1</source>
        <translation>曲线图：%1</translation>
    </message>
</context>
<context>
    <name>DiagnosisTable</name>
    <message>
        <source>%1 (16#%2)</source>
        <translation>%1 (16#%2)</translation>
    </message>
    <message>
        <source>The diagnosis table of the controller %1 does not know the error %2.</source>
        <translation>控制器 %1 的诊断表中没有错误 %2。</translation>
    </message>
    <message>
        <source>No project is open that could explain the error %1.</source>
        <translation>没有打开可解释错误 %1 的工程。</translation>
    </message>
    <message>
        <source>Unknown error</source>
        <translation>未知错误</translation>
    </message>
</context>
<context>
    <name>EditorManager</name>
    <message>
        <source>%1 (removed)</source>
        <translation>%1（已删除）</translation>
    </message>
</context>
<context>
    <name>FindFlows</name>
    <message>
        <source>There is nothing here that can be searched.</source>
        <translation>此处没有可搜索的内容。</translation>
    </message>
    <message>
        <source>Places found: %1.</source>
        <translation>找到的位置：%1。</translation>
    </message>
    <message>
        <source>Uses of %1: %2.</source>
        <translation>%1 的引用：%2。</translation>
    </message>
    <message>
        <source>The project has no variable %1.</source>
        <translation>工程中没有变量 %1。</translation>
    </message>
    <message>
        <source>%1 is not in the project any more.</source>
        <translation>%1 已不在工程中。</translation>
    </message>
    <message>
        <source>Never opened, so not searched: %1.</source>
        <translation>从未打开、未被搜索的对象：%1。</translation>
    </message>
    <message>
        <source>An index of %1 is known only while the program runs. Places that use it as it is written: %2.</source>
        <translation>%1 的下标在程序运行时才能确定。按此写法引用它的位置：%2。</translation>
    </message>
    <message>
        <source>What %1 leads to is known only while the program runs. Places that use it as it is written: %2.</source>
        <translation>%1 指向的对象在程序运行时才能确定。按此写法引用它的位置：%2。</translation>
    </message>
    <message>
        <source>The project does not know an index of %1. Places that use it as it is written: %2.</source>
        <translation>%1 的某个下标在工程中未定义。按此写法引用它的位置：%2。</translation>
    </message>
    <message>
        <source>The project has no variable %1. Places that use it as it is written: %2.</source>
        <translation>工程中没有变量 %1。按此写法引用它的位置：%2。</translation>
    </message>
    <message>
        <source>%1 belongs to a function, a block or a type. No place can use it by this name.</source>
        <translation>%1 属于函数、功能块或类型，任何位置都不能以此名称引用它。</translation>
    </message>
    <message>
        <source>The page of this place is not shown for the type of %1.</source>
        <translation>%1 的轴类型不显示此位置所在的页面。</translation>
    </message>
    <message>
        <source>%1 is not in use at this place any more.</source>
        <translation>此位置已不再使用 %1。</translation>
    </message>
</context>
<context>
    <name>FindPanel</name>
    <message>
        <source>The project has changed since; F3 searches again.</source>
        <translation>此后工程已更改；按 F3 重新搜索。</translation>
    </message>
    <message>
        <source>Text:</source>
        <translation>文本：</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>查找</translation>
    </message>
    <message>
        <source>In:</source>
        <translation>范围：</translation>
    </message>
    <message>
        <source>The whole project</source>
        <translation>整个工程</translation>
    </message>
    <message>
        <source>This editor</source>
        <translation>当前编辑器</translation>
    </message>
    <message>
        <source>Whole word</source>
        <translation>全字匹配</translation>
    </message>
    <message>
        <source>Match case</source>
        <translation>区分大小写</translation>
    </message>
    <message>
        <source>Backwards</source>
        <translation>反向查找</translation>
    </message>
    <message>
        <source>Variable:</source>
        <translation>变量：</translation>
    </message>
    <message>
        <source>Program.variable</source>
        <translation>程序.变量</translation>
    </message>
    <message>
        <source>Find references</source>
        <translation>查找引用</translation>
    </message>
    <message>
        <source>Find results</source>
        <translation>查找结果</translation>
    </message>
    <message>
        <source>Object</source>
        <translation>对象</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文本</translation>
    </message>
    <message>
        <source>Open and search them</source>
        <translation>打开并搜索</translation>
    </message>
</context>
<context>
    <name>JsonReader</name>
    <message>
        <source>an object is expected</source>
        <translation>应为对象</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>缺失</translation>
    </message>
    <message>
        <source>a list is expected</source>
        <translation>应为列表</translation>
    </message>
    <message>
        <source>a text is expected</source>
        <translation>应为文本</translation>
    </message>
    <message>
        <source>the text is empty</source>
        <translation>文本为空</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands in the list twice</source>
        <translation>列表中“%1”重复</translation>
    </message>
    <message>
        <source>a number is expected</source>
        <translation>应为数字</translation>
    </message>
    <message>
        <source>%1 is outside %2 to %3</source>
        <translation>%1 不在 %2 到 %3 之间</translation>
    </message>
    <message>
        <source>a whole number is expected</source>
        <translation>应为整数</translation>
    </message>
</context>
<context>
    <name>LanguageCore</name>
    <message>
        <source>a resource, a task, a program or END_CONFIGURATION is expected</source>
        <translation>此处应为资源、任务、程序或 END_CONFIGURATION</translation>
    </message>
    <message>
        <source>a task, a program or END_RESOURCE is expected</source>
        <translation>此处应为任务、程序或 END_RESOURCE</translation>
    </message>
    <message>
        <source>END_FUNCTION is expected</source>
        <translation>此处应为 END_FUNCTION</translation>
    </message>
    <message>
        <source>END_FUNCTION_BLOCK is expected</source>
        <translation>此处应为 END_FUNCTION_BLOCK</translation>
    </message>
    <message>
        <source>END_PROGRAM is expected</source>
        <translation>此处应为 END_PROGRAM</translation>
    </message>
    <message>
        <source>the declaration of a type or END_TYPE is expected</source>
        <translation>此处应为类型声明或 END_TYPE</translation>
    </message>
    <message>
        <source>the declaration of a variable or END_VAR is expected</source>
        <translation>此处应为变量声明或 END_VAR</translation>
    </message>
    <message>
        <source>the declaration of a member or END_STRUCT is expected</source>
        <translation>此处应为成员声明或 END_STRUCT</translation>
    </message>
    <message>
        <source>an initial value is expected</source>
        <translation>此处应为初始值</translation>
    </message>
    <message>
        <source>a type is expected</source>
        <translation>此处应为类型</translation>
    </message>
    <message>
        <source>a whole number or constant is expected</source>
        <translation>此处应为整数或常量</translation>
    </message>
    <message>
        <source>an upper bound is expected</source>
        <translation>此处应为上界</translation>
    </message>
    <message>
        <source>a range such as 0..9 is expected</source>
        <translation>此处应为范围，例如 0..9</translation>
    </message>
    <message>
        <source>an address such as %IX0.0 is expected</source>
        <translation>此处应为地址，例如 %IX0.0</translation>
    </message>
    <message>
        <source>TO is expected</source>
        <translation>此处应为 TO</translation>
    </message>
    <message>
        <source>OF is expected</source>
        <translation>此处应为 OF</translation>
    </message>
    <message>
        <source>&apos;..&apos; is expected</source>
        <translation>此处应为“..”</translation>
    </message>
    <message>
        <source>&apos;[&apos; is expected</source>
        <translation>此处应为“[”</translation>
    </message>
    <message>
        <source>&apos;;&apos; is expected</source>
        <translation>此处应为“;”</translation>
    </message>
    <message>
        <source>&apos;:&apos; is expected</source>
        <translation>此处应为“:”</translation>
    </message>
    <message>
        <source>the name of a value is expected</source>
        <translation>此处应为枚举值的名称</translation>
    </message>
    <message>
        <source>the name of the extended type is expected</source>
        <translation>此处应为被扩展类型的名称</translation>
    </message>
    <message>
        <source>the name of a task is expected</source>
        <translation>此处应为任务名</translation>
    </message>
    <message>
        <source>the name of a variable is expected</source>
        <translation>此处应为变量名</translation>
    </message>
    <message>
        <source>a name is expected</source>
        <translation>此处应为名称</translation>
    </message>
    <message>
        <source>a declaration (PROGRAM, FUNCTION_BLOCK, FUNCTION, TYPE, VAR_GLOBAL or CONFIGURATION) is expected</source>
        <translation>此处应为声明（PROGRAM、FUNCTION_BLOCK、FUNCTION、TYPE、VAR_GLOBAL 或 CONFIGURATION）</translation>
    </message>
    <message>
        <source>an expression is expected</source>
        <translation>应为表达式</translation>
    </message>
    <message>
        <source>an operator or the end of the expression is expected</source>
        <translation>应为运算符或表达式结尾</translation>
    </message>
    <message>
        <source>less nesting is expected</source>
        <translation>嵌套过深</translation>
    </message>
    <message>
        <source>the end of this comment is expected</source>
        <translation>注释未结束</translation>
    </message>
    <message>
        <source>the closing quote of this text is expected</source>
        <translation>字符串缺少结束引号</translation>
    </message>
    <message>
        <source>an operand is expected</source>
        <translation>应为操作数</translation>
    </message>
    <message>
        <source>&apos;)&apos; is expected</source>
        <translation>应为“)”</translation>
    </message>
    <message>
        <source>&apos;]&apos; is expected</source>
        <translation>应为“]”</translation>
    </message>
    <message>
        <source>the name %1 is declared already</source>
        <translation>名称 %1 已声明</translation>
    </message>
    <message>
        <source>the type %1 is not declared</source>
        <translation>类型 %1 未声明</translation>
    </message>
    <message>
        <source>the type %1 contains itself</source>
        <translation>类型 %1 包含自身</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>%1 (read-only)</source>
        <translation>%1（只读）</translation>
    </message>
    <message>
        <source>Kestrun</source>
        <translation>Kestrun</translation>
    </message>
    <message>
        <source>Controller: %1</source>
        <translation>控制器：%1</translation>
    </message>
    <message>
        <source>Online</source>
        <translation>在线</translation>
    </message>
    <message>
        <source>Offline</source>
        <translation>离线</translation>
    </message>
    <message>
        <source>Problems (%1)</source>
        <translation>问题 (%1)</translation>
    </message>
    <message>
        <source>Problems</source>
        <translation>问题</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>工程</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>输出</translation>
    </message>
    <message>
        <source>Tool bar</source>
        <translation>工具栏</translation>
    </message>
    <message>
        <source>Project tree</source>
        <translation>工程树</translation>
    </message>
    <message>
        <source>Editors</source>
        <translation>编辑器</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation>最近的工程(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;New project…</source>
        <translation>新建工程(&amp;N)…</translation>
    </message>
    <message>
        <source>&amp;Open project…</source>
        <translation>打开工程(&amp;O)…</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Save a&amp;ll</source>
        <translation>全部保存(&amp;L)</translation>
    </message>
    <message>
        <source>Save project &amp;as…</source>
        <translation>工程另存为(&amp;A)…</translation>
    </message>
    <message>
        <source>Close &amp;editor</source>
        <translation>关闭编辑器(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Close project</source>
        <translation>关闭工程(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Change controller…</source>
        <translation>更换控制器(&amp;C)…</translation>
    </message>
    <message>
        <source>&amp;Options…</source>
        <translation>选项(&amp;O)…</translation>
    </message>
    <message>
        <source>&amp;Plug-ins…</source>
        <translation>插件(&amp;P)…</translation>
    </message>
    <message>
        <source>&amp;About Kestrun</source>
        <translation>关于 Kestrun(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>编辑(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Project</source>
        <translation>工程(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>工具(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>查找</translation>
    </message>
    <message>
        <source>Comparison</source>
        <translation>比较</translation>
    </message>
    <message>
        <source>&amp;Find…</source>
        <translation>查找(&amp;F)…</translation>
    </message>
    <message>
        <source>Find &amp;next</source>
        <translation>查找下一个(&amp;N)</translation>
    </message>
    <message>
        <source>Find &amp;previous</source>
        <translation>查找上一个(&amp;P)</translation>
    </message>
    <message>
        <source>Find re&amp;ferences</source>
        <translation>查找引用(&amp;F)</translation>
    </message>
    <message>
        <source>Compare &amp;with project…</source>
        <translation>与工程比较(&amp;W)…</translation>
    </message>
    <message>
        <source>Close c&amp;omparison</source>
        <translation>关闭比较(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Connect to the built-in controller</source>
        <translation>连接内置控制器(&amp;C)</translation>
    </message>
    <message>
        <source>Connect to an &amp;address…</source>
        <translation>连接到地址(&amp;A)…</translation>
    </message>
    <message>
        <source>&amp;Disconnect</source>
        <translation>断开连接(&amp;D)</translation>
    </message>
    <message>
        <source>Compare and &amp;take axes over…</source>
        <translation>比较并下载轴(&amp;T)…</translation>
    </message>
    <message>
        <source>&amp;STOP all axes in debug mode</source>
        <translation>急停所有处于调试模式的轴(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Release STOP</source>
        <translation>解除急停(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Online</source>
        <translation>在线(&amp;O)</translation>
    </message>
    <message>
        <source>Command log</source>
        <translation>命令日志</translation>
    </message>
</context>
<context>
    <name>MessageBar</name>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>NewProjectDialog</name>
    <message>
        <source>New project</source>
        <translation>新建工程</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>名称：</translation>
    </message>
    <message>
        <source>Folder:</source>
        <translation>文件夹：</translation>
    </message>
    <message>
        <source>Browse…</source>
        <translation>浏览…</translation>
    </message>
    <message>
        <source>Controller:</source>
        <translation>控制器：</translation>
    </message>
    <message>
        <source>Create</source>
        <translation>创建</translation>
    </message>
    <message>
        <source>Folder of the project</source>
        <translation>工程所在文件夹</translation>
    </message>
    <message>
        <source>There is no controller description to make a project from.</source>
        <translation>没有可用于新建工程的控制器描述。</translation>
    </message>
    <message>
        <source>The name must not contain &quot;/&quot; or &quot;\&quot;.</source>
        <translation>名称不能包含“/”或“\”。</translation>
    </message>
    <message>
        <source>The folder does not exist.</source>
        <translation>文件夹不存在。</translation>
    </message>
    <message>
        <source>%1 already exists.</source>
        <translation>%1 已存在。</translation>
    </message>
    <message>
        <source>Up to %1 axes</source>
        <translation>最多 %1 个轴</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
</context>
<context>
    <name>NumberRefusalNotifier</name>
    <message>
        <source>above %1, below %2</source>
        <translation>大于 %1，小于 %2</translation>
    </message>
    <message>
        <source>above %1, at most %2</source>
        <translation>大于 %1，不大于 %2</translation>
    </message>
    <message>
        <source>at least %1, below %2</source>
        <translation>不小于 %1，小于 %2</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 到 %2</translation>
    </message>
</context>
<context>
    <name>OnlineSession</name>
    <message>
        <source>The built-in controller has ended unexpectedly. %1</source>
        <translation>内置控制器意外结束。%1</translation>
    </message>
</context>
<context>
    <name>OnlineSide</name>
    <message>
        <source>The jog of axis %1 was ended here, since its button is no longer held.</source>
        <translation>轴 %1 的点动已由工作台结束，因为按钮已不再被按住。</translation>
    </message>
    <message>
        <source>The connection to %1 is lost. %2</source>
        <translation>与 %1 的连接已断开。%2</translation>
    </message>
</context>
<context>
    <name>OptionsDialog</name>
    <message>
        <source>Options</source>
        <translation>选项</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>页面</translation>
    </message>
</context>
<context>
    <name>OutputPanel</name>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Origin</source>
        <translation>来源</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>消息</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>输出</translation>
    </message>
    <message>
        <source>Workbench</source>
        <translation>工作台</translation>
    </message>
</context>
<context>
    <name>PluginListDialog</name>
    <message>
        <source>Plug-ins</source>
        <translation>插件</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>插件</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>Provider</source>
        <translation>提供者</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>顺序</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>A plug-in that is switched on or off here is so from the next start on.</source>
        <translation>在此启用或停用的插件在下次启动时生效。</translation>
    </message>
    <message>
        <source>In service</source>
        <translation>运行中</translation>
    </message>
    <message>
        <source>Switched off</source>
        <translation>已停用</translation>
    </message>
    <message>
        <source>Loaded</source>
        <translation>已加载</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>失败</translation>
    </message>
    <message>
        <source>Needs: %1</source>
        <translation>依赖：%1</translation>
    </message>
    <message>
        <source>Always loaded; it cannot be switched off.</source>
        <translation>总是加载，不能停用。</translation>
    </message>
    <message>
        <source>There is no plug-in in the plug-in folder.</source>
        <translation>插件文件夹中没有插件。</translation>
    </message>
</context>
<context>
    <name>PluginManager</name>
    <message>
        <source>There is no plug-in folder %1.</source>
        <translation>插件文件夹 %1 不存在。</translation>
    </message>
    <message>
        <source>It is a plug-in of another kind (%1).</source>
        <translation>这是其他类型的插件（%1）。</translation>
    </message>
    <message>
        <source>Its object is no plug-in of this program.</source>
        <translation>其对象不是本程序的插件。</translation>
    </message>
    <message>
        <source>The package &quot;%1&quot; is already there: %2.</source>
        <translation>软件包“%1”已存在：%2。</translation>
    </message>
    <message>
        <source>It needs the package &quot;%1&quot; %2, which is not in service.</source>
        <translation>它需要软件包“%1” %2，该包未运行。</translation>
    </message>
    <message>
        <source>It needs the package &quot;%1&quot; %2; in service is %3.</source>
        <translation>它需要软件包“%1” %2，当前运行的是 %3。</translation>
    </message>
    <message>
        <source>It declined to start.</source>
        <translation>它拒绝启动。</translation>
    </message>
    <message>
        <source>Plug-in %1 %2 is in service.</source>
        <translation>插件 %1 %2 已运行。</translation>
    </message>
    <message>
        <source>The plug-in %1 is not in service. %2</source>
        <translation>插件 %1 未运行。%2</translation>
    </message>
</context>
<context>
    <name>PluginPackage</name>
    <message>
        <source>The package text has no &quot;%1&quot;.</source>
        <translation>软件包说明中没有“%1”。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; of the package text holds something that is no text under &quot;%2&quot;.</source>
        <translation>软件包说明的“%1”中，“%2”的值不是文本。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; of the package text is no object.</source>
        <translation>软件包说明的“%1”不是对象。</translation>
    </message>
    <message>
        <source>The package text wants &quot;%1&quot; in the version &quot;%2&quot;, which is none.</source>
        <translation>软件包说明要求“%1”的版本为“%2”，这不是有效版本。</translation>
    </message>
    <message>
        <source>The package text is empty.</source>
        <translation>软件包说明为空。</translation>
    </message>
    <message>
        <source>The package text is no JSON object.</source>
        <translation>软件包说明不是 JSON 对象。</translation>
    </message>
    <message>
        <source>The package text is no JSON: %1, at byte %2.</source>
        <translation>软件包说明不是 JSON：%1，第 %2 字节。</translation>
    </message>
</context>
<context>
    <name>ProblemsPanel</name>
    <message>
        <source>Problem</source>
        <translation>问题</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>源文件</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>行</translation>
    </message>
    <message>
        <source>Column</source>
        <translation>列</translation>
    </message>
    <message>
        <source>Problems</source>
        <translation>问题</translation>
    </message>
</context>
<context>
    <name>ProjectComparison</name>
    <message>
        <source>%1: no plug-in is loaded that compares axes.</source>
        <translation>%1：没有加载可比较轴的插件。</translation>
    </message>
</context>
<context>
    <name>ProjectFind</name>
    <message>
        <source>%1 could not be read.</source>
        <translation>无法读取 %1。</translation>
    </message>
    <message>
        <source>The search in %1 did not come to an end and was stopped after %2 places.</source>
        <translation>在 %1 中的搜索没有结束，已在 %2 个位置后停止。</translation>
    </message>
</context>
<context>
    <name>ProjectFlows</name>
    <message>
        <source>Kestrun projects (*%1)</source>
        <translation>Kestrun 工程 (*%1)</translation>
    </message>
    <message>
        <source>Created %1.</source>
        <translation>已创建 %1。</translation>
    </message>
    <message>
        <source>Open project</source>
        <translation>打开工程</translation>
    </message>
    <message>
        <source>Opened %1.</source>
        <translation>已打开 %1。</translation>
    </message>
    <message>
        <source>%1 can only be read; changes cannot be saved.</source>
        <translation>%1 为只读，更改无法保存。</translation>
    </message>
    <message>
        <source>Save project as</source>
        <translation>工程另存为</translation>
    </message>
    <message>
        <source>Going on with %1.</source>
        <translation>继续使用 %1。</translation>
    </message>
    <message>
        <source>The project has the controller %1 now.</source>
        <translation>工程现在使用控制器 %1。</translation>
    </message>
    <message>
        <source>Removed, because they cannot exist on it: %1.</source>
        <translation>因新控制器不支持而删除：%1。</translation>
    </message>
    <message>
        <source>Kestrun</source>
        <translation>Kestrun</translation>
    </message>
    <message>
        <source>There are unsaved changes in %1. Save them?</source>
        <translation>%1 中有未保存的更改。是否保存？</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Rescue what is whole (axes: %1)…</source>
        <translation>抢救完好内容（轴：%1）…</translation>
    </message>
    <message>
        <source>-rescued</source>
        <translation>-抢救</translation>
    </message>
    <message>
        <source>Rescue into a new project</source>
        <translation>抢救到新工程</translation>
    </message>
    <message>
        <source>Rescued into %1; axes: %2.</source>
        <translation>已抢救到 %1，轴：%2。</translation>
    </message>
</context>
<context>
    <name>ProjectModelManager</name>
    <message>
        <source>%1: the file exists already.</source>
        <translation>%1：文件已存在。</translation>
    </message>
    <message>
        <source>%1: the project is still closing.</source>
        <translation>%1：工程仍在关闭。</translation>
    </message>
    <message>
        <source>%1: the project is open already.</source>
        <translation>%1：工程已打开。</translation>
    </message>
    <message>
        <source>%1: a project with the name %2 is open already.</source>
        <translation>%1：名为 %2 的工程已打开。</translation>
    </message>
</context>
<context>
    <name>ProjectStore</name>
    <message>
        <source>another program has the file open</source>
        <translation>文件已被其他程序打开</translation>
    </message>
    <message>
        <source>a newer version of this program has written it</source>
        <translation>文件由本程序的更新版本写入</translation>
    </message>
    <message>
        <source>the file can only be read</source>
        <translation>文件只读</translation>
    </message>
</context>
<context>
    <name>PropertyEditorView</name>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>是(&amp;Y)</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>否(&amp;N)</translation>
    </message>
</context>
<context>
    <name>RefusalBubble</name>
    <message>
        <source>“%1” was not taken. Allowed: %2.</source>
        <translation>“%1”未被采用。允许范围：%2。</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Nothing is open</source>
        <translation>没有打开的编辑器</translation>
    </message>
    <message>
        <source>Welcome to Kestrun</source>
        <translation>欢迎使用 Kestrun</translation>
    </message>
    <message>
        <source>Double-click an axis or a source in the project tree to open it here. The context menu of a node shows what can be done with it.</source>
        <translation>双击工程树中的轴或源文件即可在此打开。节点的右键菜单列出可执行的操作。</translation>
    </message>
    <message>
        <source>Create a project for a controller, or open one that exists.</source>
        <translation>为控制器新建工程，或打开已有工程。</translation>
    </message>
    <message>
        <source>New project…</source>
        <translation>新建工程…</translation>
    </message>
    <message>
        <source>Open project…</source>
        <translation>打开工程…</translation>
    </message>
    <message>
        <source>Recent projects</source>
        <translation>最近的工程</translation>
    </message>
</context>
<context>
    <name>StopButton</name>
    <message>
        <source>STOP</source>
        <translation>急停</translation>
    </message>
    <message>
        <source>Stop every axis in debug mode (%1)</source>
        <translation>急停：停止所有处于调试模式的轴 (%1)</translation>
    </message>
    <message>
        <source>Stop every axis in debug mode</source>
        <translation>停止所有处于调试模式的轴</translation>
    </message>
</context>
<context>
    <name>StopControl</name>
    <message>
        <source>STOP: the controller has stopped every axis in debug mode (%1 ms), and has been released since.</source>
        <translation>急停：控制器已停止所有处于调试模式的轴（%1 ms），此后急停已被解除。</translation>
    </message>
    <message>
        <source>STOP has been released, and holds again.</source>
        <translation>急停已解除，但又重新生效。</translation>
    </message>
    <message>
        <source>STOP sent…</source>
        <translation>急停已发送…</translation>
    </message>
    <message>
        <source>STOP: the controller has stopped every axis in debug mode and holds them (%1 ms).</source>
        <translation>急停：控制器已停止所有处于调试模式的轴并保持（%1 ms）。</translation>
    </message>
    <message>
        <source>STOP has been released.</source>
        <translation>急停已解除。</translation>
    </message>
    <message>
        <source>STOP was not acknowledged by the controller at %1: %2 Use the machine&apos;s own emergency stop. Without a connection the controller stops its axes by itself.</source>
        <translation>控制器 %1 未确认急停：%2 请使用机器自身的急停装置。失去连接时，控制器会自行停止其轴。</translation>
    </message>
    <message>
        <source>The controller at %1 has not released STOP: %2</source>
        <translation>控制器 %1 未解除急停：%2</translation>
    </message>
    <message>
        <source>The controller at %1 has not acknowledged the release of STOP: %2</source>
        <translation>控制器 %1 未确认解除急停：%2</translation>
    </message>
    <message>
        <source>STOP goes out once more: it came between two sessions.</source>
        <translation>急停再次发送：它恰好在两次会话之间按下。</translation>
    </message>
    <message>
        <source>STOP not acknowledged</source>
        <translation>急停未确认</translation>
    </message>
    <message>
        <source>STOP holds</source>
        <translation>急停保持中</translation>
    </message>
    <message>
        <source>The built-in controller is still starting and has no axes in debug mode: there was nothing to stop.</source>
        <translation>内置控制器仍在启动，没有处于调试模式的轴：没有可停止的轴。</translation>
    </message>
    <message>
        <source>The controller at %1 has not released STOP: it has been pressed again, here or by another client.</source>
        <translation>控制器 %1 未解除急停：此后又有人按下急停（本机或其他客户端）。</translation>
    </message>
    <message>
        <source>The controller holds all axes in debug mode: STOP has not been released.</source>
        <translation>控制器保持所有处于调试模式的轴：急停尚未解除。</translation>
    </message>
    <message>
        <source>Another client has pressed STOP: the controller has stopped every axis in debug mode.</source>
        <translation>其他客户端按下了急停：控制器已停止所有处于调试模式的轴。</translation>
    </message>
    <message>
        <source>STOP: the controller had stopped every axis in debug mode before the connection was lost.</source>
        <translation>急停：连接中断之前，控制器已停止所有处于调试模式的轴。</translation>
    </message>
    <message>
        <source>Another client has pressed or released STOP, too.</source>
        <translation>其他客户端也按下或解除了急停。</translation>
    </message>
    <message>
        <source>Another client has released STOP.</source>
        <translation>其他客户端已解除急停。</translation>
    </message>
</context>
<context>
    <name>StoreConnection</name>
    <message>
        <source>another program has the file open</source>
        <translation>文件已被其他程序打开</translation>
    </message>
    <message>
        <source>the file cannot be written</source>
        <translation>文件无法写入</translation>
    </message>
    <message>
        <source>the disk reports an error (%1)</source>
        <translation>磁盘报告错误（%1）</translation>
    </message>
    <message>
        <source>the file is damaged (%1)</source>
        <translation>文件已损坏（%1）</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>磁盘已满</translation>
    </message>
    <message>
        <source>the file, or one beside it, cannot be opened</source>
        <translation>无法打开该文件或其旁的文件</translation>
    </message>
</context>
<context>
    <name>StoreFile</name>
    <message>
        <source>the file is damaged (a part of it is missing)</source>
        <translation>文件已损坏（缺少一部分）</translation>
    </message>
    <message>
        <source>this is not a project file</source>
        <translation>这不是工程文件</translation>
    </message>
    <message>
        <source>this is a file of another program</source>
        <translation>这是其他程序的文件</translation>
    </message>
    <message>
        <source>a newer version of this program has written it</source>
        <translation>文件由本程序的更新版本写入</translation>
    </message>
    <message>
        <source>the file exists already</source>
        <translation>文件已存在</translation>
    </message>
</context>
<context>
    <name>StoreReader</name>
    <message>
        <source>there is no axis %1</source>
        <translation>没有轴 %1</translation>
    </message>
    <message>
        <source>the record of axis %1 is damaged</source>
        <translation>轴 %1 的记录已损坏</translation>
    </message>
    <message>
        <source>the file is damaged (its tables are not as they were made)</source>
        <translation>文件已损坏（表结构与创建时不符）</translation>
    </message>
    <message>
        <source>the file is damaged (%1)</source>
        <translation>文件已损坏（%1）</translation>
    </message>
    <message>
        <source>the file is damaged (rows of the table %1 are missing)</source>
        <translation>文件已损坏（表 %1 缺少行）</translation>
    </message>
    <message>
        <source>the file is damaged (the entry %1 of the table %2)</source>
        <translation>文件已损坏（表 %2 的条目 %1）</translation>
    </message>
    <message>
        <source>the file is damaged (the table %1 speaks of axis %2, which is not there)</source>
        <translation>文件已损坏（表 %1 引用了不存在的轴 %2）</translation>
    </message>
</context>
<context>
    <name>TypeAssistant</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Choose a Boolean Variable</source>
        <translation>选择布尔变量</translation>
    </message>
    <message>
        <source>Choose a Variable</source>
        <translation>选择变量</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>筛选</translation>
    </message>
    <message>
        <source>Filter by path, type or comment</source>
        <translation>按路径、类型或注释筛选</translation>
    </message>
    <message>
        <source>Variables</source>
        <translation>变量</translation>
    </message>
    <message>
        <source>Variable</source>
        <translation>变量</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>注释</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>%1 of %2 variables</source>
        <translation>%1 / %2 个变量</translation>
    </message>
</context>
<context>
    <name>VariableMonitor</name>
    <message>
        <source>Axis %1</source>
        <translation>轴 %1</translation>
    </message>
</context>
<context>
    <name>Workbench</name>
    <message>
        <source>The language stays as it is until the controller is disconnected.</source>
        <translation>与控制器断开连接之前，界面语言保持不变。</translation>
    </message>
    <message>
        <source>About Kestrun</source>
        <translation>关于 Kestrun</translation>
    </message>
    <message>
        <source>Kestrun %1

A workbench for controllers and their motion axes.</source>
        <translation>Kestrun %1

控制器及其运动轴的工作台。</translation>
    </message>
</context>
<context>
    <name>Workspace</name>
    <message>
        <source>Configuration</source>
        <translation>配置</translation>
    </message>
    <message>
        <source>Program sources</source>
        <translation>程序源文件</translation>
    </message>
</context>
<context>
    <name>dlgNodeReName</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Rename Axis</source>
        <translation>重命名轴</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>重命名</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Why the name cannot be used</source>
        <translation>名称不可用的原因</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>名称：</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Enter a name.</source>
        <translation>请输入名称。</translation>
    </message>
    <message>
        <source>A name begins with a letter or underscore, followed by letters, digits and single underscores.</source>
        <translation>名称以字母或下划线开头，后接字母、数字和单个下划线。</translation>
    </message>
    <message>
        <source>%1 is a reserved word.</source>
        <translation>%1 是保留字。</translation>
    </message>
    <message>
        <source>There is an axis of the name %1 already.</source>
        <translation>已有名为 %1 的轴。</translation>
    </message>
    <message>
        <source>The project uses the name %1 already.</source>
        <translation>工程已使用名称 %1。</translation>
    </message>
</context>
</TS>
