#pragma once

#include "Gui/App/FileChooser.h"

namespace ChipLoom {

/// Chooses one file for every question.
class ScriptedFiles : public FileChooser
{
public:
    QString openFile(QWidget *, const QString &, const QString &) override { return choose({}); }
    QString saveFile(QWidget *, const QString &, const QString &proposed, const QString &) override
    {
        return choose(proposed);
    }

    QString openFolder(QWidget *, const QString &, const QString &proposed) override { return choose(proposed); }

    QString answer;
    QString proposal;
    int asked = 0;

private:
    QString choose(const QString &proposed)
    {
        ++asked;
        proposal = proposed;
        return answer;
    }
};

} // namespace ChipLoom
