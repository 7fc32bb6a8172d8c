#pragma once

#include "Design/Calculators/DiagramValues.h"

#include <QObject>

class QWidget;

namespace ChipLoom {

class ConfigurationDiagram;
class IP_ParamSettingConfiguration;

/// Hands the values of a parameter set to the drawing of its peripheral.
class DiagramFeed : public QObject
{
    Q_OBJECT
public:
    /// `parameters` outlives this object.
    DiagramFeed(const IP_ParamSettingConfiguration &parameters, QObject *parent = nullptr);

    /// The drawing of an instance, connected to this feed; null for a peripheral without one.
    ConfigurationDiagram *makeDiagram(const QString &instance, QWidget *parent = nullptr);
    /// Sends the values as they are now. False if the set has none to show.
    bool feed();

signals:
    void SendCanParamValue(const ChipLoom::CanBits &bits);
    void SendSPIParamValue(const ChipLoom::SpiFrame &frame);
    void SendI2CParamValue(const ChipLoom::I2cBusTimes &times);
    void SendTMRParamValue(const ChipLoom::TimerCount &count);
    void SendWDTParamValue(const ChipLoom::WatchdogCount &count);
    void SendWWDTParamValue(const ChipLoom::WatchdogCount &count);
    void SendOPModeType(int mode);

private:
    struct Kind;
    static const Kind *kindOf(const QString &instance);

    const IP_ParamSettingConfiguration &m_parameters;
    const Kind *m_kind = nullptr;
};

} // namespace ChipLoom
