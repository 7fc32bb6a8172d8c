#pragma once

#include "Model/ShareParameter.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace ChipLoom {

class Design;
class ZV32PLLConfig;

/// A peripheral or middleware of the design as the generators see it.
struct GenerationPeripheral
{
    QString instanceName; ///< as "USART1"
    QString name;         ///< family of its description, as "USART"
    bool valid = false;   ///< in use
    bool error = false;   ///< a parameter of it is wrong or missing
    QList<RefParameter> parameters = {};

    /// The current value of a parameter, or empty.
    QString value(const QString &parameter) const;
};

/// What a person chose for the generated project.
struct GenerationOptions
{
    bool keepUserCode = true;
    bool notUsedPinAnalog = false;
    bool addNecessaryFileFlag = true;
    bool splitIP = false; ///< one pair of files for each group of peripherals
    IDE_TYPE ideType = IDE_ZV32_IDE;
    ARM_AC_Set armCompiler = ARM_AC_5;
    QList<MainFuncNameForRank> rank; ///< the calls of `main` in the order of the last generation, or of the user
};

/// Everything that a generation reads, copied from the design, so that it neither changes the design nor sees it
/// change. The defines of the pins never do; the clock is read in place.
struct GenerationInput
{
    ZV32MCUSERIALS series = ZV32ErrorMCU2;
    std::vector<GenerationPeripheral> peripherals; ///< in the order of the device's list
    std::vector<GenerationPeripheral> middlewares;
    std::vector<SignalsGPIOSetting> signalSettings; ///< every signal on a pin, in the order of the pin table
    QList<GPIO_Pin_Define_Info *> pinDefines;       ///< of the device; only read
    std::shared_ptr<const void> pinDefinesOwner;
    QStringList unusedPins;                   ///< port pins without a signal, where these become analog pins
    std::vector<MCUNVICSetting> nvicSettings; ///< of the enabled vectors
    QString priorityGroup;                    ///< "NVIC_PRIORITY_GROUP_4"
    std::vector<DMARequest> dmaRequests;
    QList<IPSignalGroupInfo> signalGroups;
    const ZV32PLLConfig *clock = nullptr; ///< not owned; only read
    GenerationOptions options;

    /// Whether a peripheral, or else a middleware, of that name is in use.
    bool IP_Is_Valid(const QString &instanceName) const;
};

/// What the open design gives to a generation.
GenerationInput generationInput(const Design &design, const GenerationOptions &options = {});

/// Tells apart inputs that may give different code; see `Fingerprint`. Of the records it takes what generators read:
/// who lets one read more adds it here. The order of calls, which a generation brings up to date, is told apart on its
/// own.
quint64 fingerprintOf(const GenerationInput &input);
quint64 fingerprintOf(const QList<MainFuncNameForRank> &rank);

/// The records as the generators take them. They point into `records`.
template <typename Record> QList<Record *> pointersTo(std::vector<Record> &records)
{
    QList<Record *> pointers;
    pointers.reserve(static_cast<int>(records.size()));
    for (Record &record : records)
        pointers.append(&record);
    return pointers;
}

} // namespace ChipLoom
