#include "Gui/Settings/Interrupt_Settings.h"

#include "Gui/Settings/InterruptSettingModel.h"

#include <QVBoxLayout>

namespace ChipLoom {

Interrupt_Settings::Interrupt_Settings(Design &design, ModuleConfiguration &peripheral, QWidget *parent)
    : QWidget(parent), m_model(new InterruptSettingModel(design, peripheral, this)),
      m_table(new SettingsTable(*m_model, this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_table);
    connect(m_model, &SettingsModel::refused, this, &Interrupt_Settings::refused);
    m_table->fitColumns();
}

} // namespace ChipLoom
