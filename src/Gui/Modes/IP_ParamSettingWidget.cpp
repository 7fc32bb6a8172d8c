#include "Gui/Modes/IP_ParamSettingWidget.h"

#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/IP_ParamSettingConfiguration.h"
#include "Gui/App/Style.h"
#include "Gui/Diagrams/DiagramFeed.h"
#include "Gui/Diagrams/TMR_Configuration_Diagram.h"
#include "Gui/Modes/ModeTexts.h"
#include "Gui/Modes/OneParamWidget.h"
#include "Gui/Widgets/SearchField.h"
#include "Gui/Widgets/VerticalScroll.h"

#include <QElapsedTimer>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOption>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace ChipLoom {

namespace {

constexpr int RowPadding = 8; // at least, above and below the text of a row
constexpr int MoreRowsMs = 5;
constexpr int LeastUnitWidth = 28;

// The arrow of the style, as trees have it.
QIcon foldIcon(const QWidget &widget, bool open)
{
    constexpr int Side = 12;
    QPixmap picture(QSize(Side, Side) * widget.devicePixelRatio());
    picture.setDevicePixelRatio(widget.devicePixelRatio());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QStyleOption option;
    option.initFrom(&widget);
    option.rect = QRect(0, 0, Side, Side);
    widget.style()->drawPrimitive(open ? QStyle::PE_IndicatorArrowDown : QStyle::PE_IndicatorArrowRight, &option,
                                  &painter, &widget);
    return picture;
}

} // namespace

IP_ParamSettingWidget::IP_ParamSettingWidget(Design &design, IP_ParamSettingConfiguration &parameters, QString instance,
                                             QWidget *parent)
    : QWidget(parent), m_design(design), m_parameters(parameters), m_instance(std::move(instance)),
      m_search(new SearchField(tr("Search parameters"))), m_scroll(new VerticalScroll),
      m_feed(new DiagramFeed(parameters, this))
{
    connect(m_search, &QLineEdit::textChanged, this, [this] {
        makeAllRows();
        filterRows();
    });
    connect(&m_moreRows, &QTimer::timeout, this, &IP_ParamSettingWidget::makeMoreRows);
    m_scroll->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_scroll, &QWidget::customContextMenuRequested, this, [this](const QPoint &position) {
        QMenu menu;
        menu.addAction(tr("Expand All"), this, [this] { setAllFolded(false); });
        menu.addAction(tr("Fold All"), this, [this] { setAllFolded(true); });
        menu.exec(m_scroll->mapToGlobal(position));
    });
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_search);
    layout->addWidget(m_scroll, 1);
    auto *list = new QWidget;
    m_list = new QVBoxLayout(list);
    m_list->setContentsMargins(0, 0, 0, 0);
    m_scroll->setWidget(list);
    addDiagram();
    connect(&parameters, &IP_ParamSettingConfiguration::Send_RefreshParamTabWidget_Signal, this,
            &IP_ParamSettingWidget::RefreshParamsTable);
}

void IP_ParamSettingWidget::addDiagram()
{
    m_diagram = m_feed->makeDiagram(m_instance);
    if (!m_diagram)
        return;
    m_diagramGroup = AddGroup(tr("Diagram"), m_scroll->widget());
    m_diagramGroup.rows->layout()->addWidget(m_diagram);
    m_list->addWidget(m_diagramGroup.widget);
    if (auto *timer = qobject_cast<TMR_Configuration_Diagram *>(m_diagram))
        connect(timer, &TMR_Configuration_Diagram::SendTMRParam_Div_Pr, this,
                &IP_ParamSettingWidget::SetTMRParam_Div_Pr);
}

void IP_ParamSettingWidget::SetTMRParam_Div_Pr(unsigned int divider, unsigned int period)
{
    const DesignAnswer answer = m_design.apply(
        {QStringLiteral("params"), m_instance, QStringLiteral("DividerValue=%1,Period=%2").arg(divider).arg(period)});
    if (!answer)
        emit refused(answerText(answer));
}

