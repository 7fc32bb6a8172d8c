#include "Gui/Workspace/FormConfiguration.h"

#include "Design/DMA_Configuration.h"
#include "Design/GPIO_Configuration.h"
#include "Design/ModuleConfiguration.h"
#include "Design/NVIC_Configuration.h"
#include "Gui/App/FileChooser.h"
#include "Gui/App/Language.h"
#include "Gui/App/Style.h"
#include "Gui/ChipView/ChipScene.h"
#include "Gui/ChipView/ChipView.h"
#include "Gui/Clock/ZV32PLLConfigPage.h"
#include "Gui/Modes/ModePage.h"
#include "Gui/Settings/DMASettingWidget.h"
#include "Gui/Settings/GPIOSettingWidget.h"
#include "Gui/Settings/GPIO_ConfigurationPage.h"
#include "Gui/Settings/NVIC_Settings.h"
#include "Gui/Workspace/ConfigurationPane.h"
#include "Gui/Workspace/LoadingProgress.h"
#include "Gui/Workspace/PeripheralPage.h"
#include "Gui/Workspace/PeripheralsConfig.h"
#include "Gui/Workspace/WorkspacePrompts.h"
#include "Middlewares/Middlewares.h"

#include <QCloseEvent>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QStackedWidget>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace ChipLoom {

using namespace WorkspacePrompts;

namespace {

constexpr QSize PreferredSize{1350, 860};
constexpr int RecoveryInterval = 3000; // ms
constexpr int TreeWidth = 235;
constexpr int ConfigurationWidth = 500;
constexpr int LeastDrawing = 320;

} // namespace

FormConfiguration::FormConfiguration(const XMLOperation &xml, Settings &settings, UserPrompt &prompt, QWidget *parent)
    : QMainWindow(parent), m_xmlOperation(xml), m_settings(settings), m_prompt(prompt), m_design(xml.paths(), prompt),
      m_recovery(m_design, xml.paths().recoveryDir()), m_fileChooser(&FileChooser::dialogs())
{
    registerMiddlewares(m_design);
    m_design.scheduler().setRealTime(true);
    createPages();
    createMenus();
    connect(&m_design, &Design::opened, this, &FormConfiguration::showModules);
    connect(&m_design, &Design::closing, m_ModeAndConfiguration, &ConfigurationPane::clearPages);
    connect(&m_design, &Design::modifiedChanged, this, &FormConfiguration::showDeviceName);
    connect(&m_recoveryTimer, &QTimer::timeout, this, [this] { m_recovery.update(); });
    m_recoveryTimer.start(RecoveryInterval);
    connect(&m_design, &Design::cleared, this, &FormConfiguration::showModules);
    connect(&m_design, &Design::statusChanged, m_PeripheralsConfig, &PeripheralsConfig::ReceiveIPStatusFlag);
    connect(m_PeripheralsConfig, &PeripheralsConfig::SendIPName, this, &FormConfiguration::GetSelectIPName);
    connect(m_PinLayoutView, &ChipView::signalChosen, this, &FormConfiguration::showSignalOwner);
    connect(m_PinLayoutView, &ChipView::moduleAsked, m_PeripheralsConfig, &PeripheralsConfig::choose);
    connect(m_PinLayoutView->scene(), &ChipScene::menuRequested, this,
            [this](int pinNumber) { selectPinRow(QString(), pinNumber); });
    TranslatorUI();
    PINConfig_PushButton_Clicked();
    // The frame is the window manager's and not known yet: room is left for a title bar.
    const QSize available = screen()->availableGeometry().size();
    resize(PreferredSize.boundedTo(available - QSize(0, style()->pixelMetric(QStyle::PM_TitleBarHeight))));
    // On a small screen the drawing gives first, which can be read at any size.
    const int drawing = std::max(LeastDrawing, width() - TreeWidth - ConfigurationWidth);
    m_pinConfigForm->setSizes({TreeWidth, std::min(ConfigurationWidth, width() - TreeWidth - drawing), drawing});
}

FormConfiguration::~FormConfiguration()
{
    // The panes look at the design until their end.
    delete centralWidget();
}

