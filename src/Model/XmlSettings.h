#pragma once

#include "Model/ShareParameter.h"

#include <QList>
#include <QStringList>

namespace ChipLoom {

// What the peripheral files "GPIO" and "NVIC" hold beside modes and parameters.

/// One vector of the file "NVIC", as a new design has it.
struct NVICVector
{
    MCUNVICSetting setting;
    QStringList exintLines; ///< numbers of the EXINT lines that raise it; empty for other vectors
    bool isFree = false;    ///< no peripheral has to be on for it
};

/// All vectors in file order; an element without an enumerator is left out.
QList<NVICVector> GetNVICVectors(const XMLElementInfo &tree);

/// The driver's names of the port pins, in file order.
QList<GPIO_Pin_Define_Info> GetGPIOPinDefines(const XMLElementInfo &tree);

} // namespace ChipLoom
