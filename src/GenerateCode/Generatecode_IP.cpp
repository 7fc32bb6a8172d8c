#include "GenerateCode/Generatecode_IP.h"

#include "GenerateCode/TextEngine.h"

#include <utility>

namespace ChipLoom {

GenerateCode_IP::GenerateCode_IP(ZV32MCUSERIALS series, QString ipName)
    : m_MCUSerial(series), m_IPName(std::move(ipName))
{
}

void GenerateCode_IP::SetAllSignalsGPIOSettingList(const QList<SignalsGPIOSetting *> &list)
{
    m_AllSignalsGPIOSettingList = list;
    m_VaildSignalsGPIOSettingList = Get_VaildSignalsGPIOSettingList(list);
}

QList<SignalsGPIOSetting *>
GenerateCode_IP::Get_VaildSignalsGPIOSettingList(const QList<SignalsGPIOSetting *> &all) const
{
    const QString prefix = m_IPName + QLatin1Char('_');
    QList<SignalsGPIOSetting *> own;
    for (SignalsGPIOSetting *setting : all) {
        const bool joined = setting->signalName.contains(QLatin1Char('_'));
        if (setting->signalName.contains(joined ? prefix : m_IPName))
            own.append(setting);
    }
    return own;
}

QList<SignalsGPIOSetting *> GenerateCode_IP::Get_VaildSignalsGPIOSettingList(const QList<SignalsGPIOSetting *> &all,
                                                                             const QString &signal) const
{
    QList<SignalsGPIOSetting *> same;
    for (SignalsGPIOSetting *setting : all) {
        if (IsSignalSame(setting->signalName, signal))
            same.append(setting);
    }
    return same;
}

const SignalsGPIOSetting *GenerateCode_IP::settingOfSignal(const QString &signal) const
{
    for (const SignalsGPIOSetting *setting : m_VaildSignalsGPIOSettingList) {
        if (IsSignalSame(setting->signalName, signal))
            return setting;
    }
    return nullptr;
}

const SignalsGPIOSetting *GenerateCode_IP::settingOnPin(const QString &pin) const
{
    for (const SignalsGPIOSetting *setting : m_AllSignalsGPIOSettingList) {
        if (IsPinNameSame(setting->signalInPinName, pin))
            return setting;
    }
    return nullptr;
}

const GPIO_Pin_Define_Info *GenerateCode_IP::defineOfPin(const QString &pin) const
{
    for (const GPIO_Pin_Define_Info *define : m_GPIOPinDefineInfo) {
        if (IsPinNameSame(define->Name, pin))
            return define;
    }
    return nullptr;
}

const RefParameter *GenerateCode_IP::parameter(const QString &name) const
{
    for (const RefParameter &entry : m_RefParameterList) {
        if (entry.Name == name)
            return &entry;
    }
    return nullptr;
}

QString GenerateCode_IP::Get_PinName_Accord_PinSignal(const QString &signal) const
{
    const SignalsGPIOSetting *setting = settingOfSignal(signal);
    if (!setting)
        return {};
    const int bracket = setting->signalInPinName.indexOf(QLatin1Char('['));
    return bracket < 0 ? setting->signalInPinName : setting->signalInPinName.left(bracket).trimmed();
}

QString GenerateCode_IP::Get_CombinedSignalsName_Accord_PinSignal(const QString &signal) const
{
    for (const SignalsGPIOSetting *setting : m_VaildSignalsGPIOSettingList) {
        if (setting->signalName.contains(signal))
            return setting->signalName;
    }
    return signal;
}

bool GenerateCode_IP::SignalName_Used(const QString &signal) const
{
    return settingOfSignal(signal) != nullptr;
}

bool GenerateCode_IP::GPIO_x_Used(const QString &port) const
{
    const QString prefix = QLatin1Char('P') + port.mid(4, 1);
    for (const SignalsGPIOSetting *setting : m_VaildSignalsGPIOSettingList) {
        if (setting->signalInPinName.contains(prefix))
            return true;
    }
    return false;
}

QString GenerateCode_IP::Get_PinSignal_DefineString_GPIOx(const QString &pin) const
{
    const GPIO_Pin_Define_Info *define = defineOfPin(pin);
    return define ? define->GPIO_x : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_GPIO_Pin_x(const QString &pin) const
{
    const GPIO_Pin_Define_Info *define = defineOfPin(pin);
    return define ? define->GPIO_Pin_x : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_GPIO_PinSource_x(const QString &pin) const
{
    const GPIO_Pin_Define_Info *define = defineOfPin(pin);
    return define ? define->GPIO_PinSource_x : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_EXINT_LINE_x(const QString &pin) const
{
    const GPIO_Pin_Define_Info *define = defineOfPin(pin);
    return define ? define->EXINT_LINE_x : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_SCFG_GPIO_x(const QString &pin) const
{
    const GPIO_Pin_Define_Info *define = defineOfPin(pin);
    return define ? define->SCFG_GPIO_x : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_SCFG_PINS_SOURCE_x(const QString &pin) const
{
    const GPIO_Pin_Define_Info *define = defineOfPin(pin);
    return define ? define->SCFG_PINS_SOURCE_x : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_GPIO_Mux_x(const QString &pin, const QString &signal) const
{
    const GPIO_Pin_Define_Info *define = defineOfPin(pin);
    if (!define)
        return {};
    for (const GPIO_PinSignal_Mux_Info &mux : define->pinSignalMuxInfoList) {
        if (mux.SignalName == signal)
            return mux.GPIO_Mux_x;
    }
    return {};
}

QString GenerateCode_IP::Get_PinSignal_DefineString_GPIO_Pin_x_UserDefine(const QString &pin) const
{
    const SignalsGPIOSetting *setting = settingOnPin(pin);
    return setting && !setting->signalUserLabel.isEmpty() ? setting->signalUserLabel_EXT + QLatin1String("_PIN")
                                                          : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_GPIOx_UserDefine(const QString &pin) const
{
    const SignalsGPIOSetting *setting = settingOnPin(pin);
    return setting && !setting->signalUserLabel.isEmpty() ? setting->signalUserLabel_EXT + QLatin1String("_GPIO_PORT")
                                                          : Get_PinSignal_DefineString_GPIOx(pin);
}

QString GenerateCode_IP::valueOfCaption(const SignalsGPIOSetting *setting, QStringView caption)
{
    if (!setting)
        return {};
    for (const RefParameter &info : setting->signalPinGPIOInfoList) {
        if (caption == info.Comment_EN)
            return info.CurrentValue;
    }
    return {};
}

QString GenerateCode_IP::Get_PinSignal_DefineString_gpio_initstruct_member(const QString &signal,
                                                                           const QString &key) const
{
    return valueOfCaption(settingOfSignal(signal), key);
}

QString GenerateCode_IP::Get_PinSignal_DefineString_gpio_initstruct_member(const QString &pin, const QString &signal,
                                                                           const QString &key) const
{
    for (const SignalsGPIOSetting *setting : m_VaildSignalsGPIOSettingList) {
        if (IsSignalSame(setting->signalName, signal) && IsPinNameSame(setting->signalInPinName, pin))
            return valueOfCaption(setting, key);
    }
    return {};
}

QString GenerateCode_IP::Get_DefineString_Param(const QString &name) const
{
    const RefParameter *entry = parameter(name);
    return entry ? entry->CurrentValue : QString();
}

QString GenerateCode_IP::Get_DefineString_Param_Default(const QString &name) const
{
    const RefParameter *entry = parameter(name);
    return entry ? entry->DefaultValue : QString();
}

CURRENTVALUETYPE GenerateCode_IP::Get_Parma_ValueType(const QString &name) const
{
    const RefParameter *entry = parameter(name);
    return entry ? entry->CurrentValueType : CURRENTVALUETYPE_NONE;
}

bool GenerateCode_IP::NVIC_Is_Used(const QString &nvicName) const
{
    for (const MCUNVICSetting *setting : m_AllNVICSettingList) {
        if (setting->NVICName == nvicName && setting->enabledFlag)
            return true;
    }
    return false;
}

QStringList GenerateCode_IP::GetPeripheralEnabledIRQHanderList(const QString &peripheral) const
{
    QString owner = peripheral;
    if (owner.contains(QLatin1String("I2S")) && !owner.contains(QLatin1String("I2SF")))
        owner.replace(QLatin1String("I2S"), QLatin1String("SPI"));
    QStringList handlers;
    for (const MCUNVICSetting *setting : m_AllNVICSettingList) {
        if (setting->enabledFlag && setting->relatedIPNameList.contains(owner))
            handlers.append(setting->HandlerName);
    }
    return handlers;
}

bool GenerateCode_IP::GenerateCode_Interrupt_enable_sub1(QString &text, const QString &section,
                                                         const QString &parameterName) const
{
    const QString &name = parameterName.isEmpty() ? section : parameterName;
    return GenerateCode_Handle_Function(text, section, Get_DefineString_Param(name) == QLatin1String("TRUE"));
}

bool GenerateCode_IP::GenerateCode_Interrupt_enable_sub2(QString &text, const QString &section,
                                                         const QStringList &parameters) const
{
    bool any = false;
    for (const QString &name : parameters)
        any = any || Get_DefineString_Param(name) == QLatin1String("TRUE");
    return GenerateCode_Handle_Function(text, section, any);
}

bool GenerateCode_IP::GenerateCode_Peripheral_interrupt_remarks(QString &text, const QString &peripheral) const
{
    const SectionSpan span = findSection(text, QStringLiteral("interrupt remarks"));
    if (!span.found())
        return false;
    const QStringList handlers = GetPeripheralEnabledIRQHanderList(peripheral);
    if (handlers.isEmpty()) {
        replaceSection(text, span, {});
        return true;
    }
    QString body = text.mid(span.bodyStart, span.bodyLength);
    body.remove(QLatin1String("  */\n"));
    for (const QString &handler : handlers)
        body += QLatin1String("   *     --void ") + handler + QLatin1String("(void)\n");
    replaceSection(text, span, body + QLatin1String("   */\n\n"));
    return true;
}

uint GenerateCode_IP::QStringToUInt(bool &ok, const QString &text)
{
    return text.toUInt(&ok, text.contains(QLatin1String("0x")) ? 16 : 10);
}

int GenerateCode_IP::QStringToInt(bool &ok, const QString &text)
{
    return text.toInt(&ok, text.contains(QLatin1String("0x")) ? 16 : 10);
}

QString GenerateCode_IP::UIntToQString(uint value, CURRENTVALUETYPE type)
{
    if (type == CURRENTVALUETYPE_HEX)
        return QLatin1String("0x") + QString::number(value, 16).toUpper();
    return QString::number(value);
}

} // namespace ChipLoom
