#include "Gui/App/FileChooser.h"

#include <QFileDialog>

namespace ChipLoom {

FileChooser::~FileChooser() = default;

QString FileChooser::openFile(QWidget *parent, const QString &title, const QString &filter)
{
    return QFileDialog::getOpenFileName(parent, title, QString(), filter);
}

QString FileChooser::saveFile(QWidget *parent, const QString &title, const QString &proposal, const QString &filter)
{
    return QFileDialog::getSaveFileName(parent, title, proposal, filter);
}

QString FileChooser::openFolder(QWidget *parent, const QString &title, const QString &proposal)
{
    return QFileDialog::getExistingDirectory(parent, title, proposal);
}

FileChooser &FileChooser::dialogs()
{
    static FileChooser chooser;
    return chooser;
}

} // namespace ChipLoom
