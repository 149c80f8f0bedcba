<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>AxisFinder</name>
    <message>
        <source>Positive limit:</source>
        <translation>正限位：</translation>
    </message>
    <message>
        <source>Negative limit:</source>
        <translation>负限位：</translation>
    </message>
    <message>
        <source>Origin signal:</source>
        <translation>原点信号：</translation>
    </message>
</context>
<context>
    <name>BasicSetWidget</name>
    <message>
        <source>BasicSet</source>
        <translation>基本设置</translation>
    </message>
    <message>
        <source>AxisBasicSet</source>
        <translation>轴基本设置</translation>
    </message>
    <message>
        <source>AxisNo:</source>
        <translation>轴号：</translation>
    </message>
    <message>
        <source>AxisType:</source>
        <translation>轴类型：</translation>
    </message>
    <message>
        <source>InputDev:</source>
        <translation>输入设备：</translation>
    </message>
    <message>
        <source>OutputDev:</source>
        <translation>输出设备：</translation>
    </message>
    <message>
        <source>AxisVritual</source>
        <translation>虚拟轴</translation>
    </message>
    <message>
        <source>AxisAutoMap</source>
        <translation>轴自动映射</translation>
    </message>
    <message>
        <source>document setting</source>
        <translation>单位换算设置</translation>
    </message>
    <message>
        <source>origin return setting</source>
        <translation>原点回归设置</translation>
    </message>
    <message>
        <source>online debug setting</source>
        <translation>在线调试</translation>
    </message>
</context>
<context>
    <name>DocumentSetWidget</name>
    <message>
        <source>DocConverSet</source>
        <translation>单位换算设置</translation>
    </message>
    <message>
        <source> Unit Convert Set:</source>
        <translation> 单位换算设置：</translation>
    </message>
    <message>
        <source>Reverse</source>
        <translation>反向</translation>
    </message>
    <message>
        <source>Motor/Encode pulse count per circle:</source>
        <translation>电机/编码器每转脉冲数：</translation>
    </message>
    <message>
        <source>16#</source>
        <translation>16#</translation>
    </message>
    <message>
        <source>Command pulse</source>
        <translation>指令脉冲</translation>
    </message>
    <message>
        <source>DecimalDisplayPulse</source>
        <translation>十进制显示脉冲数</translation>
    </message>
    <message>
        <source>Not Use Gear</source>
        <translation>不使用变速机构</translation>
    </message>
    <message>
        <source>The amount of movement for one turn of the table:</source>
        <translation>工作台转一圈的移动量：</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>单位</translation>
    </message>
    <message>
        <source>Pulse number per turn of motor/encoder [DINT]</source>
        <translation>电机/编码器每转脉冲数 [DINT]</translation>
    </message>
    <message>
        <source>Pulse counts(pulse)=</source>
        <translation>脉冲数(pulse)=</translation>
    </message>
    <message>
        <source>-----------------------------------------------------------------------*Move distance(Uint)</source>
        <translation>-----------------------------------------------------------------------*移动距离(单位)</translation>
    </message>
    <message>
        <source>The amount of movement for one turn of the table [REAL]</source>
        <translation>工作台转一圈的移动量 [REAL]</translation>
    </message>
    <message>
        <source>Use of speed change gear</source>
        <translation>使用变速机构</translation>
    </message>
    <message>
        <source>Gear ratio molecule (Image 5) in the figure below :</source>
        <translation>齿轮比分子（下图中的 5）：</translation>
    </message>
    <message>
        <source>Gear ratio parent (Image 4) in the figure below :</source>
        <translation>齿轮比分母（下图中的 4）：</translation>
    </message>
    <message>
        <source>The axis type is linear mode:</source>
        <translation>轴类型为线性模式：</translation>
    </message>
    <message>
        <source>Number of pulses per turn of motor/encoder [DINT]* gear ratio molecule [DINT]</source>
        <translation>电机/编码器每转脉冲数 [DINT] * 齿轮比分子 [DINT]</translation>
    </message>
    <message>
        <source>-------------------------------------------------------------------------*Move distance(Uint)</source>
        <translation>-------------------------------------------------------------------------*移动距离(单位)</translation>
    </message>
    <message>
        <source>The amount of movement in one turn of the table [REAL]* gear ratio [DINT]</source>
        <translation>工作台转一圈的移动量 [REAL] * 齿轮比分母 [DINT]</translation>
    </message>
    <message>
        <source>M: Motor/encoder, W: workbench</source>
        <translation>M：电机/编码器，W：工作台</translation>
    </message>
    <message>
        <source>Motor, gear, screw and table</source>
        <translation>电机、齿轮、丝杠和工作台</translation>
    </message>
    <message>
        <source>The axis type is rotation mode:</source>
        <translation>轴类型为旋转模式：</translation>
    </message>
    <message>
        <source>Shaft type is rotary mode: Number of pulses [DINT]* gear ratio molecule [DINT] of motor/encoder rotation one turn</source>
        <translation>旋转模式：电机/编码器每转脉冲数 [DINT] * 齿轮比分子 [DINT]</translation>
    </message>
    <message>
        <source>----------------------------------------------------------------------*Move distance (Uint)</source>
        <translation>----------------------------------------------------------------------*移动距离 (单位)</translation>
    </message>
    <message>
        <source>Motor, gear and rotary table</source>
        <translation>电机、齿轮和转台</translation>
    </message>
