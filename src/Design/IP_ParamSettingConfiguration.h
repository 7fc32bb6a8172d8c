#pragma once

#include "Base/Scheduler.h"
#include "Design/Calculators/ParameterSheet.h"
#include "Design/Conditions.h"
#include "Design/DesignReason.h"
#include "Model/PeripheralTree.h"

#include <QHash>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVector>

#include <memory>

namespace ChipLoom {

/// The parameters of one peripheral or middleware, derived at each change from the chosen modes, the conditions of the
/// declarations and the values that the user entered before.
///
/// The set is rebuilt when a mode, a token or a value with the reload flag changes; a value's rebuild is put off by
/// 100 ms, so that a burst of edits costs one. Rebuilding settles: it is repeated while the tokens and values that it
/// gives change the outcome, a few times at most.
class IP_ParamSettingConfiguration : public QObject
{
    Q_OBJECT
public:
    /// `tree` is the peripheral's file, shared with everybody who reads it. `scheduler` outlives this object.
    IP_ParamSettingConfiguration(QString series, QString instance, std::shared_ptr<const PeripheralTree> tree,
                                 Scheduler &scheduler, QObject *parent = nullptr);
    ~IP_ParamSettingConfiguration() override;

    // ---- Modes ----

    /// A mode has a new choice; an empty `paramName` switches the mode off. With the last mode off the set is empty.
    void ModeChange(const QString &modeName, const QString &paramName);
    void ModeChange(const QList<IP_MODE_Struct> &modes);
    bool ModeRefModeMap_ISEmpty() const;
    /// Puts modes and their parameters into an order in which they might have been chosen; modes that are not named
    /// go ahead as they stand.
    void orderModes(const QStringList &modeNames);

    // ---- Values ----

    /// The present set, in display order, hidden parameters included.
    const QList<RefParameter> &GetRefParameterList() const { return m_RefParameterList; }
    const RefParameter *parameter(const QString &name) const;

    /// A value that the user typed or chose. Refused, with the limit, if the parameter is not shown or closed, or if
    /// the value is no value of its type, out of range or not offered. A value that is marked as an error is taken.
    DesignAnswer ParamModefySlot(const QString &name, const QString &value, CURRENTVALUETYPE base);
    /// Several values that belong together, each in the base of its parameter: all are taken or none.
    DesignAnswer ParamModefySlot(const QList<XMLAttributeInfo> &values);
    /// What `ParamModefySlot` would answer. Changes nothing.
    DesignAnswer canTake(const QString &name, const QString &value) const;
    /// What is wrong with the present value of a parameter of the set; accepted if nothing is.
    DesignAnswer valueAnswer(const RefParameter &parameter) const;
    /// The base, "10" or "16", in which a number is written from now on.
    DesignAnswer setNumberBase(const QString &name, const QString &base);
    /// What the parameter is without a choice of the user's: of a list that does not offer its default now, what stands
    /// in for it.
    QString defaultOf(const RefParameter &parameter) const;
    bool isChangedFromDefault(const RefParameter &parameter) const;

    /// Forgets every entered value and rebuilds the set.
    void SetParametersDefaultValue();
    /// Forgets set, modes, tokens and values.
    void ClearAllParameters();

    /// Runs what an edit has put off, now.
    void HandleTimeout();
    /// Rebuilds the set for a reason outside: a clock, a list of another peripheral.
    void RefreshParams();
    /// Keeps a copy of another module's set, for what is computed from both; rebuilds if a name or a value differs.
    void SetOtherIPParamList(const QList<RefParameter> &list, const QString &sender);
    /// The copy as last sent, empty if there is none or the sender is off.
    QList<RefParameter> otherParameters(const QString &sender) const { return m_otherLists.value(sender); }
    void updateLanguage();

    // ---- Results ----

    /// The present set and its clock, by name; valid as long as this object stands.
    ParameterReader reader() const { return {m_mcuSerials, m_InstanceName, m_RefParameterList, m_clock}; }

    /// Where the results that follow from the clock find it; nothing is known of clocks before.
    void setPeripheralClock(PeripheralClock clock) { m_clock = std::move(clock); }
    /// Computes the results anew if a clock that they follow from is another than at the last rebuild.
    void ReciveClockChangedSignal();
    /// What is worth a look though it can be had, or why a result is missing; accepted for everything else.
    DesignAnswer warning(const QString &name) const;
    /// Those that the results have left.
    const ParameterWarnings &warnings() const { return m_warnings; }
    bool hasWarnings() const;
    /// Whether a warning may come or go by what happens elsewhere, without a word to this set: it is asked for when it
    /// is shown.
    bool hasRemarkedChoices() const;
    /// Tells whether any module of the design raises a token; for values that are offered whether their condition is
    /// met or not, and remarked where it is not.
    void setTokenQuestion(std::function<bool(const QString &)> isRaised) { m_isRaised = std::move(isRaised); }

