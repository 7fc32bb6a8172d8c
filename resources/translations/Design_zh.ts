<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Design</name>
    <message>
        <source>"%1" is no label: letters, digits and underscores, not beginning with a digit.</source>
        <translation>“%1”不能用作标签：只能包含字母、数字和下划线，且不能以数字开头。</translation>
    </message>
    <message>
        <source>"%2" cannot be used for %1.</source>
        <translation>“%2”不能用于 %1。</translation>
    </message>
    <message>
        <source>"%2" is no address for %1.</source>
        <translation>“%2”不是 %1 的有效地址。</translation>
    </message>
    <message>
        <source>"%2" is no value for %1.</source>
        <translation>“%2”不是 %1 的有效值。</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1（%2）</translation>
    </message>
    <message>
        <source>%1 and %2 cannot run together; switch one of them off.</source>
        <translation>%1 与 %2 不能同时运行，请关闭其中之一。</translation>
    </message>
    <message>
        <source>%1 and %2 serve the crystal or their ports only together, and %3 stands on %2.</source>
        <translation>%1 与 %2 只能同时用于晶振或同时用于端口，而 %2 上已有 %3。</translation>
    </message>
    <message>
        <source>%1 belongs to %2; its settings begin with "%3/".</source>
        <translation>%1 属于 %2，其设置以“%3/”开头。</translation>
    </message>
    <message>
        <source>%1 counts its ticks with SysTick, which is the delay time base too; choose another delay time base in %2.</source>
        <translation>%1 使用 SysTick 作为系统节拍，而它同时也是延时时基；请在 %2 中选择其他延时时基。</translation>
    </message>
    <message>
        <source>%1 does not stand on pin %2.</source>
        <translation>%1 未分配在引脚 %2 上。</translation>
    </message>
    <message>
        <source>%1 finds no free pin for %2.</source>
        <translation>%1 找不到可供 %2 使用的空闲引脚。</translation>
    </message>
    <message>
        <source>%1 has no effect: a channel has one sampling time, here that of %2.</source>
        <translation>%1 不起作用：一个通道只有一个采样时间，此处以 %2 为准。</translation>
    </message>
    <message>
        <source>%1 has no mode "%2" on this device.</source>
        <translation>此器件上的 %1 没有模式“%2”。</translation>
    </message>
    <message>
        <source>%1 has no value "%2".</source>
        <translation>%1 没有取值“%2”。</translation>
    </message>
    <message>
        <source>%1 has the channel %2 already.</source>
        <translation>%1 已占用通道 %2。</translation>
    </message>
    <message>
        <source>%1 is closed by the settings of another peripheral (condition: %2).</source>
        <translation>%1 因其他外设的设置而不可选（条件：%2）。</translation>
    </message>
    <message>
        <source>%1 is closed: nothing that raises it is in use.</source>
        <translation>%1 不可用：没有使用能触发它的外设。</translation>
    </message>
    <message>
        <source>%1 is fixed by the present modes.</source>
        <translation>%1 由当前模式固定，不能修改。</translation>
    </message>
    <message>
        <source>%1 is incomplete: choose an entry of the mode "%2" too.</source>
        <translation>%1 尚未配置完整：还需选择模式“%2”的选项。</translation>
    </message>
    <message>
        <source>%1 is needed by a middleware and stays on.</source>
        <translation>中间件需要 %1，它保持使能。</translation>
    </message>
    <message>
        <source>%1 is not in use, so there is nothing to set; give the request a channel.</source>
        <translation>%1 未使用，没有可设置的内容；请先为请求分配通道。</translation>
    </message>
    <message>
        <source>%1 is off by %2 %; up to %3 % is fine.</source>
        <translation>%1 的误差为 %2 %，允许 %3 %。</translation>
    </message>
    <message>
        <source>%1 is placed by hand, but no mode uses it.</source>
        <translation>%1 为手动分配，但尚无模式使用。</translation>
    </message>
    <message>
        <source>%1 is raised by line %2 of EXINT only, which does not interrupt now.</source>
        <translation>%1 仅由 EXINT 线 %2 触发，而该线目前不产生中断。</translation>
    </message>
    <message>
        <source>%1 lost a pin. Off now: %2</source>
        <translation>%1 失去了一个引脚，已关闭：%2</translation>
    </message>
    <message>
        <source>%1 needs %2 at position %3, which is not free for it.</source>
        <translation>%1 要求 %2 位于引脚位置 %3，但该位置无法使用。</translation>
    </message>
    <message>
        <source>%1 sees no edges: %3 makes %2 an analog pin.</source>
        <translation>%1 检测不到边沿：%3 使 %2 成为模拟引脚。</translation>
    </message>
    <message>
        <source>%1 serves %2.</source>
        <translation>%1 正在为 %2 服务。</translation>
    </message>
    <message>
        <source>%1 shows no parameter %2 in its present modes.</source>
        <translation>%1 在当前模式下没有参数 %2。</translation>
    </message>
    <message>
        <source>%1 stands in the file more than once; the first counts.</source>
        <translation>文件中有多个 %1，以第一个为准。</translation>
    </message>
    <message>
        <source>%2 does not serve %1 with the present settings.</source>
        <translation>按当前设置，%2 不能为 %1 服务。</translation>
    </message>
    <message>
        <source>%2 drives pin %1 with another kind of output.</source>
        <translation>引脚 %1 已由 %2 以另一种输出类型驱动。</translation>
    </message>
    <message>
        <source>%2 is too large for %1: at most %3.</source>
        <translation>%2 对 %1 来说太大：最大为 %3。</translation>
    </message>
    <message>
        <source>%2 is too small for %1: at least %3.</source>
        <translation>%2 对 %1 来说太小：最小为 %3。</translation>
    </message>
    <message>
        <source>%2 of %1 cannot be changed.</source>
        <translation>%1 的 %2 不能更改。</translation>
    </message>
    <message>
        <source>%2 samples the same pin at the same moment, and each disturbs the other.</source>
        <translation>%2 同时对同一引脚采样，二者相互干扰。</translation>
    </message>
    <message>
        <source>%2.</source>
        <translation>%2。</translation>
    </message>
    <message>
        <source>Another pad is connected to the position of %1; switch the pin remap first.</source>
        <translation>%1 所在的引脚位置当前连接的是另一个焊盘，请先切换引脚重映射。</translation>
    </message>
    <message>
        <source>Conflict with:</source>
        <translation>冲突：</translation>
    </message>
    <message>
        <source>Events of %1 interrupt, but its vectors are off: %2.</source>
        <translation>%1 的事件会产生中断，但其中断向量未使能：%2。</translation>
    </message>
    <message>
        <source>Moves here from pin %1.</source>
        <translation>将从引脚 %1 移至此处。</translation>
    </message>
    <message>
        <source>No available DMA channels for configurated peripherals!</source>
        <translation>已配置的外设没有可用的 DMA 通道！</translation>
    </message>
    <message>
        <source>No available DMA request!</source>
        <translation>没有可用的 DMA 请求！</translation>
    </message>
    <message>
        <source>No available DMA requests for configurated peripherals!</source>
        <translation>已配置的外设没有可用的 DMA 请求！</translation>
    </message>
    <message>
        <source>No available channel for configurated DMA Request! %1 has been used</source>
        <translation>已配置的 DMA 请求没有可用通道！%1 已被使用</translation>
    </message>
    <message>
        <source>No bit timing gives %2 kbit/s closely enough; the nearest is %3.</source>
        <translation>没有位时序能足够接近 %2 kbit/s；最接近的是 %3。</translation>
    </message>
    <message>
        <source>No design is open.</source>
        <translation>当前没有打开的设计。</translation>
    </message>
    <message>
        <source>No pin of this package offers %1.</source>
        <translation>此封装没有任何引脚提供 %1。</translation>
    </message>
    <message>
        <source>No remap group of %1 has room for all of its signals.</source>
        <translation>%1 的任何重映射组都无法容纳其全部信号。</translation>
    </message>
    <message>
        <source>No remap group offers %1 on pin %2; take it off its present pin first.</source>
        <translation>没有重映射组在引脚 %2 上提供 %1，请先将其从当前引脚移除。</translation>
    </message>
    <message>
        <source>No timing keeps the limit %2 of the bus; nearest bus clock: %3.</source>
        <translation>没有时序能满足总线限制 %2；最接近的总线时钟：%3。</translation>
    </message>
    <message>
        <source>Nothing stands on pin %1 that could be labelled.</source>
        <translation>引脚 %1 上没有可以添加标签的功能。</translation>
    </message>
    <message>
        <source>Nothing that has an effect stands on pin %1, so it has no settings.</source>
        <translation>引脚 %1 上没有生效的功能，因此没有设置。</translation>
    </message>
    <message>
        <source>Nothing was changed.</source>
        <translation>未做任何更改。</translation>
    </message>
    <message>
        <source>Pin %1 has a fixed purpose and cannot be assigned.</source>
        <translation>引脚 %1 用途固定，不能分配。</translation>
    </message>
    <message>
        <source>Pin %1 is driven by %2, which the remap group does not allow.</source>
        <translation>引脚 %1 由 %2 驱动，重映射组不允许这样使用。</translation>
    </message>
    <message>
        <source>Pin %1 is held by %2.</source>
        <translation>引脚 %1 已被 %2 占用。</translation>
    </message>
    <message>
        <source>Pin %2 does not offer %1.</source>
        <translation>引脚 %2 不提供 %1。</translation>
    </message>
    <message>
        <source>Plain functions</source>
        <translation>普通功能</translation>
    </message>
    <message>
        <source>Please select a </source>
        <translation>请选择 </translation>
    </message>
    <message>
        <source>Takes %1 off this position.</source>
        <translation>将使 %1 离开此引脚位置。</translation>
    </message>
    <message>
        <source>The RTOS fixes the priority group.</source>
        <translation>RTOS 已固定优先级分组。</translation>
    </message>
    <message>
        <source>The device has no %1; its settings stay in the file.</source>
        <translation>器件没有 %1，其设置保留在文件中。</translation>
    </message>
    <message>
        <source>The device has no interrupt %1.</source>
        <translation>器件没有中断 %1。</translation>
    </message>
    <message>
        <source>The following signals are not found in all pins, you can switch pin remapping in SCFG: %1</source>
        <translation>在所有引脚中找不到以下信号，可在 SCFG 中切换引脚重映射：%1</translation>
    </message>
    <message>
        <source>The mode "%2" of %1 has no choice "%3" on this device.</source>
        <translation>此器件上 %1 的模式“%2”没有选项“%3”。</translation>
    </message>
    <message>
        <source>The mode "%2" of %1 is closed by the settings of another peripheral.</source>
        <translation>%1 的模式“%2”因其他外设的设置而不可用。</translation>
    </message>
    <message>
        <source>The package has no pin %1.</source>
        <translation>此封装没有引脚 %1。</translation>
    </message>
    <message>
        <source>The position of %1 is held by %3 through the pad %2.</source>
        <translation>%1 所在的引脚位置已被焊盘 %2 上的 %3 占用。</translation>
    </message>
    <message>
        <source>The present settings do not allow the value "%2" of %1.</source>
        <translation>当前设置不允许 %1 取值“%2”。</translation>
    </message>
    <message>
        <source>The present settings of %2 do not raise the DMA request %1.</source>
        <translation>%2 的当前设置不产生 DMA 请求 %1。</translation>
    </message>
    <message>
        <source>The remap in use brings %2 to pin %1, so nothing else may drive it.</source>
        <translation>当前重映射将 %2 映射到引脚 %1，因此其他功能不能驱动该引脚。</translation>
    </message>
    <message>
        <source>The value "%2" of %1 contradicts other settings.</source>
        <translation>%1 的值“%2”与其他设置相矛盾。</translation>
    </message>
    <message>
        <source>There is no DMA channel "%1".</source>
        <translation>没有 DMA 通道“%1”。</translation>
    </message>
    <message>
        <source>There is no setting "%1" in this design.</source>
        <translation>此设计中没有设置项“%1”。</translation>
    </message>
    <message>
        <source>To be changed in: %1</source>
        <translation>请在以下模块中修改：%1</translation>
    </message>
    <message>
        <source>not in use</source>
        <translation>未使用</translation>
    </message>
    <message>
        <source>placed by a mode</source>
        <translation>由模式分配</translation>
    </message>
    <message>
        <source>placed by hand</source>
        <translation>手动分配</translation>
    </message>
    <message>
        <source>placed by hand, no mode uses it</source>
        <translation>手动分配，尚无模式使用</translation>
    </message>
    <message>
        <source>placed by hand, used by a mode</source>
        <translation>手动分配，并由模式使用</translation>
    </message>
