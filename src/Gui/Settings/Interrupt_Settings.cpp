#include "Gui/Settings/Interrupt_Settings.h"

#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/ModuleConfiguration.h"
#include "Design/NVIC_Configuration.h"
#include "Gui/Settings/InterruptSettingModel.h"
#include "Gui/Settings/NoteLine.h"

#include <QVBoxLayout>

namespace ChipLoom {

Interrupt_Settings::Interrupt_Settings(Design &design, ModuleConfiguration &peripheral, QWidget *parent)
    : QWidget(parent), m_model(new InterruptSettingModel(design, peripheral, this)),
      m_table(new SettingsTable(*m_model, this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_table);
    auto *note = noteLine();
    layout->addWidget(note);
    if (const NVIC_Configuration *nvic = design.nvic()) {
        const auto showRemark = [note, nvic, instance = peripheral.instanceName()] {
            setNote(note, answerText(nvic->eventsRemark(instance)));
        };
        connect(nvic, &NVIC_Configuration::SendRefreshNVIC, this, showRemark);
        connect(&peripheral.parameters(), &IP_ParamSettingConfiguration::Send_RefreshParamTabWidget_Signal, this,
                showRemark);
        showRemark();
    }
    connect(m_model, &SettingsModel::refused, this, &Interrupt_Settings::refused);
    m_table->fitColumns();
}

} // namespace ChipLoom
