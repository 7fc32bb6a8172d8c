#include "Gui/Modes/OneParamWidget.h"

#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/Explanations.h"
#include "Design/ModuleConfiguration.h"
#include "Design/ParameterChecks.h"
#include "Gui/App/Style.h"
#include "Gui/Modes/ModeTexts.h"
#include "Gui/Widgets/EntryField.h"
#include "Gui/Widgets/ListedComboBox.h"
#include "Gui/Widgets/WholeText.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace ChipLoom {

namespace {

constexpr int RestoreWidth = 24;
constexpr int Spacing = 4;
constexpr int FieldMargins = 12;
constexpr int LeastField = 60;
constexpr int WidestNumber = 120;

} // namespace

OneParamWidget::OneParamWidget(Design &design, IP_ParamSettingConfiguration &parameters, QString instance,
                               const RefParameter &parameter, int unitWidth, QWidget *parent)
    : QWidget(parent), m_unitWidth(unitWidth), m_design(design), m_parameters(parameters),
      m_instance(std::move(instance)), m_name(parameter.Name), m_paramNameLabel(new QLabel(this)),
      m_line(new QHBoxLayout), m_warning(new QLabel(this))
{
    auto *lines = new QVBoxLayout(this);
    lines->setContentsMargins(4, 2, 4, 2);
    lines->setSpacing(1);
    m_line->setSpacing(Spacing);
    lines->addLayout(m_line);
    Style::setRole(m_warning, Style::Role::Warning);
    m_warning->setWordWrap(true);
    m_warning->setTextFormat(Qt::PlainText);
    m_warning->hide();
    lines->addWidget(m_warning);
    m_paramNameLabel->setWordWrap(true);
    m_paramNameLabel->setMinimumWidth(90);
    m_line->addWidget(m_paramNameLabel, 4);
    makeEditor(parameter);
    editor()->installEventFilter(this);
    m_paramNameLabel->setBuddy(editor());
    if (m_paramTypeComboBox) {
        auto *value = new QHBoxLayout; // together as wide as what other rows have
        value->addWidget(editor(), 1);
        value->addWidget(m_paramTypeComboBox);
        m_line->addLayout(value, 5);
    } else {
        m_line->addWidget(editor(), 5);
    }
    for (const auto &[place, width] :
         {std::pair(&m_unitPlace, m_unitWidth), std::pair(&m_restorePlace, RestoreWidth)}) {
        *place = new QSpacerItem(width + Spacing, 0, QSizePolicy::Fixed);
        m_line->addSpacerItem(*place);
    }
    refresh(parameter);
}

QWidget *OneParamWidget::editor() const
{
    return m_paramValueComboBox ? static_cast<QWidget *>(m_paramValueComboBox) : m_paramValueLineEdit;
}

// Few rows have a unit or differ from their default, and a page has many rows.
void OneParamWidget::fill(QSpacerItem *&place, QWidget *widget)
{
    const int index = m_line->indexOf(place);
    delete m_line->takeAt(index);
    place = nullptr;
    QSizePolicy keepsPlace = widget->sizePolicy();
    keepsPlace.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(keepsPlace);
    m_line->insertWidget(index, widget);
}

void OneParamWidget::showUnit(const QString &unit)
{
    if (!m_unit && !unit.isEmpty()) {
        m_unit = new QLabel(this);
        m_unit->setMinimumWidth(m_unitWidth);
        Style::setRole(m_unit, Style::Role::Hint);
        fill(m_unitPlace, m_unit);
    }
    if (m_unit)
        m_unit->setText(unit);
}

void OneParamWidget::offerRestoring(bool offered)
{
    if (!m_restore && offered) {
        m_restore = new QToolButton(this);
        m_restore->setText(QStringLiteral("\u21ba"));
        m_restore->setAutoRaise(true);
        m_restore->setFixedWidth(RestoreWidth);
        m_restore->setToolTip(tr("Restore the default value"));
        connect(m_restore, &QToolButton::clicked, this, [this] {
            change({QStringLiteral("param"), address(), m_parameters.defaultOf(m_PeripheralsParam)});
        });
        fill(m_restorePlace, m_restore);
        setTabOrder(m_paramTypeComboBox ? m_paramTypeComboBox : editor(), m_restore);
    }
    if (m_restore)
        m_restore->setVisible(offered);
}

void OneParamWidget::showWarning()
{
    const DesignAnswer warning = m_parameters.warning(m_name);
    const QString text = warning ? QString() : reasonText(warning);
    m_warning->setText(text);
    m_warning->setVisible(!text.isEmpty());
    setToolTip(parameterToolTip(m_PeripheralsParam) +
               (text.isEmpty() ? QString() : QLatin1String("<p>") + text.toHtmlEscaped()));
}

