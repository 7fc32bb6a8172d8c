#pragma once

#include "GenerateCode/Peripherals/Topics.h"
#include "GenerateCode/PinIndex.h"
#include "GenerateCode/SectionedText.h"
#include "Model/ShareParameter.h"

#include <QHash>
#include <QPair>
#include <QVector>

#include <memory>
#include <mutex>
#include <vector>

namespace ChipLoom {

class InstanceQuestions;

/// A test as one instance asks it: names are complete, and parameters have numbers.
class TopicQuestion
{
public:
    TopicQuestion(const TopicTest &test, InstanceQuestions &instance);

    bool holds(const DeclaredGenerator &generator) const;

private:
    /// What most questions do without: they ask for one parameter, or nothing.
    struct Further
    {
        std::vector<int> parameters;
        QStringList requests;
        SignalNumbers signalNumbers;
        QStringList values;
        std::vector<TopicQuestion> also, instead;
    };
    bool holdsItself(const DeclaredGenerator &generator) const;

    TopicTest::Kind m_kind;
    int m_parameter = -1; ///< where there is nothing further
    std::unique_ptr<const Further> m_further;
};

/// Parameters that are found like those of the design, by names that none of these has.
using DerivedValues = QVector<QPair<QString, QString>>;

/// Where the parameters of an instance stand in their list.
struct ParameterPlaces
{
    ParameterPlaces(const QList<RefParameter> &list, const DerivedValues &derived);

    std::vector<QString> names; ///< of the list and, behind them, of the derived values
    NameTable ofList;           ///< the places of those of the list
    std::vector<int> byNumber;  ///< the place of what is asked for; -1 where there is none
};

/// What the topics of a kind ask of the design for one instance. Kept for the whole run of the program, and used by all
/// threads: parameters are found by number where they stood the last time, as long as lists of the same names come.
class InstanceQuestions
{
public:
    struct Branch
    {
        QString section; ///< among the handlers
        QString when;    ///< as InterruptBranch::when
        TopicQuestion question;
    };

    static InstanceQuestions &of(const PeripheralTopics &topics, const QString &instanceName);
    InstanceQuestions(const PeripheralTopics &topics, QString instanceName);

    const PeripheralTopics &topics() const { return m_topics; }
    const QString &instanceName() const { return m_instanceName; }
    /// The signal as the design names it: with the instance in front unless it is one of the kind's global signals.
    QString fullSignal(const QString &shortName) const;
    QStringList fullSignals(const QStringList &shortNames) const;
    const TopicQuestion &haveCode() const { return m_haveCode; }
    const std::vector<Branch> &branches() const { return m_branches; }
    /// Of the branches' sections.
    SectionedText::Spots spotsIn(const SectionedText &handlers) const;

    /// The number of a parameter, given to it when it is first asked for.
    int numberOf(const QString &parameter);
    using Places = std::shared_ptr<const ParameterPlaces>;
    /// In one `generation` (see DesignLists) the list is looked at once, unless another comes in between.
    Places placesIn(const QList<RefParameter> &list, const DerivedValues &derived, quint64 generation);

private:
    bool areThoseOfBefore(const QList<RefParameter> &list, const DerivedValues &derived) const;

    const PeripheralTopics &m_topics;
    const QString m_instanceName;
    std::mutex m_mutex; ///< of what follows
    QHash<QString, int> m_numbers;
    Places m_places; ///< of the last list and derived values
    quint64 m_generation = 0;

    TopicQuestion m_haveCode;
    std::vector<Branch> m_branches;
};

} // namespace ChipLoom
