#include "Cli/SettingsListing.h"

#include "Cli/TextTable.h"
#include "Design/GPIO_Configuration.h"
#include "Design/NVIC_Configuration.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>

namespace ChipLoom {

namespace {

QString shown(const char *text)
{
    return QCoreApplication::translate("Cli", text);
}

} // namespace

void writeGpio(Design &design, QTextStream &out)
{
    const GPIO_Configuration *gpio = design.gpio();
    if (!gpio || gpio->GetAllSignalsGPIOSettingList().isEmpty()) {
        out << "  " << shown(QT_TRANSLATE_NOOP("Cli", "No pin has settings.")) << '\n';
        return;
    }
    for (const SignalsGPIOSetting *row : gpio->GetAllSignalsGPIOSettingList()) {
        out << "  " << row->InPinName << "  " << row->signalName << '\n';
        const QString place = QLatin1String("gpio/") + row->InPinName + QLatin1Char('/');
        QList<QStringList> lines;
        for (const RefParameter &parameter : row->signalPinGPIOInfoList)
            lines.append({place + parameter.Comment_EN, parameter.CurrentValue});
        if (!row->signalUserLabel.isEmpty())
            lines.append({place + QLatin1String("Label"), row->signalUserLabel});
        if (!lines.isEmpty())
            writeTable(out, lines, 4);
    }
}

QJsonValue gpioJson(Design &design)
{
    QJsonArray rows;
    if (!design.gpio())
        return rows;
    for (const SignalsGPIOSetting *row : design.gpio()->GetAllSignalsGPIOSettingList()) {
        QJsonObject settings;
        for (const RefParameter &parameter : row->signalPinGPIOInfoList)
            settings.insert(parameter.Name, parameter.CurrentValue);
        rows.append(QJsonObject{{QStringLiteral("pin"), row->InPinName},
                                {QStringLiteral("signal"), row->signalName},
                                {QStringLiteral("ioMode"), row->signalIOMode},
                                {QStringLiteral("settings"), settings},
                                {QStringLiteral("label"), row->signalUserLabel},
                                {QStringLiteral("modified"), GPIO_Configuration::isModified(*row)}});
    }
    return rows;
}

void writeNvic(Design &design, QTextStream &out)
{
    const NVIC_Configuration *nvic = design.nvic();
    if (!nvic) {
        out << "  " << shown(QT_TRANSLATE_NOOP("Cli", "This device has no table of interrupts.")) << '\n';
        return;
    }
    out << "  nvic/PriorityGroup  " << nvic->GetPriorityGroupParameter().CurrentValue << "\n";
    QList<QStringList> lines{
        {shown(QT_TRANSLATE_NOOP("Cli", "Interrupt")), shown(QT_TRANSLATE_NOOP("Cli", "Enabled")),
         shown(QT_TRANSLATE_NOOP("Cli", "Handler")), shown(QT_TRANSLATE_NOOP("Cli", "Preemption priority")),
         shown(QT_TRANSLATE_NOOP("Cli", "Sub priority")), shown(QT_TRANSLATE_NOOP("Cli", "RTOS functions"))}};
    for (const MCUNVICSetting *vector : nvic->vectorsShown(SHOW_AVAILABLE)) {
        QStringList line{QLatin1String("nvic/") + vector->ValueName};
        for (const auto field : {NVIC_Configuration::Field::Enabled, NVIC_Configuration::Field::GenerateHandler,
                                 NVIC_Configuration::Field::PreemptionPriority, NVIC_Configuration::Field::SubPriority,
                                 NVIC_Configuration::Field::RTOSFunction})
            line.append(NVIC_Configuration::fieldValue(*vector, field));
        lines.append(line);
    }
    writeTable(out, lines, 2);
}

QJsonValue nvicJson(Design &design)
{
    const NVIC_Configuration *nvic = design.nvic();
    if (!nvic)
        return {};
    QJsonArray vectors;
    for (const MCUNVICSetting *vector : nvic->vectorsShown(SHOW_ALL)) {
        vectors.append(QJsonObject{{QStringLiteral("vector"), vector->ValueName},
                                   {QStringLiteral("handler"), vector->HandlerName},
                                   {QStringLiteral("open"), vector->canBeSet},
                                   {QStringLiteral("enabled"), vector->enabledFlag},
                                   {QStringLiteral("generateHandler"), vector->IRQHandler_Generate_enabledFlag},
                                   {QStringLiteral("preemptionPriority"), vector->preemptionPriority_Value},
                                   {QStringLiteral("subPriority"), vector->subPriority_Value},
                                   {QStringLiteral("rtosFunction"), vector->FREERTOS_Func_enabledFlag}});
    }
    return QJsonObject{{QStringLiteral("priorityGroup"), nvic->GetPriorityGroupParameter().CurrentValue},
                       {QStringLiteral("vectors"), vectors}};
}

} // namespace ChipLoom
