#include "Design/DesignFile.h"

#include "Base/AtomicFile.h"
#include "Base/Version.h"
#include "ClockConfig/ClockTexts.h"
#include "ClockConfig/ZV32PLLConfig.h"
#include "Design/Design.h"
#include "Design/OpeningProblems.h"
#include "Design/ProjectSettings.h"
#include "Model/XmlTree.h"
#include "Model/xmloperation.h"

#include <QBuffer>
#include <QFileInfo>
#include <QSet>
#include <QXmlStreamWriter>

#include <algorithm>

namespace ChipLoom {

namespace {

const QString VersionSection = QStringLiteral("ChipLoomVersion");
const QString DeviceSection = QStringLiteral("MCUInfo");
const QString PinSection = QStringLiteral("PINInfo");
const QString ProjectSection = QStringLiteral("ProjectInfomation");
const QString ClockSection = QStringLiteral("ClockConfiguration");
const QLatin1String OriginSection("RecoveredFrom");
const QLatin1String GeneratedSection("GeneratedFrom");
const QString Gpio = QStringLiteral("GPIO");
const QString Nvic = QStringLiteral("NVIC");
const QStringList DmaLists{QStringLiteral("DMA"), QStringLiteral("EDMA")};

constexpr const char *ErrorTitle = QT_TRANSLATE_NOOP("Prompt", "Error");
constexpr const char *WarningTitle = QT_TRANSLATE_NOOP("Prompt", "Warning");
constexpr const char *NoDeviceText = QT_TRANSLATE_NOOP("Prompt", "Open file error, can not get MCU information!");
constexpr const char *UnknownDeviceText = QT_TRANSLATE_NOOP("Prompt", "Open file error, MCU in file not supported.");
constexpr const char *UnknownPackageText =
    QT_TRANSLATE_NOOP("Prompt", "Open file error, MCU package in file not supported.");
constexpr const char *SaveErrorText = QT_TRANSLATE_NOOP("Prompt", "Save file error!");
constexpr const char *TimeBaseText = QT_TRANSLATE_NOOP(
    "Prompt", "FREERTOS cannot be activated simultaneously with the \"Delay TimeBase Source - SysTick\" in the "
              "SYSTEM. \nThe \"Delay TimeBase Source - SysTick\" has been automatically disabled.\nPlease reselect the "
              "\"Delay TimeBase Source\" in the SYSTEM");

void writeText(QXmlStreamWriter &xml, const char *name, const QString &text)
{
    xml.writeTextElement(QLatin1String(name), text);
}

QString textOf(const XMLElementInfo &root, QLatin1String section, QLatin1String element)
{
    const XMLElementInfo *parent = findChild(root, section);
    const XMLElementInfo *child = parent ? findChild(*parent, element) : nullptr;
    return child ? child->tagText : QString();
}

/// Where a copy says that its design comes from.
QString noteIn(const XMLElementInfo &root, QLatin1String section)
{
    const XMLElementInfo *origin = findChild(root, section);
    return origin ? origin->tagText : QString();
}

/// The value of a mode in the section of an instance.
QString modeValue(const XMLElementInfo &root, QLatin1String instance, QLatin1String mode)
{
    const XMLElementInfo *section = findChild(root, instance);
    const XMLElementInfo *modes = section ? findChild(*section, QLatin1String("Mode")) : nullptr;
    if (modes) {
        for (const XMLElementInfo &entry : modes->subElementInfoList) {
            if (attributeValue(entry, QLatin1String("name")) == mode)
                return attributeValue(entry, QLatin1String("value"));
        }
    }
    return {};
}

/// Whether a section is that of an instance with a mode in use.
bool hasModeOn(const XMLElementInfo &section)
{
    const XMLElementInfo *modes = findChild(section, QLatin1String("Mode"));
    return modes && std::any_of(modes->subElementInfoList.begin(), modes->subElementInfoList.end(),
                                [](const XMLElementInfo &mode) {
                                    const QString value = attributeValue(mode, QLatin1String("value"));
                                    return value != QLatin1String("FALSE") && value != QLatin1String("Disable");
                                });
}

/// The name under which a signal stands on a pin that may have several.
QString nameOfPlace(const MCUPinsBaseInfo &pin, const PinSignalStruct &state)
{
    return state.signalInPinName.isEmpty() ? pin.pinName : state.signalInPinName;
}

/// Calls `use(pin, state)` for what was placed by hand, in the order of the pins.
template <typename Use> void forEachByHand(const DevicePinInfo &info, const Use &use)
{
    for (const MCUPinsBaseInfo &pin : info.m_deviceBaseInfoList) {
        for (const PinSignalStruct &state : pin.pinSignalsList) {
            if (state.configStatus & Manual_Config)
                use(pin, state);
        }
    }
}

void writePins(QXmlStreamWriter &xml, const DevicePinInfo &info)
{
    xml.writeStartElement(PinSection);
    forEachByHand(info, [&xml](const MCUPinsBaseInfo &pin, const PinSignalStruct &state) {
        xml.writeEmptyElement(QStringLiteral("PinSub"));
        xml.writeAttribute(QStringLiteral("pinname"), nameOfPlace(pin, state));
        xml.writeAttribute(QStringLiteral("signalname"), state.signalName);
        xml.writeAttribute(QStringLiteral("signaltype"), state.configStatus == Manual_Config
                                                             ? QStringLiteral("Manual_Config")
                                                             : QStringLiteral("Manual_IP_Config"));
    });
    xml.writeEndElement();
}

QList<ProjectFilePinInfo> pinsOf(const XMLElementInfo &root)
{
    QList<ProjectFilePinInfo> pins;
    const XMLElementInfo *section = findChild(root, QLatin1String("PINInfo"));
    if (!section)
        return pins;
    for (const XMLElementInfo &entry : section->subElementInfoList) {
        if (entry.tagName == QLatin1String("PinSub"))
            pins.append({attributeValue(entry, QLatin1String("pinname")),
                         attributeValue(entry, QLatin1String("signalname")),
                         attributeValue(entry, QLatin1String("signaltype"))});
    }
    return pins;
}

/// What users did in an order of their own may not come about in that of the file: then it is tried again, with what
/// was refused ahead of the rest.
constexpr int MaxAttempts = 3;

bool stands(const DevicePinInfo &info, const QString &signal, const QString &pinName)
{
    for (const SignalPlace &place : info.placesOf(signal)) {
        if (info.pin(place.pin).validFlag && info.signal(place).configStatus != Not_Config &&
            IsPinNameSame(info.pin(place.pin).pinName, pinName))
            return true;
    }
    return false;
}

} // namespace

bool isDesignFileName(const QString &path)
{
    return path.endsWith(DesignSuffix, Qt::CaseInsensitive);
}

QString withDesignSuffix(const QString &path)
{
    return QFileInfo(path).suffix().isEmpty() ? path + DesignSuffix : path;
}

// ---- Writing ----

QByteArray DesignFile::contentFrom(const QString &origin) const
{
    return contentWith(OriginSection, origin);
}

QByteArray DesignFile::contentWith(QLatin1String note, const QString &origin) const
{
    QByteArray content;
    QXmlStreamWriter xml(&content);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("Root"));
    xml.writeStartElement(VersionSection);
    writeText(xml, "Version", QLatin1String(ProgramVersion));
    xml.writeEndElement();
    xml.writeStartElement(DeviceSection);
    writeText(xml, "MCUSerials", m_design.series());
    writeText(xml, "MCUName", m_design.device());
    writeText(xml, "MCUPackage", m_design.package());
    xml.writeEndElement();
    for (const bool middlewares : {false, true}) {
        for (const std::unique_ptr<DesignPart> &part : m_design.parts()) {
            if (!isSettingsList(*part) && isMiddleware(*part) == middlewares)
                part->writeSection(xml);
        }
    }
    for (const DesignPart *part : settingsLists(DmaLists) + settingsLists({Nvic}) + settingsLists({Gpio}))
        part->writeSection(xml);
    m_design.clock().SaveToFile(&xml);
    writePins(xml, m_design.pinInfo());
    writeProjectSections(xml, m_design.project());
    if (!origin.isEmpty())
        xml.writeTextElement(note, origin);
    xml.writeEndDocument();
    return m_foreign.putInto(content);
}

