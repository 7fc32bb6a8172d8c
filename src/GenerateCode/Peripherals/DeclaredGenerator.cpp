#include "GenerateCode/Peripherals/DeclaredGenerator.h"

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
    if (const SeriesTraits *traits = seriesTraits(series); traits && !m_features.isEmpty())
        m_features.append(traits->pinsRemapped ? QStringLiteral("remap") : QStringLiteral("mux"));
}

bool DeclaredGenerator::HaveCode() const
{
    return m_IPValidFlag ? holds(m_topics.haveCode) : m_topics.whenOff;
}

bool DeclaredGenerator::inOwnSection(QString &text, const std::vector<Topic> &topics)
{
    const SectionSpan span = findSection(text, codeKey() + QLatin1String(" function"));
    if (!span.found())
        return !HaveCode() && !m_topics.when.isEmpty();
    QString work;
    if (HaveCode()) {
        for (const QString &name : m_topics.globalSignals) {
            for (SignalsGPIOSetting *setting : Get_VaildSignalsGPIOSettingList(m_AllSignalsGPIOSettingList, name)) {
                if (!m_VaildSignalsGPIOSettingList.contains(setting))
                    m_VaildSignalsGPIOSettingList.append(setting);
            }
        }
        work = keptBody(text, span);
        if (!run(topics, work))
            return false;
        GenerateCode_DeleteBlankLine_FunctionEnd(work);
    }
    replaceSection(text, span, work);
    return true;
}

bool DeclaredGenerator::GenerateCode_lm_config_c(QString &text)
{
    return inOwnSection(text, m_topics.function);
}

bool DeclaredGenerator::GenerateCode_lm_config_h(QString &text)
{
    return inOwnSection(text, m_topics.header);
}

bool DeclaredGenerator::GenerateCode_main_c(QString &text)
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
    return m_topics.globalSignals.contains(shortName) ? shortName : m_IPName + QLatin1Char('_') + shortName;
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
        return any([this](const QString &name) { return Get_DefineString_Param(name) == QLatin1String("TRUE"); });
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
            return std::any_of(m_ValidDMAChannalList.begin(), m_ValidDMAChannalList.end(),
                               [&](const DMARequest *request) { return request->requestName == m_IPName + suffix; });
        });
    case TopicTest::Kind::Placed:
        return any([this](const QString &name) { return SignalName_Used(fullSignal(name)); });
    }
    return false;
}

bool DeclaredGenerator::run(const std::vector<Topic> &topics, QString &work) const
{
    if (topics.empty())
        return true;
    SectionedText text = cutAtSections(work);
    for (const Topic &topic : topics) {
        if (!topic.when.isEmpty() && !(m_features.isEmpty() ? isThere(topic, text) : hasFeatures(topic.when)))
            continue;
        if (!apply(topic, text)) {
            qWarning("%s: %s does not find '%s' in the template", qPrintable(m_IPName), qPrintable(topic.name),
                     qPrintable(topic.target));
            return false;
        }
    }
    work = text.joined();
    return true;
}

// Terms joined by "|", these by "&"; "!" turns a term round.
bool DeclaredGenerator::hasFeatures(const QString &when) const
{
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

bool DeclaredGenerator::isThere(const Topic &topic, SectionedText &work)
{
    const auto stands = [&work](const QString &text) {
        return work.editFirst([&](const QString &part) { return part.contains(text); });
    };
    switch (topic.form) {
    case Topic::Form::Call:
    case Topic::Form::Line:
        return stands(topic.target + QLatin1Char('('));
    case Topic::Form::Assignment:
        return stands(topic.target);
    default:
        return findSection(work.section(topic.section()), topic.section()).found();
    }
}

bool DeclaredGenerator::apply(const Topic &topic, SectionedText &work) const
{
    switch (topic.form) {
    case Topic::Form::Pin:
        return GenerateCode_SignalPIN(fullSignal(topic.signalNames.first()), topic.target,
                                      work.section(topic.section()));
    case Topic::Form::Declaration:
        if (topic.signalNames.isEmpty())
            return applyDeclaration(topic, work.section(topic.section()));
        return GenerateCode_GPIO_init_struct(work.section(topic.section()), fullSignals(topic.signalNames),
                                             topic.target, false);
    case Topic::Form::Remap:
        return GenerateCode_GPIOGMUX(fullSignals(topic.signalNames), work.section(topic.section()));
    case Topic::Form::Section:
        return applySection(topic, work.section(topic.section()));
    case Topic::Form::Call:
    case Topic::Form::Line:
        return work.editFirst([&](QString &part) { return applyCall(topic, part); });
    case Topic::Form::Assignment:
        return work.editFirst([&](QString &part) { return applyAssignment(topic, part); });
    case Topic::Form::Remarks:
        return GenerateCode_Peripheral_interrupt_remarks(work.section(topic.section()), m_IPName);
    case Topic::Form::Edit: {
        QString text = work.joined();
        const bool edited = topic.edit(*this, text);
        work = SectionedText(text);
        return edited;
    }
    }
    return false;
}

bool DeclaredGenerator::applySection(const Topic &topic, QString &work) const
{
    const SectionSpan span = findSection(work, topic.target);
    if (!span.found())
        return false;
    QString kept;
    if (holds(topic.test)) {
        kept = keptBody(work, span);
        if (!run(topic.inner, kept))
            return false;
        // One blank line stands behind what stays of a section, whatever went at its end.
        while (kept.endsWith(QLatin1Char('\n')))
            kept.chop(1);
        if (!kept.isEmpty())
            kept += QLatin1String("\n\n");
    }
    replaceSection(work, span, kept);
    return true;
}

bool DeclaredGenerator::applyDeclaration(const Topic &topic, QString &work) const
{
    const SectionSpan span = findSection(work, topic.target);
    if (!span.found())
        return false;
    replaceSection(work, span, holds(topic.test) ? work.mid(span.bodyStart, span.bodyLength) : QString());
    return true;
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

bool DeclaredGenerator::applyCall(const Topic &topic, QString &work) const
{
    const bool mayVanish = topic.form == Topic::Form::Line;
    const CallMatch found = findCall(work, topic.target, topic.values.size(), mayVanish);
    if (!found.found())
        return false;
    QString written;
    if (holds(topic.test)) {
        QStringList arguments;
        for (int i = 0; i < topic.values.size(); ++i)
            arguments.append(value(topic.values.at(i), found.arguments.at(i)));
        written = callText(topic.target, arguments);
        if (mayVanish)
            written = QLatin1String("  ") + written + QLatin1String("\n\n");
    }
    work.replace(found.start, found.length, written);
    return true;
}

bool DeclaredGenerator::applyAssignment(const Topic &topic, QString &work) const
{
    AssignmentMatch match = findAssignment(work, topic.target);
    while (match.found() && !match.closed) // a part of a sum
        match = findAssignment(work, topic.target, match.start + match.length);
    if (!match.found())
        return false;
    const QString written = value(topic.values.first(), work.mid(match.valueStart, match.valueLength));
    if (!written.isEmpty()) // without a value the sample is the driver's own default
        work.replace(match.valueStart, match.valueLength, written);
    return true;
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
    if (kind == QLatin1String("UART")) // a port without clock output
        return &usartTopics();
    if (kind == QLatin1String("XMC_NORFlash-PSRAM-SRAM-ROM-LCD")) // a bank with address lines of its own
        return &xmcNorTopics();
    for (const PeripheralTopics *topics : allPeripheralTopics()) {
        if (kind == QLatin1String(topics->kind))
            return topics;
    }
    return nullptr;
}

} // namespace ChipLoom
