#pragma once

#include "Model/ShareParameter.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QTabWidget;

namespace ChipLoom {

class Design;
class IP_ModeAndConfiguration;
class IP_ParamSettingWidget;
class ModeArea;
class GPIOSettingWidget;
class Interrupt_Settings;
class NVIC_Settings;

/// The page of a peripheral: modes above, parameters and signals in tabs below, and a line for notes and refusals.
class ModePage : public QWidget
{
    Q_OBJECT
public:
    /// `module` is the peripheral's entry of the device's list, with texts of the current language.
    ModePage(Design &design, IP_ModeAndConfiguration &peripheral, const PeripheralsBaseInfo &module,
             QWidget *parent = nullptr);

    ModeArea *modeArea() const { return m_modes; }
    IP_ParamSettingWidget *parameterList() const { return m_parameters; }
    /// Null until the peripheral has interrupts, or pins, to set.
    NVIC_Settings *interruptTable() const { return m_NVICSettingWidget; }
    GPIOSettingWidget *pinTable() const { return m_GPIOSettingWidget; }
    QTabWidget *tabs() const { return m_configurationTabWidget; }
    QLabel *noteLine() const { return m_configurationInfo; }

protected:
    void showEvent(QShowEvent *event) override;

private:
    void refresh();
    void HandleConfigurationTabWidget();
    void showTab(int &position, QWidget *page, const QString &title, bool wanted);
    bool wantsInterrupts();
    bool wantsEvents();
    bool wantsPins();
    void showRefusal(const QString &reason);
    void ResetConfigurationClickedSlot();

    Design &m_design;
    IP_ModeAndConfiguration &m_peripheral;
    ModeArea *m_modes;
    IP_ParamSettingWidget *m_parameters;
    NVIC_Settings *m_NVICSettingWidget = nullptr;
    Interrupt_Settings *m_InterruptsWidget = nullptr;
    GPIOSettingWidget *m_GPIOSettingWidget = nullptr;
    QWidget *m_signals;
    QTabWidget *m_configurationTabWidget;
    QLabel *m_configurationInfo;
    QLabel *m_ParameterAnnotation;
    QPushButton *m_resetButton;
};

} // namespace ChipLoom
