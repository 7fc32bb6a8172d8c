#pragma once

#include "Model/ShareParameter.h"

#include <QHash>
#include <QVector>

namespace ChipLoom {

/// A peripheral file with an index beside its tree: the look-ups that run on every change find their elements without
/// walking the file. Each gives exactly what the operation of the same name in `XMLOperation` gives for `root()`, in
/// file order. Immutable, so that the peripherals of one description share it.
class PeripheralTree
{
public:
    explicit PeripheralTree(XMLElementInfo root);
    PeripheralTree(const PeripheralTree &) = delete;
    PeripheralTree &operator=(const PeripheralTree &) = delete;

    const XMLElementInfo &root() const { return m_root; }
    bool isEmpty() const { return m_root.tagName.isEmpty(); }

    bool HasRefParameter(const QString &name) const { return m_parameters.contains(name); }
    RefParameter GetRefParameter(const QString &instance, const QString &name) const;
    QList<RefParameter> GetRefParameterList(const QString &instance, const QString &name) const;
    RefMode GetRefMode(const QString &name) const;
    RefMode GetRefMode(const QString &baseMode, const QString &name) const;
    RefMode GetRefMode_Abstract() const;

private:
    using Elements = QVector<const XMLElementInfo *>;

    const XMLElementInfo m_root;
    QHash<QString, Elements> m_parameters; // by name
    QHash<QString, Elements> m_modes;
    const XMLElementInfo *m_abstractMode = nullptr;
};

} // namespace ChipLoom
