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
        <source>"%1" is no setting of a series; write it as clock/sclk=120.</source>
        <translation>“%1”不是系列的设置；请写成 clock/sclk=120。</translation>
    </message>
    <message>
        <source>"%1" is no setting; write it as pin/PA9=USART1_TX.</source>
        <translation>“%1”不是设置项，请写成 pin/PA9=USART1_TX 的形式。</translation>
    </message>
    <message>
        <source>"%1" is no size for --%2.</source>
        <translation>“%1”不是 --%2 的有效大小。</translation>
    </message>
    <message>
        <source>"%1" is not in the encoding of the system; rename the file.</source>
        <translation>“%1”不符合系统的字符编码；请重命名该文件。</translation>
    </message>
    <message>
        <source>"%1" names no file.</source>
        <translation>“%1”没有指明文件名。</translation>
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
        <source>%1 has no USB clock.</source>
        <translation>%1 没有 USB 时钟。</translation>
    </message>
    <message>
        <source>%1 ppm from what was asked for</source>
        <translation>与目标值相差 %1 ppm</translation>
    </message>
    <message>
        <source>%1: %2 in the first design, %3 in the second</source>
        <translation>%1：第一个设计中为 %2，第二个设计中为 %3</translation>
    </message>
    <message>
        <source>%1: %2, only in the first design</source>
        <translation>%1：%2，仅在第一个设计中</translation>
    </message>
    <message>
        <source>%1: %2, only in the second design</source>
        <translation>%1：%2，仅在第二个设计中</translation>
    </message>
    <message>
        <source>--%1 is for a project: give --toolchain too.</source>
        <translation>--%1 用于工程：请同时给出 --toolchain。</translation>
    </message>
    <message>
        <source>--%1 must be a number from %2 to %3.</source>
        <translation>--%1 必须是 %2 到 %3 之间的数。</translation>
    </message>
    <message>
        <source>--compiler is 5 or 6, not "%1".</source>
        <translation>--compiler 只能是 5 或 6，不能是“%1”。</translation>
    </message>
    <message>
        <source>--database names no folder.</source>
        <translation>--database 未指定文件夹。</translation>
    </message>
    <message>
        <source>--dry-run and --check are for the sources: leave out --toolchain.</source>
        <translation>--dry-run 和 --check 只用于源代码：请去掉 --toolchain。</translation>
    </message>
    <message>
        <source>-o names no folder.</source>
        <translation>-o 未指定文件夹。</translation>
    </message>
    <message>
        <source>A SETTING changes the design, in the order given:
  pin/PA9=USART1_TX   place a function on a pin by hand
  pin/PA9=-USART1_TX  take it off again
  pin/PA9=            take everything off the pin
  label/PA9=LED       label what stands on the pin; without a label behind "=" take it off
  gpio/PA9/Pull type=Pull-up
                      a setting of what stands on the pin, by the names that the gpio section lists
  gpio/PA9/Label=LED  the same as label/PA9=LED
  gpio/PA9/Pin=PB6    move the signal that stands there to another pin that it can have
  gpio/ShowType=GPIO  whose pins the page of the window lists: All, GPIO or a peripheral
  nvic/USART1_IRQn/Enabled=TRUE
                      an interrupt: Enabled, GenerateHandler, PreemptionPriority, SubPriority, RTOSFunction
  nvic/PriorityGroup=NVIC_PRIORITY_GROUP_2
                      how the bits of the priorities are parted
  nvic/ShowType=2     which interrupts the page of the window lists: 0 all, 1 the available, 2 the enabled ones
  dma/any=USART1_TX   give a DMA request the first free channel that serves it
  dma/DMA1_Channel2=USART1_TX
                      give it that channel; without a request behind "=" free the channel
  dma/USART1_TX/Priority=DMA_PRIORITY_HIGH
                      a setting of a request that has a channel
  edma/any=DVP        the same of the EDMA, in its own section
  clock/sclk=120      a value of the clock, by the names that the clock section lists
  mode/USART1/Mode=Asynchronous
                      choose a mode; Disable or FALSE takes it off
  param/USART1/BaudRate=9600
                      a parameter of the chosen modes
  params/TMR3=DividerValue=9,Period=99
                      several of them in one change
  base/USART1/BaudRate=16
                      write it in base 16, or 10
  reset/USART1=       all settings of a module but its modes back to their defaults
  project/ProjectName=Blinky
                      a value of the project, by the names of the project section</source>
        <translation>SETTING 用于修改设计，按给出的顺序执行：
  pin/PA9=USART1_TX   将功能手动分配到引脚
  pin/PA9=-USART1_TX  将其移除
  pin/PA9=            清除该引脚上的全部功能
  label/PA9=LED       为引脚上的功能添加标签；“=”后为空则去掉标签
  gpio/PA9/Pull type=Pull-up
                      引脚上功能的设置，名称见 gpio 部分
  gpio/PA9/Label=LED  等同于 label/PA9=LED
  gpio/PA9/Pin=PB6    将该处的信号移到它可用的另一个引脚
  gpio/ShowType=GPIO  窗口页面列出哪些引脚：All、GPIO 或某个外设
  nvic/USART1_IRQn/Enabled=TRUE
                      中断设置：Enabled、GenerateHandler、PreemptionPriority、SubPriority、RTOSFunction
  nvic/PriorityGroup=NVIC_PRIORITY_GROUP_2
                      优先级位的划分方式
  nvic/ShowType=2     窗口页面列出哪些中断：0 全部，1 可用，2 已使能
  dma/any=USART1_TX   为 DMA 请求分配第一个可用的空闲通道
  dma/DMA1_Channel2=USART1_TX
                      为其分配该通道；“=”后为空则释放通道
  dma/USART1_TX/Priority=DMA_PRIORITY_HIGH
                      已有通道的请求的设置
  edma/any=DVP        EDMA 的同类设置，位于其自身的部分
  clock/sclk=120      时钟值，名称见 clock 部分
  mode/USART1/Mode=Asynchronous
                      选择模式；Disable 或 FALSE 表示关闭
  param/USART1/BaudRate=9600
                      所选模式的参数
  params/TMR3=DividerValue=9,Period=99
                      一次修改其中多个参数
  base/USART1/BaudRate=16
                      以 16 进制或 10 进制书写
  reset/USART1=       模块的全部设置恢复默认，模式除外
  project/ProjectName=Blinky
                      工程的值，名称见 project 部分</translation>
    </message>
    <message>
        <source>Answer questions by going on. Without it: by their default, with exit code 1.</source>
        <translation>对所有提问选择继续。缺省时取默认回答，退出码为 1。</translation>
    </message>
    <message>
        <source>Apply settings to a design file, all of them or none.</source>
        <translation>将设置应用到设计文件，全部应用或全部不应用。</translation>
    </message>
    <message>
        <source>Call of %1</source>
        <translation>%1 的调用</translation>
    </message>
    <message>
        <source>Chip Loom without a window, for ZV32 devices.</source>
        <translation>Chip Loom 的命令行版本，用于 ZV32 器件。</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>时钟</translation>
    </message>
    <message>
        <source>Clock settings of %1</source>
        <translation>%1 的时钟设置</translation>
    </message>
    <message>
        <source>Clock value %1</source>
        <translation>时钟值 %1</translation>
    </message>
    <message>
        <source>Commands:</source>
        <translation>命令：</translation>
    </message>
    <message>
        <source>Compares modes, parameters, pins, clocks, lists and project, not the text of the files.
