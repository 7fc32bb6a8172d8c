#include "Design/ParameterChecks.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace ChipLoom {

namespace {

bool isHexadecimal(const QString &text)
{
    return text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
}

// Any of the numeric kinds as a double: exact for every register-sized number, so that bounds compare as told.
std::optional<double> numberOf(ParameterKind kind, const QString &text)
{
    switch (kind) {
    case ParameterKind::Unsigned:
    case ParameterKind::Hexadecimal:
    case ParameterKind::Text:
        if (const std::optional<quint64> number = unsignedOf(text))
            return double(*number);
        return std::nullopt;
    case ParameterKind::Signed:
        if (const std::optional<qint64> number = signedOf(text))
            return double(*number);
        return std::nullopt;
    case ParameterKind::Double: {
        bool ok = false;
        const double number = text.trimmed().toDouble(&ok);
        return ok && std::isfinite(number) ? std::optional(number) : std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

bool isAnyNumber(const QString &text)
{
    return unsignedOf(text) || signedOf(text) || numberOf(ParameterKind::Double, text);
}

bool isIpAddress(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 4)
        return false;
    for (const QString &part : parts) {
        bool ok = false;
        if (part.isEmpty() || part.toUInt(&ok) > 255 || !ok)
            return false;
    }
    return true;
}

bool isPlainText(const QString &text)
{
    return text.isValidUtf16() && std::none_of(text.begin(), text.end(), [](QChar character) {
               return character < QLatin1Char(' ') || character.unicode() >= 0xFFFE;
           });
}

bool isListed(const QList<PossibleValue> &values, const QString &value)
{
    for (const PossibleValue &entry : values) {
        if (entry.Value == value)
            return true;
    }
    return false;
}

} // namespace

ParameterKind parameterKind(const QString &type)
{
    static const QHash<QString, ParameterKind> Kinds{
        {QStringLiteral("integer"), ParameterKind::Unsigned},
        {QStringLiteral("signedinteger"), ParameterKind::Signed},
        {QStringLiteral("hexadecimal"), ParameterKind::Hexadecimal},
        {QStringLiteral("double"), ParameterKind::Double},
        {QStringLiteral("list"), ParameterKind::List},
        {QStringLiteral("string"), ParameterKind::Text},
        {QStringLiteral("string edit"), ParameterKind::FreeText},
        {QStringLiteral("mac address"), ParameterKind::MacAddress},
        {QStringLiteral("ip address"), ParameterKind::IpAddress},
    };
    return Kinds.value(type.trimmed().toLower(), ParameterKind::Unchecked);
}

bool hasNumberBase(ParameterKind kind)
{
    return kind == ParameterKind::Unsigned || kind == ParameterKind::Signed || kind == ParameterKind::Hexadecimal;
}

bool isInterruptParameter(const RefParameter &parameter)
{
    return parameter.Visible && parameter.Name.startsWith(QLatin1String("Interrupt")) &&
           !parameter.PossibleValueList.isEmpty();
}

CURRENTVALUETYPE baseOf(const RefParameter &parameter, const QString &value)
{
    if (!hasNumberBase(parameterKind(parameter.Type)))
        return CURRENTVALUETYPE_NONE;
    return isHexadecimal(value) ? CURRENTVALUETYPE_HEX : CURRENTVALUETYPE_DEC;
}

std::optional<quint64> unsignedOf(const QString &text)
{
    const QString trimmed = text.trimmed();
    bool ok = false;
    const quint64 number =
        isHexadecimal(trimmed) ? trimmed.midRef(2).toULongLong(&ok, 16) : trimmed.toULongLong(&ok, 10);
    return ok ? std::optional(number) : std::nullopt;
}

std::optional<qint64> signedOf(const QString &text)
{
    const QString trimmed = text.trimmed();
    bool ok = false;
    const qint64 number = isHexadecimal(trimmed) ? trimmed.midRef(2).toLongLong(&ok, 16) : trimmed.toLongLong(&ok, 10);
    return ok ? std::optional(number) : std::nullopt;
}

ValueProblem checkValue(const RefParameter &parameter, const QString &value)
{
    const ParameterKind kind = parameterKind(parameter.Type);
    if (!isPlainText(value))
        return ValueProblem::NotANumber;
    if (parameter.Type.isEmpty() || value.contains(QLatin1Char('=')) || kind == ParameterKind::FreeText)
        return ValueProblem::None;
    if (kind == ParameterKind::MacAddress) {
        static const QRegularExpression Mac(QStringLiteral("^([A-Fa-f0-9]{2}:){5}[A-Fa-f0-9]{2}$"));
        return Mac.match(value).hasMatch() ? ValueProblem::None : ValueProblem::NotAnAddress;
    }
    if (kind == ParameterKind::IpAddress)
        return isIpAddress(value) ? ValueProblem::None : ValueProblem::NotAnAddress;
    if (kind == ParameterKind::List)
        return isListed(parameter.PossibleValueList, value) ? ValueProblem::None : ValueProblem::NotInList;
    if (kind == ParameterKind::Unchecked)
        return ValueProblem::None;
    if (parameter.MinValue.isEmpty() && parameter.MaxValue.isEmpty())
        return isAnyNumber(value) ? ValueProblem::None : ValueProblem::NotANumber;

    const std::optional<double> number = numberOf(kind, value);
    if (!number)
        return ValueProblem::NotANumber;
    const std::optional<double> least = numberOf(kind, parameter.MinValue);
    if (least && *number < *least)
        return ValueProblem::BelowMinimum;
    const std::optional<double> most = numberOf(kind, parameter.MaxValue);
    if (most && *number > *most)
        return ValueProblem::AboveMaximum;
    return ValueProblem::None;
}

DesignAnswer checkedValue(const RefParameter &parameter, const QString &value)
{
    const QString &name = parameter.Name;
    switch (checkValue(parameter, value)) {
    case ValueProblem::None:
        break;
    case ValueProblem::NotANumber:
        return {DesignReason::NotANumber, {name, value}};
    case ValueProblem::NotAnAddress:
        return {DesignReason::NotAnAddress, {name, value}};
    case ValueProblem::BelowMinimum:
        return {DesignReason::BelowMinimum, {name, value, parameter.MinValue}};
    case ValueProblem::AboveMaximum:
        return {DesignReason::AboveMaximum, {name, value, parameter.MaxValue}};
    case ValueProblem::NotInList:
        return {DesignReason::ValueNotInList, {name, value}};
    }
    return {};
}

bool RefParameter_ValueCheck(const RefParameter &parameter)
{
    return checkValue(parameter, parameter.CurrentValue) == ValueProblem::None;
}

QString nearestInRange(const RefParameter &parameter)
{
    const auto inBase = [&](const QString &bound) {
        return Value_to_DisplayText(parameter, bound, parameter.CurrentValueType);
    };
    switch (checkValue(parameter, parameter.CurrentValue)) {
    case ValueProblem::BelowMinimum:
        return inBase(parameter.MinValue);
    case ValueProblem::AboveMaximum:
        return inBase(parameter.MaxValue);
    default:
        return parameter.CurrentValue;
    }
}

QString Value_to_DisplayText(const RefParameter &parameter, const QString &value, CURRENTVALUETYPE base)
{
    const ParameterKind kind = parameterKind(parameter.Type);
    if (!hasNumberBase(kind))
        return value;
    const std::optional<qint64> number = signedOf(value);
    if (!number)
        return value;
    if (base == CURRENTVALUETYPE_HEX && *number >= 0)
        return QLatin1String("0x") + QString::number(*number, 16).toUpper();
    return QString::number(*number);
}

std::optional<QString> DisplayText_to_Value(const RefParameter &parameter, const QString &text)
{
    const QString trimmed = text.trimmed();
    switch (parameterKind(parameter.Type)) {
    case ParameterKind::Unsigned:
    case ParameterKind::Hexadecimal:
        return unsignedOf(trimmed) ? std::optional(trimmed) : std::nullopt;
    case ParameterKind::Signed:
        return signedOf(trimmed) ? std::optional(trimmed) : std::nullopt;
    case ParameterKind::Double:
        return numberOf(ParameterKind::Double, trimmed) ? std::optional(trimmed) : std::nullopt;
    default:
        return text;
    }
}

} // namespace ChipLoom
