#include "Gui/Settings/DMAParameterArea.h"

#include "Design/DMA_Configuration.h"
#include "Design/ParameterChecks.h"
#include "Gui/App/Style.h"
#include "Gui/Modes/ModeTexts.h"
#include "Gui/Widgets/EntryField.h"
#include "Gui/Widgets/ListedComboBox.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace ChipLoom {

namespace {

constexpr int WidestBox = 11; // broad characters; longer texts are cut, so that a narrow pane shows the box at all
constexpr int WidestLabel = 17;

} // namespace

DMAParameterArea::DMAParameterArea(DMA_Configuration &dma, QWidget *parent)
    : QWidget(parent), m_dma(dma), m_groups(new QVBoxLayout(this))
{
    m_groups->setContentsMargins(0, 0, 0, 0);
}

QString DMAParameterArea::groupTitle(const RefParameter &parameter) const
{
    const bool edma = m_dma.isEdma();
    const QString &group = parameter.Group_EN;
    if (group.isEmpty() || group == QLatin1String("Request Settings"))
        return edma ? tr("EDMA Request Settings") : tr("DMA Request Settings");
    if (group == QLatin1String("Request Generator Settings"))
        return edma ? tr("EDMA Request Generator Settings") : tr("DMA Request Generator Settings");
    if (group == QLatin1String("Request Synchronization Settings"))
        return edma ? tr("EDMA Request Synchronization Settings") : tr("DMA Request Synchronization Settings");
    return parameter.Group;
}

QStringList DMAParameterArea::groupTitles() const
{
    QStringList titles;
    for (int i = 0; i < m_groups->count(); ++i) {
        if (const auto *group = qobject_cast<QGroupBox *>(m_groups->itemAt(i)->widget()))
            titles.append(group->title());
    }
    return titles;
}

void DMAParameterArea::RefreshDMARequestSettingParamUI(const DMARequest *request)
{
    QStringList names;
    for (const RefParameter &parameter : request ? request->RefParameterfoList : QList<RefParameter>()) {
        if (parameter.Visible)
            names.append(parameter.Group + QLatin1Char('/') + parameter.Name + QLatin1Char('/') + parameter.Type);
    }
    if (names != m_shownNames) {
        m_shownNames = names;
        rebuild(request);
    }
    for (const RefParameter &parameter : request ? request->RefParameterfoList : QList<RefParameter>()) {
        if (parameter.Visible)
            takeValue(*request, parameter);
    }
}

void DMAParameterArea::rebuild(const DMARequest *request)
{
    // The box whose change brings this about may be among them, so they go when its signal has been served.
    while (QLayoutItem *item = m_groups->takeAt(0)) {
        if (item->widget()) {
            item->widget()->hide();
            item->widget()->deleteLater();
        }
        delete item;
    }
    m_boxes.clear();
    m_fields.clear();
    m_labels.clear();
    QHash<QString, QFormLayout *> forms;
    for (const RefParameter &parameter : request ? request->RefParameterfoList : QList<RefParameter>()) {
        if (!parameter.Visible)
            continue;
        QFormLayout *&form = forms[groupTitle(parameter)];
        if (!form) {
            auto *group = new QGroupBox(groupTitle(parameter));
            form = new QFormLayout(group);
            form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
            m_groups->addWidget(group);
        }
        QWidget *editor = makeEditor(parameter);
        auto *label = new QLabel(parameter.Comment.isEmpty() ? parameter.Name : parameter.Comment);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setBuddy(editor);
        m_labels.insert(parameter.Name, label);
        form->addRow(label, editor);
    }
    m_groups->addStretch();
    alignLabels();
}

/// One column of labels through all groups, wide enough for those that become bold; the longest take a second line.
void DMAParameterArea::alignLabels()
{
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    int width = 0;
    for (const QLabel *label : qAsConst(m_labels))
        width = std::max(width, metrics.horizontalAdvance(label->text()));
    width = std::min(width, metrics.averageCharWidth() * WidestLabel);
    for (QLabel *label : qAsConst(m_labels))
        label->setFixedWidth(width);
}

QWidget *DMAParameterArea::makeEditor(const RefParameter &parameter)
{
    const QString name = parameter.Name;
    if (parameterKind(parameter.Type) == ParameterKind::List) {
        auto *box = new ListedComboBox;
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        connect(box, QOverload<int>::of(&QComboBox::activated), this,
                [this, name, box](int index) { emit entered(name, box->itemData(index).toString()); });
        m_boxes.insert(name, box);
        return box;
    }
    auto *field = new EntryField;
    connect(field, &QLineEdit::editingFinished, this, [this, name, field] {
        if (field->isModified())
            emit entered(name, field->text());
    });
    m_fields.insert(name, field);
    return field;
}

void DMAParameterArea::takeValue(const DMARequest &request, const RefParameter &parameter)
{
    const bool good = m_dma.isGood(request, parameter);
    QLabel *label = m_labels.value(parameter.Name);
    QFont font = label->font();
    font.setBold(parameter.Enable && parameter.CurrentValue != parameter.DefaultValueBackup);
    label->setFont(font);
    Style::setRole(label, good ? Style::Role::None : Style::Role::Error);
    if (QLineEdit *field = m_fields.value(parameter.Name)) {
        field->setText(parameter.CurrentValue);
        field->setModified(false);
        field->setPlaceholderText(rangeText(parameter));
        field->setToolTip(parameterToolTip(parameter));
        field->setReadOnly(!parameter.Enable);
        Style::setInvalid(field, !good);
        return;
    }
    QComboBox *box = m_boxes.value(parameter.Name);
    const QSignalBlocker blocked(box);
    box->clear();
    int longest = 0;
    for (const PossibleValue &value : m_dma.offeredValues(request, parameter)) {
        box->addItem(value.Comment.isEmpty() ? value.Value : value.Comment, value.Value);
        longest = std::max(longest, box->itemText(box->count() - 1).size());
    }
    box->setMinimumContentsLength(std::min(longest, WidestBox));
    box->setCurrentIndex(box->findData(parameter.CurrentValue));
    box->setEnabled(parameter.Enable);
    box->setToolTip(parameterToolTip(parameter));
    Style::setInvalid(box, !good);
}

} // namespace ChipLoom
