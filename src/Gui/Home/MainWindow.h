#pragma once

#include <QWidget>

namespace ChipLoom {

/// The home window, from which a design is started.
class MainWindow : public QWidget
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget *parent = nullptr);
};

} // namespace ChipLoom
