#include "GenerateCode/Generatecode_ALL.h"
#include "GenerateCode/TextEngine.h"

#include <QHash>
#include <QSet>

#include <algorithm>

// The interrupts of a generation: priorities, handlers and their prototypes.

namespace ChipLoom {

namespace {

// Handlers that RT-Thread supplies itself.
const QStringList RtthreadHandlers{QStringLiteral("HardFault_Handler_rtthread"),
                                   QStringLiteral("PendSV_Handler_rtthread"),
                                   QStringLiteral("SysTick_Handler_rtthread")};

// With its line break.
QStringRef lineAt(const QString &text, int start)
{
    const int lineBreak = text.indexOf(QLatin1Char('\n'), start);
    return text.midRef(start, lineBreak < 0 ? -1 : lineBreak + 1 - start);
}

// The arguments of a call that stands in a line, or a null text.
QStringRef argumentsIn(const QStringRef &line, QLatin1String function)
{
    const int opening = line.indexOf(QLatin1Char('('));
    const bool isIt = opening >= 0 && line.left(opening).endsWith(function);
    return isIt ? line.mid(opening + 1) : QStringRef();
}

bool isWord(const QStringRef &text)
{
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c.isLetterOrNumber() || c == QLatin1Char('_'); });
}

// The handler that a line declares, as "  void SPI1_IRQHandler(void);", or a null text.
QStringRef declaredHandler(QStringRef line)
{
    static const QLatin1String Void("void ");
    while (line.startsWith(QLatin1Char(' ')))
        line = line.mid(1);
    if (!line.startsWith(Void))
        return {};
    const int opening = line.indexOf(QLatin1Char('('));
    const int closing = line.indexOf(QLatin1String(");"), opening);
    if (opening < 0 || closing < 0 || !line.mid(closing + 2).trimmed().isEmpty())
        return {};
    const QStringRef name = line.mid(Void.size(), opening - Void.size());
    const bool isHandler = name.endsWith(QLatin1String("_Handler")) || name.endsWith(QLatin1String("_IRQHandler"));
    return isHandler && isWord(name) && isWord(line.mid(opening + 1, closing - opening - 1).trimmed()) ? name
                                                                                                       : QStringRef();
}

} // namespace

bool GenerateCode_ALL::GeneralCode_NVIC_config_lm_config_c(SectionedText &text) const
{
    const QString section = QStringLiteral("config nvic");
    const std::shared_ptr<const TextCut> body = text.keptBody(section);
    if (!body)
        return false;
    QString work = body->text();
    if (!GeneralCode_NVIC_config_sub_lm_config_c(work))
        return false;
    GenerateCode_DeleteBlankLine_FunctionEnd(work);
    return text.replaceSection(section, work);
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
    QSet<QString> written;
    QString result;
    result.reserve(text.size());
    for (int start = 0, end = 0; start < text.size(); start = end) {
        const QStringRef line = lineAt(text, start);
        end = start + line.size();
        const QStringRef core = argumentsIn(line, QLatin1String("NVIC_SetPriority"));
        const QStringRef call = core.isNull() ? argumentsIn(line, QLatin1String("nvic_irq_enable")) : core;
        if (call.isNull()) {
            result += line;
            continue;
        }
        const QString name = call.left(call.indexOf(QLatin1Char(','))).trimmed().toString();
        const MCUNVICSetting *setting = settings.value(name);
        written.insert(name);
        if (!setting || !setting->enabledFlag)
            continue;
        result += line.left(call.position() - start);
        result += name;
        result +=
            core.isNull() ? QLatin1String(", ") : QLatin1String(", NVIC_EncodePriority(NVIC_GetPriorityGrouping(), ");
        result += QString::number(setting->preemptionPriority_Value) + QLatin1String(", ") +
                  QString::number(setting->subPriority_Value) + QLatin1String(core.isNull() ? ");\n" : "));\n");
    }
    text = result;
    return std::all_of(m_AllNVICSettingList.begin(), m_AllNVICSettingList.end(), [&](const MCUNVICSetting *setting) {
        return setting->core_IRQFlag || written.contains(setting->ValueName.trimmed());
    });
}

QSet<QString> GenerateCode_ALL::handlersToGenerate() const
{
    QSet<QString> handlers;
    for (const MCUNVICSetting *setting : m_AllNVICSettingList) {
        if (setting->enabledFlag && setting->IRQHandler_Generate_enabledFlag)
            handlers.insert(setting->HandlerName);
    }
    return handlers;
}

bool GenerateCode_ALL::GenerateCode_int_h()
{
    const QString path = QLatin1String("inc/") + chipFile("int.h");
    const QSet<QString> handlers = handlersToGenerate();
    // The prototypes of a family's handlers stand in its header, those of absent vectors too.
    const QString text = m_tree->text(path);
    QString kept;
    kept.reserve(text.size());
    const QLatin1String marker("add user code ");
    int nextMarker = text.indexOf(marker);
    bool inUserBlock = false;
    for (int start = 0, end = 0; start < text.size(); start = end) {
        const QStringRef line = lineAt(text, start);
        end = start + line.size();
        if (nextMarker >= 0 && nextMarker < end) {
            inUserBlock = (inUserBlock || line.contains(QLatin1String("add user code begin"))) &&
                          !line.contains(QLatin1String("add user code end"));
            nextMarker = text.indexOf(marker, end);
        }
        const QStringRef handler = inUserBlock ? QStringRef() : declaredHandler(line);
        if (handler.isNull() || handlers.contains(handler.toString()))
            kept += line;
    }
    m_tree->put(path, kept);
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
    const QSet<QString> handlers = handlersToGenerate();
    const QStringList sections = text.names();
    for (const QString &name : sections) {
        if (!name.endsWith(QLatin1String("Handler")))
            continue;
        if (handlers.contains(name))
            text.unwrapSection(name);
        else
            GenerateCode_Handle_Function(text, name, false);
    }
    GeneralCode_rtthread_sections(text, RtthreadHandlers);
    m_tree->put(path, text.joined());
    return true;
}

} // namespace ChipLoom