The exit code is 1 if they differ.</source>
        <translation>比较模式、参数、引脚、时钟、列表和工程，而不是文件的文本。
如有差异，退出码为 1。</translation>
    </message>
    <message>
        <source>Core</source>
        <translation>内核</translation>
    </message>
    <message>
        <source>DMA</source>
        <translation>DMA</translation>
    </message>
    <message>
        <source>DMA %1</source>
        <translation>DMA %1</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>器件</translation>
    </message>
    <message>
        <source>Device (%1)</source>
        <translation>器件（%1）</translation>
    </message>
    <message>
        <source>Enabled</source>
        <translation>使能</translation>
    </message>
    <message>
        <source>Exit codes: 0 success, 1 the design or the data has a problem, 2 wrong usage, 3 a file cannot be read or written.</source>
        <translation>退出码：0 成功，1 设计或数据有问题，2 用法错误，3 文件无法读取或写入。</translation>
    </message>
    <message>
        <source>FILE stays as it is; a copy in DIR holds the order of the calls in main. If another design has its name
there, you are asked before anything is written.</source>
        <translation>FILE 保持不变；DIR 中的副本保存 main 中的调用顺序。如果那里已有同名的其他设计，
会在写入任何内容之前询问。</translation>
    </message>
    <message>
        <source>Feed the PLL from a crystal of this frequency instead of from HICK.</source>
        <translation>使用该频率的外部晶振（而非 HICK）作为 PLL 输入。</translation>
    </message>
    <message>
        <source>Files of the firmware package written: %1</source>
        <translation>已写入的固件包文件：%1</translation>
    </message>
    <message>
        <source>Firmware package, or a folder that holds one. Without it: the newest of the repository, or else the one that comes with the program.</source>
        <translation>固件包，或存放固件包的文件夹。缺省：仓库中最新的固件包，没有时使用随程序提供的固件包。</translation>
    </message>
    <message>
        <source>Flash</source>
        <translation>闪存</translation>
    </message>
    <message>
        <source>Frequencies</source>
        <translation>频率</translation>
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
        <source>Handler</source>
        <translation>处理函数</translation>
    </message>
    <message>
        <source>How many settings to list, 1 to 100; 8 if not given.</source>
        <translation>列出的设置个数，1 到 100；未指定时为 8。</translation>
    </message>
    <message>
        <source>Instead, what a pin offers and what choosing it would do.</source>
        <translation>改为显示某个引脚提供的功能以及选择后的效果。</translation>
    </message>
    <message>
        <source>Interrupt</source>
        <translation>中断</translation>
    </message>
    <message>
        <source>Interrupt %1</source>
        <translation>中断 %1</translation>
    </message>
    <message>
        <source>Interrupts</source>
        <translation>中断</translation>
    </message>
    <message>
        <source>Label</source>
        <translation>标签</translation>
    </message>
    <message>
        <source>Label of %1</source>
        <translation>%1 的标签</translation>
    </message>
    <message>
        <source>Language of messages and of database texts. Without it: English.</source>
        <translation>消息和数据库文本的语言。缺省为英文。</translation>
    </message>
    <message>
        <source>Least size of the heap in bytes, decimal or 0x and hexadecimal.</source>
        <translation>堆的最小字节数，十进制，或以 0x 开头的十六进制。</translation>
    </message>
    <message>
        <source>Least size of the stack, in the same way.</source>
        <translation>栈的最小字节数，写法相同。</translation>
    </message>
    <message>
        <source>List all drivers in the project, not only those in use.</source>
        <translation>在工程中列出全部驱动，而不仅是用到的驱动。</translation>
    </message>
    <message>
        <source>List the devices of the catalogue.</source>
        <translation>列出器件目录中的器件。</translation>
    </message>
    <message>
        <source>List the settings of the PLL that come nearest to a system clock.</source>
        <translation>列出最接近目标系统时钟的 PLL 设置。</translation>
    </message>
    <message>
        <source>Lists pins without effect, wrong parameters, problems of the clock, and what the file holds that cannot be taken;
