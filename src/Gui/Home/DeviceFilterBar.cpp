#include "Gui/Home/DeviceFilterBar.h"

#include "Gui/App/Style.h"
#include "Gui/Widgets/FlowLayout.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <set>

namespace ChipLoom {

DeviceFilterBar::DeviceFilterBar(const DeviceTableModel &devices, QWidget *parent) : QWidget(parent)
{
    setLayout(new FlowLayout);

    QMap<QString, QString> packages; // by sort key and text: families with the same key stay apart
    for (const DeviceTableModel::Row &row : devices.rows()) {
        const QString &package = row.text[DeviceTableModel::Package];
        packages.insert(row.sortKey[DeviceTableModel::Package] + package, package);
    }
    QVariantList packageValues;
    for (const QString &package : qAsConst(packages))
        packageValues.append(package);
    m_package = addBox(packages.values(), packageValues);
    m_pins = addNumberBox(&DeviceTableModel::Row::pinCount, devices, {});
    m_flash = addNumberBox(&DeviceTableModel::Row::flashKB, devices, QStringLiteral("KB"));
    m_sram = addNumberBox(&DeviceTableModel::Row::sramKB, devices, QStringLiteral("KB"));
    m_frequency = addNumberBox(&DeviceTableModel::Row::frequencyMHz, devices, QStringLiteral("MHz"));

    m_reset = new QPushButton;
    Style::setRole(m_reset, Style::Role::Link);
    layout()->addWidget(m_reset);
    connect(m_reset, &QPushButton::clicked, this, &DeviceFilterBar::reset);

    const auto enableReset = [this] { m_reset->setEnabled(filter() != DeviceFilter()); };
    connect(this, &DeviceFilterBar::filterChanged, m_reset, enableReset);
    enableReset();
    TranslatorUI();
}

DeviceFilterBar::Box DeviceFilterBar::addNumberBox(int DeviceTableModel::Row::*field, const DeviceTableModel &devices,
                                                   const QString &unit)
{
    std::set<int> numbers;
    for (const DeviceTableModel::Row &row : devices.rows())
        numbers.insert(row.*field);
    QStringList texts;
    QVariantList values;
    for (const int number : numbers) {
        if (number == 0)
            continue;
        texts.append(QString::number(number) + unit);
        values.append(number);
    }
    return addBox(texts, values);
}

DeviceFilterBar::Box DeviceFilterBar::addBox(const QStringList &texts, const QVariantList &values)
{
    const Box box{new QLabel, new QComboBox};
    box.combo->addItem(QString());
    for (int i = 0; i < texts.size(); ++i)
        box.combo->addItem(texts.at(i), values.at(i));
    box.label->setBuddy(box.combo);

    auto *pair = new QWidget;
    auto *row = new QHBoxLayout(pair);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(box.label);
    row->addWidget(box.combo);
    layout()->addWidget(pair);
    connect(box.combo, qOverload<int>(&QComboBox::currentIndexChanged), this, &DeviceFilterBar::filterChanged);
    return box;
}

DeviceFilter DeviceFilterBar::filter() const
{
    DeviceFilter filter;
    filter.package = m_package.combo->currentData().toString();
    filter.minFlashKB = m_flash.combo->currentData().toInt();
    filter.minSramKB = m_sram.combo->currentData().toInt();
    filter.pinCount = m_pins.combo->currentData().toInt();
    filter.minFrequencyMHz = m_frequency.combo->currentData().toInt();
    return filter;
}

void DeviceFilterBar::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    // A scroll area does not ask for the height that goes with a width.
    setMinimumHeight(layout()->heightForWidth(width()));
}

void DeviceFilterBar::reset()
{
    {
        const QSignalBlocker blocker(this);
        for (const Box &box : {m_package, m_flash, m_sram, m_pins, m_frequency})
            box.combo->setCurrentIndex(0);
    }
    emit filterChanged();
}

void DeviceFilterBar::TranslatorUI()
{
    m_package.label->setText(tr("Package:"));
    m_pins.label->setText(tr("Pins:"));
    m_flash.label->setText(tr("Flash at least:"));
    m_sram.label->setText(tr("SRAM at least:"));
    m_frequency.label->setText(tr("Frequency at least:"));
    for (const Box &box : {m_package, m_flash, m_sram, m_pins, m_frequency})
        box.combo->setItemText(0, tr("Any"));
    m_reset->setText(tr("Reset filters"));
}

} // namespace ChipLoom
