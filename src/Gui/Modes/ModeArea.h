#pragma once

#include "Design/Explanations.h"

#include <QHash>
#include <QWidget>

#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QMenu;

namespace ChipLoom {

class Design;
class ModuleConfiguration;
class ModeControl;

/// The modes of a peripheral as boxes, one a row. Entries that cannot be chosen stay visible in the colour of their
/// reason, which the tool tip tells.
class ModeArea : public QWidget
{
    Q_OBJECT
public:
    ModeArea(Design &design, ModuleConfiguration &module, QWidget *parent = nullptr);

    QComboBox *comboBox(const QString &modeName) const;
    QCheckBox *checkBox(const QString &modeName) const;
    void refresh();
    /// For each closed entry of a mode why it is closed, and the modules that hold it, to go there. Empty if all are
    /// open. The menu deletes itself when it closes.
    QMenu *explanationMenu(const QString &modeName);

signals:
    /// A choice was not taken; why.
    void refused(const ChipLoom::Explanation &reason);
    void moduleAsked(const QString &instance);
    /// The remark of a mode was asked for.
    void remarkAsked(const QString &remark);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    struct Row
    {
        const ModeControl *control = nullptr;
        QLabel *label = nullptr;
        QComboBox *comboBox = nullptr;
        QCheckBox *checkBox = nullptr;
    };

    Row makeRow(const ModeControl &control);
    /// Why an entry is barred; empty if it is not.
    QString explanation(const ModeControl &control, int index) const;
    void choose(const ModeControl &control, const QString &item);
    void refreshComboBox(const Row &row);
    void refreshCheckBox(const Row &row);

    Design &m_design;
    ModuleConfiguration &m_module;
    std::vector<Row> m_rows;
};

} // namespace ChipLoom
