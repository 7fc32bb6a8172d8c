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
#include "Gui/Widgets/CustomTabWidget.h"
#include "Gui/Widgets/VerticalScroll.h"
#include "Gui/Workspace/PeripheralPage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStyle>
#include <QTabBar>
#include <QVBoxLayout>

#include <algorithm>

namespace ChipLoom {

namespace {

constexpr QMargins TabMargins{6, 6, 6, 6};

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
    : QWidget(parent), m_design(design), m_module(module), m_panes(new QSplitter(Qt::Vertical, this)),
      m_modeScroll(new VerticalScroll(new QWidget(m_panes))),
      m_modes(new ModeArea(design, module, m_modeScroll->viewport())),
      m_parameters(new IP_ParamSettingWidget(design, module.parameters(), module.instanceName(), this)), m_entry(entry),
      m_configurationTabWidget(new CustomTabWidget), m_configurationInfo(line(Style::Role::Warning)),
      m_ParameterAnnotation(line(Style::Role::Hint)), m_resetButton(new QPushButton(tr("Reset Configuration")))
{
    m_parameters->hide();
    m_configurationInfo->setTextFormat(Qt::RichText);
    m_configurationInfo->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(m_configurationInfo, &QLabel::linkActivated, this, &ModePage::moduleAsked);
    connect(m_modes, &ModeArea::moduleAsked, this, &ModePage::moduleAsked);
    // Outer widgets first, here and elsewhere: a tree of widgets that moves to a new parent costs as much as making it.
    QWidget *upper = m_modeScroll->parentWidget();
    auto *lower = new QWidget(m_panes);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_panes);
    m_modeScroll->setFrameShape(QFrame::StyledPanel);
    m_modeScroll->setWidget(m_modes);

    auto *upperLayout = new QVBoxLayout(upper);
    upperLayout->setContentsMargins(0, 0, 0, 0);
    upperLayout->addWidget(heading(tr("Mode")));
    upperLayout->addWidget(m_modeScroll, 1);
    upperLayout->addWidget(m_configurationInfo);

    auto *lowerHead = new QHBoxLayout;
    lowerHead->addWidget(heading(tr("Configuration")));
    lowerHead->addStretch();
    lowerHead->addWidget(m_resetButton);
    auto *lowerLayout = new QVBoxLayout(lower);
    lowerLayout->setContentsMargins(0, 0, 0, 0);
    lowerLayout->addLayout(lowerHead);
    lowerLayout->addWidget(m_configurationTabWidget, 1);
    lowerLayout->addWidget(m_ParameterAnnotation);

    setTabOrder(m_configurationTabWidget->tabBar(), m_parameters->searchField());
    m_panes->addWidget(upper);
    m_panes->addWidget(lower);
    m_panes->setChildrenCollapsible(false);
    upper->installEventFilter(this);
    connect(m_panes, &QSplitter::splitterMoved, this, [this] { m_hasOwnShares = true; });

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
    connect(&design, &Design::pinsChanged, this, &ModePage::renewRemarks);
    connect(&module.parameters(), &IP_ParamSettingConfiguration::SendIPParamStatus, this, &ModePage::refresh);
    if (design.nvic())
        connect(design.nvic(), &NVIC_Configuration::SendRefreshNVIC, this, &ModePage::HandleConfigurationTabWidget);
    if (design.gpio())
        connect(design.gpio(), &GPIO_Configuration::SendGPIOSettingChangeSignals, this,
                &ModePage::HandleConfigurationTabWidget);
    declareTabs();
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
    if (m_configurationTabWidget->indexOf(m_parameters) >= 0)
        showParameterStatus();
    sharePanes();
}

void ModePage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    sharePanes();
}

bool ModePage::eventFilter(QObject *watched, QEvent *event)
{
    // A note comes or goes beneath the modes.
    if (event->type() == QEvent::LayoutRequest) {
        m_panes->widget(0)->layout()->activate();
        sharePanes();
    }
    return QWidget::eventFilter(watched, event);
}

