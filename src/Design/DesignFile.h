#pragma once

#include "Design/DesignPart.h"
#include "Design/ForeignElements.h"
#include "Design/PinAssignment.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace ChipLoom {

class Design;

/// The file of a design, `*.ZVWP`: writes the open design, and rebuilds a design from a file.
///
/// The same design gives the same bytes; the order of the sections does not matter when they are read. What a later
/// version wrote and this one does not know goes back into the file. What the user must know is told through the
/// design's prompt.
class DesignFile
{
public:
    enum class Fault {
        None,
        Unreadable, ///< the file cannot be read
        NoDesign,   ///< no design of a device of the catalogue
        Unwritable  ///< the file cannot be replaced, and stands as it was
    };

    explicit DesignFile(Design &design) : m_design(design) {}

    /// What the file of the open design holds.
    QByteArray content() const { return contentWith({}, {}); }
    /// The same with a note of where the design comes from, for a copy that lies elsewhere.
    QByteArray contentFrom(const QString &origin) const;

    /// Replaces the file. The design then has this path and no unsaved changes.
    bool SaveProject(const QString &path);
    /// Puts a copy beside what was generated from the design, with a note of where the design comes from; the design
    /// keeps its path.
    bool SaveGeneratedCopy(const QString &path, const QString &origin);
    /// Whether such a copy may replace a file without loss: it is a former copy with that origin, or the same design.
    bool isGeneratedCopy(const QString &path, const QString &origin) const;
    /// Rebuilds the design from a file. One that holds no design of a known device is refused with a box, and the open
    /// design stays. What else is wrong keeps its default and stands in `problems()`.
    bool OpenDesign(const QString &path);
    /// The same from a copy that `contentFrom` made: the design has the path of its origin, if it had one, and unsaved
    /// changes.
    bool OpenCopy(const QString &copy);
    /// The origin that such a copy names; empty if the design had no file, or if `copy` is none.
    static QString originOf(const QString &copy);

    /// Why the last operation failed.
    Fault fault() const { return m_fault; }
    /// What the last opened file said that could not be taken.
    const QList<DesignProblem> &problems() const { return m_problems; }
    /// Whether saving leaves out something of it. What is told to stay in the file does not count.
    bool dropsOnSaving() const { return m_dropsOnSaving; }
    /// Where the design was opened from or saved to last; empty for a new one.
    QString path() const { return m_path; }
    /// Whether somebody else has written that file since then.
    bool isChangedElsewhere() const;
    /// The design was emptied.
    void forget();

    /// Whether the three names are a device of the catalogue; tells if not. `detail` says more.
    bool MCUInfoCheck(const QString &serial, const QString &name, const QString &package,
                      const QString &detail = {}) const;

    /// Text of the first child `element` of the first section `section` of a file; empty without one.
    static QString GetXMLElementString(const QString &file, const QString &section, const QString &element);
    /// The signals that a file says were placed by hand.
    static QList<ProjectFilePinInfo> GetProjectFilePinInfo(const QString &file);

private:
    /// A file that was read and found to be a design.
    struct Source
    {
        XMLElementInfo root;
        QByteArray content;
        QString series, device, package;
        bool systickConflict = false;
    };
    using Place = NamedPlace;

    /// `origin` in a section of that name, unless it is empty.
    QByteArray contentWith(QLatin1String note, const QString &origin) const;
    bool replace(const QString &path, const QByteArray &content);
    /// What leads a design to the state that its file knows.
    struct Hints
    {
        QList<Place> places;  ///< held for the signals of modes while the modes are chosen
        QStringList ahead;    ///< instances that are read before their like
        bool idleLast = true; ///< choices by hand that no mode uses are placed behind the modes, not ahead of them
    };

    bool read(const QString &path, Source &source);
    void open(Source &source);
    void build(const Source &source, const Hints &hints);
    static QList<Place> placesOfRows(const XMLElementInfo &root);
    bool differs(const Place &place) const;
    int faults(const QList<Place> &rows) const;
    QStringList refusedInstances() const;
    void readPart(DesignPart &part, const Source &source);
    void readPeripherals(const Source &source, const QStringList &ahead, QList<Place> &pending);
    void readAgain(const Source &source);
    /// What cannot be so, when all that the clock depends on has been read.
    QList<DesignProblem> readClock(const Source &source);
    bool SysticAndFreeRTOSConflicHandle_InOldVersion(const Source &source) const;
    void keepForeign(const XMLElementInfo &root);
    QList<DesignPart *> settingsLists(const QStringList &names) const;
    bool isSettingsList(const DesignPart &part) const;
    bool isMiddleware(const DesignPart &part) const;

    Design &m_design;
    Fault m_fault = Fault::None;
    QString m_path;
    QByteArray m_stored; ///< what the file held when it was read or written here; empty if that is not known
    QList<DesignProblem> m_problems;
    bool m_dropsOnSaving = false;
    ForeignElements m_foreign;
};

inline const QString DesignSuffix = QStringLiteral(".ZVWP");
/// Whether a name is a design file's by its suffix, in any case.
bool isDesignFileName(const QString &path);
/// The path with the suffix if its file name has none.
QString withDesignSuffix(const QString &path);

/// The instances that a series reads before all others, since others depend on them; in this order.
QStringList earlyInstances(const QString &series);

} // namespace ChipLoom
