#pragma once

#include "Design/Conditions.h"
#include "Model/ShareParameter.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace ChipLoom {

/// Why an entry of a mode can or cannot be chosen, the strongest reason first.
enum class ItemState {
    Enabled,         ///< EnableItemSelect
    NotOnPackage,    ///< DisableItemSelect_3: some signal stands on no bonded pin
    ConditionNotMet, ///< DisableItemSelect_2
    PinConflict      ///< DisableItemSelect_1
};

/// One entry of a mode: a choice of a `ProComboBox`, or the tick of a `ProCheckBox`.
struct ItemInfoStruct
{
    QString Name;
    QString UserName_EN, UserName_CH;
    Condition ItemCondition;
    ControlCondition condition; ///< the same, parsed
    QStringList SemaphoreList;
    QList<ModeSignal> SignalsList;
    bool MultiMachFlag = false; ///< the same signals occur elsewhere in the peripheral: pins cannot tell them apart

    // What is known of it now; the state follows.
    QStringList missingSignals; ///< on no bonded pin of the package
    bool conditionMet = true;
    bool pinsFree = true; ///< all signals can be placed

    ItemState state() const
    {
        if (!missingSignals.isEmpty())
            return ItemState::NotOnPackage;
        if (!conditionMet)
            return ItemState::ConditionNotMet;
        return pinsFree ? ItemState::Enabled : ItemState::PinConflict;
    }
    bool CanBeChoose() const { return state() == ItemState::Enabled; }
    bool hasVirtualSignal() const;
    /// Signals that need a pin.
    QStringList pinSignals() const;
};

/// A mode of a peripheral as a live control without a window: entries, the chosen one, and the tokens that it hears.
///
/// Index 0 is "Disable"; entry `i` is chosen by index `i + 1`. A control whose condition fails is closed and falls to
/// 0; so does a control whose chosen entry is closed.
class ModeControl
{
public:
    /// Called behind every change of the index, with the former one.
    using Changed = std::function<void(ModeControl &control, int formerIndex)>;
    /// Asks the pins about one entry: fills `missingSignals` and `pinsFree`.
    using AskPins = std::function<void(const ModeControl &control, int index, ItemInfoStruct &item)>;

    virtual ~ModeControl();
    ModeControl(const ModeControl &) = delete;
    ModeControl &operator=(const ModeControl &) = delete;

    virtual bool isCheckBox() const = 0;

    QString modeName() const { return m_ModeName; }
    const ModeCofiguration &declaration() const { return m_declaration; }
    const ControlCondition &condition() const { return m_condition; }
    /// Entries with their present state; the pins are asked when they have changed since the last reading.
    const std::vector<ItemInfoStruct> &items() const;
    int count() const { return static_cast<int>(m_ItemInfoList.size()) + 1; }
    /// -1 if no entry has the name.
    int indexOf(const QString &itemName) const;

    int index() const { return m_index; }
    bool isOn() const { return m_index > 0; }
    /// The chosen entry, or null.
    const ItemInfoStruct *current() const;
    QString currentName() const;
    bool isEnabled() const { return m_enabled; }
    /// Whether the entry may be chosen; "Disable" always may.
    bool itemCanbeChoosed(int index) const;
    /// Changes the index and tells, without asking whether the entry may be chosen.
    void setIndex(int index);

    /// Tokens that concern this control; each enable is taken back by one cancel.
    void EnableSemaphore(const QStringList &tokens);
    void CancelSemaphore(const QStringList &tokens);
    const QStringList &receivedTokens() const { return m_RecvSemaphoreList; }
    void HandleSemaphore();

    /// The pins have changed: entries are asked again when they are read. A chosen entry whose signals are on no bonded
    /// pin any more is left at once.
    void pinsHaveChanged();
    void setMultiMachFlag(int item, bool flag) { m_ItemInfoList.at(item).MultiMachFlag = flag; }

    /// The signals that the present choice has asked for.
    const QList<ModeSignal> &currentValidSignals() const { return m_CurrentValidSignalsList; }
    void setCurrentValidSignals(const QList<ModeSignal> &list) { m_CurrentValidSignalsList = list; }

    struct State
    {
        int index = 0;
        bool enabled = true;
        QStringList received;
        QList<ModeSignal> validSignals;
    };
    State save() const { return {m_index, m_enabled, m_RecvSemaphoreList, m_CurrentValidSignalsList}; }
    void restore(const State &state);

protected:
    ModeControl(const ModeCofiguration &declaration, std::vector<ItemInfoStruct> items, Changed changed, AskPins ask);

private:
    bool listensTo(const QString &token) const;

    ModeCofiguration m_declaration;
    QString m_ModeName;
    ControlCondition m_condition;
    mutable std::vector<ItemInfoStruct> m_ItemInfoList;
    Changed m_changed;
    AskPins m_askPins;
    mutable bool m_pinsAsked = false;
    int m_index = 0;
    bool m_enabled = true;
    QStringList m_RecvSemaphoreList;
    QList<ModeSignal> m_CurrentValidSignalsList;
};

/// A mode with choices.
class ProComboBox : public ModeControl
{
public:
    ProComboBox(const ModeCofiguration &declaration, std::vector<ItemInfoStruct> items, Changed changed, AskPins ask)
        : ModeControl(declaration, std::move(items), std::move(changed), std::move(ask))
    {
    }
    bool isCheckBox() const override { return false; }
};

/// A mode that is on or off: its one entry bears the mode's name.
class ProCheckBox : public ModeControl
{
public:
    ProCheckBox(const ModeCofiguration &declaration, ItemInfoStruct item, Changed changed, AskPins ask)
        : ModeControl(declaration, {std::move(item)}, std::move(changed), std::move(ask))
    {
    }
    bool isCheckBox() const override { return true; }
    bool isChecked() const { return isOn(); }
};

} // namespace ChipLoom
