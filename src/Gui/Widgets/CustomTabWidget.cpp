#include "Gui/Widgets/CustomTabWidget.h"

#include <QMouseEvent>
#include <QStyleOptionTab>
#include <QStylePainter>

#include <algorithm>

namespace ChipLoom {

namespace {

constexpr int SpareWidth = 8; // of the room that styles leave about a name

} // namespace

MulitiRowTabBar::MulitiRowTabBar(QWidget *parent) : QTabBar(parent)
{
    setUsesScrollButtons(false);
    setElideMode(Qt::ElideNone);
    setExpanding(false);
}

QSize MulitiRowTabBar::tabSizeHint(int index) const
{
    return QTabBar::tabSizeHint(index) - QSize(SpareWidth, 0);
}

QVector<QRect> MulitiRowTabBar::places() const
{
    const int room = parentWidget() ? parentWidget()->width() : width();
    QVector<QRect> places;
    QPoint corner;
    for (int index = 0; index < count(); ++index) {
        const QSize size = tabSizeHint(index);
        if (corner.x() > 0 && corner.x() + size.width() > room)
            corner = QPoint(0, corner.y() + size.height());
        places.append(QRect(corner, size));
        corner.rx() += size.width();
    }
    return places;
}

QSize MulitiRowTabBar::sizeHint() const
{
    QRect all;
    for (const QRect &place : places())
        all |= place;
    return all.size();
}

QSize MulitiRowTabBar::minimumSizeHint() const
{
    int widest = 0;
    for (int index = 0; index < count(); ++index)
        widest = std::max(widest, tabSizeHint(index).width());
    return {widest, sizeHint().height()};
}

void MulitiRowTabBar::paintEvent(QPaintEvent *)
{
    const QVector<QRect> all = places();
    for (int index = 0; index < all.size(); ++index) {
        if (index != currentIndex())
            paintTab(index, all);
    }
    if (currentIndex() >= 0)
        paintTab(currentIndex(), all); // above its neighbours
}

void MulitiRowTabBar::paintTab(int index, const QVector<QRect> &all)
{
    const QRect place = all.at(index);
    const bool isLast = index + 1 == all.size() || all.at(index + 1).y() > place.y();
    QStyleOptionTab option;
    initStyleOption(&option, index);
    option.rect = place;
    if (place.x() == 0)
        option.position = isLast ? QStyleOptionTab::OnlyOneTab : QStyleOptionTab::Beginning;
    else
        option.position = isLast ? QStyleOptionTab::End : QStyleOptionTab::Middle;
    option.state &= ~QStyle::State_MouseOver;
    QStylePainter painter(this);
    painter.setClipRect(place); // a chosen tab reaches into the page beneath, which may be another row here
    painter.drawControl(QStyle::CE_TabBarTabShape, option);
    option.rect.adjust(-SpareWidth / 2, 0, SpareWidth / 2, 0);
    painter.drawControl(QStyle::CE_TabBarTabLabel, option);
}

void MulitiRowTabBar::mousePressEvent(QMouseEvent *event)
{
    const QVector<QRect> all = places();
    const auto hit =
        std::find_if(all.begin(), all.end(), [event](const QRect &place) { return place.contains(event->pos()); });
    if (event->button() == Qt::LeftButton && hit != all.end())
        setCurrentIndex(static_cast<int>(hit - all.begin()));
    else
        event->ignore();
}

// The base looks for the tab under the pointer in one row.
void MulitiRowTabBar::mouseMoveEvent(QMouseEvent *event)
{
    event->ignore();
}

void MulitiRowTabBar::mouseReleaseEvent(QMouseEvent *event)
{
    event->ignore();
}

CustomTabWidget::CustomTabWidget(QWidget *parent) : QTabWidget(parent)
{
    setTabBar(new MulitiRowTabBar(this));
}

} // namespace ChipLoom