QString OneParamWidget::reasonText(const DesignAnswer &answer) const
{
    DesignAnswer ownWords = answer;
    if (ownWords.arguments.value(0) == m_name)
        ownWords.arguments.first() = labelText();
    const QString range = rangeText(m_PeripheralsParam);
    return answer.reason == DesignReason::NotANumber && !range.isEmpty()
               ? tr("%1 Allowed: %2.").arg(answerText(ownWords), range)
               : answerText(ownWords);
}

void OneParamWidget::makeEditor(const RefParameter &parameter)
{
    const ParameterKind kind = parameterKind(parameter.Type);
    if (kind == ParameterKind::List) {
        m_paramValueComboBox = new ListedComboBox(this);
        m_paramValueComboBox->setMinimumContentsLength(8);
        connect(m_paramValueComboBox, QOverload<int>::of(&QComboBox::activated), this,
                &OneParamWidget::Param_ComboBox_IndexChanged);
        return;
    }
    m_paramValueLineEdit = new EntryField(this);
    const QString largest = Value_to_DisplayText(parameter, parameter.MaxValue, parameter.CurrentValueType);
    m_paramValueLineEdit->setMinimumWidth(
        std::clamp(fontMetrics().horizontalAdvance(largest) + FieldMargins, LeastField, WidestNumber));
    if (kind == ParameterKind::MacAddress)
        m_paramValueLineEdit->setInputMask(QStringLiteral("HH:HH:HH:HH:HH:HH; "));
    connect(m_paramValueLineEdit, &QLineEdit::textEdited, this, &OneParamWidget::showEntryHint);
    connect(m_paramValueLineEdit, &QLineEdit::editingFinished, this, &OneParamWidget::Value_LineEdit_editingFinished);
    if (!hasNumberBase(kind))
        return;
    m_paramTypeComboBox = new ListedComboBox(this);
    m_paramTypeComboBox->addItems({tr("Dec"), tr("Hex")});
    m_paramTypeComboBox->setToolTip(tr("Base of the number"));
    connect(m_paramTypeComboBox, QOverload<int>::of(&QComboBox::activated), this,
            &OneParamWidget::ParamType_ComboBox_IndexChanged);
}

OneParamWidget::~OneParamWidget()
{
    delete m_entryHint;
}

QString OneParamWidget::labelText() const
{
    return m_PeripheralsParam.Comment.isEmpty() ? m_PeripheralsParam.Name : m_PeripheralsParam.Comment;
}

void OneParamWidget::fillBox(const RefParameter &parameter)
{
    const QSignalBlocker blocked(m_paramValueComboBox);
    m_paramValueComboBox->clear();
    auto *model = qobject_cast<QStandardItemModel *>(m_paramValueComboBox->model());
    const ModuleConfiguration *module = m_design.module(m_instance);
    for (const PossibleValue &value : parameter.PossibleValueList) {
        const bool offered = m_parameters.isOffered(value);
        if (!offered && value.Action == QLatin1String("Remove"))
            continue;
        m_paramValueComboBox->addItem(value.Comment.isEmpty() ? value.Value : value.Comment, value.Value);
        QStandardItem *entry = model->item(model->rowCount() - 1);
        entry->setEnabled(offered);
        if (!offered && module)
            entry->setToolTip(valueExplanation(m_design, *module, parameter, value).text);
        if (value.ErrorFlag)
            entry->setForeground(Style::Negative);
    }
    m_paramValueComboBox->setCurrentIndex(m_paramValueComboBox->findData(parameter.CurrentValue));
}

void OneParamWidget::setBoundFont(bool changed)
{
    QFont font = m_paramNameLabel->font();
    if (font.bold() == changed)
        return;
    font.setBold(changed);
    m_paramNameLabel->setFont(font);
}

void OneParamWidget::refresh(const RefParameter &parameter)
{
    m_PeripheralsParam = parameter;
    m_paramNameLabel->setText(breakable(labelText()));
    showUnit(unitText(parameter));
    showWarning();
    const bool good = m_parameters.GetOneParamStatus(parameter);
    Style::setRole(m_paramNameLabel, !good                         ? Style::Role::Error
                                     : m_warning->text().isEmpty() ? Style::Role::None
                                                                   : Style::Role::Warning);
    const bool changed = parameter.Enable && m_parameters.isChangedFromDefault(parameter);
    setBoundFont(changed);
    offerRestoring(changed);
    if (m_paramValueComboBox) {
        fillBox(parameter);
        m_paramValueComboBox->setEnabled(parameter.Enable);
        Style::setInvalid(m_paramValueComboBox, !good);
        return;
    }
    // What is being typed stays, whatever changes elsewhere meanwhile.
    const bool typing = m_paramValueLineEdit->hasFocus() && m_paramValueLineEdit->isModified();
    if (!typing)
        m_paramValueLineEdit->setText(
            Value_to_DisplayText(parameter, parameter.CurrentValue, parameter.CurrentValueType));
    if (m_paramValueLineEdit->isReadOnly() == parameter.Enable) {
        m_paramValueLineEdit->setReadOnly(!parameter.Enable);
        // A result does not look like something to fill in.
        QPalette colours = palette();
        if (!parameter.Enable)
            colours.setColor(QPalette::Base, colours.color(QPalette::Window));
        m_paramValueLineEdit->setPalette(colours);
    }
    m_paramValueLineEdit->setPlaceholderText(rangeText(parameter));
    if (!typing)
        Style::setInvalid(m_paramValueLineEdit, !good);
    if (m_paramTypeComboBox) {
        m_paramTypeComboBox->setCurrentIndex(parameter.CurrentValueType == CURRENTVALUETYPE_HEX ? 1 : 0);
        m_paramTypeComboBox->setEnabled(parameter.Enable);
    }
}

