#include "Gui/Settings/DMASettingWidget.h"

#include "Design/DMA_Configuration.h"
#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Gui/App/Style.h"
#include "Gui/Settings/DMAParameterArea.h"
#include "Gui/Settings/DMASettingModel.h"
#include "Gui/Settings/NoteLine.h"

#include <QAction>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace ChipLoom {

namespace {

/// The source text of the box that tells a refusal; reasons without one of their own share the last.
QString boxText(const DesignAnswer &answer)
{
    switch (answer.reason) {
    case DesignReason::NoDmaChannel:
        return QStringLiteral(QT_TRANSLATE_NOOP("Prompt", "No available DMA channels for configurated peripherals!"));
    case DesignReason::NoDmaRequest:
        return QStringLiteral(QT_TRANSLATE_NOOP("Prompt", "No available DMA requests for configurated peripherals!"));
    case DesignReason::UnknownDmaRequest:
        return QStringLiteral(QT_TRANSLATE_NOOP("Prompt", "No available DMA request!"));
    case DesignReason::NoChannelForDmaRequest:
        return QStringLiteral(
            QT_TRANSLATE_NOOP("Prompt", "No available channel for configurated DMA Request! %1 has been used"));
    default:
        return QStringLiteral(QT_TRANSLATE_NOOP("Prompt", "No available channel for configurated DMA Request! "));
    }
}

} // namespace

DMASettingWidget::DMASettingWidget(Design &design, DMA_Configuration &dma, const QString &instance, QWidget *parent)
    : QWidget(parent), m_design(design), m_dma(dma), m_InstanceName(instance),
      m_model(new DMASettingModel(design, dma, instance, this)), m_DMARequestsTableWidget(new SettingsTable(*m_model)),
      m_parameters(new DMAParameterArea(dma)),
      m_TableSignalParam_GroupBox(
          new QGroupBox(dma.isEdma() ? tr("EDMA Request Parameters") : tr("DMA Request Parameters"))),
      m_addButton(new QPushButton(tr("Add"))), m_delButton(new QPushButton(tr("Delete"))), m_selectionHint(new QLabel),
      m_note(noteLine())
{
    m_addButton->setToolTip(tr("Add a request (Insert)"));
    m_delButton->setToolTip(tr("Take the channels of the selected requests away (Delete)"));
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_addButton);
    buttons->addWidget(m_delButton);
    buttons->addStretch();

    auto *upper = new QWidget;
    auto *upperLayout = new QVBoxLayout(upper);
    upperLayout->setContentsMargins(0, 0, 0, 0);
    upperLayout->addWidget(m_DMARequestsTableWidget, 1);
    upperLayout->addLayout(buttons);
    upperLayout->addWidget(m_note);

    Style::setRole(m_selectionHint, Style::Role::Hint);
    m_selectionHint->setTextFormat(Qt::PlainText);
    m_selectionHint->setWordWrap(true);
    auto *scroll = new QScrollArea;
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(m_parameters);
    scroll->viewport()->setAutoFillBackground(false);
    m_parameters->setAutoFillBackground(false);
    auto *boxLayout = new QVBoxLayout(m_TableSignalParam_GroupBox);
    boxLayout->addWidget(m_selectionHint);
    boxLayout->addWidget(scroll, 1);

    auto *panes = new QSplitter(Qt::Vertical);
    panes->addWidget(upper);
    panes->addWidget(m_TableSignalParam_GroupBox);
    panes->setChildrenCollapsible(false);
    panes->setSizes({40000, 60000});
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(panes);

    const auto addAction = [this](const QString &text, const QKeySequence &key, auto slot) {
        auto *action = new QAction(text, this);
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, this, slot);
        m_DMARequestsTableWidget->view()->addAction(action);
    };
    addAction(tr("Add"), QKeySequence(Qt::Key_Insert), &DMASettingWidget::AddButtonClickedSlot);
    addAction(tr("Delete"), QKeySequence(Qt::Key_Delete), &DMASettingWidget::DelButtonClickedSlot);
    connect(m_addButton, &QPushButton::clicked, this, &DMASettingWidget::AddButtonClickedSlot);
    connect(m_delButton, &QPushButton::clicked, this, &DMASettingWidget::DelButtonClickedSlot);
    connect(m_model, &SettingsModel::refused, this, [this](const QString &reason) { setNote(m_note, reason); });
    connect(m_model, &SettingsModel::refused, this, &DMASettingWidget::refused);
    connect(m_model, &DMASettingModel::requestRefused, this, &DMASettingWidget::tell);
    connect(m_model, &DMASettingModel::requestChosen, this, [this](int row) {
        if (m_DMARequestsTableWidget->selectedRows().isEmpty())
            m_DMARequestsTableWidget->selectRow(row);
    });
    connect(m_DMARequestsTableWidget, &SettingsTable::selectionChanged, this, &DMASettingWidget::showParameters);
    connect(&dma, &DMA_Configuration::settingsChanged, this, &DMASettingWidget::refreshDAMSettingWidgetTable);
    connect(m_parameters, &DMAParameterArea::entered, this, &DMASettingWidget::setParameter);
    m_DMARequestsTableWidget->fitColumns();
    refreshDAMSettingWidgetTable();
}

