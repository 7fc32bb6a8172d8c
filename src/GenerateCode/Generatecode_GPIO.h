#pragma once

#include "GenerateCode/Generatecode_IP.h"

#include <vector>

namespace ChipLoom {

/// Writes the function that sets up the pins which the program drives and reads itself: outputs with their levels,
/// inputs, analog pins and the event output. Pins of peripherals are written by those.
class GenerateCode_GPIO : public GenerateCode_IP
{
public:
    explicit GenerateCode_GPIO(ZV32MCUSERIALS series);

    /// Port pins without a signal; they become analog pins if the project asks for that. Comes behind all other lists.
    void SetUnusedPins(const QStringList &pins);

    /// The section of all three files.
    static QString section() { return QStringLiteral("gpio function"); }
    bool GenerateCode_lm_config_c(std::string &text) const;
    bool GenerateCode_lm_config_h(std::string &text) const;
    bool GenerateCode_main_c(std::string &text) const;
    /// Whether the function has any content.
    bool GenerateCode_GPIO_have_valid() const;

private:
    using Group = QList<const SignalsGPIOSetting *>;

    void Init_VaildSignalsGPIOSettingList();
    bool writeKind(std::string &body, const QString &section, const Group &settings) const;
    QList<Group> GetGPIOSameParamSortList(const Group &settings, const QStringList &captions) const;
    std::string initBlock(std::string block, const Group &group, bool &ok) const;
    std::string levelBlock(std::string block, const Group &group, bool &ok) const;
    std::string routeBlock(std::string block, const SignalsGPIOSetting &setting, bool &ok) const;
    QString portPin(const SignalsGPIOSetting &setting) const;
    QString portDefine(const Group &group) const;
    QString pinDefines(const Group &group, int indent) const;

    std::vector<SignalsGPIOSetting> m_unusedPinSettings;
    Group m_output_GPIOSettingList;
    Group m_input_GPIOSettingList;
    Group m_analog_GPIOSettingList;
    Group m_eventout_GPIOSettingList;
};

} // namespace ChipLoom
