#pragma once

#include <QLineEdit>

namespace ChipLoom {

/// Takes the text that narrows a list.
class SearchField : public QLineEdit
{
    Q_OBJECT
public:
    explicit SearchField(const QString &placeholder, QWidget *parent = nullptr);
};

} // namespace ChipLoom
