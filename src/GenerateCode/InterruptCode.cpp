#include "GenerateCode/ClockCode.h"
#include "GenerateCode/Generatecode_ALL.h"
#include "GenerateCode/TextEngine.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

// The interrupts of a generation: priorities, handlers and their prototypes.

namespace ChipLoom {

namespace {

// Handlers that RT-Thread supplies itself.
const QStringList RtthreadHandlers{QStringLiteral("HardFault_Handler_rtthread"),
                                   QStringLiteral("PendSV_Handler_rtthread"),
                                   QStringLiteral("SysTick_Handler_rtthread")};

// With its line break.
std::string_view lineAt(std::string_view text, int start)
{
    const int lineBreak = indexOf(text, '\n', start);
    return between(text, start, lineBreak < 0 ? length(text) : lineBreak + 1);
}

// What stands behind the opening bracket of a call in a line, or nothing.
std::string_view argumentsIn(std::string_view line, std::string_view function)
{
    const int opening = indexOf(line, '(');
    const bool isIt = opening >= 0 && between(line, 0, opening).ends_with(function);
    return isIt ? between(line, opening + 1, length(line)) : std::string_view();
}

bool isOneWord(std::string_view text)
{
    return !text.empty() && skipWord(text, 0) == length(text);
}

// The handler that a line declares, as "  void SPI1_IRQHandler(void);", or nothing.
std::string_view declaredHandler(std::string_view line)
{
    static constexpr std::string_view Void = "void ";
    while (line.starts_with(' '))
        line.remove_prefix(1);
    if (!line.starts_with(Void))
        return {};
    const int opening = indexOf(line, '(');
    const int closing = opening < 0 ? -1 : indexOf(line, ");", opening);
    if (closing < 0 || !trimmed(between(line, closing + 2, length(line))).empty())
        return {};
    const std::string_view name = between(line, length(Void), opening);
    const bool isHandler = name.ends_with("_Handler") || name.ends_with("_IRQHandler");
    return isHandler && isOneWord(name) && isOneWord(trimmed(between(line, opening + 1, closing))) ? name
                                                                                                   : std::string_view();
}

/// The lines of a code that enable vectors, found once and kept with it.
struct VectorLines : TextCut::Derived
{
    struct Line
    {
        int start, arguments, end;
        QString vector;
        bool isCore;
    };

    explicit VectorLines(const TextCut &body)
    {
        for (int start = 0, end = 0; start < length(body.text()); start = end) {
            const std::string_view line = lineAt(body.text(), start);
            end = start + length(line);
            const std::string_view core = argumentsIn(line, "NVIC_SetPriority");
            const std::string_view call = core.empty() ? argumentsIn(line, "nvic_irq_enable") : core;
            if (call.empty())
                continue;
            lines.push_back(
                {start, end - length(call), end, toText(trimmed(call.substr(0, call.find(',')))), !core.empty()});
        }
        for (size_t i = 0; i < lines.size(); ++i)
            numbers.insert(lines[i].vector, static_cast<int>(i));
    }

    std::vector<Line> lines;
    NameTable numbers; ///< of the lines
};

// By number of the handler: whether a vector that is enabled has it generated.
std::vector<bool> generatedOf(const NumberedNames &handlers, const QList<MCUNVICSetting *> &vectors)
{
    std::vector<bool> generated(handlers.size());
    for (const MCUNVICSetting *vector : vectors) {
        const bool isGenerated = vector->enabledFlag && vector->IRQHandler_Generate_enabledFlag;
        const int number = isGenerated ? handlers.find(vector->HandlerName) : -1;
        if (number >= 0)
            generated[static_cast<size_t>(number)] = true;
    }
    return generated;
}

/// The lines of a header that declare handlers outside the user's blocks, found once and kept with it.
struct HandlerLines : TextCut::Derived
{
    struct Line
    {
        int start, end;
        size_t handler;
    };

    explicit HandlerLines(const TextCut &header)
    {
        bool inUserBlock = false;
        for (int start = 0, end = 0; start < length(header.text()); start = end) {
            const std::string_view line = lineAt(header.text(), start);
            end = start + length(line);
            inUserBlock =
                (inUserBlock || indexOf(line, "add user code begin") >= 0) && indexOf(line, "add user code end") < 0;
            const std::string_view handler = inUserBlock ? std::string_view() : declaredHandler(line);
            if (!handler.empty())
                lines.push_back({start, end, static_cast<size_t>(handlers.add(toText(handler)))});
        }
    }

    std::vector<Line> lines;
    NumberedNames handlers;
};

/// Where sections stand in the handlers, found once and kept with them.
struct HandlerSpots : TextCut::Derived
{
    HandlerSpots(const SectionedText &text, const SeriesPlan &plan)
    {
        for (const SeriesPlan::Instance &instance : plan.instances)
            ofInstance.push_back(instance.questions ? instance.questions->spotsIn(text) : SectionedText::Spots());
        for (const QString &name : text.names()) {
            if (!name.endsWith(QLatin1String("Handler")))
                continue;
            whole.push_back(text.spotOf(name));
            handlers.add(name);
        }
    }

