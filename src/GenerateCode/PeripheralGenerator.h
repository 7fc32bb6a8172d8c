#pragma once

#include "GenerateCode/Generatecode_IP.h"

#include <memory>

namespace ChipLoom {

class ZV32PLLConfig;

/// Writes the code of one peripheral instance into the texts of the common files. An instance that the design does not
/// use, or does not have, is asked too: it takes its sections out. Every answer is false where text and generator are
/// out of step.
class PeripheralGenerator : public GenerateCode_IP
{
public:
    using GenerateCode_IP::GenerateCode_IP;
    virtual ~PeripheralGenerator();

    QString instanceName() const { return m_IPName; }
    void SetClockConfig(const ZV32PLLConfig *clock) { m_clockConfigForm = clock; }

    /// The section "<instance> function" of the configuration source.
    virtual bool GenerateCode_lm_config_c(SectionedText &text) = 0;
    /// The same section of the header.
    virtual bool GenerateCode_lm_config_h(SectionedText &text) = 0;
    /// The same section of `main.c`.
    virtual bool GenerateCode_main_c(SectionedText &text) = 0;
    /// The sections of this instance in the handlers of the interrupt file.
    virtual bool GenerateCode_interrupt_int_c(SectionedText &text) = 0;
    /// Whether the instance leaves code at all: its functions stand in the order of calls only then.
    virtual bool HaveCode() const { return m_IPValidFlag; }

protected:
    const ZV32PLLConfig *m_clockConfigForm = nullptr; // not owned
};

/// The section of an instance: "usart1 function".
QString functionSection(const QString &instanceName);

/// The instance name without its number: "USART" for "USART1", "XMC_NANDFlash" for itself.
QString kindOfInstance(const QString &instanceName);

/// A generator for an instance, or null where its kind has none.
std::unique_ptr<PeripheralGenerator> peripheralGenerator(ZV32MCUSERIALS series, const QString &instanceName);

} // namespace ChipLoom
