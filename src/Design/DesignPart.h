#pragma once

#include "Design/DesignChange.h"
#include "Design/DesignReason.h"
#include "Model/ShareParameter.h"

#include <QObject>

#include <any>
#include <functional>
#include <memory>

class QXmlStreamWriter;

namespace ChipLoom {

class Design;

/// Something in a design that needs the user's eye: where it is, as "USART1/BaudRate" or "PA9", and why.
struct DesignProblem
{
    QString place;
    DesignAnswer reason;
    bool isWarning = false; ///< worth a look, but nothing is wrong: it stops no generation and is no failure of a check
};

/// What the open design owns beside its pins: a peripheral, a middleware, a settings list. Parts that live in rooms
/// above this one are made by factories that the program registers at start.
class DesignPart : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// As "USART1"; unique within the design.
    virtual QString instanceName() const = 0;

    /// Whether a change is this part's business.
    virtual bool handles(const DesignChange &change) const = 0;
    virtual DesignAnswer apply(const DesignChange &change) = 0;

    /// The signals that the part's modes want on pins now, a request under way included. Instances that share pins with
    /// others must say so.
    virtual QStringList signalsInUse() const { return {}; }

    /// Tokens that another instance raised or withdrew.
    virtual void receiveTokens(const QStringList &, bool) {}
    /// A copy of another instance's parameters.
    virtual void SetOtherIPParamList(const QList<RefParameter> &, const QString &) {}
    /// Lets the part look at tokens and clocks again.
    virtual void UpdateIPSetting() {}
    /// The clock tree gives other frequencies than before.
    virtual void ReciveClockChangedSignal() {}
    /// Once for a new design, when every part is there and connected: the choices that a chip has from reset.
    virtual void HandleSpecialItem() {}

    /// Back to the state of a new design.
    virtual void reset() = 0;
    virtual void updateLanguage() {}

    /// The whole state as a value, cheap to copy; `restore` takes only what `save` of the same part gave, and tells
    /// nobody.
    virtual std::any save() const = 0;
    virtual void restore(const std::any &state) = 0;
    /// Whether the part derives its state from the other parts and so is put back behind them and the pins.
    virtual bool isRestoredLast() const { return false; }

    /// Writes what the part keeps in the design file, one element or several; a part without state writes nothing.
    virtual void writeSection(QXmlStreamWriter &) const {}
    /// Takes the part's section from the root element of a design file, through the rules that hold for a user's
    /// changes. A missing section leaves the part as it is; what cannot be taken keeps its default and is named.
    virtual void readSection(const XMLElementInfo &, QList<DesignProblem> &) {}

    /// The elements that a peripheral or a middleware knows in its section: what else stands there, a later version
    /// wrote, and it survives a round trip through the file.
    virtual QStringList sectionElements() const
    {
        return {QStringLiteral("Mode"), QStringLiteral("Parameters"), QStringLiteral("Interrupts")};
    }

    /// Adds what is wrong with the part now: parameter errors, values that have no effect.
    virtual void collectProblems(QList<DesignProblem> &) const {}

signals:
    void EnableSemaphore_To_OtherIP(const QString &sender, const QStringList &tokens, bool enable);
    void SendParamList_To_OtherIP(const QList<ChipLoom::RefParameter> &list, const QString &sender);
    void SendIPStatusFlag(const QString &name, ChipLoom::IPSTATUS status, bool modeChange);
};

/// Makes the part for an entry of the device's lists, or nothing if the entry is not its business.
using DesignPartFactory = std::function<std::unique_ptr<DesignPart>(Design &design, const PeripheralsBaseInfo &entry)>;

} // namespace ChipLoom
