#include "GenerateCode/Peripherals/DeclaredGenerator.h"

#include "GenerateCode/FunctionPlan.h"
#include "GenerateCode/Peripherals/TimerStems.h"
#include "GenerateCode/SectionedText.h"
#include "GenerateCode/TextEngine.h"
#include "Model/SeriesHelpers.h"

#include <QDebug>

#include <algorithm>
#include <array>
#include <utility>

namespace ChipLoom {

DeclaredGenerator::DeclaredGenerator(ZV32MCUSERIALS series, InstanceQuestions &questions, QStringList features)
    : GenerateCode_IP(series, questions.instanceName()), m_topics(questions.topics()), m_features(std::move(features)),
      m_questions(questions)
{
    m_globalSignals = m_topics.globalSignals;
}

bool DeclaredGenerator::HaveCode() const
{
    return m_IPValidFlag ? m_questions.haveCode().holds(*this) : m_topics.whenOff;
}

bool DeclaredGenerator::inOwnSection(SectionedText &text, const SectionedText::Spot &section,
                                     const std::vector<Topic> &topics)
{
    if (!HaveCode())
        return text.handleSection(section, false) || !m_topics.when.isEmpty();
    if (topics.empty())
        return text.handleSection(section, true);
    const std::shared_ptr<const TextCut> body = text.keptBody(section);
    std::string written;
    written.reserve(body ? body->text().size() : 0);
    if (!body || !FunctionPlan::of(*body, topics, *this).write(*this, written))
        return false;
    GenerateCode_DeleteBlankLine_FunctionEnd(written);
    return text.replaceSection(section, std::move(written));
}

bool DeclaredGenerator::GenerateCode_lm_config_c(SectionedText &text, const SectionedText::Spot &section)
{
    return inOwnSection(text, section, m_topics.function);
}

bool DeclaredGenerator::GenerateCode_lm_config_h(SectionedText &text, const SectionedText::Spot &section)
{
    return inOwnSection(text, section, m_topics.header);
}

bool DeclaredGenerator::GenerateCode_main_c(SectionedText &text, const SectionedText::Spot &section)
{
    return inOwnSection(text, section, m_topics.mainCall);
}

bool DeclaredGenerator::GenerateCode_interrupt_int_c(SectionedText &text, const SectionedText::Spots &spots)
{
    auto spot = spots.begin();
    for (const InstanceQuestions::Branch &branch : m_questions.branches()) {
        const SectionedText::Spot &section = *spot++;
        if (text.isGone(section) || (!m_features.isEmpty() && !hasFeatures(branch.when)))
            continue;
        const bool mayLack = m_features.isEmpty() && !branch.when.isEmpty();
        const bool keep = HaveCode() && branch.question.holds(*this);
        if (!text.handleSection(section, keep) && !mayLack) {
            qWarning("%s: the section %s is missing among the handlers", qPrintable(m_IPName),
                     qPrintable(branch.section));
            return false;
        }
    }
    return true;
}

void DeclaredGenerator::SetRefParameterList(const QList<RefParameter> &list)
{
    GenerateCode_IP::SetRefParameterList(list);
    m_places.reset();
}

void DeclaredGenerator::SetDerivedValues(DerivedValues values)
{
    m_derivedValues = std::move(values);
    m_places.reset();
}

const QString *DeclaredGenerator::asked(int number) const
{
    const auto at = static_cast<size_t>(number);
    if (!m_places || at >= m_places->byNumber.size())
        m_places = m_questions.placesIn(m_RefParameterList, m_derivedValues, lists().generation);
    const int place = m_places->byNumber[at];
    if (place < 0)
        return nullptr;
    const int derived = place - m_RefParameterList.size();
    return derived < 0 ? &m_RefParameterList.at(place).CurrentValue : &m_derivedValues.at(derived).second;
}

const RefParameter *DeclaredGenerator::parameter(const QString &name) const
{
    if (!m_places)
        m_places = m_questions.placesIn(m_RefParameterList, m_derivedValues, lists().generation);
    const int place = m_places->ofList.find(name);
    return place < 0 ? nullptr : &m_RefParameterList.at(place);
}

bool DeclaredGenerator::isRequested(const QString &request) const
{
    return std::any_of(lists().ValidDMAChannalList.begin(), lists().ValidDMAChannalList.end(),
                       [&](const DMARequest *one) { return one->requestName == request; });
}

bool DeclaredGenerator::hasTopic(const Topic &topic, bool standsInTemplate) const
{
    return topic.when.isEmpty() || (m_features.isEmpty() ? standsInTemplate : hasFeatures(topic.when));
}

// Terms joined by "|", these by "&"; "!" turns a term round.
bool DeclaredGenerator::hasFeatures(const QString &when) const
{
    const bool isOne =
        std::all_of(when.begin(), when.end(), [](QChar c) { return c.isLetterOrNumber() || c == QLatin1Char('_'); });
    if (isOne)
        return when.isEmpty() || m_features.contains(when);
    const auto holdsTerm = [this](const QStringRef &term) {
        const QStringRef name = term.trimmed();
        const bool negated = name.startsWith(QLatin1Char('!'));
        return negated != m_features.contains(negated ? name.mid(1) : name);
    };
    const QVector<QStringRef> parts = when.splitRef(QLatin1Char('&'), Qt::SkipEmptyParts);
    return std::all_of(parts.begin(), parts.end(), [&](const QStringRef &part) {
        const QVector<QStringRef> terms = part.split(QLatin1Char('|'));
        return std::any_of(terms.begin(), terms.end(), holdsTerm);
    });
}

QString functionSection(const QString &instanceName)
{
    return instanceName.toLower() + QLatin1String(" function");
}

QString kindOfInstance(const QString &instanceName)
{
    int size = instanceName.size();
    while (size > 0 && instanceName.at(size - 1).isDigit())
        --size;
    while (size > 0 && instanceName.at(size - 1) == QLatin1Char('_'))
        --size;
    return instanceName.left(size);
}

// All timers have one table, and their stems tell them apart.
GeneratorParts generatorParts(ZV32MCUSERIALS series, const QString &instanceName)
{
    const PeripheralTopics *topics = peripheralTopics(kindOfInstance(instanceName));
    const bool isTimer = topics == &tmrTopics();
    const TimerStem *stem = isTimer ? timerStem(series, instanceName) : nullptr;
    if (!topics || (isTimer && !stem))
        return {};
    QStringList features = stem ? stem->featureList() : QStringList();
    if (const SeriesTraits *traits = seriesTraits(series); traits && !features.isEmpty())
        features.append(traits->pinsRemapped ? QStringLiteral("remap") : QStringLiteral("mux"));
    return {&InstanceQuestions::of(*topics, instanceName), features};
}

std::span<const PeripheralTopics *const> allPeripheralTopics()
{
    static const std::array all{
        &usartTopics(),   &spiTopics(),      &i2sTopics(),    &i2cTopics(),       &adcTopics(),   &exintTopics(),
        &ertcTopics(),    &rtcTopics(),      &wdtTopics(),    &wwdtTopics(),      &crcTopics(),   &cmpTopics(),
        &irtmrTopics(),   &scfgTopics(),     &pwcTopics(),    &debugTopics(),     &accTopics(),   &canTopics(),
        &dacTopics(),     &emacTopics(),     &sdioTopics(),   &spimTopics(),      &usbfsTopics(), &xmcPinTopics(),
        &xmcNorTopics(),  &xmcNandTopics(),  &tmrTopics(),    &adcCommonTopics(), &dvpTopics(),   &qspiTopics(),
        &xmcCardTopics(), &xmcSdramTopics(), &usbOtgTopics(),
    };
    return all;
}

const PeripheralTopics *peripheralTopics(const QString &kind)
{
    static const QHash<QString, const PeripheralTopics *> byKind = [] {
        QHash<QString, const PeripheralTopics *> tables;
        for (const PeripheralTopics *topics : allPeripheralTopics())
            tables.insert(QLatin1String(topics->kind), topics);
        tables.insert(QStringLiteral("UART"), &usartTopics()); // a port without clock output
        // A bank with address lines of its own.
        tables.insert(QStringLiteral("XMC_NORFlash-PSRAM-SRAM-ROM-LCD"), &xmcNorTopics());
        return tables;
    }();
    return byKind.value(kind);
}

} // namespace ChipLoom
