#include "Gui/Modes/IP_ParamSettingWidget.h"

#include "Design/IP_ParamSettingConfiguration.h"
#include "Gui/App/Style.h"
#include "Gui/Modes/OneParamWidget.h"

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <utility>

namespace ChipLoom {

IP_ParamSettingWidget::IP_ParamSettingWidget(Design &design, IP_ParamSettingConfiguration &parameters, QString instance,
                                             QWidget *parent)
    : QWidget(parent), m_design(design), m_parameters(parameters), m_instance(std::move(instance)),
      m_search(new QLineEdit), m_scroll(new QScrollArea)
{
    m_search->setPlaceholderText(tr("Search parameters"));
    m_search->setClearButtonEnabled(true);
    connect(m_search, &QLineEdit::textChanged, this, &IP_ParamSettingWidget::filterRows);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
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
    connect(&parameters, &IP_ParamSettingConfiguration::Send_RefreshParamTabWidget_Signal, this,
            &IP_ParamSettingWidget::RefreshParamsTable);
}

void IP_ParamSettingWidget::RefreshParamsTable()
{
    m_CurrentParmUIIsNewest = false;
    if (isVisible())
        refresh();
}

void IP_ParamSettingWidget::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!m_CurrentParmUIIsNewest)
        refresh();
}

void IP_ParamSettingWidget::refresh()
{
    m_CurrentParmUIIsNewest = true;
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
}

QWidget *IP_ParamSettingWidget::AddGroup(const QString &name)
{
    auto *group = new QWidget;
    group->setObjectName(name);
    auto *header = new QPushButton(name);
    header->setCheckable(true);
    header->setChecked(!m_Group_HideStatus_Map.value(name));
    Style::setRole(header, Style::Role::Link);
    header->setIcon(QIcon(QStringLiteral(":/image/icon_down.png")));
    auto *rows = new QWidget;
    rows->setVisible(header->isChecked());
    auto *rowLayout = new QVBoxLayout(rows);
    rowLayout->setContentsMargins(8, 0, 0, 0);
    rowLayout->setSpacing(0);
    connect(header, &QPushButton::toggled, this, [this, rows, name](bool open) {
        m_Group_HideStatus_Map.insert(name, !open);
        rows->setVisible(open);
    });
    auto *layout = new QVBoxLayout(group);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(header, 0, Qt::AlignLeft);
    layout->addWidget(rows);
    return group;
}

void IP_ParamSettingWidget::rebuild()
{
    const int position = m_scroll->verticalScrollBar()->value();
    m_rows.clear();
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    QHash<QString, QWidget *> groups;
    for (const RefParameter &parameter : m_parameters.GetRefParameterList()) {
        if (!parameter.Visible)
            continue;
        QWidget *&group = groups[parameter.Group];
        if (!group) {
            group = AddGroup(parameter.Group.isEmpty() ? tr("General") : parameter.Group);
            layout->addWidget(group);
        }
        auto *shown = new OneParamWidget(m_design, m_parameters, m_instance, parameter);
        connect(shown, &OneParamWidget::refused, this, &IP_ParamSettingWidget::refused);
        connect(shown, &OneParamWidget::entered, this, &IP_ParamSettingWidget::noteChanged);
        group->layout()->itemAt(1)->widget()->layout()->addWidget(shown);
        m_rows.insert(parameter.Name, shown);
    }
    layout->addStretch();
    // An edit that led here is still on the stack of the old rows.
    if (QWidget *old = m_scroll->takeWidget())
        old->deleteLater();
    m_scroll->setWidget(content);
    m_scroll->verticalScrollBar()->setValue(position);
    filterRows();
}

void IP_ParamSettingWidget::filterRows()
{
    const QString wanted = m_search->text().trimmed();
    for (OneParamWidget *shown : qAsConst(m_rows)) {
        shown->setVisible(wanted.isEmpty() || shown->labelText().contains(wanted, Qt::CaseInsensitive) ||
                          shown->parameterName().contains(wanted, Qt::CaseInsensitive));
    }
}

void IP_ParamSettingWidget::setAllFolded(bool folded)
{
    if (!m_scroll->widget())
        return;
    for (QPushButton *header : m_scroll->widget()->findChildren<QPushButton *>()) {
        if (header->isCheckable())
            header->setChecked(!folded);
    }
}

} // namespace ChipLoom