</context>
<context>
    <name>ModelAndParamtSetWidget</name>
    <message>
        <source>ModelAndPrmtSet</source>
        <translation>模式与参数设置</translation>
    </message>
    <message>
        <source>ModeSelect：</source>
        <translation>模式选择：</translation>
    </message>
    <message>
        <source>Encoder Mode </source>
        <translation>编码器模式 </translation>
    </message>
    <message>
        <source>Increment Mode</source>
        <translation>增量模式</translation>
    </message>
    <message>
        <source>Absolute Mode</source>
        <translation>绝对模式</translation>
    </message>
    <message>
        <source>Mode Set</source>
        <translation>模式设置</translation>
    </message>
    <message>
        <source>Linear Mode</source>
        <translation>线性模式</translation>
    </message>
    <message>
        <source>Rotate Mode</source>
        <translation>旋转模式</translation>
    </message>
    <message>
        <source>Soft Limit</source>
        <translation>软限位</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>使能</translation>
    </message>
    <message>
        <source> Soft Limit Neg:</source>
        <translation> 负软限位：</translation>
    </message>
    <message>
        <source>Soft Limit Neg:</source>
        <translation>负软限位：</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>单位</translation>
    </message>
    <message>
        <source>Soft Limit Pos:</source>
        <translation>正软限位：</translation>
    </message>
    <message>
        <source>Period of Rot:</source>
        <translation>旋转周期：</translation>
    </message>
    <message>
        <source>Software Error Response</source>
        <translation>软件错误响应</translation>
    </message>
    <message>
        <source>Limit Dec:</source>
        <translation>限位减速度：</translation>
    </message>
    <message>
        <source>Unit/s^2</source>
        <translation>单位/s^2</translation>
    </message>
    <message>
        <source>Axis Error Dec:</source>
        <translation>轴错误减速度：</translation>
    </message>
    <message>
        <source>Threshold Setting</source>
        <translation>阈值设置</translation>
    </message>
    <message>
        <source>Velocity Threshold:</source>
        <translation>速度阈值：</translation>
    </message>
    <message>
        <source>Follow Error Threshold:</source>
        <translation>跟随误差阈值：</translation>
    </message>
    <message>
        <source>Axis Vel Set</source>
        <translation>轴速度设置</translation>
    </message>
    <message>
        <source>Max Vel:</source>
        <translation>最大速度：</translation>
    </message>
    <message>
        <source>Unit/s</source>
        <translation>单位/s</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Max Acc:&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;最大加速度：&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Max Acc:</source>
        <translation>最大加速度：</translation>
    </message>
    <message>
        <source>Jog Max Vel:</source>
        <translation>点动最大速度：</translation>
    </message>
    <message>
        <source>Torque Set</source>
        <translation>转矩设置</translation>
    </message>
    <message>
        <source>Neg Torque Max Value:</source>
        <translation>负向最大转矩：</translation>
    </message>
    <message>
        <source>0.1%   </source>
        <translation>0.1%   </translation>
    </message>
    <message>
        <source>Pos Torque Max Value:</source>
        <translation>正向最大转矩：</translation>
    </message>
    <message>
        <source>0.1%</source>
        <translation>0.1%</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>选项</translation>
    </message>
    <message>
        <source>Do not enter the ErrorStop state after touching the limit</source>
        <translation>触碰限位后不进入 ErrorStop 状态</translation>
    </message>
    <message>
        <source>Hard limit logic</source>
        <translation>硬限位逻辑</translation>
    </message>
    <message>
        <source> Hard Limit Pos:</source>
        <translation> 正硬限位：</translation>
    </message>
    <message>
        <source>Hard Limit Pos:</source>
        <translation>正硬限位：</translation>
    </message>
    <message>
        <source>Hard Limit Neg:</source>
        <translation>负硬限位：</translation>
    </message>
    <message>
        <source>Input Signal Setting</source>
        <translation>输入信号设置</translation>
    </message>
    <message>
        <source>Probe 1 Enable:</source>
        <translation>探针 1 使能：</translation>
    </message>
    <message>
        <source>Probe 1 input</source>
        <translation>探针 1 输入</translation>
    </message>
    <message>
        <source>Probe 2 Enable:</source>
        <translation>探针 2 使能：</translation>
    </message>
    <message>
        <source>Probe 2 input</source>
        <translation>探针 2 输入</translation>
    </message>
    <message>
        <source>Encoder Mode:</source>
        <translation>编码器模式：</translation>
    </message>
    <message>
        <source>Input Signal:</source>
        <translation>输入信号：</translation>
    </message>
    <message>
        <source>Preset Enable:</source>
        <translation>预置使能：</translation>
    </message>
    <message>
        <source>Preset input</source>
        <translation>预置输入</translation>
    </message>
    <message>
        <source>Input Signal Filter Time:</source>
        <translation>输入信号滤波时间：</translation>
    </message>
    <message>
        <source>100ns </source>
        <translation>100ns </translation>
    </message>
    <message>
        <source>OutPut Signal Setting</source>
        <translation>输出信号设置</translation>
    </message>
    <message>
        <source>Pulse Mode:</source>
        <translation>脉冲模式：</translation>
    </message>
    <message>
        <source>Output Pin:</source>
        <translation>输出引脚：</translation>
    </message>
    <message>
        <source>Compare output Setting</source>
        <translation>比较输出设置</translation>
    </message>
    <message>
        <source>Compare output enable</source>
        <translation>比较输出使能</translation>
    </message>
    <message>
        <source>Compare output pin</source>
        <translation>比较输出引脚</translation>
    </message>
    <message>
        <source>Compare Output Width:</source>
        <translation>比较输出宽度：</translation>
    </message>
    <message>
        <source>unit</source>
        <translation>单位</translation>
    </message>
    <message>
        <source>Unit:</source>
        <translation>单位：</translation>
    </message>
    <message>
        <source> ms</source>
        <translation> ms</translation>
    </message>
    <message>
        <source> unit</source>
        <translation> 单位</translation>
    </message>
    <message>
        <source>Period Setting</source>
        <translation>周期设置</translation>
    </message>
    <message>
        <source>ms</source>
        <translation>ms</translation>
    </message>
    <message>
        <source>Positive Logic</source>
        <translation>正逻辑</translation>
    </message>
    <message>
        <source>Negitive Logic</source>
        <translation>负逻辑</translation>
    </message>
