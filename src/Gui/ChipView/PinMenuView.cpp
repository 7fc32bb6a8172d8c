#include "Gui/ChipView/PinMenuView.h"

#include "Design/DesignTexts.h"

#include <QSet>

namespace ChipLoom {

PinMenuView::PinMenuView(const PinMenu &menu, QWidget *parent) : QMenu(parent)
{
    setToolTipsVisible(true);
    QAction *reset = addAction(QStringLiteral("Reset_State"));
    reset->setEnabled(menu.canReset);
    const QString pin = menu.labelPin;
    connect(reset, &QAction::triggered, this, [this, pin] { emit changeChosen(DesignChange::resetPin(pin)); });

    QSet<QString> pinNames;
    for (const PinMenuGroup &group : menu.groups) {
        for (const PinMenuEntry &entry : group.entries)
            pinNames.insert(entry.pinName);
    }
    for (const PinMenuGroup &group : menu.groups) {
        addSection(menuGroupText(group));
        for (const PinMenuEntry &entry : group.entries)
            addFunction(entry, pinNames.size() > 1);
    }
}

void PinMenuView::addFunction(const PinMenuEntry &entry, bool withPinName)
{
    const QString &signal = entry.signalName;
    auto *action = new CustomPinAction(
        withPinName ? signal + QStringLiteral(" (") + entry.pinName + QLatin1Char(')') : signal, this);
    action->m_signalName_InAction = signal;
    action->m_signalInPinName_InAction = entry.pinName;
    action->setCheckable(true);
    action->setChecked(entry.status != Not_Config);
    // Without a text of its own an action shows its name again.
    const QString hint = menuEntryHint(entry);
    action->setToolTip(hint.isEmpty() ? statusText(entry.status, signal) : hint);
    if (!entry.refusal) {
        QFont font = action->font();
        font.setItalic(true);
        font.setStrikeOut(true);
        action->setFont(font);
    }
    connect(action, &QAction::triggered, this, [this, action](bool checked) {
        const QString &pin = action->m_signalInPinName_InAction;
        const QString &name = action->m_signalName_InAction;
        emit changeChosen(checked ? DesignChange::placeSignal(pin, name) : DesignChange::removeSignal(pin, name));
    });
    addAction(action);
}

} // namespace ChipLoom
