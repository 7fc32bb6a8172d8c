<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>ChipLoom::FunctionRankPage</name>
    <message>
        <source>Do Not Call</source>
        <translation>不调用</translation>
    </message>
    <message>
        <source>Function Name</source>
        <translation>函数名</translation>
    </message>
    <message>
        <source>Instance Name</source>
        <translation>实例名</translation>
    </message>
    <message>
        <source>Leave out all calls</source>
        <translation>不调用全部函数</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>下移</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>上移</translation>
    </message>
    <message>
        <source>Rank</source>
        <translation>序号</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>The function is generated, but main does not call it.</source>
        <translation>生成该函数，但 main 不调用它。</translation>
    </message>
</context>
<context>
    <name>ChipLoom::ProjectSetting</name>
    <message>
        <source>%1 (comes with the program)</source>
        <translation>%1（随程序提供）</translation>
    </message>
    <message>
        <source>ARM Compiler</source>
        <translation>ARM 编译器</translation>
    </message>
    <message>
        <source>Add all firmware libraries files into the project</source>
        <translation>将全部固件库文件加入工程</translation>
    </message>
    <message>
        <source>Add only the necessary firmware libraries files into the project</source>
        <translation>仅将必要的固件库文件加入工程</translation>
    </message>
    <message>
        <source>Advanced</source>
        <translation>高级</translation>
    </message>
    <message>
        <source>Another program has changed the file of this design; it is replaced too.</source>
        <translation>其他程序已更改此设计的文件；该文件也会被替换。</translation>
    </message>
    <message>
        <source>Backup previously generated files when re-generating</source>
        <translation>重新生成时备份之前生成的文件</translation>
    </message>
    <message>
        <source>Browse</source>
        <translation>浏览</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Choose the folder in which firmware packages are kept</source>
        <translation>选择存放固件包的文件夹</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>代码</translation>
    </message>
    <message>
        <source>Copy the firmware package into the project</source>
        <translation>将固件包复制到工程中</translation>
    </message>
    <message>
        <source>Delete previously generated files when not re-generated</source>
        <translation>删除之前生成而不再生成的文件</translation>
    </message>
    <message>
        <source>Files go to %1</source>
        <translation>文件将写入 %1</translation>
    </message>
    <message>
        <source>Firmware</source>
        <translation>固件</translation>
    </message>
    <message>
        <source>Generate code, Please Waiting...</source>
        <translation>正在生成代码，请稍候...</translation>
    </message>
    <message>
        <source>Generate peripheral initialization as a pair of '.c/.h' files per peripheral</source>
        <translation>为每个外设的初始化生成一对“.c/.h”文件</translation>
    </message>
    <message>
        <source>Keep User Code when re-generating</source>
        <translation>重新生成时保留用户代码</translation>
    </message>
    <message>
        <source>Linker</source>
        <translation>链接器</translation>
    </message>
    <message>
        <source>Minimum Heap Size (0x)</source>
        <translation>最小堆大小 (0x)</translation>
    </message>
    <message>
        <source>Minimum Stack Size (0x)</source>
        <translation>最小栈大小 (0x)</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Package path</source>
        <translation>固件包路径</translation>
    </message>
    <message>
        <source>Package version</source>
        <translation>固件包版本</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>工程</translation>
    </message>
    <message>
        <source>Project Location</source>
        <translation>工程位置</translation>
    </message>
    <message>
        <source>Project Name</source>
        <translation>工程名称</translation>
    </message>
    <message>
        <source>Project Settings</source>
        <translation>工程设置</translation>
    </message>
    <message>
        <source>Select directory</source>
        <translation>选择文件夹</translation>
    </message>
    <message>
        <source>Set all free pins as analog</source>
        <translation>将所有未使用的引脚设为模拟模式</translation>
    </message>
    <message>
        <source>The design that lies there, %1, is replaced by the open one.</source>
        <translation>该处的设计文件 %1 将被当前打开的设计替换。</translation>
    </message>
    <message>
        <source>Toolchain/IDE</source>
        <translation>工具链/IDE</translation>
    </message>
    <message>
        <source>Use default complier version 5</source>
        <translation>使用默认编译器版本 5</translation>
    </message>
    <message>
        <source>Use default complier version 6</source>
        <translation>使用默认编译器版本 6</translation>
    </message>
    <message>
        <source>What was generated is made anew in %1.</source>
        <translation>%1 中已生成的内容将重新生成。</translation>
    </message>
    <message>
        <source>What you wrote between the marker comments is lost: "%1" is off.</source>
        <translation>您写在标记注释之间的代码将丢失：“%1”未勾选。</translation>
    </message>
    <message>
        <source>What you wrote between the marker comments stays. Where it no longer fits, the former file is kept beside the new one and named afterwards.</source>
        <translation>您写在标记注释之间的代码会保留。若其位置已不存在，原文件会保留在新文件旁，并在生成后列出。</translation>
    </message>
</context>
<context>
    <name>ProjectSetting</name>
    <message>
        <source>A package lies in a folder such as %1</source>
        <translation>固件包应位于如下文件夹中：%1</translation>
    </message>
</context>
<context>
    <name>Prompt</name>
    <message>
        <source> Open Folder  </source>
        <translation> 打开文件夹  </translation>
    </message>
    <message>
        <source> Open Project  </source>
        <translation> 打开工程  </translation>
    </message>
    <message>
        <source>"Minimum Heap Size" input error!</source>
        <translation>“最小堆大小”输入错误！</translation>
    </message>
    <message>
        <source>"Minimum Heap Size" input error, cannot be greater than SRAM size(0x%1)</source>
        <translation>“最小堆大小”输入错误，不能大于 SRAM 大小(0x%1)</translation>
    </message>
    <message>
        <source>"Minimum Stack Size" input error!</source>
        <translation>“最小栈大小”输入错误！</translation>
    </message>
    <message>
        <source>"Minimum Stack Size" input error, cannot be greater than SRAM size(0x%1)</source>
        <translation>“最小栈大小”输入错误，不能大于 SRAM 大小(0x%1)</translation>
    </message>
    <message>
        <source>%1 already exists, do you want to overwrite it?</source>
        <translation>%1 已存在，是否覆盖？</translation>
    </message>
    <message>
        <source>Are you sure you want to reset the ranking?</source>
        <translation>确定要重置排序吗？</translation>
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
        <source>Generate code failed!</source>
        <translation>生成代码失败！</translation>
    </message>
    <message>
        <source>Generate code finished!</source>
        <translation>代码生成完成！</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>信息</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Open the project error! 

Please install toolchain to open the project.
</source>
        <translation>打开工程出错！ 

请安装工具链以打开工程。
</translation>
    </message>
    <message>
        <source>Project name or project location is empty!</source>
        <translation>工程名称或工程位置为空！</translation>
    </message>
    <message>
        <source>Question</source>
        <translation>询问</translation>
    </message>
    <message>
        <source>The folder holds no firmware package of the series.</source>
        <translation>该文件夹中没有此系列的固件包。</translation>
    </message>
    <message>
        <source>The project cannot have this value.</source>
        <translation>工程不能使用此值。</translation>
    </message>
    <message>
        <source>The toolchain cannot be used.</source>
        <translation>不能使用该工具链。</translation>
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