void FormConfiguration::createPages()
{
    auto *bar = new QWidget;
    Style::setRole(bar, Style::Role::TitleBar);
    m_deviceName = new QLabel;
    m_deviceName->setFont(Style::font(14, true));
    m_deviceName->setTextFormat(Qt::PlainText);
    m_PINConfig_PushButton = new QPushButton;
    Style::setRole(m_PINConfig_PushButton, Style::Role::Page);
    connect(m_PINConfig_PushButton, &QPushButton::clicked, this, &FormConfiguration::PINConfig_PushButton_Clicked);
    m_ClockConfig_PushButton = new QPushButton;
    Style::setRole(m_ClockConfig_PushButton, Style::Role::Page);
    connect(m_ClockConfig_PushButton, &QPushButton::clicked, this, &FormConfiguration::ClockConfig_PushButton_Clicked);
    connect(&m_design.clock(), &ZV32PLLConfig::SendClockHaveErrorSignal, this, &FormConfiguration::showClockError);
    connect(&m_design.clock(), &ZV32PLLConfig::pageChanged, this, [this] { showClockError(false); });
    auto *barLayout = new QHBoxLayout(bar);
    barLayout->setContentsMargins(8, 4, 8, 4);
    barLayout->addWidget(m_PINConfig_PushButton);
    barLayout->addWidget(m_ClockConfig_PushButton);
    barLayout->addStretch();
    barLayout->addWidget(m_deviceName);

    m_PeripheralsConfig = new PeripheralsConfig;
    m_ModeAndConfiguration = new ConfigurationPane([this](const PeripheralsBaseInfo &module) -> QWidget * {
        if (ModuleConfiguration *part = m_design.module(module.InstanceName)) {
            auto *page = new ModePage(m_design, *part, module);
            connect(page, &ModePage::moduleAsked, m_PeripheralsConfig, &PeripheralsConfig::choose);
            return page;
        }
        if (m_design.gpio() && module.InstanceName == m_design.gpio()->instanceName())
            return new GPIO_ConfigurationPage(m_design);
        if (m_design.nvic() && module.InstanceName == m_design.nvic()->instanceName())
            return new NVIC_Settings(m_design, QString());
        for (DMA_Configuration *dma : m_design.dmaParts()) {
            if (module.InstanceName == dma->instanceName())
                return new DMASettingWidget(m_design, *dma, QString());
        }
        return new PeripheralPage(m_design, module);
    });
    m_PinLayoutView = new ChipView(m_design);
    m_pinConfigForm = new QSplitter(Qt::Horizontal);
    for (QWidget *pane : std::initializer_list<QWidget *>{m_PeripheralsConfig, m_ModeAndConfiguration, m_PinLayoutView})
        m_pinConfigForm->addWidget(pane);
    m_pinConfigForm->setStretchFactor(0, 0);
    m_pinConfigForm->setStretchFactor(1, 1);
    m_pinConfigForm->setStretchFactor(2, 1);
    m_pinConfigForm->setChildrenCollapsible(false);

    m_pages = new QStackedWidget;
    m_pages->addWidget(m_pinConfigForm);
    m_clockConfigForm = new ZV32PLLConfigPage(m_design.clock());
    m_pages->addWidget(m_clockConfigForm);
    auto *content = new QWidget;
    Style::setRole(content, Style::Role::Window);
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(bar);
    layout->addWidget(m_pages, 1);
    setCentralWidget(content);
}

void FormConfiguration::createMenus()
{
    m_fileMenu = menuBar()->addMenu(QString());
    m_newDesignAction = m_fileMenu->addAction(QString(), this, &FormConfiguration::NewProject_Action_Triggered);
    m_newDesignAction->setShortcut(QKeySequence::New);
    m_openDesignAction = m_fileMenu->addAction(QString(), this, &FormConfiguration::OpenProject_Action_Triggered);
    m_openDesignAction->setShortcut(QKeySequence::Open);
    m_saveDesignAction = m_fileMenu->addAction(QString(), this, &FormConfiguration::SaveProject_Action_Triggered);
    m_saveDesignAction->setShortcut(QKeySequence::Save);
    m_saveAsAction = m_fileMenu->addAction(QString(), this, &FormConfiguration::SaveAsProject_Action_Triggered);
    m_saveAsAction->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    m_recentMenu = m_fileMenu->addMenu(QString());
    m_recentMenu->setObjectName(QStringLiteral("recentDesigns"));
    connect(m_recentMenu, &QMenu::aboutToShow, this, &FormConfiguration::CreateResentlyDesignMenu);

    m_viewMenu = menuBar()->addMenu(QString());
    m_toolSeparator = m_viewMenu->addSeparator();
    m_resetAction = m_viewMenu->addAction(QString(), this, &FormConfiguration::AllConfigReset);

    // In the menu bar itself: the main thing to do with a design.
    m_generateAction = menuBar()->addAction(QString(), this, &FormConfiguration::GeneralCode_Action_Triggered);
    m_generateAction->setShortcut(QKeySequence(QStringLiteral("Ctrl+G")));

    m_languageMenu = menuBar()->addMenu(QString());
    m_englishAction = m_languageMenu->addAction(QString(), this, &FormConfiguration::English_Action_Triggered);
    m_chineseAction = m_languageMenu->addAction(QString(), this, &FormConfiguration::Chinese_Action_Triggered);
}

