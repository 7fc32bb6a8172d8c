#pragma once

#include "Model/ShareParameter.h"

#include <QHash>
#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QVBoxLayout;

namespace ChipLoom {

class DMA_Configuration;

/// The settings of one request by their groups: transfer, interrupts, synchronization, generator, and what else the
/// controller has. Boxes are made anew only when the request has other settings; otherwise they take the new values.
class DMAParameterArea : public QWidget
{
    Q_OBJECT
public:
    explicit DMAParameterArea(DMA_Configuration &dma, QWidget *parent = nullptr);

    /// Null empties the area.
    void RefreshDMARequestSettingParamUI(const DMARequest *request);

    QComboBox *box(const QString &parameterName) const { return m_boxes.value(parameterName); }
    QLineEdit *field(const QString &parameterName) const { return m_fields.value(parameterName); }
    /// The titles of the groups that are shown, in order.
    QStringList groupTitles() const;

signals:
    void entered(const QString &parameterName, const QString &value);

private:
    void rebuild(const DMARequest *request);
    QString groupTitle(const RefParameter &parameter) const;
    void alignLabels();
    QWidget *makeEditor(const RefParameter &parameter);
    void takeValue(const DMARequest &request, const RefParameter &parameter);

    DMA_Configuration &m_dma;
    QVBoxLayout *m_groups;
    QStringList m_shownNames; ///< of the parameters, with their groups
    QHash<QString, QComboBox *> m_boxes;
    QHash<QString, QLineEdit *> m_fields;
    QHash<QString, QLabel *> m_labels;
};

} // namespace ChipLoom