/// The modes take what they need, up to three tenths, and the note beneath them is whole; the rest is for the
/// parameters.
void ModePage::sharePanes()
{
    if (m_hasOwnShares || !isVisible())
        return;
    const auto wanted = [](const QWidget *widget, int width) {
        return widget->hasHeightForWidth() ? widget->heightForWidth(width) : widget->sizeHint().height();
    };
    const int frame = 2 * m_modeScroll->frameWidth();
    const QSize least = m_modeScroll->minimumSizeHint();
    const int around =
        wanted(m_panes->widget(0), m_panes->width()) - m_modeScroll->sizeHint().expandedTo(least).height();
    const int modes = std::max(wanted(m_modes, m_panes->width() - frame) + frame, least.height());
    const int upper = std::min(around + modes, std::max(m_panes->height() * 3 / 10, around + least.height()));
    if (m_panes->sizes().first() != upper)
        m_panes->setSizes({upper, m_panes->height() - m_panes->handleWidth() - upper});
}

void ModePage::declareTabs()
{
    const auto add = [this](std::optional<ConfigurationTab> kind, const QString &title, auto wanted, auto make) {
        m_tabs.push_back({kind, title, std::move(wanted), std::move(make)});
    };
    const QString instance = m_module.instanceName();
    add(
        ConfigurationTab::Parameters, tr("Parameters Settings"), [this] { return wantsParameters(); }, nullptr);
    m_tabs.back().page = m_parameters;
    for (DMA_Configuration *dma : m_design.dmaParts())
        add(
            ConfigurationTab::Dma, tr("%1 Settings").arg(dma->typeName()),
            [this, dma, instance] { return hasTab(ConfigurationTab::Dma) && dma->hasRequests(instance); },
            [this, dma, instance](QWidget *parent) {
                m_ListDMASettingWidget.append(new DMASettingWidget(m_design, *dma, instance, parent));
                return m_ListDMASettingWidget.last();
            });
    add(
        ConfigurationTab::Nvic, tr("NVIC Settings"), [this] { return wantsInterrupts(); },
        [this](QWidget *parent) { return makeInterrupts(parent); });
    add(
        ConfigurationTab::Interrupts, tr("Interrupts Settings"), [this] { return wantsEvents(); },
        [this](QWidget *parent) { return makeEvents(parent); });
    add(
        ConfigurationTab::Gpio, tr("GPIO Settings"), [this] { return wantsPins(); },
        [this](QWidget *parent) { return makePins(parent); });
    const bool withSignals = !m_design.signalsOf(m_entry.InstanceName).isEmpty();
    add(
        std::nullopt, withSignals ? tr("Signals") : tr("About"), [] { return true; },
        [this](QWidget *parent) { return new PeripheralPage(m_design, m_entry, parent); });
    connect(m_configurationTabWidget, &QTabWidget::currentChanged, this, &ModePage::makeShownTab);
}

bool ModePage::hasTab(ConfigurationTab kind) const
{
    return m_module.tabs().contains(kind);
}

bool ModePage::wantsParameters() const
{
    return hasTab(ConfigurationTab::Parameters) && !m_module.parameters().GetRefParameterList().isEmpty();
}

bool ModePage::wantsInterrupts() const
{
    return hasTab(ConfigurationTab::Nvic) && m_design.nvic() &&
           !m_design.nvic()->vectorsOf(m_module.instanceName()).isEmpty();
}

bool ModePage::wantsEvents() const
{
    const QList<RefParameter> &parameters = m_module.parameters().GetRefParameterList();
    return hasTab(ConfigurationTab::Interrupts) &&
           std::any_of(parameters.begin(), parameters.end(), isInterruptParameter);
}

bool ModePage::wantsPins() const
{
    return hasTab(ConfigurationTab::Gpio) && m_design.gpio() &&
           !m_design.gpio()->rowsOf(m_module.instanceName()).isEmpty();
}

QWidget *ModePage::makeInterrupts(QWidget *parent)
{
    m_NVICSettingWidget = new NVIC_Settings(m_design, m_module.instanceName(), parent);
    connect(m_NVICSettingWidget, &NVIC_Settings::refused, this, &ModePage::showRefusedValue);
    return m_NVICSettingWidget;
}

