#pragma once

#include "Design/Explanations.h"
#include "Model/ShareParameter.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QTabWidget;

namespace ChipLoom {

class Design;
class ModuleConfiguration;
class IP_ParamSettingWidget;
class ModeArea;
class DMASettingWidget;
class GPIOSettingWidget;
class Interrupt_Settings;
class NVIC_Settings;
class PeripheralPage;

/// The page of a peripheral or middleware: modes above, parameters and signals in tabs below, and a line for notes and
/// refusals.
class ModePage : public QWidget
{
    Q_OBJECT
public:
    /// `entry` is the module's entry of the device's list, with texts of the current language.
    ModePage(Design &design, ModuleConfiguration &module, const PeripheralsBaseInfo &entry, QWidget *parent = nullptr);

    ModeArea *modeArea() const { return m_modes; }
    IP_ParamSettingWidget *parameterList() const { return m_parameters; }
    /// Null until the peripheral has interrupts, or pins, to set.
    NVIC_Settings *interruptTable() const { return m_NVICSettingWidget; }
    GPIOSettingWidget *pinTable() const { return m_GPIOSettingWidget; }
    /// One for each controller that serves requests of the peripheral.
    const QList<DMASettingWidget *> &GetDMASettingWidget() const { return m_ListDMASettingWidget; }
    QTabWidget *tabs() const { return m_configurationTabWidget; }
    QLabel *noteLine() const { return m_configurationInfo; }

signals:
    /// The user follows a link to another module.
    void moduleAsked(const QString &instance);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void refresh();
    void HandleConfigurationTabWidget();
    void showTab(int &position, QWidget *page, const QString &title, bool wanted);
    void showDmaTabs(int &position);
    bool wantsInterrupts();
    bool wantsEvents();
    bool wantsPins();
    void showRefusal(const Explanation &reason);
    void showRefusedValue(const QString &reason);
    void ResetConfigurationClickedSlot();

    Design &m_design;
    ModuleConfiguration &m_module;
    ModeArea *m_modes;
    IP_ParamSettingWidget *m_parameters;
    NVIC_Settings *m_NVICSettingWidget = nullptr;
    Interrupt_Settings *m_InterruptsWidget = nullptr;
    GPIOSettingWidget *m_GPIOSettingWidget = nullptr;
    PeripheralPage *m_signals;
    QList<DMASettingWidget *> m_ListDMASettingWidget;
    QTabWidget *m_configurationTabWidget;
    QLabel *m_configurationInfo;
    QLabel *m_ParameterAnnotation;
    QPushButton *m_resetButton;
};

} // namespace ChipLoom