bool DesignFile::replace(const QString &path, const QByteArray &content)
{
    const ReplaceResult result = replaceFile(path, content);
    m_fault = result.ok() ? Fault::None : Fault::Unwritable;
    if (!result.ok())
        m_design.prompt().tell(PromptRequest::Kind::Critical, QLatin1String(ErrorTitle), QLatin1String(SaveErrorText),
                               result.error);
    return result.ok();
}

bool DesignFile::SaveGeneratedCopy(const QString &path, const QString &origin)
{
    return replace(path, contentWith(GeneratedSection, origin));
}

bool DesignFile::isGeneratedCopy(const QString &path, const QString &origin) const
{
    const ReadResult file = readFile(path, XmlLimits().bytes);
    return file.ok &&
           (file.content == content() || noteIn(parseXml(file.content, XmlText::All).root, GeneratedSection) == origin);
}

bool DesignFile::SaveProject(const QString &path)
{
    const QByteArray written = content();
    if (!replace(path, written))
        return false;
    m_path = path;
    m_dropsOnSaving = false;
    m_stored = written;
    m_design.setModified(false);
    return true;
}

bool DesignFile::isChangedElsewhere() const
{
    if (m_path.isEmpty() || m_stored.isEmpty())
        return false;
    const ReadResult file = readFile(m_path, XmlLimits().bytes);
    return file.ok && file.content != m_stored;
}

