#pragma once

#include "ClockConfig/ZV32MCUPLL.h"

#include <memory>

namespace ChipLoom {

/// What the rest of the program knows of the clock: one page at most, and every question and order for it. Without a
/// page (no series yet, or one that has none) numbers are 0, texts empty and checks false, and orders do nothing.
class ZV32PLLConfig : public QObject
{
    Q_OBJECT
public:
    ZV32PLLConfig(Scheduler &scheduler, UserPrompt &prompt, QObject *parent = nullptr);
    ~ZV32PLLConfig() override;

    void newConfig(ZV32MCUSERIALS series);
    void NewMCUConfig(ZV32MCUSERIALS series);
    void AllConfigFormClose();
    void InitParameters();
    /// Asks first; "Cancel" changes nothing.
    void ConfigReset();

    /// The page's state, or null.
    ZV32MCUPLL *getMCUPLL() const { return m_pllConfigWidget.get(); }
    ZV32MCUSERIALS series() const { return m_MCUSerial; }
    QString seriesName() const { return m_MCUName; }

    bool SaveToFile(QXmlStreamWriter *writer) const;
    /// Reads the clock section of a design for the series of that name, and returns what cannot be so. An unknown
    /// series is told and nothing is read.
    std::vector<ZV32MCUPLL::Misfit> OpenFromFile(const QString &path, const QString &series);
    std::vector<ZV32MCUPLL::Misfit> OpenFromFile(QIODevice &file, const QString &series);

    void SetLextFlag(bool enable, bool bypass);
    void SetHextFlag(bool enable, bool bypass, bool third);
    void SetClockOutPin(int index);
    void SetClockOut1Pin(int index);
    void SetClockOut2Pin(int index);
    void SetUSBFlag(bool on);
    void SetUSBFS1Flag(bool on);
    void SetUSBFS2Flag(bool on);
    void SetUSBFSFlag(bool on);
    void SetUSBHSFlag(bool on);
    void SetUSART1Flag(bool on);
    void SetUSART2Flag(bool on);
    void SetUSART3Flag(bool on);
    void SetI2C1Flag(bool on);
    void SetADC1Flag(bool on);
    void SetADC2Flag(bool on);
    void SetADC3Flag(bool on);
    /// By how much the converters divide the clock of their bus, where the clock page has no divider for them.
    void SetADCDivider(int divider);
    void SetI2SF5Flag(bool on);
    void SetCAN1Flag(bool on);
    void SetCAN2Flag(bool on);
    void SetCAN3Flag(bool on);
    void SetFREERTOSEnableFlag(bool on);

    double Get_SYSCLK() const;
    double Get_AHBCLK() const;
    double Get_APB1CLK() const;
    double Get_APB1TMRCLK() const;
    double Get_APB2CLK() const;
    double Get_APB2TMRCLK() const;
    int Get_SysticDiv() const;
    int Get_APB1Div() const;
    int Get_APB2Div() const;
    /// 0 for HEXT, 1 for HICK.
    int Get_PLLRC() const;
    bool PLLIsEnable() const;
    double Get_Peripherals_Clock(const QString &ipName) const;

    // Literals of the driver for the generators of peripherals; empty (0 for the crystal) without a page.

    double GenerateCode_Get_Hext_Value() const; ///< MHz
    QString GenerateCode_Get_ERTC_ClockSource() const;
    QString GenerateCode_Get_ERTC_Div() const;
    QString GenerateCode_Get_USB_ClockSource() const;
    QString GenerateCode_Get_USB_Div() const;
    QString GenerateCode_Get_ADC_ClockSource() const;
    QString GenerateCode_Get_ADCDiv() const;
    QString GenerateCode_Get_USART1_ClockSource() const;
    QString GenerateCode_Get_USART2_ClockSource() const;
    QString GenerateCode_Get_USART3_ClockSource() const;
    QString GenerateCode_Get_I2C1_ClockSource() const;
    QString GenerateCode_Get_I2SF5_ClockSource() const;
    QString GenerateCode_Get_CAN1_ClockSource() const;
    QString GenerateCode_Get_CAN2_ClockSource() const;
    QString GenerateCode_Get_CAN3_ClockSource() const;

    bool GenerateCodeCheck();
    /// What `GenerateCodeCheck` would find; nothing is asked or changed.
    std::vector<ClockProblem> problems() const;

signals:
    void SendClockChangedSignal();
    void SendClockHaveErrorSignal(bool error);
    void SendUSBClockSourceChangeSignal();
    void SendI2SF5ClockSourceChangeSignal();
    /// The page was made, replaced or closed.
    void pageChanged();
    /// A user changed something.
    void edited();

private slots:
    void ReciveClockChangedSignal();
    void ReciveClockHaveErrorSignal(bool error);
    void ReciveUSBClockSourceChangeSignal();
    void ReciveI2SF5ClockSourceChangeSignal();

private:
    Scheduler &m_scheduler;
    UserPrompt &m_prompt;
    ZV32MCUSERIALS m_MCUSerial = ZV32ErrorMCU2;
    QString m_MCUName;
    std::unique_ptr<ZV32MCUPLL> m_pllConfigWidget;
};

} // namespace ChipLoom
