#include "Gui/Modes/ModePage.h"

#include "Design/DMA_Configuration.h"
#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/GPIO_Configuration.h"
#include "Design/ModuleConfiguration.h"
#include "Design/NVIC_Configuration.h"
#include "Design/ParameterChecks.h"
#include "Gui/App/Style.h"
#include "Gui/Modes/IP_ParamSettingWidget.h"
#include "Gui/Modes/ModeArea.h"
#include "Gui/Modes/ModeTexts.h"
#include "Gui/Settings/DMASettingWidget.h"
#include "Gui/Settings/GPIOSettingWidget.h"
#include "Gui/Settings/Interrupt_Settings.h"
#include "Gui/Settings/NVIC_Settings.h"
#include "Gui/Workspace/PeripheralPage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace ChipLoom {

namespace {

QLabel *heading(const QString &text)
{
    auto *label = new QLabel(text);
    label->setFont(Style::font(10, true));
    return label;
}

QLabel *line(Style::Role role)
{
    auto *label = new QLabel;
    Style::setRole(label, role);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->hide();
    return label;
}

void setLine(QLabel *label, const QString &text)
{
    label->setText(text);
    label->setVisible(!text.isEmpty());
}

} // namespace

ModePage::ModePage(Design &design, ModuleConfiguration &module, const PeripheralsBaseInfo &entry, QWidget *parent)
    : QWidget(parent), m_design(design), m_module(module), m_modes(new ModeArea(design, module)),
      m_parameters(new IP_ParamSettingWidget(design, module.parameters(), module.instanceName(), this)),
      m_signals(new PeripheralPage(design, entry, this)), m_configurationTabWidget(new QTabWidget),
      m_configurationInfo(line(Style::Role::Warning)), m_ParameterAnnotation(line(Style::Role::Hint)),
      m_resetButton(new QPushButton(tr("Reset Configuration")))
{
    m_parameters->hide();
    m_configurationInfo->setTextFormat(Qt::RichText);
    m_configurationInfo->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(m_configurationInfo, &QLabel::linkActivated, this, &ModePage::moduleAsked);
    connect(m_modes, &ModeArea::moduleAsked, this, &ModePage::moduleAsked);
    auto *modeScroll = new QScrollArea;
    modeScroll->setWidgetResizable(true);
    modeScroll->setWidget(m_modes);

    auto *upper = new QWidget;
    auto *upperLayout = new QVBoxLayout(upper);
    upperLayout->setContentsMargins(0, 0, 0, 0);
    upperLayout->addWidget(heading(tr("Mode")));
    upperLayout->addWidget(modeScroll, 1);
    upperLayout->addWidget(m_configurationInfo);

    auto *lower = new QWidget;
    auto *lowerHead = new QHBoxLayout;
    lowerHead->addWidget(heading(tr("Configuration")));
    lowerHead->addStretch();
    lowerHead->addWidget(m_resetButton);
    auto *lowerLayout = new QVBoxLayout(lower);
    lowerLayout->setContentsMargins(0, 0, 0, 0);
    lowerLayout->addLayout(lowerHead);
    lowerLayout->addWidget(m_configurationTabWidget, 1);
    lowerLayout->addWidget(m_ParameterAnnotation);

    auto *panes = new QSplitter(Qt::Vertical);
    panes->addWidget(upper);
    panes->addWidget(lower);
    panes->setSizes({30000, 70000});
    panes->setChildrenCollapsible(false);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(panes);

    connect(m_modes, &ModeArea::refused, this, &ModePage::showRefusal);
    connect(m_modes, &ModeArea::remarkAsked, this,
            [this](const QString &remark) { setLine(m_ParameterAnnotation, remark); });
    connect(m_parameters, &IP_ParamSettingWidget::refused, this, [this](const QString &reason) {
        showRefusal({reason, {}});
    });
    connect(m_parameters, &IP_ParamSettingWidget::noteChanged, this,
            [this](const QString &note) { setLine(m_ParameterAnnotation, note); });
    connect(m_parameters, &IP_ParamSettingWidget::moduleAsked, this, &ModePage::moduleAsked);
    connect(m_resetButton, &QPushButton::clicked, this, &ModePage::ResetConfigurationClickedSlot);
    connect(&module, &ModuleConfiguration::modesChanged, this, &ModePage::refresh);
    connect(&module.parameters(), &IP_ParamSettingConfiguration::SendIPParamStatus, this, &ModePage::refresh);
    if (design.nvic())
        connect(design.nvic(), &NVIC_Configuration::SendRefreshNVIC, this, &ModePage::HandleConfigurationTabWidget);
    if (design.gpio())
        connect(design.gpio(), &GPIO_Configuration::SendGPIOSettingChangeSignals, this,
                &ModePage::HandleConfigurationTabWidget);
    refresh();
}

void ModePage::refresh()
{
    // The entries' states ask the pins; a hidden page asks when it is shown.
    if (isVisible() || m_configurationTabWidget->count() == 0)
        m_modes->refresh();
    const ModeNote &note = m_module.note();
    const Explanation links = explained(m_design, note.reason, m_module.instanceName());
    setLine(m_configurationInfo, withLinks({noteText(m_module), links.modules}));
    m_resetButton->setEnabled(m_module.GetIPValidFlag());
    HandleConfigurationTabWidget();
}

void ModePage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_modes->refresh();
}