each with its place and its reason. The exit code is 1 if there is any.
Warnings, as of a rate that is far off, do not count.</source>
        <translation>列出无作用的引脚、错误的参数、时钟的问题，以及文件中无法采用的内容；
每一项都给出位置和原因。如有问题，退出码为 1。
警告（例如速率偏差过大）不计入。</translation>
    </message>
    <message>
        <source>Make a design file for a device, with settings applied.</source>
        <translation>为器件创建设计文件，并应用设置。</translation>
    </message>
    <message>
        <source>Make the whole project for CMake, Makefile, Eclipse_gcc, ZV32_IDE, MDK_V4, MDK_V5, IAR_V7.4, IAR_V8.2 or IAR_V9.3; DIR is its root.</source>
        <translation>为 CMake、Makefile、Eclipse_gcc、ZV32_IDE、MDK_V4、MDK_V5、IAR_V7.4、IAR_V8.2 或 IAR_V9.3 生成完整工程；DIR 是工程的根文件夹。</translation>
    </message>
    <message>
        <source>Max. SRAM</source>
        <translation>最大 SRAM</translation>
    </message>
    <message>
        <source>Mode %1</source>
        <translation>模式 %1</translation>
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
        <source>No pin has settings.</source>
        <translation>没有引脚具有设置。</translation>
    </message>
    <message>
        <source>No pin is in use.</source>
        <translation>没有使用任何引脚。</translation>
    </message>
    <message>
        <source>No problems.</source>
        <translation>没有问题。</translation>
    </message>
    <message>
        <source>No request has a channel.</source>
        <translation>没有请求占用通道。</translation>
    </message>
    <message>
        <source>No setting of the PLL stays within the limits of the series.</source>
        <translation>没有满足该系列限制的 PLL 设置。</translation>
    </message>
    <message>
        <source>Of a series only the clock can be shown; name a device.</source>
        <translation>对于系列只能显示时钟；请指定器件。</translation>
    </message>
    <message>
        <source>One pair of files for each kind of peripheral.</source>
        <translation>每种外设生成一对文件。</translation>
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
        <source>Only this section of the design: pins, peripherals, gpio, nvic, dma, clock, project.</source>
        <translation>仅显示设计的这一部分：pins、peripherals、gpio、nvic、dma、clock、project。</translation>
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
        <source>Parameter %1</source>
        <translation>参数 %1</translation>
    </message>
    <message>
        <source>Peripherals</source>
        <translation>外设</translation>
    </message>
    <message>
        <source>Pin</source>
        <translation>引脚</translation>
    </message>
    <message>
        <source>Pin %1</source>
        <translation>引脚 %1</translation>
    </message>
    <message>
        <source>Pin %1, position %2</source>
        <translation>引脚 %1，位置 %2</translation>
    </message>
    <message>
        <source>Pin setting %1</source>
        <translation>引脚设置 %1</translation>
    </message>
    <message>
        <source>Pin settings</source>
        <translation>引脚设置</translation>
    </message>
    <message>
        <source>Pins</source>
        <translation>引脚</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Preemption priority</source>
        <translation>抢占优先级</translation>
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
        <source>Project value %1</source>
        <translation>工程值 %1</translation>
    </message>
    <message>
        <source>RTOS functions</source>
        <translation>RTOS 函数</translation>
    </message>
    <message>
        <source>Read the device database in DIR. Without it: the folder ZV32DB beside the program.</source>
        <translation>从 DIR 读取器件数据库。缺省为程序旁的 ZV32DB 文件夹。</translation>
    </message>
    <message>
        <source>Requests without a channel:</source>
        <translation>尚无通道的请求：</translation>
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
        <source>Show a design file (*.ZVWP), a new design for a device, or the clock of a series, with settings applied.</source>
        <translation>显示设计文件（*.ZVWP）、器件的新设计或系列的时钟，并应用设置。</translation>
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
        <source>Signal</source>
        <translation>信号</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Sub priority</source>
        <translation>子优先级</translation>
    </message>
    <message>
        <source>Take the USB clock from the PLL too: what gives USB 48 MHz comes first.</source>
        <translation>USB 时钟也取自 PLL：优先列出能提供 48 MHz USB 时钟的设置。</translation>
    </message>
    <message>
        <source>Tell what is wrong in a design file.</source>
        <translation>指出设计文件中的问题。</translation>
    </message>
    <message>
        <source>Tell what two design files say differently.</source>
        <translation>指出两个设计文件的不同之处。</translation>
    </message>
    <message>
        <source>The Arm compiler of MDK V5.</source>
        <translation>MDK V5 使用的 Arm 编译器。</translation>
    </message>
    <message>
        <source>The device file %1 gives no device.</source>
        <translation>器件文件 %1 中没有器件信息。</translation>
    </message>
    <message>
        <source>The device has no DMA.</source>
        <translation>该器件没有 DMA。</translation>
    </message>
    <message>
        <source>The pin offers no functions.</source>
        <translation>该引脚不提供任何功能。</translation>
    </message>
    <message>
        <source>The result cannot be written to standard output.</source>
        <translation>无法将结果写入标准输出。</translation>
    </message>
    <message>
        <source>The settings are listed best first, with the error in ppm, in the words that clock settings take.</source>
        <translation>按优劣顺序列出设置及其误差（ppm），写法与时钟设置相同。</translation>
    </message>
    <message>
        <source>The system clock that is wanted, in MHz. Must be given.</source>
        <translation>目标系统时钟，单位 MHz，必须给出。</translation>
    </message>
    <message>
        <source>There is no clock tree of "%1"; these have one: %2</source>
        <translation>“%1”没有时钟树；以下系列有：%2</translation>
    </message>
    <message>
        <source>There is no command "%1".</source>
        <translation>没有命令“%1”。</translation>
    </message>
    <message>
        <source>There is no device "%1" in the catalogue; "devices" lists them.</source>
        <translation>目录中没有器件“%1”，可用 devices 命令列出全部器件。</translation>
    </message>
    <message>
        <source>There is no package "%1" in the catalogue, which has: %2</source>
        <translation>器件目录中没有封装“%1”，已有的封装：%2</translation>
    </message>
    <message>
        <source>There is no pin "%1".</source>
        <translation>没有引脚“%1”。</translation>
    </message>
    <message>
        <source>There is no section "%1"; there are: %2</source>
        <translation>没有“%1”这一部分，可用的有：%2</translation>
    </message>
    <message>
        <source>There is no series "%1" in the catalogue, which has: %2</source>
        <translation>器件目录中没有系列“%1”，已有的系列：%2</translation>
    </message>
    <message>
        <source>There is no toolchain "%1"; there are: %2</source>
        <translation>没有工具链“%1”；可用的有：%2</translation>
    </message>
    <message>
        <source>This device has no table of interrupts.</source>
        <translation>此器件没有中断表。</translation>
    </message>
    <message>
        <source>This series has no clock tree.</source>
        <translation>该系列没有时钟树。</translation>
    </message>
    <message>
        <source>Usage:</source>
        <translation>用法：</translation>
    </message>
    <message>
        <source>Warning: %1</source>
        <translation>警告：%1</translation>
    </message>
    <message>
        <source>Write nothing; exit with 1 if the files differ from what the design gives.</source>
        <translation>不写入任何文件；若文件与设计生成的内容不同，则以 1 退出。</translation>
    </message>
    <message>
        <source>Write nothing; list what would be new, changed or left, and which user code would go.</source>
        <translation>不写入任何文件；列出将新建、更改或保持不变的文件，以及将丢失的用户代码。</translation>
    </message>
    <message>
        <source>Write the C sources or the whole project of a design, keeping the user's code.</source>
        <translation>写出设计的 C 源代码或完整工程，并保留用户代码。</translation>
    </message>
    <message>
        <source>Write the result as JSON.</source>
        <translation>以 JSON 格式输出结果。</translation>
    </message>
    <message>
        <source>Write the source tree into DIR/project. Without it: the current folder.</source>
        <translation>将源代码写入 DIR/project。缺省为当前文件夹。</translation>
    </message>
    <message>
        <source>[%1] answered: %2</source>
        <translation>[%1] 回答：%2</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>已更改</translation>
    </message>
    <message>
        <source>has errors</source>
        <translation>有错误</translation>
    </message>
    <message>
        <source>new</source>
        <translation>新建</translation>
    </message>
    <message>
        <source>not allowed</source>
        <translation>不允许</translation>
    </message>
    <message>
        <source>out of range</source>
        <translation>超出范围</translation>
    </message>
    <message>
        <source>removed</source>
        <translation>已删除</translation>
    </message>
    <message>
        <source>unchanged</source>
        <translation>未变</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>written</source>
        <translation>已写入</translation>
    </message>
</context>
<context>
    <name>Project</name>
    <message>
        <source>%1 is a link; it is not replaced</source>
        <translation>%1 是链接，不予替换</translation>
    </message>
</context>
<context>
    <name>Prompt</name>
    <message>
        <source>%1 already exists. Would you like to replace it?</source>
        <translation>%1 已存在。是否替换？</translation>
    </message>
    <message>
        <source>A part of the file could not be taken over. Would you like to save the design without what is not said to stay?</source>
        <translation>文件的一部分无法采用。除注明保留的内容外，是否在不含该部分的情况下保存设计？</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Generate code failed!</source>
        <translation>生成代码失败！</translation>
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
