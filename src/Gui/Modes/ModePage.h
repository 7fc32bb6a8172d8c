#pragma once

#include "Design/Explanations.h"
#include "Design/ModeFamilies.h"
#include "Model/ShareParameter.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

class QLabel;
class QPushButton;
class QScrollArea;
class QSplitter;
class QTabWidget;

namespace ChipLoom {

class Design;
class ModuleConfiguration;
class IP_ParamSettingWidget;
class ModeArea;
class DMASettingWidget;
class GPIOSettingWidget;
class NVIC_Settings;

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
    // The pages of the tabs are made when they are first shown, or asked for here.

    /// Null until the peripheral has interrupts, or pins, to set.
    NVIC_Settings *interruptTable();
    GPIOSettingWidget *pinTable();
    /// One for each controller that serves requests of the peripheral.
    const QList<DMASettingWidget *> &GetDMASettingWidget();
    QTabWidget *tabs() const { return m_configurationTabWidget; }
    QLabel *noteLine() const { return m_configurationInfo; }

signals:
    /// The user follows a link to another module.
    void moduleAsked(const QString &instance);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Tab
    {
        std::optional<ConfigurationTab> kind; ///< nothing for the signals, which every module has
        QString title;
        std::function<bool()> wanted;
        std::function<QWidget *(QWidget *parent)> make;
        QWidget *page = nullptr;  ///< null until it was made
        QWidget *place = nullptr; ///< what holds the tab before
    };

    void refresh();
    void sharePanes();
    void declareTabs();
    void HandleConfigurationTabWidget();
    void showParameterStatus();
    void renewRemarks();
    void makeTab(Tab &tab);
    void makeTabs(ConfigurationTab kind);
    void makeShownTab();
    bool hasTab(ConfigurationTab kind) const;
    bool wantsParameters() const;
    bool wantsInterrupts() const;
    bool wantsEvents() const;
    bool wantsPins() const;
    QWidget *makeInterrupts(QWidget *parent);
    QWidget *makeEvents(QWidget *parent);
    QWidget *makePins(QWidget *parent);
    void showRefusal(const Explanation &reason);
    void showRefusedValue(const QString &reason);
    void ResetConfigurationClickedSlot();

    Design &m_design;
    ModuleConfiguration &m_module;
    QSplitter *m_panes;
    QScrollArea *m_modeScroll;
    ModeArea *m_modes;
    IP_ParamSettingWidget *m_parameters;
    NVIC_Settings *m_NVICSettingWidget = nullptr;
    GPIOSettingWidget *m_GPIOSettingWidget = nullptr;
    PeripheralsBaseInfo m_entry;
    QList<DMASettingWidget *> m_ListDMASettingWidget;
    std::vector<Tab> m_tabs; ///< in their order, those not wanted now included
    QTabWidget *m_configurationTabWidget;
    QLabel *m_configurationInfo;
    QLabel *m_ParameterAnnotation;
    QPushButton *m_resetButton;
    bool m_hasOwnShares = false; ///< the user drew the line between the panes
};

} // namespace ChipLoom