/// Puts a page at its place among the tabs, or takes it out.
void ModePage::showTab(int &position, QWidget *page, const QString &title, bool wanted)
{
    const int shown = page ? m_configurationTabWidget->indexOf(page) : -1;
    if (wanted && shown < 0)
        m_configurationTabWidget->insertTab(position, page, title);
    else if (wanted)
        m_configurationTabWidget->setTabText(shown, title);
    else if (shown >= 0)
        m_configurationTabWidget->removeTab(shown);
    if (wanted)
        ++position;
}

void ModePage::showDmaTabs(int &position)
{
    const bool wanted = m_module.tabs().contains(ConfigurationTab::Dma);
    if (wanted && m_ListDMASettingWidget.isEmpty()) {
        for (DMA_Configuration *dma : m_design.dmaParts()) {
            if (!dma->hasRequests(m_module.instanceName()))
                continue;
            auto *page = new DMASettingWidget(m_design, *dma, m_module.instanceName(), this);
            page->setObjectName(dma->typeName());
            page->hide();
            m_ListDMASettingWidget.append(page);
        }
    }
    for (DMASettingWidget *page : qAsConst(m_ListDMASettingWidget))
        showTab(position, page, tr("%1 Settings").arg(page->objectName()), wanted);
}

bool ModePage::wantsInterrupts()
{
    if (!m_module.tabs().contains(ConfigurationTab::Nvic) || !m_design.nvic() ||
        m_design.nvic()->vectorsOf(m_module.instanceName()).isEmpty())
        return false;
    if (!m_NVICSettingWidget) {
        m_NVICSettingWidget = new NVIC_Settings(m_design, m_module.instanceName(), this);
        m_NVICSettingWidget->hide();
        connect(m_NVICSettingWidget, &NVIC_Settings::refused, this, &ModePage::showRefusedValue);
    }
    return true;
}

bool ModePage::wantsEvents()
{
    const QList<RefParameter> &parameters = m_module.parameters().GetRefParameterList();
    if (!m_module.tabs().contains(ConfigurationTab::Interrupts) ||
        std::none_of(parameters.begin(), parameters.end(), isInterruptParameter))
        return false;
    if (!m_InterruptsWidget) {
        m_InterruptsWidget = new Interrupt_Settings(m_design, m_module, this);
        m_InterruptsWidget->hide();
        connect(m_InterruptsWidget, &Interrupt_Settings::refused, this, [this](const QString &reason) {
            showRefusal({reason, {}});
        });
    }
    return true;
}

bool ModePage::wantsPins()
{
    if (!m_module.tabs().contains(ConfigurationTab::Gpio) || !m_design.gpio() ||
        m_design.gpio()->rowsOf(m_module.instanceName()).isEmpty())
        return false;
    if (!m_GPIOSettingWidget) {
        m_GPIOSettingWidget = new GPIOSettingWidget(m_design, m_module.instanceName(), this);
        m_GPIOSettingWidget->hide();
        connect(m_GPIOSettingWidget, &GPIOSettingWidget::refused, this, &ModePage::showRefusedValue);
    }
    return true;
}

void ModePage::HandleConfigurationTabWidget()
{
    const bool parameters = m_module.tabs().contains(ConfigurationTab::Parameters) &&
                            !m_module.parameters().GetRefParameterList().isEmpty();
    const bool parametersCome = parameters && m_configurationTabWidget->indexOf(m_parameters) < 0;
    const bool interrupts = wantsInterrupts();
    const bool events = wantsEvents();
    const bool pins = wantsPins();
    int position = 0;
    showTab(position, m_parameters, tr("Parameters Settings"), parameters);
    showDmaTabs(position);
    showTab(position, m_NVICSettingWidget, tr("NVIC Settings"), interrupts);
    showTab(position, m_InterruptsWidget, tr("Interrupts Settings"), events);
    showTab(position, m_GPIOSettingWidget, tr("GPIO Settings"), pins);
    showTab(position, m_signals, m_signals->signalTable()->isHidden() ? tr("About") : tr("Signals"), true);
    if (!parameters)
        return;
    if (parametersCome)
        m_configurationTabWidget->setCurrentWidget(m_parameters);
    const bool bad = m_module.parameters().GetParamStatusFlag() == IPPARAMSTATUS_ERROR;
    QIcon icon;
    if (bad)
        icon = QIcon(QStringLiteral(":/image/danger32.png"));
    else if (!m_module.parameters().warnings().isEmpty())
        icon = style()->standardIcon(QStyle::SP_MessageBoxWarning);
    m_configurationTabWidget->setTabIcon(m_configurationTabWidget->indexOf(m_parameters), icon);
}

void ModePage::showRefusal(const Explanation &reason)
{
    setLine(m_configurationInfo, withLinks(reason));
}

void ModePage::showRefusedValue(const QString &reason)
{
    showRefusal({reason, {}});
}

void ModePage::ResetConfigurationClickedSlot()
{
    PromptRequest request;
    request.kind = PromptRequest::Kind::Warning;
    request.title = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Warning"));
    request.text = QLatin1String(
        QT_TRANSLATE_NOOP("Prompt", "The current configuration will be reset. Please confirm whether to continue?"));
    request.buttons = QStringList{QT_TRANSLATE_NOOP("Prompt", "Yes"), QT_TRANSLATE_NOOP("Prompt", "Cancel")};
    request.defaultButton = 1;
    if (m_design.prompt().ask(request) == 0)
        m_design.apply({QStringLiteral("reset"), m_module.instanceName(), {}});
}

} // namespace ChipLoom