QWidget *ModePage::makeEvents(QWidget *parent)
{
    auto *events = new Interrupt_Settings(m_design, m_module, parent);
    connect(events, &Interrupt_Settings::refused, this, &ModePage::showRefusedValue);
    return events;
}

QWidget *ModePage::makePins(QWidget *parent)
{
    m_GPIOSettingWidget = new GPIOSettingWidget(m_design, m_module.instanceName(), parent);
    connect(m_GPIOSettingWidget, &GPIOSettingWidget::refused, this, &ModePage::showRefusedValue);
    return m_GPIOSettingWidget;
}

/// Puts the page in the place of what held its tab.
void ModePage::makeTab(Tab &tab)
{
    if (tab.page)
        return;
    tab.page = tab.make(tab.place ? tab.place->parentWidget() : this);
    tab.page->setContentsMargins(TabMargins);
    const int index = tab.place ? m_configurationTabWidget->indexOf(tab.place) : -1;
    if (index < 0) {
        tab.page->hide();
    } else {
        const QSignalBlocker quiet(m_configurationTabWidget);
        const int shown = m_configurationTabWidget->currentIndex();
        m_configurationTabWidget->removeTab(index);
        m_configurationTabWidget->insertTab(index, tab.page, tab.title);
        m_configurationTabWidget->setCurrentIndex(shown);
    }
    delete tab.place;
    tab.place = nullptr;
}

void ModePage::makeTabs(ConfigurationTab kind)
{
    for (Tab &tab : m_tabs) {
        if (tab.kind == kind && tab.wanted())
            makeTab(tab);
    }
}

void ModePage::makeShownTab()
{
    const QWidget *shown = m_configurationTabWidget->currentWidget();
    for (Tab &tab : m_tabs) {
        if (tab.place && tab.place == shown) {
            makeTab(tab);
            return;
        }
    }
}

NVIC_Settings *ModePage::interruptTable()
{
    makeTabs(ConfigurationTab::Nvic);
    return m_NVICSettingWidget;
}

GPIOSettingWidget *ModePage::pinTable()
{
    makeTabs(ConfigurationTab::Gpio);
    return m_GPIOSettingWidget;
}

const QList<DMASettingWidget *> &ModePage::GetDMASettingWidget()
{
    makeTabs(ConfigurationTab::Dma);
    return m_ListDMASettingWidget;
}

void ModePage::HandleConfigurationTabWidget()
{
    const bool parameters = wantsParameters();
    const bool parametersCome = parameters && m_configurationTabWidget->indexOf(m_parameters) < 0;
    {
        const QSignalBlocker quiet(m_configurationTabWidget);
        int position = 0;
        for (Tab &tab : m_tabs) {
            QWidget *page = tab.page ? tab.page : tab.place;
            const int shown = page ? m_configurationTabWidget->indexOf(page) : -1;
            const bool wanted = tab.wanted();
            if (wanted && shown < 0) {
                if (!page)
                    page = tab.place = new QWidget(this);
                m_configurationTabWidget->insertTab(position, page, tab.title);
            } else if (!wanted && shown >= 0) {
                m_configurationTabWidget->removeTab(shown);
            }
            position += wanted ? 1 : 0;
        }
        if (parametersCome)
            m_configurationTabWidget->setCurrentWidget(m_parameters);
    }
    makeShownTab();
    if (parameters)
        showParameterStatus();
}

// What the drawing beside the page takes from another peripheral may be what a choice here needs.
void ModePage::renewRemarks()
{
    if (!m_parameters->isVisible() || !m_module.parameters().hasRemarkedChoices())
        return;
    m_parameters->refresh();
    showParameterStatus();
}

void ModePage::showParameterStatus()
{
    const bool bad = m_module.parameters().GetParamStatusFlag() == IPPARAMSTATUS_ERROR;
    QIcon icon;
    if (bad)
        icon = QIcon(QStringLiteral(":/image/danger32.png"));
    else if (m_module.parameters().hasWarnings())
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