</context>
<context>
    <name>MotionControlAxisEditor</name>
    <message>
        <source>Negative limit:</source>
        <translation>负限位：</translation>
    </message>
    <message>
        <source>Positive limit:</source>
        <translation>正限位：</translation>
    </message>
    <message>
        <source>Origin signal:</source>
        <translation>原点信号：</translation>
    </message>
    <message>
        <source>basic setting</source>
        <translation>基本设置</translation>
    </message>
    <message>
        <source>document setting</source>
        <translation>单位换算设置</translation>
    </message>
    <message>
        <source>model and param setting</source>
        <translation>模式与参数设置</translation>
    </message>
    <message>
        <source>origin return setting</source>
        <translation>原点回归设置</translation>
    </message>
    <message>
        <source>online debug setting</source>
        <translation>在线调试</translation>
    </message>
</context>
<context>
    <name>MotionControlAxisPlugin</name>
    <message>
        <source>Kestrun</source>
        <translation>Kestrun</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>No</source>
        <translation>否</translation>
    </message>
    <message>
        <source>Do you want to delete the axis ?</source>
        <translation>确定要删除该轴吗？</translation>
    </message>
    <message>
        <source>Do you want to delete all axis ?</source>
        <translation>确定要删除所有轴吗？</translation>
    </message>
    <message>
        <source>Axis Config</source>
        <translation>轴配置</translation>
    </message>
    <message>
        <source>New Axis</source>
        <translation>新建轴</translation>
    </message>
    <message>
        <source>Motion Control Task CFG</source>
        <translation>运动控制任务配置</translation>
    </message>
    <message>
        <source>Delete All Axis</source>
        <translation>删除所有轴</translation>
    </message>
    <message>
        <source>Delete Axis</source>
        <translation>删除轴</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>重命名</translation>
    </message>
