#include "Gui/ChipView/ChipView.h"

#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/Explanations.h"
#include "Gui/App/Style.h"
#include "Gui/ChipView/ChipScene.h"
#include "Gui/ChipView/Enter_UserLabel_Dialog.h"
#include "Gui/ChipView/PinGraphicsView.h"
#include "Gui/ChipView/PinMenuView.h"
#include "Gui/ChipView/PinQGraphicsRectItem.h"
#include "Gui/ChipView/QGraphicsRectItemEXT.h"
#include "Gui/Modes/ModeTexts.h"
#include "Gui/Widgets/SearchBox.h"

#include <QAction>
#include <QComboBox>
#include <QCompleter>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

constexpr const char *ErrorTitle = QT_TRANSLATE_NOOP("Prompt", "Error");
constexpr const char *SwitchingFailed = QT_TRANSLATE_NOOP("Prompt", "Unable to find signal group, switching failed!");

constexpr int BlinkMs = 400;
constexpr int SearchBoxWidth = 170;

struct ToolRow
{
    const char *text;
    const char *picture;
    const char *keys;
    void (ChipView::*slot)();
};

const std::array<ToolRow, 6> Tools{{
    {QT_TRANSLATE_NOOP("ChipLoom::ChipView", "Zoom in"), ":/image/icon_zoomin.png", "Ctrl++", &ChipView::ZoomIn},
    {QT_TRANSLATE_NOOP("ChipLoom::ChipView", "Zoom out"), ":/image/icon_zoomout.png", "Ctrl+-", &ChipView::ZoomOut},
    {QT_TRANSLATE_NOOP("ChipLoom::ChipView", "Zoom Reset"), ":/image/icon_zoomreset.png", "Ctrl+0",
     &ChipView::ZoomReset},
    {QT_TRANSLATE_NOOP("ChipLoom::ChipView", "Fit to window"), ":/image/icon_zoomfit.png", "Ctrl+9",
     &ChipView::FitToWindow},
    {QT_TRANSLATE_NOOP("ChipLoom::ChipView", "Clockwise rotate"), ":/image/rotate1.png", "Ctrl+R",
     &ChipView::Rotated_Clockwise},
    {QT_TRANSLATE_NOOP("ChipLoom::ChipView", "Anti-clockwise rotate"), ":/image/rotate2.png", "Ctrl+Shift+R",
     &ChipView::Rotated_AnitClockwise},
}};

} // namespace

ChipView::ChipView(Design &design, QWidget *parent)
    : QWidget(parent), m_design(design), m_GraphicsScene(new ChipScene(this)), m_GraphicsView(new PinGraphicsView),
      m_title(new QLabel), m_note(new QLabel), m_toolBar(new QToolBar), m_QuerySignals_ComboBox(new SearchBox),
      m_searchAction(new QAction(this))
{
    Style::setRole(m_title, Style::Role::PanelTitle);
    m_GraphicsView->setScene(m_GraphicsScene);
    createActions();
    createSearch();

    auto *top = new QHBoxLayout;
    top->addWidget(m_title);
    top->addStretch();
    top->addWidget(m_toolBar);
    top->addWidget(m_QuerySignals_ComboBox, 1);
    auto *searchButton = new QToolButton;
    searchButton->setDefaultAction(m_searchAction);
    searchButton->setIconSize(m_toolBar->iconSize());
    searchButton->setAutoRaise(true);
    top->addWidget(searchButton);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_GraphicsView, 1);
    Style::setRole(m_note, Style::Role::Warning);
    m_note->setWordWrap(true);
    m_note->setTextFormat(Qt::RichText);
    m_note->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    m_note->hide();
    connect(m_note, &QLabel::linkActivated, this, &ChipView::moduleAsked);
    layout->addWidget(m_note);
    setFocusProxy(m_GraphicsView);

    connect(m_GraphicsScene, &ChipScene::menuRequested, this, &ChipView::showPinMenu);
    connect(m_GraphicsScene, &ChipScene::contextMenuRequested, this, &ChipView::showContextMenu);
    connect(m_GraphicsScene, &ChipScene::sendConfigedSignalInfo, this, &ChipView::signalChosen);
    connect(m_GraphicsScene, &ChipScene::sendConfigedSignalInfoQueryImmediately, this,
            [this](const QString &signal, int pin) {
                emit signalChosen(signal, pin);
                m_design.pins().search().QuerySignalName_Accurate(signal);
            });
    connect(m_GraphicsView, &PinGraphicsView::clicked, this, [this](const QPointF &position) {
        QGraphicsRectItemEXT *body = m_GraphicsScene->body();
        if (body && body->sceneBoundingRect().contains(position))
            emit body->ClickFinished();
    });

    connect(&m_design, &Design::opened, this, &ChipView::drawDesign);
    connect(&m_design, &Design::cleared, this, &ChipView::drawDesign);
    connect(&m_design, &Design::languageChanged, this, &ChipView::TranslatorUI);
    connect(&m_design, &Design::choicesLost, this, &ChipView::tellLost);
    connect(&m_design, &Design::pinsChanged, this, [this](const QList<int> &pins) {
        m_note->hide();
        m_GraphicsScene->refreshPins(pins);
        UpdateQueryComboBox();
    });
    connect(&m_design.pins().search(), &PinSearch::hitsChanged, this, &ChipView::showHits);
    connect(&m_design.pins().search(), &PinSearch::marksChanged, this,
            [this] { m_GraphicsScene->markPins(m_design.pins().search().markedPositions()); });
    TranslatorUI();
    drawDesign();
}

