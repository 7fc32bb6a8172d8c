#include "GenerateCode/TextEngine.h"
#include "GenerateCode/UserBlocks.h"

#include <benchmark/benchmark.h>

using namespace ChipLoom;

namespace {

constexpr int Instances = 80; // some 140,000 characters, as the largest template

QString instanceText(int i)
{
    const QString name = "usart" + QString::number(i);
    QString text = "[#" + name + " function]\nvoid lm_" + name + "_init(void)\n{\n";
    for (int step = 0; step < 6; ++step) {
        text += "  /* add user code begin " + name + "_init " + QString::number(step) +
                " */\n\n  /* add user code end " + name + "_init " + QString::number(step) + " */\n\n";
        text += "[#Interrupt_" + QString::number(step) +
                "]\n  usart_interrupt_enable(USART1, USART_RDBF_INT, TRUE);\n" +
                "  gpio_init(GPIOA, &gpio_init_struct);\n[/#Interrupt_" + QString::number(step) + "]\n\n";
    }
    return text + "}\n[/#" + name + " function]\n\n";
}

QString templateText()
{
    QString text;
    for (int i = 0; i < Instances; ++i)
        text += instanceText(i);
    return text;
}

// What its user made of it: every second block is written in.
QString editedText()
{
    QString text = templateText();
    for (int i = 0; i < Instances; ++i)
        for (int step = 0; step < 6; step += 2) {
            const QString begin =
                "add user code begin usart" + QString::number(i) + "_init " + QString::number(step) + " */\n";
            text.replace(begin, begin + "  own_step();\n");
        }
    return text;
}

void keepSections(benchmark::State &state)
{
    const std::string source = toCode(templateText());
    for (auto _ : state) {
        std::string text = source;
        for (int i = 0; i < Instances; ++i)
            GenerateCode_Handle_Function(text, "usart" + QString::number(i) + " function", i % 2 == 0);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetLabel(std::to_string(source.size()) + " characters");
}

void keepSectionsByExpression(benchmark::State &state)
{
    const QString source = templateText();
    for (auto _ : state) {
        QString text = source;
        for (int i = 0; i < Instances; ++i) {
            const QString name = "usart" + QString::number(i) + " function";
            const QRegularExpression section("\\[#" + name + "\\] *\\n(.+)\\[/#" + name + "\\] *\\n+",
                                             QRegularExpression::DotMatchesEverythingOption);
            const QRegularExpressionMatch match = section.match(text);
            text.replace(match.capturedStart(), match.capturedLength(),
                         i % 2 == 0 ? match.captured(1) + "\n" : QString());
        }
        benchmark::DoNotOptimize(text.data());
    }
}

void keepUserBlocks(benchmark::State &state)
{
    const std::string source = toCode(templateText());
    const std::string edited = toCode(editedText());
    for (auto _ : state) {
        std::string text = source;
        GenerateCode_Handle_KeepUserCode_EXT(edited, text);
        benchmark::DoNotOptimize(text.data());
    }
}

void keepUserBlocksByExpression(benchmark::State &state)
{
    const QString source = templateText();
    const QString edited = editedText();
    const QRegularExpression begin(R"(\/\* *add user code begin (\w[\w ]*) *\*\/\n+)");
    for (auto _ : state) {
        QString text = source;
        QRegularExpressionMatchIterator names = begin.globalMatch(edited);
        while (names.hasNext()) {
            const QString name = names.next().captured(1).trimmed();
            const QRegularExpression block("\\/\\* *add user code begin " + name +
                                               " *\\*\\/(.+)\\/\\* *add user code end " + name + " *\\*\\/",
                                           QRegularExpression::DotMatchesEverythingOption);
            const QRegularExpressionMatch kept = block.match(edited);
            const QRegularExpressionMatch place = block.match(text);
            text.replace(place.capturedStart(), place.capturedLength(), kept.captured());
        }
        benchmark::DoNotOptimize(text.data());
    }
}

BENCHMARK(keepSections)->Unit(benchmark::kMillisecond);
BENCHMARK(keepSectionsByExpression)->Unit(benchmark::kMillisecond);
BENCHMARK(keepUserBlocks)->Unit(benchmark::kMillisecond);
BENCHMARK(keepUserBlocksByExpression)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
