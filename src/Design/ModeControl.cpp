#include "Design/ModeControl.h"

#include <algorithm>
#include <utility>

namespace ChipLoom {

bool ItemInfoStruct::hasVirtualSignal() const
{
    return std::any_of(SignalsList.begin(), SignalsList.end(), [](const ModeSignal &signal) { return signal.Virtual; });
}

QStringList ItemInfoStruct::pinSignals() const
{
    QStringList names;
    for (const ModeSignal &signal : SignalsList) {
        if (!signal.Virtual)
            names.append(signal.signalName);
    }
    return names;
}

ModeControl::ModeControl(const ModeCofiguration &declaration, std::vector<ItemInfoStruct> items, Changed changed,
                         AskPins ask)
    : m_declaration(declaration), m_ModeName(declaration.modeName),
      m_condition(declaration.modeCondition.Expression, declaration.modeCondition.AndFlag),
      m_ItemInfoList(std::move(items)), m_changed(std::move(changed)), m_askPins(std::move(ask))
{
}

ModeControl::~ModeControl() = default;

const std::vector<ItemInfoStruct> &ModeControl::items() const
{
    if (!std::exchange(m_pinsAsked, true)) {
        for (int i = 0; i < static_cast<int>(m_ItemInfoList.size()); ++i)
            m_askPins(*this, i + 1, m_ItemInfoList[i]);
    }
    return m_ItemInfoList;
}

int ModeControl::indexOf(const QString &itemName) const
{
    for (int i = 0; i < static_cast<int>(m_ItemInfoList.size()); ++i) {
        if (m_ItemInfoList[i].Name == itemName)
            return i + 1;
    }
    return -1;
}

const ItemInfoStruct *ModeControl::current() const
{
    return m_index > 0 ? &m_ItemInfoList.at(m_index - 1) : nullptr;
}

QString ModeControl::currentName() const
{
    const ItemInfoStruct *item = current();
    return item ? item->Name : QString();
}

bool ModeControl::itemCanbeChoosed(int index) const
{
    return index == 0 || (m_enabled && index > 0 && index < count() && items().at(index - 1).CanBeChoose());
}

void ModeControl::setIndex(int index)
{
    const int former = std::exchange(m_index, index);
    if (former != index)
        m_changed(*this, former);
}

bool ModeControl::listensTo(const QString &token) const
{
    return m_condition.mentions(token) ||
           std::any_of(m_ItemInfoList.begin(), m_ItemInfoList.end(),
                       [&](const ItemInfoStruct &item) { return item.condition.mentions(token); });
}

void ModeControl::EnableSemaphore(const QStringList &tokens)
{
    bool heard = false;
    for (const QString &token : tokens) {
        if (!listensTo(token))
            continue;
        m_RecvSemaphoreList.append(token);
        heard = true;
    }
    if (heard)
        HandleSemaphore();
}

void ModeControl::CancelSemaphore(const QStringList &tokens)
{
    bool removed = false;
    for (const QString &token : tokens)
        removed = m_RecvSemaphoreList.removeOne(token) || removed;
    if (removed)
        HandleSemaphore();
}

void ModeControl::HandleSemaphore()
{
    m_enabled = m_condition.isMet(m_RecvSemaphoreList);
    for (ItemInfoStruct &item : m_ItemInfoList)
        item.conditionMet = item.condition.isMet(m_RecvSemaphoreList);
    const ItemInfoStruct *chosen = current();
    if (chosen && (!m_enabled || !chosen->conditionMet))
        setIndex(0);
}

void ModeControl::pinsHaveChanged()
{
    m_pinsAsked = false;
    if (m_index == 0)
        return;
    ItemInfoStruct &chosen = m_ItemInfoList.at(m_index - 1);
    m_askPins(*this, m_index, chosen);
    if (!chosen.missingSignals.isEmpty())
        setIndex(0);
}

void ModeControl::restore(const State &state)
{
    m_index = state.index;
    m_enabled = state.enabled;
    m_RecvSemaphoreList = state.received;
    m_CurrentValidSignalsList = state.validSignals;
    m_pinsAsked = false;
    for (ItemInfoStruct &item : m_ItemInfoList)
        item.conditionMet = item.condition.isMet(m_RecvSemaphoreList);
}

} // namespace ChipLoom
