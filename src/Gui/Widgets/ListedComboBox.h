#pragma once

#include <QAbstractItemView>
#include <QComboBox>
#include <QStyle>
#include <QWheelEvent>

namespace ChipLoom {

/// A box among others in a list that scrolls. The wheel scrolls the list, unless the box has the focus: no value
/// changes because the pointer came across it. Its own list is as wide as its widest value, whatever the width of the
/// box.
class ListedComboBox : public QComboBox
{
public:
    explicit ListedComboBox(QWidget *parent = nullptr) : QComboBox(parent) { setFocusPolicy(Qt::StrongFocus); }

    void showPopup() override
    {
        view()->setMinimumWidth(view()->sizeHintForColumn(0) + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
        QComboBox::showPopup();
    }

protected:
    void wheelEvent(QWheelEvent *event) override
    {
        if (hasFocus())
            QComboBox::wheelEvent(event);
        else
            event->ignore();
    }
};

} // namespace ChipLoom
