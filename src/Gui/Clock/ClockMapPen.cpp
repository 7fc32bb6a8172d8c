#include "Gui/Clock/ClockMapPen.h"

namespace ChipLoom {

namespace {

constexpr qreal TextHeight = 16;

QRectF onWire(qreal x, qreal wireY, qreal width, qreal height = ClockMapPen::ControlHeight)
{
    return {x, wireY - height / 2, width, height};
}

} // namespace

void ClockMapPen::text(ClockMapText::Kind kind, const QString &key, qreal x, qreal y, qreal width,
                       Qt::Alignment alignment)
{
    m_map.texts.append({kind, key, {x, y, width, TextHeight}, alignment | Qt::AlignVCenter, m_form});
}

void ClockMapPen::name(const QString &key, qreal x, qreal y, qreal width, Qt::Alignment alignment)
{
    text(ClockMapText::Kind::Name, key, x, y, width, alignment);
}

void ClockMapPen::caption(const QString &key, qreal x, qreal y, qreal width, Qt::Alignment alignment)
{
    text(ClockMapText::Kind::Caption, key, x, y, width, alignment);
}

void ClockMapPen::hint(const QString &key, qreal x, qreal y, qreal width)
{
    text(ClockMapText::Kind::Hint, key, x, y, width, Qt::AlignHCenter);
}

void ClockMapPen::wire(ClockPaths paths, const QVector<QPointF> &points)
{
    m_map.wires.append({points, paths, false, m_form});
}

void ClockMapPen::arrow(ClockPaths paths, const QVector<QPointF> &points)
{
    m_map.wires.append({points, paths, true, m_form});
}

void ClockMapPen::dot(ClockPaths paths, qreal x, qreal y)
{
    m_map.points.append({{x, y}, paths});
}

void ClockMapPen::mux(qreal x, qreal y, qreal height)
{
    m_map.muxes.append({{x, y}, height});
}

void ClockMapPen::block(const QString &text, qreal x, qreal wireY, qreal width)
{
    m_map.blocks.append({onWire(x, wireY, width, 20), text});
}

void ClockMapPen::box(const QRectF &rect)
{
    m_map.blocks.append({rect, {}});
}

void ClockMapPen::buffer(ClockPaths paths, qreal tipX, qreal wireY)
{
    m_map.buffers.append({{tipX, wireY}, paths});
}

void ClockMapPen::combo(ClockField field, qreal x, qreal wireY, qreal width)
{
    place(field, ClockMapPlace::Kind::Combo, onWire(x, wireY, width));
}

void ClockMapPen::edit(ClockField field, qreal x, qreal wireY, qreal width)
{
    place(field, ClockMapPlace::Kind::Edit, onWire(x, wireY, width));
}

void ClockMapPen::value(ClockSubject subject, qreal x, qreal wireY, qreal width)
{
    place(subject, ClockMapPlace::Kind::Value, onWire(x, wireY, width));
}

void ClockMapPen::radio(ClockField field, int option, qreal x, qreal wireY)
{
    place(field, ClockMapPlace::Kind::Radio, onWire(x, wireY, RadioSize, RadioSize), option);
}

void ClockMapPen::label(ClockSubject subject, qreal x, qreal y, qreal width, qreal height)
{
    place(subject, ClockMapPlace::Kind::Label, {x, y, width, height});
}

void ClockMapPen::info(ClockSubject subject, qreal x, qreal y)
{
    place(subject, ClockMapPlace::Kind::Info, {x, y, RadioSize, RadioSize});
}

void ClockMapPen::button(ClockSubject subject, qreal x, qreal wireY, qreal width)
{
    place(subject, ClockMapPlace::Kind::Button, onWire(x, wireY, width));
}

void ClockMapPen::list(const QString &title, const QStringList &instances, qreal x, qreal wireY, qreal width)
{
    m_map.lists.append({title, instances, onWire(x, wireY, width)});
}

void ClockMapPen::place(ClockSubject subject, ClockMapPlace::Kind kind, const QRectF &rect, int option)
{
    m_map.places.append({subject, kind, rect, option, m_form});
}

} // namespace ChipLoom
