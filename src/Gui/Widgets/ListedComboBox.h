#pragma once

#include <QComboBox>

namespace ChipLoom {

/// A box among others in a list that scrolls. The wheel scrolls the list, unless the box has the focus: no value
/// changes because the pointer came across it. With a minimum length of its contents it asks for no more width than
/// that. Its own list is as wide as its widest value, whatever the width of the box; a value that is wider than the box
/// ends in dots, and the tool tip has it as a whole.
class ListedComboBox : public QComboBox
{
public:
    explicit ListedComboBox(QWidget *parent = nullptr) : QComboBox(parent) { setFocusPolicy(Qt::StrongFocus); }

    /// Not by the policy of such boxes, which makes the list of each before anybody opens it.
    QSize sizeHint() const override { return minimumContentsLength() > 0 ? minimumSizeHint() : QComboBox::sizeHint(); }
    void showPopup() override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    QString shownText(const QStyleOptionComboBox &option) const;
};

} // namespace ChipLoom
