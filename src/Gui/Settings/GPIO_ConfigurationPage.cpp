#include "Gui/Settings/GPIO_ConfigurationPage.h"

#include "Design/Design.h"
#include "Design/GPIO_Configuration.h"
#include "Gui/Settings/GPIOSettingWidget.h"
#include "Gui/Settings/NoteLine.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace ChipLoom {

GPIO_ConfigurationPage::GPIO_ConfigurationPage(Design &design, QWidget *parent)
    : QWidget(parent), m_design(design), m_ShowType_ComboBox(new QComboBox(this)),
      m_GPIOSettingWidget(new GPIOSettingWidget(design, design.gpio()->showType(), this)), m_note(noteLine()),
      m_shown(design.gpio()->showType())
{
    auto *show = new QLabel(tr("Show:"), this);
    show->setBuddy(m_ShowType_ComboBox);
    m_ShowType_ComboBox->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    auto *head = new QHBoxLayout;
    head->addWidget(show);
    head->addWidget(m_ShowType_ComboBox);
    head->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(head);
    layout->addWidget(m_GPIOSettingWidget, 1);
    layout->addWidget(m_note);

    connect(m_ShowType_ComboBox, QOverload<int>::of(&QComboBox::activated), this, [this](int index) {
        m_design.apply(
            {QStringLiteral("gpio"), QStringLiteral("ShowType"), m_ShowType_ComboBox->itemData(index).toString()});
    });
    connect(m_GPIOSettingWidget, &GPIOSettingWidget::refused, this,
            [this](const QString &reason) { setNote(m_note, reason); });
    connect(m_design.gpio(), &GPIO_Configuration::SendGPIOSettingChangeSignals, this, &GPIO_ConfigurationPage::refresh);
    refresh();
}

void GPIO_ConfigurationPage::refresh()
{
    const GPIO_Configuration &gpio = *m_design.gpio();
    setNote(m_note, QString());
    const QSignalBlocker blocker(m_ShowType_ComboBox);
    m_ShowType_ComboBox->clear();
    m_ShowType_ComboBox->addItem(tr("All pins in use"), GPIO_Configuration::allRows());
    m_ShowType_ComboBox->addItem(QStringLiteral("GPIO"), QStringLiteral("GPIO"));
    for (const QString &instance : gpio.instancesWithRows())
        m_ShowType_ComboBox->addItem(instance, instance);
    if (m_ShowType_ComboBox->findData(gpio.showType()) < 0)
        m_ShowType_ComboBox->addItem(gpio.showType(), gpio.showType());
    m_ShowType_ComboBox->setCurrentIndex(m_ShowType_ComboBox->findData(gpio.showType()));
    if (m_shown != gpio.showType()) {
        m_shown = gpio.showType();
        m_GPIOSettingWidget->setInstance(m_shown);
    }
}

} // namespace ChipLoom
