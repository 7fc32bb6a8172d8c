#pragma once

#include "ClockConfig/ClockFields.h"
#include "ClockConfig/ClockReadings.h"
#include "ClockConfig/ClockSolver.h"

#include <QObject>

class QIODevice;
class QXmlStreamWriter;

namespace ChipLoom {

class Scheduler;
class UserPrompt;

/// One change of a clock page: a value that is chosen, or a text that is typed.
struct ClockChange
{
    enum class Step {
        Type,   ///< the text changed; it is kept, but nothing is calculated until it is accepted
        Accept, ///< Return in a text box, or a choice
    };

    ClockField field;
    double value = 0.0; ///< of a chosen field
    QString text;       ///< of a typed field
    Step step = Step::Accept;

    static ClockChange choose(ClockField field, double value) { return {field, value, {}, Step::Accept}; }
    static ClockChange type(ClockField field, const QString &text) { return {field, 0.0, text, Step::Type}; }
    static ClockChange enter(ClockField field, const QString &text) { return {field, 0.0, text, Step::Accept}; }
};

enum class ClockRefusal {
    None,
    NotOnThisSeries,
    NoSuchValue,
    OutOfRange, ///< a typed value outside `min` to `max`, or no number
    HextOff,    ///< the pins of HEXT are not assigned
    LextOff,
    SysTickTaken, ///< FreeRTOS takes SysTick undivided
    SclkNotOnPll, ///< only the PLL can aim at a frequency
    HextInvalid,  ///< the change needs HEXT, whose text is out of range
    NotAdjusted,  ///< MS or NS does not suit the PLL, and the adjustment was declined
    NoMultiplier, ///< no multiplier exists for the present PLL input
};

/// What became of a change. A refused text stays in its box and is not taken over. A choice that cannot be made now is
/// not made; one that only fails to reach its frequency (`HextInvalid`, `OutOfRange`, `NotAdjusted`, `NoMultiplier`)
/// stands, with the frequencies that follow from what was accepted before.
struct ClockOutcome
{
    ClockRefusal refusal = ClockRefusal::None;
    ClockField field = ClockField::Sclk; ///< the one that is at fault
    double min = 0.0;                    ///< of `OutOfRange`
    double max = 0.0;

    bool ok() const { return refusal == ClockRefusal::None; }
    /// Whether the page differs from before although the change was refused.
    bool standsNonetheless() const
    {
        return refusal == ClockRefusal::OutOfRange || refusal == ClockRefusal::HextInvalid ||
               refusal == ClockRefusal::NotAdjusted || refusal == ClockRefusal::NoMultiplier;
    }
};

/// Something that keeps code from being generated, or that must be confirmed.
struct ClockProblem
{
    enum class Kind {
        HextInput,
        SclkInput,
        PllMsInput,
        PllNsInput,
        I2sf5Input,
        Above, ///< `branch` lies above `limit`
        PllBelow,
        UsbNot48,        ///< to be confirmed
        AdcAbove,        ///< to be confirmed
        AdcNotBelowApb2, ///< to be confirmed
    };

    Kind kind;
    ClockBranch branch = ClockBranch::None;
    double value = 0.0; ///< MHz, of the branch
    double limit = 0.0;
    bool noMultiplier = false; ///< the cause: the PLL input lies in a gap of the multiplier table

    bool isWarning() const { return kind >= Kind::UsbNot48; }
};

/// The state of one clock page: the value object, what is typed and not yet accepted, and what the peripherals use.
/// Works without a window; a canvas draws it and hands its events over as `ClockChange`.
///
/// Questions go through the prompt while a change is applied. Change flags become signals half a second later, so
/// that listeners are told at most twice a second.
class ZV32MCUPLL : public QObject
{
    Q_OBJECT
public:
    /// All that a page holds; copying it keeps a state, `restore` puts it back.
    struct State
    {
        ZV32ConfigCLK clock;
        QString hextText = {};
        bool hextEntered = false; ///< the frequency of the crystal was given, and not only assumed
        QString sclkText = {};
        QString msText = {}; ///< "/4"
        QString nsText = {}; ///< "*144"
        QString i2sf5Text = {};
        double i2sf5Clock = 0.0; ///< accepted external I2S clock, MHz
        double sclkTarget = 0.0; ///< what the last search for SCLK aimed at, and what it reached; MHz
        double sclkReached = 0.0;
        bool freertos = false;
        bool usb = false, usbfs = false, usbfs1 = false, usbfs2 = false, usbhs = false;
        bool adc1 = false, adc2 = false, adc3 = false;
    };

