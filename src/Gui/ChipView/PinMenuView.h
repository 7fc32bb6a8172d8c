#pragma once

#include "Design/DesignChange.h"
#include "Design/PinMenu.h"

#include <QAction>
#include <QMenu>

namespace ChipLoom {

/// One function in the menu of a pin.
class CustomPinAction : public QAction
{
    Q_OBJECT
public:
    using QAction::QAction;

    QString m_signalName_InAction;
    QString m_signalInPinName_InAction;
    bool m_refused = false; ///< a tick would be refused
};

/// The functions of one position: clearing first, then each group under its heading. What stands on the pin is ticked.
/// What cannot be placed says why in its hover text and can be chosen all the same: the design then refuses it.
class PinMenuView : public QMenu
{
    Q_OBJECT
public:
    explicit PinMenuView(const PinMenu &menu, QWidget *parent = nullptr);

signals:
    /// What the user chose, to be handed to the design.
    void changeChosen(const ChipLoom::DesignChange &change);

private:
    void showRefusal(QAction *action);
    void addFunction(const PinMenuEntry &entry, bool withPinName);
};

} // namespace ChipLoom
