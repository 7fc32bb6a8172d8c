#pragma once

#include "Design/DesignPart.h"
#include "Model/PeripheralTree.h"

#include <QList>
#include <QStringList>

#include <memory>
#include <vector>

namespace ChipLoom {

class Design;
class DevicePinInfo;

/// The electrical settings of what stands on pins: one row for each pin in use, whether by a plain function or by a
/// peripheral. Placements without effect have no row.
///
/// A signal that leaves its pin loses its row, but its settings are remembered and return with it. Labels belong to the
/// pins; a row shows them.
///
/// Changes through the one door: "gpio/<pin>/<setting>=<value>" with the name of a setting or its English caption and a
/// value or its English caption, "gpio/<pin>/Label=<label>", "gpio/<pin>/Pin=<other pin>", "gpio/ShowType=<instance>".
class GPIO_Configuration : public DesignPart
{
    Q_OBJECT
public:
    GPIO_Configuration(Design &design, PeripheralsBaseInfo info, std::shared_ptr<const PeripheralTree> tree);

    // ---- Rows; pointers are good until the next change of a pin ----

    /// In the order of the pins.
    const QList<SignalsGPIOSetting *> &GetAllSignalsGPIOSettingList() const { return m_rows; }
    /// The rows of one peripheral; those of the plain functions for "GPIO", all for `allRows()`.
    QList<const SignalsGPIOSetting *> rowsOf(const QString &instanceName) const;
    /// Peripherals that have rows, by their names.
    QStringList instancesWithRows() const;
    /// The row of a pin, or null.
    const SignalsGPIOSetting *row(const QString &pinName) const;
    /// Every setting that some row may have, as declared: the columns of a table.
    const QList<RefParameter> &settings() const { return m_settings; }
    /// The setting of a row, or null if its IO mode has none of that name.
    static const RefParameter *setting(const SignalsGPIOSetting &row, const QString &parameterName);
    /// Whether a setting differs from its default or there is a label.
    static bool isModified(const SignalsGPIOSetting &row);

    /// The driver's names of the port pins.
    const QList<GPIO_Pin_Define_Info *> &GetGPIOPinDefineInfo() const { return m_pinDefines; }
    /// Keeps these, which nobody changes, also when the device is closed.
    std::shared_ptr<const void> pinDefinesOwner() const { return m_ownPinDefines; }
    /// The bonded pins on which a signal can stand, its present one included.
    QStringList GetSignalInPinNameList(const QString &signalName) const;
    /// The settings that the IO mode of a row gives, at their defaults; none for an unknown mode.
    QList<RefParameter> GetSignalsGPIOSettingStructIOMode(const SignalsGPIOSetting &setting) const;

    /// Which rows the page shows: an instance, "GPIO", or `allRows()`.
    QString showType() const { return m_showType; }
    static QString allRows() { return QStringLiteral("All"); }

    // ---- Changes ----

    DesignAnswer setValue(const QString &pinName, const QString &parameter, const QString &value);
    DesignAnswer setLabel(const QString &pinName, const QString &label);
    /// Moves the signal of a row to another pin that offers it.
    DesignAnswer SignalPinNameChangeSlot(const QString &pinName, const QString &newPinName);
    /// Defaults for the rows of one peripheral, and no labels.
    void SetGPIOSettingsDefaultValue(const QString &instanceName);

    /// The pins have changed.
    void ReciveAllConfigedSignals(const DevicePinInfo *info, bool updateControl, const QString &sendIPName);

    // ---- The part ----

    QString instanceName() const override { return m_baseInfo.InstanceName; }
    bool handles(const DesignChange &change) const override;
    DesignAnswer apply(const DesignChange &change) override;
    void reset() override;
    void updateLanguage() override;
    std::any save() const override;
    void restore(const std::any &state) override;
    void writeSection(QXmlStreamWriter &writer) const override;
    void readSection(const XMLElementInfo &root, QList<DesignProblem> &problems) override;

signals:
    /// Rows came, went or changed.
    void SendGPIOSettingChangeSignals();

private:
    struct State;

    void readSettings();
    SignalsGPIOSetting *rowOnPin(const QString &pinName) const;
    SignalsGPIOSetting *entryFor(const ModeIPValidSignal &placed, const QList<SignalsGPIOSetting *> &formerRows,
                                 bool &followsPlain);
    void UpdataSignalsGPIOSettingStruct(const QList<ModeIPValidSignal> &validSignals);
    void adoptIOMode(SignalsGPIOSetting &entry, const QString &ioMode) const;
    DesignAnswer readRow(const XMLElementInfo &element, QList<DesignProblem> &problems);
    static void GetSignalGPIOParamValue(const XMLElementInfo &row, QList<XMLAttributeInfo> &values);

    Design &m_design;
    PeripheralsBaseInfo m_baseInfo;
    std::shared_ptr<const PeripheralTree> m_GPIOXMLFileInfo;
    QList<RefParameter> m_settings;
    std::shared_ptr<std::vector<GPIO_Pin_Define_Info>> m_ownPinDefines;
    QList<GPIO_Pin_Define_Info *> m_pinDefines;
    std::vector<std::unique_ptr<SignalsGPIOSetting>> m_AllSignalsGPIOSettingList; ///< remembered ones included
    QList<SignalsGPIOSetting *> m_rows;
    QString m_showType = allRows();
};

} // namespace ChipLoom
