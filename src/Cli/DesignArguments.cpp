#include "Cli/DesignArguments.h"

#include "Design/DesignTexts.h"
#include "Design/Explanations.h"
#include "Design/ModuleConfiguration.h"
#include "Middlewares/Middlewares.h"
#include "Model/xmloperation.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace ChipLoom {

const char SettingsHelp[] = QT_TRANSLATE_NOOP(
    "Cli",
    "A SETTING changes the design, in the order given:\n"
    "  pin/PA9=USART1_TX   place a function on a pin by hand\n"
    "  pin/PA9=-USART1_TX  take it off again\n"
    "  pin/PA9=            take everything off the pin\n"
    "  label/PA9=LED       label what stands on the pin; without a label behind \"=\" take it off\n"
    "  gpio/PA9/Pull type=Pull-up\n"
    "                      a setting of what stands on the pin, by the names that the gpio section lists\n"
    "  gpio/PA9/Label=LED  the same as label/PA9=LED\n"
    "  gpio/PA9/Pin=PB6    move the signal that stands there to another pin that it can have\n"
    "  gpio/ShowType=GPIO  whose pins the page of the window lists: All, GPIO or a peripheral\n"
    "  nvic/USART1_IRQn/Enabled=TRUE\n"
    "                      an interrupt: Enabled, GenerateHandler, PreemptionPriority, SubPriority, RTOSFunction\n"
    "  nvic/PriorityGroup=NVIC_PRIORITY_GROUP_2\n"
    "                      how the bits of the priorities are parted\n"
    "  nvic/ShowType=2     which interrupts the page of the window lists: 0 all, 1 the available, 2 the enabled ones\n"
    "  dma/any=USART1_TX   give a DMA request the first free channel that serves it\n"
    "  dma/DMA1_Channel2=USART1_TX\n"
    "                      give it that channel; without a request behind \"=\" free the channel\n"
    "  dma/USART1_TX/Priority=DMA_PRIORITY_HIGH\n"
    "                      a setting of a request that has a channel\n"
    "  edma/any=DVP        the same of the EDMA, in its own section\n"
    "  clock/sclk=120      a value of the clock, by the names that the clock section lists\n"
    "  mode/USART1/Mode=Asynchronous\n"
    "                      choose a mode; Disable or FALSE takes it off\n"
    "  param/USART1/BaudRate=9600\n"
    "                      a parameter of the chosen modes\n"
    "  params/TMR3=DividerValue=9,Period=99\n"
    "                      several of them in one change\n"
    "  base/USART1/BaudRate=16\n"
    "                      write it in base 16, or 10\n"
    "  reset/USART1=       all settings of a module but its modes back to their defaults\n"
    "  project/ProjectName=Blinky\n"
    "                      a value of the project, by the names of the project section");

CommandDesign::CommandDesign(const CommandContext &context) : Design(context.paths, context.prompt)
{
    registerMiddlewares(*this);
}

namespace {

QString closedEntryText(const Design &design, const ModuleConfiguration &module, const DesignChange &change)
{
    const ModeControl *control = module.control(change.address.section(QLatin1Char('/'), 1));
    if (!control)
        return {};
    const int index = control->isCheckBox() ? 1 : control->indexOf(change.value);
    return index > 0 ? itemExplanation(design, module, *control, index).text : QString();
}

QString closedValueText(const Design &design, const ModuleConfiguration &module, const DesignChange &change)
{
    const RefParameter *parameter = module.parameters().parameter(change.address.section(QLatin1Char('/'), 1));
    if (!parameter)
        return {};
    for (const PossibleValue &value : parameter->PossibleValueList) {
        if (value.Value == change.value)
            return valueExplanation(design, module, *parameter, value).text;
    }
    return {};
}

// A closed entry of a mode and a closed value of a parameter have more to tell than their answer.
QString refusalText(const Design &design, const DesignChange &change, const DesignAnswer &answer)
{
    const ModuleConfiguration *module = design.module(change.address.section(QLatin1Char('/'), 0, 0));
    QString text;
    if (module && change.section == QLatin1String("mode"))
        text = closedEntryText(design, *module, change);
    else if (module && answer.reason == DesignReason::ValueNotOffered)
        text = closedValueText(design, *module, change);
    return text.isEmpty() ? answerText(answer) : text;
}

} // namespace

