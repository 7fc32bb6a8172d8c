#include "Gui/Workspace/ConfigurationPane.h"

#include "Gui/App/Style.h"
#include "Gui/Widgets/ElidedLabel.h"
#include "Gui/Widgets/SearchField.h"
#include "Gui/Widgets/VerticalScroll.h"

#include <QKeyEvent>
#include <QLabel>
#include <QStackedWidget>
#include <QTabWidget>
#include <QVBoxLayout>

#include <utility>

namespace ChipLoom {

namespace {

int tabOf(const QTabWidget *tabs, const QWidget *widget)
{
    for (; tabs && widget; widget = widget->parentWidget()) {
        if (const int index = tabs->indexOf(const_cast<QWidget *>(widget)); index >= 0)
            return index;
    }
    return -1;
}

/// Only the page in sight asks for room.
class PageStack : public QStackedWidget
{
public:
    QSize sizeHint() const override { return currentWidget()->sizeHint(); }
    QSize minimumSizeHint() const override { return currentWidget()->minimumSizeHint(); }
    bool hasHeightForWidth() const override { return currentWidget()->hasHeightForWidth(); }
    int heightForWidth(int width) const override { return currentWidget()->heightForWidth(width); }
};

} // namespace

ConfigurationPane::ConfigurationPane(PageFactory factory, QWidget *parent)
    : QWidget(parent), m_factory(std::move(factory)), m_title(new ElidedLabel(Qt::ElideLeft)), m_hint(new QLabel),
      m_stack(new PageStack)
{
    Style::setRole(m_title, Style::Role::PanelTitle);
    Style::setRole(m_hint, Style::Role::Hint);
    m_hint->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_hint->setWordWrap(true);
    m_hint->setMargin(24);
    m_stack->addWidget(m_hint);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_title);
    // On a low screen a page scrolls as a whole: it must not push the window's edges off the screen.
    auto *scroll = new VerticalScroll;
    scroll->setWidget(m_stack);
    scroll->viewport()->setAutoFillBackground(false);
    m_stack->setAutoFillBackground(false);
    connect(m_stack, &QStackedWidget::currentChanged, scroll, &QWidget::updateGeometry);
    layout->addWidget(scroll, 1);
    TranslatorUI();
}

void ConfigurationPane::showModule(const PeripheralsBaseInfo &module, const QString &title)
{
    QWidget *&page = m_pages[module.InstanceName];
    if (!page) {
        page = m_factory(module);
        m_stack->addWidget(page);
        recall(*page, m_views.take(module.InstanceName));
    }
    m_shownModule = module.InstanceName;
    m_title->setWholeText(title);
    m_stack->setCurrentWidget(page);
}

QWidget *ConfigurationPane::shownPage() const
{
    return m_pages.value(m_shownModule);
}

ConfigurationPane::View ConfigurationPane::viewOf(const QWidget &page)
{
    const auto *tabs = page.findChild<QTabWidget *>();
    View view;
    view.tab = tabs ? tabs->currentIndex() : -1;
    for (const SearchField *field : page.findChildren<SearchField *>())
        view.searches.insert(tabOf(tabs, field), field->text());
    return view;
}

void ConfigurationPane::recall(QWidget &page, const View &view)
{
    auto *tabs = page.findChild<QTabWidget *>();
    if (tabs && view.tab >= 0) {
        // A tab is made when it is first shown, and a search needs its field.
        for (auto search = view.searches.constBegin(); search != view.searches.constEnd(); ++search) {
            if (!search.value().isEmpty())
                tabs->setCurrentIndex(search.key());
        }
        tabs->setCurrentIndex(view.tab);
    }
    for (SearchField *field : page.findChildren<SearchField *>())
        field->setText(view.searches.value(tabOf(tabs, field)));
}

/// The search key is the chip's as well: from here it means what the page has to search.
bool ConfigurationPane::event(QEvent *event)
{
    const QWidget *page = shownPage();
    if (page && event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent *>(event)->matches(QKeySequence::Find)) {
        for (SearchField *field : page->findChildren<SearchField *>()) {
            if (!field->isVisible())
                continue;
            field->setFocus(Qt::ShortcutFocusReason);
            field->selectAll();
            event->accept();
            return true;
        }
    }
    return QWidget::event(event);
}

void ConfigurationPane::renewPages()
{
    QHash<QString, View> views = m_views;
    for (auto page = m_pages.constBegin(); page != m_pages.constEnd(); ++page)
        views.insert(page.key(), viewOf(*page.value()));
    clearPages();
    m_views = views;
}

void ConfigurationPane::clearPages()
{
    m_views.clear();
    qDeleteAll(m_pages);
    m_pages.clear();
    m_shownModule.clear();
    TranslatorUI();
}

void ConfigurationPane::TranslatorUI()
{
    if (m_shownModule.isEmpty())
        m_title->setWholeText(tr("Configuration"));
    m_hint->setText(tr("Choose a module on the left to see what it offers."));
}

} // namespace ChipLoom
