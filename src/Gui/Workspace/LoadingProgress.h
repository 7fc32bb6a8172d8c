#pragma once

#include <QProgressDialog>

namespace ChipLoom {

/// Tells of work in steps on the interface thread. It appears only once the work has taken a quarter of a second.
class LoadingProgress : public QProgressDialog
{
    Q_OBJECT
public:
    LoadingProgress(int steps, QWidget *parent);

    /// One step is done.
    void advance();
};

} // namespace ChipLoom
