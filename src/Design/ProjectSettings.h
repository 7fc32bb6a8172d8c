#pragma once

#include "Design/DesignPart.h"

namespace ChipLoom {

/// What a design says of the project that is generated from it: the state half of the project dialog. A plain value.
struct ProjectValues
{
    QString ProjectName;
    QString ProjectLocation;                           ///< parent folder; empty until the user chooses one
    QString ToolchainIDE = QStringLiteral("ZV32_IDE"); ///< as `getIDEPathName` names it
    QString ARMCompiler = QStringLiteral("Use default complier version 5");
    bool BackupCode = false;
    bool KeepUserCode = true;
    bool NotUsedPinAnalog = false;
    bool CodeSplitIP = false;
    bool AddNecessaryFileFlag = true;
    bool DeletePriviousFiles = true;
    QString MinHeapSize = QStringLiteral("0x200");  ///< bytes, hexadecimal
    QString MinStackSize = QStringLiteral("0x400"); ///< bytes, hexadecimal
    bool UseFirmware = true;
    QString PackageVersion;
    QString FirmwarePath;                         ///< of older files; read, never written
    QList<MainFuncNameForRank> functionRank = {}; ///< calls of `main` in order; empty for the order of the series

    /// What a new design begins with.
    static ProjectValues ofDevice(const QString &device);

    IDE_TYPE getProjectIDE() const;
    /// As chosen for MDK V5; `ARM_AC_NotSet` for all others.
    ARM_AC_Set getARM_AC_Set() const;
    /// Bytes; 0 for a text that is no hexadecimal number.
    quint32 getMinHeapSize() const;
    quint32 getMinStackSize() const;
    /// Where the project goes, without a final slash: a folder of the project's name in its location, or the location
    /// itself if the design lies there already under the project's name. Empty while a part of it is missing.
    QString getProjectFullPath(const QString &designFile) const;
    /// The design file that a generation writes.
    QString getDesignFilePath(const QString &designFile) const;
};

/// The values by the names that the design file and the settings "project/<name>=<value>" have for them, in the order
/// of the file; without the order of calls.
QStringList projectValueNames();

/// A value as the file writes it; empty for an unknown name.
QString projectValue(const ProjectValues &values, const QString &name);

/// Sets one value; "true" and "false" for switches. A refusal leaves the values as they were.
DesignAnswer setProjectValue(ProjectValues &values, const QString &name, const QString &value);

/// The first of heap and stack that is no hexadecimal number (`NotANumber`: field, value) or does not fit into the SRAM
/// (`AboveMaximum`: field, value, greatest value in hexadecimal). Each is looked at alone. `sramSize` is in bytes.
DesignAnswer HeapAndStackCheck(const ProjectValues &values, quint32 sramSize);

/// Whether a name is one of the two sections below.
bool isProjectSection(const QString &elementName);

/// Writes the sections "ProjectInfomation" and "FunctionRankInfo".
void writeProjectSections(QXmlStreamWriter &xml, const ProjectValues &values);

/// Takes what the root of a design file has of them. What is missing keeps its value; what is wrong keeps it too, and
/// is named.
void readProjectSections(const XMLElementInfo &root, ProjectValues &values, QList<DesignProblem> &problems);

} // namespace ChipLoom
