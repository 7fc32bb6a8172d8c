#pragma once

#include "Model/Enumerations.h"

#include <QString>
#include <QStringList>

namespace ChipLoom {

/// Why a design cannot become a project of a toolchain. The text is derived where it is shown.
enum class ToolchainReason { None, NotForSeries, WithFreertosOrDsp, WithLwipAndRtThread, WithDsp, NotInFolder };

/// The toolchains in the order of their list.
QList<IDE_TYPE> offeredToolchains();

/// Whether a toolchain can make a project of a series with these middlewares ("FREERTOS").
ToolchainReason toolchainReason(IDE_TYPE type, const QString &series, const QStringList &middlewares);

/// Whether a toolchain can build in a folder of that absolute path: `NotInFolder` if it would misread the name.
ToolchainReason folderReason(IDE_TYPE type, const QString &folder);

/// What a person is told of it, in the user's language; empty for `None`.
QString toolchainReasonText(ToolchainReason reason);

} // namespace ChipLoom
