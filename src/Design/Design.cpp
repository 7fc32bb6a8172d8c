#include "Design/Design.h"

#include "ClockConfig/ClockSettings.h"
#include "ClockConfig/ClockTexts.h"
#include "Design/ClockRouting.h"
#include "Design/DMA_Configuration.h"
#include "Design/GPIO_Configuration.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Design/NVIC_Configuration.h"
#include "Design/PinSeries.h"
#include "Design/Routing.h"
#include "Model/SeriesHelpers.h"
#include "Model/xmloperation.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ChipLoom {

Design::Design(AppPaths paths, UserPrompt &prompt, QObject *parent)
    : QObject(parent), m_paths(std::move(paths)), m_prompt(prompt), m_clock(m_scheduler, prompt), m_file(*this)
{
    connect(&m_clock, &ZV32PLLConfig::edited, this, [this] { setModified(true); });
    connect(&m_clock, &ZV32PLLConfig::SendClockChangedSignal, this, [this] {
        const Scheduler::Hold hold(m_scheduler);
        for (const std::unique_ptr<DesignPart> &part : m_parts)
            part->ReciveClockChangedSignal();
    });
    connect(&m_pins, &PinAssignment::pinsChanged, this, [this](const QList<int> &positions) {
        setModified(true);
        tellClockOutputs(pinInfo(), m_clock);
        emit pinsChanged(positions);
    });
}

Design::~Design() = default;

void Design::registerPartFactory(DesignPartFactory factory)
{
    m_partFactories.push_back(std::move(factory));
}

bool Design::NewDesign(const QString &series, const QString &device, const QString &package)
{
    clear();
    m_MCUSerials = series;
    m_MCUName = device;
    m_MCUPackage = package;
    const XMLOperation database(m_paths);
    m_MCUFilePath = database.deviceFile(series, device);
    const MCUDeviceFile file = database.GetDeviceFile(m_MCUFilePath);
    m_MCUPID = file.PID;
    m_PeripheralsBaseInfoList = file.PeripheralsList;
    m_MiddlewaresBaseInfoList = file.MiddlewaresList;
    m_peripheralFiles.emplace(database, series);
    m_pins.load(series, DevicePinInfo(file, m_MCUFilePath));
    m_clock.newConfig(MCUSerialString_To_ZV32MCUSERIALS(series));
    m_project = ProjectValues::ofDevice(device);
    makeParts();
    setModified(false);
    emit opened();
    return !pinInfo().isEmpty() || !m_PeripheralsBaseInfoList.isEmpty();
}

void Design::clear()
{
    const bool wasOpen = isOpen();
    if (wasOpen)
        emit closing();
    ++m_generation;
    for (const std::unique_ptr<DesignPart> &part : m_parts)
        m_scheduler.cancelAll(part.get());
    m_partsByName.clear();
    m_modules.clear();
    m_listedBy.clear();
    m_parts.clear();
    m_gpio = nullptr;
    m_nvic = nullptr;
    m_dma = nullptr;
    m_edma = nullptr;
    m_clock.AllConfigFormClose();
    m_pins.clear();
    m_PeripheralsBaseInfoList.clear();
    m_MiddlewaresBaseInfoList.clear();
    m_MCUSerials.clear();
    m_MCUName.clear();
    m_MCUPackage.clear();
    m_MCUFilePath.clear();
    m_MCUPID = 0;
    m_project = {};
    m_file.forget();
    setModified(false);
    if (wasOpen)
        emit cleared();
}

void Design::makeParts()
{
    const QList<PeripheralsBaseInfo> entries = m_PeripheralsBaseInfoList + m_MiddlewaresBaseInfoList;
    for (const PeripheralsBaseInfo &entry : entries) {
        std::unique_ptr<DesignPart> part = makePart(entry);
        if (!part)
            continue;
        connect(part.get(), &DesignPart::EnableSemaphore_To_OtherIP, this, &Design::ReceiveSemaphore_From_OtherIP);
        connect(part.get(), &DesignPart::SendIPStatusFlag, this,
                [this](const QString &name, IPSTATUS status, bool modeChange) {
                    emit statusChanged(name, status);
                    const ModuleConfiguration *sender = modeChange ? module(name) : nullptr;
                    if (sender)
                        tellClock(*sender, m_clock);
                });
        connect(part.get(), &DesignPart::SendParamList_To_OtherIP, this, &Design::ReceiveParamList_From_OtherIP);
        if (!m_partsByName.contains(part->instanceName()))
            m_partsByName.insert(part->instanceName(), part.get());
        m_parts.push_back(std::move(part));
    }
    for (const PeripheralsBaseInfo &entry : entries)
        m_modules.push_back(module(entry.InstanceName));
    for (const std::unique_ptr<DesignPart> &part : m_parts)
        part->HandleSpecialItem();
}