bool OneParamWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        emit entered(m_PeripheralsParam.annotation.Note);
        showEntryHint();
    } else if (event->type() == QEvent::FocusOut && m_entryHint) {
        m_entryHint->hide();
    }
    return QWidget::eventFilter(watched, event);
}

QMenu *OneParamWidget::explanationMenu()
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const ModuleConfiguration *module = m_design.module(m_instance);
    for (const PossibleValue &value : qAsConst(m_PeripheralsParam.PossibleValueList)) {
        const bool shown = value.Action != QLatin1String("Remove");
        if (module && shown)
            addExplanation(*menu, value.Comment.isEmpty() ? value.Value : value.Comment,
                           valueExplanation(m_design, *module, m_PeripheralsParam, value),
                           [this](const QString &asked) { emit moduleAsked(asked); });
    }
    return menu;
}

void OneParamWidget::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = explanationMenu();
    if (menu->isEmpty()) {
        delete menu;
        event->ignore();
        return;
    }
    menu->popup(event->globalPos());
}

void OneParamWidget::hideEvent(QHideEvent *event)
{
    if (m_entryHint)
        m_entryHint->hide();
    QWidget::hideEvent(event);
}

// It lies over the list, so that nothing moves under the pointer when it comes and goes.
void OneParamWidget::makeEntryHint()
{
    QWidget *list = window();
    for (QWidget *above = parentWidget(); above; above = above->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(above)) {
            list = area->widget();
            break;
        }
    }
    m_entryHint = new QLabel(list);
    m_entryHint->setTextFormat(Qt::PlainText);
    m_entryHint->setWordWrap(true);
    m_entryHint->setMargin(3);
    m_entryHint->setFrameShape(QFrame::Box);
    m_entryHint->setAutoFillBackground(true);
    m_entryHint->setBackgroundRole(QPalette::Base);
}

void OneParamWidget::showEntryHint()
{
    if (!m_paramValueLineEdit || m_paramValueLineEdit->isReadOnly())
        return;
    if (!m_entryHint)
        makeEntryHint();
    const DesignAnswer answer = m_parameters.canTake(m_name, m_paramValueLineEdit->text());
    const QString range = rangeText(m_PeripheralsParam);
    m_entryHint->setText(answer ? range : reasonText(answer));
    Style::setInvalid(m_paramValueLineEdit, !answer);
    Style::setRole(m_entryHint, answer ? Style::Role::Hint : Style::Role::Error);
    m_entryHint->setVisible(!m_entryHint->text().isEmpty() && m_paramValueLineEdit->hasFocus());
    // Over the rows beneath; over those above where the list ends.
    QWidget *list = m_entryHint->parentWidget();
    const int width = qMin(list->width(), 320);
    m_entryHint->setFixedWidth(width);
    m_entryHint->resize(width, m_entryHint->heightForWidth(width));
    QPoint place = m_paramValueLineEdit->mapTo(list, QPoint(0, m_paramValueLineEdit->height() + 1));
    place.setX(qBound(0, place.x(), list->width() - width));
    if (place.y() + m_entryHint->height() > list->height())
        place.setY(m_paramValueLineEdit->mapTo(list, QPoint(0, -1)).y() - m_entryHint->height());
    m_entryHint->move(place);
    m_entryHint->raise();
}

void OneParamWidget::change(const DesignChange &change)
{
    const DesignAnswer answer = m_design.apply(change);
    if (answer)
        return;
    emit refused(reasonText(answer));
    refresh(m_PeripheralsParam);
}

void OneParamWidget::Param_ComboBox_IndexChanged(int index)
{
    change({QStringLiteral("param"), address(), m_paramValueComboBox->itemData(index).toString()});
}

void OneParamWidget::Value_LineEdit_editingFinished()
{
    m_paramValueLineEdit->setModified(false);
    const QString shown =
        Value_to_DisplayText(m_PeripheralsParam, m_PeripheralsParam.CurrentValue, m_PeripheralsParam.CurrentValueType);
    if (m_paramValueLineEdit->text() != shown)
        change({QStringLiteral("param"), address(), m_paramValueLineEdit->text()});
}

void OneParamWidget::ParamType_ComboBox_IndexChanged(int index)
{
    change({QStringLiteral("base"), address(), index == 1 ? QStringLiteral("16") : QStringLiteral("10")});
}

} // namespace ChipLoom
