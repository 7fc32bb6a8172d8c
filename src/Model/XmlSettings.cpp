#include "Model/XmlSettings.h"

#include "Model/XmlRecords.h"

namespace ChipLoom {

namespace {

QStringList names(const XMLElementInfo &element, const char *attribute)
{
    return attributeValue(element, QLatin1String(attribute)).split(QLatin1Char(','), Qt::SkipEmptyParts);
}

} // namespace

QList<NVICVector> GetNVICVectors(const XMLElementInfo &tree)
{
    QList<NVICVector> vectors;
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        const QString valueName = attributeValue(element, QLatin1String("ValueName"));
        if (element.tagName != QLatin1String("NVICVector") || valueName.isEmpty())
            continue;
        NVICVector vector;
        MCUNVICSetting &setting = vector.setting;
        setting.NVICName = attributeValue(element, QLatin1String("Name"));
        setting.NVICName_EN = attributeValue(element, QLatin1String("Comment"));
        setting.NVICName_CH = attributeValue(element, QLatin1String("CommentCH"));
        setting.Diagnostic_EN = attributeValue(element, QLatin1String("Diagnostic"));
        setting.Diagnostic_CH = attributeValue(element, QLatin1String("DiagnosticCH"));
        setting.Diagnostic = XmlRecords::inLanguage(setting.Diagnostic_EN, setting.Diagnostic_CH);
        setting.ValueName = valueName;
        setting.HandlerName = attributeValue(element, QLatin1String("HandlerName"));
        setting.relatedIPNameList = names(element, "IpInstance");
        setting.core_IRQFlag = XmlRecords::readFlag(element, "CoreIRQ", false);
        setting.enabled_CanBeSet = XmlRecords::readFlag(element, "EnabledCanBeSet", true);
        setting.enabledFlag = XmlRecords::readFlag(element, "Enabled", false);
        setting.preemptionPriority_CanBeSet = XmlRecords::readFlag(element, "PreemptionPriorityCanBeSet", true);
        setting.subPriority_CanBeSet = XmlRecords::readFlag(element, "SubPriorityCanBeSet", true);
        setting.IRQHandler_Generate_canBeSet = XmlRecords::readFlag(element, "HandlerCanBeSet", true);
        setting.IRQHandler_Generate_enabledFlag = XmlRecords::readFlag(element, "Handler", true);
        vector.exintLines = names(element, "Lines");
        vector.isFree = XmlRecords::readFlag(element, "Free", false);
        vectors.append(vector);
    }
    return vectors;
}

QList<GPIO_Pin_Define_Info> GetGPIOPinDefines(const XMLElementInfo &tree)
{
    QList<GPIO_Pin_Define_Info> defines;
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        if (element.tagName != QLatin1String("GPIOPinDefine"))
            continue;
        GPIO_Pin_Define_Info define;
        define.Name = attributeValue(element, QLatin1String("Name"));
        define.PortName = attributeValue(element, QLatin1String("PortName"));
        define.GPIO_x = attributeValue(element, QLatin1String("GPIO_x"));
        define.GPIO_Pin_x = attributeValue(element, QLatin1String("GPIO_Pin_x"));
        define.GPIO_PinSource_x = attributeValue(element, QLatin1String("GPIO_PinSource_x"));
        define.EXINT_LINE_x = attributeValue(element, QLatin1String("EXINT_LINE_x"));
        define.SCFG_GPIO_x = attributeValue(element, QLatin1String("SCFG_GPIO_x"));
        define.SCFG_PINS_SOURCE_x = attributeValue(element, QLatin1String("SCFG_PINS_SOURCE_x"));
        for (const XMLElementInfo &mux : element.subElementInfoList) {
            if (mux.tagName == QLatin1String("PinSignalMux"))
                define.pinSignalMuxInfoList.append({attributeValue(mux, QLatin1String("SignalName")),
                                                    attributeValue(mux, QLatin1String("GPIO_Mux_x"))});
        }
        defines.append(define);
    }
    return defines;
}

} // namespace ChipLoom
