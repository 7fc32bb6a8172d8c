// Generates designs of one device of the sample database for the judges that compile and run them: every distinct text
// once, and for each design, in a line of its own, what it says about its clocks, pins, interrupts, DMA channels and
// calls.

#include "Design/DMA_Configuration.h"
#include "Design/Design.h"
#include "Design/GPIO_Configuration.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Design/ModeFoundations.h"
#include "Design/NVIC_Configuration.h"
#include "Design/RandomUser.h"
#include "GenerateCode/CodeGeneration.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "Middlewares/Middlewares.h"
#include "Model/SeriesHelpers.h"
#include "Model/xmloperation.h"
#include "ScriptedPrompt.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cstdio>

using namespace ChipLoom;

namespace {

struct Choice
{
    QString instance, mode, item;
};

class JudgeDesigns
{
public:
    JudgeDesigns(const AppPaths &paths, QString output, int every, int randoms)
        : m_design(paths, m_prompt), m_output(std::move(output)), m_every(every), m_randoms(randoms)
    {
        registerMiddlewares(m_design);
        QDir().mkpath(m_output + "/texts");
    }

    bool device(const MCUSerialStruct &series, const MCUDeviceStruct &entry);

private:
    bool apply(const QString &setting) { return Test::applySetting(m_design, setting); }
    bool turn() { return m_turn++ % m_every == 0; }

    void modes(const DesignSnapshot &empty);
    void openEvents();
    void useEverything();
    void repair();
    void random(unsigned seed);
    void randomClocks(Test::RandomUser &user);
    void randomPinsAndChannels(Test::RandomUser &user);
    void randomRequests(Test::RandomUser &user, const DMA_Configuration &dma);
    bool randomOrder(Test::RandomUser &user);
    void judge(const QString &name, const QJsonObject &marks = {});
    QString keep(const QString &path);
    QJsonObject facts() const;
    QJsonArray pins() const;

