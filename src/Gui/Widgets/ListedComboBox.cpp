#include "Gui/Widgets/ListedComboBox.h"

#include "Gui/Widgets/WholeText.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QToolTip>
#include <QWheelEvent>

namespace ChipLoom {

void ListedComboBox::showPopup()
{
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    QComboBox::showPopup();
}

QString ListedComboBox::shownText(const QStyleOptionComboBox &option) const
{
    constexpr int Margin = 1; // that the style leaves at each side
    const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    return option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, field.width() - 2 * Margin);
}

void ListedComboBox::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    option.currentText = shownText(option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

bool ListedComboBox::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QComboBox::event(event);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    if (shownText(option) == option.currentText)
        return QComboBox::event(event);
    const QWidget *owner = this; // of the tip that would be shown
    while (owner->toolTip().isEmpty() && owner->parentWidget() && !owner->isWindow())
        owner = owner->parentWidget();
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                       wholeTextTip(option.currentText, owner->toolTip()), this);
    return true;
}

void ListedComboBox::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

} // namespace ChipLoom
