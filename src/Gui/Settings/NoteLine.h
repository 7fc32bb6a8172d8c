#pragma once

#include "Gui/App/Style.h"

#include <QLabel>

namespace ChipLoom {

/// A line beneath a table that says why a change was not taken, or what to look at; hidden while it is empty.
inline QLabel *noteLine()
{
    auto *label = new QLabel;
    Style::setRole(label, Style::Role::Warning);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->hide();
    return label;
}

inline void setNote(QLabel *label, const QString &text)
{
    label->setText(text);
    label->setVisible(!text.isEmpty());
}

} // namespace ChipLoom