    ScriptedPrompt m_prompt{0};
    Design m_design;
    QString m_output;
    int m_every, m_randoms;
    int m_turn = 0;
    int m_uses = 0;
    QSet<QString> m_kept;
    QByteArray m_lines;
    QMap<QString, int> m_leftOut; // why, and how often
    bool m_ok = true;
};

// Lets every event of the peripherals in use interrupt, and what asks for the DMA only with a certain value ask for it.
void JudgeDesigns::openEvents()
{
    const auto asks = [](const PossibleValue &value) { return value.Semaphore.startsWith("Request_"); };
    QStringList events;
    for (const PeripheralsBaseInfo &info : m_design.peripherals()) {
        const IP_ModeAndConfiguration *peripheral = m_design.peripheral(info.InstanceName);
        if (!peripheral || !peripheral->GetIPValidFlag())
            continue;
        for (const RefParameter &parameter : peripheral->parameters().GetRefParameterList()) {
            const QString address = "param/" + info.InstanceName + '/' + parameter.Name + '=';
            const QList<PossibleValue> &values = parameter.PossibleValueList;
            const auto asking = std::find_if(values.begin(), values.end(), asks);
            if (asking != values.end())
                events.prepend(address + asking->Value);
            if (parameter.Name.startsWith("Interrupt_"))
                events.append(address + "TRUE");
        }
    }
    for (const QString &event : qAsConst(events))
        apply(event);
}

// Gives channels to all requests that wait, lets all vectors run, and labels a pin.
void JudgeDesigns::useEverything()
{
    // Where both controllers know a request, now the one serves it and now the other.
    std::vector<DMA_Configuration *> controllers = m_design.dmaParts();
    if (++m_uses % 2)
        std::reverse(controllers.begin(), controllers.end());
    for (DMA_Configuration *dma : controllers) {
        for (const QString &request : dma->getDMARequestNameList())
            apply(dma->typeName().toLower() + "/any=" + request);
    }
    int priority = 0;
    apply("nvic/PriorityGroup=NVIC_PRIORITY_GROUP_3");
    for (const MCUNVICSetting *vector : m_design.nvic()->GetAllNVICSettingList()) {
        const QString address = "nvic/" + vector->ValueName;
        if (vector->canBeSet && apply(address + "/Enabled=TRUE")) {
            apply(address + "/PreemptionPriority=" + QString::number(priority % 8));
            apply(address + "/SubPriority=" + QString::number(priority % 2));
            ++priority;
        }
    }
    for (const SignalsGPIOSetting *setting : m_design.gpio()->GetAllSignalsGPIOSettingList()) {
        if (apply("label/" + setting->InPinName + "=Wire"))
            break;
    }
}

// Takes off what stops a generation.
void JudgeDesigns::repair()
{
    for (int round = 0; round < 3; ++round) {
        for (const QString &instance : modulesWithErrors(m_design)) {
            ModuleConfiguration *module = m_design.module(instance);
            apply("reset/" + instance + '=');
            if ((module->GetIPStatusFlag() & IPSTATUS_ERROR) == 0)
                continue;
            for (const auto &control : module->controls())
                apply("mode/" + instance + '/' + control->modeName() + (control->isCheckBox() ? "=FALSE" : "=Disable"));
        }
    }
    for (const QString &pin : manualPinsWithoutEffect(m_design)) {
        const QString name = pin.section('-', 0, -2);
        apply("pin/" + name + '=');
    }
}

void JudgeDesigns::random(unsigned seed)
{
    const ZV32MCUSERIALS series = MCUSerialString_To_ZV32MCUSERIALS(m_design.series());
    Test::RandomUser user(m_design, seed, [&](const ModuleConfiguration &module) {
        const QString name = module.instanceName();
        return m_design.peripheral(name) &&
               (generatorParts(series, name).questions || name == "CRM" || name == "SYSTEM");
    });
    user.change(30 + user.below(120));
    randomClocks(user);
    useEverything();
    randomPinsAndChannels(user);
    for (const char *flag : {"CodeSplitIP", "NotUsedPinAnalog"})
        m_ok = apply("project/" + QString::fromLatin1(flag) + (user.below(2) ? "=true" : "=false")) && m_ok;
    repair();
    const bool allCalled = randomOrder(user);
    judge("random " + QString::number(seed), {{"random", true}, {"all called", allCalled}});
}

// Clocks of any source that hold together; those of before where nothing that was tried does.
void JudgeDesigns::randomClocks(Test::RandomUser &user)
{
    const DesignSnapshot before = m_design.snapshot();
    for (int attempt = 0; attempt < 10; ++attempt) {
        for (const auto &control : m_design.peripheral("CRM")->controls()) {
            if (user.below(2))
                apply("mode/CRM/" + control->modeName() + '=' + user.oneOf(Test::itemsOf(*control)));
        }
        apply("clock/hext=" + QString::number(4 + user.below(22)));
        for (int i = 0; i < 20; ++i)
            user.clock();
        if (user.below(2))
            apply("clock/sclk=" + QString::number(24 + user.below(220)));
        if (m_design.clock().GenerateCodeCheck())
            return;
        if (!m_design.restore(before))
            m_ok = false;
    }
}

void JudgeDesigns::randomPinsAndChannels(Test::RandomUser &user)
{
    QStringList pins;
    for (const MCUPinsBaseInfo &pin : m_design.pinInfo().m_deviceBaseInfoList)
        pins.append(pin.pinName);
    for (int i = user.below(8); i > 0; --i)
        apply("pin/" + user.oneOf(pins) + '=' +
              user.oneOf({"GPIO_Output", "GPIO_Output", "GPIO_Input", "GPIO_Analog"}));
    QStringList settings;
    for (const SignalsGPIOSetting *setting : m_design.gpio()->GetAllSignalsGPIOSettingList()) {
        const QString pin = setting->InPinName;
        if (user.below(5) == 0)
            settings.append("label/" + pin + '=' + user.oneOf({"Wire", "LED", "_1"}));
        for (const RefParameter &entry : setting->signalPinGPIOInfoList) {
            if (!entry.PossibleValueList.isEmpty() && user.below(2))
                settings.append("gpio/" + pin + '/' + entry.Name + '=' +
                                entry.PossibleValueList.at(user.below(entry.PossibleValueList.size())).Value);
        }
    }
    for (const QString &setting : settings)
        apply(setting);
    // Twice: what is switched on shows more.
    for (int round = 0; round < 2; ++round) {
        for (const DMA_Configuration *dma : m_design.dmaParts())
            randomRequests(user, *dma);
    }
}

// Shuffles the calls that can be moved; now and then one is not made. Whether all are made.
bool JudgeDesigns::randomOrder(Test::RandomUser &user)
{
    if (checkBeforeGeneration(m_design) != GenerationStop::None ||
        !generateCode(m_design, QDir::tempPath() + "/nothing", false).ok)
        return true;
    QList<MainFuncNameForRank> calls = m_design.project().functionRank;
    int first = 0;
    while (first < calls.size() && calls.at(first).FixPosFlag)
        ++first;
    for (int i = calls.size() - 1; i > first; --i)
        calls.swapItemsAt(i, first + user.below(i - first + 1));
    const bool allCalled = first == calls.size() || user.below(8) != 0;
    if (!allCalled)
        calls.last().MainDoNotCallFlag = true;
    m_design.setFunctionRank(calls);
    return allCalled;
}

void JudgeDesigns::randomRequests(Test::RandomUser &user, const DMA_Configuration &dma)
{
    for (const DMARequest *request : dma.ValidDMAChannalList()) {
        QStringList settings;
        for (const RefParameter &entry : request->RefParameterfoList) {
            const QList<PossibleValue> offered = dma.offeredValues(*request, entry);
            const int lowest = entry.MinValue.toInt();
            const QString value = offered.isEmpty()
                                      ? QString::number(lowest + user.below(entry.MaxValue.toInt() - lowest + 1))
                                      : offered.at(user.below(offered.size())).Value;
            if (user.below(2))
                settings.append(dma.typeName().toLower() + '/' + request->channelName + '/' + entry.Name + '=' + value);
        }
        for (const QString &setting : settings)
            apply(setting);
    }
}

QString JudgeDesigns::keep(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray text = file.readAll();
    const QString name = QCryptographicHash::hash(text, QCryptographicHash::Sha1).toHex();
    if (!m_kept.contains(name)) {
        m_kept.insert(name);
        // Other devices are written at the same time, some with the same text.
        const QString place = m_output + "/texts/" + name;
        QFile copy(place + '.' + QString::number(QCoreApplication::applicationPid()));
        if (!QFile::exists(place) && (!copy.open(QIODevice::WriteOnly) || copy.write(text) != text.size() ||
                                      (!copy.rename(place) && !(QFile::exists(place) && copy.remove()))))
            m_ok = false;
    }
    return name;
}

QJsonArray JudgeDesigns::pins() const
{
    QJsonArray list;
    const QList<GPIO_Pin_Define_Info *> defines = m_design.gpio()->GetGPIOPinDefineInfo();
    for (const SignalsGPIOSetting *setting : m_design.gpio()->GetAllSignalsGPIOSettingList()) {
        QJsonObject pin{{"pin", setting->signalInPinName}, {"signal", setting->signalName}};
        for (const RefParameter &entry : setting->signalPinGPIOInfoList)
            pin.insert(entry.Comment_EN, entry.CurrentValue);
        for (const GPIO_Pin_Define_Info *define : defines) {
            if (!IsPinNameSame(define->Name, setting->signalInPinName))
                continue;
            for (const GPIO_PinSignal_Mux_Info &mux : define->pinSignalMuxInfoList) {
                if (mux.SignalName == setting->signalName)
                    pin.insert("mux", mux.GPIO_Mux_x);
            }
        }
        list.append(pin);
    }
    return list;
}

QJsonObject JudgeDesigns::facts() const
{
    const ZV32PLLConfig &clock = m_design.clock();
    QJsonObject clocks{{"sclk", clock.Get_SYSCLK()},
                       {"ahb", clock.Get_AHBCLK()},
                       {"apb1", clock.Get_APB1CLK()},
                       {"apb2", clock.Get_APB2CLK()},
                       {"hext", clock.GenerateCode_Get_Hext_Value()},
                       {"pllcfg", clock.getMCUPLL()->pllRegisterText()}};
    QJsonArray vectors, channels, calls;
    for (const MCUNVICSetting *vector : m_design.nvic()->GetAllNVICSettingList()) {
        if (vector->enabledFlag)
            vectors.append(QJsonObject{{"irq", vector->ValueName},
                                       {"core", vector->core_IRQFlag},
                                       {"preemption", vector->preemptionPriority_Value},
                                       {"sub", vector->subPriority_Value}});
    }
    for (const DMA_Configuration *dma : m_design.dmaParts()) {
        for (const DMARequest *request : dma->ValidDMAChannalList()) {
            QJsonObject channel{{"channel", request->channelName}, {"request", request->requestName}};
            for (const RefParameter &entry : request->RefParameterfoList)
                channel.insert(entry.Name, entry.CurrentValue);
            channels.append(channel);
        }
    }
    for (const MainFuncNameForRank &call : m_design.project().functionRank) {
        if (!call.MainDoNotCallFlag)
            calls.append(call.FuncName);
    }
    QJsonObject peripherals;
    for (const PeripheralsBaseInfo &entry : m_design.peripherals()) {
        const IP_ModeAndConfiguration *live = m_design.peripheral(entry.InstanceName);
        if (!live || !live->GetIPValidFlag())
            continue;
        QJsonObject parameters;
        for (const RefParameter &parameter : live->parameters().GetRefParameterList())
            parameters.insert(parameter.Name, parameter.CurrentValue);
        peripherals.insert(entry.InstanceName, parameters);
    }
    return {{"clocks", clocks},
            {"pins", pins()},
            {"group", m_design.nvic()->GetPriorityGroupParameter().CurrentValue},
            {"vectors", vectors},
            {"dma", channels},
            {"calls", calls},
            {"peripherals", peripherals}};
}

void JudgeDesigns::judge(const QString &name, const QJsonObject &marks)
{
    if (checkBeforeGeneration(m_design) != GenerationStop::None) {
        ++m_leftOut[(marks.isEmpty() ? name : QStringLiteral("a random design")) + ": " +
                    m_prompt.takeTexts().last().replace('\n', ' ')];
        return;
    }
    const QTemporaryDir folder;
    const GenerationRecord record = generateCode(m_design, folder.path() + "/project", true);
    const QString place = m_design.device() + ": " + name;
    if (!record.ok) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(place), qPrintable(record.error));
        m_ok = false;
        return;
    }
    QJsonObject files;
    for (const GeneratedFileRecord &file : record.files)
        files.insert(file.path, keep(folder.path() + "/project/" + file.path));
    QJsonObject design = marks;
    design.insert("name", place);
    design.insert("device", m_design.device());
    design.insert("series", m_design.series());
    design.insert("folder", MCUSerialString_To_MCUConSerialString(m_design.series()));
    design.insert("files", files);
    design.insert("facts", facts());
    m_lines += QJsonDocument(design).toJson(QJsonDocument::Compact) + '\n';
}

