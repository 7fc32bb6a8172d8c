#include "Gui/Modes/ModeArea.h"

#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/ModuleConfiguration.h"
#include "Gui/App/Style.h"
#include "Gui/Modes/ModeTexts.h"
#include "Gui/Widgets/ListedComboBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QToolButton>

#include <algorithm>
#include <functional>
#include <utility>

namespace ChipLoom {

namespace {

constexpr QColor Dark{70, 70, 70};

struct ItemLook
{
    QBrush background;
    QBrush foreground;
};

ItemLook lookOf(ItemState state)
{
    switch (state) {
    case ItemState::Enabled:
        break;
    case ItemState::PinConflict:
        return {QColor(255, 0, 127), Dark};
    case ItemState::ConditionNotMet:
        return {Qt::white, QColor(Qt::gray)};
    case ItemState::NotOnPackage:
        return {QColor(255, 255, 0), Dark};
    }
    return {Qt::white, Qt::black};
}

QString labelOf(const ModeControl &control)
{
    return choiceText(control, 0);
}

/// An entry of a box, which says why it is barred when somebody asks: a page has hundreds of them.
class Choice : public QStandardItem
{
public:
    Choice(const QString &text, std::function<QString()> explanation)
        : QStandardItem(text), m_explanation(std::move(explanation))
    {
    }

    QVariant data(int role) const override
    {
        return role == Qt::ToolTipRole ? m_explanation() : QStandardItem::data(role);
    }

private:
    std::function<QString()> m_explanation;
};

} // namespace

ModeArea::ModeArea(Design &design, ModuleConfiguration &module, QWidget *parent)
    : QWidget(parent), m_design(design), m_module(module)
{
    auto *grid = new QGridLayout(this);
    grid->setColumnStretch(1, 1);
    for (const std::unique_ptr<ModeControl> &control : module.controls()) {
        const Row row = makeRow(*control);
        const int line = static_cast<int>(m_rows.size());
        if (row.comboBox) {
            grid->addWidget(row.label, line, 0);
            grid->addWidget(row.comboBox, line, 1);
        } else {
            grid->addWidget(row.checkBox, line, 0, 1, 2);
        }
        const Annotation &remark = control->declaration().modeAnnotation;
        const QString text = ownText(remark.Note_EN, remark.Note_CH, {});
        if (!text.isEmpty()) {
            auto *help = new QToolButton(this);
            help->setIcon(QIcon(QStringLiteral(":/image/icon_Question.png")));
            help->setAutoRaise(true);
            help->setToolTip(text);
            connect(help, &QToolButton::clicked, this, [this, text] { emit remarkAsked(text); });
            grid->addWidget(help, line, 2);
        }
        m_rows.push_back(row);
    }
    if (m_rows.empty()) {
        auto *none = new QLabel(tr("No Mode Settings!"), this);
        Style::setRole(none, Style::Role::Hint);
        grid->addWidget(none, 0, 0, 1, 2);
    }
    grid->setRowStretch(std::max(1, static_cast<int>(m_rows.size())), 1);
    refresh();
}

ModeArea::Row ModeArea::makeRow(const ModeControl &control)
{
    Row row;
    row.control = &control;
    if (control.isCheckBox()) {
        row.checkBox = new QCheckBox(labelOf(control), this);
        connect(row.checkBox, &QCheckBox::clicked, this, [this, &control](bool checked) {
            choose(control, checked ? QStringLiteral("TRUE") : QStringLiteral("FALSE"));
        });
        return row;
    }
    row.label = new QLabel(labelOf(control), this);
    row.comboBox = new ListedComboBox(this);
    row.comboBox->addItem(tr("Disable"));
    auto *model = qobject_cast<QStandardItemModel *>(row.comboBox->model());
    for (int index = 1; index < control.count(); ++index)
        model->appendRow(new Choice(itemText(control.items().at(index - 1)),
                                    [this, &control, index] { return explanation(control, index); }));
    row.comboBox->setMinimumContentsLength(12);
    row.label->setBuddy(row.comboBox);
    row.label->setWordWrap(true);
    connect(row.comboBox, QOverload<int>::of(&QComboBox::activated), this, [this, &control](int index) {
        choose(control, index > 0 ? control.items().at(index - 1).Name : QString());
    });
    return row;
}

QString ModeArea::explanation(const ModeControl &control, int index) const
{
    return itemExplanation(m_design, m_module, control, index).text;
}

QComboBox *ModeArea::comboBox(const QString &modeName) const
{
    for (const Row &row : m_rows) {
        if (row.control->modeName() == modeName)
            return row.comboBox;
    }
    return nullptr;
}

QCheckBox *ModeArea::checkBox(const QString &modeName) const
{
    for (const Row &row : m_rows) {
        if (row.control->modeName() == modeName)
            return row.checkBox;
    }
    return nullptr;
}

void ModeArea::choose(const ModeControl &control, const QString &item)
{
    const DesignAnswer answer =
        m_design.apply({QStringLiteral("mode"), m_module.instanceName() + QLatin1Char('/') + control.modeName(), item});
    if (!answer) {
        const int index = control.isCheckBox() ? 1 : control.indexOf(item);
        const Explanation closed = index > 0 ? itemExplanation(m_design, m_module, control, index) : Explanation();
        emit refused(closed.text.isEmpty() ? explained(m_design, answer, m_module.instanceName()) : closed);
    }
    refresh();
}

void ModeArea::contextMenuEvent(QContextMenuEvent *event)
{
    const QPoint position = event->pos();
    for (const Row &row : m_rows) {
        const bool onLabel = row.label && row.label->geometry().contains(position);
        const QWidget *box = row.comboBox ? static_cast<QWidget *>(row.comboBox) : row.checkBox;
        if (!onLabel && !box->geometry().contains(position))
            continue;
        QMenu *menu = explanationMenu(row.control->modeName());
        if (!menu->isEmpty())
            menu->popup(event->globalPos());
        else
            delete menu;
        return;
    }
}

QMenu *ModeArea::explanationMenu(const QString &modeName)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const ModeControl *control = m_module.control(modeName);
    const auto add = [&](const QString &name, const Explanation &explanation) {
        addExplanation(*menu, name, explanation, [this](const QString &module) { emit moduleAsked(module); });
    };
    if (!control)
        return menu;
    if (!control->isEnabled()) {
        add(labelOf(*control), itemExplanation(m_design, m_module, *control, 1));
        return menu;
    }
    for (int index = 1; index < control->count(); ++index) {
        const ItemInfoStruct &item = control->items().at(index - 1);
        add(control->isCheckBox() ? labelOf(*control) : itemText(item),
            itemExplanation(m_design, m_module, *control, index));
    }
    return menu;
}

