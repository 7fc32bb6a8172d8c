#include "Gui/ChipView/PinMenuView.h"

#include "Design/DesignTexts.h"

#include <QToolTip>

namespace ChipLoom {

PinMenuView::PinMenuView(const PinMenu &menu, QWidget *parent) : QMenu(parent)
{
    setToolTipsVisible(true);
    connect(this, &QMenu::hovered, this, &PinMenuView::showRefusal);
    QAction *reset = addAction(QStringLiteral("Reset_State"));
    reset->setEnabled(menu.canReset);
    const QString pin = menu.labelPin;
    connect(reset, &QAction::triggered, this, [this, pin] { emit changeChosen(DesignChange::resetPin(pin)); });

    // Variants of one position go by different names; of one pin's joined names each means the same.
    bool variants = false;
    for (const PinMenuGroup &group : menu.groups) {
        for (const PinMenuEntry &entry : group.entries)
            variants = variants || !IsPinNameSame(entry.pinName, menu.groups.first().entries.first().pinName);
    }
    for (const PinMenuGroup &group : menu.groups) {
        addSection(menuGroupText(group));
        for (const PinMenuEntry &entry : group.entries)
            addFunction(entry, variants);
    }
}

/// The mouse brings hover texts up by itself; whoever moves with the keyboard reads a refusal at once.
void PinMenuView::showRefusal(QAction *action)
{
    const auto *function = qobject_cast<const CustomPinAction *>(action);
    const QString reason = function && function->m_refused ? function->toolTip() : QString();
    QToolTip::showText(mapToGlobal(actionGeometry(action).topRight()), reason, this);
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
    action->m_refused = !entry.refusal;
    if (action->m_refused) {
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