bool JudgeDesigns::device(const MCUSerialStruct &series, const MCUDeviceStruct &entry)
{
    if (!m_design.NewDesign(series.SeriaName, entry.DeviceName, entry.DevicePackage)) {
        std::fprintf(stderr, "%s: cannot be opened\n", qPrintable(entry.DeviceName));
        return false;
    }
    m_design.scheduler().drain();
    const DesignSnapshot empty = m_design.snapshot();
    judge("empty");
    const unsigned hash = qHash(entry.DeviceName, 7) % 10000;
    m_turn = int(hash); // a sample takes other modes on each device
    modes(empty);
    for (int i = 0; i < m_randoms; ++i) {
        if (!m_design.restore(empty))
            m_ok = false;
        const unsigned seed = hash + unsigned(i);
        random(seed);
    }
    QJsonObject leftOut;
    for (auto reason = m_leftOut.begin(); reason != m_leftOut.end(); ++reason)
        leftOut.insert(reason.key(), reason.value());
    m_lines += QJsonDocument(QJsonObject{{"left out", leftOut}}).toJson(QJsonDocument::Compact) + '\n';
    QFile file(m_output + '/' + entry.DeviceName + ".jsonl");
    return file.open(QIODevice::WriteOnly) && file.write(m_lines) == m_lines.size() && m_ok;
}

