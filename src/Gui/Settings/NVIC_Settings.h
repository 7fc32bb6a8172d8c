#pragma once

#include <QWidget>

class QComboBox;
class QLabel;

namespace ChipLoom {

class Design;
class NVICSettingModel;
class SettingsTable;

/// Interrupts as a table: all of them, with the priority group and a choice of rows above; or those of one peripheral,
/// as a tab of its page.
class NVIC_Settings : public QWidget
{
    Q_OBJECT
public:
    /// An empty `instance` stands for the whole table.
    NVIC_Settings(Design &design, const QString &instance, QWidget *parent = nullptr);

    SettingsTable *table() const { return m_table; }
    NVICSettingModel *model() const { return m_model; }
    /// Null in the tab of a peripheral.
    QComboBox *priorityGroupBox() const { return m_PriorityGroup_ComboBox; }
    QComboBox *showTypeBox() const { return m_ShowType_ComboBox; }

signals:
    /// A change was not taken; why.
    void refused(const QString &reason);

protected:
    void showEvent(QShowEvent *event) override;

private:
    QWidget *makeHead();
    void refresh();
    void showRemarks();

    Design &m_design;
    QString m_instance;
    NVICSettingModel *m_model;
    SettingsTable *m_table = nullptr;
    QComboBox *m_PriorityGroup_ComboBox = nullptr;
    QComboBox *m_ShowType_ComboBox = nullptr;
    QLabel *m_note;
};

} // namespace ChipLoom