void ModeArea::refresh()
{
    for (const Row &row : m_rows) {
        if (row.comboBox)
            refreshComboBox(row);
        else
            refreshCheckBox(row);
    }
}

void ModeArea::refreshComboBox(const Row &row)
{
    const QSignalBlocker blocked(row.comboBox);
    const bool open = row.control->isEnabled();
    row.comboBox->setEnabled(open);
    row.label->setEnabled(open);
    row.comboBox->setToolTip(open ? QString() : explanation(*row.control, 1));
    row.label->setToolTip(row.comboBox->toolTip());
    auto *model = qobject_cast<QStandardItemModel *>(row.comboBox->model());
    for (int index = 1; index < row.control->count(); ++index) {
        const ItemInfoStruct &item = row.control->items().at(index - 1);
        const ItemLook look = lookOf(item.state());
        QStandardItem *entry = model->item(index);
        entry->setEnabled(item.CanBeChoose());
        entry->setBackground(look.background);
        entry->setForeground(look.foreground);
    }
    row.comboBox->setCurrentIndex(row.control->index());
}

void ModeArea::refreshCheckBox(const Row &row)
{
    const bool open = row.control->isOn() || row.control->itemCanbeChoosed(1);
    row.checkBox->setEnabled(open);
    row.checkBox->setChecked(row.control->isOn());
    row.checkBox->setToolTip(open ? QString() : explanation(*row.control, 1));
}

} // namespace ChipLoom