void FormConfiguration::TranslatorUI()
{
    m_fileMenu->setTitle(tr("&File"));
    m_newDesignAction->setText(tr("New Design"));
    m_openDesignAction->setText(tr("Open Design"));
    m_saveDesignAction->setText(tr("Save Design"));
    m_saveAsAction->setText(tr("Design Save As"));
    m_recentMenu->setTitle(tr("Resent Design"));
    m_viewMenu->setTitle(tr("&Tools"));
    m_generateAction->setText(tr("&Generate code"));
    m_resetAction->setText(tr("Reset All Configurations"));
    m_languageMenu->setTitle(tr("&Language"));
    m_englishAction->setText(tr("English"));
    m_chineseAction->setText(tr("Chinese"));
    const bool chinese = GlobalLanguage::g_CurrentLanguage == UI_CH;
    m_englishAction->setIcon(
        QIcon(chinese ? QStringLiteral(":/image/icon_EN02.png") : QStringLiteral(":/image/icon_EN01.png")));
    m_chineseAction->setIcon(
        QIcon(chinese ? QStringLiteral(":/image/icon_ZH01.png") : QStringLiteral(":/image/icon_ZH02.png")));
    m_PINConfig_PushButton->setText(tr("Pin out & Configuration").replace(QLatin1String("&"), QLatin1String("&&")));
    m_ClockConfig_PushButton->setText(tr("Clock Configuration"));
    m_PeripheralsConfig->TranslatorUI();

    // The chip view hears of it from the design; pages are made again with the texts of the language.
    m_design.updateLanguage();
    const QString shown = m_ModeAndConfiguration->shownModule();
    m_ModeAndConfiguration->renewPages();
    m_PeripheralsConfig->setModules(m_design.peripherals(), m_design.middlewares());
    if (!shown.isEmpty())
        GetSelectIPName(shown);
    showDeviceName();
}

bool FormConfiguration::NewDesign(const QString &series, const QString &device, const QString &package)
{
    DeleteOldConfigWidget();
    LoadingProgress progress(2, isVisible() ? this : nullptr);
    const bool readable = m_design.NewDesign(series, device, package);
    progress.advance();
    m_PeripheralsConfig->ReceiveIPStatusFlag(QStringLiteral("NVIC"), IPSTATUS_ON);
    m_PeripheralsConfig->setFocus();
    PINConfig_PushButton_Clicked();
    progress.advance();
    return readable;
}

void FormConfiguration::DeleteOldConfigWidget()
{
    m_design.clear();
    m_recovery.update();
}

void FormConfiguration::showModules()
{
    m_PeripheralsConfig->setModules(m_design.peripherals(), m_design.middlewares());
    for (const std::unique_ptr<DesignPart> &part : m_design.parts()) {
        if (const ModuleConfiguration *module = m_design.module(part->instanceName()))
            m_PeripheralsConfig->ReceiveIPStatusFlag(part->instanceName(), module->GetIPStatusFlag());
    }
    showDeviceName();
}

void FormConfiguration::PINConfig_PushButton_Clicked()
{
    showPage(m_pinConfigForm, m_PINConfig_PushButton, m_PinLayoutView->toolActions());
}

void FormConfiguration::ClockConfig_PushButton_Clicked()
{
    showPage(m_clockConfigForm, m_ClockConfig_PushButton, m_clockConfigForm->toolActions());
}

void FormConfiguration::showPage(QWidget *page, QPushButton *button, const QList<QAction *> &tools)
{
    // The tools of a page work, by menu or key, where it is in sight.
    for (QAction *former : qAsConst(m_pageTools))
        m_viewMenu->removeAction(former);
    m_pageTools = tools;
    m_viewMenu->insertActions(m_toolSeparator, m_pageTools);
    m_pages->setCurrentWidget(page);
    for (QPushButton *other : {m_PINConfig_PushButton, m_ClockConfig_PushButton})
        Style::setChosen(other, other == button);
}

