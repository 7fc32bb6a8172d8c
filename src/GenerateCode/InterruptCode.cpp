#include "GenerateCode/Generatecode_ALL.h"
#include "GenerateCode/Generatecode_DMA.h"
#include "GenerateCode/Generatecode_GPIO.h"
#include "GenerateCode/Generatecode_SYSTEM.h"
#include "GenerateCode/TextEngine.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

// The interrupts of a generation: priorities, handlers and their prototypes.

namespace ChipLoom {

namespace {

// Handlers that RT-Thread supplies itself.
const QStringList RtthreadHandlers{QStringLiteral("HardFault_Handler_rtthread"),
                                   QStringLiteral("PendSV_Handler_rtthread"),
                                   QStringLiteral("SysTick_Handler_rtthread")};

// The word up to the first "," of a call's argument list that begins at `from`.
QString firstArgument(const QString &line, int from)
{
    const int end = line.indexOf(QLatin1Char(','), from);
    return end < 0 ? QString() : line.mid(from, end - from).trimmed();
}

} // namespace

bool GenerateCode_ALL::GeneralCode_NVIC_config_lm_config_c(QString &text) const
{
    const SectionSpan span = findSection(text, QStringLiteral("config nvic"));
    if (!span.found())
        return false;
    QString work = keptBody(text, span);
    if (!GeneralCode_NVIC_config_sub_lm_config_c(work))
        return false;
    GenerateCode_DeleteBlankLine_FunctionEnd(work);
    replaceSection(text, span, work);
    return true;
}

// One walk over the lines: each vector has one, and a family's templates hold the vectors of all its series.
bool GenerateCode_ALL::GeneralCode_NVIC_config_sub_lm_config_c(QString &text) const
{
    const QString groupCall = QStringLiteral("nvic_priority_group_config");
    if (!findCall(text, groupCall, 1).found())
        return false;
    if (!m_input.priorityGroup.isEmpty())
        rewriteCall(text, groupCall, {m_input.priorityGroup});

    QHash<QString, const MCUNVICSetting *> settings;
    for (const MCUNVICSetting *setting : m_AllNVICSettingList)
        settings.insert(setting->ValueName.trimmed(), setting);
    static const QLatin1String Core("NVIC_SetPriority(");
    static const QLatin1String Other("nvic_irq_enable(");
    QSet<QString> written;
    QString result;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const int core = line.indexOf(Core);
        const int other = core < 0 ? line.indexOf(Other) : -1;
        if (core < 0 && other < 0) {
            result += line + QLatin1Char('\n');
            continue;
        }
        const QString name =
            core >= 0 ? firstArgument(line, core + Core.size()) : firstArgument(line, other + Other.size());
        const MCUNVICSetting *setting = settings.value(name);
        written.insert(name);
        if (!setting || !setting->enabledFlag)
            continue;
        const QString priorities = QString::number(setting->preemptionPriority_Value) + QLatin1String(", ") +
                                   QString::number(setting->subPriority_Value);
        result += core >= 0
                      ? line.left(core) + Core + name +
                            QLatin1String(", NVIC_EncodePriority(NVIC_GetPriorityGrouping(), ") + priorities +
                            QLatin1String("));\n")
                      : line.left(other) + Other + name + QLatin1String(", ") + priorities + QLatin1String(");\n");
    }
    result.chop(1);
    text = result;
    return std::all_of(m_AllNVICSettingList.begin(), m_AllNVICSettingList.end(), [&](const MCUNVICSetting *setting) {
        return setting->core_IRQFlag || written.contains(setting->ValueName.trimmed());
    });
}

QStringList GenerateCode_ALL::handlersToGenerate() const
{
    QStringList handlers;
    for (const MCUNVICSetting *setting : m_AllNVICSettingList) {
        if (setting->enabledFlag && setting->IRQHandler_Generate_enabledFlag)
            handlers.append(setting->HandlerName);
    }
    return handlers;
}

bool GenerateCode_ALL::GenerateCode_int_h()
{
    const QString path = QLatin1String("inc/") + chipFile("int.h");
    const QStringList handlers = handlersToGenerate();
    // The prototypes of a family's handlers stand in its header, those of absent vectors too.
    static const QRegularExpression prototype(QStringLiteral(R"(^ *void (\w+_Handler|\w+_IRQHandler)\(\s*\w+\); *$)"));
    QStringList kept;
    const QStringList lines = m_tree->text(path).split(QLatin1Char('\n'));
    bool inUserBlock = false;
    for (const QString &line : lines) {
        if (line.contains(QLatin1String("add user code begin")))
            inUserBlock = true;
        if (line.contains(QLatin1String("add user code end")))
            inUserBlock = false;
        const bool isPlain = inUserBlock || !line.contains(QLatin1String("Handler("));
        const QRegularExpressionMatch match = isPlain ? QRegularExpressionMatch() : prototype.match(line);
        if (!match.hasMatch() || handlers.contains(match.captured(1)))
            kept.append(line);
    }
    m_tree->put(path, kept.join(QLatin1Char('\n')));
    return true;
}

bool GenerateCode_ALL::GenerateCode_All_Instance_interrupt_int_c(SectionedText &text)
{
    for (const QString &instance : qAsConst(m_dispatch)) {
        PeripheralGenerator *generator = generatorOf(instance);
        if (generator && !generator->GenerateCode_interrupt_int_c(text))
            return failAt(instance);
    }
    return true;
}

bool GenerateCode_ALL::GenerateCode_int_c()
{
    const QString path = QLatin1String("src/") + chipFile("int.c");
    const SectionedText *sample = readTemplate(chipFile("int.c"));
    if (!sample)
        return false;
    SectionedText text = cut(m_tree->text(path), *sample);
    if (!GenerateCode_All_Instance_interrupt_int_c(text))
        return false;
    if (!editDma(text, &GenerateCode_DMA::GenerateCode_interrupt_int_c))
        return failAt(QStringLiteral("DMA"));
    if (!systemGenerator().GenerateCode_interrupt_int_c(text))
        return failAt(QStringLiteral("SYSTEM"));

    // Every handler of the family has a section; what is not to be generated goes, absent vectors included.
    const QStringList handlers = handlersToGenerate();
    const QStringList sections = text.names();
    for (const QString &name : sections) {
        if (name.endsWith(QLatin1String("Handler")))
            GeneralCode_NVIC_int_c(text, name, handlers.contains(name));
    }
    GeneralCode_rtthread_sections(text, RtthreadHandlers);
    m_tree->put(path, text.joined());
    return true;
}

void GenerateCode_ALL::GeneralCode_NVIC_int_c(SectionedText &text, const QString &name, bool keep) const
{
    if (keep)
        text.replaceSection(name, text.bodyText(name));
    else
        GenerateCode_Handle_Function(text, name, false);
}

} // namespace ChipLoom
