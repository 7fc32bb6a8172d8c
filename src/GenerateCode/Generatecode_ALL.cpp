#include "GenerateCode/Generatecode_ALL.h"

#include "ClockConfig/ZV32PLLConfig.h"
#include "GenerateCode/ClockCode.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "GenerateCode/TextEngine.h"
#include "Model/SeriesHelpers.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <atomic>
#include <utility>

namespace ChipLoom {

namespace {

constexpr int DisabledDefineWidth = 50;
constexpr std::string_view SampleHextValue = "((uint32_t)8000000)";

const QString PeriphClockSection = QStringLiteral("config periph clock");
const QString NvicSection = QStringLiteral("config nvic");
const QString SystemSource = QStringLiteral("src/lm_system.c");

// Calls of main that move to the start-up file of RT-Thread.
const QStringList RtthreadCalls{QStringLiteral("config_system_clock_rtthread"),
                                QStringLiteral("config_periph_clock_rtthread"), QStringLiteral("config_nvic_rtthread"),
                                QStringLiteral("systick_timebase_rtthread")};

std::atomic<quint64> g_generations;

/// The lines of the configuration header that name driver modules, found once and kept with it.
struct ModuleDefines : TextCut::Derived
{
    struct Line
    {
        int start, end;
        QString module;
        std::string disabled; ///< what stands there where the module is not needed
    };

    ModuleDefines(const TextCut &header, const SeriesGeneratorRow &row)
    {
        for (const QString &module : row.moduleList()) {
            const QString define = QLatin1String("#define ") + module.toUpper() + QLatin1String("_MODULE_ENABLED");
            const int start = indexOf(header.text(), toCode(define) + '\n');
            isComplete = isComplete && start >= 0;
            if (start >= 0)
                lines.push_back(
                    {start, start + define.size(), module,
                     toCode((QLatin1String("/*") + define).leftJustified(DisabledDefineWidth, QLatin1Char('-'))) +
                         "*/"});
        }
        std::sort(lines.begin(), lines.end(), [](const Line &a, const Line &b) { return a.start < b.start; });
    }

    static const ModuleDefines &of(const TextCut &header, const SeriesGeneratorRow &row)
    {
        return header.derived<ModuleDefines>(&row, [&] { return std::make_unique<ModuleDefines>(header, row); });
    }