void FormConfiguration::showClockError(bool error)
{
    m_ClockConfig_PushButton->setIcon(error ? QIcon(QStringLiteral(":/image/danger32.png")) : QIcon());
    m_ClockConfig_PushButton->setToolTip(error ? tr("A clock is out of range.") : QString());
}

void FormConfiguration::GetSelectIPName(const QString &instanceName)
{
    for (const QList<PeripheralsBaseInfo> *list : {&m_design.peripherals(), &m_design.middlewares()}) {
        for (const PeripheralsBaseInfo &module : *list) {
            if (module.InstanceName != instanceName)
                continue;
            m_ModeAndConfiguration->showModule(module, m_design.module(instanceName)
                                                           ? tr("Mode and Configuration") + QLatin1Char(' ') +
                                                                 module.InstanceName
                                                           : module.InstanceName);
            m_PinLayoutView->ReceiveQueryIPSignal(instanceName);
            return;
        }
    }
}

void FormConfiguration::showSignalOwner(const QString &signalName, int pinNumber)
{
    const QString first = signalName.section(QLatin1Char(';'), 0, 0);
    const QStringList holders = m_design.holdersOf(first);
    if (!holders.isEmpty())
        m_PeripheralsConfig->choose(holders.first());
    selectPinRow(first, pinNumber);
}

/// The tables of pins on the page that is shown follow a click in the drawing.
void FormConfiguration::selectPinRow(const QString &signalName, int pinNumber)
{
    if (const QWidget *page = m_ModeAndConfiguration->shownPage()) {
        for (GPIOSettingWidget *table : page->findChildren<GPIOSettingWidget *>())
            table->ReceivePinCurrentSignal(signalName, pinNumber);
    }
}

void FormConfiguration::AllConfigReset()
{
    if (m_prompt.ask(question(PromptRequest::Kind::Warning, WarningTitle, ResetQuestion, {Yes, Cancel})) != 0)
        return;
    {
        LoadingProgress progress(1, this);
        m_design.AllConfigReset();
        progress.advance();
    }
    m_prompt.tell(PromptRequest::Kind::Information, InformationTitle, ResetDone);
}

void FormConfiguration::English_Action_Triggered()
{
    LanguageChangeFunc(UI_EN);
}

void FormConfiguration::Chinese_Action_Triggered()
{
    LanguageChangeFunc(UI_CH);
}

void FormConfiguration::LanguageChangeFunc(LANGUAGE language)
{
    if (!m_translator || !switchLanguage(m_translator, language))
        return;
    TranslatorUI();
    m_settings.setValue(QStringLiteral("Language"), languageSetting(language));
}

bool FormConfiguration::mayCloseDesign(QLatin1String text)
{
    switch (m_prompt.ask(question(PromptRequest::Kind::Question, QuestionTitle, text, {Yes1, No, Cancel}))) {
    case 0:
        return SaveProject_Operation();
    case 1:
        return true;
    default:
        return false;
    }
}

void FormConfiguration::NewProject_Action_Triggered()
{
    if (!mayCloseDesign(NewDesignQuestion))
        return;
    hide();
    emit Send_NewDesign_Signal();
}

bool FormConfiguration::focusNextPrevChild(bool next)
{
    const auto paneOf = [this](const QWidget *widget) {
        const std::array<const QWidget *, 3> panes{m_PeripheralsConfig, m_ModeAndConfiguration, m_PinLayoutView};
        const auto pane = std::find_if(panes.begin(), panes.end(),
                                       [widget](const QWidget *one) { return one->isAncestorOf(widget); });
        return pane == panes.end() ? -1 : pane - panes.begin();
    };
    QList<QWidget *> fields;
    for (QWidget *widget = nextInFocusChain(); widget != this; widget = widget->nextInFocusChain()) {
        if ((widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy() && widget->isVisibleTo(this) &&
            widget->isEnabled())
            fields.append(widget);
    }
    std::stable_sort(fields.begin(), fields.end(),
                     [&](const QWidget *a, const QWidget *b) { return paneOf(a) < paneOf(b); });
    const int place = int(fields.indexOf(focusWidget()));
    if (place < 0)
        return QMainWindow::focusNextPrevChild(next);
    QWidget *field = fields.at((place + (next ? 1 : fields.size() - 1)) % fields.size());
    field->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void FormConfiguration::closeEvent(QCloseEvent *event)
{
    if (m_design.isOpen() && !mayCloseDesign(CloseQuestion)) {
        event->ignore();
        return;
    }
    QDir(m_xmlOperation.paths().databaseDir() + QStringLiteral("/CodeView")).removeRecursively();
    event->accept();
}

} // namespace ChipLoom
