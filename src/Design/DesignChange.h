#pragma once

#include <QString>

#include <optional>

namespace ChipLoom {

/// One change that a user can make, as the window, the command line and the tests hand it to `Design::apply`.
///
/// `section` says what is changed ("pin", "label"; design parts add theirs), `address` which one of these, and `value`
/// what it becomes. Written as text it is `section/address=value`.
struct DesignChange
{
    QString section;
    QString address;
    QString value;

    /// Reads `section/address=value`, cut at the first "/" and at the first "=" behind it; nothing if either is
    /// missing or the section or the address is empty.
    static std::optional<DesignChange> fromSetting(const QString &text);
    QString toSetting() const;

    /// Places a function by hand, as a tick in the pin's menu does.
    static DesignChange placeSignal(const QString &pin, const QString &signal);
    /// Takes one function off a pin, as unticking it does. Written with a minus before the signal.
    static DesignChange removeSignal(const QString &pin, const QString &signal);
    /// Clears a pin: "Reset_State".
    static DesignChange resetPin(const QString &pin);
    /// Labels what stands on a pin; an empty text takes the label off.
    static DesignChange labelPin(const QString &pin, const QString &label);

    bool operator==(const DesignChange &) const = default;
};

} // namespace ChipLoom
