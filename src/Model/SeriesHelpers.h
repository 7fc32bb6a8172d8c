#pragma once

#include "Model/Enumerations.h"

#include <QString>
#include <QStringList>

namespace ChipLoom {

/// What all rooms share about one series. A room keeps what is particular to itself in rows of its own.
struct SeriesTraits
{
    ZV32MCUSERIALS code;
    const char *name;          ///< "ZV32F403A"
    const char *group;         ///< the group that shares one generator and code folder: "f403a_407"
    const char *connected;     ///< the group that shares one firmware package: "ZV32F403A_407"
    bool deviceNameDash;       ///< the Keil name of a device stands behind a dash
    bool pinsRemapped;         ///< functions move between pins by remap groups; elsewhere each pin has a multiplexer
    bool oldToolchains;        ///< MDK V4 and IAR V7.4 have device support for the series; they were closed before the
                               ///< later ones came
    bool cortexM0Plus = false; ///< the core; all others have a Cortex-M4
};

/// The row of a series by its exact name or code, or null.
const SeriesTraits *seriesTraits(const QString &name);
const SeriesTraits *seriesTraits(ZV32MCUSERIALS code);

/// The names of all thirty series, in the order of the table.
QStringList allSeriesNames();

/// The enumerator's own spelling; empty for a code without a name.
QString ZV32MCUSERIALS_To_MCUSerialString(ZV32MCUSERIALS series);

/// The exact inverse, case-sensitive; `ZV32ErrorMCU2` for anything else.
ZV32MCUSERIALS MCUSerialString_To_ZV32MCUSERIALS(const QString &series);

/// Short name as used in folders and file names, in any case of the argument: with `single` the series' own
/// ("f403a"), else that of its group ("f403a_407"); empty for an unknown series.
QString GetMCUSerialsSimple(const QString &serial, bool single);

/// The name of the series that share one firmware package ("ZV32F403A_407"); any other text as it came.
QString MCUSerialString_To_MCUConSerialString(const QString &series);
QString ZV32MCUSERIALS_To_MCUConSerialString(ZV32MCUSERIALS series);

/// Folder of the evaluation board in a firmware package: "zv_start_f421" for "ZV32F421".
QString ZV32MCUSERIALS_To_ZVStartString(const QString &series);

/// Whether the firmware package of the series has the new folder layout.
bool Is_NewBSP_DirStruct(ZV32MCUSERIALS series);
bool Is_NewBSP_DirStruct(const QString &series);

bool DeviceNameHaveCrossingLine(const QString &series);

/// Any case; `IDE_ZV32_IDE` for an unknown text.
IDE_TYPE IDETypeString2Enum(const QString &text);

/// Folder name of a toolchain; `IDE_IAR_V6_10` has none.
QString getIDEPathName(IDE_TYPE type);

/// Sizes from the 32-bit device code: flash and RAM in KB, the flash sector in bytes; 0 for an unknown selector.
int GetFlashSizeFromMCUPID(quint32 pid);
int GetRAMSizeFromMCUPID(quint32 pid);
int GetFlashSectorSizeFromMCUPID(quint32 pid);

/// The letter of a flash size (KB) in a device name; the character with code 0 for a size that has none.
QChar GetFlashSizeFlagFromSize(int sizeKB);

} // namespace ChipLoom
