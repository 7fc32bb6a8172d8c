#pragma once

#include "GenerateCode/Generatecode_IP.h"

namespace ChipLoom {

class SectionedText;
class ZV32PLLConfig;

/// Writes `lm_system.c` and `lm_system.h`: the time base of delays, the interrupt of SysTick and the port of printf.
class GenerateCode_SYSTEM : public GenerateCode_IP
{
public:
    explicit GenerateCode_SYSTEM(ZV32MCUSERIALS series);

    void SetClockConfig(const ZV32PLLConfig *clock) { m_clockConfigForm = clock; }
    /// The USART on which a peripheral's own page serves printf, as "USART1"; empty for none.
    void SetPrintfPeripheral(const QString &instance) { m_printfPeripheral = instance; }

    bool GenerateCode_lm_system_c(std::string &text) const;
    bool GenerateCode_lm_system_h(std::string &text) const;
    /// The port of printf, if every pin of its transmitter is taken.
    QString portWithoutPin() const;
    bool GenerateCode_main_c(SectionedText &text) const;
    bool GenerateCode_interrupt_int_c(SectionedText &text) const;

private:
    /// Where the port of printf has its transmitter, and what leads it there: a number of the pin, or a group.
    struct PrintfPin
    {
        const GPIO_Pin_Define_Info *define = nullptr; // not owned
        QString mux;
        QString group;
    };

    bool usesTimeBase() const;
    bool interrupts() const;
    bool timeBaseIsTimer() const;
    QString timeBase() const { return Get_DefineString_Param(QStringLiteral("Time_Base")); }
    /// The port that SYSTEM itself sets up for printf, or empty.
    QString ownPrintfPort() const;
    QString printfPort() const;
    bool keep(std::string &text, const char *section, bool kept) const;
    bool writeTimeBase(std::string &text) const;
    bool chooseDivision(std::string &text, bool divided) const;
    bool writePrintfPort(std::string &text) const;
    PrintfPin printfPin() const;

    const ZV32PLLConfig *m_clockConfigForm = nullptr; // not owned
    QString m_printfPeripheral;
};

} // namespace ChipLoom
