#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace ChipLoom {

class Design;

/// One thing that a design says, to be compared with what another design says of the same.
struct DesignFact
{
    enum class Kind { Device, Pin, Label, Mode, Parameter, Interrupt, PinSetting, Dma, Clock, Project, CallOrder };

    Kind kind;
    QString place; ///< "PA9", "USART1/BaudRate"
    QString value;
};

/// A difference; an empty value says that the design has nothing there.
struct DesignDifference
{
    DesignFact::Kind kind;
    QString place;
    QString first, second;
};

/// What a design says, in the order of its file.
QList<DesignFact> designFacts(const Design &design);

/// What two designs say differently, in the order of the first, then what only the second says.
QList<DesignDifference> compareDesigns(const Design &first, const Design &second);

} // namespace ChipLoom
