#include "Design/Calculators/CanParameters.h"

#include "Design/Calculators/CanBitTiming.h"
#include "Design/Calculators/DerivedParameters.h"

#include <algorithm>
#include <cmath>

namespace ChipLoom {

namespace {

QString resultName(int index)
{
    return QStringLiteral("CAN_RESULT_%1").arg(index);
}

// The widths of resynchronisation that a bit timing bears: a wider one would be taken back by the next calculation.
QList<PossibleValue> canWidthList(unsigned widest)
{
    QList<PossibleValue> list;
    for (unsigned width = 1; width <= widest; ++width) {
        PossibleValue value;
        value.Value = QStringLiteral("CAN_RSAW_%1TQ").arg(width);
        value.Comment = value.Comment_EN = value.Comment_CH = QStringLiteral("%1 tq").arg(width);
        list.append(value);
    }
    return list;
}

QList<PossibleValue> canResultList(const QList<CANValue> &results)
{
    QList<PossibleValue> list;
    for (const CANValue &result : results) {
        PossibleValue value;
        value.Value = resultName(list.size());
        value.Comment = QStringLiteral("%1 kbit/s, %2 %: \u00F7%3, BS1 %4, BS2 %5")
                            .arg(shortNumber(result.dBitRate, 3), shortNumber(result.dSamplePoint, 1))
                            .arg(result.nDiv)
                            .arg(result.uiBS1)
                            .arg(result.uiBS2);
        value.Comment_EN = value.Comment_CH = value.Comment;
        list.append(value);
    }
    return list;
}

// Names of what one phase reads and writes. An empty name is not there.
struct CanPhase
{
    CAN_TYPE type;
    CALC_Type phase;
    const char *rate, *select, *division, *bs1, *bs2, *sjw, *realRate;
};

// Runs a phase; the selected timing, or nothing.
std::optional<CANValue> CAN_Param_Calculate(ParameterSheet &sheet, const CanPhase &phase, int fixedDivider = 0)
{
    const QString select = QLatin1String(phase.select);
    const std::optional<double> rate = sheet.frequency(QLatin1String(phase.rate));
    const std::optional<double> samplePoint = sheet.number(QStringLiteral("Sample_Point"));
    if (!rate || !sheet.has(select))
        return std::nullopt;
    const DerivedSeries &row = derivedSeries(sheet.series());
    const CanRequest request{.clockKHz = std::round(sheet.clockHz() / 1e3),
                             .bitRate = *rate / 1e3,
                             .samplePoint = samplePoint.value_or(canSamplePointFor(*rate / 1e3)),
                             .type = phase.type,
                             .phase = phase.phase,
                             .tolerance = row.canTolerance,
                             .sjwFollowsBS2 = row.canSjwFollowsBS2};
    QList<CANValue> results = CAN_CalcResults(request);
    if (fixedDivider > 0) {
        results.erase(std::remove_if(results.begin(), results.end(),
                                     [&](const CANValue &value) { return value.nDiv != fixedDivider; }),
                      results.end());
    }
    sheet.offer(select, canResultList(results));
    if (results.isEmpty()) {
        sheet.set(select, {});
        const std::optional<CANValue> nearest = nearestCanTiming(request);
        sheet.warn(select, DesignReason::NoBitTiming,
                   {shortNumber(request.bitRate, 3),
                    nearest ? QStringLiteral("%1 kbit/s, %2 %")
                                  .arg(shortNumber(nearest->dBitRate, 3), shortNumber(nearest->dSamplePoint, 1))
                            : QStringLiteral("-")});
        return std::nullopt;
    }
    int chosen = sheet.tokenNumber(select).value_or(0);
    if (chosen >= results.size())
        chosen = 0;
    sheet.set(select, resultName(chosen));
    const CANValue &result = results.at(chosen);
    sheet.setNumber(QLatin1String(phase.division), result.nDiv, 0);
    sheet.setFrequency(QLatin1String(phase.realRate), result.dBitRate * 1e3);
    return result;
}

void setSegments(ParameterSheet &sheet, const CanPhase &phase, const CANValue &value)
{
    sheet.setNumber(QLatin1String(phase.bs1), value.uiBS1, 0);
    sheet.setNumber(QLatin1String(phase.bs2), value.uiBS2, 0);
    sheet.setMaximum(QLatin1String(phase.sjw), QString::number(value.uiSJWMax));
    if (sheet.number(QLatin1String(phase.sjw)).value_or(0) > value.uiSJWMax)
        sheet.setNumber(QLatin1String(phase.sjw), value.uiSJW, 0);
}

} // namespace

void CAN_Param_Operate(ParameterSheet &sheet)
{
    static constexpr CanPhase Classic{CAN_TYPE_1,          CALC_Type_CAN, "BaudRate", "BaudRate_Result_Select",
                                      "Baudrate_Division", "BS1_Size",    "BS2_Size", "RSAW_Size",
                                      "RealBaudRate"};
    const std::optional<CANValue> result = CAN_Param_Calculate(sheet, Classic);
    if (!result)
        return;
    sheet.set(QStringLiteral("BS1_Size"), QStringLiteral("CAN_BTS1_%1TQ").arg(result->uiBS1));
    sheet.set(QStringLiteral("BS2_Size"), QStringLiteral("CAN_BTS2_%1TQ").arg(result->uiBS2));
    sheet.offer(QStringLiteral("RSAW_Size"), canWidthList(result->uiSJWMax));
    QString token = sheet.text(QStringLiteral("RSAW_Size")).section(QLatin1Char('_'), -1);
    token.chop(2);
    unsigned width = token.toUInt();
    if (width < 1 || width > result->uiSJWMax) {
        width = result->uiSJW;
        sheet.set(QStringLiteral("RSAW_Size"), QStringLiteral("CAN_RSAW_%1TQ").arg(width));
    }
    // The bus allows no resynchronisation beyond the second segment, be it offered or not.
    if (width > result->uiBS2)
        sheet.warn(QStringLiteral("RSAW_Size"), DesignReason::AboveMaximum,
                   {QString::number(width), QString::number(result->uiBS2)});
}

// A flexible data rate needs one divider for both phases.
void CAN_Nominal_Param_Operate(ParameterSheet &sheet)
{
    static constexpr CanPhase Data{
        CAN_TYPE_NominalData, CALC_Type_Data,  "DataBaudRate",  "Data_BaudRate_Result_Select",
        "Data_Division",      "Data_BS1_Size", "Data_BS2_Size", "Data_RSAW_Size",
        "Data_RealBaudRate"};
    const bool withData = sheet.has(QLatin1String(Data.rate));
    const CanPhase nominal{withData ? CAN_TYPE_NominalData : CAN_TYPE_Nominal,
                           CALC_Type_Nominal,
                           "NominalBaudRate",
                           "Nominal_BaudRate_Result_Select",
                           "Nominal_Division",
                           "Nominal_BS1_Size",
                           "Nominal_BS2_Size",
                           "Nominal_RSAW_Size",
                           "Nominal_RealBaudRate"};
    int divider = 0;
    if (withData) {
        const std::optional<CANValue> data = CAN_Param_Calculate(sheet, Data);
        if (data) {
            setSegments(sheet, Data, *data);
            divider = data->nDiv;
        }
    }
    if (const std::optional<CANValue> result = CAN_Param_Calculate(sheet, nominal, divider))
        setSegments(sheet, nominal, *result);
}

QList<XMLAttributeInfo> modifyCanParameters(const QString &name, const QString &value)
{
    QList<XMLAttributeInfo> changes;
    const auto change = [&changes](const QString &parameter, const QString &newValue) {
        XMLAttributeInfo entry;
        entry.attributeName = parameter;
        entry.attributeValue = newValue;
        changes.append(entry);
    };
    if (name == QLatin1String("BaudRate"))
        change(QStringLiteral("Sample_Point"), shortNumber(canSamplePointFor(value.toDouble()), 1));
    // The best of what now fits.
    if (name == QLatin1String("BaudRate") || name == QLatin1String("Sample_Point"))
        change(QStringLiteral("BaudRate_Result_Select"), resultName(0));
    if (name == QLatin1String("NominalBaudRate") || name == QLatin1String("Sample_Point"))
        change(QStringLiteral("Nominal_BaudRate_Result_Select"), resultName(0));
    if (name == QLatin1String("DataBaudRate") || name == QLatin1String("Sample_Point"))
        change(QStringLiteral("Data_BaudRate_Result_Select"), resultName(0));
    return changes;
}

} // namespace ChipLoom
