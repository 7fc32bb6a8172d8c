#include "Gui/Clock/ZV32PLLConfigPage.h"

#include "ClockConfig/ZV32PLLConfig.h"
#include "Gui/App/Style.h"
#include "Gui/Clock/ClockPageBinding.h"
#include "Gui/Clock/ZV32MCUPLLView.h"

#include <QAction>
#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolBar>
#include <QVBoxLayout>

namespace ChipLoom {

ZV32PLLConfigPage::ZV32PLLConfigPage(ZV32PLLConfig &clock, QWidget *parent)
    : QWidget(parent), m_clock(clock), m_main_VBoxLayout(new QVBoxLayout(this)), m_toolBarGroupBox(new QGroupBox(this)),
      m_MCUSerialsName_Label(new QLabel(m_toolBarGroupBox)), m_ToolBar(new QToolBar(m_toolBarGroupBox))
{
    Style::setRole(m_toolBarGroupBox, Style::Role::ToolStrip);
    Style::setRole(m_MCUSerialsName_Label, Style::Role::PanelTitle);
    // The keys are those of the chip, which is never in sight together with this page.
    const auto action = [this](const char *picture, const char *key, void (ZV32PLLConfigPage::*slot)()) {
        QAction *added = m_ToolBar->addAction(QIcon(QLatin1String(picture)), QString());
        added->setShortcut(QKeySequence(QLatin1String(key)));
        connect(added, &QAction::triggered, this, slot);
        return added;
    };
    m_ZoomIn_Action = action(":/image/icon_zoomin.png", "Ctrl++", &ZV32PLLConfigPage::ZoomIn);
    m_ZoomIn_Action->setShortcuts({m_ZoomIn_Action->shortcut(), QKeySequence(QStringLiteral("Ctrl+="))});
    m_ZoomOut_Action = action(":/image/icon_zoomout.png", "Ctrl+-", &ZV32PLLConfigPage::ZoomOut);
    m_ZoomReset_Action = action(":/image/icon_zoomreset.png", "Ctrl+0", &ZV32PLLConfigPage::ZoomReset);
    m_Fit_Action = action(":/image/icon_zoomfit.png", "Ctrl+9", &ZV32PLLConfigPage::FitToWindow);
    m_ConfigReset_Action = m_ToolBar->addAction(QIcon(QStringLiteral(":/image/icon_return.png")), QString());
    connect(m_ConfigReset_Action, &QAction::triggered, &m_clock, &ZV32PLLConfig::ConfigReset);

    auto *bar = new QHBoxLayout(m_toolBarGroupBox);
    bar->setContentsMargins(8, 2, 8, 2);
    bar->addWidget(m_MCUSerialsName_Label);
    bar->addStretch();
    bar->addWidget(m_ToolBar);
    m_main_VBoxLayout->setContentsMargins(0, 0, 0, 0);
    m_main_VBoxLayout->setSpacing(0);
    m_main_VBoxLayout->addWidget(m_toolBarGroupBox);

    connect(&m_clock, &ZV32PLLConfig::pageChanged, this, [this] {
        dropView();
        if (isVisible())
            makeView();
    });
    TranslatorUI();
    dropView();
}

ZV32PLLConfigPage::~ZV32PLLConfigPage()
{
    dropView();
}

void ZV32PLLConfigPage::makeView()
{
    if (m_pllConfigWidget || !m_clock.getMCUPLL())
        return;
    m_binding = std::make_unique<ClockPageBinding>(*m_clock.getMCUPLL());
    m_pllConfigWidget = new ZV32MCUPLLView(m_clock.getMCUPLL()->series(), *m_binding, this);
    m_main_VBoxLayout->addWidget(m_pllConfigWidget, 1);
    m_MCUSerialsName_Label->setText(m_clock.seriesName());
    m_toolBarGroupBox->show();
}

void ZV32PLLConfigPage::dropView()
{
    delete m_pllConfigWidget;
    m_pllConfigWidget = nullptr;
    m_binding.reset();
    m_toolBarGroupBox->hide();
}

void ZV32PLLConfigPage::ZoomIn()
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->ZoomIn();
}

void ZV32PLLConfigPage::ZoomOut()
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->ZoomOut();
}

void ZV32PLLConfigPage::ZoomReset()
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->ZoomReset();
}

void ZV32PLLConfigPage::FitToWindow()
{
    if (m_pllConfigWidget)
        m_pllConfigWidget->FitToWindow();
}

void ZV32PLLConfigPage::TranslatorUI()
{
    m_ZoomIn_Action->setText(tr("Zoom in"));
    m_ZoomOut_Action->setText(tr("Zoom out"));
    m_ZoomReset_Action->setText(tr("Zoom Reset"));
    m_Fit_Action->setText(tr("Fit to window"));
    m_ConfigReset_Action->setToolTip(tr("Config Reset"));
}

void ZV32PLLConfigPage::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        TranslatorUI();
        m_ConfigReset_Action->setToolTip(tr("Reset Configuration"));
    }
    QWidget::changeEvent(event);
}

void ZV32PLLConfigPage::showEvent(QShowEvent *event)
{
    makeView();
    QWidget::showEvent(event);
}

} // namespace ChipLoom