    ZV32MCUPLL(const ClockSeries &series, Scheduler &scheduler, UserPrompt &prompt, QObject *parent = nullptr);
    ~ZV32MCUPLL() override;

    const ClockSeries &series() const { return m_state.clock.series(); }
    const ZV32ConfigCLK &clock() const { return m_state.clock; }
    const State &state() const { return m_state; }
    void restore(const State &state);

    // The one door.
    ClockOutcome apply(const ClockChange &change);
    /// Takes over the PLL's fields, and the USB divider, of another clock of the same series and input.
    void applyPllFields(const ZV32ConfigCLK &solution);

    // What a page shows.
    /// The text of a typed field as it stands in its box, or the present choice.
    QString text(ClockField field) const;
    /// Why an option cannot be chosen now.
    ClockRefusal optionRefusal(ClockField field, double value) const;
    /// Whether the block of the field matters now: its peripheral is in use, or the PLL runs.
    bool isShown(ClockField field) const;
    bool isShown(ClockBranch branch) const;
    bool pllIsShown() const;
    bool usbIsInUse() const { return m_state.clock.Get_TO_USB_Switch(); }
    bool adcIsInUse() const { return m_state.clock.Get_TO_ADC_Switch(); }
    ClockReading reading(ClockBranch branch) const;
    /// "0x00022401", or empty while the PLL has no such register form or is not shown.
    QString pllRegisterText() const;
    bool hextTextIsValid() const;
    bool i2sf5TextIsValid() const;
    /// Whether the SCLK text is a number that the series takes as a target.
    bool sclkTextIsValid() const;
    ClockLimits sclkInputLimits() const;
    /// How far SCLK lies from the frequency that was asked for, in ppm; nothing if it is met or none was asked for.
    std::optional<double> sclkErrorPpm() const;
    /// The best settings of the PLL for what SCLK aims at, best first (ClockSolver.h). `applyPllFields` takes one.
    std::vector<ClockSolution> solutions(int count) const;
    /// Whether anything in use is out of range, or a refused text still stands in its box.
    bool hasError() const;

    // Resets and the design file.
    void ResetAllControl();
    bool SaveToFile(QXmlStreamWriter *writer) const;
    /// What a file says of a field that cannot be so.
    struct Misfit
    {
        ClockField field;
        QString text;
    };
    /// Reads the clock section of a design. A file without one leaves the page as it is; a value that does not fit
    /// takes its fallback and is told.
    std::vector<Misfit> OpenFromFile(const QString &path);
    std::vector<Misfit> OpenFromFile(QIODevice &file);

    /// After a file was read: moves what a crystal would feed that no mode of CRM switches on, and tells of each.
    std::vector<ClockOutcome> leaveStoppedCrystals();

    // What the peripherals use.
    void Set_lext_enable_flag(bool enable);
    void Set_hext_enable_flag(bool enable, bool third);
    void Set_lextbypass_Flag(bool bypass);
    void Set_hextbypass_Flag(bool bypass);
    void Set_USB_Flag(bool on) { setUsbFlag(m_state.usb, on); }
    void Set_USBFS_Flag(bool on) { setUsbFlag(m_state.usbfs, on); }
    void Set_USBFS1_Flag(bool on) { setUsbFlag(m_state.usbfs1, on); }
    void Set_USBFS2_Flag(bool on) { setUsbFlag(m_state.usbfs2, on); }
    void Set_USBHS_Flag(bool on) { setUsbFlag(m_state.usbhs, on); }
    void Set_USART1_Flag(bool on);
    void Set_USART2_Flag(bool on);
    void Set_USART3_Flag(bool on);
    void Set_I2C1_Flag(bool on);
    void Set_ADC1_Flag(bool on) { setAdcFlag(m_state.adc1, on); }
    void Set_ADC2_Flag(bool on) { setAdcFlag(m_state.adc2, on); }
    void Set_ADC3_Flag(bool on) { setAdcFlag(m_state.adc3, on); }
    void Set_ADC_Divider(int divider);
    void Set_I2SF5_Flag(bool on);
    void Set_CAN1_Flag(bool on);
    void Set_CAN2_Flag(bool on);
    void Set_CAN3_Flag(bool on);
    void Set_FREERTOSEnable_Flag(bool on);
    /// The index is that of the pin among the options of the field, 0 for none; another index is ignored.
    void Set_clockoutPinSelectComboBox(int index);
    void Set_clockout1PinSelectComboBox(int index);
    void Set_clockout2PinSelectComboBox(int index);

