#pragma once

#include "Design/DesignReason.h"
#include "Model/ShareParameter.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace ChipLoom {

// What a value of a parameter may be. Types are the words of the database, in any case: "integer", "signedinteger",
// "hexadecimal", "double", "string", "string edit", "string text", "mac address", "ip address", "integer text", "list".

enum class ParameterKind {
    Unsigned,
    Signed,
    Hexadecimal,
    Double,
    List,
    Text,
    FreeText,
    MacAddress,
    IpAddress,
    Unchecked
};

ParameterKind parameterKind(const QString &type);

/// Whether the number may be entered and shown in base 10 and base 16.
bool hasNumberBase(ParameterKind kind);

/// The base in which a value of the parameter is written; none for kinds without one.
CURRENTVALUETYPE baseOf(const RefParameter &parameter, const QString &value);

/// Whether a parameter is the switch of an interrupt event: it stands on the interrupts' page of its peripheral, and in
/// a place of its own in the design file.
bool isInterruptParameter(const RefParameter &parameter);

/// Decimal, or hexadecimal behind "0x"; nothing for any other text.
std::optional<quint64> unsignedOf(const QString &text);
std::optional<qint64> signedOf(const QString &text);

/// Why a value is not acceptable.
enum class ValueProblem { None, NotANumber, BelowMinimum, AboveMaximum, NotInList, NotAnAddress };

/// Checks a value against type and bounds. A value holding "=" and values of free texts are accepted; a bound that is
/// no number does not count. Characters that no design file could hold are refused in every kind. For a list the value
/// must be one of `PossibleValueList`, offered or not.
ValueProblem checkValue(const RefParameter &parameter, const QString &value);

/// `checkValue` as an answer: accepted, or the reason with its limit.
DesignAnswer checkedValue(const RefParameter &parameter, const QString &value);

/// `checkValue` of the present value.
bool RefParameter_ValueCheck(const RefParameter &parameter);

/// The value that is nearest to the present one within the bounds, written in the base of the parameter. The present
/// value where it is in range or is no number.
QString nearestInRange(const RefParameter &parameter);

/// Text of a stored value in the base that the user chose, and back. Only the kinds with a number base change.
QString Value_to_DisplayText(const RefParameter &parameter, const QString &value, CURRENTVALUETYPE base);
/// Nothing for a text that is no value of the kind.
std::optional<QString> DisplayText_to_Value(const RefParameter &parameter, const QString &text);

} // namespace ChipLoom
