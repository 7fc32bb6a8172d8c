#pragma once

#include <QString>

class QWidget;

namespace ChipLoom {

/// Where the user chooses files: dialogs in the program, a script in tests.
class FileChooser
{
public:
    virtual ~FileChooser();

    /// The chosen file, with slashes forward; empty if the user closes the dialog.
    virtual QString openFile(QWidget *parent, const QString &title, const QString &filter);
    /// The same for a file to be written; asks before one that exists is replaced.
    virtual QString saveFile(QWidget *parent, const QString &title, const QString &proposal, const QString &filter);

    /// The chosen folder; empty if the user closes the dialog.
    virtual QString openFolder(QWidget *parent, const QString &title, const QString &proposal);

    /// The dialogs.
    static FileChooser &dialogs();
};

} // namespace ChipLoom