void DesignFile::forget()
{
    m_path.clear();
    m_stored.clear();
    m_problems.clear();
    m_dropsOnSaving = false;
    m_foreign.clear();
}

bool DesignFile::isSettingsList(const DesignPart &part) const
{
    const QString name = part.instanceName();
    return name == Gpio || name == Nvic || DmaLists.contains(name);
}

bool DesignFile::isMiddleware(const DesignPart &part) const
{
    const QList<PeripheralsBaseInfo> &list = m_design.middlewares();
    return std::any_of(list.begin(), list.end(), [name = part.instanceName()](const PeripheralsBaseInfo &entry) {
        return entry.InstanceName == name;
    });
}

QList<DesignPart *> DesignFile::settingsLists(const QStringList &names) const
{
    QList<DesignPart *> lists;
    for (const std::unique_ptr<DesignPart> &part : m_design.parts()) {
        if (names.contains(part->instanceName()))
            lists.append(part.get());
    }
    return lists;
}

// ---- Reading ----

QString DesignFile::GetXMLElementString(const QString &file, const QString &section, const QString &element)
{
    return textOf(readXml(file, XmlText::All).root, QLatin1String(section.toLatin1()),
                  QLatin1String(element.toLatin1()));
}

QList<ProjectFilePinInfo> DesignFile::GetProjectFilePinInfo(const QString &file)
{
    return pinsOf(readXml(file, XmlText::All).root);
}

QString DesignFile::originOf(const QString &copy)
{
    return noteIn(readXml(copy, XmlText::All).root, OriginSection);
}

bool DesignFile::MCUInfoCheck(const QString &serial, const QString &name, const QString &package,
                              const QString &detail) const
{
    const auto refuse = [&](const char *text) {
        m_design.prompt().tell(PromptRequest::Kind::Critical, QLatin1String(ErrorTitle), QLatin1String(text), detail);
        return false;
    };
    if (serial.isEmpty() || name.isEmpty() || package.isEmpty())
        return refuse(NoDeviceText);
    const XMLOperation database(m_design.paths());
    const QList<MCUSerialStruct> allSeries = database.GetMCUSerialsList();
    const auto series = std::find_if(allSeries.begin(), allSeries.end(),
                                     [&](const MCUSerialStruct &entry) { return entry.SeriaName == serial; });
    if (series == allSeries.end())
        return refuse(UnknownDeviceText);
    const QList<MCUDeviceStruct> devices = database.GetDeviceNameList(serial);
    const auto device = std::find_if(devices.begin(), devices.end(),
                                     [&](const MCUDeviceStruct &entry) { return entry.DeviceName == name; });
    if (device == devices.end())
        return refuse(UnknownDeviceText);
    if (!database.GetMCUPackageList().contains(package) || device->DevicePackage != package)
        return refuse(UnknownPackageText);
    return true;
}