void IP_ParamSettingWidget::RefreshParamsTable()
{
    m_CurrentParmUIIsNewest = false;
    m_moreRows.stop(); // they follow the list that is to be shown
    if (isVisible())
        refresh();
}

void IP_ParamSettingWidget::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!m_CurrentParmUIIsNewest || m_parameters.hasRemarkedChoices())
        refresh();
}

void IP_ParamSettingWidget::refresh()
{
    m_CurrentParmUIIsNewest = true;
    if (m_diagram) {
        m_hasDrawing = m_feed->feed();
        m_diagramGroup.widget->setVisible(showsDiagram());
    }
    QStringList names;
    for (const RefParameter &parameter : m_parameters.GetRefParameterList()) {
        if (parameter.Visible)
            names.append(parameter.Group + QLatin1Char('\n') + parameter.Name + QLatin1Char('\n') + parameter.Type);
    }
    if (names != m_shownNames) {
        m_shownNames = names;
        rebuild();
        return;
    }
    for (const RefParameter &parameter : m_parameters.GetRefParameterList()) {
        if (OneParamWidget *shown = m_rows.value(parameter.Name))
            shown->refresh(parameter);
    }
    if (m_rowsMade < m_shownNames.size())
        m_moreRows.start();
}

// Each widget has its parent from the start: moving trees of widgets costs more than making them.
IP_ParamSettingWidget::Group IP_ParamSettingWidget::AddGroup(const QString &name, QWidget *parent)
{
    Group group{new QWidget(parent)};
    group.header = new QPushButton(name, group.widget);
    group.rows = new QWidget(group.widget);
    group.header->setCheckable(true);
    group.header->setChecked(!m_Group_HideStatus_Map.value(name));
    Style::setRole(group.header, Style::Role::Link);
    auto *rowLayout = new QVBoxLayout(group.rows);
    rowLayout->setContentsMargins(8, 0, 0, 0);
    rowLayout->setSpacing(0);
    connect(group.header, &QPushButton::toggled, this, [this, name](bool open) {
        m_Group_HideStatus_Map.insert(name, !open);
        filterRows();
    });
    auto *layout = new QVBoxLayout(group.widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(group.header, 0, Qt::AlignLeft);
    layout->addWidget(group.rows);
    return group;
}

// The rows in sight are made at once, the others a few at a time behind the first painting: a page with all its
// parameters takes longer than a frame.
void IP_ParamSettingWidget::rebuild()
{
    const int position = m_scroll->verticalScrollBar()->value();
    m_rows.clear();
    m_groups.clear();
    m_rowsMade = 0;
    m_unitWidth = LeastUnitWidth;
    for (const RefParameter &parameter : m_parameters.GetRefParameterList()) {
        if (parameter.Visible && !parameter.Unit.isEmpty())
            m_unitWidth = std::max(m_unitWidth, fontMetrics().horizontalAdvance(unitText(parameter)) + 1);
    }
    auto *content = new QWidget(m_scroll->widget());
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    // An edit that led here is still on the stack of the old rows.
    if (m_content) {
        m_list->removeWidget(m_content);
        m_content->hide();
        m_content->deleteLater();
    }
    m_content = content;
    int room = position + m_scroll->viewport()->height();
    if (m_diagram && !m_diagramGroup.widget->isHidden())
        room -= m_diagramGroup.widget->sizeHint().height();
    makeRows(rowsThatFill(std::max(0, room)));
    m_list->addWidget(content, 1);
    content->show();
    m_scroll->verticalScrollBar()->setValue(position);
    filterRows();
    m_moreRows.start();
}

// Those of folded groups take no room; what a search leaves is known of made rows only.
int IP_ParamSettingWidget::rowsThatFill(int height) const
{
    int count = 0;
    int open = height / (fontMetrics().height() + RowPadding) + 1;
    for (const RefParameter &parameter : m_parameters.GetRefParameterList()) {
        if (!parameter.Visible)
            continue;
        ++count;
        const QString group = parameter.Group.isEmpty() ? tr("General") : parameter.Group;
        if (m_search->text().trimmed().isEmpty() && !m_Group_HideStatus_Map.value(group) && --open == 0)
            break;
    }
    return count;
}

void IP_ParamSettingWidget::makeRows(int count)
{
    auto *layout = static_cast<QVBoxLayout *>(m_content->layout());
    int skipped = m_rowsMade;
    for (const RefParameter &parameter : m_parameters.GetRefParameterList()) {
        if (!parameter.Visible || --skipped >= 0)
            continue;
        if (--count < 0)
            return;
        Group &group = m_groups[parameter.Group];
        if (!group.widget) {
            group = AddGroup(parameter.Group.isEmpty() ? tr("General") : parameter.Group, m_content);
            layout->insertWidget(layout->count() - 1, group.widget);
        }
        auto *shown = new OneParamWidget(m_design, m_parameters, m_instance, parameter, m_unitWidth, group.rows);
        connect(shown, &OneParamWidget::refused, this, &IP_ParamSettingWidget::refused);
        connect(shown, &OneParamWidget::entered, this, &IP_ParamSettingWidget::noteChanged);
        connect(shown, &OneParamWidget::moduleAsked, this, &IP_ParamSettingWidget::moduleAsked);
        group.rows->layout()->addWidget(shown);
        m_rows.insert(parameter.Name, shown);
        ++m_rowsMade;
    }
}

void IP_ParamSettingWidget::makeMoreRows()
{
    QElapsedTimer timer;
    timer.start();
    while (m_rowsMade < m_shownNames.size() && !timer.hasExpired(MoreRowsMs))
        makeRows(1);
    filterRows();
    if (m_rowsMade >= m_shownNames.size())
        m_moreRows.stop();
}

void IP_ParamSettingWidget::makeAllRows()
{
    if (m_rowsMade == m_shownNames.size())
        return;
    makeRows(m_shownNames.size() - m_rowsMade);
    filterRows();
    m_moreRows.stop();
}

OneParamWidget *IP_ParamSettingWidget::row(const QString &parameterName)
{
    makeAllRows();
    return m_rows.value(parameterName);
}

/// A search leaves the room to what it finds.
bool IP_ParamSettingWidget::showsDiagram() const
{
    return m_hasDrawing && m_search->text().trimmed().isEmpty();
}

void IP_ParamSettingWidget::filterRows()
{
    const QString wanted = m_search->text().trimmed();
    QSet<QWidget *> found;
    for (OneParamWidget *shown : qAsConst(m_rows)) {
        const bool fits = wanted.isEmpty() || shown->labelText().contains(wanted, Qt::CaseInsensitive) ||
                          shown->parameterName().contains(wanted, Qt::CaseInsensitive);
        shown->setVisible(fits);
        if (fits)
            found.insert(shown->parentWidget());
    }
    if (m_diagram) {
        const bool open = m_diagramGroup.header->isChecked();
        m_diagramGroup.rows->setVisible(open);
        m_diagramGroup.header->setIcon(foldIcon(*this, open));
        m_diagramGroup.widget->setVisible(showsDiagram());
    }
    for (const Group &group : qAsConst(m_groups)) {
        group.widget->setVisible(found.contains(group.rows));
        const bool open = !wanted.isEmpty() || group.header->isChecked();
        group.rows->setVisible(open);
        group.header->setIcon(foldIcon(*this, open));
    }
}

void IP_ParamSettingWidget::setAllFolded(bool folded)
{
    makeAllRows();
    for (const Group &group : qAsConst(m_groups))
        group.header->setChecked(!folded);
    if (m_diagram)
        m_diagramGroup.header->setChecked(!folded);
}

} // namespace ChipLoom
