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
};

/// The values by the names that the design file and the settings "project/<name>=<value>" have for them, in the order
/// of the file; without the order of calls.
QStringList projectValueNames();

/// A value as the file writes it; empty for an unknown name.
QString projectValue(const ProjectValues &values, const QString &name);

/// Sets one value; "true" and "false" for switches. A refusal leaves the values as they were.
DesignAnswer setProjectValue(ProjectValues &values, const QString &name, const QString &value);

/// Whether a name is one of the two sections below.
bool isProjectSection(const QString &elementName);

/// Writes the sections "ProjectInfomation" and "FunctionRankInfo".
void writeProjectSections(QXmlStreamWriter &xml, const ProjectValues &values);

/// Takes what the root of a design file has of them. What is missing keeps its value; what is wrong keeps it too, and
/// is named.
void readProjectSections(const XMLElementInfo &root, ProjectValues &values, QList<DesignProblem> &problems);

} // namespace ChipLoom