ChipView::~ChipView()
{
    m_design.scheduler().cancelAll(this);
}

void ChipView::createActions()
{
    m_toolBar->setIconSize(QSize(22, 22));
    m_toolBar->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed); // the menu has what does not fit
    for (const ToolRow &tool : Tools) {
        auto *action = new QAction(QIcon(QLatin1String(tool.picture)), QString(), this);
        action->setShortcut(QKeySequence(QLatin1String(tool.keys)));
        connect(action, &QAction::triggered, this, tool.slot);
        m_toolBar->addAction(action);
        m_actions.append(action);
    }
    // Without a shift key the plus is the equals sign.
    m_actions.first()->setShortcuts({QKeySequence(QStringLiteral("Ctrl++")), QKeySequence(QStringLiteral("Ctrl+="))});
    addActions(m_actions);
}

void ChipView::createSearch()
{
    // Narrower in a narrow pane, but never out of sight.
    m_QuerySignals_ComboBox->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_QuerySignals_ComboBox->setMinimumWidth(SearchBoxWidth / 2);
    m_QuerySignals_ComboBox->setMaximumWidth(SearchBoxWidth);
    m_QuerySignals_ComboBox->setMaxVisibleItems(20);
    m_QuerySignals_ComboBox->completer()->setFilterMode(Qt::MatchContains);
    m_QuerySignals_ComboBox->completer()->setCompletionMode(QCompleter::PopupCompletion);
    m_QuerySignals_ComboBox->completer()->setCaseSensitivity(Qt::CaseInsensitive);
    m_QuerySignals_ComboBox->lineEdit()->setClearButtonEnabled(true);
    m_searchAction->setIcon(QIcon(QStringLiteral(":/image/icon-search.png")));
    m_searchAction->setShortcut(QKeySequence::Find);
    addAction(m_searchAction);

    connect(m_QuerySignals_ComboBox, &SearchBox::downPressed, this, [this] {
        if (m_QuerySignals_ComboBox->currentText().isEmpty())
            m_QuerySignals_ComboBox->showPopup();
        else
            m_QuerySignals_ComboBox->completer()->complete();
    });
    connect(m_QuerySignals_ComboBox, qOverload<int>(&QComboBox::activated), this, &ChipView::QueryActived);
    connect(m_QuerySignals_ComboBox->lineEdit(), &QLineEdit::returnPressed, this, [this] { query(); });
    connect(m_QuerySignals_ComboBox->lineEdit(), &QLineEdit::editingFinished, this, &ChipView::QueryEditingFinished);
    connect(m_QuerySignals_ComboBox, &QComboBox::editTextChanged, this, [this](const QString &text) {
        Style::setInvalid(m_QuerySignals_ComboBox, false);
        if (text.isEmpty())
            query();
    });
    connect(m_searchAction, &QAction::triggered, this, [this] {
        m_QuerySignals_ComboBox->setFocus();
        m_QuerySignals_ComboBox->lineEdit()->selectAll();
        query();
    });
}

