#pragma once

#include <QLabel>

namespace ChipLoom {

/// A line of text that never widens what it stands in: what does not fit is cut, and a tool tip has it whole.
class ElidedLabel : public QLabel
{
public:
    explicit ElidedLabel(Qt::TextElideMode mode, QWidget *parent = nullptr) : QLabel(parent), m_mode(mode)
    {
        setTextFormat(Qt::PlainText);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }

    void setWholeText(const QString &text)
    {
        m_whole = text;
        cut();
    }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        QLabel::resizeEvent(event);
        cut();
    }

private:
    void cut()
    {
        setText(fontMetrics().elidedText(m_whole, m_mode, contentsRect().width()));
        setToolTip(text() == m_whole ? QString() : m_whole);
    }

    Qt::TextElideMode m_mode;
    QString m_whole;
};

} // namespace ChipLoom
