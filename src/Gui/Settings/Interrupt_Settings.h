#pragma once

#include <QWidget>

namespace ChipLoom {

class Design;
class InterruptSettingModel;
class ModuleConfiguration;
class SettingsTable;

/// What of a peripheral interrupts, as a table. The same values stand among its parameters.
class Interrupt_Settings : public QWidget
{
    Q_OBJECT
public:
    Interrupt_Settings(Design &design, ModuleConfiguration &peripheral, QWidget *parent = nullptr);

    SettingsTable *table() const { return m_table; }
    InterruptSettingModel *model() const { return m_model; }

signals:
    /// A change was not taken; why.
    void refused(const QString &reason);

private:
    InterruptSettingModel *m_model;
    SettingsTable *m_table;
};

} // namespace ChipLoom
