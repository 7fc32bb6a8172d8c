#include "GenerateCode/PeripheralDesign.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "GenerateCode/SeriesGeneratorRow.h"

#include <QRegularExpression>

using namespace ChipLoom;

namespace {

struct Folder
{
    const char *name;
    ZV32MCUSERIALS series;
};

void PrintTo(const Folder &folder, std::ostream *out)
{
    *out << folder.name;
}

// Every topic of every instance, switched on and off on the composed templates.
class EveryTopic : public PeripheralDesign, public testing::WithParamInterface<Folder>
{
protected:
    using Alternatives = QMap<QString, QStringList>; // parameter -> values worth trying

    static void collect(const TopicTest &test, const QString &instance, Alternatives &values, QStringList &requests)
    {
        switch (test.kind) {
        case TopicTest::Kind::AnyTrue:
            for (const QString &name : test.names)
                values[name].append("TRUE");
            break;
        case TopicTest::Kind::OneOf:
            values[test.names.first()] += test.values;
            break;
        case TopicTest::Kind::Other:
        case TopicTest::Kind::Given:
            values[test.names.first()].append("1");
            break;
        case TopicTest::Kind::Requested:
            requests.append(instance + test.names.first());
            break;
        default:
            break;
        }
        for (const auto &tests : {test.also, test.instead}) {
            for (const TopicTest &further : tests)
                collect(further, instance, values, requests);
        }
    }

    static void collect(const std::vector<Topic> &topics, const QString &instance, Alternatives &values,
                        QStringList &requests, QStringList &signalNames)
    {
        for (const Topic &topic : topics) {
            collect(topic.test, instance, values, requests);
            signalNames += topic.signalNames;
            for (const TopicValue &value : topic.values) {
                if (!value.text.isEmpty() && !values.contains(value.text))
                    values[value.text] = QStringList{"1"};
            }
            collect(topic.inner, instance, values, requests, signalNames);
        }
    }

    QStringList instances(const QString &source) const
    {
        static const QRegularExpression opening("^\\[#([\\w-]+) function\\]", QRegularExpression::MultilineOption);
        const QStringList known = seriesGeneratorRow(GetParam().series)->dispatchList();
        QStringList names;
        QRegularExpressionMatchIterator match = opening.globalMatch(source);
        while (match.hasNext()) {
            const QString key = match.next().captured(1);
            for (const QString &name : known) {
                if (name.toLower() == key && peripheralTopics(kindOfInstance(name)))
                    names.append(name);
            }
        }
        return names;
    }

    // Writes all files of an instance and looks at what became of its sections.
    void write(const QString &folder, const QString &instance, bool valid)
    {
        SCOPED_TRACE(qPrintable(instance));
        const auto made = generator(GetParam().series, instance, valid);
        for (const char *file : {"lm_config.c", "lm_config.h", "main.c"}) {
            const std::string source = toCode(composed(folder, file));
            const SectionSpan span = findSection(source, instance.toLower() + " function");
            ASSERT_TRUE(span.found()) << file;
            SectionedText section{std::string(between(source, span.start, span.start + span.length))};
            const auto edit = QString(file) == "lm_config.c"   ? &DeclaredGenerator::GenerateCode_lm_config_c
                              : QString(file) == "lm_config.h" ? &DeclaredGenerator::GenerateCode_lm_config_h
                                                               : &DeclaredGenerator::GenerateCode_main_c;
            EXPECT_TRUE(editFunction(*made, section, edit)) << file;
            const QString text = toText(section.joined());
            EXPECT_FALSE(text.contains("[#") || text.contains("[/#")) << qPrintable(text);
            EXPECT_FALSE(text.contains("\n\n\n")) << "two blank lines: " << qPrintable(text);
            EXPECT_FALSE(text.contains("(,") || text.contains(", ,") || text.contains(", )")) << qPrintable(text);
            EXPECT_EQ(text.isEmpty(), !made->HaveCode()) << file;
        }
        const QString handled = handlers(composed(folder, "int.c"), *made);
        const QRegularExpression own("\\[#" + instance + "_(?!\\w*IRQHandler|NANDFlash|PCCard|SDRAM)");
        EXPECT_FALSE(handled.contains(own)) << qPrintable(own.match(handled).captured());
    }
};

TEST_P(EveryTopic, LeavesNoMarkerWhetherItIsOnOrOff)
{
    const QString folder = GetParam().name;
    const QStringList names = instances(composed(folder, "lm_config.c"));
    EXPECT_GE(names.size(), 15);
    for (const QString &instance : names) {
        forget();
        write(folder, instance, false);

        const PeripheralTopics &topics = *peripheralTopics(kindOfInstance(instance));
        Alternatives values;
        QStringList requests, signalNames;
        collect(topics.function, instance, values, requests, signalNames);
        collect(topics.mainCall, instance, values, requests, signalNames);
        collect(topics.header, instance, values, requests, signalNames);
        collect(topics.haveCode, instance, values, requests);
        for (const InterruptBranch &branch : topics.branches)
            collect(branch.test, instance, values, requests);
        int passes = 1;
        for (const QStringList &alternatives : qAsConst(values))
            passes = qMax(passes, alternatives.size());
        for (int pass = 0; pass < passes; ++pass) {
            forget();
            QMap<QString, QString> chosen;
            for (auto value = values.begin(); value != values.end(); ++value)
                chosen[value.key()] = value->at(pass % value->size());
            for (const char *count : {"NbrOfOrdinarySequence", "NbrOfPreemptSequence"}) {
                if (chosen.contains(count))
                    chosen[count] = "0"; // the sequences have a test of their own
            }
            set(chosen);
            int pin = 0;
            signalNames.removeDuplicates();
            for (const QString &name : qAsConst(signalNames)) {
                const QString full = topics.globalSignals.contains(name) ? name : instance + '_' + name;
                place(full, "PA" + QString::number(pin++), "GPIO_MODE_INPUT");
            }
            for (const QString &name : qAsConst(requests))
                request(name);
            enableVector(instance, instance + "_IRQHandler");
            write(folder, instance, true);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Folders, EveryTopic,
                         testing::Values(Folder{"ZV32F421", ZV32F421}, Folder{"ZV32F403A_407", ZV32F403A},
                                         Folder{"ZV32F435_437", ZV32F435}),
                         [](const auto &info) { return info.param.name; });

} // namespace
