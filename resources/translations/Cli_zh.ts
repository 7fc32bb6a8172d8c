<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Cli</name>
    <message>
        <source>"%1" is no language; give en or zh.</source>
        <translation>“%1”不是可用的语言，请给出 en 或 zh。</translation>
    </message>
    <message>
        <source>"%1" takes no arguments.</source>
        <translation>“%1”不带参数。</translation>
    </message>
    <message>
        <source>"%1" takes these arguments: %2</source>
        <translation>“%1”的参数应为：%2</translation>
    </message>
    <message>
        <source>"chiploom-cli --help" tells what there is.</source>
        <translation>运行“chiploom-cli --help”可查看用法。</translation>
    </message>
    <message>
        <source>Answer questions by going on. Without it: by their default, with exit code 1.</source>
        <translation>对所有提问选择继续。缺省时取默认回答，退出码为 1。</translation>
    </message>
    <message>
        <source>Chip Loom without a window, for ZV32 devices.</source>
        <translation>Chip Loom 的命令行版本，用于 ZV32 器件。</translation>
    </message>
    <message>
        <source>Commands:</source>
        <translation>命令：</translation>
    </message>
    <message>
        <source>Core</source>
        <translation>内核</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>器件</translation>
    </message>
    <message>
        <source>Exit codes: 0 success, 1 the design or the data has a problem, 2 wrong usage, 3 a file cannot be read or written.</source>
        <translation>退出码：0 成功，1 设计或数据有问题，2 用法错误，3 文件无法读取或写入。</translation>
    </message>
    <message>
        <source>Flash</source>
        <translation>闪存</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>主频</translation>
    </message>
    <message>
        <source>GPIOs</source>
        <translation>GPIO 数</translation>
    </message>
    <message>
        <source>Language of messages and of database texts. Without it: English.</source>
        <translation>消息和数据库文本的语言。缺省为英文。</translation>
    </message>
    <message>
        <source>List the devices of the catalogue.</source>
        <translation>列出器件目录中的器件。</translation>
    </message>
    <message>
        <source>Max. SRAM</source>
        <translation>最大 SRAM</translation>
    </message>
    <message>
        <source>No command was given.</source>
        <translation>没有给出命令。</translation>
    </message>
    <message>
        <source>No device fits.</source>
        <translation>没有符合条件的器件。</translation>
    </message>
    <message>
        <source>Only the devices in a package, as LQFP48.</source>
        <translation>仅列出某一封装的器件，如 LQFP48。</translation>
    </message>
    <message>
        <source>Only the devices of a series, as ZV32F421.</source>
        <translation>仅列出某一系列的器件，如 ZV32F421。</translation>
    </message>
    <message>
        <source>Only the devices whose name holds TEXT, in upper or lower case.</source>
        <translation>仅列出名称中含有 TEXT 的器件，不区分大小写。</translation>
    </message>
    <message>
        <source>Options of the command:</source>
        <translation>命令的选项：</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>选项：</translation>
    </message>
    <message>
        <source>Package</source>
        <translation>封装</translation>
    </message>
    <message>
        <source>Read the device database in DIR. Without it: the folder ZV32DB beside the program.</source>
        <translation>从 DIR 读取器件数据库。缺省为程序旁的 ZV32DB 文件夹。</translation>
    </message>
    <message>
        <source>SRAM</source>
        <translation>SRAM</translation>
    </message>
    <message>
        <source>Series</source>
        <translation>系列</translation>
    </message>
    <message>
        <source>Show the version and exit.</source>
        <translation>显示版本，然后退出。</translation>
    </message>
    <message>
        <source>Show this help, or that of the command, and exit.</source>
        <translation>显示本帮助或该命令的帮助，然后退出。</translation>
    </message>
    <message>
        <source>The result cannot be written to standard output.</source>
        <translation>无法将结果写入标准输出。</translation>
    </message>
    <message>
        <source>There is no command "%1".</source>
        <translation>没有命令“%1”。</translation>
    </message>
    <message>
        <source>There is no package "%1" in the catalogue, which has: %2</source>
        <translation>器件目录中没有封装“%1”，已有的封装：%2</translation>
    </message>
    <message>
        <source>There is no series "%1" in the catalogue, which has: %2</source>
        <translation>器件目录中没有系列“%1”，已有的系列：%2</translation>
    </message>
    <message>
        <source>Usage:</source>
        <translation>用法：</translation>
    </message>
    <message>
        <source>Write the result as JSON.</source>
        <translation>以 JSON 格式输出结果。</translation>
    </message>
    <message>
        <source>[%1] answered: %2</source>
        <translation>[%1] 回答：%2</translation>
    </message>
</context>
</TS>
