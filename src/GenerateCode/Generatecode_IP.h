#pragma once

#include "GenerateCode/PinIndex.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ChipLoom {

struct PinBlock;
class SectionedText;
class TextCut;

/// The value of the setting of a pin that has an English caption, or empty.
QString valueOfCaption(const SignalsGPIOSetting &setting, const QString &caption);
/// The same; null where there is none.
const QString *findValueOfCaption(const SignalsGPIOSetting &setting, const QString &caption);

/// Writes what the user chose for a pin over the samples of its block, except its mode: that follows from what the pin
/// is used for.
void writePinSettings(std::string &text, const SignalsGPIOSetting &setting);

/// The lists of a design, as all generators of one generation have them. The pointers are not owned.
struct DesignLists
{
    QList<GPIO_Pin_Define_Info *> GPIOPinDefineInfo;
    QList<SignalsGPIOSetting *> AllSignalsGPIOSettingList;
    QList<MCUNVICSetting *> AllNVICSettingList;
    QList<DMARequest *> ValidDMAChannalList; ///< that have a channel
    QList<IPSignalGroupInfo> deviceIPSignalGroupInfoList;
    std::shared_ptr<const PinIndex> pins; ///< of the first two
    /// Tells this generation, in which the parameters of an instance are one list, from all others; 0 where they may be
    /// several.
    quint64 generation = 0;
};

/// Base of every peripheral and middleware generator: what the design says about one instance, and the edits that all
/// of them share. Built for one pass over one text. Edits work in place and give false where text and generator are
/// out of step (a section, line or call that is missing); the caller passes that up unchanged.
class GenerateCode_IP
{
public:
    GenerateCode_IP(ZV32MCUSERIALS series, QString ipName);
    GenerateCode_IP(GenerateCode_IP &&) = default;
    virtual ~GenerateCode_IP() = default;

    // What the design holds; the pointers are not owned.
    virtual void SetRefParameterList(const QList<RefParameter> &list) { m_RefParameterList = list; }
    /// All lists at once, which outlive the generator. Threads that copied them would wait for each other's counts.
    void SetDesignLists(const DesignLists &lists);
    // One in the place of that of before, for this generator alone.
    /// Takes the signals of the whole design and picks those of this instance.
    void SetAllSignalsGPIOSettingList(const QList<SignalsGPIOSetting *> &list);
    void SetAllNVICSettingList(const QList<MCUNVICSetting *> &list);
    void SetGPIOPinDefineInfo(const QList<GPIO_Pin_Define_Info *> &list);
    void SetValidDMARequestList(const QList<DMARequest *> &list);
    void SetIPSignalGroupInfoList(const QList<IPSignalGroupInfo> &list);
    void SetIPValidFlag(bool valid) { m_IPValidFlag = valid; }
    void SetGenerateCodeSplitIP(bool split) { m_GenerateCode_SplitIP = split; }
    void SetKeepUserCode(bool keep) { m_keepUserCode = keep; }
    void SetNotUsedPinAnalog(bool analog) { m_notUsedPinAnalog = analog; }

    // ---- Pins of this instance ----

    /// A name with "_" is taken if it holds the instance's name and "_"; another if it holds the instance's name.
    QList<SignalsGPIOSetting *> Get_VaildSignalsGPIOSettingList(const QList<SignalsGPIOSetting *> &all) const;
    QList<SignalsGPIOSetting *> Get_VaildSignalsGPIOSettingList(const QList<SignalsGPIOSetting *> &all,
                                                                const QString &signal) const;
    QString Get_PinName_Accord_PinSignal(const QString &signal) const;
    /// The joined name of signals that share a pin, or the argument.
    QString Get_CombinedSignalsName_Accord_PinSignal(const QString &signal) const;
    bool SignalName_Used(const QString &signal) const;
    /// Of signals of this instance.
    bool isAnyUsed(const SignalNumbers &signalNumbers) const;
    /// Whether one stands on PD0 or PD1 where these share their pins with the crystal.
    bool standsOnCrystal() const { return anyOnCrystal(own()); }
    static bool anyOnCrystal(const QList<SignalsGPIOSetting *> &settings);
    /// Whether a signal of this instance stands on a port, given by its define as "GPIOA".
    bool GPIO_x_Used(const QString &port) const;

    // ---- Defines of a pin; empty if the pin has none ----

    QString Get_PinSignal_DefineString_GPIOx(const QString &pin) const;
    QString Get_PinSignal_DefineString_GPIO_Pin_x(const QString &pin) const;
    QString Get_PinSignal_DefineString_GPIO_PinSource_x(const QString &pin) const;
    QString Get_PinSignal_DefineString_EXINT_LINE_x(const QString &pin) const;
    QString Get_PinSignal_DefineString_SCFG_GPIO_x(const QString &pin) const;
    QString Get_PinSignal_DefineString_SCFG_PINS_SOURCE_x(const QString &pin) const;
    QString Get_PinSignal_DefineString_GPIO_Mux_x(const QString &pin, const QString &signal) const;
    /// The define made of the user's label, or empty.
    QString Get_PinSignal_DefineString_GPIO_Pin_x_UserDefine(const QString &pin) const;
    /// The define made of the user's label, or that of the port.
    QString Get_PinSignal_DefineString_GPIOx_UserDefine(const QString &pin) const;
    /// Value of the setting with the English caption `key` ("GPIO mode"), or empty.
    QString Get_PinSignal_DefineString_gpio_initstruct_member(const QString &signal, const QString &key) const;
    QString Get_PinSignal_DefineString_gpio_initstruct_member(const QString &pin, const QString &signal,
                                                              const QString &key) const;

