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
        <source>%1 does not stand on pin %2.</source>
        <translation>%1 未分配在引脚 %2 上。</translation>
    </message>
    <message>
        <source>%1 needs %2 at position %3, which is not free for it.</source>
        <translation>%1 要求 %2 位于引脚位置 %3，但该位置无法使用。</translation>
    </message>
    <message>
        <source>%2 drives pin %1 with another kind of output.</source>
        <translation>引脚 %1 已由 %2 以另一种输出类型驱动。</translation>
    </message>
    <message>
        <source>Another pad is connected to the position of %1; switch the pin remap first.</source>
        <translation>%1 所在的引脚位置当前连接的是另一个焊盘，请先切换引脚重映射。</translation>
    </message>
    <message>
        <source>Moves here from pin %1.</source>
        <translation>将从引脚 %1 移至此处。</translation>
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
        <source>Nothing stands on pin %1 that could be labelled.</source>
        <translation>引脚 %1 上没有可以添加标签的功能。</translation>
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
        <source>Takes %1 off this position.</source>
        <translation>将使 %1 离开此引脚位置。</translation>
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
        <source>The remap in use brings %2 to pin %1, so nothing else may drive it.</source>
        <translation>当前重映射将 %2 映射到引脚 %1，因此其他功能不能驱动该引脚。</translation>
    </message>
    <message>
        <source>There is no setting "%1" in this design.</source>
        <translation>此设计中没有设置项“%1”。</translation>
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
</TS>