std::unique_ptr<DesignPart> Design::makePart(const PeripheralsBaseInfo &entry)
{
    for (const DesignPartFactory &factory : m_partFactories) {
        if (std::unique_ptr<DesignPart> part = factory(*this, entry))
            return part;
    }
    if (std::unique_ptr<DesignPart> part = makeSettingsList(entry))
        return part;
    return makePeripheral(entry);
}

std::unique_ptr<DesignPart> Design::makeSettingsList(const PeripheralsBaseInfo &entry)
{
    if (entry.InstanceName == QLatin1String("GPIO") && !m_gpio) {
        auto gpio = std::make_unique<GPIO_Configuration>(*this, entry, m_peripheralFiles->get(entry));
        m_gpio = gpio.get();
        return gpio;
    }
    if (entry.InstanceName == QLatin1String("NVIC") && !m_nvic) {
        auto nvic = std::make_unique<NVIC_Configuration>(*this, entry, m_peripheralFiles->get(entry));
        m_nvic = nvic.get();
        return nvic;
    }
    return makeDma(entry);
}

std::unique_ptr<DesignPart> Design::makeDma(const PeripheralsBaseInfo &entry)
{
    const bool isDma = entry.InstanceName == QLatin1String("DMA");
    if ((!isDma && entry.InstanceName != QLatin1String("EDMA")) || (isDma ? m_dma : m_edma))
        return nullptr;
    const std::shared_ptr<const PeripheralTree> tree = m_peripheralFiles->get(entry);
    if (tree->isEmpty())
        return nullptr;
    auto part = std::make_unique<DMA_Configuration>(*this, entry, tree);
    (isDma ? m_dma : m_edma) = part.get();
    connect(part.get(), &DMA_Configuration::SendDMARequestChangeSignals, this,
            &Design::ReceiveSingleDMARequestInfoChangeSignals);
    connect(part.get(), &DMA_Configuration::SendAutoEnableNVICIRQSemaphore, this,
            [this](const QStringList &cancelled, const QStringList &enabled) {
                if (m_nvic)
                    m_nvic->UpdateAutoEnableNVICIRQSemaphore(cancelled, enabled);
            });
    return part;
}

std::vector<DMA_Configuration *> Design::dmaParts() const
{
    std::vector<DMA_Configuration *> parts;
    for (DMA_Configuration *part : {m_dma, m_edma}) {
        if (part)
            parts.push_back(part);
    }
    return parts;
}

std::unique_ptr<DesignPart> Design::makePeripheral(const PeripheralsBaseInfo &entry)
{
    static const QStringList SettingsLists{QStringLiteral("GPIO"), QStringLiteral("NVIC"), QStringLiteral("DMA"),
                                           QStringLiteral("EDMA")};
    const auto sameInstance = [&](const PeripheralsBaseInfo &other) {
        return other.InstanceName == entry.InstanceName;
    };
    const bool middleware =
        std::any_of(m_MiddlewaresBaseInfoList.begin(), m_MiddlewaresBaseInfoList.end(), sameInstance);
    if (middleware || SettingsLists.contains(entry.InstanceName))
        return nullptr;
    auto peripheral = std::make_unique<IP_ModeAndConfiguration>(*this, entry, peripheralTree(entry));
    connectPeripheral(*peripheral);
    for (const ModeSignal &signal : peripheral->signalTable()) {
        if (!signal.Virtual && !m_listedBy.value(signal.signalName).contains(entry.InstanceName))
            m_listedBy[signal.signalName].append(entry.InstanceName);
    }
    return peripheral;
}

void Design::connectPeripheral(IP_ModeAndConfiguration &peripheral)
{
    connect(&peripheral, &IP_ModeAndConfiguration::SendIPPinSignals, this, &Design::ReciveIPPinSignals_FormIP);
    connect(&peripheral, &IP_ModeAndConfiguration::ClearIPPinSignals, this, &Design::ReciveClearIPPinSignals_FormIP);
    connect(&peripheral, &IP_ModeAndConfiguration::SendPinRemapFlag, &m_pins, &PinAssignment::ReceivePinRemapFlag);
    connect(&peripheral, &IP_ModeAndConfiguration::SendPinRemapFlag1, &m_pins, &PinAssignment::ReceivePinRemapFlag1);
    connect(&m_pins, &PinAssignment::SendAllConfigedSignals, &peripheral,
            [&peripheral](const DevicePinInfo *info, bool flag, const QString &ipName, const QStringList &) {
                peripheral.ReciveAllConfigedSignals(info, flag, ipName);
            });
}