    // Answers, in MHz and natural dividers.
    double Get_SYSCLK() const { return clock().Get_SYSCLKValue(); }
    double Get_AHBCLK() const { return clock().Get_AHBCLKValue(); }
    double Get_APB1CLK() const { return clock().Get_APB1CLKValue(); }
    double Get_APB1TMRCLK() const { return clock().Get_APB1TMRCLK_Value(); }
    double Get_APB2CLK() const { return clock().Get_APB2CLKValue(); }
    double Get_APB2TMRCLK() const { return clock().Get_APB2TMRCLK_Value(); }
    int Get_SysticDiv() const { return clock().Get_SysticDIV(); }
    int Get_APB1Div() const { return clock().Get_APB1DIV(); }
    int Get_APB2Div() const { return clock().Get_APB2DIV(); }
    int Get_PLLRC() const { return clock().Get_PLLRC(); }
    bool PLLIsEnable() const { return clock().pll_isEnable(); }
    /// The clock of a peripheral instance ("TMR1", "SPI3", "SysTick") or, by "HEXT", of the crystal; 0 for one that the
    /// series does not know and for a crystal that is off.
    double Get_Peripherals_Clock(const QString &instance) const;

    // Before code is generated.
    /// Tells the first fault, asks about each warning, and says whether code may be generated.
    bool GenerateCodeCheck();
    /// All that `GenerateCodeCheck` would find, without asking and without changing anything.
    std::vector<ClockProblem> problems() const;

signals:
    void SendClockChangedSignal();
    void SendClockHaveErrorSignal(bool error);
    void SendUSBClockSourceChangeSignal();
    void SendI2SF5ClockSourceChangeSignal();
    /// Something that the page shows changed; sent at once, for drawing only.
    void refreshed();
    /// A user's change was accepted that a design file holds; what is only typed is not told.
    void edited();

private:
    struct Flags
    {
        bool clock = false;
        bool usb = false;
        bool i2sf5 = false;
    };

    /// What a design file holds of the page.
    QByteArray stored() const;
    ClockOutcome applyToField(const ClockChange &change);
    ClockOutcome applyText(const ClockChange &change);
    ClockOutcome acceptHext(const QString &text);
    ClockOutcome acceptSclk(const QString &text);
    ClockOutcome acceptMsOrNs(ClockField field, const QString &text);
    ClockOutcome acceptI2sf5(const QString &text);
    ClockOutcome applyChoice(ClockField field, double value);
    ClockOutcome resolvePll(bool targetRequired);
    ClockOutcome chooseSclkSource();
    ClockOutcome chooseUsbDivider();
    ClockOutcome chooseUsbSource();

    ClockOutcome Hext_Value_Valid(double &out);
    ClockOutcome Result_SYSCLK_Valid(double &out);
    ClockOutcome takeHextForPll();
    ClockOutcome TextBox_Input_Valid_Check();
    /// The numbers in the MS and NS boxes, with or without their signs; 0 for text that is none.
    int typedMs() const;
    int typedNs() const;
    ClockOutcome checkMsText();
    ClockOutcome checkNsText();
    ClockOutcome UpdateCalculateResult();
    static void updateParamFromResult(ZV32ConfigCLK &clock);
    /// What stood on a crystal that is off now moves to what is always there.
    std::vector<ClockOutcome> leaveCrystal(ClockRefusal whenOff);
    void UpdateParam_From_ResultCLK();
    void Update_Flexible_Controls();
    void UpdateResultControls();
    void report();
    void recalculate();
    void noteTarget(double target);
    ClockOutcome afterSearch() const;
    bool noMultiplierExists(const ZV32ConfigCLK &clock) const;

    void setUsbFlag(bool &flag, bool on);
    void setAdcFlag(bool &flag, bool on);
    void setPinIndex(ClockField field, int index);
    std::vector<ClockProblem> inputProblems() const;
    std::vector<ClockProblem> limitProblems(const ZV32ConfigCLK &clock) const;
    bool tellProblems(const std::vector<ClockProblem> &problems);
    bool offerAdjustment(const char *text, const QString &suggestion);

    void markChanged(bool Flags::*flag);
    void HandleTimeout();

    State m_state;
    Flags m_changed;
    Scheduler &m_scheduler;
    UserPrompt &m_prompt;
};

} // namespace ChipLoom
