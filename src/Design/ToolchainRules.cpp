#include "Design/ToolchainRules.h"

#include "Model/SeriesHelpers.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

struct ToolchainRule
{
    IDE_TYPE type;
    ToolchainReason reason;
    const char *because; ///< for whoever wonders about the rule
};

constexpr std::array<ToolchainRule, 6> Rules{{
    {IDE_MDK_V4, ToolchainReason::NotForSeries, "its device list was closed before the later series"},
    {IDE_IAR_V7_4, ToolchainReason::NotForSeries, "its device list was closed before the later series"},
    {IDE_MDK_V4, ToolchainReason::WithFreertosOrDsp, "its compiler lacks the intrinsics that kernel and DSP use"},
    {IDE_MDK_V4, ToolchainReason::WithLwipAndRtThread, "its headers clash with the types of both together"},
    {IDE_IAR_V7_4, ToolchainReason::WithLwipAndRtThread, "its headers clash with the types of both together"},
    {IDE_IAR_V7_4, ToolchainReason::WithDsp, "its core header lacks the SIMD functions of the DSP library"},
}};

bool applies(ToolchainReason reason, const QString &series, const QStringList &middlewares)
{
    const auto uses = [&](const char *name) { return middlewares.contains(QLatin1String(name)); };
    switch (reason) {
    case ToolchainReason::NotForSeries: {
        const SeriesTraits *traits = seriesTraits(series);
        return traits && !traits->oldToolchains;
    }
    case ToolchainReason::WithFreertosOrDsp:
        return uses("FREERTOS") || uses("CMSIS_DSP");
    case ToolchainReason::WithLwipAndRtThread:
        return uses("LWIP") && uses("RT-Thread_Nano");
    case ToolchainReason::WithDsp:
        return uses("CMSIS_DSP");
    case ToolchainReason::NotInFolder:
    case ToolchainReason::None:
        break;
    }
    return false;
}

} // namespace

QList<IDE_TYPE> offeredToolchains()
{
    return {IDE_ZV32_IDE, IDE_ECLIPSE_GCC, IDE_IAR_V7_4, IDE_IAR_V8_2, IDE_IAR_V9_3,
            IDE_MDK_V4,   IDE_MDK_V5,      IDE_MAKEFILE, IDE_CMAKE};
}

ToolchainReason toolchainReason(IDE_TYPE type, const QString &series, const QStringList &middlewares)
{
    const auto broken = std::find_if(Rules.begin(), Rules.end(), [&](const ToolchainRule &rule) {
        return rule.type == type && applies(rule.reason, series, middlewares);
    });
    return broken == Rules.end() ? ToolchainReason::None : broken->reason;
}

ToolchainReason folderReason(IDE_TYPE type, const QString &folder)
{
    // Seen with CMake 3.25; Makefiles of ours name nothing above their own folder. A colon stands behind the letter of
    // a drive only.
    static const QRegularExpression misread(QStringLiteral("[;\"\\\\#<>|?]|[$][A-Z]*[{]|..:"));
    return type == IDE_CMAKE && folder.contains(misread) ? ToolchainReason::NotInFolder : ToolchainReason::None;
}

QString toolchainReasonText(ToolchainReason reason)
{
    switch (reason) {
    case ToolchainReason::NotForSeries:
        return QCoreApplication::translate("ProjectSetting", "Current MCU does not support this option");
    case ToolchainReason::WithFreertosOrDsp:
        return QCoreApplication::translate("ProjectSetting",
                                           "When FREERTOS or CMSIS_DSP is activated, this option is invalid.");
    case ToolchainReason::WithLwipAndRtThread:
        return QCoreApplication::translate("ProjectSetting",
                                           "When both LWIP and RT-Thread_Nano are activated, this option is invalid.");
    case ToolchainReason::WithDsp:
        return QCoreApplication::translate("ProjectSetting", "When CMSIS_DSP is activated, this option is invalid.");
    case ToolchainReason::NotInFolder:
        return QCoreApplication::translate(
            "ProjectSetting", "CMake cannot build in a folder whose path holds one of ; \" \\ # < > | ? : and "
                              "${. Choose another name or location, or the Makefile.");
    case ToolchainReason::None:
        break;
    }
    return {};
}

} // namespace ChipLoom
