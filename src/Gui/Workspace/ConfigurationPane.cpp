#include "Gui/Workspace/ConfigurationPane.h"

#include "Gui/App/Style.h"

#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

namespace ChipLoom {

ConfigurationPane::ConfigurationPane(PageFactory factory, QWidget *parent)
    : QWidget(parent), m_factory(std::move(factory)), m_title(new QLabel), m_hint(new QLabel),
      m_stack(new QStackedWidget)
{
    Style::setRole(m_title, Style::Role::PanelTitle);
    m_title->setTextFormat(Qt::PlainText);
    Style::setRole(m_hint, Style::Role::Hint);
    m_hint->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_hint->setWordWrap(true);
    m_hint->setMargin(24);
    m_stack->addWidget(m_hint);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_title);
    layout->addWidget(m_stack, 1);
    TranslatorUI();
}

void ConfigurationPane::showModule(const PeripheralsBaseInfo &module)
{
    QWidget *&page = m_pages[module.InstanceName];
    if (!page) {
        page = m_factory(module);
        m_stack->addWidget(page);
    }
    m_shownModule = module.InstanceName;
    m_title->setText(module.InstanceName);
    m_stack->setCurrentWidget(page);
}

QWidget *ConfigurationPane::shownPage() const
{
    return m_pages.value(m_shownModule);
}

void ConfigurationPane::clearPages()
{
    qDeleteAll(m_pages);
    m_pages.clear();
    m_shownModule.clear();
    TranslatorUI();
}

void ConfigurationPane::TranslatorUI()
{
    if (m_shownModule.isEmpty())
        m_title->setText(tr("Configuration"));
    m_hint->setText(tr("Choose a module on the left to see what it offers."));
}

} // namespace ChipLoom