bool DesignFile::read(const QString &path, Source &source)
{
    const XmlLimits limits;
    const ReadResult file = readFile(path, limits.bytes);
    QString detail = file.error;
    if (file.ok) {
        XmlDocument document = parseXml(file.content, XmlText::All, limits);
        document.problem.file = path;
        detail = document.problem ? XmlProblemText(document.problem) : path;
        source.root = document.root;
        source.content = file.content;
    }
    const auto deviceText = [&source](const char *name) {
        return textOf(source.root, QLatin1String("MCUInfo"), QLatin1String(name)).trimmed();
    };
    source.series = deviceText("MCUSerials");
    source.device = deviceText("MCUName");
    source.package = deviceText("MCUPackage");
    const bool known = MCUInfoCheck(source.series, source.device, source.package, detail);
    m_fault = known ? Fault::None : file.ok ? Fault::NoDesign : Fault::Unreadable;
    return known;
}

bool DesignFile::OpenDesign(const QString &path)
{
    Source source;
    if (!read(path, source))
        return false;
    open(source);
    m_path = path;
    m_stored = source.content;
    return true;
}

bool DesignFile::OpenCopy(const QString &copy)
{
    Source source;
    if (!read(copy, source))
        return false;
    open(source);
    m_path = noteIn(source.root, OriginSection);
    m_design.setModified(true);
    return true;
}

void DesignFile::open(Source &source)
{
    source.systickConflict = SysticAndFreeRTOSConflicHandle_InOldVersion(source);
    const QList<Place> rows = placesOfRows(source.root);
    Hints hints{rows, {}, true};
    build(source, hints);
    int least = faults(rows);
    Hints best = hints;
    bool isBest = true;
    for (int attempt = 0; attempt < MaxAttempts && least > 0; ++attempt) {
        hints.idleLast = attempt > 0;
        if (attempt > 0) {
            const QStringList refused = refusedInstances();
            if (refused.isEmpty())
                break;
            hints.ahead = refused + hints.ahead;
            hints.ahead.removeDuplicates();
        }
        build(source, hints);
        const int now = faults(rows);
        isBest = now < least;
        if (isBest) {
            least = now;
            best = hints;
        }
    }
    if (!isBest)
        build(source, best);
    for (const Place &row : rows) {
        if (differs(row))
            m_problems.append({row.pin, {DesignReason::NotPlaced, {row.signal, row.pin}}});
    }
    m_dropsOnSaving = std::any_of(m_problems.begin(), m_problems.end(), [](const DesignProblem &problem) {
        return problem.reason.reason != DesignReason::NoSuchModule;
    });
    m_problems = causesAmong(m_problems, m_design, source.root);
    m_design.scheduler().drain();
    m_design.setModified(source.systickConflict);
}

/// Where the rows of the pins say that signals stand: those of modes too, which `PINInfo` does not name.
QList<DesignFile::Place> DesignFile::placesOfRows(const XMLElementInfo &root)
{
    QList<Place> rows;
    const XMLElementInfo *section = findChild(root, QLatin1String("GPIO"));
    if (!section)
        return rows;
    for (const XMLElementInfo &row : section->subElementInfoList) {
        if (row.tagName != QLatin1String("Signal"))
            continue;
        // Signals that share a pin share a row.
        for (const QString &signal : attributeValue(row, QLatin1String("SignalName")).split(QLatin1Char(';')))
            rows.append({attributeValue(row, QLatin1String("PinName")), signal});
    }
    return rows;
}

bool DesignFile::differs(const Place &place) const
{
    return !m_design.pinInfo().placesOf(place.signal).isEmpty() && !stands(m_design.pinInfo(), place.signal, place.pin);
}

int DesignFile::faults(const QList<Place> &rows) const
{
    const auto elsewhere = std::count_if(rows.begin(), rows.end(), [this](const Place &row) { return differs(row); });
    return int(m_problems.size() + elsewhere);
}