void Design::ReceiveSemaphore_From_OtherIP(const QString &sender, const QStringList &tokens, bool enable)
{
    if (m_nvic)
        m_nvic->ReceiveSemaphore(sender, tokens, enable);
    const std::vector<DMA_Configuration *> dmaParts = this->dmaParts();
    const QString dmaReceiver = reachesDmaSettings(m_MCUSerials, sender) ? QString() : sender;
    for (DMA_Configuration *dma : dmaParts)
        dma->ReceiveSemaphores(dmaReceiver, tokens, enable);
    for (const std::unique_ptr<DesignPart> &part : m_parts) {
        const Route route = tokenRoute(m_MCUSerials, sender, part->instanceName());
        if (route == Route::None)
            continue;
        part->receiveTokens(tokens, enable);
        for (DMA_Configuration *dma : dmaReceiver.isEmpty() ? std::vector<DMA_Configuration *>() : dmaParts)
            dma->ReceiveSemaphores(part->instanceName(), tokens, enable);
        if (route == Route::ForwardAndRefresh)
            part->UpdateIPSetting();
    }
}

void Design::Receive_FREERTOS_INTERRUPT_PRIORITY(const QString &text)
{
    if (m_nvic)
        m_nvic->SetFREERTOSPRIORITY(text);
}

void Design::ReceiveParamList_From_OtherIP(const QList<RefParameter> &list, const QString &sender)
{
    if (sender == QLatin1String("FREERTOS")) {
        // The kernel is off where its list has no such priority, and then nothing is asked of the interrupts.
        const auto priority = std::find_if(list.begin(), list.end(), [](const RefParameter &parameter) {
            return parameter.Name == QLatin1String("configLIBRARY_MAX_SYSCALL_INTERRUPT_PRIORITY");
        });
        Receive_FREERTOS_INTERRUPT_PRIORITY(priority == list.end() ? QString() : priority->CurrentValue);
    }
    tellConverterClock(list, sender, m_clock);
    for (const std::unique_ptr<DesignPart> &part : m_parts) {
        if (parameterListRoute(m_MCUSerials, sender, part->instanceName()))
            part->SetOtherIPParamList(list, sender);
    }
}

std::shared_ptr<const PeripheralTree> Design::peripheralTree(const PeripheralsBaseInfo &entry)
{
    return m_peripheralFiles->get(entry);
}

ModuleConfiguration *Design::module(const QString &instanceName) const
{
    return dynamic_cast<ModuleConfiguration *>(part(instanceName));
}

void Design::ReceiveSingleDMARequestInfoChangeSignals()
{
    QList<DMAChannelUse> channels;
    for (const DMA_Configuration *dma : dmaParts()) {
        for (const DMARequest *request : dma->ValidDMAChannalList())
            channels.append({request->channelName, request->InstanceName});
    }
    if (m_nvic)
        m_nvic->UpdateDMAChannelInfoForAllNVICList(channels);
    for (const std::unique_ptr<DesignPart> &part : m_parts) {
        if (ModuleConfiguration *module = this->module(part->instanceName()))
            module->UpdateDMACondition();
    }
}

bool Design::raises(const QString &token) const
{
    return std::any_of(m_parts.begin(), m_parts.end(), [&](const std::unique_ptr<DesignPart> &part) {
        const auto *module = dynamic_cast<const ModuleConfiguration *>(part.get());
        return module && module->raises(token);
    });
}

IP_ModeAndConfiguration *Design::peripheral(const QString &instanceName) const
{
    return dynamic_cast<IP_ModeAndConfiguration *>(part(instanceName));
}

DesignPart *Design::part(const QString &instanceName) const
{
    return m_partsByName.value(instanceName);
}

QStringList Design::ownersOf(const QString &signal) const
{
    if (isPlainFunction(signal))
        return {QStringLiteral("GPIO")};
    const auto listed = m_listedBy.constFind(signal);
    if (listed != m_listedBy.constEnd())
        return *listed;
    const QString start = signal.section(QLatin1Char('_'), 0, 0);
    return part(start) ? QStringList{start} : QStringList();
}