    // ---- Tokens from modes of this peripheral and from others; each enable is taken back by one cancel ----

    void EnableSemaphore(const QStringList &tokens);
    void CancelSemaphore(const QStringList &tokens);
    /// Whether some value of a parameter raises a token, and whether a present value does.
    bool canRaise(const QString &token) const;
    bool raises(const QString &token) const;
    /// Tokens in force here, those that the parameters of the set raise included.
    const QStringList &GetValidSemaphoreList() const { return m_ValidSemaphoreList; }

    // ---- Status ----

    IPPARAMSTATUS GetParamStatusFlag() const { return m_paramStatus; }
    /// False if the value is out of range, not offered, or marked as an error.
    bool GetOneParamStatus(const RefParameter &parameter) const;
    /// Whether the condition of a value lets it be offered.
    bool isOffered(const PossibleValue &value) const;
    bool isConditionMet(const QString &expression) const;
    /// What an expression that is not met hangs on.
    ParameterCondition::Unmet unmetTerms(const QString &expression) const;

    struct State;
    std::shared_ptr<const State> save() const;
    void restore(const std::shared_ptr<const State> &state);

signals:
    /// The parameters of the set raise other tokens than before. Cancels go out before enables.
    void paramTokensChanged(const QStringList &cancelled, const QStringList &enabled);
    void SendIPParamStatus(const QString &instance, ChipLoom::IPPARAMSTATUS status);
    void SendIPParamList(const QList<ChipLoom::RefParameter> &list, const QString &instance);
    /// The set or a value in it has changed; once after each rebuild or edit.
    void Send_RefreshParamTabWidget_Signal();

private:
    static constexpr const char *RebuildTask = "parameters"; ///< what waits for the scheduler

    using ParameterKey = QPair<QString, QString>; // BaseMode and Name: whose token it is

    DesignAnswer rangeAnswer(const RefParameter &parameter, const QString &value) const;
    RefParameter *find(const QString &name);
    void readDeclarations();
    void UpdateModeChange();
    void InitParam();
    void rebuild(const QStringList &tokensBefore);
    void rebuildOnce();
    void InitParam_Abstract();
    void InitParam_Other(const IP_MODE_Struct &mode);
    void buildMode(const RefMode &mode, const QString &baseMode);
    void replaceModeParameters(const QString &baseMode, const QList<RefParameter> &chosen);
    const RefParameter *GetMeetConditionRefParameter(const QString &name) const;
    void takeValue(RefParameter &parameter, const Parameter &restriction) const;
    QString GetValidValueInValueList(const QString &value, const RefParameter &parameter) const;
    static bool isRemarked(const PossibleValue &value);
    const PossibleValue *remarkedChoice(const RefParameter &parameter) const;
    DesignAnswer remark(const RefParameter &parameter) const;
    void computeResults();
    void RefParameterList_ValueCheck();
    QString GetParamRangeMappingValue(const QString &bound) const;
    void rememberValues();
    void setOwnToken(const RefParameter &parameter);
    void updateTokens();
    void announceTokens(const QStringList &before);
    void RefreshIPParamStatus();
    void finish(const QStringList &tokensBefore);

    QString m_mcuSerials;
    QString m_InstanceName;
    std::shared_ptr<const PeripheralTree> m_PeripheralsXMLFileInfo;
    Scheduler &m_scheduler;

    QList<RefParameter> m_AllRefParameterListInXMLFile;
    QHash<QString, QVector<int>> m_declarationsByName;
    RefMode m_abstractMode;

    QList<RefParameter> m_RefParameterList;
    QList<IP_MODE_Struct> m_Mode_RefMode_List;
    ParameterValues m_values; ///< of every parameter ever shown
    QHash<QString, CURRENTVALUETYPE> m_valueTypes;
    QStringList m_foreignTokens; ///< with repetitions
    QMap<ParameterKey, QString> m_ownTokens;
    QHash<QString, QList<RefParameter>> m_otherLists; ///< by sender
    QStringList m_ValidSemaphoreList;
    IPPARAMSTATUS m_paramStatus = IPPARAMSTATUS_NORMAL;
    PeripheralClock m_clock;
    std::function<bool(const QString &)> m_isRaised;
    QMap<QString, double> m_clocksOfResults; ///< what the results were computed from, by name, in MHz
    ParameterWarnings m_warnings;
    bool m_rebuilding = false;
};

struct IP_ParamSettingConfiguration::State
{
    QList<RefParameter> parameters;
    QList<IP_MODE_Struct> modes;
    ParameterValues values;
    QHash<QString, CURRENTVALUETYPE> valueTypes;
    QStringList foreignTokens;
    QMap<ParameterKey, QString> ownTokens;
    QHash<QString, QList<RefParameter>> otherLists;
    ParameterWarnings warnings;
    QMap<QString, double> clocksOfResults;
};

} // namespace ChipLoom