/// The instances of which something could not be taken.
QStringList DesignFile::refusedInstances() const
{
    QStringList names;
    for (const DesignProblem &problem : m_problems) {
        const QString name = problem.place.section(QLatin1Char('/'), 0, 0);
        if (m_design.part(name) && !names.contains(name))
            names.append(name);
    }
    return names;
}

/// Fills the design with what the file holds.
void DesignFile::build(const Source &source, const Hints &hints)
{
    m_design.NewDesign(source.series, source.device, source.package);
    const Design::Opening opening(m_design);
    m_problems.clear();
    keepForeign(source.root);

    QList<Place> pending;
    QList<Place> plain;
    QList<Place> idle;
    QSet<QString> byHand;
    const QList<ProjectFilePinInfo> placed = pinsOf(source.root);
    for (const ProjectFilePinInfo &pin : placed) {
        const bool isIdle = hints.idleLast && pin.signaltype == QLatin1String("Manual_Config");
        (isPlainFunction(pin.signalname) ? plain : isIdle ? idle : pending).append({pin.pinname, pin.signalname});
        byHand.insert(pin.signalname);
    }
    for (const Place &place : hints.places) {
        if (!byHand.contains(place.signal) && !isPlainFunction(place.signal))
            pending.append(place);
    }
    pending += plain;
    m_design.pins().placeByHand(pending);
    readClock(source);
    for (DesignPart *list : settingsLists(DmaLists))
        readPart(*list, source);
    readPeripherals(source, hints.ahead, pending);
    for (DesignPart *list : settingsLists(DmaLists))
        readPart(*list, source);
    readAgain(source);
    if (source.systickConflict) {
        if (DesignPart *system = m_design.part(QStringLiteral("SYSTEM")))
            system->apply({QStringLiteral("mode"), QStringLiteral("SYSTEM/Time_Base"), QStringLiteral("Disable")});
    }
    for (const QString &pass : {QStringLiteral("FATFS"), QString()}) {
        for (const std::unique_ptr<DesignPart> &part : m_design.parts()) {
            if (isMiddleware(*part) && (part->instanceName() == QLatin1String("FATFS")) == !pass.isEmpty())
                readPart(*part, source);
        }
    }
    readAgain(source);
    m_design.pins().placeByHand(pending);
    for (const Place &place : qAsConst(idle))
        m_design.pins().settleByHand(place);
    for (DesignPart *list : settingsLists({Nvic}) + settingsLists({Gpio}))
        readPart(*list, source);
    m_problems += readClock(source);
    if (ZV32MCUPLL *page = m_design.clock().getMCUPLL()) {
        for (const ClockOutcome &left : page->leaveStoppedCrystals()) {
            m_problems.append({QLatin1String("clock/") + clockFieldName(page->series(), left.field),
                               {DesignReason::ClockRefused, {clockRefusalText(page->series(), left)}}});
        }
    }
    readProjectSections(source.root, opening.project(), m_problems);

    QStringList held;
    for (const Place &place : hints.places) {
        if (!byHand.contains(place.signal))
            held.append(place.signal);
    }
    m_design.pins().leaveToModes(held);
    for (const ProjectFilePinInfo &pin : placed) {
        if (stands(m_design.pinInfo(), pin.signalname, pin.pinname) ||
            m_design.pins().settleByHand({pin.pinname, pin.signalname}))
            continue;
        const DesignAnswer answer = m_design.pins().canPlaceByHand(pin.pinname, pin.signalname);
        m_problems.append(
            {pin.pinname, answer ? DesignAnswer{DesignReason::NotPlaced, {pin.signalname, pin.pinname}} : answer});
    }
}

/// Reads the section of a part; what could not be taken takes the place of what could not be taken before.
void DesignFile::readPart(DesignPart &part, const Source &source)
{
    const QString place = part.instanceName() + QLatin1Char('/');
    m_problems.erase(std::remove_if(m_problems.begin(), m_problems.end(),
                                    [&](const DesignProblem &problem) { return problem.place.startsWith(place); }),
                     m_problems.end());
    part.readSection(source.root, m_problems);
}

