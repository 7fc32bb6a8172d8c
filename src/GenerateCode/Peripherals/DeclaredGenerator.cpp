#include "GenerateCode/Peripherals/DeclaredGenerator.h"

#include "GenerateCode/FunctionPlan.h"
#include "GenerateCode/SectionedText.h"
#include "GenerateCode/TextEngine.h"
#include "Model/SeriesHelpers.h"

#include <QDebug>

#include <algorithm>
#include <array>

namespace ChipLoom {

DeclaredGenerator::DeclaredGenerator(ZV32MCUSERIALS series, const QString &instanceName, const PeripheralTopics &topics,
                                     const QStringList &features)
    : PeripheralGenerator(series, instanceName), m_topics(topics), m_features(features)
{
    m_globalSignals = topics.globalSignals;
    if (const SeriesTraits *traits = seriesTraits(series); traits && !m_features.isEmpty())
        m_features.append(traits->pinsRemapped ? QStringLiteral("remap") : QStringLiteral("mux"));
}

bool DeclaredGenerator::HaveCode() const
{
    return m_IPValidFlag ? holds(m_topics.haveCode) : m_topics.whenOff;
}

bool DeclaredGenerator::inOwnSection(SectionedText &text, const std::vector<Topic> &topics)
{
    const QString section = functionSection();
    if (!HaveCode())
        return GenerateCode_Handle_Function(text, section, false) || !m_topics.when.isEmpty();
    if (topics.empty())
        return GenerateCode_Handle_Function(text, section, true);
    const std::shared_ptr<const TextCut> body = text.keptBody(section);
    std::string written;
    written.reserve(body ? body->text().size() : 0);
    if (!body || !FunctionPlan::of(*body, topics, *this).write(*this, written))
        return false;
    GenerateCode_DeleteBlankLine_FunctionEnd(written);
    return text.replaceSection(section, std::move(written));
}

bool DeclaredGenerator::GenerateCode_lm_config_c(SectionedText &text)
{
    return inOwnSection(text, m_topics.function);
}

bool DeclaredGenerator::GenerateCode_lm_config_h(SectionedText &text)
{
    return inOwnSection(text, m_topics.header);
}

bool DeclaredGenerator::GenerateCode_main_c(SectionedText &text)
{
    return inOwnSection(text, m_topics.mainCall);
}

bool DeclaredGenerator::GenerateCode_interrupt_int_c(SectionedText &text)
{
    for (const InterruptBranch &branch : m_topics.branches) {
        if (!m_features.isEmpty() && !hasFeatures(branch.when))
            continue;
        const bool keep = HaveCode() && holds(branch.test);
        const bool mayLack = m_features.isEmpty() && !branch.when.isEmpty();
        if (!GenerateCode_Handle_Function(text, m_IPName + branch.suffix, keep) && !mayLack) {
            qWarning("%s: the section %s is missing among the handlers", qPrintable(m_IPName),
                     qPrintable(m_IPName + branch.suffix));
            return false;
        }
    }
    return true;
}

QString DeclaredGenerator::fullSignal(const QString &shortName) const
{
    return m_globalSignals.contains(shortName) ? shortName : m_IPName + QLatin1Char('_') + shortName;
}

QStringList DeclaredGenerator::fullSignals(const QStringList &shortNames) const
{
    QStringList names;
    for (const QString &name : shortNames)
        names.append(fullSignal(name));
    return names;
}

bool DeclaredGenerator::holds(const TopicTest &test) const
{
    const auto any = [&test](const auto &predicate) {
        return std::any_of(test.names.begin(), test.names.end(), predicate);
    };
    if (std::any_of(test.instead.begin(), test.instead.end(), [this](const TopicTest &one) { return holds(one); }))
        return true;
    for (const TopicTest &further : test.also) {
        if (!holds(further))
            return false;
    }
    switch (test.kind) {
    case TopicTest::Kind::Always:
        return true;
    case TopicTest::Kind::AnyTrue:
        return any([this](const QString &name) { return isTrue(name); });
    case TopicTest::Kind::OneOf:
        return test.values.contains(Get_DefineString_Param(test.names.first()));
    case TopicTest::Kind::Other: {
        const QString current = Get_DefineString_Param(test.names.first());
        return !current.isEmpty() && !test.values.contains(current);
    }
    case TopicTest::Kind::NoneOf:
        return !test.values.contains(Get_DefineString_Param(test.names.first()));
    case TopicTest::Kind::Given:
        return any([this](const QString &name) { return !Get_DefineString_Param(name).isEmpty(); });
    case TopicTest::Kind::Requested:
        return any([this](const QString &suffix) {
            const QString name = m_IPName + suffix;
            return std::any_of(m_ValidDMAChannalList.begin(), m_ValidDMAChannalList.end(),
                               [&](const DMARequest *request) { return request->requestName == name; });
        });
    case TopicTest::Kind::Placed:
        return any([this](const QString &name) { return SignalName_Used(fullSignal(name)); });
    }
    return false;
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

QString DeclaredGenerator::value(const TopicValue &wanted, const QString &sample) const
{
    switch (wanted.kind) {
    case TopicValue::Kind::Sample:
        return sample;
    case TopicValue::Kind::Computed:
        return wanted.function(*this);
    case TopicValue::Kind::OrSample: {
        const QString current = Get_DefineString_Param(wanted.text);
        return current.isEmpty() ? sample : current;
    }
    case TopicValue::Kind::Parameter:
        break;
    }
    return Get_DefineString_Param(wanted.text);
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
