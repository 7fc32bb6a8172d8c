#include "GenerateCode/CodeGeneration.h"

#include "Design/Design.h"
#include "Design/ModuleConfiguration.h"
#include "Model/SeriesHelpers.h"

#include <QCoreApplication>

namespace ChipLoom {

namespace {

constexpr int ListedPins = 4;
constexpr int WaitMs = 10;

PromptRequest refusal(const char *text, const QString &list)
{
    PromptRequest request;
    request.kind = PromptRequest::Kind::Critical;
    request.title = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Error"));
    request.text = QLatin1String(text);
    request.textArguments = QStringList{list};
    request.buttons = QStringList{QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Ok"))};
    return request;
}

} // namespace

GenerationOptions generationOptions(const Design &design)
{
    const ProjectValues &project = design.project();
    GenerationOptions options;
    options.keepUserCode = project.KeepUserCode;
    options.notUsedPinAnalog = project.NotUsedPinAnalog;
    options.addNecessaryFileFlag = project.AddNecessaryFileFlag;
    options.splitIP = project.CodeSplitIP;
    options.ideType = project.getProjectIDE();
    options.armCompiler = project.getARM_AC_Set();
    options.rank = project.functionRank;
    return options;
}

QStringList manualPinsWithoutEffect(const Design &design)
{
    QStringList pins;
    for (const MCUPinsBaseInfo &pin : design.pinInfo().m_deviceBaseInfoList) {
        for (const PinSignalStruct &signal : pin.pinSignalsList) {
            if (signal.configStatus == Manual_Config) {
                pins.append(pin.pinName + QLatin1Char('-') + signal.signalName);
                break;
            }
        }
    }
    return pins;
}

QStringList modulesWithErrors(const Design &design)
{
    QStringList names;
    for (const ModuleConfiguration *module : design.modules()) {
        if (module && (module->GetIPStatusFlag() & IPSTATUS_ERROR) != 0)
            names.append(module->instanceName());
    }
    return names;
}

GenerationStop checkBeforeGeneration(Design &design, const std::function<void()> &show)
{
    const auto tellBeside = [&](const char *text, const QString &list) {
        if (show)
            show();
        design.prompt().ask(refusal(text, list));
    };
    if (!design.clock().GenerateCodeCheck())
        return GenerationStop::Clock;
    const QStringList pins = manualPinsWithoutEffect(design);
    if (!pins.isEmpty()) {
        QString list = pins.mid(0, ListedPins).join(QLatin1String(" / "));
        if (pins.size() > ListedPins)
            list += QLatin1String(" / ......");
        tellBeside(QT_TRANSLATE_NOOP("Prompt", "The manually configured pin signal does not take effect.\n%1"), list);
        return GenerationStop::Pins;
    }
    const QStringList errors = modulesWithErrors(design);
    if (!errors.isEmpty()) {
        tellBeside(QT_TRANSLATE_NOOP("Prompt", "These peripherals still have some not configured or wrong parameter "
                                               "value.\nPeripherals:   ( %1 )"),
                   errors.join(QLatin1String(", ")));
        return GenerationStop::Parameters;
    }
    const std::unique_ptr<GenerateCode_ALL> generator =
        GenerateCode_ALL::Get_GenerateCode_All(generationInput(design, generationOptions(design)));
    const QStringList missing = generator ? generator->withoutGenerator() : QStringList{design.series()};
    if (!missing.isEmpty()) {
        design.prompt().ask(refusal(QT_TRANSLATE_NOOP("Prompt", "The code of these cannot be generated yet: %1"),
                                    missing.join(QLatin1String(", "))));
        return GenerationStop::NoGenerator;
    }
    return GenerationStop::None;
}

void GenerateCodeThread::set_genCode(GenerateCode_ALL *generator, bool write)
{
    m_genCode = generator;
    m_write = write;
}

void GenerateCodeThread::run()
{
    m_record = m_genCode->generate(m_fileDirectory, m_write);
    emit GenerateCodeFinished(m_record.ok);
}

void CodeGeneration::forget()
{
    m_revision = m_design.revision();
    m_generator.reset();
    m_standing = Standing::Unknown;
    m_inputFingerprint.reset();
    m_input.reset();
}

void CodeGeneration::readDesign()
{
    m_input = generationInput(m_design, generationOptions(m_design));
}

// With `write` a new folder is made while the design is read.
void CodeGeneration::prepare(bool write)
{
    if (!SeriesPlan::of(MCUSerialString_To_ZV32MCUSERIALS(m_design.series())))
        return;
    std::unique_ptr<SourceTree> tree;
    if (write) {
        tree = std::make_unique<SourceTree>(m_directory, m_design.project().KeepUserCode);
        tree->writeAtOnce();
    }
    if (!m_input)
        readDesign();
    m_generator = GenerateCode_ALL::Get_GenerateCode_All(std::move(*m_input));
    m_input.reset();
    m_generator->setTree(std::move(tree));
}

quint64 CodeGeneration::fingerprint()
{
    forget();
    readDesign();
    m_inputFingerprint = fingerprintOf(*m_input);
    return *m_inputFingerprint ^ fingerprintOf(m_design.project().functionRank);
}

std::optional<quint64> CodeGeneration::settledFingerprint() const
{
    if (!m_inputFingerprint || !m_generator)
        return {};
    return *m_inputFingerprint ^ fingerprintOf(m_generator->functionRank());
}

void CodeGeneration::setUnchanged(const QStringList &files, bool settled)
{
    m_record = {true, {}, {}};
    for (const QString &file : files)
        m_record.files.append({file, GeneratedFileRecord::State::Unchanged, {}, {}});
    m_standing = settled ? Standing::Settled : Standing::Unsettled;
}

const GenerationRecord &CodeGeneration::run(bool write, const std::function<void()> &whileWaiting)
{
    const Scheduler::Hold hold(m_design.scheduler());
    if (m_revision != m_design.revision())
        forget();
    if (m_standing == Standing::Settled || (m_standing == Standing::Unsettled && !write))
        return m_record;
    if (!m_generator)
        prepare(write && m_standing == Standing::Unknown);
    if (!m_generator) {
        m_record = {};
        m_record.error =
            QCoreApplication::translate("GenerateCode", "There is no generator for %1").arg(m_design.series());
        return m_record;
    }
    if (m_standing == Standing::Unsettled) {
        m_design.setFunctionRank(m_generator->functionRank());
        return m_record;
    }
    if (whileWaiting) {
        GenerateCodeThread thread;
        thread.setfileDirectory(m_directory);
        thread.set_genCode(m_generator.get(), write);
        thread.start();
        while (!thread.wait(WaitMs))
            whileWaiting();
        m_record = thread.record();
    } else { // a thread of its own would only be waited for
        m_record = m_generator->generate(m_directory, write);
    }
    if (write && m_record.ok)
        m_design.setFunctionRank(m_generator->functionRank());
    return m_record;
}

GenerationRecord generateCode(Design &design, const QString &directory, bool write)
{
    return CodeGeneration(design, directory).run(write);
}

} // namespace ChipLoom