QStringList Design::holdersOf(const QString &signal) const
{
    const QStringList owners = ownersOf(signal);
    if (owners.size() < 2)
        return owners;
    QStringList holders;
    std::copy_if(owners.begin(), owners.end(), std::back_inserter(holders),
                 [&](const QString &instanceName) { return part(instanceName)->signalsInUse().contains(signal); });
    return holders.isEmpty() ? owners : holders;
}

QStringList Design::signalsOf(const QString &instanceName) const
{
    const QStringList all = pinInfo().GetAllSignalsName();
    QStringList own;
    std::copy_if(all.begin(), all.end(), std::back_inserter(own),
                 [&](const QString &signal) { return ownersOf(signal).contains(instanceName); });
    return own;
}

DesignAnswer Design::apply(const DesignChange &change)
{
    if (!isOpen())
        return {DesignReason::NoDesign, {}};
    const Scheduler::Hold hold(m_scheduler);
    if (change.section == QLatin1String("pin") || change.section == QLatin1String("label"))
        return applyToPins(change);
    if (change.section == QLatin1String("clock"))
        return applyToClock(change);
    if (change.section == QLatin1String("project"))
        return applyToProject(change);
    for (const std::unique_ptr<DesignPart> &part : m_parts) {
        if (!part->handles(change))
            continue;
        const DesignAnswer answer = part->apply(change);
        if (answer)
            setModified(true);
        return answer;
    }
    return {DesignReason::UnknownSetting, {change.section + QLatin1Char('/') + change.address}};
}

DesignAnswer Design::applyToPins(const DesignChange &change)
{
    if (change.section == QLatin1String("label"))
        return m_pins.UserLabelEditFinished_Slot(change.address, change.value);
    std::vector<std::pair<const ModeControl *, LostChoice>> chosen;
    for (const std::unique_ptr<DesignPart> &part : m_parts) {
        const ModuleConfiguration *module = this->module(part->instanceName());
        for (int i = 0; module && i < int(module->controls().size()); ++i) {
            const ModeControl &control = *module->controls()[size_t(i)];
            if (control.isOn())
                chosen.push_back({&control, {part->instanceName(), control.modeName(), control.index()}});
        }
    }
    const DesignAnswer answer = changePin(change);
    QList<LostChoice> lost;
    for (const auto &[control, choice] : chosen) {
        if (!control->isOn())
            lost.append(choice);
    }
    if (!lost.isEmpty())
        emit choicesLost(lost);
    return answer;
}

DesignAnswer Design::changePin(const DesignChange &change)
{
    if (change.value.isEmpty())
        return m_pins.checkedLibAction(change.address, QStringLiteral("Reset_State"), true);
    if (change.value.startsWith(QLatin1Char('-')))
        return m_pins.checkedLibAction(change.address, change.value.mid(1), false);
    return m_pins.checkedLibAction(change.address, change.value, true);
}

DesignAnswer Design::applyToClock(const DesignChange &change)
{
    if (!m_clock.getMCUPLL())
        return {DesignReason::UnknownSetting, {change.section + QLatin1Char('/') + change.address}};
    const QString refusal = applyClockSetting(*m_clock.getMCUPLL(), change.address, change.value, false);
    return refusal.isEmpty() ? DesignAnswer{} : DesignAnswer{DesignReason::ClockRefused, {refusal}};
}

DesignAnswer Design::applyToProject(const DesignChange &change)
{
    const DesignAnswer answer = setProjectValue(m_project, change.address, change.value);
    if (answer)
        setModified(true);
    return answer;
}

QList<DesignProblem> Design::problems() const
{
    QList<DesignProblem> problems;
    for (const MCUPinsBaseInfo &pin : pinInfo().m_deviceBaseInfoList) {
        for (const PinSignalStruct &state : pin.pinSignalsList) {
            if (state.configStatus == Manual_Config)
                problems.append({pin.pinName, {DesignReason::NotUsedByModes, {state.signalName}}});
        }
    }
    for (const std::unique_ptr<DesignPart> &part : m_parts)
        part->collectProblems(problems);
    if (const ZV32MCUPLL *page = m_clock.getMCUPLL()) {
        const double pllInput = page->clock().GetPllInPutValue();
        for (const ClockProblem &problem : page->problems())
            problems.append({QStringLiteral("clock"),
                             {DesignReason::ClockRefused, {clockProblemText(page->series(), problem, pllInput)}}});
    }
    return problems;
}

