#pragma once

#include "Design/DesignReason.h"
#include "Design/PinMenu.h"

#include <QString>

namespace ChipLoom {

class ModeControl;
class ModuleConfiguration;

// The words for what the design states as keys and numbers, in the language of the moment. Windows and the command
// line share them; nothing of this is kept.

/// A sentence that says why and, where it helps, what to do. Empty for an accepted answer.
QString answerText(const DesignAnswer &answer);

/// One of two texts of the database: that of the current language, or the key where it is empty.
QString ownText(const QString &english, const QString &chinese, const QString &key);

/// What a module notes beside its modes; empty for nothing.
QString noteText(const ModuleConfiguration &module);

/// The name of a mode as its page shows it, with the entry of a box: "Mode (Asynchronous)".
QString choiceText(const ModeControl &control, int index);

/// What a state means: "placed by hand, no mode uses it".
QString statusText(PINCONFIG_TYPE status, const QString &signal);

/// What choosing a menu entry would do or why it cannot be chosen; empty if there is nothing to say.
QString menuEntryHint(const PinMenuEntry &entry);

/// Heading of a group of a pin's menu.
QString menuGroupText(const PinMenuGroup &group);

} // namespace ChipLoom
