#include "ClockConfig/ZV32PLLConfig.h"

#include "ClockConfig/ClockTexts.h"
#include "Model/SeriesHelpers.h"

#include <QFile>

namespace ChipLoom {

ZV32PLLConfig::ZV32PLLConfig(Scheduler &scheduler, UserPrompt &prompt, QObject *parent)
    : QObject(parent), m_scheduler(scheduler), m_prompt(prompt)
{
}

ZV32PLLConfig::~ZV32PLLConfig() = default;

void ZV32PLLConfig::newConfig(ZV32MCUSERIALS series)
{
    m_MCUSerial = series;
    m_MCUName = ZV32MCUSERIALS_To_MCUSerialString(series);
    NewMCUConfig(series);
    InitParameters();
}

void ZV32PLLConfig::NewMCUConfig(ZV32MCUSERIALS series)
{
    AllConfigFormClose();
    if (hasClockPage(series)) {
        m_pllConfigWidget = std::make_unique<ZV32MCUPLL>(*clockSeries(series), m_scheduler, m_prompt);
        const ZV32MCUPLL *page = m_pllConfigWidget.get();
        connect(page, &ZV32MCUPLL::SendClockChangedSignal, this, &ZV32PLLConfig::ReciveClockChangedSignal);
        connect(page, &ZV32MCUPLL::SendClockHaveErrorSignal, this, &ZV32PLLConfig::ReciveClockHaveErrorSignal);
        connect(page, &ZV32MCUPLL::SendUSBClockSourceChangeSignal, this,
                &ZV32PLLConfig::ReciveUSBClockSourceChangeSignal);
        connect(page, &ZV32MCUPLL::SendI2SF5ClockSourceChangeSignal, this,
                &ZV32PLLConfig::ReciveI2SF5ClockSourceChangeSignal);
        connect(page, &ZV32MCUPLL::edited, this, &ZV32PLLConfig::edited);
    }
    emit pageChanged();
}

void ZV32PLLConfig::AllConfigFormClose()
{
    if (!m_pllConfigWidget)
        return;
    m_pllConfigWidget->disconnect(this);
    const std::unique_ptr<ZV32MCUPLL> closed = std::move(m_pllConfigWidget); // null while listeners look
    emit pageChanged();
}

void ZV32PLLConfig::InitParameters()
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->ResetAllControl();
}

void ZV32PLLConfig::ConfigReset()
{
    if (!m_pllConfigWidget || m_prompt.ask(ClockPrompt::question(ClockPrompt::Reset)) != 0)
        return;
    InitParameters();
    emit edited();
}

bool ZV32PLLConfig::SaveToFile(QXmlStreamWriter *writer) const
{
    return m_pllConfigWidget && m_pllConfigWidget->SaveToFile(writer);
}

std::vector<ZV32MCUPLL::Misfit> ZV32PLLConfig::OpenFromFile(const QString &path, const QString &series)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return OpenFromFile(file, series);
}

/// A file that is not open gives nothing.
std::vector<ZV32MCUPLL::Misfit> ZV32PLLConfig::OpenFromFile(QIODevice &file, const QString &series)
{
    m_MCUName = series;
    m_MCUSerial = MCUSerialString_To_ZV32MCUSERIALS(series);
    if (m_MCUSerial == ZV32ErrorMCU2) {
        m_MCUName.clear();
        m_prompt.tell(PromptRequest::Kind::Warning, QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Warning")),
                      QLatin1String(ClockPrompt::UnknownSeries));
        return {};
    }
    return m_pllConfigWidget && file.isOpen() ? m_pllConfigWidget->OpenFromFile(file)
                                              : std::vector<ZV32MCUPLL::Misfit>();
}

void ZV32PLLConfig::SetLextFlag(bool enable, bool bypass)
{
    if (!m_pllConfigWidget)
        return;
    m_pllConfigWidget->Set_lextbypass_Flag(bypass);
    m_pllConfigWidget->Set_lext_enable_flag(enable);
}

void ZV32PLLConfig::SetHextFlag(bool enable, bool bypass, bool third)
{
    if (!m_pllConfigWidget)
        return;
    m_pllConfigWidget->Set_hextbypass_Flag(bypass);
    m_pllConfigWidget->Set_hext_enable_flag(enable, third);
}

void ZV32PLLConfig::SetClockOutPin(int index)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_clockoutPinSelectComboBox(index);
}

void ZV32PLLConfig::SetClockOut1Pin(int index)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_clockout1PinSelectComboBox(index);
}

void ZV32PLLConfig::SetClockOut2Pin(int index)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_clockout2PinSelectComboBox(index);
}

void ZV32PLLConfig::SetUSBFlag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_USB_Flag(on);
}

