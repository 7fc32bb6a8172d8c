#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace ChipLoom {

/// The controls of the canvas draw themselves without pixmaps, so that they stay sharp at every zoom.

/// A box that turns over only by key and click: the wheel belongs to the zoom.
class CustomComboBox1 : public QComboBox
{
    Q_OBJECT

public:
    using QComboBox::QComboBox;

    void showPopup() override;
    void hidePopup() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    qreal m_restingLayer = 0;
    bool m_raised = false;
};

/// A small flat button.
class CanvasButton : public QPushButton
{
    Q_OBJECT

public:
    using QPushButton::QPushButton;

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// A question mark whose tool tip says what must be enabled elsewhere.
class InfoQuestion : public QLineEdit
{
    Q_OBJECT

public:
    explicit InfoQuestion(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// One input of a multiplexer; the arrow keys step among the inputs.
class CanvasRadioButton : public QRadioButton
{
    Q_OBJECT

public:
    using QRadioButton::QRadioButton;

signals:
    void stepped(int direction); ///< -1 for the input above, 1 for the one below

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool hitButton(const QPoint &position) const override;
};

} // namespace ChipLoom
