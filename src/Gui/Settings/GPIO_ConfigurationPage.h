#pragma once

#include <QWidget>

class QComboBox;
class QLabel;

namespace ChipLoom {

class Design;
class GPIOSettingWidget;

/// The page of all pins: the table, and a box that says whose pins it shows.
class GPIO_ConfigurationPage : public QWidget
{
    Q_OBJECT
public:
    explicit GPIO_ConfigurationPage(Design &design, QWidget *parent = nullptr);

    QComboBox *showTypeBox() const { return m_ShowType_ComboBox; }
    GPIOSettingWidget *settings() const { return m_GPIOSettingWidget; }

private:
    void refresh();

    Design &m_design;
    QComboBox *m_ShowType_ComboBox;
    GPIOSettingWidget *m_GPIOSettingWidget;
    QLabel *m_note;
    QString m_shown;
};

} // namespace ChipLoom
