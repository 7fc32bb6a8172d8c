#include "Gui/Home/RecentDesignsPage.h"

#include "Gui/App/Style.h"
#include "Model/RecentDesigns.h"

#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QVBoxLayout>

namespace ChipLoom {

namespace {
constexpr const char *PathProperty = "designPath";
}

RecentDesignsPage::RecentDesignsPage(const QString &file, QWidget *parent)
    : QWidget(parent), m_file(file), m_empty_Label(new QLabel), m_list(new QVBoxLayout)
{
    Style::setRole(m_empty_Label, Style::Role::Hint);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(m_empty_Label);
    layout->addLayout(m_list);
    layout->addStretch();
    CreateDesignListLayout();
    TranslatorUI();
}

void RecentDesignsPage::CreateDesignListLayout()
{
    m_pCurrentLinkButton = nullptr;
    while (QLayoutItem *item = m_list->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const QList<ProjectFileSaveInfo> designs = GetRecentlyProjectList(m_file);
    for (const ProjectFileSaveInfo &design : designs) {
        auto *entry = new QLabel(design.filePath + QLatin1String("-----") + design.creatTime);
        entry->setTextFormat(Qt::PlainText);
        Style::setRole(entry, Style::Role::Entry);
        entry->setFocusPolicy(Qt::StrongFocus);
        entry->setProperty(PathProperty, design.filePath);
        entry->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(entry, &QWidget::customContextMenuRequested, this, &RecentDesignsPage::LinkRightButtonClicked_Slot);
        entry->setCursor(Qt::PointingHandCursor);
        entry->installEventFilter(this);
        m_list->addWidget(entry, 0, Qt::AlignLeft);
    }
    m_empty_Label->setVisible(designs.isEmpty());
}

void RecentDesignsPage::TranslatorUI()
{
    m_empty_Label->setText(tr("No design has been saved or opened yet."));
}

bool RecentDesignsPage::eventFilter(QObject *watched, QEvent *event)
{
    bool chosen = false;
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        chosen = mouse->button() == Qt::LeftButton && static_cast<QWidget *>(watched)->rect().contains(mouse->pos());
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        chosen = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
    }
    if (chosen)
        emit designChosen(watched->property(PathProperty).toString());
    return chosen;
}

void RecentDesignsPage::LinkRightButtonClicked_Slot(const QPoint &position)
{
    m_pCurrentLinkButton = qobject_cast<QWidget *>(sender());
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Remove from this list"), this, &RecentDesignsPage::DeleteSelectedDesignItem);
    menu->popup(m_pCurrentLinkButton->mapToGlobal(position));
}

void RecentDesignsPage::DeleteSelectedDesignItem()
{
    if (!m_pCurrentLinkButton)
        return;
    DeleteRecentlyProjectToFile(m_file, m_pCurrentLinkButton->property(PathProperty).toString());
    CreateDesignListLayout();
}

} // namespace ChipLoom
