#include "Design/DesignChange.h"

namespace ChipLoom {

std::optional<DesignChange> DesignChange::fromSetting(const QString &text)
{
    const int slash = text.indexOf(QLatin1Char('/'));
    const int equals = text.indexOf(QLatin1Char('='), slash + 1);
    if (slash <= 0 || equals <= slash + 1)
        return std::nullopt;
    return DesignChange{text.left(slash), text.mid(slash + 1, equals - slash - 1), text.mid(equals + 1)};
}

QString DesignChange::toSetting() const
{
    return section + QLatin1Char('/') + address + QLatin1Char('=') + value;
}

DesignChange DesignChange::placeSignal(const QString &pin, const QString &signal)
{
    return {QStringLiteral("pin"), pin, signal};
}

DesignChange DesignChange::removeSignal(const QString &pin, const QString &signal)
{
    return {QStringLiteral("pin"), pin, QLatin1Char('-') + signal};
}

DesignChange DesignChange::resetPin(const QString &pin)
{
    return {QStringLiteral("pin"), pin, QString()};
}

DesignChange DesignChange::labelPin(const QString &pin, const QString &label)
{
    return {QStringLiteral("label"), pin, label};
}

} // namespace ChipLoom