</context>
<context>
    <name>MotionControlTaskCfg</name>
    <message>
        <source>MotionControlTaskCfg</source>
        <translation>运动控制任务配置</translation>
    </message>
    <message>
        <source>Cycle time of motion control task:</source>
        <translation>运动控制任务的周期时间：</translation>
    </message>
    <message>
        <source>us</source>
        <translation>us</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>NewAxisDlg</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>New Axis</source>
        <translation>新建轴</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>名称：</translation>
    </message>
</context>
<context>
    <name>OnlineDebugWidget</name>
    <message>
        <source>Set and actual values</source>
        <translation>设定值和实际值</translation>
    </message>
    <message>
        <source>          Status:</source>
        <translation>          状态：</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>          Communication:</source>
        <translation>          通信：</translation>
    </message>
    <message>
        <source>Communication</source>
        <translation>通信</translation>
    </message>
    <message>
        <source>        Axis Error:</source>
        <translation>        轴错误：</translation>
    </message>
    <message>
        <source>Axis error</source>
        <translation>轴错误</translation>
    </message>
    <message>
        <source>      Servo Error:</source>
        <translation>      伺服错误：</translation>
    </message>
    <message>
        <source>Servo error</source>
        <translation>伺服错误</translation>
    </message>
    <message>
        <source>Signals of the axis</source>
        <translation>轴的信号</translation>
    </message>
    <message>
        <source>Enter debugging</source>
        <translation>进入调试</translation>
    </message>
    <message>
        <source>Basic</source>
        <translation>基本</translation>
    </message>
    <message>
        <source>Preset Position:</source>
        <translation>预置位置：</translation>
    </message>
    <message>
        <source>Preset position</source>
        <translation>预置位置</translation>
    </message>
    <message>
        <source>0</source>
        <translation>0</translation>
    </message>
    <message>
        <source>Origin Offset:</source>
        <translation>原点偏移：</translation>
    </message>
    <message>
        <source>Origin offset</source>
        <translation>原点偏移</translation>
    </message>
    <message>
        <source>Speed Multiplier:</source>
        <translation>速度倍率：</translation>
    </message>
    <message>
        <source>Speed multiplier in percent</source>
        <translation>速度倍率（百分比）</translation>
    </message>
    <message>
        <source>100</source>
        <translation>100</translation>
    </message>
    <message>
        <source>% </source>
        <translation>% </translation>
    </message>
    <message>
        <source>Speed multiplier in force</source>
        <translation>速度倍率生效</translation>
    </message>
    <message>
        <source>Positive Jog Speed:</source>
        <translation>正向点动速度：</translation>
    </message>
    <message>
        <source>Positive jog speed</source>
        <translation>正向点动速度</translation>
    </message>
    <message>
        <source>10</source>
        <translation>10</translation>
    </message>
    <message>
        <source>Positive Jog Acc:</source>
        <translation>正向点动加速度：</translation>
    </message>
    <message>
        <source>Positive jog acceleration</source>
        <translation>正向点动加速度</translation>
    </message>
    <message>
        <source>Negative Jog Speed:</source>
        <translation>负向点动速度：</translation>
    </message>
    <message>
        <source>Negative jog speed</source>
        <translation>负向点动速度</translation>
    </message>
    <message>
        <source>Negative Jog Acc:</source>
        <translation>负向点动加速度：</translation>
    </message>
    <message>
        <source>Negative jog acceleration</source>
        <translation>负向点动加速度</translation>
    </message>
    <message>
        <source>Motion Type:</source>
        <translation>运动类型：</translation>
    </message>
    <message>
        <source>Motion type</source>
        <translation>运动类型</translation>
    </message>
    <message>
        <source>Curve Type:</source>
        <translation>曲线类型：</translation>
    </message>
    <message>
        <source>Curve type</source>
        <translation>曲线类型</translation>
    </message>
    <message>
        <source>Position:</source>
        <translation>位置：</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Velocity:</source>
        <translation>速度：</translation>
    </message>
    <message>
        <source>Velocity</source>
        <translation>速度</translation>
    </message>
    <message>
        <source>Acceleration:</source>
        <translation>加速度：</translation>
    </message>
    <message>
        <source>Acceleration</source>
        <translation>加速度</translation>
    </message>
    <message>
        <source>Deceleration:</source>
        <translation>减速度：</translation>
    </message>
    <message>
        <source>Deceleration</source>
        <translation>减速度</translation>
    </message>
    <message>
        <source>jerk:</source>
        <translation>加加速度：</translation>
    </message>
    <message>
        <source>Jerk</source>
        <translation>加加速度</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>使能</translation>
    </message>
    <message>
        <source>Preset Pos</source>
        <translation>预置位置</translation>
    </message>
    <message>
        <source>JOG+</source>
        <translation>点动+</translation>
    </message>
    <message>
        <source>JOG-</source>
        <translation>点动-</translation>
    </message>
    <message>
        <source>Motion</source>
        <translation>运动</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>复位</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>回零</translation>
    </message>
    <message>
        <source>Set the current speed multiplier?</source>
        <translation>是否设置当前速度倍率？</translation>
    </message>
    <message>
        <source>Cancel the speed multiplier setting?</source>
        <translation>是否取消速度倍率设置？</translation>
    </message>
    <message>
        <source>Absolute positioning</source>
        <translation>绝对定位</translation>
    </message>
    <message>
        <source>Relative positioning</source>
        <translation>相对定位</translation>
    </message>
    <message>
        <source>Continuous motion</source>
        <translation>连续运动</translation>
    </message>
    <message>
        <source>trapezoid</source>
        <translation>梯形</translation>
    </message>
    <message>
        <source>S_type</source>
        <translation>S 型</translation>
    </message>
    <message>
        <source>Variable</source>
        <translation>变量</translation>
    </message>
    <message>
        <source>Set value</source>
        <translation>设定值</translation>
    </message>
    <message>
        <source>Actual value</source>
        <translation>实际值</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>速度</translation>
    </message>
    <message>
        <source>Accelerated speed</source>
        <translation>加速度</translation>
    </message>
    <message>
        <source>Torque force</source>
        <translation>转矩</translation>
    </message>
    <message>
        <source>/</source>
        <translation>/</translation>
    </message>
    <message>
        <source>Hard Limit Pos</source>
        <translation>正硬限位</translation>
    </message>
    <message>
        <source>Hard Limit Neg</source>
        <translation>负硬限位</translation>
    </message>
    <message>
        <source>Home Switch</source>
        <translation>原点开关</translation>
    </message>
    <message>
        <source>Soft Limit Pos</source>
        <translation>正软限位</translation>
    </message>
    <message>
        <source>Soft Limit Neg</source>
        <translation>负软限位</translation>
    </message>
