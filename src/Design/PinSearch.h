#pragma once

#include "Design/DevicePinInfo.h"

#include <QObject>
#include <QSet>

namespace ChipLoom {

/// Which positions a search hits. What is hit blinks in the window, and is listed by the command line.
class PinSearch : public QObject
{
    Q_OBJECT
public:
    explicit PinSearch(const DevicePinInfo &info, QObject *parent = nullptr);

    /// Positions with a bonded entry that has a signal of exactly this name.
    void QuerySignalName_Accurate(const QString &name);
    /// Positions with a bonded entry whose name or one of whose signals contains the text, in any case.
    void QuerySignalName_Fuzzy(const QString &text);
    /// What a text in the search box means: exact if it is the name of a signal, else fuzzy; empty ends the search.
    void QuerySignalName(const QString &text);
    /// The pin of a row of the GPIO table, provided that the signal stands in its list.
    void ReceiveGPIOQuerySignals(const QString &pinName, const QString &signal);
    void CancelQuerySignalNameAllPin();

    const QSet<int> &hits() const { return m_hits; }

    /// Marks the positions on which a peripheral's signals could stand. An empty name takes the marks off.
    void ReceiveQueryIPSignal(const QString &ipName, const QStringList &signalNames);
    QString lastQueryIPName() const { return m_lastQueryIPName; }
    QSet<int> markedPositions() const;

    /// Names for the search box: functions of bonded pins, sorted.
    QStringList signalNames() const;

signals:
    void hitsChanged();
    void marksChanged();

private:
    void setHits(QSet<int> hits);

    const DevicePinInfo &m_info;
    QSet<int> m_hits;
    QString m_lastQueryIPName;
    QStringList m_markedSignals;
};

} // namespace ChipLoom
