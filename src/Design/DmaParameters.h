#pragma once

#include "Design/Conditions.h"
#include "Design/DesignReason.h"
#include "Model/PeripheralTree.h"

#include <QHash>

#include <memory>

namespace ChipLoom {

/// What the parameters of one request look at beside themselves.
struct DmaParameterContext
{
    QString handle;     ///< of the channel: takes the place of "$channelNameValue"
    QString controller; ///< as "DMA1": "$DMATYPE", in capitals
    QString channelNo;  ///< as "CHANNEL2": "$ChannelNo"
    QString request;    ///< its name: "$RequestName"
    QStringList tokens; ///< in force for the peripheral of the request
    /// By "<controller>_MUX_<channel>_EVENT": whether that channel's multiplexer gives events.
    QHash<QString, QString> channelEvents;
};

/// The parameters of requests, by the declarations of the DMA file. The set of a request is derived anew whenever
/// something changes: from the declarations whose conditions are met, the request's own restrictions and defaults, and
/// the values that the user has entered.
class DmaParameters
{
public:
    /// By name: what the user entered. Survives a parameter that leaves and comes back.
    using Entered = QHash<QString, QString>;

    DmaParameters(std::shared_ptr<const PeripheralTree> tree, bool isEdma) : m_tree(std::move(tree)), m_edma(isEdma) {}

    /// Builds `request.RefParameterfoList`.
    void InitOneDMARequestParam(DMARequest &request, const Entered &entered, const DmaParameterContext &context) const;

    /// Why a value cannot be entered; the parameters of the request must be built.
    DesignAnswer canTake(const DMARequest &request, const QString &name, const QString &value,
                         const DmaParameterContext &context) const;
    /// False if the value of a parameter is marked as an error, is not offered, or is out of its range.
    bool isGood(const DMARequest &request, const RefParameter &parameter, const DmaParameterContext &context) const;
    /// The values of a list parameter that are offered now.
    QList<PossibleValue> offeredValues(const DMARequest &request, const RefParameter &parameter,
                                       const DmaParameterContext &context) const;
    /// Tokens of the present values, with the channel's name filled in.
    QStringList interruptTokens(const DMARequest &request, const DmaParameterContext &context) const;

private:
    ParameterValues UpdateDMAMuxConditionInNameAndValueList(const DMARequest &request,
                                                            const DmaParameterContext &context) const;
    void UpdateFIFOThresholdParamInfo(const DMARequest &request, ParameterValues &values,
                                      const QStringList &tokens) const;
    bool isOffered(const RefParameter &parameter, const PossibleValue &value, const ParameterValues &values,
                   const DmaParameterContext &context) const;
    QString takenValue(const RefParameter &parameter, const Entered &entered, const ParameterValues &values,
                       const DmaParameterContext &context) const;

    /// What the file declares under a name, read once for each peripheral and language.
    const QList<RefParameter> &declarations(const QString &instance, const QString &name) const;

    std::shared_ptr<const PeripheralTree> m_tree;
    bool m_edma;
    mutable QHash<QString, QHash<QString, QList<RefParameter>>> m_declarations; ///< by instance, then by name
    mutable LANGUAGE m_language = UI_EN;                                        ///< of their texts
};

/// Whether the parts of the FIFO that a threshold stands for hold whole bursts: `width` in bytes, `burst` in transfers,
/// `part` in bytes.
bool fitsFifo(int width, int burst, int part);

/// A condition of a request, with the channel filled in; what stands behind "<!" is a remark.
bool isDmaConditionMet(const QString &expression, const ParameterValues &values, const DmaParameterContext &context);

} // namespace ChipLoom
