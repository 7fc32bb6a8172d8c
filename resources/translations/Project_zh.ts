<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Project</name>
    <message>
        <source>%1 cannot be moved to %2</source>
        <translation>无法将 %1 移动到 %2</translation>
    </message>
    <message>
        <source>%1 cannot be read</source>
        <translation>无法读取 %1</translation>
    </message>
    <message>
        <source>%1 cannot be removed</source>
        <translation>无法删除 %1</translation>
    </message>
    <message>
        <source>%1 holds too many files</source>
        <translation>%1 中的文件过多</translation>
    </message>
    <message>
        <source>%1 is a link that leads out of the project; it is not followed</source>
        <translation>%1 是指向工程之外的链接，不予跟随</translation>
    </message>
    <message>
        <source>%1 is a link; it is not replaced</source>
        <translation>%1 是链接，不予替换</translation>
    </message>
    <message>
        <source>%1 is missing; put the project's file back under this name, or remove its folder to have it made anew</source>
        <translation>缺少 %1；请将工程文件以此名称放回，或删除其文件夹以重新生成</translation>
    </message>
    <message>
        <source>%1 is no folder</source>
        <translation>%1 不是文件夹</translation>
    </message>
    <message>
        <source>%1 is no readable project file (%2); correct it, or remove its folder to have it made anew</source>
        <translation>%1 不是可读的工程文件（%2）；请改正，或删除其文件夹以重新生成</translation>
    </message>
    <message>
        <source>%1 is no regular file</source>
        <translation>%1 不是普通文件</translation>
    </message>
    <message>
        <source>%1 keeps its size of the %2, %3, since it is not written in decimal digits; set it there to %4</source>
        <translation>%1 保留其%2大小 %3，因为它不是用十进制数字写的；请在该处改为 %4</translation>
    </message>
    <message>
        <source>%1 lies outside of the project</source>
        <translation>%1 位于工程之外</translation>
    </message>
    <message>
        <source>%1 sets no size of the %2, so it was left as it is</source>
        <translation>%1 没有设置%2大小，因此保持不变</translation>
    </message>
    <message>
        <source>%1 stands where a file is to be: move it away</source>
        <translation>%1 占用了文件的位置：请将其移走</translation>
    </message>
    <message>
        <source>%1 was changed by hand and is no longer needed: it is now %2</source>
        <translation>%1 曾被手工修改且不再需要：现已改名为 %2</translation>
    </message>
    <message>
        <source>%1 was changed by hand and the package has another one: the former file is now %2</source>
        <translation>%1 曾被手工修改，而固件包中有新的版本：原文件现为 %2</translation>
    </message>
    <message>
        <source>%1: %2 was not found in its known form and was left as it is</source>
        <translation>%1：未找到已知形式的 %2，保持不变</translation>
    </message>
    <message>
        <source>%1: folders are nested too deeply</source>
        <translation>%1：文件夹嵌套过深</translation>
    </message>
    <message>
        <source>Another program is writing the project in %1; try again later</source>
        <translation>另一个程序正在写入 %1 中的工程，请稍后再试</translation>
    </message>
    <message>
        <source>No firmware package of the series is installed.</source>
        <translation>没有安装该系列的固件包。</translation>
    </message>
    <message>
        <source>The firmware package has no file %1</source>
        <translation>固件包中没有文件 %1</translation>
    </message>
    <message>
        <source>The firmware package has no folder %1</source>
        <translation>固件包中没有文件夹 %1</translation>
    </message>
    <message>
        <source>The folder %1 cannot be made: %2</source>
        <translation>无法创建文件夹 %1：%2</translation>
    </message>
    <message>
        <source>The link %1 leads out of the package; it is not followed</source>
        <translation>链接 %1 指向固件包之外，不予跟随</translation>
    </message>
    <message>
        <source>The project in %1 was made for %2, and its files would not fit %3: choose another folder</source>
        <translation>%1 中的工程是为 %2 生成的，其文件不适用于 %3：请选择其他文件夹</translation>
    </message>
    <message>
        <source>There is no editor for projects of %1</source>
        <translation>没有 %1 工程的编辑器</translation>
    </message>
    <message>
        <source>heap</source>
        <translation>堆</translation>
    </message>
    <message>
        <source>it declares a document type</source>
        <translation>其中声明了文档类型</translation>
    </message>
    <message>
        <source>its elements are nested too deep</source>
        <translation>元素嵌套过深</translation>
    </message>
    <message>
        <source>its form cannot be kept</source>
        <translation>无法保持其格式</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>第 %1 行：%2</translation>
    </message>
    <message>
        <source>stack</source>
        <translation>栈</translation>
    </message>
</context>
<context>
    <name>Prompt</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Failed to copy firmware package file, Please confirm whether to continue?</source>
        <translation>复制固件包文件失败，请确认是否继续？</translation>
    </message>
    <message>
        <source>Failure to Config Linker Setting! Please confirm whether to continue?</source>
        <translation>配置链接器设置失败！请确认是否继续？</translation>
    </message>
    <message>
        <source>Failure to Config Project file! Please confirm whether to continue?</source>
        <translation>配置工程文件失败！请确认是否继续？</translation>
    </message>
    <message>
        <source>The Firmware Package(%1) by the Project is not available, Please confirm whether to continue?</source>
        <translation>工程所用的固件包(%1)不可用，请确认是否继续？</translation>
    </message>
    <message>
        <source>The middleware component of RT-Thread_Nano does not exist, you can click "Package Manager-Components" to install. Please confirm whether to continue?</source>
        <translation>中间件组件 RT-Thread_Nano 不存在，可点击“包管理器-组件”安装。请确认是否继续？</translation>
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
