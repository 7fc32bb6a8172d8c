#pragma once

#include "Base/AppPaths.h"
#include "Base/Scheduler.h"
#include "Base/UserPrompt.h"
#include "ClockConfig/ZV32PLLConfig.h"
#include "Design/DesignFile.h"
#include "Design/DesignPart.h"
#include "Design/PinAssignment.h"
#include "Design/ProjectSettings.h"
#include "Model/PeripheralFiles.h"

#include <QHash>
#include <QObject>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace ChipLoom {

class GPIO_Configuration;
class DMA_Configuration;
class IP_ModeAndConfiguration;
class ModuleConfiguration;
class NVIC_Configuration;

/// The state of a design, to be put back when changes are undone. Good for the design that gave it, until it is closed.
struct DesignSnapshot
{
    PinAssignment::Snapshot pins;
    std::vector<std::any> parts;                 ///< in the order of the design's parts
    std::optional<ZV32MCUPLL::State> clock = {}; ///< nothing on series without a clock page
    ProjectValues project = {};
    int generation = 0;
};

/// A choice that went off because a change of pins by hand took a pin from it.
struct LostChoice
{
    QString instanceName;
    QString modeName;
    int formerIndex = 0;
};

/// The open design without its window: the owner of everything that belongs to one design, and the one door through
/// which it changes. Empty at first; one object is emptied and filled again for each design.
class Design : public QObject
{
    Q_OBJECT
public:
    /// `prompt` answers what must be asked or told, and outlives the design.
    Design(AppPaths paths, UserPrompt &prompt, QObject *parent = nullptr);
    ~Design() override;

    /// Factories are asked in the order of their registration; the first part that one makes is taken. For designs
    /// that are opened from now on.
    void registerPartFactory(DesignPartFactory factory);

    /// Empties the design and fills it for a device. A device file that cannot be read gives a design without pins and
    /// parts; false then.
    bool NewDesign(const QString &series, const QString &device, const QString &package);
    /// Empties the design: no pins, no parts, no pending work.
    void clear();
    bool isOpen() const { return !m_MCUName.isEmpty(); }

    QString series() const { return m_MCUSerials; }
    QString device() const { return m_MCUName; }
    QString package() const { return m_MCUPackage; }
    quint32 pid() const { return m_MCUPID; }
    QString deviceFile() const { return m_MCUFilePath; }
    /// Entries of the device's lists, in file order, with texts of the current language.
    const QList<PeripheralsBaseInfo> &peripherals() const { return m_PeripheralsBaseInfoList; }
    const QList<PeripheralsBaseInfo> &middlewares() const { return m_MiddlewaresBaseInfoList; }

    PinAssignment &pins() { return m_pins; }
    const PinAssignment &pins() const { return m_pins; }
    const DevicePinInfo &pinInfo() const { return m_pins.pinInfo(); }
    /// The clock tree. It has a page while a design is open whose series has one.
    ZV32PLLConfig &clock() { return m_clock; }
    const ZV32PLLConfig &clock() const { return m_clock; }
    const ProjectValues &project() const { return m_project; }
    /// Keeps the order of calls that a generation has brought up to date.
    void setFunctionRank(const QList<MainFuncNameForRank> &rank) { m_project.functionRank = rank; }
    /// The part of an instance, or null.
    DesignPart *part(const QString &instanceName) const;
    /// The peripheral or middleware of that name, or null; settings lists are none.
    ModuleConfiguration *module(const QString &instanceName) const;
    /// Those of the entries of `peripherals()` and, behind them, of `middlewares()`.
    const std::vector<ModuleConfiguration *> &modules() const { return m_modules; }
    /// Whether the present choices of some module raise a token.
    bool raises(const QString &token) const;
    /// The peripheral of that name, or null; settings lists and middlewares are none.
    IP_ModeAndConfiguration *peripheral(const QString &instanceName) const;

    // ---- Whose a signal is: one answer for the drawing, the menus of pins, the settings of pins and the pages ----

    /// The peripherals that can use a signal: those whose description lists it, in the order of the device's list.
    /// Mostly one; parts of a controller share what they have in common. "GPIO" for the plain functions. A signal that
    /// no description lists is the one's whose name stands before its first "_", or nobody's.
    QStringList ownersOf(const QString &signal) const;
    /// Those of them whose modes hold it now; all of them while none does.
    QStringList holdersOf(const QString &signal) const;
    /// The functions of the device's pins that a peripheral can use, sorted.
    QStringList signalsOf(const QString &instanceName) const;

    /// The description of a module; an empty tree if its file cannot be read. Only while a device is open.
    std::shared_ptr<const PeripheralTree> peripheralTree(const PeripheralsBaseInfo &entry);
    /// The settings of the DMA requests, or null on a device without; a device may have both.
    DMA_Configuration *dma() const { return m_dma; }
    DMA_Configuration *edma() const { return m_edma; }
    /// Those of the two that the device has.
    std::vector<DMA_Configuration *> dmaParts() const;
    const std::vector<std::unique_ptr<DesignPart>> &parts() const { return m_parts; }
    /// The settings of the pins, or null while nothing is open or on a device without them.
    GPIO_Configuration *gpio() const { return m_gpio; }
    /// The interrupts; null as above.
    NVIC_Configuration *nvic() const { return m_nvic; }
    Scheduler &scheduler() { return m_scheduler; }
    UserPrompt &prompt() { return m_prompt; }
    const AppPaths &paths() const { return m_paths; }