</context>
<context>
    <name>Modes</name>
    <message>
        <source>As specified in CAN protocol, the maximum allowable oscillator tolerance is 1.58%. To guarantee normal communication, it is recommended to use "High speed external crystal (HEXT)" as the CAN clock source.</source>
        <translation>CAN 协议规定振荡器的最大允许误差为 1.58%。为保证正常通信，建议使用“高速外部晶振 (HEXT)”作为 CAN 的时钟源。</translation>
    </message>
    <message>
        <source>Please note: Full duplex affiliated parameters must be same as the leader</source>
        <translation>请注意：全双工从属端的参数必须与主端相同</translation>
    </message>
    <message>
        <source>Please note: When configuring ADC, it is also necessary to configure ADC-Common</source>
        <translation>请注意：配置 ADC 时还需要配置 ADC-Common</translation>
    </message>
    <message>
        <source>This peripheral has no parameters to be configured.</source>
        <translation>该外设没有需要配置的参数。</translation>
    </message>
</context>
<context>
    <name>ProjectSetting</name>
    <message>
        <source>CMake cannot build in a folder whose path holds one of ; " \ # &lt; &gt; | ? : and ${. Choose another name or location, or the Makefile.</source>
        <translation>路径中含有 ; " \ # &lt; &gt; | ? : 或 ${ 时，CMake 无法构建。请换用其他名称或位置，或选择 Makefile。</translation>
    </message>
    <message>
        <source>Current MCU does not support this option</source>
        <translation>当前 MCU 不支持此选项</translation>
    </message>
    <message>
        <source>When CMSIS_DSP is activated, this option is invalid.</source>
        <translation>启用 CMSIS_DSP 时，此选项无效。</translation>
    </message>
    <message>
        <source>When FREERTOS or CMSIS_DSP is activated, this option is invalid.</source>
        <translation>启用 FREERTOS 或 CMSIS_DSP 时，此选项无效。</translation>
    </message>
    <message>
        <source>When both LWIP and RT-Thread_Nano are activated, this option is invalid.</source>
        <translation>同时启用 LWIP 和 RT-Thread_Nano 时，此选项无效。</translation>
    </message>