void Design::ReciveIPPinSignals_FormIP(const QList<ModeSignal> &oldList, const QList<ModeSignal> &newList, bool flag,
                                       const QString &ipName)
{
    QList<ModeSignal> old = withoutSharedInUse(oldList, ipName);
    QList<ModeSignal> wanted = newList;
    QList<ModeSignal> lastOld;
    QList<ModeSignal> lastWanted;
    if (pinSeriesRules(m_MCUSerials).complementaryChannel4Last &&
        (ipName == QLatin1String("TMR1") || ipName == QLatin1String("TMR8"))) {
        const auto take = [name = ipName + QLatin1String("_CH4C")](QList<ModeSignal> &from, QList<ModeSignal> &to) {
            const auto first = std::stable_partition(
                from.begin(), from.end(), [&name](const ModeSignal &signal) { return signal.signalName != name; });
            std::copy(first, from.end(), std::back_inserter(to));
            from.erase(first, from.end());
        };
        take(old, lastOld);
        if (!lastOld.isEmpty())
            take(wanted, lastWanted);
    }
    m_pins.ReciveIPPinSignals(old, wanted, flag, ipName);
    if (!lastOld.isEmpty())
        m_pins.ReciveIPPinSignals(lastOld, lastWanted, flag, ipName);
}

void Design::ReciveClearIPPinSignals_FormIP(const QList<ModeSignal> &list, bool flag, const QString &ipName)
{
    m_pins.ReciveClearIPPinSignals(withoutSharedInUse(list, ipName), flag, ipName);
}

QList<ModeSignal> Design::withoutSharedInUse(const QList<ModeSignal> &list, const QString &ipName) const
{
    const QLatin1String memoryController("XMC");
    if (!ipName.contains(memoryController))
        return list;
    QStringList inUse;
    for (const std::unique_ptr<DesignPart> &part : m_parts) {
        if (part->instanceName().contains(memoryController))
            inUse += part->signalsInUse();
    }
    QList<ModeSignal> rest;
    std::copy_if(list.begin(), list.end(), std::back_inserter(rest),
                 [&inUse](const ModeSignal &signal) { return !inUse.contains(signal.signalName); });
    return rest;
}

void Design::AllConfigReset()
{
    const Scheduler::Hold hold(m_scheduler);
    m_pins.AllConfigReset();
    for (const std::unique_ptr<DesignPart> &part : m_parts)
        part->reset();
    m_pins.refreshIPControl();
    m_project.functionRank.clear();
    if (isOpen())
        setModified(true);
}

void Design::updateLanguage()
{
    m_pins.updateLanguage();
    const bool chinese = GlobalLanguage::g_CurrentLanguage == UI_CH;
    for (QList<PeripheralsBaseInfo> *list : {&m_PeripheralsBaseInfoList, &m_MiddlewaresBaseInfoList}) {
        for (PeripheralsBaseInfo &entry : *list)
            entry.AboutInfo = chinese ? entry.AboutInfo_CH : entry.AboutInfo_EN;
    }
    for (const std::unique_ptr<DesignPart> &part : m_parts)
        part->updateLanguage();
    emit languageChanged();
}

DesignSnapshot Design::snapshot() const
{
    DesignSnapshot snapshot{m_pins.save(), {}, {}, m_project, m_generation};
    if (const ZV32MCUPLL *page = m_clock.getMCUPLL())
        snapshot.clock = page->state();
    for (const std::unique_ptr<DesignPart> &part : m_parts)
        snapshot.parts.push_back(part->save());
    return snapshot;
}

bool Design::restore(const DesignSnapshot &snapshot)
{
    if (snapshot.generation != m_generation)
        return false;
    const Scheduler::Hold hold(m_scheduler);
    const auto restoreParts = [&](bool last) {
        for (size_t i = 0; i < m_parts.size(); ++i) {
            if (m_parts[i]->isRestoredLast() == last)
                m_parts[i]->restore(snapshot.parts[i]);
        }
    };
    restoreParts(false);
    m_pins.restore(snapshot.pins);
    restoreParts(true);
    if (snapshot.clock)
        m_clock.getMCUPLL()->restore(*snapshot.clock);
    m_project = snapshot.project;
    return true;
}

void Design::setModified(bool modified)
{
    if (modified)
        ++m_revision;
    if (m_modified == modified)
        return;
    m_modified = modified;
    emit modifiedChanged(modified);
}

} // namespace ChipLoom