    /// The one door. Applies a change or says why not; a refused change leaves everything as it was.
    DesignAnswer apply(const DesignChange &change);

    /// A peripheral's mode changed: it held `oldList` and now wants `newList`. Goes on to the pin authority, except
    /// for pins that memory controllers share and another still uses; on the series that say so, channel 4C of a motor
    /// timer follows by itself, since its remap group is its own.
    void ReciveIPPinSignals_FormIP(const QList<ModeSignal> &oldList, const QList<ModeSignal> &newList, bool flag,
                                   const QString &ipName);
    /// A peripheral's mode went off.
    void ReciveClearIPPinSignals_FormIP(const QList<ModeSignal> &list, bool flag, const QString &ipName);

    /// Back to the state after `NewDesign`, keeping every object.
    void AllConfigReset();

    // ---- The file (`DesignFile` says more) ----

    bool SaveProject(const QString &path) { return m_file.SaveProject(path); }
    bool OpenDesign(const QString &path) { return m_file.OpenDesign(path); }
    DesignFile &file() { return m_file; }
    const DesignFile &file() const { return m_file; }

    /// Everything that needs the user's eye now: pins without effect, faults of parts, problems of the clock.
    QList<DesignProblem> problems() const;

    /// Takes texts of the current language everywhere.
    void updateLanguage();

    DesignSnapshot snapshot() const;
    /// False, with nothing changed, if the snapshot is of another design.
    bool restore(const DesignSnapshot &snapshot);

    /// Whether something changed since the design was opened or `setModified(false)`.
    bool isModified() const { return m_modified; }
    void setModified(bool modified);
    /// Grows with every change.
    quint64 revision() const { return m_revision; }

    /// What the reader of the file needs while it works.
    class Opening
    {
    public:
        explicit Opening(Design &design) : m_design(design), m_hold(design.m_scheduler) {}
        Opening(const Opening &) = delete;
        Opening &operator=(const Opening &) = delete;

        ProjectValues &project() const { return m_design.m_project; }

    private:
        Design &m_design;
        Scheduler::Hold m_hold;
    };

signals:
    void opened();
    /// The parts are about to go: whoever looks at them lets go of them now.
    void closing();
    void cleared();
    /// A change of pins by hand, which is done now, has switched these off.
    void choicesLost(const QList<ChipLoom::LostChoice> &lost);
    /// Something of these positions changed: state, label, bonded variant. Once after each change, for views.
    void pinsChanged(const QList<int> &pinNumbers);
    void modifiedChanged(bool modified);
    void languageChanged();
    /// Status of an instance for the module tree.
    void statusChanged(const QString &instanceName, ChipLoom::IPSTATUS status);

private:
    DesignAnswer applyToPins(const DesignChange &change);
    DesignAnswer changePin(const DesignChange &change);
    DesignAnswer applyToClock(const DesignChange &change);
    DesignAnswer applyToProject(const DesignChange &change);
    QList<ModeSignal> withoutSharedInUse(const QList<ModeSignal> &list, const QString &ipName) const;
    void makeParts();
    std::unique_ptr<DesignPart> makePart(const PeripheralsBaseInfo &entry);
    std::unique_ptr<DesignPart> makeDma(const PeripheralsBaseInfo &entry);
    std::unique_ptr<DesignPart> makePeripheral(const PeripheralsBaseInfo &entry);
    std::unique_ptr<DesignPart> makeSettingsList(const PeripheralsBaseInfo &entry);
    void connectPeripheral(IP_ModeAndConfiguration &peripheral);
    void ReceiveSemaphore_From_OtherIP(const QString &sender, const QStringList &tokens, bool enable);
    void Receive_FREERTOS_INTERRUPT_PRIORITY(const QString &text);
    void ReceiveParamList_From_OtherIP(const QList<RefParameter> &list, const QString &sender);
    void ReceiveSingleDMARequestInfoChangeSignals();

    AppPaths m_paths;
    UserPrompt &m_prompt;
    Scheduler m_scheduler;
    PinAssignment m_pins;
    ZV32PLLConfig m_clock;
    ProjectValues m_project;
    DesignFile m_file;
    std::vector<DesignPartFactory> m_partFactories;
    std::vector<std::unique_ptr<DesignPart>> m_parts;
    QHash<QString, DesignPart *> m_partsByName;       ///< the first of each name
    std::vector<ModuleConfiguration *> m_modules;     // among the parts, by entry of the device's lists
    QHash<QString, QStringList> m_listedBy;           ///< signals and the peripherals whose descriptions list them
    GPIO_Configuration *m_gpio = nullptr;             // among the parts
    NVIC_Configuration *m_nvic = nullptr;             // among the parts
    DMA_Configuration *m_dma = nullptr;               // among the parts
    DMA_Configuration *m_edma = nullptr;              // among the parts
    std::optional<PeripheralFiles> m_peripheralFiles; // while a device is open

    QString m_MCUSerials;
    QString m_MCUName;
    QString m_MCUPackage;
    quint32 m_MCUPID = 0;
    QString m_MCUFilePath;
    QList<PeripheralsBaseInfo> m_PeripheralsBaseInfoList;
    QList<PeripheralsBaseInfo> m_MiddlewaresBaseInfoList;
    int m_generation = 0;
    quint64 m_revision = 0;
    bool m_modified = false;
};

} // namespace ChipLoom
