#include "Gui/Settings/NVIC_Settings.h"

#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/ModuleConfiguration.h"
#include "Design/NVIC_Configuration.h"
#include "Gui/Settings/NVICSettingModel.h"
#include "Gui/Settings/NoteLine.h"
#include "Gui/Widgets/FlowLayout.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace ChipLoom {

namespace {

QWidget *captioned(const QString &caption, QComboBox *box)
{
    auto *label = new QLabel(caption);
    label->setBuddy(box);
    auto *pair = new QWidget;
    auto *layout = new QHBoxLayout(pair);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(box);
    return pair;
}

} // namespace

NVIC_Settings::NVIC_Settings(Design &design, const QString &instance, QWidget *parent)
    : QWidget(parent), m_design(design), m_instance(instance), m_model(new NVICSettingModel(design, instance, this)),
      m_note(noteLine())
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (instance.isEmpty()) {
        layout->addWidget(makeHead());
        connect(m_design.nvic(), &NVIC_Configuration::SendRefreshNVIC, this, &NVIC_Settings::refresh);
        connect(m_model, &SettingsModel::refused, this, [this](const QString &reason) { setNote(m_note, reason); });
        refresh();
    }
    m_table = new SettingsTable(*m_model, this); // behind the head for the Tab key too
    layout->addWidget(m_table, 1);
    layout->addWidget(m_note);
    connect(m_model, &SettingsModel::refused, this, &NVIC_Settings::refused);
    connect(m_design.nvic(), &NVIC_Configuration::SendRefreshNVIC, this, &NVIC_Settings::showRemarks);
    if (const ModuleConfiguration *module = m_design.module(instance))
        connect(&module->parameters(), &IP_ParamSettingConfiguration::Send_RefreshParamTabWidget_Signal, this,
                &NVIC_Settings::showRemarks);
    showRemarks();
    m_table->fitColumns();
}

QWidget *NVIC_Settings::makeHead()
{
    m_PriorityGroup_ComboBox = new QComboBox;
    m_PriorityGroup_ComboBox->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    for (const PossibleValue &value : m_design.nvic()->GetPriorityGroupParameter().PossibleValueList)
        m_PriorityGroup_ComboBox->addItem(value.Comment, value.Value);
    m_ShowType_ComboBox = new QComboBox;
    m_ShowType_ComboBox->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_ShowType_ComboBox->addItem(tr("All interrupts"), SHOW_ALL);
    m_ShowType_ComboBox->addItem(tr("Available interrupts"), SHOW_AVAILABLE);
    m_ShowType_ComboBox->addItem(tr("Enabled interrupts"), SHOW_ENABLED);

    auto *head = new QWidget(this);
    auto *headLayout = new FlowLayout(head);
    headLayout->addWidget(captioned(tr("Priority Group:"), m_PriorityGroup_ComboBox));
    headLayout->addWidget(captioned(tr("Show:"), m_ShowType_ComboBox));

    const auto change = [this](const QComboBox *box, const QString &name) {
        connect(box, QOverload<int>::of(&QComboBox::activated), this, [this, box, name](int index) {
            const DesignAnswer answer = m_design.apply({QStringLiteral("nvic"), name, box->itemData(index).toString()});
            if (!answer)
                setNote(m_note, answerText(answer));
        });
    };
    change(m_PriorityGroup_ComboBox, QStringLiteral("PriorityGroup"));
    change(m_ShowType_ComboBox, QStringLiteral("ShowType"));
    return head;
}

// The lines of EXINT come and go without a word to the vectors of others.
void NVIC_Settings::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    showRemarks();
}

void NVIC_Settings::showRemarks()
{
    QStringList remarks;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (const DesignAnswer remark = m_design.nvic()->remark(*m_model->vector(row)); !remark)
            remarks.append(answerText(remark));
    }
    if (const DesignAnswer unheard = m_design.nvic()->eventsRemark(m_instance); !unheard)
        remarks.append(answerText(unheard));
    setNote(m_note, remarks.join(QLatin1Char('\n')));
}

void NVIC_Settings::refresh()
{
    const NVIC_Configuration &nvic = *m_design.nvic();
    m_PriorityGroup_ComboBox->setCurrentIndex(
        m_PriorityGroup_ComboBox->findData(nvic.GetPriorityGroupParameter().CurrentValue));
    m_PriorityGroup_ComboBox->setEnabled(!nvic.isPriorityGroupFixed());
    m_PriorityGroup_ComboBox->setToolTip(nvic.isPriorityGroupFixed()
                                             ? answerText({DesignReason::PriorityGroupFixed, {}})
                                             : nvic.GetPriorityGroupParameter().Description);
    m_ShowType_ComboBox->setCurrentIndex(m_ShowType_ComboBox->findData(nvic.showMode()));
}

} // namespace ChipLoom
