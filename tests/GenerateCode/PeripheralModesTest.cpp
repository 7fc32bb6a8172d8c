#include "ArmCompiler.h"
#include "Design/GPIO_Configuration.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Design/ModeFoundations.h"
#include "Design/NVIC_Configuration.h"
#include "DesignCode.h"
#include "GenerateCode/GeneratedFile.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "GenerateCode/TextEngine.h"
#include "Model/SeriesHelpers.h"
#include "SampleFamilies.h"
#include "ScriptedPrompt.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

// Parameters that the code shows through others, which are calculated of them, or through the peripheral that they
// switch on.
const QSet<QString> ShownByOthers{"CAN1/BaudRate",     "CAN1/Sample_Point",   "CAN2/BaudRate",
                                  "CAN2/Sample_Point", "USBFS/ClockTrimming", "USB_OTGFS1/ClockTrimming"};

// The code of every mode of every peripheral with every value that its parameters offer, as real designs give them.
// What a person can set has to show in the code.
class EveryMode : public testing::TestWithParam<SampleFamily>
{
protected:
    EveryMode() : m_design(AppPaths(QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)), m_prompt) {}

    bool apply(const QString &setting) { return applySetting(m_design, setting); }

    // The function of an instance as the design stands, looked at when it is new.
    QString writtenFunction(const QString &instance)
    {
        const auto generator = peripheralGenerator(series(), instance);
        feed(*generator, m_design, instance);

        const SectionSpan span = findSection(m_source, instance.toLower() + " function");
        if (!span.found())
            return {};
        SectionedText source{std::string(between(m_source, span.start, span.start + span.length))};
        EXPECT_TRUE(editFunction(*generator, source, &DeclaredGenerator::GenerateCode_lm_config_c))
            << qPrintable(instance);
        const SectionSpan declared = findSection(m_header, instance.toLower() + " function");
        EXPECT_TRUE(declared.found()) << qPrintable(instance);
        SectionedText header{std::string(between(m_header, declared.start, declared.start + declared.length))};
        EXPECT_TRUE(editFunction(*generator, header, &DeclaredGenerator::GenerateCode_lm_config_h))
            << qPrintable(instance);
        const QString text = toText(header.joined() + source.joined());
        if (m_seen.contains(text))
            return text;
        m_seen.insert(text);
        static const QRegularExpression fault("\\[/?#|\\(,|, ,|, \\)|= ;|\\n\\n\\n|\\( |_(set|select|config)\\(\\)");
        EXPECT_FALSE(text.contains(fault)) << "\"" << qPrintable(fault.match(text).captured()) << "\" in\n"
                                           << qPrintable(text);
        return text;
    }

    static ZV32MCUSERIALS series() { return MCUSerialString_To_ZV32MCUSERIALS(GetParam().series); }

    void everyValue(const QString &instance)
    {
        writtenFunction(instance);
        QStringList names;
        for (const RefParameter &parameter : m_design.peripheral(instance)->parameters().GetRefParameterList())
            names.append(parameter.Name);
        for (const QString &name : qAsConst(names)) {
            const RefParameter *parameter = m_design.peripheral(instance)->parameters().parameter(name);
            if (!parameter)
                continue;
            QStringList values;
            for (const PossibleValue &value : parameter->PossibleValueList)
                values.append(value.Value);
            const QString former = values.isEmpty() ? parameter->CurrentValue : QString();
            if (values.isEmpty() && !parameter->MaxValue.isEmpty())
                values = QStringList{parameter->MinValue, parameter->MaxValue};
            QStringList outcomes;
            for (const QString &value : qAsConst(values)) {
                if (apply("param/" + instance + '/' + name + '=' + value))
                    outcomes.append(writtenFunction(instance));
            }
            if (!former.isEmpty()) // an extreme would bind the bounds of others
                apply("param/" + instance + '/' + name + '=' + former);
            if (outcomes.size() > 1)
                (QSet<QString>(outcomes.begin(), outcomes.end()).size() > 1 ? m_effective : m_silent)
                    .insert(instance + '/' + name);
        }
    }

    // What the modes of an instance hold is what its code finds; the banks of a controller have their pins from it.
    void findsItsSignals(const QString &instance)
    {
        const auto generator =
            peripheralGenerator(series(), instance.startsWith("XMC_") ? QStringLiteral("XMC") : instance);
        feed(*generator, m_design, instance);
        for (const QString &signal : m_design.peripheral(instance)->signalsInUse())
            EXPECT_TRUE(generator->SignalName_Used(signal)) << qPrintable(instance) << ' ' << qPrintable(signal);
    }

    // All that was written, as one source: the functions with numbers behind their names.
    QString allFunctions() const
    {
        static const QRegularExpression own("\\b(lm_\\w+)\\(");
        static const QRegularExpression define("^#define (\\w+)", QRegularExpression::MultilineOption);
        QString source = QString("#include \"%1.h\"\n").arg(GetParam().folder.toLower());
        int number = 0;
        for (QString text : m_seen) {
            text.replace(define, "#undef \\1\n#define \\1");
            source += text.replace(own, QString("\\1_%1(").arg(++number)) + '\n';
        }
        return source;
    }

    static QString complaints(const QString &source)
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath("functions.c"));
        if (!file.open(QIODevice::WriteOnly) || file.write(source.toLatin1()) < 0)
            return "cannot write " + file.fileName();
        file.close();
        return ChipLoom::Test::complaintsOfCompiler(GetParam().folder, {file.fileName()}, {});
    }

    ScriptedPrompt m_prompt{0};
    Design m_design;
    std::string m_source, m_header;
    QSet<QString> m_seen;
    QSet<QString> m_effective, m_silent; ///< parameters that change the code, or did not somewhere
};