void ChipView::TranslatorUI()
{
    m_title->setText(tr("Pin layout"));
    for (std::size_t i = 0; i < Tools.size(); ++i) {
        QAction *action = m_actions.at(static_cast<int>(i));
        action->setText(tr(Tools[i].text));
        action->setToolTip(action->text() + QStringLiteral(" (") +
                           action->shortcut().toString(QKeySequence::NativeText) + QLatin1Char(')'));
    }
    m_searchAction->setText(tr("Search"));
    m_QuerySignals_ComboBox->lineEdit()->setPlaceholderText(tr("Search signal or pin"));
    m_QuerySignals_ComboBox->setToolTip(tr("A signal's name, or a part of the name of signals or pins. Empty ends the "
                                           "search."));
    CancelUserLabelForm();
    m_note->hide();
    m_GraphicsScene->TranslatorUI();
}

void ChipView::drawDesign()
{
    if (m_pinMenu)
        m_pinMenu->close();
    CancelUserLabelForm();
    m_note->hide();
    m_RotatedValue = 0;
    m_GraphicsScene->clearChip();
    if (m_design.isOpen())
        m_GraphicsScene->drawChip(m_design.pins());
    m_GraphicsView->SetGraphicsItem(m_GraphicsScene->body());
    if (m_GraphicsScene->body())
        connect(m_GraphicsScene->body(), &QGraphicsRectItemEXT::ClickFinished, this, &ChipView::SwitchPinNumDisplay);
    m_QuerySignals_ComboBox->clearEditText();
    UpdateQueryComboBox();
    followChip(1.0); // a small chip keeps its size
}

void ChipView::UpdateQueryComboBox()
{
    const QStringList names = m_design.pins().search().signalNames();
    if (names == m_queryNames)
        return;
    m_queryNames = names;
    const QString typed = m_QuerySignals_ComboBox->currentText();
    const QSignalBlocker blocker(m_QuerySignals_ComboBox);
    m_QuerySignals_ComboBox->clear();
    m_QuerySignals_ComboBox->addItems(names);
    m_QuerySignals_ComboBox->setCurrentIndex(-1);
    m_QuerySignals_ComboBox->setEditText(typed);
}

// ---- Zoom and rotation ----

void ChipView::ZoomIn()
{
    CancelUserLabelForm();
    m_GraphicsView->zoomIn();
}

void ChipView::ZoomOut()
{
    CancelUserLabelForm();
    m_GraphicsView->zoomOut();
}

void ChipView::ZoomReset()
{
    CancelUserLabelForm();
    m_GraphicsView->zoomReset();
    m_QuerySignals_ComboBox->clearEditText();
    query();
}

void ChipView::FitToWindow()
{
    CancelUserLabelForm();
    followChip(PinGraphicsView::MaximumScale);
}

void ChipView::followChip(double largest)
{
    m_GraphicsView->follow([this] { return m_GraphicsScene->contentRect(); }, largest);
}

void ChipView::Rotated_Clockwise()
{
    m_RotatedValue += 90;
    if (m_RotatedValue > 359)
        m_RotatedValue = 0;
    showRotated();
}

void ChipView::Rotated_AnitClockwise()
{
    m_RotatedValue -= 90;
    if (m_RotatedValue < 0)
        m_RotatedValue = 270;
    showRotated();
}

void ChipView::showRotated()
{
    CancelUserLabelForm();
    m_GraphicsView->rotateView(m_RotatedValue);
    m_GraphicsScene->turnTextsUpright(m_RotatedValue);
    m_GraphicsView->fitFollowed();
}

void ChipView::SwitchPinNumDisplay()
{
    m_GraphicsScene->setPinNumDisplay(!m_GraphicsScene->pinNumDisplay());
}

// ---- Search ----

void ChipView::QueryActived()
{
    query();
}

void ChipView::QueryEditingFinished()
{
    // The focus leaves the box also when nothing was typed: that does not bring a search back that has ended.
    if (m_QuerySignals_ComboBox->currentText() != m_lastQuery)
        query();
}

void ChipView::query()
{
    m_lastQuery = m_QuerySignals_ComboBox->currentText();
    m_design.pins().search().QuerySignalName(m_lastQuery.trimmed());
    const bool missed = !m_lastQuery.trimmed().isEmpty() && m_design.pins().search().hits().isEmpty();
    Style::setInvalid(m_QuerySignals_ComboBox, missed);
}

void ChipView::ReceiveQueryIPSignal(const QString &ipName)
{
    m_design.pins().search().ReceiveQueryIPSignal(ipName, m_design.signalsOf(ipName));
}

