#include "Gui/Workspace/PeripheralPage.h"

#include "Design/Design.h"
#include "Gui/App/Style.h"

#include <QCollator>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace ChipLoom {

namespace {

enum Column { SignalColumn, StandsColumn, PinsColumn };

QLabel *textLabel(const QString &text)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

PeripheralPage::PeripheralPage(Design &design, const PeripheralsBaseInfo &module, QWidget *parent)
    : QWidget(parent), m_design(design), m_signals(new QTreeWidget)
{
    auto *about = new QFormLayout;
    about->addRow(tr("About:"), textLabel(module.AboutInfo));
    about->addRow(tr("Category:"), textLabel(shownName(module.GroupName, module.GroupName_CH)));
    about->addRow(tr("Description:"), textLabel(module.Name + QLatin1Char('-') + module.VersionFile));

    m_signals->setRootIsDecorated(false);
    m_signals->setUniformRowHeights(true);
    m_signals->setHeaderLabels({tr("Signal"), tr("Stands on"), tr("Possible pins")});
    m_signals->setToolTip(tr("Double click a signal to find its pins."));
    fillSignals(module.InstanceName);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(about);
    m_signals->setHidden(m_signals->topLevelItemCount() == 0);
    const bool middleware =
        std::any_of(design.middlewares().begin(), design.middlewares().end(),
                    [&module](const PeripheralsBaseInfo &other) { return other.InstanceName == module.InstanceName; });
    if (m_signals->isHidden() && !middleware) {
        auto *none = new QLabel(tr("This module has no signals on the pins of this package."));
        Style::setRole(none, Style::Role::Hint);
        none->setWordWrap(true);
        layout->addWidget(none);
    }
    if (m_signals->isHidden())
        layout->addStretch();
    layout->addWidget(m_signals, 1);

    connect(m_signals, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem *row) {
        m_design.pins().search().QuerySignalName_Accurate(row->text(SignalColumn));
    });
    connect(&m_design, &Design::pinsChanged, this, &PeripheralPage::refreshSignals);
}

void PeripheralPage::fillSignals(const QString &instanceName)
{
    QStringList names = m_design.signalsOf(instanceName);
    QCollator inOrderOfNumbers(QLocale(QLocale::English)); // "XMC_A2" ahead of "XMC_A10"
    inOrderOfNumbers.setNumericMode(true);
    std::sort(names.begin(), names.end(), inOrderOfNumbers);
    for (const QString &signal : qAsConst(names))
        new QTreeWidgetItem(m_signals, {signal});
    refreshSignals();
    m_signals->resizeColumnToContents(SignalColumn);
}

void PeripheralPage::refreshSignals()
{
    const DevicePinInfo &info = m_design.pinInfo();
    for (int i = 0; i < m_signals->topLevelItemCount(); ++i) {
        QTreeWidgetItem *row = m_signals->topLevelItem(i);
        QStringList possible;
        QStringList present;
        for (const SignalPlace place : info.placesOf(row->text(SignalColumn))) {
            const MCUPinsBaseInfo &pin = info.pin(place.pin);
            if (!pin.validFlag)
                continue;
            possible.append(pin.pinName);
            if (info.signal(place).configStatus != Not_Config)
                present.append(pin.pinName);
        }
        row->setText(StandsColumn, present.join(QStringLiteral(", ")));
        row->setText(PinsColumn, possible.join(QStringLiteral(", ")));
    }
    m_signals->resizeColumnToContents(StandsColumn); // a mode of the header for that measures at every change of a row
}

} // namespace ChipLoom
