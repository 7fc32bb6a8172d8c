#include "GenerateCode/Generatecode_GPIO.h"

#include "GenerateCode/TextEngine.h"
#include "Model/SeriesHelpers.h"

#include <algorithm>

namespace ChipLoom {

namespace {

// Under "gpio_init_struct.gpio_pins = " and "gpio_bits_reset(".
constexpr int InitIndent = 31;
constexpr int LevelIndent = 18;

// In the names of signals. Each generation looks for them in all.
const QString EventOut = QStringLiteral("EVENTOUT");
const QString Plain = QStringLiteral("GPIO_");
const QString Output = QStringLiteral("GPIO_Output");
const QString Input = QStringLiteral("GPIO_Input");
const QString Analog = QStringLiteral("GPIO_Analog");

RefParameter settingOf(const char *caption, const char *value)
{
    RefParameter entry;
    entry.Comment_EN = QLatin1String(caption);
    entry.CurrentValue = QLatin1String(value);
    return entry;
}

} // namespace

GenerateCode_GPIO::GenerateCode_GPIO(ZV32MCUSERIALS series) : GenerateCode_IP(series, QStringLiteral("GPIO")) {}

void GenerateCode_GPIO::SetUnusedPins(const QStringList &pins)
{
    m_unusedPinSettings.clear();
    if (m_notUsedPinAnalog) {
        m_unusedPinSettings.reserve(static_cast<size_t>(pins.size()));
        for (const QString &pin : pins) {
            SignalsGPIOSetting setting;
            setting.signalInPinName = pin;
            setting.signalIOMode = QStringLiteral("Analog");
            setting.signalPinGPIOInfoList = {settingOf("Pull type", "GPIO_PULL_NONE")};
            if (!portPin(setting).isEmpty())
                m_unusedPinSettings.push_back(setting);
        }
    }
    Init_VaildSignalsGPIOSettingList();
}

void GenerateCode_GPIO::Init_VaildSignalsGPIOSettingList()
{
    for (Group *list :
         {&m_output_GPIOSettingList, &m_input_GPIOSettingList, &m_analog_GPIOSettingList, &m_eventout_GPIOSettingList})
        list->clear();
    for (const SignalsGPIOSetting *setting : lists().AllSignalsGPIOSettingList) {
        const QString &name = setting->signalName;
        Group *const list = name.contains(EventOut) ? &m_eventout_GPIOSettingList
                            : !name.contains(Plain) ? nullptr
                            : name.contains(Output) ? &m_output_GPIOSettingList
                            : name.contains(Input)  ? &m_input_GPIOSettingList
                            : name.contains(Analog) ? &m_analog_GPIOSettingList
                                                    : nullptr;
        if (list && !portPin(*setting).isEmpty())
            list->append(setting);
    }
    for (const SignalsGPIOSetting &setting : m_unusedPinSettings)
        m_analog_GPIOSettingList.append(&setting);
}

bool GenerateCode_GPIO::GenerateCode_GPIO_have_valid() const
{
    return !(m_output_GPIOSettingList.isEmpty() && m_input_GPIOSettingList.isEmpty() &&
             m_analog_GPIOSettingList.isEmpty() && m_eventout_GPIOSettingList.isEmpty());
}

// A pin can have other names beside that of its port, as a crystal's.
QString GenerateCode_GPIO::portPin(const SignalsGPIOSetting &setting) const
{
    const auto isPort = [](const QString &name) {
        const auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
        return name.size() > 2 && name.at(0) == QLatin1Char('P') && name.at(1) >= QLatin1Char('A') &&
               name.at(1) <= QLatin1Char('Z') && std::all_of(name.begin() + 2, name.end(), isDigit);
    };
    if (isPort(setting.signalInPinName)) // as most are
        return setting.signalInPinName;
    const QStringList parts = setting.signalInPinName.split(QLatin1Char('/'));
    for (const QString &part : parts) {
        const QString name = part.section(QLatin1Char('['), 0, 0).trimmed();
        if (isPort(name))
            return name;
    }
    return {};
}

QList<GenerateCode_GPIO::Group> GenerateCode_GPIO::GetGPIOSameParamSortList(const Group &settings,
                                                                            const QStringList &captions) const
{
    QList<Group> groups;
    QStringList keys;
    for (const SignalsGPIOSetting *setting : settings) {
        QString key = Get_PinSignal_DefineString_GPIOx(portPin(*setting));
        for (const QString &caption : captions)
            key += QLatin1Char('\n') + valueOfCaption(*setting, caption);
        int index = keys.indexOf(key);
        if (index < 0) {
            index = keys.size();
            keys.append(key);
            groups.append(Group());
        }
        groups[index].append(setting);
    }
    return groups;
}

QString GenerateCode_GPIO::portDefine(const Group &group) const
{
    // A label names one pin; the pins of a group have the port in common.
    const QString pin = portPin(*group.first());
    return group.size() == 1 ? Get_PinSignal_DefineString_GPIOx_UserDefine(pin) : Get_PinSignal_DefineString_GPIOx(pin);
}

QString GenerateCode_GPIO::pinDefines(const Group &group, int indent) const
{
    QStringList pins;
    for (const SignalsGPIOSetting *setting : group) {
        const QString pin = portPin(*setting);
        const QString label = Get_PinSignal_DefineString_GPIO_Pin_x_UserDefine(pin);
        pins.append(label.isEmpty() ? Get_PinSignal_DefineString_GPIO_Pin_x(pin) : label);
    }
    return pins.join(QLatin1String(" | \n") + QString(indent, QLatin1Char(' ')));
}

std::string GenerateCode_GPIO::initBlock(std::string block, const Group &group, bool &ok) const
{
    writePinSettings(block, *group.first());
    rewriteAssignments(block, QStringLiteral("gpio_init_struct.gpio_pins"), pinDefines(group, InitIndent));
    ok =
        ok && rewriteCall(block, QStringLiteral("gpio_init"), {portDefine(group), QStringLiteral("&gpio_init_struct")});
    return block + '\n';
}

std::string GenerateCode_GPIO::levelBlock(std::string block, const Group &group, bool &ok) const
{
    const bool low =
        valueOfCaption(*group.first(), QStringLiteral("Output level")) == QLatin1String("GPIO_OUTPUTLEVEL_LOW");
    ok = ok && rewriteCalls(block, QStringLiteral("gpio_bits_write"), 3,
                            callText(low ? QStringLiteral("gpio_bits_reset") : QStringLiteral("gpio_bits_set"),
                                     {portDefine(group), pinDefines(group, LevelIndent)}));
    return block;
}

std::string GenerateCode_GPIO::routeBlock(std::string block, const SignalsGPIOSetting &setting, bool &ok) const
{
    const QString pin = portPin(setting);
    const SeriesTraits *traits = seriesTraits(m_MCUSerial);
    const bool remapped = traits && traits->pinsRemapped;
    QStringList arguments;
    if (remapped)
        arguments = QStringList{Get_PinSignal_DefineString_SCFG_GPIO_x(pin),
                                Get_PinSignal_DefineString_SCFG_PINS_SOURCE_x(pin)};
    else
        arguments = QStringList{Get_PinSignal_DefineString_GPIOx_UserDefine(pin),
                                Get_PinSignal_DefineString_GPIO_PinSource_x(pin),
                                Get_PinSignal_DefineString_GPIO_Mux_x(pin, setting.signalName)};
    const QString function =
        remapped ? QStringLiteral("gpio_event_output_config") : QStringLiteral("gpio_pin_mux_config");
    ok = rewriteCall(block, function, arguments) && ok;
    return block;
}

bool GenerateCode_GPIO::writeKind(std::string &body, const QString &section, const Group &settings) const
{
    const SectionSpan span = findSection(body, section);
    if (!span.found())
        return false;
    if (settings.isEmpty()) {
        replaceSection(body, span, {});
        return true;
    }
    std::string work = keptBody(body, span);
    const auto bodyOf = [&work](const SectionSpan &part) {
        return std::string(between(work, part.bodyStart, part.bodyStart + part.bodyLength));
    };
    bool ok = true;
    const SectionSpan level = findSection(work, QStringLiteral("level"));
    if (level.found()) {
        std::string text;
        for (const Group &group : GetGPIOSameParamSortList(settings, {QStringLiteral("Output level")}))
            text += levelBlock(bodyOf(level), group, ok);
        replaceSection(work, level, text + '\n');
    }
    const SectionSpan init = findSection(work, QStringLiteral("init"));
    if (!init.found())
        return false;
    std::string text;
    for (const Group &group : GetGPIOSameParamSortList(
             settings, {QStringLiteral("Pull type"), QStringLiteral("Driver capability"), QStringLiteral("GPIO type")}))
        text += initBlock(bodyOf(init), group, ok);
    replaceSection(work, init, text);
    const SectionSpan route = findSection(work, QStringLiteral("route"));
    if (route.found()) {
        std::string routes;
        for (const SignalsGPIOSetting *setting : settings)
            routes += routeBlock(bodyOf(route), *setting, ok);
        replaceSection(work, route, routes + '\n');
    }
    while (work.ends_with("\n\n\n"))
        work.pop_back();
    replaceSection(body, span, work);
    return ok;
}

bool GenerateCode_GPIO::GenerateCode_lm_config_c(std::string &text) const
{
    const SectionSpan span = findSection(text, section());
    if (!span.found())
        return false;
    if (!GenerateCode_GPIO_have_valid()) {
        replaceSection(text, span, {});
        return true;
    }
    std::string work = keptBody(text, span);
    // Pins that are free stay with the crystal.
    const SectionSpan crystal = findSection(work, QStringLiteral("gpio pd01 gmux"));
    if (crystal.found()) {
        const bool taken = standsOnCrystal() || anyOnCrystal(Get_VaildSignalsGPIOSettingList(
                                                    lists().AllSignalsGPIOSettingList, QStringLiteral("EVENTOUT")));
        replaceSection(work, crystal, taken ? keptBody(work, crystal) : std::string());
    }
    if (!writeKind(work, QStringLiteral("eventout"), m_eventout_GPIOSettingList) ||
        !writeKind(work, QStringLiteral("input"), m_input_GPIOSettingList) ||
        !writeKind(work, QStringLiteral("output"), m_output_GPIOSettingList) ||
        !writeKind(work, QStringLiteral("analog"), m_analog_GPIOSettingList))
        return false;
    GenerateCode_DeleteBlankLine_FunctionEnd(work);
    replaceSection(text, span, work);
    return true;
}

bool GenerateCode_GPIO::GenerateCode_lm_config_h(std::string &text) const
{
    return GenerateCode_Handle_Function(text, section(), GenerateCode_GPIO_have_valid());
}

bool GenerateCode_GPIO::GenerateCode_main_c(std::string &text) const
{
    return GenerateCode_Handle_Function(text, section(), GenerateCode_GPIO_have_valid());
}

} // namespace ChipLoom