    // ---- Parameters and interrupts ----

    QString Get_DefineString_Param(const QString &name) const;
    bool isTrue(const QString &parameter) const;
    QString Get_DefineString_Param_Default(const QString &name) const;
    CURRENTVALUETYPE Get_Parma_ValueType(const QString &name) const;
    bool NVIC_Is_Used(const QString &nvicName) const;
    /// Handlers of the enabled vectors of a peripheral; an I2S shares those of its SPI.
    QStringList GetPeripheralEnabledIRQHanderList(const QString &peripheral) const;

    // ---- Edits ----

    // These append what becomes of the body of a section, which is nothing where its signals stand on no pin.

    /// The section "<key> pin", with the values of the pin.
    bool GenerateCode_SignalPIN(const QString &signal, const TextCut &block, std::string &text) const;
    bool GenerateCode_SignalPIN(SignalNumber signal, const PinBlock &block, std::string &text) const;
    /// The same for a pin that shares the electrical settings and the mux number of the template.
    bool GenerateCode_SignalPIN_NoModify(const QString &signal, const TextCut &block, std::string &text) const;
    /// The body as it is; `addLine` puts a blank line behind it.
    void GenerateCode_GPIO_init_struct(const SignalNumbers &signalNumbers, std::string_view body, bool addLine,
                                       std::string &text) const;
    /// The sections "gpio gmux" and "gpio1 gmux": the call that selects the remap group.
    bool GenerateCode_GPIOGMUX(const QStringList &signalNames, const TextCut &block, std::string &text) const;
    bool GenerateCode_GPIOGMUX1(const QStringList &signalNames, const TextCut &block, std::string &text) const;
    /// The section "interrupt remarks": names the handlers in which the user goes on, or nothing.
    void GenerateCode_Peripheral_interrupt_remarks(const QString &peripheral, std::string_view body,
                                                   std::string &text) const;

    // These edit a section in its text.

    /// The section "gpio pd01 gmux": kept where a signal stands on a pin of the crystal.
    bool GenerateCode_PD0_PD1_GMUX(SectionedText &text) const;
    /// Keeps the section if the parameter (that of the section's name, if empty) is "TRUE".
    bool GenerateCode_Interrupt_enable_sub1(SectionedText &text, const QString &section,
                                            const QString &parameter) const;
    /// Keeps the section if any of the parameters is "TRUE".
    bool GenerateCode_Interrupt_enable_sub2(SectionedText &text, const QString &section,
                                            const QStringList &parameters) const;

    // ---- Numbers ----

    /// A text that holds "0x" is read in base 16, any other in base 10.
    static uint QStringToUInt(bool &ok, const QString &text);
    static int QStringToInt(bool &ok, const QString &text);
    /// "0x" and capitals for `CURRENTVALUETYPE_HEX`, else decimal.
    static QString UIntToQString(uint value, CURRENTVALUETYPE type);

protected:
    const DesignLists &lists() const { return *m_lists; }
    /// Null where there is none of that name.
    virtual const RefParameter *parameter(const QString &name) const;

    ZV32MCUSERIALS m_MCUSerial;
    QString m_IPName;
    bool m_IPValidFlag = false;
    QList<RefParameter> m_RefParameterList;
    bool m_GenerateCode_SplitIP = false;
    bool m_keepUserCode = true;
    bool m_notUsedPinAnalog = false;

    QStringList m_globalSignals; ///< signals of this instance without its name in theirs

private:
    /// The signals of this instance that stand on pins.
    const QList<SignalsGPIOSetting *> &own() const;
    const PinIndex &pins() const { return *m_lists->pins; }
    DesignLists &ownLists();
    const SignalsGPIOSetting *settingOfSignal(const QString &signal) const;
    const GPIO_Pin_Define_Info *defineOfPin(const QString &pin) const;
    static QStringView pinNameOf(const SignalsGPIOSetting &setting);
    QStringList usedOf(const QStringList &signalNames) const;
    QString remapConstant(const QStringList &usedSignals) const;
    bool IPSignalGroupInfoList_HaveTMROutput(const IPSignalGroupInfo &group) const;
    static bool writeRemapBlock(const QString &constant, const TextCut &block, std::string &text);

    bool writePinBlock(SignalNumber signal, const SignalsGPIOSetting &setting, bool withSetting, const PinBlock &block,
                       std::string &text) const;

    mutable std::optional<QList<SignalsGPIOSetting *>> m_own;
    const DesignLists *m_lists; ///< never null
    std::unique_ptr<DesignLists> m_ownLists;
};

} // namespace ChipLoom