</context>
<context>
    <name>Prompt</name>
    <message>
        <source>After enabling hext, should the PLL reference clock(pllrcs) in 'Clock Configuration' be switched to hext?</source>
        <translation>使能 HEXT 后，是否将“时钟配置”中的 PLL 参考时钟 (pllrcs) 切换为 HEXT？</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>FREERTOS cannot be activated simultaneously with the "Delay TimeBase Source - SysTick" in the SYSTEM. 
The "Delay TimeBase Source - SysTick" has been automatically disabled.
Please reselect the "Delay TimeBase Source" in the SYSTEM</source>
        <translation>FREERTOS 不能与 SYSTEM 中的“延时时基源 - SysTick”同时激活。 
“延时时基源 - SysTick”已被自动关闭。
请在 SYSTEM 中重新选择“延时时基源”</translation>
    </message>
    <message>
        <source>FREERTOS is enabled. It is recommended that SysTick  not be used simultaneously with FREERTOS. Please confirm to proceed</source>
        <translation>FREERTOS 已启用。建议不要与 FREERTOS 同时使用 SysTick。请确认是否继续</translation>
    </message>
    <message>
        <source>Open file error, MCU in file not supported.</source>
        <translation>打开文件错误，不支持文件中的 MCU。</translation>
    </message>
    <message>
        <source>Open file error, MCU package in file not supported.</source>
        <translation>打开文件错误，不支持文件中的 MCU 封装。</translation>
    </message>
    <message>
        <source>Open file error, can not get MCU information!</source>
        <translation>打开文件错误，无法获取 MCU 信息！</translation>
    </message>
    <message>
        <source>Question</source>
        <translation>询问</translation>
    </message>
    <message>
        <source>Save file error!</source>
        <translation>保存文件错误！</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
</context>
</TS>