void ChipView::showHits()
{
    const QSet<int> &hits = m_design.pins().search().hits();
    m_hitsLit = !hits.isEmpty();
    m_GraphicsScene->showHits(hits, m_hitsLit);
    if (hits.isEmpty()) {
        m_design.scheduler().cancel(this, "blink");
        return;
    }
    m_design.scheduler().schedule(this, "blink", BlinkMs, [this] { HandleTimeout(); });
    if (hits.size() == 1)
        m_GraphicsView->ensureVisible(m_GraphicsScene->pinItem(*hits.begin()));
}

void ChipView::HandleTimeout()
{
    m_hitsLit = !m_hitsLit;
    m_GraphicsScene->showHits(m_design.pins().search().hits(), m_hitsLit);
    m_design.scheduler().schedule(this, "blink", BlinkMs, [this] { HandleTimeout(); });
}

// ---- Menus ----

QPoint ChipView::globalOf(const QPointF &scenePosition) const
{
    return m_GraphicsView->viewport()->mapToGlobal(m_GraphicsView->mapFromScene(scenePosition));
}

void ChipView::showPinMenu(int pinNumber, const QPointF &corner)
{
    CancelUserLabelForm();
    const PinMenu entries = pinMenu(m_design, pinNumber);
    if (entries.groups.isEmpty())
        return;
    auto *menu = new PinMenuView(entries, this);
    connect(menu, &PinMenuView::changeChosen, this, &ChipView::applyChange);
    popup(menu, corner);
}

void ChipView::showContextMenu(int pinNumber, const QPointF &corner)
{
    CancelUserLabelForm();
    const PinMenu entries = pinMenu(m_design, pinNumber);
    if (entries.groups.isEmpty())
        return;
    auto *menu = new QMenu(this);
    menu->setToolTipsVisible(true);
    QAction *label = menu->addAction(tr("Enter Label"), this, [this, pinNumber] { EnterLabelAction(pinNumber); });
    label->setEnabled(!entries.labelPin.isEmpty());
    if (!label->isEnabled())
        label->setToolTip(tr("Place a function on this pin first."));
    popup(menu, corner);
}

void ChipView::popup(QMenu *menu, const QPointF &corner)
{
    if (m_pinMenu)
        m_pinMenu->close();
    m_pinMenu = menu;
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(globalOf(corner));
}

void ChipView::applyChange(const DesignChange &change)
{
    const DesignAnswer answer = m_design.apply(change);
    if (!answer)
        m_design.prompt().tell(PromptRequest::Kind::Critical, QLatin1String(ErrorTitle), QLatin1String(SwitchingFailed),
                               answerText(answer));
}

void ChipView::tellLost(const QList<LostChoice> &lost)
{
    QStringList lines;
    for (const Explanation &line : explained(m_design, lost))
        lines.append(withLinks(line));
    m_note->setText(lines.join(QLatin1String("<br>")));
    m_note->show();
}

void ChipView::EnterLabelAction(int pinNumber)
{
    CancelUserLabelForm();
    const PinMenu entries = pinMenu(m_design, pinNumber);
    if (entries.labelPin.isEmpty())
        return;
    QString signal;
    for (const PinMenuGroup &group : entries.groups) {
        for (const PinMenuEntry &entry : group.entries) {
            if (entry.status != Not_Config && signal.isEmpty())
                signal = entry.signalName;
        }
    }
    m_labelForm = new Enter_UserLabel_Dialog(entries.labelPin, signal, entries.label, this);
    connect(m_labelForm, &Enter_UserLabel_Dialog::UserLabelEditFinished, this,
            [this, pin = entries.labelPin](const QString &text) { UserLabelEditFinished_Slot(pin, text); });
    m_labelForm->show();
    const PinQGraphicsRectItem *item = m_GraphicsScene->pinItem(pinNumber);
    QRect place(globalOf(item->sceneBoundingRect().center()) + QPoint(12, 12), m_labelForm->frameGeometry().size());
    const QRect room = screen()->availableGeometry();
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    m_labelForm->move(place.topLeft());
}

void ChipView::UserLabelEditFinished_Slot(const QString &pinName, const QString &label)
{
    const DesignAnswer answer = m_design.apply(DesignChange::labelPin(pinName, label));
    if (answer)
        CancelUserLabelForm();
    else if (m_labelForm)
        m_labelForm->showReason(answerText(answer));
}

void ChipView::CancelUserLabelForm()
{
    if (m_labelForm)
        m_labelForm->close();
}

} // namespace ChipLoom