TEST_P(EveryMode, GivesCompleteCalls)
{
    const SampleFamily &family = GetParam();
    const QString folder = family.folder;
    const TextRead source = readSourceText(":/srcode/" + folder + '/' + folder.toLower() + "_lm_config.c");
    ASSERT_TRUE(source.ok);
    m_source = source.text;
    const TextRead header = readSourceText(":/srcode/" + folder + '/' + folder.toLower() + "_lm_config.h");
    ASSERT_TRUE(header.ok);
    m_header = header.text;
    ASSERT_TRUE(m_design.NewDesign(family.series, family.device, family.package));
    m_design.scheduler().drain();
    const DesignSnapshot empty = m_design.snapshot();

    QStringList refused;
    for (const PeripheralsBaseInfo &entry : m_design.peripherals()) {
        const QString instance = entry.InstanceName;
        const IP_ModeAndConfiguration *peripheral = m_design.peripheral(instance);
        if (!peripheral || !generatorParts(series(), instance).questions)
            continue;
        for (const auto &control : peripheral->controls()) {
            for (const QString &item : itemsOf(*control)) {
                ASSERT_TRUE(m_design.restore(empty));
                for (const QString &other : ChipLoom::Test::foundationsOf(instance, control->modeName(), item))
                    apply(other);
                if (chooseItem(m_design, instance, control->modeName(), item)) {
                    completeModes(m_design, instance);
                    findsItsSignals(instance);
                    everyValue(instance);
                    if (apply("dma/any=" + instance)) // some parameters need the request
                        everyValue(instance);
                } else {
                    refused.append(instance + '/' + control->modeName() + '=' + item);
                }
            }
        }
    }
    EXPECT_GT(m_seen.size(), 300);
    EXPECT_TRUE(refused.isEmpty()) << qPrintable(refused.join('\n'));
    const QStringList silent = (m_silent - m_effective - ShownByOthers).values();
    EXPECT_TRUE(silent.isEmpty()) << "parameters without an effect on the code:\n" << qPrintable(silent.join('\n'));
    EXPECT_EQ(complaints(allFunctions()).toStdString(), "");
}

INSTANTIATE_TEST_SUITE_P(Slow, EveryMode, testing::ValuesIn(sampleFamilies()), nameOfFamily);

} // namespace
