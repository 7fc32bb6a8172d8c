#pragma once

#include "Model/ShareParameter.h"

#include <QWidget>

class QTreeWidget;

namespace ChipLoom {

class Design;

/// What the database says of a peripheral: what it is, and which of its signals can stand and do stand on which pins.
class PeripheralPage : public QWidget
{
    Q_OBJECT
public:
    PeripheralPage(Design &design, const PeripheralsBaseInfo &module, QWidget *parent = nullptr);

    QTreeWidget *signalTable() const { return m_signals; }

private:
    void fillSignals(const QString &instanceName);
    void refreshSignals();

    Design &m_design;
    QTreeWidget *m_signals;
};

} // namespace ChipLoom