ExitCode openNewDesign(const CommandContext &context, const QString &device, Design &design)
{
    const XMLOperation database(context.paths);
    const QList<MCUSerialStruct> allSeries = database.GetMCUSerialsList();
    for (const MCUSerialStruct &series : allSeries) {
        for (const MCUDeviceStruct &entry : series.MCUDeviceList) {
            if (entry.DeviceName.compare(device, Qt::CaseInsensitive) != 0)
                continue;
            if (design.NewDesign(series.SeriaName, entry.DeviceName, entry.DevicePackage))
                return ExitCode::Success;
            context.tell(
                QCoreApplication::translate("Cli", "The device file %1 gives no device.").arg(design.deviceFile()));
            return QFile::exists(design.deviceFile()) ? ExitCode::Problem : ExitCode::FileError;
        }
    }
    if (const XmlProblem problem = database.catalogueProblem())
        return context.tell(problem);
    context.tell(
        QCoreApplication::translate("Cli", "There is no device \"%1\" in the catalogue; \"devices\" lists them.")
            .arg(device));
    return ExitCode::WrongUsage;
}

QString problemText(const DesignProblem &problem)
{
    const QString text = problem.place + QLatin1String(": ") + answerText(problem.reason);
    return problem.isWarning ? QCoreApplication::translate("Cli", "Warning: %1").arg(text) : text;
}

ExitCode openDesignFile(const CommandContext &context, const QString &path, Design &design)
{
    if (!design.OpenDesign(path))
        return design.file().fault() == DesignFile::Fault::Unreadable ? ExitCode::FileError : ExitCode::Problem;
    for (const DesignProblem &problem : design.file().problems())
        context.tell(path + QLatin1String(": ") + problemText(problem));
    return ExitCode::Success;
}

ExitCode openDesignOrDevice(const CommandContext &context, const QString &text, Design &design)
{
    const QFileInfo file(text); // names of devices have no suffix
    const bool isFile = isDesignFileName(text) || (!file.suffix().isEmpty() && file.isFile());
    return isFile ? openDesignFile(context, text, design) : openNewDesign(context, text, design);
}

ExitCode saveDesignFile(const QString &path, Design &design)
{
    return design.SaveProject(path) ? ExitCode::Success : ExitCode::FileError;
}

ExitCode applySettings(const CommandContext &context, const QStringList &settings, Design &design)
{
    QString current;
    const QObject listener;
    QObject::connect(&design, &Design::choicesLost, &listener, [&](const QList<LostChoice> &lost) {
        for (const Explanation &line : explained(design, lost))
            context.tell(current + QLatin1String(": ") + line.text);
    });
    for (const QString &setting : settings) {
        current = setting;
        const std::optional<DesignChange> change = DesignChange::fromSetting(setting);
        if (!change) {
            context.tell(QCoreApplication::translate("Cli", "\"%1\" is no setting; write it as pin/PA9=USART1_TX.")
                             .arg(setting));
            return ExitCode::WrongUsage;
        }
        DesignAnswer answer = design.apply(*change);
        if (!answer) { // it may wait for what the settings before it bring about
            design.scheduler().drain();
            answer = design.apply(*change);
        }
        if (!answer) {
            context.tell(setting + QLatin1String(": ") + refusalText(design, *change, answer));
            return ExitCode::Problem;
        }
    }
    design.scheduler().drain();
    return ExitCode::Success;
}

} // namespace ChipLoom
