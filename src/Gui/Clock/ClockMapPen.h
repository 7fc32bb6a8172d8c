#pragma once

#include "Gui/Clock/ClockMapDescription.h"

namespace ChipLoom {

/// Collects the items of one drawing. Positions are scene units; a control is placed by its left edge and the wire
/// that it stands on.
class ClockMapPen
{
public:
    static constexpr qreal ControlHeight = 22;
    static constexpr qreal RadioSize = 16;
    static constexpr qreal MuxWidth = 26;

    /// What follows belongs to this form of the PLL only.
    void setForm(ClockFormOnly form) { m_form = form; }

    void text(ClockMapText::Kind kind, const QString &key, qreal x, qreal y, qreal width,
              Qt::Alignment alignment = Qt::AlignLeft);
    void name(const QString &key, qreal x, qreal y, qreal width, Qt::Alignment alignment = Qt::AlignLeft);
    void caption(const QString &key, qreal x, qreal y, qreal width, Qt::Alignment alignment = Qt::AlignLeft);
    void hint(const QString &key, qreal x, qreal y, qreal width);

    void wire(ClockPaths paths, const QVector<QPointF> &points);
    void arrow(ClockPaths paths, const QVector<QPointF> &points);
    void dot(ClockPaths paths, qreal x, qreal y);
    void mux(qreal x, qreal y, qreal height);
    void block(const QString &text, qreal x, qreal wireY, qreal width);
    void box(const QRectF &rect);
    void buffer(ClockPaths paths, qreal tipX, qreal wireY);

    void combo(ClockField field, qreal x, qreal wireY, qreal width);
    void edit(ClockField field, qreal x, qreal wireY, qreal width);
    void value(ClockSubject subject, qreal x, qreal wireY, qreal width);
    void radio(ClockField field, int option, qreal x, qreal wireY);
    void label(ClockSubject subject, qreal x, qreal y, qreal width, qreal height = 16);
    void info(ClockSubject subject, qreal x, qreal y);
    void button(ClockSubject subject, qreal x, qreal wireY, qreal width);
    void list(const QString &title, const QStringList &instances, qreal x, qreal wireY, qreal width);

    const ClockMapDescription &result() const { return m_map; }

private:
    void place(ClockSubject subject, ClockMapPlace::Kind kind, const QRectF &rect, int option = 0);

    ClockMapDescription m_map;
    ClockFormOnly m_form = ClockFormOnly::Both;
};

} // namespace ChipLoom
