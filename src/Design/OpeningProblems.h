#pragma once

#include "Design/DesignPart.h"

namespace ChipLoom {

/// What a reader of `problems`, met while `design` was read from the file `root`, has to look at: each once, and
/// without what merely follows from others. With a refused mode all goes that hung on it, its parameters, its
/// interrupts and the settings of its pins, among which the few causes would be lost. Where a label goes, its pin stays
/// named.
QList<DesignProblem> causesAmong(const QList<DesignProblem> &problems, const Design &design,
                                 const XMLElementInfo &root);

/// What a section holds again with another value, as after a merge of two designs: "USART1/BaudRate". A flat one holds
/// its entries by their tags, the others in lists of their own by their names.
QStringList repeatedEntries(const XMLElementInfo &section, bool isFlat);

} // namespace ChipLoom