    std::vector<Line> lines; ///< in their order
    bool isComplete = true;
};

} // namespace

QString codeName(const QString &name)
{
    QString text = name.toLower();
    for (QChar &c : text) {
        const bool plain =
            (c >= QLatin1Char('a') && c <= QLatin1Char('z')) || (c >= QLatin1Char('0') && c <= QLatin1Char('9'));
        if (!plain)
            c = QLatin1Char('_');
    }
    return text;
}

GenerateCode_ALL::GenerateCode_ALL(const SeriesPlan &plan, GenerationInput input)
    : m_plan(plan), m_input(std::move(input)), m_generators(plan.instances.size())
{
    m_modules.reserve(static_cast<int>(m_input.peripherals.size() + m_input.middlewares.size()));
    int modules = 0;
    for (const std::vector<GenerationPeripheral> *list : {&m_input.peripherals, &m_input.middlewares}) {
        for (const GenerationPeripheral &entry : *list)
            m_modules.insert(entry.instanceName, modules++);
    }
    m_portsWithoutPrintf = leavePrintfToOnePort();
    HandleSignalsGPIOUserLabel(m_input.signalSettings, m_input.pinDefines);
    m_lists.GPIOPinDefineInfo = m_input.pinDefines;
    m_lists.AllSignalsGPIOSettingList = pointersTo(m_input.signalSettings);
    m_lists.AllNVICSettingList = pointersTo(m_input.nvicSettings);
    for (DMARequest *request : pointersTo(m_input.dmaRequests)) {
        if (request->configStatus == Request_Used)
            m_lists.ValidDMAChannalList.append(request);
    }
    m_lists.deviceIPSignalGroupInfoList = m_input.signalGroups;
    m_lists.pins = std::make_shared<const PinIndex>(PinDefines::of(m_input.pinDefines, m_input.pinDefinesOwner),
                                                    m_lists.AllSignalsGPIOSettingList);
    m_lists.generation = ++g_generations;
    m_ports = portsInUse();
    for (const SeriesPlan::Clock &clock : m_plan.clocks)
        m_clockNeeds.push_back(clockIsNeeded(clock));
}

GenerateCode_ALL::~GenerateCode_ALL() = default;

std::unique_ptr<GenerateCode_ALL> GenerateCode_ALL::Get_GenerateCode_All(GenerationInput input)
{
    const SeriesPlan *plan = SeriesPlan::of(input.series);
    return plan ? std::make_unique<GenerateCode_ALL>(*plan, std::move(input)) : nullptr;
}

// ---- The generators of peripherals ----

std::unique_ptr<DeclaredGenerator> GenerateCode_ALL::newGenerator(size_t instance) const
{
    const SeriesPlan::Instance &fixed = m_plan.instances[instance];
    if (!fixed.questions)
        return nullptr;
    auto generator = std::make_unique<DeclaredGenerator>(m_input.series, *fixed.questions, fixed.features);
    feed(*generator, fixed.name);
    generator->SetClockConfig(m_input.clock);
    return generator;
}

DeclaredGenerator *GenerateCode_ALL::generatorOf(size_t instance) const
{
    std::unique_ptr<DeclaredGenerator> &generator = m_generators[instance];
    if (!generator)
        generator = newGenerator(instance);
    return generator.get();
}

void GenerateCode_ALL::feed(GenerateCode_IP &generator, const QString &instanceName) const
{
    if (const GenerationPeripheral *entry = peripheral(instanceName)) {
        generator.SetIPValidFlag(entry->valid);
        generator.SetRefParameterList(entry->parameters);
    } else { // what several have in common is in use with any of them: "XMC" with its banks
        const QString start = instanceName + QLatin1Char('_');
        generator.SetIPValidFlag(
            std::any_of(m_input.peripherals.begin(), m_input.peripherals.end(), [&](const GenerationPeripheral &part) {
                return part.valid && part.instanceName.startsWith(start);
            }));
    }
    generator.SetDesignLists(m_lists);
    generator.SetGenerateCodeSplitIP(m_input.options.splitIP);
    generator.SetKeepUserCode(m_input.options.keepUserCode);
    generator.SetNotUsedPinAnalog(m_input.options.notUsedPinAnalog);
}

const GenerateCode_GPIO &GenerateCode_ALL::gpioGenerator() const
{
    if (!m_gpio) {
        m_gpio.emplace(m_input.series);
        feed(*m_gpio, QStringLiteral("GPIO"));
        m_gpio->SetUnusedPins(m_input.unusedPins);
    }
    return *m_gpio;
}

const GenerateCode_SYSTEM &GenerateCode_ALL::systemGenerator() const
{
    if (!m_system) {
        m_system.emplace(m_input.series);
        feed(*m_system, QStringLiteral("SYSTEM"));
        m_system->SetClockConfig(m_input.clock);
        m_system->SetPrintfPeripheral(printfOfPeripheral());
    }
    return *m_system;
}

const std::vector<GenerateCode_DMA> &GenerateCode_ALL::dmaGenerators() const
{
    if (m_dma.empty()) {
        m_dma.emplace_back(m_input.series, QStringLiteral("DMA"), m_plan.dmaChannels, m_lists.ValidDMAChannalList);
        if (!m_plan.edmaStreams.empty())
            m_dma.emplace_back(m_input.series, QStringLiteral("EDMA"), m_plan.edmaStreams, m_lists.ValidDMAChannalList);
        const GenerationPeripheral *common = peripheral(QStringLiteral("ADC-Common"));
        const QString mode = common && common->valid ? common->value(QStringLiteral("CommonDMAMode")) : QString();
        for (GenerateCode_DMA &generator : m_dma)
            generator.SetCommonConversionData(!mode.isEmpty() && mode != QLatin1String("ADC_COMMON_DMA_DISABLE"));
    }
    return m_dma;
}

bool GenerateCode_ALL::editDma(SectionedText &text, bool (GenerateCode_DMA::*edit)(SectionedText &) const) const
{
    const std::vector<GenerateCode_DMA> &generators = dmaGenerators();
    return std::all_of(generators.begin(), generators.end(),
                       [&](const GenerateCode_DMA &generator) { return (generator.*edit)(text); });
}

bool GenerateCode_ALL::failAt(const QString &what)
{
    if (m_error.isEmpty())
        m_error = what;
    return false;
}

QString GenerateCode_ALL::chipFile(const char *suffix) const
{
    return m_plan.prefix + QLatin1Char('_') + QLatin1String(suffix);
}

const SectionedText *GenerateCode_ALL::readTemplate(const QString &name)
{
    const QString path = QLatin1String(":/srcode/") + m_plan.folder + QLatin1Char('/') + name;
    const SectionedText *text = codeTemplate(path);
    if (!text)
        failAt(QCoreApplication::translate("GenerateCode", "the template %1 is missing").arg(path));
    return text;
}

bool GenerateCode_ALL::GenerateCode_Instance(SectionedText &text, const SectionedText::Spot &section,
                                             DeclaredGenerator *generator, InstanceEdit edit)
{
    if (generator)
        return (generator->*edit)(text, section);
    text.replaceSection(section, {});
    return true;
}

bool GenerateCode_ALL::GenerateCode_All_Instance(SectionedText &text, InstanceEdit edit)
{
    const SectionedText::Spots &sections = text.spotsOf(m_plan.instances);
    for (size_t i = 0; i < m_plan.instances.size(); ++i) {
        if (!GenerateCode_Instance(text, sections[i], generatorOf(i), edit))
            return failAt(m_plan.instances[i].name);
    }
    return true;
}

// ---- Parts of the configuration files ----

bool GenerateCode_ALL::GeneralCode_periph_clock_lm_config_c(SectionedText &text) const
{
    const std::shared_ptr<const TextCut> body = text.keptBody(PeriphClockSection);
    if (!body)
        return false;
    std::string work;
    if (Periph_clock_Is_Enable()) {
        SectionedText lines(body);
        const SectionedText::Spots &sections = lines.spotsOf(m_plan.clocks);
        for (size_t i = 0; i < m_plan.clocks.size(); ++i) {
            if (!lines.handleSection(sections[i], m_clockNeeds[i]))
                return false;
        }
        work = lines.joined();
        GenerateCode_DeleteBlankLine_FunctionEnd(work);
    }
    return text.replaceSection(PeriphClockSection, std::move(work));
}

bool GenerateCode_ALL::GeneralCode_GPIO_UserLabel_lm_config_h(std::string &text) const
{
    const SectionSpan span = findSection(text, QStringLiteral("user_label"));
    if (!span.found())
        return false;
    QString defines;
    const auto defineOf = [this](const QString &pin) -> const GPIO_Pin_Define_Info * {
        for (const GPIO_Pin_Define_Info *define : m_input.pinDefines) {
            if (IsPinNameSame(define->Name, pin))
                return define;
        }
        return nullptr;
    };
    for (const SignalsGPIOSetting &setting : m_input.signalSettings) {
        if (setting.signalName.isEmpty() || setting.signalUserLabel.isEmpty())
            continue;
        const GPIO_Pin_Define_Info *define = defineOf(setting.signalInPinName);
        if (!define)
            continue;
        defines += QLatin1String("#define ") + setting.signalUserLabel_EXT + QLatin1String("_PIN    ") +
                   define->GPIO_Pin_x + QLatin1String("\n#define ") + setting.signalUserLabel_EXT +
                   QLatin1String("_GPIO_PORT    ") + define->GPIO_x + QLatin1Char('\n');
    }
    replaceSection(text, span,
                   defines.isEmpty() ? std::string()
                                     : std::string(between(text, span.bodyStart, span.bodyStart + span.bodyLength)) +
                                           toCode(defines) + '\n');
    return true;
}

bool GenerateCode_ALL::GeneralCode_rtthread_sections(SectionedText &text, const QStringList &names) const
{
    // A section within one that is gone is gone too.
    const bool keep = !IP_Is_Valid(QStringLiteral("RT-Thread_Nano"));
    for (const QString &name : names)
        GenerateCode_Handle_Function(text, name, keep);
    return true;
}

// ---- The files ----

// In any thread, so by generators of its own. Every so many instances, for the large ones stand side by side.
void GenerateCode_ALL::writeFunctions(size_t first, FunctionShare &share) const
{
    const SectionedText::Spots &sections = share.text.spotsOf(m_plan.instances);
    for (size_t i = first; i < m_plan.instances.size(); i += FunctionShares) {
        const std::unique_ptr<DeclaredGenerator> generator = newGenerator(i);
        if (!GenerateCode_Instance(share.text, sections[i], generator.get(),
                                   &DeclaredGenerator::GenerateCode_lm_config_c))
            share.outOfStep = m_plan.instances[i].name;
    }
}

bool GenerateCode_ALL::GenerateCode_lm_config_c(SectionedText &text)
{
    if (!GeneralCode_periph_clock_lm_config_c(text))
        return failAt(PeriphClockSection);
    if (!GeneralCode_NVIC_config_lm_config_c(text))
        return failAt(QStringLiteral("NVIC"));
    if (!editDma(text, &GenerateCode_DMA::GenerateCode_lm_config_c))
        return failAt(QStringLiteral("DMA"));
    if (!m_clock || !m_clock->GenerateCode_lm_config_c(text))
        return failAt(QStringLiteral("CRM"));
    if (!gpioGenerator().GenerateCode_lm_config_c(text.section(GenerateCode_GPIO::section())))
        return failAt(QStringLiteral("GPIO"));
    return true;
}

bool GenerateCode_ALL::GenerateCode_lm_config_h()
{
    const SectionedText *sample = readTemplate(chipFile("lm_config.h"));
    if (!sample)
        return false;
    // Here the user's blocks come first.
    const QString path = QLatin1String("inc/") + chipFile("lm_config.h");
    m_tree->putSample(path, *sample);
    SectionedText text = m_tree->sections(path);
    if (!GenerateCode_All_Instance(text, &DeclaredGenerator::GenerateCode_lm_config_h))
        return false;
    const bool ok = GenerateCode_Handle_Function(text, PeriphClockSection, Periph_clock_Is_Enable()) &&
                    GenerateCode_Handle_Function(text, NvicSection, true) &&
                    editDma(text, &GenerateCode_DMA::GenerateCode_defines) &&
                    editDma(text, &GenerateCode_DMA::GenerateCode_header_sections) && m_clock &&
                    m_clock->GenerateCode_lm_config_h(text) &&
                    gpioGenerator().GenerateCode_lm_config_h(text.section(GenerateCode_GPIO::section())) &&
                    GeneralCode_GPIO_UserLabel_lm_config_h(text.section(QStringLiteral("user_label")));
    if (!ok)
        return failAt(path);
    if (m_input.options.splitIP && !GenerateCode_Per_Instance(text, true))
        return false;
    m_tree->put(path, std::move(text));
    return true;
}

// The sections of the calls, resolved by now, move to their place; a call that the user does not want made goes.
bool GenerateCode_ALL::GeneralCode_FuncCallRank_main_c(SectionedText &text)
{
    std::string calls;
    for (const MainFuncNameForRank &entry : functionRank()) {
        if (!text.contains(entry.CodeSection))
            return failAt(entry.FuncName);
        const std::string call = std::exchange(text.section(entry.CodeSection), {});
        if (!entry.MainDoNotCallFlag)
            calls += call;
    }
    const QString place = QStringLiteral("func_call_rank");
    if (!text.contains(place))
        return failAt(place);
    text.section(place) = calls;
    return true;
}

bool GenerateCode_ALL::GenerateCode_main_c()
{
    const SectionedText *sample = readTemplate(QStringLiteral("main.c"));
    if (!sample)
        return false;
    SectionedText text = *sample;
    const QString includes = QStringLiteral("split_ip_include");
    if (!text.contains(includes))
        return failAt(includes);
    QString lines;
    for (const QString &group : qAsConst(m_splitGroups))
        lines += QLatin1String("#include \"lm_") + codeName(group) + QLatin1String(".h\"\n");
    text.section(includes) = toCode(lines) + '\n';

    if (!GenerateCode_All_Instance(text, &DeclaredGenerator::GenerateCode_main_c))
        return false;
    const bool rtthread = IP_Is_Valid(QStringLiteral("RT-Thread_Nano"));
    const bool ok = GenerateCode_Handle_Function(text, PeriphClockSection, Periph_clock_Is_Enable()) &&
                    GenerateCode_Handle_Function(text, NvicSection, true) &&
                    editDma(text, &GenerateCode_DMA::GenerateCode_main_c) && m_clock &&
                    m_clock->GenerateCode_main_c(text) && systemGenerator().GenerateCode_main_c(text) &&
                    gpioGenerator().GenerateCode_main_c(text.section(GenerateCode_GPIO::section())) &&
                    GenerateCode_Handle_Function(text, QStringLiteral("freertos_app_init"),
                                                 IP_Is_Valid(QStringLiteral("FREERTOS"))) &&
                    GenerateCode_Handle_Function(text, QStringLiteral("rtthread_app_init"), rtthread) &&
                    GenerateCode_Handle_Function(text, QStringLiteral("rtthread_thread_mdelay"), rtthread) &&
                    GeneralCode_rtthread_sections(text, RtthreadCalls);
    if (!ok)
        return failAt(QStringLiteral("main.c"));
    if (!GeneralCode_FuncCallRank_main_c(text))
        return false;
    std::string joined = text.joined();
    GenerateCode_DeleteBlankLine_FunctionEnd(joined);
    m_tree->putKeepingUserBlocks(QStringLiteral("src/main.c"), std::move(joined), *sample);
    return true;
}

bool GenerateCode_ALL::GenerateCode_Module_Define_conf_h(const TextCut &header, std::string &text) const
{
    const ModuleDefines &defines = ModuleDefines::of(header, m_plan.row);
    text.reserve(header.text().size() + defines.lines.size() * DisabledDefineWidth);
    int copied = 0;
    for (const ModuleDefines::Line &line : defines.lines) {
        if (moduleIsNeeded(line.module))
            continue;
        text += header.between(copied, line.start);
        text += line.disabled;
        copied = line.end;
    }
    text += header.between(copied, length(header.text()));
    return defines.isComplete;
}

bool GenerateCode_ALL::GenerateCode_conf_h()
{
    const SectionedText *header = readTemplate(chipFile("conf.h"));
    if (!header)
        return false;
    std::string text;
    if (!header->cut() || !GenerateCode_Module_Define_conf_h(*header->cut(), text))
        return failAt(chipFile("conf.h"));
    const double hext = m_input.clock ? m_input.clock->GenerateCode_Get_Hext_Value() : 0.0;
    replaceAll(text, SampleHextValue, "((uint32_t)" + std::to_string(qRound64(hext * 1e6)) + ')');
    m_tree->putKeepingUserBlocks(QLatin1String("inc/") + chipFile("conf.h"), std::move(text), *header);
    return true;
}

// The interrupt files are put with the user's blocks first and resolved later, so that middlewares can add to them in
// between.
bool GenerateCode_ALL::GenerateCode_File_Deliver(const QString &name, const QString &path)
{
    const SectionedText *text = readTemplate(name);
    if (text)
        m_tree->putSample(path, *text);
    return text;
}

bool GenerateCode_ALL::GenerateCode_SYSTEM_Files()
{
    const SectionedText *sourceSample = readTemplate(QStringLiteral("lm_system.c"));
    const SectionedText *headerSample = readTemplate(QStringLiteral("lm_system.h"));
    if (!sourceSample || !headerSample)
        return false;
    std::string source = sourceSample->joined();
    std::string header = headerSample->joined();
    const GenerateCode_SYSTEM &system = systemGenerator();
    if (!system.GenerateCode_lm_system_c(source) || !system.GenerateCode_lm_system_h(header))
        return failAt(QStringLiteral("SYSTEM"));
    m_tree->putKeepingUserBlocks(SystemSource, std::move(source), *sourceSample);
    m_tree->putKeepingUserBlocks(QStringLiteral("inc/lm_system.h"), std::move(header), *headerSample);
    return true;
}

// A support file of the GCC toolchains, unchanged. An earlier choice of toolchain leaves none behind.
bool GenerateCode_ALL::Generate_CMake_Makefile_file(const QString &name)
{
    const QString path = QLatin1String("src/") + name;
    const SectionedText *sample = readTemplate(name);
    if (!sample)
        return false;
    if (needsSystemFiles())
        m_tree->put(path, *sample);
    else
        m_tree->remove(path, sample->joined());
    return true;
}

// ---- The generation ----

// The functions of the instances, half of all work, are written beside the other files, which need nothing of them: in
// shares, so that whoever is free takes the next.
bool GenerateCode_ALL::generateFiles()
{
    const SectionedText *sample = readTemplate(chipFile("lm_config.c"));
    if (!sample)
        return false;
    const QString path = QLatin1String("src/") + chipFile("lm_config.c");
    m_tree->expect(path);
    std::array<FunctionShare, FunctionShares> shares;
    for (size_t i = 0; i < shares.size(); ++i) {
        shares[i].text = *sample;
        shares[i].piece = m_beside.add([this, i, &shares] { writeFunctions(i, shares[i]); });
    }
    SectionedText text = *sample;
    const bool ok = GenerateCode_lm_config_c(text) && generateOtherFiles();
    for (FunctionShare &share : shares) {
        m_beside.finish(share.piece);
        text.takeEdits(std::move(share.text));
        if (!share.outOfStep.isEmpty())
            failAt(share.outOfStep);
    }
    if (!ok || !m_error.isEmpty())
        return false;
    if (m_input.options.splitIP && !GenerateCode_Per_Instance(text, false))
        return false;
    m_tree->putKeepingUserBlocks(path, std::move(text), *sample);
    return true;
}

bool GenerateCode_ALL::generateOtherFiles()
{
    return GenerateCode_lm_config_h() && GenerateCode_main_c() && GenerateCode_conf_h() &&
           GenerateCode_File_Deliver(chipFile("int.h"), QLatin1String("inc/") + chipFile("int.h")) &&
           GenerateCode_File_Deliver(chipFile("int.c"), QLatin1String("src/") + chipFile("int.c")) &&
           GenerateCode_SYSTEM_Files() && GenerateCode_int_h() && GenerateCode_int_c() &&
           Generate_CMake_Makefile_file(QStringLiteral("syscalls.c")) &&
           Generate_CMake_Makefile_file(QStringLiteral("sysmem.c"));
}

GenerationRecord GenerateCode_ALL::make(const QString &directory, bool write)
{
    GenerationRecord record;
    m_error.clear();
    m_splitGroups.clear();
    m_clock.reset();
    if (m_input.clock && m_input.clock->getMCUPLL())
        m_clock = std::make_unique<ClockCode>(m_input.clock->getMCUPLL()->clock(), m_input);
    m_tree = std::move(m_begunTree);
    if (!m_tree) {
        m_tree = std::make_unique<SourceTree>(directory, m_input.options.keepUserCode);
        if (write)
            m_tree->writeAtOnce();
    }
    m_beside = m_tree->beside();
    // A file that cannot be read may hold the user's work: it is looked for before anything is made of it.
    if (!generateFiles()) {
        record.error =
            QCoreApplication::translate("GenerateCode", "The templates of %1 and the generator do not agree: %2")
                .arg(m_plan.folder, m_error);
        const QStringList repeated = m_tree->repeatedBlocks();
        if (m_input.options.keepUserCode && !repeated.isEmpty())
            record.error = QCoreApplication::translate(
                               "GenerateCode", "The marker comments of user blocks stand twice in a file, as in a "
                                               "copy of generated code. Take them out of the copy:\n%1")
                               .arg(repeated.join(QLatin1Char('\n')));
        return record;
    }
    record.error = m_tree->problems();
    if (!record.error.isEmpty())
        return record;
    record.files = m_tree->compare();
    for (GeneratedFileRecord &file : record.files) {
        if (file.path != SystemSource)
            continue;
        file.portWithoutPin = systemGenerator().portWithoutPin();
        file.portsWithoutPrintf = m_portsWithoutPrintf;
    }
    record.ok = true;
    return record;
}

GenerationRecord GenerateCode_ALL::generate(const QString &directory, bool write)
{
    const bool isMade = m_record.ok && m_tree && m_tree->directory() == directory && m_tree->isCurrent();
    if (!isMade)
        m_record = make(directory, write);
    if (write && m_record.ok) {
        m_record.error = m_tree->write(m_record.files);
        m_record.ok = m_record.error.isEmpty();
    }
    if (write || !m_record.ok)
        m_tree.reset();
    return m_record;
}

// ---- Free operations ----

void HandleSignalsGPIOUserLabel(std::vector<SignalsGPIOSetting> &settings, const QList<GPIO_Pin_Define_Info *> &defines)
{
    QSet<QString> names;
    for (const SignalsGPIOSetting &setting : settings) {
        if (!setting.signalName.isEmpty() && !setting.signalUserLabel.isEmpty())
            names.insert(setting.signalUserLabel);
    }
    QSet<QString> held;
    for (SignalsGPIOSetting &setting : settings) {
        if (setting.signalName.isEmpty())
            continue;
        setting.signalUserLabel_EXT = setting.signalUserLabel;
        if (setting.signalUserLabel.isEmpty())
            continue;
        if (!held.contains(setting.signalUserLabel)) {
            held.insert(setting.signalUserLabel);
            continue;
        }
        const auto define = std::find_if(defines.begin(), defines.end(), [&](const GPIO_Pin_Define_Info *one) {
            return IsPinNameSame(one->Name, setting.signalInPinName);
        });
        if (define == defines.end())
            continue;
        // What comes of it can be what another pin is called.
        const QString pin = (*define)->GPIO_x.right(1) + (*define)->GPIO_Pin_x.section(QLatin1Char('_'), -1);
        do
            setting.signalUserLabel_EXT += QLatin1Char('_') + pin;
        while (names.contains(setting.signalUserLabel_EXT));
        names.insert(setting.signalUserLabel_EXT);
    }
}

} // namespace ChipLoom
