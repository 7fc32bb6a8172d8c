#pragma once

#include "Base/AppPaths.h"
#include "Model/ShareParameter.h"
#include "Model/XmlProblem.h"

#include <QString>

#include <utility>

namespace ChipLoom {

/// The single reader of the device database and of the key store. Stateless but for the paths: each operation opens
/// its file again and returns plain records. A file that cannot be opened or parsed, that is larger or nested deeper
/// than the reader allows, or that declares entities gives the empty result; nothing is raised and nothing is shown.
class XMLOperation
{
public:
    explicit XMLOperation(AppPaths paths) : m_paths(std::move(paths)) {}

    // ---- Catalogue: ZV32DB/MCUList.xml ----

    QString mcuListFile() const;
    /// Lines with their series and devices, in file order.
    QList<ProductLineStruct> GetProductLinesList() const;
    QList<MCUSerialStruct> GetMCUSerialsList(const QString &line) const;
    /// All series, by the prefixes ZV32F, ZV32A, ZV32M, ZV32L, ZV32WB and sorted by name within; others are dropped.
    QList<MCUSerialStruct> GetMCUSerialsList() const;
    QList<MCUDeviceStruct> GetDeviceNameList(const QString &serial) const;
    QStringList GetMCUPackageList() const;
    /// Why the catalogue is empty, and where it was looked for; no problem if it lists a device.
    XmlProblem catalogueProblem() const;

    // ---- Device file: ZV32DB/device/<series>/<device>.xml ----

    QString deviceFile(const QString &series, const QString &device) const;
    QString seriesInfoFile(const QString &series, LANGUAGE language) const;

    /// All of the file in one reading; the operations below each read it again.
    MCUDeviceFile GetDeviceFile(const QString &file) const;

    QString GetMCUName(const QString &file) const;
    QString GetPackage(const QString &file) const;
    int GetAllPinNums(const QString &file) const;
    int GetXPinNum(const QString &file) const;
    int GetYPinNum(const QString &file) const;
    quint32 GetPID(const QString &file) const;
    /// The attribute of the first child that has it, below the root's first child with this `term`; empty if absent.
    QString GetNodeValue(const QString &file, const QString &term, const QString &attribute) const;
    /// `columns` is the file's `yPinNum`; it counts for the package "BGA", whose labels become numbers.
    QList<MCUPinsBaseInfo> GetMCUPinsBaseInfo(const QString &file, const QString &package, int columns) const;
    QList<IPSignalGroupInfo> GetMCUIPSignalGroupInfo(const QString &file) const;
    /// `term` is "PeripheralsList" or "MiddlewaresList".
    QList<PeripheralsBaseInfo> GetMCUPeripheralsBaseInfo(const QString &term, const QString &file) const;

    // ---- Peripheral file: ZV32DB/device/<series>/Peripherals/<Name>-<Version>.xml ----

    QString peripheralFile(const QString &series, const QString &name, const QString &version) const;
    /// The whole file as a tree; empty unless its root is named "IP".
    XMLElementInfo GetIPXMLInfo(const QString &file) const;

    static RefParameter GetRefParameter(const QString &instance, const QString &name, const XMLElementInfo &tree);
    static QList<RefParameter> GetRefParameterList(const QString &instance, const QString &name,
                                                   const XMLElementInfo &tree);
    static QList<RefParameter> GetXMLFileAllRefParameterList(const QString &instance, const XMLElementInfo &tree);
    static QList<ParameterTabName> GetParameterTabNameList(const XMLElementInfo &tree);
    static RefMode GetRefMode(const XMLElementInfo &tree, const QString &name);
    static RefMode GetRefMode(const QString &baseMode, const QString &name, const XMLElementInfo &tree);
    static RefMode GetRefMode_Abstract(const XMLElementInfo &tree);
    static QList<ModeCofiguration> GetModeSettings(const QString &instance, const XMLElementInfo &tree);
    static QList<ModeSignal> GetModeSignals(const QString &instance, const XMLElementInfo &tree);

    // ---- Saved designs and order of calls ----

    /// The `name` and `value` attributes below `Mode`, `Parameters` and `Interrupts` of the section `ipName`. True
    /// unless the file cannot be read; a missing section leaves the lists empty.
    bool GetModeAndParamValue(const QString &designFile, const QString &ipName, QList<XMLAttributeInfo> &modes,
                              QList<XMLAttributeInfo> &params, QList<XMLAttributeInfo> &interrupts) const;
    /// The same from the root element of a design file. False if the section is missing.
    static bool GetModeAndParamValue(const XMLElementInfo &root, const QString &ipName, QList<XMLAttributeInfo> &modes,
                                     QList<XMLAttributeInfo> &params, QList<XMLAttributeInfo> &interrupts);
    QList<MainFuncNameForRank> GetMainAllFuncNameForRank(const QString &file, const QString &term) const;

    /// Pin number of a BGA label as "B12" on a grid of `columns` columns: row times columns plus the number. -1 for a
    /// malformed label or a number beyond the columns. The row I is not used, and counts as J.
    static int labelToNumber(const QString &label, int columns);

    // ---- Key store: a flat file of keys and texts ----

    /// Makes an empty store in place of whatever stood there.
    bool CreateXMLFile(const QString &path) const;
    /// Sets a key, keeping all others. False if the file cannot be read or replaced; it then stands as it was.
    bool AppendConfigToXml(const QString &path, const QString &key, const QString &value) const;
    /// False if the file cannot be read or lacks the key; `value` then stays.
    bool GetConfigValueFromXml(const QString &path, const QString &key, QString &value) const;

    const AppPaths &paths() const { return m_paths; }

private:
    AppPaths m_paths;
};

} // namespace ChipLoom