</context>
<context>
    <name>OriginReturnSetWidget</name>
    <message>
        <source>OriginReturnSet</source>
        <translation>原点回归设置</translation>
    </message>
    <message>
        <source>Home Speed:</source>
        <translation>回零速度：</translation>
    </message>
    <message>
        <source>Home speed</source>
        <translation>回零速度</translation>
    </message>
    <message>
        <source>10.0</source>
        <translation>10.0</translation>
    </message>
    <message>
        <source>Unit/s</source>
        <translation>单位/s</translation>
    </message>
    <message>
        <source>Home Acc:</source>
        <translation>回零加速度：</translation>
    </message>
    <message>
        <source>Home acceleration</source>
        <translation>回零加速度</translation>
    </message>
    <message>
        <source>100.0</source>
        <translation>100.0</translation>
    </message>
    <message>
        <source>Unit/s^2</source>
        <translation>单位/s^2</translation>
    </message>
    <message>
        <source>Home Close Speed:</source>
        <translation>回零接近速度：</translation>
    </message>
    <message>
        <source>Home close speed</source>
        <translation>回零接近速度</translation>
    </message>
    <message>
        <source>2.0</source>
        <translation>2.0</translation>
    </message>
    <message>
        <source>Home TimeOut:</source>
        <translation>回零超时：</translation>
    </message>
    <message>
        <source>Home time-out</source>
        <translation>回零超时</translation>
    </message>
    <message>
        <source>50000</source>
        <translation>50000</translation>
    </message>
    <message>
        <source>ms</source>
        <translation>ms</translation>
    </message>
    <message>
        <source>Home Mode:</source>
        <translation>回零模式：</translation>
    </message>
    <message>
        <source>Home mode</source>
        <translation>回零模式</translation>
    </message>
    <message>
        <source>Picture of the homing motion</source>
        <translation>回零运动示意图</translation>
    </message>
    <message>
        <source>Positive limit enable</source>
        <translation>正限位使能</translation>
    </message>
    <message>
        <source>Positive limit:</source>
        <translation>正限位：</translation>
    </message>
    <message>
        <source>Positive limit</source>
        <translation>正限位</translation>
    </message>
    <message>
        <source>Choose a variable</source>
        <translation>选择变量</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <source>Positive logic</source>
        <translation>正逻辑</translation>
    </message>
    <message>
        <source>Negative logic</source>
        <translation>负逻辑</translation>
    </message>
    <message>
        <source>Negative limit enable</source>
        <translation>负限位使能</translation>
    </message>
    <message>
        <source>Negative limit:</source>
        <translation>负限位：</translation>
    </message>
    <message>
        <source>Negative limit</source>
        <translation>负限位</translation>
    </message>
    <message>
        <source>Origin signal enable</source>
        <translation>原点信号使能</translation>
    </message>
    <message>
        <source>Origin signal:</source>
        <translation>原点信号：</translation>
    </message>
    <message>
        <source>Origin signal</source>
        <translation>原点信号</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>supports up to %1 axis!</source>
        <translation>最多支持 %1 个轴！</translation>
    </message>
    <message>
        <source>delete axis(%1) error!</source>
        <translation>删除轴(%1)出错！</translation>
    </message>
    <message>
        <source>add axis error!</source>
        <translation>添加轴出错！</translation>
    </message>
    <message>
        <source>rename axis(%1) error!</source>
        <translation>重命名轴(%1)出错！</translation>
    </message>
    <message>
        <source> not a valid bit address!</source>
        <translation> 不是有效的位地址！</translation>
    </message>
    <message>
        <source>Please enter the complete application path of the variable!</source>
        <translation>请输入变量的完整应用路径！</translation>
    </message>
    <message>
        <source> is not of Boolean type!</source>
        <translation> 不是布尔类型！</translation>
    </message>
    <message>
        <source>State: %1 ,Please reset first</source>
        <translation>状态：%1，请先复位</translation>
    </message>
    <message>
        <source>Cancel Enable Failed!,%1</source>
        <translation>取消使能失败！%1</translation>
    </message>
    <message>
        <source>Setting enable failed!,%1</source>
        <translation>设置使能失败！%1</translation>
    </message>
    <message>
        <source>Failed to set preset position!,%1</source>
        <translation>设置预置位置失败！%1</translation>
    </message>
    <message>
        <source>Failed to set back to original offset!,%1</source>
        <translation>设置原点偏移失败！%1</translation>
    </message>
    <message>
        <source>Returning to the original state failed!,%1</source>
        <translation>回零失败！%1</translation>
    </message>
    <message>
        <source>FAIL TO START!,%1</source>
        <translation>启动失败！%1</translation>
    </message>
    <message>
        <source>Stop failed!,%1</source>
        <translation>停止失败！%1</translation>
    </message>
    <message>
        <source>Reset failed!,%1</source>
        <translation>复位失败！%1</translation>
    </message>
    <message>
        <source>Failed to set speed multiplier!,%1</source>
        <translation>设置速度倍率失败！%1</translation>
    </message>
    <message>
        <source>Forward jog failure!,%1</source>
        <translation>正向点动失败！%1</translation>
    </message>
    <message>
        <source>Negative jog failure,%1</source>
        <translation>负向点动失败！%1</translation>
    </message>
    <message>
        <source>Direct login mode does not support axis online debugging.</source>
        <translation>直接登录模式不支持轴在线调试。</translation>
    </message>
    <message>
        <source>Failed to exit Debug menu!,%1</source>
        <translation>退出调试失败！%1</translation>
    </message>
    <message>
        <source>Failed to enter Debug menu!,%1</source>
        <translation>进入调试失败！%1</translation>
    </message>
    <message>
        <source>Kestrun</source>
        <translation>Kestrun</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
</TS>