void DesignFile::readPeripherals(const Source &source, const QStringList &ahead, QList<Place> &pending)
{
    QSet<QString> read;
    const auto readNamed = [&](const QStringList &names) {
        for (const QString &name : names) {
            DesignPart *part = m_design.part(name);
            if (part && !isSettingsList(*part) && !isMiddleware(*part))
                readPart(*part, source);
            read.insert(name);
        }
    };
    readNamed(earlyInstances(source.series));
    // Some of them decide which pads are connected.
    m_design.pins().placeByHand(pending);
    readNamed(ahead);
    for (const std::unique_ptr<DesignPart> &part : m_design.parts()) {
        if (!read.contains(part->instanceName()))
            readNamed({part->instanceName()});
    }
}

/// Peripherals and middlewares depend on each other, and the order of the file need not be the one in which the user
/// made the choices: what was refused is tried again as long as less is refused each time.
void DesignFile::readAgain(const Source &source)
{
    for (int before = m_problems.size() + 1; !m_problems.isEmpty() && m_problems.size() < before;) {
        before = m_problems.size();
        QSet<QString> refused;
        for (const DesignProblem &problem : qAsConst(m_problems))
            refused.insert(problem.place.section(QLatin1Char('/'), 0, 0));
        for (const std::unique_ptr<DesignPart> &part : m_design.parts()) {
            if (refused.contains(part->instanceName()) && !isSettingsList(*part))
                readPart(*part, source);
        }
    }
}

QList<DesignProblem> DesignFile::readClock(const Source &source)
{
    QBuffer buffer;
    buffer.setData(source.content);
    buffer.open(QIODevice::ReadOnly);
    QList<DesignProblem> problems;
    for (const ZV32MCUPLL::Misfit &misfit : m_design.clock().OpenFromFile(buffer, source.series)) {
        const QString name = clockFieldName(m_design.clock().getMCUPLL()->series(), misfit.field);
        problems.append({QLatin1String("clock/") + name, {DesignReason::NotANumber, {name, misfit.text}}});
    }
    return problems;
}

/// Files of old versions may let the kernel and the delays share the system timer. Tells so; whoever reads the file
/// switches the time base off.
bool DesignFile::SysticAndFreeRTOSConflicHandle_InOldVersion(const Source &source) const
{
    const bool conflict =
        modeValue(source.root, QLatin1String("SYSTEM"), QLatin1String("Time_Base")) == QLatin1String("SysTick") &&
        modeValue(source.root, QLatin1String("FREERTOS"), QLatin1String("Activated")) == QLatin1String("TRUE");
    if (conflict)
        m_design.prompt().tell(PromptRequest::Kind::Warning, QLatin1String(WarningTitle), QLatin1String(TimeBaseText));
    return conflict;
}

void DesignFile::keepForeign(const XMLElementInfo &root)
{
    QSet<QString> seen;
    for (const XMLElementInfo &section : root.subElementInfoList) {
        const QString &name = section.tagName;
        const DesignPart *part = m_design.part(name);
        const bool known = part || name == VersionSection || name == DeviceSection || name == PinSection ||
                           name == ClockSection || name == OriginSection || name == GeneratedSection ||
                           isProjectSection(name);
        if (known && seen.contains(name)) {
            m_problems.append({QLatin1String("file"), {DesignReason::DuplicateEntry, {name}}});
            continue;
        }
        seen.insert(name);
        const bool isFlat = name == Nvic || name == ClockSection || name == ProjectSection;
        if (isFlat || (part && !isSettingsList(*part))) {
            for (const QString &entry : repeatedEntries(section, isFlat))
                m_problems.append({QLatin1String("file"), {DesignReason::DuplicateEntry, {entry}}});
        }
        if (!known) {
            m_foreign.keepSection(section);
            if (hasModeOn(section))
                m_problems.append({name, {DesignReason::NoSuchModule, {name}}});
        } else if (part && !isSettingsList(*part))
            m_foreign.keepChildren(section, part->sectionElements());
        else if (name == DeviceSection)
            m_foreign.keepChildren(
                section, {QStringLiteral("MCUSerials"), QStringLiteral("MCUName"), QStringLiteral("MCUPackage")});
        else if (name == ProjectSection)
            m_foreign.keepChildren(section, projectValueNames() + QStringList{QStringLiteral("FirmwarePath")});
    }
}

} // namespace ChipLoom
