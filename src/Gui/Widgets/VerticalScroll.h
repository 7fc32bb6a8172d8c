#pragma once

#include <QEvent>
#include <QScrollArea>
#include <QScrollBar>

namespace ChipLoom {

/// Scrolls upwards and downwards only: it is never narrower than what it holds, and asks for the height of it.
class VerticalScroll : public QScrollArea
{
public:
    explicit VerticalScroll(QWidget *parent = nullptr) : QScrollArea(parent)
    {
        setWidgetResizable(true);
        setFocusPolicy(Qt::NoFocus); // it shows no focus, and Tab goes to what it holds
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }

    QSize sizeHint() const override
    {
        const QSize whole = widget() ? widget()->sizeHint() : QSize();
        return QSize(whole.width() + verticalScrollBar()->sizeHint().width(), whole.height()).expandedTo({0, 0});
    }
    QSize minimumSizeHint() const override
    {
        const int rows = widget() ? widget()->minimumSizeHint().width() : 0;
        return {rows + verticalScrollBar()->sizeHint().width() + 2 * frameWidth(),
                QScrollArea::minimumSizeHint().height()};
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == widget() && event->type() == QEvent::LayoutRequest)
            updateGeometry();
        return QScrollArea::eventFilter(watched, event);
    }
};

} // namespace ChipLoom