    std::vector<SectionedText::Spots> ofInstance;
    SectionedText::Spots whole; ///< of the handlers, by number
    NumberedNames handlers;
};

} // namespace

bool GenerateCode_ALL::GeneralCode_NVIC_config_lm_config_c(SectionedText &text) const
{
    const QString section = QStringLiteral("config nvic");
    const std::shared_ptr<const TextCut> body = text.keptBody(section);
    std::string work;
    if (!body || !GeneralCode_NVIC_config_sub_lm_config_c(*body, work))
        return false;
    GenerateCode_DeleteBlankLine_FunctionEnd(work);
    return text.replaceSection(section, std::move(work));
}

// Each vector has a line, and a family's templates hold the vectors of all its series.
bool GenerateCode_ALL::GeneralCode_NVIC_config_sub_lm_config_c(const TextCut &body, std::string &text) const
{
    NameTable settings;
    settings.reserve(m_lists.AllNVICSettingList.size());
    for (int i = m_lists.AllNVICSettingList.size() - 1; i >= 0; --i) // the last of a name counts
        settings.insert(QStringView(m_lists.AllNVICSettingList.at(i)->ValueName).trimmed(), i);
    text.reserve(body.text().size());
    const VectorLines &vectors = body.plan<VectorLines>();
    int copied = 0;
    for (const VectorLines::Line &line : vectors.lines) {
        text.append(body.between(copied, line.start));
        copied = line.end;
        const int number = settings.find(line.vector);
        const MCUNVICSetting *setting = number < 0 ? nullptr : m_lists.AllNVICSettingList.at(number);
        if (!setting || !setting->enabledFlag)
            continue;
        text.append(body.between(line.start, line.arguments));
        append(text, line.vector);
        text += line.isCore ? ", NVIC_EncodePriority(NVIC_GetPriorityGrouping(), " : ", ";
        text += std::to_string(setting->preemptionPriority_Value) + ", " + std::to_string(setting->subPriority_Value);
        text += line.isCore ? "));\n" : ");\n";
    }
    text.append(body.between(copied, length(body.text())));

    const QString groupCall = QStringLiteral("nvic_priority_group_config");
    const bool hasGroup = m_input.priorityGroup.isEmpty() ? findCall(text, groupCall, 1).found()
                                                          : rewriteCall(text, groupCall, {m_input.priorityGroup});
    return hasGroup && std::all_of(m_lists.AllNVICSettingList.begin(), m_lists.AllNVICSettingList.end(),
                                   [&](const MCUNVICSetting *setting) {
                                       return setting->core_IRQFlag ||
                                              vectors.numbers.find(QStringView(setting->ValueName).trimmed()) >= 0;
                                   });
}

bool GenerateCode_ALL::GenerateCode_int_h()
{
    const QString path = QLatin1String("inc/") + chipFile("int.h");
    // The prototypes of a family's handlers stand in its header, those of absent vectors too.
    SectionedText header = m_tree->sections(path);
    if (!header.cut())
        header = SectionedText(header.joined());
    std::string kept;
    if (const TextCut *text = header.cut()) {
        kept.reserve(text->text().size());
        const HandlerLines &declared = text->plan<HandlerLines>();
        const std::vector<bool> generated = generatedOf(declared.handlers, m_lists.AllNVICSettingList);
        int copied = 0;
        for (const HandlerLines::Line &line : declared.lines) {
            if (generated[line.handler])
                continue;
            kept += text->between(copied, line.start);
            copied = line.end;
        }
        kept += text->between(copied, length(text->text()));
    }
    m_tree->put(path, std::move(kept));
    return true;
}

bool GenerateCode_ALL::GenerateCode_All_Instance_interrupt_int_c(SectionedText &text,
                                                                 const std::vector<SectionedText::Spots> &spots)
{
    for (size_t i = 0; i < m_plan.instances.size(); ++i) {
        DeclaredGenerator *generator = generatorOf(i);
        if (generator && !generator->GenerateCode_interrupt_int_c(text, spots[i]))
            return failAt(m_plan.instances[i].name);
    }
    return true;
}

bool GenerateCode_ALL::GenerateCode_int_c()
{
    const QString path = QLatin1String("src/") + chipFile("int.c");
    SectionedText text = m_tree->sections(path);
    const TextCut *cut = text.cut();
    if (!cut)
        return failAt(chipFile("int.c"));
    const auto &spots =
        cut->derived<HandlerSpots>(&m_plan, [&] { return std::make_unique<HandlerSpots>(text, m_plan); });
    if (!m_clock || !m_clock->GenerateCode_interrupt_int_c(text))
        return failAt(QStringLiteral("CRM"));
    if (!systemGenerator().GenerateCode_interrupt_int_c(text))
        return failAt(QStringLiteral("SYSTEM"));
    // Every handler of the family has a section; what is not to be generated goes, absent vectors included. It goes
    // first, for most do, with the sections of the instances in them.
    const std::vector<bool> generated = generatedOf(spots.handlers, m_lists.AllNVICSettingList);
    for (size_t i = 0; i < spots.whole.size(); ++i) {
        if (!generated[i])
            text.handleSection(spots.whole[i], false);
    }
    if (!GenerateCode_All_Instance_interrupt_int_c(text, spots.ofInstance))
        return false;
    if (!editDma(text, &GenerateCode_DMA::GenerateCode_interrupt_int_c))
        return failAt(QStringLiteral("DMA"));
    for (size_t i = 0; i < spots.whole.size(); ++i) {
        if (generated[i])
            text.unwrapSection(spots.whole[i]);
    }
    GeneralCode_rtthread_sections(text, RtthreadHandlers);
    m_tree->put(path, std::move(text));
    return true;
}

} // namespace ChipLoom