void ZV32PLLConfig::SetUSBFS1Flag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_USBFS1_Flag(on);
}

void ZV32PLLConfig::SetUSBFS2Flag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_USBFS2_Flag(on);
}

void ZV32PLLConfig::SetUSBFSFlag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_USBFS_Flag(on);
}

void ZV32PLLConfig::SetUSBHSFlag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_USBHS_Flag(on);
}

void ZV32PLLConfig::SetUSART1Flag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_USART1_Flag(on);
}

void ZV32PLLConfig::SetUSART2Flag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_USART2_Flag(on);
}

void ZV32PLLConfig::SetUSART3Flag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_USART3_Flag(on);
}

void ZV32PLLConfig::SetI2C1Flag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_I2C1_Flag(on);
}

void ZV32PLLConfig::SetADC1Flag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_ADC1_Flag(on);
}

void ZV32PLLConfig::SetADC2Flag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_ADC2_Flag(on);
}

void ZV32PLLConfig::SetADC3Flag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_ADC3_Flag(on);
}

void ZV32PLLConfig::SetADCDivider(int divider)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_ADC_Divider(divider);
}

void ZV32PLLConfig::SetI2SF5Flag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_I2SF5_Flag(on);
}

void ZV32PLLConfig::SetCAN1Flag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_CAN1_Flag(on);
}

void ZV32PLLConfig::SetCAN2Flag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_CAN2_Flag(on);
}

void ZV32PLLConfig::SetCAN3Flag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_CAN3_Flag(on);
}

void ZV32PLLConfig::SetFREERTOSEnableFlag(bool on)
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->Set_FREERTOSEnable_Flag(on);
}

double ZV32PLLConfig::Get_SYSCLK() const
{
    return m_pllConfigWidget ? m_pllConfigWidget->Get_SYSCLK() : 0.0;
}

double ZV32PLLConfig::Get_AHBCLK() const
{
    return m_pllConfigWidget ? m_pllConfigWidget->Get_AHBCLK() : 0.0;
}

double ZV32PLLConfig::Get_APB1CLK() const
{
    return m_pllConfigWidget ? m_pllConfigWidget->Get_APB1CLK() : 0.0;
}

double ZV32PLLConfig::Get_APB1TMRCLK() const
{
    return m_pllConfigWidget ? m_pllConfigWidget->Get_APB1TMRCLK() : 0.0;
}

double ZV32PLLConfig::Get_APB2CLK() const
{
    return m_pllConfigWidget ? m_pllConfigWidget->Get_APB2CLK() : 0.0;
}

double ZV32PLLConfig::Get_APB2TMRCLK() const
{
    return m_pllConfigWidget ? m_pllConfigWidget->Get_APB2TMRCLK() : 0.0;
}

int ZV32PLLConfig::Get_SysticDiv() const
{
    return m_pllConfigWidget ? m_pllConfigWidget->Get_SysticDiv() : 0;
}

int ZV32PLLConfig::Get_APB1Div() const
{
    return m_pllConfigWidget ? m_pllConfigWidget->Get_APB1Div() : 0;
}

int ZV32PLLConfig::Get_APB2Div() const
{
    return m_pllConfigWidget ? m_pllConfigWidget->Get_APB2Div() : 0;
}

int ZV32PLLConfig::Get_PLLRC() const
{
    return m_pllConfigWidget ? m_pllConfigWidget->Get_PLLRC() : 0;
}

bool ZV32PLLConfig::PLLIsEnable() const
{
    return m_pllConfigWidget && m_pllConfigWidget->PLLIsEnable();
}

double ZV32PLLConfig::Get_Peripherals_Clock(const QString &ipName) const
{
    return m_pllConfigWidget ? m_pllConfigWidget->Get_Peripherals_Clock(ipName) : 0.0;
}

bool ZV32PLLConfig::GenerateCodeCheck()
{
    return m_pllConfigWidget && m_pllConfigWidget->GenerateCodeCheck();
}

std::vector<ClockProblem> ZV32PLLConfig::problems() const
{
    return m_pllConfigWidget ? m_pllConfigWidget->problems() : std::vector<ClockProblem>();
}

void ZV32PLLConfig::ReciveClockChangedSignal()
{
    emit SendClockChangedSignal();
}

void ZV32PLLConfig::ReciveClockHaveErrorSignal(bool error)
{
    emit SendClockHaveErrorSignal(error);
}

void ZV32PLLConfig::ReciveUSBClockSourceChangeSignal()
{
    emit SendUSBClockSourceChangeSignal();
}

void ZV32PLLConfig::ReciveI2SF5ClockSourceChangeSignal()
{
    emit SendI2SF5ClockSourceChangeSignal();
}

} // namespace ChipLoom
