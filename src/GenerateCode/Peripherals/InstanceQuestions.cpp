#include "GenerateCode/Peripherals/InstanceQuestions.h"

#include "GenerateCode/Peripherals/DeclaredGenerator.h"

#include <algorithm>
#include <map>
#include <utility>

namespace ChipLoom {

TopicQuestion::TopicQuestion(const TopicTest &test, InstanceQuestions &instance) : m_kind(test.kind)
{
    const bool ofParameters = m_kind != TopicTest::Kind::Placed && m_kind != TopicTest::Kind::Requested;
    if (ofParameters && test.names.size() <= 1 && test.values.isEmpty() && test.also.empty() && test.instead.empty()) {
        m_parameter = test.names.isEmpty() ? -1 : instance.numberOf(test.names.first());
        return;
    }
    auto further = std::make_unique<Further>();
    further->values = test.values;
    if (m_kind == TopicTest::Kind::Placed)
        further->signalNumbers = numbersOfSignals(instance.fullSignals(test.names));
    for (const QString &name : test.names) {
        if (m_kind == TopicTest::Kind::Requested)
            further->requests.append(instance.instanceName() + name);
        else if (ofParameters)
            further->parameters.push_back(instance.numberOf(name));
    }
    for (const TopicTest &one : test.also)
        further->also.emplace_back(one, instance);
    for (const TopicTest &one : test.instead)
        further->instead.emplace_back(one, instance);
    m_further = std::move(further);
}

bool TopicQuestion::holds(const DeclaredGenerator &generator) const
{
    const auto does = [&](const TopicQuestion &one) { return one.holds(generator); };
    if (!m_further)
        return holdsItself(generator);
    return std::any_of(m_further->instead.begin(), m_further->instead.end(), does) ||
           (std::all_of(m_further->also.begin(), m_further->also.end(), does) && holdsItself(generator));
}

bool TopicQuestion::holdsItself(const DeclaredGenerator &generator) const
{
    const auto anyValue = [&](const auto &fits) {
        const auto fitsValueOf = [&](int number) {
            const QString *value = number < 0 ? nullptr : generator.asked(number);
            return value && fits(*value);
        };
        return m_further ? std::any_of(m_further->parameters.begin(), m_further->parameters.end(), fitsValueOf)
                         : fitsValueOf(m_parameter);
    };
    const auto isListed = [this](const QString &value) { return m_further && m_further->values.contains(value); };
    switch (m_kind) {
    case TopicTest::Kind::Always:
        return true;
    case TopicTest::Kind::AnyTrue:
        return anyValue([](const QString &value) { return value == QLatin1String("TRUE"); });
    case TopicTest::Kind::OneOf:
        return anyValue(isListed);
    case TopicTest::Kind::Other:
        return anyValue([&](const QString &value) { return !value.isEmpty() && !isListed(value); });
    case TopicTest::Kind::NoneOf:
        return !anyValue(isListed);
    case TopicTest::Kind::Given:
        return anyValue([](const QString &value) { return !value.isEmpty(); });
    case TopicTest::Kind::Requested:
        return std::any_of(m_further->requests.begin(), m_further->requests.end(),
                           [&](const QString &name) { return generator.isRequested(name); });
    case TopicTest::Kind::Placed:
        return generator.isAnyUsed(m_further->signalNumbers);
    case TopicTest::Kind::OnCrystal:
        return generator.standsOnCrystal();
    }
    return false;
}

InstanceQuestions &InstanceQuestions::of(const PeripheralTopics &topics, const QString &instanceName)
{
    static std::mutex mutex;
    static std::map<std::pair<const PeripheralTopics *, QString>, std::unique_ptr<InstanceQuestions>> all;
    const std::lock_guard lock(mutex);
    std::unique_ptr<InstanceQuestions> &one = all[{&topics, instanceName}];
    if (!one)
        one = std::make_unique<InstanceQuestions>(topics, instanceName);
    return *one;
}

InstanceQuestions::InstanceQuestions(const PeripheralTopics &topics, QString instanceName)
    : m_topics(topics), m_instanceName(std::move(instanceName)), m_haveCode(topics.haveCode, *this)
{
    for (const InterruptBranch &branch : topics.branches)
        m_branches.push_back({m_instanceName + branch.suffix, branch.when, TopicQuestion(branch.test, *this)});
}

QString InstanceQuestions::fullSignal(const QString &shortName) const
{
    return m_topics.globalSignals.contains(shortName) ? shortName : m_instanceName + QLatin1Char('_') + shortName;
}

QStringList InstanceQuestions::fullSignals(const QStringList &shortNames) const
{
    QStringList names;
    for (const QString &name : shortNames)
        names.append(fullSignal(name));
    return names;
}

SectionedText::Spots InstanceQuestions::spotsIn(const SectionedText &handlers) const
{
    SectionedText::Spots spots;
    for (const Branch &branch : m_branches)
        spots.push_back(handlers.spotOf(branch.section));
    return spots;
}

int InstanceQuestions::numberOf(const QString &parameter)
{
    const std::lock_guard lock(m_mutex);
    return *m_numbers.insert(parameter, m_numbers.value(parameter, m_numbers.size()));
}

ParameterPlaces::ParameterPlaces(const QList<RefParameter> &list, const DerivedValues &derived)
{
    names.reserve(static_cast<size_t>(list.size() + derived.size()));
    for (const RefParameter &entry : list)
        names.push_back(entry.Name);
    for (const auto &entry : derived)
        names.push_back(entry.first);
    ofList.reserve(list.size());
    for (int place = 0; place < list.size(); ++place)
        ofList.insert(names[static_cast<size_t>(place)], place);
}

// Names of one design are the same texts each time, which is seen without looking into them.
bool InstanceQuestions::areThoseOfBefore(const QList<RefParameter> &list, const DerivedValues &derived) const
{
    if (m_places->names.size() != static_cast<size_t>(list.size() + derived.size()))
        return false;
    auto name = m_places->names.begin();
    for (const RefParameter &entry : list) {
        if (!entry.Name.isSharedWith(*name++))
            return false;
    }
    return std::all_of(derived.begin(), derived.end(),
                       [&](const auto &entry) { return entry.first.isSharedWith(*name++); });
}

InstanceQuestions::Places InstanceQuestions::placesIn(const QList<RefParameter> &list, const DerivedValues &derived,
                                                      quint64 generation)
{
    const std::lock_guard lock(m_mutex);
    const auto numbers = static_cast<size_t>(m_numbers.size());
    const bool isLookedAt = std::exchange(m_generation, generation) == generation && generation != 0;
    if (m_places && m_places->byNumber.size() == numbers && (isLookedAt || areThoseOfBefore(list, derived)))
        return m_places;
    auto places = std::make_shared<ParameterPlaces>(list, derived);
    places->byNumber.assign(numbers, -1);
    for (size_t place = places->names.size(); place-- > 0;) { // so that the first of a name is found
        const auto number = m_numbers.constFind(places->names[place]);
        if (number != m_numbers.constEnd())
            places->byNumber[static_cast<size_t>(*number)] = static_cast<int>(place);
    }
    m_places = std::move(places);
    return m_places;
}

} // namespace ChipLoom