// Each mode of each peripheral, alone and with all its requests and interrupts.
void JudgeDesigns::modes(const DesignSnapshot &empty)
{
    const ZV32MCUSERIALS code = MCUSerialString_To_ZV32MCUSERIALS(m_design.series());
    std::vector<Choice> choices;
    for (const PeripheralsBaseInfo &info : m_design.peripherals()) {
        const IP_ModeAndConfiguration *peripheral = m_design.peripheral(info.InstanceName);
        if (!peripheral)
            continue;
        const bool common = info.InstanceName == "CRM" || info.InstanceName == "SYSTEM";
        if (!common && !generatorParts(code, info.InstanceName).questions) {
            ++m_leftOut[info.InstanceName + " has no generator yet"];
            continue;
        }
        for (const auto &control : peripheral->controls()) {
            for (const QString &item : Test::itemsOf(*control))
                choices.push_back({info.InstanceName, control->modeName(), item});
        }
    }
    for (const Choice &choice : choices) {
        if (!turn())
            continue;
        if (!m_design.restore(empty))
            m_ok = false;
        for (const QString &other : Test::foundationsOf(choice.instance, choice.mode, choice.item))
            apply(other);
        const QString name = choice.instance + '/' + choice.mode + '=' + choice.item;
        if (!Test::chooseItem(m_design, choice.instance, choice.mode, choice.item)) {
            ++m_leftOut[name + " cannot be chosen"];
            continue;
        }
        Test::completeModes(m_design, choice.instance);
        if (choice.instance == "CRM")
            apply("clock/hext=8");
        judge(name);
        openEvents();
        useEverything();
        judge(name + " with DMA and interrupts");
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser options;
    options.addPositionalArgument("output", "Folder for the designs; without it the names of the devices are printed.");
    options.addOptions({{"every", "Take each Nth mode.", "N", "1"},
                        {"random", "Random designs for each device.", "N", "0"},
                        {"device", "Only devices whose names match.", "EXPRESSION"}});
    options.addHelpOption();
    options.process(application);
    const QString output = options.positionalArguments().value(0);
    const QRegularExpression wanted(options.value("device"));
    const AppPaths paths(QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR));
    bool ok = true;
    for (const MCUSerialStruct &series : XMLOperation(paths).GetMCUSerialsList()) {
        for (const MCUDeviceStruct &entry : series.MCUDeviceList) {
            if (!wanted.match(entry.DeviceName).hasMatch())
                continue;
            if (output.isEmpty())
                std::printf("%s\n", qPrintable(entry.DeviceName));
            else
                ok = JudgeDesigns(paths, output, qMax(1, options.value("every").toInt()),
                                  options.value("random").toInt())
                         .device(series, entry) &&
                     ok;
        }
    }
    return ok ? 0 : 1;
}