void DMASettingWidget::refreshDAMSettingWidgetTable()
{
    setNote(m_note, QString());
    if (m_model->rowCount() > m_fittedRows)
        m_DMARequestsTableWidget->fitColumns();
    m_fittedRows = m_model->rowCount();
    showParameters();
}

/// Takes the first selected request into the boxes.
void DMASettingWidget::showParameters()
{
    const QVector<int> rows = m_DMARequestsTableWidget->selectedRows();
    const DMARequest *request = rows.isEmpty() ? nullptr : m_model->request(rows.first());
    m_delButton->setEnabled(!rows.isEmpty());
    if (!request)
        m_selectionHint->setText(tr("Select a request to set its transfer here."));
    else if (rows.size() == 1)
        m_selectionHint->setText(request->requestName + QLatin1String("  ") + request->channelName);
    else
        m_selectionHint->setText(tr("A change goes to all %1 selected rows.").arg(rows.size()));
    m_parameters->RefreshDMARequestSettingParamUI(request);
}

void DMASettingWidget::setParameter(const QString &name, const QString &value)
{
    // By their channels: a change may take rows away.
    QStringList channels;
    for (const int row : m_DMARequestsTableWidget->selectedRows()) {
        const DMARequest *request = m_model->request(row);
        const bool has =
            request && std::any_of(request->RefParameterfoList.begin(), request->RefParameterfoList.end(),
                                   [&](const RefParameter &one) { return one.Name == name && one.Enable; });
        if (has)
            channels.append(request->channelName);
    }
    QStringList refusals;
    for (const QString &channel : qAsConst(channels)) {
        const DesignAnswer answer =
            m_design.apply({m_dma.typeName().toLower(), channel + QLatin1Char('/') + name, value});
        if (!answer && !refusals.contains(answerText(answer)))
            refusals.append(answerText(answer));
    }
    showParameters();
    setNote(m_note, refusals.join(QLatin1Char('\n')));
}

void DMASettingWidget::AddButtonClickedSlot()
{
    const DesignAnswer answer = m_dma.canAdd(m_InstanceName);
    if (!answer) {
        tell(answer);
        return;
    }
    // A filter would hide the new row.
    m_DMARequestsTableWidget->filterField()->clear();
    const int row = m_model->addFreshRow();
    m_DMARequestsTableWidget->selectRow(row);
    const QModelIndex index = m_DMARequestsTableWidget->viewIndex(row, DMASettingModel::RequestColumn);
    m_DMARequestsTableWidget->view()->setFocus();
    m_DMARequestsTableWidget->view()->scrollTo(index);
    m_DMARequestsTableWidget->view()->edit(index);
}

void DMASettingWidget::DelButtonClickedSlot()
{
    QTableView *view = m_DMARequestsTableWidget->view();
    const int place = view->currentIndex().row();
    m_model->remove(m_DMARequestsTableWidget->selectedRows());
    // The next one, so that the key can be pressed again.
    const int left = view->model()->rowCount();
    if (left > 0 && m_DMARequestsTableWidget->selectedRows().isEmpty()) {
        const QModelIndex next = view->model()->index(std::clamp(place, 0, left - 1), DMASettingModel::RequestColumn);
        view->setCurrentIndex(next);
        view->selectRow(next.row());
    }
}

void DMASettingWidget::tell(const DesignAnswer &answer)
{
    PromptRequest request;
    request.kind = PromptRequest::Kind::Critical;
    request.title = QStringLiteral(QT_TRANSLATE_NOOP("Prompt", "Error"));
    request.text = boxText(answer);
    switch (answer.reason) {
    case DesignReason::NoChannelForDmaRequest:
        request.textArguments = answer.arguments;
        break;
    case DesignReason::NoDmaChannel:
    case DesignReason::NoDmaRequest:
    case DesignReason::UnknownDmaRequest:
        break;
    default:
        request.detail = answerText(answer);
    }
    request.buttons = QStringList{QStringLiteral(QT_TRANSLATE_NOOP("Prompt", "OK"))};
    m_design.prompt().ask(request);
}

} // namespace ChipLoom
